#include <tarvo/components/ComponentPdippr.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>

ComponentPdippr::ComponentPdippr(std::string name, HeatVaporFactory heatVapor,
                                 std::unique_ptr<RouteVolumeLiquid> volumeLiquid, const ParameterHenry& henry,
                                 const ParameterDippr7& sigmadip, const ParameterDippr7& muvdip,
                                 const ParameterDippr7& muldip, const ParameterDippr7& kvdip,
                                 const ParameterDippr7& kldip, const ParameterAntoine& antoine,
                                 const Value& mw, const Value& Pc, const Value& Tc, const Value& rhoc,
                                 const Value& diffvol, const Value& vb, const Value& zc, const Value& dh0,
                                 const Value& dg0, const Value& omega, const Value& dhv0,
                                 const Value& solidDensity)
    : ComponentGeneric(std::move(name)), ComponentBase(mw, Pc, Tc, rhoc, diffvol, vb, zc, dh0, dg0, omega),
      RouteVolumeSolidDummy(solidDensity), pdippr(antoine, dhv0),
      RouteTransportDippr(muvdip, muldip, kvdip, kldip, sigmadip), henry_(henry) {
    assert(heatVapor != nullptr);
    assert(volumeLiquid != nullptr);
    forwardTo(heatVapor(*this), std::move(volumeLiquid));
}

Value ComponentPdippr::kvli(const Value& T, const Value& P) const {
    try {
        static const Value c(1e8, "Pa");
        return (henry_.set() ? henry_.pressure(c, T) : psat(T)) / P;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
