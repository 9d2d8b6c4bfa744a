#include <tarvo/core/Model.h>
#include <tarvo/core/ReplacedFile.h>
#include <tarvo/core/Sensitivity.h>
#include <tarvo/core/SensitivityCsv.h>
#include <tarvo/core/SensitivityPlot.h>
#include <tarvo/core/StudyProgress.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <sstream>

namespace {

constexpr int verbosityFile = 0;

// The value of `q` in `unit`, or in its own unit when that is empty.
double valueIn(const Value& q, const std::string& unit) { return unit.empty() ? q.toDouble() : q.toDouble(unit); }

// Points of the variables, the last one first: it is digit 0 of the grid and runs fastest.
std::vector<int> gridOf(const SensitivityInput& input) {
    std::vector<int> m;
    for (auto v = input.controlled.rbegin(); v != input.controlled.rend(); ++v) m.push_back(v->points);
    return m;
}

std::unique_ptr<Ordering> orderingOf(const SensitivityInput& input) {
    return input.defined() ? makeOrdering(input.order, gridOf(input)) : nullptr;
}

} // namespace

Sensitivity::Sensitivity(const SensitivityInput& input, const std::string& resultsFile)
    : input_(input), ordering_(orderingOf(input)), resultsFile_(resultsFile) {}

int Sensitivity::maxRound() const {
    assert(ordering_ != nullptr);
    return ordering_->maxRound();
}

void Sensitivity::resolveColumns_() {
    columns_ = {};
    const auto column = [&](const std::string& tag, const std::string& label, const std::string& unit) {
        const Value& q = model_->Q(tag);
        if (!unit.empty()) q.checkuom(unit);
        return SensitivityColumn{label.empty() ? tag : label, unit.empty() ? q.unitText() : unit};
    };
    for (const ControlledVariable& v : input_.controlled) columns_.controlled.push_back(column(v.fullTag, v.label, v.unit));
    for (const MonitoredVariable& v : input_.monitored) columns_.monitored.push_back(column(v.fullTag, v.label, v.unit));
}

std::string Sensitivity::setControlled_(int round) {
    std::ostringstream settings;
    for (std::size_t i = 0; i < input_.controlled.size(); ++i) {
        const ControlledVariable& v = input_.controlled[i];
        const double value = v.value(ordering_->index(static_cast<int>(i), round));
        Value& q = model_->Q(v.fullTag);
        if (v.unit.empty())
            q.set(Value(value, q.units()));
        else
            q.set(value, v.unit);
        settings << (i ? " " : "") << "[" << v.fullTag << " = " << value << (v.unit.empty() ? "" : " " + v.unit) << "]";
    }
    return settings.str();
}

SensitivityResult::Row Sensitivity::calculate_(int round) {
    SensitivityResult::Row row;
    row.round = round;
    const auto start = std::chrono::steady_clock::now();
    // An error that the calculation throws fails this round, as errors in the model's lists do.
    int thrown = 0;
    try {
        model_->calculate(0);
        model_->reportMessages();
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        thrown = 1;
    }
    row.time = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    row.errors = static_cast<int>(model_->errorList().size()) + thrown;
    row.warnings = static_cast<int>(model_->warningList().size());
    // Only flowsheets count their iterations.
    row.iterations = model_->hasI("NITER") ? model_->I("NITER") : 0;
    for (const ControlledVariable& v : input_.controlled) row.controlled.push_back(valueIn(model_->Q(v.fullTag), v.unit));
    for (const MonitoredVariable& v : input_.monitored) row.monitored.push_back(valueIn(model_->Q(v.fullTag), v.unit));
    return row;
}

void Sensitivity::writeResults_() const {
    using Tarvo::Core::replaceFile;
    std::filesystem::path path(resultsFile_);
    // A file that cannot be written stays as it is; the run goes on.
    replaceFile(resultsFile_, [&](std::ostream& out) { result_.printXml(out); });
    replaceFile(path.replace_extension(".csv"), [&](std::ostream& out) { printSensitivityCsv(out, columns_, result_); });
    replaceFile(path.replace_extension(".svg"), [&](std::ostream& out) { printSensitivitySvg(out, columns_, result_); });
}

void Sensitivity::execute() {
    const std::string function = TARVO_FUNCTION;
    if (!ordering_) throw ErrorRunTime(function, "Sensitivity not defined");
    if (!model_) throw ErrorRunTime(function, "Model error");
    if (input_.startingRound >= maxRound()) throw ErrorRunTime(function, "Starting round outside upper limit");
    if (Tarvo::Utility::logPasses(verbosityFile + verbosityInstance(), 2)) {
        std::ostringstream listing;
        input_.print(listing);
        TARVO_LOG(2) << "Sensitivity input:\n" << listing.str();
    }
    // A wrong path or unit costs no calculation.
    resolveColumns_();
    result_.rows.clear();
    writeResults_();

    model_->push();
    double time = 0;
    int errors = 0, warnings = 0, iterations = 0, errorFreeIterations = 0, errorFreeRows = 0;
    for (int round = input_.startingRound; round < maxRound(); ++round) {
        model_->resetErrors();
        const std::string settings = setControlled_(round);
        const SensitivityResult::Row& row = result_.rows.emplace_back(calculate_(round));
        time += row.time;
        errors += row.errors;
        warnings += row.warnings;
        iterations += row.iterations;
        if (row.errors == 0) {
            ++errorFreeRows;
            errorFreeIterations += row.iterations;
        }
        TARVO_LOG(1) << "Performing round " << round << ": " << settings << " / " << maxRound();
        writeResults_();
        Tarvo::Core::printProgress(std::cerr, "round", round + 1, maxRound(), settings, row.errors, row.time);
        if (row.errors == 0) {
            model_->clear();
            model_->push();
        } else {
            model_->pop();
            // The good state stays saved for a failure that may follow.
            model_->push();
            model_->initializeNonPersistents();
            model_->setPristineRecursive();
        }
    }
    model_->clear();

    const int rows = static_cast<int>(result_.rows.size());
    TARVO_LOG(1) << "Total calculation time = " << time;
    TARVO_LOG(1) << "Total errors = " << errors;
    TARVO_LOG(1) << "Total warnings = " << warnings;
    TARVO_LOG(1) << "Total iterations = " << iterations;
    TARVO_LOG(1) << "Total iterations for errorfree rows = " << errorFreeIterations;
    TARVO_LOG(1) << "Errorfree rows = " << errorFreeRows << " / " << rows << " " << 100.0 * errorFreeRows / rows << " %";
    TARVO_LOG(1) << "Average iterations for each errorfree row = "
                 << (errorFreeRows ? static_cast<double>(errorFreeIterations) / errorFreeRows : 0.0);
}
