#include "input/mopacOutput_p.h"

#include "input/readerLimits_p.h"

#include <algorithm>
#include <cstdlib>

using textFields::contains;
using textFields::isBlank;
using textFields::startsWith;
using textFields::trimmed;

namespace {

const QLatin1String citationOpening("MOPAC Program Reference\n\n");

/// A rule of asterisks closes the title box and frames the list of keywords. Old versions print
/// further characters behind it.
bool isRuleOfAsterisks(std::string_view text)
{
    constexpr std::size_t shortestRule = 20;
    return text.size() >= shortestRule &&
           text.find_first_not_of('*') >= shortestRule; // npos counts as beyond
}

std::string_view withoutFrame(std::string_view text)
{
    text = trimmed(text);
    while (!text.empty() && text.front() == '*')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == '*')
        text.remove_suffix(1);
    return trimmed(text);
}

/// " **                     **"
bool isBlankFrame(std::string_view text)
{
    text = trimmed(text);
    return startsWith(text, "**") && withoutFrame(text).empty();
}

/// "  ATOM NO.   TYPE          CHARGE      No. of ELECS. ...", in old versions "ATOM  ELECTRON
/// DENSITY" at its end; wider where the atoms have labels. The table of charges fitted to the
/// electrostatic potential has another distance between its titles and no electrons.
bool isHeadOfCharges(std::string_view line)
{
    return contains(line, "ATOM NO.   TYPE") ||
           (contains(line, "ATOM NO. ") && contains(line, " TYPE ") &&
            contains(line, "No. of ELECS."));
}

/// Texts on elements that the method lacks, where no report at the end of the output repeats them.
bool isLackOfParameters(std::string_view line)
{
    return contains(line, "DATA ARE NOT AVAILABLE FOR") ||
           contains(line, "Data are not available for") ||
           contains(line, "arameters for some elements are missing");
}

/// Text behind the first occurrence of @p marker; the line must hold it.
std::string_view behind(std::string_view line, std::string_view marker)
{
    return line.substr(line.find(marker) + marker.size());
}

/// Keywords of jobs that calculate at a given geometry; they may carry arguments.
bool isSinglePointKeyword(std::string_view word)
{
    word = word.substr(0, word.find_first_of("(="));
    std::string upper(word);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return upper == "1SCF" || upper == "0SCF" || upper == "FORCE" || upper == "FORCETS" ||
           upper == "THERMO";
}

} // namespace

/// "           NO. OF FILLED LEVELS    =         46".
bool isMopacFilledLevels(std::string_view line)
{
    return contains(line, "NO. OF FILLED LEVELS");
}

std::optional<int> mopacFilledLevels(std::string_view line)
{
    if (!isMopacFilledLevels(line))
        return std::nullopt;
    textFields::Fields parts;
    textFields::split(line, "=", parts);
    bool ok = false;
    const int number = parts.size() > 1 ? textFields::toInt(parts[1], &ok) : 0;
    return ok ? std::optional<int>(number) : std::nullopt;
}

std::optional<int> readMopacFilledLevels(const InputFile &file)
{
    LineReader reader(file);
    std::optional<int> number;
    for (bool more = reader.open(); more && !number; more = reader.next())
        number = mopacFilledLevels(reader.line());
    return number;
}

MopacOutputReader::MopacOutputReader(const InputFile &file, bool keepTranslationVectors)
    : reader(file)
    , keepTranslationVectors(keepTranslationVectors)
{}

MopacOutputReader::Status MopacOutputReader::read()
{
    while (reader.next() && !tooManyAtoms) {
        if (anyBlock) {
            const Status failure = failureOf(reader.line());
            if (failure != Status::Read) {
                chooseGeometry();
                return failure;
            }
        }
        examine(reader.line());
    }
    const Status geometry = chooseGeometry();
    found.complaint = job.complaint;
    if (tooManyAtoms)
        return Status::TooManyAtoms;
    if (geometry != Status::Read)
        return geometry;
    if (chargesCut)
        return Status::ChargesCut;
    return dipoleUnreadable ? Status::DipoleUnreadable : Status::Read;
}

