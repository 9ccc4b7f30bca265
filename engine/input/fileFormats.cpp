#include "input/fileFormats_p.h"

#include "LanqorInputData.h"
#include "input/textFields_p.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace fileFormats {

namespace {

using textFields::contains;
using textFields::Fields;
using textFields::startsWith;

struct Mark
{
    std::string_view text;
    Format format;
};

constexpr Mark programMarks[] = {
    {"* O   R   C   A *", Format::OrcaOutput},
    {"CARTESIAN COORDINATES (ANGSTROEM)", Format::OrcaOutput},
    {"EXCITED STATES (SINGLETS)", Format::OrcaOutput},
    {"Entering Gaussian System", Format::GaussianOutput},
    {"This is part of the Gaussian", Format::GaussianOutput},
    {"Coordinates (Angstroms)", Format::GaussianOutput},
    {"Excitation energies and oscillator strengths:", Format::GaussianOutput},
    {"Molecular Orbital Coefficients", Format::GaussianOutput},
    {"ZINDO  -  A semi-empirical program", Format::ZindoOutput},
    {"CTR AT.NO. VAL.CHG. CORE CHG.", Format::ZindoOutput},
    {"RHF/ROHF - MOs follow", Format::ZindoOutput},
};

/// Of other files, at the beginning of a line without its blanks.
constexpr Mark lineStarts[] = {
    {"@<TRIPOS>", Format::Mol2},
    {"_cell_length_a", Format::Cif},
    {"_atom_site_", Format::Cif},
    {"Northwest Computational Chemistry Package", Format::NwchemOutput},
    {"* xtb version", Format::XtbOutput},
    {"[Molden Format]", Format::Molden},
};

template <std::size_t count, class Test> Format firstMark(const Mark (&marks)[count], Test isMark)
{
    const auto found = std::find_if(std::begin(marks), std::end(marks), isMark);
    return found == std::end(marks) ? Format::Unknown : found->format;
}

Format markedFormat(std::string_view line)
{
    const Format program = markedProgram(line);
    if (program != Format::Unknown)
        return program;
    const std::string_view text = textFields::trimmed(line);
    if (contains(line, "CALCULATION RESULTS") || text == "CARTESIAN COORDINATES")
        return Format::MopacOutput;
    if (contains(line, "SUMMARY OF ") && contains(line, " CALCULATION"))
        return Format::MopacArchive;
    return firstMark(lineStarts, [text](const Mark &mark) { return startsWith(text, mark.text); });
}

/// Row of an .xyz file: label, x, y, z. One of a Z-matrix has flags or references between or
/// behind its numbers.
bool isXyzRow(const Fields &fields)
{
    return fields.size() == 4 || (fields.size() > 4 && !textFields::isInteger(fields[2]) &&
                                  !textFields::isInteger(fields[3]));
}

/// A keyword line of MOPAC names its method, or the sparkles of lanthanide ions.
bool hasMopacKeyword(const Fields &fields)
{
    constexpr std::string_view keywords[] = {"AM1", "PM3",  "PM5",   "PM6",    "PM7",
                                             "RM1", "MNDO", "MNDOD", "SPARKLE"};
    return std::any_of(fields.begin(), fields.end(), [&](std::string_view field) {
        return std::find(std::begin(keywords), std::end(keywords), field) != std::end(keywords);
    });
}

/// What several lines tell together.
class Signs
{
public:
    void take(std::string_view line, qint64 number)
    {
        textFields::split(line, fields);
        const bool isBlank = fields.empty();
        // Outputs of old programs hold some as well, in the place of blanks.
        hasNull = hasNull || line.find('\0') != std::string_view::npos;
        if (number == 1)
            startsWithNumber = fields.size() == 1 && textFields::isInteger(fields[0]);
        if (number == 3)
            isXyz = startsWithNumber && isXyzRow(fields);
        isMol = isMol || (number == 4 && (contains(line, " V2000") || contains(line, " V3000")));
        if (startsWith(line, "HETATM") || startsWith(line, "ATOM  "))
            ++pdbRows;
        takeJobInput(line, isBlank);
    }

    /// True for a line that may hold any words: the title of an .xyz file or a MOPAC input.
    bool isTitle(qint64 number) const
    {
        return (startsWithNumber && number == 2) || (hasMopacKeywords && number <= 4);
    }

