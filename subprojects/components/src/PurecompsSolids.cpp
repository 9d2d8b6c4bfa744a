// Solids of the catalogue. Each is one record of constant heat capacity through its standard state:
// enthalpy of formation, entropy and heat capacity at 298.15 K from the CRC Handbook of Chemistry and
// Physics, "Standard thermodynamic properties of chemical substances" (J/(mol*K) is kJ/(kmol*K)); the
// record runs to the melting or decomposition point and extrapolates with the same heat capacity
// beyond it. Densities (kg/m3) and melting points: CRC Handbook, "Physical constants of inorganic
// compounds". Melts of the ComponentBkk species: NIST-JANAF tables, 4th ed.
#include <tarvo/components/ChemicalFormula.h>
#include <tarvo/components/Purecomps.h>

#include <cmath>

namespace purecomps {

namespace {

// G = c0 + c1 T - cp T ln T, which has the heat capacity cp, H = c0 + cp T and S = cp (1 + ln T) - c1,
// through H = dhf and S = s at 298.15 K.
GroupBkk standardState(const Value& dhf, const Value& s, const Value& cp, double tmax) {
    const double h0 = dhf.checkuom("J/kmol"), s0 = s.checkuom("J/(kmol*K)"), c = cp.checkuom("J/(kmol*K)");
    const double t0 = T0.toDouble();
    return GroupBkk{ParameterBkk(h0 - c * t0, c * (1 + std::log(t0)) - s0, -c, 0, 0, 0, 0, 0, t0, tmax)};
}

// The melt from the melting point tm on: the solid's enthalpy and entropy there plus those of fusion,
// with the constant heat capacity cp of the liquid.
GroupBkk melt(const GroupBkk& solid, double tm, const Value& fusion, const Value& cp) {
    const double h = solid.calculate(ParameterBkk::enthalpy, tm).val() + fusion.checkuom("J/kmol");
    const double s = solid.calculate(ParameterBkk::entropy, tm).val() + fusion.checkuom("J/kmol") / tm;
    const double c = cp.checkuom("J/(kmol*K)");
    return GroupBkk{ParameterBkk(h - c * tm, c * (1 + std::log(tm)) - s, -c, 0, 0, 0, 0, 0, tm, 5000.0)};
}

// Shorthands for the table's units: kJ/mol is 1e6 J/kmol, J/(mol*K) is kJ/(kmol*K).
Value kJPerMol(double x) {
    return Value(x * 1e6, "J/kmol");
}
Value JPerMolK(double x) {
    return Value(x, "kJ/kmol/K");
}
Value kgPerM3(double x) {
    return Value(x, "kg/m3");
}
Value mwOf(const char* formula) {
    return ChemicalFormula(formula).mw();
}

// Whether a salt stays out of the liquid: the ones that dissolve in water (above 10 g per 100 g at
// 20 degC, CRC Handbook, "Aqueous solubility of inorganic compounds") may enter a liquid phase.
constexpr bool insoluble = true;
constexpr bool soluble = false;

} // namespace

CaO2H2::CaO2H2(std::string name) // Ca(OH)2, decomposes at 853 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-985.2), JPerMolK(83.4), JPerMolK(87.5), 853.0),
                     mwOf("CaO2H2"), kgPerM3(2240.0), insoluble) {}

NaOH::NaOH(std::string name) // melts at 596 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-425.8), JPerMolK(64.4), JPerMolK(59.5), 596.0),
                     mwOf("NaOH"), kgPerM3(2130.0), soluble) {}

CaF2::CaF2(std::string name) // melts at 1691 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-1228.0), JPerMolK(68.5), JPerMolK(67.0), 1691.0), mwOf("CaF2"),
                     kgPerM3(3180.0), insoluble) {}

CaCl2::CaCl2(std::string name) // melts at 1045 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-795.4), JPerMolK(108.4), JPerMolK(72.9), 1045.0), mwOf("CaCl2"),
                     kgPerM3(2150.0), soluble) {}

