// Readers of PATCH properties into the optional fields of a change record,
// for the rows of a patch_property table, and the PATCH body of a settings
// resource read through such a table.
#pragma once

#include <boost/json.hpp>
#include <iterator>
#include <optional>
#include <string_view>

#include "framework/property_checks.h"

namespace odata::redfish {

template <class>
struct change_record_of;
template <class record, class field>
struct change_record_of<std::optional<field> record::*> {
    using type = record;
};
template <auto field>
using change_record = typename change_record_of<decltype(field)>::type;

template <auto field>
void read_flag(const request_member& member, change_record<field>& changes, result_record& result) {
    if (const std::optional<bool> value = require_boolean(member.value, member.path, result))
        changes.*field = *value;
}

template <auto field, long min, long max>
void read_integer(const request_member& member, change_record<field>& changes,
                  result_record& result) {
    if (const std::optional<long> value =
            require_integer_in_range(member.value, min, max, member.path, result))
        changes.*field = static_cast<int>(*value);
}

// The index of the value in names; PropertyValueNotInList for another text.
std::optional<int> require_listed(const request_member& member, const std::string_view* names,
                                  std::size_t count, result_record& result);

template <auto field, const auto& names>
void read_choice(const request_member& member, change_record<field>& changes,
                 result_record& result) {
    if (const std::optional<int> index =
            require_listed(member, std::data(names), std::size(names), result))
        changes.*field = *index;
}

// PropertyNotWritable.
void refuse_not_writable(const request_member& member, result_record& result);

// The row of a property that GET shows and a client cannot change.
template <class changes>
void read_only(const request_member& member, changes&, result_record& result) {
    refuse_not_writable(member, result);
}

// What GET shows of every settings resource ("@odata.id", "Id", "Name",
// ...) and a client cannot change.
bool is_common_read_only(std::string_view name);

// Reads every member of a settings resource's PATCH body through table,
// adding a message to result for each refusal.
template <class changes, size_t size>
changes read_settings_members(const patch_property<changes> (&table)[size],
                              const boost::json::value& body, result_record& result) {
    changes read;
    for (const auto& [name, value] : request_object(body)) {
        const request_member member{std::string(name), value, std::string(name)};
        if (is_common_read_only(member.name))
            refuse_not_writable(member, result);
        else
            read_patch_property(table, member, read, result);
    }
    return read;
}

// The same; 400 with every refusal, and nothing is changed then.
template <class changes, size_t size>
changes read_settings_patch(const patch_property<changes> (&table)[size],
                            const boost::json::value& body) {
    result_record result = general_error();
    changes read = read_settings_members(table, body, result);
    refuse_if_reported(result);
    return read;
}

// A platform call of a settings handler that failed: logged, 500.
void require_platform_ok(int platform_result, const char* resource);

}  // namespace odata::redfish
