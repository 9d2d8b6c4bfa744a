#!/usr/bin/env python3
"""Writes subprojects/components/src/PurecompsFluids.cpp: the fluid entries of the component catalogue
that are not written by hand, from the public correlation data in ../shared/data/dippr_like.csv.

Usage: scripts/generate_purecomps.py [path/to/dippr_like.csv] > subprojects/components/src/PurecompsFluids.cpp

Choices, per entry and record:
- Constants (Tc, Pc, Vc, Zc, omega, Tb, Hf, Gf, MW) from the ChemSep v8.32 databank.
- Vapor pressure, liquid density (DIPPR 105), vapor and liquid viscosity, vapor and liquid conductivity
  from Perry's 8th ed. tables where the compound has them, from ChemSep otherwise: the forms match.
- Ideal-gas heat capacity: ChemSep gives eq 16, the routes need DIPPR 107, so 107 is fitted to it.
- Surface tension: ChemSep gives eq 16 (116, 106 for two compounds), the route needs DIPPR 106 with the
  component's own Tc, so 106 is fitted to it. Liquid conductivity in eq 16 is refitted to eq 100.
- rhoc is MW / Vc, vb is 1 / rho_liq(Tb) from the chosen density record, dhv0 the leading coefficient of
  the heat of vaporization (Perry Table 2-150, else ChemSep eq 106).
- Five entries lack data in the file and are estimated by group contribution and corresponding states
  (see ESTIMATES below); each generated comment says so.

The fits are least squares in relative error over the source's range; the largest deviation goes into
the comment of each record. Pure Python, no third-party packages.
"""

import csv
import math
import os
import sys
import textwrap

R = 8314.4  # J/(kmol*K), the kernel's gas constant
WIDTH = 110  # columns of the generated source

# Entries in catalogue order: class, compound in the data file, formula string or None, Henry record.
# The start-up entries (O2, N2, methane, CO2) and water are written by hand.
ENTRIES = [
    ("ethanol", "ethanol", None, None),
    ("methanol", "methanol", "CH3OH", None),
    ("NO2", "nitrogen dioxide", "NO2", None),
    ("ethane", "ethane", "C2H6", None),
    ("ethylene", "ethylene", "C2H4", None),
    ("propane", "propane", "C3H8", None),
    ("heavy", None, None, None),
    ("CO", "carbon monoxide", "CO", (0.00099, 1300)),
    ("H2", "hydrogen", "H2", (0.00078, 500)),
    ("acetone", "acetone", None, None),
    ("propylene", "propylene", "C3H6", None),
    ("etylacetate", "ethyl acetate", None, None),
    ("nhexadecane", "n-hexadecane", "C16H32", None),
    ("butane", "n-butane", None, None),
    ("pentane", "n-pentane", "C5H12", None),
    ("benzene", "benzene", "C6H6", None),
    ("ciclohexane", "cyclohexane", "C6H12", None),
    ("ibutane", "isobutane", "C4H10", None),
    ("ipentane", "isopentane", "C5H12", None),
    ("nhexane", "n-hexane", "C6H14", None),
    ("nheptane", "n-heptane", "C7H16", None),
    ("noctane", "n-octane", "C8H18", None),
    ("nnonane", "n-nonane", "C9H20", None),
    ("ndecane", "n-decane", "C10H22", None),
    ("argon", "argon", None, None),
    ("helium", "helium", None, None),
    ("hydrogensulfide", "hydrogen sulfide", None, None),
    ("ammonia", "ammonia", "NH3", None),
    ("phenol", "phenol", "C6H5OH", None),
    ("naphthalene", "naphthalene", "C10H8", None),
    ("squalane", "squalane", "C30H62", None),
    ("EthyleneGlycol", "ethylene glycol", None, None),
    ("DiethyleneGlycol", "diethylene glycol", None, None),
    ("TriethyleneGlycol", "triethylene glycol", None, None),
    ("eicosane", "n-eicosane", None, None),
    ("nbutylene", "1-butene", None, None),
    ("hexene", "1-hexene", None, None),
    ("Octamethyltrisiloxane", "octamethyltrisiloxane", None, None),
    ("PalmiticAcid", "palmitic acid", None, None),
    ("Ethylhexanol", "2-ethylhexanol", None, None),
    ("OctylPalmitate", None, None, None),
    ("oxylene", "o-xylene", None, None),
    ("mxylene", "m-xylene", None, None),
    ("pxylene", "p-xylene", None, None),
    ("MA", "methyl acetate", None, None),
    ("BuOH", "n-butanol", None, None),
    ("aacid", "acetic acid", None, None),
]

# ----------------------------------------------------------------------------------------------------
# Correlation forms of the data file (T in K).


