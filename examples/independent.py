#!/usr/bin/env python3
"""Computes results of lanqor by other roads and tells how far both agree.

usage: independent.py omega OMEGA.json | yield YIELD.json | stark STARK.json

omega  Omega without harmonics: by the addition theorem the sum over p of products of harmonics is
       a Legendre polynomial of the angle between two atoms at the ion. The radiative rate with SI
       units and the constants of CODATA 2018.
yield  Populations from the printed rates in exact fractions; back-transfer from transfer.
stark  Sums over the levels of a manifold, which follow from B(k,q) without diagonalising.
"""
import json
import math
import sys
from fractions import Fraction

E2, A0 = 2.307077352370616e-19, 5.2917721092e-9  # erg cm, cm
RADIAL = {2: 0.9175 * A0**2, 4: 2.02 * A0**4, 6: 9.039 * A0**6, 8: 110.03237 * A0**8}
SHIELDING = {2: 0.6, 4: 0.139, 6: 0.1}
REDUCED_C = {2: -1.366, 4: 1.128, 6: -1.2774}
THETA = {(1, 2): -0.17, (3, 2): 0.345, (3, 4): 0.18, (5, 4): -0.24, (5, 6): -0.24, (7, 6): 0.24}
DELTA_E = -2.383392e-11  # erg


def value(record, key):
    return record[key]["value"]


def tell(name, pairs):
    """The largest relative difference of pairs, rounded up to a power of ten."""
    largest = max(abs(a - b) / max(abs(a), abs(b)) for a, b in pairs)
    bound = "exactly" if largest == 0 else f"within 1e{math.ceil(math.log10(largest)):+03d}"
    print(f"{name:42} {bound}")


def legendre(t, x):
    before, current = 1.0, x
    for n in range(1, t):
        before, current = current, ((2 * n + 1) * x * current - n * before) / (n + 1)
    return current


def amplitude(atom, lam, t):
    """A of an atom: Omega(lambda) = (2 lambda + 1) sum A_i A_j P_t(cos w_ij)/(2t+1)."""
    inverse = (value(atom, "distance") * 1e-8) ** -(t + 1)
    rho, beta = value(atom, "overlap"), value(atom, "beta_factor")
    result = 2 / DELTA_E * RADIAL[t + 1] * THETA[t, lam] * E2 * rho * (2 * beta) ** (t + 1) \
        * value(atom, "charge_factor") * inverse
    if t == lam + 1:
        result -= math.sqrt((lam + 1) * (2 * lam + 3) / (2 * lam + 1)) * RADIAL[lam] \
            * (1 - SHIELDING[lam]) * REDUCED_C[lam] * value(atom, "polarisability") * 1e-24 * inverse
    return result


def direction(atom):
    theta, phi = (math.radians(value(atom, angle)) for angle in ("theta", "phi"))
    return (math.sin(theta) * math.cos(phi), math.sin(theta) * math.sin(phi), math.cos(theta))


def check_omega(data):
    atoms = data["atoms"]
    omega, parts = {}, [0.0] * len(atoms)
    n = value(data["emission"], "refractive_index")
    planck, charge, vacuum = 6.62607015e-34, 1.602176634e-19, 8.8541878128e-12
    for lam, sigma, square in ((2, 16267e2, 0.0032), (4, 14470e2, 0.0023), (6, 12386e2, 0.0002)):
        per_atom = [0.0] * len(atoms)
        for t in (lam - 1, lam + 1):
            for i, a in enumerate(atoms):
                for b in atoms:
                    cosine = sum(x * y for x, y in zip(direction(a), direction(b)))
                    per_atom[i] += (2 * lam + 1) / (2 * t + 1) * amplitude(a, lam, t) \
                        * amplitude(b, lam, t) * legendre(t, cosine)
        omega[lam] = sum(per_atom)
        per_square_metre = 16 * math.pi**3 * sigma**3 / (3 * planck * vacuum) * charge**2 \
            * n * (n * n + 2) ** 2 / 9 * square
        parts = [p + per_square_metre * 1e-4 * e for p, e in zip(parts, per_atom)]
    record = data["intensity_parameters"]
    tell("Omega, by Legendre polynomials",
         [(value(record, f"omega_{lam}"), omega[lam] * 1e20) for lam in (2, 4, 6)])
    tell("electric dipole rate, SI, CODATA 2018",
         [(value(data["emission"], "electric_dipole_rate"), sum(parts))])
    tell("partition by atom, by pairs of atoms",
         [(value(row, "electric_dipole_rate"), part)
          for row, part in zip(data["partition_by_atom"], parts)])


