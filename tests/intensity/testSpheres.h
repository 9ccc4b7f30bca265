#pragma once

#include "TestSupport.h"
#include "plainOmega.h"

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordSPH.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QVector>

#include <cmath>
#include <random>

/// Coordination spheres made up for tests.
namespace testSpheres {

inline QString xyzFile(const QString &name, const QVector<Coord> &atoms)
{
    QString text = QStringLiteral("%1\n\n").arg(atoms.size());
    for (const Coord &atom : atoms)
        text += QStringLiteral("%1 %2 %3 %4\n")
                    .arg(atom.label)
                    .arg(atom.x, 0, 'f', 12)
                    .arg(atom.y, 0, 'f', 12)
                    .arg(atom.z, 0, 'f', 12);
    return testSupport::scratchFile(name, text.toUtf8());
}

inline QVector<CoordSPH> toSpherical(const QVector<Coord> &atoms)
{
    QVector<CoordSPH> positions;
    for (const Coord &atom : atoms) {
        const double r = std::sqrt(atom.x * atom.x + atom.y * atom.y + atom.z * atom.z);
        positions.append({atom.label, r, r > 0.0 ? std::acos(atom.z / r) * 180.0 / M_PI : 0.0,
                          std::atan2(atom.y, atom.x) * 180.0 / M_PI});
    }
    return positions;
}

/// Atoms about a Eu at the origin.
inline QVector<Coord> withIon(const QVector<Coord> &ligands)
{
    QVector<Coord> atoms = {{QStringLiteral("Eu"), 0.0, 0.0, 0.0}};
    return atoms + ligands;
}

inline QVector<Coord> oxygens(const QVector<std::array<double, 3>> &places)
{
    QVector<Coord> atoms;
    for (const auto &place : places)
        atoms.append({QStringLiteral("O"), place[0], place[1], place[2]});
    return withIon(atoms);
}

inline QVector<Coord> octahedron(double distance)
{
    const double d = distance;
    return oxygens({{d, 0, 0}, {-d, 0, 0}, {0, d, 0}, {0, -d, 0}, {0, 0, d}, {0, 0, -d}});
}

/// Tricapped prism of oxygens.
inline QVector<Coord> nineOxygens()
{
    return oxygens({{2, 0, 1.4},
                    {-1, 1.732, 1.4},
                    {-1, -1.732, 1.4},
                    {2, 0, -1.4},
                    {-1, 1.732, -1.4},
                    {-1, -1.732, -1.4},
                    {-2.45, 0, 0},
                    {1.225, 2.12, 0},
                    {1.225, -2.12, 0}});
}

/// @p count atoms of several elements in random directions.
inline QVector<Coord> randomSphere(std::mt19937 &random, int count)
{
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    const QStringList elements = {QStringLiteral("O"), QStringLiteral("N"), QStringLiteral("Cl"),
                                  QStringLiteral("F"), QStringLiteral("S")};
    QVector<Coord> atoms;
    while (atoms.size() < count) {
        const double x = uniform(random);
        const double y = uniform(random);
        const double z = uniform(random);
        const double length = std::sqrt(x * x + y * y + z * z);
        if (length < 0.1 || length > 1.0)
            continue;
        const double scale = (2.45 + 0.15 * uniform(random)) / length;
        atoms.append(
            {elements.at(atoms.size() % elements.size()), x * scale, y * scale, z * scale});
    }
    return withIon(atoms);
}

/// Values between @p low and @p high by atom number, N+2 entries.
inline QVector<double> randomValues(std::mt19937 &random, int coordNumber, double low, double high)
{
    std::uniform_real_distribution<double> uniform(low, high);
    QVector<double> values(coordNumber + 2, 0.0);
    for (int atom = 2; atom < values.size(); ++atom)
        values[atom] = uniform(random);
    return values;
}

inline void setChargeFactorAndAlpha(LanqorOmega &omega, QVector<double> g, QVector<double> alpha)
{
    double *gArray = g.data();
    double *alphaArray = alpha.data();
    omega.setChargeFactorAndAlpha(gArray, alphaArray);
}

} // namespace testSpheres
