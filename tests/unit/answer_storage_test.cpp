#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <string>

#include "frontend/answer_storage.h"

using namespace odata::redfish;

namespace {

// An answer as large as a big collection's, built as handlers build them.
void build_large_answer() {
    boost::json::array members(answer_storage());
    for (int i = 0; i < 2000; ++i)
        members.push_back(boost::json::object(
            {{"@odata.id", "/redfish/v1/Large/Collection/Member/" + std::to_string(i)}},
            answer_storage()));
    ASSERT_EQ(members.size(), 2000u);
}

}  // namespace

// Outside a request nothing is kept in the arena: a value may outlive the
// call that built it.
TEST(AnswerStorage, OnlyRequestsBuildInTheArena) {
    EXPECT_FALSE(answer_storage().is_deallocate_trivial());
    open_answer_storage();
    EXPECT_TRUE(answer_storage().is_deallocate_trivial());
    close_answer_storage();
    EXPECT_FALSE(answer_storage().is_deallocate_trivial());
}

// Each request starts from the same arena: a run of large answers must not
// make the blocks of the next ones any larger (they would soon exceed the
// address space).
TEST(AnswerStorage, LargeAnswersOneAfterAnotherKeepTheirSize) {
    for (int request = 0; request < 100; ++request) {
        open_answer_storage();
        build_large_answer();
        close_answer_storage();
    }
}
