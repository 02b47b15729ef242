#include "platform/sim/pcie_devices.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <iterator>
#include <memory>
#include <sstream>
#include <vector>

#include "base/bmc_root.h"
#include "platform/libnic.h"
#include "platform/libpcie.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr const char* kind_prefixes[PCIE_KIND_COUNT] = {"NIC", "GPU", "NVMeSSD", "PCIeSSD"};

// What every device of a kind is; the simulator has one model per kind.
struct model_facts {
    int kind;
    uint8_t function_count;
    uint8_t max_generation;
    uint8_t max_lanes;
    uint16_t vendor_id;
    uint16_t device_id;
    uint16_t subsystem_vendor_id;
    uint16_t subsystem_id;
    uint32_t class_code;
    const char* manufacturer;
    const char* model;
    const char* part_number;
    const char* firmware_version;
};

constexpr model_facts models[] = {
    {PCIE_KIND_GPU, 1, 4, 16, 0x1ed5, 0x0410, 0x1ed5, 0x2001, 0x030200, "Example Compute",
     "XC-410 48GB", "XC410-48G-01", "92.04.1A.00.02"},
    {PCIE_KIND_NVME_SSD, 1, 4, 4, 0x1e0f, 0x0007, 0x1e0f, 0x0001, 0x010802, "Example Storage",
     "ES-U2-3T84", "ESU2-3840-01", "1.2.0"},
    {PCIE_KIND_PCIE_SSD, 1, 3, 8, 0x1e0f, 0x0011, 0x1e0f, 0x0011, 0x018000, "Example Storage",
     "ES-AIC-6T40", "ESAIC-6400-01", "3.1.7"},
};

const model_facts* model_of(int kind) {
    for (const model_facts& each : models)
        if (each.kind == kind) return &each;
    return nullptr;
}

struct stored_device {
    int kind = 0;
    int number = 0;
    int slot = 0;
    int bay = 0;
    std::string serial_number;
    int generation = 0;
    int lanes = 0;

    std::string name() const { return kind_prefixes[kind] + std::to_string(number); }
};

const std::vector<stored_device> delivered = {
    {PCIE_KIND_GPU, 1, 2, 0, "XC4102311000021", 4, 16},
    {PCIE_KIND_NVME_SSD, 1, 0, 1, "ESU2384023090001", 4, 4},
    {PCIE_KIND_NVME_SSD, 2, 0, 2, "ESU2384023090002", 4, 4},
    {PCIE_KIND_PCIE_SSD, 1, 4, 0, "ESAIC64023050007", 3, 8},
};

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// "GPU12" into kind and number; false for another name.
bool parse_name(const std::string& name, int& kind, int& number) {
    const auto digits = std::find_if(name.begin(), name.end(), is_digit);
    kind = platform::pcie_kind_of(std::string(name.begin(), digits));
    if (kind <= PCIE_KIND_NIC || digits == name.end() || name.end() - digits > 2) return false;
    if (!std::all_of(digits, name.end(), is_digit) || *digits == '0') return false;
    number = std::stoi(std::string(digits, name.end()));
    return number <= PCIE_KIND_DEVICES_MAX;
}

std::vector<stored_device> load(const pt::ptree& state) {
    const auto listed = state.get_optional<std::string>("Inventory.Devices");
    if (!listed) return delivered;
    std::vector<stored_device> devices;
    std::istringstream names(*listed);
    std::string name;
    while (names >> name && devices.size() < PCIE_DEVICES_MAX) {
        stored_device device;
        if (!parse_name(name, device.kind, device.number)) continue;
        const auto found = state.get_child_optional(name);
        if (!found) continue;
        const pt::ptree& section = *found;
        device.slot = section.get("Slot", 0);
        device.bay = section.get("Bay", 0);
        device.serial_number = section.get("SerialNumber", std::string());
        device.generation = section.get("Generation", 0);
        device.lanes = section.get("Lanes", 0);
        devices.push_back(device);
    }
    std::sort(devices.begin(), devices.end(), [](const stored_device& a, const stored_device& b) {
        return a.kind != b.kind ? a.kind < b.kind : a.number < b.number;
    });
    return devices;
}

