#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// Texts of input files of quantum-chemistry programs. Multiplicity is 1 unless another is given:
/// the ligands are closed shells, and the 4f shell is in the core or left out.
namespace jobFiles {

/// Charge of a trivalent lanthanide ion that stands as a point charge, elementary charges.
constexpr int ionCharge = 3;

/// Methods of a MOPAC job for which there are sparkle parameters of the lanthanides.
QStringList mopacMethods();
struct MopacJob
{
    QString method = QStringLiteral("AM1");
    QString extraKeywords;    ///< end the second keyword line
    bool isForQdcFit = false; ///< all orbitals, and a second job with the force constants
    QString solvent;          ///< of LanqorSolvents; empty: gas phase
};
/// An optimisation of all coordinates by MOPAC.
QString mopacJob(const QVector<Coord> &atoms, const MopacJob &job);

/// A MOPAC job of INDO/S states of one multiplicity by single excitations, each lanthanide as
/// yttrium, which has the same charge and INDO/S parameters.
struct MopacIndoJob
{
    QString multiplicity; ///< keyword, SINGLET or TRIPLET
    int charge = 0;
    int states = 25; ///< excited ones that are printed
    QString solvent; ///< of LanqorSolvents; empty: gas phase
};
QString mopacIndoJob(const QVector<Coord> &atoms, const MopacIndoJob &job);

/// Why a job of this solvent and of these atoms cannot be; empty when it can.
QString faultOfSolvent(const QVector<Coord> &atoms, const MopacJob &job);
/// The same of an INDO job, which has no sparkle.
QString faultOfSolvent(const QString &solvent);

/// What to say to a method that is not among them.
QString unknownMethod(const QString &method);

/// Electrons of the atoms at this charge, each lanthanide a 3+ ion without any; empty when an atom
/// is of no known element.
std::optional<int> electronCount(const QVector<Coord> &atoms, int charge);

/// Name of the large-core pseudopotential of a lanthanide, 4f shell of the trivalent ion in the
/// core (Dolg, Stoll, Savin, Preuss, Theor. Chim. Acta 75, 173, 1989): MWBn with the number n
/// of core electrons, 46 for La to 60 for Lu. Empty for other elements.
QString pseudopotentialOf(const QString &label);

/// A Gaussian job; the checkpoint file is named @p baseName + ".chk". An open shell has states of
/// its own multiplicity only.
QString gaussianJob(const QVector<Coord> &atoms, int charge, int multiplicity,
                    const QString &baseName);

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
