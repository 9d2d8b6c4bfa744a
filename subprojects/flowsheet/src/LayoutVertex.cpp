#include <tarvo/flowsheet/LayoutDummyVertex.h>
#include <tarvo/flowsheet/LayoutNormalVertex.h>
#include <tarvo/flowsheet/LayoutTerminalVertex.h>

#include <algorithm>
#include <cassert>

namespace {
// Below a stream's tag, the room that keeps its line off the letters that reach below the baseline.
constexpr double lineClearance = 0.2;
} // namespace

double Layout::NormalVertex::width() const {
    if (ports[VertexBase::south] == 0) return std::max(labelWidth(), icon_.width);
    return std::max(icon_.width, icon_.width + 2.0 * (labelWidth() + labelGap_() - firstSouthLine_()));
}

double Layout::NormalVertex::firstSouthLine_() const { return edgeShift(VertexBase::south, 0); }

double Layout::NormalVertex::labelCentre() const {
    if (ports[VertexBase::south] == 0) return x + 0.5 * width();
    return iconX() + firstSouthLine_() - labelGap_() - 0.5 * labelWidth();
}

// Room under the icon for an arrow head that meets the south side, and below it the tag.
double Layout::NormalVertex::height() const {
    const double arrow = ports[VertexBase::south] > 0 ? settings_.arrowHeadLength + settings_.arrowHeadMargin : 0.0;
    return icon_.height + settings_.textHeight + arrow;
}

double Layout::NormalVertex::portCoordinate(VertexBase::PortLocation location) const {
    switch (location) {
    case VertexBase::north:
        return y;
    case VertexBase::south:
        return y + icon_.height;
    case VertexBase::west:
        return x + 0.5 * (width() - icon_.width);
    case VertexBase::east:
        return x + width() - 0.5 * (width() - icon_.width);
    }
    assert(!"unknown port location");
    return 0.0;
}

double Layout::NormalVertex::edgeShift(VertexBase::PortLocation location, std::size_t number) const {
    const std::size_t count = ports[location];
    assert(number < count);
    const double side = location == VertexBase::north || location == VertexBase::south ? icon_.width : icon_.height;
    return side * (number + 0.5) / count;
}

double Layout::TerminalVertex::portCoordinate(VertexBase::PortLocation location) const {
    assert(location == VertexBase::east || location == VertexBase::west);
    (void)location;
    return y;
}

double Layout::TerminalVertex::edgeShift(VertexBase::PortLocation, std::size_t) const {
    assert(!"edgeShift shouldn't be called on a TerminalVertex");
    return 0.0;
}

double Layout::DummyVertex::edgeShift(VertexBase::PortLocation, std::size_t) const {
    assert(!"edgeShift shouldn't be called on a DummyVertex");
    return 0.0;
}

double Layout::LongEdgeDummy::portCoordinate(VertexBase::PortLocation location) const {
    assert(location == VertexBase::east || location == VertexBase::west);
    (void)location;
    return y;
}

double Layout::EdgeLabelDummy::height() const { return (1.0 + lineClearance) * settings_.textHeight; }

double Layout::EdgeLabelDummy::portCoordinate(VertexBase::PortLocation location) const {
    assert(location == VertexBase::east || location == VertexBase::west);
    (void)location;
    return y + height();
}
