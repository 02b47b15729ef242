#include "resources/managers/filter_rule_request.h"

#include <arpa/inet.h>

#include "framework/property_checks.h"
#include "resources/managers/ipv4_address.h"

namespace odata::redfish {
namespace {

struct rule_changes {
    std::optional<uint32_t> start;
    std::optional<uint32_t> end;
    std::optional<std::string> action;
};

std::optional<uint32_t> read_address(const request_member& member, result_record& result) {
    const boost::json::string* text = require_text(member.value, member.path, result);
    if (!text) return std::nullopt;
    in_addr address{};
    if (inet_pton(AF_INET, std::string(*text).c_str(), &address) == 1) return ntohl(address.s_addr);
    add_value_message(result, "Base.1.10.PropertyValueFormatError", std::string(*text),
                      member.path);
    return std::nullopt;
}

void read_start(const request_member& member, rule_changes& changes, result_record& result) {
    changes.start = read_address(member, result);
}

void read_end(const request_member& member, rule_changes& changes, result_record& result) {
    changes.end = read_address(member, result);
}

void read_action(const request_member& member, rule_changes& changes, result_record& result) {
    changes.action = require_one_of(member.value, {"Allow", "Deny"}, member.path, result);
}

constexpr patch_property<rule_changes> rule_properties[] = {
    {"StartAddress", read_start},
    {"EndAddress", read_end},
    {"Action", read_action},
};

void require_present(const boost::json::object& body, const char* name, result_record& result) {
    if (!body.contains(name)) add_property_message(result, "Base.1.10.PropertyMissing", name);
}

}  // namespace

std::string ipv4_text(uint32_t address) {
    in_addr network{htonl(address)};
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &network, text, sizeof text);
    return text;
}

std::optional<St_IpFilterRule> read_filter_rule(const boost::json::object& body,
                                                const St_IpFilterRule* stored,
                                                result_record& result) {
    const std::size_t reported = result.entries.size();
    rule_changes changes;
    for (const auto& [name, value] : body)
        read_patch_property(rule_properties, {std::string(name), value, std::string(name)}, changes,
                            result);
    if (!stored) {
        require_present(body, "StartAddress", result);
        require_present(body, "Action", result);
    }
    if (result.entries.size() != reported) return std::nullopt;
    St_IpFilterRule rule = stored ? *stored : St_IpFilterRule{1, 0, 0, IP_FILTER_ALLOW};
    if (changes.start) rule.first = *changes.start;
    rule.last = changes.end ? *changes.end : (stored ? rule.last : rule.first);
    if (changes.action) rule.action = *changes.action == "Deny" ? IP_FILTER_DENY : IP_FILTER_ALLOW;
    if (rule.first > rule.last) {
        add_message(result, "Base.1.10.PropertyValueConflict", {"EndAddress", "StartAddress"},
                    {"/EndAddress"});
        return std::nullopt;
    }
    return rule;
}

}  // namespace odata::redfish
