// Local accounts as the BMC user table holds them. Account id = slot + 1;
// slot 0 is never shown, slot 1 is the reserved first administrator, slots
// 2 to 15 can be created and deleted.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace odata::redfish {

constexpr const char* accounts_uri = "/redfish/v1/AccountService/Accounts";
constexpr int reserved_administrator_slot = 1;
constexpr int first_creatable_slot = 2;

struct account_record {
    int slot;
    std::string user_name;
    int privilege;  // the user table's level
    bool enabled;
};

inline int slot_of_account(int account_id) { return account_id - 1; }
inline int account_of_slot(int slot) { return slot + 1; }

// "/redfish/v1/AccountService/Accounts/<id>"
std::string account_uri(int account_id);

// The user in a slot from 1 to 15; none for an empty slot or any other number.
std::optional<account_record> read_account(int slot);

// The slots the collection lists: those with a privilege level from 1 to 4.
std::vector<int> listed_slots();

// The first free slot from 2 to 15.
std::optional<int> first_free_slot();

}  // namespace odata::redfish
