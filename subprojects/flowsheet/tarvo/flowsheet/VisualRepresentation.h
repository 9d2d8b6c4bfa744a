#ifndef TARVO_FLOWSHEET_VISUALREPRESENTATION_H
#define TARVO_FLOWSHEET_VISUALREPRESENTATION_H

#include <boost/bimap.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

// A finished drawing, in the terms of its printers: boxes with pictures, lines and texts, all placed.
// The drawing spans (0, 0) to (width, height); y grows downwards.
struct VisualRepresentation {
    struct Point {
        double x;
        double y;
    };
    // A text centred on `position`, which lies on its baseline.
    struct Label {
        Point position;
        std::string text;
    };
    struct Vertex {
        Point position; // top left corner of the icon
        double width;
        double height;
        std::string picture; // the file of the icon, as "mixer.svg", to be found under "/static/"
        std::uint32_t id;
        std::string type;
        std::vector<Label> labels;
    };
    struct Edge {
        std::vector<Point> points; // corners, cut back where the arrow head goes
        bool backward;             // the arrow head stands at the first point, else at the last
        std::uint32_t id;
        std::string type;
        std::size_t style;
    };
    // The tag of a stream, written over its line.
    struct EdgeLabel {
        Label label;
        std::size_t edge; // in edges
    };
    struct Style {
        std::string colour;
        double width;
        bool operator<(const Style& o) const { return std::tie(colour, width) < std::tie(o.colour, o.width); }
    };
    struct Column {
        double start;
        double width;
    };

    double width = 0.0;
    double height = 0.0;
    std::vector<Vertex> vertices;
    std::vector<Edge> edges;
    std::vector<EdgeLabel> labels;
    // Each distinct style of line, numbered in the order in which edges first use it.
    boost::bimap<Style, std::size_t> styles;
    std::vector<Column> columns;
};

#endif
