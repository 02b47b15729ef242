// The host's PCIe devices of every kind, /redfish/v1/Chassis/1/PCIeDevices/
// <kind><n>, with their functions, .../PCIeFunctions and .../PCIeFunctions/<f>.
// One class each serves every kind: the route's first capture names it.
#pragma once

#include "framework/redfish.h"

namespace odata::redfish {

class pcie_device : public redfish {
public:
    explicit pcie_device(request_context& context);
    int get(request_context& context) override;
};

class pcie_function_collection : public redfish {
public:
    explicit pcie_function_collection(request_context& context);
    int get(request_context& context) override;
};

class pcie_function : public redfish {
public:
    explicit pcie_function(request_context& context);
    int get(request_context& context) override;
};

// The route table's classes.
using nic = pcie_device;
using nicfunctioncollection = pcie_function_collection;
using nicfunc = pcie_function;
using gpu = pcie_device;
using gpufunctioncollection = pcie_function_collection;
using gpufunc = pcie_function;
using nvmessd = pcie_device;
using nvmessdfunctioncollection = pcie_function_collection;
using nvmessdfunc = pcie_function;
using pciessd = pcie_device;
using pciessdfunctioncollection = pcie_function_collection;
using pciessdfunc = pcie_function;

}  // namespace odata::redfish
