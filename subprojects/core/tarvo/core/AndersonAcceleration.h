#ifndef TARVO_CORE_ANDERSONACCELERATION_H
#define TARVO_CORE_ANDERSONACCELERATION_H

#include <vector>

// Anderson's acceleration of a fixed-point iteration u = g(u) (Walker and Ni, SIAM J. Numer. Anal. 49 (2011)
// 1715, type II): the next point combines the last few images so that the same combination of their steps,
// g(u) - u, is the shortest. On a linear map it reaches the fixed point in as many steps as the map has
// eigenvalues that matter, where plain iteration only shrinks the error by the largest of them per step.
class AndersonAcceleration {
public:
    // A map of `size` numbers, remembering the differences between its last `memory` + 1 steps.
    AndersonAcceleration(unsigned size, unsigned memory);

    // The next point after u, whose image is g: g itself on the first call and after a restart.
    void next(const std::vector<double>& u, const std::vector<double>& g, std::vector<double>& next);
    // Forgets the steps so far.
    void restart() { count_ = 0; }

private:
    // Column j of the differences, j = 0 the newest.
    double* stepChange_(unsigned j) { return &stepChanges_[((newest_ + memory_ - j) % memory_) * size_]; }
    double* imageChange_(unsigned j) { return &imageChanges_[((newest_ + memory_ - j) % memory_) * size_]; }

    unsigned size_, memory_;
    unsigned count_ = 0;  // calls since the start or restart
    unsigned newest_ = 0; // column of the newest differences
    std::vector<double> step_, image_;           // g - u and g of the last call
    std::vector<double> stepChanges_, imageChanges_; // memory columns of size numbers each
    std::vector<double> basis_, r_, coefficients_;   // the least squares' Q, R and solution
    std::vector<unsigned> kept_;                     // the column of each vector of the basis
};

#endif
