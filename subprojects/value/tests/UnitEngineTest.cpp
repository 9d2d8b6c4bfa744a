#include <tarvo/utility/Error.h>
#include <tarvo/value/UnitEngine.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

const UnitEngine& engine() { return UnitEngine::instance(); }

double toSI(double x, const std::string& unit) {
    UnitArray exponents;
    return engine().toSI(x, unit, exponents);
}

UnitArray exponentsOf(const std::string& unit) {
    UnitArray exponents;
    engine().toSI(1.0, unit, exponents);
    return exponents;
}

std::string unitError(const std::function<void()>& f) {
    try {
        f();
    } catch (const ErrorUnit& e) {
        return e.message();
    }
    return "no error";
}

} // namespace

TEST(UnitArray, TextOfExponents) {
    EXPECT_EQ(UnitArray(0, 0, 0, 2, 0, 1, 0, -2, 0).text(), "m^2 kg s^-2");
    EXPECT_EQ(UnitArray().text(), "");
    EXPECT_EQ(UnitArray(invalidUnitExponent).text(), "[invalid unit]");
    EXPECT_EQ(UnitArray(-1, 0, 0, 0, 0, 1, 0, 0, 0).text(), "kmol^-1 kg");
    EXPECT_EQ(UnitArray(0, 0, 0, -2, 0, -1, 0, 2, 1).text(), "m^-2 kg^-1 s^2 €");
    EXPECT_EQ(UnitArray(1, 2, 3, 4, 5, 6, 7, 8, 9).technicalText(), "[1 2 3 4 5 6 7 8]");
}

TEST(UnitArray, ArithmeticIsEntrywise) {
    UnitArray a(1, 0, 0, 2, 0, 0, 0, -3, 0);
    const UnitArray b(0, 0, 0, 2, 0, 1, 0, 1, 0);
    a += b;
    EXPECT_EQ(a, UnitArray(1, 0, 0, 4, 0, 1, 0, -2, 0));
    a -= b;
    EXPECT_EQ(a, UnitArray(1, 0, 0, 2, 0, 0, 0, -3, 0));
    EXPECT_EQ(-a, UnitArray(-1, 0, 0, -2, 0, 0, 0, 3, 0));
    a /= 2; // truncating
    EXPECT_EQ(a, UnitArray(0, 0, 0, 1, 0, 0, 0, -1, 0));
    EXPECT_TRUE(UnitArray(7).allEqual(7));
    EXPECT_FALSE(a.allEqual(0));
}

TEST(UnitEngine, ConversionsOfTheTable) {
    EXPECT_DOUBLE_EQ(toSI(1.0, "kmol/h"), 0.0002777777777777778);
    EXPECT_DOUBLE_EQ(engine().fromSI(toSI(1.0, "kmol/h"), "kmol/h"), 1.0);
    EXPECT_EQ(toSI(0.0, "barg"), 101325.0);
    EXPECT_DOUBLE_EQ(engine().fromSI(101325.0 + 2e5, "barg"), 2.0);
    EXPECT_NEAR(toSI(32.0, "°F"), 273.15, 1e-12);
    EXPECT_NEAR(toSI(212.0, "°F"), 373.15, 1e-12);
    EXPECT_DOUBLE_EQ(toSI(100.0, "°C"), 373.15);
    EXPECT_DOUBLE_EQ(toSI(1000.0, "GPU"), 3.3464279057284493e-10);
    EXPECT_DOUBLE_EQ(toSI(1.0, "$"), 0.7311544929443592);
    EXPECT_DOUBLE_EQ(toSI(1.0, "kWh/m3"), 3.6e6);
}

TEST(UnitEngine, ExponentsComeFromTheKind) {
    EXPECT_EQ(exponentsOf("kmol/h"), UnitArray(1, 0, 0, 0, 0, 0, 0, -1, 0));
    EXPECT_EQ(exponentsOf("GPU"), UnitArray(1, 0, 0, -1, 0, -1, 0, 1, 0));
    EXPECT_EQ(exponentsOf("°C"), UnitArray(0, 0, 0, 0, 0, 0, 1, 0, 0));
    // Volumetric energy is a pressure, a mass per normal volume a molecular weight.
    EXPECT_EQ(engine().pdimension("kWh/m3")->name(), "pressure");
    EXPECT_EQ(engine().pdimension("mg/Nm3")->name(), "molecular weight");
    EXPECT_EQ(engine().pdimension("Nm3/h")->name(), "amount flow");
    EXPECT_EQ(engine().pdimension("GPU")->name(), "permeance");
}

