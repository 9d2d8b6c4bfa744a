#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/NrtlParameters.h>

#include <cassert>

namespace Phase::Activity {

namespace {
int entry(int i, int j) {
    return i * NCOMPONENTS + j;
}

void checkPair(int i, int j) {
    assert(i != j);
    assert(i >= 0);
    assert(j >= 0);
    assert(i < NCOMPONENTS);
    assert(j < NCOMPONENTS);
    (void)i;
    (void)j;
}

// Arrays sized for another component list hold nothing that applies to this one.
void fitAll(std::initializer_list<std::vector<double>*> arrays) {
    const auto n = static_cast<std::size_t>(NCOMPONENTS * NCOMPONENTS);
    for (std::vector<double>* a : arrays)
        if (a->size() != n) a->assign(n, 0.0);
}

void clearAll(std::initializer_list<std::vector<double>*> arrays) {
    for (std::vector<double>* a : arrays)
        a->assign(static_cast<std::size_t>(NCOMPONENTS * NCOMPONENTS), 0.0);
}

} // namespace

std::vector<double> ParametersNrtl1::B_, ParametersNrtl1::A_;
std::vector<double> ParametersNrtl2::TA_, ParametersNrtl2::TB_, ParametersNrtl2::TC_, ParametersNrtl2::TD_,
    ParametersNrtl2::AA_, ParametersNrtl2::AB_;

void ParametersNrtl1::fit_() {
    fitAll({&B_, &A_});
}

void ParametersNrtl1::setB(int i, int j, double bij, double bji) {
    checkPair(i, j);
    fit_();
    assert(B_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    B_[entry(i, j)] = bij;
    B_[entry(j, i)] = bji;
}

void ParametersNrtl1::setA(int i, int j, double a) {
    checkPair(i, j);
    fit_();
    assert(A_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    A_[entry(i, j)] = a;
    A_[entry(j, i)] = a;
}

void ParametersNrtl1::clear() {
    clearAll({&B_, &A_});
}

const std::vector<double>& ParametersNrtl1::B() {
    fit_();
    return B_;
}
const std::vector<double>& ParametersNrtl1::A() {
    fit_();
    return A_;
}

void ParametersNrtl2::fit_() {
    fitAll({&TA_, &TB_, &TC_, &TD_, &AA_, &AB_});
}

void ParametersNrtl2::setTABCD(int i, int j, double taij, double taji, double tbij, double tbji, double tcij,
                               double tcji, double tdij, double tdji) {
    checkPair(i, j);
    fit_();
    assert(TA_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    TA_[entry(i, j)] = taij;
    TA_[entry(j, i)] = taji;
    TB_[entry(i, j)] = tbij;
    TB_[entry(j, i)] = tbji;
    TC_[entry(i, j)] = tcij;
    TC_[entry(j, i)] = tcji;
    TD_[entry(i, j)] = tdij;
    TD_[entry(j, i)] = tdji;
}

void ParametersNrtl2::setAAB(int i, int j, double aa, double ab) {
    checkPair(i, j);
    fit_();
    assert(AA_.size() == static_cast<unsigned int>(NCOMPONENTS * NCOMPONENTS));
    AA_[entry(i, j)] = AA_[entry(j, i)] = aa;
    AB_[entry(i, j)] = AB_[entry(j, i)] = ab;
}

void ParametersNrtl2::clear() {
    clearAll({&TA_, &TB_, &TC_, &TD_, &AA_, &AB_});
}

const std::vector<double>& ParametersNrtl2::TA() {
    fit_();
    return TA_;
}
const std::vector<double>& ParametersNrtl2::TB() {
    fit_();
    return TB_;
}
const std::vector<double>& ParametersNrtl2::TC() {
    fit_();
    return TC_;
}
const std::vector<double>& ParametersNrtl2::TD() {
    fit_();
    return TD_;
}
const std::vector<double>& ParametersNrtl2::AA() {
    fit_();
    return AA_;
}
const std::vector<double>& ParametersNrtl2::AB() {
    fit_();
    return AB_;
}

} // namespace Phase::Activity
