// bmcsim dumps: the dumps kept, the store's limit, and holding generations
// half-way.
#include <ostream>

#include "platform/libdump.h"
#include "platform/plt_result.h"
#include "platform/sim/dump_store.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace dumps_commands {

constexpr const char* kind_names[DUMP_KIND_COUNT] = {"host-crash",          "bmc-evidence",
                                                     "bios-evidence",       "drive-smart",
                                                     "crashdump-on-demand", "crashdump-telemetry"};

int find_kind(const std::string& name) {
    for (int kind = 0; kind < DUMP_KIND_COUNT; ++kind)
        if (name == kind_names[kind]) return kind;
    return -1;
}

int show(std::ostream& out) {
    out << "limit=" << platform::sim::dump_store_limit()
        << " hold=" << (platform::sim::dump_generation_held() ? "on" : "off") << '\n';
    for (int kind = 0; kind < DUMP_KIND_COUNT; ++kind) {
        DumpInfo info{};
        out << kind_names[kind] << ' ';
        if (DumpGetInfo(kind, &info) == PLT_OK)
            out << info.file_name << " size=" << info.size << " created=" << info.created;
        else
            out << "none";
        out << (DumpIsGenerating(kind) ? " generating" : "") << '\n';
    }
    return exit_ok;
}

int remove(const area& self, const std::string& which, std::ostream& err) {
    const int kind = find_kind(which);
    if (which != "all" && kind < 0) return usage(self, err);
    const int result = which == "all" ? DumpDeleteAll() : DumpDelete(kind);
    if (result == PLT_OK) return exit_ok;
    err << "bmcsim: " << (result == PLT_ERR_NOT_FOUND ? "no such dump" : "cannot remove the dump")
        << '\n';
    return exit_failed;
}

int set_limit(const area& self, const std::string& text, std::ostream& err) {
    long long bytes = 0;
    if (!parse_number(text, platform::sim::min_dump_store_limit,
                      platform::sim::max_dump_store_limit, bytes))
        return usage(self, err);
    if (platform::sim::set_dump_store_limit(bytes)) return exit_ok;
    err << "bmcsim: cannot change " << platform::sim::dump_settings_file() << '\n';
    return exit_failed;
}

int set_hold(const area& self, const std::string& state, std::ostream& err) {
    if (state != "on" && state != "off") return usage(self, err);
    if (platform::sim::set_dump_generation_held(state == "on")) return exit_ok;
    err << "bmcsim: cannot change " << platform::sim::dump_settings_file() << '\n';
    return exit_failed;
}

int run_dumps(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (words.size() != 2) return usage(self, err);
    if (command == "delete") return remove(self, words[1], err);
    if (command == "limit") return set_limit(self, words[1], err);
    if (command == "hold") return set_hold(self, words[1], err);
    return usage(self, err);
}

}  // namespace dumps_commands

const area dumps_area = {"dumps",
                         "show | delete KIND|all | limit BYTES | hold on|off (KIND: host-crash, "
                         "bmc-evidence, bios-evidence, drive-smart, crashdump-on-demand, "
                         "crashdump-telemetry)",
                         dumps_commands::run_dumps};

}  // namespace bmcsim
