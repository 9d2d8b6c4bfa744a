#include <tarvo/phases/PhaseSimple.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::PhaseType;
using Tarvo::Utility::SmartEnumerator;

PhaseType phaseTypeOf(const std::string& text) {
    const PhaseType type = SmartEnumerator<PhaseType>::value(text);
    if (type == PhaseType::null || static_cast<std::size_t>(type) > SmartEnumerator<PhaseType>().size())
        throw ErrorSmartEnum("phaseTypeOf", SmartEnumerator<PhaseType>().name(), text);
    return type;
}

PhaseSimple::PhaseSimple(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                         Persistent* root)
    : Mass(defaults, id, persistency, parent, root),
      typeP("typeP", "the phase type", retrieveString(defaults, id, persistency, "typeP", "vapor"), this) {
    addVariable(typeP);
    setType(phaseTypeOf(typeP.value()));
}
