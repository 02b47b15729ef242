// Password complexity: the switch is [Users] PasswordComplexity in the
// simulator settings (sim_settings.h), default off.
#include <cctype>

#include "platform/libipmi_users.h"
#include "platform/sim/sim_settings.h"

extern "C" int UtilGetPasswordComplexity(void) {
    return platform::sim_setting_number("Users.PasswordComplexity", 0) != 0 ? 1 : 0;
}

// 0 when the password has an upper-case and a lower-case letter, a digit
// and a special character (printable, neither letter nor digit nor blank);
// otherwise a bit mask of what is missing (1 upper, 2 lower, 4 digit,
// 8 special).
extern "C" int UtilPasswordCheck(const char* password) {
    if (!password) return 15;
    int missing = 15;
    for (const char* c = password; *c; ++c) {
        auto byte = static_cast<unsigned char>(*c);
        if (byte >= 0x80) continue;
        if (std::isupper(byte))
            missing &= ~1;
        else if (std::islower(byte))
            missing &= ~2;
        else if (std::isdigit(byte))
            missing &= ~4;
        else if (std::ispunct(byte))
            missing &= ~8;
    }
    return missing;
}
