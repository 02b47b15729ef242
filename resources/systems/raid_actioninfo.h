// The ActionInfo resources of the RAID actions: those of a storage member
// (.../Oem/Tarnwright/CreateVolumeActionInfo, SaveActionInfo,
// ClearVolumesActionInfo, CreateVDActionInfo), of a volume's and of a
// drive's Indicate. Each answers 404 while its resource does not exist.
#pragma once

#include "framework/common_actioninfo.h"

namespace odata::redfish {

class haraidactioninfo : public common_actioninfo {
public:
    explicit haraidactioninfo(request_context& context);
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;
};

class volumeactioninfo : public common_actioninfo {
public:
    explicit volumeactioninfo(request_context& context);
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;
};

class drivesactioninfo : public common_actioninfo {
public:
    explicit drivesactioninfo(request_context& context);
    int get(request_context& context) override;

protected:
    const actioninfo_parameters* parameters() const override;
};

}  // namespace odata::redfish
