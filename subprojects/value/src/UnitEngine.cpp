#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/value/UnitEngine.h>

#include <iomanip>

namespace {

std::string stripBlanks(const std::string& s) {
    const auto first = s.find_first_not_of(' ');
    if (first == std::string::npos) return std::string();
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

} // namespace

const UnitEngine& UnitEngine::instance() {
    static const UnitEngine engine;
    return engine;
}

void UnitEngine::addDimension(std::string name, const std::string& unit, int amount, int angle, int current,
                              int length, int luminous, int mass, int temperature, int time, int money) {
    name = stripBlanks(name);
    if (byName_.count(name)) throw ErrorUnit(TARVO_FUNCTION, "duplicate dimension", name);
    const UnitArray exponents(amount, angle, current, length, luminous, mass, temperature, time, money);
    Dimension& dimension = dimensions_.emplace_back(exponents, name, unit);
    byName_[name] = &dimension;
    addUnit(name, unit, 1.0);
    // The exponents' own text is a unit too, so that "m^2 kg s^-2" is understood.
    const std::string text = exponents.text();
    if (text != unit) addUnit(name, text, 1.0);
}

void UnitEngine::addUnit(std::string dimension, const std::string& unit, double factor, double offset) {
    dimension = stripBlanks(dimension);
    const auto it = byName_.find(dimension);
    if (it == byName_.end()) throw ErrorUnit(TARVO_FUNCTION, dimension);
    it->second->addUnit(unit, factor, offset);
    byUnit_.emplace(unit, Conversion{it->second, offset, factor}); // where two kinds share a text, the first one stands
}

const UnitEngine::Conversion& UnitEngine::find(const std::string& unit) const {
    const auto it = byUnit_.find(unit);
    if (it == byUnit_.end()) throw ErrorUnit(TARVO_FUNCTION, unit);
    return it->second;
}

double UnitEngine::toSI(double x, const std::string& unit, UnitArray& exponents) const {
    if (unit == "[invalid unit]") {
        exponents = UnitArray(invalidUnitExponent);
        return x;
    }
    const Conversion& conversion = find(unit);
    exponents = conversion.dimension->exponents();
    return x * conversion.factor + conversion.offset;
}

double UnitEngine::fromSI(double v, const std::string& unit) const {
    const Conversion& conversion = find(unit);
    return (v - conversion.offset) / conversion.factor;
}

const Dimension* UnitEngine::pdimension(const std::string& unit) const { return find(stripBlanks(unit)).dimension; }

const Dimension* UnitEngine::dimension(const std::string& name) const {
    const auto it = byName_.find(stripBlanks(name));
    return it == byName_.end() ? nullptr : it->second;
}

void UnitEngine::dump(std::ostream& out) const {
    const auto precision = out.precision(16);
    out << "{ ";
    for (const Dimension& dimension : dimensions_) {
        out << '"' << dimension.exponents().text() << "\": {";
        const char* separator = " ";
        for (const auto& [unit, conversion] : dimension.units()) {
            out << separator << '"' << unit << "\": [" << conversion.first << ", " << conversion.second << ']';
            separator = ", ";
        }
        out << " }, \n";
    }
    out << '}';
    out.precision(precision);
}

UnitEngine::UnitEngine() {
    // Quantity kinds, in order of creation. Exponents: kmol, rad, A, m, cd, kg, K, s, €.
    addDimension("adimensional", "", 0, 0, 0, 0, 0, 0, 0, 0, 0);
    addDimension("amount", "kmol", 1, 0, 0, 0, 0, 0, 0, 0, 0);
    addDimension("angle", "rad", 0, 1, 0, 0, 0, 0, 0, 0, 0);
    addDimension("current", "A", 0, 0, 1, 0, 0, 0, 0, 0, 0);
    addDimension("length", "m", 0, 0, 0, 1, 0, 0, 0, 0, 0);
    addDimension("luminous intensity", "cd", 0, 0, 0, 0, 1, 0, 0, 0, 0);
    addDimension("mass", "kg", 0, 0, 0, 0, 0, 1, 0, 0, 0);
    addDimension("temperature", "K", 0, 0, 0, 0, 0, 0, 1, 0, 0);
    addDimension("time", "s", 0, 0, 0, 0, 0, 0, 0, 1, 0);
    addDimension("money", "€", 0, 0, 0, 0, 0, 0, 0, 0, 1);
    addDimension("acceleration", "m/s2", 0, 0, 0, 1, 0, 0, 0, -2, 0);
    addDimension("amount flow", "kmol/s", 1, 0, 0, 0, 0, 0, 0, -1, 0);
    addDimension("amount specific electric charge", "C/kmol", -1, 0, 1, 0, 0, 0, 0, 1, 0);
    addDimension("amount specific energy", "J/kmol", -1, 0, 0, 2, 0, 1, 0, -2, 0);
    addDimension("amount specific entropy", "J/(kmol*K)", -1, 0, 0, 2, 0, 1, -1, -2, 0);
    addDimension("area", "m2", 0, 0, 0, 2, 0, 0, 0, 0, 0);
    addDimension("areic current", "A/m2", 0, 0, 1, -2, 0, 0, 0, 0, 0);
    addDimension("areic electric resistance", "ohm*m2", 0, 0, -2, 4, 0, 1, 0, -3, 0);
    addDimension("areic power density", "W/m2", 0, 0, 0, 0, 0, 1, 0, -3, 0);
    addDimension("capacitance", "F", 0, 0, 2, -2, 0, -1, 0, 4, 0);
    addDimension("conductance", "S", 0, 0, 2, -2, 0, -1, 0, 3, 0);
    addDimension("density", "kg/m3", 0, 0, 0, -3, 0, 1, 0, 0, 0);
    addDimension("diffusivity", "m2/s", 0, 0, 0, 2, 0, 0, 0, -1, 0);
    addDimension("dynamical viscosity", "Pa*s", 0, 0, 0, -1, 0, 1, 0, -1, 0);
    addDimension("electric charge", "C", 0, 0, 1, 0, 0, 0, 0, 1, 0);
    addDimension("electric potential", "V", 0, 0, -1, 2, 0, 1, 0, -3, 0);
    addDimension("electric resistance", "ohm", 0, 0, -2, 2, 0, 1, 0, -3, 0);
    addDimension("entropy", "J/K", 0, 0, 0, 2, 0, 1, -1, -2, 0);
    addDimension("entropy power", "W/K", 0, 0, 0, 2, 0, 1, -1, -3, 0);
    addDimension("flow coefficient", "kg/m7", 0, 0, 0, -7, 0, 1, 0, 0, 0);
    addDimension("force", "N", 0, 0, 0, 1, 0, 1, 0, -2, 0);
    addDimension("frequency", "Hz", 0, 0, 0, 0, 0, 0, 0, -1, 0);
    addDimension("heat transfer coefficient", "W/(m2*K)", 0, 0, 0, 0, 0, 1, -1, -3, 0);
    addDimension("heat transfer resistance", "m2*K/W", 0, 0, 0, 0, 0, -1, 1, 3, 0);
    addDimension("inductance", "H", 0, 0, -2, 2, 0, 1, 0, -2, 0);
    addDimension("inverse of length", "1/m", 0, 0, 0, -1, 0, 0, 0, 0, 0);
    addDimension("inverse of molecular weight", "kmol/kg", 1, 0, 0, 0, 0, -1, 0, 0, 0);
    addDimension("inverse of temperature", "1/K", 0, 0, 0, 0, 0, 0, -1, 0, 0);
    addDimension("length*time", "m*s", 0, 0, 0, 1, 0, 0, 0, 1, 0);
    addDimension("magnetic flux", "Wb", 0, 0, -1, 2, 0, 1, 0, -2, 0);
    addDimension("magnetic flux density", "T", 0, 0, -1, 0, 0, 1, 0, -2, 0);
    addDimension("mass flow", "kg/s", 0, 0, 0, 0, 0, 1, 0, -1, 0);
    addDimension("mass per unit work", "kg/J", 0, 0, 0, -2, 0, 0, 0, 2, 0);
    addDimension("mass specific energy", "J/kg", 0, 0, 0, 2, 0, 0, 0, -2, 0);
    addDimension("mass specific power", "W/kg", 0, 0, 0, 2, 0, 0, 0, -3, 0);
    addDimension("mass specific heat capacity", "J/(kg*K)", 0, 0, 0, 2, 0, 0, -1, -2, 0);
    addDimension("mass specific volume", "m3/kg", 0, 0, 0, 3, 0, -1, 0, 0, 0);
    addDimension("molar concentration", "kmol/m3", 1, 0, 0, -3, 0, 0, 0, 0, 0);
    addDimension("molar volume", "m3/kmol", -1, 0, 0, 3, 0, 0, 0, 0, 0);
    addDimension("molecular weight", "kg/kmol", -1, 0, 0, 0, 0, 1, 0, 0, 0);
    addDimension("permeance", "kmol/kg/m", 1, 0, 0, -1, 0, -1, 0, 1, 0);
    addDimension("power", "W", 0, 0, 0, 2, 0, 1, 0, -3, 0);
    addDimension("pressure", "Pa", 0, 0, 0, -1, 0, 1, 0, -2, 0);
    addDimension("pressure*molar volume squared", "Pa*m6/kmol2", -2, 0, 0, 5, 0, 1, 0, -2, 0);
    addDimension("temperature derivative of pressure*molar volume squared", "Pa*m6/kmol2/K", -2, 0, 0, 5, 0, 1, -1,
                 -2, 0);
    addDimension("second temperature derivative of pressure*molar volume squared", "Pa*m6/kmol2/K2", -2, 0, 0, 5,
                 0, 1, -2, -2, 0);
    addDimension("resistivity", "ohm*m", 0, 0, -2, 3, 0, 1, 0, -3, 0);
    addDimension("second temperature derivative of density", "kg/(m3*K2)", 0, 0, 0, -3, 0, 1, -2, 0, 0);
    addDimension("second temperature derivative of pressure", "Pa/K2", 0, 0, 0, -1, 0, 1, -2, -2, 0);
    addDimension("second temperature derivative of specific heat", "J/(kg*K3)", 0, 0, 0, 2, 0, 0, -3, -2, 0);
    addDimension("surface tension", "N/m", 0, 0, 0, 0, 0, 1, 0, -2, 0);
    addDimension("temperature derivative of density", "kg/(m3*K)", 0, 0, 0, -3, 0, 1, -1, 0, 0);
    addDimension("temperature derivative of pressure", "Pa/K", 0, 0, 0, -1, 0, 1, -1, -2, 0);
    addDimension("temperature derivative of specific heat", "J/(kg*K2)", 0, 0, 0, 2, 0, 0, -2, -2, 0);
    addDimension("temperature squared/pressure", "K2/Pa", 0, 0, 0, 1, 0, -1, 2, 2, 0);
    addDimension("temperature/pressure", "K/Pa", 0, 0, 0, 1, 0, -1, 1, 2, 0);
    addDimension("thermal conductivity", "W/(m*K)", 0, 0, 0, 1, 0, 1, -1, -3, 0);
    addDimension("thermal resistivity", "m*K/W", 0, 0, 0, -1, 0, -1, 1, 3, 0);
    addDimension("thermal resistivity squared", "m2*K2/W2", 0, 0, 0, -2, 0, -2, 2, 6, 0);
    addDimension("VdW a", "N*m4*kmol-2", -2, 0, 0, 5, 0, 1, 0, -2, 0);
    addDimension("VdW a*n*n", "N*m4", 0, 0, 0, 5, 0, 1, 0, -2, 0);
    addDimension("velocity", "m/s", 0, 0, 0, 1, 0, 0, 0, -1, 0);
    addDimension("volume", "m3", 0, 0, 0, 3, 0, 0, 0, 0, 0);
    addDimension("volume flow", "m3/s", 0, 0, 0, 3, 0, 0, 0, -1, 0);
    addDimension("energy", "J", 0, 0, 0, 2, 0, 1, 0, -2, 0);
    addDimension("energy price", "€/J", 0, 0, 0, -2, 0, -1, 0, 2, 1);

    // Further units of each kind: factor and offset to SI.
    addUnit("amount", "mol", 0.001);
    addUnit("amount flow", "kmol/h", 0.0002777777777777778);
    addUnit("amount flow", "lbmol/h", 0.00012599788888888888);
    addUnit("amount flow", "mol/h", 2.7777777777777776e-7);
    addUnit("amount flow", "mol/s", 0.001);
    addUnit("amount flow", "Nm3/h", 1.2393158170611665e-5);
    addUnit("amount flow", "Nm3/d", 5.163815904421528e-7);
    addUnit("amount flow", "STPccm", 6.812392059639596e-10);
    addUnit("amount flow", "Nl/min", 7.435894902366999e-7);
    addUnit("amount specific energy", "kJ/kmol", 1000);
    addUnit("amount specific energy", "BTU/lbmol", 2325.9998461614437);
    addUnit("amount specific energy", "kcal/kmol", 4186.8);
    addUnit("amount specific entropy", "J/kmol/K", 1);
    addUnit("amount specific entropy", "kJ/kmol/K", 1000);
    addUnit("amount specific entropy", "kcal/kmol/K", 4186.8);
    addUnit("area", "dm2", 0.01);
    addUnit("area", "ft2", 0.09290304);
    addUnit("area", "cm2", 0.0001);
    addUnit("area", "mm2", 1e-6);
    addUnit("areic current", "A/dm2", 100);
    addUnit("areic current", "A/ft2", 10.763910416709722);
    addUnit("areic current", "A/cm2", 10000);
    addUnit("areic current", "A/mm2", 1e6);
    addUnit("areic current", "mA/cm2", 10);
    addUnit("areic electric resistance", "ohm*cm2", 0.0001);
    addUnit("density", "mg/m3", 1e-6);
    addUnit("density", "g/m3", 0.001);
    addUnit("density", "g/dm3", 1);
    addUnit("density", "lb/ft3", 16.01846443340014);
    addUnit("dynamical viscosity", "cP", 0.001);
    addUnit("dynamical viscosity", "mPa*s", 0.001);
    addUnit("dynamical viscosity", "uPa*s", 1e-6);
    addUnit("electric potential", "mV", 0.001);
    addUnit("entropy power", "BTU/h/°F", 0.52752792631);
    addUnit("frequency", "rpm", 0.016666666666666666);
    addUnit("heat transfer coefficient", "kcal/(h*m2*K)", 1.163);
    addUnit("heat transfer coefficient", "BTU/(h*ft2*F)", 5.678263341113487);
    addUnit("heat transfer coefficient", "W/m2/K", 1);
    addUnit("inverse of molecular weight", "mol/kg", 0.001);
    addUnit("length", "in", 0.0254);
    addUnit("length", "ft", 0.3048);
    addUnit("length", "km", 1000);
    addUnit("length", "dm", 0.1);
    addUnit("length", "cm", 0.01);
    addUnit("length", "mm", 0.001);
    addUnit("length", "um", 1e-6);
    addUnit("mass", "mg", 1e-6);
    addUnit("mass", "t", 1000);
    addUnit("mass", "lb", 0.4535924);
    addUnit("mass", "g", 0.001);
    addUnit("mass flow", "kg/h", 0.0002777777777777778);
    addUnit("mass flow", "kg/d", 1.1574074074074073e-5);
    addUnit("mass flow", "g/d", 1.1574074074074074e-8);
    addUnit("mass flow", "t/h", 0.2777777777777778);
    addUnit("mass flow", "t/d", 0.011574074074074075);
    addUnit("mass flow", "t/yr", 3.1688773211177125e-5);
    addUnit("mass flow", "lb/h", 0.00012599788888888888);
    addUnit("mass specific energy", "kcal/kg", 4186.8);
    addUnit("mass specific energy", "BTU/lb", 2325.9998461614437);
    addUnit("mass specific energy", "MJ/kg", 1e6);
    addUnit("mass specific energy", "kJ/g", 1e6);
    addUnit("mass specific energy", "kJ/kg", 1000);
    addUnit("mass specific energy", "m2/s2", 1);
    addUnit("mass specific power", "kW/kg", 1000);
    addUnit("mass specific heat capacity", "kcal/(kg*K)", 4186.8);
    addUnit("mass specific heat capacity", "BTU/lb/°F", 4186.7997230905985);
    addUnit("mass specific heat capacity", "kcal/kg/K", 4186.8);
    addUnit("mass specific heat capacity", "J/kg/K", 1);
    addUnit("mass specific heat capacity", "kJ/kg/K", 1000);
    addUnit("molar concentration", "mol/m3", 0.001);
    addUnit("molar concentration", "lbmol/ft3", 16.01846443340014);
    addUnit("molar concentration", "mmol/dm3", 0.001);
    addUnit("molar concentration", "mol/dm3", 1);
    // Volumetric energies are filed under pressure: the exponents are the same.
    addUnit("pressure", "J/m3", 1);
    addUnit("pressure", "kJ/m3", 1000);
    addUnit("pressure", "J/l", 1000);
    addUnit("pressure", "kWh/m3", 3.6e6);
    addUnit("pressure", "kcal/m3", 4186.8);
    addUnit("pressure", "kcal/l", 4.1868e6);
    addUnit("pressure", "BTU/ft3", 37258.94580783128);
    // Mass per kmol at normal conditions, with a normal volume of 22.413800740192445 m3/kmol.
    addUnit("molecular weight", "mg/Nm3", 2.2413800740192445e-5);
    addUnit("molecular weight", "g/Nm3", 0.022413800740192447);
    addUnit("molecular weight", "lb/lbmol", 1);
    addUnit("permeance", "GPU", 3.3464279057284493e-13);
    addUnit("power", "BTU/h", 0.2930710701722222);
    addUnit("power", "kW", 1000);
    addUnit("power", "kcal/s", 4186.8);
    addUnit("power", "kcal/h", 1.163);
    addUnit("power", "TW", 1e12);
    addUnit("power", "GW", 1e9);
    addUnit("power", "MW", 1e6);
    addUnit("power", "mW", 0.001);
    addUnit("pressure", "MPa", 1e6);
    addUnit("pressure", "atm", 101325);
    addUnit("pressure", "bar", 100000);
    addUnit("pressure", "barg", 100000, 101325); // gauge: absolute shifted by one atmosphere
    addUnit("pressure", "mbar", 100);
    addUnit("pressure", "hPa", 100);
    addUnit("pressure", "kPa", 1000);
    addUnit("pressure", "mmHg", 133.32236842105263);
    addUnit("pressure", "Torr", 133.32236842105263);
    addUnit("pressure", "mmH2O", 9.806);
    addUnit("pressure", "kg/cm2", 98060);
    addUnit("pressure", "psi", 6894.757293174671);
    addUnit("resistivity", "ohm*cm", 0.01);
    addUnit("temperature", "°C", 1, 273.15);
    addUnit("temperature", "°F", 0.5555555555555556, 255.3722222222222);
    addUnit("thermal conductivity", "W/m/K", 1);
    addUnit("time", "min", 60);
    addUnit("time", "h", 3600);
    addUnit("time", "d", 86400);
    addUnit("time", "yr", 31556917.439999998);
    addUnit("volume", "ft3", 0.028316846592000004);
    addUnit("volume", "dm3", 0.001);
    addUnit("volume", "cm3", 1e-6);
    addUnit("volume", "mm3", 9.999999999999999e-10);
    addUnit("volume", "ul", 9.999999999999999e-10);
    addUnit("volume", "ml", 1e-6);
    addUnit("volume", "l", 0.001);
    addUnit("volume", "bbl", 0.15898729492799998);
    addUnit("volume flow", "m3/h", 0.0002777777777777778);
    addUnit("volume flow", "ft3/h", 7.86579072e-6);
    addUnit("volume flow", "l/h", 2.7777777777777776e-7);
    addUnit("volume flow", "ccm", 1.6666666666666667e-8);
    addUnit("energy", "BTU", 1055.05585262);
    addUnit("energy", "mmBTU", 1055055852.62);
    addUnit("energy", "MWh", 3.6e9);
    addUnit("energy", "kcal", 4186.8);
    addUnit("energy", "kWh", 3.6e6);
    addUnit("energy", "kJ", 1000);
    // Money converts at a fixed rate: the dollar is 0.7311544929443592 of the base currency.
    addUnit("energy price", "€/mmBTU", 9.478171203133171e-10);
    addUnit("energy price", "$/mmBTU", 6.930007460066661e-10);
    addUnit("energy price", "$/J", 0.7311544929443592);
    addUnit("money", "$", 0.7311544929443592);
    addUnit("energy price", "€/kWh", 2.7777777777777776e-7);
    addUnit("energy price", "€/MWh", 2.7777777777777777e-10);
    addUnit("energy price", "€/kcal", 0.00023884589662749592);
}
