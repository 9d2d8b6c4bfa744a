#ifndef TARVO_FLOWSHEET_LAYOUT_H
#define TARVO_FLOWSHEET_LAYOUT_H

#include <tarvo/core/VertexBase.h>
#include <tarvo/utility/Diagnostic.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class EdgeBase;
class Graph;
struct VisualRepresentation;

// The drawing of a flowsheet: units in columns from left to right, streams as orthogonal lines with arrow
// heads. Each vertex gets a column (its layer) from the longest path from the source; edges that span
// several columns cross each one on a dummy vertex, so that no unit stands on them; the positions along
// the columns come from the four alignments of Brandes and Köpf; vertical pieces of lines run in the gaps
// between the columns. The drawing depends only on the graph, the icon sizes and the settings.
//
// A Layout draws one picture: built over a graph, told which edges run against the flow, configured, run
// once, and printed. It copies what it needs, so the graph is the same afterwards.
class Layout : public virtual Diagnostic {
public:
    class Vertex;
    class NormalVertex;
    class TerminalVertex;
    class SourceVertex;
    class SinkVertex;
    class DummyVertex;
    class LongEdgeDummy;
    class EdgeLabelDummy;
    class PortDummy;
    class NorthernPortDummy;
    class SouthernPortDummy;

    // Sizes in drawing units, as the icons have them.
    struct Settings {
        double textHeight = 15.0;
        double arrowHeadLength = 16.0;
        double arrowHeadHeight = 12.0;
        double verticalMinimumVertexSeparation = 20.0;
        double arrowHeadMargin = 5.0;
        double minimumColumnSpacing = 50.0;
        double spacingVerticalSegments = 20.0;
        double padding = 0.0;
        bool background = false; // gray pads under lines and labels, else white
        bool balanced = true;    // the mean of the four alignments, else the narrowest of them

        // The measure of a label: three quarters of the text height per character.
        double textWidth(const std::string& text) const { return 0.75 * textHeight * text.size(); }
    };

    // Where an edge meets a vertex, and its number among the edges on that side.
    struct Stop {
        Vertex* vertex;
        VertexBase::PortLocation location;
        std::size_t number = 0;
    };

    // A stretch of an edge's line between two vertices of neighbouring layers, or inside one layer where the
    // line turns round a unit or leaves it by its north or south side.
    struct Piece {
        Stop from;
        Stop to;
        bool marked = false; // conflicts with an inner segment, so it does not align
        double fromY = 0.0, toY = 0.0;
        int gap = -1; // the gap that holds its vertical segment, or -1 for none
        double segmentX = 0.0;
    };

    struct Edge {
        EdgeBase* stream;
        std::string tag;
        bool reversed = false;
        std::vector<Piece> pieces; // from the start of the drawn line to its end
    };

    // The vertices tagged "source" and "sink" are the two ends of the graph; every other vertex is a unit
    // whose icon comes from its node. Port sides come from the vertices' connections.
    explicit Layout(const Graph& graph);
    ~Layout() override;
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    // Lets the edge run against the flow for the choice of columns, so that a closed recycle loop does not
    // stop the layering; it is drawn with its arrow head at the start. Gives whether the tag was found.
    bool markReversed(const std::string& tag);
    // Draws a cut as the recycle that it opens: the edge `cut`, which ends in the sink, is joined to `copy`,
    // which starts at the source, into one edge under the tag of the cut, marked reversed. Gives whether
    // both tags were found.
    bool closeCut(const std::string& cut, const std::string& copy);

    void setTextHeight(double te);
    void setArrowHeadLength(double ahl);
    void setArrowHeadHeight(double ahh);
    void setVerticalMinimumVertexSeparation(double vmvs);
    void setArrowHeadMargin(double ahm);
    void setMinimumColumnSpacing(double mcs);
    void setSpacingVerticalSegments(double svs);
    void setPadding(double p);
    void setBackground(bool background) { settings_.background = background; }
    void setBalanced(bool balanced) { settings_.balanced = balanced; }
    const Settings& settings() const { return settings_; }

    // Runs the whole layout, once.
    void calculateEdgeLines();

    // The drawing as the printers consume it; `raster` takes the icons' PNG pictures instead of their SVG ones.
    void fillVisualRepresentation(VisualRepresentation& vr, bool raster) const;
    // SVG 1.1, with style classes for a browser. With a verbose log it also draws the frames of the padding,
    // the icons and the columns.
    void printSvg(std::ostream& out, bool raster) const;
    // SVG 1.1 Tiny: attributes on every element, no styles, markers or filters.
    void printSvgTiny(std::ostream& out, bool raster) const;

    // The picture of a flowsheet's graph, with the settings that suit flowsheets; each pair of `cuts`, the
    // tags of a cut and of its copy, is drawn closed.
    static void printFlowsheet(const Graph& graph, const std::vector<std::pair<std::string, std::string>>& cuts,
                               std::ostream& out, bool tiny, bool raster);

    // The vertices of each column, top to bottom.
    const std::vector<std::vector<Vertex*>>& layers() const { return layers_; }
    const std::vector<Edge>& edges() const { return edges_; }
    double columnStart(std::size_t layer) const { return columnStart_.at(layer); }
    double columnWidth(std::size_t layer) const { return columnWidth_.at(layer); }

private:
    // Adds a vertex that the layout owns.
    template <typename V, typename... Args> V* make_(Args&&... args);
    void assignLayers_();
    void splitLongEdges_();
    void numberPorts_();
    void addPortDummies_();
    void placeEdgeEnds_();
    void orderVerticalSegments_();
    void placeColumns_();
    void logLayers_() const;
    // Frames of the padding, the icons and the columns, for a verbose log.
    bool debugDrawing_() const;

    // How far below the top of its vertex a line meets it.
    double lineOffset_(const Stop& stop) const;
    double lineY_(const Stop& stop) const;
    double sideX_(const Stop& stop) const;
    // Puts a dummy into the layer of a unit, right above or right below it.
    void insertBeside_(const Vertex* unit, Vertex* dummy, bool above);

    Settings settings_;
    bool run_ = false;
    std::vector<std::unique_ptr<Vertex>> vertices_;
    std::vector<Edge> edges_;
    std::vector<std::vector<Vertex*>> layers_;
    std::vector<std::vector<Piece*>> gaps_; // gap k lies before column k
    std::vector<double> columnStart_;
    std::vector<double> columnWidth_;
};

#endif
