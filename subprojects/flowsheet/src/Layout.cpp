#include "BrandesKoepf.h"

#include <tarvo/core/EdgeBase.h>
#include <tarvo/flowsheet/Graph.h>
#include <tarvo/flowsheet/Layout.h>
#include <tarvo/flowsheet/LayoutDummyVertex.h>
#include <tarvo/flowsheet/LayoutNormalVertex.h>
#include <tarvo/flowsheet/LayoutTerminalVertex.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <boost/graph/topological_sort.hpp>

#include <algorithm>
#include <cassert>
#include <iterator>
#include <map>

namespace {

constexpr int verbosityFile = -2;

bool isUnit(const Layout::Vertex* v) { return dynamic_cast<const Layout::NormalVertex*>(v) != nullptr; }

} // namespace

template <typename V, typename... Args> V* Layout::make_(Args&&... args) {
    vertices_.push_back(std::make_unique<V>(std::forward<Args>(args)...));
    return static_cast<V*>(vertices_.back().get());
}

Layout::Layout(const Graph& graph) {
    const Graph::AdjacencyList& g = graph.adjacency();
    std::vector<Vertex*> of(boost::num_vertices(g));
    for (auto [v, end] = boost::vertices(g); v != end; ++v) {
        const VertexBase& unit = *g[*v].vertex;
        TARVO_LOG(3) << "Looking at: " << g[*v].tag << " type = " << unit.type();
        if (g[*v].tag == "source")
            of[*v] = make_<SourceVertex>();
        else if (g[*v].tag == "sink")
            of[*v] = make_<SinkVertex>();
        else
            of[*v] = make_<NormalVertex>(unit, unit.icon(), settings_);
    }
    for (auto [e, end] = boost::edges(g); e != end; ++e) {
        TARVO_LOG(3) << "Looking at edge: " << g[*e].tag;
        EdgeBase* stream = g[*e].edge;
        const Graph::GraphVertex from = boost::source(*e, g), to = boost::target(*e, g);
        const std::string connection = stream->fullTag();
        const Piece piece{{of[from], g[from].vertex->locationFromEdge(connection)},
                          {of[to], g[to].vertex->locationFromEdge(connection)}};
        edges_.push_back(Edge{stream, g[*e].tag, false, {piece}});
    }
}

Layout::~Layout() = default;

bool Layout::markReversed(const std::string& tag) {
    assert(!run_);
    for (Edge& edge : edges_) {
        if (edge.tag != tag) continue;
        Piece& piece = edge.pieces.front();
        // A recycle runs between units; turned round, an end of the graph would leave its column.
        assert(isUnit(piece.from.vertex) && isUnit(piece.to.vertex));
        if (!edge.reversed) std::swap(piece.from, piece.to);
        edge.reversed = true;
        return true;
    }
    return false;
}

bool Layout::closeCut(const std::string& cut, const std::string& copy) {
    assert(!run_);
    const auto tagged = [this](const std::string& tag) {
        return std::find_if(edges_.begin(), edges_.end(), [&](const Edge& e) { return e.tag == tag; });
    };
    const auto into = tagged(cut);
    const auto from = tagged(copy);
    if (into == edges_.end() || from == edges_.end()) return false;
    into->pieces.front().to = from->pieces.front().to;
    edges_.erase(from);
    return markReversed(cut);
}

void Layout::setTextHeight(double te) {
    assert(te > 0.0);
    settings_.textHeight = te;
}

void Layout::setArrowHeadLength(double ahl) {
    assert(ahl > 0.0);
    settings_.arrowHeadLength = ahl;
}

void Layout::setArrowHeadHeight(double ahh) {
    assert(ahh > 0.0);
    settings_.arrowHeadHeight = ahh;
}

void Layout::setVerticalMinimumVertexSeparation(double vmvs) {
    assert(vmvs > 0.0);
    settings_.verticalMinimumVertexSeparation = vmvs;
}

void Layout::setArrowHeadMargin(double ahm) {
    assert(ahm > 0.0);
    settings_.arrowHeadMargin = ahm;
}

void Layout::setMinimumColumnSpacing(double mcs) {
    assert(mcs > 0.0);
    settings_.minimumColumnSpacing = mcs;
}

