#include <tarvo/models/Benchmark.h>
#include <tarvo/models/Deng2010Fig6b.h>
#include <tarvo/models/ICE.h>
#include <tarvo/models/Makaruk2010Fig2.h>
#include <tarvo/models/Membrane12.h>
#include <tarvo/models/Membrane22.h>
#include <tarvo/models/MembraneMulti12.h>
#include <tarvo/models/MembraneMulti22.h>
#include <tarvo/models/Merkel2010Fig11.h>
#include <tarvo/models/Merkel2010Fig7.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/models/Test.h>
#include <tarvo/models/Upgrading.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/utility/Enumerator.h>

#include <climits>
#include <string>
#include <vector>

using Tarvo::Persistency::Defaults;

namespace Tarvo::Models {

namespace {

const std::string oneFeed = "One-inlet, two-outlets membrane module";
const std::string twoFeeds = "Two-inlets, two-outlets membrane module";

template <class Staged> void registerStaged(const std::string& type, const std::string& kind) {
    NodeFactory::registerType<Staged>(type, twoFeeds + ", " + kind + ", multi-stage", "flowsheet", false,
                                      {{"stages", "total number of stages", 10, 1, INT_MAX}}, {}, {}, "", 100, 40);
}

void registerMembranes() {
    NodeFactory::registerType<Membrane12Rtsc>(
        "Membrane12Rtsc", oneFeed + ", concentrated parameters, retentate-side composition of the feed (RTSC)", "unit",
        false, {}, {}, {}, "", 40, 40);
    NodeFactory::registerType<Membrane12Cstr>(
        "Membrane12Cstr", oneFeed + ", concentrated parameters, both compartments perfectly mixed (CSTR)", "unit",
        false, {}, {}, {}, "", 40, 40);
    NodeFactory::registerType<Membrane22Rtsc>(
        "Membrane22Rtsc", twoFeeds + ", concentrated parameters, flux at the inlet compositions (RTSC)", "unit", false,
        {}, {}, {}, "", 40, 40);
    NodeFactory::registerType<Membrane22Linear>(
        "Membrane22Linear", twoFeeds + ", concentrated parameters, flux at the linear average compositions", "unit",
        false, {}, {}, {}, "", 40, 40);
    NodeFactory::registerType<MembraneMulti12>(
        "MembraneMulti12", oneFeed + ", free flow, multi-stage", "flowsheet", false,
        {{"stages", "total number of stages", 10, 1, INT_MAX}},
        {{"typeV", "the type of the membrane model", "Membrane12Rtsc", ""}}, {}, "", 100, 40);
    for (const char* stage : {"Membrane12Rtsc", "Membrane12Cstr"})
        NodeFactory::registerAlias("MembraneMulti12", std::string("MembraneMulti12<") + stage + ">",
                                   oneFeed + ", free flow, multi-stage, stages of type " + stage,
                                   Defaults().setString("typeV", stage), "", 100, 40);
    registerStaged<MembraneMulti22RtscCoflow>("MembraneMulti22RtscCoflow", "RTSC, co-current");
    registerStaged<MembraneMulti22RtscCounterflow>("MembraneMulti22RtscCounterflow", "RTSC, counter-current");
    registerStaged<MembraneMulti22LinearCoflow>("MembraneMulti22LinearCoflow", "linear average, co-current");
    registerStaged<MembraneMulti22LinearCounterflow>("MembraneMulti22LinearCounterflow",
                                                     "linear average, counter-current");
}

void registerTestBeds() {
    NodeFactory::registerType<Test>("Test", "Testing flowsheet for membrane models with one inlet and two outlets",
                                    "flowsheet", true, {},
                                    {{"typeT", "the type of the model to test", "Membrane12Rtsc", "MembraneType1"}}, {},
                                    "", 100, 100);
    const std::pair<const char*, const char*> aliases[] = {
        {"Membrane12Rtsc", "Testbed for one inlet and two outlets, free flow, concentrated parameters RTSC membrane model"},
        {"Membrane12Cstr", "Testbed for one inlet and two outlets, free flow, concentrated parameters CSTR membrane model"},
        {"MembraneMulti12<Membrane12Rtsc>",
         "Testbed for one inlet and two outlets, free flow, multi-stage RTSC membrane model"},
        {"MembraneMulti12<Membrane12Cstr>",
         "Testbed for one inlet and two outlets, free flow, multi-stage CSTR membrane model"}};
    for (const auto& [type, description] : aliases)
        NodeFactory::registerAlias("Test", std::string("Test<") + type + ">", description,
                                   Defaults().setString("typeT", type), "", 100, 100);
    NodeFactory::registerType<Test2>("Test2", "Testing flowsheet for membrane models with two inlets and two outlets",
                                     "flowsheet", true, {},
                                     {{"typeT", "the type of the model to test", "Membrane22Rtsc", "MembraneType2"}},
                                     {}, "", 100, 100);
    const std::pair<const char*, const char*> aliases2[] = {
        {"Membrane22Rtsc", "Testbed for two-feeds, two-products, RTSC, concentrated parameters membrane model"},
        {"Membrane22Linear",
         "Testbed for two-feeds, two-products, linear average, concentrated parameters membrane model"},
        {"MembraneMulti22RtscCoflow", "Testbed for two-feeds, two-products, RTSC, co-current, multi-stage membrane model"},
        {"MembraneMulti22RtscCounterflow",
         "Testbed for two-feeds, two-products, RTSC, counter-current, multi-stage membrane model"},
        {"MembraneMulti22LinearCoflow",
         "Testbed for two-feeds, two-products, linear average, co-current, multi-stage membrane model"},
        {"MembraneMulti22LinearCounterflow",
         "Testbed for two-feeds, two-products, linear average, counter-current, multi-stage membrane model"}};
    for (const auto& [type, description] : aliases2)
        NodeFactory::registerAlias("Test2", std::string("Test2<") + type + ">", description,
                                   Defaults().setString("typeT", type), "", 100, 100);
}

// The option of a flowsheet whose membrane is a counter-current chain, with its default.
Tarvo::Persistency::StringOption counterflowModule(const std::string& value) {
    return {"typeX", "the type of the multi-stage membrane model", value, "MembraneTypeCounterFlow"};
}

template <class Sheet>
void registerSheet(const std::string& type, const std::string& description,
                   const std::vector<Tarvo::Persistency::StringOption>& options, double width, double height) {
    NodeFactory::registerType<Sheet>(type, description, "flowsheet", true, {}, options, {}, "", width, height);
}

// The flowsheets of the papers, each alias after its base, then the engine and the biogas plants.
void registerReferenceFlowsheets() {
    const std::string capture = "Post-combustion CO2 capture for power plants Figure ";
    registerSheet<Merkel2010Fig7a>("Merkel2010Fig7a",
                                   capture + "7a of Merkel2010, with free-flow, multi-stage membrane model but "
                                             "without permeate sweep",
                                   {}, 123.33, 65);
    registerSheet<Merkel2010Fig7aCounterflow>("Merkel2010Fig7aCounterflow",
                                              capture + "7a of Merkel2010, counter-current, configurable",
                                              {counterflowModule("MembraneMulti22LinearCounterflow")}, 123.33, 65);
    NodeFactory::registerAlias("Merkel2010Fig7aCounterflow", "Merkel2010Fig7aLinearCounterflow",
                               capture + "7a of Merkel2010 with linear average, counter-current, multi-stage "
                                         "membrane model",
                               Defaults().setString("typeX", "MembraneMulti22LinearCounterflow"), "", 123.33, 65);
    registerSheet<Merkel2010Fig7b>("Merkel2010Fig7b", capture + "7b of Merkel2010, counter-current, configurable",
                                   {counterflowModule("MembraneMulti22RtscCounterflow")}, 143.33, 65);
    NodeFactory::registerAlias("Merkel2010Fig7b", "Merkel2010Fig7bLinearCounterflow",
                               capture + "7b of Merkel2010 with linear average, counter-flow/sweep multi-stage "
                                         "membrane model",
                               Defaults().setString("typeX", "MembraneMulti22LinearCounterflow"), "", 143.33, 65);
    registerSheet<Merkel2010Fig11>("Merkel2010Fig11",
                                   "Post-combustion CO2 capture for power plants Figure 11 Merkel2010 (three-step "
                                   "vacuum membrane process)",
                                   {}, 243.23, 141.65);
    registerSheet<Deng2010Fig6b>("Deng2010Fig6b",
                                 "Biogas upgrading Figure 6b of Deng2010 (two-step configuration without recycle)",
                                 {}, 143.33, 100);
    const std::string cascade = "Biogas upgrading Figure2 of Makaruk2010 (two-step low-pressure-feed cascade)";
    registerSheet<Makaruk2010Fig2>("Makaruk2010Fig2", cascade + ", configurable",
                                   {{"typeX", "the type of the multi-stage membrane model",
                                     "MembraneMulti12<Membrane12Rtsc>", "MembraneType1"}},
                                   243.39, 105.55);
    const std::pair<const char*, const char*> cascades[] = {{"Rtsc", "RTSC"}, {"Cstr", "CSTR"}};
    for (const auto& [stage, kind] : cascades)
        NodeFactory::registerAlias("Makaruk2010Fig2", std::string("Makaruk2010Fig2FreeFlow") + stage,
                                   cascade + ", with free flow, multi-stage, " + kind + " membrane model",
                                   Defaults().setString("typeX", std::string("MembraneMulti12<Membrane12") + stage + ">"),
                                   "", 243.39, 105.55);
    // A unit of the biogas plants, never the root of a case.
    NodeFactory::registerType<ICE>("ICE", "Internal Combustion Engine", "unit", false, {}, {}, {}, "", 100, 100);
    registerSheet<Benchmark>("Benchmark", "Reference biogas plant with Internal Combustion Engine", {}, 100, 100);
    registerSheet<Upgrading>("Upgrading", "Biogas plant with two-step upgrading", {}, 100, 100);
}

// An enumerator of types: each item described as the catalogue describes its type, empty for a type that
// this build does not have yet.
void addTypeEnumerator(const std::string& name, const std::string& description, const std::vector<std::string>& types) {
    Core::Enumerator e(name, description);
    for (const std::string& type : types)
        e.addItem({type, NodeFactory::registered(type) ? NodeFactory::typeDescriptor(type).description : ""});
    Core::addEnumerator(e);
}

} // namespace

void registerModelCollection() {
    // Every start of the kernel registers the collection, as it does the kernel's own types: a second
    // start in one process (tarvo-eval called twice) finds it there.
    if (NodeFactory::registered("Membrane12Rtsc")) return;
    registerMembranes();
    registerTestBeds();
    registerReferenceFlowsheets();
    Core::clearEnumerators();
    addTypeEnumerator("MembraneType1", oneFeed,
                      {"Membrane12Rtsc", "Membrane12Cstr", "MembraneMulti12<Membrane12Rtsc>",
                       "MembraneMulti12<Membrane12Cstr>"});
    addTypeEnumerator("MembraneType2", twoFeeds,
                      {"Membrane22Rtsc", "Membrane22Linear", "MembraneMulti22RtscCoflow", "MembraneMulti22RtscCounterflow",
                       "MembraneMulti22LinearCoflow", "MembraneMulti22LinearCounterflow"});
    addTypeEnumerator("MembraneTypeCounterFlow", "Counter-flow membrane module",
                      {"MembraneMulti22RtscCounterflow", "MembraneMulti22LinearCounterflow"});
}

} // namespace Tarvo::Models
