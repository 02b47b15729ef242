// bmcsim kcs: the privilege limit of the host's KCS channel.
#include <ostream>

#include "platform/libkcs.h"
#include "platform/sim/kcs_privilege.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace kcs_commands {

int run_kcs(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) {
        const int level = UtilGetKCSPrivilege(KCS_CHANNEL);
        if (level < 0) {
            err << "bmcsim: " << platform::kcs_settings_file() << " is malformed\n";
            return exit_failed;
        }
        out << "privilege=" << (level == KCS_PRIV_USER ? "User" : role_name(level)) << '\n';
        return exit_ok;
    }
    int level = 0;
    if (command != "set" || words.size() != 2 || !parse_privilege(words[1], level))
        return usage(self, err);
    const int status = UtilSetKCSPrivilege(KCS_CHANNEL, level);
    if (status == PLT_OK) return exit_ok;
    if (status == PLT_ERR_ARGUMENT) return usage(self, err);
    err << "bmcsim: cannot write " << platform::kcs_settings_file() << '\n';
    return exit_failed;
}

}  // namespace kcs_commands

const area kcs_area = {"kcs", "show | set Administrator|Operator|User|Callback|1..4",
                       kcs_commands::run_kcs};

}  // namespace bmcsim
