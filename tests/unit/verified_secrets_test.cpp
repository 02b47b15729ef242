// Remembered verifications must never let a wrong or outdated password in.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/sim/password_hash.h"

namespace {

using platform::sim::hash_secret;
using platform::sim::unmatched_secret;
using platform::sim::verify_secret;
using platform::sim::well_formed_secret;

TEST(VerifiedSecrets, OnlyTheVerifiedPairPassesAgain) {
    const std::string stored = hash_secret("Right-pass1");
    ASSERT_FALSE(stored.empty());
    EXPECT_TRUE(verify_secret(stored, "Right-pass1"));
    EXPECT_TRUE(verify_secret(stored, "Right-pass1"));
    EXPECT_FALSE(verify_secret(stored, "Right-pass"));
    EXPECT_FALSE(verify_secret(stored, "Right-pass1 "));
    // A changed password: the remembered pair belongs to the old hash.
    const std::string changed = hash_secret("Other-pass2");
    EXPECT_FALSE(verify_secret(changed, "Right-pass1"));
    EXPECT_TRUE(verify_secret(changed, "Other-pass2"));
    EXPECT_FALSE(verify_secret(stored + "0", "Right-pass1"));
    EXPECT_FALSE(verify_secret(stored.substr(0, stored.size() - 1), "Right-pass1"));
}

TEST(VerifiedSecrets, MoreAccountsThanRememberedStillVerify) {
    std::vector<std::string> stored;
    for (int i = 0; i < 12; ++i) stored.push_back(hash_secret("pass-" + std::to_string(i)));
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 12; ++i) {
            EXPECT_TRUE(verify_secret(stored[i], "pass-" + std::to_string(i)));
            EXPECT_FALSE(verify_secret(stored[i], "pass-" + std::to_string((i + 1) % 12)));
        }
}

// Each hash draws its own salt; the form that unknown names are checked
// against parses, so it costs a derivation, and lets nothing in.
TEST(VerifiedSecrets, SaltsDifferAndTheUnmatchedFormLetsNothingIn) {
    EXPECT_NE(hash_secret("Same-pass1"), hash_secret("Same-pass1"));
    const std::string unmatched = unmatched_secret();
    EXPECT_TRUE(well_formed_secret(unmatched));
    for (const char* secret : {"", "0", "no user has this password", "Right-pass1"})
        EXPECT_FALSE(verify_secret(unmatched, secret)) << secret;
}

}  // namespace
