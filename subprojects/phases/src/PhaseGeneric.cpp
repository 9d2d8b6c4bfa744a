#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseGeneric.h>

#include <utility>

using Tarvo::Persistency::Defaults;

namespace Phase {

Generic::Generic(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                 Persistent* root, std::unique_ptr<Interface> model)
    : MassMolarProperties(defaults, id, persistency, parent, root), model_(std::move(model)) {}

const Vector& Generic::composition_(const char* signature) const {
    requireComponents(signature);
    return x.value();
}

Value Generic::sumOfFractions_() const {
    Value sum = 0.0;
    for (const Value& f : x.value()) sum += f;
    return sum;
}

const Value& Generic::calculate_P(const Value& a, const Value& b) {
    const Vector& z = composition_(__PRETTY_FUNCTION__);
    return model_->calculate_P_(a, b, z, sumOfFractions_());
}

const Value& Generic::calculate_rho(const Value& P, const Value& T) {
    return model_->calculate_rho_(P, T, composition_(__PRETTY_FUNCTION__));
}

const Value& Generic::calculate_H(const Value& P, const Value& T) {
    return model_->calculate_H_(P, T, composition_(__PRETTY_FUNCTION__));
}

const Value& Generic::calculate_Cp(const Value& P, const Value& T) {
    return model_->calculate_Cp_(P, T, composition_(__PRETTY_FUNCTION__));
}

const Value& Generic::calculate_S(const Value& P, const Value& T) {
    return model_->calculate_S_(P, T, composition_(__PRETTY_FUNCTION__));
}

Value Generic::mu(const Value& P, const Value& T) { return model_->mu_(T, P, composition_(__PRETTY_FUNCTION__)); }

Value Generic::kappa(const Value& P, const Value& T) {
    return model_->kappa_(T, P, composition_(__PRETTY_FUNCTION__));
}

Value Generic::sigma(const Value& P, const Value& T) {
    return model_->sigma_(T, P, composition_(__PRETTY_FUNCTION__));
}

const Value& Generic::fugacity(int i) {
    requireComponents(__PRETTY_FUNCTION__);
    return model_->fugacity(i);
}

void Generic::prepare(const Value& T) { model_->prepare(T, composition_(__PRETTY_FUNCTION__)); }

void Generic::preparefugacity(const Value& P, const Value& T) {
    const Vector& z = composition_(__PRETTY_FUNCTION__);
    model_->preparefugacity(P, T, z, sumOfFractions_());
}

void Generic::setType(Tarvo::Utility::PhaseType type) {
    MassMolarProperties::setType(type);
    model_->setType(type);
}

} // namespace Phase
