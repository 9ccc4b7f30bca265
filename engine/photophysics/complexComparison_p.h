#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// Whether the ligands of an excited-state output are those of a complex, told from the atoms of
/// both files and their distances from the ion.
namespace complexComparison {

struct Atom
{
    QString label;
    double distance = 0.0; ///< from the ion, Angstrom
};

/// Count of every element, by symbol. Lanthanide ions, which a calculation of the ligands replaces
/// by a point charge or leaves out, and labels that are no element (dummy atoms, point charges,
/// translation vectors) do not count.
QMap<QString, int> composition(const QVector<Atom> &atoms);

/// "C52 H28 N4 O8": carbon and hydrogen first, the others by symbol.
QString formula(const QMap<QString, int> &composition);

/// The coordinated atom whose distance differs most.
struct Difference
{
    QString element; ///< empty when nothing could be compared
    double inComplex = 0.0;
    double amongLigands = 0.0; ///< Angstrom

    double size() const;
};

/// Compares the atoms of @p complex and @p ligands, element by element in the order of their
/// distances, as far as one of the two counts as coordinated.
Difference largestDifference(const QVector<Atom> &complex, const QVector<Atom> &ligands);

/// Largest difference of the distances of all atoms, element by element in the order of their
/// distances, Angstrom; that of different compositions is infinite.
double largestShift(const QVector<Atom> &a, const QVector<Atom> &b);

} // namespace complexComparison
