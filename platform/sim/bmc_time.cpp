#include "platform/sim/bmc_time.h"

#include <ctime>
#include <memory>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libipmi.h"
#include "platform/sim/state_ini.h"

namespace platform::sim {
namespace {

long long host_clock() { return static_cast<long long>(std::time(nullptr)); }

// Read on every clock reading: parsed once per version of the file.
long long clock_offset() {
    static file_cache<long long> cache;
    std::shared_ptr<const long long> offset;
    cache.get(
        clock_settings_file(),
        [](long long& parsed) {
            parsed = read_state_ini(clock_settings_file()).get("Clock.OffsetSeconds", 0LL);
            return PLT_OK;
        },
        offset);
    return offset ? *offset : 0;
}

bool store_offset(long long offset) {
    return update_state_ini(clock_settings_file(), [&](boost::property_tree::ptree& state) {
        state.put("Clock.OffsetSeconds", offset);
        return true;
    });
}

}  // namespace

const std::string& clock_settings_file() {
    static fixed_bmc_path path("/nv/bmc/clock.ini");
    return path.get();
}

bool set_bmc_clock(long long seconds) { return store_offset(seconds - host_clock()); }

bool reset_bmc_clock() { return store_offset(0); }

}  // namespace platform::sim

extern "C" long long lx_time_get(void) {
    return platform::sim::host_clock() + platform::sim::clock_offset();
}
