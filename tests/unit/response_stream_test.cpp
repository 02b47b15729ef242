#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

#include "frontend/response_stream.h"

using namespace odata::redfish;

namespace {

// Standard output bound to a counting stream over a string, as the service
// loop binds it to a request.
class bound_output {
public:
    bound_output() : counted_(target_.rdbuf()), saved_(std::cout.rdbuf(&counted_)) {}
    ~bound_output() { std::cout.rdbuf(saved_); }
    std::string forwarded() const { return target_.str(); }

private:
    std::stringstream target_;
    counting_streambuf counted_;
    std::streambuf* saved_;
};

}  // namespace

TEST(ResponseStream, FollowsTheHeaderBlockWhileItIsStillBuffered) {
    bound_output output;
    EXPECT_EQ(response_bytes_written(), 0);
    EXPECT_EQ(response_status(), 200);
    std::cout << "Stat"
              << "us: 4";
    std::cout << "04 Not Found\r\nStatus: 500 Internal Server Error\r\nA: b\r";
    EXPECT_EQ(response_status(), 404);  // the first status line counts
    EXPECT_FALSE(response_headers_ended());
    std::cout << "\n\r\n{\"Status: 201\"}\n\n";
    EXPECT_TRUE(response_headers_ended());
    EXPECT_EQ(response_status(), 404);
    EXPECT_EQ(response_bytes_written(), 83);
    EXPECT_EQ(output.forwarded(), "");  // nothing forwarded before a flush
    std::cout.flush();
    EXPECT_EQ(output.forwarded().size(), 83u);
}

TEST(ResponseStream, LongAndShortWritesArriveInOrder) {
    bound_output output;
    const std::string large(10000, 'x');
    std::cout << "Content-Length: 10002\r\n\r\n" << 'a' << large << 'b';
    EXPECT_TRUE(response_headers_ended());
    std::cout.flush();
    EXPECT_EQ(output.forwarded(), "Content-Length: 10002\r\n\r\na" + large + "b");
    EXPECT_EQ(response_bytes_written(), static_cast<std::streamsize>(output.forwarded().size()));
}

TEST(ResponseStream, StatusLinesTooShortOrNotNumericLeaveTheDefault) {
    bound_output output;
    std::cout << "Status: 4\r\nStatus: abc Bad\r\n\r\n";
    EXPECT_EQ(response_status(), 200);
    EXPECT_TRUE(response_headers_ended());
}

TEST(ResponseStream, OtherOutputsAreNotCounted) {
    std::stringstream elsewhere;
    std::streambuf* saved = std::cout.rdbuf(elsewhere.rdbuf());
    EXPECT_EQ(response_bytes_written(), -1);
    EXPECT_FALSE(response_headers_ended());
    std::cout.rdbuf(saved);
}
