// FRU images: the generated board FRU, the parser on damaged images, field
// texts, and writing the asset tag back.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "hardware_root_fixture.h"
#include "platform/libfru.h"
#include "platform/sim/fru_format.h"
#include "platform/sim/fru_store.h"
#include "platform/sim/fru_text.h"

namespace {

namespace fru = platform::fru;

uint8_t checksum(const std::string& bytes) {
    unsigned sum = 0;
    for (char c : bytes) sum += static_cast<uint8_t>(c);
    return static_cast<uint8_t>(-sum & 0xFF);
}

// An image of a header and one board area made of body (version, length
// placeholder, language, date, fields...), padded and checksummed.
std::string image_with_board_body(std::string body) {
    body.append((8 - (body.size() + 1) % 8) % 8, '\0');
    body[1] = static_cast<char>((body.size() + 1) / 8);
    body += static_cast<char>(checksum(body));
    std::string header{'\x01', 0, 0, '\x01', 0, 0, 0};
    header += static_cast<char>(checksum(header));
    return header + body;
}

const std::string board_prefix{'\x01', 0, '\x19', 0, 0, 0};

std::string five_empty_fields() { return std::string(5, '\xC0'); }

bool parses(const std::string& bytes) {
    fru::image parsed;
    return fru::parse_image(bytes, parsed);
}

// ---------------------------------------------------------------- parser

TEST(FruFormat, GeneratedImageRoundTripsThroughTheCodec) {
    std::string generated = platform::generated_fru_image();
    fru::image parsed;
    ASSERT_TRUE(fru::parse_image(generated, parsed));
    ASSERT_TRUE(parsed.chassis && parsed.board && parsed.product);
    EXPECT_EQ(parsed.internal_use.size(), 8u);
    EXPECT_FALSE(parsed.multirecord.empty());
    std::string encoded;
    ASSERT_TRUE(fru::encode_image(parsed, encoded));
    EXPECT_EQ(encoded, generated);
}

TEST(FruFormat, EveryTruncationIsRefused) {
    std::string generated = platform::generated_fru_image();
    for (std::size_t size = 0; size < generated.size(); ++size)
        EXPECT_FALSE(parses(generated.substr(0, size))) << size;
}

TEST(FruFormat, DamagedImagesAreRefused) {
    std::string good = image_with_board_body(board_prefix + five_empty_fields() + '\xC1');
    ASSERT_TRUE(parses(good));

    std::string bad_header = good;
    bad_header[7] = static_cast<char>(bad_header[7] + 1);
    EXPECT_FALSE(parses(bad_header));

    std::string bad_version = good;
    bad_version[0] = 0x02;
    bad_version[7] = static_cast<char>(checksum(bad_version.substr(0, 7)));
    EXPECT_FALSE(parses(bad_version));

    std::string bad_area_sum = good;
    bad_area_sum[10] = 0x18;
    EXPECT_FALSE(parses(bad_area_sum));

    std::string area_past_end = good;
    area_past_end[9] = 0x20;
    EXPECT_FALSE(parses(area_past_end));

    EXPECT_FALSE(parses(image_with_board_body(board_prefix + five_empty_fields())));  // no end mark
    EXPECT_FALSE(parses(image_with_board_body(board_prefix + "\xC0\xC1")));  // fixed fields missing
    EXPECT_FALSE(parses(image_with_board_body(board_prefix + five_empty_fields() +
                                              "\xFFxy")));  // field past the area
}

TEST(FruFormat, DamagedMultirecordIsRefused) {
    std::string generated = platform::generated_fru_image();
    std::size_t multirecord = static_cast<uint8_t>(generated[5]) * 8u;
    std::string bad = generated;
    bad[multirecord + 5] =
        static_cast<char>(bad[multirecord + 5] ^ 0x01);  // record data vs its checksum
    EXPECT_FALSE(parses(bad));
}

// Random damage never reads outside the image (the sanitizers watch).
TEST(FruFormat, RandomDamageIsSurvived) {
    std::string generated = platform::generated_fru_image();
    uint32_t state = 12345;
    auto next = [&] {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    };
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = generated.substr(0, next() % (generated.size() + 1));
        for (int flips = 0; flips < 3 && !damaged.empty(); ++flips)
            damaged[next() % damaged.size()] = static_cast<char>(next());
        parses(damaged);
    }
}

