// bmcsim board: board type and identify light.
#include <ostream>
#include <string>

#include "platform/libipmi.h"
#include "platform/libipmi_chassis.h"
#include "platform/sim/board_type.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace board_commands {

struct light_mode {
    const char* name;
    uint8_t mode;
};

constexpr light_mode light_modes[] = {
    {"off", IDENTIFY_LIGHT_OFF},
    {"blink", IDENTIFY_LIGHT_BLINK},
    {"on", IDENTIFY_LIGHT_ON},
};

int show(std::ostream& out, std::ostream& err) {
    if (!attach_shared_state(err)) return exit_failed;
    const char* light = at_p_St_GlobalVar->identify_blink ? "blink"
                        : at_p_St_GlobalVar->identify_lit ? "on"
                                                          : "off";
    out << "node_type=" << GetQuillonType() << '\n' << "identify=" << light << '\n';
    return exit_ok;
}

int identify(const area& self, const std::string& name, std::ostream& err) {
    for (const light_mode& each : light_modes) {
        if (name != each.name) continue;
        if (!attach_shared_state(err)) return exit_failed;
        return board->SetIdentifyLight(each.mode) == PLT_OK ? exit_ok : exit_failed;
    }
    return usage(self, err);
}

int node_type(const area& self, const std::string& text, std::ostream& err) {
    long long type = 0;
    if (!parse_number(text, 0, 255, type)) return usage(self, err);
    if (platform::set_board_node_type(static_cast<int>(type))) return exit_ok;
    err << "bmcsim: cannot write " << platform::board_type_file() << '\n';
    return exit_failed;
}

int run_board(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out, err);
    if (command == "identify" && words.size() == 2) return identify(self, words[1], err);
    if (command == "node-type" && words.size() == 2) return node_type(self, words[1], err);
    return usage(self, err);
}

}  // namespace board_commands

const area board_area = {"board", "show | identify off|blink|on | node-type N",
                         board_commands::run_board};

}  // namespace bmcsim
