#include "platform/sim/power_history.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "base/bmc_root.h"
#include "base/input_recording.h"
#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/sim/power_supply.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace platform {
namespace {

constexpr char magic[4] = {'P', 'W', 'H', '1'};
constexpr std::size_t header_size = 12;
constexpr std::size_t sample_size = 6;

void put_u32(std::string& text, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) text.push_back(static_cast<char>(value >> shift));
}

void put_u16(std::string& text, uint16_t value) {
    text.push_back(static_cast<char>(value));
    text.push_back(static_cast<char>(value >> 8));
}

uint32_t get_u32(std::string_view text, std::size_t at) {
    uint32_t value = 0;
    for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(text[at + i]);
    return value;
}

uint16_t get_u16(std::string_view text, std::size_t at) {
    return static_cast<uint16_t>(static_cast<unsigned char>(text[at]) |
                                 static_cast<unsigned char>(text[at + 1]) << 8);
}

uint32_t week_start(uint32_t last_minute) {
    return last_minute >= POWER_HISTORY_MINUTES ? last_minute - POWER_HISTORY_MINUTES + 1 : 0;
}

void keep_week(power_history& history, uint32_t last_minute) {
    const uint32_t first = week_start(last_minute);
    auto& samples = history.samples;
    samples.erase(samples.begin(),
                  std::find_if(samples.begin(), samples.end(),
                               [&](const St_PowerSample& each) { return each.minute >= first; }));
}

uint16_t sample_watts(uint32_t watts) { return static_cast<uint16_t>(std::min(watts, 65535u)); }

power_history load_history() {
    power_history history;
    std::string text;
    if (sim::read_file(power_history_file(), text)) decode_power_history(text, history);
    return history;
}

bool store_history(const power_history& history) {
    return sim::replace_file(power_history_file(), encode_power_history(history), 0644);
}

uint32_t minute_before(long long seconds) {
    return seconds >= 60 ? static_cast<uint32_t>(seconds / 60 - 1) : 0;
}

// One locked read-modify-write of the history, settled first.
bool change_history(bool host_on, uint32_t watts,
                    const std::function<bool(power_history&, uint32_t)>& change) {
    const std::string path = power_history_file();
    return sim::with_file_lock(path, [&] {
        power_history history = load_history();
        const uint32_t last_minute = minute_before(lx_time_get());
        extend_power_history(history, last_minute, host_on, sample_watts(watts));
        return change(history, last_minute) && store_history(history);
    });
}

}  // namespace

const std::string& power_history_file() {
    static fixed_bmc_path path("/var/bmc/power_history.bin");
    return path.get();
}

std::string encode_power_history(const power_history& history) {
    std::string text(magic, sizeof magic);
    put_u32(text, history.settled_minute);
    put_u32(text, static_cast<uint32_t>(history.samples.size()));
    for (const St_PowerSample& each : history.samples) {
        put_u32(text, each.minute);
        put_u16(text, each.watts);
    }
    return text;
}

bool decode_power_history(std::string_view text, power_history& history) {
    if (text.size() < header_size || std::memcmp(text.data(), magic, sizeof magic) != 0)
        return false;
    const uint32_t count = get_u32(text, 8);
    if (count > POWER_HISTORY_MINUTES || text.size() != header_size + count * sample_size)
        return false;
    power_history decoded;
    decoded.settled_minute = get_u32(text, 4);
    for (std::size_t at = header_size; at < text.size(); at += sample_size) {
        const St_PowerSample sample{get_u32(text, at), get_u16(text, at + 4)};
        if (!decoded.samples.empty() && sample.minute <= decoded.samples.back().minute)
            return false;
        decoded.samples.push_back(sample);
    }
    history = std::move(decoded);
    return true;
}

void extend_power_history(power_history& history, uint32_t last_minute, bool host_on,
                          uint16_t watts) {
    if (last_minute <= history.settled_minute) return;
    const uint32_t first = std::max(history.settled_minute + 1, week_start(last_minute));
    keep_week(history, last_minute);
    if (host_on)
        for (uint32_t minute = first; minute <= last_minute; ++minute)
            history.samples.push_back({minute, watts});
    history.settled_minute = last_minute;
}

bool put_power_samples(power_history& history, uint32_t first_minute,
                       const std::vector<uint16_t>& watts) {
    if (watts.empty() || watts.size() > POWER_HISTORY_MINUTES ||
        first_minute + watts.size() - 1 > history.settled_minute)
        return false;
    auto& samples = history.samples;
    const uint32_t end = first_minute + static_cast<uint32_t>(watts.size());
    samples.erase(std::remove_if(samples.begin(), samples.end(),
                                 [&](const St_PowerSample& each) {
                                     return each.minute >= first_minute && each.minute < end;
                                 }),
                  samples.end());
    for (uint32_t i = 0; i < watts.size(); ++i) samples.push_back({first_minute + i, watts[i]});
    std::sort(samples.begin(), samples.end(),
              [](const St_PowerSample& a, const St_PowerSample& b) { return a.minute < b.minute; });
    keep_week(history, history.settled_minute);
    return true;
}

bool settle_power_history(long long now_seconds, bool host_on, uint32_t watts) {
    return sim::with_file_lock(power_history_file(), [&] {
        power_history history = load_history();
        const uint32_t last_minute = minute_before(now_seconds);
        if (last_minute <= history.settled_minute) return true;
        extend_power_history(history, last_minute, host_on, sample_watts(watts));
        return store_history(history);
    });
}

bool add_power_samples(uint32_t minutes_ago, const std::vector<uint16_t>& watts) {
    const bool host_on = PltCHASSIS_PowerStatus() == 1;
    return change_history(host_on, host_load_watts(), [&](power_history& history, uint32_t last) {
        return minutes_ago >= 1 && minutes_ago <= POWER_HISTORY_MINUTES &&
               put_power_samples(history, last + 1 - minutes_ago, watts);
    });
}

bool clear_power_history() {
    return change_history(false, 0, [](power_history& history, uint32_t) {
        history.samples.clear();
        return true;
    });
}

}  // namespace platform

extern "C" int PltPSU_GetPowerHistory(St_PowerSample* samples, int capacity, int* count,
                                      uint32_t* last_minute) {
    if (!samples || !count || !last_minute || capacity < 0) return PLT_ERR_ARGUMENT;
    const std::string path = platform::power_history_file();
    platform::note_input_file(path);
    platform::power_history history = platform::load_history();
    const bool host_on = PltCHASSIS_PowerStatus() == 1;
    const long long now = lx_time_get();
    *last_minute = platform::minute_before(now);
    platform::extend_power_history(history, *last_minute, host_on,
                                   platform::sample_watts(platform::host_load_watts()));
    // The week moves on, and gains a sample while the host is on, each minute.
    platform::note_input_expiry((*last_minute + 2) * 60LL);
    *count = static_cast<int>(std::min<std::size_t>(history.samples.size(), capacity));
    std::copy_n(history.samples.end() - *count, *count, samples);
    return PLT_OK;
}
