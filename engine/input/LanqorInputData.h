#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordSPH.h>
#include <LanqorEngine/CoordZMT.h>
#include <LanqorEngine/ExcitateState.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/MolecularOrbital.h>
#include <LanqorEngine/MolecularOrbitalOCC.h>
#include <LanqorEngine/SphereResults.h>

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class InputFile;
class LanqorInputDataPrivate;
class LanqorResultTables;

/// The reader of quantum-chemistry results and structure files.
///
/// An object is built for one file and asked to read it in one way; the reader fills what its
/// format provides and leaves the rest. Reading twice appends: build a new object to read again.
/// Every reader returns false with the reason in getLastError() and keeps what it had read.
///
/// Index bases differ between getters, for callers rely on them: geometry and state-energy
/// getters take 1-based numbers, all others 0-based indices. No getter checks its bounds.
///
/// Each reader opens the file; setKeepFileOpen() lets all of them share one opening.
class LANQORENGINE_EXPORT LanqorInputData : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// "La" to "Lu"; index 0 is La, 6 is Eu. Labels are compared exactly.
    static const QString lanthanideList[15];
    /// Banner that heads every report: eleven lines of 107 characters with their line breaks.
    static const QString LANQORTitle;
    /// Symbol and atomic mass (g/mol) of elements 1 to 103; element 80 is spelled "Mg".
    static const QVector<QPair<QString, double>> elementMassTable;
    /// Symbol and atomic number of elements 1 to 103; 80 is spelled "Mg", 103 is "Lw".
    static const QVector<QPair<QString, int>> elementNumberTable;

    LanqorInputData(QObject *parent, const QString &fileName);
    ~LanqorInputData() override;

    /// The file that the readers read.
    QString getFileName() const;
    /// From now on all readers of this object share one opening of its file, which is closed with
    /// the object or by a call with false. Changes that replace the file are then not seen.
    void setKeepFileOpen(const bool &keep);

    /// Symbol of the element of @p atomicNumber; empty outside 1 to 103.
    static QString getElementSymbol(const int &atomicNumber);

    /// True when @p label is one of lanthanideList.
    static bool isLanthanide(const QString &label);

    // --- MOPAC results and structure files ---

    /// Reads the geometry of any structure file, its kind told by suffix, then by content:
    /// MOPAC output or archive (".arc"), ".mop", ".zmt", ".xyz", MOL2, CIF or PDB. Of a crystal
    /// structure the complex that holds the lanthanide ion is read, whole and once: what hangs
    /// together by bonds across symmetry operations and cell faces, the ion first, then the
    /// coordinated atoms. Of disordered atoms the group with the highest occupancy stays; messages
    /// tell of it, of occupancies below 1, of missing hydrogen atoms and of what is left out.
    /// Fails when the bonds have no end, or when there are several independent complexes and
    /// setMolecule() has chosen none.
    bool readStructureFile();
    /// @param keepTv  keeps the translation vectors ("Tv" rows) of MOPAC files as atoms of the
    ///                geometry, which the form without it leaves out
    bool readStructureFile(const bool &keepTv);

    /// Chooses one of several independent complexes of a crystal structure, from 1, in the order of
    /// their ions in the file; 0 (the default) takes the only one.
    void setMolecule(const int &number);

    /// What a file is, told from its first lines, for a message about one of the wrong kind: "an
    /// ORCA output", "a crystal structure (CIF)"; empty when it cannot be told.
    static QString getFileDescription(const QString &fileName);

    /// Reads a MOPAC output: final geometry, heat of formation, charges, dipole and the like.
    /// Messages tell of an open shell about a lanthanide ion, of missing charges, and of an output
    /// without results.
    /// @param keepTv  keeps translation vectors ("Tv" rows) as atoms of the geometry
    bool readMopacOutFile(const bool &keepTv);
    /// Reads a MOPAC input with Cartesian or internal coordinates, and sets those that follow from
    /// others by the relations of its keyword SYMMETRY.
    bool readMopFile();
    /// Reads a bare Z-matrix: label, distance, angle, dihedral, three reference numbers.
    bool readZmtFile();
    /// Reads the atoms of a Tripos MOL2 file.
    bool readMol2File();
    /// Reads an XYZ file.
    bool readXYZFile();

    enum GeometryType { NoGeometry, CartesianGeometry, InternalGeometry };
    /// True when a MOPAC input asks for a calculation in Cartesian coordinates: its first line,
    /// comments ("*") passed over and continued keyword lines joined, holds the keyword XYZ. The
    /// atoms may be given in either form whatever the keywords say:
    /// getTypeOfGeometryFromMopFile() looks at them.
    static bool checkTypeMopFile(const QString &fileName);
    /// Kind of the atom lines of a MOPAC input; NoGeometry when it holds none.
    static GeometryType getTypeOfGeometryFromMopFile(const QString &fileName);
    /// First line of an XYZ file as a number; 0 when it is none.
    static int numberOfAtomsFromXYZFile(const QString &fileName);

    /// Spherical coordinates of all atoms about atom 1, and the coordination number: the count
    /// of O and N within 2.65, Cl and S within 2.9 and I within 3.0 Angstrom.
    bool createSphericalCoordinate();
    /// The same for atoms @p first to @p last (1-based) only: getCoordSPH(1) is then atom
    /// @p first, and only these atoms are counted. The origin stays atom 1.
    bool createSphericalCoordinate(const int &first, const int &last);
    /// Distance, Angstrom, below which an atom of this element counts as coordinated; 0 for
    /// elements that are never counted, fluorine and bromine among them.
    static double getBondCutOff(const QString &label);
    /// Numbers (1-based) of the atoms within the bonding distances of atom 1, in order; empty
    /// without a geometry.
    QVector<int> getCoordinatedAtoms() const;
    /// Empty when atom 1 is a lanthanide, as every calculation needs; otherwise a sentence that
    /// tells where the ion is, or that there is none.
    QString getIonError() const;
    /// Empty when the coordinated atoms are atoms 2 to N + 1, the order that every calculation
    /// of this library relies on; otherwise a sentence that names the atoms out of place.
    QString getAtomOrderError() const;
    /// Empty when a calculation can start from this geometry: atom 1 is a lanthanide, the
    /// coordination number that createSphericalCoordinate() counted is not 0, and the coordinated
    /// atoms stand in order. Otherwise the first of these that is wrong.
    QString getSphereError() const;
    /// A sentence on each atom that a chemist may miss among the coordinated ones: little farther
    /// away than the bonding distance of its element, or near the ion and of an element without
    /// one (hydrogen apart).
    QStringList getNearAtomNotes() const;
    /// A sentence on each thing that makes the geometry doubtful: further lanthanide ions, places
    /// of disordered atoms (two non-hydrogen atoms nearer than 0.6 times the sum of their covalent
    /// radii, Cordero et al., Dalton Trans. 2832, 2008), and distances from the ion as they are in
    /// other units than Angstrom.
    QStringList getStructureWarnings() const;
    /// The coordinated atoms of the geometry.
    SphereResults getSphereResults() const;
    static LanqorResultTables makeTables(const SphereResults &results);
    /// Centre of mass, Angstrom, with an empty label. An unknown label counts with the mass of
    /// the atom before it.
    static Coord calcCenterOfMass(const QVector<Coord> &atoms);

    /// Reads the list of structures "mol_name.txt". A line is the name of a structure, which one
    /// or two whole numbers may follow; a line that holds "tomo:" gives a text common to all.
    /// @param directory  in: the folder of the file (empty: the current one) or the file itself;
    ///                   out: the folder
    /// @param prefix     out: the text behind "tomo:"
    /// @param names      out: names in file order
    /// @param first,second  out: the numbers behind each name, 0 where there is none
    /// @return empty on success, otherwise the reason
    static QString readMolNameFile(QString &directory, QString &prefix, QStringList &names,
                                   QVector<int> &first, QVector<int> &second);

    /// Reads a table of reactivity indices (".indeces") and checks the QDC parameters on it.
    ///
    /// The table stands under the line
    /// " Atomic Charges (au)             Varno Superdelocalizabilities (au)"; its rows hold, blank
    /// separated, atom number, label, charge and superdelocalizability. Rows of other atoms than
    /// 2 to @p coordNumber + 1 are passed over.
    /// @param qdcParameters  Q, D and C
    /// @param restrictionValue  D must exceed this many times C
    /// @return empty when checkParametersQDC() finds nothing and the restriction holds, otherwise
    ///         the reason
    static QString readFileIndeces(const QString &fileName, const int &coordNumber,
                                   const double *qdcParameters, int restrictionValue);
    /// Checks that C and D are not negative and that g = Q q and alpha = D S + C (cubic
    /// Angstrom) of every coordinated atom are within the bounds of QDC fits.
    /// @param labels  of atoms 2 to @p coordNumber + 1, blank separated
    /// @param charges,superdelocalizabilities  of the same atoms; index 0 is atom 2
    /// @return empty, or a sentence that names the first atom that fails
    static QString checkParametersQDC(const QString &labels, const QVector<float> &charges,
                                      const QVector<float> &superdelocalizabilities,
                                      const int &coordNumber, const double *qdcParameters);

    QVector<Coord> getCoord() const;
    Coord getCoord(const int &atom) const;
    /// Empty before createSphericalCoordinate().
    QVector<CoordSPH> getCoordSPH() const;
    CoordSPH getCoordSPH(const int &atom) const;
    CoordZMT getCoordZMT(const int &atom) const;
    QString getAtomLabel(const int &atom) const;
    int getCoordNumber() const;
    double getFinalHeat() const;      ///< kcal/mol
    double getIonPotential() const;   ///< eV
    double getDipole() const;         ///< debye
    double getChargeOnSystem() const; ///< elementary charges
    /// True when the file that was read tells the charge of the system: a MOPAC output or archive,
    /// or a MOPAC input with the keyword CHARGE.
    bool isChargeOnSystemTold() const;
    double getAtomicCharges(const int &index) const;
    int getAtomicChargesCount() const;
    QString getMopacCitation() const;
    /// Number of the lowest excited singlet, from which the energy transfer starts; 0 when a
    /// reader found no singlet.
    int getSelExcitateState() const;

    // --- Excited states and molecular orbitals ---
    //
    // An output may hold several lists of states (steps of an optimisation, several jobs). The
    // last whole one counts, with the geometry and the orbitals that belong to it. Orbitals are
    // those of the table of coefficients; of an unrestricted calculation, its alpha half.

    /// Programs whose excited states are read; the numbers are those of LanqorRL::calcRL.
    enum ProgramType {
        UnknownOutput = -1,
        ZindoOutput = 0,
        OrcaOutput = 1,
        GaussianOutput = 2,
        MopacIndoOutput = 3
    };
    /// Which program wrote @p fileName, told from its text; UnknownOutput when none is known.
    static ProgramType detectProgram(const QString &fileName);
    /// The same for the file of this object.
    ProgramType detectProgram() const;
    /// Geometry, orbitals and states of an output of @p program: the readers below that belong to
    /// it, one after the other; of MOPAC INDO this file alone, with the states of its one
    /// multiplicity. What is no program whose states are read fails.
    bool readExcitedStates(const ProgramType &program);

    /// Orbitals and states of a ZINDO output (version 99.1). Both lists keep the ground-state
    /// entry that the program prints first.
    bool readOutputZindo();
    bool readCoordFromZindoOutFile();
    bool readAbsorptionDataZindo();
    /// Orbitals, states and spectrum of an ORCA output (versions 2.6 to 6); the geometry is left
    /// to readCoordFromOrcaOutFile.
    bool readOutputOrca();
    bool readCoordFromOrcaOutFile();
    bool readAbsorptionDataOrca();
    /// Position of the ion, Angstrom, from the point-charge file beside an ORCA output: the same
    /// name with the suffix ".pointcharge". Of several charges the most positive one is the ion.
    bool readChargePointFileOrca(double &x, double &y, double &z);
    /// Geometry, states, spectrum and orbitals of a Gaussian output (03, 09, 16). An output of
    /// singlets only succeeds with an empty list of triplets.
    bool readOutputGaussian();
    bool readAbsorptionDataGaussian();
    /// Geometry, orbitals with their energies, states and spectrum of a pair of INDO/S jobs of
    /// MOPAC with single excitations (INDO CIS), one with the keyword SINGLET and one with TRIPLET,
    /// which stand in two files instead of that of this object. Fails unless both are of one
    /// geometry, with the same orbitals, excitations and limit of printing (WRTCONF), and of a
    /// reference below all triplets. A job that MOPAC refused is recognised by its missing states.
    /// INDO/S has no lanthanides: yttrium stands in the place of the ion.
    /// @param singletFile,tripletFile  one of them may be empty, for a list without states
    bool readOutputMopacIndo(const QString &singletFile, const QString &tripletFile);
    /// Spectrum of the singlets of a MOPAC INDO output.
    bool readAbsorptionDataMopacIndo();
    /// The second file of readOutputMopacIndo(), when it read two; empty otherwise.
    QString getTripletFileName() const;
    /// Orbital energies of an ORCA output, with HOMO and LUMO (numbers as printed, 0-based). Of an
    /// unrestricted calculation the spin-up orbitals.
    bool readMolecularOrbitalOccupancy();
    /// Force constants, mdyn/Angstrom, between the ion (atom 1) and atoms 2 to @p n + 1 from the
    /// force matrix of the MOPAC output @p path; index 0 is atom 2. Of several matrices the last.
    bool readForceConstant(const QString &path, const int &n);

    double getSingletEnergy(const int &state) const;
    double getTripletEnergy(const int &state) const;
    ExcitateState getSingletExcitateStateVector(const int &index) const;
    ExcitateState getTripletExcitateStateVector(const int &index) const;
    /// Weights of the printed excitations of a state, one per pair of orbital numbers of its
    /// configurations; 0 where the program prints none.
    QVector<double> getSingletWeights(const int &index) const;
    QVector<double> getTripletWeights(const int &index) const;
    /// Coefficients of the same excitations with their signs, which belong to the signs of the
    /// orbitals; empty where the program prints none (all but MOPAC INDO).
    QVector<double> getSingletCoefficients(const int &index) const;
    QVector<double> getTripletCoefficients(const int &index) const;
    int getSingletStatesCount() const;
    int getTripletStatesCount() const;
    /// Orbital by printed number, less the number of the first orbital (ORCA 0, others 1); one
    /// that the output does not print is empty.
    MolecularOrbital getMolecularOrbitalVector(const int &index) const;
    /// Row of the orbital-energy table.
    MolecularOrbitalOCC getMolecularOrbital(const int &index) const;
    int getMolecularOrbitalsOccCount() const;
    /// Length of the list of orbitals.
    int getMolecularOrbitalNumber() const;
    int getHomoMO() const;
    int getLumoMO() const;
    /// Absorption spectrum: transitions allowed by spin, energies in cm^-1.
    double getEnergyVector(const int &index) const;
    double getOscForceVector(const int &index) const;
    /// Number of transitions of the spectrum.
    int getExcitedStateCount() const;
    double getForceConstant(const int &index) const;
    int getForceConstantsCount() const;
    bool getIsOrcaTDDFT() const;
    /// Share of the single excitations between the orbitals of the window of C.I.= that MOPAC INDO
    /// took: it leaves out orbitals at the edge that are degenerate with others beyond. 0 where it
    /// is not known.
    double getExcitationShare() const;

private:
    friend class LanqorInputDataPrivate;
    friend InputFile inputFileOf(const LanqorInputData &data);

    std::unique_ptr<LanqorInputDataPrivate> d;
};
