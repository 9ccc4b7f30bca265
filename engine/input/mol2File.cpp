#include "input/mol2File_p.h"

#include "LanqorInputData.h"
#include "core/elements_p.h"
#include "input/readerLimits_p.h"
#include "input/structureFiles_p.h"

namespace structureFiles {

namespace {

/// Element of an atom whose type is in small letters, as force fields write it: types begin with
/// the symbol, mostly of one letter ("ca" is an aromatic carbon, "ho" a hydroxyl hydrogen). The
/// name tells it where both begin alike: one whose second letter is small is a symbol ("Ca1",
/// "Eu1"), one in capitals may go on with a place ("CA", "HO5") unless its first letter is none.
/// Empty when name and type differ.
QString elementOfForceFieldType(const QString &type, const QString &name)
{
    if (type.left(1) != name.left(1).toLower())
        return QString();
    const QString fromName = elementLabel(name);
    const QString fromLetter = elementLabel(name.left(1));
    if (type == QLatin1String("cl") || type == QLatin1String("br"))
        return elementLabel(type);
    if (atomicNumberOf(fromLetter) == 0 || name.mid(1, 1).toUpper() != name.mid(1, 1))
        return atomicNumberOf(fromName) > 0 ? fromName : QString();
    return fromLetter;
}

QString elementOf(const QString &type, const QString &name)
{
    const QString root = type.section(QLatin1Char('.'), 0, 0);
    if (!root.left(1).isUpper()) {
        const QString element = elementOfForceFieldType(root, name);
        return element.isEmpty() ? root : element;
    }
    const QString fromType = elementLabel(root);
    const QString fromName = elementLabel(name);
    return atomicNumberOf(fromType) == 0 && atomicNumberOf(fromName) > 0 ? fromName : fromType;
}

/// How many different residues the atoms belong to.
int calculateResiduesNumber(QStringList residues)
{
    residues.removeDuplicates();
    return residues.size();
}

} // namespace

Mol2Reader::Mol2Reader(const InputFile &file)
    : reader(file)
{}

bool Mol2Reader::next(Mol2Molecule &molecule)
{
    molecule = Mol2Molecule();
    indexOfNumber.clear();
    announcedAtoms = 0;
    while (reader.next()) {
        const std::string_view line = textFields::trimmed(reader.line());
        const bool startsMolecule = line == "@<TRIPOS>MOLECULE";
        const bool startsAtoms = line == "@<TRIPOS>ATOM";
        if (!molecule.atoms.isEmpty() && (startsMolecule || startsAtoms)) {
            reader.unread();
            break;
        }
        if (startsMolecule)
            readHeader();
        else if (startsAtoms)
            readAtoms(molecule);
        else if (line == "@<TRIPOS>BOND")
            readBonds(molecule);
        if (!molecule.error.isEmpty())
            return true;
    }
    if (molecule.atoms.size() < announcedAtoms)
        molecule.error =
            LanqorInputData::tr("\nThe MOL2 file announces %1 atoms and holds %2: \n")
                .arg(QString::number(announcedAtoms), QString::number(molecule.atoms.size())) +
            reader.fileName();
    return !molecule.atoms.isEmpty() || !molecule.error.isEmpty();
}

Mol2Reader::Row Mol2Reader::nextRow()
{
    if (!reader.next())
        return Row::EndOfSection;
    if (textFields::startsWith(reader.line(), "@<TRIPOS>")) {
        reader.unread();
        return Row::EndOfSection;
    }
    textFields::split(reader.line(), fields);
    return fields.empty() || textFields::startsWith(fields[0], "#") ? Row::Skipped : Row::Data;
}

/// The name of the molecule stands on the first line, the number of its atoms on the second.
void Mol2Reader::readHeader()
{
    announcedAtoms = 0;
    if (!reader.next() || !reader.next())
        return;
    textFields::split(reader.line(), fields);
    if (!fields.empty())
        announcedAtoms = textFields::toInt(fields[0]);
}

/// Rows of number, name, x, y, z, type and, mostly, number and name of the residue.
void Mol2Reader::readAtoms(Mol2Molecule &molecule)
{
    QStringList residues; // of the atoms
    for (Row row = nextRow(); row != Row::EndOfSection; row = nextRow()) {
        if (row == Row::Skipped)
            continue;
        Coord atom;
        if (fields.size() < 6 || !readPosition(fields, 2, atom) ||
            molecule.atoms.size() == maximumAtoms) {
            molecule.error = unreadableLine(
                reader.fileName(), reader.lineNumber(),
                LanqorInputData::tr("the number, name, x, y, z and type of an atom"));
            return;
        }
        const QString name = textFields::toString(fields[1]);
        const QString type = textFields::toString(fields[5]);
        atom.label = elementOf(type, name);
        molecule.error = impossibleAtom(reader.fileName(), reader.lineNumber(),
                                        name + QLatin1Char(' ') + type, atom);
        if (!molecule.error.isEmpty())
            return;
        const int number = textFields::toInt(fields[0]);
        if (indexOfNumber.contains(number))
            molecule.bondError =
                LanqorInputData::tr("\nAtom number %1 stands twice in the MOL2 file: \n")
                    .arg(number) +
                reader.fileName();
        indexOfNumber.insert(number, molecule.atoms.size());
        molecule.atoms.append(atom);
        molecule.atomNames.append(name);
        molecule.atomTypes.append(type);
        if (fields.size() > 6)
            residues.append(textFields::toString(fields[6]));
    }
    molecule.residues = calculateResiduesNumber(residues);
}

/// Rows of number, the numbers of two atoms and the type.
void Mol2Reader::readBonds(Mol2Molecule &molecule)
{
    for (Row row = nextRow(); row != Row::EndOfSection; row = nextRow()) {
        if (row == Row::Skipped)
            continue;
        bool ok[2] = {};
        const int first = fields.size() > 2 ? textFields::toInt(fields[1], &ok[0]) : 0;
        const int second = fields.size() > 2 ? textFields::toInt(fields[2], &ok[1]) : 0;
        if (!ok[0] || !ok[1] || !indexOfNumber.contains(first) || !indexOfNumber.contains(second) ||
            first == second) {
            if (molecule.bondError.isEmpty())
                molecule.bondError = unreadableLine(
                    reader.fileName(), reader.lineNumber(),
                    LanqorInputData::tr("the number of a bond, its two atoms and its type"));
            continue;
        }
        molecule.bonds.append(
            {indexOfNumber.value(first), indexOfNumber.value(second),
             fields.size() > 3 ? textFields::toString(fields[3]) : QStringLiteral("1")});
    }
}

} // namespace structureFiles
