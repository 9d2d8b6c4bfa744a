#include "Gerg2004Data.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/EosGerg2004.h>
#include <tarvo/utility/Error.h>

#include <map>
#include <string>

namespace {
// delta = densityScale * beta.
constexpr double densityScale = 4.0;

// The gas constant of the residual part, 8.314472 J/(mol*K).
const Value& gasConstant() {
    static const Value r(Phase::Gerg2004Data::gasConstant, "kJ/kmol/K");
    return r;
}
const Value& volumeUnit() {
    static const Value unit(1.0, "m3/kmol");
    return unit;
}
const Value& temperatureUnit() {
    static const Value unit(1.0, "K");
    return unit;
}

// The catalogue's entries whose name is neither the data's nor a formula.
const std::map<std::string, std::string>& catalogueNames() {
    static const std::map<std::string, std::string> names{
        {"ibutane", "isobutane"}, {"butane", "n-butane"},     {"ipentane", "isopentane"},
        {"pentane", "n-pentane"}, {"nhexane", "n-hexane"},   {"nheptane", "n-heptane"},
        {"noctane", "n-octane"},  {"nnonane", "n-nonane"},   {"ndecane", "n-decane"}};
    return names;
}

// A dimensionless Value of a, with its derivatives or without.
Value carried(const Active& a) { return Value(Active(a)); }
Value plain(const Active& a) { return Value(a.val()); }
} // namespace

namespace Phase {

EosGerg2004::EosGerg2004() : standardIndex_(NCOMPONENTS, -1), place_(NCOMPONENTS, -1) {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const auto alias = catalogueNames().find(components[i]->name);
        const int k = Gerg2004Mixture::find(alias == catalogueNames().end() ? components[i]->name : alias->second);
        for (int j = 0; j < i; ++j)
            if (k >= 0 && standardIndex_[j] == k)
                throw ErrorRunTime("Phase::EosGerg2004", components[j]->name + " and " + components[i]->name +
                                                             " are the same component of GERG-2004");
        standardIndex_[i] = k;
    }
}

void EosGerg2004::requireParameters(const Vector& x) const {
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (x[i].toDouble() > 0 && standardIndex_[i] < 0)
            throw ErrorRunTime("Phase::EosGerg2004", components[i]->name + " is not a component of GERG-2004");
}

void EosGerg2004::precompute(const Value&, const Vector& x) const {
    bool carries = false;
    for (int i = 0; i < NCOMPONENTS; ++i) carries = carries || (standardIndex_[i] >= 0 && x[i].toDouble() > 0);
    const auto member = [&](int i) { return standardIndex_[i] >= 0 && (!carries || x[i].toDouble() > 0); };
    // The tables of the mixture follow the set of components present, which a flash seldom changes.
    int n = 0;
    bool same = true;
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (member(i)) same = same && n < mixture_.count() && mixture_.species()[n++] == standardIndex_[i];
    if (!same || n != mixture_.count()) {
        std::vector<int> species;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            place_[i] = member(i) ? static_cast<int>(species.size()) : -1;
            if (member(i)) species.push_back(standardIndex_[i]);
        }
        mixture_.setComponents(species);
        n = mixture_.count();
        x_.assign(n, Value(0.0));
        plainX_.assign(n, -1.0);
        dvolume_.assign(n, 0.0);
        dtemperature_.assign(n, 0.0);
        for (Point& point : points_) point.partials.assign(n, Gerg2004Mixture::Reduced{});
        column_.assign(n, 0.0);
        xSteps_.assign(n, Active(0.0));
        forgetPoints_();
    }
    if (mixture_.count() == 0)
        throw ErrorRunTime("Phase::EosGerg2004", "none of the components is a component of GERG-2004");
    Value s = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (place_[i] >= 0) s += carries ? x[i] : one;
    bool moved = false;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const int k = place_[i];
        if (k < 0) continue;
        x_[k] = (carries ? x[i] : one) / s;
        moved = moved || x_[k].toDouble() != plainX_[k];
        plainX_[k] = x_[k].toDouble();
    }
    if (moved) {
        mixture_.reducing(plainX_.data(), volume0_, temperature0_, dvolume_.data(), dtemperature_.data());
        forgetPoints_();
    }
    Active volume = volume0_, temperature = temperature0_;
    for (int k = 0; k < n; ++k) {
        const Active step = x_[k].active() - plainX_[k];
        volume += dvolume_[k] * step;
        temperature += dtemperature_[k] * step;
    }
    volume_ = Value(std::move(volume)) * volumeUnit();
    temperature_ = Value(std::move(temperature)) * temperatureUnit();
}

