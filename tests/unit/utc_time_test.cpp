// Times as the BMC shows them, on both sides of 2038-01-19T03:14:07Z, the
// last second that 32 bits of signed seconds hold.
#include <gtest/gtest.h>

#include "base/utc_time.h"

TEST(UtcTime, SecondsPast32BitsKeepTheirYear) {
    EXPECT_EQ(platform::utc_timestamp(0), "1970-01-01T00:00:00+00:00");
    EXPECT_EQ(platform::utc_timestamp(2147483647), "2038-01-19T03:14:07+00:00");
    EXPECT_EQ(platform::utc_timestamp(2147483648), "2038-01-19T03:14:08+00:00");
    EXPECT_EQ(platform::utc_timestamp(4294967296), "2106-02-07T06:28:16+00:00");
    EXPECT_EQ(platform::utc_timestamp(253402300799), "9999-12-31T23:59:59+00:00");
}
