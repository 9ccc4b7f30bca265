#pragma once

#include <LanqorEngine/DonorStatesResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QString>

#include <memory>

class LanqorResultTables;
class LanqorRLPrivate;

/// Donor-acceptor distances: how far from the lanthanide ion the excited states of the ligands
/// sit, and how near the nearest ligand atom is.
///
///     RL = sum c^2 d(a) / sum c^2
/// over the coefficients c of every orbital of every printed configuration of a state, d(a)
/// being the distance from the ion to the atom a of the coefficient (G. F. de Sa et al., Coord.
/// Chem. Rev. 196, 165 (2000)). Both orbitals of an excitation count, repeats count each time,
/// and the weights of the configurations do not enter. Distances in Angstrom, energies in cm^-1.
class LANQORENGINE_EXPORT LanqorRL : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// @param outputPath  output of the excited-state calculation. The point-charge file of an
    ///                    ORCA run stands beside it, with the suffix ".pointcharge".
    LanqorRL(QObject *parent, const QString &outputPath);
    /// The pair of MOPAC INDO outputs, see LanqorInputData::readOutputMopacIndo().
    LanqorRL(QObject *parent, const QString &singletFile, const QString &tripletFile);
    /// @param excitedStates  the reader of that output, which may have read it already; not
    ///                       owned, and must outlive this object. Null: no output.
    LanqorRL(QObject *parent, LanqorInputData *excitedStates);
    ~LanqorRL() override;

    /// Computes the distances of all states, and reads the output first unless the reader that
    /// was given holds states already.
    /// @param programType  a LanqorInputData::ProgramType. The ion is atom 1 of a ZINDO output,
    ///                     the first lanthanide of a Gaussian output or of an ORCA TD-DFT output,
    ///                     the first yttrium of MOPAC INDO outputs, and the point charge of any
    ///                     other ORCA output.
    /// False with the reader's message when the output cannot be read, or when no lanthanide is
    /// among the atoms; what was read stays in getInputData(). A new call starts afresh. States
    /// that use orbitals which the output does not print are named in a message.
    bool calcRL(const int &programType);

    /// RL of state @p n (1-based, Angstrom); 0 for n = 0, for a state without printed
    /// orbitals and outside the list.
    double getSingletRL(const int &n) const;
    double getTripletRL(const int &n) const;
    /// Shortest distance from the ion to another atom; 1000 when there is none.
    double getMinDistanceLnLigand() const;
    /// Length of the list of triplet distances, its entry 0 included.
    int getStatesNumber() const;
    /// Number of the selected excited state: 1, the lowest excited singlet; 0 without singlets.
    int getSelExcitateState() const;
    /// Energy of state @p n (1-based), which must not exceed the count of its list.
    double getSingletEnergy(const int &n) const;
    double getTripletEnergy(const int &n) const;
    /// States of each kind in the output, entry 0 not counted.
    int getSingletStatesCount() const;
    int getTripletStatesCount() const;
    /// Distance of atom @p atom (1-based) from the ion; 0 outside the list.
    double getAtomDistance(const int &atom) const;
    int getAtomDistancesCount() const;
    /// What was read: the reader that was given, or one that the next calcRL replaces.
    const LanqorInputData *getInputData() const;
    /// Empty when @p complex, whose spherical coordinates are known, and the output hold as many
    /// atoms of every element, ions and dummy atoms aside, or when one of them holds no geometry;
    /// otherwise both compositions with their files.
    QString getCompositionMismatch(const LanqorInputData &complex) const;
    /// Empty when the coordinated atoms are as far from the ion in @p complex as among the ligands
    /// here, the nearest within 0.1 Angstrom and the others within 0.3; otherwise a question to
    /// the user that names two distances and the files.
    QString getComplexMismatch(const LanqorInputData &complex) const;

    /// From the ion to the nearest ligand atom of a complex whose spherical coordinates are known,
    /// dummy atoms aside, Angstrom; 0 without one.
    static double getShortestDistance(const LanqorInputData &complex);

    /// All of the last calcRL. When it failed, the states that were read and the reason.
    DonorStatesResults getResults() const;
    /// Both lists of states, and the excitations that make them up.
    static LanqorResultTables makeTables(const DonorStatesResults &results);

    /// Report: energies, wavelengths, oscillator strengths and RL of all states. Writes it to
    /// @p path and returns its text; empty when it cannot be written or before calcRL.
    QString createOutput(const QString &path);

private:
    friend class LanqorRLPrivate;

    std::unique_ptr<LanqorRLPrivate> d;
};
