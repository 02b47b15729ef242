// Text of FRU fields (type/length byte types), converted to and from UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform::fru {

enum field_type : uint8_t { binary = 0, bcd_plus = 1, six_bit_ascii = 2, eight_bit = 3 };

// The field's bytes as UTF-8 text: binary as upper-case hex digits, BCD
// plus and packed 6-bit ASCII unpacked, 8-bit as Latin-1 in English and as
// UCS-2 (least significant byte first) in other languages. Text ends at a
// NUL and loses trailing spaces. False for UCS-2 of odd length.
bool decode_text(uint8_t type, std::string_view data, bool english, std::string& text);

// The Latin-1 bytes of UTF-8 text; false when the text is not well-formed
// or has characters beyond U+00FF.
bool latin1_from_utf8(std::string_view utf8, std::string& latin1);

// Language codes 0 and 25 are English.
bool is_english(uint8_t language);

// The byte at index of FRU data, as the number it stands for.
inline uint8_t byte_at(std::string_view data, std::size_t index) {
    return static_cast<uint8_t>(data[index]);
}

}  // namespace platform::fru
