#include "LayoutGraph.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/flowsheet/Layout.h>
#include <tarvo/flowsheet/LayoutVertex.h>
#include <tarvo/flowsheet/VisualRepresentation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace {

using Point = VisualRepresentation::Point;
constexpr double eps = 1e-6;

struct Box {
    double left, top, right, bottom;
    std::string what;
};

// Whether an axis-parallel segment enters the inside of a box, half a unit in from its border, so that lines
// may end on an icon's side.
bool enters(const Point& a, const Point& b, const Box& box) {
    const double e = 0.5;
    return std::max(a.x, b.x) > box.left + e && std::min(a.x, b.x) < box.right - e &&
           std::max(a.y, b.y) > box.top + e && std::min(a.y, b.y) < box.bottom - e;
}

bool overlap(const Box& a, const Box& b) {
    return a.left < b.right - eps && b.left < a.right - eps && a.top < b.bottom - eps && b.top < a.bottom - eps;
}

// The box that a label's letters take: centred on its position, 0.75 text heights a character, with 0.2 of
// the height below the baseline.
Box textBox(const VisualRepresentation::Label& label, double textHeight) {
    const double half = 0.5 * 0.75 * textHeight * label.text.size();
    return {label.position.x - half, label.position.y - 0.8 * textHeight, label.position.x + half,
            label.position.y + 0.2 * textHeight, "label " + label.text};
}

// The way an arrow head points into a side of a unit.
Point into(VertexBase::PortLocation side) {
    switch (side) {
    case VertexBase::north: return {0.0, 1.0};
    case VertexBase::south: return {0.0, -1.0};
    case VertexBase::east: return {-1.0, 0.0};
    case VertexBase::west: return {1.0, 0.0};
    }
    return {0.0, 0.0};
}

class LayoutTest : public ::testing::Test {
protected:
    void SetUp() override { Tarvo::Core::startKernel(); }
    void TearDown() override {
        layout_.reset();
        graph_.reset();
        Tarvo::Core::stopKernel();
    }

    LayoutGraph& graph() {
        if (!graph_) graph_ = std::make_unique<LayoutGraph>();
        return *graph_;
    }
    Layout& draw(const std::vector<std::string>& reversed = {}, bool balanced = true,
                 const std::vector<std::pair<std::string, std::string>>& cuts = {}) {
        layout_ = std::make_unique<Layout>(graph().graph());
        for (const std::string& tag : reversed) EXPECT_TRUE(layout_->markReversed(tag)) << tag;
        for (const auto& [cut, copy] : cuts) EXPECT_TRUE(layout_->closeCut(cut, copy)) << cut;
        vr_ = VisualRepresentation();
        layout_->setBalanced(balanced);
        layout_->calculateEdgeLines();
        layout_->fillVisualRepresentation(vr_, false);
        return *layout_;
    }
    const Layout::Vertex* vertex(const std::string& name) const {
        for (const auto& layer : layout_->layers())
            for (const Layout::Vertex* v : layer)
                if (v->name() == name) return v;
        ADD_FAILURE() << "no vertex " << name;
        return nullptr;
    }
    std::size_t index(const std::string& tag) const {
        const auto& edges = layout_->edges();
        for (std::size_t i = 0; i < edges.size(); ++i)
            if (edges[i].tag == tag) return i;
        throw std::runtime_error("no edge " + tag);
    }
    const VisualRepresentation::Edge& line(const std::string& tag) const { return vr_.edges.at(index(tag)); }

