#include "frontend/message.h"

#include "frontend/message_table.h"

namespace odata::redfish {

namespace {

std::string value_of(const message_descriptor& descriptor, const std::string& key) {
    auto it = descriptor.find(key);
    return it == descriptor.end() ? std::string() : it->second;
}

boost::json::array to_array(const message_args& texts) {
    boost::json::array array;
    array.reserve(texts.size());
    for (const auto& text : texts) {
        array.emplace_back(text);
    }
    return array;
}

}  // namespace

result_record general_error() { return result_record{"GeneralError", general_error_text, {}}; }

void add_message(result_record& result, message_descriptor& descriptor, const message_args& args,
                 const message_args& related) {
    // Arguments go in one by one, each replacing only the first occurrence of
    // its placeholder; an earlier argument may itself contain a later one.
    std::string& text = descriptor["Message"];
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string placeholder = "%" + std::to_string(i + 1);
        const auto pos = text.find(placeholder);
        if (pos == std::string::npos) {
            continue;
        }
        text.erase(pos, 2);
        text.insert(pos, args[i]);
    }

    boost::json::object entry;
    entry["MessageId"] = value_of(descriptor, "MessageId");
    entry["Severity"] = value_of(descriptor, "Severity");
    entry["Resolution"] = value_of(descriptor, "Resolution");
    entry["Message"] = text;
    if (!args.empty()) {
        entry["MessageArgs"] = to_array(args);
    }
    if (!related.empty()) {
        entry["RelatedProperties"] = to_array(related);
    }
    result.entries.emplace_back(std::move(entry));
}

void add_message(result_record& result, const std::string& message_id, const message_args& args,
                 const message_args& related) {
    message_descriptor descriptor = message(message_id);
    add_message(result, descriptor, args, related);
}

}  // namespace odata::redfish
