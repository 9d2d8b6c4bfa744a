#ifndef TARVO_CORE_FLOWPATTERN_H
#define TARVO_CORE_FLOWPATTERN_H

#include <tarvo/utility/SmartEnumerator.h>

#include <cassert>

// Flow directions on a grid of Nx_ by Ny_ cells, for models discretised on such a grid; i runs from left
// to right, j from top to bottom.
class FlowPattern {
public:
    using Direction = Tarvo::Utility::Direction;

    FlowPattern(int Nx, int Ny) : Nx_(Nx), Ny_(Ny) {}
    virtual ~FlowPattern() = default;
    virtual int inletCells() const = 0;
    virtual int outletCells() const = 0;
    virtual Direction operator()(int i, int j) const = 0;
    virtual bool isInlet(int i, int j) const = 0;
    virtual bool isOutlet(int i, int j) const = 0;

    // The cell that (i, j) flows into.
    int nextX(int i, int j) const { return translateX_((*this)(i, j), i); }
    int nextY(int i, int j) const { return translateY_((*this)(i, j), j); }
    int Nx() const { return Nx_; }
    int Ny() const { return Ny_; }

protected:
    int translateX_(Direction d, int i) const {
        const int next = d == Direction::left ? i - 1 : d == Direction::right ? i + 1 : i;
        assert(next >= 0 && next < Nx_);
        return next;
    }
    int translateY_(Direction d, int j) const {
        const int next = d == Direction::up ? j - 1 : d == Direction::down ? j + 1 : j;
        assert(next >= 0 && next < Ny_);
        return next;
    }
    void checkCell(int i, int j) const {
        assert(i >= 0);
        assert(j >= 0);
        assert(i < Nx_);
        assert(j < Ny_);
        (void)i;
        (void)j;
    }

    int Nx_;
    int Ny_;
};

// One direction for every cell: the cells of one edge are inlets, those of the opposite edge outlets.
template <int NX, int NY> class FlowPatternSimple : public FlowPattern {
public:
    explicit FlowPatternSimple(Direction d) : FlowPattern(NX, NY), direction_(d) {}
    int inletCells() const override { return vertical() ? NX : NY; }
    int outletCells() const override { return inletCells(); }
    Direction operator()(int i, int j) const override {
        checkCell(i, j);
        return direction_;
    }
    bool isInlet(int i, int j) const override {
        switch (direction_) {
        case Direction::up: return j == NY - 1;
        case Direction::down: return j == 0;
        case Direction::left: return i == NX - 1;
        default: return i == 0;
        }
    }
    bool isOutlet(int i, int j) const override {
        switch (direction_) {
        case Direction::up: return j == 0;
        case Direction::down: return j == NY - 1;
        case Direction::left: return i == 0;
        default: return i == NX - 1;
        }
    }

private:
    bool vertical() const { return direction_ == Direction::up || direction_ == Direction::down; }
    Direction direction_;
};

template <int NX, int NY> struct FlowPatternUp : FlowPatternSimple<NX, NY> {
    FlowPatternUp() : FlowPatternSimple<NX, NY>(FlowPattern::Direction::up) {}
};
template <int NX, int NY> struct FlowPatternDown : FlowPatternSimple<NX, NY> {
    FlowPatternDown() : FlowPatternSimple<NX, NY>(FlowPattern::Direction::down) {}
};
template <int NX, int NY> struct FlowPatternLeft : FlowPatternSimple<NX, NY> {
    FlowPatternLeft() : FlowPatternSimple<NX, NY>(FlowPattern::Direction::left) {}
};
template <int NX, int NY> struct FlowPatternRight : FlowPatternSimple<NX, NY> {
    FlowPatternRight() : FlowPatternSimple<NX, NY>(FlowPattern::Direction::right) {}
};

#endif
