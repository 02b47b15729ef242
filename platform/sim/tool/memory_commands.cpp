// bmcsim memory: the error counts of the host's memory modules.
#include <ostream>
#include <string>

#include "platform/sim/memory_errors.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace memory_commands {

int show(std::ostream& out) {
    platform::for_each_memory_error_count(
        [&](const std::string& locator, uint32_t correctable, uint32_t uncorrectable) {
            out << locator << ": correctable " << correctable << " | uncorrectable "
                << uncorrectable << '\n';
        });
    return exit_ok;
}

int errors(const area& self, const arguments& words, std::ostream& err) {
    constexpr long long most = UINT32_MAX;
    long long correctable = 0, uncorrectable = 0;
    if (!platform::valid_device_locator(words[1]) ||
        !parse_number(words[2], 0, most, correctable) ||
        !parse_number(words[3], 0, most, uncorrectable))
        return usage(self, err);
    if (platform::set_memory_error_counts(words[1], static_cast<uint32_t>(correctable),
                                          static_cast<uint32_t>(uncorrectable)))
        return exit_ok;
    err << "bmcsim: cannot write " << platform::memory_errors_file() << '\n';
    return exit_failed;
}

int run_memory(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "errors" && words.size() == 4) return errors(self, words, err);
    return usage(self, err);
}

}  // namespace memory_commands

const area memory_area = {"memory", "show | errors SLOT CORRECTABLE UNCORRECTABLE",
                          memory_commands::run_memory};

}  // namespace bmcsim
