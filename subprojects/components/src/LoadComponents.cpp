#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>

void loadComponents() {
    components.clear();
    components.add(new purecomps::CO2("CO2", true));
    components.add(new purecomps::methane("CH4"));
    components.add(new purecomps::water("H2O"));
    components.add(new purecomps::N2("N2", true));
    components.add(new purecomps::O2("O2", true));
}
