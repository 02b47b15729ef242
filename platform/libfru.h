// FRU inventory (the BMC's libipmi.so): the board's FRU device in the IPMI
// Platform Management FRU Information Storage format. Return codes are
// those of plt_result.h.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { FRU_BOARD_DEVICE = 0 };  // the FRU device of the board

// Room for the longest field (63 bytes) after conversion to UTF-8.
enum { FRU_TEXT_SIZE = 128 };

// Every text is UTF-8, NUL-terminated and empty when the field is absent.
struct St_FRUInfo {
    // Chassis info area.
    uint8_t chassis_type;  // SMBIOS chassis type; 0 when absent
                           // (0x17 = rack mount chassis)
    char chassis_part_number[FRU_TEXT_SIZE];
    char chassis_serial_number[FRU_TEXT_SIZE];
    // Board info area.
    uint32_t board_mfg_minutes;  // minutes since 1996-01-01 00:00 UTC; 0 unknown
    char board_manufacturer[FRU_TEXT_SIZE];
    char board_product_name[FRU_TEXT_SIZE];
    char board_serial_number[FRU_TEXT_SIZE];
    char board_part_number[FRU_TEXT_SIZE];
    uint32_t board_id;  // first board custom field (binary, little-endian)
    // Product info area.
    char product_manufacturer[FRU_TEXT_SIZE];
    char product_name[FRU_TEXT_SIZE];  // the model
    char product_part_number[FRU_TEXT_SIZE];
    char product_version[FRU_TEXT_SIZE];
    char product_serial_number[FRU_TEXT_SIZE];
    char product_asset_tag[FRU_TEXT_SIZE];
    char product_sku[FRU_TEXT_SIZE];   // first product custom field
    char product_guid[FRU_TEXT_SIZE];  // second product custom field
};

// Reads and checks FRU device fru_id: PLT_ERR_NOT_FOUND when it has no
// image, PLT_ERR_FORMAT when the image is truncated, has a bad checksum or
// a field past its area.
int ReadFRUInfo(uint8_t fru_id, St_FRUInfo* info);

// Fields that SetFRUData can write.
enum {
    FRU_FIELD_CHASSIS_SERIAL_NUMBER = 1,
    FRU_FIELD_BOARD_SERIAL_NUMBER = 2,
    FRU_FIELD_PRODUCT_SERIAL_NUMBER = 3,
    FRU_FIELD_PRODUCT_ASSET_TAG = 4,
};

// Replaces one field of FRU device fru_id with value (UTF-8 text of at most
// 63 Latin-1 characters; PLT_ERR_ARGUMENT otherwise), rebuilding the area
// and its checksums; the image is replaced as a whole.
int SetFRUData(uint8_t fru_id, int field, const char* value);

}  // extern "C"
