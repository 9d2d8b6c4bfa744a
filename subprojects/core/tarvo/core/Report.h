#ifndef TARVO_CORE_REPORT_H
#define TARVO_CORE_REPORT_H

#include <string>

namespace Tarvo::Core {

// A copy of `text` with "<" turned into "(" and ">" into ")", so that type strings such as
// "Test2<Membrane22Rtsc>" can stand in markup. This is the only protection that texts get on their way into
// the XML and HTML reports: ampersands and quotation marks pass unchanged.
std::string escapeXml(const std::string& text);

// The local time, to the minute, as the reports stamp it: "20091231-2359".
std::string reportTimestamp();

} // namespace Tarvo::Core

#endif
