#ifndef TARVO_PHASES_ACTIVITYNRTL_H
#define TARVO_PHASES_ACTIVITYNRTL_H

#include <tarvo/phases/ActivityLiquid.h>

#include <string>
#include <vector>

namespace Phase::Activity {

// One array of a model's binary parameters, entry i * NCOMPONENTS + j, with what a phase needs to keep
// it as an item. The items are plain numbers, their units in the description: a parameter in K may be
// negative, which a temperature may not.
struct NrtlParameterArray {
    std::string tag;
    std::string description;
    std::vector<double>* values;
};

// The Non Random Two Liquids model. The two formulations differ only in how tau and alfa depend on T:
// each gives them with their first and second T-derivatives; the excess enthalpy and entropy follow
// from the first.
class Nrtl : public Liquid {
public:
    Nrtl();

    // alfa_ij at the temperature set, with its T-derivatives.
    virtual const Active& computeAlfa(int i, int j, Active& d1, Active& d2) = 0;
    // tau_ij at the temperature set, with its T-derivatives.
    virtual const Active& computeTau(int i, int j, Active& d1, Active& d2) = 0;

    void setTemperature(const Value& T) override;
    void calculateExcess(const Vector& x) override;

    // The model's own binary parameters, copied from the process-wide ones when it is built.
    virtual std::vector<NrtlParameterArray> parameterArrays() = 0;

protected:
    // For the results of computeAlfa and computeTau.
    Active alfa_, tau_;

private:
    int at_(int i, int j) const { return i * n_ + j; }

    int n_;
    // tau_ij and G_ij = exp(-alfa_ij tau_ij), with their first T-derivatives, entry i * n + j.
    std::vector<Active> tauM_, dtauM_, G_, dG_;
};

// tau_ij = B_ij / T, alfa_ij = A_ij (ParametersNrtl1).
class Nrtl1 : public virtual Nrtl {
public:
    Nrtl1();
    const Active& computeAlfa(int i, int j, Active& d1, Active& d2) override;
    const Active& computeTau(int i, int j, Active& d1, Active& d2) override;
    std::vector<NrtlParameterArray> parameterArrays() override;

private:
    std::vector<double> B_, A_;
};

// tau_ij = TA + TB / T + TC ln T + TD T, alfa_ij = AA + AB (T - 273.15 K) (ParametersNrtl2).
class Nrtl2 : public virtual Nrtl {
public:
    Nrtl2();
    const Active& computeAlfa(int i, int j, Active& d1, Active& d2) override;
    const Active& computeTau(int i, int j, Active& d1, Active& d2) override;
    std::vector<NrtlParameterArray> parameterArrays() override;

private:
    std::vector<double> TA_, TB_, TC_, TD_, AA_, AB_;
};

} // namespace Phase::Activity

#endif