NaF::NaF(std::string name) // melts at 1269 K; 4 g per 100 g of water
    : ComponentSolid(std::move(name), standardState(kJPerMol(-576.6), JPerMolK(51.1), JPerMolK(46.9), 1269.0),
                     mwOf("NaF"), kgPerM3(2780.0), insoluble) {}

NaCl::NaCl(std::string name) // melts at 1074 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-411.2), JPerMolK(72.1), JPerMolK(50.5), 1074.0),
                     mwOf("NaCl"), kgPerM3(2170.0), soluble) {}

Ni::Ni(std::string name) // melts at 1728 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(0.0), JPerMolK(29.9), JPerMolK(26.1), 1728.0),
                     mwOf("Ni"), kgPerM3(8900.0), insoluble) {}

NiF2::NiF2(std::string name) // melts at 1723 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-651.4), JPerMolK(73.6), JPerMolK(64.1), 1723.0),
                     mwOf("NiF2"), kgPerM3(4720.0), insoluble) {}

FeF2::FeF2(std::string name) // melts near 1373 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-711.3), JPerMolK(87.0), JPerMolK(68.1), 1373.0),
                     mwOf("FeF2"), kgPerM3(4090.0), insoluble) {}

FeCl2::FeCl2(std::string name) // melts at 950 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-341.8), JPerMolK(118.0), JPerMolK(76.7), 950.0),
                     mwOf("FeCl2"), kgPerM3(3160.0), soluble) {}

carbon::carbon(std::string name) // graphite, sublimes near 3900 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(0.0), JPerMolK(5.7), JPerMolK(8.5), 3900.0),
                     mwOf("C"), kgPerM3(2200.0), insoluble) {}

CaCO3::CaCO3(std::string name) // calcite, decomposes at 1098 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-1207.6), JPerMolK(91.7), JPerMolK(83.5), 1098.0), mwOf("CaCO3"),
                     kgPerM3(2710.0), insoluble) {}

Fe2O3::Fe2O3(std::string name) // hematite, melts at 1838 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-824.2), JPerMolK(87.4), JPerMolK(103.9), 1838.0), mwOf("Fe2O3"),
                     kgPerM3(5250.0), insoluble) {}

Sn::Sn(std::string name) // white tin, melts at 505 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(0.0), JPerMolK(51.2), JPerMolK(27.0), 505.0),
                     mwOf("Sn"), kgPerM3(7270.0), insoluble) {}

ZnCl2::ZnCl2(std::string name) // melts at 563 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-415.1), JPerMolK(111.5), JPerMolK(71.3), 563.0),
                     mwOf("ZnCl2"), kgPerM3(2907.0), soluble) {}

SnO::SnO(std::string name) // decomposes at 1353 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-280.7), JPerMolK(57.2), JPerMolK(44.3), 1353.0),
                     mwOf("SnO"), kgPerM3(6450.0), insoluble) {}

SnO2::SnO2(std::string name) // melts at 1903 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-577.6), JPerMolK(49.0), JPerMolK(52.6), 1903.0),
                     mwOf("SnO2"), kgPerM3(6850.0), insoluble) {}

Na2SO4::Na2SO4(std::string name) // melts at 1157 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-1387.1), JPerMolK(149.6), JPerMolK(128.2), 1157.0),
                     mwOf("Na2SO4"), kgPerM3(2680.0), soluble) {}

// Zinc hydrosulfide, Zn(HS)2, which no table lists: enthalpy of ZnS plus that of H2S gas (the heat of
// their combination neglected), heat capacity by Kopp's rule (Zn 26.0, S 22.6, H 9.6 J/(mol*K)), entropy
// 24 J/(mol*K) per atom and the density of ZnS less a quarter: estimates.
ZnHs::ZnHs(std::string name)
    : ComponentSolid(std::move(name), standardState(kJPerMol(-226.6), JPerMolK(120.0), JPerMolK(90.4), 600.0),
                     mwOf("ZnH2S2"), kgPerM3(3000.0), insoluble) {}