    // What every drawing must keep, whatever its graph.
    void expectWellDrawn() const {
        const Layout& layout = *layout_;
        const Layout::Settings& s = layout.settings();
        const auto& layers = layout.layers();
        ASSERT_FALSE(layers.empty());
        // The ends of the graph: the source alone in the first column, the sink alone in the last.
        ASSERT_EQ(layers.front().size(), 1u);
        EXPECT_EQ(layers.front().front()->name(), "SourceVertex");
        ASSERT_EQ(layers.back().size(), 1u);
        EXPECT_EQ(layers.back().front()->name(), "SinkVertex");

        for (std::size_t k = 0; k < layers.size(); ++k) {
            if (k > 0) {
                EXPECT_GE(layout.columnStart(k),
                          layout.columnStart(k - 1) + layout.columnWidth(k - 1) + s.minimumColumnSpacing - eps);
            }
            std::vector<const Layout::Vertex*> column(layers[k].begin(), layers[k].end());
            for (const Layout::Vertex* v : column) {
                EXPECT_EQ(v->layer, static_cast<int>(k)) << v->name();
                EXPECT_GE(v->x, layout.columnStart(k) - eps) << v->name();
                EXPECT_LE(v->x + v->width(), layout.columnStart(k) + layout.columnWidth(k) + eps) << v->name();
                EXPECT_GE(v->y, -eps) << v->name();
            }
            // Boxes in a column keep apart; a line through a dummy keeps as far from the next one.
            std::sort(column.begin(), column.end(), [](auto a, auto b) { return a->y < b->y; });
            for (std::size_t i = 1; i < column.size(); ++i)
                EXPECT_GE(column[i]->y, column[i - 1]->y + column[i - 1]->height() + s.verticalMinimumVertexSeparation - eps)
                    << column[i - 1]->name() << " and " << column[i]->name() << " in column " << k;
        }

        std::vector<Box> icons, texts;
        for (const auto& v : vr_.vertices) {
            icons.push_back({v.position.x, v.position.y, v.position.x + v.width, v.position.y + v.height, "icon " + v.picture});
            for (const auto& label : v.labels) texts.push_back(textBox(label, s.textHeight));
        }
        for (const auto& label : vr_.labels) texts.push_back(textBox(label.label, s.textHeight));
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = i + 1; j < texts.size(); ++j)
                EXPECT_FALSE(overlap(texts[i], texts[j])) << texts[i].what << " on " << texts[j].what;
            for (const Box& icon : icons) EXPECT_FALSE(overlap(texts[i], icon)) << texts[i].what << " on " << icon.what;
        }

        ASSERT_EQ(vr_.edges.size(), layout.edges().size());
        for (std::size_t i = 0; i < vr_.edges.size(); ++i) {
            const VisualRepresentation::Edge& edge = vr_.edges[i];
            const std::string& tag = layout.edges()[i].tag;
            const std::vector<Point>& p = edge.points;
            ASSERT_GE(p.size(), 2u) << tag;
            for (std::size_t j = 0; j + 1 < p.size(); ++j) {
                const bool vertical = std::fabs(p[j].x - p[j + 1].x) < eps, horizontal = std::fabs(p[j].y - p[j + 1].y) < eps;
                EXPECT_TRUE(vertical != horizontal) << tag << ": segment " << j << " is slanted or empty";
                if (j + 2 < p.size()) {
                    const bool nextVertical = std::fabs(p[j + 1].x - p[j + 2].x) < eps;
                    EXPECT_NE(vertical, nextVertical) << tag << ": corner " << j + 1 << " is no corner";
                }
                for (const Box& icon : icons) EXPECT_FALSE(enters(p[j], p[j + 1], icon)) << tag << " through " << icon.what;
                for (const Box& text : texts) EXPECT_FALSE(enters(p[j], p[j + 1], text)) << tag << " through " << text.what;
            }
            for (const Point& q : p) {
                EXPECT_TRUE(q.x >= -eps && q.x <= vr_.width + eps && q.y >= -eps && q.y <= vr_.height + eps)
                    << tag << " leaves the drawing at " << q.x << ", " << q.y;
            }
            // The arrow head points into the side where the stream arrives, on a piece at least as long as it.
            const Layout::Edge& drawn = layout.edges()[i];
            const VertexBase::PortLocation side = edge.backward ? drawn.pieces.front().from.location : drawn.pieces.back().to.location;
            const Point& tip = edge.backward ? p.front() : p.back();
            const Point& tail = edge.backward ? p[1] : p[p.size() - 2];
            const Point way = into(side);
            EXPECT_GT((tip.x - tail.x) * way.x + (tip.y - tail.y) * way.y, 0.0) << tag << ": arrow head points away";
        }
    }

    std::unique_ptr<LayoutGraph> graph_;
    std::unique_ptr<Layout> layout_;
    VisualRepresentation vr_;
};

} // namespace