void store(const std::vector<stored_device>& devices, pt::ptree& state) {
    state.clear();
    std::string names;
    for (const stored_device& device : devices) {
        const std::string name = device.name();
        names += (names.empty() ? "" : " ") + name;
        pt::ptree& section = state.put_child(name, pt::ptree());
        section.put(device.bay ? "Bay" : "Slot", device.bay ? device.bay : device.slot);
        section.put("SerialNumber", device.serial_number);
        section.put("Generation", device.generation);
        section.put("Lanes", device.lanes);
    }
    state.put("Inventory.Devices", names);
}

St_PcieDevice pcie_device(const model_facts& model, const stored_device& stored) {
    St_PcieDevice device{};
    device.kind = static_cast<uint8_t>(stored.kind);
    device.number = static_cast<uint8_t>(stored.number);
    device.slot = static_cast<uint8_t>(stored.slot);
    device.bay = static_cast<uint8_t>(stored.bay);
    device.function_count = model.function_count;
    device.generation = static_cast<uint8_t>(stored.generation);
    device.max_generation = model.max_generation;
    device.lanes = static_cast<uint8_t>(stored.lanes);
    device.max_lanes = model.max_lanes;
    device.vendor_id = model.vendor_id;
    device.device_id = model.device_id;
    device.subsystem_vendor_id = model.subsystem_vendor_id;
    device.subsystem_id = model.subsystem_id;
    device.class_code = model.class_code;
    platform::sim::copy_text(device.manufacturer, model.manufacturer);
    platform::sim::copy_text(device.model, model.model);
    platform::sim::copy_text(device.part_number, model.part_number);
    platform::sim::copy_text(device.serial_number, stored.serial_number);
    platform::sim::copy_text(device.firmware_version, model.firmware_version);
    return device;
}

// A network adapter is an Ethernet controller with a function per port,
// trained at its slot's width.
St_PcieDevice nic_device(const St_HostNicAdapter& adapter) {
    St_PcieSlot slot{};
    PcieGetSlot(adapter.slot - 1, &slot);
    const model_facts model{PCIE_KIND_NIC,
                            adapter.port_count,
                            slot.generation,
                            slot.lanes,
                            adapter.vendor_id,
                            adapter.device_id,
                            adapter.subsystem_vendor_id,
                            adapter.subsystem_id,
                            0x020000,
                            adapter.manufacturer,
                            adapter.model,
                            adapter.part_number,
                            adapter.firmware_version};
    const stored_device placed{PCIE_KIND_NIC,         adapter.adapter, adapter.slot, 0,
                               adapter.serial_number, slot.generation, slot.lanes};
    return pcie_device(model, placed);
}

// Every device, listed once per version of the devices file (the adapters
// and slots are fixed): each device read looks them all up.
const std::vector<St_PcieDevice>& all_devices() {
    static std::shared_ptr<const pt::ptree> listed_from;
    static std::vector<St_PcieDevice> devices;
    std::shared_ptr<const pt::ptree> state =
        platform::sim::stored_state_ini(platform::pcie_devices_file());
    if (state == listed_from) return devices;
    devices.clear();
    for (int i = 0; i < NicGetAdapterCount(); ++i) {
        St_HostNicAdapter adapter{};
        if (NicGetAdapter(i, &adapter) == PLT_OK) devices.push_back(nic_device(adapter));
    }
    for (const stored_device& each : load(*state))
        devices.push_back(pcie_device(*model_of(each.kind), each));
    listed_from = std::move(state);
    return devices;
}

bool valid_serial_number(const std::string& text) {
    return !text.empty() && text.size() < sizeof St_PcieDevice{}.serial_number &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return std::isalnum(static_cast<unsigned char>(c)) || c == '-';
           });
}

// A riser slot for a card, a backplane bay for an NVMe SSD.
bool valid_place(int kind, int place) {
    if (kind == PCIE_KIND_NVME_SSD) return place >= 1 && place <= platform::nvme_bay_count;
    St_PcieSlot slot{};
    return PcieGetSlot(place - 1, &slot) == PLT_OK && !slot.ocp;
}

