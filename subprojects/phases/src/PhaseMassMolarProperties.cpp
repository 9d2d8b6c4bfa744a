#include <tarvo/phases/PhaseMassMolarProperties.h>

using Tarvo::Persistency::Defaults;

namespace Phase {

MassMolarProperties::MassMolarProperties(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                         Persistent* parent, Persistent* root)
    : MassMolar(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&vdot, &v, &rho, &h, &H, &cp, &Cp, &s, &S, &g}) addVariable(*q);
}

void MassMolarProperties::volumeFlow_() {
    if (rho.toDouble() == 0.0)
        vdot.clear();
    else
        vdot = mdot / rho;
}

void MassMolarProperties::massSpecific_() {
    if (mw.toDouble() > 0) {
        h = H / mw;
        s = S / mw;
    } else {
        h.clear();
        s.clear();
    }
}

void MassMolarProperties::calculateMw_() {
    MassMolar::calculateMw_();
    volumeFlow_();
}

void MassMolarProperties::calculateM_() {
    MassMolar::calculateM_();
    volumeFlow_();
}

void MassMolarProperties::calculateNx_() {
    MassMolar::calculateNx_();
    volumeFlow_();
}

void MassMolarProperties::calculateMx_() {
    MassMolar::calculateMx_();
    volumeFlow_();
}

void MassMolarProperties::calculateNw_() {
    MassMolar::calculateNw_();
    volumeFlow_();
}

void MassMolarProperties::calculateN_() {
    MassMolar::calculateN_();
    volumeFlow_();
}

void MassMolarProperties::calculateProperties(const Value& P, const Value& T, bool writeH) {
    rho = calculate_rho(P, T) * mw; // the model's density is molar
    v = mw / rho;
    vdot = mdot / rho;
    if (writeH) {
        H = calculate_H(P, T);
        S = calculate_S(P, T);
        massSpecific_();
        g = h - T * s;
    }
    Cp = calculate_Cp(P, T);
    cp = Cp / mw;
}

Mass& MassMolarProperties::operator+=(const Mass& rhs) {
    const auto* other = dynamic_cast<const MassMolarProperties*>(&rhs);
    if (other) {
        const Value sum = ndot + other->ndot;
        if (sum.toDouble() > 0) {
            H = (ndot * H + other->ndot * other->H) / sum;
            S = (ndot * S + other->ndot * other->S) / sum;
        } else {
            H.clear();
            S.clear();
        }
    }
    MassMolar::operator+=(rhs);
    massSpecific_();
    return *this;
}

Mass& MassMolarProperties::operator-=(const Mass& rhs) {
    const auto* other = dynamic_cast<const MassMolarProperties*>(&rhs);
    if (other) {
        if (ndot > other->ndot) {
            const Value difference = ndot - other->ndot;
            H = (ndot * H - other->ndot * other->H) / difference;
            S = (ndot * S - other->ndot * other->S) / difference;
        } else {
            H.clear();
            S.clear();
        }
    }
    MassMolar::operator-=(rhs);
    massSpecific_();
    return *this;
}

Mass& MassMolarProperties::operator*=(const Value& factor) {
    MassMolar::operator*=(factor);
    vdot *= factor;
    return *this;
}

} // namespace Phase
