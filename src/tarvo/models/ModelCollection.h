#ifndef TARVO_MODELS_MODELCOLLECTION_H
#define TARVO_MODELS_MODELCOLLECTION_H

namespace Tarvo::Models {

// Registers the types, components, locales and enumerators of this build.
void registerModelCollection();

} // namespace Tarvo::Models

#endif
