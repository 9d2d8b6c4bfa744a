#include <tarvo/core/SensitivityPlot.h>
#include <tarvo/core/SvgDocument.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <sstream>

using namespace Tarvo::Core;

namespace {

constexpr double width = 760, panelHeight = 340;
constexpr double left = 90, right = 230, top = 40, bottom = 60; // margins of a panel's plotting area
constexpr double plotWidth = width - left - right, plotHeight = panelHeight - top - bottom;
// Lines of distinct values; red stays for the failed rounds.
const char* const colours[] = {"#1f77b4", "#ff7f0e", "#2ca02c", "#9467bd", "#8c564b",
                               "#e377c2", "#7f7f7f", "#bcbd22", "#17becf", "#393b79"};
const char* const failedColour = "#d62728";

// An axis from `low` to `high` in steps of 1, 2 or 5 times a power of ten, about five of them.
struct Axis {
    double low, high, step;

    Axis(double min, double max) {
        if (!(min < max)) { // a single value, or none: a unit span around it
            const double centre = std::isfinite(min) ? min : 0.0;
            const double half = centre == 0 ? 1.0 : std::fabs(centre) * 0.1;
            min = centre - half;
            max = centre + half;
        }
        const double rough = (max - min) / 5;
        const double power = std::pow(10.0, std::floor(std::log10(rough)));
        const double scaled = rough / power;
        step = (scaled < 1.5 ? 1 : scaled < 3.5 ? 2 : scaled < 7.5 ? 5 : 10) * power;
        low = std::floor(min / step) * step;
        high = std::ceil(max / step) * step;
    }
    double at(double value, double length) const { return (value - low) / (high - low) * length; }
    // The ticks, counted rather than stepped: a step below the rounding of large values would never end.
    std::vector<double> ticks() const {
        const double n = std::round((high - low) / step);
        std::vector<double> values;
        if (std::isfinite(n))
            for (int i = 0; i <= std::min(n, 20.0); ++i) values.push_back(low + i * step);
        return values;
    }
};

std::string tickText(double value) {
    std::ostringstream text;
    text.precision(6);
    text << (std::fabs(value) < 1e-12 ? 0.0 : value);
    return text.str();
}

Axis axisOf(const std::vector<double>& values) {
    double min = INFINITY, max = -INFINITY;
    for (double v : values)
        if (std::isfinite(v)) {
            min = std::min(min, v);
            max = std::max(max, v);
        }
    return Axis(min, max);
}

// The label of a line: the values of the controlled variables after the first.
std::string seriesLabel(const SensitivityColumns& columns, const std::vector<double>& key) {
    std::string label;
    for (std::size_t i = 0; i < key.size(); ++i) {
        const SensitivityColumn& c = columns.controlled[i + 1];
        label += (i ? ", " : "") + c.label + " = " + tickText(key[i]) + (c.unit.empty() ? "" : " " + c.unit);
    }
    return label;
}

void printAxes(std::ostream& out, const Axis& x, const Axis& y, const std::string& xTitle, const std::string& yTitle) {
    out << "<rect x=\"0\" y=\"0\" width=\"" << Svg::number(plotWidth) << "\" height=\"" << Svg::number(plotHeight)
        << "\" fill=\"none\" stroke=\"#000\"/>\n";
    for (double t : x.ticks()) {
        const std::string px = Svg::number(x.at(t, plotWidth));
        out << "<line x1=\"" << px << "\" y1=\"0\" x2=\"" << px << "\" y2=\"" << Svg::number(plotHeight)
            << "\" stroke=\"#ddd\"/>\n<text x=\"" << px << "\" y=\"" << Svg::number(plotHeight + 18)
            << "\" text-anchor=\"middle\">" << tickText(t) << "</text>\n";
    }
    for (double t : y.ticks()) {
        const std::string py = Svg::number(plotHeight - y.at(t, plotHeight));
        out << "<line x1=\"0\" y1=\"" << py << "\" x2=\"" << Svg::number(plotWidth) << "\" y2=\"" << py
            << "\" stroke=\"#ddd\"/>\n<text x=\"-8\" y=\"" << py << "\" dy=\"4\" text-anchor=\"end\">" << tickText(t)
            << "</text>\n";
    }
    out << "<text x=\"" << Svg::number(plotWidth / 2) << "\" y=\"" << Svg::number(plotHeight + 42)
        << "\" text-anchor=\"middle\">" << Svg::escaped(xTitle) << "</text>\n";
    out << "<text transform=\"translate(-70," << Svg::number(plotHeight / 2)
        << ") rotate(-90)\" text-anchor=\"middle\">" << Svg::escaped(yTitle) << "</text>\n";
}

void printCross(std::ostream& out, double px, double py) {
    const std::string a = Svg::number(px - 5), b = Svg::number(px + 5), c = Svg::number(py - 5),
                      d = Svg::number(py + 5);
    out << "<path d=\"M" << a << " " << c << "L" << b << " " << d << "M" << a << " " << d << "L" << b << " " << c
        << "\" stroke=\"" << failedColour << "\" stroke-width=\"2\"/>\n";
}

void printPanel(std::ostream& out, const SensitivityColumns& columns, const SensitivityResult& result,
                std::size_t monitored) {
    std::vector<double> xs, ys;
    for (const SensitivityResult::Row& row : result.rows) {
        xs.push_back(row.controlled.at(0));
        ys.push_back(row.monitored.at(monitored));
    }
    const Axis x = axisOf(xs), y = axisOf(ys);
    const auto px = [&](double v) { return x.at(v, plotWidth); };
    const auto py = [&](double v) { return plotHeight - y.at(v, plotHeight); };
    const SensitivityColumn& column = columns.monitored[monitored];
    out << "<text x=\"" << Svg::number(plotWidth / 2) << "\" y=\"-16\" text-anchor=\"middle\" font-weight=\"bold\">"
        << Svg::escaped(column.label) << "</text>\n";
    printAxes(out, x, y, columns.controlled.at(0).heading(), column.heading());

    // The rounds of each line, by the first controlled value.
    std::map<std::vector<double>, std::vector<const SensitivityResult::Row*>> lines;
    for (const SensitivityResult::Row& row : result.rows)
        lines[std::vector<double>(row.controlled.begin() + 1, row.controlled.end())].push_back(&row);
    int line = 0;
    bool failures = false;
    for (auto& [key, rows] : lines) {
        std::stable_sort(rows.begin(), rows.end(), [](auto* a, auto* b) { return a->controlled[0] < b->controlled[0]; });
        const char* colour = colours[line % (sizeof colours / sizeof *colours)];
        std::string points;
        for (const SensitivityResult::Row* row : rows) {
            const double v = row->monitored[monitored];
            if (row->errors > 0 || !std::isfinite(v)) continue;
            points += Svg::number(px(row->controlled[0])) + "," + Svg::number(py(v)) + " ";
            out << "<circle cx=\"" << Svg::number(px(row->controlled[0])) << "\" cy=\"" << Svg::number(py(v))
                << "\" r=\"3\" fill=\"" << colour << "\"/>\n";
        }
        if (!points.empty())
            out << "<polyline points=\"" << points << "\" fill=\"none\" stroke=\"" << colour << "\" stroke-width=\"2\"/>\n";
        for (const SensitivityResult::Row* row : rows) {
            if (row->errors == 0 && std::isfinite(row->monitored[monitored])) continue;
            failures = true;
            const double v = row->monitored[monitored];
            printCross(out, px(row->controlled[0]), std::isfinite(v) ? py(v) : plotHeight);
        }
        if (!key.empty()) {
            const std::string ly = Svg::number(10 + 20 * line);
            out << "<line x1=\"" << Svg::number(plotWidth + 16) << "\" y1=\"" << ly << "\" x2=\""
                << Svg::number(plotWidth + 40) << "\" y2=\"" << ly << "\" stroke=\"" << colour
                << "\" stroke-width=\"2\"/>\n<text x=\"" << Svg::number(plotWidth + 46) << "\" y=\"" << ly
                << "\" dy=\"4\">" << Svg::escaped(seriesLabel(columns, key)) << "</text>\n";
        }
        ++line;
    }
    if (failures) {
        const bool legend = !lines.begin()->first.empty(); // the lines have entries above this one
        const double ly = 10 + 20 * (legend ? line : 0);
        printCross(out, plotWidth + 28, ly);
        out << "<text x=\"" << Svg::number(plotWidth + 46) << "\" y=\"" << Svg::number(ly)
            << "\" dy=\"4\">failed round</text>\n";
    }
}

} // namespace

void printSensitivitySvg(std::ostream& out, const SensitivityColumns& columns, const SensitivityResult& result) {
    const std::size_t panels = std::max<std::size_t>(columns.monitored.size(), 1);
    Svg::open(out, width, panelHeight * panels, 0, false);
    out << "<title>Sensitivity results</title>\n<rect x=\"0\" y=\"0\" width=\"" << Svg::number(width)
        << "\" height=\"" << Svg::number(panelHeight * panels)
        << "\" fill=\"#fff\"/>\n<g font-family=\"sans-serif\" font-size=\"12\">\n";
    if (columns.monitored.empty() || columns.controlled.empty() || result.rows.empty())
        out << "<text x=\"" << Svg::number(width / 2) << "\" y=\"" << Svg::number(panelHeight / 2)
            << "\" text-anchor=\"middle\">"
            << (result.rows.empty() ? "no round calculated yet" : "no monitored variables") << "</text>\n";
    else
        for (std::size_t m = 0; m < columns.monitored.size(); ++m) {
            out << "<g transform=\"translate(" << Svg::number(left) << "," << Svg::number(top + m * panelHeight)
                << ")\">\n";
            printPanel(out, columns, result, m);
            out << "</g>\n";
        }
    out << "</g>\n</svg>\n";
}
