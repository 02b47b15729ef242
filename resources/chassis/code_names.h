// Tables that name the platform's numeric codes with Redfish values.
#pragma once

#include <algorithm>
#include <boost/json.hpp>
#include <cstddef>
#include <iterator>

namespace odata::redfish {

struct code_name {
    int code;
    const char* name;
};

// The name of code, or fallback (which may be null) when the table has none.
template <size_t size>
const char* name_of_code(const code_name (&table)[size], int code, const char* fallback) {
    auto found = std::find_if(std::begin(table), std::end(table),
                              [code](const code_name& entry) { return entry.code == code; });
    return found == std::end(table) ? fallback : found->name;
}

// The name of code as a JSON value; null when the table has none.
template <size_t size>
boost::json::value name_or_null(const code_name (&table)[size], int code) {
    const char* name = name_of_code(table, code, nullptr);
    return name ? boost::json::value(name) : boost::json::value(nullptr);
}

}  // namespace odata::redfish
