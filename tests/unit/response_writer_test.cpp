#include <gtest/gtest.h>

#include "frontend/exception_http.h"
#include "frontend/message_table.h"
#include "frontend/result_writer.h"
#include "frontend/status_line.h"
#include "stdout_capture.h"

using namespace odata::redfish;

namespace {

std::string written(const exception_http& error) {
    stdout_capture capture;
    error.write();
    return capture.text();
}

template <class thrower>
std::string response_of(thrower throw_it) {
    try {
        throw_it();
    } catch (const exception_http& error) {
        return written(error);
    }
    return "nothing thrown";
}

}  // namespace

TEST(StatusLine, KnownStatusesHaveExactlyOneLineAndOthersNone) {
    std::string text;
    status_line(204, text);
    status_line(412, text);
    EXPECT_EQ(text, "Status: 204 No Content\r\nStatus: 412 Precondition Failed\r\n");
    for (int status : {0, 100, 422, 429, 502, 999}) {
        std::string nothing;
        status_line(status, nothing);
        EXPECT_EQ(nothing, "") << status;
    }
}

TEST(ExceptionHttp, WritesHeadersInOrderThenLengthAndBody) {
    exception_http error(401);
    error.add_header("WWW-Authenticate: Basic realm=\"redfish\"");
    error.add_header("Content-Type", "text/plain; charset=UTF-8");
    error.append_body("ab");
    error.append_body("c");
    EXPECT_EQ(written(error),
              "Status: 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"redfish\"\r\n"
              "Content-Type: text/plain; charset=UTF-8\r\nContent-Length: 3\r\n\r\nabc");
}

TEST(ExceptionHttp, ShortcutsCarryTheirStatusAndMessage) {
    EXPECT_EQ(response_of([] { throw_http(204); }),
              "Status: 204 No Content\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(response_of([] { throw_http(429); }), "Content-Length: 0\r\n\r\n");

    std::string lockdown = response_of([] { throw_system_lockdown(); });
    EXPECT_EQ(lockdown.rfind("Status: 405 Method Not Allowed\r\nOData-Version: 4.0\r\n"
                             "Content-Type: application/json; charset=UTF-8\r\nContent-Length: ",
                             0),
              0u);
    EXPECT_NE(lockdown.find("\"MessageId\":\"TWR.1.0.OemSystemLockdownEnabled\""),
              std::string::npos);
    EXPECT_NE(response_of([] { throw_insufficient_privilege(); }).find("Status: 403 Forbidden"),
              std::string::npos);
    EXPECT_NE(response_of([] {
                  throw_query_not_supported();
              }).find("\"MessageId\":\"Base.1.10.QueryNotSupported\""),
              std::string::npos);
}

TEST(ResultRendering, EveryShape) {
    result_record success{"Success", "Successfully Completed Request.", {}};
    add_message(success, "Base.1.10.Success");
    EXPECT_EQ(
        render_result(success),
        R"({"Success":{"code":"Base.v1_10_3.Success","Message":"Successfully Completed Request."}})");

    result_record notes{"SuccessWithNotes", "m", {}};
    EXPECT_EQ(render_result(notes),
              R"({"SuccessWithNotes":{"code":"Base.v1_10_3.SuccessWithNotes","Message":"m"}})");

    result_record accepted{"Accepted", "a", {}};
    EXPECT_EQ(render_result(accepted),
              R"({"Accepted":{"code":"Base.v1_10_3.Accepted","Message":"a"}})");

    EXPECT_EQ(
        render_result(general_error()),
        R"({"error":{"code":"Base.v1_10_3.GeneralError","Message":"A general error has occurred. See ExtendedInfo for more information.","@Message.ExtendedInfo":[]}})");

    result_record oem{"OemTaskState", "t", {}};
    add_message(oem, "Base.1.10.Success");
    std::string oem_body = render_result(oem);
    EXPECT_EQ(
        oem_body.rfind(
            R"({"TaskState":{"code":"Base.v1_10_3.TaskState","Message":"t","@Message.ExtendedInfo":[{"MessageId":"Base.1.10.Success")",
            0),
        0u);

    result_record other{"Created", "c", {}};
    EXPECT_EQ(render_result(other), "{}");
}

TEST(ResultRendering, SuccessAndErrorPathsKeepTheirHeaderOrders) {
    result_record success{"Success", "done", {}};
    stdout_capture capture;
    write_result(success);
    std::string body = render_result(success);
    EXPECT_EQ(capture.text(), "Content-Length: " + std::to_string(body.size()) +
                                  "\r\nOData-Version: 4.0\r\nContent-Type: application/json; "
                                  "charset=UTF-8\r\n\r\n" +
                                  body);

    std::string error = response_of([] { throw_http_error(400, "Base.1.10.MalformedJSON"); });
    EXPECT_LT(error.find("Content-Type"), error.find("Content-Length"));
}
