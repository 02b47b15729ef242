#include "framework/version_documents.h"

#include <boost/json.hpp>

namespace odata::redfish {

int version_document::get(request_context&) {
    boost::json::object document;
    document[member_] = uri_;
    set_text(boost::json::serialize(document));
    return 0;
}

}  // namespace odata::redfish
