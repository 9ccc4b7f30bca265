#!/usr/bin/env python3
"""Time and result of a default fit beside scipy.optimize.dual_annealing on the same objective.

The objective is written anew from the simple overlap model: B(lambda,t,p) is linear in the
charge factors g and polarisabilities alpha of the groups, so that an evaluation is two small
matrix products. Needs numpy and scipy (Debian: python3-scipy).

Example: compare_annealing.py build/release/cli/lanqor tests/data/mopac/eu_acac3_phen_am1_allvec.out
"""

import argparse
import math
import re
import subprocess
import sys
import time

import numpy
from scipy.optimize import dual_annealing

try:
    from scipy.special import sph_harm_y
except ImportError:  # before scipy 1.15: order before degree, azimuth before polar angle
    from scipy.special import sph_harm

    def sph_harm_y(degree, order, theta, phi):
        return sph_harm(order, degree, phi, theta)

CUT_OFF = {"O": 2.65, "N": 2.65, "Cl": 2.9, "S": 2.9, "I": 3.0}  # Angstrom
BOUNDS = {"O": (0.01, 2.0), "S": (0.01, 2.0), "N": (0.01, 3.0), "P": (0.01, 3.0),
          "F": (0.001, 1.0), "Cl": (0.001, 1.0), "Br": (0.001, 1.0), "I": (0.001, 1.0)}
ALPHA_BOUNDS = (0.005, 6.5)  # cubic Angstrom
EVALUATIONS = 225000

E2 = 2.307077352370616e-19  # erg cm
A0 = 5.2917721092e-9  # cm
DELTA_E = -2.383392e-11  # erg
RADIAL = {2: 0.9175 * A0**2, 4: 2.02 * A0**4, 6: 9.039 * A0**6, 8: 110.03237 * A0**8}
THETA = {(1, 2): -0.17, (3, 2): 0.345, (3, 4): 0.18, (5, 4): -0.24, (5, 6): -0.24, (7, 6): 0.24}
SIGMA = {2: 0.6, 4: 0.139, 6: 0.1}
REDUCED_C = {2: -1.366, 4: 1.128, 6: -1.2774}


def read_sphere(file_name):
    """Symbols and positions (cm) about the ion of the coordinated atoms of a MOPAC output."""
    blocks = []
    rows = None
    for line in open(file_name, encoding="latin-1"):
        if line.strip() == "CARTESIAN COORDINATES":
            rows = []
            blocks.append(rows)
        elif rows is not None:
            fields = line.split()
            if len(fields) == 5 and fields[0].isdigit():
                rows.append((fields[1], numpy.array([float(value) for value in fields[2:]])))
            elif rows:
                rows = None
    ion = blocks[1][0][1]
    atoms = [(symbol, position - ion) for symbol, position in blocks[1][1:]]
    return [(symbol, position * 1e-8) for symbol, position in atoms
            if numpy.linalg.norm(position) < CUT_OFF.get(symbol, 0.0)]


def amplitudes(atoms, groups, rank):
    """Matrix that gives the terms of Omega(rank) from g and alpha of the groups."""
    shortest = min(numpy.linalg.norm(position) for _, position in atoms)
    rows = []
    for t in (rank - 1, rank + 1):
        for p in range(-t, t + 1):
            row = numpy.zeros(2 * len(groups), dtype=complex)
            for number, (symbol, position) in enumerate(atoms):
                r = numpy.linalg.norm(position)
                theta = math.acos(position[2] / r)
                phi = math.atan2(position[1], position[0])
                rho = 0.05 * (shortest / r) ** 3.5
                beta = {"O": 1 / (1 + rho), "F": 1 / (1 + rho),
                        "N": 1 / (1 - rho), "Cl": 1 / (1 - rho)}.get(symbol, 1.0)
                common = (math.sqrt(4 * math.pi / (2 * t + 1)) / r ** (t + 1)
                          * numpy.conj(sph_harm_y(t, p, theta, phi)))
                electric = (2 / DELTA_E * RADIAL[t + 1] * THETA.get((t, rank), 0.0) * E2 * rho
                            * (2 * beta) ** (t + 1) * common)
                dynamic = 0.0
                if t == rank + 1:
                    dynamic = (-math.sqrt((rank + 1) * (2 * rank + 3) / (2 * rank + 1))
                               * RADIAL[rank] * (1 - SIGMA[rank]) * REDUCED_C[rank]
                               * 1e-24 * common)
                group = next(i for i, members in enumerate(groups) if number in members)
                row[group] += electric
                row[len(groups) + group] += dynamic
            rows.append(row * math.sqrt((2 * rank + 1) / (2 * t + 1)) * 1e10)
    terms = numpy.array(rows)
    return numpy.vstack([terms.real, terms.imag])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("lanqor", help="the lanqor program")
    parser.add_argument("file", help="MOPAC output")
    parser.add_argument("--omega2", type=float, default=20.5, help="1e-20 cm^2")
    parser.add_argument("--omega4", type=float, default=8.1, help="1e-20 cm^2")
    parser.add_argument("--groups", choices=("element", "atom"), default="element")
    parser.add_argument("--starts", type=int, default=1, help="of lanqor")
    options = parser.parse_args()

    atoms = read_sphere(options.file)
    elements = list(dict.fromkeys(symbol for symbol, _ in atoms))
    if options.groups == "atom":
        groups = [[i] for i in range(len(atoms))]
    else:
        groups = [[i for i, atom in enumerate(atoms) if atom[0] == element]
                  for element in elements]
    second = amplitudes(atoms, groups, 2)
    fourth = amplitudes(atoms, groups, 4)

    def misfit(x):
        b2 = second @ x
        b4 = fourth @ x
        return (b2 @ b2 - options.omega2) ** 2 + (b4 @ b4 - options.omega4) ** 2

    text = "; ".join(f"{key}: " + ", ".join(f"{atoms[i][0]} {i + 2}" for i in members)
                     for key, members in enumerate(groups, 1))
    started = time.perf_counter()
    run = subprocess.run(
        [options.lanqor, "fit", "omega", options.file, "--omega2", str(options.omega2),
         "--omega4", str(options.omega4), "--groups", text, "--no-polish", "--starts", str(options.starts)],
        capture_output=True, text=True, check=False)
    own_time = time.perf_counter() - started
    if run.returncode != 0:
        sys.exit(run.stderr)
    own_best = float(re.search(r"^Response (\S+)", run.stdout, re.MULTILINE).group(1))

    bounds = [BOUNDS[atoms[members[0]][0]] for members in groups] + [ALPHA_BOUNDS] * len(groups)
    started = time.perf_counter()
    result = dual_annealing(misfit, bounds, maxiter=10**9, maxfun=EVALUATIONS, seed=1)
    other_time = time.perf_counter() - started

    own_points = EVALUATIONS * options.starts
    print(f"{options.file}, groups by {options.groups}")
    print(f"{'':24}{'time / s':>10}{'points':>10}{'us/point':>10}{'best response':>18}")
    print(f"{'lanqor fit omega':24}{own_time:10.3f}{own_points:10d}"
          f"{1e6 * own_time / own_points:10.3f}{own_best:18.6g}")
    print(f"{'scipy dual_annealing':24}{other_time:10.3f}{result.nfev:10d}"
          f"{1e6 * other_time / result.nfev:10.3f}{result.fun:18.6g}")


if __name__ == "__main__":
    main()