def eq_value(eq, c, T, Tc=None):
    A, B, C, D, E = c
    if eq == 1:
        return A
    if eq == 16:
        return A + math.exp(B / T + C + D * T + E * T * T)
    if eq == 100:
        return A + T * (B + T * (C + T * (D + T * E)))
    if eq == 101:
        return math.exp(A + B / T + C * math.log(T) + D * T ** E)
    if eq == 102:
        return A * T ** B / (1 + C / T + D / (T * T))
    if eq == 105:
        return A / B ** (1 + (1 - T / C) ** D)
    if eq == 106:
        tr = T / Tc
        return A * (1 - tr) ** (B + C * tr + D * tr * tr + E * tr ** 3)
    if eq == 116:
        t = 1 - T / Tc
        return A + B * t ** 0.35 + C * t ** (2 / 3) + D * t + E * t ** (4 / 3)
    raise ValueError(eq)


def aly_lee(c, T):
    A, B, C, D, E = c
    x, y = C / T, E / T
    return A + B * (x / math.sinh(x)) ** 2 + D * (y / math.cosh(y)) ** 2


# ----------------------------------------------------------------------------------------------------
# Least squares without third-party packages: modified Gram-Schmidt on weighted rows.


def lstsq(rows, ys):
    n = len(rows[0])
    cols = [[r[j] for r in rows] for j in range(n)]
    scale = [math.sqrt(sum(v * v for v in col)) or 1.0 for col in cols]
    q = [[v / s for v in col] for col, s in zip(cols, scale)]
    rmat = [[0.0] * n for _ in range(n)]
    for j in range(n):
        for i in range(j):
            rmat[i][j] = sum(a * b for a, b in zip(q[i], q[j]))
            q[j] = [a - rmat[i][j] * b for a, b in zip(q[j], q[i])]
        rmat[j][j] = math.sqrt(sum(a * a for a in q[j]))
        if rmat[j][j] == 0.0:
            raise ValueError("singular fit")
        q[j] = [a / rmat[j][j] for a in q[j]]
    rhs = [sum(a * b for a, b in zip(q[j], ys)) for j in range(n)]
    x = [0.0] * n
    for j in reversed(range(n)):
        x[j] = (rhs[j] - sum(rmat[j][k] * x[k] for k in range(j + 1, n))) / rmat[j][j]
    return [v / s for v, s in zip(x, scale)]


def samples(tmin, tmax, n=120):
    return [tmin + (tmax - tmin) * i / (n - 1) for i in range(n)]


def max_rel(f, g, ts):
    return max(abs(f(t) / g(t) - 1) for t in ts)


def fit_107(source, tmin, tmax):
    """DIPPR 107 through a heat capacity curve, relative least squares: A, B, D linear for given C, E."""
    ts = samples(tmin, tmax)
    ys = [source(t) for t in ts]
    if max(ys) / min(ys) - 1 < 1e-6:  # a constant: the monatomic gases
        return (sum(ys) / len(ys), 0.0, 0.0, 0.0, 0.0), 0.0

    def solve(lc, le):
        C, E = math.exp(lc), math.exp(le)
        rows = [[1 / y, (C / t / math.sinh(C / t)) ** 2 / y, (E / t / math.cosh(E / t)) ** 2 / y] for t, y in zip(ts, ys)]
        try:
            A, B, D = lstsq(rows, [1.0] * len(ts))
        except (ValueError, OverflowError):
            return None, 1e9
        c = (A, B, C, D, E)
        err = sum((aly_lee(c, t) / y - 1) ** 2 for t, y in zip(ts, ys))
        return c, err

    best = (None, 1e99, 0, 0)
    for i in range(24):
        for j in range(24):
            lc = math.log(100) + i * (math.log(8000) - math.log(100)) / 23
            le = math.log(30) + j * (math.log(4000) - math.log(30)) / 23
            c, err = solve(lc, le)
            if c and err < best[1]:
                best = (c, err, lc, le)
    # Nelder-Mead in (ln C, ln E) from the best grid point.
    simplex = [(best[2], best[3]), (best[2] + 0.1, best[3]), (best[2], best[3] + 0.1)]
    scores = [solve(*p)[1] for p in simplex]
    for _ in range(300):
        order = sorted(range(3), key=lambda k: scores[k])
        simplex = [simplex[k] for k in order]
        scores = [scores[k] for k in order]
        cx = ((simplex[0][0] + simplex[1][0]) / 2, (simplex[0][1] + simplex[1][1]) / 2)
        refl = (2 * cx[0] - simplex[2][0], 2 * cx[1] - simplex[2][1])
        sr = solve(*refl)[1]
        if sr < scores[0]:
            exp_ = (3 * cx[0] - 2 * simplex[2][0], 3 * cx[1] - 2 * simplex[2][1])
            se = solve(*exp_)[1]
            simplex[2], scores[2] = (exp_, se) if se < sr else (refl, sr)
        elif sr < scores[1]:
            simplex[2], scores[2] = refl, sr
        else:
            con = ((cx[0] + simplex[2][0]) / 2, (cx[1] + simplex[2][1]) / 2)
            sc = solve(*con)[1]
            if sc < scores[2]:
                simplex[2], scores[2] = con, sc
            else:
                for k in (1, 2):
                    simplex[k] = ((simplex[k][0] + simplex[0][0]) / 2, (simplex[k][1] + simplex[0][1]) / 2)
                    scores[k] = solve(*simplex[k])[1]
    c = solve(*simplex[min(range(3), key=lambda k: scores[k])])[0]
    return c, max_rel(lambda t: aly_lee(c, t), source, ts)


