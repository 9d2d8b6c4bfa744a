#ifndef TARVO_CORE_VERSION_H
#define TARVO_CORE_VERSION_H

namespace Tarvo::Core {

// The version of the kernel, as the banner and the reports print it. It lives with the reports, below the
// command line, so that a program that links the kernel without its command line prints the same text.
inline constexpr char kernelVersion[] = "TARVO 1.1.285 [Mon Apr 22 18:29:56 2024 +0200]";

} // namespace Tarvo::Core

#endif