TEST_F(LayoutTest, LineOfUnitsRunsStraightFromSourceToSink) {
    for (const char* tag : {"A", "B", "C"}) graph().unit(tag, "unit", 40.0, 30.0);
    graph().stream("S1", "source", "out1", "A", "in1");
    graph().stream("S2", "A", "out1", "B", "in1");
    graph().stream("S3", "B", "out1", "C", "in1");
    graph().stream("S4", "C", "out1", "sink", "in1");
    const Layout& layout = draw();
    expectWellDrawn();
    ASSERT_EQ(layout.layers().size(), 5u);
    EXPECT_EQ(vertex("NormalVertex[A]")->layer, 1);
    EXPECT_EQ(vertex("NormalVertex[B]")->layer, 2);
    EXPECT_EQ(vertex("NormalVertex[C]")->layer, 3);
    for (const auto& edge : vr_.edges) {
        ASSERT_EQ(edge.points.size(), 2u);
        EXPECT_DOUBLE_EQ(edge.points.front().y, edge.points.back().y);
        EXPECT_FALSE(edge.backward);
    }
    // Lines meet the icons half way down their sides; the feed starts at the left border.
    EXPECT_DOUBLE_EQ(line("S2").points.front().y, vertex("NormalVertex[A]")->y + 15.0);
    EXPECT_DOUBLE_EQ(line("S1").points.front().x, 0.0);
    EXPECT_DOUBLE_EQ(vr_.width, layout.columnStart(4));
}

TEST_F(LayoutTest, SinkStandsAloneInTheLastColumnWhateverThePathLengths) {
    for (const char* tag : {"A", "B", "C"}) graph().unit(tag, "unit", 40.0, 30.0);
    graph().stream("F1", "source", "out1", "A", "in1");
    graph().stream("F2", "source", "out2", "C", "in1");
    graph().stream("S2", "A", "out1", "B", "in1");
    graph().stream("P1", "B", "out1", "sink", "in1");
    graph().stream("P2", "C", "out1", "sink", "in2"); // C stands in column 1, its product spans three columns
    const Layout& layout = draw();
    expectWellDrawn();
    EXPECT_EQ(vertex("NormalVertex[C]")->layer, 1);
    EXPECT_EQ(vertex("SinkVertex")->layer, 3);
    EXPECT_EQ(layout.layers().size(), 4u);
    EXPECT_EQ(vertex("EdgeLabelDummy[P2]")->layer, 2);
}

TEST_F(LayoutTest, TwoStreamsBetweenTheSameUnitsSpreadAlongTheSide) {
    graph().unit("A", "unit", 40.0, 40.0);
    graph().unit("B", "unit", 40.0, 40.0);
    graph().stream("F", "source", "out1", "A", "in1");
    graph().stream("X", "A", "out1", "B", "in1");
    graph().stream("Y", "A", "out2", "B", "in2");
    graph().stream("P", "B", "out1", "sink", "in1");
    draw();
    expectWellDrawn();
    const double top = vertex("NormalVertex[A]")->y;
    EXPECT_DOUBLE_EQ(line("X").points.front().y, top + 40.0 * 0.5 / 2);
    EXPECT_DOUBLE_EQ(line("Y").points.front().y, top + 40.0 * 1.5 / 2);
    EXPECT_DOUBLE_EQ(line("X").points.back().y, vertex("NormalVertex[B]")->y + 10.0);
}

TEST_F(LayoutTest, LongStreamCrossesEveryColumnBetweenOnADummyThatCarriesItsTag) {
    for (const char* tag : {"A", "B", "C", "D"}) graph().unit(tag, "unit", 40.0, 30.0);
    graph().stream("F", "source", "out1", "A", "in1");
    graph().stream("AB", "A", "out1", "B", "in1");
    graph().stream("BC", "B", "out1", "C", "in1");
    graph().stream("CD", "C", "out1", "D", "in1");
    graph().stream("BYPASS", "A", "out2", "D", "in2");
    graph().stream("P", "D", "out1", "sink", "in1");
    const Layout& layout = draw();
    expectWellDrawn();
    EXPECT_EQ(vertex("NormalVertex[D]")->layer, 4);
    EXPECT_EQ(vertex("EdgeLabelDummy[BYPASS]")->layer, 2);
    EXPECT_EQ(vertex("LongEdgeDummy[BYPASS]")->layer, 3);
    EXPECT_EQ(layout.edges()[index("BYPASS")].pieces.size(), 3u);
    ASSERT_EQ(vr_.labels.size(), 1u);
    EXPECT_EQ(vr_.labels.front().label.text, "BYPASS");
    EXPECT_EQ(vr_.labels.front().edge, index("BYPASS"));
}

