#include "security/snmp_protocols.h"

#include <utility>

namespace odata::redfish {
namespace {

using protocol = std::pair<std::string_view, int>;

constexpr protocol authentication_protocols[] = {{"None", 0}, {"HMAC_MD5", 1}, {"HMAC_SHA96", 2}};
constexpr protocol encryption_protocols[] = {{"None", 0}, {"CBC_DES", 1}, {"CFB128_AES128", 2}};

template <class Match>
const protocol* find_protocol(snmp_protocol_kind kind, Match match) {
    for (const protocol& each : kind == snmp_protocol_kind::authentication
                                    ? authentication_protocols
                                    : encryption_protocols) {
        if (match(each)) return &each;
    }
    return nullptr;
}

}  // namespace

std::optional<int> snmp_protocol_code(snmp_protocol_kind kind, std::string_view name) {
    const protocol* found =
        find_protocol(kind, [name](const protocol& each) { return each.first == name; });
    if (!found) return std::nullopt;
    return found->second;
}

std::string_view snmp_protocol_name(snmp_protocol_kind kind, int code) {
    const protocol* found =
        find_protocol(kind, [code](const protocol& each) { return each.second == code; });
    return found ? found->first : "None";
}

}  // namespace odata::redfish
