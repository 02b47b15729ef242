// The SMBIOS structure table: structures of a formatted area (type, length,
// handle, fields) followed by a string set (NUL-terminated strings ending
// in an extra NUL, or two NULs when there are none), up to the
// end-of-table structure (type 127).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace platform::smbios {

constexpr uint8_t end_of_table = 127;

// One structure; views into the table, which must outlive it.
struct structure {
    uint8_t type = 0;
    uint16_t handle = 0;
    std::string_view formatted;        // header included
    std::vector<const char*> strings;  // each NUL-terminated in the table

    // Fields at an offset of the formatted area, little-endian; 0 when the
    // field lies (partly) beyond the area.
    uint8_t byte(std::size_t offset) const;
    uint16_t word(std::size_t offset) const;
    uint32_t dword(std::size_t offset) const;
    uint64_t qword(std::size_t offset) const;
    // The string whose number is the byte at offset; null for number 0,
    // a number past the string set or an offset beyond the area.
    const char* text(std::size_t offset) const;
};

// Every structure up to and including the end-of-table structure; false
// when a structure is shorter than its header or runs past the table, a
// string set lacks its terminator, or the end-of-table structure is missing.
bool parse_table(std::string_view table, std::vector<structure>& structures);

}  // namespace platform::smbios