MopacOutputReader::Status MopacOutputReader::failureOf(std::string_view line) const
{
    // "..., JOB CONTINUING" behind the first text counts as a failure too: the wave function
    // of the step was not self-consistent, whatever the job printed in the end.
    if (contains(line, "UNABLE TO ACHIEVE SELF-CONSISTENCE"))
        return Status::NoSelfConsistence;
    if (contains(line, "THE CALCULATION IS BEING DUMPED TO DISK"))
        return Status::DumpedToDisk;
    if (contains(line, "++++----**** FAILED TO ACHIEVE SCF. ****----++++"))
        return Status::ScfFailed;
    if (contains(line, "No parameters read in from"))
        return Status::NoParameters;
    return Status::Read;
}

void MopacOutputReader::examine(std::string_view line)
{
    if (trimmed(line) == "CARTESIAN COORDINATES") {
        readCoordinates();
        return;
    }
    if (contains(line, "CALCULATION RESULTS")) {
        // A title that comes for the first time behind a geometry heads no job: it ends one.
        if (!anyBlock || titlesHeadJobs)
            startJob();
        titlesHeadJobs = titlesHeadJobs || !anyBlock;
        return;
    }
    if (contains(line, "CHARGE ON SYSTEM"))
        readChargeOnSystem(line);
    if (!job.hasFirstBlock && !job.hasHeat && examineHeader(line))
        return;
    examineProgress(line);
    if (contains(line, "(ANGSTROMS)") && contains(line, "SYMBOL"))
        readGeometryEcho();
    else if (contains(line, "FINAL HEAT OF FORMATION"))
        readValue(behind(line, "FINAL HEAT OF FORMATION"), "KCAL", found.heatOfFormation);
    else if (contains(line, "IONIZATION POTENTIAL"))
        readValue(behind(line, "IONIZATION POTENTIAL"), "EV", found.ionPotential);
    else if (isHeadOfCharges(line))
        readCharges();
    else if (contains(line, "DIPOLE") && startsWith(trimmed(line), "DIPOLE") &&
             contains(line, "TOTAL"))
        readDipole();
}

// --- header of a job ---

void MopacOutputReader::startJob()
{
    passSystemOn();
    job = Job();
    ++jobNumber;
}

/// Gives the geometries of the job what was read of its system since.
void MopacOutputReader::passSystemOn()
{
    for (Block *const block : {&startBlock, finalBlock ? &*finalBlock : nullptr,
                               singlePointBlock ? &*singlePointBlock : nullptr}) {
        if (block && block->job == jobNumber)
            block->system = job.system;
    }
}

/// Notes how far the job has come.
void MopacOutputReader::examineProgress(std::string_view line)
{
    if (contains(line, "HEAT OF FORMATION")) {
        job.hasReachedScf = true;
        if (contains(line, "FINAL HEAT OF FORMATION")) {
            job.hasHeat = true;
            job.isTurned = false;
        }
    } else if (contains(line, "ROTATION MATRIX FOR ORIENTATION OF MOLECULE")) {
        job.isTurned = true;
    } else if (contains(line, " ELECTRONS ") || contains(line, "OCCUPIED LEVELS")) {
        readElectrons(line);
    } else if (contains(line, "Error and normal termination messages")) {
        readEndMessages();
    } else if (isLackOfParameters(line)) {
        addComplaint(trimmed(line));
    }
}

