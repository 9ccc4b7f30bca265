#!/usr/bin/env python3
"""Results and times of the default fits beside scipy on the same objectives.

Every MOPAC output of a folder that the program can fit is fitted to four pairs of targets, by
"fit omega" and, when it holds orbitals, by "fit qdc"; beside that stands the best of several runs
of scipy.optimize.dual_annealing on the model written anew (compare_annealing.py). "fit stark" is
given exact levels of two charge factors and four starts, from all of which it must find them.
Needs numpy and scipy (Debian: python3-scipy).

Example: compare_fits.py build/release/cli/lanqor SAMPLES/mopac SAMPLES/complete_case
"""

import argparse
import json
import math
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import numpy
from scipy.optimize import dual_annealing

from compare_annealing import ALPHA_BOUNDS, BOUNDS, amplitudes

TARGETS = ((12.0, 6.0), (20.0, 8.0), (25.0, 8.0), (30.0, 10.0))
QDC_BOUNDS = dict(BOUNDS, Cl=(0.01, 1.0), F=(0.01, 1.0))
OTHER_BOUNDS = (0.01, 3.0)  # of an element that is in no class
QDC_ALPHA = (0.005, 15.0)
SAME = 1e-9  # a response that is 0 but for rounding, (1e-20 cm^2)^2


def run(lanqor, *arguments):
    """The results of a command as data, or None when it fails, and its time."""
    started = time.perf_counter()
    done = subprocess.run([lanqor, *arguments, "--json", "-"], capture_output=True, text=True,
                          check=False)
    elapsed = time.perf_counter() - started
    return (json.loads(done.stdout) if done.returncode == 0 else None), elapsed


def value(record, key):
    entry = record[key]
    return entry["value"] if isinstance(entry, dict) else entry


def sphere_of(lanqor, file):
    """Elements and positions (cm) of the coordinated atoms; None without any."""
    data, _ = run(lanqor, "sphere", file)
    if data is None:
        return None
    atoms = []
    for row in data["atoms"]:
        r = value(row, "distance") * 1e-8
        theta = math.radians(value(row, "theta"))
        phi = math.radians(value(row, "phi"))
        atoms.append((row["element"], r * numpy.array([math.sin(theta) * math.cos(phi),
                                                       math.sin(theta) * math.sin(phi),
                                                       math.cos(theta)])))
    return atoms


def bounds_of(atoms, table):
    """Bounds of g by atom; an element in no class has those of the atom before it."""
    bounds = []
    for element, _ in atoms:
        bounds.append(table.get(element, bounds[-1] if bounds else OTHER_BOUNDS))
    return bounds


def best_of_scipy(misfit, bounds, runs, evaluations):
    started = time.perf_counter()
    best = min(dual_annealing(misfit, bounds, maxfun=evaluations, seed=seed).fun
               for seed in range(1, runs + 1))
    return best, time.perf_counter() - started


def omega_problem(atoms, targets):
    elements = list(dict.fromkeys(element for element, _ in atoms))
    groups = [[i for i, atom in enumerate(atoms) if atom[0] == element] for element in elements]
    second = amplitudes(atoms, groups, 2)
    fourth = amplitudes(atoms, groups, 4)
    by_atom = bounds_of(atoms, BOUNDS)
    bounds = [(max(by_atom[i][0] for i in members), min(by_atom[i][1] for i in members))
              for members in groups]

    def misfit(x):
        b2 = second @ x
        b4 = fourth @ x
        return (b2 @ b2 - targets[0]) ** 2 + (b4 @ b4 - targets[1]) ** 2

    return misfit, bounds + [ALPHA_BOUNDS] * len(groups)


def qdc_problem(atoms, indices, targets):
    """In Q, D and the smallest polarisability, which makes the bounds nearly a box."""
    groups = [[i] for i in range(len(atoms))]
    matrices = [amplitudes(atoms, groups, rank) for rank in (2, 4, 6)]
    indices = indices[:len(atoms)]  # the other atoms follow
    q = numpy.array([value(row, "electron_population") for row in indices])
    s = numpy.array([value(row, "superdelocalizability") for row in indices])
    by_atom = bounds_of(atoms, QDC_BOUNDS)
    low = max(bound[0] / each for bound, each in zip(by_atom, q))
    high = min(bound[1] / each for bound, each in zip(by_atom, q))
    spread = s.max() - s.min()

    def misfit(x):
        alpha = x[2] + x[1] * (s - s.min())
        if alpha.max() > QDC_ALPHA[1] or x[2] - x[1] * s.min() < 0.0:
            return 1e20
        vector = numpy.concatenate([x[0] * q, alpha])
        omega = [float((matrix @ vector) @ (matrix @ vector)) for matrix in matrices]
        return (omega[0] - targets[0]) ** 2 + (omega[1] - targets[1]) ** 2 + omega[2] ** 2

    return misfit, [(low, high), (0.0, min(1e3, 15.0 / spread if spread > 0 else 1e3)), QDC_ALPHA]


