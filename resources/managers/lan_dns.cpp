#include "resources/managers/lan_dns.h"

#include "frontend/answer_storage.h"

namespace odata::redfish {

std::string lan_fqdn(const St_LanConfig& lan) {
    std::string fqdn = lan.host_name;
    if (lan.domain_name[0] != '\0') fqdn += std::string(".") + lan.domain_name;
    return fqdn;
}

boost::json::array lan_name_servers(const St_LanConfig& lan) {
    boost::json::array servers(answer_storage());
    for (const auto& server : lan.name_servers)
        if (server[0] != '\0') servers.emplace_back(server);
    return servers;
}

}  // namespace odata::redfish