def fit_106(source, tmin, tmax, Tc):
    """A (1 - Tr)^(B + C Tr + D Tr^2): linear in ln A, B, C, D in logarithms."""
    ts = [t for t in samples(tmin, tmax) if source(t) > 0]
    rows, ys = [], []
    for t in ts:
        tr = t / Tc
        lu = math.log(1 - tr)
        rows.append([1.0, lu, tr * lu, tr * tr * lu])
        ys.append(math.log(source(t)))
    a, B, C, D = lstsq(rows, ys)
    c = (math.exp(a), B, C, D, 0.0)
    return c, max_rel(lambda t: eq_value(106, c, t, Tc), source, ts)


def fit_100(source, tmin, tmax, degree=2):
    ts = samples(tmin, tmax)
    rows = [[t ** k / source(t) for k in range(degree + 1)] for t in ts]
    p = lstsq(rows, [1.0] * len(ts))
    c = tuple(p + [0.0] * (5 - len(p)))
    return c, max_rel(lambda t: eq_value(100, c, t), source, ts)


def fit_102(source, tmin, tmax):
    """A t^B / (1 + C/t) (D = 0): for a given B, t^B / y is linear in (1/A, C/A)."""
    ts = samples(tmin, tmax)
    best = None
    for i in range(301):
        B = i * 0.005
        rows = [[1 / (t ** B / source(t)), 1 / t / (t ** B / source(t))] for t in ts]
        try:
            u, v = lstsq(rows, [1.0] * len(ts))
        except ValueError:
            continue
        c = (1 / u, B, v / u, 0.0, 0.0)
        err = max_rel(lambda t: eq_value(102, c, t), source, ts)
        if best is None or err < best[1]:
            best = (c, err)
    return best


# ----------------------------------------------------------------------------------------------------
# Estimation methods for the entries without data (Poling, Prausnitz & O'Connell, The Properties of
# Gases and Liquids, 5th ed., 2001).

# Joback groups: tc, pc, vc [cm3/mol], tb [K], hf, gf [kJ/mol], a, b, c, d (ideal-gas cp, J/(mol K)).
JOBACK = {
    "CH3": (0.0141, -0.0012, 65, 23.58, -76.45, -43.96, 19.5, -8.08e-3, 1.53e-4, -9.67e-8),
    "CH2": (0.0189, 0.0000, 56, 22.88, -20.64, 8.42, -0.909, 9.50e-2, -5.44e-5, 1.19e-8),
    "CH": (0.0164, 0.0020, 41, 21.74, 29.89, 58.36, -23.0, 2.04e-1, -2.65e-4, 1.20e-7),
    "C": (0.0067, 0.0043, 27, 18.25, 82.23, 116.02, -66.2, 4.27e-1, -6.41e-4, 3.01e-7),
    "OH": (0.0741, 0.0112, 28, 92.88, -208.04, -189.20, 25.7, -6.91e-2, 1.77e-4, -9.88e-8),
    "O": (0.0168, 0.0015, 18, 22.42, -132.22, -105.00, 25.5, -6.32e-2, 1.11e-4, -5.48e-8),
    "COOH": (0.0791, 0.0077, 89, 169.09, -426.72, -387.87, 24.1, 4.27e-2, 8.04e-5, -6.87e-8),
    "COO": (0.0481, 0.0005, 82, 81.10, -337.92, -301.95, 24.5, 4.02e-2, 4.02e-5, -4.52e-8),
}


def joback_sum(groups, k):
    return sum(n * JOBACK[g][k] for g, n in groups.items())


def joback_cp(groups):
    a = joback_sum(groups, 6) - 37.93
    b = joback_sum(groups, 7) + 0.210
    c = joback_sum(groups, 8) - 3.91e-4
    d = joback_sum(groups, 9) + 2.06e-7
    return lambda T: 1000 * (a + T * (b + T * (c + T * d)))  # J/(kmol K)


def lee_kesler_antoine(Tc, Pc, omega):
    """ln Pr = f0(Tr) + omega f1(Tr), written as the extended Antoine form with G = 6."""
    A = math.log(Pc) + 5.92714 + 15.2518 * omega + (1.28862 + 13.4721 * omega) * math.log(Tc)
    B = -(6.09648 + 15.6875 * omega) * Tc
    E = -(1.28862 + 13.4721 * omega)
    F = (0.169347 + 0.43577 * omega) / Tc ** 6
    return (A, B, 0.0, 0.0, E, F, 6.0)


def antoine(a, T):
    A, B, C, D, E, F, G = a
    return math.exp(A + B / (T + C) + D * T + E * math.log(T) + F * T ** G)


def boiling_point(a, lo, hi):
    for _ in range(200):
        mid = (lo + hi) / 2
        lo, hi = (mid, hi) if antoine(a, mid) < 101325 else (lo, mid)
    return (lo + hi) / 2


