#ifndef TARVO_CORE_ORDERING_H
#define TARVO_CORE_ORDERING_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

// The order in which a study visits the points of a grid of k variables with m[i] points each. A point
// is numbered in the mixed radix of the grid, digit 0 running fastest; each point starts from the
// solution of the one before it, so a walk of small steps converges better.
class Ordering {
public:
    explicit Ordering(const std::vector<int>& m);
    virtual ~Ordering() = default;

    virtual int idFromRound(int round) const = 0;
    // Moves to the following round; gives the id reached.
    virtual int next() = 0;
    virtual int roundFromId(int id) const = 0;
    virtual const char* name() const = 0;
    virtual bool finished() const;
    // The id where the walk begins.
    virtual int start() const { return 0; }
    // The point index of controlled variable i in round r: digit k - 1 - i of the round's id.
    virtual int index(int variable, int round) const;

    int maxRound() const;
    std::vector<int> digits(int id) const;
    int id(const std::vector<int>& digits) const;
    // The largest difference of digits between two points.
    int distance(int a, int b) const;
    int round() const { return round_; }
    // Each round with its id and digits, most significant first.
    void print() const;

protected:
    int k_;
    std::vector<int> m_;
    int round_ = 0;
};

// Round n is point n: digit 0 runs and wraps back.
class OrderingLexicographical : public Ordering {
public:
    using Ordering::Ordering;
    int idFromRound(int round) const override { return round; }
    int next() override { return ++round_; }
    int roundFromId(int id) const override { return id; }
    const char* name() const override { return "lexicographical ordering"; }
};

// The reflected mixed-radix Gray code: from one point to the next exactly one digit moves, by one.
class OrderingReflectedGray : public Ordering {
public:
    explicit OrderingReflectedGray(const std::vector<int>& m);
    int idFromRound(int round) const override;
    int next() override;
    int roundFromId(int id) const override;
    const char* name() const override { return "reflected mixed-radix Gray code"; }
    bool finished() const override { return digits_[k_] != 0; }

private:
    std::vector<int> digits_;     // k digits and a guard that turns non-zero at the end
    std::vector<int> directions_;
};

// Starts in the middle of the grid and spreads out, always to an unvisited point near the last one and
// as near to the start as it can. The whole walk is made at construction.
class OrderingSpiral : public Ordering {
public:
    OrderingSpiral(const std::vector<int>& m, int start);
    int idFromRound(int round) const override;
    int next() override { return idFromRound(++round_ < maxRound() ? round_ : maxRound() - 1); }
    int roundFromId(int id) const override;
    const char* name() const override { return "pseudo-spiral"; }
    int start() const override { return start_; }
    // The middle point of a grid: digits m[i] / 2.
    static int centre(const std::vector<int>& m);

private:
    int start_;
    std::map<int, int> direct_;  // round to id
    std::map<int, int> inverse_; // id to round
    std::set<int> visited_;
};

// "boustrophedon" gives the Gray code, "quasi-spiral" the spiral, anything else the lexicographical order.
std::unique_ptr<Ordering> makeOrdering(const std::string& order, const std::vector<int>& m);

#endif
