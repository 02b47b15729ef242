#include "resources/systems/bios_boot_settings.h"

#include <arpa/inet.h>

#include <algorithm>
#include <boost/algorithm/string/split.hpp>
#include <boost/json.hpp>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

#include "base/bmc_root.h"
#include "base/file_cache.h"
#include "base/input_recording.h"
#include "framework/ini_settings.h"
#include "platform/libbios.h"
#include "resources/systems/bios_attributes.h"

namespace odata::redfish {
namespace {

// The BIOS's word for an attribute it does not have.
constexpr std::string_view not_supported = "NotSupport";
constexpr std::string_view boot_uri_attribute = "BootURI";
constexpr size_t max_boot_uri_length = 255;

const char* shared(int file) { return BiosSharedFile(file); }

std::string boot_uri_in(const boost::json::object& document, std::string_view group) {
    const boost::json::value* attributes = document.if_contains(group);
    const boost::json::value* uri = attributes && attributes->is_object()
                                        ? attributes->get_object().if_contains(boot_uri_attribute)
                                        : nullptr;
    return uri && uri->is_string() ? std::string(uri->get_string()) : std::string(not_supported);
}

bool file_exists(const char* bmc_file) {
    const std::string path = platform::bmc_path(bmc_file);
    platform::note_input_file(path);
    return std::ifstream(path).good();
}

// The INI file of a BIOS file number, kept for the process so that it is
// parsed once per version; one per BIOS file, a fixed set.
const ini_settings& bios_settings(int file) {
    static std::map<int, ini_settings> kept;
    return kept.try_emplace(file, shared(file)).first->second;
}

bool names_pending_boot_next(int file) {
    return !bios_settings(file).get<std::string>("BootNext", "").empty();
}

boost::json::object parsed_json_object(const std::string& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    boost::system::error_code error;
    boost::json::value value = boost::json::parse(text.str(), error);
    if (error || !value.is_object()) return {};
    return std::move(value.get_object());
}

// The JSON object of a BIOS file, parsed once per version of the file; one
// cache per BIOS file, a fixed set.
std::shared_ptr<const boost::json::object> stored_json_object(const char* bmc_file) {
    static std::map<std::string, platform::file_cache<boost::json::object>, std::less<>> caches;
    auto cache = caches.find(std::string_view(bmc_file));
    if (cache == caches.end()) cache = caches.try_emplace(bmc_file).first;
    const std::string path = platform::bmc_path(bmc_file);
    std::shared_ptr<const boost::json::object> document;
    cache->second.get(
        path,
        [&path](boost::json::object& parsed) {
            parsed = parsed_json_object(path);
            return PLT_OK;
        },
        document);
    return document;
}

bool names_ipv6_host(std::string_view uri) {
    const size_t scheme_end = uri.find("://");
    if (scheme_end == std::string_view::npos) return false;
    const std::string_view authority = uri.substr(scheme_end + 3);
    const size_t literal_end = authority.find(']');
    if (authority.empty() || authority.front() != '[' || literal_end == std::string_view::npos)
        return false;
    const std::string address(authority.substr(1, literal_end - 1));
    in6_addr parsed{};
    return inet_pton(AF_INET6, address.c_str(), &parsed) == 1;
}

}  // namespace

boost::json::object read_json_object(const char* bmc_file) { return *stored_json_object(bmc_file); }

std::optional<std::string> http_boot_uri() {
    const char* result = shared(BIOS_FILE_SAVING_RESULT);
    const std::string uri =
        file_exists(result)
            ? boot_uri_in(*stored_json_object(result), "Pendding")
            : boot_uri_in(*stored_json_object(shared(BIOS_FILE_ATTRIBUTES)), "Attributes");
    if (uri == not_supported) return std::nullopt;
    return uri;
}

bool boot_next_pending() {
    if (isNewHIISupport()) return names_pending_boot_next(BIOS_FILE_HII_RESTORE_SETTINGS);
    return names_pending_boot_next(BIOS_FILE_BOOT_RESTORE_SETTINGS) ||
           names_pending_boot_next(BIOS_FILE_RESTORE_SETTINGS);
}

bool uefi_boot_next_allowed() {
    return bios_settings(BIOS_FILE_FEATURE_FLAGS).get<int>("UefiBootNext", 0) != 0 &&
           isNewHIISupport();
}

bios_boot_options read_bios_boot_options() {
    const ini_settings& settings = bios_settings(BIOS_FILE_BOOT_SETTINGS);
    bios_boot_options options;
    const std::string order = settings.get<std::string>("BootOrder", "");
    if (!order.empty())
        boost::algorithm::split(options.order, order, [](char c) { return c == ','; });
    options.next = settings.get<std::string>("BootNext", "");
    return options;
}

bool is_http_boot_uri(std::string_view uri) {
    const size_t scheme_end = uri.find("://");
    const std::string_view scheme = uri.substr(0, scheme_end);
    if (scheme_end == std::string_view::npos || (scheme != "http" && scheme != "https"))
        return false;
    if (uri.size() == scheme_end + 3 || uri.size() > max_boot_uri_length) return false;
    return std::all_of(uri.begin(), uri.end(), [](char c) { return c > ' ' && c < 0x7f; });
}

// Joins the other pending BIOS changes, which it must not drop.
bool write_http_boot_request(const std::string& uri) {
    return add_pending_bios_attributes(
        {{"HTTPBootPolicy", uri.empty() ? "Apply to each LAN" : "Boot Priority #1 instantly"},
         {"SelectIPv4orIPv6", names_ipv6_host(uri) ? "IPv6" : "IPv4"},
         {"BootDescription", "Redfish"},
         {"BootURI", uri}});
}

namespace {

std::optional<std::string> read_request(const char* bmc_file) {
    std::ifstream file(platform::bmc_path(bmc_file), std::ios::binary);
    if (!file) return std::nullopt;
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void restore_request(const char* bmc_file, const std::optional<std::string>& content) {
    if (content) {
        WriteConfigFile(bmc_file, content->c_str());
    } else {
        std::remove(platform::bmc_path(bmc_file).c_str());
    }
}

}  // namespace

bios_requests read_bios_requests() {
    return {read_request(shared(BIOS_FILE_SETTINGS_REQUEST)),
            read_request(shared(BIOS_FILE_BOOT_NEXT_REQUEST))};
}

void restore_bios_requests(const bios_requests& requests) {
    restore_request(shared(BIOS_FILE_SETTINGS_REQUEST), requests.http_boot);
    restore_request(shared(BIOS_FILE_BOOT_NEXT_REQUEST), requests.boot_next);
}

bool write_boot_next_request(const std::string& option) {
    const boost::json::object request{{"BootNext", option}};
    return WriteConfigFile(shared(BIOS_FILE_BOOT_NEXT_REQUEST),
                           boost::json::serialize(request).c_str()) == PLT_OK;
}

}  // namespace odata::redfish
