#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/StreamIapwsLiquidVapor.h>
#include <tarvo/streams/StreamOne.h>
#include <tarvo/streams/StreamOneSolid.h>
#include <tarvo/streams/StreamSimple.h>
#include <tarvo/streams/StreamTabular.h>
#include <tarvo/streams/StreamTwo.h>

#include <tuple>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::StringOption;

namespace {
constexpr double iconSize = 40;

template <typename C> void stream(const std::string& name, const std::string& description,
                                  const std::vector<StringOption>& options = {}) {
    NodeFactory::registerType<C>(name, description, "stream", false, {}, options, {}, "", iconSize, iconSize);
}

void alias(const std::string& base, const std::string& name, const std::string& description, const Defaults& fixed) {
    NodeFactory::registerAlias(base, name, description, fixed, "", iconSize, iconSize);
}

Defaults embedded(const std::string& phase) { return Defaults().setString("embeddedTypePhase", phase); }

Defaults embeddedPair(const std::string& first, const std::string& second) {
    return Defaults().setString("embeddedTypePhase[0]", first).setString("embeddedTypePhase[1]", second);
}

std::vector<StringOption> twoPhaseOptions(const std::string& description0, const std::string& description1,
                                          const std::string& first) {
    return {{"embeddedTypePhase[0]", description0, first, "phaseEnum"},
            {"embeddedTypePhase[1]", description1, "PhaseIdeal<liquid>", "phaseEnum"}};
}
} // namespace

