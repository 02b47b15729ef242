// Text joined from pieces in one allocation: names and URIs are built on
// every request, and each "+" of std::string may allocate anew.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace platform {

inline std::string joined(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (std::string_view piece : pieces) size += piece.size();
    std::string text;
    text.reserve(size);
    for (std::string_view piece : pieces) text.append(piece);
    return text;
}

}  // namespace platform
