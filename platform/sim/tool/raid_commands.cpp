// bmcsim storage raid: the RAID controllers' drives and volumes.
#include <ostream>
#include <string>

#include <boost/algorithm/string.hpp>

#include "platform/libraid.h"
#include "platform/sim/raid_controllers.h"
#include "platform/sim/raid_store.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace raid_commands {

struct raid_family {
    const char* prefix;  // "HA-RAID." then the controller index
    int family;
};

constexpr raid_family families[] = {{"HA-RAID.", RAID_FAMILY_BROADCOM},
                                    {"MRVL.HA-RAID.", RAID_FAMILY_MARVELL}};

struct controller_name {
    int family = -1;
    int index = 0;
};

bool parse_controller(const std::string& text, controller_name& name) {
    for (const raid_family& each : families) {
        const std::string prefix = each.prefix;
        long long index = 0;
        if (text.compare(0, prefix.size(), prefix) == 0 &&
            parse_number(text.substr(prefix.size()), 0, 63, index)) {
            name = {each.family, static_cast<int>(index)};
            return true;
        }
    }
    return false;
}

bool parse_level(const std::string& text, int& level) {
    const struct {
        const char* name;
        int level;
    } levels[] = {{"RAID0", RAID_LEVEL_0},
                  {"RAID1", RAID_LEVEL_1},
                  {"RAID5", RAID_LEVEL_5},
                  {"RAID10", RAID_LEVEL_10}};
    for (const auto& each : levels) {
        if (text != each.name) continue;
        level = each.level;
        return true;
    }
    return false;
}

const char* drive_state(int state) {
    return state == RAID_DRIVE_FAILED ? "failed" : state == RAID_DRIVE_REPLACED ? "replaced" : "ok";
}

const char* volume_state(int state) {
    return state == RAID_VOLUME_FOREIGN    ? "Foreign"
           : state == RAID_VOLUME_DEGRADED ? "Degraded"
                                           : "Optimal";
}

std::string percent(int value) {
    return value == RAID_NO_OPERATION ? "none" : std::to_string(value);
}

void show_drives(std::ostream& out, const std::string& name, int family, int index) {
    for (int bay = 0; bay < RAID_BAYS; ++bay) {
        St_RaidDrive drive{};
        if (UtilRaidGetDrive(family, index, bay, &drive) != PLT_OK) continue;
        out << name << " bay" << bay << " state=" << drive_state(drive.state)
            << " volume=" << (drive.volume < 0 ? "none" : std::to_string(drive.volume))
            << " locate=" << (drive.locating ? "on" : "off")
            << " erase=" << percent(drive.erase_percent) << '\n';
    }
}

void show_volume(std::ostream& out, const std::string& name, const St_RaidVolume& volume) {
    std::string bays;
    for (int i = 0; i < volume.drive_count; ++i)
        bays += (i ? "," : "") + std::to_string(volume.bays[i]);
    out << name << " volume" << int(volume.id) << " RAID" << int(volume.level) << " drives=" << bays
        << " state=" << volume_state(volume.state) << " init=" << int(volume.init_percent)
        << " locate=" << (volume.locating ? "on" : "off") << '\n';
}

int show(std::ostream& out) {
    for (const raid_family& each : families) {
        for (int index = 0;; ++index) {
            St_RaidController controller{};
            if (UtilRaidGetController(each.family, index, &controller) != PLT_OK) break;
            const std::string name = each.prefix + std::to_string(index);
            out << name << " saved=" << (controller.saved ? "yes" : "no") << '\n';
            show_drives(out, name, each.family, index);
            for (int i = 0; i < controller.volume_count; ++i) {
                St_RaidVolume volume{};
                if (UtilRaidGetVolume(each.family, index, controller.volume_ids[i], &volume) ==
                    PLT_OK)
                    show_volume(out, name, volume);
            }
        }
    }
    return exit_ok;
}

int failed(const char* what, std::ostream& err) {
    err << "bmcsim: " << what << ", or " << platform::sim::raid_store_file()
        << " cannot be written\n";
    return exit_failed;
}

// "fail|replace CONTROLLER BAY"
int drive(const area& self, const arguments& words, std::ostream& err) {
    controller_name name;
    long long bay = 0;
    if (!parse_controller(words[2], name) || !parse_number(words[3], 0, RAID_BAYS - 1, bay))
        return usage(self, err);
    const auto what = words[1] == "fail" ? platform::raid_drive_change::fail
                                         : platform::raid_drive_change::replace;
    if (platform::set_raid_drive(name.family, name.index, static_cast<int>(bay), what))
        return exit_ok;
    return failed("no such controller", err);
}

// "foreign CONTROLLER LEVEL BAY[,BAY...]"
int foreign(const area& self, const arguments& words, std::ostream& err) {
    controller_name name;
    int level = -1;
    std::vector<std::string> texts;
    boost::split(texts, words[4], boost::is_any_of(","));
    std::vector<uint8_t> bays;
    for (const std::string& text : texts) {
        long long bay = 0;
        if (!parse_number(text, 0, RAID_BAYS - 1, bay)) return usage(self, err);
        bays.push_back(static_cast<uint8_t>(bay));
    }
    if (!parse_controller(words[2], name) || !parse_level(words[3], level)) return usage(self, err);
    if (platform::add_foreign_volume(name.family, name.index, level, bays) == PLT_OK)
        return exit_ok;
    return failed("no such controller, the drives do not fit the level or are in use", err);
}

// "seconds erase|init SECONDS"
int seconds(const area& self, const arguments& words, std::ostream& err) {
    long long value = 0;
    if ((words[2] != "erase" && words[2] != "init") || !parse_number(words[3], 1, 3600, value))
        return usage(self, err);
    const auto which = words[2] == "erase" ? platform::sim::raid_duration::erase
                                           : platform::sim::raid_duration::init;
    if (platform::sim::set_raid_seconds(which, static_cast<int>(value))) return exit_ok;
    return failed("cannot store the duration", err);
}

}  // namespace raid_commands

// words: "raid" and what follows it.
int run_raid(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string command = words.size() > 1 ? words[1] : std::string();
    if (command == "show" && words.size() == 2) return raid_commands::show(out);
    if ((command == "fail" || command == "replace") && words.size() == 4)
        return raid_commands::drive(self, words, err);
    if (command == "foreign" && words.size() == 5) return raid_commands::foreign(self, words, err);
    if (command == "seconds" && words.size() == 4) return raid_commands::seconds(self, words, err);
    return usage(self, err);
}

}  // namespace bmcsim
