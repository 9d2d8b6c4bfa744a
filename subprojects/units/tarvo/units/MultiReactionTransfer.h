#ifndef TARVO_UNITS_MULTIREACTIONTRANSFER_H
#define TARVO_UNITS_MULTIREACTIONTRANSFER_H

#include <tarvo/units/MultiReaction.h>

#include <vector>

// The transfer of a membrane between two sides: of all of component c that enters on both sides, the
// fraction theta[c] leaves on side 1 and the rest on side 0. transfer[1][c], what side 1 receives, is
// n0 theta + n1 (theta - 1), with n0 and n1 the sides' inlet flows; side 0 gives as much. Where a side
// would give more than it has, every transfer is scaled by `factor`.
class MultiReactionTransfer : public MultiReaction<2> {
public:
    MultiReactionTransfer(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                          Persistent* parent, Persistent* root);

    void calculate(int level) override;

    Quantity factor{"factor", "bounding factor to prevent negative flows", "", this, 1.0};
    std::vector<Quantity> theta;
};

#endif
