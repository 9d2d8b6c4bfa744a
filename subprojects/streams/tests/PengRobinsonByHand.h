#ifndef TARVO_STREAMS_TESTS_PENGROBINSONBYHAND_H
#define TARVO_STREAMS_TESTS_PENGROBINSONBYHAND_H

#include <algorithm>
#include <cmath>
#include <vector>

// The Peng-Robinson equation worked out in the test, apart from the kernel: the cubic in Z solved in
// closed form, the largest root for a vapor and the smallest for a liquid, and the closed form of
// ln phi (Peng and Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59, eq. 15), without interaction
// parameters. Temperatures in K, pressures in Pa.
struct PengRobinsonByHand {
    std::vector<double> Tc, Pc, omega;
    // The acentric factor from which m takes the cubic of 1978.
    double cubicFrom = 0.5;

    static constexpr double R = 8314.4; // J/(kmol K), the kernel's gas constant; Z does not depend on it

    double m(double w) const {
        return w < cubicFrom ? 0.37464 + 1.54226 * w - 0.26992 * w * w
                       : 0.3796 + 1.485 * w - 0.1644 * w * w + 0.01666 * w * w * w;
    }
    double a(std::size_t i, double T) const {
        const double u = 1 + m(omega[i]) * (1 - std::sqrt(T / Tc[i]));
        return 0.45723552892138218 * R * R * Tc[i] * Tc[i] / Pc[i] * u * u;
    }
    double b(std::size_t i) const { return 0.077796073903888455 * R * Tc[i] / Pc[i]; }

    // The real roots above B of Z^3 - (1 - B) Z^2 + (A - 3 B^2 - 2 B) Z - (A B - B^2 - B^3).
    static std::vector<double> roots(double A, double B) {
        const double c2 = -(1 - B), c1 = A - 3 * B * B - 2 * B, c0 = -(A * B - B * B - B * B * B);
        const double p = c1 - c2 * c2 / 3, q = 2 * c2 * c2 * c2 / 27 - c2 * c1 / 3 + c0;
        const double disc = q * q / 4 + p * p * p / 27;
        std::vector<double> z;
        if (disc > 0) {
            const double s = std::sqrt(disc);
            z.push_back(std::cbrt(-q / 2 + s) + std::cbrt(-q / 2 - s) - c2 / 3);
        } else {
            const double r = std::sqrt(-p / 3), phi = std::acos(std::clamp(-q / (2 * r * r * r), -1.0, 1.0));
            for (int k = 0; k < 3; ++k) z.push_back(2 * r * std::cos((phi - 2 * M_PI * k) / 3) - c2 / 3);
        }
        // A few Newton steps on each root take away the rounding of the closed form.
        for (double& root : z)
            for (int k = 0; k < 3; ++k)
                root -= (((root + c2) * root + c1) * root + c0) / ((3 * root + 2 * c2) * root + c1);
        z.erase(std::remove_if(z.begin(), z.end(), [B](double root) { return !(root > B); }), z.end());
        return z;
    }

    // The normalised composition x at (T, P): sum x_i sqrt(a_i), b, the reduced A and B, and the
    // compressibility factors of the cubic's roots.
    struct Mixture {
        double q, bm, A, B;
        std::vector<double> Z;
    };
    Mixture mixture(const std::vector<double>& x, double T, double P) const {
        double q = 0, bm = 0;
        for (std::size_t i = 0; i < x.size(); ++i) {
            q += x[i] * std::sqrt(a(i, T));
            bm += x[i] * b(i);
        }
        const double A = q * q * P / (R * R * T * T), B = bm * P / (R * T);
        return {q, bm, A, B, roots(A, B)};
    }

    // ln phi of every component of the normalised composition x at (T, P), on the vapor or liquid root.
    std::vector<double> lnphi(const std::vector<double>& x, double T, double P, bool liquid) const {
        const std::size_t n = x.size();
        const auto [q, bm, A, B, z] = mixture(x, T, P);
        const double Z = liquid ? *std::min_element(z.begin(), z.end()) : *std::max_element(z.begin(), z.end());
        const double s2 = std::sqrt(2.0);
        const double log = std::log((Z + (1 + s2) * B) / (Z + (1 - s2) * B));
        std::vector<double> result(n);
        for (std::size_t i = 0; i < n; ++i)
            result[i] = b(i) / bm * (Z - 1) - std::log(Z - B) -
                        A / (2 * s2 * B) * (2 * std::sqrt(a(i, T)) / q - b(i) / bm) * log;
        return result;
    }

    // The vapor pressure of the only component at T: P = P exp(ln phi_L - ln phi_V) to convergence.
    double saturationPressure(double T, double P) const {
        for (int k = 0; k < 500; ++k) {
            const double step = lnphi({1.0}, T, P, true)[0] - lnphi({1.0}, T, P, false)[0];
            P *= std::exp(step);
            if (std::fabs(step) < 1e-15) break;
        }
        return P;
    }

    // The vapor fraction and the phases' compositions of z at (T, P), by successive substitution from
    // Wilson's K values and the Rachford-Rice sum solved by bisection.
    struct Split {
        double fraction;
        std::vector<double> x, y;
    };
    Split flash(const std::vector<double>& z, double T, double P) const {
        const std::size_t n = z.size();
        std::vector<double> K(n);
        for (std::size_t i = 0; i < n; ++i) K[i] = Pc[i] / P * std::exp(5.373 * (1 + omega[i]) * (1 - Tc[i] / T));
        Split s{0.5, std::vector<double>(n), std::vector<double>(n)};
        for (int k = 0; k < 2000; ++k) {
            double lo = 0, hi = 1;
            for (int j = 0; j < 200; ++j) {
                const double mid = 0.5 * (lo + hi);
                double r = 0;
                for (std::size_t i = 0; i < n; ++i) r += z[i] * (K[i] - 1) / (1 + mid * (K[i] - 1));
                (r > 0 ? lo : hi) = mid;
            }
            s.fraction = 0.5 * (lo + hi);
            double change = 0;
            for (std::size_t i = 0; i < n; ++i) {
                s.x[i] = z[i] / (1 + s.fraction * (K[i] - 1));
                s.y[i] = K[i] * s.x[i];
            }
            const std::vector<double> L = lnphi(normalised(s.x), T, P, true), V = lnphi(normalised(s.y), T, P, false);
            for (std::size_t i = 0; i < n; ++i) {
                change = std::max(change, std::fabs(L[i] - V[i] - std::log(K[i])));
                K[i] = std::exp(L[i] - V[i]);
            }
            if (change < 1e-14) break;
        }
        s.x = normalised(s.x);
        s.y = normalised(s.y);
        return s;
    }

    static std::vector<double> normalised(std::vector<double> v) {
        double sum = 0;
        for (double f : v) sum += f;
        for (double& f : v) f /= sum;
        return v;
    }
};

#endif
