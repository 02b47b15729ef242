#include "framework/version_documents.h"

#include <boost/json.hpp>
#include <iostream>

namespace odata::redfish {

int version_document::get(request_context&) {
    boost::json::object document;
    document[member_] = uri_;
    body_ = boost::json::serialize(document);
    return 0;
}

void version_document::send_response() {
    if (body_.empty()) return;
    write_headers(static_cast<unsigned>(body_.size()), body_);
    std::cout << body_;
}

}  // namespace odata::redfish
