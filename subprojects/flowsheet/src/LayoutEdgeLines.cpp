#include <tarvo/core/EdgeBase.h>
#include <tarvo/flowsheet/Layout.h>
#include <tarvo/flowsheet/LayoutDummyVertex.h>
#include <tarvo/flowsheet/LayoutNormalVertex.h>
#include <tarvo/flowsheet/LayoutTerminalVertex.h>
#include <tarvo/flowsheet/VisualRepresentation.h>

#include <algorithm>
#include <cassert>
#include <cmath>

namespace {

// Ends of a piece this close count as level, and the end at a unit moves to make the line straight.
constexpr double levelTolerance = 5.0;
// Points this close count as one, and so do lines.
constexpr double sameLine = 0.001;
// The part of a line of text below its baseline, as a fraction of the font size: about a fifth in the
// common sans-serif faces.
constexpr double descent = 0.2;

bool isUnit(const Layout::Vertex* v) { return dynamic_cast<const Layout::NormalVertex*>(v) != nullptr; }
bool isTerminal(const Layout::Vertex* v) { return dynamic_cast<const Layout::TerminalVertex*>(v) != nullptr; }

// The ends of a vertical segment, each joined by a horizontal line that comes from the column on the left
// or goes to the column on the right.
struct SegmentEnds {
    double left[2];
    std::size_t nLeft = 0;
    double right[2];
    std::size_t nRight = 0;
    double low, high;
};

SegmentEnds endsOf(const Layout::Piece& piece) {
    SegmentEnds ends;
    ends.low = std::min(piece.fromY, piece.toY);
    ends.high = std::max(piece.fromY, piece.toY);
    const bool sameLayer = piece.from.vertex->layer == piece.to.vertex->layer;
    if (!sameLayer) {
        ends.left[ends.nLeft++] = piece.fromY;
        ends.right[ends.nRight++] = piece.toY;
    } else if (piece.from.location == VertexBase::west) { // turns round at the west side of its column
        ends.right[ends.nRight++] = piece.fromY;
        ends.right[ends.nRight++] = piece.toY;
    } else {
        ends.left[ends.nLeft++] = piece.fromY;
        ends.left[ends.nLeft++] = piece.toY;
    }
    return ends;
}

// How often two segments in one gap cross when `a` stands left of `b`: the lines that go right from `a`
// pass `b`, and those that come from the left into `b` pass `a`.
int crossings(const SegmentEnds& a, const SegmentEnds& b) {
    int n = 0;
    for (std::size_t i = 0; i < a.nRight; ++i) n += a.right[i] > b.low && a.right[i] < b.high;
    for (std::size_t i = 0; i < b.nLeft; ++i) n += b.left[i] > a.low && b.left[i] < a.high;
    return n;
}

// The label's baseline, for a line of text whose box starts at `top`.
double baseline(double top, double textHeight) { return top + (1.0 - descent) * textHeight; }

bool same(double a, double b) { return std::fabs(a - b) < sameLine; }

// Drops repeated points and corners that lie on a straight line.
std::vector<VisualRepresentation::Point> corners(const std::vector<VisualRepresentation::Point>& points) {
    std::vector<VisualRepresentation::Point> out;
    for (const auto& p : points) {
        if (!out.empty() && same(out.back().x, p.x) && same(out.back().y, p.y)) continue;
        if (out.size() >= 2) {
            const auto& a = out[out.size() - 2];
            const auto& b = out.back();
            if ((same(a.x, b.x) && same(b.x, p.x)) || (same(a.y, b.y) && same(b.y, p.y))) out.pop_back();
        }
        out.push_back(p);
    }
    return out;
}

// Moves `end` towards `towards` by `length`.
void cutBack(VisualRepresentation::Point& end, const VisualRepresentation::Point& towards, double length) {
    const double dx = towards.x - end.x, dy = towards.y - end.y;
    const double d = std::hypot(dx, dy);
    end.x += length * dx / d;
    end.y += length * dy / d;
}

} // namespace

// Where each piece meets its two vertices along the column. An end of the graph takes the height of the
// other end, so that feeds and products run straight.
void Layout::placeEdgeEnds_() {
    for (Edge& edge : edges_)
        for (Piece& piece : edge.pieces) {
            piece.fromY = lineY_(piece.from);
            piece.toY = lineY_(piece.to);
            if (isTerminal(piece.from.vertex)) piece.fromY = piece.toY;
            if (isTerminal(piece.to.vertex)) piece.toY = piece.fromY;
            if (piece.from.vertex->layer == piece.to.vertex->layer) continue;
            const double difference = std::fabs(piece.fromY - piece.toY);
            if (isUnit(piece.to.vertex) && difference <= levelTolerance)
                piece.toY = piece.fromY;
            else if (isUnit(piece.from.vertex) && difference <= levelTolerance)
                piece.fromY = piece.toY;
            else if (difference < sameLine) // two dummies level but for rounding
                piece.toY = piece.fromY;
        }
}

