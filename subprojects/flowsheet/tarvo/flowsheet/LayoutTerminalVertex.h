#ifndef TARVO_FLOWSHEET_LAYOUTTERMINALVERTEX_H
#define TARVO_FLOWSHEET_LAYOUTTERMINALVERTEX_H

#include <tarvo/flowsheet/LayoutVertex.h>

// An end of the graph, drawn as nothing: feeds start at the left border, products end at the right one,
// each at the height of the vertex at its other end.
class Layout::TerminalVertex : public Layout::Vertex {
public:
    double width() const override { return 0.0; }
    double height() const override { return 0.0; }
    double portCoordinate(VertexBase::PortLocation location) const override;
    double edgeShift(VertexBase::PortLocation location, std::size_t number) const override;
};

// The source of all feeds; always in the first column.
class Layout::SourceVertex : public Layout::TerminalVertex {
public:
    std::string name() const override { return "SourceVertex"; }
};

// The destination of all products; alone in the last column.
class Layout::SinkVertex : public Layout::TerminalVertex {
public:
    std::string name() const override { return "SinkVertex"; }
};

#endif
