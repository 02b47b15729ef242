// The drives in the bays of the host's onboard SATA backplane (the chassis
// member /redfish/v1/Chassis/StorageBackplane),
// .../StorageBackplane/Drives/Disk.Bay.<bay>, bays numbered from 0.
#pragma once

#include <string>
#include <vector>

#include "framework/redfish.h"
#include "platform/libstorage.h"

namespace odata::redfish {

inline constexpr const char* sata_backplane_id = "StorageBackplane";
inline constexpr const char* sata_backplane_uri = "/redfish/v1/Chassis/StorageBackplane";
inline constexpr const char* sata_storage_uri = "/redfish/v1/Systems/1/Storage/SATAEmbedded";

// The enclosure a drive or enclosure route names: its first capture.
std::string enclosure_captured(const request_context& context);

// Every bay of the onboard SATA controller, empty ones included.
std::vector<St_SataDrive> sata_bays();

// "Disk.Bay.<bay>"
std::string sata_bay_name(int bay);

// The Drive resource of each bay that holds a drive, and links to them.
std::vector<std::string> sata_drive_uris();
boost::json::array sata_drive_links();

struct raid_drive_ref;

// A drive of the onboard SATA bays, or of a RAID controller's enclosure.
class diskdrive : public redfish {
public:
    explicit diskdrive(request_context& context);
    int get(request_context& context) override;

private:
    // raid_drive.cpp
    void set_raid_drive(const raid_drive_ref& drive);
};

}  // namespace odata::redfish
