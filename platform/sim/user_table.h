// The simulated BMC user table: 16 slots in <root>/nv/bmc/users, a JSON
// document (mode 0600) written by PSCommit through a temporary file and
// rename:
//
//   {"format":1,"slots":[{"slot":0,"key":0,"name":"","privilege":15,
//                         "enabled":false,"password":""}, ... 16 entries]}
//
// "key" is non-zero for a used slot (drawn at random when a name is given to
// an empty slot, so a later user of the slot is told apart from an earlier
// one); "password" is empty or the salted hash of password_hash.h.
//
// Each process keeps the table in memory: it loads the file when first
// needed and again whenever the file has been replaced, and always after
// lx_mutex_get; slots changed by this process and not yet committed are kept
// over such a reload. lx_mutex_get(USER_TABLE_MUTEX) holds an flock on
// <root>/var/bmc/user_table.lock until the matching lx_mutex_put (nested
// pairs count; a put without a get does nothing).
#pragma once

#include <array>
#include <boost/json.hpp>
#include <cstdint>
#include <string>

#include "platform/libipmi_users.h"

namespace platform {

const std::string& user_table_file();
const std::string& user_table_lock_file();

// One slot as the table keeps it.
struct user_slot {
    uint32_t key = 0;
    std::string name;
    int privilege = PRIV_NO_ACCESS;
    bool enabled = false;
    std::string password;  // stored hash, empty when none

    bool used() const { return key != 0 && !name.empty(); }
};
using user_slots = std::array<user_slot, MAX_USER_SLOTS>;

// A slot in the JSON form of the file, and back; false for a malformed one.
bool parse_user_slot(const boost::json::value& value, user_slot& record, int& slot);
boost::json::object user_slot_json(int slot, const user_slot& record);

// The table as the file holds it now (a missing file is the empty table);
// false when the file is malformed or unreadable.
bool read_user_slots(user_slots& slots);
// The text of the file for a table.
std::string user_table_text(const user_slots& slots);

enum class seed_result { seeded, exists, failed };

// First boot: when the user table file does not exist yet, writes a table
// whose slot 1 holds the enabled administrator with this name and password
// (slot 0 stays empty); leaves an existing table alone.
seed_result seed_first_administrator(const std::string& name, const std::string& password);

// Name rules of the simulated table: 1 to 16 printable characters, no
// blanks or control characters. Passwords: 1 to 20 characters.
bool valid_user_name(const std::string& name);
bool valid_user_password(const std::string& password);

// Drops this process's uncommitted changes (the next read loads the file).
void discard_user_table_changes();

// The record key of a slot as this process sees it; 0 for an empty slot or
// a slot number out of range.
uint32_t user_slot_key(int slot);

// The name of a slot; empty for an empty slot.
std::string user_slot_name(int slot);

}  // namespace platform
