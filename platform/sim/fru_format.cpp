#include "platform/sim/fru_format.h"

namespace platform::fru {
namespace {

constexpr std::size_t header_size = 8;
constexpr std::size_t block = 8;  // offsets and lengths count 8-byte blocks
constexpr uint8_t format_version = 0x01;
constexpr uint8_t end_of_fields = 0xC1;
constexpr std::size_t max_field_length = 0x3F;
constexpr std::size_t multirecord_header_size = 5;
constexpr uint8_t end_of_list = 0x80;

// Header byte of each area's offset, in encoding order.
enum header_slot : std::size_t {
    internal_slot = 1,
    chassis_slot,
    board_slot,
    product_slot,
    multirecord_slot
};

uint8_t checksum_of(std::string_view data) {
    unsigned sum = 0;
    for (std::size_t i = 0; i < data.size(); ++i) sum += byte_at(data, i);
    return static_cast<uint8_t>(-sum & 0xFF);
}

// Bytes before the fields: version, length, then the area's own.
std::size_t area_prefix(area_kind kind) { return kind == area_kind::board ? 6 : 3; }

header_slot slot_of(area_kind kind) {
    switch (kind) {
        case area_kind::chassis:
            return chassis_slot;
        case area_kind::board:
            return board_slot;
        default:
            return product_slot;
    }
}

bool parse_fields(std::string_view fields, std::size_t fixed, std::vector<field>& parsed) {
    std::size_t position = 0;
    while (position < fields.size()) {
        uint8_t type_length = byte_at(fields, position++);
        if (type_length == end_of_fields) return parsed.size() >= fixed;
        std::size_t length = type_length & max_field_length;
        if (length > fields.size() - position) return false;
        parsed.push_back(
            {static_cast<uint8_t>(type_length >> 6), std::string(fields.substr(position, length))});
        position += length;
    }
    return false;
}

bool parse_area(std::string_view bytes, std::size_t offset, area_kind kind, info_area& area) {
    if (offset + 2 > bytes.size() || (byte_at(bytes, offset) & 0x0F) != format_version)
        return false;
    std::size_t length = byte_at(bytes, offset + 1) * block;
    std::size_t prefix = area_prefix(kind);
    if (length < prefix + 2 || length > bytes.size() - offset) return false;
    std::string_view whole = bytes.substr(offset, length);
    if (checksum_of(whole) != 0) return false;
    area.code = byte_at(whole, 2);
    if (kind == area_kind::board)
        area.mfg_minutes = byte_at(whole, 3) | byte_at(whole, 4) << 8 | byte_at(whole, 5) << 16;
    return parse_fields(whole.substr(prefix, length - prefix - 1), fixed_field_count(kind),
                        area.fields);
}

// The end of the record list that starts at offset, 0 when it is corrupt.
std::size_t multirecord_end(std::string_view bytes, std::size_t offset) {
    while (offset + multirecord_header_size <= bytes.size()) {
        std::string_view header = bytes.substr(offset, multirecord_header_size);
        std::size_t length = byte_at(header, 2);
        std::size_t data_start = offset + multirecord_header_size;
        if (checksum_of(header) != 0 || length > bytes.size() - data_start) return 0;
        std::string_view data = bytes.substr(data_start, length);
        if (checksum_of(data) != byte_at(header, 3)) return 0;
        offset = data_start + length;
        if (byte_at(header, 1) & end_of_list) return offset;
    }
    return 0;
}

// The internal use area runs to the next area, or to the end of the image.
std::size_t internal_use_end(std::string_view bytes, std::string_view header, std::size_t start) {
    std::size_t end = bytes.size();
    for (std::size_t slot = chassis_slot; slot <= multirecord_slot; ++slot) {
        std::size_t other = byte_at(header, slot) * block;
        if (other > start && other < end) end = other;
    }
    return end;
}

bool parse_raw_areas(std::string_view bytes, std::string_view header, image& parsed) {
    if (std::size_t start = byte_at(header, internal_slot) * block) {
        if (start >= bytes.size()) return false;
        parsed.internal_use =
            std::string(bytes.substr(start, internal_use_end(bytes, header, start) - start));
    }
    if (std::size_t start = byte_at(header, multirecord_slot) * block) {
        std::size_t end = multirecord_end(bytes, start);
        if (end == 0) return false;
        parsed.multirecord = std::string(bytes.substr(start, end - start));
    }
    return true;
}

bool encode_area(area_kind kind, const info_area& area, std::string& out) {
    std::string bytes{static_cast<char>(format_version), '\0', static_cast<char>(area.code)};
    if (kind == area_kind::board)
        for (int shift = 0; shift < 24; shift += 8)
            bytes += static_cast<char>((area.mfg_minutes >> shift) & 0xFF);
    for (const field& each : area.fields) {
        if (each.data.size() > max_field_length) return false;
        const auto type_length = static_cast<uint8_t>(((each.type & 0x03) << 6) | each.data.size());
        if (type_length == end_of_fields) return false;
        bytes += static_cast<char>(type_length);
        bytes += each.data;
    }
    bytes += static_cast<char>(end_of_fields);
    bytes.append((block - (bytes.size() + 1) % block) % block, '\0');
    std::size_t blocks = (bytes.size() + 1) / block;
    if (blocks > 0xFF) return false;
    bytes[1] = static_cast<char>(blocks);
    bytes += static_cast<char>(checksum_of(bytes));
    out = bytes;
    return true;
}

// Appends an area at the next block and notes its offset in the header.
bool place(std::string& bytes, header_slot slot, const std::string& area) {
    if (area.empty()) return true;
    bytes.append((block - bytes.size() % block) % block, '\0');
    if (bytes.size() / block > 0xFF) return false;
    bytes[slot] = static_cast<char>(bytes.size() / block);
    bytes += area;
    return true;
}

}  // namespace

std::size_t fixed_field_count(area_kind kind) {
    switch (kind) {
        case area_kind::chassis:
            return 2;
        case area_kind::board:
            return 5;
        default:
            return 7;
    }
}

std::optional<info_area>& image::area(area_kind kind) {
    return kind == area_kind::chassis ? chassis : kind == area_kind::board ? board : product;
}

const std::optional<info_area>& image::area(area_kind kind) const {
    return kind == area_kind::chassis ? chassis : kind == area_kind::board ? board : product;
}

bool parse_image(std::string_view bytes, image& parsed) {
    parsed = image();
    if (bytes.size() < header_size) return false;
    std::string_view header = bytes.substr(0, header_size);
    if ((byte_at(header, 0) & 0x0F) != format_version || checksum_of(header) != 0) return false;
    for (area_kind kind : {area_kind::chassis, area_kind::board, area_kind::product}) {
        std::size_t offset = byte_at(header, slot_of(kind)) * block;
        if (offset == 0) continue;
        info_area area;
        if (!parse_area(bytes, offset, kind, area)) return false;
        parsed.area(kind) = std::move(area);
    }
    return parse_raw_areas(bytes, header, parsed);
}

bool encode_image(const image& source, std::string& bytes) {
    std::string encoded(header_size, '\0');
    encoded[0] = static_cast<char>(format_version);
    if (!place(encoded, internal_slot, source.internal_use)) return false;
    for (area_kind kind : {area_kind::chassis, area_kind::board, area_kind::product}) {
        std::string area;
        if (source.area(kind) &&
            (!encode_area(kind, *source.area(kind), area) || !place(encoded, slot_of(kind), area)))
            return false;
    }
    if (!place(encoded, multirecord_slot, source.multirecord)) return false;
    encoded[header_size - 1] =
        static_cast<char>(checksum_of(std::string_view(encoded).substr(0, header_size - 1)));
    bytes = encoded;
    return true;
}

}  // namespace platform::fru
