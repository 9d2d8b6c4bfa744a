#include <tarvo/utility/WholeInteger.h>

#include <gtest/gtest.h>

using Tarvo::Utility::wholeInteger;

TEST(WholeInteger, ReadsTheWholeWordWithinTheRangeOfInt) {
    EXPECT_EQ(wholeInteger("0"), 0);
    EXPECT_EQ(wholeInteger("-17"), -17);
    EXPECT_EQ(wholeInteger("2147483647"), 2147483647);
    EXPECT_EQ(wholeInteger("-2147483648"), -2147483647 - 1);
}

TEST(WholeInteger, RefusesEveryWordThatIsNotExactlyAnInteger) {
    // 2^31 and 2^32 + 5 would wrap to a small id; the others were read as their leading digits or as 0.
    for (const char* word : {"", "abc", "12abc", "1e3", "1.5", " 7", "7 ", "+7", "-", "0x10", "2147483648",
                             "-2147483649", "4294967301", "99999999999999999999"})
        EXPECT_FALSE(wholeInteger(word).has_value()) << word;
}
