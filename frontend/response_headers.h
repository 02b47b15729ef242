// The header block of an answer: the one writer of every header between a
// handler's status line and its body, in one order (Location, Retry-After,
// Content-Disposition, Allow, Link, Cache-Control, ETag, CORS, then
// Content-Length, OData-Version and Content-Type), each at most once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace odata::redfish {

// Headers a handler learns while it works; the block writes them.
enum class response_header { location, retry_after, content_disposition };

// Writes the status line of status ("Status: 204 No Content").
void write_status_line(int status);

// Keeps value for header until the block is written; a later value
// replaces an earlier one.
void set_response_header(response_header header, std::string value);

// What a GET answer of a resource adds to its block.
struct resource_headers {
    unsigned allowed_methods = 0;  // 1 << method code each; 0 writes no Allow
    std::string_view schema_uri;   // the JSON schema named by Link; empty for none
    std::string_view etag;         // empty for none
};

// The kind of body the block announces: JSON, none at all (204), an empty
// one, XML, or a file to save.
enum class body_kind { json, none, empty, xml, attachment };

// Writes the block: the kept headers, the resource's, CORS, the content
// headers for length bytes of kind, and the empty line; then forgets the
// kept headers.
void write_header_block(std::size_t length, body_kind kind = body_kind::json,
                        const resource_headers& resource = {});

// Throws the 405 answer that names the allowed methods (1 << method code
// each) in Allow.
[[noreturn]] void throw_method_not_allowed(unsigned allowed_methods);

// Forgets the kept headers, at the start of each request.
void reset_response_headers();

}  // namespace odata::redfish
