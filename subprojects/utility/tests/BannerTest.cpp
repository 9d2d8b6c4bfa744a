#include <tarvo/utility/Banner.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace Tarvo::Utility;

TEST(Banner, EntriesByPriorityWithCentredHeadings) {
    clearBanner();
    addBannerEntry(20, "Second", "text two");
    addBannerEntry(0, "First", "text one");
    std::ostringstream out;
    printBanner(out);
    clearBanner();

    std::istringstream lines(out.str());
    std::string heading1, text1, heading2, text2, close1, notice, close2, empty;
    std::getline(lines, heading1);
    std::getline(lines, text1);
    std::getline(lines, heading2);
    std::getline(lines, text2);
    std::getline(lines, close1);
    std::getline(lines, notice);
    std::getline(lines, close2);
    std::getline(lines, empty);

    // 72 - 5 = 67 columns around "First": 33 + 1 on the left, 34 + 1 on the right.
    EXPECT_EQ(heading1, " * " + std::string(34, '*') + " First " + std::string(35, '*'));
    EXPECT_EQ(text1, " * text one");
    EXPECT_EQ(heading2, " * " + std::string(34, '*') + " Second " + std::string(34, '*'));
    EXPECT_EQ(text2, " * text two");
    EXPECT_EQ(heading1.size(), close1.size());
    EXPECT_EQ(heading2.size(), close1.size());
    EXPECT_EQ(close1, " * " + std::string(76, '*'));
    EXPECT_EQ(notice.substr(0, 3), " * ");
    EXPECT_LE(notice.size(), close1.size());
    EXPECT_EQ(close2, close1);
    EXPECT_TRUE(empty.empty());
    EXPECT_TRUE(lines.peek() == std::char_traits<char>::eof());
}
