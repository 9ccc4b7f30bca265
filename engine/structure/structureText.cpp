#include "structure/structureText_p.h"

#include "core/reportText_p.h"

using reportText::fixed;

namespace structureText {

namespace {

constexpr int decimals = 9;
constexpr int width = 17;

} // namespace

QString atomRow(const Coord &atom)
{
    return QStringLiteral("%1%2%3%4")
        .arg(atom.label, -3)
        .arg(fixed(atom.x, decimals, width), fixed(atom.y, decimals, width),
             fixed(atom.z, decimals, width));
}

QString xyzFile(const QVector<Coord> &atoms, const QString &title)
{
    QString text = QStringLiteral("%1\n%2\n").arg(atoms.size()).arg(title);
    for (const Coord &atom : atoms)
        text += atomRow(atom) + QLatin1Char('\n');
    return text;
}

QString zmtFile(const QVector<CoordZMT> &rows)
{
    QString text;
    for (const CoordZMT &row : rows)
        text += QStringLiteral(" %1%2%3%4%5%6%7\n")
                    .arg(row.label, -3)
                    .arg(fixed(row.distance, decimals, width), fixed(row.angle, decimals, width),
                         fixed(row.dihedral, decimals, width))
                    .arg(row.na, 6)
                    .arg(row.nb, 6)
                    .arg(row.nc, 6);
    return text;
}

QString sphFile(const QVector<CoordSPH> &atoms)
{
    QString text;
    for (const CoordSPH &atom : atoms)
        text += QStringLiteral("%1%2%3%4\n")
                    .arg(atom.label, -3)
                    .arg(fixed(atom.r, decimals, width), fixed(atom.theta, decimals, width),
                         fixed(atom.phi, decimals, width));
    return text;
}

} // namespace structureText
