#include "input/xtbOutput_p.h"

#include "core/elements_p.h"
#include "input/readerLimits_p.h"
#include "input/structureFiles_p.h"

#include <cctype>

// The lines are those of xtb 6.5.1; all of version 6 print them alike.

namespace {

using textFields::contains;
using textFields::startsWith;

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Whether a printed value is no number. "NaN%" is the change of energy as a percentage of one
/// that is zero, as good runs have it in a first step.
bool holdsNaN(std::string_view line)
{
    constexpr std::string_view mark = "NaN";
    for (std::size_t at = line.find(mark); at != line.npos; at = line.find(mark, at + 1)) {
        const std::size_t end = at + mark.size();
        const bool isWord = (at == 0 || !isWordCharacter(line[at - 1])) &&
                            (end == line.size() || !isWordCharacter(line[end]));
        if (isWord && (end == line.size() || line[end] != '%'))
            return true;
    }
    return false;
}

/// The text behind the first colon.
std::string_view behindColon(std::string_view line)
{
    const std::size_t colon = line.find(':');
    return colon == line.npos ? std::string_view() : textFields::trimmed(line.substr(colon + 1));
}

/// A line of a box, ":: total charge  0.0 e ::", without its frame.
std::string_view withoutFrame(std::string_view line)
{
    constexpr std::string_view frame = " :|";
    const std::size_t first = line.find_first_not_of(frame);
    return first == line.npos ? std::string_view()
                              : line.substr(first, line.find_last_not_of(frame) - first + 1);
}

} // namespace

XtbOutput XtbOutputReader::read()
{
    while (reader.next())
        takeLine(reader.line());
    output.hasAtomTable = placedAtoms > 0 && placedAtoms == output.run.elements.size() &&
                          !output.run.elements.contains(QString());
    return output;
}

void XtbOutputReader::noteNaN(std::string_view line)
{
    if (output.lineOfNaN != 0 || !holdsNaN(line))
        return;
    output.lineOfNaN = reader.lineNumber();
    output.textOfNaN = textFields::toString(textFields::trimmed(withoutFrame(line))).simplified();
}

void XtbOutputReader::takeLine(std::string_view line)
{
    const std::string_view text = textFields::trimmed(line);
    if (text.empty())
        return;
    if (startsWith(text, "* xtb version ")) {
        output = XtbOutput();
        placedAtoms = 0;
        output.isXtb = true;
        textFields::split(text, fields);
        output.run.version = textFields::toString(fields.size() > 3 ? fields[3] : "");
    } else if (startsWith(text, "program call")) {
        takeCall(behindColon(text));
    } else if (startsWith(text, "coordinate file")) {
        return; // its name may hold any word
    } else if (startsWith(text, "ID ") && contains(text, " sym.") && contains(text, "atoms")) {
        readAtomTable();
    } else if (startsWith(text, "[ERROR]")) {
        readErrors();
    } else if (text == "final structure:") {
        readFinalStructure();
    } else {
        noteNaN(line);
        if (!takeSummary(withoutFrame(text)))
            takeSetup(withoutFrame(text));
    }
}

void XtbOutputReader::takeCall(std::string_view call)
{
    output.run.programCall = textFields::toString(call);
    textFields::split(call, fields);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string_view next = i + 1 < fields.size() ? fields[i + 1] : std::string_view();
        if (fields[i] == "--uhf" || fields[i] == "-u")
            output.run.unpairedElectrons = textFields::toInt(next);
        if (fields[i] == "--opt" || fields[i] == "-o" || fields[i] == "--ohess")
            output.asksForOptimisation = true;
    }
}

/// The numbers at the end of a calculation; those of the last one stay.
bool XtbOutputReader::takeSummary(std::string_view text)
{
    const auto read = [&](std::string_view name, double &value) {
        bool ok = false;
        value = textFields::numberAfter(text, name, &ok);
        return ok;
    };
    if (startsWith(text, "TOTAL ENERGY ")) {
        output.hasEnergy = read("TOTAL ENERGY", output.run.energy);
    } else if (startsWith(text, "GRADIENT NORM ")) {
        output.hasEnergy = read("GRADIENT NORM", output.run.gradientNorm) && output.hasEnergy;
    } else if (startsWith(text, "HOMO-LUMO GAP ")) {
        output.hasGap = read("HOMO-LUMO GAP", output.run.gap);
    } else if (startsWith(text, "total charge ")) {
        double charge = 0.0;
        if (read("total charge", charge))
            output.totalCharge = charge;
    } else if (startsWith(text, "* finished run on")) {
        output.isFinished = true;
    } else if (contains(text, "GEOMETRY OPTIMIZATION CONVERGED")) {
        output.hasConvergedGeometry = true;
    } else if (startsWith(text, "*** convergence criteria")) {
        output.hasConvergedScf = contains(text, " satisfied after ");
    } else {
        return false;
    }
    return true;
}

