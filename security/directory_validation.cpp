#include "security/directory_validation.h"

#include <algorithm>
#include <cctype>

#include "framework/property_checks.h"
#include "security/roles.h"

namespace odata::redfish {
namespace {

constexpr std::string_view address_schemes[] = {"ldap://", "ldaps://"};
constexpr unsigned long max_port = 65535;

bool valid_port(std::string_view port) {
    if (port.empty() || port.size() > 5 || port.find_first_not_of("0123456789") != port.npos)
        return false;
    const unsigned long number = std::stoul(std::string(port));
    return number >= 1 && number <= max_port;
}

// The host and port part of an address after its scheme; none without a scheme.
std::optional<std::string_view> authority_of(std::string_view address) {
    for (std::string_view scheme : address_schemes) {
        if (address.substr(0, scheme.size()) == scheme) {
            std::string_view rest = address.substr(scheme.size());
            return rest.substr(0, rest.find_first_of("/?"));
        }
    }
    return std::nullopt;
}

address_fault check_authority(std::string_view authority) {
    std::string_view after_host;
    if (!authority.empty() && authority.front() == '[') {
        const std::size_t close = authority.find(']');
        if (close == authority.npos || close == 1) return address_fault::bad_address;
        after_host = authority.substr(close + 1);
        if (!after_host.empty() && after_host.front() != ':') return address_fault::bad_address;
    } else {
        const std::size_t colon = authority.rfind(':');
        if (colon == 0 || authority.empty()) return address_fault::bad_address;
        if (colon != authority.npos) after_host = authority.substr(colon);
    }
    if (after_host.empty()) return address_fault::none;
    return valid_port(after_host.substr(1)) ? address_fault::none : address_fault::bad_port;
}

std::optional<role_mapping> validate_role_mapping(const boost::json::object& entry,
                                                  role_mapping mapping, const std::string& path,
                                                  result_record& result) {
    const std::size_t messages_before = result.entries.size();
    for (const auto& [name, value] : entry) {
        const std::string member_path = path + "/" + std::string(name);
        if (name == "RemoteUser" || name == "RemoteGroup") {
            std::optional<std::string> text = validate_directory_text(value, member_path, result);
            (name == "RemoteUser" ? mapping.remote_user : mapping.remote_group) = text.value_or("");
        } else if (name == "LocalRole") {
            const boost::json::string* role = require_text(value, member_path, result);
            if (role && !role_named(*role))
                add_value_message(result, "TWR.1.0.OemLdapBadLocalRole", std::string(*role),
                                  member_path);
            mapping.local_role = role ? std::string(*role) : "";
        } else {
            unknown_property::in_patch().report(result, member_path);
        }
    }
    if (result.entries.size() != messages_before) return std::nullopt;
    if (mapping.remote_user.empty() && mapping.remote_group.empty())
        add_message(result, "Base.1.10.PropertyMissing", {"RemoteUser or RemoteGroup"},
                    {"/" + path});
    if (mapping.local_role.empty())
        add_property_message(result, "Base.1.10.PropertyMissing", path + "/LocalRole");
    if (result.entries.size() != messages_before) return std::nullopt;
    return mapping;
}

}  // namespace

address_fault check_service_address(std::string_view address) {
    const bool blank = std::any_of(address.begin(), address.end(), [](char c) {
        return std::isspace(static_cast<unsigned char>(c)) ||
               std::iscntrl(static_cast<unsigned char>(c));
    });
    std::optional<std::string_view> authority = authority_of(address);
    if (blank || !authority) return address_fault::bad_address;
    return check_authority(*authority);
}

std::optional<std::vector<std::string>> validate_service_addresses(const boost::json::value& value,
                                                                   const std::string& path,
                                                                   result_record& result) {
    const boost::json::array* entries = value.if_array();
    if (!entries) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
        return std::nullopt;
    }
    const std::size_t messages_before = result.entries.size();
    std::vector<std::string> addresses;
    for (const boost::json::value& entry : *entries) {
        const boost::json::string* address = entry.if_string();
        const address_fault fault = address ? check_service_address(*address) : address_fault::none;
        if (!address) {
            add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(entry), path);
        } else if (fault == address_fault::bad_address) {
            add_value_message(result, "TWR.1.0.OemLdapBadServiceAddresses", std::string(*address),
                              path);
        } else if (fault == address_fault::bad_port) {
            add_message(result, "TWR.1.0.OemLdapBadPortNumber", {}, {"/" + path});
        } else {
            addresses.emplace_back(*address);
        }
    }
    if (result.entries.size() != messages_before) return std::nullopt;
    return addresses;
}

std::optional<std::string> validate_directory_text(const boost::json::value& value,
                                                   const std::string& path, result_record& result,
                                                   bool secret) {
    const boost::json::string* text = require_text(value, path, result, secret);
    if (!text || !require_storable(*text, path, result, secret)) return std::nullopt;
    return std::string(*text);
}

std::optional<std::vector<std::string>> validate_directory_texts(const boost::json::value& value,
                                                                 const std::string& path,
                                                                 result_record& result) {
    const boost::json::array* entries = value.if_array();
    if (!entries) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
        return std::nullopt;
    }
    std::vector<std::string> texts;
    for (const boost::json::value& entry : *entries) {
        if (std::optional<std::string> text = validate_directory_text(entry, path, result))
            texts.push_back(*text);
    }
    if (texts.size() != entries->size()) return std::nullopt;
    return texts;
}

std::optional<std::vector<role_mapping>> validate_role_mappings(
    const boost::json::value& value, const std::vector<role_mapping>& stored,
    const std::string& path, result_record& result) {
    const boost::json::array* entries = value.if_array();
    if (!entries || entries->size() > max_role_mappings) {
        add_value_message(
            result,
            entries ? "Base.1.10.PropertyValueFormatError" : "Base.1.10.PropertyValueTypeError",
            shown_value(value), path);
        return std::nullopt;
    }
    const std::size_t messages_before = result.entries.size();
    std::vector<role_mapping> mappings;
    for (std::size_t index = 0; index < entries->size(); ++index) {
        const boost::json::value& entry = (*entries)[index];
        const std::string entry_path = path + "/" + std::to_string(index);
        const boost::json::object* object = entry.if_object();
        const bool keeps_or_removes = entry.is_null() || (object && object->empty());
        if (keeps_or_removes && index >= stored.size()) {
            add_message(result, "Base.1.10.InvalidIndex", {std::to_string(index)},
                        {"/" + entry_path});
        } else if (!entry.is_null() && !object) {
            add_value_message(result, "Base.1.10.PropertyValueFormatError", shown_value(entry),
                              entry_path);
        } else if (object) {
            const role_mapping base = index < stored.size() ? stored[index] : role_mapping{};
            if (auto mapping = validate_role_mapping(*object, base, entry_path, result))
                mappings.push_back(*mapping);
        }
    }
    if (result.entries.size() != messages_before) return std::nullopt;
    return mappings;
}

}  // namespace odata::redfish
