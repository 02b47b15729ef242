// URI -> route. The route table is compiled into a tree of path segments,
// literal or regular-expression, once per process.
#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/core/span.hpp>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "framework/route_privileges.h"
#include "framework/segment_pattern.h"
#include "framework/webservice.h"

namespace odata::redfish {

using handler_factory = std::shared_ptr<webservice> (*)(request_context&);

// What a route is besides its handler (bits of route::flags).
enum route_flag : unsigned {
    // GET needs no credentials while the service is set so
    // (/nv/redfish/redfish.ini [Service] UnauthenticatedServiceRoot=1).
    route_open_read = 1u << 0,
    // A GET answer follows only the stored state it reads and the caller,
    // so it may be used again while those are unchanged.
    route_reusable = 1u << 1,
    // A POST body is left unread for the handler, which streams it.
    route_upload = 1u << 2,
    // A change (POST, PATCH, PUT, DELETE) of firmware or the BMC's
    // configuration: refused while the system is locked down.
    route_refused_in_lockdown = 1u << 3,
    // Resolves only while the platform supports crash dumps.
    route_crashdump = 1u << 4,
};

// One route of the table: a path from the root, such as
// "/redfish/v1/Chassis/1/PCIeDevices/(NIC)([0-9]+)", and what a request
// whose path ends there gets. A segment that begins with "(" is a regular
// expression matched against the whole segment; "{n}" stands for
// "([0-9]+)". A row without a factory is not served yet.
struct route {
    std::string_view path;
    std::string_view handler_class;
    handler_factory factory = nullptr;
    unsigned methods = 0;  // the methods its class serves, 1 << method code each
    route_privileges privileges = {};
    unsigned flags = 0;  // route_flag bits

    bool served() const { return factory != nullptr; }
    bool has(route_flag flag) const { return (flags & flag) != 0; }
};

// A request path that is not a URI; the pipeline writes its text.
struct invalid_uri : std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

class route_resolver {
public:
    // Compiles the routes, which outlive it, into a tree; the first row of
    // a path wins.
    explicit route_resolver(boost::span<const route> routes);

    // The route that path ends at, with captures filled: a served one when
    // one matches, else a row not served yet; null for none. Throws
    // invalid_uri for a path that is not a URI.
    const route* resolve(const std::string& path, std::vector<std::string>& captures) const;

    // The class name of the served route of path, "" for none; fills captures.
    std::string_view resolve_class(const std::string& path,
                                   std::vector<std::string>& captures) const;

    // The segments of a path, kept on the stack for any route's depth.
    using path_segments = boost::container::small_vector<std::string_view, 16>;

private:
    struct node {
        explicit node(std::string_view text) : segment(text) {}
        segment_pattern segment;
        const route* row = nullptr;  // null: no route ends here
        std::vector<node> children;  // in table order
    };
    // A match of a row not served yet, kept while served ones are looked for.
    struct unserved_match {
        const route* row = nullptr;
        std::vector<std::string> captures;
    };
    const route* walk(const node& from, const path_segments& segments, size_t index,
                      std::vector<std::string>& captures, unserved_match& unserved) const;

    node root_{""};
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

// The factory of a handler class, for the route table.
template <class handler>
std::shared_ptr<webservice> make_handler(request_context& context) {
    auto made = std::make_shared<handler>(context);
    made->set_allowed_methods(served_methods<handler>());
    return made;
}

}  // namespace odata::redfish
