#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/EosCubicInterface.h>

#include <algorithm>
#include <cmath>
#include <limits>

using Tarvo::Utility::PhaseType;

namespace Phase::EosCubic {

namespace {
// The unit of attractive parameters, whose square root has none in SI.
const Value& attractiveUnit() {
    static const Value unit(1.0, "Pa*m6/kmol2");
    return unit;
}

const Value& covolumeUnit() {
    static const Value unit(1.0, "m3/kmol");
    return unit;
}

const Value& kelvin() {
    static const Value unit(1.0, "K");
    return unit;
}

// A function of T given by its number f and slope df at T's number: f + df (T - T0), which carries T's
// derivatives; shift is T / K - T0, dimensionless. One step of the arithmetic, as the next: these run for
// every component in each evaluation of a flash's Jacobian, where each step allocates its derivatives.
Value alongT(const Value& shift, double f, double df) {
    return Value(Active::chain(f + df * shift.toDouble(), df, shift.active()));
}

// sum + c * term, for dimensionless sums.
void addScaled(Active& sum, double c, const Active& term) {
    sum = Active::combine(sum.val() + c * term.val(), 1, sum, c, term);
}

// The pressure of the shared form at the reduced density y = b / v, and its slope in y: in Values for the
// flash, in numbers for the iteration of a density alone.
template <typename N> N pressureAt(const N& y, const N& RT, const N& a, const N& b, double delta1, double delta2) {
    return RT * y / (b * (1.0 - y)) - a * y * y / (b * b * (1.0 + delta1 * y) * (1.0 + delta2 * y));
}

template <typename N> N slopeAt(const N& y, const N& RT, const N& a, const N& b, double delta1, double delta2) {
    const N gap = 1.0 - y;
    const N product = (1.0 + delta1 * y) * (1.0 + delta2 * y);
    return RT / (b * gap * gap) - a * y * (2.0 + (delta1 + delta2) * y) / (b * b * product * product);
}

// The integral of 1 / ((v + delta1 b) (v + delta2 b)) from v to infinity.
template <typename N> N attractionIntegral(const N& v, const N& b, double delta1, double delta2) {
    using std::log;
    if (delta1 == delta2) return 1.0 / (v + delta1 * b);
    return log((v + delta1 * b) / (v + delta2 * b)) / ((delta1 - delta2) * b);
}

// ln phi_i = perCovolume b_i + repulsion - perRootA sqrt(a_i) at molar volume v, for a mixture of a = q^2 and
// b: the parts common to all components, taken once.
template <typename N> struct FugacityParts {
    N perCovolume, repulsion, perRootA;
};
template <typename N>
FugacityParts<N> fugacityParts(const N& P, const N& RT, const N& a, const N& q, const N& b, const N& v,
                               double delta1, double delta2) {
    using std::log;
    const N Z = P * v / RT;
    const N attraction = a * attractionIntegral(v, b, delta1, delta2) / RT;
    // -ln(Z (1 - b / v)), written with v - b.
    return {(Z - 1.0 + attraction) / b, -log(P * (v - b) / RT), 2.0 * attraction / q};
}

// The real roots of Z^3 + c2 Z^2 + c1 Z + c0: those of the depressed cubic t^3 + p t + q, Z = t - c2 / 3, in
// the trigonometric form where there are three and the hyperbolic one where there is one, each finished by
// two Newton steps on the cubic.
std::vector<double> cubicRoots(double c2, double c1, double c0) {
    const double shift = c2 / 3, p = c1 - c2 * shift, q = (2 * c2 * c2 / 27 - c1 / 3) * c2 + c0;
    std::vector<double> roots;
    if (p < 0) {
        const double scale = 2 * std::sqrt(-p / 3), c = 3 * q / (2 * p) * std::sqrt(-3 / p);
        if (std::fabs(c) <= 1)
            for (int k = 0; k < 3; ++k) roots.push_back(scale * std::cos(std::acos(c) / 3 - 2 * M_PI * k / 3));
        else
            roots.push_back(-std::copysign(scale, q) * std::cosh(std::acosh(std::fabs(c)) / 3));
    } else if (p > 0) {
        roots.push_back(-2 * std::sqrt(p / 3) * std::sinh(std::asinh(3 * q / (2 * p) * std::sqrt(3 / p)) / 3));
    } else {
        roots.push_back(std::cbrt(-q));
    }
    for (double& z : roots) {
        z -= shift;
        for (int k = 0; k < 2; ++k) {
            const double slope = (3 * z + 2 * c2) * z + c1;
            if (slope != 0) z -= (((z + c2) * z + c1) * z + c0) / slope;
        }
    }
    return roots;
}

// Whether a phase carries anything. One that does not takes the state of the equimolar mixture, rather
// than a division by 0.
double number(const Value& v) { return v.toDouble(); }
double number(double v) { return v; }
template <typename Fractions> bool carries(const Fractions& x) {
    for (const auto& f : x)
        if (number(f) > 0) return true;
    return false;
}
} // namespace

Interface::Interface(double omegaA, double omegaB, double betaCritical, double delta1, double delta2)
    : omegaA(omegaA), omegaB(omegaB), delta1(delta1), delta2(delta2), betaCritical_(betaCritical),
      rootA_(NCOMPONENTS) {}

void Interface::takeConstants_() const {
    constants_.reserve(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const ComponentGeneric& c = *components[i];
        const Value covolume = omegaB * R * c.Tc() / c.Pc();
        constants_.push_back({c.Tc().toDouble(), std::sqrt(ac(i).toDouble()), acentricFunction(c.omega().toDouble()),
                              covolume.toDouble(), covolume});
    }
}

Value Interface::a(int i, const Value& T, Value& dadT, Value& d2adT2) const {
    // a = r^2 with r = sqrt(a): a' = 2 r r', a'' = 2 (r'^2 + r r''), a''' = 2 (3 r' r'' + r r''').
    const auto [r, r1, r2, r3] = rootAttraction(i, T.toDouble());
    const Value shift = T / kelvin() - T.toDouble();
    dadT = alongT(shift, 2 * r * r1, 2 * (r1 * r1 + r * r2)) * attractiveUnit() / kelvin();
    d2adT2 = alongT(shift, 2 * (r1 * r1 + r * r2), 2 * (3 * r1 * r2 + r * r3)) * attractiveUnit() / kelvin() /
             kelvin();
    return alongT(shift, r * r, 2 * r * r1) * attractiveUnit();
}

Value Interface::ac(int i) const {
    const ComponentGeneric& c = *components[i];
    return omegaA * R * R * c.Tc() * c.Tc() / c.Pc();
}

Value Interface::b(int i) const { return constants(i).covolume; }

const std::vector<std::array<double, 4>>& Interface::attractionsAt_(double T) const {
    if (T != attractionT_ || attractions_.empty()) {
        attractions_.resize(NCOMPONENTS);
        for (int i = 0; i < NCOMPONENTS; ++i) attractions_[i] = rootAttraction(i, T);
        attractionT_ = T;
    }
    return attractions_;
}

void Interface::precompute(const Value& T, const Vector& x) const {
    if (precomputed_.identical(T, x)) return;
    // Without interaction parameters sum_j x_j sqrt(a_i a_j) = sqrt(a_i) sum_j x_j sqrt(a_j): one sum of
    // square roots q, and a = q^2, instead of the double sum. The components' terms are functions of T
    // alone, taken in numbers and carried over to T's derivatives once per sum.
    const bool mixture = carries(x);
    const double t = T.toDouble();
    const Value shift = T / kelvin() - t;
    Active sums[5]; // of x, and of x times sqrt(a), its two derivatives in T and b
    // The slopes in T of the three sums of sqrt(a), at the numbers of x.
    double qT = 0, dqT = 0, d2qT = 0;
    const std::vector<std::array<double, 4>>& attractions = attractionsAt_(t);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const auto [r, r1, r2, r3] = attractions[i];
        rootA_[i] = alongT(shift, r, r1);
        if (mixture && !(x[i].toDouble() > 0)) continue;
        const Active& xi = (mixture ? x[i] : one).active();
        const double terms[5] = {1, r, r1, r2, constants(i).b};
        for (int k = 0; k < 5; ++k) addScaled(sums[k], terms[k], xi);
        const double xn = xi.val();
        qT += xn * r1;
        dqT += xn * r2;
        d2qT += xn * r3;
    }
    const Value s(std::move(sums[0])), covolume(std::move(sums[4]));
    const Value q = (Value(std::move(sums[1])) + shift * qT) / s;
    const Value dq = (Value(std::move(sums[2])) + shift * dqT) / s;
    const Value d2q = (Value(std::move(sums[3])) + shift * d2qT) / s;
    Amix = q * q * attractiveUnit();
    dAmixdT = 2.0 * q * dq * attractiveUnit() / kelvin();
    d2AmixdT2 = 2.0 * (dq * dq + q * d2q) * attractiveUnit() / kelvin() / kelvin();
    Bmix = covolume / s * covolumeUnit();
    precomputed_.take(T, x);
}

