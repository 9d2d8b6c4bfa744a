#include <tarvo/core/AndersonAcceleration.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
// g(u) = M u + c with M upper triangular, so that its eigenvalues are its diagonal (0.9, -0.5, 0.3, 0.1), and
// c = u* - M u*, so that u* = (1, -2, 0.5, 3) is the fixed point by construction.
const double M[4][4] = {{0.9, 0.4, -0.3, 0.2}, {0, -0.5, 0.6, 0.1}, {0, 0, 0.3, -0.7}, {0, 0, 0, 0.1}};
const std::vector<double> fixedPoint{1, -2, 0.5, 3};

std::vector<double> image(const std::vector<double>& u) {
    std::vector<double> g(4);
    for (int i = 0; i < 4; ++i) {
        g[i] = fixedPoint[i];
        for (int j = 0; j < 4; ++j) g[i] += M[i][j] * (u[j] - fixedPoint[j]);
    }
    return g;
}

double distance(const std::vector<double>& u) {
    double d = 0;
    for (int i = 0; i < 4; ++i) d = std::max(d, std::fabs(u[i] - fixedPoint[i]));
    return d;
}

// The distance to the fixed point after `steps` accelerated steps from the origin.
double accelerated(unsigned memory, int steps) {
    AndersonAcceleration acceleration(4, memory);
    std::vector<double> u(4, 0.0), next;
    for (int k = 0; k < steps; ++k) {
        acceleration.next(u, image(u), next);
        u = next;
    }
    return distance(u);
}
} // namespace

// With a memory as long as the map, the fifth call has four changes of the steps, which span its space, and lands
// on the fixed point; a shorter memory still beats plain iteration, whose error shrinks by 0.9 per step, a
// hundredfold. A restart makes the next step a plain one.
TEST(AndersonAcceleration, SolvesALinearMapInAsManyStepsAsItHasEigenvalues) {
    EXPECT_LT(accelerated(4, 5), 1e-12);
    std::vector<double> plain(4, 0.0);
    for (int k = 0; k < 12; ++k) plain = image(plain);
    EXPECT_GT(distance(plain), 0.1);
    EXPECT_LT(accelerated(2, 12), 1e-2 * distance(plain));

    AndersonAcceleration acceleration(4, 4);
    std::vector<double> u(4, 0.0), next;
    for (int k = 0; k < 3; ++k) {
        acceleration.next(u, image(u), next);
        u = next;
    }
    acceleration.restart();
    acceleration.next(u, image(u), next);
    EXPECT_EQ(next, image(u));
}
