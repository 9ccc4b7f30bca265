#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QVector>

/// Texts of input files of quantum-chemistry programs. Multiplicity is 1 throughout: the ligands
/// are closed shells, and the 4f shell is in the core or left out.
namespace jobFiles {

/// Charge of a trivalent lanthanide ion that stands as a point charge, elementary charges.
constexpr int ionCharge = 3;

/// An AM1 optimisation of all coordinates by MOPAC; @p extraKeywords end the second keyword line.
QString mopacJob(const QVector<Coord> &atoms, const QString &extraKeywords);

/// Name of the large-core pseudopotential of a lanthanide, 4f shell of the trivalent ion in the
/// core (Dolg, Stoll, Savin, Preuss, Theor. Chim. Acta 75, 173, 1989): MWBn with the number n
/// of core electrons, 46 for La to 60 for Lu. Empty for other elements.
QString pseudopotentialOf(const QString &label);

/// A Gaussian job; the checkpoint file is named @p baseName + ".chk".
QString gaussianJob(const QVector<Coord> &atoms, int charge, const QString &baseName);

/// Single excitations of a ZINDO job, orbital numbers from 1.
struct ActiveWindow
{
    int firstOccupied = 0;
    int lastOccupied = 0;
    int firstEmpty = 0;
    int lastEmpty = 0;
};
/// The highest occupied and lowest empty orbitals of the ligands; all zero when there are none
/// of one kind or an element has no INDO/S basis.
ActiveWindow activeWindow(const QVector<Coord> &atoms, int filledLevels);
/// A ZINDO job with each lanthanide as a point charge.
QString zindoJob(const QVector<Coord> &atoms, int filledLevels, const ActiveWindow &window);

struct OrcaJob
{
    QVector<Coord> atoms;
    int charge = 0;
    bool triplets = true;
    int nroots = 0;
    int maxdim = 0;
    double windowFrom = 0.0; ///< hartree
    double windowTo = 0.0;   ///< hartree
    QString pointChargeFile; ///< empty for none
};
QString orcaJob(const OrcaJob &job);
/// An ORCA point-charge file with a charge of +3 for each ion.
QString orcaPointCharges(const QVector<Coord> &ions);

/// The lanthanide atoms of a structure, and all others.
QVector<Coord> ionsOf(const QVector<Coord> &atoms);
QVector<Coord> withoutIons(const QVector<Coord> &atoms);

} // namespace jobFiles
