#ifndef TARVO_CORE_FLOWPATTERNASCII_H
#define TARVO_CORE_FLOWPATTERNASCII_H

#include <tarvo/core/FlowPattern.h>

#include <array>
#include <string>

// Directions drawn as NY rows of NX characters: "^" up, "v" down, ">" right, "<" left. A cell into which
// no other cell flows is an inlet; a cell whose flow leaves the grid is an outlet.
template <int NX, int NY> class FlowPatternAscii : public FlowPattern {
public:
    explicit FlowPatternAscii(const std::array<std::string, NY>& pattern) : FlowPattern(NX, NY) {
        for (int j = 0; j < NY; ++j) {
            assert(pattern[j].size() == NX);
            for (int i = 0; i < NX; ++i) {
                directions_[j][i] = direction(pattern[j][i]);
                inlet_[j][i] = true;
                outlet_[j][i] = false;
            }
        }
        for (int j = 0; j < NY; ++j)
            for (int i = 0; i < NX; ++i) {
                const Direction d = directions_[j][i];
                const int ti = d == Direction::left ? i - 1 : d == Direction::right ? i + 1 : i;
                const int tj = d == Direction::up ? j - 1 : d == Direction::down ? j + 1 : j;
                if (ti < 0 || ti >= NX || tj < 0 || tj >= NY)
                    outlet_[j][i] = true;
                else
                    inlet_[tj][ti] = false;
            }
    }
    int inletCells() const override { return count(inlet_); }
    int outletCells() const override { return count(outlet_); }
    Direction operator()(int i, int j) const override {
        checkCell(i, j);
        return directions_[j][i];
    }
    bool isInlet(int i, int j) const override { return inlet_[j][i]; }
    bool isOutlet(int i, int j) const override { return outlet_[j][i]; }

private:
    static Direction direction(char c) {
        switch (c) {
        case '^': return Direction::up;
        case 'v': return Direction::down;
        case '>': return Direction::right;
        case '<': return Direction::left;
        }
        assert(!"a flow pattern holds only ^ v > <");
        return Direction::null;
    }
    static int count(const std::array<std::array<bool, NX>, NY>& cells) {
        int n = 0;
        for (const auto& row : cells)
            for (bool b : row) n += b;
        return n;
    }

    std::array<std::array<Direction, NX>, NY> directions_;
    std::array<std::array<bool, NX>, NY> inlet_;
    std::array<std::array<bool, NX>, NY> outlet_;
};

// Spirals of channels that turn right: the patterns of the cross-flow modules.
struct FlowPatternSpiralRight66 : FlowPatternAscii<6, 6> {
    FlowPatternSpiralRight66()
        : FlowPatternAscii<6, 6>({">v^>v^", "^v^^v^", "^v^^v^", "^v^^v^", "^v^^v^", "^>^^>^"}) {}
};
struct FlowPatternSpiralRight96 : FlowPatternAscii<9, 6> {
    FlowPatternSpiralRight96()
        : FlowPatternAscii<9, 6>({">v^>v^>v^", "^v^^v^^v^", "^v^^v^^v^", "^v^^v^^v^", "^v^^v^^v^", "^>^^>^^v^"}) {}
};

#endif
