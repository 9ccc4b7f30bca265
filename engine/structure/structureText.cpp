#include "structure/structureText_p.h"

#include "core/reportText_p.h"

using reportText::fixed;

namespace structureText {

namespace {

constexpr int decimals = 9;
constexpr int width = 17;

QString labelColumn(const QString &label)
{
    return label.leftJustified(3);
}

} // namespace

QString atomRow(const Coord &atom)
{
    return labelColumn(atom.label) + fixed(atom.x, decimals, width) +
           fixed(atom.y, decimals, width) + fixed(atom.z, decimals, width);
}

QString xyzFile(const QVector<Coord> &atoms, const QString &title)
{
    QString text = QString::number(atoms.size()) + QLatin1Char('\n') + title + QLatin1Char('\n');
    for (const Coord &atom : atoms)
        text += atomRow(atom) + QLatin1Char('\n');
    return text;
}

QString zmtFile(const QVector<CoordZMT> &rows)
{
    QString text;
    for (const CoordZMT &row : rows)
        text += QLatin1Char(' ') + labelColumn(row.label) + fixed(row.distance, decimals, width) +
                fixed(row.angle, decimals, width) + fixed(row.dihedral, decimals, width) +
                QStringLiteral("%1%2%3\n").arg(row.na, 6).arg(row.nb, 6).arg(row.nc, 6);
    return text;
}

QString sphFile(const QVector<CoordSPH> &atoms)
{
    QString text;
    for (const CoordSPH &atom : atoms)
        text += labelColumn(atom.label) + fixed(atom.r, decimals, width) +
                fixed(atom.theta, decimals, width) + fixed(atom.phi, decimals, width) +
                QLatin1Char('\n');
    return text;
}

} // namespace structureText
