#ifndef TARVO_CORE_TESTS_TESTSYSTEMS_H
#define TARVO_CORE_TESTS_TESTSYSTEMS_H

#include <tarvo/core/Jacobian.h>
#include <tarvo/core/ObjectiveNleAd.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace testing_systems {

// An ObjectiveNleAd that owns its unknowns and takes its residuals from a function of them. It records
// the model's point at every evaluation.
class FunctionSystem : public ObjectiveNleAd {
public:
    using Residuals =
        std::function<void(const std::vector<Value>& x, std::vector<Value>& r, uint32_t offset)>;

    FunctionSystem(const std::vector<double>& start, Residuals f, const std::vector<Scaler>& scalers = {})
        : ObjectiveNleAd("test"), values(start.begin(), start.end()), f_(std::move(f)) {
        for (unsigned i = 0; i < values.size(); ++i)
            addUnknown(&values[i], scalers.empty() ? Scaler() : scalers[i], "x" + std::to_string(i));
    }
    // The unknowns point into this object.
    FunctionSystem(const FunctionSystem&) = delete;
    int calculateResiduals(std::vector<Value>& r, uint32_t offset) override {
        std::vector<double> point;
        for (const Value& v : values)
            point.push_back(v.toDouble());
        visited.push_back(point);
        f_(values, r, offset);
        return static_cast<int>(size());
    }

    std::vector<Value> values;
    std::vector<std::vector<double>> visited;

private:
    Residuals f_;
};

// An objective over plain doubles, Jacobian and all supplied by the test: for behaviour that model code
// with exact derivatives cannot produce.
class PlainSystem : public ObjectiveNleInterface {
public:
    using Function = std::function<void(const double* x, double* y, Jacobian* J)>;
    explicit PlainSystem(Function f) : f_(std::move(f)) {}
    void operator()(double* x, double* y, Jacobian* J) override {
        visited.push_back(x[0]);
        f_(x, y, J);
    }
    void scalex(double*) override {}
    void unscalex(double*) override {}
    std::vector<double> visited;

private:
    Function f_;
};

// The discretised Bratu problem -u'' - lambda exp(u) = 0 on (0, 1), u(0) = u(1) = 0, at n interior points
// of spacing h = 1/(n+1), by central differences.
inline void bratu(const std::vector<Value>& u, std::vector<Value>& r, uint32_t offset, double lambda) {
    const std::size_t n = u.size();
    const double h2 = 1.0 / ((n + 1.0) * (n + 1.0));
    for (std::size_t i = 0; i < n; ++i) {
        Value ri = 2.0 * u[i];
        if (i > 0) ri = ri - u[i - 1];
        if (i + 1 < n) ri = ri - u[i + 1];
        r[offset + i] = ri / h2 - lambda * exp(u[i]);
    }
}

// Broyden's banded function: f_i = x_i (2 + 5 x_i^2) + 1 - sum of x_j (1 + x_j) over j from i-5 to i+1,
// j != i. Seven non-zeros per row away from the edges.
inline void broydenBanded(const std::vector<Value>& x, std::vector<Value>& r, uint32_t offset) {
    const int n = static_cast<int>(x.size());
    for (int i = 0; i < n; ++i) {
        Value ri = x[i] * (2.0 + 5.0 * x[i] * x[i]) + 1.0;
        for (int j = std::max(0, i - 5); j <= std::min(n - 1, i + 1); ++j)
            if (j != i) ri = ri - x[j] * (1.0 + x[j]);
        r[offset + i] = ri;
    }
}

// Captures standard output for the lifetime of the object.
class CaptureCout {
public:
    CaptureCout() : old_(std::cout.rdbuf(text_.rdbuf())) {}
    ~CaptureCout() { std::cout.rdbuf(old_); }
    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* old_;
};

} // namespace testing_systems

#endif