void Interface::estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    precompute(T, x);
    if (type == PhaseType::vapor)
        beta = P / density(one) / R / T;
    else
        beta = 2.0 / (2.0 + T / pseudoCriticalTemperature(x));
}

Value Interface::betac(const Vector&) const { return Value(betaCritical_); }

Value Interface::pressure(const Value& reduced, const Value& T) const {
    return pressureAt(reduced, R * T, Amix, Bmix, delta1, delta2);
}

Value Interface::dpdbeta(const Value& reduced, const Value& T) const {
    return slopeAt(reduced, R * T, Amix, Bmix, delta1, delta2);
}

double Interface::unbentSlopeAt(double reduced, PhaseType type, double RT, double a, double b) const {
    const bool wrongSide = (type == PhaseType::vapor && reduced > betaCritical_) ||
                           (type == PhaseType::liquid && reduced < betaCritical_);
    const double rise = slopeAt(reduced, RT, a, b, delta1, delta2);
    // A fiftieth of the ideal gas's slope is the least that counts as stable, as in the frame.
    if (wrongSide || !(rise - RT / b / 50.0 >= 0)) return std::numeric_limits<double>::quiet_NaN();
    return rise;
}

double Interface::plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type) {
    // The branch where the pressure is left unbent, in numbers: the iteration of a density evaluates it a
    // few times at each step of a flash's start. Elsewhere the frame bends it.
    if (!ownCubic()) return EosInterface::plainResidual(reduced, P, T, x, type);
    const double RT = R.toDouble() * T.toDouble(), a = Amix.toDouble(), b = Bmix.toDouble();
    const double rise = unbentSlopeAt(reduced, type, RT, a, b);
    if (std::isnan(rise)) return EosInterface::plainResidual(reduced, P, T, x, type);
    beta = reduced;
    corrected = false;
    unbentSlope_ = rise;
    return pressureAt(reduced, RT, a, b, delta1, delta2) / P.toDouble() - 1.0;
}