    Format format() const
    {
        constexpr int fewestPdbRows = 2;
        if (isXyz)
            return Format::Xyz;
        if (isMol)
            return Format::Mol;
        if (pdbRows >= fewestPdbRows)
            return Format::Pdb;
        if (hasRoute && hasChargeAndMultiplicity)
            return Format::GaussianInput;
        if (hasOrcaKeywords && hasOrcaAtoms)
            return Format::OrcaInput;
        if (hasMopacKeywords)
            return Format::MopacInput;
        return hasNull ? Format::Binary : Format::Unknown;
    }

private:
    /// A Gaussian job has "%" lines and a route that starts with "#" ahead of its title and the
    /// line of charge and multiplicity, an ORCA job keywords behind "!" and atoms behind "*xyz".
    void takeJobInput(std::string_view line, bool isBlank)
    {
        if (isBlank)
            return;
        hasMopacKeywords =
            hasMopacKeywords || (!hasText && !startsWith(line, "*") && hasMopacKeyword(fields));
        hasOrcaKeywords = hasOrcaKeywords || startsWith(fields[0], "!");
        hasOrcaAtoms = hasOrcaAtoms || startsWith(fields[0], "*xyz") ||
                       startsWith(fields[0], "*int") ||
                       (fields[0] == "*" && fields.size() > 1 &&
                        (fields[1] == "xyz" || fields[1] == "int" || fields[1] == "xyzfile"));
        hasRoute = hasRoute || (!hasText && startsWith(fields[0], "#"));
        hasChargeAndMultiplicity = hasChargeAndMultiplicity ||
                                   (hasRoute && fields.size() % 2 == 0 &&
                                    std::all_of(fields.begin(), fields.end(),
                                                [](auto f) { return textFields::isInteger(f); }));
        hasText = hasText ||
                  !(startsWith(line, "%") || startsWith(line, "*") || startsWith(fields[0], "#"));
    }

    Fields fields;
    bool hasNull = false;
    bool startsWithNumber = false;
    bool isXyz = false;
    bool isMol = false;
    int pdbRows = 0;
    bool hasText = false; ///< other than lines behind "%", "#" and "*"
    bool hasMopacKeywords = false;
    bool hasRoute = false;
    bool hasChargeAndMultiplicity = false;
    bool hasOrcaKeywords = false;
    bool hasOrcaAtoms = false;
};

} // namespace

Format markedProgram(std::string_view line)
{
    return firstMark(programMarks, [line](const Mark &mark) { return contains(line, mark.text); });
}

Format formatOf(const InputFile &file)
{
    constexpr int linesLookedAt = 400; // the title of any output is shorter
    LineReader reader(file);
    Signs signs;
    if (!reader.open()) {
        const QFileInfo info(file.fileName());
        return info.isDir()                      ? Format::Folder
               : info.exists() && !info.isFile() ? Format::NoRegularFile
                                                 : Format::Unknown;
    }
    while (reader.lineNumber() < linesLookedAt && reader.next()) {
        const std::string_view line = reader.line();
        const Format format =
            signs.isTitle(reader.lineNumber()) ? Format::Unknown : markedFormat(line);
        if (format != Format::Unknown)
            return format;
        signs.take(line, reader.lineNumber());
    }
    return signs.format();
}

QString description(Format format)
{
    switch (format) {
    case Format::Unknown:
        break;
    case Format::MopacOutput:
        return LanqorInputData::tr("a MOPAC output");
    case Format::MopacArchive:
        return LanqorInputData::tr("a MOPAC archive (.arc)");
    case Format::MopacInput:
        return LanqorInputData::tr("a MOPAC input (.mop)");
    case Format::OrcaOutput:
        return LanqorInputData::tr("an ORCA output");
    case Format::GaussianOutput:
        return LanqorInputData::tr("a Gaussian output");
    case Format::ZindoOutput:
        return LanqorInputData::tr("a ZINDO output");
    case Format::NwchemOutput:
        return LanqorInputData::tr("an NWChem output");
    case Format::XtbOutput:
        return LanqorInputData::tr("an xtb output");
    case Format::GaussianInput:
        return LanqorInputData::tr("a Gaussian input");
    case Format::OrcaInput:
        return LanqorInputData::tr("an ORCA input");
    case Format::Xyz:
        return LanqorInputData::tr("an .xyz file");
    case Format::Mol2:
        return LanqorInputData::tr("a .mol2 file");
    case Format::Mol:
        return LanqorInputData::tr("a MOL file (.mol or .sdf)");
    case Format::Cif:
        return LanqorInputData::tr("a crystal structure (CIF)");
    case Format::Pdb:
        return LanqorInputData::tr("a PDB file");
    case Format::Molden:
        return LanqorInputData::tr("a Molden file");
    case Format::Binary:
        return LanqorInputData::tr("a binary file");
    case Format::Folder:
        return LanqorInputData::tr("a folder");
    case Format::NoRegularFile:
        return LanqorInputData::tr("no regular file");
    }
    return QString();
}

} // namespace fileFormats
