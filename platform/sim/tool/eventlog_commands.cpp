// bmcsim eventlog: the BMC event log.
#include <climits>
#include <ostream>

#include "platform/libipmi.h"
#include "platform/libsel.h"
#include "platform/sim/event_log.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace eventlog_commands {

// Keeps one record on one line.
std::string one_line(const std::string& text) {
    std::string line;
    for (char c : text) {
        if (c == '\n')
            line += "\\n";
        else if (c == '\r')
            line += "\\r";
        else
            line += c;
    }
    return line;
}

int show(std::ostream& out) {
    for (const auto& record : platform::read_event_log())
        out << record.time << ' ' << record.code << ' ' << record.argument << ' '
            << one_line(record.text) << '\n';
    return exit_ok;
}

int clear(std::ostream& err) {
    if (platform::clear_event_log()) return exit_ok;
    err << "bmcsim: cannot clear " << platform::event_log_file() << '\n';
    return exit_failed;
}

int add(const area& self, const arguments& words, std::ostream& err) {
    long long code = 0;
    long long argument = 0;
    if (words.size() < 3 || words.size() > 4 || !parse_number(words[1], INT_MIN, INT_MAX, code) ||
        (words.size() == 4 && !parse_number(words[3], INT_MIN, INT_MAX, argument)))
        return usage(self, err);
    if (LibSaveSysEvtLog(static_cast<int>(code), static_cast<int>(argument), words[2].c_str()) == 0)
        return exit_ok;
    err << "bmcsim: cannot write " << platform::event_log_file() << '\n';
    return exit_failed;
}

// The alerts nobody has acknowledged yet.
int alerts(std::ostream& out) {
    static constexpr const char* names[] = {"none", "warning", "critical"};
    const int state = LibGetSysEvtLogAlertState();
    out << "unacknowledged alerts: " << (state >= 0 && state <= 2 ? names[state] : "unknown")
        << '\n';
    return exit_ok;
}

int run_eventlog(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "clear" && words.size() == 1) return clear(err);
    if (command == "add") return add(self, words, err);
    if (command == "alerts" && words.size() == 1) return alerts(out);
    return usage(self, err);
}

}  // namespace eventlog_commands

const area eventlog_area = {"eventlog", "show | clear | add CODE TEXT [ARGUMENT] | alerts",
                            eventlog_commands::run_eventlog};

}  // namespace bmcsim