TEST_F(LayoutTest, RecycleIsDrawnBackwardWithItsHeadAtTheStart) {
    graph().unit("MIX", "mixer", 40.0, 40.0);
    graph().unit("HEAT", "exchanger", 50.0, 30.0);
    graph().unit("SPLIT", "splitter", 40.0, 40.0);
    graph().stream("FEED", "source", "out1", "MIX", "in1");
    graph().stream("S1", "MIX", "out1", "HEAT", "in1");
    graph().stream("S2", "HEAT", "out1", "SPLIT", "in1");
    graph().stream("PROD", "SPLIT", "out1", "sink", "in1");
    graph().stream("RECY", "SPLIT", "out2", "MIX", "in2");
    Layout layout(graph().graph());
    EXPECT_FALSE(layout.markReversed("NOSUCH"));
    draw({"RECY"});
    expectWellDrawn();
    EXPECT_LT(vertex("NormalVertex[MIX]")->layer, vertex("NormalVertex[SPLIT]")->layer);
    const auto& recycle = line("RECY");
    EXPECT_TRUE(recycle.backward);
    // The head stands at the mixer's inlet, the line's other end at the splitter's outlet.
    const auto* mix = vertex("NormalVertex[MIX]");
    EXPECT_DOUBLE_EQ(recycle.points.front().x, mix->portCoordinate(VertexBase::west) - 16.0);
    EXPECT_DOUBLE_EQ(recycle.points.back().x, vertex("NormalVertex[SPLIT]")->portCoordinate(VertexBase::east));
    for (const char* tag : {"FEED", "S1", "S2", "PROD"}) EXPECT_FALSE(line(tag).backward) << tag;
}

// A flowsheet opens a recycle into a cut that ends in the sink and a copy that starts at the source; closed
// again, it must be drawn just as the recycle itself.
TEST_F(LayoutTest, ClosedCutIsDrawnAsTheRecycleItOpens) {
    const auto plant = [this](bool cut) {
        graph_ = std::make_unique<LayoutGraph>();
        graph().unit("MIX", "mixer", 40.0, 40.0);
        graph().unit("SPLIT", "splitter", 40.0, 40.0);
        graph().stream("FEED", "source", "out1", "MIX", "in1");
        graph().stream("S1", "MIX", "out1", "SPLIT", "in1");
        graph().stream("PROD", "SPLIT", "out1", "sink", "in1");
        if (cut) {
            graph().stream("RECY", "SPLIT", "out2", "sink", "in2");
            graph().stream("RECYbis", "source", "out2", "MIX", "in2");
        } else {
            graph().stream("RECY", "SPLIT", "out2", "MIX", "in2");
        }
    };
    plant(false);
    draw({"RECY"});
    const VisualRepresentation recycle = vr_;

    plant(true);
    Layout unknown(graph().graph());
    EXPECT_FALSE(unknown.closeCut("RECY", "NOSUCH"));
    EXPECT_FALSE(unknown.closeCut("NOSUCH", "RECYbis"));
    draw({}, true, {{"RECY", "RECYbis"}});
    expectWellDrawn();
    EXPECT_THROW(index("RECYbis"), std::runtime_error);
    EXPECT_TRUE(line("RECY").backward);
    ASSERT_EQ(vr_.edges.size(), recycle.edges.size());
    for (std::size_t i = 0; i < vr_.edges.size(); ++i) {
        ASSERT_EQ(vr_.edges[i].points.size(), recycle.edges[i].points.size()) << i;
        for (std::size_t k = 0; k < vr_.edges[i].points.size(); ++k) {
            EXPECT_DOUBLE_EQ(vr_.edges[i].points[k].x, recycle.edges[i].points[k].x) << i << " " << k;
            EXPECT_DOUBLE_EQ(vr_.edges[i].points[k].y, recycle.edges[i].points[k].y) << i << " " << k;
        }
    }
    EXPECT_DOUBLE_EQ(vr_.width, recycle.width);
    EXPECT_DOUBLE_EQ(vr_.height, recycle.height);
}