def rackett(Tc, Pc, T, rho):
    """DIPPR 105 in Rackett form, with Z_RA fitted to one density (Spencer and Danner)."""
    A = Pc / (R * Tc)  # kmol/m3
    zra = (A / rho) ** (1 / (1 + (1 - T / Tc) ** (2 / 7)))
    return (A, zra, Tc, 2 / 7, 0.0)


def brock_bird(Tc, Pc, Tb):
    pc = Pc / 1e5
    tbr = Tb / Tc
    Q = 0.1196 * (1 + tbr * math.log(pc / 1.01325) / (1 - tbr)) - 0.279
    return (1e-3 * pc ** (2 / 3) * Tc ** (1 / 3) * Q, 11 / 9, 0.0, 0.0, 0.0)


def chung_viscosity(M, Tc, Vc, omega):
    """Low-pressure gas viscosity, Pa s, without polar terms."""
    vc = Vc * 1000  # cm3/mol
    Fc = 1 - 0.2756 * omega

    def mu(T):
        ts = 1.2593 * T / Tc
        om = 1.16145 * ts ** -0.14874 + 0.52487 * math.exp(-0.77320 * ts) + 2.16178 * math.exp(-2.43787 * ts)
        return 40.785e-7 * Fc * math.sqrt(M * T) / (vc ** (2 / 3) * om)

    return mu


def chung_conductivity(M, Tc, omega, mu, cp):
    beta = 0.7862 - 0.7109 * omega + 1.3168 * omega ** 2

    def k(T):
        cv = cp(T) / 1000 - 8.314  # J/(mol K)
        alpha = cv / 8.314 - 1.5
        Z = 2.0 + 10.5 * (T / Tc) ** 2
        psi = 1 + alpha * (0.215 + 0.28288 * alpha - 1.061 * beta + 0.26665 * Z) / (0.6366 + beta * Z + 1.061 * alpha * beta)
        return 3.75 * psi * mu(T) * 8.314 / (M / 1000)

    return k


def sato_riedel(M, Tc, Tb):
    tbr = Tb / Tc
    return lambda T: 1.11 / math.sqrt(M) * (3 + 20 * (1 - T / Tc) ** (2 / 3)) / (3 + 20 * (1 - tbr) ** (2 / 3))


def orrick_erbar(N, groups_ab, rho20, M):
    """Liquid viscosity, DIPPR 101 with C = D = E = 0: eta[cP] = rho M exp(A + B / T)."""
    A = -(6.95 + 0.21 * N) + sum(a for a, _ in groups_ab)
    B = 275 + 99 * N + sum(b for _, b in groups_ab)
    return (A + math.log(rho20 * M) + math.log(1e-3), B, 0.0, 0.0, 0.0)


# ----------------------------------------------------------------------------------------------------
# Reading the data file.


class Compound:
    def __init__(self):
        self.const = {}
        self.perry = {}
        self.chemsep = {}
        self.cas = ""


def load(path):
    compounds = {}
    with open(path) as f:
        for r in csv.DictReader(f):
            c = compounds.setdefault(r["compound"], Compound())
            c.cas = r["CAS"]
            if r["value"]:
                c.const[r["property"]] = (float(r["value"]), r["source"])
                continue
            rec = {
                "eq": int(r["equation"]),
                "c": tuple(float(r[k]) if r[k] else 0.0 for k in "ABCDE"),
                "tmin": float(r["Tmin_K"]),
                "tmax": float(r["Tmax_K"]),
                "tc": float(r["Tc_K_for_eq"]) if r["Tc_K_for_eq"] else None,
                "raw": [r[k] if r[k] else "0" for k in "ABCDE"],
            }
            (c.perry if r["source"].startswith("Perry") else c.chemsep)[r["property"]] = rec
    return compounds


PERRY_TABLE = {
    "Psat": "Perry's 8th ed. Table 2-8",
    "rho_liq": "Perry's 8th ed. (DIPPR 105)",
    "mu_vap": "Perry's 8th ed. Table 2-312",
    "mu_liq": "Perry's 8th ed. Table 2-313",
    "k_vap": "Perry's 8th ed. Table 2-314",
    "k_liq": "Perry's 8th ed. Table 2-315",
    "Hvap": "Perry's 8th ed. Table 2-150",
}


def pick(comp, prop, eq=None):
    """The Perry record if it has the wanted form, else ChemSep's; None if neither. Coefficients of 1e34
    and more are refused, as the kernel takes them for a faulty entry."""
    for table, name in ((comp.perry, PERRY_TABLE.get(prop)), (comp.chemsep, "ChemSep v8.32")):
        rec = table.get(prop)
        if rec and (eq is None or rec["eq"] == eq) and all(abs(v) < 1e34 for v in rec["c"]):
            return rec, name
    return None, None


def num(x):
    s = "%.10g" % x
    return s if ("e" in s or "." in s) else s + ".0"


class Record:
    """One ParameterDippr7 (or ParameterAntoine) of an entry, its numbers and where they come from."""

    def __init__(self, values, tmin, tmax, note):
        self.values = values
        self.tmin = tmin
        self.tmax = tmax
        self.note = note

    def cpp(self, kind="ParameterDippr7"):
        return "%s(%s)" % (kind, ", ".join(num(float(v)) for v in list(self.values) + [self.tmin, self.tmax]))


