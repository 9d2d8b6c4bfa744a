#ifndef TARVO_COMPONENTS_ROUTEVOLUMELIQUIDWATER_H
#define TARVO_COMPONENTS_ROUTEVOLUMELIQUIDWATER_H

#include <tarvo/components/RouteInterfaces.h>

// Density of liquid water from a fit of the saturation line with a compressibility correction below
// 1e8 Pa and a pressure-stretching law above.
class RouteVolumeLiquidWater : public RouteVolumeLiquid {
public:
    Value rhol(const Value& T, const Value& P, double* derT = nullptr) const override;
};

#endif
