// InsertMedia and EjectMedia of a virtual media drive, answering through
// the drive's resource, and the ActionInfo of InsertMedia.
#pragma once

#include <memory>

#include "framework/common_actioninfo.h"
#include "resources/managers/virtualmedia.h"

namespace odata::redfish {

class virtualmedia_insertmedia : public webservice {
public:
    explicit virtualmedia_insertmedia(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<virtualmedia> drive_;
};

class virtualmedia_ejectmedia : public webservice {
public:
    explicit virtualmedia_ejectmedia(request_context& context);
    int post(request_context& context) override;
    void send_response() override;

private:
    std::shared_ptr<virtualmedia> drive_;
};

class insertmediaactioninfo : public common_actioninfo {
public:
    explicit insertmediaactioninfo(request_context& context);
    // 404 for a drive that does not exist.
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
