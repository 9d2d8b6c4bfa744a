#include <tarvo/core/ObjectiveNleAd.h>

#include <tarvo/core/Jacobian.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>
#include <utility>

ObjectiveNleAd::ObjectiveNleAd(std::string name) : ObjectiveNleAuto(std::move(name)) {}

void ObjectiveNleAd::operator()(double* X, double* y, Jacobian* J) {
    try {
        evaluate_(X, y, J);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void ObjectiveNleAd::scalex(double* X) {
    const unsigned n = size();
    for (unsigned i = 0; i < n; ++i)
        X[i] = scaler_[i].X(X[i]);
}

void ObjectiveNleAd::unscalex(double* X) {
    unscaleNumbers_(X);
    storeSolution_(X, true);
}

unsigned int ObjectiveNleAd::size() const {
    const unsigned int s = ObjectiveNleAuto::size();
    assert(s == scaler_.size());
    return s;
}

void ObjectiveNleAd::addUnknown(Value* unknown, Scaler scaler, const std::string& description) {
    scaler_.push_back(scaler);
    ObjectiveNleAuto::addUnknown(unknown, description);
}

void ObjectiveNleAd::addObjectiveFunction(ObjectiveNleAd& other) {
    const unsigned n = other.size();
    for (unsigned i = 0; i < n; ++i) {
        addUnknown(other.unknown(i), other.scaler_[i], other.name() + "/" + other.description(i));
        setLabel(ObjectiveNleAuto::size() - 1, other.label(i));
    }
}

void ObjectiveNleAd::setPoint_(double* X) {
    // The model sees its own numbers: the scalers translate on every evaluation.
    const unsigned n = size();
    for (unsigned i = 0; i < n; ++i)
        if (Value* u = unknown(i)) u->active() = scaler_[i].x(X[i]);
}

const double* ObjectiveNleAd::columnFactors_(const double* X) {
    const unsigned n = size();
    factors_.resize(n); // allocates on the first evaluation only
    for (unsigned i = 0; i < n; ++i)
        factors_[i] = scaler_[i].dx(X[i]);
    return factors_.data();
}

void ObjectiveNleAd::unscaleNumbers_(double* X) const {
    const unsigned n = size();
    for (unsigned i = 0; i < n; ++i)
        X[i] = scaler_[i].x(X[i]);
}
