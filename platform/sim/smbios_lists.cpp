// GetType1List, GetType4List, GetType17List and FreeSMBiosData: each list
// is one allocation, the records followed by copies of their strings.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/libsmbios.h"
#include "platform/sim/smbios_records.h"
#include "platform/sim/smbios_store.h"

namespace {

namespace smbios = platform::smbios;

template <typename Record>
using string_member = const char* Record::*;

constexpr string_member<St_SMBiosType1> type1_strings[] = {
    &St_SMBiosType1::manufacturer,  &St_SMBiosType1::product_name, &St_SMBiosType1::version,
    &St_SMBiosType1::serial_number, &St_SMBiosType1::sku_number,   &St_SMBiosType1::family,
};

constexpr string_member<St_SMBiosType4> type4_strings[] = {
    &St_SMBiosType4::socket_designation,
    &St_SMBiosType4::manufacturer,
    &St_SMBiosType4::version,
    &St_SMBiosType4::serial_number,
    &St_SMBiosType4::asset_tag,
    &St_SMBiosType4::part_number,
};

constexpr string_member<St_SMBiosType17> type17_strings[] = {
    &St_SMBiosType17::device_locator, &St_SMBiosType17::bank_locator,
    &St_SMBiosType17::manufacturer,   &St_SMBiosType17::serial_number,
    &St_SMBiosType17::asset_tag,      &St_SMBiosType17::part_number,
};

// Copies records and the strings they point at into one malloc block, and
// points the copies at the copied strings. Null when out of memory.
template <typename Record, std::size_t count>
Record* pack(const std::vector<Record>& records, const string_member<Record> (&strings)[count]) {
    std::size_t records_size = records.size() * sizeof(Record);
    std::size_t total = records_size;
    for (const Record& record : records)
        for (auto member : strings) total += record.*member ? std::strlen(record.*member) + 1 : 0;
    auto* block = static_cast<char*>(std::malloc(total));
    if (!block) return nullptr;
    std::memcpy(block, records.data(), records_size);
    auto* packed = reinterpret_cast<Record*>(block);
    char* next_string = block + records_size;
    for (std::size_t i = 0; i < records.size(); ++i)
        for (auto member : strings) {
            if (!(packed[i].*member)) continue;
            std::size_t size = std::strlen(packed[i].*member) + 1;
            std::memcpy(next_string, packed[i].*member, size);
            packed[i].*member = next_string;
            next_string += size;
        }
    return packed;
}

// The records of one type, decoded once per version of the table: the
// strings they point at live in the table they were decoded from.
template <typename Record>
struct decoded_records {
    std::mutex mutex;
    std::shared_ptr<const platform::smbios_snapshot> from;
    std::vector<Record> records;
};

template <typename Record, std::size_t count>
int fill_list(uint8_t type, Record (*decode)(const smbios::structure&),
              const string_member<Record> (&strings)[count], Record*& list, int& list_count) {
    std::free(list);
    list = nullptr;
    list_count = 0;
    std::shared_ptr<const platform::smbios_snapshot> snapshot;
    int loaded = platform::load_smbios_structures(snapshot);
    if (loaded != PLT_OK) return loaded;
    static decoded_records<Record> decoded;
    std::lock_guard<std::mutex> hold(decoded.mutex);
    if (decoded.from != snapshot) {
        decoded.records.clear();
        for (const smbios::structure& each : snapshot->structures)
            if (each.type == type) decoded.records.push_back(decode(each));
        decoded.from = snapshot;
    }
    const std::vector<Record>& records = decoded.records;
    if (records.empty()) return PLT_OK;
    list = pack(records, strings);
    if (!list) return PLT_ERR_IO;
    list_count = static_cast<int>(records.size());
    return PLT_OK;
}

}  // namespace

extern "C" int GetType1List(St_SMBiosData* data) {
    if (!data) return PLT_ERR_ARGUMENT;
    return fill_list(smbios::system_information, smbios::decode_system, type1_strings, data->type1,
                     data->type1_count);
}

extern "C" int GetType4List(St_SMBiosData* data) {
    if (!data) return PLT_ERR_ARGUMENT;
    return fill_list(smbios::processor_information, smbios::decode_processor, type4_strings,
                     data->type4, data->type4_count);
}

extern "C" int GetType17List(St_SMBiosData* data) {
    if (!data) return PLT_ERR_ARGUMENT;
    return fill_list(smbios::memory_device, smbios::decode_memory_device, type17_strings,
                     data->type17, data->type17_count);
}

extern "C" void FreeSMBiosData(St_SMBiosData* data) {
    if (!data) return;
    std::free(data->type1);
    std::free(data->type4);
    std::free(data->type17);
    *data = St_SMBiosData{};
}
