// Return codes of the chassis, sensor, power, FRU, SMBIOS, BIOS and storage
// functions of the BMC libraries: 0 is success, failures are negative.
#pragma once

extern "C" {

enum {
    PLT_OK = 0,
    PLT_ERR_IO = -1,           // a store of the BMC could not be read or written
    PLT_ERR_FORMAT = -2,       // stored data is truncated or corrupt
    PLT_ERR_STATE = -3,        // not possible in the present state (e.g. host off)
    PLT_ERR_ARGUMENT = -4,     // an argument is out of range or too long
    PLT_ERR_NOT_FOUND = -5,    // no such sensor, FRU device, bay or field
    PLT_ERR_UNAVAILABLE = -6,  // the sensor has no reading now (host power off)
};

}  // extern "C"
