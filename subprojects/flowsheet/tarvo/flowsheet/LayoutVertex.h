#ifndef TARVO_FLOWSHEET_LAYOUTVERTEX_H
#define TARVO_FLOWSHEET_LAYOUTVERTEX_H

#include <tarvo/flowsheet/Layout.h>

#include <array>
#include <cstddef>
#include <limits>
#include <string>

// A vertex of a drawing: a box at (x, y), its top left corner, in the column of its layer.
class Layout::Vertex {
public:
    virtual ~Vertex() = default;
    virtual double width() const = 0;
    virtual double height() const = 0;
    // The coordinate of a side: for a unit, x of its east and west sides and y of its north and south
    // sides; for a point-like vertex, the y at which lines pass it.
    virtual double portCoordinate(VertexBase::PortLocation location) const = 0;
    // How far along its side the edge of that number meets a unit.
    virtual double edgeShift(VertexBase::PortLocation location, std::size_t number) const = 0;
    // For logs, as "NormalVertex[MIX]".
    virtual std::string name() const = 0;

    double x = 0.0;
    double y = 0.0;
    int layer = 0;
    std::size_t position = 0; // top to bottom in its layer
    // Edges at north, south, east and west, the order of VertexBase::PortLocation.
    std::array<std::size_t, 4> ports{};

    // The state of the coordinate step: one coordinate per alignment; the block of aligned vertices
    // (root, and the next member in align); the class of blocks placed together (sink) and its shift.
    std::array<double, 4> trial{};
    Vertex* root = this;
    Vertex* align = this;
    Vertex* sink = this;
    double shift = std::numeric_limits<double>::infinity();
    // The offset from the block's top, so that the pieces that join the block are level.
    double innerShift = 0.0;
    // The piece that joins this vertex to the member of its block before it.
    const Piece* joint = nullptr;
};

#endif
