// bmcsim users: the user table, its lockout and password complexity.
#include <ostream>

#include "platform/libipmi_users.h"
#include "platform/sim/bad_password_records.h"
#include "platform/sim/sim_settings.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/user_table.h"

namespace bmcsim {

bool parse_privilege(const std::string& text, int& level) {
    static const struct {
        const char* name;
        int level;
    } roles[] = {{"Administrator", PRIV_ADMINISTRATOR},
                 {"Operator", PRIV_OPERATOR},
                 {"ReadOnly", PRIV_USER},
                 {"User", PRIV_USER},
                 {"Callback", PRIV_CALLBACK}};
    for (const auto& role : roles)
        if (text == role.name) {
            level = role.level;
            return true;
        }
    long long number = 0;
    if (!parse_number(text, PRIV_CALLBACK, PRIV_ADMINISTRATOR, number)) return false;
    level = static_cast<int>(number);
    return true;
}

const char* role_name(int level) {
    switch (level) {
        case PRIV_ADMINISTRATOR:
            return "Administrator";
        case PRIV_OPERATOR:
            return "Operator";
        case PRIV_USER:
            return "ReadOnly";
        case PRIV_CALLBACK:
            return "Callback";
        case PRIV_NO_ACCESS:
            return "NoAccess";
        default:
            return "Unknown";
    }
}

namespace users_commands {

// Slots 1 to 15: slot 0 is reserved.
bool parse_slot(const std::string& text, int& slot) {
    long long number = 0;
    if (!parse_number(text, 1, MAX_USER_SLOTS - 1, number)) return false;
    slot = static_cast<int>(number);
    return true;
}

int failed(std::ostream& err, const std::string& why) {
    err << "bmcsim: " << why << '\n';
    return exit_failed;
}

// Runs change under the user-table lock and commits what it changed.
template <typename Change>
int change_table(std::ostream& err, Change change) {
    if (lx_mutex_get(USER_TABLE_MUTEX) != 0)
        return failed(err, "cannot lock the user table " + platform::user_table_lock_file());
    int status = change();
    if (status == exit_ok && PSCommit() != 0)
        status = failed(err, "cannot write " + platform::user_table_file());
    lx_mutex_put(USER_TABLE_MUTEX);
    return status;
}

int list(std::ostream& out) {
    out << "SLOT ID NAME LEVEL ROLE ENABLED\n";
    for (int slot = 0; slot < MAX_USER_SLOTS; ++slot) {
        St_UserInfo info;
        LibSetUserIndex(slot);
        if (LibInitUserInfo(&info) != 0 || info.key == 0) continue;
        out << slot << ' ' << slot + 1 << ' ' << info.name << ' ' << int(info.lan_privilege) << ' '
            << role_name(info.lan_privilege) << ' ' << (info.enabled ? "yes" : "no") << '\n';
    }
    return exit_ok;
}

int seed(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() != 3) return usage(self, err);
    if (!platform::valid_user_name(words[1]) || !platform::valid_user_password(words[2])) {
        err << "bmcsim: a name has 1 to 16 characters without blanks; a password 1 to 20\n";
        return usage(self, err);
    }
    switch (platform::seed_first_administrator(words[1], words[2])) {
        case platform::seed_result::seeded:
            out << "seeded slot 1: " << words[1] << '\n';
            return exit_ok;
        case platform::seed_result::exists:
            out << "user table exists; not seeded\n";
            return exit_ok;
        default:
            return failed(err, "cannot write " + platform::user_table_file());
    }
}

int add(const area& self, const arguments& words, std::ostream& err) {
    int slot = 0;
    int level = 0;
    if (words.size() != 5 || !parse_slot(words[1], slot) || !parse_privilege(words[4], level))
        return usage(self, err);
    const std::string& name = words[2];
    const std::string& password = words[3];
    if (!platform::valid_user_name(name) || !platform::valid_user_password(password)) {
        err << "bmcsim: a name has 1 to 16 characters without blanks; a password 1 to 20\n";
        return usage(self, err);
    }
    return change_table(err, [&] {
        if (platform::user_slot_key(slot) != 0)
            return failed(err, "slot " + std::to_string(slot) + " is in use");
        if (UtilIsValidUserName(name.c_str(), slot))
            return failed(err, "another slot is named " + name);
        if (UtilSetUserName(slot, name.c_str()) != 0 ||
            UtilSetUserPassword(slot, password.c_str()) != 0 || UtilSetLANPriv(slot, level) != 0 ||
            UtilSetUserEnable(slot, 1) != 0)
            return failed(err, "cannot set slot " + std::to_string(slot));
        return int(exit_ok);
    });
}

// Commands on one used slot: passwd, enable, disable, delete.
int change_user(const area& self, const arguments& words, std::ostream& err) {
    const std::string& command = words.front();
    int slot = 0;
    bool with_password = command == "passwd";
    if (words.size() != (with_password ? 3u : 2u) || !parse_slot(words[1], slot))
        return usage(self, err);
    if (with_password && !platform::valid_user_password(words[2])) {
        err << "bmcsim: a password has 1 to 20 characters\n";
        return usage(self, err);
    }
    return change_table(err, [&] {
        if (platform::user_slot_key(slot) == 0)
            return failed(err, "slot " + std::to_string(slot) + " holds no user");
        int result = -1;
        if (with_password)
            result = UtilSetUserPassword(slot, words[2].c_str());
        else if (command == "enable" || command == "disable")
            result = UtilSetUserEnable(slot, command == "enable");
        else if (UtilDelUserName(slot) == 0 && UtilDelUserPassword(slot) == 0 &&
                 UtilSetUserEnable(slot, 0) == 0)
            result = clear_user_privilege(slot);
        return result == 0 ? int(exit_ok)
                           : failed(err, "cannot change slot " + std::to_string(slot));
    });
}

int unlock(const area& self, const arguments& words, std::ostream& err) {
    int slot = 0;
    if (words.size() != 2 || !parse_slot(words[1], slot)) return usage(self, err);
    return UnlockUser(slot) == 0 ? exit_ok
                                 : failed(err, "cannot write " + platform::lockout_file());
}

int complexity(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    if (words.size() != 2) return usage(self, err);
    if (words[1] == "show") {
        out << (UtilGetPasswordComplexity() ? "on" : "off") << '\n';
        return exit_ok;
    }
    if (words[1] != "on" && words[1] != "off") return usage(self, err);
    if (platform::set_sim_setting("Users.PasswordComplexity", words[1] == "on" ? "1" : "0"))
        return exit_ok;
    return failed(err, "cannot write " + platform::sim_settings_file());
}

int run_users(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "list" && words.size() == 1) return list(out);
    if (command == "seed") return seed(self, words, out, err);
    if (command == "add") return add(self, words, err);
    if (command == "passwd" || command == "enable" || command == "disable" || command == "delete")
        return change_user(self, words, err);
    if (command == "unlock") return unlock(self, words, err);
    if (command == "complexity") return complexity(self, words, out, err);
    return usage(self, err);
}

}  // namespace users_commands

const area users_area = {
    "users",
    "list | seed NAME PASSWORD | add SLOT NAME PASSWORD LEVEL | passwd SLOT PASSWORD"
    " | enable SLOT | disable SLOT | delete SLOT | unlock SLOT"
    " | complexity on|off|show",
    users_commands::run_users};

}  // namespace bmcsim
