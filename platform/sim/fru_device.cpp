// ReadFRUInfo and SetFRUData over the FRU images of the simulated BMC.
#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "base/file_cache.h"
#include "platform/libfru.h"
#include "platform/sim/fru_format.h"
#include "platform/sim/fru_store.h"
#include "platform/sim/state_ini.h"

namespace {

using platform::fru::area_kind;

// Where each text of St_FRUInfo is stored, and which of them SetFRUData
// may write (writable_as non-zero).
struct text_slot {
    char (St_FRUInfo::*target)[FRU_TEXT_SIZE];
    area_kind area;
    std::size_t index;
    int writable_as;
};

constexpr text_slot text_slots[] = {
    {&St_FRUInfo::chassis_part_number, area_kind::chassis, 0, 0},
    {&St_FRUInfo::chassis_serial_number, area_kind::chassis, 1, FRU_FIELD_CHASSIS_SERIAL_NUMBER},
    {&St_FRUInfo::board_manufacturer, area_kind::board, 0, 0},
    {&St_FRUInfo::board_product_name, area_kind::board, 1, 0},
    {&St_FRUInfo::board_serial_number, area_kind::board, 2, FRU_FIELD_BOARD_SERIAL_NUMBER},
    {&St_FRUInfo::board_part_number, area_kind::board, 3, 0},
    {&St_FRUInfo::product_manufacturer, area_kind::product, 0, 0},
    {&St_FRUInfo::product_name, area_kind::product, 1, 0},
    {&St_FRUInfo::product_part_number, area_kind::product, 2, 0},
    {&St_FRUInfo::product_version, area_kind::product, 3, 0},
    {&St_FRUInfo::product_serial_number, area_kind::product, 4, FRU_FIELD_PRODUCT_SERIAL_NUMBER},
    {&St_FRUInfo::product_asset_tag, area_kind::product, 5, FRU_FIELD_PRODUCT_ASSET_TAG},
    {&St_FRUInfo::product_sku, area_kind::product, 7, 0},
    {&St_FRUInfo::product_guid, area_kind::product, 8, 0},
};

constexpr std::size_t board_id_field = 5;

// Copies at most FRU_TEXT_SIZE - 1 bytes, never ending inside a UTF-8 sequence.
void copy_utf8_text(char (&target)[FRU_TEXT_SIZE], const std::string& text) {
    std::size_t length = text.size();
    if (length >= FRU_TEXT_SIZE) {
        length = FRU_TEXT_SIZE - 1;
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    }
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
}

bool fill_text(const platform::fru::image& image, const text_slot& slot, St_FRUInfo& info) {
    const auto& area = image.area(slot.area);
    if (!area || slot.index >= area->fields.size()) return true;
    bool english = slot.area == area_kind::chassis || platform::fru::is_english(area->code);
    const platform::fru::field& field = area->fields[slot.index];
    std::string text;
    if (!platform::fru::decode_text(field.type, field.data, english, text)) return false;
    copy_utf8_text(info.*slot.target, text);
    return true;
}

uint32_t board_id(const platform::fru::image& image) {
    if (!image.board || image.board->fields.size() <= board_id_field) return 0;
    const platform::fru::field& field = image.board->fields[board_id_field];
    uint32_t id = 0;
    for (std::size_t i = 0; field.type == platform::fru::binary && i < field.data.size() && i < 4;
         ++i)
        id |= static_cast<uint32_t>(static_cast<uint8_t>(field.data[i])) << (8 * i);
    return id;
}

int load_image(uint8_t fru_id, platform::fru::image& image) {
    std::string bytes;
    int loaded = platform::load_fru_image(fru_id, bytes);
    if (loaded != PLT_OK) return loaded;
    return platform::fru::parse_image(bytes, image) ? PLT_OK : PLT_ERR_FORMAT;
}

const text_slot* writable_slot(int field) {
    for (const text_slot& slot : text_slots)
        if (field != 0 && slot.writable_as == field) return &slot;
    return nullptr;
}

// A one-byte 8-bit field would have the type/length byte of the end mark;
// a trailing blank, which reading drops, makes it two.
std::string field_bytes(const std::string& latin1) {
    return latin1.size() == 1 ? latin1 + ' ' : latin1;
}

// Whether the image reads back with text in the slot.
bool reads_back(const std::string& bytes, const text_slot& slot, const char* text) {
    platform::fru::image image;
    St_FRUInfo info{};
    return platform::fru::parse_image(bytes, image) && fill_text(image, slot, info) &&
           std::strcmp(info.*slot.target, text) == 0;
}

int replace_field(uint8_t fru_id, const text_slot& slot, const char* text,
                  const std::string& latin1) {
    platform::fru::image image;
    int loaded = load_image(fru_id, image);
    if (loaded != PLT_OK) return loaded;
    auto& area = image.area(slot.area);
    if (!area || slot.index >= area->fields.size()) return PLT_ERR_NOT_FOUND;
    area->fields[slot.index] = {platform::fru::eight_bit, field_bytes(latin1)};
    std::string bytes;
    if (!platform::fru::encode_image(image, bytes) || !reads_back(bytes, slot, text))
        return PLT_ERR_ARGUMENT;
    return platform::write_fru_image(fru_id, bytes) ? PLT_OK : PLT_ERR_IO;
}

// The texts of one FRU image, parsed once per version of its file.
int parse_fru_info(uint8_t fru_id, St_FRUInfo& parsed) {
    platform::fru::image image;
    int loaded = load_image(fru_id, image);
    if (loaded != PLT_OK) return loaded;
    parsed.chassis_type = image.chassis ? image.chassis->code : 0;
    parsed.board_mfg_minutes = image.board ? image.board->mfg_minutes : 0;
    parsed.board_id = board_id(image);
    for (const text_slot& slot : text_slots)
        if (!fill_text(image, slot, parsed)) return PLT_ERR_FORMAT;
    return PLT_OK;
}

}  // namespace

extern "C" int ReadFRUInfo(uint8_t fru_id, St_FRUInfo* info) {
    if (!info) return PLT_ERR_ARGUMENT;
    static std::map<uint8_t, platform::file_cache<St_FRUInfo>> caches;
    std::shared_ptr<const St_FRUInfo> parsed;
    const int result = caches[fru_id].get(
        platform::fru_image_file(fru_id),
        [fru_id](St_FRUInfo& fresh) { return parse_fru_info(fru_id, fresh); }, parsed);
    if (result == PLT_OK) *info = *parsed;
    return result;
}

extern "C" int SetFRUData(uint8_t fru_id, int field, const char* value) {
    const text_slot* slot = writable_slot(field);
    std::string latin1;
    if (!slot) return PLT_ERR_NOT_FOUND;
    if (!value || !platform::fru::latin1_from_utf8(value, latin1) || latin1.size() > 0x3F)
        return PLT_ERR_ARGUMENT;
    int result = PLT_ERR_IO;
    platform::sim::with_file_lock(platform::fru_image_file(fru_id), [&] {
        result = replace_field(fru_id, *slot, value, latin1);
        return true;
    });
    return result;
}
