#include <tarvo/persistency/Node.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/Persistency.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cassert>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Node::Node(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Persistent(defaults.tag(), defaults.description(), parent), maxId_(id), root_(root ? root : this),
      type_("Node") {
    id_ = id;
    if (!persistency) return;

    // Rebuild the stored node `id`: its place in memory comes from its parent, as if it were added now.
    id_ = maxId_ = UINT32_MAX;
    std::string uuid;
    int storedParent = 0, storedRoot = 0;
    double created = 0, updated = 0;
    persistency->retrieveObject(static_cast<int>(id), uuid, tag_, description_, type_, storedParent, storedRoot,
                                created, updated);
    id_ = maxId_ = parentNode()->newId(); // a root is its own parent, and comes out as 0
    offset_ = static_cast<int32_t>(rootNode()->id_) - storedRoot;
    retrieved_ = true;

    std::vector<std::pair<int, std::string>> stored;
    persistency->retrieveChildren(static_cast<int>(id), stored);
    for (const auto& [childId, childType] : stored)
        adopt(NodeFactory::create(childType, Defaults(), static_cast<uint32_t>(childId), persistency, this, root_),
              "Node::Node");
}

Node::~Node() = default;

Node* Node::parentNode() const { return isRoot() ? const_cast<Node*>(this) : static_cast<Node*>(parent_); }

Node* Node::rootNode() const { return static_cast<Node*>(root_); }

uint32_t Node::rootId() const { return rootNode()->id_; }

uint32_t Node::newId() {
    ++maxId_;
    if (!isRoot()) parentNode()->shiftAfter(id_);
    return maxId_;
}

void Node::shiftAfter(uint32_t childId) {
    ++maxId_;
    for (auto& [tag, child] : children_)
        if (child->id_ > childId) child->shiftSubtree();
    if (!isRoot()) parentNode()->shiftAfter(id_);
}

void Node::shiftSubtree() {
    ++id_;
    ++maxId_;
    retrieved_ = false;
    for (auto& [tag, child] : children_) child->shiftSubtree();
}

Node& Node::adopt(Node* child, const char* function) {
    std::unique_ptr<Node> owned(child);
    const std::string tag = owned->tag();
    if (children_.count(tag)) throw ErrorRunTime(function, "duplicate tag: " + tag);
    Node& result = *owned;
    children_.emplace(tag, std::move(owned));
    ++childrenVersion_;
    return result;
}

Node& Node::addChild(const std::string& type, const Defaults& defaults) {
    if (children_.count(defaults.tag())) throw ErrorRunTime("Node::addChild(type, defaults)", "duplicate tag: " + defaults.tag());
    const uint32_t id = newId();
    return adopt(NodeFactory::create(type, defaults, id, nullptr, this, root_), "Node::addChild(type, defaults)");
}

Node& Node::addChild(const Node& node) {
    if (children_.count(node.tag())) throw ErrorRunTime("Node::addChild copy", "duplicate tag: " + node.tag());
    const uint32_t id = newId();
    Node& copy = adopt(NodeFactory::create(node.type(), Defaults(node.tag(), node.description()), id, nullptr, this,
                                           root_),
                       "Node::addChild copy");
    copy = node;
    return copy;
}

Node& Node::child(const std::string& tag) const {
    const auto it = children_.find(tag);
    if (it == children_.end()) throw ErrorRunTime("Node::child", "non-existant tag " + tag);
    return *it->second;
}

Node& Node::at(const std::string& path) const {
    const Node* node = this;
    std::string::size_type begin = 0;
    while (true) {
        const auto colon = path.find(':', begin);
        node = &node->child(path.substr(begin, colon == std::string::npos ? std::string::npos : colon - begin));
        if (colon == std::string::npos) return const_cast<Node&>(*node);
        begin = colon + 1;
    }
}

std::unique_ptr<Node> Node::prune(const std::string& tag) {
    const auto it = children_.find(tag);
    if (it == children_.end()) throw ErrorRunTime("Node::prune", "error removing child");
    std::unique_ptr<Node> detached = std::move(it->second);
    children_.erase(it);
    ++childrenVersion_;
    return detached;
}