/// Unpaired electrons: "UHF CALCULATION, NO. OF ALPHA ELECTRONS =    5" ahead of the same of BETA,
/// or "NO. OF SINGLY OCCUPIED LEVELS =    1".
void MopacOutputReader::readElectrons(std::string_view line)
{
    const std::size_t sign = line.rfind('=');
    bool ok = sign != std::string_view::npos && reader.isLineComplete();
    const int number = ok ? textFields::toInt(trimmed(line.substr(sign + 1)), &ok) : 0;
    if (!ok)
        return;
    if (contains(line, "NO. OF ALPHA ELECTRONS"))
        job.system.alphaElectrons = number;
    else if (contains(line, "NO. OF BETA  ELECTRONS"))
        job.system.unpairedElectrons = std::abs(job.system.alphaElectrons - number);
    else if (contains(line, "SINGLY OCCUPIED LEVELS"))
        job.system.unpairedElectrons = number;
}

/// The box at the end of an output of newer versions: a line each message, the last of which is
/// "JOB ENDED NORMALLY" whatever happened.
void MopacOutputReader::readEndMessages()
{
    constexpr int longestBox = 50;
    for (int i = 0; i < longestBox && reader.next(); ++i) {
        const std::string_view text = trimmed(reader.line());
        if (!startsWith(text, "*") || isRuleOfAsterisks(text) || failureOf(text) != Status::Read) {
            reader.unread();
            return;
        }
        addComplaint(withoutFrame(text));
    }
}

void MopacOutputReader::addComplaint(std::string_view text)
{
    constexpr int longest = 400; // characters
    const QString sentence = textFields::toString(text).simplified();
    if (sentence.isEmpty() || sentence == QLatin1String("JOB ENDED NORMALLY") ||
        job.complaint.contains(sentence) || job.complaint.size() > longest)
        return;
    job.complaint +=
        (job.complaint.isEmpty() ? QString() : QStringLiteral(" / ")) + sentence.left(longest);
}

/// True when the line was the first of a block that has been read.
bool MopacOutputReader::examineHeader(std::string_view line)
{
    if (!found.citation &&
        (contains(line, "Cite this program as:") || contains(line, "Cite this work as:"))) {
        readCitation();
        return true;
    }
    const std::string_view text = trimmed(line);
    if (!found.citation && startsWith(text, "**") && contains(text, "MOPAC v"))
        versionLine = textFields::toString(withoutFrame(text));
    if (!found.citation && !versionLine.isEmpty() &&
        contains(text, "Digital Object Identifier (DOI):")) {
        found.citation = citationOpening;
        appendCitation(versionLine.toLatin1().toStdString());
        appendCitation(text);
        return true;
    }
    if (isRuleOfAsterisks(text)) {
        job.hasAsterisks = true;
        job.keywordsFollow = true;
        return false;
    }
    textFields::split(text, fields);
    if (startsWith(text, "*")) { // " *  1SCF       - DO 1 SCF AND THEN STOP"
        if (fields.size() > 2 && fields[0] == "*" && fields[2] == "-")
            noteKeywords({fields[1]});
    } else if (job.keywordsFollow) {
        noteKeywords(fields);
        job.keywordsFollow = !fields.empty() && (fields.back() == "+" || fields.back() == "&");
    } else if (!job.hasAsterisks) { // no frame tells keywords from other words
        noteKeywords(fields);
    }
    return false;
}

void MopacOutputReader::noteKeywords(const textFields::Fields &words)
{
    job.isSinglePoint =
        job.isSinglePoint || std::any_of(words.begin(), words.end(), isSinglePointKeyword);
}

void MopacOutputReader::readCitation()
{
    // The text may begin on the line of the marker, or behind a blank one; it ends at a further
    // blank one or at the rule that closes the title box, but blank lines frame the "AND" between
    // two references. "Days" (the term of a licence) ends the text of its line.
    constexpr int longestBox = 20; // lines; no version prints more than eleven
    found.citation = citationOpening;
    bool isBehindBlank = false;
    int lines = 0;
    do {
        const std::string_view line = reader.line();
        const bool isEnd = isBlank(line) || isRuleOfAsterisks(trimmed(line));
        const bool isAnd = withoutFrame(line) == "AND";
        if (isEnd || (isBehindBlank && !isAnd && *found.citation != citationOpening &&
                      !found.citation->endsWith(QLatin1String(" AND")) && !isBlankFrame(line))) {
            reader.unread();
            return;
        }
        isBehindBlank = isBlankFrame(line);
        appendCitation(line.substr(0, line.find("Days")));
    } while (++lines < longestBox && reader.next());
}

