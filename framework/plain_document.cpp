#include "framework/plain_document.h"

#include <iostream>

namespace odata::redfish {

void plain_document::send_response() {
    const std::string& answer = text();
    if (answer.empty()) return;
    write_headers(static_cast<unsigned>(answer.size()), answer);
    std::cout << answer;
}

}  // namespace odata::redfish
