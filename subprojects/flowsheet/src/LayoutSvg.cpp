#include <tarvo/core/SvgDocument.h>
#include <tarvo/flowsheet/Layout.h>
#include <tarvo/flowsheet/LayoutVertex.h>
#include <tarvo/flowsheet/VisualRepresentation.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <cmath>
#include <ostream>

namespace {

constexpr int verbosityFile = -2;
// The level from which drawings carry their frames.
constexpr int debugLevel = 4;
constexpr double degreesPerRadian = 180.0 / 3.14159265358979323846;

using Point = VisualRepresentation::Point;
using Tarvo::Core::Svg::escaped;
using Tarvo::Core::Svg::number;

std::string pathData(const std::vector<Point>& points) {
    std::string d;
    for (std::size_t i = 0; i < points.size(); ++i)
        d += (i == 0 ? "M " : " L ") + number(points[i].x) + " " + number(points[i].y);
    return d;
}

// An icon at its place in the drawing.
void image(std::ostream& out, const VisualRepresentation::Vertex& v) {
    Tarvo::Core::Svg::image(out, v.position.x, v.position.y, v.width, v.height, v.picture);
}

// A text at `label`, with the attributes given (a class, or the presentation attributes of the tiny profile).
void text(std::ostream& out, const VisualRepresentation::Label& label, const std::string& attributes) {
    out << "<text " << attributes << " x=\"" << number(label.position.x) << "\" y=\"" << number(label.position.y)
        << "\">" << escaped(label.text) << "</text>\n";
}

const VisualRepresentation::Style& styleOf(const VisualRepresentation& vr, std::size_t index) {
    const auto p = vr.styles.right.find(index);
    assert(p != vr.styles.right.end());
    return p->second;
}

// The angle in degrees of the last piece of a line, pointing at the end where the arrow head goes.
double arrowAngle(const VisualRepresentation::Edge& edge) {
    const std::vector<Point>& p = edge.points;
    const Point& tip = edge.backward ? p.front() : p.back();
    const Point& tail = edge.backward ? p[1] : p[p.size() - 2];
    return std::atan2(tip.y - tail.y, tip.x - tail.x) * degreesPerRadian;
}

} // namespace

bool Layout::debugDrawing_() const { return Tarvo::Utility::logPasses(verbosityFile + verbosityInstance(), debugLevel); }

void Layout::logLayers_() const {
    for (std::size_t k = 0; k < layers_.size(); ++k) {
        TARVO_LOG(4) << "Layer " << k;
        for (const Vertex* v : layers_[k])
            TARVO_LOG(4) << "  Vertex " << v->name() << " x = " << v->x << " y = " << v->y << " width = " << v->width()
                         << " height = " << v->height();
    }
}

