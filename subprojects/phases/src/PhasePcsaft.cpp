#include "PcsaftData.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhasePcsaft.h>
#include <tarvo/utility/Error.h>

#include <cstring>
#include <map>
#include <string>

namespace {
// The kernel's names of species whose name in the data differs.
const std::map<std::string, std::string>& dataNames() {
    static const std::map<std::string, std::string> names{
        {"CH4", "methane"},        {"CO2", "carbon dioxide"},   {"N2", "nitrogen"},        {"O2", "oxygen"},
        {"CO", "carbon monoxide"}, {"butane", "n-butane"},      {"pentane", "n-pentane"},  {"nhexane", "n-hexane"},
        {"nheptane", "n-heptane"}, {"noctane", "n-octane"},     {"nnonane", "n-nonane"},   {"ndecane", "n-decane"},
        {"nhexadecane", "n-hexadecane"}, {"eicosane", "n-eicosane"}, {"ibutane", "isobutane"},
        {"ipentane", "isopentane"}, {"ciclohexane", "cyclohexane"}, {"hydrogensulfide", "hydrogen sulfide"},
        {"oxylene", "o-xylene"},   {"mxylene", "m-xylene"},     {"pxylene", "p-xylene"},   {"hexene", "1-hexene"},
        {"nbutylene", "1-butene"}};
    return names;
}

} // namespace

namespace Phase {

void setPcsaftParametersOfComponents() {
    if (NCOMPONENTS > PcsaftParameters::NC)
        throw ErrorRunTime("Phase::setPcsaftParametersOfComponents",
                           "PC-SAFT holds at most 9 components, not " + std::to_string(NCOMPONENTS));
    PcsaftParameters::resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const auto alias = dataNames().find(components[i]->name);
        const std::string& name = alias == dataNames().end() ? components[i]->name : alias->second;
        double m = 0, sigma = 0, epsilon = 0; // none: the component may not be present
        for (const PcsaftData::Component& c : PcsaftData::components)
            if (name == c.name) m = c.m, sigma = c.sigma, epsilon = c.epsilon;
        PcsaftParameters::setparameters(i, m, sigma, epsilon);
    }
}

Pcsaft::Pcsaft() { setPcsaftParametersOfComponents(); }

} // namespace Phase
