#include <tarvo/components/RouteVolumeLiquidWater.h>

#include "UnitValues.h"

#include <algorithm>
#include <cmath>

using namespace componentUnits;

// An empirical fit in kmol/m3. r0, a cubic in T, is the density at 1e8 Pa; below that pressure a
// compression term d (1 - P / 1e8) comes off, and above it the density stretches as a power of P. At the
// saturation pressure it meets the liquid densities of IAPWS R6-95(2018), Table 8, within 0.2 % at 275 and
// 450 K; at 625 K, near the critical point, it is 4.4 % high.
Value RouteVolumeLiquidWater::rhol(const Value& T, const Value& P, double* derT) const {
    const double t = T.toDouble(), p = P.toDouble();
    const bool inRange = t >= 273.16 && t <= 1015.0;
    double tc = std::clamp(t, 273.16, 1015.0);
    const double c3 = 1.22687357845896e-07;
    const double r0 = 44.144886689283 + tc * (0.112866296384922 + tc * (-0.000264728179188708 + tc * c3));
    double dRhodT = inRange ? (3 * c3 * tc - 0.000529456358377416) * tc + 0.112866296384922 : 0.0;
    double rho, dRhodP;
    if (p >= 1e8) {
        const double exponent = std::log10(p / 1e8);
        const double u = (tc - 300) / 1500 + 1.2;
        rho = r0 * std::pow(u, exponent);
        if (inRange)
            dRhodT = dRhodT * std::pow(u, exponent) + r0 * exponent * std::pow(u, exponent - 1) / 1500;
        dRhodP = rho * std::log(u) / (p * std::log(10.0));
    } else {
        double d, dd;
        if (p < 2.21e7 && t > 647.0) {
            tc = 647.0;
            d = 4.3858479629;
            dd = 0.0;
        } else {
            d = 0.0065181245 * t + 0.1686214114;
            dd = 0.0065181245;
        }
        if (t < 330.0) {
            d += -1.15e-6 * std::pow(tc - 330, 3);
            if (t >= 273.16) dd += -3.45e-6 * std::pow(tc - 330, 2);
        }
        if (t > 450.0) {
            d += 9.51590724799123e-7 * std::pow(tc - 450, 3.02587474345738);
            if ((p < 2.21e7 && t <= 647.0) || (p >= 2.21e7 && t <= 1015.0))
                dd += 2.879394340277969e-6 * std::pow(tc - 450, 2.02587474345738);
        }
        rho = r0 - d * (1 - p / 1e8);
        dRhodT -= (1 - p / 1e8) * dd;
        dRhodP = d / 1e8;
    }
    if (derT) *derT = dRhodT;
    Active a = Active::combine(rho, dRhodT, T.active(), dRhodP, P.active());
    return Value(std::move(a)) * kmolPerM3;
}
