// The URIs of the system's crash-dump log service.
#pragma once

namespace odata::redfish {

inline constexpr const char* crashdump_service_uri = "/redfish/v1/Systems/1/LogServices/Crashdump";
inline constexpr const char* crashdump_entries_uri =
    "/redfish/v1/Systems/1/LogServices/Crashdump/Entries";
inline constexpr const char* crashdump_clear_uri =
    "/redfish/v1/Systems/1/LogServices/Crashdump/Actions/LogService.ClearLog";
inline constexpr const char* crashdump_on_demand_uri =
    "/redfish/v1/Systems/1/LogServices/Crashdump/Actions/Oem/Crashdump.OnDemand";
inline constexpr const char* crashdump_telemetry_uri =
    "/redfish/v1/Systems/1/LogServices/Crashdump/Actions/Oem/Crashdump.Telemetry";
inline constexpr const char* crashdump_send_raw_peci_uri =
    "/redfish/v1/Systems/1/LogServices/Crashdump/Actions/Oem/Crashdump.SendRawPeci";

}  // namespace odata::redfish
