// The JSON report of the object tree: readable by programs, indented for people. Values keep their print
// forms, so a quantity is the string "101325 Pa", not a bare number whose unit a reader would have to guess.
#include <tarvo/persistency/Object.h>

#include <cassert>

namespace {

// How a section ends: on a line of its own; at once behind its last entry; or on a line of its own with a
// blank behind the brace (the children of a node without items).
enum class Close { line, tight, lineBlank };

// The opening brace and the four keys of identity. The last key has neither comma nor line end: each
// section that follows brings its own.
void printIdentity(std::ostream& out, const Node& node, const std::string& indent) {
    out << '{' << std::endl;
    out << indent << "  \"fullTag\": \"" << node.fullTag() << "\"," << std::endl;
    out << indent << "  \"type\": \"" << node.type() << "\"," << std::endl;
    out << indent << "  \"id\": " << node.id() << ',' << std::endl;
    out << indent << "  \"parent\": " << node.parentNode()->id();
}

// `"key": {` and one entry for each element of a map that is not empty; `value` writes what stands
// behind the tag of an entry.
template <typename Map, typename Print>
void printSection(std::ostream& out, const std::string& indent, const char* key, const Map& map, Print value,
                  Close close = Close::line) {
    if (map.empty()) return;
    out << ',' << std::endl << indent << "  \"" << key << "\": {" << std::endl;
    bool first = true;
    for (const auto& [tag, item] : map) {
        if (!first) out << ',' << std::endl;
        first = false;
        out << indent << "    \"" << tag << "\": ";
        value(*item);
    }
    switch (close) {
    case Close::line:
        out << std::endl << indent << "  }";
        break;
    case Close::tight:
        out << '}';
        break;
    case Close::lineBlank:
        out << std::endl << indent << "  } ";
        break;
    }
}

} // namespace

std::ostream& Node::printJson(std::ostream& out, int level) const {
    assert(level >= 0);
    const std::string indent(2 * static_cast<std::size_t>(level), ' ');
    printIdentity(out, *this, indent);
    printSection(
        out, indent, "children", children_, [&](const Node& child) { child.printJson(out, level + 2); },
        Close::lineBlank);
    return out << std::endl << indent << '}';
}

std::ostream& Object::printJson(std::ostream& out, int level) const {
    assert(level >= 0);
    const std::string indent(2 * static_cast<std::size_t>(level), ' ');
    const auto quoted = [&](const auto& item) {
        out << '"';
        item.print(out);
        out << '"';
    };
    const auto asIs = [&](const auto& item) { item.print(out); };
    printIdentity(out, *this, indent);
    printSection(out, indent, "I", integers, quoted);
    printSection(out, indent, "IV", integerVectors, asIs);
    printSection(out, indent, "Q", quantities, [&](const Quantity& q) { out << '"' << q.value() << '"'; });
    printSection(out, indent, "QV", quantityVectors, asIs);
    printSection(out, indent, "QM", quantityMatrices, asIs, Close::tight);
    printSection(out, indent, "S", strings, quoted);
    printSection(out, indent, "SV", stringVectors, asIs);
    printSection(out, indent, "children", children_,
                 [&](const Node& child) { child.printJson(out, level + 2); });
    return out << std::endl << indent << '}';
}