// Sodium sulfide, Na2S: CRC standard values; heat capacity by Kopp's rule (Na 26.0, S 22.6 J/(mol*K)), an
// estimate. Melts at 1449 K.
Na2Hs::Na2Hs(std::string name)
    : ComponentSolid(std::move(name), standardState(kJPerMol(-364.8), JPerMolK(83.7), JPerMolK(74.6), 1449.0),
                     mwOf("Na2S"), kgPerM3(1856.0), soluble) {}

ZnS::ZnS(std::string name) // sphalerite, turns into wurtzite at 1293 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-206.0), JPerMolK(57.7), JPerMolK(46.0), 1293.0),
                     mwOf("ZnS"), kgPerM3(4090.0), insoluble) {}

ZnSO4::ZnSO4(std::string name) // decomposes at 953 K
    : ComponentSolid(std::move(name), standardState(kJPerMol(-982.8), JPerMolK(110.5), JPerMolK(99.2), 953.0),
                     mwOf("ZnSO4"), kgPerM3(3540.0), soluble) {}

ZnSO4H2O::ZnSO4H2O(std::string name) // the monohydrate, loses its water at 511 K
    : ComponentSolid(std::move(name),
                     standardState(kJPerMol(-1304.5), JPerMolK(138.5), JPerMolK(145.5), 511.0),
                     mwOf("ZnSO4H2O"), kgPerM3(3280.0), soluble) {}

// Species with a melt: melting point (K), heat of fusion and heat capacity of the liquid from NIST-JANAF.

namespace {
GroupBkk siliconSolid() {
    return standardState(kJPerMol(0.0), JPerMolK(18.8), JPerMolK(20.0), 1687.0);
}
GroupBkk quartz() {
    return standardState(kJPerMol(-910.7), JPerMolK(41.5), JPerMolK(44.4), 1996.0);
}
GroupBkk ironSolid() {
    return standardState(kJPerMol(0.0), JPerMolK(27.3), JPerMolK(25.1), 1809.0);
}
GroupBkk limeSolid() {
    return standardState(kJPerMol(-634.9), JPerMolK(38.1), JPerMolK(42.0), 3200.0);
}
GroupBkk wustite() {
    return standardState(kJPerMol(-272.04), JPerMolK(60.75), JPerMolK(49.92), 1650.0);
}
GroupBkk magnetite() {
    return standardState(kJPerMol(-1118.4), JPerMolK(146.4), JPerMolK(143.4), 1870.0);
}
} // namespace

silicon::silicon(std::string name)
    : ComponentBkk(std::move(name), siliconSolid(),
                   melt(siliconSolid(), 1687.0, kJPerMol(50.21), JPerMolK(27.2)), mwOf("Si"),
                   kgPerM3(2330.0)) {}

silica::silica(std::string name)
    : ComponentBkk(std::move(name), quartz(), melt(quartz(), 1996.0, kJPerMol(9.58), JPerMolK(85.77)),
                   mwOf("SiO2"), kgPerM3(2650.0)) {}

Fe::Fe(std::string name)
    : ComponentBkk(std::move(name), ironSolid(), melt(ironSolid(), 1809.0, kJPerMol(13.81), JPerMolK(46.02)),
                   mwOf("Fe"), kgPerM3(7870.0)) {}

CaO::CaO(std::string name)
    : ComponentBkk(std::move(name), limeSolid(), melt(limeSolid(), 3200.0, kJPerMol(79.5), JPerMolK(62.76)),
                   mwOf("CaO"), kgPerM3(3340.0)) {}

FeO::FeO(std::string name) // wustite
    : ComponentBkk(std::move(name), wustite(), melt(wustite(), 1650.0, kJPerMol(24.06), JPerMolK(68.2)),
                   mwOf("FeO"), kgPerM3(5740.0)) {}

Fe3O4::Fe3O4(std::string name) // magnetite
    : ComponentBkk(std::move(name), magnetite(),
                   melt(magnetite(), 1870.0, kJPerMol(138.07), JPerMolK(213.38)), mwOf("Fe3O4"),
                   kgPerM3(5170.0)) {}

} // namespace purecomps
