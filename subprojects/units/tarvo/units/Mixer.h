#ifndef TARVO_UNITS_MIXER_H
#define TARVO_UNITS_MIXER_H

#include <tarvo/units/Connectivity.h>

#include <vector>

// Joins any number of inlets in one outlet, at the lowest pressure of the inlets that carry flow.
class Mixer : public Connectivity {
public:
    Mixer(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
          Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;

    Integer NITER{"NITER", "Number of iterations", 0, this};
    Quantity Tavg{"Tavg", "Mass-weighted average inlet temperature", "K", this, 298.15};

private:
    std::vector<EdgeBase*> feeds_; // the connected inlets
};

#endif
