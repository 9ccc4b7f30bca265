#pragma once

#include "input/excitedStates_p.h"
#include "input/lineReader_p.h"
#include "input/orbitalTable_p.h"
#include "input/textFields_p.h"

#include <QString>

#include <vector>

/// What an INDO/S job of MOPAC with single excitations (keywords INDO CIS and SINGLET or TRIPLET)
/// prints. One job gives the states of one multiplicity.
struct MopacIndoJob
{
    bool isIndo = false;
    QVector<Coord> atoms;     ///< Angstrom
    int doublyOccupied = 0;   ///< number of the HOMO, from 1; 0 for an open shell
    QString window;           ///< the line that names the orbitals of the excitations
    double printLimit = 0.04; ///< least coefficient of a printed configuration (WRTCONF)
    int multiplicity = 0;     ///< of configurations and states
    int configurationCount = 0;
    bool hasOtherExcitations = false;      ///< than single ones (CISD, MRCI)
    bool isReferenceGround = false;        ///< state 1 is the reference determinant alone
    QVector<MolecularOrbital> orbitals;    ///< by printed number less 1
    std::vector<double> orbitalEnergies;   ///< eV, likewise; not a number where not printed
    StateTable states;                     ///< excited ones; oscillator strengths of singlets
    QVector<QVector<double>> coefficients; ///< by state, by printed configuration, with sign
    bool isWhole = false;                  ///< all orbitals and the contributions to all states
    QString complaint;                     ///< why MOPAC refused the job

    bool hasStates() const { return !states.isEmpty(); }
};

/// Reads the output of such a job. Columns are those of MOPAC 22; of several jobs in a file the
/// last whole one counts.
class MopacIndoReader
{
public:
    explicit MopacIndoReader(const InputFile &file)
        : reader(file)
    {}

    /// False when the file cannot be opened.
    bool open() { return reader.open(); }
    MopacIndoJob read();

private:
    void takeLine(std::string_view line);
    void finishJob();
    void readGeometry();
    void readOrbitals(std::string_view numbers);
    bool readEnergies(const std::vector<int> &indices);
    bool readOrbitalRow(std::string_view line);
    void readConfigurations();
    bool readConfiguration(std::string_view line);
    void readStates();
    bool readState(std::string_view line);
    void readContributions();
    bool takeContribution();
    void readComplaint();

    LineReader reader;
    textFields::Fields fields;
    MopacIndoJob job;
    OrbitalTable table;
    std::vector<double> values;
    std::vector<std::pair<int, int>> configurations; // orbitals from 1; the reference has 0 and 0
    bool isDamaged = false;
    int describedState = 0; // whose configurations are being read, ground state 1
    int describedStates = 0;
};
