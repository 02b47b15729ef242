#include "framework/plain_document.h"

#include <iostream>

namespace odata::redfish {

void plain_document::send_response() {
    if (text_.empty()) return;
    write_headers(static_cast<unsigned>(text_.size()), text_);
    std::cout << text_;
}

}  // namespace odata::redfish
