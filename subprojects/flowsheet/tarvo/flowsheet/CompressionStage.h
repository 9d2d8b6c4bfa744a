#ifndef TARVO_FLOWSHEET_COMPRESSIONSTAGE_H
#define TARVO_FLOWSHEET_COMPRESSIONSTAGE_H

#include <tarvo/flowsheet/FlowSheet.h>

// One stage of compression with cooling and knock-out: the compressor C takes the gas S02 to its pressure,
// and the intercooler COOL, a flash drum with a vapor and a condensate outlet, cools the compressed gas S03
// to its temperature at that pressure; the gas S04 leaves at out1, the condensate S05 at out2.
class CompressionStage : public FlowSheet {
public:
    CompressionStage(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                     Persistent* parent, Persistent* root);

    // The cooler works at the compressor's outlet pressure.
    void pre(SolutionMode mode, int level) override;
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}
};

#endif