def direct(rec, name):
    return Record(rec["raw"], rec["tmin"], rec["tmax"], name)


def antoine_record(rec, name):
    A, B, C, D, E = rec["raw"]
    # DIPPR 101, exp(A + B/T + C ln T + D T^E), is the Antoine form with C = D = 0.
    return Record((A, B, "0.0", "0.0", C, D, E), rec["tmin"], rec["tmax"], name)


def dippr_entry(cls, compound, comp, formula, henry):
    k = lambda p: comp.const[p][0]
    Tc, Pc, Vc, Zc, omega = k("Tc"), k("Pc"), k("Vc"), k("Zc"), k("omega")
    M = k("MW")
    recs = {}

    cpsrc = comp.chemsep["Cp_ig"]
    f = lambda t, r=cpsrc: eq_value(r["eq"], r["c"], t)
    # Below the melting point the ideal-gas heat capacity serves no state of the kernel.
    lo = max(cpsrc["tmin"], comp.const["Tm"][0] if "Tm" in comp.const else 0.0, 50.0)
    hi = min(cpsrc["tmax"], 1500.0)
    c, err = fit_107(f, lo, hi)
    recs["cpig"] = Record(c, lo, hi, "DIPPR 107 fitted to ChemSep v8.32 eq %d, %g-%g K, within %.2g %%" % (cpsrc["eq"], lo, hi, 100 * err))

    rec, name = pick(comp, "rho_liq", 105)
    recs["dnl"] = direct(rec, name)

    sg = comp.chemsep["sigma"]
    f = lambda t, r=sg: eq_value(r["eq"], r["c"], t, r["tc"])
    # The source curves do not vanish at Tc as a power of (1 - Tr): the fit stops at 0.9 Tc and the record
    # runs on to Tc, where the DIPPR form goes to zero.
    hi = min(sg["tmax"], Tc)
    # Helium's curve has a kink at the lambda point, 2.17 K, that no DIPPR 106 form follows.
    lo = 2.5 if compound == "helium" else sg["tmin"]
    c, err = fit_106(f, lo, min(hi, 0.9 * Tc), Tc)
    recs["sigma"] = Record(c, sg["tmin"], hi, "DIPPR 106 fitted to ChemSep v8.32 eq %d, %g K to 0.9 Tc, within %.2g %%" % (sg["eq"], lo, 100 * err))

    rec, name = pick(comp, "mu_vap", 102)
    recs["muv"] = direct(rec, name)
    rec, name = pick(comp, "mu_liq", 101)
    recs["mul"] = direct(rec, name) if rec else None
    rec, name = pick(comp, "k_vap", 102)
    recs["kv"] = direct(rec, name)
    rec, name = pick(comp, "k_liq", 100)
    if rec:
        recs["kl"] = direct(rec, name)
    else:
        src = comp.chemsep["k_liq"]
        f = lambda t, r=src: eq_value(r["eq"], r["c"], t)
        c, err = fit_100(f, src["tmin"], src["tmax"])
        recs["kl"] = Record(c, src["tmin"], src["tmax"], "DIPPR 100 fitted to ChemSep v8.32 eq %d, within %.2g %%" % (src["eq"], 100 * err))
    rec, name = pick(comp, "Psat", 101)
    recs["antoine"] = antoine_record(rec, name)

    hv, hvname = pick(comp, "Hvap", 106)
    dhv0 = hv["c"][0]
    d = recs["dnl"]
    dc = tuple(float(v) for v in d.values)
    Tb = comp.const["Tb"][0] if "Tb" in comp.const else None
    vb = 1 / eq_value(105, dc, min(max(Tb, d.tmin), d.tmax)) if Tb else None
    notes = ["%s (CAS %s). Constants: ChemSep v8.32" % (compound, comp.cas)]
    if cls == "ethanol":
        mw = (46.069, "C2H6O with IUPAC conventional atomic weights")
    else:
        mw = (M, "ChemSep v8.32") if not formula else None
    return dict(cls=cls, formula=formula, mw=mw, henry=henry, Tc=Tc, Pc=Pc, rhoc=M / Vc, vb=vb, zc=Zc,
                dh0=k("Hf_ig_298"), dg0=k("Gf_ig_298"), omega=omega, dhv0=dhv0,
                dhv0_note="%s, leading coefficient" % hvname, recs=recs, notes=notes, Tb=Tb, M=M)


def estimated_transport(entry, M, Tc, Vc, omega, Tb, cp, tmin, oe, rho20):
    """Chung gas viscosity and conductivity, Sato-Riedel liquid conductivity, Orrick-Erbar viscosity."""
    mu = chung_viscosity(M, Tc, Vc, omega)
    lo, hi = max(0.7 * Tb, 250.0), 1000.0
    c, err = fit_102(mu, lo, hi)
    entry["recs"]["muv"] = Record(c, lo, hi, "estimate: Chung et al. low-pressure method, DIPPR 102 within %.2g %%" % (100 * err))
    k = chung_conductivity(M, Tc, omega, mu, cp)
    c, err = fit_102(k, lo, hi)
    entry["recs"]["kv"] = Record(c, lo, hi, "estimate: Chung et al. method, DIPPR 102 within %.2g %%" % (100 * err))
    kl = sato_riedel(M, Tc, Tb)
    c, err = fit_100(kl, tmin, 0.9 * Tc)
    entry["recs"]["kl"] = Record(c, tmin, 0.9 * Tc, "estimate: Sato-Riedel, DIPPR 100 within %.2g %%" % (100 * err))
    if oe is not None:
        N, groups = oe
        entry["recs"]["mul"] = Record(orrick_erbar(N, groups, rho20, M), tmin, Tb, "estimate: Orrick-Erbar group contribution")


