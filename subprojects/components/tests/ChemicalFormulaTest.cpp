#include <tarvo/components/ChemicalFormula.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

TEST(ChemicalFormula, SymbolsAndCountsAddUp) {
    const ChemicalFormula methanol("CH3OH");
    EXPECT_EQ(methanol.counts(), (std::map<std::string, double>{{"C", 1}, {"H", 4}, {"O", 1}}));
    const ChemicalFormula phenol("C6H5OH");
    EXPECT_EQ(phenol.counts(), (std::map<std::string, double>{{"C", 6}, {"H", 6}, {"O", 1}}));
    const ChemicalFormula salt("Na2SO4");
    EXPECT_EQ(salt.counts(), (std::map<std::string, double>{{"Na", 2}, {"S", 1}, {"O", 4}}));
    const ChemicalFormula longChain("C30H62");
    EXPECT_EQ(longChain.counts(), (std::map<std::string, double>{{"C", 30}, {"H", 62}}));
}

TEST(ChemicalFormula, MolecularWeightUsesTheTableWithoutRounding) {
    EXPECT_DOUBLE_EQ(ChemicalFormula("H2O").mw().toDouble("kg/kmol"), 2 * 1.007947 + 15.99943);
    EXPECT_DOUBLE_EQ(ChemicalFormula("H2O").mw().toDouble("kg/kmol"), 18.015324);
    EXPECT_DOUBLE_EQ(ChemicalFormula("CO2").mw().toDouble("kg/kmol"), 44.00964);
    EXPECT_DOUBLE_EQ(ChemicalFormula("UF6").mw().toDouble("kg/kmol"), 238.028913 + 6 * 18.99840325);
}

TEST(ChemicalFormula, ElementWithoutAtomicWeightAddsNothing) {
    // Technetium and polonium are outside the table.
    EXPECT_DOUBLE_EQ(ChemicalFormula("TcO2").mw().toDouble("kg/kmol"), 2 * 15.99943);
    EXPECT_DOUBLE_EQ(ChemicalFormula("PoCl2").mw().toDouble("kg/kmol"), 2 * 35.4532);
    EXPECT_EQ(ChemicalFormula("TcO2").counts().at("Tc"), 1.0);
}

TEST(ChemicalFormula, AtomicWeightTableHoldsHToBiAndThPaU) {
    const auto& table = atomicWeights();
    EXPECT_EQ(table.size(), 84u);
    for (const char* absent : {"Po", "At", "Rn", "Fr", "Ra", "Ac", "Tc", "Pm"})
        EXPECT_EQ(table.count(absent), 0u);
    for (const char* present : {"H", "Bi", "Th", "Pa", "U", "Lu"})
        EXPECT_EQ(table.count(present), 1u);
    EXPECT_EQ(table.at("H"), 1.007947);
}

TEST(ChemicalFormula, EmptyFormulaIsReportedAndEmpty) {
    testing::internal::CaptureStdout();
    const ChemicalFormula empty("");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "========== wmpty formula\n");
    EXPECT_TRUE(empty.counts().empty());
    EXPECT_EQ(empty.mw().toDouble(), 0.0);
}
