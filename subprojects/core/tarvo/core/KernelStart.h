#ifndef TARVO_CORE_KERNELSTART_H
#define TARVO_CORE_KERNELSTART_H

namespace Tarvo::Core {

// Readies the calculation machinery of the process: the bottom derivative context, the global list of
// components, and read-only independent variables. A second call only counts; stopKernel undoes it when
// the count returns to zero.
void startKernel();
void stopKernel();

} // namespace Tarvo::Core

#endif
