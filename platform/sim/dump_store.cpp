#include "platform/sim/dump_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <vector>

#include "base/bmc_root.h"
#include "platform/libdump.h"
#include "platform/libipmi.h"
#include "platform/libtask.h"
#include "platform/plt_result.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"
#include "platform/sim/task_store.h"

namespace platform::sim {
namespace {

constexpr const char* file_names[DUMP_KIND_COUNT] = {
    "host_crash_dump.log.gz",  "twrbmc_evidence.bin.gz",     "twrbios_evidence.bin.gz",
    "drive_smart_dump.log.gz", "crashdump_on_demand.log.gz", "crashdump_telemetry.log.gz",
};

bool known_kind(int kind) { return kind >= 0 && kind < DUMP_KIND_COUNT; }

std::string dump_file(int kind) { return dump_directory() + "/" + file_names[kind]; }

// Every change of the files holds it, so that making room never removes a
// dump that another process is reading the size of.
bool with_store_lock(const std::function<bool()>& body) {
    const std::string lock = dump_directory() + "/store";
    return make_parent_dirs(lock) && with_file_lock(lock, body);
}

std::string claim_key(int kind) { return "Generation.Kind" + std::to_string(kind); }

bool claim_in_progress(const std::string& holder) {
    int task_id = 0;
    char monitor_id[TASK_MONITOR_ID_MAX + 1] = {};
    return std::sscanf(holder.c_str(), "task %d %32s", &task_id, monitor_id) == 2 &&
           task_in_progress(task_id, monitor_id);
}

bool stat_dump(int kind, DumpInfo& info) {
    struct stat status {};
    if (::stat(dump_file(kind).c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    info = DumpInfo{};
    info.kind = kind;
    info.size = status.st_size;
    info.created = status.st_mtim.tv_sec;
    copy_text(info.file_name, file_names[kind]);
    return true;
}

// A dump is written when the BMC's clock says, which a set clock takes away
// from the host's; its time of writing is where the store keeps that.
bool stamp_with_bmc_clock(const std::string& path) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    now.tv_sec = static_cast<time_t>(lx_time_get());
    const timespec times[2] = {now, now};
    return ::utimensat(AT_FDCWD, path.c_str(), times, 0) == 0;
}

bool remove_file(const std::string& path) { return ::unlink(path.c_str()) == 0 || errno == ENOENT; }

// Parts that no generation writes any more: the claim of their kind has
// passed to the caller.
void remove_parts(int kind) {
    std::error_code error;
    const std::string prefix = std::string(file_names[kind]) + ".";
    for (const auto& entry : std::filesystem::directory_iterator(dump_directory(), error)) {
        const std::string name = entry.path().filename().string();
        if (name.compare(0, prefix.size(), prefix) == 0 && name.size() > 5 &&
            name.compare(name.size() - 5, 5, ".part") == 0)
            remove_file(entry.path().string());
    }
}

struct stored_dump {
    int kind;
    long long size;
    timespec written;
};

bool older(const stored_dump& a, const stored_dump& b) {
    if (a.written.tv_sec != b.written.tv_sec) return a.written.tv_sec < b.written.tv_sec;
    return a.written.tv_nsec < b.written.tv_nsec;
}

// Removes the oldest dumps other than keep while the store is over its
// limit.
void make_room(int keep) {
    std::vector<stored_dump> dumps;
    long long total = 0;
    for (int kind = 0; kind < DUMP_KIND_COUNT; ++kind) {
        struct stat status {};
        if (::stat(dump_file(kind).c_str(), &status) != 0) continue;
        total += status.st_size;
        if (kind != keep) dumps.push_back({kind, status.st_size, status.st_mtim});
    }
    std::sort(dumps.begin(), dumps.end(), older);
    const long long limit = dump_store_limit();
    for (const stored_dump& oldest : dumps) {
        if (total <= limit) break;
        if (remove_file(dump_file(oldest.kind))) total -= oldest.size;
    }
}

}  // namespace

const std::string& dump_directory() {
    static fixed_bmc_path path("/tmp/dumps");
    return path.get();
}

const std::string& dump_settings_file() {
    static fixed_bmc_path path("/var/bmc/dumps.ini");
    return path.get();
}

const char* dump_file_name(int kind) { return known_kind(kind) ? file_names[kind] : nullptr; }

long long dump_store_limit() {
    const long long limit =
        stored_state_ini(dump_settings_file())->get<long long>("Store.LimitBytes", 0);
    return limit >= min_dump_store_limit && limit <= max_dump_store_limit
               ? limit
               : default_dump_store_limit;
}

bool set_dump_store_limit(long long bytes) {
    if (bytes < min_dump_store_limit || bytes > max_dump_store_limit) return false;
    return update_state_ini(dump_settings_file(), [&](boost::property_tree::ptree& tree) {
        tree.put("Store.LimitBytes", bytes);
        return true;
    });
}

bool dump_generation_held() {
    return stored_state_ini(dump_settings_file())->get<int>("Generation.Hold", 0) == 1;
}

bool set_dump_generation_held(bool held) {
    return update_state_ini(dump_settings_file(), [&](boost::property_tree::ptree& tree) {
        tree.put("Generation.Hold", held ? 1 : 0);
        return true;
    });
}

std::string dump_part_file(int kind) {
    return dump_file(kind) + "." + std::to_string(::getpid()) + ".part";
}

bool put_dump_in_place(int kind, const std::string& part, std::string& reason) {
    struct stat status {};
    if (::stat(part.c_str(), &status) != 0) {
        reason = "the dump file cannot be read";
        return false;
    }
    const long long limit = dump_store_limit();
    if (status.st_size > limit) {
        remove_file(part);
        reason = "the dump takes " + std::to_string(status.st_size) + " bytes, more than the " +
                 std::to_string(limit) + " bytes the store keeps";
        return false;
    }
    const bool placed = with_store_lock([&] {
        if (!stamp_with_bmc_clock(part) || ::rename(part.c_str(), dump_file(kind).c_str()) != 0)
            return false;
        make_room(kind);
        return true;
    });
    if (!placed) {
        remove_file(part);
        reason = "the dump cannot be stored";
    }
    return placed;
}

void release_dump_claim(int kind) {
    update_state_ini(dump_settings_file(), [&](boost::property_tree::ptree& tree) {
        auto generation = tree.get_child_optional("Generation");
        return generation && generation->erase("Kind" + std::to_string(kind)) > 0;
    });
}

}  // namespace platform::sim

using namespace platform::sim;

extern "C" {

int DumpGetInfo(int kind, DumpInfo* info) {
    if (!known_kind(kind) || !info) return PLT_ERR_ARGUMENT;
    return stat_dump(kind, *info) ? PLT_OK : PLT_ERR_NOT_FOUND;
}

int DumpIsGenerating(int kind) {
    if (!known_kind(kind)) return 0;
    const auto holder =
        stored_state_ini(dump_settings_file())->get_optional<std::string>(claim_key(kind));
    return holder && claim_in_progress(*holder) ? 1 : 0;
}

int DumpClaimGeneration(int kind, int task_id) {
    TaskInfo task{};
    if (!known_kind(kind) || TaskServiceGetTaskInfo(task_id, &task) != 0) return PLT_ERR_ARGUMENT;
    bool busy = false;
    const bool claimed =
        update_state_ini(dump_settings_file(), [&](boost::property_tree::ptree& tree) {
            const auto holder = tree.get_optional<std::string>(claim_key(kind));
            busy = holder && claim_in_progress(*holder);
            if (!busy)
                tree.put(claim_key(kind),
                         "task " + std::to_string(task_id) + " " + task.monitor_id);
            return !busy;
        });
    if (busy) return PLT_ERR_STATE;
    if (!claimed || !make_parent_dirs(dump_file(kind))) return PLT_ERR_IO;
    remove_parts(kind);
    return PLT_OK;
}

int DumpOpen(int kind, DumpInfo* info) {
    if (!known_kind(kind) || !info) return -1;
    int fd = -1;
    with_store_lock([&] {
        if (stat_dump(kind, *info)) fd = ::open(dump_file(kind).c_str(), O_RDONLY | O_CLOEXEC);
        return true;
    });
    return fd;
}

int DumpDelete(int kind) {
    if (!known_kind(kind)) return PLT_ERR_ARGUMENT;
    int result = PLT_ERR_IO;
    with_store_lock([&] {
        DumpInfo info{};
        if (!stat_dump(kind, info))
            result = PLT_ERR_NOT_FOUND;
        else if (remove_file(dump_file(kind)))
            result = PLT_OK;
        return true;
    });
    return result;
}

int DumpDeleteAll(void) {
    bool removed = true;
    with_store_lock([&] {
        for (int kind = 0; kind < DUMP_KIND_COUNT; ++kind)
            removed = remove_file(dump_file(kind)) && removed;
        return true;
    });
    return removed ? PLT_OK : PLT_ERR_IO;
}

long long DumpStoreLimit(void) { return dump_store_limit(); }

}  // extern "C"
