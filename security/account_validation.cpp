#include "security/account_validation.h"

#include <algorithm>
#include <cctype>

#include "platform/libipmi_users.h"
#include "security/account_policy.h"
#include "security/roles.h"
#include "security/snmp_protocols.h"

namespace odata::redfish {
namespace {

constexpr int reserved_administrator_id = 2;

bool blank_or_control(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isspace(byte) || std::iscntrl(byte);
}

void format_error(result_record& result, const std::string& shown, const std::string& path) {
    add_value_message(result, "Base.1.10.PropertyValueFormatError", shown, path);
}

std::optional<int> validate_protocol(const boost::json::value& value, snmp_protocol_kind kind,
                                     const std::string& path, result_record& result) {
    const boost::json::string* name = require_text(value, path, result);
    if (!name) return std::nullopt;
    std::optional<int> code = snmp_protocol_code(kind, *name);
    if (!code)
        add_value_message(result, "Base.1.10.PropertyValueNotInList", std::string(*name), path);
    return code;
}

std::optional<std::string> validate_snmp_key(const boost::json::value& value,
                                             const std::string& path, result_record& result) {
    const boost::json::string* key = require_text(value, path, result, true);
    if (!key) return std::nullopt;
    if (!is_legal_snmp_key(*key)) {
        add_message(result, "TWR.1.0.OemSnmpv3IllegalKey", {}, {"/" + path});
        return std::nullopt;
    }
    return std::string(*key);
}

}  // namespace

std::optional<std::string> validate_user_name(const boost::json::value& value, int slot,
                                              const std::string& action, result_record& result) {
    const std::string path = "UserName";
    const boost::json::string* name = require_text(value, path, result);
    if (!name) return std::nullopt;
    const std::string text(*name);
    if (text.size() > max_user_name_length || text.size() < min_user_name_length ||
        std::any_of(text.begin(), text.end(), blank_or_control)) {
        format_error(result, text, path);
        return std::nullopt;
    }
    if (UtilIsValidUserName(text.c_str(), slot) != 0) {
        add_message(result, "Base.1.10.ActionParameterDuplicate", {action, path}, {"/" + path});
        return std::nullopt;
    }
    return text;
}

std::optional<std::string> validate_password(const boost::json::value& value,
                                             result_record& result) {
    const std::string path = "Password";
    const boost::json::string* password = require_text(value, path, result, true);
    if (!password) return std::nullopt;
    const std::string text(*password);
    const bool acceptable = text.size() <= max_password_length &&
                            text.size() >= min_password_length &&
                            text.find('\0') == std::string::npos &&
                            (!UtilGetPasswordComplexity() || UtilPasswordCheck(text.c_str()) == 0);
    if (!acceptable) {
        format_error(result, hidden_value, path);
        return std::nullopt;
    }
    return text;
}

std::optional<int> validate_role_id(const boost::json::value& value, int account_id,
                                    result_record& result) {
    const std::string path = "RoleId";
    const boost::json::string* role_id = value.if_string();
    if (!role_id || role_id->size() > max_role_id_length) {
        format_error(result, shown_value(value), path);
        return std::nullopt;
    }
    if (account_id == reserved_administrator_id) {
        add_property_message(result, "Base.1.10.PropertyNotWritable", path);
        return std::nullopt;
    }
    const role_definition* role = role_named(*role_id);
    if (!role) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", std::string(*role_id), path);
        return std::nullopt;
    }
    return role->level;
}

bool validate_account_types(const boost::json::value& value, result_record& result) {
    const std::string path = "AccountTypes";
    const boost::json::array* types = value.if_array();
    if (!types || types->empty()) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError",
                          types ? "is an empty array" : shown_value(value), path);
        return false;
    }
    bool accepted = true;
    for (const boost::json::value& type : *types) {
        const boost::json::string* name = type.if_string();
        if (!name || (*name != "Redfish" && *name != "SNMP")) {
            format_error(result, shown_value(type), path);
            accepted = false;
        }
    }
    return accepted;
}

bool validate_unlock(const boost::json::value& value, result_record& result) {
    const std::string path = "Locked";
    std::optional<bool> locked = require_boolean(value, path, result);
    if (locked == true) add_value_message(result, "Base.1.10.PropertyValueNotInList", "true", path);
    return locked == false;
}

std::optional<snmp_settings> validate_snmp(const boost::json::value& value,
                                           const unknown_property& unknown, result_record& result) {
    const std::size_t messages_before = result.entries.size();
    snmp_settings settings;
    for_each_member(value, "SNMP", result, [&](const request_member& member) {
        if (member.name == "AuthenticationProtocol") {
            settings.authentication_protocol = validate_protocol(
                member.value, snmp_protocol_kind::authentication, member.path, result);
        } else if (member.name == "EncryptionProtocol") {
            settings.encryption_protocol = validate_protocol(
                member.value, snmp_protocol_kind::encryption, member.path, result);
        } else if (member.name == "AuthenticationKey") {
            settings.authentication_key = validate_snmp_key(member.value, member.path, result);
        } else if (member.name == "EncryptionKey") {
            settings.encryption_key = validate_snmp_key(member.value, member.path, result);
        } else if (member.name == "AuthenticationKeySet" || member.name == "EncryptionKeySet") {
            add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
        } else {
            unknown.report(result, member.path);
        }
    });
    if (result.entries.size() != messages_before) return std::nullopt;
    return settings;
}

bool is_legal_snmp_key(std::string_view key) {
    auto has = [key](int (*kind)(int)) {
        return std::any_of(key.begin(), key.end(),
                           [kind](char c) { return kind(static_cast<unsigned char>(c)) != 0; });
    };
    return key.size() >= min_snmp_key_length && key.find('\0') == key.npos && has(std::islower) &&
           has(std::isupper) && has(std::isdigit);
}

}  // namespace odata::redfish
