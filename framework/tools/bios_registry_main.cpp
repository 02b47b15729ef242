// Prints the BIOS attribute registry BiosAttributeRegistry.1.0.0 as JSON on
// standard output.
#include <iostream>

#include "resources/systems/bios_attribute_registry.h"

int main() {
    std::cout << boost::json::serialize(odata::redfish::bios_attribute_registry()) << "\n";
    return std::cout.good() ? 0 : 1;
}
