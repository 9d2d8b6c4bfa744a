// Food and biomass constituents. Heat capacity and density: Choi and Okos (1986) as reproduced in the
// ASHRAE Handbook - Refrigeration (2006), ch. 9, Table 1 (../shared/data/choi_okos.json), the heat
// capacity taken from kJ/(kg*K) to J/(kg*K). Transport at 20 degC: the surface tension and liquid
// conductivity of a watery paste, a gas with 0.026 W/(m*K) and 0.02 cP, and a liquid viscosity per
// constituent. The species are lumped on the molar mass of water, so that their molar amounts compare
// with those of the water they come with.
#include <tarvo/components/Purecomps.h>

namespace purecomps {

Protein::Protein(std::string name)
    : ComponentBiochem(std::move(name), ParameterChoiOkos(2008.2, 1.2089, -0.0013129),
                       ParameterChoiOkos(1329.9, -0.5184, 0.0), Value(0.08, "N/m"), Value(0.6, "W/(m*K)"),
                       Value(0.026, "W/(m*K)"), Value(100.0, "Pa*s"), Value(0.02, "cP"),
                       Value(18.0153, "kg/kmol")) {}

// Fat: the viscosity of a vegetable oil at 20 degC.
Lipid::Lipid(std::string name)
    : ComponentBiochem(std::move(name), ParameterChoiOkos(1984.2, 1.4733, -0.0048008),
                       ParameterChoiOkos(925.59, -0.41757, 0.0), Value(0.08, "N/m"), Value(0.6, "W/(m*K)"),
                       Value(0.026, "W/(m*K)"), Value(0.08, "Pa*s"), Value(0.02, "cP"),
                       Value(18.0153, "kg/kmol")) {}

Fiber::Fiber(std::string name)
    : ComponentBiochem(std::move(name), ParameterChoiOkos(1845.9, 1.8306, -0.0046509),
                       ParameterChoiOkos(1311.5, -0.36589, 0.0), Value(0.08, "N/m"), Value(0.6, "W/(m*K)"),
                       Value(0.026, "W/(m*K)"), Value(100.0, "Pa*s"), Value(0.02, "cP"),
                       Value(18.0153, "kg/kmol")) {}

Carbohydrate::Carbohydrate(std::string name)
    : ComponentBiochem(std::move(name), ParameterChoiOkos(1548.8, 1.9625, -0.0059399),
                       ParameterChoiOkos(1599.1, -0.31046, 0.0), Value(0.08, "N/m"), Value(0.6, "W/(m*K)"),
                       Value(0.026, "W/(m*K)"), Value(100.0, "Pa*s"), Value(0.02, "cP"),
                       Value(18.0153, "kg/kmol")) {}

Ashes::Ashes(std::string name)
    : ComponentBiochem(std::move(name), ParameterChoiOkos(1092.6, 1.8896, -0.0036817),
                       ParameterChoiOkos(2423.8, -0.28063, 0.0), Value(0.08, "N/m"), Value(0.6, "W/(m*K)"),
                       Value(0.026, "W/(m*K)"), Value(10.0, "Pa*s"), Value(0.02, "cP"),
                       Value(18.0153, "kg/kmol")) {}

} // namespace purecomps
