#pragma once

#include <LanqorEngine/Coord.h>

#include <Eigen/Dense>

#include <QString>
#include <QStringList>
#include <QVector>

class InputFile;

/// Crystal structures as their files give them, and the molecules in them.
namespace crystals {

/// An atom of the asymmetric unit.
struct Site
{
    QString name; ///< "C12", as the file has it
    QString element;
    Eigen::Vector3d place{0, 0, 0}; ///< fractional; Angstrom where there is no cell
    double occupancy = 1.0;         ///< of the site, not divided by its multiplicity
    QString assembly;               ///< of disordered atoms that take turns; empty when not told
    int group = 0;                  ///< place within the assembly; 0 for ordered atoms
};

/// x' = rotation x + shift, fractional.
struct Operation
{
    Eigen::Matrix3d rotation;
    Eigen::Vector3d shift;
};

struct Crystal
{
    QString name;                                              ///< of the data block
    bool isPeriodic = true;                                    ///< false: one molecule in space
    Eigen::Matrix3d toCartesian = Eigen::Matrix3d::Identity(); ///< Angstrom
    QVector<Operation> operations;                             ///< the identity first
    QVector<Site> sites;
    QStringList warnings;
};

/// The crystals of a file; @p error tells why there are none.
struct Crystals
{
    QVector<Crystal> found;
    QString error;
};

/// Every data block with atoms of a CIF. Text fields (the reflections and the refinement job of a
/// file for deposition) are passed over.
Crystals readCif(const InputFile &file);
/// The first model of a PDB file; of alternative places those of the highest occupancy.
Crystals readPdb(const InputFile &file);

/// A molecule of a crystal that holds a lanthanide ion.
struct Complex
{
    QVector<Coord> atoms; ///< Angstrom: the ion, the atoms in bonding distance, all others
    QString ion;          ///< name of its site
    QString formula;      ///< in the order of Hill
    QStringList warnings; ///< of disorder, occupancies and missing hydrogen atoms
    QString error;        ///< of one that has no end
};

/// The complexes that no symmetry operation makes of each other, in the order of their ions.
///
/// A complex is what hangs together by bonds: atoms within the sum of their covalent radii and 0.4
/// Angstrom, images across the faces of the cell included; a hydrogen atom has one bond, to the
/// atom that fits best; ions of groups 1 and 2 have none, nor have two lanthanide ions. An atom on
/// a special position stands once. Of disordered atoms the group with the highest mean occupancy
/// stays, and of two atoms in one place the one with the higher occupancy.
QVector<Complex> complexesOf(const Crystal &crystal);

/// Names of atoms of which hydrogen atoms seem to be missing, told from the number of their
/// neighbours and the angles and distances to them.
QStringList openValences(const QVector<Coord> &atoms, const QStringList &names);

/// The first twenty of a list of names: no one reads more.
QString listOf(const QStringList &names);

} // namespace crystals
