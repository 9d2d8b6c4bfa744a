#include <tarvo/core/Homotopy.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/StudyProgress.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <chrono>
#include <iostream>
#include <sstream>

namespace {

constexpr int verbosityFile = 0;

} // namespace

std::string Homotopy::setPoint_(int point) {
    std::ostringstream settings;
    for (std::size_t i = 0; i < input_.controlled.size(); ++i) {
        const HomotopyVariable& v = input_.controlled[i];
        const double value = v.value(point, input_.points);
        // In the units that the item holds: no conversion.
        model_->Q(v.fullTag).active() = value;
        settings << (i ? " " : "") << "[" << v.fullTag << " = " << value << "]";
    }
    return settings.str();
}

void Homotopy::execute() {
    const std::string function = TARVO_FUNCTION;
    TARVO_LOG(1) << "Entered";
    // The steps divide the span by points - 1.
    if (input_.points < 2) throw ErrorRunTime(function, "a homotopy needs at least 2 points");
    if (!model_) throw ErrorRunTime(function, "Model error");
    // A wrong path costs no calculation.
    for (const HomotopyVariable& v : input_.controlled) model_->Q(v.fullTag);

    goodPoints_ = 0;
    model_->push();
    const auto start = std::chrono::steady_clock::now();
    for (int point = 0; point < input_.points; ++point) {
        const std::string settings = setPoint_(point);
        TARVO_LOG(1) << "Performing point " << point << " / " << input_.points << " " << settings;
        const auto pointStart = std::chrono::steady_clock::now();
        model_->resetErrors();
        // An error that the calculation throws fails the point, as errors in the model's lists do.
        int thrown = 0;
        try {
            model_->calculate(0);
            model_->reportMessages();
        } catch (Error& e) {
            e.append(function);
            std::cerr << e.message() << std::endl;
            thrown = 1;
        }
        const auto now = std::chrono::steady_clock::now();
        // The log counts from the start of the run, the progress line the point alone.
        const double seconds = std::chrono::duration<double>(now - start).count();
        const int errors = static_cast<int>(model_->errorList().size()) + thrown;
        Tarvo::Core::printProgress(std::cerr, "point", point + 1, input_.points, settings, errors,
                                   std::chrono::duration<double>(now - pointStart).count());
        if (errors > 0) {
            if (Tarvo::Utility::logPasses(verbosityFile + verbosityInstance(), 1)) {
                std::string list;
                for (const std::string& e : model_->errorList()) list += (list.empty() ? "" : "; ") + e;
                TARVO_LOG(1) << "Failed point " << point << ": " << list << " in " << seconds;
            }
            model_->pop();
            break;
        }
        TARVO_LOG(1) << "Performed point " << point << " in " << seconds;
        ++goodPoints_;
        model_->clear();
        model_->push();
    }
    model_->clear();
    TARVO_LOG(1) << "Exit";
}
