#include <tarvo/utility/Error.h>
#include <tarvo/utility/SmartEnumerator.h>

namespace Tarvo::Utility {

template <typename T> void SmartEnumerator<T>::unsupported(const std::string& function, T value) {
    throw ErrorSmartEnum(function, table().name, std::to_string(static_cast<int>(value)));
}

template <typename T> const EnumeratorItem& SmartEnumerator<T>::nullItem() {
    static const EnumeratorItem null("Null", "Undefined");
    return null;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<ScalingMode>() {
    static const SmartEnumeratorTable table{
        "ScalingMode",
        "variable scaling mode",
        {{"noscaling", "no scaling is applied, bounds-inclusive"},
         {"linear", "linear scaling, bounds-inclusive"},
         {"power", "power-law scaling, bounds-inclusive"},
         {"arctangent", "arctangent scaling, bounds-inclusive"},
         {"arctangentExclusive", "arctangent scaling, bounds-exclusive"},
         {"arctangentpower", "arctangent + power-law scaling, bounds-inclusive"},
         {"rational", "rational function scaling, bounds-exclusive"},
         {"log", "logarithm function scaling, left-bound-exclusive, right-bound-inclusive"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<CutsSolution>() {
    static const SmartEnumeratorTable table{"CutsSolution",
                                            "cut solution method",
                                            {{"direct", "Direct Substitution"},
                                             {"newton", "Newton's method"},
                                             {"wegstein", "Wegstein accelerated direct Substitution"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<MassBalanceMode>() {
    static const SmartEnumeratorTable table{"MassBalanceMode",
                                            "stream and phase mass balance specification mode",
                                            {{"Nx", "ndot and x[] are fixed"},
                                             {"Mx", "mdot and x[] are fixed"},
                                             {"Nw", "ndot and w[] are fixed"},
                                             {"Mw", "mdot and w[] are fixed"},
                                             {"N", "ndotcomps[] are fixed"},
                                             {"M", "mdotcomps[] are fixed"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<FlashMode>() {
    static const SmartEnumeratorTable table{"FlashMode",
                                            "stream flash specification mode",
                                            {{"PT", "Pressure-Temperature computation"},
                                             {"PA", "Pressure-phase fraction computation"},
                                             {"PH", "Pressure-Enthalpy computation"},
                                             {"RH", "Density-enthalpy computation"},
                                             {"RT", "Density-temperature computation"},
                                             {"PS", "Pressure-Entropy computation"},
                                             {"SA", "Pressure-phase fraction computation"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<Direction>() {
    static const SmartEnumeratorTable table{
        "Direction",
        "2-D flow direction",
        {{"up", "Upwards"}, {"down", "Downwards"}, {"left", "Leftwards"}, {"right", "Rightwards"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<PhaseType>() {
    static const SmartEnumeratorTable table{
        "PhaseType", "material phase type", {{"vapor", "Vapor"}, {"liquid", "Liquid"}, {"solid", "Solid"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<PhaseIndex>() {
    static const SmartEnumeratorTable table{"PhaseIndex",
                                            "phase index",
                                            {{"vapor", "Vapor"},
                                             {"liquid1", "First Liquid"},
                                             {"liquid2", "Second Liquid"},
                                             {"liquid3", "Third Liquid"},
                                             {"solid1", "First Solid"},
                                             {"solid2", "Second Solid"},
                                             {"solid3", "Third Solid"},
                                             {"solid4", "Fourth Solid"},
                                             {"solid5", "Fifth Solid"},
                                             {"solid6", "Sixth Solid"},
                                             {"solid7", "Seventh Solid"},
                                             {"solid8", "Eighth Solid"},
                                             {"solid9", "Ninth Solid"}}};
    return table;
}

template <> const SmartEnumeratorTable& smartEnumeratorTable<Category>() {
    static const SmartEnumeratorTable table{
        "Category",
        "model categlory",
        {{"phase", "derived from PhaseModelSimple"},
         {"stream", "derived from VertexBase"},
         {"unit", "derived from EdgeBase from but not from FlowSheetBase"},
         {"flowsheet", "derived from FlowSheetBase"},
         {"option", "derived from Reaction, MultiReaction, HeatRating or RatingColumn"}}};
    return table;
}

template class SmartEnumerator<ScalingMode>;
template class SmartEnumerator<CutsSolution>;
template class SmartEnumerator<MassBalanceMode>;
template class SmartEnumerator<FlashMode>;
template class SmartEnumerator<Direction>;
template class SmartEnumerator<PhaseType>;
template class SmartEnumerator<PhaseIndex>;
template class SmartEnumerator<Category>;

} // namespace Tarvo::Utility
