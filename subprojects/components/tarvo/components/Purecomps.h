#ifndef TARVO_COMPONENTS_PURECOMPS_H
#define TARVO_COMPONENTS_PURECOMPS_H

#include <tarvo/components/ComponentBiochem.h>
#include <tarvo/components/ComponentBkk.h>
#include <tarvo/components/ComponentDippr.h>
#include <tarvo/components/ComponentPdippr.h>
#include <tarvo/components/ComponentSolid.h>

#include <string>

// The catalogue of pure species: one class for each species, whose constructor hands the species' data to
// one of the component classes. The name given to the constructor is the name under which the
// component list finds it. For O2, N2, CO, CO2 and H2 the second argument says whether the gas
// dissolves in water by Henry's law.
namespace purecomps {

// Fluids described by DIPPR correlations.
class ethanol : public ComponentDippr {
public:
    explicit ethanol(std::string name);
};
class methanol : public ComponentDippr {
public:
    explicit methanol(std::string name);
};
class O2 : public ComponentDippr {
public:
    O2(std::string name, bool henry);
};
class N2 : public ComponentDippr {
public:
    N2(std::string name, bool henry);
};
class NO2 : public ComponentDippr {
public:
    explicit NO2(std::string name);
};
class methane : public ComponentDippr {
public:
    explicit methane(std::string name);
};
class ethane : public ComponentDippr {
public:
    explicit ethane(std::string name);
};
class ethylene : public ComponentDippr {
public:
    explicit ethylene(std::string name);
};
class propane : public ComponentDippr {
public:
    explicit propane(std::string name);
};
class heavy : public ComponentDippr {
public:
    explicit heavy(std::string name);
};
class CO : public ComponentDippr {
public:
    CO(std::string name, bool henry);
};
class CO2 : public ComponentDippr {
public:
    CO2(std::string name, bool henry);
};
class H2 : public ComponentDippr {
public:
    H2(std::string name, bool henry);
};
class acetone : public ComponentDippr {
public:
    explicit acetone(std::string name);
};
class propylene : public ComponentDippr {
public:
    explicit propylene(std::string name);
};
class etylacetate : public ComponentDippr {
public:
    explicit etylacetate(std::string name);
};
class nhexadecane : public ComponentDippr {
public:
    explicit nhexadecane(std::string name);
};
class butane : public ComponentDippr {
public:
    explicit butane(std::string name);
};
class pentane : public ComponentDippr {
public:
    explicit pentane(std::string name);
};
class benzene : public ComponentDippr {
public:
    explicit benzene(std::string name);
};
class ciclohexane : public ComponentDippr {
public:
    explicit ciclohexane(std::string name);
};
class ibutane : public ComponentDippr {
public:
    explicit ibutane(std::string name);
};
class ipentane : public ComponentDippr {
public:
    explicit ipentane(std::string name);
};
class nhexane : public ComponentDippr {
public:
    explicit nhexane(std::string name);
};
class nheptane : public ComponentDippr {
public:
    explicit nheptane(std::string name);
};
class noctane : public ComponentDippr {
public:
    explicit noctane(std::string name);
};
class nnonane : public ComponentDippr {
public:
    explicit nnonane(std::string name);
};
class ndecane : public ComponentDippr {
public:
    explicit ndecane(std::string name);
};
class argon : public ComponentDippr {
public:
    explicit argon(std::string name);
};
class helium : public ComponentDippr {
public:
    explicit helium(std::string name);
};
class hydrogensulfide : public ComponentDippr {
public:
    explicit hydrogensulfide(std::string name);
};
class ammonia : public ComponentDippr {
public:
    explicit ammonia(std::string name);
};
class phenol : public ComponentDippr {
public:
    explicit phenol(std::string name);
};
class naphthalene : public ComponentDippr {
public:
    explicit naphthalene(std::string name);
};
class squalane : public ComponentDippr {
public:
    explicit squalane(std::string name);
};
class EthyleneGlycol : public ComponentDippr {
public:
    explicit EthyleneGlycol(std::string name);
};
class DiethyleneGlycol : public ComponentDippr {
public:
    explicit DiethyleneGlycol(std::string name);
};
class TriethyleneGlycol : public ComponentDippr {
public:
    explicit TriethyleneGlycol(std::string name);
};
class eicosane : public ComponentDippr {
public:
    explicit eicosane(std::string name);
};
class nbutylene : public ComponentDippr {
public:
    explicit nbutylene(std::string name);
};
class hexene : public ComponentDippr {
public:
    explicit hexene(std::string name);
};
class Octamethyltrisiloxane : public ComponentDippr {
public:
    explicit Octamethyltrisiloxane(std::string name);
};
class PalmiticAcid : public ComponentDippr {
public:
    explicit PalmiticAcid(std::string name);
};
class Ethylhexanol : public ComponentDippr {
public:
    explicit Ethylhexanol(std::string name);
};
class OctylPalmitate : public ComponentDippr {
public:
    explicit OctylPalmitate(std::string name);
};
class oxylene : public ComponentDippr {
public:
    explicit oxylene(std::string name);
};
class mxylene : public ComponentDippr {
public:
    explicit mxylene(std::string name);
};
class pxylene : public ComponentDippr {
public:
    explicit pxylene(std::string name);
};
class MA : public ComponentDippr {
public:
    explicit MA(std::string name);
};
class BuOH : public ComponentDippr {
public:
    explicit BuOH(std::string name);
};
class aacid : public ComponentDippr {
public:
    explicit aacid(std::string name);
};

// Water, with its own ideal-gas heat capacity and liquid density.
class water : public ComponentPdippr {
public:
    explicit water(std::string name);
};

// Salts, metals and other non-volatile species with data for the solid.
class CaO2H2 : public ComponentSolid {
public:
    explicit CaO2H2(std::string name);
};
class NaOH : public ComponentSolid {
public:
    explicit NaOH(std::string name);
};
class CaF2 : public ComponentSolid {
public:
    explicit CaF2(std::string name);
};
class CaCl2 : public ComponentSolid {
public:
    explicit CaCl2(std::string name);
};
class NaF : public ComponentSolid {
public:
    explicit NaF(std::string name);
};
class NaCl : public ComponentSolid {
public:
    explicit NaCl(std::string name);
};
class Ni : public ComponentSolid {
public:
    explicit Ni(std::string name);
};
class NiF2 : public ComponentSolid {
public:
    explicit NiF2(std::string name);
};
class FeF2 : public ComponentSolid {
public:
    explicit FeF2(std::string name);
};
class FeCl2 : public ComponentSolid {
public:
    explicit FeCl2(std::string name);
};
class carbon : public ComponentSolid {
public:
    explicit carbon(std::string name);
};
class CaCO3 : public ComponentSolid {
public:
    explicit CaCO3(std::string name);
};
class Fe2O3 : public ComponentSolid {
public:
    explicit Fe2O3(std::string name);
};
class Sn : public ComponentSolid {
public:
    explicit Sn(std::string name);
};
class ZnCl2 : public ComponentSolid {
public:
    explicit ZnCl2(std::string name);
};
class SnO : public ComponentSolid {
public:
    explicit SnO(std::string name);
};
class SnO2 : public ComponentSolid {
public:
    explicit SnO2(std::string name);
};
class Na2SO4 : public ComponentSolid {
public:
    explicit Na2SO4(std::string name);
};
class ZnHs : public ComponentSolid {
public:
    explicit ZnHs(std::string name);
};
class Na2Hs : public ComponentSolid {
public:
    explicit Na2Hs(std::string name);
};
class ZnS : public ComponentSolid {
public:
    explicit ZnS(std::string name);
};
class ZnSO4 : public ComponentSolid {
public:
    explicit ZnSO4(std::string name);
};
class ZnSO4H2O : public ComponentSolid {
public:
    explicit ZnSO4H2O(std::string name);
};

// Non-volatile species with data for the solid and the melt.
class silicon : public ComponentBkk {
public:
    explicit silicon(std::string name);
};
class silica : public ComponentBkk {
public:
    explicit silica(std::string name);
};
class Fe : public ComponentBkk {
public:
    explicit Fe(std::string name);
};
class CaO : public ComponentBkk {
public:
    explicit CaO(std::string name);
};
class FeO : public ComponentBkk {
public:
    explicit FeO(std::string name);
};
class Fe3O4 : public ComponentBkk {
public:
    explicit Fe3O4(std::string name);
};

// Lumped food and biomass constituents.
class Protein : public ComponentBiochem {
public:
    explicit Protein(std::string name);
};
class Lipid : public ComponentBiochem {
public:
    explicit Lipid(std::string name);
};
class Fiber : public ComponentBiochem {
public:
    explicit Fiber(std::string name);
};
class Carbohydrate : public ComponentBiochem {
public:
    explicit Carbohydrate(std::string name);
};
class Ashes : public ComponentBiochem {
public:
    explicit Ashes(std::string name);
};

} // namespace purecomps

#endif
