#include "frontend/request_parameters.h"

#include <array>
#include <cstdlib>
#include <cstring>

extern char** environ;

namespace odata::redfish {
namespace {

constexpr std::size_t parameter_count = static_cast<std::size_t>(cgi_parameter::count);

// By cgi_parameter.
constexpr std::array<std::string_view, parameter_count> parameter_names = {
    "REQUEST_URI",       "QUERY_STRING",       "REQUEST_METHOD",    "REMOTE_ADDR",
    "HTTP_X_AUTH_TOKEN", "HTTP_AUTHORIZATION", "HTTP_ORIGIN",       "HTTP_ODATA_VERSION",
    "HTTP_IF_MATCH",     "HTTP_NONE_MATCH",    "HTTP_IF_NONE_MATCH"};

static_assert(std::size(parameter_names) == parameter_count);

struct kept_parameters {
    bool within_request = false;
    bool looked_up = false;
    std::array<const char*, parameter_count> values = {};
};

kept_parameters kept;

constexpr std::array<bool, 256> first_letters = [] {
    std::array<bool, 256> letters = {};
    for (std::string_view name : parameter_names)
        letters[static_cast<unsigned char>(name[0])] = true;
    return letters;
}();

// By length: the parameters whose name has it, one bit each by cgi_parameter.
constexpr std::array<unsigned, 32> names_of_length = [] {
    std::array<unsigned, 32> names = {};
    for (std::size_t at = 0; at < parameter_count; ++at)
        names[parameter_names[at].size()] |= 1u << at;
    return names;
}();

// Every parameter in one pass over the environment, instead of a search of
// it for each; most entries are passed over by their first letter or the
// length of their name.
void look_up_all() {
    for (char** entry = environ; entry && *entry; ++entry) {
        if (!first_letters[static_cast<unsigned char>(**entry)]) continue;
        const char* equals = std::strchr(*entry, '=');
        if (!equals) continue;
        const auto length = static_cast<std::size_t>(equals - *entry);
        const unsigned candidates = length < names_of_length.size() ? names_of_length[length] : 0;
        for (unsigned rest = candidates; rest != 0; rest &= rest - 1) {
            const auto at = static_cast<std::size_t>(__builtin_ctz(rest));
            if (!kept.values[at] && std::memcmp(*entry, parameter_names[at].data(), length) == 0)
                kept.values[at] = equals + 1;
        }
    }
    kept.looked_up = true;
}

}  // namespace

void keep_request_parameters(bool within_request) { kept = {within_request, false, {}}; }

std::optional<std::string_view> request_parameter(cgi_parameter parameter) {
    const auto at = static_cast<std::size_t>(parameter);
    if (kept.within_request && !kept.looked_up) look_up_all();
    const char* value =
        kept.within_request ? kept.values[at] : std::getenv(parameter_names[at].data());
    if (!value) return std::nullopt;
    return std::string_view(value);
}

}  // namespace odata::redfish
