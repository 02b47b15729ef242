// The URIs of the dump service and its dumps.
#pragma once

namespace odata::redfish {

inline constexpr const char* dump_service_uri = "/redfish/v1/Oem/Tarnwright/DumpService";
inline constexpr const char* dumps_uri = "/redfish/v1/Oem/Tarnwright/DumpService/Dumps";
inline constexpr const char* create_dump_uri =
    "/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.CreateDump";
inline constexpr const char* delete_all_dumps_uri =
    "/redfish/v1/Oem/Tarnwright/DumpService/Actions/TwrDumpService.DeleteAll";
inline constexpr const char* create_dump_actioninfo_uri =
    "/redfish/v1/Oem/Tarnwright/DumpService/CreateDumpActionInfo";

}  // namespace odata::redfish
