#include "platform/sim/tool/areas.h"

#include <charconv>
#include <limits>
#include <ostream>
#include <string_view>

#include "platform/libipmi.h"
#include "platform/sim/shared_state.h"

namespace bmcsim {
namespace {

const area* const areas[] = {
    &state_area,     &eventlog_area,  &crashdump_area, &users_area,       &directory_area,
    &lockdown_area,  &hostif_area,    &snmp_area,      &power_area,       &sensors_area,
    &fru_area,       &smbios_area,    &bios_area,      &boot_area,        &storage_area,
    &board_area,     &alerts_area,    &bmc_area,       &lan_area,         &vmedia_area,
    &serial_area,    &nics_area,      &tasks_area,     &firmware_area,    &pcie_area,
    &telemetry_area, &dumps_area,     &ntp_area,       &syslog_area,      &ipfilter_area,
    &kcs_area,       &memory_area,    &vlans_area,     &nodemanager_area, &console_area,
    &fans_area,      &postcodes_area, &clock_area};

const area* find_area(const std::string& name) {
    for (const area* candidate : areas)
        if (name == candidate->name) return candidate;
    return nullptr;
}

}  // namespace

int usage(std::ostream& err) {
    err << "usage: bmcsim [--root DIR] <area> <command> [args]\n";
    for (const area* each : areas)
        err << "       bmcsim [--root DIR] " << each->name << ' ' << each->usage << '\n';
    return exit_usage;
}

int usage(const area& self, std::ostream& err) {
    err << "usage: bmcsim [--root DIR] " << self.name << ' ' << self.usage << '\n';
    return exit_usage;
}

int written(bool stored, const std::string& file, std::ostream& err) {
    if (stored) return exit_ok;
    err << "bmcsim: cannot write " << file << '\n';
    return exit_failed;
}

int run(const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.empty()) return usage(err);
    const area* chosen = find_area(words.front());
    if (!chosen) return usage(err);
    arguments rest(words.begin() + 1, words.end());
    if (rest.empty()) return usage(*chosen, err);
    return chosen->run(*chosen, rest, out, err);
}

bool attach_shared_state(std::ostream& err) {
    if (GlobalParaInit()) return true;
    err << "bmcsim: cannot attach " << platform::shared_state_file() << '\n';
    return false;
}

bool parse_number(const std::string& text, long long min, long long max, long long& value) {
    std::string_view digits = text;
    bool negative = !digits.empty() && digits.front() == '-';
    if (negative) digits.remove_prefix(1);
    int base = 10;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        digits.remove_prefix(2);
        base = 16;
    }
    unsigned long long magnitude = 0;
    auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), magnitude, base);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
        return false;
    constexpr auto limit = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    if (magnitude > limit + (negative ? 1 : 0)) return false;
    long long number = static_cast<long long>(magnitude & limit);
    if (negative) number = magnitude > limit ? std::numeric_limits<long long>::min() : -number;
    if (number < min || number > max) return false;
    value = number;
    return true;
}

}  // namespace bmcsim
