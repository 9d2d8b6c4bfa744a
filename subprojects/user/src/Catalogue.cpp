#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/user/Catalogue.h>
#include <tarvo/user/ResultCodes.h>
#include <tarvo/utility/FunctionName.h>

#include <iostream>
#include <sstream>

using Tarvo::Persistency::TypeDescriptor;

namespace Tarvo::User {

namespace {

// Elements joined by a comma without a blank.
template <typename List, typename Write> void writeList(std::ostream& out, const List& list, Write write) {
    const char* separator = "";
    for (const auto& element : list) {
        out << separator;
        write(element);
        separator = ",";
    }
}

void writeType(std::ostream& out, const TypeDescriptor& t) {
    out << "{\"name\":\"" << t.name << "\", \"description\":\"" << t.description << "\", \"category\":\""
        << t.category << "\", \"icon\":\"" << (t.icon.empty() ? t.category : t.icon)
        << ".svg\", \"instantiable\":" << (t.instantiable ? "true" : "false") << ", \"integerOptions\":[";
    writeList(out, t.integerOptions, [&](const auto& o) {
        out << "{\"name\":\"" << o.name << "\",\"description\":\"" << o.description << "\",\"value\":" << o.value
            << ",\"min\":" << o.min << ",\"max\":" << o.max << "}";
    });
    out << "], \"stringOptions\":[";
    writeList(out, t.stringOptions, [&](const auto& o) {
        out << "{\"name\":\"" << o.name << "\",\"description\":\"" << o.description << "\",\"value\":\"" << o.value
            << "\",\"enumerator\":\"" << o.enumerator << "\"}";
    });
    out << "], \"quantities\":[";
    writeList(out, t.quantities, [&](const auto& o) {
        out << "{\"fulltag\":\"" << o.fulltag << "\",\"description\":\"" << o.description << "\",\"value\":" << o.value
            << ",\"unit\":\"" << o.unit << "\"}";
    });
    out << "] }";
}

} // namespace

std::string types(int& error) {
    error = success;
    std::ostringstream out;
    out << "{\"types\":[";
    writeList(out, NodeFactory::types(), [&](const TypeDescriptor& t) { writeType(out, t); });
    out << "]}";
    return out.str();
}

std::string enumerators(int& error) {
    error = success;
    std::ostringstream out;
    out << "{\"enumerators\":[";
    writeList(out, Core::enumerators(), [&](const Core::Enumerator& e) { out << e.json(); });
    out << "]}";
    return out.str();
}

const TypeDescriptor* typeDescriptor(const std::string& type, int& error) {
    try {
        const TypeDescriptor* record = &NodeFactory::typeDescriptor(type);
        error = success;
        return record;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        error = invalidArgument;
        return nullptr;
    }
}

std::string typeDescriptorJson(const std::string& type, int& error) {
    const TypeDescriptor* record = typeDescriptor(type, error);
    if (!record) return "{}";
    std::ostringstream out;
    writeType(out, *record);
    return out.str();
}

const Core::Enumerator* enumerator(const std::string& name, int& error) {
    const Core::Enumerator* found = Core::findEnumerator(name);
    error = found ? success : invalidArgument;
    return found;
}

} // namespace Tarvo::User
