// The simulated BIOS's administrator password and UEFI Secure Boot key
// databases, in <root>/nv/bios/security.ini (owner only):
//
//   [Password] Administrator=<salted hash in force>, Pending=<salted hash
//              handed over for the next start>
//   [SecureBoot] PK=, KEK=, db=, dbx= (entries per database; without the
//              section the factory keys: 1, 1, 2, 1)
#pragma once

#include <string>

namespace platform {

const std::string& bios_security_file();

// A host boot as far as the password goes: a pending password comes into
// force.
bool post_bios_password();

// "none", "set" or "set, new one pending" and the like, for bmcsim.
std::string bios_password_state();

}  // namespace platform
