#include <tarvo/components/ComponentBase.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>

ComponentBase::ComponentBase(const Value& mw, const Value& Pc, const Value& Tc, const Value& rhoc,
                             const Value& diffvol, const Value& vb, const Value& zc, const Value& dh0,
                             const Value& dg0, const Value& omega)
    : mw_(mw), Pc_(Pc), Tc_(Tc), rhoc_(rhoc), diffvol_(diffvol), vb_(vb), zc_(zc), dh0_(dh0), dg0_(dg0),
      omega_(omega) {
    check_();
    assert(mw.toDouble() > 0.0);
    assert(Pc.toDouble() > 0.0);
    assert(Tc.toDouble() > 0.0);
    assert(rhoc.toDouble() > 0.0);
    assert(vb.toDouble() > 0.0);
    assert(zc.toDouble() > 0.0);
    assert(mw.toDouble() < 1E34);
    assert(Pc.toDouble() < 1E34);
    assert(Tc.toDouble() < 1E34);
    assert(rhoc.toDouble() < 1E34);
    assert(diffvol.toDouble() < 1E34);
    assert(vb.toDouble() < 1E34);
    assert(zc.toDouble() < 1E34);
    assert(dh0.toDouble() < 1E34);
    assert(dg0.toDouble() < 1E34);
    assert(omega.toDouble() < 1E34);
}

ComponentBase::ComponentBase(const Value& mw)
    : mw_(mw), Pc_(1500.0, "bar"), Tc_(2000.0, "K"), rhoc_(mw * Pc_ / (0.3 * R * Tc_)), diffvol_(0.0),
      vb_(1.5 * mw / rhoc_), zc_(0.3), dh0_(0.0, "J/kmol"), dg0_(0.0, "J/kmol"), omega_(0.1) {
    check_();
}

Value ComponentBase::vc() const {
    return zc_ * R * Tc_ / Pc_;
}

void ComponentBase::check_() const {
    try {
        mw_.checkuom("kg/kmol");
        Pc_.checkuom("Pa");
        Tc_.checkuom("K");
        rhoc_.checkuom("kg/m3");
        diffvol_.checkuom("");
        vb_.checkuom("m3/kmol");
        zc_.checkuom("");
        dh0_.checkuom("J/kmol");
        dg0_.checkuom("J/kmol");
        omega_.checkuom("");
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
