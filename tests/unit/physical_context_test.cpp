// PhysicalContext and RelatedItem of the Thermal and Power sensor members,
// chosen from sensor names.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "resources/chassis/physical_context.h"
#include "resources/chassis/related_item.h"

using namespace odata::redfish;

namespace {

St_SensorData record_named(const char* name, uint8_t sensor_number, uint8_t flags) {
    St_SensorData record{};
    record.record_type = SDR_FULL_SENSOR;
    record.sensor_number = sensor_number;
    record.sensor_type = SENSOR_TYPE_TEMPERATURE;
    record.flags = flags;
    record.id_length = static_cast<uint8_t>(std::strlen(name));
    std::strncpy(record.id_string, name, SDR_ID_STRING_MAX);
    return record;
}

std::string related(const char* name, uint8_t sensor_number = 0xF0,
                    uint8_t flags = SDR_FLAG_HOST_POWERED) {
    return temperature_related_item(record_named(name, sensor_number, flags));
}

}  // namespace

TEST(TemperaturePhysicalContext, ComponentNamesAndTheBoardDefault) {
    EXPECT_STREQ(temperature_physical_context("CPU1 Temp"), "CPU");
    EXPECT_STREQ(temperature_physical_context("DIMM A1 Temp"), "Memory");
    EXPECT_STREQ(temperature_physical_context("PCH Temp"), "SystemBoard");
    EXPECT_STREQ(temperature_physical_context(""), "SystemBoard");
}

TEST(TemperaturePhysicalContext, DimmWinsOverTheCpuItIsNamedAfter) {
    EXPECT_STREQ(temperature_physical_context("CPU1_DIMM_A1 Temp"), "Memory");
    EXPECT_STREQ(temperature_physical_context("DIMM_CPU2 Temp"), "Memory");
}

TEST(TemperaturePhysicalContext, DevicesMapToAsicStorageOrBackplane) {
    for (const char* name : {"GPU1 Temp", "Xeon Phi Temp", "OCP_NIC Temp", "PLX Switch Temp"})
        EXPECT_STREQ(temperature_physical_context(name), "ASIC") << name;
    for (const char* name : {"SSD0 Temp", "HDD Temp"})
        EXPECT_STREQ(temperature_physical_context(name), "StorageDevice") << name;
    for (const char* name : {"BPN Temp", "Chassis Temp"})
        EXPECT_STREQ(temperature_physical_context(name), "Backplane") << name;
    EXPECT_STREQ(temperature_physical_context("Inlet Temp"), "Intake");
    // A processor name outranks a device named in it.
    EXPECT_STREQ(temperature_physical_context("CPU1 PLX Temp"), "CPU");
}

TEST(TemperaturePhysicalContext, PatternsAreCaseSensitive) {
    EXPECT_STREQ(temperature_physical_context("cpu Temp"), "SystemBoard");
    EXPECT_STREQ(temperature_physical_context("Dimm Temp"), "SystemBoard");
}

TEST(VoltagePlacement, ProcessorAndDimmRailsBelongToTheSystem) {
    EXPECT_STREQ(voltage_physical_context("Vcpu1"), "CPU");
    EXPECT_STREQ(voltage_physical_context("VDimmP2ABC"), "Memory");
    EXPECT_STREQ(voltage_physical_context("12V"), "SystemBoard");
    EXPECT_STREQ(voltage_physical_context("VBAT"), "SystemBoard");
    EXPECT_EQ(voltage_related_item("Vcpu1"), "/redfish/v1/Systems/1");
    EXPECT_EQ(voltage_related_item("VDimmP1ABC"), "/redfish/v1/Systems/1");
    EXPECT_EQ(voltage_related_item("3.3VCC"), "/redfish/v1/Chassis/1");
}

TEST(TemperatureRelatedItem, ProcessorNumberFromEveryNameForm) {
    EXPECT_EQ(related("CPU2 Temp"), "/redfish/v1/Systems/1/Processors/2");
    EXPECT_EQ(related("CPU1_DIMM_B1 Temp"), "/redfish/v1/Systems/1/Processors/1");
    EXPECT_EQ(related("VRMCpu2 Temp"), "/redfish/v1/Systems/1/Processors/2");
    EXPECT_EQ(related("VRMP1ABC Temp"), "/redfish/v1/Systems/1/Processors/1");
    EXPECT_EQ(related("P2-DIMMA1 Temp"), "/redfish/v1/Systems/1/Processors/2");
    EXPECT_EQ(related("CPU12 Temp"), "/redfish/v1/Systems/1/Processors/12");
    // Single-socket names carry no number.
    EXPECT_EQ(related("CPU Temp"), "/redfish/v1/Systems/1/Processors/1");
}

TEST(TemperatureRelatedItem, GpusAndNetworkAdapters) {
    EXPECT_EQ(related("GPU3 Temp"), "/redfish/v1/Chassis/1/PCIeDevices/GPU3");
    EXPECT_EQ(related("GPU Temp"), "/redfish/v1/Chassis/1/PCIeDevices/GPU1");
    // The simulated board has its OCP NIC chip on sensor 0x06, adapter 1.
    EXPECT_EQ(related("OCP_NIC Temp", 0x06), "/redfish/v1/Chassis/1/NetworkAdapters/1");
    // A card the platform does not know falls back to the sensor's owner.
    EXPECT_EQ(related("UR_NIC Temp", 0xF1), "/redfish/v1/Systems/1");
    EXPECT_EQ(related("X_FPGA Temp", 0xF2, 0), "/redfish/v1/Chassis/1");
}

TEST(TemperatureRelatedItem, OtherSensorsBelongToWhatPowersThem) {
    EXPECT_EQ(related("HDD Temp"), "/redfish/v1/Systems/1");
    EXPECT_EQ(related("PCH Temp", 0xF0, 0), "/redfish/v1/Chassis/1");
    EXPECT_EQ(related("DIMM A1 Temp"), "/redfish/v1/Systems/1");
}
