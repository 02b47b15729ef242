#include "platform/sim/post_codes.h"

#include <cstdio>
#include <sstream>

#include "base/bmc_root.h"
#include "platform/libsnoop.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr const char* codes_key = "PostCodes.Codes";

std::vector<uint8_t> stored_codes(const pt::ptree& state) {
    std::istringstream words(state.get(codes_key, std::string()));
    std::vector<uint8_t> codes;
    std::string word;
    while (codes.size() < POST_CODE_HISTORY && words >> word) {
        unsigned code = 0;
        char rest = 0;
        if (word.size() == 2 && std::sscanf(word.c_str(), "%2x%c", &code, &rest) == 1)
            codes.push_back(static_cast<uint8_t>(code));
    }
    return codes;
}

std::string codes_text(const std::vector<uint8_t>& codes) {
    std::string text;
    char word[4];
    for (uint8_t code : codes) {
        std::snprintf(word, sizeof word, "%02X", code);
        text += (text.empty() ? "" : " ") + std::string(word);
    }
    return text;
}

}  // namespace

namespace platform {

const std::string& post_codes_file() {
    static fixed_bmc_path path("/var/bmc/postcodes.ini");
    return path.get();
}

bool add_post_codes(const std::vector<uint8_t>& codes) {
    return sim::update_state_ini(post_codes_file(), [&](pt::ptree& state) {
        std::vector<uint8_t> kept = stored_codes(state);
        kept.insert(kept.end(), codes.begin(), codes.end());
        if (kept.size() > POST_CODE_HISTORY)
            kept.erase(kept.begin(), kept.end() - POST_CODE_HISTORY);
        state.put(codes_key, codes_text(kept));
        return true;
    });
}

bool clear_post_codes() {
    return sim::update_state_ini(post_codes_file(), [](pt::ptree& state) {
        state.put(codes_key, std::string());
        return true;
    });
}

}  // namespace platform

extern "C" int PltSNOOP_GetPostCodes(St_PostCodes* codes) {
    if (!codes) return PLT_ERR_ARGUMENT;
    const std::vector<uint8_t> stored =
        stored_codes(*platform::sim::stored_state_ini(platform::post_codes_file()));
    *codes = {};
    codes->count = static_cast<uint8_t>(stored.size());
    std::copy(stored.begin(), stored.end(), codes->codes);
    return PLT_OK;
}
