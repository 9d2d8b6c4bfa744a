#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseGeneric.h>

using Tarvo::Persistency::Defaults;

namespace Phase {

Generic::Generic(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                 Persistent* root, Interface* model)
    : MassMolarProperties(defaults, id, persistency, parent, root), model_(model) {}

const Vector& Generic::composition_(const char* function) const {
    requireComponents(function);
    return x.value();
}

Value Generic::sumOfFractions_() const {
    Value sum = 0.0;
    for (const Value& f : x.value()) sum += f;
    return sum;
}

const Value& Generic::calculate_P(const Value& a, const Value& b) {
    const Vector& z = composition_("Phase::Generic::calculate_P");
    return model_->calculate_P_(a, b, z, sumOfFractions_());
}

const Value& Generic::calculate_rho(const Value& P, const Value& T) {
    return model_->calculate_rho_(P, T, composition_("Phase::Generic::calculate_rho"));
}

const Value& Generic::calculate_H(const Value& P, const Value& T) {
    return model_->calculate_H_(P, T, composition_("Phase::Generic::calculate_H"));
}

const Value& Generic::calculate_Cp(const Value& P, const Value& T) {
    return model_->calculate_Cp_(P, T, composition_("Phase::Generic::calculate_Cp"));
}

const Value& Generic::calculate_S(const Value& P, const Value& T) {
    return model_->calculate_S_(P, T, composition_("Phase::Generic::calculate_S"));
}

Value Generic::mu(const Value& P, const Value& T) { return model_->mu_(T, P, composition_("Phase::Generic::mu")); }

Value Generic::kappa(const Value& P, const Value& T) {
    return model_->kappa_(T, P, composition_("Phase::Generic::kappa"));
}

Value Generic::sigma(const Value& P, const Value& T) {
    return model_->sigma_(T, P, composition_("Phase::Generic::sigma"));
}

const Value& Generic::fugacity(int i) {
    requireComponents("Phase::Generic::fugacity");
    return model_->fugacity(i);
}

void Generic::prepare(const Value& T) { model_->prepare(T, composition_("Phase::Generic::prepare")); }

void Generic::preparefugacity(const Value& P, const Value& T) {
    const Vector& z = composition_("Phase::Generic::preparefugacity");
    model_->preparefugacity(P, T, z, sumOfFractions_());
}

void Generic::setType(Tarvo::Utility::PhaseType type) {
    MassMolarProperties::setType(type);
    model_->setType(type);
}

} // namespace Phase
