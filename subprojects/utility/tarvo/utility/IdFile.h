#ifndef TARVO_UTILITY_IDFILE_H
#define TARVO_UTILITY_IDFILE_H

namespace Tarvo::Utility {

// Writes `status` with "%d\n" into "id.txt" in the working directory, replacing it: how the kernel
// hands the identifier of its object, or a negative code, to the program that started it.
// Throws ErrorRunTime "cannot write id.txt file".
void setIdFile(int status);

} // namespace Tarvo::Utility

#endif
