#ifndef TARVO_FLOWSHEET_LAYOUTDUMMYVERTEX_H
#define TARVO_FLOWSHEET_LAYOUTDUMMYVERTEX_H

#include <tarvo/flowsheet/LayoutVertex.h>

#include <string>
#include <utility>

// A place that an edge's line takes in a column, so that no unit is drawn over it.
class Layout::DummyVertex : public Layout::Vertex {
public:
    double edgeShift(VertexBase::PortLocation location, std::size_t number) const override;
    // The tag of the edge whose line passes here.
    const std::string& edge() const { return edge_; }

protected:
    explicit DummyVertex(std::string edge) : edge_(std::move(edge)) {}

private:
    std::string edge_;
};

// One column's crossing of an edge: a point that the line passes straight.
class Layout::LongEdgeDummy : public Layout::DummyVertex {
public:
    explicit LongEdgeDummy(std::string edge) : DummyVertex(std::move(edge)) {}
    double width() const override { return 0.0; }
    double height() const override { return 0.0; }
    double portCoordinate(VertexBase::PortLocation location) const override;
    std::string name() const override { return "LongEdgeDummy[" + edge() + "]"; }
};

// A crossing that carries the edge's tag: a box of one line of text, along whose bottom the line passes.
class Layout::EdgeLabelDummy : public Layout::DummyVertex {
public:
    EdgeLabelDummy(std::string edge, const Settings& settings) : DummyVertex(std::move(edge)), settings_(settings) {}
    double width() const override { return settings_.textWidth(edge()); }
    double height() const override;
    double portCoordinate(VertexBase::PortLocation location) const override;
    std::string name() const override { return "EdgeLabelDummy[" + edge() + "]"; }

private:
    const Settings& settings_;
};

// The corner where a line that leaves a unit by its north or south side turns towards the next column.
// It stands beside its unit in the same layer, and takes the x of the port.
class Layout::PortDummy : public Layout::DummyVertex {
public:
    double width() const override { return 0.0; }
    double height() const override { return 0.0; }
    double portCoordinate(VertexBase::PortLocation) const override { return y; }

protected:
    using DummyVertex::DummyVertex;
};

class Layout::NorthernPortDummy : public Layout::PortDummy {
public:
    explicit NorthernPortDummy(std::string edge) : PortDummy(std::move(edge)) {}
    std::string name() const override { return "NorthernPortDummy[" + edge() + "]"; }
};

class Layout::SouthernPortDummy : public Layout::PortDummy {
public:
    explicit SouthernPortDummy(std::string edge) : PortDummy(std::move(edge)) {}
    std::string name() const override { return "SouthernPortDummy[" + edge() + "]"; }
};

#endif
