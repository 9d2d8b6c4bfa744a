#include <tarvo/utility/CachedCast.h>

#include <gtest/gtest.h>

#include <vector>

using Tarvo::Utility::cachedCast;

// Hierarchies in which the target sits at different distances from the pointer cast: a virtual base, bases
// before it, and a base held twice, whose two copies are two different places to cast from.
namespace {
struct Root {
    virtual ~Root() = default;
    int root = 0;
};
struct Leaf {
    virtual ~Leaf() = default;
    int leaf = 0;
};
struct Padding {
    virtual ~Padding() = default;
    double pad[3] = {};
};
struct MorePadding {
    virtual ~MorePadding() = default;
    double pad[5] = {};
};
struct Target : virtual Root {
    int target = 1;
};
struct Plain : Root {};
struct Bare : Target {};
struct Shifted : Padding, Target {};
struct Deep : MorePadding, Shifted {};
struct Left : Leaf {};
struct Right : Padding, Leaf {};
struct Twice : Left, Right, Target {};

// Every cast against dynamic_cast itself, twice over, so that each type is met after every other.
template <typename From> void expectAsDynamicCast(const std::vector<From*>& pointers) {
    for (int pass = 0; pass < 2; ++pass)
        for (From* p : pointers) {
            EXPECT_EQ(cachedCast<Target*>(p), dynamic_cast<Target*>(p));
            EXPECT_EQ(cachedCast<const Padding*>(static_cast<const From*>(p)),
                      dynamic_cast<const Padding*>(static_cast<const From*>(p)));
        }
}
} // namespace

TEST(CachedCast, FindsWhatDynamicCastFindsWhateverTypeCameBefore) {
    Plain plain;
    Shifted shifted;
    Deep deep;
    Twice twice;
    Left left;
    Bare bare;
    // One type more than the cache keeps, so that each entry is taken over by another type.
    expectAsDynamicCast<Root>({&plain, &shifted, &deep, &twice, &bare, &plain});
    // The two Leafs of one object lead to its one Target, from either copy.
    Leaf* first = static_cast<Left*>(&twice);
    Leaf* second = static_cast<Right*>(&twice);
    expectAsDynamicCast<Leaf>({first, second, &left, second, first});
    EXPECT_EQ(cachedCast<Target*>(second), static_cast<Target*>(&twice));
    EXPECT_EQ(cachedCast<Target*>(static_cast<Root*>(nullptr)), nullptr);
}
