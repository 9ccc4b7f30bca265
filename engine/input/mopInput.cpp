#include "LanqorInputData.h"
#include "input/atomRows_p.h"
#include "input/lineReader_p.h"
#include "input/mopSymmetry_p.h"
#include "input/readerLimits_p.h"
#include "input/structureFiles_p.h"
#include "input/textFields_p.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>
#include <string>

namespace structureFiles {

namespace {

using textFields::Fields;

/// The lines of a MOPAC input that count: comments ("*" in the first column) are passed over.
class MopLines
{
public:
    explicit MopLines(const InputFile &file)
        : reader(file)
    {}

    bool open() { return reader.open(); }
    bool next()
    {
        while (reader.next()) {
            if (!textFields::startsWith(reader.line(), "*"))
                return true;
        }
        return false;
    }
    std::string_view line() const { return reader.line(); }
    qint64 lineNumber() const { return reader.lineNumber(); }

private:
    LineReader reader;
};

/// Reads the keywords and returns the number of title lines that follow: two, but a keyword line
/// that ends in "&" takes the place of one of them; one that ends in "+" is an extra line.
int readKeywordLines(MopLines &lines, QString &keywords)
{
    int titles = 2;
    Fields words;
    while (lines.next()) {
        keywords += textFields::toString(lines.line()) + QLatin1Char(' ');
        textFields::split(lines.line(), words);
        if (words.empty() || (words.back() != "+" && words.back() != "&"))
            break;
        if (words.back() == "&")
            --titles;
    }
    return titles;
}

/// A row of three bare values among rows with flags, or the other way round, is a damaged one.
bool isLike(const AtomRow &row, const AtomRow &first)
{
    const auto isCartesian = [](const AtomRow &r) { return r.valueCount == 3 && !r.hasReferences; };
    return !isCartesian(row) || !isCartesian(first) || row.hasFlags == first.hasFlags;
}

/// "Eu 0 0 0", which is the same with flags and without.
bool isBareOrigin(const AtomRow &row)
{
    return row.valueCount == 3 && !row.hasFlags && !row.hasReferences && row.atom.distance == 0.0 &&
           row.atom.angle == 0.0 && row.atom.dihedral == 0.0;
}

/// Rows up to a blank line or one of the old end mark "0".
bool readAtomRows(MopLines &lines, std::vector<AtomRow> &rows)
{
    Fields fields;
    std::string text;
    std::optional<AtomRow> pattern;
    while (lines.next()) {
        textFields::copyWithoutMarks(lines.line(), text);
        std::replace(text.begin(), text.end(), ',', ' ');
        textFields::split(text, fields);
        if (fields.empty() && rows.empty())
            continue;
        if (fields.empty() || fields[0] == "0")
            break;
        const std::optional<AtomRow> row = parseAtomRow(fields);
        if (!row || rows.size() == maximumAtoms)
            return false;
        if (!pattern && !isBareOrigin(*row))
            pattern = row;
        if (pattern && !isBareOrigin(*row) && !isLike(*row, *pattern))
            return false;
        rows.push_back(*row);
    }
    return true;
}

/// Relations up to a blank line; @p error is set when a line holds no relation, or there are more
/// of them than coordinates.
std::vector<SymmetryRelation> readRelations(MopLines &lines, std::size_t coordinates,
                                            QString &error)
{
    std::vector<SymmetryRelation> relations;
    Fields fields;
    std::string text;
    bool more = true;
    while (more && lines.next()) {
        text = lines.line();
        std::replace(text.begin(), text.end(), ',', ' ');
        textFields::split(text, fields);
        more = appendRelations(fields, lines.lineNumber(), relations, error);
        if (relations.size() > coordinates)
            error = textFields::toString(lines.line());
        more = more && error.isEmpty();
    }
    return relations;
}

/// Internal when an atom refers to another or, as only the first three may, has fewer than
/// three values.
bool isInternal(const std::vector<AtomRow> &rows)
{
    return std::any_of(rows.begin(), rows.end(), [](const AtomRow &row) {
        return (row.hasReferences || row.valueCount < 3) && !isTranslationVector(row.atom.label);
    });
}

/// One job of a MOPAC input.
struct Job
{
    QString keywords;
    std::vector<AtomRow> rows;
    QString error; ///< set when a row cannot be read
};

/// Sets the coordinates that follow from others.
QString applySymmetry(MopLines &lines, const QString &fileName, std::vector<AtomRow> &rows)
{
    QString error;
    const std::vector<SymmetryRelation> relations = readRelations(lines, 3 * rows.size(), error);
    if (!error.isEmpty())
        return unreadableLine(
            fileName, lines.lineNumber(),
            LanqorInputData::tr("a relation of the keyword SYMMETRY (numbers of a "
                                "reference atom, a function and dependent atoms)"));
    error = applyRelations(relations, isInternal(rows), rows);
    return error.isEmpty() ? error : error + fileName;
}

/// What becomes of the relations of the keyword SYMMETRY.
enum class Relations { Apply, AreApplied };

/// Reads the job that begins with the next line.
Job readJob(MopLines &lines, const QString &fileName, TranslationVectors vectors,
            Relations symmetry = Relations::Apply)
{
    Job job;
    for (int titles = readKeywordLines(lines, job.keywords); titles > 0; --titles)
        lines.next();
    if (!readAtomRows(lines, job.rows))
        job.error = unreadableLine(
            fileName, lines.lineNumber(),
            LanqorInputData::tr("an element with x, y, z, or with distance, angle, dihedral and "
                                "three reference atoms, all rows alike"));
    else if (job.rows.empty())
        job.error =
            LanqorInputData::tr("\nCannot find the atoms in the MOPAC input file: \n") + fileName;
    else if (symmetry == Relations::Apply && hasSymmetryKeyword(job.keywords))
        job.error = applySymmetry(lines, fileName, job.rows);
    if (vectors == TranslationVectors::Drop)
        job.rows.erase(
            std::remove_if(job.rows.begin(), job.rows.end(),
                           [](const AtomRow &row) { return isTranslationVector(row.atom.label); }),
            job.rows.end());
    return job;
}

Job readFirstJob(const InputFile &file, TranslationVectors vectors)
{
    MopLines lines(file);
    if (lines.open())
        return readJob(lines, file.fileName(), vectors);
    Job job;
    job.error = missingFile(file.fileName());
    return job;
}

/// Number behind the first keyword CHARGE=, as MOPAC reads it: blanks may precede it, and what
/// follows it is passed over.
std::optional<double> chargeOf(const QString &keywords)
{
    static const QRegularExpression pattern(
        QStringLiteral("(?:^|\\s)CHARGE= *([+-]?[0-9]+\\.?[0-9]*)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(keywords);
    return match.hasMatch() ? std::optional<double>(match.captured(1).toDouble()) : std::nullopt;
}

Structure structureOf(const Job &job, const QString &fileName)
{
    Structure structure;
    structure.error = job.error;
    structure.charge = chargeOf(job.keywords);
    if (!structure.error.isEmpty())
        return structure;
    const bool internal = isInternal(job.rows);
    QVector<int> cartesianRows; // behind the three atoms that make the frame a job may mix both
    for (const AtomRow &row : job.rows) {
        const CoordZMT &atom = row.atom;
        if (internal) {
            structure.zMatrix.append(atom);
            if (structure.zMatrix.size() > 3 && row.valueCount == 3 && !row.hasReferences)
                cartesianRows.append(structure.zMatrix.size());
        } else if (!isDummyAtom(atom.label))
            structure.atoms.append({atom.label, atom.distance, atom.angle, atom.dihedral});
    }
    if (internal)
        buildCartesian(structure, fileName, cartesianRows);
    return structure;
}

} // namespace

Structure readMop(const InputFile &file, TranslationVectors vectors)
{
    return structureOf(readFirstJob(file, vectors), file.fileName());
}

Structure readArc(const InputFile &file, TranslationVectors vectors)
{
    MopLines lines(file);
    Job job;
    job.error = missingFile(file.fileName());
    if (lines.open()) {
        job.error =
            LanqorInputData::tr("\nThe MOPAC archive file holds no FINAL GEOMETRY OBTAINED: \n") +
            file.fileName();
        while (lines.next()) {
            if (textFields::contains(lines.line(), "FINAL GEOMETRY OBTAINED"))
                job = readJob(lines, file.fileName(), vectors, Relations::AreApplied);
        }
    }
    Structure structure = structureOf(job, file.fileName());
    // An archive is the result of a job, whose charge was 0 unless its keywords told another.
    if (structure.error.isEmpty() && !structure.charge)
        structure.charge = 0.0;
    return structure;
}

Structure readZmt(const InputFile &file)
{
    Structure structure;
    LineReader reader(file);
    if (!reader.open()) {
        structure.error = missingFile(file.fileName());
        return structure;
    }
    Fields fields;
    while (reader.next()) {
        textFields::split(reader.line(), fields);
        if (fields.empty() && structure.zMatrix.isEmpty())
            continue;
        if (fields.empty())
            break;
        const std::optional<AtomRow> row = parseAtomRow(fields);
        if (!row || structure.zMatrix.size() == maximumAtoms) {
            structure.error = unreadableLine(
                file.fileName(), reader.lineNumber(),
                LanqorInputData::tr("an element with distance, angle, dihedral and three reference "
                                    "atoms"));
            return structure;
        }
        structure.zMatrix.append(row->atom);
    }
    if (structure.zMatrix.isEmpty())
        structure.error = LanqorInputData::tr("\nCannot find the atoms in the Z-matrix file: \n") +
                          file.fileName();
    else
        buildCartesian(structure, file.fileName());
    return structure;
}

bool readMopKeywords(const InputFile &file, QString &keywords)
{
    MopLines lines(file);
    if (!lines.open())
        return false;
    readKeywordLines(lines, keywords);
    return true;
}

bool readMopKind(const InputFile &file, bool &internal)
{
    const Job job = readFirstJob(file, TranslationVectors::Drop);
    internal = isInternal(job.rows);
    return job.error.isEmpty();
}

} // namespace structureFiles
