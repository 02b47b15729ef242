#include "tasks/subscription_request.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "framework/property_checks.h"
#include "platform/outbound_destinations.h"
#include "security/snmp_protocols.h"
#include "tasks/subscription_vocabulary.h"

namespace odata::redfish {
namespace {

constexpr std::string_view subscription_read_only[] = {"@odata.context", "@odata.etag", "@odata.id",
                                                       "@odata.type",    "Id",          "Name"};
constexpr std::string_view illegal_snmpv3_user_characters = ",;&'\"<>=$|^?*~`()[]#%{}";
constexpr std::size_t min_snmp_key_length = 8;

// The request on its way onto the entry.
struct subscription_edit {
    St_AlertDest& entry;
    bool creating;
    std::optional<std::string> subscription_type;
    std::optional<std::string> user_name;
    bool destination_given = false;
    bool protocol_given = false;
};

template <std::size_t N>
void read_field(const request_member& member, char (&field)[N], result_record& result,
                bool secret = false) {
    const boost::json::string* text = require_text(member.value, member.path, result, secret);
    if (!text || !require_storable(*text, member.path, result, secret)) return;
    if (text->size() >= N) {
        add_value_message(result, "Base.1.10.PropertyValueFormatError",
                          secret ? hidden_value : std::string(*text), member.path);
        return;
    }
    std::memcpy(field, text->data(), text->size());
    field[text->size()] = '\0';
}

bool is_strong_key(std::string_view key) {
    auto has = [key](int (*kind)(int)) {
        return std::any_of(key.begin(), key.end(),
                           [kind](char c) { return kind(static_cast<unsigned char>(c)) != 0; });
    };
    return key.size() >= min_snmp_key_length && has(std::islower) && has(std::isupper) &&
           has(std::isdigit);
}

template <std::size_t N>
void read_snmp_key(const request_member& member, char (&field)[N], result_record& result) {
    const boost::json::string* key = member.value.if_string();
    if (!key || !is_strong_key(*key)) {
        add_message(result, "TWR.1.0.OemSnmpv3IllegalKey", {}, {"/" + member.path});
        return;
    }
    read_field(member, field, result, true);
}

void read_snmp_protocol(const request_member& member, snmp_protocol_kind kind, uint8_t& field,
                        result_record& result) {
    const boost::json::string* name = member.value.if_string();
    const std::optional<int> code = name ? snmp_protocol_code(kind, *name) : std::nullopt;
    if (!code) {
        add_message(result, "TWR.1.0.OemSnmpv3IllegalProtocolType", {}, {"/" + member.path});
        return;
    }
    field = static_cast<uint8_t>(*code);
}

void read_snmp(const request_member& member, subscription_edit& edit, result_record& result) {
    St_AlertDest& entry = edit.entry;
    for_each_member(member.value, member.path, result, [&](const request_member& setting) {
        if (setting.name == "TrapCommunity") {
            const boost::json::string* text = setting.value.if_string();
            if (!text || !isVaildSNMPv2CMString(text->c_str()))
                add_value_message(result, "Base.1.10.PropertyValueFormatError", hidden_value,
                                  setting.path);
            else
                read_field(setting, entry.community, result, true);
        } else if (setting.name == "AuthenticationProtocol") {
            read_snmp_protocol(setting, snmp_protocol_kind::authentication,
                               entry.authentication_protocol, result);
        } else if (setting.name == "EncryptionProtocol") {
            read_snmp_protocol(setting, snmp_protocol_kind::encryption, entry.encryption_protocol,
                               result);
        } else if (setting.name == "AuthenticationKey") {
            read_snmp_key(setting, entry.authentication_key, result);
        } else if (setting.name == "EncryptionKey") {
            read_snmp_key(setting, entry.encryption_key, result);
        } else {
            unknown_property::in_patch().report(result, setting.path);
        }
    });
}

void read_oem_settings(const request_member& member, subscription_edit& edit,
                       result_record& result) {
    for_each_member(member.value, member.path, result, [&](const request_member& setting) {
        if (setting.name == "EnableSubscription") {
            if (std::optional<bool> enabled = require_boolean(setting.value, setting.path, result))
                edit.entry.enabled = *enabled;
        } else if (setting.name == "SMTPSubject") {
            read_field(setting, edit.entry.smtp_subject, result);
        } else if (setting.name == "UserName") {
            const boost::json::string* text = require_text(setting.value, setting.path, result);
            if (text && require_storable(*text, setting.path, result))
                edit.user_name = std::string(*text);
        } else {
            unknown_property::in_patch().report(result, setting.path);
        }
    });
}

void read_oem(const request_member& member, subscription_edit& edit, result_record& result) {
    for_each_member(member.value, member.path, result, [&](const request_member& vendor) {
        if (vendor.name == "Tarnwright")
            read_oem_settings(vendor, edit, result);
        else
            unknown_property::in_patch().report(result, vendor.path);
    });
}

void read_event_types(const request_member& member, subscription_edit& edit,
                      result_record& result) {
    const boost::json::array* names = member.value.if_array();
    if (!names) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(member.value),
                          member.path);
        return;
    }
    int bits = 0;
    for (const boost::json::value& name : *names) {
        const boost::json::string* text = name.if_string();
        const std::optional<int> bit = text ? event_type_bit(*text) : std::nullopt;
        if (!bit)
            add_message(result, "Base.1.10.ActionParameterNotSupported",
                        {shown_value(name), member.name}, {"/" + member.path});
        else
            bits |= *bit;
    }
    edit.entry.event_types = static_cast<uint8_t>(bits);
}