void Layout::setSpacingVerticalSegments(double svs) {
    assert(svs > 0.0);
    settings_.spacingVerticalSegments = svs;
}

void Layout::setPadding(double p) {
    assert(p > 0.0);
    settings_.padding = p;
}

void Layout::printFlowsheet(const Graph& graph, const std::vector<std::pair<std::string, std::string>>& cuts,
                            std::ostream& out, bool tiny, bool raster) {
    TARVO_LOG_STATIC(3) << "Instantiating Layout";
    Layout layout(graph);
    for (const auto& [cut, copy] : cuts) layout.closeCut(cut, copy);
    TARVO_LOG_STATIC(3) << "Setting options";
    // Flowsheets are drawn tighter than the defaults, with gray pads that show where lines cross, and from the
    // narrowest alignment, which keeps straight runs straight.
    layout.setVerticalMinimumVertexSeparation(10.0);
    layout.setMinimumColumnSpacing(20.0);
    layout.setSpacingVerticalSegments(10.0);
    layout.setPadding(20.0);
    layout.setBackground(true);
    layout.setBalanced(false);
    TARVO_LOG_STATIC(3) << "Performing actual layout";
    layout.calculateEdgeLines();
    TARVO_LOG_STATIC(3) << "Printing to SVG";
    if (tiny)
        layout.printSvgTiny(out, raster);
    else
        layout.printSvg(out, raster);
}

void Layout::calculateEdgeLines() {
    assert(!run_);
    run_ = true;
    assignLayers_();
    splitLongEdges_();
    numberPorts_();
    addPortDummies_();
    std::vector<Piece*> pieces;
    for (Edge& edge : edges_)
        for (Piece& piece : edge.pieces) pieces.push_back(&piece);
    BrandesKoepf(layers_, pieces, settings_, [this](const Stop& stop) { return lineOffset_(stop); }).run();
    placeEdgeEnds_();
    orderVerticalSegments_();
    placeColumns_();
    TARVO_LOG(3) << layers_.size() << " columns, " << vertices_.size() << " vertices";
}

// Columns by the longest path from the source, which stands in column 0 and the sink alone in the last one.
void Layout::assignLayers_() {
    const std::size_t n = vertices_.size();
    if (n == 0) return;
    std::map<const Vertex*, std::size_t> index;
    for (std::size_t i = 0; i < n; ++i) index[vertices_[i].get()] = i;
    boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS> dag(n);
    for (const Edge& edge : edges_)
        boost::add_edge(index[edge.pieces.front().from.vertex], index[edge.pieces.front().to.vertex], dag);
    std::vector<std::size_t> order;
    try {
        boost::topological_sort(dag, std::back_inserter(order));
    } catch (const boost::not_a_dag&) {
        throw ErrorRunTime(TARVO_FUNCTION, "the drawing has a closed loop: mark one of its streams as reversed");
    }
    std::reverse(order.begin(), order.end());

    for (const auto& v : vertices_) v->layer = dynamic_cast<const SourceVertex*>(v.get()) ? 0 : 1;
    Vertex* sink = nullptr;
    int last = 0;
    for (std::size_t i : order) {
        Vertex* u = vertices_[i].get();
        if (dynamic_cast<SinkVertex*>(u)) {
            sink = u;
            continue;
        }
        last = std::max(last, u->layer);
        for (auto [e, end] = boost::out_edges(i, dag); e != end; ++e) {
            Vertex* v = vertices_[boost::target(*e, dag)].get();
            v->layer = std::max(v->layer, u->layer + 1);
        }
    }
    if (sink) sink->layer = last + 1;
    layers_.assign(last + (sink ? 2 : 1), {});
    for (std::size_t i : order) layers_[vertices_[i]->layer].push_back(vertices_[i].get());
}

void Layout::insertBeside_(const Vertex* unit, Vertex* dummy, bool above) {
    dummy->layer = unit->layer;
    std::vector<Vertex*>& layer = layers_[unit->layer];
    const auto at = std::find(layer.begin(), layer.end(), unit);
    layer.insert(above ? at : at + 1, dummy);
}

