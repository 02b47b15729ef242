// The manager's configuration reset: every settings file of the list is
// emptied (an empty file reads as the defaults) in one staged commit, under
// each file's lock, so that no writer slips in between.
#include <functional>
#include <string>
#include <vector>

#include "base/atomic_file.h"
#include "platform/libbmc.h"
#include "platform/sim/ip_filter.h"
#include "platform/sim/kcs_privilege.h"
#include "platform/sim/ntp_settings.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/remote_console.h"
#include "platform/sim/remote_syslog.h"
#include "platform/sim/serial_port.h"
#include "platform/sim/state_ini.h"

namespace {

std::vector<std::string> manager_settings_files() {
    std::vector<std::string> files = {
        platform::ntp_settings_file(),    platform::syslog_settings_file(),
        platform::ip_filter_file(),       platform::kcs_settings_file(),
        platform::serial_settings_file(), platform::radius_settings_file()};
    for (std::string& file : platform::sim::remote_console_files()) files.push_back(file);
    return files;
}

// Takes the locks from the first file on, then runs body.
bool with_locks(const std::vector<std::string>& files, std::size_t from,
                const std::function<bool()>& body) {
    if (from == files.size()) return body();
    return platform::sim::with_file_lock(files[from],
                                         [&] { return with_locks(files, from + 1, body); });
}

}  // namespace

extern "C" int PltBMC_ResetConfig(void) {
    const std::vector<std::string> files = manager_settings_files();
    const bool reset = with_locks(files, 0, [&] {
        platform::staged_files defaults;
        for (const std::string& file : files)
            if (!defaults.stage(file, "", 0600)) return false;
        return defaults.commit();
    });
    return reset ? PLT_OK : PLT_ERR_IO;
}
