#ifndef TARVO_COMPONENTS_COMPONENTGENERIC_H
#define TARVO_COMPONENTS_COMPONENTGENERIC_H

#include <tarvo/components/ComponentInterface.h>
#include <tarvo/components/RouteInterfaces.h>
#include <tarvo/utility/Diagnostic.h>

#include <string>

// A pure species as the rest of the kernel sees it: its constants and one route for every property
// family. This is the type that the component list holds; concrete classes combine a ComponentBase
// with route implementations.
class ComponentGeneric : public virtual Diagnostic,
                         public virtual ComponentInterface,
                         public virtual RouteSaturation,
                         public virtual RouteHeatVapor,
                         public virtual RouteHeatLiquid,
                         public virtual RouteHeatSolid,
                         public virtual RouteTransport,
                         public virtual RouteVolumeVapor,
                         public virtual RouteVolumeLiquid,
                         public virtual RouteVolumeSolid {
public:
    // A name that is not valid UTF-8 raises ErrorInvalidCharacter.
    explicit ComponentGeneric(std::string name);
    ComponentGeneric(const ComponentGeneric&) = delete;
    ComponentGeneric& operator=(const ComponentGeneric&) = delete;

    // Vapor-liquid K value at (T, P): psat(T) / P unless a class knows better.
    virtual Value kvli(const Value& T, const Value& P) const;
    // True for a species that never enters a fluid phase.
    virtual bool isSolid() const = 0;
    // True if the species dissolves in the liquid by Henry's law.
    virtual bool isHenry() const { return false; }

    std::string name;
    int index = -1; // position in the component list; -1 until the species joins it
};

#endif
