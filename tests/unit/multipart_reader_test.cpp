// The multipart reader on well-formed, truncated, boundary-less and
// oversized bodies: it must end cleanly, never read past what it was given.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "update/multipart_reader.h"

using namespace odata::redfish;

namespace {

struct part {
    std::string name;
    std::string content;
};

// Every part the reader finds, with its content; failed tells how it ended.
std::vector<part> read_all(const std::string& body, const std::string& boundary, bool& failed,
                           long long limit = 1 << 30) {
    std::istringstream input(body);
    multipart_reader reader(input, boundary, limit);
    std::vector<part> parts;
    while (reader.next_part()) {
        part found{reader.name(), {}};
        if (!reader.read_content([&found](const char* data, size_t length) {
                found.content.append(data, length);
                return true;
            }))
            break;
        parts.push_back(found);
    }
    failed = reader.failed();
    return parts;
}

std::string form(const std::string& boundary, const std::vector<part>& parts) {
    std::string body;
    for (const part& each : parts)
        body += "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + each.name +
                "\"; filename=\"x\"\r\nContent-Type: application/octet-stream\r\n\r\n" +
                each.content + "\r\n";
    return body + "--" + boundary + "--\r\n";
}

}  // namespace

TEST(MultipartBoundary, ComesFromAFormContentTypeOnly) {
    EXPECT_EQ(multipart_boundary("multipart/form-data; boundary=abc"), "abc");
    EXPECT_EQ(multipart_boundary("multipart/form-data; boundary=\"a b\"; charset=x"), "a b");
    EXPECT_EQ(multipart_boundary("multipart/form-data"), "");
    EXPECT_EQ(multipart_boundary("application/json; boundary=abc"), "");
}

TEST(MultipartReader, ReadsEveryPartWhateverItsSize) {
    // Content that straddles the reader's blocks and holds near-delimiters.
    std::string image(200000, 'x');
    image.replace(65530, 10, "\r\n--boundar");
    const std::vector<part> sent = {
        {"UpdateParameters", "{\"Targets\":[]}"}, {"UpdateFile", image}, {"Empty", ""}};
    bool failed = true;
    const std::vector<part> got = read_all(form("boundary", sent), "boundary", failed);
    EXPECT_FALSE(failed);
    ASSERT_EQ(got.size(), sent.size());
    for (size_t i = 0; i < sent.size(); ++i) {
        EXPECT_EQ(got[i].name, sent[i].name);
        EXPECT_EQ(got[i].content, sent[i].content);
    }
}

TEST(MultipartReader, TruncatedBodiesFailAtEveryLength) {
    const std::string body = form("b", {{"UpdateParameters", "{}"}, {"UpdateFile", "abcdef"}});
    for (size_t cut = 0; cut + 4 < body.size(); ++cut) {
        bool failed = false;
        const std::vector<part> got = read_all(body.substr(0, cut), "b", failed);
        EXPECT_TRUE(failed || got.size() < 2) << "cut at " << cut;
        if (got.size() == 2) {
            EXPECT_EQ(got[1].content, "abcdef");
        }
    }
}

TEST(MultipartReader, RefusesBodiesWithoutTheBoundary) {
    bool failed = false;
    EXPECT_TRUE(read_all("no boundary at all\r\n\r\n", "b", failed).empty());
    EXPECT_TRUE(failed);
    EXPECT_TRUE(read_all(form("other", {{"UpdateFile", "x"}}), "b", failed).empty());
    EXPECT_TRUE(failed);
    EXPECT_TRUE(read_all("", "b", failed).empty());
    EXPECT_TRUE(failed);
}

TEST(MultipartReader, StopsAtItsLimitAndOnEndlessHeaders) {
    const std::string body = form("b", {{"UpdateFile", std::string(100000, 'z')}});
    bool failed = false;
    EXPECT_TRUE(read_all(body, "b", failed, 50000).empty());
    EXPECT_TRUE(failed);

    std::string endless = "--b\r\n";
    for (int i = 0; i < 100; ++i) endless += "X-Header: " + std::string(100, 'h') + "\r\n";
    EXPECT_TRUE(read_all(endless + "\r\nbody\r\n--b--", "b", failed).empty());
    EXPECT_TRUE(failed);
    EXPECT_TRUE(read_all("--b\r\n" + std::string(5000, 'h'), "b", failed).empty());
    EXPECT_TRUE(failed);
}

TEST(MultipartReader, ASinkThatRefusesEndsTheRead) {
    std::istringstream input(form("b", {{"UpdateFile", "data"}}));
    multipart_reader reader(input, "b", 1 << 20);
    ASSERT_TRUE(reader.next_part());
    EXPECT_FALSE(reader.read_content([](const char*, size_t) { return false; }));
    EXPECT_TRUE(reader.failed());
    EXPECT_FALSE(reader.next_part());
}
