#include <tarvo/components/ListComponents.h>
#include <tarvo/streams/FlashVlT.h>
#include <tarvo/utility/FunctionName.h>

using Tarvo::Utility::FlashMode;

FlashVlT::FlashVlT(std::string name) : FlashVl(std::move(name)) {}

void FlashVlT::fillkvl(const Value& P, const Value& T, bool) {
    const Vector& z = splitComposition();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        // A component that the stream does not carry needs no route call, and 1 keeps it out of the alfa
        // bounds.
        if (z[i].toDouble() > 0)
            kVL_[i] = components[i]->kvli(T, P);
        else
            kVL_[i] = 1.0;
    }
}

void FlashVlT::setFlash_(const FlashMode& fm, const Value& a, const Value& b, bool apply) {
    switch (fm) {
    case FlashMode::PA:
        Pset = a;
        alfaset = b;
        break;
    case FlashMode::SA:
        Sset = a;
        alfaset = b;
        break;
    default: return FlashVl::setFlash_(fm, a, b, apply);
    }
    flashMode = fm;
}

void FlashVlT::prepare_Flash_residuals() { fillkvl(P, T, flashMode != FlashMode::PT); }

Value FlashVlT::calculateResidualsFlashMode() {
    if (flashMode == FlashMode::PA || flashMode == FlashMode::SA) return alfaset - Fraction(vaporIndex, false);
    return FlashVl::calculateResidualsFlashMode();
}
