#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordZMT.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

class LanqorFilesConverterPrivate;
class LanqorInputData;

/// Converts structures between Cartesian and internal coordinates and writes jobs for
/// quantum-chemistry programs.
///
/// An object works on the file of its constructor. The conversions "from out" read a MOPAC
/// output, or a .xyz, .mop, .arc, .zmt or .mol2 file, told by its suffix, then by its text. The
/// text argument of every conversion is the file to write; when it is empty, the input's name with
/// the new ending. An existing file is replaced whole or not at all. Each returns false with the
/// reason in getLastError(), and reports its steps through newObjCalculationMessage().
///
/// Coordinates are written in Angstrom with nine decimals. Jobs are of multiplicity 1, unless
/// setMultiplicity() gave another, and have the charge that the MOPAC file tells, unless
/// setCharge() gave another.
class LANQORENGINE_EXPORT LanqorFilesConverter : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// For createXYZFromZMTCoord() and createZMTFromXYZCoord() only; it has no file to convert.
    LanqorFilesConverter();
    LanqorFilesConverter(QObject *parent, QString const &fileName);
    /// Works on the file of @p structure, through it: a conversion takes the atoms (of an ORCA job
    /// also the orbitals) that it holds, or reads them.
    LanqorFilesConverter(QObject *parent, LanqorInputData *structure);
    ~LanqorFilesConverter() override;

    /// Further keywords that a MOPAC job of these atoms needs: the charge of the system and, when
    /// there is a lanthanide among them, the sparkle model for it.
    static QString sparkleKeywords(const QVector<Coord> &atoms, const int &charge);
    /// The same with the keyword of a multiplicity above 1, 2 ("DOUBLET") to 9 ("NONET").
    static QString sparkleKeywords(const QVector<Coord> &atoms, const int &charge,
                                   const int &multiplicity);
    /// Charge of the atoms of a system of this charge when the ion, +3, is left out.
    static int chargeWithoutIon(const int &charge);
    /// The same when each lanthanide among the atoms is left out; one where there is none among
    /// them, as in an ORCA output of the ligands around a point charge.
    static int chargeWithoutIons(const QVector<Coord> &atoms, const int &charge);
    /// Electrons of atoms with this charge, each lanthanide counted as a 3+ ion whose electrons all
    /// belong to its core: a closed shell needs an even number. Dummy atoms and translation vectors
    /// have none. Empty when the element of an atom is not known.
    static std::optional<int> electronCount(const QVector<Coord> &atoms, const int &charge);
    /// Methods of setMopacMethod(): AM1, PM3, PM6, PM7, RM1.
    static QStringList mopacMethods();

    /// Charge of the whole system in the jobs to come, elementary charges.
    void setCharge(const int &charge);
    /// Further keywords of MOPAC jobs, as "SPARKLE CHARGE=1"; empty by default. They end the
    /// second keyword line.
    void setExtraMopacKeywords(const QString &keywords);

    /// Multiplicity of the Gaussian jobs to come, 1 by default; an open shell has states of its own
    /// multiplicity only.
    void setMultiplicity(const int &multiplicity);
    /// Method of MOPAC jobs, one of mopacMethods(); AM1 by default. A conversion with another
    /// fails.
    void setMopacMethod(const QString &method);
    /// Whether a MOPAC job is one for LanqorParametricQDC: with all orbitals (ALLVEC), and followed
    /// by a second job with the force constants of the optimised structure (FORCE OLDGEO).
    void setMopacJobForQdcFit(const bool &isForQdcFit);
    /// Solvent of MOPAC jobs, one of LanqorSolvents, as its COSMO model takes it (keyword EPS); by
    /// default empty, the gas phase. A conversion with another fails, and so does an optimisation
    /// with the keyword SPARKLE, whose charge that model does not see.
    void setSolvent(const QString &name);

    /// True when the file is an ORCA output, by the suffix ".orcout" or by its text.
    bool isOrcaOutput() const;

    /// A MOPAC job (.mop): an optimisation in Cartesian coordinates.
    bool convertFromOutToMop(QString const &outputFile = QString());
    /// Two MOPAC jobs of excited states by INDO/S, NAME_singlet.mop and NAME_triplet.mop for the
    /// file NAME.mop: single excitations among the thirty orbitals around the gap (keywords INDO
    /// CIS, C.I.=30), yttrium in the place of the ion, the geometry as it is. Their outputs are
    /// read by LanqorInputData::readOutputMopacIndo(). Fails with several ions.
    /// @param states  number of excited states of each multiplicity that are printed, at least 1
    bool convertFromOutToMopIndo(QString const &outputFile, const int &states);
    /// A Gaussian job (.gjf): ten singlets and ten triplets by TD-LC-wPBE, 6-31+G(d) on the
    /// ligands and on the ion the quasi-relativistic large-core pseudopotential of Dolg et al.
    /// (Theor. Chim. Acta 75, 173, 1989). Fails without a lanthanide ion, and when the file's name
    /// has a blank, at which Gaussian would end the name of the checkpoint file.
    bool convertFromOutToGjf(QString const &outputFile = QString());
    /// A ZINDO job (.inp): INDO/S states by single excitations from the (at most) thirty highest
    /// occupied to the thirty lowest empty orbitals, singlets and triplets. The ion becomes a
    /// point charge of +3. Needs the number of filled levels that a MOPAC output prints.
    bool convertFromOutToInp(QString const &outputFile = QString());
    /// An ORCA job (.orcinp) of ZINDO/S states.
    ///
    /// Started from an ORCA output, the window of orbitals spans
    /// the orbital energies of that output instead of @p windowFrom to @p windowTo; a message tells
    /// when the output lists some of the empty orbitals only.
    /// @param pointCharges  leaves the ion out of the atoms and writes it as a point charge of
    ///                      +3 to a ".pointcharge" file beside the job; the position comes from
    ///                      the atoms or, where an ORCA output has no ion, from the point-charge
    ///                      file beside that output
    /// @param triplets      asks for triplet states beside the singlets
    /// @param charge        of the atoms of the job (without a point charge), elementary charges
    /// @param nroots        number of states of each multiplicity
    /// @param maxdim        largest dimension of the expansion space, in multiples of nroots
    /// @param windowFrom    lowest orbital energy that takes part in excitations, hartree
    /// @param windowTo      highest orbital energy that takes part, hartree
    bool convertFromOutToInpOrca(QString const &outputFile, const bool &pointCharges,
                                 const bool &triplets, const int &charge, const int &nroots,
                                 const int &maxdim, const double &windowFrom = -3.0,
                                 const double &windowTo = 3.0);
    /// Spherical coordinates about atom 1 (.sph): label, r in Angstrom, theta and phi in degrees.
    bool convertFromOutToSph(QString const &outputFile = QString());
    /// An .xyz file. @param keepTv  keeps the translation vectors ("Tv") of a periodic structure
    bool convertFromOutToXYZ(QString const &outputFile, bool const &keepTv);
    /// A Z-matrix (.zmt): label, distance, angle, dihedral and three atom numbers in each row.
    bool convertFromOutToZmt(QString const &outputFile = QString());
    bool convertFromZmtToXYZ(QString const &outputFile = QString());
    /// @param keepTv  keeps the translation vectors ("Tv") of a periodic structure
    bool convertFromMopToXYZ(QString const &outputFile, bool const &keepTv);
    /// The first molecule of a MOL2 file as .xyz.
    bool convertFromMOL2ToXYZ(QString const &outputFile = QString());
    /// That of the four conversions to .xyz which the suffix of the input asks for.
    bool convertToXYZ(QString const &outputFile, bool const &keepTv);

    /// Cartesian coordinates of a Z-matrix: atom 1 at the origin, atom 2 on the positive x axis,
    /// atom 3 in the xy plane. Empty with an error when a row does not place its atom.
    QVector<Coord> createXYZFromZMTCoord(QVector<CoordZMT> const &zMatrix);
    /// A Z-matrix of the atoms in their order; angles in degrees, reference 0 for none. A dihedral
    /// is positive when, looking along the bond from the first reference to the second, the third
    /// is turned clockwise from the atom. Empty with an error when two atoms coincide.
    QVector<CoordZMT> createZMTFromXYZCoord(QVector<Coord> const &atoms);

private:
    friend class LanqorFilesConverterPrivate;
    std::unique_ptr<LanqorFilesConverterPrivate> d;
};
