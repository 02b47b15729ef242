// The simulated POST code snooping, <root>/var/bmc/postcodes.ini:
// [PostCodes] Codes=<two hex digits per code, blank-separated, oldest
// first>, at most POST_CODE_HISTORY of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

const std::string& post_codes_file();

// The host writes codes (the oldest beyond the history are dropped);
// false when they cannot be stored.
bool add_post_codes(const std::vector<uint8_t>& codes);

bool clear_post_codes();

}  // namespace platform