/// What the calculation is.
bool XtbOutputReader::takeSetup(std::string_view text)
{
    textFields::split(text, fields);
    const auto last = [&] { return textFields::toString(fields.back()); };
    if (startsWith(text, "G F N ")) {
        output.method = textFields::toString(text).remove(QLatin1Char(' '));
    } else if (startsWith(text, "Hamiltonian ")) {
        output.method = last();
    } else if (startsWith(text, "electronic temp.")) {
        output.run.electronicTemperature = textFields::numberAfter(text, "electronic temp.");
    } else if (startsWith(text, "* Solvation model:")) {
        output.run.solvent = QStringLiteral(" (%1)").arg(last());
    } else if (startsWith(text, "Solvent ") && output.run.solvent.startsWith(QLatin1Char(' ')) &&
               fields.size() == 2) {
        output.run.solvent.prepend(last());
    } else {
        return false;
    }
    return true;
}

/// "    2    8 O      2-5, 16, 59", which goes on in lines of numbers alone.
void XtbOutputReader::readAtomTable()
{
    output.run.elements.clear();
    placedAtoms = 0;
    QString element;
    while (reader.next() && !textFields::isBlank(reader.line())) {
        textFields::split(reader.line(), fields);
        const bool isNew = fields.size() > 3 && textFields::isInteger(fields[0]) &&
                           textFields::isInteger(fields[1]);
        if (isNew)
            element = textFields::toString(fields[2]);
        if (element.isEmpty() || !readAtomNumbers(isNew ? 3 : 0, element))
            return;
    }
}

/// Numbers and ranges from field @p first on; false when they are none or no table of atoms.
bool XtbOutputReader::readAtomNumbers(std::size_t first, const QString &element)
{
    for (std::size_t i = first; i < fields.size(); ++i) {
        std::string_view range = fields[i];
        if (range.back() == ',')
            range.remove_suffix(1);
        const std::size_t dash = range.find('-');
        bool ok = false;
        const int begin = textFields::toInt(range.substr(0, dash), &ok);
        const int end = dash == range.npos ? begin : textFields::toInt(range.substr(dash + 1));
        if (!ok || begin < 1 || end < begin || end > maximumAtoms ||
            placedAtoms + end - begin >= maximumAtoms)
            return false;
        QStringList &elements = output.run.elements;
        while (elements.size() < end)
            elements.append(QString());
        for (int atom = begin; atom <= end; ++atom)
            elements[atom - 1] = element;
        placedAtoms += end - begin + 1;
    }
    return true;
}

/// "[ERROR] Program stopped due to fatal error", then "-2- ..." and "-1- ...", the cause last.
void XtbOutputReader::readErrors()
{
    constexpr int mostErrors = 20;
    output.isXtb = true;
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (!startsWith(text, "-") || text.size() < 4)
            return reader.unread();
        const std::size_t end = text.find("- ", 1);
        const QString words = textFields::toString(
            end == text.npos ? text : textFields::trimmed(text.substr(end + 2)));
        if (output.errors.size() < mostErrors && !output.errors.contains(words))
            output.errors.append(words);
    }
}

/// A rule, the number of atoms, a title, then rows of symbol, x, y and z.
void XtbOutputReader::readFinalStructure()
{
    output.run.atoms.clear();
    if (!reader.next() || !reader.next())
        return;
    bool ok = false;
    const int count = textFields::toInt(reader.line(), &ok);
    if (!ok || count < 1 || count > maximumAtoms || !reader.next())
        return;
    QVector<Coord> atoms;
    while (atoms.size() < count && reader.next()) {
        textFields::split(reader.line(), fields);
        Coord atom;
        if (!structureFiles::readPosition(fields, 1, atom))
            return reader.unread();
        atom.label = elementLabel(textFields::toString(fields[0]));
        atoms.append(atom);
    }
    if (atoms.size() == count)
        output.run.atoms = atoms;
}
