#include "update/configuration_audit.h"

#include "platform/libipmi.h"

namespace odata::redfish {
namespace {

constexpr int event_configuration_transfer = 150;

}  // namespace

void audit_configuration(const std::string& user_name, const std::string& message_id,
                         const message_args& args) {
    result_record record;
    add_message(record, message_id, args);
    const std::string text =
        user_name + ", " +
        std::string(record.entries.front().as_object().at("Message").as_string());
    LibSaveSysEvtLog(event_configuration_transfer, 0, text.c_str());
}

}  // namespace odata::redfish
