#ifndef TARVO_MODELS_REFERENCEFLOWSHEET_H
#define TARVO_MODELS_REFERENCEFLOWSHEET_H

#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/models/Inputs.h>

#include <string>
#include <vector>

// What the reference flowsheets share: a solve by sequential passes alone, at least as many as the flowsheets
// inside them want, and the ways they set their design, state their design equations and work out their
// products.
class ReferenceFlowSheet : public virtual Model, public FlowSheet {
public:
    // The largest of 50 and the passes of the flowsheets inside, so that a multi-stage module inside gets
    // at least as many sequential passes as it needs on its own.
    int sequential() const override;
    // The simultaneous solve finishes these plants from their passes, but not from a stored case: there it
    // starts from states that the passes would have refreshed (the engine's, the compressor trains') and
    // ends on a plateau above its tolerance. Their passes close all of them, the first time and again.
    bool simultaneousSupported() const override { return false; }
    void pre(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}

protected:
    ReferenceFlowSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                       Persistent* parent, Persistent* root);

    // A design equation of the flowsheet: `target` is driven to `value` at each pass. Its residual is
    // scaled by the size of the variable that it sets, so that areas, pressures and fractions would weigh
    // alike in a simultaneous solve.
    void designEquation(std::list<Assignment*>::iterator& it, Value& target, const Value& value,
                        const std::string& tag, const std::string& description);
    // recovery[i] the product's flow of component i over the feed's, purity[i] its mole fraction in the
    // product; a component without feed gets what the division of values gives.
    void productShares(const std::string& product, const std::string& feed, std::vector<Quantity>& recovery,
                       std::vector<Quantity>& purity);
    // The design of the compressor `unit`, a single machine or a train: discharge pressure and yields.
    void setCompressor(const std::string& unit, const Value& P, double theta, double etaM, double etaE);
};

// The passes that `sheet` wants: the largest of `least` and those of the flowsheets inside it.
int passesOfNestedSheets(const FlowSheet& sheet, int least);
// Whether every flowsheet inside `sheet` can be solved simultaneously.
bool nestedSheetsSupportSimultaneous(const FlowSheet& sheet);

#endif
