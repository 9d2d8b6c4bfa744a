#include <tarvo/components/ComponentBkk.h>

ComponentBkk::ComponentBkk(std::string name, const GroupBkk& solidGroup, const GroupBkk& liquidGroup,
                           const Value& mw, const Value& density)
    : ComponentGeneric(std::move(name)), ComponentBase(mw), RouteVolumeSolidDummy(density / mw),
      RouteHeatLiquidBkk(liquidGroup), RouteHeatSolidBkk(solidGroup) {}

Value ComponentBkk::kvli(const Value&, const Value&) const {
    return Value(1e-20);
}
