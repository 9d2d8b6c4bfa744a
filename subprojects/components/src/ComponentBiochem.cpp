#include <tarvo/components/ComponentBiochem.h>

ComponentBiochem::ComponentBiochem(std::string name, const ParameterChoiOkos& heatCapacity,
                                   const ParameterChoiOkos& density, const Value& sigma0, const Value& kl0,
                                   const Value& kv0, const Value& mul0, const Value& muv0, const Value& mw)
    : ComponentGeneric(std::move(name)), ComponentBase(mw),
      RouteTransportSimple(sigma0, kl0, kv0, mul0, muv0), ChoiOkos(heatCapacity, density) {}

Value ComponentBiochem::kvli(const Value&, const Value&) const {
    return Value(0.0);
}
