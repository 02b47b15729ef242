// Prints the OEM message registry TWR.v1_0_0 as JSON on standard output.
#include <iostream>

#include "framework/oem_registry.h"

int main() {
    std::cout << boost::json::serialize(odata::redfish::oem_message_registry()) << "\n";
    return std::cout.good() ? 0 : 1;
}