void Node::renameChild(const std::string& oldTag, const std::string& newTag) {
    const auto it = children_.find(oldTag);
    if (it == children_.end()) return;
    std::unique_ptr<Node> node = std::move(it->second);
    children_.erase(it);
    node->setTag(newTag);
    children_.emplace(newTag, std::move(node));
    ++childrenVersion_;
}

Node& Node::search(uint32_t id) const {
    const Node* node = this;
    if (!contains(id)) throw ErrorRunTime("Node::search", "id not found");
    while (node->id_ != id) {
        const Node* next = nullptr;
        for (const auto& [tag, child] : node->children_)
            if (child->contains(id)) next = child.get();
        if (!next) throw ErrorRunTime("Node::search", "id not found");
        node = next;
    }
    return const_cast<Node&>(*node);
}

void Node::setIcon(const std::string& type, double width, double height) {
    icon_ = std::make_unique<Icon>(Icon{type, width, height});
}

const Icon& Node::icon() const { return icon_ ? *icon_ : NodeFactory::icon(type_); }

int Node::insert(Persistency* persistency) {
    try {
        // The block is allocated inside the transaction that writes it, so that a driver can serialise
        // allocations of concurrent kernels.
        persistency->push_transaction();
        const int base = persistency->getId();
        insert(persistency, static_cast<int>(id_) - base);
        persistency->pop_transaction();
        return base;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void Node::insert(Persistency* persistency, int offset) {
    TARVO_LOG(3) << "Entered for " << fullTag() << " with id = " << id_;
    persistency->push_transaction();
    offset_ = static_cast<int32_t>(id_) - persistency->insertObject(*this, offset);
    assert(offset_ == offset);
    insertStuff(persistency, offset);
    TARVO_LOG(4) << "Inserting children for " << fullTag();
    for (const auto& [tag, child] : children_) {
        TARVO_LOG(4) << "Inserting " << tag << " of type " << child->type();
        child->insert(persistency, offset);
        TARVO_LOG(4) << "Done with " << tag;
    }
    TARVO_LOG(4) << "Done with inserting children " << fullTag();
    persistency->pop_transaction();
    inserted_ = true;
}

int Node::update(Persistency* persistency) {
    try {
        update(persistency, offset_);
        return static_cast<int>(id_) - offset_;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void Node::update(Persistency* persistency, int offset) {
    persistency->push_transaction();
    updateStuff(persistency, offset);
    for (const auto& [tag, child] : children_) child->update(persistency, offset);
    persistency->pop_transaction();
}

void Node::restore(Persistency* persistency) {
    restoreQuantities(persistency);
    for (const auto& [tag, child] : children_) child->restore(persistency);
}

void Node::remove(Persistency* persistency) { persistency->removeObject(static_cast<int>(id_) - offset_); }

void Node::insertStuff(Persistency*, int) const {}
void Node::updateStuff(Persistency*, int) const {}
void Node::restoreQuantities(Persistency*) {}
void Node::restoreParameters(Persistency*) {}

Node* Node::clone() const {
    std::unique_ptr<Node> copy(NodeFactory::create(type_, Defaults(tag_, description_), 0, nullptr, nullptr, nullptr));
    *copy = *this;
    return copy.release();
}

Node& Node::operator=(const Node& other) {
    if (this == &other) return *this;
    for (const auto& [tag, child] : children_) {
        const auto it = other.children_.find(tag);
        if (it != other.children_.end()) *child = *it->second;
    }
    return *this;
}

Node& Node::operator=(Node&& other) { return *this = static_cast<const Node&>(other); }

bool Node::equals(const Node& other) const {
    if (tag_ != other.tag_ || description_ != other.description_ || type_ != other.type_) return false;
    if (rootNode()->tag() != other.rootNode()->tag() || children_.size() != other.children_.size()) return false;
    for (const auto& [tag, child] : children_) {
        const auto it = other.children_.find(tag);
        if (it == other.children_.end() || !child->equals(*it->second)) return false;
    }
    return true;
}
