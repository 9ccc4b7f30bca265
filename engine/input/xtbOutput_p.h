#pragma once

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <LanqorEngine/XtbRunResults.h>

#include <QString>
#include <QStringList>

#include <optional>

/// What the output of xtb tells, without judgement.
struct XtbOutput
{
    XtbRunResults run;
    QString method; ///< "GFN1-xTB"; empty when none is printed
    std::optional<double> totalCharge;
    bool hasEnergy = false; ///< and gradient norm, each a number
    bool hasGap = false;
    bool asksForOptimisation = false;
    bool hasConvergedGeometry = false;
    bool hasConvergedScf = true; ///< the last one
    bool isFinished = false;
    bool hasAtomTable = false; ///< of all atoms, each once
    qint64 lineOfNaN = 0;      ///< the first line with a value that is no number; 0 for none
    QString textOfNaN;         ///< that line
    QStringList errors;        ///< what xtb says of its failure, the cause last
    bool isXtb = false;        ///< begins like an output of xtb, or has its errors
};

/// Reads the output of xtb 6; of several runs in a file the last one counts.
class XtbOutputReader
{
public:
    explicit XtbOutputReader(const InputFile &file)
        : reader(file)
    {}

    /// False when the file cannot be opened.
    bool open() { return reader.open(); }
    XtbOutput read();

private:
    void takeLine(std::string_view line);
    void takeCall(std::string_view call);
    bool takeSummary(std::string_view text);
    bool takeSetup(std::string_view text);
    void noteNaN(std::string_view line);
    void readAtomTable();
    bool readAtomNumbers(std::size_t first, const QString &element);
    void readErrors();
    void readFinalStructure();

    LineReader reader;
    textFields::Fields fields;
    XtbOutput output;
    int placedAtoms = 0;
};
