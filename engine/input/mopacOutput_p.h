#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordZMT.h>

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QString>
#include <QVector>

#include <optional>
#include <string>

/// What a MOPAC text output holds, apart from orbitals and force constants. Values that the
/// output does not print stay empty; those of a later job replace those of an earlier one.
struct MopacResults
{
    std::optional<QString> citation;
    std::optional<double> chargeOnSystem;  ///< elementary charges, of the job of the geometry
    std::optional<double> heatOfFormation; ///< kcal/mol
    std::optional<double> ionPotential;    ///< eV
    std::optional<double> dipole;          ///< debye
    QVector<double> charges;               ///< net atomic charges, in atom order
    QVector<Coord> atoms;                  ///< final geometry
    int atomCount = 0;                     ///< of it, without translation vectors
    QVector<CoordZMT> zMatrix;             ///< its Z-matrix when the job used one
    int unpairedElectrons = 0;             ///< of the job of the geometry
    QString complaint; ///< what MOPAC reports to have gone wrong in the last job
};

/// The line that tells the number of doubly occupied orbitals of a closed shell.
bool isMopacFilledLevels(std::string_view line);
/// Its number; nothing on any other line, and when it is no number.
std::optional<int> mopacFilledLevels(std::string_view line);
/// The first such number of a file.
std::optional<int> readMopacFilledLevels(const InputFile &file);

/// Reads a MOPAC text output (versions 7, 2002, 2012, 2016, 22) in one pass.
///
/// An output holds one or more jobs, each headed by a "CALCULATION RESULTS" title (old versions
/// print none). Every job prints its starting geometry; an optimisation and, in newer versions,
/// a single point print the final geometry as a further block under the same title. The final
/// geometry of the file is the last block that is not the first of its job, or that stands behind
/// its heat of formation (NOXYZ and labels of atoms leave out the starting block); single-point and
/// force jobs, which may print no further block, are served by their first. A block in the frame of
/// a polarisability (POLAR, STATIC) is turned against charges and orbitals, and passed over.
class MopacOutputReader
{
public:
    enum class Status {
        Read,
        NoSelfConsistence,
        DumpedToDisk,
        ScfFailed,
        NoParameters,
        DiedBeforeScf,
        NoCoordinates,
        NoFinalCoordinates,
        TooManyAtoms,
        ChargesCut,
        DipoleUnreadable,
    };

    /// @param keepTranslationVectors  keeps "Tv" rows as atoms; those of MOPAC 22 stand in the
    ///                                echo of the input ahead of the block alone
    MopacOutputReader(const InputFile &file, bool keepTranslationVectors);

    bool open() { return reader.open(); }
    /// Reads the opened file to its end or to the first sign of a failed job.
    Status read();
    /// What was read, whatever read() returned.
    const MopacResults &results() const { return found; }

private:
    struct System
    {
        std::optional<double> charge;
        int alphaElectrons = 0;
        int unpairedElectrons = 0;
    };
    struct Block
    {
        QVector<Coord> atoms;
        QVector<CoordZMT> zMatrix;
        int atomCount = 0; // without translation vectors
        bool intact = true;
        System system;
        int job = 0;
    };
    struct Job
    {
        bool hasAsterisks = false; // a framed header was seen
        bool keywordsFollow = false;
        bool isSinglePoint = false; // keywords that end a job without a new geometry
        bool hasFirstBlock = false;
        bool hasHeat = false;
        bool hasReachedScf = false;
        bool isTurned = false; // by the rotation that a table ahead of the block prints
        int firstBlockAtoms = 0;
        System system;
        QString complaint;
        std::optional<int> echoedAtoms;
        QVector<CoordZMT> zMatrix;
        QVector<Coord> translationVectors;
    };
    enum class RowKind { Row, Broken, Other };

    Status failureOf(std::string_view line) const;
    void examine(std::string_view line);
    bool examineHeader(std::string_view line);
    void noteKeywords(const textFields::Fields &words);
    void startJob();
    void passSystemOn();
    void examineProgress(std::string_view line);
    void readElectrons(std::string_view line);
    void readEndMessages();
    void addComplaint(std::string_view text);
    void readCitation();
    void appendCitation(std::string_view text);
    void readChargeOnSystem(std::string_view line);
    void readValue(std::string_view text, std::string_view unit, std::optional<double> &value);
    void readCharges();
    void readDipole();
    void readCoordinates();
    RowKind readCoordinateRow(Coord &atom);
    void readGeometryEcho();
    void noteTranslationVectors(const QVector<Coord> &cartesian, const QVector<CoordZMT> &zMatrix);
    bool readZMatrixRow(CoordZMT &zRow);
    void keepBlock(Block &&block);
    Status chooseGeometry();
    void splitRow(std::string_view line);

    LineReader reader;
    bool keepTranslationVectors;
    MopacResults found;
    textFields::Fields fields;
    std::string row; // the line without optimisation marks and atom tags
    Job job;
    int jobNumber = 0;
    QString versionLine; // of the title box
    bool anyBlock = false;
    bool titlesHeadJobs = false;
    bool tooManyAtoms = false;
    bool chargesCut = false;
    bool dipoleUnreadable = false;
    Block startBlock;                      // first block of the last job
    std::optional<Block> singlePointBlock; // of the last single-point or force job
    std::optional<Block> finalBlock;
    int finalBlockExpectedAtoms = 0;
};
