// The message ids of a handler's result, in order.
#pragma once

#include <string>
#include <vector>

#include "frontend/message.h"

inline std::vector<std::string> message_ids(const odata::redfish::result_record& result) {
    std::vector<std::string> ids;
    for (const boost::json::value& entry : result.entries)
        ids.emplace_back(entry.at("MessageId").as_string());
    return ids;
}
