// The BIOS's side of booting, in the files the service shares with the
// BIOS configuration programs (BiosSharedFile of platform/libbios.h):
//
//   ATTRIBUTES            {"Attributes": {"BootURI": "...", ...}}  the BIOS's current
//                         attributes
//   SAVING_RESULT         {"Pendding": {"BootURI": "...", ...}}  changes waiting for the
//                         next boot
//   SETTINGS_REQUEST      {"Attributes": {...}}  HTTP boot attributes to hand over
//   BOOT_NEXT_REQUEST     {"BootNext": "Boot0001"}  the BootNext to hand over
//   BOOT_SETTINGS         INI: BootOrder=Boot0001,Boot0002  BootNext=Boot0002
//   FEATURE_FLAGS         INI: UefiBootNext=1 when the BIOS takes a BootNext
//   *_RESTORE_SETTINGS    INI: BootNext=<option> while a BootNext is pending; the HII
//                         one with the HII daemon, the other two without
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace odata::redfish {

// The JSON object in a BIOS file; empty when it is missing, empty or not
// an object.
boost::json::object read_json_object(const char* bmc_file);

// The BIOS's HTTP boot URI, pending or current; null when the BIOS has no
// such attribute (HTTP boot not supported).
std::optional<std::string> http_boot_uri();

// True while a BootNext selection waits for the next boot.
bool boot_next_pending();

// True when both the BIOS's feature flags and the HII daemon take a BootNext.
bool uefi_boot_next_allowed();

// The boot options the BIOS reported; an empty order means none.
struct bios_boot_options {
    std::vector<std::string> order;
    std::string next;
};
bios_boot_options read_bios_boot_options();

// "http://" or "https://", a host, and only printable characters without blanks.
bool is_http_boot_uri(std::string_view uri);

// Hands the HTTP boot attributes for uri to the BIOS ("" stops HTTP boot).
bool write_http_boot_request(const std::string& uri);

// Hands the BootNext option to the BIOS.
bool write_boot_next_request(const std::string& option);

// The two request files as they stand (null: absent), to be put back when
// a change that wrote them fails later on.
struct bios_requests {
    std::optional<std::string> http_boot;
    std::optional<std::string> boot_next;
};
bios_requests read_bios_requests();
void restore_bios_requests(const bios_requests& requests);

}  // namespace odata::redfish
