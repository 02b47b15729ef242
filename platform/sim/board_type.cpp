#include "platform/sim/board_type.h"

#include "base/bmc_root.h"
#include "platform/libipmi_chassis.h"
#include "platform/sim/state_ini.h"

namespace platform {

const std::string& board_type_file() {
    static fixed_bmc_path path("/var/bmc/board.ini");
    return path.get();
}

bool set_board_node_type(int node_type) {
    return sim::update_state_ini(board_type_file(), [&](boost::property_tree::ptree& state) {
        state.put("Board.NodeType", node_type);
        return true;
    });
}

}  // namespace platform

extern "C" int GetQuillonType(void) {
    return platform::sim::stored_state_ini(platform::board_type_file())->get("Board.NodeType", 0);
}