void registerStreams() {
    if (NodeFactory::registered("StreamSimpleLiquid")) return;
    stream<StreamSimple<0, 1, 0>>("StreamSimpleLiquid", "Simple, mass-balance only stream with one liquid phase");
    stream<StreamSimple<0, 0, 1>>("StreamSimpleSolid", "Simple, mass-balance only stream with one solid phase");
    stream<StreamSimple<1, 0, 0>>("StreamSimpleVapor", "Simple, mass-balance only stream with one vapor phase");
    stream<StreamSimple<0, 1, 1>>("StreamSimpleLiquidSolid",
                                  "Simple, mass-balance only stream with one liquid and one solid phase");
    stream<StreamSimple<1, 1, 1>>("StreamSimpleLiquidSolidVapor",
                                  "Simple, mass-balance only stream with one liquid, one solid and one vapor phase");

    const StringOption embeddedOption{"embeddedTypePhase", "type of the embedded phase", "PhaseIdeal<vapor>",
                                      "phaseEnum"};
    stream<StreamOne>("StreamOne", "Parameterized single-phase stream", {embeddedOption});
    stream<StreamOneSolid>("StreamOneSolid", "Parameterized stream with a single fluid phase and one solid phase",
                           {embeddedOption});
    alias("StreamOne", "StreamVapor", "Ideal stream with one vapor phase", embedded("PhaseIdeal<vapor>"));
    alias("StreamOne", "StreamLiquid", "Ideal stream with one liquid phase", embedded("PhaseIdeal<liquid>"));
    alias("StreamOne", "StreamSolid", "Ideal stream with one solid phase", embedded("PhaseIdeal<solid>"));

    stream<StreamTwo<FlashVl>>(
        "StreamVl", "Parameterized two-phase stream with kvli independent from temperature and composition",
        twoPhaseOptions("phase type for phase 1", "phase type for phase 2", "PhaseIdeal<vapor>"));
    stream<StreamTwo<FlashVlT>>(
        "StreamVlT", "Parameterized two-phase stream with kvli dependent from temperature but not from composition",
        twoPhaseOptions("phase type for phase 1", "phase type for phase 2", "PhaseIdeal<vapor>"));
    stream<StreamTwo<FlashVlTx>>(
        "StreamVlTx", "Parameterized vapor-liquid stream with with kvli dependent from temperature and composition",
        twoPhaseOptions("phase type for phase 1", "phase type for phase 2", "PhaseIdeal<vapor>"));
    stream<StreamTwo<FlashLlTx>>(
        "StreamLlTx", "Parametrized liquid-liquid stream with with kvli dependent from temperature and composition",
        twoPhaseOptions("phase type for phase 1", "phase type for phase 2", "PhaseIdeal<liquid>"));
    stream<StreamTwoSolid<FlashVlT>>("StreamSolidVlT",
                                     "Parameterized three-phase stream with two fluid phases and one solid phase and "
                                     "with kvli dependent from temperature but not from composition",
                                     twoPhaseOptions("type of the embedded fluid phase",
                                                     "type of the embedded fluid phase", "PhaseIdeal<vapor>"));
    stream<StreamTwoSolid<FlashVlTx>>("StreamSolidVlTx",
                                      "Parameterized three-phase stream with two fluid phases and one solid phase and "
                                      "with kvli dependent from temperature and from composition",
                                      twoPhaseOptions("type of the embedded fluid phase",
                                                      "type of the embedded fluid phase", "PhaseIdeal<vapor>"));

    const std::string tabular = "Stream with component volatilities given as data";
    stream<StreamTabular>("StreamTabularLiquidVapor", tabular + ", with one liquid and one vapor phase",
                          twoPhaseOptions("phase type for phase 1", "phase type for phase 2", "PhaseIdeal<vapor>"));
    alias("StreamTabularLiquidVapor", "StreamTabularLiquidLiquid", tabular + ", with two liquids",
          embeddedPair("PhaseIdeal<liquid>", "PhaseIdeal<liquid>"));

    alias("StreamVlT", "StreamIdealLiquidVapor", "Ideal stream with one liquid and one vapor phase",
          embeddedPair("PhaseIdeal<vapor>", "PhaseIdeal<liquid>"));
    alias("StreamOneSolid", "StreamIdealSolidVapor", "Ideal stream with one solid and one vapor phase",
          embedded("PhaseIdeal<vapor>"));
    alias("StreamOneSolid", "StreamIdealLiquidSolid", "Ideal stream with one liquid and one solid phase",
          embedded("PhaseIdeal<liquid>"));
    alias("StreamSolidVlT", "StreamIdealLiquidSolidVapor", "Ideal stream with one liquid, one solid and one vapor phase",
          embeddedPair("PhaseIdeal<vapor>", "PhaseIdeal<liquid>"));

    // GERG-2004 holds only the components of its standard: its descriptions say where to look.
    for (const auto& [model, equation, note] :
         {std::tuple<std::string, std::string, std::string>{"KwongRedlichSoave", "Kwong-Redlich-Soave", ""},
          {"PengRobinson", "Peng-Robinson", ""},
          {"Pcsaft", "PC-SAFT", ""},
          {"Gerg2004", "GERG-2004", " see PhaseGerg2004 for limitations"}}) {
        const std::string based = "Stream based on the " + equation + " equation of state";
        const std::string vapor = "Phase" + model + "<vapor>", liquid = "Phase" + model + "<liquid>";
        alias("StreamOne", "Stream" + model + "Vapor", based + " with one vapor phase" + note, embedded(vapor));
        alias("StreamOne", "Stream" + model + "Liquid", based + " with one liquid phase" + note, embedded(liquid));
        alias("StreamVlTx", "Stream" + model + "LiquidVapor", based + ", with one liquid and one vapor phase" + note,
              embeddedPair(vapor, liquid));
    }
    const std::string unifac = "Stream based on the UNIFAC activity coefficient model";
    alias("StreamOne", "StreamUnifacLiquid", unifac + ", with one liquid phase", embedded("PhaseUnifac"));
    alias("StreamVlTx", "StreamUnifacLiquidVapor", unifac + ", with one liquid and one vapor phase",
          embeddedPair("PhaseIdeal<vapor>", "PhaseUnifac"));
    for (const auto& [model, formulation] :
         {std::pair<std::string, std::string>{"Nrtl1", "in the original formulation with temperature-independent bij"},
          {"Nrtl2", "with temperature-dependent bij and alfaij"}}) {
        const std::string based =
            "Stream based on the Non Random Two Liquids activity coefficient model " + formulation;
        const std::string liquid = "Phase" + model;
        alias("StreamOne", "Stream" + model + "Liquid", based + ", with one liquid phase", embedded(liquid));
        alias("StreamOneSolid", "Stream" + model + "LiquidSolid", based + ", with one liquid and one solid phase",
              embedded(liquid));
        alias("StreamLlTx", "Stream" + model + "LiquidLiquid", based + ", with two liquids",
              embeddedPair(liquid, liquid));
        alias("StreamVlTx", "Stream" + model + "LiquidVapor", based + ", with one liquid and one vapor phase",
              embeddedPair("PhaseIdeal<vapor>", liquid));
        alias("StreamSolidVlTx", "Stream" + model + "LiquidSolidVapor",
              based + ", with one liquid, one solid and one vapor phase", embeddedPair("PhaseIdeal<vapor>", liquid));
    }
    alias("StreamOneSolid", "StreamKwongRedlichSoaveSolidVapor",
          "Stream based on the Kwong-Redlich-Soave equation of state with one solid and one vapor phase",
          embedded("PhaseKwongRedlichSoave<vapor>"));
    alias("StreamSolidVlTx", "StreamKwongRedlichSoaveLiquidSolidVapor",
          "Stream based on the Kwong-Redlich-Soave equation of state, with one liquid, one solid and one vapor phase",
          embeddedPair("PhaseKwongRedlichSoave<vapor>", "PhaseKwongRedlichSoave<liquid>"));

    const std::string iapws = "Stream based on the IAPWS-95 equation of state";
    alias("StreamOne", "StreamIapwsVapor", iapws + " with one vapor phase", embedded("PhaseIapws<vapor>"));
    alias("StreamOne", "StreamIapwsLiquid", iapws + " with one liquid phase", embedded("PhaseIapws<liquid>"));
    stream<StreamIapwsLiquidVapor>("StreamIapwsLiquidVapor", iapws + " with one liquid and one vapor phase");
}