void read_protocol(const request_member& member, subscription_edit& edit, result_record& result) {
    const boost::json::string* name = member.value.if_string();
    const subscription_protocol* protocol = name ? protocol_named(*name) : nullptr;
    if (!protocol) {
        add_value_message(result, "Base.1.10.PropertyValueNotInList", shown_value(member.value),
                          member.path);
        return;
    }
    edit.entry.type = static_cast<uint8_t>(protocol->destination_type);
    edit.protocol_given = true;
}

void read_member(const request_member& member, subscription_edit& edit, result_record& result) {
    if (member.name == "Destination") {
        read_field(member, edit.entry.destination, result);
        edit.destination_given = true;
    } else if (member.name == "Context") {
        read_field(member, edit.entry.context, result);
    } else if (member.name == "Protocol") {
        read_protocol(member, edit, result);
    } else if (member.name == "SubscriptionType") {
        if (const boost::json::string* text = require_text(member.value, member.path, result))
            edit.subscription_type = std::string(*text);
    } else if (member.name == "EventFormatType") {
        if (member.value != "Event")
            add_value_message(result, "Base.1.10.PropertyValueNotInList", shown_value(member.value),
                              member.path);
    } else if (member.name == "EventTypes") {
        read_event_types(member, edit, result);
    } else if (member.name == "SNMP") {
        read_snmp(member, edit, result);
    } else if (member.name == "Oem") {
        read_oem(member, edit, result);
    } else if (listed_in(subscription_read_only, member.name)) {
        add_property_message(result, "Base.1.10.PropertyNotWritable", member.path);
    } else {
        unknown_property::in_patch().report(result, member.path);
    }
}

bool valid_destination(int type, std::string_view destination) {
    auto starts = [destination](std::string_view prefix) {
        return destination.substr(0, prefix.size()) == prefix && destination.size() > prefix.size();
    };
    if (type == ALERT_DEST_REDFISH) return starts("http://") || starts("https://");
    if (type == ALERT_DEST_SMTP) {
        const std::size_t at = destination.find('@');
        return at != std::string_view::npos && at > 0 && at + 1 < destination.size() &&
               destination.find_first_of(" <>,") == std::string_view::npos;
    }
    // A trap receiver: host, host:port or [IPv6]:port, optionally "udp:".
    return !destination.empty() && destination.find_first_of("/ @") == std::string_view::npos;
}

// The port of a trap receiver as written, none when it names none; a bare
// IPv6 address has colons but no port.
std::optional<std::string_view> trap_port(std::string_view destination) {
    for (std::string_view transport : {"udp:", "udp6:"})
        if (destination.substr(0, transport.size()) == transport)
            destination.remove_prefix(transport.size());
    if (destination.substr(0, 1) == "[") {
        const std::size_t bracket = destination.find("]:");
        if (bracket == std::string_view::npos) return std::nullopt;
        return destination.substr(bracket + 2);
    }
    const std::size_t colon = destination.find(':');
    if (colon == std::string_view::npos || colon != destination.rfind(':')) return std::nullopt;
    return destination.substr(colon + 1);
}

