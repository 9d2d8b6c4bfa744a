#include <tarvo/components/ComponentDippr.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "DipprForms.h"
#include "UnitValues.h"

namespace {

Value densityAtLowerBound(const ParameterDippr7& dnldip) {
    const double rho = dnldip[2] == 0.0 ? dnldip[0] : dipprForms::eq105(dnldip, dnldip[5]).y;
    return rho * componentUnits::kmolPerM3;
}

} // namespace

ComponentDippr::ComponentDippr(std::string name, const ParameterDippr7& cpig, const ParameterDippr7& dnldip,
                               const ParameterHenry& henry, const ParameterDippr7& sigmadip,
                               const ParameterDippr7& muvdip, const ParameterDippr7& muldip,
                               const ParameterDippr7& kvdip, const ParameterDippr7& kldip,
                               const ParameterAntoine& antoine, const Value& mw, const Value& Pc,
                               const Value& Tc, const Value& rhoc, const Value& diffvol, const Value& vb,
                               const Value& zc, const Value& dh0, const Value& dg0, const Value& omega,
                               const Value& dhv0)
    : ComponentGeneric(std::move(name)), ComponentBase(mw, Pc, Tc, rhoc, diffvol, vb, zc, dh0, dg0, omega),
      RouteVolumeSolidDummy(densityAtLowerBound(dnldip)), dippr(antoine, dhv0, cpig, dnldip),
      RouteTransportDippr(muvdip, muldip, kvdip, kldip, sigmadip), henry_(henry) {}

Value ComponentDippr::kvli(const Value& T, const Value& P) const {
    try {
        static const Value c(1e6, "Pa"); // kH in mol/(kg*bar) / 100
        return (henry_.set() ? henry_.pressure(c, T) : psat(T)) / P;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}
