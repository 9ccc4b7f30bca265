#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/OrganizeResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorOrganizeMoleculesPrivate;
class LanqorResultTables;

/// Brings a structure into the order of atoms that all calculations need: the lanthanide ion
/// first, then the coordinated atoms ligand by ligand, then the remaining atoms ligand by ligand,
/// and last the fragments that are not bound to the ion (counter-ions, lattice solvent).
///
/// Reads MOL2 files (all molecules of a file make up one structure), .xyz, .mop and .zmt files
/// and MOPAC outputs. The ion is the one atom whose element is a lanthanide. Coordinated atoms
/// are O and N within 2.65, Cl and S within 2.9 and I within 3.0 Angstrom of the ion. Ligands
/// are the fragments that stay connected once the bonds of the ion are cut: bonds of the file
/// and, for atoms that it bonds to nothing, to all within the sum of their covalent radii and 0.4
/// Angstrom. Inside a
/// ligand the atoms keep their order.
///
/// Two atoms other than hydrogen that are nearer to each other than 0.6 times the sum of their
/// covalent radii are two places of one disordered atom: the first in the file stays, the other
/// goes with the hydrogen atoms on it, and a message tells so. Of two hydrogen atoms within 0.4
/// Angstrom the first stays, too, and of the ion and another atom the ion; an atom that is farther
/// off but still too near to the ion for a bond is kept and told of.
class LANQORENGINE_EXPORT LanqorOrganizeMolecules : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    LanqorOrganizeMolecules(QObject *parent, const QString &fileName);
    /// Works on the file of @p structure, through it: organize() takes the atoms that it holds, or
    /// reads them. A MOL2 file is read anew, for its bonds and all of its molecules.
    LanqorOrganizeMolecules(QObject *parent, LanqorInputData *structure);
    ~LanqorOrganizeMolecules() override;

    /// Whether fragments that are not bound to the ion stay, as the last atoms (the default), or
    /// are left out.
    void setKeepUnboundFragments(const bool &keep);
    /// Counts the @p number atoms nearest to the ion that can bind to it (of N, O, F, P, S, Cl, As,
    /// Se, Br and I) as coordinated, whatever their distances; 0, as at the start: by the distances
    /// above. organize() fails when there are not as many within 3.5 Angstrom.
    void setCoordinationNumber(const int &number);
    /// Further keywords of a ".mop" file, as "SPARKLE CHARGE=1"; empty by default.
    void setExtraMopacKeywords(const QString &keywords);

    /// Method of a ".mop" file, one of LanqorFilesConverter::mopacMethods(); AM1 by default.
    void setMopacMethod(const QString &method);
    /// Whether a ".mop" file is a job for a QDC fit; see LanqorFilesConverter.
    void setMopacJobForQdcFit(const bool &isForQdcFit);
    /// Solvent of a ".mop" file; see LanqorFilesConverter::setSolvent().
    void setSolvent(const QString &name);

    /// Reads the file and sorts its atoms. Fails when there is no lanthanide ion or more than
    /// one, or when a hydrogen atom overlaps with another element; results of an earlier call stay
    /// then. Translation vectors ("Tv") of a periodic structure are no atoms; a message tells of
    /// them, and ".mop" files end with them.
    bool organize();
    /// Writes the organised structure as ".mol2" (with its bonds), ".xyz" or ".mop", told by the
    /// suffix. An existing file is replaced whole or not at all.
    bool createOutpuFile(const QString &fileName);
    /// Another name of createOutpuFile().
    bool createOutputFile(const QString &fileName);

    /// Element of the ion, "Eu"; empty before organize().
    QString getLanthanideLabel() const;
    /// Number N of the coordinated atoms; they are atoms 2 to N + 1.
    int getCoordNumber() const;
    /// One text for each ligand: its formula (numbered where several ligands share it) and the
    /// numbers of its coordinated atoms, as "C5H7O2_1 2 3"; fit for
    /// LanqorAradPartition::setLigandsVector().
    QStringList getLigands() const;
    /// The atoms in their new order, the ion first.
    QVector<Coord> getCoord() const;

    /// The organised structure; empty before organize().
    OrganizeResults getResults() const;
    /// The new order of atoms as data for other programs.
    static LanqorResultTables makeTables(const OrganizeResults &results);

private:
    friend class LanqorOrganizeMoleculesPrivate;
    std::unique_ptr<LanqorOrganizeMoleculesPrivate> d;
};
