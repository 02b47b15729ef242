#include "platform/sim/kcs_privilege.h"

#include "base/bmc_root.h"
#include "platform/libkcs.h"
#include "platform/sim/state_ini.h"

namespace {

bool valid_level(long long level) {
    return level >= KCS_PRIV_CALLBACK && level <= KCS_PRIV_ADMINISTRATOR;
}

}  // namespace

namespace platform {

const std::string& kcs_settings_file() {
    static fixed_bmc_path path("/nv/bmc/kcs.ini");
    return path.get();
}

}  // namespace platform

extern "C" int UtilGetKCSPrivilege(int channel) {
    if (channel != KCS_CHANNEL) return PLT_ERR_NOT_FOUND;
    const long long level =
        platform::sim::stored_state_ini(platform::kcs_settings_file())
            ->get("KCS.Privilege", static_cast<long long>(KCS_PRIV_ADMINISTRATOR));
    return valid_level(level) ? static_cast<int>(level) : PLT_ERR_FORMAT;
}

extern "C" int UtilSetKCSPrivilege(int channel, int level) {
    if (channel != KCS_CHANNEL) return PLT_ERR_NOT_FOUND;
    if (!valid_level(level)) return PLT_ERR_ARGUMENT;
    const bool written = platform::sim::update_state_ini(platform::kcs_settings_file(),
                                                         [&](boost::property_tree::ptree& state) {
                                                             state.put("KCS.Privilege", level);
                                                             return true;
                                                         });
    return written ? PLT_OK : PLT_ERR_IO;
}