def estimated_entry(cls, compound, comp, Tc, Pc, Vc, omega, M, mw_note, groups, rho_point, tmin, oe, source_note,
                    formation=True):
    """An entry built by corresponding states and group contribution from Tc, Pc, Vc, omega."""
    a = lee_kesler_antoine(Tc, Pc, omega)
    Tb = boiling_point(a, 0.3 * Tc, Tc)
    recs = {}
    recs["antoine"] = Record(a, tmin, Tc, "estimate: Lee-Kesler vapor pressure in Antoine form")
    cp = joback_cp(groups)
    c, err = fit_107(cp, 298.15, 1000.0)
    recs["cpig"] = Record(c, 298.15, 1000.0, "estimate: Joback group contribution, DIPPR 107 within %.2g %%" % (100 * err))
    T, rho = rho_point
    dnl = rackett(Tc, Pc, T, rho / M)
    recs["dnl"] = Record(dnl, tmin, Tc, "estimate: Rackett equation through %g kg/m3 at %g K" % (rho, T))
    recs["sigma"] = Record(brock_bird(Tc, Pc, Tb), tmin, Tc, "estimate: Brock-Bird corresponding states")
    entry = dict(cls=cls, formula=None, mw=(M, mw_note), henry=None, Tc=Tc, Pc=Pc, rhoc=M / Vc,
                 vb=1 / eq_value(105, dnl, Tb), zc=Pc * Vc / (R * Tc), omega=omega,
                 dhv0=R * Tc * (7.08 + 10.95 * omega), dhv0_note="estimate: Pitzer correlation at 0 K",
                 recs=recs, notes=[source_note], Tb=Tb, M=M)
    if formation:
        entry["dh0"] = 1e6 * (68.29 + joback_sum(groups, 4))
        entry["dg0"] = 1e6 * (53.88 + joback_sum(groups, 5))
        entry["formation_note"] = "estimate: Joback group contribution"
    else:
        entry["dh0"] = entry["dg0"] = 0.0
        entry["formation_note"] = "no published value found; zero keeps the species inert in reaction balances"
    rho20 = eq_value(105, dnl, 293.15) * M / 1000  # g/cm3
    estimated_transport(entry, M, Tc, Vc, omega, Tb, cp, tmin, oe, rho20)
    return entry


