#include <tarvo/persistency/Object.h>
#include <tarvo/utility/CachedCast.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>
#include <tarvo/utility/WholeInteger.h>

#include <new>
#include <optional>

using Tarvo::Persistency::Defaults;

namespace {

constexpr int verbosityFile = -1;

// Non-empty and made only of 0123456789+-: meant as a number, not as a component's name.
bool numeric(const std::string& s) {
    return !s.empty() && s.find_first_not_of("0123456789+-") == std::string::npos;
}

// The position that a subscript names; "x[4294967296]" must not reach x[0].
int position(const std::string& text, const char* function) {
    const std::optional<int> n = Tarvo::Utility::wholeInteger(text);
    if (!n || *n < 0) throw ErrorRunTime(function, "index " + text + " is not a position from 0 to 2147483647");
    return *n;
}

std::string indexed(const std::string& name, int index) { return name + "[" + std::to_string(index) + "]"; }

template <typename Map> auto find(const Map& map, const std::string& tag, const char* function) {
    const auto it = map.find(tag);
    if (it == map.end()) throw ErrorRunTime(function, "non-existant tag " + tag);
    return it->second;
}

bool sameValues(const std::vector<Value>& a, const std::vector<Value>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!a[i].sameUnits(b[i]) || a[i].toDouble() != b[i].toDouble()) return false;
    return true;
}

// Copies the values of the items that both maps hold. Both are in the order of their tags, so one pass over the two
// pairs them; where they hold the same tags, as two objects of one type do, each pair takes one test of equality.
template <typename Map, typename Assign> void copyValues(const Map& to, const Map& from, Assign assign) {
    const auto before = from.key_comp();
    auto it = from.begin();
    for (const auto& [tag, item] : to) {
        if (it != from.end() && it->first == tag) {
            assign(*item, *it++->second);
            continue;
        }
        while (it != from.end() && before(it->first, tag)) ++it;
        if (it == from.end()) return;
        if (!before(tag, it->first)) assign(*item, *it->second);
    }
}

// Same keys, and items equal by `same`.
template <typename Map, typename Same> bool equalMaps(const Map& a, const Map& b, Same same) {
    if (a.size() != b.size()) return false;
    for (const auto& [tag, item] : a) {
        const auto it = b.find(tag);
        if (it == b.end()) return false;
        if (static_cast<const Item&>(*item) != static_cast<const Item&>(*it->second)) return false;
        if (!same(*item, *it->second)) return false;
    }
    return true;
}

} // namespace