void EosGerg2004::forgetPoints_() const {
    for (Point& point : points_) point.valid = false;
}

void EosGerg2004::Qinit(const Active& delta, const Active& tau, const Vector& x) const {
    const double d0 = delta.val(), t0 = tau.val();
    const auto at = [&](const Point& p) { return p.valid && p.delta == d0 && p.tau == t0; };
    if (!at(points_[current_])) current_ = 1 - current_;
    if (!at(points_[current_])) {
        Point& point = points_[current_];
        mixture_.residual(d0, t0);
        const int n = mixture_.count();
        point.sums = {};
        for (int k = 0; k < n; ++k) {
            point.partials[k] = mixture_.component(k);
            for (int m = 0; m < 10; ++m) point.sums.a[m] += plainX_[k] * point.partials[k].a[m];
        }
        for (std::size_t p = 0; p < mixture_.pairs().size(); ++p) {
            const Gerg2004Mixture::Pair& pair = mixture_.pairs()[p];
            const Gerg2004Mixture::Reduced& f = mixture_.pair(static_cast<int>(p));
            const double xi = plainX_[pair.i], xj = plainX_[pair.j];
            for (int m = 0; m < 10; ++m) {
                const double Ff = pair.F * f.a[m];
                point.sums.a[m] += xi * xj * Ff;
                point.partials[pair.i].a[m] += xj * Ff;
                point.partials[pair.j].a[m] += xi * Ff;
            }
        }
        point.valid = true;
        point.delta = d0;
        point.tau = t0;
    }
    const Gerg2004Mixture::Reduced& sums = point_().sums;
    deltaStep_ = delta - d0;
    tauStep_ = tau - t0;
    for (int k = 0; k < mixture_.count(); ++k) xSteps_[k] = x[k].active() - plainX_[k];
    // The reduced derivative A_ab = delta^a tau^b d^(a+b) alphar changes by (a A_ab + A_(a+1)b) / delta in
    // delta and by (b A_ab + A_a(b+1)) / tau in tau.
    for (int order = 0; order <= 2; ++order)
        for (int b = 0; b <= order; ++b) {
            const int a = order - b, m = Gerg2004Mixture::Reduced::index(a, b);
            for (int k = 0; k < mixture_.count(); ++k) column_[k] = point_().partials[k].a[m];
            alpha_[m] = lift_(sums.a[m], (a * sums.a[m] + sums.at(a + 1, b)) / d0,
                              (b * sums.a[m] + sums.at(a, b + 1)) / t0, column_.data());
        }
}

Active EosGerg2004::lift_(double value, double dDelta, double dTau, const double* dx) const {
    Active r = value + dDelta * deltaStep_ + dTau * tauStep_;
    if (dx)
        for (int k = 0; k < mixture_.count(); ++k) r += dx[k] * xSteps_[k];
    return r;
}

void EosGerg2004::evaluate_(const Value& reduced, const Value& T) const {
    Qinit(densityScale * reduced.active(), (temperature_ / T).active(), x_);
}

Value EosGerg2004::betac(const Vector&) const { return Value(1.0 / densityScale); }

Value EosGerg2004::density(const Value& reduced) const { return densityScale * reduced / volume_; }

Value EosGerg2004::pseudoCriticalTemperature(const Vector&) const { return temperature_; }

Value EosGerg2004::pressure(const Value& reduced, const Value& T) const {
    evaluate_(reduced, T);
    return density(reduced) * gasConstant() * T * (1.0 + carried(alpha_[1]));
}

Value EosGerg2004::dpdbeta(const Value& reduced, const Value& T) const {
    evaluate_(reduced, T);
    return densityScale / volume_ * gasConstant() * T * (1.0 + 2.0 * carried(alpha_[1]) + carried(alpha_[3]));
}