def compare_intensities(options, file):
    atoms = sphere_of(options.lanqor, file)
    if not atoms:
        return 0
    indices, _ = run(options.lanqor, "indices", file)
    worse = 0
    for targets in TARGETS:
        kinds = [("omega", omega_problem(atoms, targets))]
        if indices is not None:
            kinds.append(("qdc", qdc_problem(atoms, indices["reactivity_indices"], targets)))
        for kind, (misfit, bounds) in kinds:
            own, own_time = run(options.lanqor, "fit", kind, file, "--omega2", str(targets[0]),
                                "--omega4", str(targets[1]))
            if own is None:
                continue
            best = value(own[f"{kind}_fit"], "response")
            other, other_time = best_of_scipy(misfit, bounds, options.runs, options.evaluations)
            is_worse = best > other * (1.0 + 1e-6) + SAME
            worse += is_worse
            print(f"{pathlib.Path(file).name:42}{kind:7}{targets[0]:5g}/{targets[1]:<5g}"
                  f"{best:14.6g}{own_time:8.2f}{other:14.6g}{other_time:8.2f}"
                  f"{'  WORSE' if is_worse else ''}", flush=True)
    return worse


def compare_stark(options, file):
    """Exact levels of g(O) = 0.9 and g(N) = 1.4, from four starts."""
    atoms = sphere_of(options.lanqor, file)
    if not atoms or {element for element, _ in atoms} != {"O", "N"}:
        return 0
    levels, _ = run(options.lanqor, "stark", file, "--g", "O=0.9,N=1.4")
    if levels is None:
        return 0
    by_j = {}
    for row in levels["stark_levels"]:
        by_j.setdefault(row["j"], []).append(value(row, "energy"))
    worse = 0
    with tempfile.TemporaryDirectory() as folder:
        base = str(pathlib.Path(folder, "fit"))
        members = {element: " ".join(str(i + 2) for i, atom in enumerate(atoms)
                                     if atom[0] == element) for element in "ON"}
        pathlib.Path(base + ".groups").write_text(
            f"oxygens {members['O']}\nnitrogens {members['N']}\n", encoding="ascii")
        pathlib.Path(base + ".exp").write_text(
            "".join(f"{j} {min(e)!r} {max(e)!r} 0\n" for j, e in sorted(by_j.items()) if 0 < j < 5),
            encoding="ascii")
        for start in ((0.5, 0.5), (0.1, 2.5), (1.9, 0.1), (1.5, 0.3)):
            pathlib.Path(base + ".chargefactors").write_text(
                f"oxygens {members['O']} {start[0]}\nnitrogens {members['N']} {start[1]}\n",
                encoding="ascii")
            for objective in ("least-squares", "response"):
                own, elapsed = run(options.lanqor, "fit", "stark", base, file,
                                   "--objective", objective, "--quiet")
                found = [value(row, "charge_factor") for row in own["groups"]]
                is_worse = abs(found[0] - 0.9) > 1e-4 or abs(found[1] - 1.4) > 1e-4
                worse += is_worse
                print(f"{pathlib.Path(file).name:42}stark  {start[0]:5g}/{start[1]:<5g}"
                      f"{objective:>14}{elapsed:8.2f}  g(O) {found[0]:.5f}  g(N) {found[1]:.5f}"
                      f"{'  WRONG' if is_worse else ''}", flush=True)
    return worse


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("lanqor", help="the lanqor program")
    parser.add_argument("folders", nargs="+", help="folders of MOPAC outputs")
    parser.add_argument("--runs", type=int, default=5, help="of scipy")
    parser.add_argument("--evaluations", type=int, default=20000, help="of each run of scipy")
    options = parser.parse_args()
    print(f"{'':42}{'fit':7}{'targets':11}{'lanqor':>14}{'s':>8}{'scipy':>14}{'s':>8}")
    worse = 0
    for folder in options.folders:
        for file in sorted(pathlib.Path(folder).glob("*.out")):
            # The indices are written beside the file.
            with tempfile.TemporaryDirectory() as scratch:
                copy = shutil.copy(file, scratch)
                worse += compare_intensities(options, copy)
                worse += compare_stark(options, copy)
    sys.exit(f"{worse} results are worse" if worse else 0)


if __name__ == "__main__":
    main()
