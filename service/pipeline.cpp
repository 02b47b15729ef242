#include "service/pipeline.h"

#include <algorithm>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <iostream>
#include <string>

#include "framework/redfish.h"
#include "frontend/exception_http.h"
#include "frontend/message_table.h"
#include "frontend/request_context.h"
#include "frontend/request_parameters.h"
#include "frontend/response_headers.h"
#include "frontend/response_stream.h"
#include "frontend/result_writer.h"
#include "platform/libipmi.h"
#include "platform/libipmi_users.h"
#include "platform/libweb.h"
#include "security/address_filter.h"
#include "security/caller_authentication.h"
#include "security/privileges.h"
#include "service/resource_reads.h"
#include "service/route_table.h"

namespace odata::redfish {
namespace {

constexpr int interface_redfish = 5;

constexpr std::size_t max_variable_length = 4096;

// A CGI variable of the current request, "" when unset.
std::string_view cgi_variable(cgi_parameter parameter) {
    return request_parameter(parameter).value_or("").substr(0, max_variable_length);
}

void check_odata_version() {
    std::optional<std::string_view> version = request_parameter(cgi_parameter::odata_version);
    if (version && version->substr(0, 3) != "4.0")
        throw_http_error(412, "TWR.1.0.CertainConfigurationNotSet");
}

// Query options ("$select", "$expand", ..., also written "%24top") are not
// supported by any resource of the service.
void check_query_options(const std::string& query) {
    if (query.empty()) return;
    std::vector<std::string> options;
    boost::algorithm::split(options, query, [](char c) { return c == '&'; });
    for (const auto& option : options) {
        if (option.rfind('$', 0) == 0 || option.rfind("%24", 0) == 0) throw_query_not_supported();
    }
}

// A POST to a collection's "Members" is a POST to the collection.
void drop_members_segment(request_context& context) {
    constexpr std::string_view members = "/Members";
    const std::string_view uri = context.uri;
    if (context.method != POST || uri.size() <= members.size() ||
        uri.substr(uri.size() - members.size()) != members)
        return;
    context.uri.resize(uri.size() - members.size());
}

// Conditional GET: If-None-Match answers 304 when the resource is unchanged.
void check_conditional_headers(redfish& resource) {
    std::optional<std::string_view> none_match = request_parameter(cgi_parameter::none_match);
    if (none_match && none_match->substr(0, max_variable_length) != resource.etag()) {
        exception_http unchanged(204);
        unchanged.add_header("ETag", resource.etag());
        throw unchanged;
    }
    std::optional<std::string_view> if_none_match = request_parameter(cgi_parameter::if_none_match);
    if (if_none_match && if_none_match->substr(0, max_variable_length) == resource.etag())
        throw_http(304);
}

// Whether a list of entity tags ("a", "b" or *) names etag; weak tags
// never match a change.
bool if_match_names(std::string_view list, const std::string& etag) {
    std::vector<std::string> tags;
    boost::algorithm::split(tags, list, [](char c) { return c == ','; });
    return std::any_of(tags.begin(), tags.end(), [&](std::string& tag) {
        boost::algorithm::trim(tag);
        return tag == "*" || tag == etag;
    });
}

// A change with If-Match goes ahead only while the resource's ETag, as a GET
// of it gives now, is one of those named.
void check_if_match(const request_context& context, const route& row) {
    if ((context.method != PATCH && context.method != DELETE) ||
        !request_parameter(cgi_parameter::if_match))
        return;
    request_context reading = context;
    reading.method = GET;
    std::shared_ptr<webservice> current = row.factory(reading);
    auto* resource = dynamic_cast<redfish*>(current.get());
    if (!resource) return;
    resource->call(GET);
    if (!if_match_names(cgi_variable(cgi_parameter::if_match), resource->etag()))
        throw_http_error(412, "Base.1.10.PreconditionFailed");
}

// One pass over the segments: a path may have thousands.
bool has_dot_segment(std::string_view path) {
    for (size_t start = 0; start <= path.size();) {
        const size_t end = std::min(path.find('/', start), path.size());
        const std::string_view segment = path.substr(start, end - start);
        if (segment == "." || segment == "..") return true;
        start = end + 1;
    }
    return false;
}

// Paths are plain: no "." or ".." segment and no percent-encoding.
void check_path_form(const request_context& context) {
    if (has_dot_segment(context.uri) || context.uri.find('%') != std::string::npos)
        throw_http_error(400, "Base.1.10.ResourceAtUriInUnknownFormat", {context.uri});
}

// An upload's body is left to its handler, which streams it; a change of
// firmware or the configuration is refused while the system is locked down,
// before its body is read.
void read_body_or_leave_upload(request_context& context, const route* row, std::istream& input) {
    const bool post = context.method == POST && row;
    const bool change = context.method != GET && row;
    if (change && row->has(route_refused_in_lockdown) && GetSetSysLockdownEnable(0, 0))
        throw_system_lockdown();
    if (!post || !row->has(route_upload)) {
        read_request_input(input);
        return;
    }
    console_log("[FileUpload] CgiVars is not initialized due to file upload.\n");
    context.upload = &input;
}

// The login authenticates itself; the open documents may be read without
// credentials when the service is set so.
void authorise(request_context& context, const route& row) {
    if (row.privileges.of(context.method).sets[0] == privilege_no_auth) return;
    if (context.method == GET && row.has(route_open_read) && open_reads_allowed()) return;
    authenticate_caller(context);
    if (!caller_is_authorised(context, row.privileges)) throw_insufficient_privilege();
}

void handle_request(request_context& context, std::istream& input) {
    context.uri = normalise_path(cgi_variable(cgi_parameter::request_uri));
    context.query = std::string(cgi_variable(cgi_parameter::query_string));
    context.method = request_method();
    if (at_p_St_GlobalVar->fcgi_mode == 0) throw_http_error(503, "Base.1.10.ServiceInUnknownState");
    InterfaceInfo->kind = interface_redfish;
    check_client_address(context.uri);
    check_odata_version();
    check_path_form(context);
    drop_members_segment(context);
    const route* row = service_routes().resolve(context.uri, context.captures);
    read_body_or_leave_upload(context, row, input);
    if (!row || !row->served()) throw_http(404);
    context.handler_class = row->handler_class;
    authorise(context, *row);
    check_query_options(context.query);
    check_if_match(context, *row);

    std::shared_ptr<webservice> handler = row->factory(context);
    if (context.method == GET)
        get_resource(*handler, context, row->has(route_reusable));
    else
        handler->call(context.method);
    auto* resource = dynamic_cast<redfish*>(handler.get());
    if (resource && context.method == GET) check_conditional_headers(*resource);
    // A handler that answered in full (a login, a 204) sends nothing more.
    if (!response_headers_ended()) handler->send_response();
}

void answer_malformed_json() {
    write_status_line(400);
    result_record result = general_error();
    add_message(result, "Base.1.10.MalformedJSON");
    write_result(result);
}

// A logged-only failure: complete whatever status line was written, or
// answer 500 when nothing was.
void answer_logged_failure(const char* text) {
    if (text[0] != '\0') console_log("%s.", text);
    if (response_bytes_written() == 0) write_status_line(500);
    reset_response_headers();
    write_header_block(0, body_kind::empty);
}

}  // namespace

std::string normalise_path(std::string_view uri) {
    std::string path(uri.substr(0, uri.find('?')));
    const auto slashes = [](char one, char next) { return one == '/' && next == '/'; };
    path.erase(std::unique(path.begin(), path.end(), slashes), path.end());
    return path;
}

void run_pipeline(std::istream& input) {
    reset_response_headers();
    request_context context;
    try {
        handle_request(context, input);
    } catch (const exception_http& error) {
        error.write();
    } catch (const malformed_json&) {
        answer_malformed_json();
    } catch (const invalid_uri& error) {
        std::cout << error.what() << "\n";
    } catch (const std::exception& error) {
        answer_logged_failure(error.what());
    }
    release_request_input();
}

}  // namespace odata::redfish