bool place_taken(int kind, int place) {
    for (const St_PcieDevice& each : all_devices()) {
        if (kind == PCIE_KIND_NVME_SSD ? each.bay == place : each.slot == place) return true;
    }
    return false;
}

int free_number(const std::vector<stored_device>& devices, int kind) {
    for (int number = 1; number <= PCIE_KIND_DEVICES_MAX; ++number) {
        if (std::none_of(devices.begin(), devices.end(), [&](const stored_device& each) {
                return each.kind == kind && each.number == number;
            }))
            return number;
    }
    return 0;
}

using change_body = std::function<platform::pcie_change(std::vector<stored_device>&)>;

platform::pcie_change change_devices(const change_body& body) {
    platform::pcie_change result = platform::pcie_change::io_error;
    const bool written =
        platform::sim::update_state_ini(platform::pcie_devices_file(), [&](pt::ptree& state) {
            std::vector<stored_device> devices = load(state);
            result = body(devices);
            if (result != platform::pcie_change::done) return false;
            store(devices, state);
            return true;
        });
    return written || result != platform::pcie_change::done ? result
                                                            : platform::pcie_change::io_error;
}

std::vector<stored_device>::iterator find_stored(std::vector<stored_device>& devices,
                                                 const std::string& name) {
    return std::find_if(devices.begin(), devices.end(),
                        [&](const stored_device& each) { return each.name() == name; });
}

}  // namespace

namespace platform {

const std::string& pcie_devices_file() {
    static fixed_bmc_path path("/var/bmc/pcie_devices.ini");
    return path.get();
}

const char* pcie_kind_prefix(int kind) {
    return kind >= 0 && kind < PCIE_KIND_COUNT ? kind_prefixes[kind] : nullptr;
}

int pcie_kind_of(const std::string& prefix) {
    for (int kind = 0; kind < PCIE_KIND_COUNT; ++kind)
        if (prefix == kind_prefixes[kind]) return kind;
    return -1;
}

pcie_change add_pcie_device(int kind, int place, const std::string& serial_number,
                            std::string& name) {
    const model_facts* model = model_of(kind);
    if (!model || !valid_place(kind, place) || !valid_serial_number(serial_number))
        return pcie_change::bad_argument;
    return change_devices([&](std::vector<stored_device>& devices) {
        if (place_taken(kind, place)) return pcie_change::place_taken;
        const int number = free_number(devices, kind);
        if (number == 0 ||
            static_cast<int>(devices.size()) >= PCIE_DEVICES_MAX - NicGetAdapterCount())
            return pcie_change::full;
        const bool bay = kind == PCIE_KIND_NVME_SSD;
        devices.push_back({kind, number, bay ? 0 : place, bay ? place : 0, serial_number,
                           model->max_generation, model->max_lanes});
        name = devices.back().name();
        return pcie_change::done;
    });
}

pcie_change remove_pcie_device(const std::string& name) {
    return change_devices([&](std::vector<stored_device>& devices) {
        const auto found = find_stored(devices, name);
        if (found == devices.end()) return pcie_change::not_found;
        devices.erase(found);
        return pcie_change::done;
    });
}

pcie_change set_pcie_link(const std::string& name, int generation, int lanes) {
    return change_devices([&](std::vector<stored_device>& devices) {
        const auto found = find_stored(devices, name);
        if (found == devices.end()) return pcie_change::not_found;
        const model_facts& model = *model_of(found->kind);
        const bool down = generation == 0 && lanes == 0;
        if (!down && (generation < 1 || generation > model.max_generation || lanes < 1 ||
                      lanes > model.max_lanes || (lanes & (lanes - 1)) != 0))
            return pcie_change::bad_argument;
        found->generation = generation;
        found->lanes = lanes;
        return pcie_change::done;
    });
}

}  // namespace platform

extern "C" int PcieGetDeviceCount(void) { return static_cast<int>(all_devices().size()); }

extern "C" int PcieGetDevice(int index, St_PcieDevice* device) {
    if (!device) return PLT_ERR_ARGUMENT;
    const std::vector<St_PcieDevice>& devices = all_devices();
    if (index < 0 || index >= static_cast<int>(devices.size())) return PLT_ERR_NOT_FOUND;
    *device = devices[index];
    return PLT_OK;
}
