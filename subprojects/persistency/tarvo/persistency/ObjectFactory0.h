#ifndef TARVO_PERSISTENCY_OBJECTFACTORY0_H
#define TARVO_PERSISTENCY_OBJECTFACTORY0_H

#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <map>

template <typename Signature, typename Key> class ObjectFactory0;

// A registry of classes that are no nodes, created by key with no arguments: B is the base pointer.
template <typename B, typename Key> class ObjectFactory0<B(), Key> {
public:
    using Creator = B (*)();

    // Adds class C under `key`; a key registered already is refused.
    template <typename C> void Register(const Key& key) {
        if (!creators_.emplace(key, [] () -> B { return new C; }).second) throw ErrorObjectFactory(TARVO_FUNCTION, key);
    }
    // A new object of the class of `key`, owned by the caller; an unknown key is refused.
    B create(const Key& key) const {
        const auto it = creators_.find(key);
        if (it == creators_.end()) throw ErrorObjectFactory(TARVO_FUNCTION, key);
        return it->second();
    }
    bool registered(const Key& key) const { return creators_.count(key) != 0; }

private:
    std::map<Key, Creator> creators_;
};

#endif
