#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/value/Active.h>
#include <tarvo/value/ActiveContext.h>

namespace Tarvo::Core {

namespace {
int starts = 0;
} // namespace

void startKernel() {
    if (starts++ > 0) return;
    ActiveContext::push(0);
    loadComponents();
    // From here on, model code that assigns an unknown during a solve stops the process.
    Active::setStrictReadOnly();
}

void stopKernel() {
    if (starts == 0 || --starts > 0) return;
    components.clear();
    ActiveContext::pop();
}

} // namespace Tarvo::Core
