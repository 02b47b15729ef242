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
    // A text built once per process, answered without a copy.
    void set_lasting_text(const std::string& text) { lasting_text_ = &text; }

private:
    const std::string& text() const { return lasting_text_ ? *lasting_text_ : text_; }

    std::string text_;
    const std::string* lasting_text_ = nullptr;
};

}  // namespace odata::redfish
