// Case-insensitive matching of protocol words (URI schemes, MIME headers).
#pragma once

#include <algorithm>
#include <cctype>
#include <string>

namespace odata::redfish {

// text with ASCII letters in lower case.
inline std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

}  // namespace odata::redfish
