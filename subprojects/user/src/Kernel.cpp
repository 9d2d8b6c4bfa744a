#include <tarvo/core/KernelStart.h>
#include <tarvo/flowsheet/RegisterFlowsheet.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/units/RegisterReactions.h>
#include <tarvo/units/RegisterUnits.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/utility/Banner.h>
#include <tarvo/utility/Diagnostic.h>

#include <iostream>

namespace Tarvo::User {

namespace {

const KernelDescriptor descriptor{
    "Membranes",
    "Process modeling demo for Gas Membrane separation",
    "00.01.00 [2015/04/10 16:00:00]",
    "0.1",
    "Test2<Membrane22Rtsc>",
    "e3b1d80d-b412-4e70-972f-929c84116816",
    {"en"},
};

ModelCollection modelCollection = nullptr;
bool initialized = false;

} // namespace

const KernelDescriptor& kernelDescriptor() { return descriptor; }

void setModelCollection(ModelCollection collection) { modelCollection = collection; }

void initializeKernel() {
    if (initialized) return;
    initialized = true;
    Utility::setVerbosityGlobal(2);
    Utility::clearBanner();
    Utility::addBannerEntry(0, "TARVO", kernelVersion);
    Utility::addBannerEntry(20, descriptor.name, descriptor.description + " " + descriptor.version);
    Utility::printBanner(std::cout);
    registerKernelTypes();
}

void registerKernelTypes() {
    Core::startKernel();
    // The kernel's own types first, in the order of the catalogue, then those of this build.
    registerPhases();
    registerStreams();
    registerReactions();
    registerUnits();
    registerFlowsheet();
    if (modelCollection) modelCollection();
}

void finalizeKernel() {
    if (!initialized) return;
    initialized = false;
    Core::stopKernel();
}

} // namespace Tarvo::User
