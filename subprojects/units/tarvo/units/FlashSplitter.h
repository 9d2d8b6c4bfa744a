#ifndef TARVO_UNITS_FLASHSPLITTER_H
#define TARVO_UNITS_FLASHSPLITTER_H

#include <tarvo/units/FlashDrum.h>

#include <string>

// A flash drum that calculates an inner stream, of the type embeddedTypeStream, and sends each of its
// phases to an outlet of its own, in the inner stream's order of phases: outlet 1 the first phase, and so on.
class FlashSplitter : public FlashDrum {
public:
    FlashSplitter(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

    void setup_of() override;

    String embeddedTypeStream{"embeddedTypeStream", "Type of the internal mixed stream", "", this};

protected:
    // The inner stream, the child `innerTag`, of the type of the option embeddedTypeStream or `defaultType`.
    FlashSplitter(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root, const std::string& innerTag,
                  const std::string& defaultType);

    Stream* calculatedStream_() override { return inner_; }
    void passOn_(SolutionMode mode, int level) override;
    std::string emptyInletMessage_() const override { return "Empty inlet stream, bypassing block"; }

    Stream* inner_;

private:
    bool innerReady_ = false;
};

#endif