void MopacOutputReader::appendCitation(std::string_view text)
{
    QString part = textFields::toString(withoutFrame(text));
    for (const char *removed : {"Cite this program as:", "Cite this work as:", "(a) "})
        part.remove(QLatin1String(removed));
    part = part.simplified();
    if (part.isEmpty())
        return;
    if (!found.citation->endsWith(QLatin1Char('\n')))
        *found.citation += QLatin1Char(' ');
    *found.citation += part;
}

void MopacOutputReader::readChargeOnSystem(std::string_view line)
{
    const std::string_view text = behind(line, "CHARGE ON SYSTEM");
    // "= -3", or ": +1" where the program worked the charge out itself.
    const std::size_t sign = text.find_first_of("=:");
    if (sign == std::string_view::npos)
        return;
    textFields::split(text.substr(sign + 1), fields);
    bool ok = !fields.empty() && reader.isLineComplete();
    const double charge = ok ? textFields::toDouble(fields[0], &ok) : 0.0;
    if (ok)
        job.system.charge = charge;
}

// --- results ---

/// Value between "=" and its unit, "=   -175.21231 KCAL/MOL =   -733.08829 KJ/MOL"; old versions
/// print "KCAL =", "KCAL" alone or no unit. A line without a number leaves the value alone.
void MopacOutputReader::readValue(std::string_view text, std::string_view unit,
                                  std::optional<double> &value)
{
    text = trimmed(text);
    if (startsWith(text, "="))
        text.remove_prefix(1);
    const std::size_t end = text.find(unit);
    if (end == std::string_view::npos && !reader.isLineComplete())
        return; // a cut number
    textFields::split(text.substr(0, end), fields);
    if (fields.empty())
        return;
    bool ok = false;
    const double number = textFields::toDouble(fields[0], &ok);
    if (ok)
        value = number;
}

/// Rows of number, type, charge, electrons and populations; a sparkle has no populations.
void MopacOutputReader::readCharges()
{
    QVector<double> charges;
    bool ended = false;
    while (reader.next()) {
        if (contains(reader.line(), "(")) // a label, "O(HETATM    1  O   HOH A   1)"
            splitRow(reader.line());
        else
            textFields::split(reader.line(), fields);
        bool ok = fields.size() > 2 && textFields::isInteger(fields[0]) &&
                  (reader.isLineComplete() || fields.size() > 3) && charges.size() < maximumAtoms;
        const double charge = ok ? textFields::toDouble(fields[2], &ok) : 0.0;
        if (!ok) {
            ended = reader.isLineComplete();
            reader.unread();
            break;
        }
        charges.append(charge);
    }
    if (!charges.isEmpty())
        found.charges = charges;
    chargesCut = !ended && charges.size() < job.firstBlockAtoms;
}

/// Below the title: POINT-CHG., HYBRID and SUM, each with x, y, z and the total.
void MopacOutputReader::readDipole()
{
    constexpr int longestTable = 6;
    dipoleUnreadable = true;
    for (int i = 0; i < longestTable && reader.next(); ++i) {
        if (isBlank(reader.line()) || failureOf(reader.line()) != Status::Read) {
            reader.unread();
            return;
        }
        if (!contains(reader.line(), "SUM"))
            continue;
        textFields::split(reader.line(), fields);
        if (fields.size() < 5 ||
            (!reader.isLineComplete() &&
             textFields::decimalsOf(fields.back()) != textFields::decimalsOf(fields[1])))
            return;
        bool ok = false;
        const double total = textFields::toDouble(fields.back(), &ok);
        if (ok) {
            found.dipole = total;
            dipoleUnreadable = false;
        }
        return;
    }
}
