#ifndef TARVO_COMPONENTS_COMPONENTCATALOGUE_H
#define TARVO_COMPONENTS_COMPONENTCATALOGUE_H

#include <tarvo/components/ComponentGeneric.h>

#include <string>
#include <vector>

// A new component of the catalogue entry `entry` (the species' class name, as "water" or "CO2"), named
// `name` in the component list; null for an entry that the catalogue does not have. The caller owns it.
ComponentGeneric* newCatalogueComponent(const std::string& entry, const std::string& name);
// The names of all entries, sorted.
std::vector<std::string> catalogueEntries();

#endif
