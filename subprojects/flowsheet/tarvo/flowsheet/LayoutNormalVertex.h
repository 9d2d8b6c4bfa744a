#ifndef TARVO_FLOWSHEET_LAYOUTNORMALVERTEX_H
#define TARVO_FLOWSHEET_LAYOUTNORMALVERTEX_H

#include <tarvo/flowsheet/LayoutVertex.h>
#include <tarvo/persistency/Icon.h>

// A unit: its icon, centred at the top of the box, and its tag below. Lines meet it on the sides of the
// icon, spread evenly along each side. Lines that leave the south side run down through the box, so then
// the tag stands left of them, and the box is widened to hold it there with the icon still centred.
class Layout::NormalVertex : public Layout::Vertex {
public:
    NormalVertex(const VertexBase& unit, const Icon& icon, const Settings& settings)
        : unit_(unit), icon_(icon), settings_(settings) {}

    double width() const override;
    double height() const override;
    double portCoordinate(VertexBase::PortLocation location) const override;
    double edgeShift(VertexBase::PortLocation location, std::size_t number) const override;
    std::string name() const override { return "NormalVertex[" + unit_.tag() + "]"; }

    const VertexBase& unit() const { return unit_; }
    const Icon& icon() const { return icon_; }
    double labelWidth() const { return settings_.textWidth(unit_.tag()); }
    // The x of the middle of the tag.
    double labelCentre() const;
    // The left side of the icon.
    double iconX() const { return x + 0.5 * (width() - icon_.width); }

private:
    // From the icon's left side to the first line on its south side.
    double firstSouthLine_() const;
    double labelGap_() const { return 0.25 * settings_.textHeight; }

    const VertexBase& unit_;
    Icon icon_;
    const Settings& settings_;
};

#endif
