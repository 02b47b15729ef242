#include "frontend/request_parameters.h"

#include <array>
#include <cstdlib>

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
    std::array<bool, parameter_count> looked_up = {};
    std::array<const char*, parameter_count> values = {};
};

kept_parameters kept;

}  // namespace

void keep_request_parameters(bool within_request) { kept = {within_request, {}, {}}; }

std::optional<std::string_view> request_parameter(cgi_parameter parameter) {
    const auto at = static_cast<std::size_t>(parameter);
    const char* value = kept.within_request && kept.looked_up[at]
                            ? kept.values[at]
                            : std::getenv(parameter_names[at].data());
    if (kept.within_request) {
        kept.looked_up[at] = true;
        kept.values[at] = value;
    }
    if (!value) return std::nullopt;
    return std::string_view(value);
}

}  // namespace odata::redfish
