#include "resources/systems/volume_request.h"

#include <algorithm>
#include <optional>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "platform/libraid.h"

namespace odata::redfish {
namespace {

struct reader {
    const raid_family& family;
    const std::string& action;
    result_record& result;
    volume_request request;
    std::optional<int> controller;  // of the first drive read

    void type_error(const boost::json::value& value, const std::string& path) {
        add_message(result, "Base.1.10.ActionParameterValueTypeError",
                    {shown_value(value), path, action}, {"/" + path});
    }

    void read_level(const boost::json::value& value) {
        const boost::json::string* text = value.if_string();
        if (!text) return type_error(value, "RAIDType");
        const std::optional<int> level = raid_level_of(*text);
        if (!level)
            return add_message(result, "Base.1.10.ActionParameterValueNotInList",
                               {std::string(*text), "RAIDType", action}, {"/RAIDType"});
        request.level = *level;
    }

    // A name the controller can keep: printable, at most 15 characters.
    void read_name(const boost::json::value& value) {
        const boost::json::string* text = value.if_string();
        if (!text) return type_error(value, "Name");
        const bool printable = std::all_of(text->begin(), text->end(), [](char c) {
            return static_cast<unsigned char>(c) >= 0x20 && c != 0x7f;
        });
        if (!printable || text->size() > RAID_VOLUME_NAME_MAX)
            return add_message(result, "Base.1.10.ActionParameterValueFormatError",
                               {std::string(*text), "Name", action}, {"/Name"});
        request.name = std::string(*text);
    }

    void read_drive(const boost::json::value& value, const std::string& path) {
        const boost::json::object* entry = value.if_object();
        const boost::json::value* id = entry ? entry->if_contains("@odata.id") : nullptr;
        if (!id || !id->is_string()) return type_error(value, path);
        const std::string uri(id->as_string());
        const auto drive = raid_drive_of_path(uri);
        St_RaidDrive info{};
        if (!drive || drive->family != &family || uri != raid_drive_uri(*drive) ||
            (controller && *controller != drive->controller) ||
            UtilRaidGetDrive(family.family, drive->controller, drive->bay, &info) != PLT_OK)
            return add_message(result, "Base.1.10.ActionParameterValueNotInList",
                               {uri, "Drives", action}, {"/" + path});
        controller = drive->controller;
        const auto bay = static_cast<uint8_t>(drive->bay);
        if (std::count(request.bays.begin(), request.bays.end(), bay) != 0)
            return add_message(result, "Base.1.10.ActionParameterValueFormatError",
                               {uri, "Drives", action}, {"/" + path});
        request.bays.push_back(bay);
        const bool erasing = info.erase_percent >= 0 && info.erase_percent < 100;
        if (info.volume >= 0 || info.state == RAID_DRIVE_FAILED || erasing)
            add_message(result, "Base.1.10.ResourceInUse", {}, {"/" + path});
    }

    void read_drives(const boost::json::value& value) {
        const boost::json::array* drives = value.if_array();
        if (!drives || drives->empty()) return type_error(value, "Drives");
        for (std::size_t i = 0; i < drives->size(); ++i)
            read_drive((*drives)[i], "Drives/" + std::to_string(i));
    }

    void read(const std::string& name, const boost::json::value& value) {
        if (name == "RAIDType") return read_level(value);
        if (name == "Drives") return read_drives(value);
        if (name == "Name") return read_name(value);
        unknown_property::in_post(action).report(result, name);
    }
};

}  // namespace

volume_request read_volume_request(const boost::json::value& body, const raid_family& family,
                                   const std::string& action) {
    const boost::json::object& parameters = request_object(body);
    result_record result = general_error();
    reader check{family, action, result, {}, std::nullopt};
    for (const auto& [name, value] : parameters) check.read(std::string(name), value);
    for (const char* required : {"RAIDType", "Drives"})
        if (!parameters.contains(required))
            add_message(result, "Base.1.10.ActionParameterMissing", {action, required});
    const bool counted = parameters.contains("RAIDType") && parameters.contains("Drives");
    if (counted && result.entries.empty() &&
        UtilRaidCheckLevel(check.request.level, static_cast<int>(check.request.bays.size())) !=
            PLT_OK)
        add_message(result, "Base.1.10.PropertyValueConflict", {"Drives", "RAIDType"}, {"/Drives"});
    refuse_if_reported(result);
    check.request.controller = check.controller.value_or(0);
    return check.request;
}

}  // namespace odata::redfish