// ---------------------------------------------------------------- field text

TEST(FruText, EveryTypeDecodesToUtf8) {
    std::string text;
    ASSERT_TRUE(fru::decode_text(fru::binary, "\x0A\x5C", true, text));
    EXPECT_EQ(text, "0A5C");
    ASSERT_TRUE(fru::decode_text(fru::bcd_plus, "\x12\xAB\xC9", true, text));
    EXPECT_EQ(text, "12 -.9");
    ASSERT_TRUE(fru::decode_text(fru::six_bit_ascii, "\x29\xDC\xA6", true, text));
    EXPECT_EQ(text, "IPMI");
    ASSERT_TRUE(fru::decode_text(fru::eight_bit, "M\xFCller  ", true, text));
    EXPECT_EQ(text, "M\xC3\xBCller");
    ASSERT_TRUE(fru::decode_text(fru::eight_bit, std::string("ab\0cd", 5), true, text));
    EXPECT_EQ(text, "ab");
    ASSERT_TRUE(fru::decode_text(fru::eight_bit, std::string("A\0\xAC\x20", 4), false, text));
    EXPECT_EQ(text, "A\xE2\x82\xAC");
    EXPECT_FALSE(fru::decode_text(fru::eight_bit, "abc", false, text));
}

TEST(FruText, OnlyLatin1CanBeWritten) {
    std::string latin1;
    ASSERT_TRUE(fru::latin1_from_utf8("Rack \xC3\xBC 7", latin1));
    EXPECT_EQ(latin1, "Rack \xFC 7");
    EXPECT_FALSE(fru::latin1_from_utf8("\xE2\x82\xAC", latin1));
    EXPECT_FALSE(fru::latin1_from_utf8("\xC3", latin1));
    EXPECT_FALSE(fru::latin1_from_utf8("\xC3(", latin1));
}

// ---------------------------------------------------------------- device

using FruDevice = sim_testing::hardware_root;

TEST_F(FruDevice, FirstReadGeneratesTheBoardFru) {
    St_FRUInfo info{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &info), PLT_OK);
    EXPECT_TRUE(std::filesystem::exists(path("/nv/fru/fru0.bin")));
    EXPECT_EQ(info.chassis_type, 0x17);
    EXPECT_STREQ(info.board_serial_number, "BSN2403010042");
    EXPECT_STREQ(info.board_part_number, "MB-X12D-0001");
    EXPECT_STREQ(info.product_manufacturer, "Tarnwright");
    EXPECT_STREQ(info.product_name, "TW-2U-R2400");
    EXPECT_STREQ(info.product_serial_number, "SSN2403010007");
    EXPECT_STREQ(info.product_asset_tag, "");
    EXPECT_STREQ(info.product_sku, "SKU-TW2U-STD");
    EXPECT_EQ(std::string(info.product_guid).size(), 36u);
    EXPECT_EQ(info.board_id, 0x0A5Cu);
    EXPECT_GT(info.board_mfg_minutes, 0u);
    EXPECT_EQ(ReadFRUInfo(3, &info), PLT_ERR_NOT_FOUND);
}

TEST_F(FruDevice, AssetTagRoundTripKeepsEverythingElse) {
    St_FRUInfo original{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &original), PLT_OK);
    std::string long_tag = "Rack 12 / M\xC3\xBCller / " + std::string(40, 'x');
    ASSERT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, long_tag.c_str()), PLT_OK);

    St_FRUInfo changed{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &changed), PLT_OK);
    EXPECT_EQ(changed.product_asset_tag, long_tag);
    EXPECT_STREQ(changed.product_guid, original.product_guid);
    EXPECT_STREQ(changed.board_serial_number, original.board_serial_number);
    fru::image parsed;
    ASSERT_TRUE(fru::parse_image(sim_testing::file_text(path("/nv/fru/fru0.bin")), parsed));
    EXPECT_EQ(parsed.multirecord.size(), 15u);

    ASSERT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, ""), PLT_OK);
    EXPECT_EQ(sim_testing::file_text(path("/nv/fru/fru0.bin")), platform::generated_fru_image());
    for (const auto& entry : std::filesystem::directory_iterator(path("/nv/fru")))
        EXPECT_TRUE(entry.path().filename() == "fru0.bin" ||
                    entry.path().filename() == "fru0.bin.lock")
            << entry.path();
}

