#include "input/structureFiles_p.h"

#include "LanqorInputData.h"
#include "core/elements_p.h"
#include "input/fileFormats_p.h"
#include "input/lineReader_p.h"
#include "input/mol2File_p.h"
#include "input/readerLimits_p.h"
#include "input/textFields_p.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace structureFiles {

namespace {

using fileFormats::Format;
using textFields::Fields;

Structure failed(const QString &error)
{
    Structure structure;
    structure.error = error;
    return structure;
}

Kind kindBySuffix(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == QLatin1String("out"))
        return Kind::MopacOutput;
    if (suffix == QLatin1String("arc"))
        return Kind::MopacArchive;
    if (suffix == QLatin1String("mop"))
        return Kind::Mop;
    if (suffix == QLatin1String("zmt"))
        return Kind::Zmt;
    if (suffix == QLatin1String("xyz"))
        return Kind::Xyz;
    if (suffix == QLatin1String("mol2"))
        return Kind::Mol2;
    if (suffix == QLatin1String("cif"))
        return Kind::Cif;
    if (suffix == QLatin1String("pdb") || suffix == QLatin1String("ent"))
        return Kind::Pdb;
    return Kind::Unknown;
}

bool isZmtRow(const Fields &fields)
{
    return fields.size() == 7 && !textFields::isInteger(fields[0]) &&
           textFields::isInteger(fields[4]) && textFields::isInteger(fields[5]) &&
           textFields::isInteger(fields[6]) && textFields::decimalsOf(fields[2]) >= 0;
}

} // namespace

bool readPosition(const Fields &fields, std::size_t first, Coord &atom)
{
    if (fields.size() < first + 3)
        return false;
    bool ok[3] = {};
    atom.x = textFields::toDouble(fields[first], &ok[0]);
    atom.y = textFields::toDouble(fields[first + 1], &ok[1]);
    atom.z = textFields::toDouble(fields[first + 2], &ok[2]);
    return ok[0] && ok[1] && ok[2];
}

QString unreadableLine(const QString &fileName, qint64 lineNumber, const QString &expected)
{
    return LanqorInputData::tr("\nLine %1 of the structure file cannot be read; %2 should stand "
                               "there: \n")
               .arg(QString::number(lineNumber), expected) +
           fileName;
}

QString impossibleAtom(const QString &fileName, qint64 lineNumber, const QString &name,
                       const Coord &atom)
{
    constexpr double largestCoordinate = 1e4; // Angstrom
    const double largest = std::max({std::abs(atom.x), std::abs(atom.y), std::abs(atom.z)});
    QString fault;
    if (!isAtomLabel(atom.label))
        fault = LanqorInputData::tr("\"%1\" is no element").arg(name);
    else if (largest > largestCoordinate)
        fault = LanqorInputData::tr("the atom \"%1\" has a coordinate of %2 Angstrom, beyond %3")
                    .arg(name, QString::number(largest), QString::number(largestCoordinate));
    return fault.isEmpty() ? fault
                           : LanqorInputData::tr("\nLine %1 of the structure file: %2: \n%3")
                                 .arg(QString::number(lineNumber), fault, fileName);
}

Kind kindOf(const InputFile &file)
{
    const Kind bySuffix = kindBySuffix(file.fileName());
    if (bySuffix != Kind::Unknown)
        return bySuffix;
    switch (fileFormats::formatOf(file)) {
    case Format::MopacOutput:
        return Kind::MopacOutput;
    case Format::MopacArchive:
        return Kind::MopacArchive;
    case Format::Xyz:
        return Kind::Xyz;
    case Format::Mol2:
        return Kind::Mol2;
    case Format::Cif:
        return Kind::Cif;
    case Format::Pdb:
        return Kind::Pdb;
    case Format::MopacInput:
        return Kind::Mop;
    case Format::Unknown:
        break;
    default:
        return Kind::Unknown;
    }
    LineReader reader(file);
    Fields fields;
    if (reader.open() && reader.next())
        textFields::split(reader.line(), fields);
    bool isInternal = false;
    return isZmtRow(fields) ? Kind::Zmt : readMopKind(file, isInternal) ? Kind::Mop : Kind::Unknown;
}

Structure readXyz(const InputFile &file)
{
    LineReader reader(file);
    if (!reader.open())
        return failed(missingFile(file.fileName()));
    const int count = reader.next() ? textFields::toInt(reader.line()) : 0;
    if (count < 1 || count > maximumAtoms)
        return failed(LanqorInputData::tr("\nThe first line of the .xyz file is not a number of "
                                          "atoms from 1 to %1: \n")
                          .arg(maximumAtoms) +
                      file.fileName());
    Structure structure;
    Fields fields;
    reader.next(); // the title
    while (structure.atoms.size() < count && reader.next()) {
        textFields::split(reader.line(), fields);
        Coord atom;
        if (!readPosition(fields, 1, atom)) {
            structure.error = unreadableLine(
                file.fileName(), reader.lineNumber(),
                LanqorInputData::tr("an element and its x, y and z (decimal points, no commas)"));
            return structure;
        }
        const QString name = textFields::toString(fields[0]);
        atom.label = elementLabel(name);
        structure.error = impossibleAtom(file.fileName(), reader.lineNumber(), name, atom);
        if (!structure.error.isEmpty())
            return structure;
        structure.atoms.append(atom);
    }
    if (structure.atoms.size() < count)
        structure.error =
            LanqorInputData::tr("\nThe .xyz file announces %1 atoms and holds %2: \n")
                .arg(QString::number(count), QString::number(structure.atoms.size())) +
            file.fileName();
    return structure;
}

Structure readMol2(const InputFile &file)
{
    Mol2Reader reader(file);
    if (!reader.open())
        return failed(missingFile(file.fileName()));
    Mol2Molecule molecule;
    if (!reader.next(molecule))
        return failed(
            LanqorInputData::tr("\nCannot find the atoms (@<TRIPOS>ATOM) in the MOL2 file: \n") +
            file.fileName());
    Structure structure;
    structure.atoms = molecule.atoms;
    structure.residues = molecule.residues;
    structure.error = molecule.error;
    return structure;
}

} // namespace structureFiles
