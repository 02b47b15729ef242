#include <gtest/gtest.h>

#include <openssl/evp.h>

#include <cstdio>
#include <cstdlib>

#include "framework/redfish.h"
#include "framework/route_resolver.h"
#include "framework/version_documents.h"
#include "frontend/exception_http.h"
#include "stdout_capture.h"

using namespace odata::redfish;

namespace {

class sample_resource : public redfish {
public:
    explicit sample_resource(request_context& context)
        : redfish(context, "Sample", "v1_0_0", "Sample Resource", "/redfish/v1/Sample") {}
    int get(request_context&) override {
        set_common_properties();
        set("Value", 1);
        return 0;
    }
    void use_ready_body(std::string text) { set_body(std::move(text)); }
};

class patchable_resource : public sample_resource {
public:
    using sample_resource::sample_resource;
    int patch(request_context&) override { return 0; }
};

std::string quoted_md5(const std::string& text) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    EVP_Digest(text.data(), text.size(), digest, &length, EVP_md5(), nullptr);
    std::string quoted = "\"";
    char hex[3];
    for (unsigned i = 0; i < length; ++i) {
        std::snprintf(hex, sizeof hex, "%02x", digest[i]);
        quoted += hex;
    }
    return quoted + "\"";
}

}  // namespace

TEST(Webservice, MethodsAHandlerDoesNotServeAnswer405WithAllowAndNoBody) {
    request_context context;
    auto handler = make_handler<patchable_resource>(context);
    for (int method : {POST, PUT, DELETE}) {
        try {
            handler->call(method);
            ADD_FAILURE() << "answered " << method;
        } catch (const exception_http& answer) {
            stdout_capture capture;
            answer.write();
            EXPECT_EQ(
                capture.text(),
                "Status: 405 Method Not Allowed\r\nAllow: GET, PATCH\r\nContent-Length: 0\r\n\r\n");
        }
    }
}

TEST(Webservice, CorsHeaderRepeatsTheOrigin) {
    request_context context;
    redfish_ver handler(context);
    handler.get(context);
    {
        stdout_capture capture;
        handler.send_response();
        EXPECT_EQ(capture.text(),
                  "Content-Length: 21\r\nOData-Version: 4.0\r\n"
                  "Content-Type: application/json; charset=UTF-8\r\n\r\n"
                  "{\"v1\":\"/redfish/v1/\"}");
    }
    setenv("HTTP_ORIGIN", "https://a.example:8443", 1);
    stdout_capture capture;
    handler.send_response();
    unsetenv("HTTP_ORIGIN");
    EXPECT_EQ(capture.text().rfind("Access-Control-Allow-Origin: https://a.example:8443\r\n", 0),
              0u);
}

TEST(RedfishResource, GetAnswersTheValueWithItsEtag) {
    request_context context;
    context.method = GET;
    sample_resource resource(context);
    resource.get(context);
    stdout_capture capture;
    resource.send_response();
    const std::string body =
        R"({"@odata.id":"/redfish/v1/Sample","@odata.type":"#Sample.v1_0_0.Sample","Id":"Sample","Name":"Sample Resource","Value":1})";
    EXPECT_EQ(resource.etag(), quoted_md5(body));
    EXPECT_EQ(
        capture.text(),
        "Allow: GET\r\nCache-Control: no-cache\r\nETag: " + resource.etag() + "\r\n" +
            "Content-Length: " + std::to_string(body.size()) +
            "\r\nOData-Version: 4.0\r\nContent-Type: application/json; charset=UTF-8\r\n\r\n" +
            body);
}

TEST(RedfishResource, ReadyBodyIsSentAsItStandsAndNoEtagOutsideGet) {
    request_context context;
    context.method = POST;
    sample_resource resource(context);
    resource.use_ready_body("already");
    stdout_capture capture;
    resource.send_response();
    EXPECT_EQ(capture.text(),
              "Content-Length: 7\r\nOData-Version: 4.0\r\n"
              "Content-Type: application/json; charset=UTF-8\r\n\r\nalready");
}
