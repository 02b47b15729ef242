#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "frontend/exception_http.h"
#include "frontend/request_context.h"
#include "frontend/request_parameters.h"
#include "service/pipeline.h"
#include "stdout_capture.h"

using namespace odata::redfish;

namespace {

// One request's CGI variables, removed again afterwards.
class cgi_request {
public:
    cgi_request(const char* method, const char* content_length) {
        setenv("REQUEST_METHOD", method, 1);
        if (content_length) setenv("CONTENT_LENGTH", content_length, 1);
    }
    ~cgi_request() {
        release_request_input();
        unsetenv("REQUEST_METHOD");
        unsetenv("CONTENT_LENGTH");
    }
};

std::string body_read_from(const char* input_text, const char* content_length,
                           std::string* rest = nullptr) {
    cgi_request request("POST", content_length);
    std::istringstream input(input_text);
    read_request_input(input);
    request_context context;
    std::string body = context.body() ? std::string(*context.body()) : "<null>";
    if (rest) *rest = std::string(std::istreambuf_iterator<char>(input), {});
    return body;
}

}  // namespace

TEST(RequestMethod, ExactNamesGiveTheirCodes) {
    const std::pair<const char*, int> methods[] = {
        {"GET", GET}, {"PATCH", PATCH}, {"POST", POST}, {"PUT", PUT}, {"DELETE", DELETE}};
    for (const auto& [name, code] : methods) {
        cgi_request request(name, nullptr);
        EXPECT_EQ(request_method(), code) << name;
    }
}

TEST(RequestMethod, OtherMethodsWrite405AndThrow) {
    for (const char* name : {"get", "HEAD", "OPTIONS", "DELETEX", "PATC", ""}) {
        cgi_request request(name, nullptr);
        stdout_capture capture;
        EXPECT_THROW(request_method(), exception) << name;
        EXPECT_EQ(capture.text(), "Status: 405 Method Not Allowed\r\n") << name;
    }
    unsetenv("REQUEST_METHOD");
    stdout_capture capture;
    EXPECT_THROW(request_method(), exception);
}

// Within a request a parameter is read once; the next request reads it anew,
// and outside the service loop every read sees the environment.
TEST(RequestParameters, KeptForOneRequestOnly) {
    setenv("HTTP_X_AUTH_TOKEN", "first", 1);
    keep_request_parameters(true);
    EXPECT_EQ(request_parameter(cgi_parameter::auth_token), "first");
    setenv("HTTP_X_AUTH_TOKEN", "second", 1);
    EXPECT_EQ(request_parameter(cgi_parameter::auth_token), "first");
    EXPECT_EQ(request_parameter(cgi_parameter::origin), std::nullopt);
    keep_request_parameters(true);
    EXPECT_EQ(request_parameter(cgi_parameter::auth_token), "second");
    keep_request_parameters(false);
    unsetenv("HTTP_X_AUTH_TOKEN");
    EXPECT_EQ(request_parameter(cgi_parameter::auth_token), std::nullopt);
}

// Names that only begin or end like a parameter's are other headers; a value
// keeps its own "=" signs.
TEST(RequestParameters, WholeNamesAndWholeValues) {
    setenv("HTTP_X_AUTH_TOKEN_X", "not-a-token", 1);
    setenv("XHTTP_ORIGIN", "elsewhere", 1);
    setenv("HTTP_AUTHORIZATION", "Basic YWRtaW46cGFzcw==", 1);
    setenv("QUERY_STRING", "", 1);
    keep_request_parameters(true);
    EXPECT_EQ(request_parameter(cgi_parameter::auth_token), std::nullopt);
    EXPECT_EQ(request_parameter(cgi_parameter::origin), std::nullopt);
    EXPECT_EQ(request_parameter(cgi_parameter::authorization), "Basic YWRtaW46cGFzcw==");
    EXPECT_EQ(request_parameter(cgi_parameter::query_string), "");
    keep_request_parameters(false);
    for (const char* name :
         {"HTTP_X_AUTH_TOKEN_X", "XHTTP_ORIGIN", "HTTP_AUTHORIZATION", "QUERY_STRING"})
        unsetenv(name);
}

TEST(RequestPath, SegmentsCountFromTheEnd) {
    request_context context;
    context.uri = "/redfish/v1/Tasks/3/TaskMonitor";
    EXPECT_EQ(context.segment_from_end(0), "TaskMonitor");
    EXPECT_EQ(context.segment_from_end(2), "Tasks");
    EXPECT_EQ(context.segment_from_end(5), "");
    EXPECT_EQ(context.segment_from_end(6), std::nullopt);
    context.uri = "/redfish/v1/";
    EXPECT_EQ(context.segment_from_end(0), "");
    EXPECT_EQ(context.segment_from_end(1), "v1");
}

TEST(RequestBody, KeepsTheDeclaredLengthAndDrainsTheRest) {
    std::string rest;
    EXPECT_EQ(body_read_from("0123456789", "5", &rest), "01234");
    EXPECT_EQ(rest, "");
    EXPECT_EQ(body_read_from("abc", "10"), "abc");
    EXPECT_EQ(body_read_from("", "10"), "");
}

TEST(RequestBody, NoBodyWithoutAPositiveLength) {
    EXPECT_EQ(body_read_from("{}", "0"), "<null>");
    EXPECT_EQ(body_read_from("{}", nullptr), "<null>");
    EXPECT_EQ(body_read_from("{}", "-4"), "<null>");
}

TEST(RequestBody, ParsedAsJsonOrRefused) {
    cgi_request request("PATCH", "16");
    std::istringstream input(R"({"A":1} trailing)");
    read_request_input(input);
    request_context context;
    EXPECT_THROW(context.body_json(), malformed_json);
}

TEST(PathNormalisation, CollapsesSlashesAndCutsTheQuery) {
    EXPECT_EQ(normalise_path("//redfish///v1//Systems?$top=1"), "/redfish/v1/Systems");
    EXPECT_EQ(normalise_path("/redfish/v1/"), "/redfish/v1/");
    EXPECT_EQ(normalise_path("///a//b//"), "/a/b/");
}
