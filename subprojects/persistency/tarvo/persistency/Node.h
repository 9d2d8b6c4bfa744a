#ifndef TARVO_PERSISTENCY_NODE_H
#define TARVO_PERSISTENCY_NODE_H

#include <tarvo/persistency/Defaults.h>
#include <tarvo/persistency/Icon.h>
#include <tarvo/persistency/Persistent.h>
#include <tarvo/utility/Diagnostic.h>

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>

class Persistency;
class NodeFactory;

// A node of the object tree. Nodes are numbered depth first, so that a node and all its descendants
// occupy the contiguous identifiers [id, id + range): deleting, finding or copying a subtree needs only
// that pair. In the store an identifier differs from the one in memory by one offset per tree.
class Node : public Persistent, public virtual Diagnostic {
public:
    // With a null persistency a new node tagged from `defaults`; otherwise the node stored under `id`,
    // rebuilt with all its children.
    Node(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
         Persistent* root);
    Node(const Node&) = delete;
    ~Node() override;

    const std::string& type() const override { return type_; }
    // A descendant took a new identifier behind `childId`: move the later subtrees up by one.
    virtual void shiftAfter(uint32_t childId);
    virtual uint32_t rootId() const;
    virtual uint32_t range() const { return 1 + maxId_ - id_; }
    // The identifier of a new child, right behind this node's subtree.
    virtual uint32_t newId();
    // Stores the tree at the end of the store; returns this node's identifier there.
    virtual int insert(Persistency* persistency);
    // Writes the values of the tree; returns this node's identifier in the store.
    virtual int update(Persistency* persistency);
    // Reads the quantities of this node and all its descendants.
    virtual void restore(Persistency* persistency);
    // Removes this node's block from the store.
    virtual void remove(Persistency* persistency);
    virtual void insertStuff(Persistency* persistency, int offset) const;
    virtual void updateStuff(Persistency* persistency, int offset) const;
    // A new node of the same type and tag with the values of this one.
    virtual Node* clone() const;
    // Copies the values of `other` where the trees agree; structure, tags and identity stay.
    virtual Node& operator=(const Node& other);
    virtual Node& operator=(Node&& other);
    virtual void restoreQuantities(Persistency* persistency);
    virtual void restoreParameters(Persistency* persistency);

    Node& addChild(const std::string& type, const Tarvo::Persistency::Defaults& defaults);
    Node& addChild(const Node& node);
    Node& child(const std::string& tag) const;
    // A path of child tags joined by ":".
    Node& at(const std::string& path) const;
    bool hasChild(const std::string& tag) const { return children_.count(tag) != 0; }
    std::unique_ptr<Node> prune(const std::string& tag);
    void renameChild(const std::string& oldTag, const std::string& newTag);
    // The node with identifier `id` in this subtree, found through the ranges.
    Node& search(uint32_t id) const;
    bool contains(uint32_t id) const { return id >= id_ && id <= maxId_; }
    int offset() const { return offset_; }
    void setIcon(const std::string& type, double width, double height);
    // This node's own icon, or that of its type.
    const Icon& icon() const;

    uint32_t maxId() const { return maxId_; }
    Node* parentNode() const;
    Node* rootNode() const;
    bool inserted() const { return inserted_; }
    bool retrieved() const { return retrieved_; }
    const std::map<std::string, std::unique_ptr<Node>>& children() const { return children_; }
    // Counts the changes of the set of children: what a subclass derives from them holds while it stands.
    unsigned childrenVersion() const { return childrenVersion_; }

    // Same tag, description, type, root tag, number of children, and pairwise equal children by tag.
    virtual bool equals(const Node& other) const;

    // The subtree as indented JSON: identity, then the children. The text starts with "{" and ends with
    // "}" without a line end, so that a parent can embed it; `level` is the indentation in pairs of
    // blanks.
    virtual std::ostream& printJson(std::ostream& out, int level) const;

protected:
    void insert(Persistency* persistency, int offset);
    void update(Persistency* persistency, int offset);

    uint32_t maxId_;
    Persistent* root_;
    std::string type_;
    int32_t offset_ = 0;
    bool inserted_ = false;
    bool retrieved_ = false;
    std::unique_ptr<Icon> icon_;
    std::map<std::string, std::unique_ptr<Node>> children_;

private:
    unsigned childrenVersion_ = 0;
    friend class NodeFactory;
    void shiftSubtree();
    Node& adopt(Node* child, const char* function);
};

#endif
