#ifndef TARVO_MODELS_TESTS_STOREDCASES_H
#define TARVO_MODELS_TESTS_STOREDCASES_H

#include <string>
#include <vector>

class TemporaryDatabase;

// Every row of the case at `root` but the root's own (its tag and times differ between copies), with
// identifiers relative to the root and numbers in the text that reads back exactly, as one text; empty
// when there is no such case. Two copies of a case, and two kernels' results of one case, compare equal.
std::string caseContents(const TemporaryDatabase& database, int root);

// The ids of the cases in the store, in ascending order.
std::vector<int> caseRoots(const TemporaryDatabase& database);

#endif
