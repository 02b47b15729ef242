#include "resources/systems/smbios_members.h"

namespace odata::redfish {
namespace {

bool populated(const St_SMBiosType4& processor) {
    return (processor.status & SMBIOS_CPU_SOCKET_POPULATED) != 0;
}

bool populated(const St_SMBiosType17& module) { return module.size_mib != 0; }

template <typename Record>
std::vector<int> populated_ids(const Record* records, int count) {
    std::vector<int> ids;
    for (int i = 0; i < count; ++i)
        if (populated(records[i])) ids.push_back(i + 1);
    return ids;
}

template <typename Record>
const Record* find_populated(const Record* records, int count, int id) {
    if (id < 1 || id > count || !populated(records[id - 1])) return nullptr;
    return &records[id - 1];
}

}  // namespace

std::vector<int> processor_ids(const St_SMBiosData& data) {
    return populated_ids(data.type4, data.type4_count);
}

const St_SMBiosType4* find_processor(const St_SMBiosData& data, int id) {
    return find_populated(data.type4, data.type4_count, id);
}

std::vector<int> memory_ids(const St_SMBiosData& data) {
    return populated_ids(data.type17, data.type17_count);
}

const St_SMBiosType17* find_memory(const St_SMBiosData& data, int id) {
    return find_populated(data.type17, data.type17_count, id);
}

std::vector<std::string> member_uris(const char* base, const std::vector<int>& ids) {
    std::vector<std::string> uris;
    for (int id : ids) uris.push_back(std::string(base) + "/" + std::to_string(id));
    return uris;
}

}  // namespace odata::redfish