// A piece between columns whose ends are not level gets a vertical segment in the gap between them; a
// piece that turns round a unit gets one in the gap on that side. Edges with both ends at west use the gap
// before the column, the others the gap after it. In each gap, neighbouring segments change places while
// that saves a crossing: every change lowers the count, so it ends.
void Layout::orderVerticalSegments_() {
    gaps_.assign(layers_.size(), {});
    for (Edge& edge : edges_)
        for (Piece& piece : edge.pieces) {
            const int layer = piece.from.vertex->layer;
            const bool west = piece.from.location == VertexBase::west && piece.to.location == VertexBase::west;
            const bool east = piece.from.location == VertexBase::east && piece.to.location == VertexBase::east;
            if (piece.to.vertex->layer != layer)
                piece.gap = piece.fromY == piece.toY ? -1 : layer + 1;
            else if (west)
                piece.gap = layer;
            else if (east)
                piece.gap = layer + 1;
            else
                piece.gap = -1; // leaves by the north or south side, vertically beside its port
            if (piece.gap < 0) continue;
            assert(piece.gap >= 1 && piece.gap < static_cast<int>(gaps_.size()));
            gaps_[piece.gap].push_back(&piece);
        }
    for (auto& gap : gaps_) {
        std::vector<SegmentEnds> ends;
        for (const Piece* piece : gap) ends.push_back(endsOf(*piece));
        for (bool swapped = true; swapped;) {
            swapped = false;
            for (std::size_t i = 0; i + 1 < gap.size(); ++i)
                if (crossings(ends[i + 1], ends[i]) < crossings(ends[i], ends[i + 1])) {
                    std::swap(gap[i], gap[i + 1]);
                    std::swap(ends[i], ends[i + 1]);
                    swapped = true;
                }
        }
    }
}

// Columns as wide as their widest vertex, gaps as wide as their vertical segments and two arrow heads need;
// the segments spread evenly over the middle of each gap.
void Layout::placeColumns_() {
    const std::size_t n = layers_.size();
    columnStart_.assign(n, 0.0);
    columnWidth_.assign(n, 0.0);
    const double arrow = settings_.arrowHeadLength + settings_.arrowHeadMargin;
    for (std::size_t k = 0; k < n; ++k) {
        for (const Vertex* v : layers_[k]) columnWidth_[k] = std::max(columnWidth_[k], v->width());
        if (k == 0) continue;
        const double gap = std::max(settings_.minimumColumnSpacing,
                                    settings_.spacingVerticalSegments * gaps_[k].size() + 2.0 * arrow);
        columnStart_[k] = columnStart_[k - 1] + columnWidth_[k - 1] + gap;
    }
    for (std::size_t k = 0; k < n; ++k)
        for (Vertex* v : layers_[k]) v->x = columnStart_[k] + 0.5 * (columnWidth_[k] - v->width());
    // A port dummy stands where its line leaves the unit beside it; the next column may hold a unit too.
    for (Edge& edge : edges_)
        for (const Piece& piece : edge.pieces) {
            if (piece.from.vertex->layer != piece.to.vertex->layer) continue;
            for (const auto& [dummy, unit] : {std::pair{piece.from, piece.to}, std::pair{piece.to, piece.from}})
                if (dynamic_cast<const PortDummy*>(dummy.vertex) && isUnit(unit.vertex)) dummy.vertex->x = sideX_(unit);
        }
    for (std::size_t k = 1; k < n; ++k) {
        const double a = columnStart_[k - 1] + columnWidth_[k - 1] + arrow;
        const double b = columnStart_[k] - arrow;
        for (std::size_t i = 0; i < gaps_[k].size(); ++i)
            gaps_[k][i]->segmentX = a + (i + 0.5) * (b - a) / gaps_[k].size();
    }
}

void Layout::fillVisualRepresentation(VisualRepresentation& vr, bool raster) const {
    assert(run_);
    vr = VisualRepresentation();
    if (!layers_.empty()) vr.width = columnStart_.back() + columnWidth_.back();
    const double th = settings_.textHeight;
    for (const auto& layer : layers_)
        for (const Vertex* v : layer) {
            vr.height = std::max(vr.height, v->y + v->height());
            const auto* unit = dynamic_cast<const NormalVertex*>(v);
            if (!unit) continue;
            const Icon& icon = unit->icon();
            const std::string& tag = unit->unit().tag();
            vr.vertices.push_back({{unit->iconX(), unit->y},
                                   icon.width,
                                   icon.height,
                                   icon.name + (raster ? ".png" : ".svg"),
                                   unit->unit().id(),
                                   unit->unit().type(),
                                   {{{unit->labelCentre(), baseline(unit->y + unit->height() - th, th)}, tag}}});
        }
    for (const Edge& edge : edges_) {
        std::vector<VisualRepresentation::Point> points;
        for (const Piece& piece : edge.pieces) {
            points.push_back({sideX_(piece.from), piece.fromY});
            if (piece.gap >= 0) {
                points.push_back({piece.segmentX, piece.fromY});
                points.push_back({piece.segmentX, piece.toY});
            }
            points.push_back({sideX_(piece.to), piece.toY});
            if (const auto* label = dynamic_cast<const EdgeLabelDummy*>(piece.to.vertex))
                vr.labels.push_back({{{label->x + 0.5 * label->width(), baseline(label->y, th)}, edge.tag}, vr.edges.size()});
        }
        points = corners(points);
        assert(points.size() >= 2);
        for (std::size_t i = 0; i + 1 < points.size(); ++i)
            if (!same(points[i].x, points[i + 1].x) && !same(points[i].y, points[i + 1].y))
                assert(!"non-orthogonal segment !");
        if (edge.reversed)
            cutBack(points.front(), points[1], settings_.arrowHeadLength);
        else
            cutBack(points.back(), points[points.size() - 2], settings_.arrowHeadLength);
        const VisualRepresentation::Style style{edge.stream->colour(), edge.stream->lineWidth()};
        auto known = vr.styles.left.find(style);
        if (known == vr.styles.left.end()) known = vr.styles.left.insert({style, vr.styles.size()}).first;
        vr.edges.push_back({points, edge.reversed, edge.stream->id(), edge.stream->type(), known->second});
    }
    for (std::size_t k = 0; k < layers_.size(); ++k) vr.columns.push_back({columnStart_[k], columnWidth_[k]});
}
