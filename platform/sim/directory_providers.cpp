#include "platform/sim/directory_providers.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <boost/json.hpp>
#include <boost/property_tree/ptree.hpp>

#include "base/bmc_root.h"
#include "platform/libdirectory.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/radius_client.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/sim_settings.h"

namespace json = boost::json;
namespace pt = boost::property_tree;

namespace {

constexpr int accounts_format = 1;

struct stored_account {
    std::string name;
    std::string password;  // salted hash
    int privilege;
};

const char* section_of(platform::directory_provider provider) {
    switch (provider) {
        case platform::directory_provider::ldap:
            return "LDAP";
        case platform::directory_provider::ad:
            return "ActiveDirectory";
        default:
            return "RADIUS";
    }
}

json::parse_options byte_names() {
    json::parse_options options;
    options.allow_invalid_utf8 = true;
    return options;
}

// The document, with an array for each provider; empty when missing or
// malformed.
json::object read_document() {
    json::object document;
    std::string text;
    if (platform::sim::read_file(platform::directory_users_file(), text)) {
        json::error_code error;
        json::value value = json::parse(text, error, {}, byte_names());
        const json::object* object = error ? nullptr : value.if_object();
        const json::value* format = object ? object->if_contains("format") : nullptr;
        if (format && format->is_int64() && format->get_int64() == accounts_format)
            document = *object;
        else
            console_log("[ERROR] %s is malformed; read as empty\n",
                        platform::directory_users_file().c_str());
    }
    document["format"] = accounts_format;
    for (auto provider : {platform::directory_provider::ldap, platform::directory_provider::ad,
                          platform::directory_provider::radius}) {
        const char* name = platform::directory_provider_name(provider);
        if (!document.contains(name) || !document.at(name).is_array())
            document[name] = json::array();
    }
    return document;
}

std::vector<stored_account> accounts_of(const json::object& document,
                                        platform::directory_provider provider) {
    std::vector<stored_account> accounts;
    for (const json::value& entry :
         document.at(platform::directory_provider_name(provider)).get_array()) {
        const json::object* object = entry.if_object();
        const json::value* name = object ? object->if_contains("name") : nullptr;
        const json::value* password = object ? object->if_contains("password") : nullptr;
        const json::value* privilege = object ? object->if_contains("privilege") : nullptr;
        if (name && name->is_string() && password && password->is_string() && privilege &&
            privilege->is_int64())
            accounts.push_back({std::string(name->get_string()),
                                std::string(password->get_string()),
                                static_cast<int>(privilege->get_int64())});
    }
    return accounts;
}

json::array to_json(const std::vector<stored_account>& accounts) {
    json::array list;
    for (const stored_account& account : accounts)
        list.push_back(json::object{{"name", account.name},
                                    {"password", account.password},
                                    {"privilege", account.privilege}});
    return list;
}

// Runs change on the provider's accounts under the lock and writes them
// back when it returns true.
template <typename Change>
bool change_accounts(platform::directory_provider provider, Change change) {
    std::string lock_path = platform::bmc_path("/var/bmc/directory_users.lock");
    if (!platform::sim::make_parent_dirs(lock_path)) return false;
    platform::sim::unique_fd fd(::open(lock_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!fd.valid()) return false;
    platform::sim::file_lock lock(fd.get(), LOCK_EX);
    if (!lock.locked()) return false;
    json::object document = read_document();
    std::vector<stored_account> accounts = accounts_of(document, provider);
    if (!change(accounts)) return false;
    document[platform::directory_provider_name(provider)] = to_json(accounts);
    return platform::sim::replace_file(platform::directory_users_file(),
                                       json::serialize(document) + '\n', 0600);
}

// The key that holds the switch: "<Section>.ServiceEnabled", or the key
// outside any section when the file has that and no section.
std::string switch_key(const pt::ptree& tree, platform::directory_provider provider) {
    std::string section = section_of(provider);
    if (!tree.get_child_optional(section) && tree.get_optional<std::string>("ServiceEnabled"))
        return "ServiceEnabled";
    return section + ".ServiceEnabled";
}

int authenticate(platform::directory_provider provider, const char* name, const char* password,
                 int* privilege) {
    if (!name || !password || !*name || !*password ||
        !platform::directory_provider_enabled(provider))
        return -1;
    json::object document = read_document();
    for (const stored_account& account : accounts_of(document, provider)) {
        if (account.name != name) continue;
        if (!platform::sim::verify_secret(account.password, password)) return -1;
        if (privilege) *privilege = account.privilege;
        return 0;
    }
    return -1;
}

}  // namespace

namespace platform {

const char* directory_provider_name(directory_provider provider) {
    switch (provider) {
        case directory_provider::ldap:
            return "ldap";
        case directory_provider::ad:
            return "ad";
        default:
            return "radius";
    }
}

bool parse_directory_provider(const std::string& name, directory_provider& provider) {
    for (auto each : {directory_provider::ldap, directory_provider::ad, directory_provider::radius})
        if (name == directory_provider_name(each)) {
            provider = each;
            return true;
        }
    return false;
}

const std::string& directory_users_file() {
    static fixed_bmc_path path("/nv/bmc/directory_users");
    return path.get();
}

std::string directory_switch_file(directory_provider provider) {
    switch (provider) {
        case directory_provider::ldap:
            return bmc_path("/nv/redfish/ldap.ini");
        case directory_provider::ad:
            return bmc_path("/nv/redfish/ad.ini");
        default:
            return radius_settings_file();
    }
}

bool directory_provider_enabled(directory_provider provider) {
    if (provider == directory_provider::radius) return radius_directory_enabled();
    pt::ptree tree;
    if (!sim::read_ini(directory_switch_file(provider), tree)) return false;
    return tree.get_optional<long long>(switch_key(tree, provider)).value_or(0) != 0;
}

bool set_directory_provider_enabled(directory_provider provider, bool enabled) {
    if (provider == directory_provider::radius) return set_radius_enabled(enabled);
    std::string path = directory_switch_file(provider);
    pt::ptree tree;
    struct stat status;
    if (!sim::read_ini(path, tree) && ::stat(path.c_str(), &status) == 0)
        return false;  // keep a file that cannot be parsed as it is
    tree.put(switch_key(tree, provider), enabled ? "1" : "0");
    return sim::write_ini(path, tree, 0600);
}

bool set_directory_account(directory_provider provider, const std::string& name,
                           const std::string& password, int privilege) {
    if (name.empty() || password.empty() || privilege < PRIV_CALLBACK ||
        privilege > PRIV_ADMINISTRATOR)
        return false;
    std::string hash = sim::hash_secret(password);
    if (hash.empty()) return false;
    return change_accounts(provider, [&](std::vector<stored_account>& accounts) {
        for (stored_account& account : accounts)
            if (account.name == name) {
                account = {name, hash, privilege};
                return true;
            }
        accounts.push_back({name, hash, privilege});
        return true;
    });
}

bool remove_directory_account(directory_provider provider, const std::string& name) {
    return change_accounts(provider, [&](std::vector<stored_account>& accounts) {
        for (auto each = accounts.begin(); each != accounts.end(); ++each)
            if (each->name == name) {
                accounts.erase(each);
                return true;
            }
        return false;
    });
}

std::vector<directory_account> directory_accounts(directory_provider provider) {
    std::vector<directory_account> result;
    for (const stored_account& account : accounts_of(read_document(), provider))
        result.push_back({account.name, account.privilege});
    return result;
}

}  // namespace platform

extern "C" int UtilGetLdapEnable(void) {
    return platform::directory_provider_enabled(platform::directory_provider::ldap) ? 1 : 0;
}

extern "C" int UtilGetNewADEnable(void) {
    return platform::directory_provider_enabled(platform::directory_provider::ad) ? 1 : 0;
}

extern "C" int UtilGetRadiusEnable(void) {
    return platform::directory_provider_enabled(platform::directory_provider::radius) ? 1 : 0;
}

extern "C" int AuthLdapProcess2(const char* name, const char* password, int* privilege) {
    return authenticate(platform::directory_provider::ldap, name, password, privilege);
}

extern "C" int AuthADProcess2(const char* name, const char* password, int* privilege) {
    return authenticate(platform::directory_provider::ad, name, password, privilege);
}

extern "C" int AuthRadiusProcess(const char* name, const char* password, int* privilege) {
    return authenticate(platform::directory_provider::radius, name, password, privilege);
}
