#include "resources/systems/bios_attributes.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>

#include "base/bmc_root.h"
#include "resources/systems/bios_boot_settings.h"

namespace odata::redfish {
namespace {

boost::json::object attributes_in(const char* bmc_file) {
    const boost::json::object document = read_json_object(bmc_file);
    const boost::json::value* found = document.if_contains("Attributes");
    return found && found->is_object() ? found->get_object() : boost::json::object{};
}

bool allowed_value(const St_BiosAttribute& attribute, const boost::json::string& value) {
    for (const char* const* allowed = attribute.values; allowed && *allowed; ++allowed)
        if (value == *allowed) return true;
    return false;
}

// The message for a value of the attribute's kind that it does not take;
// null when it takes it.
const char* refusal_of(const St_BiosAttribute& attribute, const boost::json::value& value) {
    switch (attribute.type) {
        case BIOS_ATTRIBUTE_INTEGER:
            if (!value.is_int64() && !value.is_uint64()) return "Base.1.10.PropertyValueTypeError";
            return value.is_int64() && value.get_int64() >= attribute.lower_bound &&
                           value.get_int64() <= attribute.upper_bound
                       ? nullptr
                       : "Base.1.10.PropertyValueOutOfRange";
        case BIOS_ATTRIBUTE_BOOLEAN:
            return value.is_bool() ? nullptr : "Base.1.10.PropertyValueTypeError";
        case BIOS_ATTRIBUTE_STRING:
            if (!value.is_string()) return "Base.1.10.PropertyValueTypeError";
            return value.get_string().size() <= static_cast<size_t>(attribute.max_length)
                       ? nullptr
                       : "Base.1.10.PropertyValueFormatError";
        default:
            if (!value.is_string()) return "Base.1.10.PropertyValueTypeError";
            return allowed_value(attribute, value.get_string())
                       ? nullptr
                       : "Base.1.10.PropertyValueNotInList";
    }
}

void read_attribute(const request_member& member, boost::json::object& changes,
                    result_record& result) {
    const St_BiosAttribute* attribute = find_bios_attribute(member.name);
    if (!attribute) return unknown_property::in_patch().report(result, member.path);
    if (attribute->read_only)
        return add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    if (const char* message = refusal_of(*attribute, member.value))
        return add_value_message(result, message, shown_value(member.value), member.path);
    if (member.value.is_string() && !member.value.get_string().empty() &&
        !require_storable(member.value.get_string(), member.path, result))
        return;
    changes[member.name] = member.value;
}

boost::json::value default_of(const St_BiosAttribute& attribute) {
    switch (attribute.type) {
        case BIOS_ATTRIBUTE_INTEGER:
            return std::strtoll(attribute.default_value, nullptr, 10);
        case BIOS_ATTRIBUTE_BOOLEAN:
            return std::string_view(attribute.default_value) == "true";
        default:
            return attribute.default_value;
    }
}

// An exclusive flock for the length of a read-modify-write.
class file_lock {
public:
    explicit file_lock(const std::string& path)
        : fd_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        locked_ = fd_ >= 0 && flock(fd_, LOCK_EX) == 0;
    }
    ~file_lock() {
        if (fd_ >= 0) close(fd_);
    }
    file_lock(const file_lock&) = delete;
    file_lock& operator=(const file_lock&) = delete;
    bool locked() const { return locked_; }

private:
    int fd_;
    bool locked_ = false;
};

}  // namespace

const St_BiosAttribute* find_bios_attribute(std::string_view name) {
    const St_BiosAttribute* table = nullptr;
    int count = 0;
    if (UtilGetBiosAttributeTable(&table, &count) != PLT_OK) return nullptr;
    for (int i = 0; i < count; ++i)
        if (name == table[i].name) return &table[i];
    return nullptr;
}

boost::json::object current_bios_attributes() {
    boost::json::object registered;
    for (const auto& [name, value] : attributes_in(BiosSharedFile(BIOS_FILE_ATTRIBUTES)))
        if (find_bios_attribute(name)) registered[name] = value;
    return registered;
}

boost::json::object pending_bios_attributes() {
    return attributes_in(BiosSharedFile(BIOS_FILE_SETTINGS_REQUEST));
}

void read_bios_attribute_changes(const request_member& attributes, boost::json::object& changes,
                                 result_record& result) {
    for_each_member(attributes.value, attributes.path, result,
                    [&](const request_member& member) { read_attribute(member, changes, result); });
}

bool add_pending_bios_attributes(const boost::json::object& changes) {
    const file_lock lock(platform::bmc_path(BiosSharedFile(BIOS_FILE_SETTINGS_REQUEST_LOCK)));
    if (!lock.locked()) return false;
    boost::json::object pending = pending_bios_attributes();
    for (const auto& [name, value] : changes) pending[name] = value;
    const std::string text = boost::json::serialize(boost::json::object{{"Attributes", pending}});
    return WriteConfigFile(BiosSharedFile(BIOS_FILE_SETTINGS_REQUEST), text.c_str()) == PLT_OK;
}

boost::json::object default_bios_attributes() {
    const St_BiosAttribute* table = nullptr;
    int count = 0;
    boost::json::object defaults;
    if (UtilGetBiosAttributeTable(&table, &count) != PLT_OK) return defaults;
    for (int i = 0; i < count; ++i)
        if (!table[i].read_only) defaults[table[i].name] = default_of(table[i]);
    return defaults;
}

std::optional<boost::json::value> reported_or_default(std::string_view name) {
    const St_BiosAttribute* attribute = find_bios_attribute(name);
    if (!attribute) return std::nullopt;
    const boost::json::object current = current_bios_attributes();
    const boost::json::value* reported = current.if_contains(name);
    return reported ? *reported : default_of(*attribute);
}

}  // namespace odata::redfish