# Octamethyltrisiloxane, palmitic acid, 2-ethylhexanol: critical constants in the data file (CRC, Yaws).
# Octyl palmitate (2-ethylhexyl hexadecanoate) and the pseudo-component heavy have no data there.
def estimates(compounds):
    out = {}
    c = compounds["octamethyltrisiloxane"]
    k = lambda p: c.const[p][0]
    # Joback has no silicon group: Si is counted as a quaternary carbon for the heat capacity.
    e = estimated_entry("Octamethyltrisiloxane", "octamethyltrisiloxane", c, k("Tc"), k("Pc"), k("Vc"), k("omega"),
                        236.53, "C8H24O2Si3 with IUPAC conventional atomic weights", {"CH3": 8, "C": 3, "O": 2},
                        (298.15, 820.0), 187.0, None,
                        "octamethyltrisiloxane (CAS 107-51-7). Tc, Pc, Vc: CRC Handbook; omega: Yaws; the rest "
                        "estimated; liquid density 820 kg/m3 at 298.15 K of the 1 cSt silicone fluid", formation=False)
    # Viscosity: 0.82 mPa s at 298.15 K (1.0 cSt at 820 kg/m3) with the carbon-count temperature term
    # of Orrick-Erbar.
    B = 275 + 99 * 8
    e["recs"]["mul"] = Record((math.log(0.82e-3) - B / 298.15, B, 0.0, 0.0, 0.0), 187.0, e["Tb"],
                              "estimate: Andrade law through 0.82 mPa s at 298.15 K")
    out[e["cls"]] = e
    c = compounds["palmitic acid"]
    k = lambda p: c.const[p][0]
    e = estimated_entry("PalmiticAcid", "palmitic acid", c, k("Tc"), k("Pc"), k("Vc"), k("omega"), 256.43,
                        "C16H32O2 with IUPAC conventional atomic weights", {"CH3": 1, "CH2": 14, "COOH": 1},
                        (335.15, 853.0), 335.7, (15, [(-0.90, 770)]),
                        "palmitic acid (CAS 57-10-3). Tc, Pc, Vc: CRC Handbook; omega: Yaws; the rest "
                        "estimated; liquid density 853 kg/m3 at 335.15 K (CRC Handbook)")
    out[e["cls"]] = e
    c = compounds["2-ethylhexanol"]
    k = lambda p: c.const[p][0]
    e = estimated_entry("Ethylhexanol", "2-ethylhexanol", c, k("Tc"), k("Pc"), k("Vc"), k("omega"), 130.23,
                        "C8H18O with IUPAC conventional atomic weights", {"CH3": 2, "CH2": 5, "CH": 1, "OH": 1},
                        (293.15, 833.0), 197.0, (8, [(-3.00, 1600), (-0.15, 35)]),
                        "2-ethylhexanol (CAS 104-76-7). Tc, Pc, Vc: CRC Handbook; omega: Yaws; the rest "
                        "estimated; liquid density 833 kg/m3 at 293.15 K (CRC Handbook)")
    out[e["cls"]] = e
    # 2-ethylhexyl palmitate, C24H48O2: Joback Tb with the Stein-Brown correction, Joback Tc, Pc, Vc,
    # omega from Lee-Kesler at Tb.
    groups = {"CH3": 3, "CH2": 19, "CH": 1, "COO": 1}
    tb = 198 + joback_sum(groups, 3)
    tb = tb + 282.7 - 0.5209 * tb if tb > 700 else tb - 94.84 + 0.5577 * tb - 0.0007705 * tb * tb
    st = joback_sum(groups, 0)
    Tc = tb / (0.584 + 0.965 * st - st * st)
    Pc = 1e5 / (0.113 + 0.0032 * 74 - joback_sum(groups, 1)) ** 2
    Vc = (17.5 + joback_sum(groups, 2)) / 1000
    th = tb / Tc
    pcb = Pc / 1e5
    omega = (-math.log(pcb / 1.01325) - 5.92714 + 6.09648 / th + 1.28862 * math.log(th) - 0.169347 * th ** 6) / (
        15.2518 - 15.6875 / th - 13.4721 * math.log(th) + 0.43577 * th ** 6)
    e = estimated_entry("OctylPalmitate", None, None, Tc, Pc, Vc, omega, 368.64,
                        "C24H48O2 with IUPAC conventional atomic weights", groups, (293.15, 859.0), 270.0,
                        (23, [(-1.00, 420), (-0.15, 35)]),
                        "octyl palmitate, taken as 2-ethylhexyl hexadecanoate (CAS 29806-73-3): every number "
                        "estimated; liquid density 859 kg/m3 at 293.15 K")
    out[e["cls"]] = e
    return out


def heavy_entry(compounds, hexadecane):
    """A lumped heavy fraction given by its critical constants; correlations by corresponding states, with
    heat capacity and transport of n-hexadecane, the nearest compound of the data file (226 kg/kmol)."""
    Tc, Pc, omega, zc, mw, rhoc, vb, dhv0 = 665.05, 2016370.0, 0.880936, 0.262045, 216.32076, 301.03083774005, 0.209221, 49326810.0
    a = lee_kesler_antoine(Tc, Pc, omega)
    Tb = boiling_point(a, 0.3 * Tc, Tc)
    tmin = 0.35 * Tc
    recs = {}
    recs["antoine"] = Record(a, tmin, Tc, "estimate: Lee-Kesler vapor pressure in Antoine form")
    dnl = rackett(Tc, Pc, Tb, 1 / vb)
    recs["dnl"] = Record(dnl, tmin, Tc, "estimate: Rackett equation through vb at the boiling point %.1f K" % Tb)
    recs["sigma"] = Record(brock_bird(Tc, Pc, Tb), tmin, Tc, "estimate: Brock-Bird corresponding states")
    s = mw / hexadecane["M"]
    A, B, C, D, E = hexadecane["recs"]["cpig"].values
    cp = hexadecane["recs"]["cpig"]
    recs["cpig"] = Record((A * s, B * s, C, D * s, E), cp.tmin, cp.tmax, "estimate: n-hexadecane per kg")
    for key in ("muv", "mul", "kv", "kl"):
        r = hexadecane["recs"][key]
        recs[key] = Record(r.values, r.tmin, r.tmax, "estimate: n-hexadecane, " + r.note)
    return dict(cls="heavy", formula=None, mw=(mw, "of the pseudo-component"), henry=None, Tc=Tc, Pc=Pc, rhoc=rhoc,
                vb=vb, zc=zc, dh0=0.0, dg0=0.0, omega=omega, dhv0=dhv0, dhv0_note="of the pseudo-component",
                recs=recs, notes=["heavy: a lumped heavy hydrocarbon fraction, defined by its constants"],
                formation_note="a pseudo-component carries no formation data", Tb=Tb, M=mw)


# ----------------------------------------------------------------------------------------------------
# Output.

LABELS = [
    ("cpig", "ideal-gas heat capacity"),
    ("dnl", "liquid density"),
    (None, "Henry"),
    ("sigma", "surface tension"),
    ("muv", "vapor viscosity"),
    ("mul", "liquid viscosity"),
    ("kv", "vapor conductivity"),
    ("kl", "liquid conductivity"),
    ("antoine", "vapor pressure"),
]


