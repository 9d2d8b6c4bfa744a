#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/user/Eval.h>
#include <tarvo/user/InputRange.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/utility/Diagnostic.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/WholeInteger.h>

#include <cmath>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace Tarvo::User {

namespace {

const char* const usage =
    "usage: tarvo-eval [--components LIST] TYPE [PATH=VALUE]... [--get PATH[:UNIT]]...\n"
    "  --components LIST  catalogue entries separated by commas, as water,CO2,methane\n"
    "                     (default: the kernel's own list CO2, CH4, H2O, N2, O2)\n"
    "  TYPE               a registered type, as StreamIdealLiquidVapor\n"
    "  PATH=VALUE         a quantity with its unit after one blank ('P=1 bar', 'Tphase.x[H2O]=1'),\n"
    "                     or the text or number of a string or integer item (flashoption=PH)\n"
    "  --get PATH[:UNIT]  prints that quantity in UNIT (SI without one); without --get every quantity\n"
    "                     of the object and its children is printed\n";

// A wrong argument: the usage text follows the reason.
struct UsageError {
    std::string reason;
};

// Arguments that are well formed but that no state can have: the reason alone, and the code of a failure.
struct Refused {
    std::string reason;
};

struct Request {
    std::string path;
    std::string unit;
};

struct Arguments {
    std::vector<std::string> components;
    std::string type;
    std::vector<std::pair<std::string, std::string>> settings;
    std::vector<Request> requests;
};

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream in(text);
    for (std::string part; std::getline(in, part, separator);)
        if (!part.empty()) parts.push_back(part);
    return parts;
}

Arguments parse(int argc, char** argv) {
    Arguments a;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--components" || word == "--get") {
            if (i + 1 == argc) throw UsageError{word + " needs a value"};
            const std::string value = argv[++i];
            if (word == "--components") {
                a.components = split(value, ',');
                if (a.components.empty()) throw UsageError{"--components needs at least one entry"};
            } else {
                const auto colon = value.rfind(':');
                // A colon inside the path separates a child's tag; a unit never holds a '.' or ']'.
                const bool hasUnit = colon != std::string::npos && value.find_first_of(".]", colon) == std::string::npos;
                a.requests.push_back(hasUnit ? Request{value.substr(0, colon), value.substr(colon + 1)}
                                             : Request{value, ""});
            }
        } else if (word.rfind("--", 0) == 0) {
            throw UsageError{"unknown option " + word};
        } else if (a.type.empty()) {
            a.type = word;
        } else {
            const auto equals = word.find('=');
            if (equals == std::string::npos || equals == 0) throw UsageError{"expected PATH=VALUE, got " + word};
            a.settings.emplace_back(word.substr(0, equals), word.substr(equals + 1));
        }
    }
    if (a.type.empty()) throw UsageError{"no type given"};
    return a;
}