TEST_F(LayoutTest, NorthAndSouthPortsLeaveAndEnterVertically) {
    graph().unit("COLUMN", "column", 40.0, 120.0, {{"out1", VertexBase::north}, {"out2", VertexBase::south}});
    graph().unit("REBOIL", "reboiler", 40.0, 40.0);
    graph().unit("DRUM", "drum", 40.0, 40.0, {{"in1", VertexBase::south}});
    graph().stream("FEED", "source", "out1", "COLUMN", "in1");
    graph().stream("TOP", "COLUMN", "out1", "DRUM", "in1");
    graph().stream("BOTTOM", "COLUMN", "out2", "REBOIL", "in1");
    graph().stream("LIQ", "REBOIL", "out1", "sink", "in1");
    graph().stream("GAS", "DRUM", "out1", "sink", "in2");
    draw();
    expectWellDrawn();
    const auto* column = vertex("NormalVertex[COLUMN]");
    EXPECT_EQ(vertex("NorthernPortDummy[TOP]")->layer, column->layer);
    EXPECT_EQ(vertex("SouthernPortDummy[BOTTOM]")->layer, column->layer);
    EXPECT_EQ(vertex("SouthernPortDummy[TOP]")->layer, vertex("NormalVertex[DRUM]")->layer);
    const auto& top = line("TOP").points;
    EXPECT_DOUBLE_EQ(top.front().y, column->y);
    EXPECT_DOUBLE_EQ(top[0].x, top[1].x);
    EXPECT_LT(top[1].y, top[0].y); // up first
    const auto& bottom = line("BOTTOM").points;
    EXPECT_DOUBLE_EQ(bottom.front().y, column->y + 120.0);
    EXPECT_GT(bottom[1].y, bottom[0].y); // down first
    // The drum is fed from below: its head points up into the south side, below the icon.
    const auto* drum = vertex("NormalVertex[DRUM]");
    EXPECT_DOUBLE_EQ(top.back().y, drum->y + 40.0 + 16.0);
}

TEST_F(LayoutTest, BothCombinationsOfTheAlignmentsKeepRandomFlowsheetsTidy) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        graph_ = std::make_unique<LayoutGraph>();
        const int n = 2 + pick(11);
        std::vector<std::string> tags;
        std::vector<int> ins(n, 0), outs(n, 0);
        for (int i = 0; i < n; ++i) {
            tags.push_back("U" + std::string(pick(6), 'W') + std::to_string(i));
            std::map<std::string, VertexBase::PortLocation> sides;
            if (pick(4) == 0) sides["out1"] = VertexBase::north;
            if (pick(4) == 0) sides["out2"] = VertexBase::south;
            if (pick(6) == 0) sides["in2"] = VertexBase::south;
            graph().unit(tags.back(), "unit", 20.0 + pick(40), 20.0 + pick(60), sides);
        }
        int feeds = 0, products = 0, streams = 0;
        auto stream = [&](int from, int to) {
            const std::string tag = "S" + std::to_string(streams++);
            const std::string fromTag = from < 0 ? "source" : tags[from], toTag = to < 0 ? "sink" : tags[to];
            const std::string fromPort = "out" + std::to_string(from < 0 ? ++feeds : ++outs[from]);
            const std::string toPort = "in" + std::to_string(to < 0 ? ++products : ++ins[to]);
            graph().stream(tag, fromTag, fromPort, toTag, toPort);
            return tag;
        };
        for (int i = 0; i < n; ++i) stream(i == 0 || pick(3) == 0 ? -1 : pick(i), i);
        for (int extra = pick(n); extra > 0; --extra) {
            const int a = pick(n), b = pick(n);
            if (a != b) stream(std::min(a, b), std::max(a, b));
        }
        std::vector<std::string> recycles;
        for (int r = pick(3); r > 0; --r) {
            const int a = pick(n), b = pick(n);
            if (a != b) recycles.push_back(stream(std::max(a, b), std::min(a, b)));
        }
        for (int i = 0; i < n; ++i)
            if (outs[i] == 0 || pick(4) == 0) stream(i, -1);
        for (bool balanced : {true, false}) {
            SCOPED_TRACE("seed " + std::to_string(seed) + (balanced ? ", balanced" : ", narrowest"));
            draw(recycles, balanced);
            expectWellDrawn();
            if (HasFailure()) return;
        }
    }
}

TEST_F(LayoutTest, GraphWithoutVerticesGivesAnEmptyDrawing) {
    Graph empty;
    Layout layout(empty);
    layout.calculateEdgeLines();
    EXPECT_TRUE(layout.layers().empty());
    VisualRepresentation vr;
    layout.fillVisualRepresentation(vr, false);
    EXPECT_EQ(vr.width, 0.0);
    EXPECT_EQ(vr.height, 0.0);
    EXPECT_TRUE(vr.vertices.empty());
    EXPECT_TRUE(vr.edges.empty());
}
