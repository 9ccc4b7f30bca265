#!/usr/bin/env python3
"""Writes the crystal structure and the emission spectrum of the example, neither of them measured.

usage: tools/make_example.py GEOMETRY.xyz FOLDER

GEOMETRY.xyz is [Eu(acac)3(H2O)], optimised by xtb GFN1, the ion first. FOLDER gets

  eu_acac3_h2o.cif           that complex in a triclinic cell, P -1, one formula unit in the
                             asymmetric unit, so that the second one comes by symmetry and the
                             atoms of both are cut by the cell's borders
  eu_acac3_h2o_emission.csv  emission in power per nm against wavelength, of stated Omega(2),
                             Omega(4), with Stark components and noise
"""
import math
import pathlib
import random
import sys

NOTICE = "made for this example, not measured"

# Stated parameters of the spectrum.
OMEGA = {2: 14.0e-20, 4: 0.8e-20}  # cm^2
REFRACTIVE_INDEX = 1.5
LIFETIME = 0.45  # of 5D0, ms
NOISE = 0.0003  # standard deviation, of the highest point
WIDTH = 11.0  # standard deviation of a component, cm^-1

# Stark components of 5D0 -> 7FJ, cm^-1, and their shares of the band.
COMPONENTS = {
    0: [(17262, 1.0)],
    1: [(16986, 0.36), (16882, 0.33), (16805, 0.31)],
    2: [(16345, 0.38), (16262, 0.30), (16180, 0.17), (16120, 0.09), (16070, 0.06)],
    3: [(15420, 0.5), (15330, 0.5)],
    4: [(14510, 0.22), (14440, 0.2), (14360, 0.18), (14310, 0.22), (14250, 0.18)],
}

ELEMENTARY_CHARGE = 4.803204505713468e-10  # esu
PLANCK = 6.62606957e-27  # erg s
# Squared reduced elements of U(2) and U(4), 5D0 to 7F2 and 7F4 (W. T. Carnall, H. Crosswhite,
# H. M. Crosswhite, Argonne National Laboratory, 1977).
SQUARED_U = {2: 0.0032, 4: 0.0023}


def barycentre(level):
    return sum(place * share for place, share in COMPONENTS[level])


def rates():
    """A(J) in s^-1: the magnetic dipole rate of 7F1, 3.1e-12 n^3 sigma^3, and forced electric
    dipole rates 64 pi^4 e^2 sigma^3 / 3h * n (n^2 + 2)^2 / 9 * Omega U^2."""
    n = REFRACTIVE_INDEX
    local_field = n * (n * n + 2.0) ** 2 / 9.0
    result = {1: 3.1e-12 * n**3 * barycentre(1) ** 3}
    for level, omega in OMEGA.items():
        strength = ELEMENTARY_CHARGE**2 * omega * SQUARED_U[level]
        result[level] = (64.0 * math.pi**4 * barycentre(level) ** 3 / (3.0 * PLANCK)
                         * local_field * strength)
    result[0] = 0.04 * result[1]
    result[3] = 0.12 * result[1]
    return result


def write_spectrum(file_name):
    rate = rates()
    radiative = sum(rate.values())
    wavelengths = [565.0 + 0.2 * i for i in range(int((730.0 - 565.0) / 0.2) + 1)]
    intensities = []
    for wavelength in wavelengths:
        wavenumber = 1e7 / wavelength
        power = 0.0
        for level, components in COMPONENTS.items():
            for place, share in components:
                distance = (wavenumber - place) / WIDTH
                power += rate[level] * share * place * math.exp(-0.5 * distance * distance)
        intensities.append(power * wavenumber / wavelength)
    highest = max(intensities)
    noise = random.Random(20260101)
    with open(file_name, "w", encoding="utf-8") as file:
        file.write(f"# {NOTICE}: emission of a europium(III) complex, power per nm\n")
        file.write("# computed with Omega(2) = {:.1f}, Omega(4) = {:.1f} (1e-20 cm^2), n = {}; "
                   "Arad = {:.1f} 1/s,\n".format(OMEGA[2] / 1e-20, OMEGA[4] / 1e-20,
                                                 REFRACTIVE_INDEX, radiative))
        file.write("# efficiency {:.1f} % with a lifetime of {} ms; noise {} of the highest point\n"
                   .format(0.1 * radiative * LIFETIME, LIFETIME, NOISE))
        file.write("# wavelength/nm, intensity\n")
        for wavelength, intensity in zip(wavelengths, intensities):
            value = intensity / highest + noise.gauss(0.0, NOISE)
            file.write(f"{wavelength:.1f},{value:.6f}\n")