TEST(UnitEngine, EmptyUnitIsDimensionless) {
    UnitArray exponents(5);
    EXPECT_EQ(engine().toSI(3.5, "", exponents), 3.5);
    EXPECT_TRUE(exponents.allEqual(0));
    EXPECT_EQ(engine().pdimension("")->name(), "adimensional");
}

TEST(UnitEngine, InvalidUnitPassesTheNumberThrough) {
    UnitArray exponents;
    EXPECT_EQ(engine().toSI(42.0, "[invalid unit]", exponents), 42.0);
    EXPECT_TRUE(exponents.allEqual(invalidUnitExponent));
}

TEST(UnitEngine, ExponentTextIsAUnitOfTheFirstKindThatDeclaresIt) {
    EXPECT_EQ(exponentsOf("m^2 kg s^-2"), UnitArray(0, 0, 0, 2, 0, 1, 0, -2, 0));
    EXPECT_EQ(engine().pdimension("m^2 kg s^-2")->name(), "energy");
    // "VdW a" repeats the exponents of "pressure*molar volume squared": the earlier kind keeps the text.
    EXPECT_EQ(engine().pdimension("kmol^-2 m^5 kg s^-2")->name(), "pressure*molar volume squared");
}

TEST(UnitEngine, UnsupportedUnits) {
    EXPECT_EQ(unitError([] { toSI(1.0, "kg/min"); }),
              "Error was thrown by function: UnitEngine::find\n"
              "Error type: Unit of measurement error - unsupported unit [kg/min]\n");
    // A lookup for conversion does not strip blanks; the lookup of a kind does.
    EXPECT_NE(unitError([] { toSI(1.0, "kmol/h "); }).find("unsupported unit [kmol/h ]"), std::string::npos);
    EXPECT_NE(unitError([] { engine().fromSI(1.0, "K "); }).find("unsupported unit [K ]"), std::string::npos);
    EXPECT_EQ(engine().pdimension("kmol/h ")->name(), "amount flow");
    EXPECT_EQ(engine().pdimension(" kmol/h")->name(), "amount flow");
}

TEST(UnitEngine, KindsAreInOrderOfCreation) {
    const auto& kinds = engine().dimensions();
    ASSERT_EQ(kinds.size(), 76u);
    EXPECT_EQ(kinds.front().name(), "adimensional");
    EXPECT_EQ(kinds[9].siUnit(), "€");
    EXPECT_EQ(kinds.back().name(), "energy price");
    EXPECT_EQ(kinds.back().siUnit(), "€/J");
}

// Each unit converts by its own kind's (offset, factor) and with its kind's exponents, both ways. A text that two
// kinds share converts as the first of them.
TEST(UnitEngine, EveryUnitConvertsByItsKindsTableAndRoundTrips) {
    for (const Dimension& kind : engine().dimensions()) {
        EXPECT_EQ(toSI(2.5, kind.siUnit()), 2.5) << kind.name();
        for (const auto& [unit, conversion] : kind.units()) {
            EXPECT_GT(conversion.second, 0.0) << unit;
            if (engine().pdimension(unit) != &kind) continue;
            const auto& [offset, factor] = conversion;
            EXPECT_EQ(toSI(7.25, unit), 7.25 * factor + offset) << unit;
            EXPECT_EQ(exponentsOf(unit), kind.exponents()) << unit;
            EXPECT_NEAR(engine().fromSI(toSI(7.25, unit), unit), 7.25, 1e-9) << unit;
        }
    }
}

TEST(Dimension, DuplicateUnitIsRefused) {
    Dimension d(UnitArray(), "test", "x");
    d.addUnit("x", 1.0, 0.0);
    EXPECT_EQ(unitError([&] { d.addUnit("x", 2.0, 0.0); }),
              "Error was thrown by function: Dimension::addUnit\n"
              "Error type: Unit of measurement error - Duplicate unit <x>\n");
    EXPECT_EQ(d.units().at("x").second, 1.0);
}

TEST(UnitEngine, DumpListsEveryKind) {
    std::ostringstream out;
    engine().dump(out);
    const std::string text = out.str();
    EXPECT_EQ(text.substr(0, 2), "{ ");
    EXPECT_EQ(text.back(), '}');
    EXPECT_NE(text.find("\"barg\": [101325, 100000]"), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 76);
}