Value Interface::density(const Value& reduced) const { return reduced / Bmix; }

Value Interface::pseudoCriticalTemperature(const Vector& x) const {
    const bool mixture = carries(x);
    Value s = 0.0, sum = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (mixture && !(x[i].toDouble() > 0)) continue;
        const Value& xi = mixture ? x[i] : one;
        s += xi;
        sum += xi * constants(i).Tc;
    }
    return sum / s * kelvin();
}

Value Interface::eos(const Value& v, const Value& T) const {
    return R * T / (v - Bmix) - Amix / ((v + delta1 * Bmix) * (v + delta2 * Bmix));
}

Value Interface::deosdv(const Value& v, const Value& T) const {
    const Value gap = v - Bmix;
    const Value product = (v + delta1 * Bmix) * (v + delta2 * Bmix);
    return -R * T / (gap * gap) + Amix * (2.0 * v + (delta1 + delta2) * Bmix) / (product * product);
}

Value Interface::deosdT(const Value& v, const Value&) const {
    return R / (v - Bmix) - dAmixdT / ((v + delta1 * Bmix) * (v + delta2 * Bmix));
}

Value Interface::attraction_(const Value& v) const { return attractionIntegral(v, Bmix, delta1, delta2); }

void Interface::preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const {
    const FugacityParts<Value> parts =
        fugacityParts(P, R * T, Amix, sqrt(Amix / attractiveUnit()), Bmix, Bmix / beta, delta1, delta2);
    for (int i = 0; i < NCOMPONENTS; ++i)
        lnphi[i] = parts.perCovolume * constants(i).covolume + parts.repulsion - parts.perRootA * rootA_[i];
}

