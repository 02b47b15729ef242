#include "platform/sim/raid_store.h"

#include <time.h>

#include <algorithm>
#include <map>
#include <memory>

#include <boost/algorithm/string.hpp>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "platform/libstorage.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr int max_seconds = 3600;

std::string section_of(int family, int controller) {
    return (family == RAID_FAMILY_BROADCOM ? "Broadcom" : "Marvell") + std::to_string(controller);
}

std::string volume_section(const std::string& controller, int volume) {
    return controller + "Volume" + std::to_string(volume);
}

std::string bay_key(int bay, const char* what) { return "Bay" + std::to_string(bay) + what; }

std::vector<int> parse_bays(const std::string& text) {
    std::vector<std::string> words;
    boost::split(words, text, boost::is_any_of(","));
    std::vector<int> bays;
    for (const std::string& word : words) {
        try {
            const int bay = std::stoi(word);
            if (bay >= 0 && bay < RAID_BAYS && bays.size() < RAID_BAYS) bays.push_back(bay);
        } catch (const std::exception&) {
        }
    }
    return bays;
}

std::string joined(const std::vector<int>& bays) {
    std::string text;
    for (int bay : bays) text += (text.empty() ? "" : ",") + std::to_string(bay);
    return text;
}

platform::sim::raid_volume_record read_volume(const pt::ptree& section, int id) {
    platform::sim::raid_volume_record volume;
    volume.id = id;
    volume.level = section.get("Level", 0);
    volume.bays = parse_bays(section.get("Drives", std::string()));
    volume.foreign = section.get("Foreign", 0) != 0;
    volume.locating = section.get("Locate", 0) != 0;
    volume.init_start_ms = section.get("InitStart", 0LL);
    volume.init_end_ms = section.get("InitEnd", 0LL);
    volume.name = section.get("Name", std::string());
    return volume;
}

platform::sim::raid_controller_record read_record(const pt::ptree& state, const std::string& name) {
    platform::sim::raid_controller_record record;
    const pt::ptree none;
    const pt::ptree& section = state.get_child(name, none);
    record.saved = section.get("Saved", 0) != 0;
    for (int bay = 0; bay < RAID_BAYS; ++bay) {
        platform::sim::raid_bay_record& slot = record.bays[bay];
        const int stored = section.get(bay_key(bay, "State"), 0);
        slot.state = stored >= RAID_DRIVE_OK && stored <= RAID_DRIVE_REPLACED ? stored : 0;
        slot.locating = section.get(bay_key(bay, "Locate"), 0) != 0;
        slot.erase_start_ms = section.get(bay_key(bay, "EraseStart"), 0LL);
        slot.erase_end_ms = section.get(bay_key(bay, "EraseEnd"), 0LL);
    }
    for (int id = 0; id < RAID_VOLUMES_MAX; ++id)
        if (const auto volume = state.get_child_optional(volume_section(name, id)))
            record.volumes.push_back(read_volume(*volume, id));
    return record;
}

void write_record(pt::ptree& state, const std::string& name,
                  const platform::sim::raid_controller_record& record) {
    pt::ptree section;
    section.put("Saved", record.saved ? 1 : 0);
    for (int bay = 0; bay < RAID_BAYS; ++bay) {
        section.put(bay_key(bay, "State"), record.bays[bay].state);
        section.put(bay_key(bay, "Locate"), record.bays[bay].locating ? 1 : 0);
        section.put(bay_key(bay, "EraseStart"), record.bays[bay].erase_start_ms);
        section.put(bay_key(bay, "EraseEnd"), record.bays[bay].erase_end_ms);
    }
    state.put_child(name, section);
    for (int id = 0; id < RAID_VOLUMES_MAX; ++id) state.erase(volume_section(name, id));
    for (const platform::sim::raid_volume_record& volume : record.volumes) {
        pt::ptree stored;
        stored.put("Level", volume.level);
        stored.put("Drives", joined(volume.bays));
        stored.put("Foreign", volume.foreign ? 1 : 0);
        stored.put("Locate", volume.locating ? 1 : 0);
        stored.put("InitStart", volume.init_start_ms);
        stored.put("InitEnd", volume.init_end_ms);
        stored.put("Name", volume.name);
        state.put_child(volume_section(name, volume.id), stored);
    }
}

