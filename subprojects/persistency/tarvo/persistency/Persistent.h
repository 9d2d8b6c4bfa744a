#ifndef TARVO_PERSISTENCY_PERSISTENT_H
#define TARVO_PERSISTENCY_PERSISTENT_H

#include <tarvo/persistency/Item.h>

#include <cstdint>
#include <string>

// The identity of a stored object: its place in the tree's numbering, a random UUID and two times.
class Persistent : public Item {
public:
    // A null parent makes a root, which is its own parent.
    Persistent(const std::string& tag, const std::string& description, Persistent* parent);

    uint32_t id() const { return id_; }
    const std::string& uuid() const { return uuid_; }
    double createdAt() const { return createdAt_; }
    double updatedAt() const { return updatedAt_; }
    void setUpdatedAt(double t) { updatedAt_ = t; }
    bool isRoot() const { return parent_ == nullptr || parent_ == this; }

protected:
    uint32_t id_ = 0;
    std::string uuid_;
    double createdAt_;
    double updatedAt_ = 0;
};

#endif