TEST_F(FruDevice, RefusedWritesChangeNothing) {
    St_FRUInfo info{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &info), PLT_OK);
    std::string before = sim_testing::file_text(path("/nv/fru/fru0.bin"));
    EXPECT_EQ(
        SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, std::string(64, 'x').c_str()),
        PLT_ERR_ARGUMENT);
    EXPECT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, "\xE2\x82\xAC"),
              PLT_ERR_ARGUMENT);
    EXPECT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, nullptr), PLT_ERR_ARGUMENT);
    EXPECT_EQ(SetFRUData(FRU_BOARD_DEVICE, 99, "x"), PLT_ERR_NOT_FOUND);
    EXPECT_EQ(sim_testing::file_text(path("/nv/fru/fru0.bin")), before);

    ASSERT_EQ(run({"fru", "corrupt"}), bmcsim::exit_ok);
    std::string corrupt = sim_testing::file_text(path("/nv/fru/fru0.bin"));
    EXPECT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &info), PLT_ERR_FORMAT);
    EXPECT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, "x"), PLT_ERR_FORMAT);
    EXPECT_EQ(sim_testing::file_text(path("/nv/fru/fru0.bin")), corrupt);
}

TEST_F(FruDevice, OneCharacterValuesKeepTheAreaReadable) {
    St_FRUInfo original{};
    ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &original), PLT_OK);
    for (const char* tag : {"x", "\xC3\xBC", "xy", "x"}) {
        ASSERT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, tag), PLT_OK) << tag;
        St_FRUInfo changed{};
        ASSERT_EQ(ReadFRUInfo(FRU_BOARD_DEVICE, &changed), PLT_OK) << tag;
        EXPECT_STREQ(changed.product_asset_tag, tag);
        EXPECT_STREQ(changed.product_serial_number, original.product_serial_number);
        EXPECT_STREQ(changed.chassis_serial_number, original.chassis_serial_number);
    }
    // Trailing blanks do not read back, so they are not stored.
    std::string before = sim_testing::file_text(path("/nv/fru/fru0.bin"));
    EXPECT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_PRODUCT_ASSET_TAG, "x "), PLT_ERR_ARGUMENT);
    EXPECT_EQ(sim_testing::file_text(path("/nv/fru/fru0.bin")), before);
}

TEST(FruFormat, NoFieldIsEncodedAsTheEndMark) {
    fru::image image;
    image.product = fru::info_area{};
    image.product->fields.assign(fru::fixed_field_count(fru::area_kind::product), {});
    image.product->fields[5] = {fru::eight_bit, "x"};
    std::string bytes;
    EXPECT_FALSE(fru::encode_image(image, bytes));
    image.product->fields[5] = {fru::binary, "x"};
    ASSERT_TRUE(fru::encode_image(image, bytes));
    fru::image parsed;
    ASSERT_TRUE(fru::parse_image(bytes, parsed));
    EXPECT_EQ(parsed.product->fields[5].data, "x");
}

TEST_F(FruDevice, OtherWritableFieldsAndTool) {
    ASSERT_EQ(SetFRUData(FRU_BOARD_DEVICE, FRU_FIELD_BOARD_SERIAL_NUMBER, "BSN-NEW"), PLT_OK);
    ASSERT_EQ(run({"fru", "asset-tag", "Lab 3"}), bmcsim::exit_ok);
    ASSERT_EQ(run({"fru", "show"}), bmcsim::exit_ok);
    EXPECT_NE(out_.str().find("board_serial_number=BSN-NEW\n"), std::string::npos);
    EXPECT_NE(out_.str().find("product_asset_tag=Lab 3\n"), std::string::npos);
    ASSERT_EQ(run({"fru", "regenerate"}), bmcsim::exit_ok);
    EXPECT_EQ(sim_testing::file_text(path("/nv/fru/fru0.bin")), platform::generated_fru_image());
}

}  // namespace
