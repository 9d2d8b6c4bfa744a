// The five species of the kernel's default component list, with the numbers that its reference cases
// were computed with. Records are DIPPR forms; the source of each is noted beside it ("Perry" is Perry's
// Chemical Engineers' Handbook, 8th ed., with its table; "DIPPR 801" a record of that compilation
// which the Perry tables do not reproduce).
// Constants: DIPPR critical data (Pc, Tc, zc) with ChemSep v8.32 omega, dh0 and dg0; rhoc is MW / Vc, vb the
// liquid molar volume at the normal boiling point, dhv0 the leading coefficient of the heat of
// vaporization of Perry's Table 2-150.
// Henry: Sander, Atmos. Chem. Phys. 15 (2015) 4399, kH in mol/(kg*bar), B = d ln kH / d(1/T) in K.
#include <tarvo/components/ChemicalFormula.h>
#include <tarvo/components/Purecomps.h>
#include <tarvo/components/RouteHeatVaporVolp.h>
#include <tarvo/components/RouteVolumeLiquidWater.h>

#include <memory>

namespace purecomps {

// One record per line, with its source.
// clang-format off

CO2::CO2(std::string name, bool henry)
    : ComponentDippr(std::move(name),
        ParameterDippr7(29370, 34540, 1428, 26400, 588, 50, 5000),                      // Perry 2-156
        ParameterDippr7(2.768, 0.26212, 304.21, 0.2908, 0, 216.58, 304.21),             // Perry (105)
        henry ? ParameterHenry(0.036, 2200) : ParameterHenry(),                         // Sander
        ParameterDippr7(0.08071, 1.2662, 0, 0, 0, 216.58, 304.21),                      // DIPPR 801
        ParameterDippr7(2.148e-6, 0.46, 290, 0, 0, 194.67, 1500),                       // Perry 2-312
        ParameterDippr7(18.775, -402.92, -4.6854, -6.9171e-26, 10, 216.58, 303.15),     // Perry 2-313
        ParameterDippr7(3.69, -0.3838, 964, 1.86e6, 0, 194.67, 1500),                   // Perry 2-314
        ParameterDippr7(0.4406, -0.0012175, 0, 0, 0, 216.58, 300),                      // Perry 2-315
        ParameterAntoine(140.54, -4735, 0, 0, -21.268, 0.040909, 1, 216.58, 304.21),    // Perry 2-8
        ChemicalFormula("CO2").mw(), Value(7.383e6, "Pa"), Value(304.21, "K"),
        Value(468.189361702128, "kg/m3"), zero, Value(0.0350189, "m3/kmol"), Value(0.274),
        Value(-3.9351e8, "J/kmol"), Value(-3.9437e8, "J/kmol"), Value(0.223621),
        Value(2.173e7, "J/kg")) {}

methane::methane(std::string name)
    : ComponentDippr(std::move(name),
        ParameterDippr7(33298, 79933, 2086.9, 41602, 991.96, 50, 1500),                 // Perry 2-156
        ParameterDippr7(2.9214, 0.28976, 190.56, 0.28881, 0, 90.69, 190.56),            // Perry (105)
        ParameterHenry(),
        ParameterDippr7(0.036557, 1.1466, 0, 0, 0, 90.69, 190.56),                      // DIPPR 801
        ParameterDippr7(5.2546e-7, 0.59006, 105.67, 0, 0, 90.69, 1000),                 // Perry 2-312
        ParameterDippr7(-6.1572, 178.15, -0.95239, -9.0606e-24, 10, 90.69, 188),        // Perry 2-313
        ParameterDippr7(6325.2, 0.43041, 7.704e8, -3.8725e10, 0, 90.69, 1000),          // DIPPR 801
        ParameterDippr7(0.41768, -0.0024528, 3.5588e-6, 0, 0, 90.69, 180),              // Perry 2-315
        ParameterAntoine(39.205, -1324.4, 0, 0, -3.4366, 3.1019e-5, 2, 90.69, 190.56),  // Perry 2-8
        ChemicalFormula("CH4").mw(), Value(4.599e6, "Pa"), Value(190.564, "K"),
        Value(162.705882352941, "kg/m3"), zero, Value(0.0379694, "m3/kmol"), Value(0.286),
        Value(-7.452e7, "J/kmol"), Value(-5.049e7, "J/kmol"), Value(0.0115478),
        Value(1.0194e7, "J/kg")) {}

N2::N2(std::string name, bool henry)
    : ComponentDippr(std::move(name),
        ParameterDippr7(29105, 8614.9, 1701.6, 103.47, 909.79, 50, 1500),               // Perry 2-156
        ParameterDippr7(3.2091, 0.2861, 126.2, 0.2966, 0, 63.15, 126.2),                // Perry (105)
        henry ? ParameterHenry(0.00063, 1300) : ParameterHenry(),                       // Sander
        ParameterDippr7(0.02901, 1.2485, 0, 0, 0, 63.15, 126.2),                        // DIPPR 801
        ParameterDippr7(6.5592e-7, 0.6081, 54.714, 0, 0, 63.15, 1970),                  // Perry 2-312
        ParameterDippr7(16.004, -181.61, -5.1551, 0, 0, 63.15, 124),                    // Perry 2-313
        ParameterDippr7(0.00033143, 0.7722, 16.323, 373.72, 0, 63.15, 2000),            // Perry 2-314
        ParameterDippr7(0.2654, -0.001677, 0, 0, 0, 63.15, 124),                        // Perry 2-315
        ParameterAntoine(58.282, -1084.1, 0, 0, -8.3144, 0.044127, 1, 63.15, 126.2),    // Perry 2-8
        ChemicalFormula("N2").mw(), Value(3.4e6, "Pa"), Value(126.2, "K"),
        Value(314.017486828831, "kg/m3"), zero, Value(0.0346723, "m3/kmol"), Value(0.289),
        Value(0.0, "J/kmol"), Value(0.0, "J/kmol"), Value(0.0377215),
        Value(7.4905e6, "J/kg")) {}

O2::O2(std::string name, bool henry)
    : ComponentDippr(std::move(name),
        ParameterDippr7(29103, 10040, 2526.5, 9356, 1153.8, 50, 1500),                  // Perry 2-156
        ParameterDippr7(3.9143, 0.28772, 154.58, 0.2924, 0, 54.35, 154.58),             // Perry (105)
        henry ? ParameterHenry(0.0013, 1650) : ParameterHenry(),                        // Sander
        ParameterDippr7(0.038066, 1.2136, 0, 0, 0, 54.35, 154.58),                      // DIPPR 801
        ParameterDippr7(1.101e-6, 0.5634, 96.3, 0, 0, 54.35, 1500),                     // Perry 2-312
        ParameterDippr7(-4.1476, 94.04, -1.207, 0, 0, 54.36, 150),                      // Perry 2-313
        ParameterDippr7(0.00044994, 0.7456, 56.699, 0, 0, 80, 2000),                    // Perry 2-314
        ParameterDippr7(0.2741, -0.00138, 0, 0, 0, 60, 150),                            // Perry 2-315
        ParameterAntoine(51.245, -1200.2, 0, 0, -6.4361, 0.028405, 1, 54.36, 154.58),   // Perry 2-8
        ChemicalFormula("O2").mw(), Value(5.043e6, "Pa"), Value(154.58, "K"),
        Value(435.950953678474, "kg/m3"), zero, Value(0.0280225, "m3/kmol"), Value(0.288),
        Value(0.0, "J/kmol"), Value(0.0, "J/kmol"), Value(0.0221798),
        Value(9.008e6, "J/kg")) {}

namespace {

// Ideal-gas heat capacity of water in J/(mol*K), a polynomial in ln T: within 1.1 % of the NIST-JANAF
// tables (4th ed.) from 298 to 1500 K.
std::unique_ptr<RouteHeatVapor> waterVaporHeat(const ComponentInterface& water) {
    return std::make_unique<RouteHeatVaporVolp>(
        &water,
        ParameterVolp{-2558.7254408, 1954.64102748, -573.43988184, 81.5422031, -5.6045238, 0.14904476});
}

} // namespace

water::water(std::string name)
    : ComponentPdippr(std::move(name), waterVaporHeat, std::make_unique<RouteVolumeLiquidWater>(),
        ParameterHenry(),
        ParameterDippr7(0.18548, 2.717, -3.554, 2.047, 0, 273.16, 647.13),              // DIPPR 801
        ParameterDippr7(6.1839e-7, 0.67779, 847.23, -73930, 0, 273.16, 1073.15),        // DIPPR 801
        ParameterDippr7(-52.843, 3703.6, 5.866, -5.879e-29, 10, 273.16, 646.15),        // Perry 2-313
        ParameterDippr7(0.0021606, 0.76839, 3940.5, -445340, 0, 273.16, 1073.15),       // DIPPR 801
        ParameterDippr7(-0.432, 0.0057255, -8.078e-6, 1.861e-9, 0, 273.16, 633.15),     // Perry 2-315
        ParameterAntoine(73.649, -7258.2, 0, 0, -7.3037, 4.1653e-6, 2, 273.16, 647.13), // Perry 2-8
        ChemicalFormula("H2O").mw(), Value(2.2055e7, "Pa"), Value(647.13, "K"),
        Value(322.001937520331, "kg/m3"), zero, Value(0.0188308, "m3/kmol"), Value(0.229),
        Value(-2.41814e8, "J/kmol"), Value(-2.2859e8, "J/kmol"), Value(0.344861),
        Value(5.2053e7, "J/kg"),
        // The solid is ice: 916.89 kg/m3 at 0 degC (Choi and Okos, 1986).
        Value(916.89, "kg/m3") / ChemicalFormula("H2O").mw()) {}

// clang-format on

} // namespace purecomps
