#!/usr/bin/env python3
"""Ideal-gas enthalpy, entropy, heat capacity and density of mixtures of the kernel's start-up species
(CO2, CH4, H2O, N2, O2), from the correlation coefficients, integrated in closed form. It shares no code
with the kernel and uses other forms of the integrals than the kernel's routes:

  Aly-Lee heat capacity cp = A + B (y/sinh y)^2 + D (z/cosh z)^2, y = C/T, z = E/T (J/(kmol*K)):
    integral of cp dT   = A T + B C coth(C/T) - D E tanh(E/T)
    integral of cp/T dT = A ln T + B (y coth y - ln sinh y) + D (ln cosh z - z tanh z)
  water, cp = 1000 sum a_k u^k with u = ln T (J/(kmol*K)):
    integral of cp dT   = 1000 sum a_k e^u sum_j (-1)^j k!/(k-j)! u^(k-j)
    integral of cp/T dT = 1000 sum a_k u^(k+1)/(k+1)

Reference state: the ideal gas at 298.15 K and 101325 Pa, with enthalpy dh0 and entropy
(dh0 - dg0)/298.15 for each species; the ideal entropy of mixing -R sum x ln x; R = 8314.4 J/(kmol*K).
Molecular weights from the atomic weights H 1.007947, C 12.01078, N 14.00672, O 15.99943."""
import math

R, T0, P0 = 8314.4, 298.15, 101325.0
ATOMS = {"H": 1.007947, "C": 12.01078, "N": 14.00672, "O": 15.99943}
ALY_LEE = {  # A, B, C, D, E
    "CO2": (29370, 34540, 1428, 26400, 588),
    "CH4": (33298, 79933, 2086.9, 41602, 991.96),
    "N2": (29105, 8614.9, 1701.6, 103.47, 909.79),
    "O2": (29103, 10040, 2526.5, 9356, 1153.8),
}
WATER = [-2558.7254408, 1954.64102748, -573.43988184, 81.5422031, -5.6045238, 0.14904476]
SPECIES = [  # name, formula, dh0, dg0 (J/kmol)
    ("CO2", {"C": 1, "O": 2}, -3.9351e8, -3.9437e8),
    ("CH4", {"C": 1, "H": 4}, -7.452e7, -5.049e7),
    ("H2O", {"H": 2, "O": 1}, -2.41814e8, -2.2859e8),
    ("N2", {"N": 2}, 0.0, 0.0),
    ("O2", {"O": 2}, 0.0, 0.0),
]


def cp(name, T):
    if name == "H2O":
        u = math.log(T)
        return 1000 * sum(a * u**k for k, a in enumerate(WATER))
    A, B, C, D, E = ALY_LEE[name]
    y, z = C / T, E / T
    return A + B * (y / math.sinh(y)) ** 2 + D * (z / math.cosh(z)) ** 2


def enthalpy_integral(name, T):
    if name == "H2O":
        u = math.log(T)
        f = math.factorial
        return 1000 * sum(a * math.exp(u) * sum((-1) ** j * f(k) / f(k - j) * u ** (k - j) for j in range(k + 1))
                          for k, a in enumerate(WATER))
    A, B, C, D, E = ALY_LEE[name]
    return A * T + B * C / math.tanh(C / T) - D * E * math.tanh(E / T)


def entropy_integral(name, T):
    if name == "H2O":
        u = math.log(T)
        return 1000 * sum(a * u ** (k + 1) / (k + 1) for k, a in enumerate(WATER))
    A, B, C, D, E = ALY_LEE[name]
    y, z = C / T, E / T
    return A * math.log(T) + B * (y / math.tanh(y) - math.log(math.sinh(y))) + D * (math.log(math.cosh(z)) - z * math.tanh(z))


def mixture(P, T, x):
    H = S = Cp = mw = 0.0
    for xi, (name, formula, dh0, dg0) in zip(x, SPECIES):
        if xi <= 0:
            continue
        h = dh0 + enthalpy_integral(name, T) - enthalpy_integral(name, T0)
        s = entropy_integral(name, T) - entropy_integral(name, T0) - R * math.log(P / P0) + (dh0 - dg0) / T0
        H += xi * h
        S += xi * (s - R * math.log(xi))
        Cp += xi * cp(name, T)
        mw += xi * sum(n * ATOMS[e] for e, n in formula.items())
    rho = P / R / T  # kmol/m3
    return {"mw kg/kmol": mw, "H J/kmol": H, "S J/(kmol*K)": S, "Cp J/(kmol*K)": Cp,
            "rho kg/m3": rho * mw, "g J/kg": (H - T * S) / mw}


if __name__ == "__main__":
    for P, T, x in [(2.0e5, 400.0, [0.2, 0.3, 0.1, 0.25, 0.15]), (101325.0, 250.0, [0.5, 0, 0, 0.5, 0]),
                    (3.0e6, 650.0, [0.05, 0.6, 0.2, 0.1, 0.05])]:
        print(f"P = {P} Pa, T = {T} K, x = {x}")
        for key, value in mixture(P, T, x).items():
            print(f"  {key:14s} {value:.12g}")
