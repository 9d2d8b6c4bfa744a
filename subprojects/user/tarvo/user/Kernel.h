#ifndef TARVO_USER_KERNEL_H
#define TARVO_USER_KERNEL_H

#include <tarvo/core/Version.h>

#include <string>
#include <vector>

namespace Tarvo::User {

// What this build of the kernel is: read-only, printed in the banner and in reports.
struct KernelDescriptor {
    std::string name;
    std::string description;
    std::string version;
    std::string schemaVersion;
    std::string defaultType;
    std::string uuid;
    std::vector<std::string> locales;
};

const KernelDescriptor& kernelDescriptor();

// The version string that the banner and the reports print.
using Core::kernelVersion;

// The registration of the model collection of this build: the types, components, locales and
// enumerators that the executable offers on top of the library. The executable installs it before
// it calls main; a program that links the kernel for its own models installs its own.
using ModelCollection = void (*)();
void setModelCollection(ModelCollection collection);

// Prints the banner and registers the model collection; a second call does nothing.
void initializeKernel();
// Starts the kernel and registers its types and the model collection, without a banner.
void registerKernelTypes();
// Undoes initializeKernel, so that a process may initialise again.
void finalizeKernel();

} // namespace Tarvo::User

#endif
