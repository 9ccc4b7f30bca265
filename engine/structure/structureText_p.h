#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordSPH.h>
#include <LanqorEngine/CoordZMT.h>

#include <QString>
#include <QVector>

/// Texts of structure files. Coordinates are in Angstrom and have nine decimals, as many as the
/// outputs that they come from.
namespace structureText {

/// "Eu", x, y, z in columns, without a line break.
QString atomRow(const Coord &atom);
QString xyzFile(const QVector<Coord> &atoms, const QString &title);
QString zmtFile(const QVector<CoordZMT> &rows);
/// Distances in Angstrom, angles in degrees.
QString sphFile(const QVector<CoordSPH> &atoms);

} // namespace structureText
