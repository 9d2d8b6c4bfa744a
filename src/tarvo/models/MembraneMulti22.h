#ifndef TARVO_MODELS_MEMBRANEMULTI22_H
#define TARVO_MODELS_MEMBRANEMULTI22_H

#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/models/ChainStages.h>
#include <tarvo/models/Membrane22.h>

#include <string>
#include <vector>

// A membrane with two feeds as a chain of lumped modules: the retentate passes from each stage to the next,
// the permeate with it (co-current) or against it (counter-current), so that the chain approximates the
// profiles along a real module. Area and both pressure drops are shared equally among the stages, the
// permeances are common. Where the stages estimate their stage cut, each estimate is driven to its result.
class MembraneMulti22 : public virtual Model, public FlowSheet {
public:
    // "GM<i>", for i from 1 to the number of stages.
    std::string stagename(int i) const;

    void setup() override;
    void pre(SolutionMode mode, int level) override;
    void post(SolutionMode mode, int level) override;
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;
    // A counter-current chain starts its solve with a few passes; Newton's method closes its permeate loops,
    // which passes alone close only slowly, as each carries the permeate back by one stage.
    int passesBeforeNewton() const override;

    Quantity A{"A", "Membrane area", "m2", this, 1.0};
    Quantity deltaPretentate{"deltaPretentate", "Retentate compartment pressure drop", "Pa", this, 0.0};
    Quantity deltaPpermeate{"deltaPpermeate", "Permeate compartment pressure drop", "Pa", this, 0.0};
    Quantity stageCut{"stageCut", "Fraction of feed to permeate", "", this, 0.1};
    Integer stages{"stages", "total number of stages", 10, this};
    std::vector<Quantity> permeance;
    std::vector<Quantity> outSplit;

protected:
    MembraneMulti22(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                    Persistent* parent, Persistent* root, const std::string& stageType, bool counterflow);

private:
    // The stages and the streams between them.
    void build_(const std::string& stageType);
    // The stream that leaves with the permeate of the whole chain.
    std::string permeateProduct_() const;
    // The total phase of the stream `tag` of this flowsheet.
    const Phase::MassMolar& total_(const std::string& tag);
    bool estimated_();

    const bool counterflow_;
    ChainStages<Membrane22> stageUnits_;
};

// The four arrangements of the catalogue: stages of one kind, co-current or counter-current.
template <const char* stageType, bool counterflow> class MembraneMulti22Of : public MembraneMulti22 {
public:
    MembraneMulti22Of(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                      Persistent* parent, Persistent* root)
        : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
          MembraneMulti22(defaults, id, persistency, parent, root, stageType, counterflow) {}
};

inline constexpr char rtscStage[] = "Membrane22Rtsc";
inline constexpr char linearStage[] = "Membrane22Linear";
using MembraneMulti22RtscCoflow = MembraneMulti22Of<rtscStage, false>;
using MembraneMulti22RtscCounterflow = MembraneMulti22Of<rtscStage, true>;
using MembraneMulti22LinearCoflow = MembraneMulti22Of<linearStage, false>;
using MembraneMulti22LinearCounterflow = MembraneMulti22Of<linearStage, true>;

#endif
