#include "platform/sim/dump_content.h"

#include <cstdio>
#include <functional>
#include <string>

#include "base/bmc_root.h"
#include "platform/libbios.h"
#include "platform/libbmc.h"
#include "platform/libdump.h"
#include "platform/libipmi_chassis.h"
#include "platform/libipmi_sensors.h"
#include "platform/libstorage.h"
#include "platform/plt_result.h"
#include "platform/sim/event_log.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

// Machine-check banks per processor that a crash dump reads.
constexpr int crash_processors = 2;
constexpr int crash_banks = 4;

std::string event_log() {
    std::string text;
    for_each_event([&](const event_record& record) {
        text += std::to_string(record.time) + " " + std::to_string(record.code) + " " +
                std::to_string(record.argument) + " " + record.text + "\n";
        return true;
    });
    return text;
}

std::string sensor_line(const St_SensorData& record) {
    std::string line =
        std::string(record.id_string) + " (" + std::to_string(record.sensor_number) + "): ";
    uint8_t raw = 0;
    if (UtilGetSensorReading(record.sensor_number, &raw) != PLT_OK) return line + "no reading\n";
    if (record.record_type != SDR_FULL_SENSOR) return line + "state " + std::to_string(raw) + "\n";
    char value[32];
    std::snprintf(value, sizeof value, "%.2f", SensorRawToValue(&record, raw));
    return line + value + "\n";
}

std::string sensors() {
    std::string text;
    for (uint16_t row = 0; row < at_St_SensorDataRows; ++row)
        text += sensor_line(at_St_SensorData[row]);
    return text;
}

std::string firmware() {
    char bmc[64] = {};
    char bios[64] = {};
    UtilGetBmcFwVersion(bmc, sizeof bmc);
    UtilGetLatestBiosRev(bios, sizeof bios);
    return std::string("BMC ") + bmc + "\nBIOS " + bios + "\n";
}

std::string bios_attributes() {
    const char* file = BiosSharedFile(BIOS_FILE_ATTRIBUTES);
    std::string text;
    if (!file || !read_file(bmc_path(file), text)) return "the BIOS has reported no attributes\n";
    return text + "\n";
}

std::string host_state() {
    return PltCHASSIS_PowerStatus() ? "host power on\n" : "host power off\n";
}

// Registers that read the same for the same host: a dump is reproducible.
std::string machine_check_banks() {
    std::string text;
    char line[96];
    for (int cpu = 0; cpu < crash_processors; ++cpu)
        for (int bank = 0; bank < crash_banks; ++bank) {
            const unsigned long long status = (0x8c00004000010005ULL >> bank) ^ cpu;
            std::snprintf(line, sizeof line, "CPU%d MC%d_STATUS 0x%016llx\n", cpu, bank, status);
            text += line;
        }
    return text;
}

// SMART attributes derived from the drive itself, as the simulated drives
// keep no history.
std::string drive_smart(const St_SataDrive& drive) {
    const size_t seed = std::hash<std::string>{}(drive.serial_number);
    char text[512];
    std::snprintf(text, sizeof text,
                  "Bay %d: %s %s serial %s firmware %s\n"
                  "  SMART overall-health self-assessment: PASSED\n"
                  "  5 Reallocated_Sector_Ct 0\n"
                  "  9 Power_On_Hours %zu\n"
                  "  12 Power_Cycle_Count %zu\n"
                  "  194 Temperature_Celsius %zu\n",
                  drive.bay, drive.manufacturer, drive.model, drive.serial_number, drive.revision,
                  seed % 30000, seed % 500, 25 + seed % 15);
    return text;
}

std::string drives() {
    std::string text;
    for (int bay = 0; bay < UtilGetSataBayCount(); ++bay) {
        St_SataDrive drive{};
        if (UtilGetSataDrive(bay, &drive) == PLT_OK && drive.present) text += drive_smart(drive);
    }
    return text.empty() ? "no drive present\n" : text;
}

}  // namespace

std::vector<dump_section> dump_sections(int kind) {
    switch (kind) {
        case DUMP_HOST_CRASH:
            return {{"Host", host_state},
                    {"Machine check banks", machine_check_banks},
                    {"Event log", event_log}};
        case DUMP_BMC_EVIDENCE:
            return {{"Firmware", firmware}, {"Sensors", sensors}, {"Event log", event_log}};
        case DUMP_BIOS_EVIDENCE:
            return {{"Firmware", firmware},
                    {"BIOS attributes", bios_attributes},
                    {"Event log", event_log}};
        case DUMP_DRIVE_SMART:
            return {{"Host", host_state}, {"Drives", drives}};
        case DUMP_CRASHDUMP_ON_DEMAND:
            return {{"Host", host_state},
                    {"Machine check banks", machine_check_banks},
                    {"Sensors", sensors}};
        case DUMP_CRASHDUMP_TELEMETRY:
            return {{"Host", host_state}, {"Sensors", sensors}};
        default:
            return {};
    }
}

}  // namespace platform::sim
