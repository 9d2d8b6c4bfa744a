#ifndef TARVO_CORE_SENSITIVITY_H
#define TARVO_CORE_SENSITIVITY_H

#include <tarvo/core/Ordering.h>
#include <tarvo/core/SensitivityColumns.h>
#include <tarvo/core/SensitivityInput.h>
#include <tarvo/core/SensitivityResult.h>
#include <tarvo/utility/Diagnostic.h>

#include <memory>
#include <string>

class Model;

// A sensitivity run: the model is solved at every point of the grid of the controlled variables, in the
// order of the input, each point from the solution of the last one without errors, and the monitored
// variables are recorded. After every round the results so far replace the results file (XML) and the
// files beside it with the same name and the endings ".csv" and ".svg", so that a run that is stopped
// leaves what it has done. A failed round is recorded and the walk goes on from the last good state.
class Sensitivity : public Diagnostic {
public:
    Sensitivity(const SensitivityInput& input, const std::string& resultsFile);

    // The model to work on, not owned.
    void attach(Model* model) { model_ = model; }
    int maxRound() const;
    // Errors: "Sensitivity not defined", "Model error", "Starting round outside upper limit", and those of
    // a tag path or unit of a variable, raised before the first round.
    void execute();
    const SensitivityResult& result() const { return result_; }

private:
    // Checks the paths and units of all variables, and names the columns of the results.
    void resolveColumns_();
    std::string setControlled_(int round);
    SensitivityResult::Row calculate_(int round);
    void writeResults_() const;

    SensitivityInput input_;
    SensitivityResult result_;
    SensitivityColumns columns_;
    Model* model_ = nullptr;
    // None for an input that is not defined.
    std::unique_ptr<Ordering> ordering_;
    std::string resultsFile_;
};

#endif
