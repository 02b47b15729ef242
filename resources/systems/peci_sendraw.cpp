#include "resources/systems/peci_sendraw.h"

#include <iostream>
#include <vector>

#include "framework/property_checks.h"
#include "frontend/exception_http.h"
#include "frontend/response_headers.h"
#include "platform/libdump.h"
#include "platform/libweb.h"
#include "platform/plt_result.h"
#include "resources/managers/action_parameters.h"

namespace odata::redfish {
namespace {

constexpr const char* send_raw_peci_action = "Crashdump.SendRawPeci";
constexpr const char* commands_name = "PECICommands";
// One request carries at most this many commands, each at most as many
// bytes as a PECI message holds.
constexpr size_t max_commands = 16;
constexpr size_t header_bytes = 3;
constexpr size_t max_write_bytes = 32;
constexpr int max_read_bytes = 32;
constexpr int first_address = 0x30;
constexpr int last_address = 0x37;

using peci_command = std::vector<unsigned char>;

bool read_command(const boost::json::value& value, peci_command& command) {
    const boost::json::array* bytes = value.if_array();
    if (!bytes || bytes->size() < header_bytes || bytes->size() > header_bytes + max_write_bytes)
        return false;
    for (const boost::json::value& byte : *bytes) {
        if (!byte.is_int64() || byte.get_int64() < 0 || byte.get_int64() > 0xff) return false;
        command.push_back(static_cast<unsigned char>(byte.get_int64()));
    }
    return command[0] >= first_address && command[0] <= last_address &&
           command[1] == command.size() - header_bytes && command[2] <= max_read_bytes;
}

// Each malformed command gets its own message; nothing is sent then.
std::vector<peci_command> read_commands(const boost::json::value& value, result_record& result) {
    std::vector<peci_command> commands;
    const boost::json::array* list = value.if_array();
    if (!list || list->empty() || list->size() > max_commands) {
        add_parameter_message(result, "Base.1.10.ActionParameterValueFormatError",
                              shown_value(value), commands_name, send_raw_peci_action);
        return commands;
    }
    for (const boost::json::value& each : *list) {
        peci_command command;
        if (!read_command(each, command))
            add_parameter_message(result, "Base.1.10.ActionParameterValueFormatError",
                                  shown_value(each), commands_name, send_raw_peci_action);
        commands.push_back(std::move(command));
    }
    return commands;
}

std::vector<peci_command> requested_commands(const request_context& context) {
    std::vector<peci_command> commands;
    bool given = false;
    read_optional_parameters(
        context, send_raw_peci_action,
        [&](const std::string& name, const boost::json::value& value, result_record& result) {
            if (name != commands_name) return false;
            given = true;
            commands = read_commands(value, result);
            return true;
        });
    if (!given) {
        result_record result = general_error();
        add_message(result, "Base.1.10.ActionParameterMissing",
                    {send_raw_peci_action, commands_name});
        throw_http_result(400, result);
    }
    return commands;
}

boost::json::array send(const peci_command& command) {
    unsigned char read[max_read_bytes] = {};
    const int length = PeciSendRaw(command.data(), static_cast<int>(command.size()), read,
                                   static_cast<int>(sizeof read));
    if (length == PLT_ERR_STATE) {
        console_log("[PECI] the host is powered off\n");
        throw_http_error(409, "Base.1.10.ResourceInUse");
    }
    if (length == PLT_ERR_NOT_FOUND) {
        result_record result = general_error();
        add_parameter_message(result, "Base.1.10.ActionParameterValueNotInList",
                              std::to_string(command[0]), commands_name, send_raw_peci_action);
        throw_http_result(400, result);
    }
    if (length < 0) throw_http_error(500, "Base.1.10.InternalError");
    return boost::json::array(read, read + length);
}

}  // namespace

int peci_sendraw::post(request_context& context) {
    boost::json::array responses;
    for (const peci_command& command : requested_commands(context))
        responses.push_back(send(command));
    const std::string body =
        boost::json::serialize(boost::json::object{{"PECIResponse", responses}});
    write_status_line(200);
    write_header_block(body.size());
    std::cout << body;
    return 0;
}

}  // namespace odata::redfish
