#ifndef TARVO_COMPONENTS_CHEMICALFORMULA_H
#define TARVO_COMPONENTS_CHEMICALFORMULA_H

#include <tarvo/value/Value.h>

#include <map>
#include <string>

// Element counts read from a formula such as "C6H5OH": an upper-case letter starts a symbol, one
// lower-case letter may follow, and digits after it give the count (1 without digits). Repeated symbols
// add up. Other characters (brackets, dots of hydrates) are skipped and do not multiply anything.
class ChemicalFormula {
public:
    explicit ChemicalFormula(const std::string& formula);

    const std::map<std::string, double>& counts() const { return counts_; }
    // Sum of count times atomic weight, kg/kmol; an element without an atomic weight adds nothing.
    Value mw() const;

private:
    std::map<std::string, double> counts_;
};

// Standard atomic weights, g/mol, of the 84 elements that the catalogue may use, built on first use.
const std::map<std::string, double>& atomicWeights();

#endif