void EosGerg2004::preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const {
    evaluate_(beta, T);
    const int n = mixture_.count();
    // ln phi_i = d(n alphar)/dn_i - ln Z, with
    // d(n alphar)/dn_i = alphar + A10 (1 + n dv_r/dn_i / v_r) + A01 n dT_r/dn_i / T_r + dalphar/dx_i - sum_k x_k dalphar/dx_k
    // and n dY/dn_i = dY/dx_i - sum_k x_k dY/dx_k for the reducing functions Y.
    std::vector<Active> x(n), dv(n), dT(n), dx(n);
    for (int k = 0; k < n; ++k) x[k] = x_[k].active();
    Active v, Tr;
    mixture_.reducing(x.data(), v, Tr, dv.data(), dT.data());
    Active meanV = 0.0, meanT = 0.0, meanX = 0.0;
    const Point& point = point_();
    for (int k = 0; k < n; ++k) {
        // dalphar/dx_k: its component's part and its share of the pairs, which depend on the other x.
        const Gerg2004Mixture::Reduced& partial = point.partials[k];
        dx[k] = lift_(partial.a[0], partial.a[1] / point.delta, partial.a[2] / point.tau, nullptr);
        meanV += x[k] * dv[k];
        meanT += x[k] * dT[k];
    }
    for (std::size_t p = 0; p < mixture_.pairs().size(); ++p) {
        const Gerg2004Mixture::Pair& pair = mixture_.pairs()[p];
        const double Ff = pair.F * mixture_.pair(static_cast<int>(p)).a[0];
        dx[pair.i] += Ff * xSteps_[pair.j];
        dx[pair.j] += Ff * xSteps_[pair.i];
    }
    for (int k = 0; k < n; ++k) meanX += x[k] * dx[k];
    const Value logZ = log(P / (density(beta) * gasConstant() * T));
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const int k = place_[i];
        if (k < 0) {
            lnphi[i] = 0.0;
            continue;
        }
        const Active derivative = alpha_[0] + alpha_[1] * (1.0 + (dv[k] - meanV) / v) +
                                  alpha_[2] * (dT[k] - meanT) / Tr + dx[k] - meanX;
        lnphi[i] = carried(derivative) - logZ;
    }
}

Value EosGerg2004::enthalpyDeparture(const Value&, const Value& T) const {
    evaluate_(beta, T);
    return gasConstant() * T * carried(alpha_[2] + alpha_[1]);
}

Value EosGerg2004::entropyDeparture(const Value&, const Value& T) const {
    evaluate_(beta, T);
    return gasConstant() * carried(alpha_[2] - alpha_[0] + log(1.0 + alpha_[1]));
}

Value EosGerg2004::heatCapacityDeparture(const Value& T) const {
    evaluate_(beta, T);
    const Active& a10 = alpha_[1];
    const Active rise = 1.0 + a10 - alpha_[4];
    return gasConstant() * carried(-alpha_[5] + rise * rise / (1.0 + 2.0 * a10 + alpha_[3]) - 1.0);
}

Gerg2004State EosGerg2004::properties(const Value& T, const Value& rho, const Vector& x) const {
    requireParameters(x);
    precompute(T, x);
    Qinit((rho * volume_).active(), (temperature_ / T).active(), x_);
    const Value& R = gasConstant();
    const Value a10 = plain(alpha_[1]), a20 = plain(alpha_[3]), a11 = plain(alpha_[4]), a02 = plain(alpha_[5]);
    const Value a30(point_().sums.at(3, 0));
    Gerg2004State s;
    s.Z = 1.0 + a10;
    s.P = rho * R * T * s.Z;
    s.dPdrho = R * T * (1.0 + 2.0 * a10 + a20);
    s.d2Pdrho2 = R * T / rho * (2.0 * a10 + 4.0 * a20 + a30);
    s.dPdT = rho * R * (1.0 + a10 - a11);
    Value ideal = 0.0, M(0.0, "kg/kmol");
    for (int k = 0; k < mixture_.count(); ++k) {
        ideal += x_[k] * mixture_.idealHeatCapacity(k, T.toDouble("K"));
        M += x_[k] * Value(Gerg2004Mixture::molarMass(mixture_.species()[k]), "kg/kmol");
    }
    s.cv = R * (ideal - a02);
    s.cp = s.cv + T * s.dPdT * s.dPdT / (rho * rho * s.dPdrho);
    s.w = sqrt(s.cp / s.cv * s.dPdrho / M);
    s.JT = (T * s.dPdT / (rho * s.dPdrho) - 1.0) / (s.cp * rho);
    return s;
}

} // namespace Phase
