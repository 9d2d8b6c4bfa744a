#include <tarvo/value/CompactUnits.h>

#include <gtest/gtest.h>

namespace {
const UnitArray joule(0, 0, 0, 2, 0, 1, 0, -2, 0);
const UnitArray second(0, 0, 0, 0, 0, 0, 0, 1, 0);
const UnitArray price(0, 0, 0, -2, 0, -1, 0, 2, 1); // €/J: every sign and the last lane
} // namespace

TEST(CompactUnits, PackingRoundTripsEveryLane) {
    for (const UnitArray& u : {joule, second, price, UnitArray(), UnitArray(-64, 63, -1, 1, 0, -63, 5, -7, 63)})
        EXPECT_EQ(CompactUnits(u).unpack(), u) << u.technicalText();
    EXPECT_TRUE(CompactUnits().dimensionless());
    EXPECT_EQ(CompactUnits(UnitArray()), CompactUnits());
}

TEST(CompactUnits, SumsAndDifferencesAreLaneWise) {
    const CompactUnits j(joule), s(second), p(price);
    EXPECT_EQ((j + s).unpack(), UnitArray(0, 0, 0, 2, 0, 1, 0, -1, 0));
    EXPECT_EQ((j - s).unpack(), UnitArray(0, 0, 0, 2, 0, 1, 0, -3, 0));
    EXPECT_EQ((p + j).unpack(), UnitArray(0, 0, 0, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ((-p).unpack(), UnitArray(0, 0, 0, 2, 0, 1, 0, -2, -1));
    EXPECT_TRUE((j - j).dimensionless());
}

TEST(CompactUnits, InvalidIsContagiousAndOutOfRangeIsInvalid) {
    const CompactUnits invalid = CompactUnits::invalidUnits();
    EXPECT_TRUE((invalid + CompactUnits(joule)).invalid());
    EXPECT_TRUE((CompactUnits(joule) - invalid).invalid());
    EXPECT_TRUE((-invalid).invalid());
    EXPECT_EQ(invalid.unpack(), UnitArray(invalidUnitExponent));
    EXPECT_TRUE(CompactUnits(UnitArray(invalidUnitExponent)).invalid());
    EXPECT_TRUE(CompactUnits(UnitArray(0, 0, 0, 64, 0, 0, 0, 0, 0)).invalid());
    EXPECT_TRUE(CompactUnits(UnitArray(0, 0, 0, 0, 0, 0, 0, 0, -65)).invalid());
    EXPECT_FALSE(invalid.dimensionless());
}

TEST(CompactUnits, RootsDivideExponents) {
    CompactUnits area(UnitArray(0, 0, 0, 2, 0, 0, 0, -4, 0));
    ASSERT_TRUE(area.halve());
    EXPECT_EQ(area.unpack(), UnitArray(0, 0, 0, 1, 0, 0, 0, -2, 0));
    CompactUnits odd(UnitArray(0, 0, 0, 1, 0, 0, 0, 0, 0));
    EXPECT_FALSE(odd.halve());
    // The last exponent is not checked and truncates towards zero.
    CompactUnits money(UnitArray(0, 0, 0, 2, 0, 0, 0, 0, -1));
    ASSERT_TRUE(money.halve());
    EXPECT_EQ(money.unpack(), UnitArray(0, 0, 0, 1, 0, 0, 0, 0, 0));
    CompactUnits volume(UnitArray(0, 0, 0, 3, 0, 0, 0, -6, 0));
    ASSERT_TRUE(volume.divide(3));
    EXPECT_EQ(volume.unpack(), UnitArray(0, 0, 0, 1, 0, 0, 0, -2, 0));
    CompactUnits invalid = CompactUnits::invalidUnits();
    EXPECT_FALSE(invalid.halve());
    EXPECT_FALSE(invalid.divide(3));
}
