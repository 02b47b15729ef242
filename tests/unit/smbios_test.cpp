// The SMBIOS table: the generated host, field decoding and damaged tables.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "hardware_root_fixture.h"
#include "platform/libbios.h"
#include "platform/libfwupdate.h"
#include "platform/libsmbios.h"
#include "platform/sim/firmware_state.h"
#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"
#include "platform/sim/smbios_table.h"

namespace {

namespace smbios = platform::smbios;

std::string bytes(std::initializer_list<int> values) {
    std::string result;
    for (int value : values) result += static_cast<char>(value);
    return result;
}

// One structure: header, fields after the header, string set ("a\0b\0"
// style, empty for none).
std::string structure(uint8_t type, const std::string& fields, const std::string& strings = "") {
    std::string result = bytes({type, static_cast<int>(4 + fields.size()), 0x01, 0x00}) + fields;
    return result + (strings.empty() ? std::string(2, '\0') : strings + '\0');
}

const std::string table_end = structure(smbios::end_of_table, "");

std::vector<smbios::structure> parsed(const std::string& table) {
    std::vector<smbios::structure> structures;
    EXPECT_TRUE(smbios::parse_table(table, structures));
    return structures;
}

bool parses(const std::string& table) {
    std::vector<smbios::structure> structures;
    return smbios::parse_table(table, structures);
}

// A memory device whose size word is size and extended size is extended.
St_SMBiosType17 memory_device(uint16_t size, uint32_t extended, std::size_t length = 0x28) {
    std::string fields(length - 4, '\0');
    fields[0x0C - 4] = static_cast<char>(size & 0xFF);
    fields[0x0D - 4] = static_cast<char>(size >> 8);
    for (int i = 0; i < 4 && 0x1C - 4 + i < static_cast<int>(fields.size()); ++i)
        fields[0x1C - 4 + i] = static_cast<char>((extended >> (8 * i)) & 0xFF);
    std::string table = structure(smbios::memory_device, fields) + table_end;
    return smbios::decode_memory_device(parsed(table).front());
}

// ---------------------------------------------------------------- table walk

TEST(SmbiosTable, StringsAreNumberedFromOne) {
    std::string table =
        structure(1, bytes({1, 0, 3, 9}), std::string("maker\0product\0version\0", 22)) + table_end;
    auto structures = parsed(table);
    ASSERT_EQ(structures.size(), 2u);
    EXPECT_STREQ(structures[0].text(0x04), "maker");
    EXPECT_EQ(structures[0].text(0x05), nullptr);  // string number 0
    EXPECT_STREQ(structures[0].text(0x06), "version");
    EXPECT_EQ(structures[0].text(0x07), nullptr);  // past the string set
    EXPECT_EQ(structures[0].text(0x40), nullptr);  // past the formatted area
    EXPECT_EQ(structures[0].dword(0x06), 0u);      // partly past the area
}

TEST(SmbiosTable, DamagedTablesAreRefused) {
    EXPECT_TRUE(parses(table_end));
    EXPECT_FALSE(parses(""));
    EXPECT_FALSE(parses(structure(1, "")));                       // no end structure
    EXPECT_FALSE(parses(bytes({1, 0, 1, 0, 0, 0}) + table_end));  // zero length
    EXPECT_FALSE(parses(bytes({1, 3, 1, 0, 0, 0}) + table_end));  // shorter than its header
    EXPECT_FALSE(parses(bytes({1, 0x40, 1, 0, 0, 0})));           // past the table
    EXPECT_FALSE(parses(bytes({1, 4, 1, 0}) + "abc"));            // string without NUL
    EXPECT_FALSE(
        parses(bytes({1, 4, 1, 0}) + std::string("abc\0", 4)));     // set without its final NUL
    EXPECT_FALSE(parses(bytes({1, 4, 1, 0, 0, 'x'}) + table_end));  // no strings needs two NULs
}

TEST(SmbiosTable, EveryTruncationOfTheGeneratedTableIsRefused) {
    std::string table = platform::generated_smbios_table();
    ASSERT_TRUE(parses(table));
    for (std::size_t size = 0; size < table.size(); ++size)
        EXPECT_FALSE(parses(table.substr(0, size))) << size;
}

TEST(SmbiosTable, RandomDamageIsSurvived) {
    std::string table = platform::generated_smbios_table();
    uint32_t state = 2463534242u;
    auto next = [&] {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return state;
    };
    for (int round = 0; round < 500; ++round) {
        std::string damaged = table.substr(0, next() % (table.size() + 1));
        for (int flips = 0; flips < 4 && !damaged.empty(); ++flips)
            damaged[next() % damaged.size()] = static_cast<char>(next());
        std::vector<smbios::structure> structures;
        if (!smbios::parse_table(damaged, structures)) continue;
        for (const auto& each : structures) {
            smbios::decode_memory_device(each);
            smbios::decode_processor(each);
            smbios::decode_system(each);
        }
    }
}

// ---------------------------------------------------------------- decoding

TEST(SmbiosRecords, MemorySizeEncodings) {
    EXPECT_EQ(memory_device(16384, 0).size_mib, 16384u);
    EXPECT_EQ(memory_device(0x8000 | 2048, 0).size_mib, 2u);        // KiB granularity
    EXPECT_EQ(memory_device(0x7FFF, 0x80008000).size_mib, 32768u);  // extended, bit 31 reserved
    EXPECT_EQ(memory_device(0x7FFF, 32768, 0x1C).size_mib,
              SMBIOS_MEMORY_SIZE_UNKNOWN);  // too short
    EXPECT_EQ(memory_device(0xFFFF, 0).size_mib, SMBIOS_MEMORY_SIZE_UNKNOWN);
    EXPECT_EQ(memory_device(0, 0).size_mib, 0u);
}

TEST(SmbiosRecords, ProcessorCountsBeyond255) {
    std::string fields(0x30 - 4, '\0');
    fields[0x23 - 4] = static_cast<char>(0xFF);
    fields[0x25 - 4] = static_cast<char>(0xFF);
    fields[0x2A - 4] = 0x20;  // 288 cores
    fields[0x2B - 4] = 0x01;
    fields[0x2E - 4] = 0x40;  // 576 threads
    fields[0x2F - 4] = 0x02;
    St_SMBiosType4 processor =
        smbios::decode_processor(parsed(structure(4, fields) + table_end).front());
    EXPECT_EQ(processor.core_count, 288);
    EXPECT_EQ(processor.thread_count, 576);
}

TEST(SmbiosRecords, OldShortSystemStructureAndUnsetUuid) {
    std::string table = structure(1, bytes({1, 0, 0, 0}), std::string("m\0", 2)) + table_end;
    auto system = smbios::decode_system(parsed(table).front());
    EXPECT_STREQ(system.manufacturer, "m");
    EXPECT_STREQ(system.uuid_text, "");
    EXPECT_EQ(system.sku_number, nullptr);

    std::string fields = bytes({0, 0, 0, 0}) + std::string(16, '\xFF') + bytes({6, 0, 0});
    EXPECT_STREQ(smbios::decode_system(parsed(structure(1, fields) + table_end).front()).uuid_text,
                 "");
}

// ---------------------------------------------------------------- lists

using SmbiosLists = sim_testing::hardware_root;

TEST_F(SmbiosLists, GeneratedHostHasTwoProcessorsAnd256Gib) {
    St_SMBiosData data{};
    ASSERT_EQ(GetType1List(&data), PLT_OK);
    ASSERT_EQ(GetType4List(&data), PLT_OK);
    ASSERT_EQ(GetType17List(&data), PLT_OK);
    EXPECT_TRUE(std::filesystem::exists(path("/nv/bios/bios_fullsmbios")));

    ASSERT_EQ(data.type1_count, 1);
    EXPECT_STREQ(data.type1[0].manufacturer, "Tarnwright");
    EXPECT_STREQ(data.type1[0].sku_number, "SKU-TW2U-STD");
    EXPECT_STREQ(data.type1[0].uuid_text, "4b1d2c3e-5f60-4a7b-8c9d-0e1f2a3b4c5d");

    ASSERT_EQ(data.type4_count, 2);
    EXPECT_STREQ(data.type4[1].socket_designation, "CPU2");
    EXPECT_EQ(data.type4[0].processor_family, 0xB3);
    EXPECT_EQ(data.type4[0].thread_count, 48);
    EXPECT_EQ(data.type4[0].status & SMBIOS_CPU_SOCKET_POPULATED, SMBIOS_CPU_SOCKET_POPULATED);
    EXPECT_EQ(data.type4[0].asset_tag, nullptr);

    ASSERT_EQ(data.type17_count, 16);
    uint64_t total_mib = 0;
    int installed = 0;
    for (int i = 0; i < data.type17_count; ++i) {
        total_mib += data.type17[i].size_mib;
        installed += data.type17[i].size_mib != 0;
    }
    EXPECT_EQ(installed, 8);
    EXPECT_EQ(total_mib >> 10, 256u);
    EXPECT_STREQ(data.type17[0].device_locator, "CPU1_DIMM_A1");
    EXPECT_EQ(data.type17[0].speed_mts, 3200u);

    ASSERT_EQ(GetType17List(&data), PLT_OK);  // replaces the list without leaking it
    FreeSMBiosData(&data);
    EXPECT_EQ(data.type17, nullptr);
    EXPECT_EQ(data.type4_count, 0);
}

TEST_F(SmbiosLists, CorruptTableFailsWithoutLists) {
    ASSERT_EQ(run({"smbios", "corrupt"}), bmcsim::exit_ok);
    St_SMBiosData data{};
    EXPECT_EQ(GetType1List(&data), PLT_ERR_FORMAT);
    EXPECT_EQ(GetType17List(&data), PLT_ERR_FORMAT);
    EXPECT_EQ(data.type1, nullptr);
    EXPECT_EQ(data.type17_count, 0);
    char version[16];
    EXPECT_EQ(UtilGetLatestBiosRev(version, sizeof version), PLT_ERR_FORMAT);
    EXPECT_EQ(run({"smbios", "show"}), bmcsim::exit_failed);

    ASSERT_EQ(run({"smbios", "regenerate"}), bmcsim::exit_ok);
    EXPECT_EQ(GetType1List(&data), PLT_OK);
    FreeSMBiosData(&data);
}

TEST_F(SmbiosLists, BiosVersionComesFromTheTable) {
    char version[16];
    ASSERT_EQ(UtilGetLatestBiosRev(version, sizeof version), PLT_OK);
    EXPECT_STREQ(version, "2.1.0");
    char short_buffer[3];
    ASSERT_EQ(UtilGetLatestBiosRev(short_buffer, sizeof short_buffer), PLT_OK);
    EXPECT_STREQ(short_buffer, "2.");
    EXPECT_EQ(UtilGetLatestBiosRev(version, 0), PLT_ERR_ARGUMENT);
}

// A longer and then a shorter version: the strings after it and the
// structures after it stay where the parser finds them.
// The lists are decoded once per table: a new table shows in the next list.
TEST_F(SmbiosLists, ListsFollowEveryNewTable) {
    St_SMBiosData data{};
    ASSERT_EQ(GetType17List(&data), PLT_OK);
    EXPECT_EQ(data.type17_count, 16);
    std::string fields(0x28 - 4, '\0');
    fields[0x0C - 4] = 0x00;
    fields[0x0D - 4] = 0x04;  // 1024 MiB
    ASSERT_TRUE(platform::write_smbios_table(structure(smbios::memory_device, fields) + table_end));
    ASSERT_EQ(GetType17List(&data), PLT_OK);
    ASSERT_EQ(data.type17_count, 1);
    EXPECT_EQ(data.type17[0].size_mib, 1024u);
    ASSERT_EQ(GetType4List(&data), PLT_OK);
    EXPECT_EQ(data.type4_count, 0);
    FreeSMBiosData(&data);
}

TEST_F(SmbiosLists, AStartingBiosWritesTheFlashedVersion) {
    for (const std::string flashed : {"10.20.30-beta", "3"}) {
        ASSERT_TRUE(platform::sim::store_firmware_version(FW_DEVICE_BIOS, flashed));
        ASSERT_EQ(run({"bios", "post"}), bmcsim::exit_ok);
        char version[32];
        ASSERT_EQ(UtilGetLatestBiosRev(version, sizeof version), PLT_OK);
        EXPECT_EQ(version, flashed);
        St_SMBiosData data{};
        ASSERT_EQ(GetType17List(&data), PLT_OK);
        EXPECT_EQ(data.type17_count, 16);
        FreeSMBiosData(&data);
    }
}

}  // namespace