bool Interface::lnPhiOfRoot(double P, double T, const std::vector<double>& x, PhaseType type,
                            std::vector<double>& lnphi) const {
    if (!ownCubic()) return false;
    // The one-fluid sums as precompute takes them, in numbers.
    const bool mixture = carries(x);
    const std::vector<std::array<double, 4>>& attractions = attractionsAt_(T);
    double s = 0, q = 0, b = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double f = mixture ? x[i] : 1.0;
        if (!(f > 0)) continue;
        s += f;
        q += f * attractions[i][0];
        b += f * constants(i).b;
    }
    q /= s;
    b /= s;
    const double a = q * q, RT = R.toDouble() * T, A = a * P / (RT * RT), B = b * P / RT;
    // P = R T / (v - b) - a / ((v + delta1 b) (v + delta2 b)) in Z = P v / (R T), with u = delta1 + delta2 and
    // w = delta1 delta2: Z^3 + ((u - 1) B - 1) Z^2 + (A + (w - u) B^2 - u B) Z - (A B + w B^2 + w B^3) = 0.
    const double u = delta1 + delta2, w = delta1 * delta2;
    const std::vector<double> roots =
        cubicRoots((u - 1) * B - 1, A + (w - u) * B * B - u * B, -(A * B + w * B * B + w * B * B * B));
    const bool liquid = type == PhaseType::liquid;
    double Z = liquid ? std::numeric_limits<double>::infinity() : 0.0;
    for (const double root : roots)
        if (root > B) Z = liquid ? std::min(Z, root) : std::max(Z, root);
    if (!(Z > B) || !std::isfinite(Z)) return false;
    // Only a root that settleDensity leaves unbent is the one the Values take.
    if (std::isnan(unbentSlopeAt(B / Z, type, RT, a, b))) return false;
    const FugacityParts<double> parts = fugacityParts(P, RT, a, q, b, Z * RT / P, delta1, delta2);
    lnphi.resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i)
        lnphi[i] = parts.perCovolume * constants(i).b + parts.repulsion - parts.perRootA * attractions[i][0];
    return true;
}

Value Interface::enthalpyDeparture(const Value& P, const Value& T) const {
    const Value v = Bmix / beta;
    return (T * dAmixdT - Amix) * attraction_(v) + P * v - R * T;
}

Value Interface::entropyDeparture(const Value& P, const Value& T) const {
    const Value v = Bmix / beta;
    return R * log(P * (v - Bmix) / (R * T)) + dAmixdT * attraction_(v);
}

Value Interface::heatCapacityDeparture(const Value& T) const {
    const Value v = Bmix / beta;
    const Value dPdT = deosdT(v, T);
    return T * d2AmixdT2 * attraction_(v) - T * dPdT * dPdT / deosdv(v, T) - R;
}

} // namespace Phase::EosCubic
