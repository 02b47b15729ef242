// The service's message vocabulary: every Base and OEM message it sends,
// defined once.
#pragma once

#include <string_view>

#include "frontend/message.h"

namespace odata::redfish {

struct message_text {
    std::string_view id;  // "Base.1.10.PropertyMissing", "TWR.1.0.AccountLockup"
    std::string_view severity;
    std::string_view message;
    std::string_view resolution;
};

// The descriptor of a message of the table; throws std::out_of_range for an
// id the table does not hold (a programming fault).
message_descriptor message(std::string_view id);

// Every message of the table, in table order.
const message_text* message_table_begin();
const message_text* message_table_end();

}  // namespace odata::redfish
