// A handler whose GET answers a ready text rather than a resource value:
// the service document and the metadata document.
#pragma once

#include <string>

#include "framework/webservice.h"

namespace odata::redfish {

class plain_document : public webservice {
public:
    // The headers and the text; nothing when GET has not run.
    void send_response() override;

protected:
    using webservice::webservice;
    ~plain_document() = default;

    void set_text(std::string text) { text_ = std::move(text); }

private:
    std::string text_;
};

}  // namespace odata::redfish
