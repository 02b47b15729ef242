// URI -> new handler object. The route table is a tree of path segments,
// literal or regular-expression, built once per process.
#pragma once

#include <boost/regex.hpp>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "framework/webservice.h"

namespace odata::redfish {

// One route of the table: a path from the root, such as
// "/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)", and the class made
// when a request path ends there. A segment that begins with "(" is a
// regular expression matched against the whole segment; "{n}" stands for
// "([0-9]+)". Routes flagged crashdump resolve only while the platform
// supports crash dumps.
struct route {
    std::string_view path;
    std::string_view handler_class;
    bool crashdump = false;
};

// A request path that is not a URI; the pipeline writes its text.
struct invalid_uri : std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

// The whole URI space of the service.
const std::vector<route>& route_table();

using handler_factory = std::shared_ptr<webservice> (*)(request_context&);
using handler_factories = std::unordered_map<std::string_view, handler_factory>;

class route_resolver {
public:
    // Compiles the routes into a tree; classes without a factory resolve
    // to nothing.
    route_resolver(const std::vector<route>& routes, const handler_factories& factories);

    // A new handler for path with context.captures filled, or null.
    std::shared_ptr<webservice> resolve(const std::string& path, request_context& context) const;

    // The class name that path resolves to, "" for none; fills captures.
    std::string_view resolve_class(const std::string& path,
                                   std::vector<std::string>& captures) const;

private:
    struct node {
        std::string literal;                    // the segment text, also of a pattern
        std::unique_ptr<boost::regex> pattern;  // null for a literal or numeric segment
        bool numeric = false;                   // "{n}": digits, matched without a regex
        std::string handler_class;              // empty: no route ends here
        handler_factory factory = nullptr;
        bool crashdump = false;
        std::vector<node> children;  // in table order
    };
    // The node that path ends at, with its captures; throws for an invalid path.
    const node* find(const std::string& path, std::vector<std::string>& captures) const;
    const node* walk(const node& from, const std::vector<std::string_view>& segments, size_t index,
                     std::vector<std::string>& captures) const;

    node root_;
};

// The methods a handler class serves: those whose operation it (or a base
// between it and webservice) overrides.
template <class handler>
constexpr unsigned served_methods() {
    using refusal = int (webservice::*)(request_context&);
    return (std::is_same_v<decltype(&handler::get), refusal> ? 0 : 1u << GET) |
           (std::is_same_v<decltype(&handler::patch), refusal> ? 0 : 1u << PATCH) |
           (std::is_same_v<decltype(&handler::post), refusal> ? 0 : 1u << POST) |
           (std::is_same_v<decltype(&handler::put), refusal> ? 0 : 1u << PUT) |
           (std::is_same_v<decltype(&handler::del), refusal> ? 0 : 1u << DELETE);
}

// The factory of a handler class, for the factory tables.
template <class handler>
std::shared_ptr<webservice> make_handler(request_context& context) {
    auto made = std::make_shared<handler>(context);
    made->set_allowed_methods(served_methods<handler>());
    return made;
}

}  // namespace odata::redfish