def check_yield(data):
    states = [row["state"] for row in data["populations"]]
    rates = {}
    for row in data["kinetic_constants"]:
        rates[row["from_state"], row["to_state"]] = Fraction(value(row, "rate"))
    for row in data["energy_transfer"]:
        if row["takes_part"]:
            donor, acceptor = row["channel"].split("-")
            rates[donor, acceptor] = Fraction(value(row, "transfer_rate"))
            rates[acceptor, donor] = Fraction(value(row, "back_transfer_rate"))
    arad = Fraction(value(data["emission"], "radiative_rate"))
    rates["5D0", "S0"] = arad + Fraction(value(data["emission"], "nonradiative_rate"))
    size = len(states)
    rows = [[Fraction(0)] * size + [Fraction(0)] for _ in states]
    for (origin, target), rate in rates.items():
        rows[states.index(target)][states.index(origin)] += rate
        rows[states.index(origin)][states.index(origin)] -= rate
    rows[0] = [Fraction(1)] * (size + 1)
    for i in range(size):  # Gauss and Jordan
        pivot = next(k for k in range(i, size) if rows[k][i])
        rows[i], rows[pivot] = rows[pivot], rows[i]
        rows[i] = [x / rows[i][i] for x in rows[i]]
        for k in range(size):
            if k != i and rows[k][i]:
                factor = rows[k][i]
                rows[k] = [x - factor * y for x, y in zip(rows[k], rows[i])]
    population = {state: row[size] for state, row in zip(states, rows)}
    tell("populations, in fractions",
         [(value(row, "population"), float(population[row["state"]])) for row in data["populations"]])
    quantum_yield = 100 * population["5D0"] * arad / (population["S0"] * rates["S0", "S"])
    tell("quantum yield, in fractions",
         [(value(data["yield"], "quantum_yield"), float(quantum_yield))])
    kt = 1.380649e-23 * value(data["yield"], "temperature") / (6.62607015e-34 * 2.99792458e10)
    tell("back-transfer, CODATA 2018",
         [(value(row, "back_transfer_rate"),
           value(row, "transfer_rate") * math.exp(-value(row, "energy_mismatch") / kt))
          for row in data["energy_transfer"]])


def check_stark(data):
    squares = {1: (0.1541, 0.0, 0.0), 2: (0.1, 0.1219, 0.0), 3: (0.0275, 0.026, 0.0281),
               4: (0.0117, 0.2841, 0.3528), 5: (0.2762, 0.2063, 0.3225),
               6: (1.2029, 0.394, 0.0294)}
    three_j = {2: 4 / 105, 4: 2 / 77, 6: 100 / 3003}  # squares of (3 k 3; 0 0 0)
    field = {k: sum(value(row, "real_part") ** 2 + value(row, "imaginary_part") ** 2
                    for row in data["crystal_field_parameters"] if row["k"] == k)
             for k in three_j}
    pairs, largest = [], 0.0
    for J, elements in squares.items():
        levels = [value(row, "energy") for row in data["stark_levels"] if row["j"] == J]
        largest = max(largest, abs(sum(levels)))
        expected = sum(49 * three_j[k] * element * field[k] / (2 * k + 1)
                       for k, element in zip(three_j, elements))
        pairs.append((sum(level * level for level in levels), expected))
    tell("sum of E^2 of each 7FJ, from B(k,q)", pairs)
    print(f"{'largest sum of E of a 7FJ / cm^-1':42} below {'1e-10' if largest < 1e-10 else largest}")


{"omega": check_omega, "yield": check_yield, "stark": check_stark}[sys.argv[1]](
    json.load(open(sys.argv[2], encoding="utf-8")))
