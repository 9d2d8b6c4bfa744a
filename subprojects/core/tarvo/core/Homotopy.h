#ifndef TARVO_CORE_HOMOTOPY_H
#define TARVO_CORE_HOMOTOPY_H

#include <tarvo/core/HomotopyInput.h>
#include <tarvo/utility/Diagnostic.h>

class Model;

// A homotopy run: all controlled variables move together in equal steps from their start to their end,
// and each point is solved from the solution of the one before. The first point with errors ends the run
// and puts the model back to the last good point (or to where it began).
class Homotopy : public Diagnostic {
public:
    explicit Homotopy(const HomotopyInput& input) : input_(input) {}

    // The model to work on, not owned.
    void attach(Model* model) { model_ = model; }
    // Errors: fewer than 2 points, no model, a tag path of a variable that is not in the model; all raised
    // before the first point.
    void execute();
    // The points solved without errors, from the first on.
    int goodPoints() const { return goodPoints_; }

private:
    std::string setPoint_(int point);

    HomotopyInput input_;
    Model* model_ = nullptr;
    int goodPoints_ = 0;
};

#endif