// The stored controllers, parsed once per version of the file.
std::shared_ptr<const pt::ptree> stored_raid_state() {
    static platform::file_cache<pt::ptree> cache;
    std::shared_ptr<const pt::ptree> state;
    cache.get(
        platform::sim::raid_store_file(),
        [](pt::ptree& parsed) {
            parsed = platform::sim::read_state_ini(platform::sim::raid_store_file());
            return PLT_OK;
        },
        state);
    return state;
}

// The records of the stored controllers, each decoded once per version of
// the file: a storage answer reads a controller many times. At most one per
// controller of each family.
constexpr std::size_t decoded_records_max = 2 * 64;

const platform::sim::raid_controller_record& decoded_record(const std::string& name) {
    static std::shared_ptr<const pt::ptree> decoded_from;
    static std::map<std::string, platform::sim::raid_controller_record> decoded;
    std::shared_ptr<const pt::ptree> state = stored_raid_state();
    if (state != decoded_from || decoded.size() >= decoded_records_max) {
        decoded.clear();
        decoded_from = std::move(state);
    }
    auto found = decoded.find(name);
    if (found == decoded.end())
        found = decoded.emplace(name, read_record(*decoded_from, name)).first;
    return found->second;
}

const char* duration_key(platform::sim::raid_duration which) {
    return which == platform::sim::raid_duration::erase ? "Settings.EraseSeconds"
                                                        : "Settings.InitSeconds";
}

}  // namespace

namespace platform::sim {

const std::string& raid_store_file() {
    static fixed_bmc_path path("/var/bmc/raid.ini");
    return path.get();
}

bool raid_controller_exists(int family, int controller) {
    const int count = family == RAID_FAMILY_BROADCOM  ? GetBRCMDeviceNum()
                      : family == RAID_FAMILY_MARVELL ? UtilGetMRVLCtrlNum()
                                                      : 0;
    return controller >= 0 && controller < count;
}

raid_controller_record read_raid_controller(int family, int controller) {
    return decoded_record(section_of(family, controller));
}

int change_raid_controller(int family, int controller,
                           const std::function<int(raid_controller_record&)>& change) {
    if (!raid_controller_exists(family, controller)) return PLT_ERR_NOT_FOUND;
    const std::string name = section_of(family, controller);
    int result = PLT_OK;
    const bool stored = update_state_ini(raid_store_file(), [&](pt::ptree& state) {
        raid_controller_record record = read_record(state, name);
        result = change(record);
        if (result == PLT_OK) write_record(state, name, record);
        return result == PLT_OK;
    });
    return result != PLT_OK ? result : stored ? PLT_OK : PLT_ERR_IO;
}

int raid_seconds(raid_duration which) {
    const int seconds =
        stored_raid_state()->get(duration_key(which), which == raid_duration::erase ? 30 : 10);
    return seconds < 1 || seconds > max_seconds ? 1 : seconds;
}

bool set_raid_seconds(raid_duration which, int seconds) {
    if (seconds < 1 || seconds > max_seconds) return false;
    return update_state_ini(raid_store_file(), [&](pt::ptree& state) {
        state.put(duration_key(which), seconds);
        return true;
    });
}

long long raid_clock_ms() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<long long>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

void start_raid_operation(raid_duration which, long long& start_ms, long long& end_ms) {
    start_ms = raid_clock_ms();
    end_ms = start_ms + raid_seconds(which) * 1000LL;
}

int raid_progress(long long start_ms, long long end_ms) {
    if (end_ms <= start_ms) return 100;
    const long long done = (raid_clock_ms() - start_ms) * 100 / (end_ms - start_ms);
    return static_cast<int>(std::clamp(done, 0LL, 100LL));
}

}  // namespace platform::sim
