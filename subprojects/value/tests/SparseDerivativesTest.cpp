#include <tarvo/value/SparseDerivatives.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using List = SparseDerivatives<double>;

struct Destroy {
    void operator()(List* list) const { List::destroy(list); }
};
using Owned = std::unique_ptr<List, Destroy>;

std::vector<int> directions(const List& list) {
    return std::vector<int>(list.directions(), list.directions() + list.size());
}

} // namespace

// Insertions out of order, past every regrowth of the block, the pooled sizes and beyond them, keep the list
// sorted and every value.
TEST(SparseDerivatives, SetKeepsTheListSortedAcrossRegrowth) {
    constexpr int n = 1500;
    List* raw = nullptr;
    for (int k = 0; k < n; ++k) {
        const int direction = (k * 17) % n; // visits 0..n-1 in scrambled order, as 17 and n are coprime
        raw = List::set(raw, direction, direction + 0.5);
    }
    raw = List::set(raw, 17, -1.0); // overwrite, no new entry
    Owned list(raw);
    ASSERT_EQ(list->size(), n);
    std::vector<int> expected;
    for (int i = 0; i < n; ++i) expected.push_back(i);
    EXPECT_EQ(directions(*list), expected);
    EXPECT_EQ(list->derivative(17), -1.0);
    EXPECT_EQ(list->derivative(n - 1), n - 0.5);
    EXPECT_EQ(list->derivative(n), 0.0);
    EXPECT_EQ(list->derivative(-3), 0.0);
}

// Blocks given back serve later lists of their size, which hold their own entries only.
TEST(SparseDerivatives, ABlockGivenBackServesALaterListWithNoneOfItsEntries) {
    for (int round = 0; round < 3; ++round) {
        std::vector<Owned> lists;
        for (int size = 1; size <= 64; size *= 2) {
            List* raw = nullptr;
            for (int i = 0; i < size; ++i) raw = List::set(raw, 100 * round + i, 1.0 + i);
            lists.emplace_back(raw);
        }
        lists.clear();
        Owned small(List::set(List::set(nullptr, 5, 2.0), 3, 1.0));
        Owned merged(List::combine(1.0, small.get(), 1.0, nullptr));
        EXPECT_EQ(directions(*small), (std::vector<int>{3, 5}));
        EXPECT_EQ(directions(*merged), (std::vector<int>{3, 5}));
        EXPECT_EQ(merged->derivative(5), 2.0);
    }
}

TEST(SparseDerivatives, CombineMergesByDirectionAndCopyIsIndependent) {
    Owned x(List::set(List::set(List::set(nullptr, 7, 1.0), 2, 2.0), 9, 3.0)); // 2, 7, 9
    Owned y(List::set(List::set(nullptr, 7, 10.0), 4, 20.0));                  // 4, 7
    Owned sum(List::combine(2.0, x.get(), -1.0, y.get()));
    EXPECT_EQ(directions(*sum), (std::vector<int>{2, 4, 7, 9}));
    EXPECT_EQ(sum->derivative(2), 4.0);
    EXPECT_EQ(sum->derivative(4), -20.0);
    EXPECT_EQ(sum->derivative(7), -8.0);
    EXPECT_EQ(sum->derivative(9), 6.0);

    Owned onlyY(List::combine(2.0, nullptr, 3.0, y.get()));
    EXPECT_EQ(directions(*onlyY), (std::vector<int>{4, 7}));
    EXPECT_EQ(onlyY->derivative(7), 30.0);
    Owned onlyX(List::combine(-1.0, x.get(), 3.0, nullptr));
    EXPECT_EQ(directions(*onlyX), (std::vector<int>{2, 7, 9}));
    EXPECT_EQ(onlyX->derivative(9), -3.0);

    // The same directions, entry by entry; the same count of other directions, merged.
    Owned twice(List::combine(1.0, x.get(), 0.5, onlyX.get()));
    EXPECT_EQ(directions(*twice), (std::vector<int>{2, 7, 9}));
    EXPECT_EQ(twice->derivative(2), 2.0 - 1.0);
    EXPECT_EQ(twice->derivative(9), 3.0 - 1.5);
    Owned shifted(List::set(List::set(List::set(nullptr, 2, 1.0), 8, 1.0), 9, 1.0)); // 2, 8, 9
    Owned other(List::combine(1.0, x.get(), 1.0, shifted.get()));
    EXPECT_EQ(directions(*other), (std::vector<int>{2, 7, 8, 9}));
    EXPECT_EQ(other->derivative(7), 1.0);
    EXPECT_EQ(other->derivative(8), 1.0);
    EXPECT_EQ(other->derivative(9), 4.0);

    Owned copy(List::copy(*x));
    copy.reset(List::set(copy.release(), 3, 5.0));
    EXPECT_EQ(copy->size(), 4);
    EXPECT_EQ(x->size(), 3);
    EXPECT_EQ(x->derivative(3), 0.0);
}
