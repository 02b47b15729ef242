// The simulated board's type, <root>/var/bmc/board.ini:
//
//   [Board] NodeType=<0: single node (default), else the twin-node type>
#pragma once

#include <string>

namespace platform {

const std::string& board_type_file();

bool set_board_node_type(int node_type);

}  // namespace platform
