#ifndef TARVO_PHASES_NRTLPARAMETERS_H
#define TARVO_PHASES_NRTLPARAMETERS_H

#include <vector>

namespace Phase::Activity {

// The binary parameters of the NRTL models, one set for the whole process, as square arrays over the
// component list with entry i * NCOMPONENTS + j. They start at 0 (the ideal solution) and are set by
// application code before the phases are built; each NRTL phase copies them when it is built and keeps
// the copy as items of its own, which a case may change and which the store keeps. The arrays follow the
// component list: a list of another size resets them to 0 on the next use.

// tau_ij = B_ij / T, alfa_ij = A_ij.
class ParametersNrtl1 {
public:
    // B_ij and B_ji.
    static void setB(int i, int j, double bij, double bji);
    // alfa_ij = alfa_ji.
    static void setA(int i, int j, double a);
    // All parameters 0, sized for the present component list.
    static void clear();
    static const std::vector<double>& B();
    static const std::vector<double>& A();

private:
    static void fit_();
    static std::vector<double> B_, A_;
};

// tau_ij = TA_ij + TB_ij / T + TC_ij ln T + TD_ij T, alfa_ij = AA_ij + AB_ij (T - 273.15 K).
class ParametersNrtl2 {
public:
    // The four coefficients of tau, each for (i, j) and then (j, i).
    static void setTABCD(int i, int j, double taij, double taji, double tbij, double tbji, double tcij,
                         double tcji, double tdij, double tdji);
    // AA and AB, each the same for (i, j) and (j, i).
    static void setAAB(int i, int j, double aa, double ab);
    static void clear();
    static const std::vector<double>& TA();
    static const std::vector<double>& TB();
    static const std::vector<double>& TC();
    static const std::vector<double>& TD();
    static const std::vector<double>& AA();
    static const std::vector<double>& AB();

private:
    static void fit_();
    static std::vector<double> TA_, TB_, TC_, TD_, AA_, AB_;
};

} // namespace Phase::Activity

#endif
