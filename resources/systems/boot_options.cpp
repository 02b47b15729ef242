// The boot options of the BIOS's boot order: "Boot" and hexadecimal digits,
// each listed once, in boot order; other names in the order are not
// options a client can address.
#include <algorithm>
#include <cctype>

#include "framework/schema_files.h"
#include "frontend/exception_http.h"
#include "resources/systems/bios_boot_settings.h"
#include "resources/systems/bootoptions.h"
#include "resources/systems/bootoptionscollection.h"

namespace odata::redfish {
namespace {

constexpr const char* boot_options_uri = "/redfish/v1/Systems/1/BootOptions";
constexpr std::string_view option_prefix = "Boot";

bool addressable(const std::string& option) {
    if (option.size() <= option_prefix.size() ||
        option.compare(0, option_prefix.size(), option_prefix) != 0)
        return false;
    return std::all_of(option.begin() + option_prefix.size(), option.end(),
                       [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); });
}

std::vector<std::string> boot_options() {
    std::vector<std::string> options;
    for (const std::string& option : read_bios_boot_options().order)
        if (addressable(option) &&
            std::find(options.begin(), options.end(), option) == options.end())
            options.push_back(option);
    return options;
}

bool same_number(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::toupper(static_cast<unsigned char>(x)) ==
                      std::toupper(static_cast<unsigned char>(y));
           });
}

// The option as the boot order names it; "" when the order has no such option.
std::string named_option(const request_context& context) {
    if (context.captures.size() != 2) return {};
    for (const std::string& option : boot_options())
        if (same_number(option.substr(option_prefix.size()), context.captures[1])) return option;
    return {};
}

std::string option_uri(const std::string& option) {
    return std::string(boot_options_uri) + "/" + option;
}

}  // namespace

bootoptionscollection::bootoptionscollection(request_context& context)
    : redfish(context, "BootOptionCollection", "", "Boot Option Collection", boot_options_uri) {}

int bootoptionscollection::get(request_context&) {
    set_common_properties();
    std::vector<std::string> uris;
    for (const std::string& option : boot_options()) uris.push_back(option_uri(option));
    set_members(uris);
    return 0;
}

bootoptions::bootoptions(request_context& context)
    : redfish(context, "BootOption", std::string(schema_file_of("BootOption").version),
              "Boot Option", context.uri) {}

int bootoptions::get(request_context& context) {
    const std::string option = named_option(context);
    if (option.empty())
        throw_http_error(404, "Base.1.10.ResourceNotFound",
                         {"BootOption", std::string(context.segment_from_end(0).value_or(""))});
    uri_ = option_uri(option);
    set_common_properties();
    set("BootOptionReference", option);
    return 0;
}

}  // namespace odata::redfish
