#ifndef TARVO_PERSISTENCY_NODEFACTORY_H
#define TARVO_PERSISTENCY_NODEFACTORY_H

#include <tarvo/persistency/Defaults.h>
#include <tarvo/persistency/Icon.h>
#include <tarvo/persistency/Node.h>
#include <tarvo/persistency/TypeDescriptor.h>
#include <tarvo/utility/CachedCast.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

class Persistency;

// Creates every node of the tree from its type string, and keeps the catalogue record of each type.
// A type string is an opaque key: "Test<Membrane12Rtsc>" is an alias, a base type with fixed options,
// registered under that very string.
class NodeFactory {
public:
    using Creator = Node* (*)(const Tarvo::Persistency::Defaults&, uint32_t, Persistency*, Persistent*, Persistent*);

    template <typename C>
    static void registerType(const std::string& type, const std::string& description, const std::string& category,
                             bool instantiable, const std::vector<Tarvo::Persistency::IntegerOption>& integerOptions,
                             const std::vector<Tarvo::Persistency::StringOption>& stringOptions,
                             const std::vector<Tarvo::Persistency::QuantityOption>& quantityOptions,
                             const std::string& icon, double width, double height) {
        registerCreator(type, &createNode<C>,
                        {type, description, category, instantiable, integerOptions, stringOptions, quantityOptions,
                         icon},
                        width, height);
    }
    // An alias presents to the user only the options of its base that it does not fix.
    static void registerAlias(const std::string& base, const std::string& alias, const std::string& description,
                              const Tarvo::Persistency::Defaults& options, const std::string& icon, double width,
                              double height);

    // A new node, or with a persistency the stored node `id` with its subtree; the caller owns it.
    // Options fixed by an alias fill in what the caller's defaults lack.
    static Node* create(const std::string& type, const Tarvo::Persistency::Defaults& defaults, uint32_t id,
                        Persistency* persistency, Persistent* parent, Persistent* root);
    static bool registered(const std::string& type);
    static const Tarvo::Persistency::TypeDescriptor& typeDescriptor(const std::string& type);
    static const Icon& icon(const std::string& type);
    // The catalogue, in order of registration.
    static const std::vector<Tarvo::Persistency::TypeDescriptor>& types();
    // Forgets every registration; for the end of the kernel and for tests.
    static void clear();

private:
    template <typename C>
    static Node* createNode(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                            Persistent* parent, Persistent* root) {
        std::unique_ptr<Node> node(new C(defaults, id, persistency, parent, root));
        if (persistency) {
            node->restoreQuantities(persistency);
            node->restoreParameters(persistency);
        }
        return node.release();
    }
    static void registerCreator(const std::string& type, Creator creator,
                                const Tarvo::Persistency::TypeDescriptor& descriptor, double width, double height);
};

// A checked cast for model code: throws ErrorDynamicCast naming the node, its type and the target.
template <typename T> T my_cast(Node* node, const std::string& function) {
    T target = Tarvo::Utility::cachedCast<T>(node);
    if (!target) {
        throw ErrorDynamicCast(function, node ? node->type() : std::string("null"), typeid(T).name(),
                               node ? node->tag() : std::string("null"));
    }
    return target;
}

// The same for code that casts at every evaluation: `signature` is the caller's __PRETTY_FUNCTION__, cut to
// its name only for the error, so that a cast that succeeds builds no text.
template <typename T> T my_cast_in(Node* node, const char* signature) {
    if (T target = Tarvo::Utility::cachedCast<T>(node)) return target;
    return my_cast<T>(node, Tarvo::Utility::shortFunctionName(signature));
}

#endif
