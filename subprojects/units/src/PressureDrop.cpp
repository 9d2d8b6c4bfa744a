#include <tarvo/core/Model.h>
#include <tarvo/units/PressureDrop.h>

void pressureDrop(Model* model, const std::string& option, Value& deltaP, const Value& deltaPMax,
                  const Value& beta, const Value& inP, Value& P, Value& K, const Value& vdot,
                  const std::string& caller) {
    const Value limit = deltaPMax * beta;
    if (option == "D") {
        if (deltaP > limit) {
            P = inP - limit;
            model->reportWarning("DeltaP clipped");
        } else {
            P = inP - deltaP;
        }
        K = deltaP / vdot / vdot;
    } else if (option == "P") {
        deltaP = inP - P;
        K = deltaP / vdot / vdot;
    } else if (option == "K") {
        deltaP = K * vdot * vdot;
        if (deltaP <= limit) {
            P = inP - deltaP;
        } else {
            // Past vlim the drop follows a curve that meets the quadratic one there and reaches deltaPMax
            // only for an infinite flow, so that no flow can empty the unit's inlet.
            const Value vlim = sqrt(limit / K);
            P = inP - deltaPMax * vdot / (vdot + (1.0 - beta) * vlim / beta);
            model->reportWarning("DeltaP clipped");
        }
    } else {
        throw ErrorBrowsing::unsupportedOption(caller, option, "pressure option", model->fullTag(),
                                               model->type());
    }
}
