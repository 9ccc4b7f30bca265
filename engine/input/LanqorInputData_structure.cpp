#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/fileFormats_p.h"
#include "input/lineReader_p.h"
#include "input/structureFiles_p.h"
#include "input/textFields_p.h"

using fileFormats::Format;
using structureFiles::Kind;
using structureFiles::Structure;

namespace {

/// True unless a file of this form is certainly of another kind.
bool mayBe(Kind kind, Format format)
{
    switch (format) {
    case Format::Unknown:
    case Format::Folder: // told by the reader
    case Format::NoRegularFile:
        return true;
    case Format::MopacInput: // keywords stand at the head of excerpts of outputs, too
        return kind == Kind::Mop || kind == Kind::MopacOutput || kind == Kind::MopacArchive;
    case Format::MopacOutput:
        return kind == Kind::MopacOutput;
    case Format::MopacArchive:
        return kind == Kind::MopacArchive;
    case Format::Xyz:
        return kind == Kind::Xyz;
    case Format::Mol2:
        return kind == Kind::Mol2;
    case Format::Cif:
        return kind == Kind::Cif;
    case Format::Pdb:
        return kind == Kind::Pdb;
    default:
        return false;
    }
}

} // namespace

bool LanqorInputData::readStructureFile()
{
    return readStructureFile(false);
}

bool LanqorInputData::readStructureFile(const bool &keepTv)
{
    using structureFiles::TranslationVectors;
    const TranslationVectors vectors = keepTv ? TranslationVectors::Keep : TranslationVectors::Drop;
    InputFile file = d->file(); // told and read from one opening
    const Kind kind = structureFiles::kindOf(file);
    if (!d->checkFormat(file, kind))
        return false;
    switch (kind) {
    case Kind::MopacOutput:
        return d->readMopacOutput(file, keepTv);
    case Kind::MopacArchive:
        return d->takeStructure(structureFiles::readArc(file, vectors), QStringLiteral(".arc"));
    case Kind::Mop:
        return d->takeStructure(structureFiles::readMop(file, vectors), QStringLiteral(".mop"));
    case Kind::Zmt:
        return d->takeStructure(structureFiles::readZmt(file), QStringLiteral(".zmt"));
    case Kind::Xyz:
        return d->takeStructure(structureFiles::readXyz(file), QStringLiteral(".xyz"));
    case Kind::Mol2:
        return d->takeMol2(structureFiles::readMol2(file));
    case Kind::Cif:
    case Kind::Pdb:
        return d->takeStructure(structureFiles::readCrystal(file, kind, d->molecule),
                                kind == Kind::Cif ? QStringLiteral(".cif")
                                                  : QStringLiteral(".pdb"));
    case Kind::Unknown:
        break;
    }
    if (!file.rewind())
        return failWith(missingFile(d->fileName));
    return failWith(tr("\nThe kind of the structure file cannot be told; a MOPAC output (.out), "
                       ".arc, .mop, .zmt, .xyz, .mol2, .cif or .pdb file is needed: \n") +
                    d->fileName);
}

void LanqorInputData::setMolecule(const int &number)
{
    d->molecule = number;
}

bool LanqorInputData::readMopFile()
{
    const InputFile file = d->file();
    return d->checkFormat(file, Kind::Mop) &&
           d->takeStructure(structureFiles::readMop(file), QStringLiteral(".mop"));
}

bool LanqorInputData::readZmtFile()
{
    const InputFile file = d->file();
    return d->checkFormat(file, Kind::Zmt) &&
           d->takeStructure(structureFiles::readZmt(file), QStringLiteral(".zmt"));
}

bool LanqorInputData::readXYZFile()
{
    const InputFile file = d->file();
    return d->checkFormat(file, Kind::Xyz) &&
           d->takeStructure(structureFiles::readXyz(file), QStringLiteral(".xyz"));
}

bool LanqorInputData::readMol2File()
{
    const InputFile file = d->file();
    return d->checkFormat(file, Kind::Mol2) && d->takeMol2(structureFiles::readMol2(file));
}

QString LanqorInputData::getFileDescription(const QString &fileName)
{
    return fileFormats::description(fileFormats::formatOf(fileName));
}

/// Fails when a file is recognised as one of another kind than it is to be read as.
bool LanqorInputDataPrivate::checkFormat(const InputFile &file, Kind kind)
{
    const Format format = fileFormats::formatOf(file);
    return mayBe(kind, format) ||
           owner.failWith(
               tr("\nThe file is %1; a structure is read from a MOPAC output (.out), "
                  ".arc, .mop, .zmt, .xyz, .mol2, .cif or .pdb file with the suffix of its kind: "
                  "\n")
                   .arg(fileFormats::description(format)) +
               fileName);
}

bool LanqorInputDataPrivate::takeMol2(const Structure &structure)
{
    if (!takeStructure(structure, QStringLiteral(".mol2")))
        return false;
    owner.emitProgress(
        tr(" -> (Read Input Data) The structure has %1 residues. \n").arg(structure.residues));
    return true;
}

bool LanqorInputDataPrivate::takeStructure(const Structure &structure, const QString &format)
{
    coord += structure.atoms;
    coordZMT += structure.zMatrix;
    if (structure.charge) {
        chargeOnSystem = *structure.charge;
        isChargeTold = true;
    }
    for (const QString &warning : structure.warnings)
        owner.processStatus(QStringLiteral("%1: %2.").arg(fileName, warning));
    if (!structure.error.isEmpty())
        return owner.failWith(structure.error);
    owner.emitProgress(tr(" -> (Read Input Data) Cartesian coordinates successfully loaded from "
                          "the desired %1 file: \n")
                           .arg(format) +
                       fileName);
    return true;
}

bool LanqorInputData::checkTypeMopFile(const QString &fileName)
{
    QString keywords;
    if (!structureFiles::readMopKeywords(fileName, keywords))
        return false;
    return keywords.split(QLatin1Char(' '), Qt::SkipEmptyParts)
        .contains(QLatin1String("XYZ"), Qt::CaseInsensitive);
}

LanqorInputData::GeometryType LanqorInputData::getTypeOfGeometryFromMopFile(const QString &fileName)
{
    bool internal = false;
    if (!structureFiles::readMopKind(fileName, internal))
        return NoGeometry;
    return internal ? InternalGeometry : CartesianGeometry;
}

int LanqorInputData::numberOfAtomsFromXYZFile(const QString &fileName)
{
    LineReader reader(fileName);
    return reader.open() && reader.next() ? textFields::toInt(reader.line()) : 0;
}
