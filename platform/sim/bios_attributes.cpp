#include "platform/sim/bios_attributes.h"

#include <boost/json.hpp>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "base/bmc_root.h"
#include "base/input_recording.h"
#include "platform/libbios.h"
#include "platform/sim/sim_file.h"

namespace {

constexpr const char* enabled_disabled[] = {"Enabled", "Disabled", nullptr};
constexpr const char* boot_modes[] = {"UEFI", "Legacy", nullptr};
constexpr const char* restore_policies[] = {"PowerOff", "PowerOn", "LastState", nullptr};
constexpr const char* http_boot_policies[] = {"Apply to each LAN", "Boot Priority #1 instantly",
                                              nullptr};
constexpr const char* ip_versions[] = {"IPv4", "IPv6", nullptr};

constexpr St_BiosAttribute attributes[] = {
    {"BootMode", "Boot Mode", BIOS_ATTRIBUTE_ENUMERATION, boot_modes, 0, 0, 0, 0, "UEFI"},
    {"QuietBoot", "Quiet Boot", BIOS_ATTRIBUTE_BOOLEAN, nullptr, 0, 0, 0, 0, "true"},
    {"BootTimeout", "Boot Timeout (seconds)", BIOS_ATTRIBUTE_INTEGER, nullptr, 0, 65535, 0, 0, "5"},
    {"HyperThreading", "Hyper-Threading", BIOS_ATTRIBUTE_ENUMERATION, enabled_disabled, 0, 0, 0, 0,
     "Enabled"},
    {"VTd", "Intel VT for Directed I/O", BIOS_ATTRIBUTE_ENUMERATION, enabled_disabled, 0, 0, 0, 0,
     "Enabled"},
    {"SRIOVSupport", "SR-IOV Support", BIOS_ATTRIBUTE_ENUMERATION, enabled_disabled, 0, 0, 0, 0,
     "Disabled"},
    {"SecureBoot", "Secure Boot", BIOS_ATTRIBUTE_ENUMERATION, enabled_disabled, 0, 0, 0, 0,
     "Disabled"},
    {"PowerRestorePolicy", "Restore on AC Power Loss", BIOS_ATTRIBUTE_ENUMERATION, restore_policies,
     0, 0, 0, 0, "LastState"},
    {"HTTPBootPolicy", "HTTP Boot Policy", BIOS_ATTRIBUTE_ENUMERATION, http_boot_policies, 0, 0, 0,
     0, "Apply to each LAN"},
    {"SelectIPv4orIPv6", "HTTP Boot IP Version", BIOS_ATTRIBUTE_ENUMERATION, ip_versions, 0, 0, 0,
     0, "IPv4"},
    {"BootDescription", "HTTP Boot Description", BIOS_ATTRIBUTE_STRING, nullptr, 0, 0, 75, 0,
     "HTTP Boot"},
    {"BootURI", "HTTP Boot URI", BIOS_ATTRIBUTE_STRING, nullptr, 0, 0, 255, 0, ""},
    {"BiosRevision", "BIOS Revision", BIOS_ATTRIBUTE_STRING, nullptr, 0, 0, 16, 1, "2.1.0"},
};

boost::json::object attributes_in(const char* bmc_file) {
    const std::string path = platform::bmc_path(bmc_file);
    platform::note_input_file(path);
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    boost::system::error_code error;
    boost::json::value document = boost::json::parse(text.str(), error);
    const boost::json::value* found =
        !error && document.is_object() ? document.get_object().if_contains("Attributes") : nullptr;
    return found && found->is_object() ? found->get_object() : boost::json::object{};
}

boost::json::value default_of(const St_BiosAttribute& attribute) {
    switch (attribute.type) {
        case BIOS_ATTRIBUTE_INTEGER:
            return std::stol(attribute.default_value);
        case BIOS_ATTRIBUTE_BOOLEAN:
            return std::string_view(attribute.default_value) == "true";
        default:
            return attribute.default_value;
    }
}

bool fits(const St_BiosAttribute& attribute, const boost::json::value& value) {
    switch (attribute.type) {
        case BIOS_ATTRIBUTE_INTEGER:
            return value.is_int64() && value.get_int64() >= attribute.lower_bound &&
                   value.get_int64() <= attribute.upper_bound;
        case BIOS_ATTRIBUTE_BOOLEAN:
            return value.is_bool();
        case BIOS_ATTRIBUTE_STRING:
            return value.is_string() &&
                   value.get_string().size() <= static_cast<size_t>(attribute.max_length);
        default:
            for (const char* const* allowed = attribute.values; allowed && *allowed; ++allowed)
                if (value.is_string() && value.get_string() == *allowed) return true;
            return false;
    }
}

}  // namespace

namespace platform {

bool post_bios_settings() {
    const boost::json::object current = attributes_in(BiosSharedFile(BIOS_FILE_ATTRIBUTES));
    const boost::json::object pending = attributes_in(BiosSharedFile(BIOS_FILE_SETTINGS_REQUEST));
    boost::json::object posted;
    for (const St_BiosAttribute& attribute : attributes) {
        const boost::json::value* change = pending.if_contains(attribute.name);
        const boost::json::value* kept = current.if_contains(attribute.name);
        if (change && !attribute.read_only && fits(attribute, *change))
            posted[attribute.name] = *change;
        else
            posted[attribute.name] = kept && fits(attribute, *kept) ? *kept : default_of(attribute);
    }
    const std::string text = boost::json::serialize(boost::json::object{{"Attributes", posted}});
    if (!sim::replace_file(bmc_path(BiosSharedFile(BIOS_FILE_ATTRIBUTES)), text, 0644))
        return false;
    return std::remove(bmc_path(BiosSharedFile(BIOS_FILE_SETTINGS_REQUEST)).c_str()) == 0 ||
           errno == ENOENT;
}

}  // namespace platform

extern "C" int UtilGetBiosAttributeTable(const St_BiosAttribute** table, int* count) {
    if (!table || !count) return PLT_ERR_ARGUMENT;
    *table = attributes;
    *count = static_cast<int>(std::size(attributes));
    return PLT_OK;
}
