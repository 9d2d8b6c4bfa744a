#ifndef TARVO_USER_EVAL_H
#define TARVO_USER_EVAL_H

namespace Tarvo::User {

// The property calculator: creates one registered object by its type, sets quantities and options,
// calculates it and prints results, without a store.
//   tarvo-eval [--components LIST] TYPE [PATH=VALUE]... [--get PATH[:UNIT]]...
// Returns 0, 1 when the model fails (messages on standard error), 2 for wrong arguments (usage on
// standard error).
int evalMain(int argc, char** argv);

} // namespace Tarvo::User

#endif
