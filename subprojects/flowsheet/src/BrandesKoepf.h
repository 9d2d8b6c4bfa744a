#ifndef TARVO_FLOWSHEET_BRANDESKOEPF_H
#define TARVO_FLOWSHEET_BRANDESKOEPF_H

#include <tarvo/flowsheet/Layout.h>

#include <functional>
#include <map>
#include <utility>
#include <vector>

// Positions along the columns by the method of Brandes and Köpf ("Fast and Simple Horizontal Coordinate
// Assignment", Graph Drawing 2001, LNCS 2265). Columns stand for its layers, and a position in a column for
// its horizontal coordinate.
//
// Four times, for each direction of walking the columns and of walking each column, vertices are aligned
// in blocks with a median neighbour, and blocks are packed as close as the separation allows. Where the
// method aligns centres, here the members of a block are offset against each other so that the lines that
// join them are level: vertices have sizes, and lines meet units at different heights. The shifts between
// classes of blocks are solved as a system of difference constraints, since the single pass of the original
// can leave two classes overlapping.
class BrandesKoepf {
public:
    // How far below the top of its vertex a line meets it.
    using LineOffset = std::function<double(const Layout::Stop&)>;

    // The pieces between neighbouring columns are those that align; others are left alone.
    BrandesKoepf(const std::vector<std::vector<Layout::Vertex*>>& layers, const std::vector<Layout::Piece*>& pieces,
                 const Layout::Settings& settings, LineOffset lineOffset);
    // Sets y of every vertex, with the top of the drawing at 0.
    void run();

private:
    struct Link {
        Layout::Vertex* other;
        Layout::Piece* piece;
    };

    void markConflicts_();
    void alignBlocks_(bool rightToLeft, bool bottomUp);
    void offsetWithinBlocks_();
    void compact_(bool bottomUp, std::size_t pass);
    void placeBlock_(Layout::Vertex* v, bool bottomUp);
    // The least distance from the block of `before` to that of `after`, its neighbour in the walk.
    double separation_(const Layout::Vertex* before, const Layout::Vertex* after, bool bottomUp) const;
    Layout::Vertex* before_(const Layout::Vertex* v, bool bottomUp) const;
    void combine_();

    const std::vector<std::vector<Layout::Vertex*>>& layers_;
    const Layout::Settings& settings_;
    LineOffset lineOffset_;
    // Neighbours in the column to the left and in that to the right, top to bottom.
    std::map<const Layout::Vertex*, std::vector<Link>> left_, right_;
    // Vertices that follow each other in a column while their blocks belong to different classes.
    std::vector<std::pair<Layout::Vertex*, Layout::Vertex*>> classBorders_;
};

#endif