def read_geometry(file_name):
    lines = pathlib.Path(file_name).read_text(encoding="utf-8").splitlines()
    count = int(lines[0])
    rows = [line.split() for line in lines[2:2 + count]]
    return [(row[0], [float(value) for value in row[1:4]]) for row in rows]


# Lengths in Angstrom and angles in degrees: tight, with the usual contacts between molecules.
CELL = (11.16, 10.96, 12.03, 91.63, 97.02, 75.22)
CENTRE = (0.277, 0.301, 0.318)


def orthogonalisation():
    """Columns are the cell's vectors, a along x, b in the xy plane."""
    a, b, c = CELL[:3]
    cosines = [math.cos(math.radians(angle)) for angle in CELL[3:]]
    sine = math.sin(math.radians(CELL[5]))
    cy = (cosines[0] - cosines[1] * cosines[2]) / sine
    cz = math.sqrt(1.0 - cosines[1] ** 2 - cy * cy)
    return ((a, b * cosines[2], c * cosines[1]), (0.0, b * sine, c * cy), (0.0, 0.0, c * cz))


def fractional(position, m):
    z = position[2] / m[2][2]
    y = (position[1] - m[1][2] * z) / m[1][1]
    x = (position[0] - m[0][1] * y - m[0][2] * z) / m[0][0]
    return (x, y, z)


def write_crystal(atoms, file_name):
    m = orthogonalisation()
    ion = fractional(atoms[0][1], m)
    counts = {}
    rows = []
    for element, position in atoms:
        counts[element] = counts.get(element, 0) + 1
        place = fractional(position, m)
        place = [p - q + r for p, q, r in zip(place, ion, CENTRE)]
        # each atom inside the cell, as many programs write them: molecules are cut at its borders
        place = [p - math.floor(p) for p in place]
        rows.append("{}{} {} {:.6f} {:.6f} {:.6f} 1.0".format(element, counts[element], element,
                                                              *place))
    formula = " ".join(f"{element}{'' if count == 1 else count}"
                       for element, count in sorted(counts.items(),
                                                    key=lambda item: (item[0] != "C",
                                                                      item[0] != "H", item[0])))
    names = ("a", "b", "c")
    angles = ("alpha", "beta", "gamma")
    lines = [f"# {NOTICE}: aqua-tris(acetylacetonato)europium(III)",
             "# optimised by xtb 6.5.1 (GFN1) as a free molecule and put into a cell of its own",
             "data_example", f"_chemical_formula_sum '{formula}'",
             "_space_group_name_H-M_alt 'P -1'", "_space_group_IT_number 2"]
    lines += [f"_cell_length_{name} {CELL[i]}" for i, name in enumerate(names)]
    lines += [f"_cell_angle_{name} {CELL[3 + i]}" for i, name in enumerate(angles)]
    lines += ["_cell_formula_units_Z 2", "loop_", "_space_group_symop_operation_xyz", "'x, y, z'",
              "'-x, -y, -z'", "loop_", "_atom_site_label", "_atom_site_type_symbol",
              "_atom_site_fract_x", "_atom_site_fract_y", "_atom_site_fract_z",
              "_atom_site_occupancy"]
    pathlib.Path(file_name).write_text("\n".join(lines + rows) + "\n", encoding="utf-8")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[2])
    write_crystal(read_geometry(sys.argv[1]), folder / "eu_acac3_h2o.cif")
    write_spectrum(folder / "eu_acac3_h2o_emission.csv")


if __name__ == "__main__":
    main()
