#pragma once

#include "LanqorInputData.h"
#include "input/lineReader_p.h"

#include <QCoreApplication>

#include <optional>

namespace structureFiles {
struct Structure;
enum class Kind;
} // namespace structureFiles
struct ExcitedStates;
struct MopacIndoJob;

/// What a LanqorInputData has read, and the opening of its file when it is kept.
class LanqorInputDataPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorInputData)

public:
    LanqorInputDataPrivate(LanqorInputData &owner, const QString &fileName)
        : owner(owner)
        , fileName(fileName)
    {}

    /// The file for the reader that comes next: the opening that is kept, or one of its own.
    InputFile file() const { return keptFile ? *keptFile : InputFile(fileName); }

    bool readMopacOutput(const InputFile &file, bool keepTv);
    bool checkFormat(const InputFile &file, structureFiles::Kind kind);
    /// Keeps what a structure file holds; false with its error, if any.
    bool takeStructure(const structureFiles::Structure &structure, const QString &format);
    bool takeMol2(const structureFiles::Structure &structure);
    /// Keeps orbitals and states.
    void takeExcitedStates(const ExcitedStates &results);
    void takeSpectrum(const ExcitedStates &results);
    /// Reads one INDO job; false with its error when it does not hold states of @p multiplicity (0:
    /// of singlets or triplets).
    bool readMopacIndoJob(const QString &name, int multiplicity, MopacIndoJob &job);
    /// Reads the file of the object, whichever multiplicity it holds.
    bool readMopacIndoAlone();
    void takeMopacIndoJobs(const MopacIndoJob &singlets, const MopacIndoJob &triplets);
    QString missingCoordinatesMessage() const;

    LanqorInputData &owner;
    QString fileName;
    int molecule = 0; // of a crystal structure; 0: its only one
    std::optional<InputFile> keptFile;
    QString mopacCitation;
    QVector<double> atomicCharges;
    QVector<double> forceConstants;
    QVector<double> oscForceVector;
    QVector<double> energyVector;
    double chargeOnSystem = 0.0;
    bool isChargeTold = false;
    double finalHeat = 0.0;
    double ionPotential = 0.0;
    double dipole = 0.0;
    bool isOrcaTDDFT = false;
    int selExcitateState = 1;
    int coordNumber = 0;
    int excitedStateCount = 0;
    int homoMO = 0;
    int lumoMO = 0;
    int molecularOrbitalNumber = 0;
    QVector<MolecularOrbitalOCC> molecularOrbitalsOCC;
    QVector<MolecularOrbital> molecularOrbitals;
    QVector<ExcitateState> singletStates;
    QVector<ExcitateState> tripletStates;
    QVector<QVector<double>> singletWeights;
    QVector<QVector<double>> tripletWeights;
    QVector<QVector<double>> singletCoefficients;
    QVector<QVector<double>> tripletCoefficients;
    double excitationShare = 0.0; // of the window of MOPAC INDO
    QString tripletFileName;
    QVector<CoordZMT> coordZMT;
    QVector<Coord> coord;
    QVector<CoordSPH> coordSPH;
};