// An edge gets a dummy in every column between its ends, and one in the column of an end that it leaves
// against its direction: a line that leaves a unit westwards first turns round it in that column. The
// first dummy carries the edge's label, so that a label stands next to the start of its line.
void Layout::splitLongEdges_() {
    for (Edge& edge : edges_) {
        const Stop from = edge.pieces.front().from, to = edge.pieces.front().to;
        std::vector<Stop> stops{from};
        auto cross = [&](int layer, const Vertex* beside) {
            Vertex* dummy = stops.size() == 1 ? static_cast<Vertex*>(make_<EdgeLabelDummy>(edge.tag, settings_))
                                              : make_<LongEdgeDummy>(edge.tag);
            if (beside) {
                insertBeside_(beside, dummy, false);
            } else {
                dummy->layer = layer;
                layers_[layer].push_back(dummy);
            }
            stops.push_back({dummy, VertexBase::east});
        };
        if (isUnit(from.vertex) && from.location == VertexBase::west) cross(from.vertex->layer, from.vertex);
        for (int layer = from.vertex->layer + 1; layer < to.vertex->layer; ++layer) cross(layer, nullptr);
        if (isUnit(to.vertex) && to.location == VertexBase::east) cross(to.vertex->layer, to.vertex);
        stops.push_back(to);
        if (stops.size() == 2) continue;
        // Lines come into a dummy from the west and leave it eastwards.
        edge.pieces.clear();
        for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
            Stop next = stops[i + 1];
            if (i + 2 < stops.size()) next.location = VertexBase::west;
            edge.pieces.push_back(Piece{stops[i], next});
        }
    }
}

// Each edge takes the next number on the side of each of its two ends; the numbers spread the edges
// along the side.
void Layout::numberPorts_() {
    for (const auto& v : vertices_) v->ports.fill(0);
    for (Edge& edge : edges_) {
        for (Stop* stop : {&edge.pieces.front().from, &edge.pieces.back().to})
            stop->number = stop->vertex->ports[stop->location]++;
    }
}

// A line at a north or south side leaves its unit vertically and turns at a dummy right above or below
// it, in the same column. Later dummies stand nearer to the unit, so that the lines nest.
void Layout::addPortDummies_() {
    auto vertical = [](VertexBase::PortLocation l) { return l == VertexBase::north || l == VertexBase::south; };
    auto opposite = [](VertexBase::PortLocation l) { return l == VertexBase::north ? VertexBase::south : VertexBase::north; };
    auto makeDummy = [this](const Stop& at, const std::string& tag) -> Vertex* {
        Vertex* dummy = at.location == VertexBase::north ? static_cast<Vertex*>(make_<NorthernPortDummy>(tag))
                                                         : make_<SouthernPortDummy>(tag);
        insertBeside_(at.vertex, dummy, at.location == VertexBase::north);
        return dummy;
    };
    for (Edge& edge : edges_) {
        const Stop start = edge.pieces.front().from;
        if (vertical(start.location)) {
            Vertex* dummy = makeDummy(start, edge.tag);
            edge.pieces.front().from = {dummy, VertexBase::east};
            edge.pieces.insert(edge.pieces.begin(), Piece{start, {dummy, opposite(start.location)}});
        }
        const Stop end = edge.pieces.back().to;
        if (vertical(end.location)) {
            Vertex* dummy = makeDummy(end, edge.tag);
            edge.pieces.back().to = {dummy, VertexBase::west};
            edge.pieces.push_back(Piece{{dummy, opposite(end.location)}, end});
        }
    }
}

double Layout::lineOffset_(const Stop& stop) const {
    if (const auto* unit = dynamic_cast<const NormalVertex*>(stop.vertex)) {
        if (stop.location == VertexBase::north) return 0.0;
        if (stop.location == VertexBase::south) return unit->icon().height;
        return unit->edgeShift(stop.location, stop.number);
    }
    return stop.vertex->portCoordinate(stop.location) - stop.vertex->y;
}

double Layout::lineY_(const Stop& stop) const { return stop.vertex->y + lineOffset_(stop); }

double Layout::sideX_(const Stop& stop) const {
    if (const auto* unit = dynamic_cast<const NormalVertex*>(stop.vertex)) {
        if (stop.location == VertexBase::north || stop.location == VertexBase::south)
            return unit->iconX() + unit->edgeShift(stop.location, stop.number);
        return unit->portCoordinate(stop.location);
    }
    return stop.location == VertexBase::east ? stop.vertex->x + stop.vertex->width() : stop.vertex->x;
}
