#include "platform/sim/bios_security.h"

#include <algorithm>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/libbios.h"
#include "platform/sim/password_hash.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr const char* administrator_key = "Password.Administrator";
constexpr const char* pending_key = "Password.Pending";

bool storable_password(const char* text) {
    const std::size_t length = std::strlen(text);
    return length > 0 && length <= BIOS_PASSWORD_MAX_LENGTH &&
           std::all_of(text, text + length, [](char c) { return c >= 0x20 && c < 0x7f; });
}

bool update(const std::function<bool(pt::ptree&)>& change) {
    return platform::sim::update_state_ini(platform::bios_security_file(), change, 0600);
}

St_SecureBootKeys factory_keys() { return {1, 1, 2, 1}; }

St_SecureBootKeys keys_in(const pt::ptree& state) {
    const St_SecureBootKeys factory = factory_keys();
    return {state.get("SecureBoot.PK", factory.pk), state.get("SecureBoot.KEK", factory.kek),
            state.get("SecureBoot.db", factory.db), state.get("SecureBoot.dbx", factory.dbx)};
}

void put_keys(pt::ptree& state, const St_SecureBootKeys& keys) {
    state.put("SecureBoot.PK", keys.pk);
    state.put("SecureBoot.KEK", keys.kek);
    state.put("SecureBoot.db", keys.db);
    state.put("SecureBoot.dbx", keys.dbx);
}

}  // namespace

namespace platform {

const std::string& bios_security_file() {
    static fixed_bmc_path path("/nv/bios/security.ini");
    return path.get();
}

bool post_bios_password() {
    return update([](pt::ptree& state) {
        const std::string pending = state.get(pending_key, "");
        if (pending.empty()) return false;
        state.put(administrator_key, pending);
        state.get_child("Password").erase("Pending");
        return true;
    });
}

std::string bios_password_state() {
    const std::shared_ptr<const pt::ptree> state = sim::stored_state_ini(bios_security_file());
    std::string text = state->get(administrator_key, "").empty() ? "none" : "set";
    if (!state->get(pending_key, "").empty()) text += ", new one pending";
    return text;
}

}  // namespace platform

extern "C" int UtilBiosChangePassword(int password, const char* old_password,
                                      const char* new_password) {
    if (password != BIOS_PASSWORD_ADMINISTRATOR || !old_password || !new_password ||
        !storable_password(new_password))
        return PLT_ERR_ARGUMENT;
    const std::string hash = platform::sim::hash_secret(new_password);
    if (hash.empty()) return PLT_ERR_IO;
    bool old_matches = false;
    const bool stored = update([&](pt::ptree& state) {
        const std::string in_force = state.get(administrator_key, "");
        old_matches = in_force.empty() ? *old_password == '\0'
                                       : platform::sim::verify_secret(in_force, old_password);
        if (old_matches) state.put(pending_key, hash);
        return old_matches;
    });
    if (!stored) return PLT_ERR_IO;
    return old_matches ? PLT_OK : PLT_ERR_STATE;
}

extern "C" int UtilGetSecureBootKeys(St_SecureBootKeys* keys) {
    if (!keys) return PLT_ERR_ARGUMENT;
    *keys = keys_in(*platform::sim::stored_state_ini(platform::bios_security_file()));
    return PLT_OK;
}

extern "C" int UtilSecureBootResetKeys(int reset) {
    if (reset != SECURE_BOOT_RESET_ALL_KEYS_TO_DEFAULT && reset != SECURE_BOOT_DELETE_ALL_KEYS &&
        reset != SECURE_BOOT_DELETE_PK)
        return PLT_ERR_ARGUMENT;
    const bool stored = update([reset](pt::ptree& state) {
        St_SecureBootKeys keys = keys_in(state);
        if (reset == SECURE_BOOT_RESET_ALL_KEYS_TO_DEFAULT) keys = factory_keys();
        if (reset == SECURE_BOOT_DELETE_ALL_KEYS) keys = {0, 0, 0, 0};
        if (reset == SECURE_BOOT_DELETE_PK) keys.pk = 0;
        put_keys(state, keys);
        return true;
    });
    return stored ? PLT_OK : PLT_ERR_IO;
}
