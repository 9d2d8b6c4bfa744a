#ifndef TARVO_VALUE_HOT_H
#define TARVO_VALUE_HOT_H

// Marks the small functions of Value arithmetic that must be inlined into model code: inlined, the
// compiler keeps a temporary's number and exponents in registers instead of building it in memory.
#define TARVO_HOT __attribute__((always_inline)) inline

#endif
