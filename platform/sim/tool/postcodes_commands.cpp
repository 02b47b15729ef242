// bmcsim postcodes: the POST codes the host's BIOS writes, as the BMC
// snoops them.
#include <cstdio>
#include <ostream>

#include "platform/libsnoop.h"
#include "platform/sim/post_codes.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace postcodes_commands {

int show(std::ostream& out) {
    St_PostCodes codes;
    PltSNOOP_GetPostCodes(&codes);
    char word[4];
    for (int index = 0; index < codes.count; ++index) {
        std::snprintf(word, sizeof word, "%02X", codes.codes[index]);
        out << (index ? " " : "") << word;
    }
    out << '\n';
    return exit_ok;
}

// add CODE... (hexadecimal bytes)
int add(const area& self, const arguments& words, std::ostream& err) {
    std::vector<uint8_t> codes;
    for (auto word = words.begin() + 1; word != words.end(); ++word) {
        unsigned code = 0;
        char rest = 0;
        if (word->empty() || word->size() > 2 ||
            std::sscanf(word->c_str(), "%2x%c", &code, &rest) != 1)
            return usage(self, err);
        codes.push_back(static_cast<uint8_t>(code));
    }
    return written(platform::add_post_codes(codes), platform::post_codes_file(), err);
}

int run_postcodes(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "clear" && words.size() == 1)
        return written(platform::clear_post_codes(), platform::post_codes_file(), err);
    if (command == "add" && words.size() >= 2) return add(self, words, err);
    return usage(self, err);
}

}  // namespace postcodes_commands

const area postcodes_area = {"postcodes", "show | add CODE... | clear",
                             postcodes_commands::run_postcodes};

}  // namespace bmcsim
