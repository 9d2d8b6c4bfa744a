#ifndef TARVO_COMPONENTS_LISTCOMPONENTS_H
#define TARVO_COMPONENTS_LISTCOMPONENTS_H

#include <tarvo/components/ComponentGeneric.h>

#include <map>
#include <string>
#include <vector>

// The species of the process, in the order that gives each its index. Every composition vector of the
// kernel has one entry for each species of this list. The list owns its components.
class ListComponents {
public:
    ListComponents() = default;
    ListComponents(const ListComponents&) = delete;
    ListComponents& operator=(const ListComponents&) = delete;
    ~ListComponents();

    // Takes ownership, gives the component the next index and enters its name; a name given twice
    // then refers to the newer entry.
    void add(ComponentGeneric* c);
    // The index of a name; ErrorNoComponent if the list has no such component.
    int lookup(const std::string& name) const;
    // Entry i, unchecked: callers loop up to NCOMPONENTS.
    ComponentGeneric* operator[](int i) const { return components_[i]; }
    ComponentGeneric* operator[](const std::string& name) const;
    // Deletes every component and empties the list.
    void clear();

    int size() const { return n_; }
    // All names in order of addition, joined by ";".
    const std::string& names() const { return names_; }

private:
    int n_ = 0;
    std::map<std::string, int> indices_;
    std::vector<ComponentGeneric*> components_;
    std::string names_;
};

// The process-wide list, and its count, kept equal to components.size() for loops in model code.
extern ListComponents components;
extern int NCOMPONENTS;

// Fills the list with the kernel's species: CO2, CH4, H2O, N2, O2 in this order, the three gases
// dissolving in water by Henry's law. Whatever was in the list before is deleted.
void loadComponents();

#endif
