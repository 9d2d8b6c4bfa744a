#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/ActivityLiquid.h>

#include <cassert>

namespace Phase::Activity {

void Liquid::evaluate_(const Value& T, const Vector& x) const {
    // The model's state is a cache of (T, x); the phase's const operations refresh it.
    auto& model = const_cast<Liquid&>(*this);
    model.setTemperature(T);
    model.calculateExcess(x);
}

void Liquid::prepare(const Value& T, const Vector& x) {
    evaluate_(T, x);
}

void Liquid::preparefugacity(const Value& P, const Value& T, const Vector&, const Value&) const {
    assert(phaseType() == Tarvo::Utility::PhaseType::liquid);
    for (int i = 0; i < NCOMPONENTS; ++i)
        lnphi_[i] = log(components[i]->kvli(T, P) * Value(Active(gamma_[i])));
}

const Value& Liquid::calculate_H_(const Value& P, const Value& T, const Vector& x) const {
    evaluate_(T, x);
    Ideal::calculate_H_(P, T, x);
    H_ += hE_;
    return H_;
}

const Value& Liquid::calculate_S_(const Value& P, const Value& T, const Vector& x) const {
    evaluate_(T, x);
    Ideal::calculate_S_(P, T, x);
    S_ += sE_;
    return S_;
}

} // namespace Phase::Activity
