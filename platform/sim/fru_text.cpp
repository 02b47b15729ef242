#include "platform/sim/fru_text.h"

#include <cstddef>

namespace platform::fru {
namespace {

void append_utf8(std::string& text, uint32_t code_point) {
    if (code_point < 0x80) {
        text += static_cast<char>(code_point);
    } else if (code_point < 0x800) {
        text += static_cast<char>(0xC0 | (code_point >> 6));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (code_point >> 12));
        text += static_cast<char>(0x80 | ((code_point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code_point & 0x3F));
    }
}

std::string hex_text(std::string_view data) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < data.size(); ++i) {
        text += digits[byte_at(data, i) >> 4];
        text += digits[byte_at(data, i) & 0x0F];
    }
    return text;
}

std::string bcd_plus_text(std::string_view data) {
    static constexpr char digits[] = "0123456789 -.???";
    std::string text;
    for (std::size_t i = 0; i < data.size(); ++i) {
        text += digits[byte_at(data, i) >> 4];
        text += digits[byte_at(data, i) & 0x0F];
    }
    return text;
}

// Four 6-bit characters in three bytes, least significant bits first.
std::string six_bit_text(std::string_view data) {
    std::string text;
    std::size_t characters = data.size() * 8 / 6;
    for (std::size_t i = 0; i < characters; ++i) {
        std::size_t bit = i * 6;
        unsigned value = byte_at(data, bit / 8) >> (bit % 8);
        if (bit % 8 > 2)
            value |= static_cast<unsigned>(byte_at(data, bit / 8 + 1)) << (8 - bit % 8);
        text += static_cast<char>((value & 0x3F) + 0x20);
    }
    return text;
}

std::string latin1_text(std::string_view data) {
    std::string text;
    for (std::size_t i = 0; i < data.size(); ++i) append_utf8(text, byte_at(data, i));
    return text;
}

std::string ucs2_text(std::string_view data) {
    std::string text;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        uint32_t unit = byte_at(data, i) | (static_cast<uint32_t>(byte_at(data, i + 1)) << 8);
        append_utf8(text, unit >= 0xD800 && unit <= 0xDFFF ? 0xFFFD : unit);
    }
    return text;
}

void trim(std::string& text) {
    auto nul = text.find('\0');
    if (nul != std::string::npos) text.erase(nul);
    while (!text.empty() && text.back() == ' ') text.pop_back();
}

}  // namespace

bool decode_text(uint8_t type, std::string_view data, bool english, std::string& text) {
    switch (type) {
        case binary:
            text = hex_text(data);
            return true;
        case bcd_plus:
            text = bcd_plus_text(data);
            break;
        case six_bit_ascii:
            text = six_bit_text(data);
            break;
        default:
            if (!english && data.size() % 2 != 0) return false;
            text = english ? latin1_text(data) : ucs2_text(data);
            break;
    }
    trim(text);
    return true;
}

bool latin1_from_utf8(std::string_view utf8, std::string& latin1) {
    latin1.clear();
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        unsigned char lead = byte_at(utf8, i);
        if (lead < 0x80) {
            latin1 += static_cast<char>(lead);
            continue;
        }
        if ((lead != 0xC2 && lead != 0xC3) || i + 1 >= utf8.size()) return false;
        unsigned char next = byte_at(utf8, ++i);
        if ((next & 0xC0) != 0x80) return false;
        latin1 += static_cast<char>(((lead & 0x03) << 6) | (next & 0x3F));
    }
    return true;
}

bool is_english(uint8_t language) { return language == 0 || language == 25; }

}  // namespace platform::fru
