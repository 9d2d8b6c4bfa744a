#ifndef TARVO_PHASES_TESTS_NRTLBYHAND_H
#define TARVO_PHASES_TESTS_NRTLBYHAND_H

#include <cmath>
#include <vector>

// The binary NRTL equations as textbooks print them, for checks that do not go through the kernel:
// ln gamma_1 = x2^2 [tau21 (G21 / (x1 + x2 G21))^2 + tau12 G12 / (x2 + x1 G12)^2], and the same with 1 and
// 2 swapped; G_ij = exp(-alpha tau_ij).
inline std::vector<double> binaryNrtl(double x1, double tau12, double tau21, double alpha) {
    const double x2 = 1 - x1, G12 = std::exp(-alpha * tau12), G21 = std::exp(-alpha * tau21);
    const double a = x1 + x2 * G21, b = x2 + x1 * G12;
    return {std::exp(x2 * x2 * (tau21 * std::pow(G21 / a, 2) + tau12 * G12 / (b * b))),
            std::exp(x1 * x1 * (tau12 * std::pow(G12 / b, 2) + tau21 * G21 / (a * a)))};
}

#endif
