#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -2;
// Messages of a model show at any ordinary verbosity.
constexpr int reportVerbosity = 8;

// Appends the path of a child to a message that rises from it: "text @ child", then "text @ parent.child".
std::string withOrigin(const std::string& message, const std::string& childTag) {
    const auto at = message.find("@ ");
    if (message.find('@') == std::string::npos || at == std::string::npos) return message + " @ " + childTag;
    return message.substr(0, at + 2) + childTag + "." + message.substr(at + 2);
}
} // namespace

Model::Model(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Object(defaults, id, persistency, parent, root) {
    addVariable(nCalculations);
    addVariable(errors);
    addVariable(warnings);
}

Value& Model::Q(const std::string& name, const std::string& component) {
    return Q(name, components.lookup(component));
}

Value& Model::Q(const std::string& name, int index, const std::string& component) {
    return Q(name, index, components.lookup(component));
}

void Model::addComponentVariables(std::vector<Quantity>& items, const std::string& tag,
                                  const std::string& description, const std::string& unit, double value) {
    items.clear();
    items.reserve(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        addVariable(items.emplace_back(tag + "[" + std::to_string(i) + "]",
                                       description + " of " + components[i]->name, unit, this, value));
    }
}

void Model::setPristine() {
    TARVO_LOG(3) << "Now setting pristine for block " << fullTag();
    nCalculations.value() = 0;
}

void Model::setPristineRecursive() {
    TARVO_LOG(3) << "Now setting pristine for block " << fullTag() << " and for all its contained objects";
    nCalculations.value() = 0;
    for (Model* model : subModels()) model->setPristineRecursive();
}

void Model::unSetInput() {
    for (const auto& [tag, quantity] : quantities) quantity->unsetInput();
    for (Model* model : subModels()) model->unSetInput();
}

void Model::resetErrors() {
    TARVO_LOG(4) << "Now resetting errors for block " << fullTag();
    errors.value().clear();
    warnings.value().clear();
    for (Model* model : subModels()) model->resetErrors();
}

void Model::reportError(const std::string& text) {
    if (text.empty()) return;
    TARVO_LOG_AT(reportVerbosity + verbosityInstance(), 4) << "===== Logging error " << text << " in " << fullTag();
    errors.value().push_back(text);
}

void Model::reportWarning(const std::string& text) {
    if (text.empty()) return;
    TARVO_LOG_AT(reportVerbosity + verbosityInstance(), 4) << "===== Logging warning " << text << " in " << fullTag();
    warnings.value().push_back(text);
}

void Model::reportMessages() {
    for (Model* model : subModels()) {
        const std::string& tag = model->tag();
        model->reportMessages();
        if (model->errors.size() + model->warnings.size() == 0) continue;
        TARVO_LOG(3) << "Pulling up " << model->errors.size() << " errors and " << model->warnings.size()
                     << " warnings from " << model->fullTag();
        for (const std::string& e : model->errors.value()) errors.value().push_back(withOrigin(e, tag));
        for (const std::string& w : model->warnings.value()) warnings.value().push_back(withOrigin(w, tag));
    }
}

std::vector<Node*> Model::storedSubObjects(const std::string& tag) const {
    std::vector<std::pair<uint32_t, Node*>> found;
    for (const auto& [childTag, child] : children_)
        if (childTag.compare(0, tag.size(), tag) == 0) found.emplace_back(child->id(), child.get());
    std::sort(found.begin(), found.end());
    std::vector<Node*> nodes;
    for (const auto& [id, node] : found) nodes.push_back(node);
    return nodes;
}

void Model::addSubObject(int verbosity, const Defaults& defaults, int index, const std::string& tag,
                         const std::string& description, const std::string& typeOption, const std::string& kind) {
    const std::string childTag = tag + "[" + std::to_string(index) + "]";
    const std::string option = typeOption + "[" + std::to_string(index) + "]";
    if (!defaults.hasString(option)) throw ErrorRunTime("Model::addSubObjects<", "type unspecified for " + childTag);
    TARVO_LOG_AT(verbosityFile + verbosity, 3) << "Adding " << kind << " " << childTag << " of type "
                                               << defaults.getString(option);
    addChild(defaults.getString(option), Defaults(childTag, description));
}

const std::vector<Model*>& Model::subModels() const {
    if (subModels_.version == childrenVersion()) return subModels_.models;
    subModels_.models.clear();
    for (const auto& [tag, child] : children_)
        if (auto* model = dynamic_cast<Model*>(child.get())) subModels_.models.push_back(model);
    subModels_.version = childrenVersion();
    return subModels_.models;
}
