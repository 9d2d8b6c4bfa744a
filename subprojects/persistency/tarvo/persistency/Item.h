#ifndef TARVO_PERSISTENCY_ITEM_H
#define TARVO_PERSISTENCY_ITEM_H

#include <string>

class Persistent;

// A named variable of the object tree: what a user can read, set, print or store. Its tag and
// description are a public interface (paths, reports, the store), so both are checked for the
// characters they may hold.
class Item {
public:
    // Throws ErrorInvalidCharacter for a tag or description with characters outside the rules.
    Item(const std::string& tag, const std::string& description, Persistent* parent);
    Item(const Item&) = default;
    Item& operator=(const Item&) = default;
    virtual ~Item() = default;
    // The name of the class: "Quantity", "String", ... and, for nodes, their type string.
    virtual const std::string& type() const = 0;

    const std::string& tag() const { return tag_; }
    const std::string& description() const { return description_; }
    // Unlike the constructor, setTag admits the "." and ":" of tag paths.
    void setTag(const std::string& tag);
    void setTag(const std::u32string& tag);
    void setDescription(const std::string& description);
    void setDescription(const std::u32string& description);

    Persistent* parent() const { return parent_; }
    void setParent(Persistent* parent) { parent_ = parent; }
    // "root:child:tag": the owner's full tag and this tag; a root's is its tag.
    std::string fullTag() const;

    // Same tag, description, type and owner tag (or both without owner); values are not compared.
    bool operator==(const Item& o) const;
    bool operator!=(const Item& o) const { return !(*this == o); }

protected:
    std::string tag_;
    std::string description_;
    Persistent* parent_;
};

#endif
