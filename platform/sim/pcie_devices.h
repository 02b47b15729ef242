// The simulated host's PCIe devices besides its network adapters (which
// host_nics.* keeps): GPUs and PCIe SSDs in the riser slots, NVMe SSDs in
// the drive bays. What a model is (PCI identifiers, class code, link,
// functions) comes from a table per kind; what differs per device is kept
// in <root>/var/bmc/pcie_devices.ini, one section per device:
//
//   [GPU1] Slot=2 (or Bay=<n> for an NVMe SSD), SerialNumber=..., Lanes=16, Generation=4
//   [Inventory] Devices=GPU1 NVMeSSD1 ... (the sections in use)
//
// A missing file is the delivered inventory: GPU1 in slot 2, PCIeSSD1 in
// slot 4, NVMeSSD1 and NVMeSSD2 in bays 1 and 2.
#pragma once

#include <string>

namespace platform {

const std::string& pcie_devices_file();

// "GPU", "NVMeSSD", "PCIeSSD", "NIC"; null for another kind.
const char* pcie_kind_prefix(int kind);

// The kind of a prefix, or -1.
int pcie_kind_of(const std::string& prefix);

// Bays of the NVMe backplane.
inline constexpr int nvme_bay_count = 8;

// bad_argument: no such slot or bay, a serial number that is not 1 to 23
// letters, digits or dashes, or a link the device cannot train to.
enum class pcie_change { done, bad_argument, place_taken, full, not_found, io_error };

// Adds a device of a kind that the simulator stores (not a NIC) in a free
// riser slot, or for an NVMe SSD a free bay, with the link trained at its
// widest; name receives "GPU2".
pcie_change add_pcie_device(int kind, int place, const std::string& serial_number,
                            std::string& name);

// Removes a stored device by its name ("GPU2").
pcie_change remove_pcie_device(const std::string& name);

// The link of a stored device as trained now (generation 0: link down).
pcie_change set_pcie_link(const std::string& name, int generation, int lanes);

}  // namespace platform
