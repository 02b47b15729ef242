// The host's SATA storage and drives, and the SEL published under the
// manager and the system, as handlers build them on a fresh simulated BMC.
#include <gtest/gtest.h>

#include "frontend/exception_http.h"
#include "hardware_root_fixture.h"
#include "platform/libipmi.h"
#include "platform/sim/sata_drives.h"
#include "resources/chassis/sata_backplane.h"
#include "resources/chassis/storage_enclosures.h"
#include "resources/managers/lan_dns.h"
#include "resources/managers/log_entries.h"
#include "resources/managers/log_services.h"
#include "resources/systems/storage.h"

using namespace odata::redfish;

namespace {

class StorageAndLogs : public sim_testing::hardware_root {};

request_context context_of(std::vector<std::string> captures) {
    request_context context;
    context.method = GET;
    context.captures = std::move(captures);
    return context;
}

template <class handler>
boost::json::object read(std::vector<std::string> captures = {}) {
    request_context context = context_of(std::move(captures));
    handler resource(context);
    resource.get(context);
    return resource.value();
}

// The status line of the error GET throws, "" for none.
template <class handler>
std::string error_of(std::vector<std::string> captures) {
    try {
        read<handler>(std::move(captures));
    } catch (const exception_http& error) {
        return error.headers().substr(0, error.headers().find("\r\n"));
    }
    return "";
}

const std::string not_found = "Status: 404 Not Found";

// The captures of .../Chassis/StorageBackplane/Drives/Disk.Bay.<bay>.
std::vector<std::string> backplane_bay(const std::string& bay) {
    return {"StorageBackplane", "StorageBackplane", "StorageBackplane", "Disk.Bay.", bay};
}

}  // namespace

TEST_F(StorageAndLogs, DrivesAreThePresentBaysOfTheBackplane) {
    const auto drive = read<diskdrive>(backplane_bay("1"));
    EXPECT_EQ(drive.at("@odata.id"), "/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.1");
    EXPECT_EQ(drive.at("Id"), "Disk.Bay.1");
    EXPECT_EQ(drive.at("Protocol"), "SATA");
    ASSERT_TRUE(platform::set_sata_drive_present(1, false));
    EXPECT_EQ(error_of<diskdrive>(backplane_bay("1")), not_found);
    EXPECT_EQ(read<storage>({"SATAEmbedded"}).at("Drives@odata.count"), 1);
    EXPECT_EQ(sata_drive_uris(),
              std::vector<std::string>{"/redfish/v1/Chassis/StorageBackplane/Drives/Disk.Bay.0"});
}

TEST_F(StorageAndLogs, NamesThatAreNotBaysOrControllersAreNotFound) {
    for (const char* bay : {"2", "01", "-1", "4294967296", ""})
        EXPECT_EQ(error_of<diskdrive>(backplane_bay(bay)), not_found) << bay;
    EXPECT_EQ(error_of<diskdrive>({"HA-RAID.0.StorageEnclosure.0", "Disk.Bay.", "0"}), not_found);
    EXPECT_EQ(error_of<diskdrive>({}), not_found);
    EXPECT_EQ(error_of<storagepod>({"NVMeSSD.0.Group.0.StorageBackplane"}), not_found);
    EXPECT_EQ(error_of<storagepod>({}), not_found);
    EXPECT_EQ(error_of<storage>({"HBA"}), not_found);
    EXPECT_EQ(error_of<storage>({}), not_found);
}

TEST_F(StorageAndLogs, EachPlaceOfTheSelLinksItsOwnUris) {
    ASSERT_EQ(LibSaveSysEvtLog(200, 0, "Fan 3 failed"), 0);
    const auto service = read<systems_logservices>();
    EXPECT_EQ(service.at("Entries").at("@odata.id"),
              "/redfish/v1/Systems/1/LogServices/Log1/Entries");
    EXPECT_EQ(service.at("Actions").at("#LogService.ClearLog").at("target"),
              "/redfish/v1/Systems/1/LogServices/Log1/Actions/LogService.ClearLog");
    const auto entry = read<systems_logentry>({"1"});
    EXPECT_EQ(entry.at("@odata.id"), "/redfish/v1/Systems/1/LogServices/Log1/Entries/1");
    EXPECT_EQ(entry.at("Links").at("OriginOfCondition").at("@odata.id"), "/redfish/v1/Systems/1");
    EXPECT_EQ(read<managers_logentry>({"1"}).at("Links").at("OriginOfCondition").at("@odata.id"),
              "/redfish/v1/Managers/1");
    for (const char* id : {"0", "01", "2", "99999999999"})
        EXPECT_EQ(error_of<systems_logentry>({id}), not_found) << id;
}

TEST(LanDns, TheFqdnIsTheHostNameInItsDomain) {
    St_LanConfig lan{};
    std::snprintf(lan.host_name, sizeof lan.host_name, "bmc");
    EXPECT_EQ(lan_fqdn(lan), "bmc");
    EXPECT_TRUE(lan_name_servers(lan).empty());
    std::snprintf(lan.domain_name, sizeof lan.domain_name, "lab.example");
    std::snprintf(lan.name_servers[1], sizeof lan.name_servers[1], "10.0.0.54");
    EXPECT_EQ(lan_fqdn(lan), "bmc.lab.example");
    EXPECT_EQ(lan_name_servers(lan), boost::json::array{"10.0.0.54"});
}
