// A firmware image takes the place of the old one only once whole; one
// that is dropped, or whose writer dies, leaves no file behind.
#include "update/image_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

class image_file_test : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path().string() + "/image_XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directory_ = pattern;
        std::ofstream(image()) << "old image";
    }
    void TearDown() override { std::filesystem::remove_all(directory_); }

    std::string image() const { return directory_ + "/fwimgbuff"; }
    std::string content() const {
        std::ifstream file(image());
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
    size_t files() const {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(directory_),
                                                 std::filesystem::directory_iterator()));
    }

    std::string directory_;
};

}  // namespace

TEST_F(image_file_test, AnImageReplacesTheOldOneOnlyOnceCommitted) {
    {
        odata::redfish::image_file dropped(image());
        ASSERT_TRUE(dropped.valid());
        ASSERT_TRUE(dropped.write("a part", 6));
    }
    EXPECT_EQ(content(), "old image");
    EXPECT_EQ(files(), 1u);

    odata::redfish::image_file whole(image());
    ASSERT_TRUE(whole.write("new image", 9));
    EXPECT_EQ(content(), "old image");
    ASSERT_TRUE(whole.commit());
    EXPECT_EQ(content(), "new image");
    EXPECT_EQ(files(), 1u);
    struct stat status {};
    ASSERT_EQ(::stat(image().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}
