#ifndef TARVO_CORE_CALCULATABLE_H
#define TARVO_CORE_CALCULATABLE_H

// What a flowsheet asks of each of its parts: calculate in the given mode, at the given nesting level.
class Calculatable {
public:
    // 0: let the model choose; 1: sequential, outlets from inlets; 2: simultaneous, everything inside at
    // once; 3: one pass without iterating, for residuals.
    enum SolutionMode { defaultMode = 0, sequential = 1, simultaneous = 2, onePass = 3 };

    virtual ~Calculatable() = default;
    virtual void go(SolutionMode mode, int level) = 0;
};

#endif
