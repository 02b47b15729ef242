// The host's SMBIOS lists of type 1, 4 and 17, released however the
// reading ends.
#pragma once

#include "platform/libsmbios.h"

namespace odata::redfish {

class smbios_lists {
public:
    smbios_lists() = default;
    smbios_lists(const smbios_lists&) = delete;
    smbios_lists& operator=(const smbios_lists&) = delete;
    ~smbios_lists() { FreeSMBiosData(&data_); }

    // PLT_OK, or the code of the first list that could not be read.
    int parse() {
        int result = GetType1List(&data_);
        if (result == PLT_OK) result = GetType4List(&data_);
        if (result == PLT_OK) result = GetType17List(&data_);
        return result;
    }
    const St_SMBiosData& data() const { return data_; }

private:
    St_SMBiosData data_{};
};

}  // namespace odata::redfish
