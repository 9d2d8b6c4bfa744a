#include <tarvo/phases/EosGerg2004.h>
#include <tarvo/phases/EosPcsaft.h>
#include <tarvo/phases/KwongRedlichSoave.h>
#include <tarvo/phases/PengRobinson.h>
#include <tarvo/phases/PhaseEos.h>
#include <tarvo/phases/VanDerWaals.h>

using Tarvo::Utility::PhaseType;

namespace Phase {

template <typename E> Value Eos<E>::sum_(const Vector& x) {
    Value s = 0.0;
    for (const Value& f : x) s += f;
    return s;
}

template <typename E> void Eos<E>::initialize(const Vector& x, const Value& rho, const Value& mw) {
    if (!(rho.toDouble() > 0) || !(mw.toDouble() > 0)) return;
    // The size of the molecules, which turns molar density into the reduced one, depends on temperature
    // little or not at all: any will do, and the flash corrects the rest.
    this->precompute(T0, x);
    this->beta = rho / mw / this->density(one);
}

template <typename E> void Eos<E>::prepare(const Value& T, const Vector& x) { this->precompute(T, x); }

template <typename E>
void Eos<E>::preparefugacity(const Value& P, const Value& T, const Vector& x, const Value&) const {
    this->precompute(T, x);
    this->preparefugacity_eos(P, T, lnphi_);
}

template <typename E>
const Value& Eos<E>::calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value&) const {
    this->requireParameters(x);
    this->precompute(T, x);
    P_ = this->pressure(rho / this->density(one), T);
    return P_;
}

template <typename E> const Value& Eos<E>::calculate_rho_(const Value&, const Value& T, const Vector& x) const {
    this->requireParameters(x);
    this->precompute(T, x);
    rho_ = this->density(this->beta);
    return rho_;
}

template <typename E> const Value& Eos<E>::calculate_H_(const Value& P, const Value& T, const Vector& x) const {
    this->requireParameters(x);
    this->precompute(T, x);
    const Value departure = sum_(x) * this->enthalpyDeparture(P, T);
    sumH_(PhaseType::vapor, P, T, x);
    H_ += departure;
    return H_;
}

template <typename E> const Value& Eos<E>::calculate_S_(const Value& P, const Value& T, const Vector& x) const {
    this->requireParameters(x);
    this->precompute(T, x);
    const Value departure = sum_(x) * this->entropyDeparture(P, T);
    sumS_(PhaseType::vapor, P, T, x);
    S_ += departure;
    return S_;
}

template <typename E> const Value& Eos<E>::calculate_Cp_(const Value& P, const Value& T, const Vector& x) const {
    this->requireParameters(x);
    this->precompute(T, x);
    const Value departure = sum_(x) * this->heatCapacityDeparture(T);
    sumCp_(PhaseType::vapor, P, T, x);
    Cp_ += departure;
    return Cp_;
}

template class Eos<EosCubic::VanDerWaals>;
template class Eos<EosCubic::KwongRedlichSoave>;
template class Eos<EosCubic::PengRobinson>;
template class Eos<EosPcsaft>;
template class Eos<EosGerg2004>;

} // namespace Phase
