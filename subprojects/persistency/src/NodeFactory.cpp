#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/utility/FunctionName.h>

#include <algorithm>
#include <map>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::TypeDescriptor;

namespace {

struct Tables {
    std::map<std::string, NodeFactory::Creator> factories;
    std::vector<TypeDescriptor> types;
    std::map<std::string, Defaults> defaults;
    std::map<std::string, Icon> icons;
};

Tables& tables() {
    static Tables instance;
    return instance;
}

bool knownCategory(const std::string& category) {
    return category == "phase" || category == "stream" || category == "unit" || category == "flowsheet" ||
           category == "option";
}

// The caller's name is worked out of its signature only on the way to the error: registering the aliases of the
// catalogue at every start looks up a type ninety times.
const TypeDescriptor& descriptorOf(const std::string& type, const char* signature) {
    for (const TypeDescriptor& d : tables().types)
        if (d.name == type) return d;
    throw ErrorObjectFactory(Tarvo::Utility::shortFunctionName(signature), "type " + type + " not found");
}

} // namespace

namespace Tarvo::Persistency {

const IntegerOption& TypeDescriptor::integerOption(const std::string& option) const {
    for (const IntegerOption& o : integerOptions)
        if (o.name == option) return o;
    throw ErrorRunTime(TARVO_FUNCTION, "integer option " + option + " unsupported");
}

const StringOption& TypeDescriptor::stringOption(const std::string& option) const {
    for (const StringOption& o : stringOptions)
        if (o.name == option) return o;
    throw ErrorRunTime(TARVO_FUNCTION, "string option " + option + " unsupported");
}

} // namespace Tarvo::Persistency

void NodeFactory::registerCreator(const std::string& type, Creator creator, const TypeDescriptor& descriptor,
                                  double width, double height) {
    Tables& t = tables();
    if (t.factories.count(type)) throw ErrorObjectFactory(TARVO_FUNCTION, type);
    if (!knownCategory(descriptor.category)) throw ErrorObjectFactory(TARVO_FUNCTION, descriptor.category);
    TypeDescriptor record = descriptor;
    if (record.icon.empty()) record.icon = record.category;
    t.factories[type] = creator;
    t.defaults[type] = Defaults();
    t.types.push_back(record);
    t.icons[type] = Icon{record.icon, width, height};
}

void NodeFactory::registerAlias(const std::string& base, const std::string& alias, const std::string& description,
                                const Defaults& options, const std::string& icon, double width, double height) {
    Tables& t = tables();
    if (t.factories.count(alias)) throw ErrorObjectFactory(TARVO_FUNCTION, "type " + alias + " already registered");
    if (!t.factories.count(base)) throw ErrorObjectFactory(TARVO_FUNCTION, "base type " + base + " not found");
    TypeDescriptor record = descriptorOf(base, __PRETTY_FUNCTION__);
    record.name = alias;
    record.description = description;
    record.icon = icon.empty() ? record.category : icon;
    for (const auto& option : options.integerOptions()) {
        const std::string& name = option.first; // a structured binding cannot be captured in C++17
        auto& list = record.integerOptions;
        const auto it = std::find_if(list.begin(), list.end(), [&](const auto& o) { return o.name == name; });
        if (it == list.end()) throw ErrorRunTime(TARVO_FUNCTION, "integer option " + name + " unsupported by base type");
        list.erase(it);
    }
    for (const auto& option : options.stringOptions()) {
        const std::string& name = option.first;
        auto& list = record.stringOptions;
        const auto it = std::find_if(list.begin(), list.end(), [&](const auto& o) { return o.name == name; });
        if (it == list.end()) throw ErrorRunTime(TARVO_FUNCTION, "string option " + name + " unsupported by base type");
        list.erase(it);
    }
    t.factories[alias] = t.factories[base];
    t.defaults[alias] = options;
    t.types.push_back(record);
    t.icons[alias] = Icon{record.icon, width, height};
}

Node* NodeFactory::create(const std::string& type, const Defaults& defaults, uint32_t id, Persistency* persistency,
                          Persistent* parent, Persistent* root) {
    Tables& t = tables();
    const auto it = t.factories.find(type);
    if (it == t.factories.end()) throw ErrorObjectFactory(TARVO_FUNCTION, "type " + type + " not found");
    // The caller's options win over those that an alias fixes.
    Defaults merged = defaults;
    const Defaults& fixed = t.defaults[type];
    for (const auto& [name, value] : fixed.integerOptions())
        if (!merged.hasInteger(name)) merged.setInteger(name, value);
    for (const auto& [name, value] : fixed.stringOptions())
        if (!merged.hasString(name)) merged.setString(name, value);
    Node* node = it->second(merged, id, persistency, parent, root);
    node->type_ = type;
    return node;
}

bool NodeFactory::registered(const std::string& type) { return tables().factories.count(type) != 0; }

const TypeDescriptor& NodeFactory::typeDescriptor(const std::string& type) {
    return descriptorOf(type, __PRETTY_FUNCTION__);
}

const Icon& NodeFactory::icon(const std::string& type) {
    const auto it = tables().icons.find(type);
    if (it == tables().icons.end()) throw ErrorObjectFactory(TARVO_FUNCTION, "icon for type " + type + " not found");
    return it->second;
}

const std::vector<TypeDescriptor>& NodeFactory::types() { return tables().types; }

void NodeFactory::clear() { tables() = Tables(); }
