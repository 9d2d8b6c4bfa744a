#include <tarvo/components/ComponentSolid.h>

ComponentSolid::ComponentSolid(std::string name, const GroupBkk& solidGroup, const Value& mw,
                               const Value& density, bool solid)
    : ComponentGeneric(std::move(name)), ComponentBase(mw), RouteVolumeSolidDummy(density / mw),
      RouteHeatLiquidDummySolidBkk(solidGroup), solid_(solid) {}

Value ComponentSolid::kvli(const Value&, const Value&) const {
    return Value(1e-20);
}
