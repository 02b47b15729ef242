#include "frontend/result_writer.h"

#include "frontend/response_headers.h"
#include "frontend/response_stream.h"

#include <iostream>
#include <string_view>

namespace odata::redfish {
namespace {

constexpr std::string_view code_prefix = "Base.v1_10_3.";

bool starts_with(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

}  // namespace

boost::json::object result_object(const result_record& result) {
    std::string_view code = result.code;
    boost::json::object inner;
    inner["code"] =
        std::string(code_prefix) + std::string(starts_with(code, "Oem") ? code.substr(3) : code);
    inner["Message"] = result.message;

    boost::json::object outer;
    if (starts_with(code, "Success") || starts_with(code, "Accepted")) {
        outer[code] = std::move(inner);
    } else if (starts_with(code, "GeneralError")) {
        inner["@Message.ExtendedInfo"] = result.entries;
        outer["error"] = std::move(inner);
    } else if (starts_with(code, "Oem")) {
        inner["@Message.ExtendedInfo"] = result.entries;
        outer[code.substr(3)] = std::move(inner);
    }
    return outer;
}

std::string render_result(const result_record& result) {
    return boost::json::serialize(result_object(result));
}

bool end_if_no_content() {
    if (response_status() != 204) return false;
    write_header_block(0, body_kind::none);
    return true;
}

void write_result(const result_record& result) {
    if (end_if_no_content()) return;
    std::string body = render_result(result);
    write_header_block(body.size());
    std::cout << body;
}

}  // namespace odata::redfish
