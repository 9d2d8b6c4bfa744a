#include <tarvo/streams/Stream.h>
#include <tarvo/units/StreamOperations.h>

#include <cassert>

void copyStream(Stream& to, const Stream& from) {
    to.Node::operator=(from); // the children, that is the phases, through their own assignment
    to.T = from.T;
    to.P = from.P;
}

Tarvo::Utility::FlashMode enthalpyFlashMode(const Stream& stream) {
    return stream.hasProperties() ? Tarvo::Utility::FlashMode::PH : Tarvo::Utility::FlashMode::PT;
}

Flash& flashOf(Stream& stream) {
    auto* flash = dynamic_cast<Flash*>(stream.objective());
    assert(flash); // every stream's objective is its flash
    flash->ensureUnknowns();
    return *flash;
}

void refreshOutlet(Stream& outlet, const Tarvo::Utility::FlashMode& mode, Calculatable::SolutionMode solution,
                   int level) {
    outlet.setFlashOption(mode);
    outlet.go(solution < Calculatable::simultaneous ? solution : Calculatable::simultaneous, level);
}
