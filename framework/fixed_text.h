// Text of the platform's fixed-size character fields.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace odata::redfish {

// The field's text up to its first NUL, or all of it when it has none.
template <std::size_t size>
std::string fixed_text(const char (&field)[size]) {
    return std::string(field, strnlen(field, size));
}

}  // namespace odata::redfish