void useComponents(const std::vector<std::string>& entries) {
    if (entries.empty()) return;
    for (std::size_t i = 0; i < entries.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (entries[i] == entries[j]) throw Refused{"the component " + entries[i] + " is given twice"};
    components.clear();
    for (const std::string& entry : entries) {
        ComponentGeneric* c = newCatalogueComponent(entry, entry);
        if (!c) throw UsageError{"the component catalogue has no entry " + entry};
        components.add(c);
    }
}

// A number alone, or a number, one blank and a unit.
bool parseQuantity(const std::string& text, Value& value) {
    char* end = nullptr;
    const double x = std::strtod(text.c_str(), &end);
    if (end == text.c_str()) return false;
    if (*end == '\0') {
        value = Value(x);
        return true;
    }
    if (*end != ' ' || end[1] == '\0') return false;
    try {
        value = Value(x, std::string(end + 1));
    } catch (Error&) {
        return false; // an unknown unit
    }
    return true;
}

Value* findQuantity(Model& model, const std::string& path) {
    try {
        return &model.Q(path);
    } catch (Error&) {
        return nullptr;
    }
}

// A subscript that the item has no place for, as "x[7]" of five components or "x[4294967296]"; a path
// without its closing bracket is no subscript but a typing error.
bool subscriptOutside(Model& model, const std::string& path) {
    const auto open = path.rfind('[');
    return open != std::string::npos && path.back() == ']' && findQuantity(model, path.substr(0, open) + "[0]");
}

// Sets the item at `path`: a quantity if the object has one there, else an integer, else a string.
void set(Model& model, const std::string& path, const std::string& text) {
    if (Value* q = findQuantity(model, path)) {
        Value value;
        if (!parseQuantity(text, value)) throw UsageError{path + " takes a number and a unit, not " + text};
        if (!(value.units() == q->units()))
            throw UsageError{path + " is in units of " + q->unitText() + ", not " + value.unitText()};
        const std::string refusal = inputRefusal(path, *q, value.toDouble());
        if (!refusal.empty()) throw Refused{refusal};
        q->active() = value.active();
        q->setInput();
        return;
    }
    if (subscriptOutside(model, path)) throw Refused{"the subscript of " + path + " is outside the item"};
    try {
        if (const std::optional<int> n = Utility::wholeInteger(text)) {
            model.I(path) = *n;
            return;
        }
    } catch (Error&) {
        // no integer there: a string item may take the digits as text
    }
    try {
        model.S(path) = text;
    } catch (Error&) {
        throw UsageError{"no item " + path + " that takes " + text};
    }
}

std::string withUnit(const std::string& unit) { return unit.empty() ? unit : " " + unit; }

// Prints one result line; a number that is not finite is no result, and is named on `undefined`.
void printResult(const std::string& name, double x, const std::string& unit, std::vector<std::string>& undefined) {
    std::cout << name << " = " << x << withUnit(unit) << "\n";
    if (!std::isfinite(x)) undefined.push_back(name);
}

void printQuantities(const Node& node, std::vector<std::string>& undefined) {
    if (const auto* object = dynamic_cast<const Object*>(&node)) {
        for (const auto& [tag, q] : object->quantityItems())
            printResult(q->fullTag(), q->toDouble(), q->unitText(), undefined);
        for (const auto& [tag, v] : object->quantityVectorItems())
            for (size_t i = 0; i < v->value().size(); ++i)
                printResult(v->fullTag() + "[" + std::to_string(i) + "]", v->value()[i].toDouble(),
                            v->value()[i].unitText(), undefined);
    }
    for (const auto& [tag, child] : node.children()) printQuantities(*child, undefined);
}

int run(const Arguments& a) {
    useComponents(a.components);
    if (!NodeFactory::registered(a.type)) throw UsageError{"no registered type " + a.type};
    std::unique_ptr<Node> node(NodeFactory::create(a.type, Tarvo::Persistency::Defaults(a.type, a.type), 0, nullptr,
                                                   nullptr, nullptr));
    auto* model = dynamic_cast<Model*>(node.get());
    if (!model) throw UsageError{a.type + " is not a model"};
    for (const auto& [path, text] : a.settings) set(*model, path, text);
    // The same requests are checked before the calculation, so that a typing error costs no solve.
    for (const Request& r : a.requests) {
        try {
            const Value& q = model->Q(r.path);
            if (!r.unit.empty()) q.toDouble(r.unit);
        } catch (Error&) {
            throw UsageError{"no quantity " + r.path + (r.unit.empty() ? "" : " in " + r.unit)};
        }
    }
    model->setup();
    model->initializeNonPersistents();
    model->calculate(0);
    model->reportMessages();
    for (const std::string& w : model->warningList()) std::cerr << "warning: " << w << "\n";
    std::vector<std::string> undefined;
    if (a.requests.empty()) {
        printQuantities(*model, undefined);
    } else {
        const auto precision = std::cout.precision(10);
        for (const Request& r : a.requests) {
            const Value& q = model->Q(r.path);
            const double x = r.unit.empty() ? q.toDouble() : q.toDouble(r.unit);
            printResult(r.path, x, r.unit.empty() ? q.unitText() : r.unit, undefined);
        }
        std::cout.precision(precision); // a caller in the same process prints on with its own
    }
    for (const std::string& e : model->errorList()) std::cerr << "error: " << e << "\n";
    for (const std::string& name : undefined) std::cerr << "error: " << name << " is not a finite number\n";
    return model->errorList().empty() && undefined.empty() ? 0 : 1;
}

} // namespace

int evalMain(int argc, char** argv) {
    try {
        Utility::setVerbosityGlobal(-100); // the log would mix with the results on standard output
        registerKernelTypes();
        return run(parse(argc, argv));
    } catch (UsageError& e) {
        std::cerr << "tarvo-eval: " << e.reason << "\n" << usage;
        return 2;
    } catch (Refused& e) {
        std::cerr << "tarvo-eval: " << e.reason << "\n";
        return 1;
    } catch (Error& e) {
        std::cerr << e.message() << std::endl;
        return 1;
    } catch (const std::exception& e) {
        std::cerr << "tarvo-eval: unexpected failure: " << e.what() << "\n";
        return 1;
    }
}

} // namespace Tarvo::User