void Layout::printSvg(std::ostream& out, bool raster) const {
    assert(run_);
    logLayers_();
    VisualRepresentation vr;
    fillVisualRepresentation(vr, raster);
    const bool debug = debugDrawing_();
    const char* pad = settings_.background ? "gray" : "white";
    Tarvo::Core::Svg::open(out, vr.width, vr.height, settings_.padding, false);

    out << "<style type=\"text/css\"><![CDATA[\n"
        << ".edge-pad { fill: none; stroke-width: 4; stroke: " << pad << "; }\n"
        << ".edge { fill: none; }\n"
        << ".backward { marker-start: url(#arrowhead-backward); }\n"
        << ".forward { marker-end: url(#arrowhead-forward); }\n"
        << ".icon-border { stroke: black; stroke-width: 0.5; fill: none; }\n"
        << ".label { text-anchor: middle; fill: black; font-size: " << number(settings_.textHeight) << "px; }\n"
        << ".label-pad { text-anchor: middle; fill: " << pad << "; stroke: " << pad
        << "; font-size: " << number(settings_.textHeight) << "px; filter: url(#dilate); }\n";
    for (const auto& entry : vr.styles.right)
        out << ".style" << entry.first << " { stroke: " << entry.second.colour
            << "; stroke-width: " << number(entry.second.width) << "; }\n";
    out << "]]></style>\n";

    // The heads take the colour of the lines only in newer profiles; black reads on every line colour.
    const std::string l = number(settings_.arrowHeadLength), h = number(settings_.arrowHeadHeight),
                      m = number(0.5 * settings_.arrowHeadHeight);
    out << "<defs>\n"
        << "<marker id=\"arrowhead-forward\" refX=\"0\" refY=\"" << m << "\" markerWidth=\"" << l << "\" markerHeight=\""
        << h << "\" markerUnits=\"userSpaceOnUse\" orient=\"auto\"><path d=\"M 0 0 L " << l << " " << m << " L 0 " << h
        << " Z\"/></marker>\n"
        << "<marker id=\"arrowhead-backward\" refX=\"" << l << "\" refY=\"" << m << "\" markerWidth=\"" << l
        << "\" markerHeight=\"" << h << "\" markerUnits=\"userSpaceOnUse\" orient=\"auto\"><path d=\"M " << l << " 0 L 0 "
        << m << " L " << l << " " << h << " Z\"/></marker>\n"
        << "<filter id=\"dilate\"><feMorphology operator=\"dilate\" radius=\"2\"/></filter>\n";
    for (std::size_t i = 0; i < vr.edges.size(); ++i)
        out << "<path id=\"edge" << i << "\" d=\"" << pathData(vr.edges[i].points) << "\"/>\n";
    out << "</defs>\n";

    const std::string width = number(vr.width), height = number(vr.height);
    if (debug) {
        const double p = settings_.padding;
        out << "<rect x=\"" << number(-p) << "\" y=\"" << number(-p) << "\" width=\"" << number(vr.width + 2.0 * p)
            << "\" height=\"" << number(vr.height + 2.0 * p) << "\" fill=\"#e1ffff\"/>\n"
            << "<rect x=\"0\" y=\"0\" width=\"" << width << "\" height=\"" << height << "\" fill=\"#b2ffff\"/>\n"
            << "<line x1=\"0\" y1=\"0\" x2=\"" << width << "\" y2=\"0\" stroke=\"black\"/>\n"
            << "<line x1=\"0\" y1=\"0\" x2=\"0\" y2=\"" << height << "\" stroke=\"black\"/>\n";
    }
    // Catches the pointer over the whole drawing, also between the lines.
    out << "<rect x=\"0\" y=\"0\" width=\"" << width << "\" height=\"" << height << "\" fill=\"white\" fill-opacity=\"0\"/>\n";

    for (std::size_t i = 0; i < vr.edges.size(); ++i) {
        const VisualRepresentation::Edge& edge = vr.edges[i];
        out << "<g data-id=\"" << edge.id << "\" data-type=\"" << escaped(edge.type) << "\">"
            << "<use xlink:href=\"#edge" << i << "\" class=\"edge-pad\"/>"
            << "<use xlink:href=\"#edge" << i << "\" class=\"edge " << (edge.backward ? "backward" : "forward")
            << " style" << edge.style << "\"/></g>\n";
    }
    for (const VisualRepresentation::Vertex& v : vr.vertices) {
        out << "<g data-id=\"" << v.id << "\" data-type=\"" << escaped(v.type) << "\">\n";
        if (debug)
            out << "<rect class=\"icon-border\" x=\"" << number(v.position.x) << "\" y=\"" << number(v.position.y)
                << "\" width=\"" << number(v.width) << "\" height=\"" << number(v.height) << "\"/>\n";
        image(out, v);
        for (const auto& label : v.labels) {
            text(out, label, "class=\"label-pad\"");
            text(out, label, "class=\"label\"");
        }
        out << "</g>\n";
    }
    // Stream tags last, so that their pads keep the lines off them.
    for (const VisualRepresentation::EdgeLabel& label : vr.labels) {
        text(out, label.label, "class=\"label-pad\"");
        text(out, label.label, "class=\"label\"");
    }
    if (debug)
        for (const VisualRepresentation::Column& column : vr.columns)
            out << "<rect x=\"" << number(column.start) << "\" y=\"0\" width=\"" << number(column.width) << "\" height=\""
                << height << "\" fill=\"none\" stroke=\"red\"/>\n";
    out << "</svg>\n";
}

void Layout::printSvgTiny(std::ostream& out, bool raster) const {
    assert(run_);
    logLayers_();
    VisualRepresentation vr;
    fillVisualRepresentation(vr, raster);
    Tarvo::Core::Svg::open(out, vr.width, vr.height, settings_.padding, true);
    const double h = settings_.arrowHeadHeight;
    out << "<defs>\n<path id=\"arrow\" stroke-width=\"0\" d=\"M 0 0 L 0 " << number(h) << " L "
        << number(settings_.arrowHeadLength) << " " << number(0.5 * h) << " Z\" />\n</defs>\n";
    for (std::size_t i = 0; i < vr.edges.size(); ++i) {
        const VisualRepresentation::Edge& edge = vr.edges[i];
        const VisualRepresentation::Style& style = styleOf(vr, edge.style);
        const Point& at = edge.backward ? edge.points.front() : edge.points.back();
        out << "<g data-id=\"" << edge.id << "\" data-type=\"" << escaped(edge.type) << "\">"
            << "<path id=\"a" << i << "\" fill=\"none\" stroke-width=\"" << number(style.width) << "\" stroke=\""
            << style.colour << "\" d=\"" << pathData(edge.points) << "\"/>"
            << "<use xlink:href=\"#arrow\" fill=\"" << style.colour << "\" transform=\"translate(" << number(at.x) << " "
            << number(at.y) << ") rotate(" << number(arrowAngle(edge)) << ") translate(0 " << number(-0.5 * h)
            << ")\"/></g>\n";
    }
    const std::string textAttributes =
        "text-anchor=\"middle\" fill=\"black\" font-size=\"" + number(settings_.textHeight) + "\"";
    for (const VisualRepresentation::Vertex& v : vr.vertices) {
        out << "<g data-id=\"" << v.id << "\" data-type=\"" << escaped(v.type) << "\">\n";
        image(out, v);
        for (const auto& label : v.labels) text(out, label, textAttributes);
        out << "</g>\n";
    }
    for (const VisualRepresentation::EdgeLabel& label : vr.labels) text(out, label.label, textAttributes);
    out << "</svg>\n";
}
