#include "LanqorInputData.h"

#include "input/lineReader_p.h"
#include "input/structureFiles_p.h"
#include "input/textFields_p.h"

using structureFiles::Kind;
using structureFiles::Structure;

bool LanqorInputData::readStructureFile()
{
    switch (structureFiles::kindOf(fileName)) {
    case Kind::MopacOutput:
        return readMopacOutFile(false);
    case Kind::Mop:
        return readMopFile();
    case Kind::Zmt:
        return readZmtFile();
    case Kind::Xyz:
        return readXYZFile();
    case Kind::Mol2:
        return readMol2File();
    case Kind::Unknown:
        break;
    }
    if (!LineReader(fileName).open())
        return failWith(missingFile(fileName));
    return failWith(tr("\nThe kind of the structure file cannot be told; a MOPAC output (.out), "
                       ".mop, .zmt, .xyz or .mol2 file is needed: \n") +
                    fileName);
}

bool LanqorInputData::readMopFile()
{
    return takeStructure(structureFiles::readMop(fileName), QStringLiteral(".mop"));
}

bool LanqorInputData::readZmtFile()
{
    return takeStructure(structureFiles::readZmt(fileName), QStringLiteral(".zmt"));
}

bool LanqorInputData::readXYZFile()
{
    return takeStructure(structureFiles::readXyz(fileName), QStringLiteral(".xyz"));
}

bool LanqorInputData::readMol2File()
{
    if (!takeStructure(structureFiles::readMol2(fileName), QStringLiteral(".mol2")))
        return false;
    emitProgress(tr(" -> (Read Input Data) The structure has %1 residues. \n")
                     .arg(calculateResiduesNumber(fileName)));
    return true;
}

int LanqorInputData::calculateResiduesNumber(const QString &fileName)
{
    return structureFiles::readMol2(fileName).residues;
}

bool LanqorInputData::takeStructure(const Structure &structure, const QString &format)
{
    coord += structure.atoms;
    coordZMT += structure.zMatrix;
    if (!structure.error.isEmpty())
        return failWith(structure.error);
    emitProgress(tr(" -> (Read Input Data) Cartesian coordinates successfully loaded from the "
                    "desired %1 file: \n")
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