Object::Object(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Node(defaults, id, persistency, parent, root) {
    if (!persistency) type_ = "Object";
}

// ---- tag paths --------------------------------------------------------------------------------------

Value& Object::Q(const std::string& path) {
    std::string p = path;
    const auto pair = p.find("][");
    if (pair != std::string::npos) p.replace(pair, 2, ",");
    const auto dot = p.find('.'), open = p.find('[');
    // A "[" before the first "." belongs to a child's tag: the whole path is then a plain one.
    if (open == std::string::npos || (dot != std::string::npos && open < dot)) return element(p);

    const auto close = p.find(']');
    if (close == std::string::npos)
        throw ErrorRunTime("Object::Q", "incorrect square bracket syntax: missing closing bracket");
    if (close < open) throw ErrorRunTime("Object::Q", "incorrect square bracket syntax: wrong bracket order");
    const std::string name = p.substr(0, open), index = p.substr(open + 1, close - open - 1);
    const auto comma = index.find(',');
    if (comma != std::string::npos) {
        const std::string first = index.substr(0, comma), second = index.substr(comma + 1);
        const int row = position(first, "Object::Q");
        if (numeric(second)) return Q(name, row, position(second, "Object::Q"));
        return Q(name, row, second);
    }
    return numeric(index) ? Q(name, position(index, "Object::Q")) : Q(name, index);
}

// A path without brackets before its first dot: children up to the dot, then the rest in that child.
Value& Object::element(const std::string& path) {
    const auto dot = path.find('.');
    if (dot != std::string::npos) return at(path.substr(0, dot)).Q(path.substr(dot + 1));
    return *find(quantities, path, "Object::element");
}

std::pair<Object*, std::string> Object::owner(const std::string& name) {
    const auto dot = name.rfind('.');
    if (dot == std::string::npos) return {this, name};
    return {&at(name.substr(0, dot)), name.substr(dot + 1)};
}

Value& Object::Q(const std::string& name, int index) {
    auto [object, tag] = owner(name);
    const auto scalar = object->quantities.find(indexed(tag, index));
    if (scalar != object->quantities.end()) return *scalar->second;
    return object->QV(tag).at(index);
}

Value& Object::Q(const std::string& name, int row, int column) {
    auto [object, tag] = owner(name);
    const auto scalar = object->quantities.find(indexed(tag, row) + "[" + std::to_string(column) + "]");
    if (scalar != object->quantities.end()) return *scalar->second;
    return object->QM(tag)(row, column);
}

Value& Object::Q(const std::string&, const std::string&) { return scratchZero(); }

Value& Object::Q(const std::string&, int, const std::string&) { return scratchZero(); }

Value& Object::scratchZero() {
    // Rebuilt on each request, so that a caller who wrote into it leaves nothing for the next one.
    static Value zero(0.0);
    zero.~Value();
    new (&zero) Value(0.0);
    return zero;
}

int& Object::I(const std::string& path) {
    const auto dot = path.find('.'), open = path.find('[');
    if (open == std::string::npos || (dot != std::string::npos && open < dot)) {
        if (dot != std::string::npos) return at(path.substr(0, dot)).I(path.substr(dot + 1));
        return find(integers, path, "Object::I")->value();
    }
    const auto close = path.find(']');
    if (close == std::string::npos)
        throw ErrorRunTime("Object::I", "incorrect square bracket syntax: missing closing bracket");
    if (close < open) throw ErrorRunTime("Object::I", "incorrect square bracket syntax: wrong bracket order");
    return I(path.substr(0, open), position(path.substr(open + 1, close - open - 1), "Object::I"));
}

int& Object::I(const std::string& name, int index) {
    auto [object, tag] = owner(name);
    const auto scalar = object->integers.find(indexed(tag, index));
    if (scalar != object->integers.end()) return scalar->second->value();
    return object->IV(tag).at(index);
}

std::string& Object::S(const std::string& path) {
    const auto dot = path.find('.'), open = path.find('[');
    if (open == std::string::npos || (dot != std::string::npos && open < dot)) {
        if (dot != std::string::npos) return at(path.substr(0, dot)).S(path.substr(dot + 1));
        return find(strings, path, "Object::S")->value();
    }
    const auto close = path.find(']');
    if (close == std::string::npos)
        throw ErrorRunTime("Object::S", "incorrect square bracket syntax: missing closing bracket");
    if (close < open) throw ErrorRunTime("Object::S", "incorrect square bracket syntax: wrong bracket order");
    return S(path.substr(0, open), position(path.substr(open + 1, close - open - 1), "Object::S"));
}

std::string& Object::S(const std::string& name, int index) {
    auto [object, tag] = owner(name);
    const auto scalar = object->strings.find(indexed(tag, index));
    if (scalar != object->strings.end()) return scalar->second->value();
    return object->SV(tag).at(index);
}

QuantityVector& Object::QV(const std::string& tag) { return *find(quantityVectors, tag, "Object::QV"); }
QuantityMatrix& Object::QM(const std::string& tag) { return *find(quantityMatrices, tag, "Object::QM"); }
IntegerVector& Object::IV(const std::string& tag) { return *find(integerVectors, tag, "Object::IV"); }
StringVector& Object::SV(const std::string& tag) { return *find(stringVectors, tag, "Object::SV"); }

Object& Object::at(const std::string& path) const {
    Object* object = dynamic_cast<Object*>(&Node::at(path));
    if (!object) throw ErrorRunTime("Object::at", "Node is not an Object");
    return *object;
}

Object& Object::at(const std::string& tag, int index) const { return at(indexed(tag, index)); }

// ---- declaration of items ---------------------------------------------------------------------------

void Object::addVariables(std::vector<Quantity>& items, int count, const std::string& tag,
                          const std::string& description, const std::string& unit, double value) {
    items.clear();
    items.reserve(count);
    for (int i = 0; i < count; ++i)
        addVariable(items.emplace_back(indexed(tag, i), description + " of item " + std::to_string(i), unit, this, value));
}

void Object::addVariables(std::vector<Integer>& items, int count, const std::string& tag,
                          const std::string& description, int value) {
    items.clear();
    items.reserve(count);
    for (int i = 0; i < count; ++i)
        addVariable(items.emplace_back(indexed(tag, i), description + " of item " + std::to_string(i), value, this));
}

void Object::addVariables(std::vector<String>& items, int count, const std::string& tag,
                          const std::string& description, const std::string& value) {
    items.clear();
    items.reserve(count);
    for (int i = 0; i < count; ++i)
        addVariable(items.emplace_back(indexed(tag, i), description + " of item " + std::to_string(i), value, this));
}

int Object::retrieveInteger(const Defaults& defaults, uint32_t id, Persistency* persistency, const std::string& tag,
                            int minimum, int maximum, int fallback) {
    TARVO_LOG_STATIC(3) << "Parsing integer " << tag << " with id " << id << " between " << minimum << " and "
                        << maximum << " default = " << fallback;
    int value;
    if (!persistency) {
        // Only an option that is absent takes the fallback: a negative one given is checked like any other.
        value = defaults.hasInteger(tag) ? defaults.getInteger(tag) : fallback;
        TARVO_LOG_STATIC(4) << "value read from defaults = " << value;
    } else {
        Integer stored(tag, "", -1, nullptr);
        persistency->read(static_cast<int>(id), IntegerMap{{tag, &stored}});
        value = stored.value() < 0 ? fallback : stored.value();
        TARVO_LOG_STATIC(4) << "value read from persistency = " << value;
    }
    if (value <= minimum)
        throw ErrorRunTime("Object::retrieveInteger", "Integer parameter " + tag + " = " + std::to_string(value) +
                                                          " must be stricly greater than " + std::to_string(minimum));
    if (value >= maximum)
        throw ErrorRunTime("Object::retrieveInteger", "Integer parameter " + tag + " = " + std::to_string(value) +
                                                          " must be stricly smaller than " + std::to_string(maximum));
    TARVO_LOG_STATIC(4) << "Done, value = " << value;
    return value;
}

std::string Object::retrieveString(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                   const std::string& tag, const std::string& fallback) {
    TARVO_LOG_STATIC(3) << "Parsing string " << tag << " with id " << id << " default = " << fallback;
    std::string value;
    if (!persistency) {
        value = defaults.getString(tag);
        TARVO_LOG_STATIC(4) << "value read from defaults = " << value;
    } else {
        String stored(tag, "", "", nullptr);
        persistency->read(static_cast<int>(id), StringMap{{tag, &stored}});
        value = stored.value();
        TARVO_LOG_STATIC(4) << "value read from persistency = " << value;
    }
    if (value.empty()) value = fallback;
    TARVO_LOG_STATIC(4) << "Done, value = " << value;
    return value;
}

// ---- saved values -----------------------------------------------------------------------------------

void Object::push() {
    std::map<std::string, double> saved;
    for (const auto& [tag, q] : quantities) {
        TARVO_LOG(4) << "Saving " << q->fullTag() << " = " << q->toDouble();
        saved[tag] = q->toDouble();
    }
    savedQuantities.push_back(std::move(saved));
    for (const auto& [tag, child] : children_)
        if (auto* object = dynamic_cast<Object*>(child.get())) object->push();
}

void Object::pop() {
    if (!savedQuantities.empty()) {
        for (const auto& [tag, value] : savedQuantities.back()) {
            const auto it = quantities.find(tag);
            if (it == quantities.end()) continue;
            TARVO_LOG(4) << "Retrieving " << it->second->fullTag() << " = " << value;
            it->second->active() = value;
        }
        savedQuantities.pop_back();
    }
    for (const auto& [tag, child] : children_)
        if (auto* object = dynamic_cast<Object*>(child.get())) object->pop();
}

void Object::clear() {
    savedQuantities.clear();
    for (const auto& [tag, child] : children_)
        if (auto* object = dynamic_cast<Object*>(child.get())) object->clear();
}

// ---- copies and equality ----------------------------------------------------------------------------

Node& Object::operator=(const Node& other) {
    if (this == &other) return *this;
    if (const auto* o = Tarvo::Utility::cachedCast<const Object*>(&other)) {
        copyValues(integers, o->integers, [](Integer& a, const Integer& b) { a = b.value(); });
        copyValues(integerVectors, o->integerVectors, [](IntegerVector& a, const IntegerVector& b) { a.value() = b.value(); });
        copyValues(quantities, o->quantities, [](Quantity& a, const Quantity& b) { a = b; });
        copyValues(quantityVectors, o->quantityVectors, [](QuantityVector& a, const QuantityVector& b) { a.value() = b.value(); });
        copyValues(quantityMatrices, o->quantityMatrices, [](QuantityMatrix& a, const QuantityMatrix& b) { a.value() = b.value(); });
        copyValues(strings, o->strings, [](String& a, const String& b) { a = b.value(); });
        copyValues(stringVectors, o->stringVectors, [](StringVector& a, const StringVector& b) { a.value() = b.value(); });
    }
    return Node::operator=(other);
}

Node& Object::operator=(Node&& other) { return *this = static_cast<const Node&>(other); }

bool Object::equals(const Node& other) const {
    const auto* o = dynamic_cast<const Object*>(&other);
    if (!o || !Node::equals(other)) return false;
    const auto sameValue = [](const Value& a, const Value& b) { return a.sameUnits(b) && a.toDouble() == b.toDouble(); };
    return equalMaps(integers, o->integers, [](const Integer& a, const Integer& b) { return a.value() == b.value(); }) &&
           equalMaps(integerVectors, o->integerVectors,
                     [](const IntegerVector& a, const IntegerVector& b) { return a.value() == b.value(); }) &&
           equalMaps(quantities, o->quantities, [&](const Quantity& a, const Quantity& b) { return sameValue(a, b); }) &&
           equalMaps(quantityVectors, o->quantityVectors,
                     [](const QuantityVector& a, const QuantityVector& b) { return sameValues(a.value(), b.value()); }) &&
           equalMaps(quantityMatrices, o->quantityMatrices,
                     [](const QuantityMatrix& a, const QuantityMatrix& b) { return sameValues(a.value(), b.value()); }) &&
           equalMaps(strings, o->strings, [](const String& a, const String& b) { return a.value() == b.value(); }) &&
           equalMaps(stringVectors, o->stringVectors,
                     [](const StringVector& a, const StringVector& b) { return a.value() == b.value(); });
}

// ---- storage ----------------------------------------------------------------------------------------

void Object::insertStuff(Persistency* persistency, int offset) const {
    persistency->insert(integers, offset);
    persistency->insert(integerVectors, offset);
    persistency->insert(quantities, offset);
    persistency->insert(quantityVectors, offset);
    persistency->insert(quantityMatrices, offset);
    persistency->insert(strings, offset);
    persistency->insert(stringVectors, offset);
}

// Vectors first: their update reads what the store holds of them, and a store that gathers the rows of a
// transaction sends them before it reads, so the first node's reads come before anything is gathered.
void Object::updateStuff(Persistency* persistency, int offset) const {
    const int id = static_cast<int>(id_) - offset;
    persistency->update(id, integerVectors);
    persistency->update(id, quantityVectors);
    persistency->update(id, quantityMatrices);
    persistency->update(id, stringVectors);
    persistency->update(id);
    persistency->update(id, integers);
    persistency->update(id, quantities);
    persistency->update(id, strings);
}

void Object::restoreQuantities(Persistency* persistency) {
    const int id = static_cast<int>(id_) - offset_;
    persistency->read(id, quantities);
    persistency->read(id, quantityVectors);
    persistency->read(id, quantityMatrices);
}

void Object::restoreParameters(Persistency* persistency) {
    const int id = static_cast<int>(id_) - offset_;
    persistency->read(id, integers);
    persistency->read(id, integerVectors);
    persistency->read(id, strings);
    persistency->read(id, stringVectors);
}
