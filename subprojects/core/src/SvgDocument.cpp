#include <tarvo/core/SvgDocument.h>

#include <cmath>
#include <ostream>
#include <sstream>

namespace Tarvo::Core::Svg {

std::string number(double value) {
    std::ostringstream text;
    text.precision(12);
    text << std::round(value * 100.0) / 100.0 + 0.0; // + 0.0 turns -0 into 0
    return text.str();
}

std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    return out;
}

void open(std::ostream& out, double width, double height, double padding, bool tiny) {
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    if (tiny)
        out << "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1 Tiny//EN\" "
               "\"http://www.w3.org/Graphics/SVG/1.1/DTD/svg11-tiny.dtd\">\n";
    else
        out << "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd\">\n";
    const std::string w = number(width + 2.0 * padding), h = number(height + 2.0 * padding);
    out << "<svg version=\"1.1\"" << (tiny ? " baseProfile=\"tiny\"" : "")
        << " xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"" << w
        << "\" height=\"" << h << "\" viewBox=\"" << number(-padding) << " " << number(-padding) << " " << w << " " << h
        << "\">\n";
}

void image(std::ostream& out, double x, double y, double width, double height, const std::string& picture) {
    out << "<image x=\"" << number(x) << "\" y=\"" << number(y) << "\" width=\"" << number(width) << "\" height=\""
        << number(height) << "\" xlink:href=\"/static/" << escaped(picture) << "\"/>\n";
}

} // namespace Tarvo::Core::Svg
