#include <tarvo/core/Ordering.h>

#include <gtest/gtest.h>

namespace {

std::vector<std::pair<int, int>> pairsOfRounds(const Ordering& o) {
    std::vector<std::pair<int, int>> pairs;
    for (int r = 0; r < o.maxRound(); ++r) {
        const auto d = o.digits(o.idFromRound(r));
        pairs.emplace_back(d[0], d[1]);
    }
    return pairs;
}

} // namespace

TEST(Ordering, LexicographicalRunsDigitZeroFastest) {
    const OrderingLexicographical o({3, 2});
    EXPECT_EQ(o.maxRound(), 6);
    EXPECT_EQ(pairsOfRounds(o), (std::vector<std::pair<int, int>>{{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}}));
    EXPECT_EQ(o.name(), std::string("lexicographical ordering"));
    // Variable 0 is the last digit: the list of points comes in reverse order of the variables.
    EXPECT_EQ(o.index(0, 4), 1);
    EXPECT_EQ(o.index(1, 4), 1);
    EXPECT_EQ(o.index(1, 5), 2);
}

TEST(Ordering, GrayCodeMovesOneDigitByOne) {
    OrderingReflectedGray o({3, 2});
    EXPECT_EQ(pairsOfRounds(o), (std::vector<std::pair<int, int>>{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}}));
    // Walking with next() visits the same points and ends after the last.
    for (int r = 1; r < o.maxRound(); ++r) {
        EXPECT_FALSE(o.finished());
        EXPECT_EQ(o.next(), o.idFromRound(r)) << r;
    }
    o.next();
    EXPECT_TRUE(o.finished());
    // Larger grids: every step moves one digit by one.
    const OrderingReflectedGray big({4, 3, 5});
    for (int r = 1; r < big.maxRound(); ++r) EXPECT_EQ(big.distance(big.idFromRound(r - 1), big.idFromRound(r)), 1);
}

TEST(Ordering, SpiralStartsInTheMiddleAndStaysNear) {
    const OrderingSpiral one({5}, OrderingSpiral::centre({5}));
    EXPECT_EQ(one.start(), 2);
    EXPECT_EQ(one.idFromRound(0), 2);
    const std::vector<int> m{5, 5};
    const OrderingSpiral o(m, OrderingSpiral::centre(m));
    EXPECT_EQ(o.start(), 12); // digits (2, 2)
    EXPECT_EQ(o.distance(o.idFromRound(1), o.start()), 1);
    // Small steps: the walk is shorter than the lexicographical one, which jumps back at every wrap.
    const OrderingLexicographical plain(m);
    int spiral = 0, lexicographical = 0;
    for (int r = 1; r < o.maxRound(); ++r) {
        spiral += o.distance(o.idFromRound(r - 1), o.idFromRound(r));
        lexicographical += plain.distance(plain.idFromRound(r - 1), plain.idFromRound(r));
    }
    EXPECT_EQ(lexicographical, 20 + 4 * 4);
    EXPECT_LT(spiral, lexicographical);
}

TEST(Ordering, RoundTripsAndTheSinglePoint) {
    const std::vector<std::vector<int>> grids{{1}, {5}, {3, 2}, {2, 3, 4}, {1, 1, 3}};
    for (const auto& m : grids) {
        for (const char* order : {"lexicographical", "boustrophedon", "quasi-spiral"}) {
            const auto o = makeOrdering(order, m);
            std::set<int> seen;
            for (int r = 0; r < o->maxRound(); ++r) {
                EXPECT_EQ(o->roundFromId(o->idFromRound(r)), r) << order;
                seen.insert(o->idFromRound(r));
            }
            EXPECT_EQ(seen.size(), static_cast<std::size_t>(o->maxRound())) << order; // every point once
        }
    }
    EXPECT_EQ(makeOrdering("x", {1})->maxRound(), 1);
    EXPECT_EQ(std::string(makeOrdering("boustrophedon", {5})->name()), "reflected mixed-radix Gray code");
    EXPECT_EQ(std::string(makeOrdering("quasi-spiral", {5})->name()), "pseudo-spiral");
    // With one variable the Gray code is the lexicographical order.
    const auto gray = makeOrdering("boustrophedon", {5});
    for (int r = 0; r < 5; ++r) EXPECT_EQ(gray->idFromRound(r), r);
}
