#ifndef TARVO_CORE_SVGDOCUMENT_H
#define TARVO_CORE_SVGDOCUMENT_H

#include <iosfwd>
#include <string>

// The pieces that every drawing of the kernel writes alike: numbers, texts, the root element and icons.
namespace Tarvo::Core::Svg {

// A coordinate to a hundredth, so that rounding noise does not reach the file.
std::string number(double value);
// `text` with the characters that markup reserves as entities.
std::string escaped(const std::string& text);
// The declaration, the doctype of SVG 1.1 or of its tiny profile, and the root element: the drawing spans
// (0, 0) to (width, height) with `padding` around it.
void open(std::ostream& out, double width, double height, double padding, bool tiny);
// An icon's picture, which the application serves under "/static/".
void image(std::ostream& out, double x, double y, double width, double height, const std::string& picture);

} // namespace Tarvo::Core::Svg

#endif
