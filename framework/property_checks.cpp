#include "framework/property_checks.h"

#include <cmath>

#include "frontend/exception_http.h"

namespace odata::redfish {

std::string shown_value(const boost::json::value& value) {
    if (const boost::json::string* text = value.if_string()) return std::string(*text);
    return boost::json::serialize(value);
}

void add_value_message(result_record& result, std::string_view message_id,
                       const std::string& value_text, const std::string& path) {
    add_message(result, std::string(message_id), {value_text, path}, {"/" + path});
}

void add_property_message(result_record& result, std::string_view message_id,
                          const std::string& path) {
    add_message(result, std::string(message_id), {path}, {"/" + path});
}

void unknown_property::report(result_record& result, const std::string& path) const {
    if (action_.empty()) {
        add_property_message(result, "Base.1.10.PropertyUnknown", path);
    } else {
        add_message(result, "Base.1.10.ActionParameterUnknown", {action_, path}, {"/" + path});
    }
}

const boost::json::string* require_text(const boost::json::value& value, const std::string& path,
                                        result_record& result, bool secret) {
    const boost::json::string* text = value.if_string();
    if (!text) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError",
                          secret ? hidden_value : shown_value(value), path);
        return nullptr;
    }
    if (text->empty()) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", "is an empty string", path);
        return nullptr;
    }
    return text;
}

std::optional<bool> require_boolean(const boost::json::value& value, const std::string& path,
                                    result_record& result) {
    if (value.is_bool()) return value.get_bool();
    add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
    return std::nullopt;
}

std::optional<std::string> require_one_of(const boost::json::value& value,
                                          std::initializer_list<std::string_view> names,
                                          const std::string& path, result_record& result) {
    const boost::json::string* text = value.if_string();
    if (!text) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
        return std::nullopt;
    }
    if (std::find(names.begin(), names.end(), std::string_view(*text)) == names.end()) {
        add_value_message(result, "Base.1.10.PropertyValueNotInList", std::string(*text), path);
        return std::nullopt;
    }
    return std::string(*text);
}

// Integers beyond 64 bits arrive as doubles: whole numbers are still
// integers, just out of range.
bool is_whole_double(const boost::json::value& value) {
    return value.is_double() && std::isfinite(value.get_double()) &&
           std::trunc(value.get_double()) == value.get_double();
}

std::optional<long> require_integer_in_range(const boost::json::value& value, long min, long max,
                                             const std::string& path, result_record& result) {
    if (!value.is_int64() && !value.is_uint64() && !is_whole_double(value)) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
        return std::nullopt;
    }
    if (!value.is_int64() || value.get_int64() < min || value.get_int64() > max) {
        add_value_message(result, "Base.1.10.PropertyValueFormatError", shown_value(value), path);
        return std::nullopt;
    }
    return static_cast<long>(value.get_int64());
}

bool require_storable(const boost::json::string& text, const std::string& path,
                      result_record& result, bool secret) {
    auto control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
    bool storable = !text.empty() && text.front() != ' ' && text.back() != ' ';
    for (char c : text) storable = storable && !control(c);
    if (!storable) {
        add_value_message(result, "Base.1.10.PropertyValueFormatError",
                          secret ? hidden_value : std::string(text), path);
    }
    return storable;
}

void for_each_member(const boost::json::value& value, const std::string& path,
                     result_record& result,
                     const std::function<void(const request_member&)>& read) {
    const boost::json::object* object = value.if_object();
    if (!object) {
        add_value_message(result, "Base.1.10.PropertyValueTypeError", shown_value(value), path);
        return;
    }
    for (const auto& [name, member] : *object) {
        read({std::string(name), member, path + "/" + std::string(name)});
    }
}

const boost::json::object& request_object(const boost::json::value& body) {
    const boost::json::object* object = body.if_object();
    if (!object) throw_http_error(400, "Base.1.10.UnrecognizedRequestBody");
    if (object->empty()) throw_http_error(400, "Base.1.10.EmptyJSON");
    return *object;
}

void throw_property_conflict(const std::string& property, const std::string& other) {
    result_record result = general_error();
    add_message(result, "Base.1.10.PropertyValueConflict", {property, other}, {"/" + property});
    throw_http_result(400, result);
}

void refuse_if_reported(const result_record& result) {
    if (!result.entries.empty()) throw_http_result(400, result);
}

}  // namespace odata::redfish
