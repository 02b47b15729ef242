#include "platform/sim/smbios_table.h"

#include <cstring>

namespace platform::smbios {
namespace {

constexpr std::size_t header_size = 4;

uint64_t little_endian(std::string_view area, std::size_t offset, std::size_t size) {
    if (offset > area.size() || size > area.size() - offset) return 0;
    uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= static_cast<uint64_t>(static_cast<uint8_t>(area[offset + i])) << (8 * i);
    return value;
}

// Reads the string set at position; returns the position after it, or 0
// when it has no terminator inside the table.
std::size_t read_strings(std::string_view table, std::size_t position,
                         std::vector<const char*>& strings) {
    if (table.size() - position < 2) return 0;
    if (table[position] == '\0') return table[position + 1] == '\0' ? position + 2 : 0;
    while (position < table.size() && table[position] != '\0') {
        const void* nul = std::memchr(table.data() + position, '\0', table.size() - position);
        if (!nul) return 0;
        strings.push_back(table.data() + position);
        position = static_cast<std::size_t>(static_cast<const char*>(nul) - table.data()) + 1;
    }
    return position < table.size() ? position + 1 : 0;
}

}  // namespace

uint8_t structure::byte(std::size_t offset) const {
    return static_cast<uint8_t>(little_endian(formatted, offset, 1));
}

uint16_t structure::word(std::size_t offset) const {
    return static_cast<uint16_t>(little_endian(formatted, offset, 2));
}

uint32_t structure::dword(std::size_t offset) const {
    return static_cast<uint32_t>(little_endian(formatted, offset, 4));
}

uint64_t structure::qword(std::size_t offset) const { return little_endian(formatted, offset, 8); }

const char* structure::text(std::size_t offset) const {
    std::size_t number = byte(offset);
    return number == 0 || number > strings.size() ? nullptr : strings[number - 1];
}

bool parse_table(std::string_view table, std::vector<structure>& structures) {
    structures.clear();
    std::size_t position = 0;
    while (table.size() - position >= header_size) {
        structure next;
        next.type = static_cast<uint8_t>(table[position]);
        std::size_t length = static_cast<uint8_t>(table[position + 1]);
        if (length < header_size || length > table.size() - position) break;
        next.formatted = table.substr(position, length);
        next.handle = next.word(2);
        position = read_strings(table, position + length, next.strings);
        if (position == 0) break;
        structures.push_back(std::move(next));
        if (structures.back().type == end_of_table) return true;
    }
    structures.clear();
    return false;
}

}  // namespace platform::smbios
