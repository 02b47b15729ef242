// Prints the event message registry Event.v1_0_0 as JSON on standard output.
#include <iostream>

#include "framework/event_registry.h"

int main() {
    std::cout << boost::json::serialize(odata::redfish::event_message_registry()) << "\n";
    return std::cout.good() ? 0 : 1;
}