def emit(e, out):
    cls = e["cls"]
    notes = list(e["notes"])
    if e["mw"] and not e["mw"][1].startswith("ChemSep"):
        notes.append("molecular weight %s" % e["mw"][1])
    comment = ["%s." % "; ".join(notes)]
    for key, label in LABELS:
        if key:
            comment.append("%s: %s." % (label.capitalize(), e["recs"][key].note))
    if "formation_note" in e:
        comment.append("Formation enthalpy and Gibbs energy: %s." % e["formation_note"])
    comment.append("dhv0: %s." % e["dhv0_note"])
    henry = e["henry"]
    if henry:
        comment.append("Henry: Sander, Atmos. Chem. Phys. 15 (2015) 4399, kH in mol/(kg*bar), B = d ln kH / d(1/T).")
    for paragraph in comment:
        for line in textwrap.wrap(paragraph, WIDTH - 3, subsequent_indent="  "):
            out.write("// %s\n" % line)
    if henry:
        out.write("%s::%s(std::string name, bool henry)\n" % (cls, cls))
    else:
        out.write("%s::%s(std::string name)\n" % (cls, cls))
    out.write("    : ComponentDippr(std::move(name),\n")
    args = []
    for key, label in LABELS:
        if key is None:
            if henry:
                args.append(("henry ? ParameterHenry(%s, %s) : ParameterHenry()" % (num(henry[0]), num(henry[1])), label))
            else:
                args.append(("ParameterHenry()", "no Henry behaviour"))
        else:
            args.append((e["recs"][key].cpp("ParameterAntoine" if key == "antoine" else "ParameterDippr7"), label))
    mw = 'ChemicalFormula("%s").mw()' % e["formula"] if e["formula"] else 'Value(%s, "kg/kmol")' % num(e["mw"][0])
    args += [
        (mw, "molecular weight"),
        ('Value(%s, "Pa")' % num(e["Pc"]), None),
        ('Value(%s, "K")' % num(e["Tc"]), None),
        ('Value(%s, "kg/m3")' % num(e["rhoc"]), "critical density, MW / Vc"),
        ("zero", "diffusion volume"),
        ('Value(%s, "m3/kmol")' % num(e["vb"]), "liquid molar volume at the normal boiling point"),
        ("Value(%s)" % num(e["zc"]), "critical compressibility"),
        ('Value(%s, "J/kmol")' % num(e["dh0"]), None),
        ('Value(%s, "J/kmol")' % num(e["dg0"]), None),
        ("Value(%s)" % num(e["omega"]), "acentric factor"),
        ('Value(%s, "J/kg")' % num(e["dhv0"]), None),
    ]
    indent = " " * 21
    for i, (text, label) in enumerate(args):
        end = ") {}" if i == len(args) - 1 else ","
        # Break a long argument after a comma, the continuation under its first number.
        pieces, lines = (text + end).split(", "), [indent]
        for piece in pieces:
            if len(lines[-1]) + len(piece) + 2 > WIDTH and lines[-1].strip():
                lines[-1] += ","
                lines.append(indent + " " * (text.find("(") + 1))
            lines[-1] += ("" if not lines[-1].strip() or lines[-1].endswith("(") else ", ") + piece
        if label and len(lines[0]) + len(label) + 4 <= WIDTH:
            lines[0] += " // " + label
        elif label:
            lines.insert(0, indent + "// " + label)
        out.write("\n".join(lines) + "\n")
    out.write("\n")


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    path = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "..", "shared", "data", "dippr_like.csv")
    compounds = load(path)
    entries = {}
    for cls, compound, formula, henry in ENTRIES:
        if compound and compounds[compound].chemsep:
            entries[cls] = dippr_entry(cls, compound, compounds[compound], formula, henry)
    entries.update(estimates(compounds))
    entries["heavy"] = heavy_entry(compounds, entries["nhexadecane"])
    # squalane has no usable liquid viscosity in the data file: Orrick-Erbar, six methyl branches.
    sq = entries["squalane"]
    rho20 = eq_value(105, tuple(float(v) for v in sq["recs"]["dnl"].values), 293.15) * sq["M"] / 1000
    sq["recs"]["mul"] = Record(orrick_erbar(30, [(-0.15, 35)] * 6, rho20, sq["M"]), 235.15, sq["Tb"],
                               "estimate: Orrick-Erbar group contribution (no usable record in the data file)")
    out = sys.stdout
    out.write("// Generated by scripts/generate_purecomps.py from ../shared/data/dippr_like.csv; do not edit by hand.\n")
    out.write("// Each entry names the source of its numbers; \"estimate\" marks numbers that no source in that file\n")
    out.write("// gives. Fitted records carry the largest relative deviation from the curve they replace.\n")
    out.write("#include <tarvo/components/ChemicalFormula.h>\n#include <tarvo/components/Purecomps.h>\n\n")
    out.write("namespace purecomps {\n\n")
    for cls, _, _, _ in ENTRIES:
        emit(entries[cls], out)
    out.write("} // namespace purecomps\n")


if __name__ == "__main__":
    main()
