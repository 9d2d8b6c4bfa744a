#ifndef TARVO_PHASES_TOTAL_H
#define TARVO_PHASES_TOTAL_H

#include <tarvo/phases/StreamInterface.h>

namespace Phase {

// The link of a total phase to its stream, through which it reads the stream's phases and their
// fractions. The stream sets it when it links its phases.
class Total {
public:
    void setStream(StreamInterface* stream) { stream_ = stream; }
    StreamInterface* stream() const { return stream_; }

protected:
    StreamInterface* stream_ = nullptr;
};

} // namespace Phase

#endif
