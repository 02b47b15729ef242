#include "security/directory_settings.h"

#include <boost/json.hpp>

namespace odata::redfish {
namespace {

using boost::property_tree::ptree;

constexpr const char* mapping_section = "RemoteRoleMapping";

std::vector<std::string> list_of(const ptree& section, const char* key) {
    std::vector<std::string> list;
    boost::system::error_code error;
    boost::json::value parsed = boost::json::parse(section.get<std::string>(key, "[]"), error);
    if (const boost::json::array* array = error ? nullptr : parsed.if_array()) {
        for (const boost::json::value& entry : *array)
            if (entry.is_string()) list.emplace_back(entry.get_string());
    }
    return list;
}

std::string list_text(const std::vector<std::string>& list) {
    boost::json::array array;
    for (const std::string& entry : list) array.emplace_back(entry);
    return boost::json::serialize(array);
}

std::string mapping_name(std::size_t index) { return mapping_section + std::to_string(index + 1); }

std::vector<role_mapping> read_mappings(const ptree& file) {
    std::vector<role_mapping> mappings;
    for (std::size_t index = 0; index < max_role_mappings; ++index) {
        auto section = file.get_child_optional(mapping_name(index));
        if (!section) break;
        mappings.push_back({section->get<std::string>("RemoteUser", ""),
                            section->get<std::string>("RemoteGroup", ""),
                            section->get<std::string>("LocalRole", "")});
    }
    return mappings;
}

void put_mappings(ptree& file, const std::vector<role_mapping>& mappings) {
    for (std::size_t index = 0; index < max_role_mappings; ++index) file.erase(mapping_name(index));
    for (std::size_t index = 0; index < mappings.size(); ++index) {
        ptree section;
        const role_mapping& mapping = mappings[index];
        if (!mapping.remote_user.empty()) section.put("RemoteUser", mapping.remote_user);
        if (!mapping.remote_group.empty()) section.put("RemoteGroup", mapping.remote_group);
        section.put("LocalRole", mapping.local_role);
        file.add_child(mapping_name(index), section);
    }
}

}  // namespace

const ini_settings& directory_settings_file(directory_service service) {
    static const ini_settings ldap("/nv/redfish/ldap.ini");
    static const ini_settings active_directory("/nv/redfish/ad.ini");
    return service == directory_service::ldap ? ldap : active_directory;
}

std::string_view directory_name(directory_service service) {
    return service == directory_service::ldap ? "LDAP" : "ActiveDirectory";
}

directory_settings read_directory_settings(directory_service service) {
    const ptree file = directory_settings_file(service).read();
    const ptree section = file.get_child(std::string(directory_name(service)), ptree());
    directory_settings settings;
    settings.enabled = section.get<int>("ServiceEnabled", 0) != 0;
    settings.service_addresses = list_of(section, "ServiceAddresses");
    settings.username = section.get<std::string>("Username", "");
    settings.password = section.get<std::string>("Password", "");
    if (service == directory_service::ldap) {
        settings.base_distinguished_names = list_of(section, "BaseDistinguishedNames");
        settings.username_attribute = section.get<std::string>("UsernameAttribute", "");
        settings.groupname_attribute = section.get<std::string>("GroupnameAttribute", "");
        settings.groups_attribute = section.get<std::string>("GroupsAttribute", "");
    }
    settings.role_mappings = read_mappings(file);
    return settings;
}

bool stage_directory_settings(directory_service service, const directory_settings& settings,
                              settings_batch& batch) {
    ptree file = directory_settings_file(service).read();
    const std::string name(directory_name(service));
    if (!file.get_child_optional(name)) file.put_child(name, ptree());
    ptree& section = file.get_child(name);
    section.put("ServiceEnabled", settings.enabled ? 1 : 0);
    section.put("ServiceAddresses", list_text(settings.service_addresses));
    section.put("Username", settings.username);
    section.put("Password", settings.password);
    if (service == directory_service::ldap) {
        section.put("BaseDistinguishedNames", list_text(settings.base_distinguished_names));
        section.put("UsernameAttribute", settings.username_attribute);
        section.put("GroupnameAttribute", settings.groupname_attribute);
        section.put("GroupsAttribute", settings.groups_attribute);
    }
    put_mappings(file, settings.role_mappings);
    return batch.put(directory_settings_file(service), file);
}

}  // namespace odata::redfish