void check_trap_port(std::string_view destination, result_record& result) {
    const std::optional<std::string_view> port = trap_port(destination);
    if (!port) return;
    const bool digits =
        !port->empty() && port->size() <= 5 && std::all_of(port->begin(), port->end(), [](char c) {
            return std::isdigit(static_cast<unsigned char>(c)) != 0;
        });
    if (!digits)
        add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(destination),
                          "Destination");
    else if (const int number = std::stoi(std::string(*port)); number < 1 || number > 65535)
        add_value_message(result, "Base.1.10.PropertyValueOutOfRange", std::string(destination),
                          "Destination");
}

void store_user_name(subscription_edit& edit, result_record& result) {
    St_AlertDest& entry = edit.entry;
    const std::string path = "Oem/Tarnwright/UserName";
    if (entry.type == ALERT_DEST_SNMPV3_TRAP) {
        const std::string& user = edit.user_name ? *edit.user_name : std::string(entry.snmp_user);
        if (user.find_first_of(illegal_snmpv3_user_characters) != std::string::npos)
            add_message(result, "TWR.1.0.OemSnmpv3IllegalUser", {}, {"/" + path});
        else if (user.empty())
            add_property_message(result, "Base.1.10.PropertyMissing", path);
        else if (user.size() >= sizeof entry.snmp_user)
            add_value_message(result, "Base.1.10.PropertyValueFormatError", user, path);
        else
            std::strcpy(entry.snmp_user, user.c_str());
    } else if (edit.user_name) {
        if (edit.user_name->size() >= sizeof entry.smtp_user)
            add_value_message(result, "Base.1.10.PropertyValueFormatError", *edit.user_name, path);
        else
            std::strcpy(entry.smtp_user, edit.user_name->c_str());
    }
}

void check_snmp_security(const St_AlertDest& entry, result_record& result) {
    if (entry.type == ALERT_DEST_SNMP_TRAP && !entry.community[0])
        add_property_message(result, "Base.1.10.PropertyMissing", "SNMP/TrapCommunity");
    if (entry.type != ALERT_DEST_SNMPV3_TRAP) return;
    if (entry.encryption_protocol != 0 && entry.authentication_protocol == 0)
        add_message(result, "TWR.1.0.OemSnmpv3IllegalProtocolType", {},
                    {"/SNMP/EncryptionProtocol"});
    if (entry.authentication_protocol != 0 && !entry.authentication_key[0])
        add_message(result, "TWR.1.0.OemSnmpv3IllegalKey", {}, {"/SNMP/AuthenticationKey"});
    if (entry.encryption_protocol != 0 && !entry.encryption_key[0])
        add_message(result, "TWR.1.0.OemSnmpv3IllegalKey", {}, {"/SNMP/EncryptionKey"});
}

void check_entry(subscription_edit& edit, result_record& result) {
    const St_AlertDest& entry = edit.entry;
    if (edit.creating && !edit.destination_given)
        add_property_message(result, "Base.1.10.PropertyMissing", "Destination");
    if (edit.creating && !edit.protocol_given)
        add_property_message(result, "Base.1.10.PropertyMissing", "Protocol");
    const subscription_protocol* protocol = protocol_of_type(entry.type);
    if (!protocol) return;
    if (edit.subscription_type && *edit.subscription_type != protocol->subscription_type)
        add_value_message(result, "Base.1.10.PropertyValueNotInList", *edit.subscription_type,
                          "SubscriptionType");
    if (entry.destination[0] && !valid_destination(entry.type, entry.destination))
        add_value_message(result, "Base.1.10.PropertyValueFormatError", entry.destination,
                          "Destination");
    else if (entry.type != ALERT_DEST_SMTP &&
             platform::refused_host(platform::destination_host(entry.destination)))
        add_message(result, "Base.1.10.PropertyValueIncorrect", {"Destination", entry.destination},
                    {"/Destination"});
    else if (entry.type == ALERT_DEST_SNMP_TRAP || entry.type == ALERT_DEST_SNMPV3_TRAP)
        check_trap_port(entry.destination, result);
    store_user_name(edit, result);
    check_snmp_security(entry, result);
}

}  // namespace

void read_subscription_request(const boost::json::object& body, bool creating, St_AlertDest& entry,
                               result_record& result) {
    if (creating) entry.enabled = 1;
    subscription_edit edit{entry, creating, {}, {}, false, false};
    for (const auto& [name, value] : body)
        read_member({std::string(name), value, std::string(name)}, edit, result);
    if (result.entries.empty()) check_entry(edit, result);
}

}  // namespace odata::redfish
