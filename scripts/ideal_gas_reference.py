#!/usr/bin/env python3
"""Ideal-gas properties of a mixture of the kernel's five start-up species, computed from the
correlation coefficients by numerical quadrature, as an independent check of the closed forms in the
kernel. Prints molar enthalpy, entropy and heat capacity of the mixture at the state below.

Coefficients: DIPPR eq. 107 ideal-gas heat capacities of Perry's Table 2-156 (J/(kmol*K)) for CO2,
CH4, N2, O2; for water a polynomial in ln T in J/(mol*K). Formation properties dh0, dg0 at 298.15 K
in J/kmol. Reference state: the elements at 298.15 K and 101325 Pa."""
import math

R = 8314.4
T0 = 298.15
P0 = 101325.0

def dippr107(A, B, C, D, E):
    def cp(t):
        x, y = C / t, E / t
        return A + B * (x / math.sinh(x)) ** 2 + D * (y / math.cosh(y)) ** 2
    return cp

def water(t):
    L = math.log(t)
    a = [-2558.7254408, 1954.64102748, -573.43988184, 81.5422031, -5.6045238, 0.14904476]
    return 1000.0 * sum(ak * L ** k for k, ak in enumerate(a))

species = [  # name, cp(T), dh0, dg0
    ("CO2", dippr107(29370, 34540, 1428, 26400, 588), -3.9351e8, -3.9437e8),
    ("CH4", dippr107(33298, 79933, 2086.9, 41602, 991.96), -7.452e7, -5.049e7),
    ("H2O", water, -2.41814e8, -2.2859e8),
    ("N2", dippr107(29105, 8614.9, 1701.6, 103.47, 909.79), 0.0, 0.0),
    ("O2", dippr107(29103, 10040, 2526.5, 9356, 1153.8), 0.0, 0.0),
]

def simpson(f, a, b, n=20000):
    h = (b - a) / n
    s = f(a) + f(b)
    for k in range(1, n):
        s += (4 if k % 2 else 2) * f(a + k * h)
    return s * h / 3

def mixture(P, T, x):
    H = S = Cp = 0.0
    for xi, (name, cp, dh0, dg0) in zip(x, species):
        if xi <= 0:
            continue
        h = dh0 + simpson(cp, T0, T)
        s = simpson(lambda t: cp(t) / t, T0, T) - R * math.log(P / P0) + (dh0 - dg0) / T0
        H += xi * h
        S += xi * (s - R * math.log(xi))
        Cp += xi * cp(T)
    return H, S, Cp

if __name__ == "__main__":
    for P, T, x in [(2.0e5, 400.0, [0.2, 0.3, 0.1, 0.25, 0.15]), (101325.0, 250.0, [0.5, 0.0, 0.0, 0.5, 0.0])]:
        H, S, Cp = mixture(P, T, x)
        print(f"P={P} T={T} x={x}: H={H:.10g} J/kmol  S={S:.10g} J/(kmol*K)  Cp={Cp:.10g} J/(kmol*K)")
