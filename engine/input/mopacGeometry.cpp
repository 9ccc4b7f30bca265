#include "input/mopacOutput_p.h"

#include "core/internalCoordinates_p.h"
#include "input/readerLimits_p.h"

#include <algorithm>
#include <iterator>
#include <utility>

using textFields::contains;
using textFields::isBlank;
using textFields::startsWith;

namespace {

bool isTranslationVector(std::string_view label)
{
    return contains(label, "Tv");
}

/// Dummy atoms stand in a Z-matrix only.
bool isDummy(std::string_view label)
{
    return startsWith(label, "X") && label != "Xe";
}

} // namespace

void MopacOutputReader::splitRow(std::string_view line)
{
    textFields::copyWithoutMarks(line, row);
    textFields::split(row, fields);
}

/// Title, a blank line, in starting geometries a column title and a blank line, then one row an
/// atom up to a line that is none.
void MopacOutputReader::readCoordinates()
{
    anyBlock = true;
    Block block;
    bool inRows = false;
    while (reader.next()) {
        if (!inRows && (isBlank(reader.line()) || contains(reader.line(), "ATOM")))
            continue;
        Coord atom;
        const RowKind kind = readCoordinateRow(atom);
        if (kind != RowKind::Row) {
            block.intact = kind == RowKind::Other;
            reader.unread();
            break;
        }
        inRows = true;
        if (block.atoms.size() == maximumAtoms) {
            tooManyAtoms = true;
            break;
        }
        const bool isVector = isTranslationVector(fields[1]);
        block.atomCount += isVector ? 0 : 1;
        if (!isVector || keepTranslationVectors)
            block.atoms.append(atom);
    }
    if (block.atoms.size() == block.atomCount)
        block.atoms += job.translationVectors;
    if (!job.isTurned)
        keepBlock(std::move(block));
}

/// Row of number, label, x, y, z.
MopacOutputReader::RowKind MopacOutputReader::readCoordinateRow(Coord &atom)
{
    splitRow(reader.line());
    if (fields.empty() || !textFields::isInteger(fields[0]))
        return RowKind::Other;
    if (fields.size() < 5)
        return RowKind::Broken;
    bool isLabelNumber = false;
    textFields::toDouble(fields[1], &isLabelNumber);
    bool ok[3] = {};
    atom.label = textFields::toString(fields[1]);
    atom.x = textFields::toDouble(fields[2], &ok[0]);
    atom.y = textFields::toDouble(fields[3], &ok[1]);
    atom.z = textFields::toDouble(fields[4], &ok[2]);
    const bool isCut = !reader.isLineComplete() &&
                       textFields::decimalsOf(fields[4]) != textFields::decimalsOf(fields[3]);
    return ok[0] && ok[1] && ok[2] && !isLabelNumber && !isCut ? RowKind::Row : RowKind::Broken;
}

/// The table "ATOM CHEMICAL" that repeats the geometry in the form of the job's input: Cartesian
/// coordinates, of which only the number of atoms and the translation vectors are noted, or a
/// Z-matrix, told by the titles of its reference columns.
void MopacOutputReader::readGeometryEcho()
{
    if (!reader.next())
        return;
    const bool isZMatrix = contains(reader.line(), "NA") && contains(reader.line(), "NB") &&
                           contains(reader.line(), "NC");
    if (!isZMatrix)
        reader.unread();
    QVector<CoordZMT> zMatrix;
    QVector<Coord> vectors;
    int rows = 0;
    int atoms = 0;
    bool intact = true;
    while (reader.next() && rows < maximumAtoms) {
        splitRow(reader.line());
        if (rows == 0 && fields.empty())
            continue;
        if (fields.size() < 2 || !textFields::isInteger(fields[0])) {
            reader.unread();
            break;
        }
        ++rows;
        const bool isVector = isTranslationVector(fields[1]);
        if (!isVector && !isDummy(fields[1]))
            ++atoms;
        Coord vector;
        if (!isZMatrix && isVector && readCoordinateRow(vector) == RowKind::Row)
            vectors.append(vector);
        if (!isZMatrix || !intact || (isVector && !keepTranslationVectors))
            continue;
        CoordZMT zRow;
        intact = readZMatrixRow(zRow);
        if (intact)
            zMatrix.append(zRow);
    }
    job.echoedAtoms = atoms;
    job.zMatrix = intact ? zMatrix : QVector<CoordZMT>();
    if (keepTranslationVectors)
        noteTranslationVectors(vectors, job.zMatrix);
}

/// Vectors of a Z-matrix run from atom 1, which stands at the origin.
void MopacOutputReader::noteTranslationVectors(const QVector<Coord> &cartesian,
                                               const QVector<CoordZMT> &zMatrix)
{
    job.translationVectors = cartesian;
    const auto isVector = [](const auto &row) { return row.label == QLatin1String("Tv"); };
    if (std::none_of(zMatrix.begin(), zMatrix.end(), isVector))
        return;
    const auto geometry = internalCoordinates::gmetry(zMatrix);
    if (geometry.failedAtom == 0)
        std::copy_if(geometry.atoms.begin(), geometry.atoms.end(),
                     std::back_inserter(job.translationVectors), isVector);
}

/// Row of number, label, then distance, angle and dihedral and as many references; old versions
/// leave out what the first three atoms do not have.
bool MopacOutputReader::readZMatrixRow(CoordZMT &zRow)
{
    const std::size_t count = fields.size() - 2;
    const bool hasReferences = count % 2 == 0;
    const std::size_t values = hasReferences ? count / 2 : 3;
    if (values > 3 || (!hasReferences && count != 3))
        return false;
    zRow.label = textFields::toString(fields[1]);
    double *const numbers[3] = {&zRow.distance, &zRow.angle, &zRow.dihedral};
    int *const references[3] = {&zRow.na, &zRow.nb, &zRow.nc};
    for (std::size_t i = 0; i < values; ++i) {
        bool ok = false;
        *numbers[i] = textFields::toDouble(fields[2 + i], &ok);
        if (ok && hasReferences)
            *references[i] = textFields::toInt(fields[2 + values + i], &ok);
        if (!ok)
            return false;
    }
    return true;
}

void MopacOutputReader::keepBlock(Block &&block)
{
    block.zMatrix = job.zMatrix;
    block.job = jobNumber;
    if (job.hasFirstBlock || job.hasHeat) {
        if (!job.hasFirstBlock)
            job.firstBlockAtoms = job.echoedAtoms.value_or(block.atomCount);
        finalBlock = std::move(block);
        finalBlockExpectedAtoms = job.firstBlockAtoms;
        return;
    }
    job.hasFirstBlock = true;
    job.firstBlockAtoms = block.atomCount;
    if (job.echoedAtoms && block.atomCount < *job.echoedAtoms)
        block.intact = false;
    startBlock = std::move(block);
    if (job.isSinglePoint) {
        singlePointBlock = startBlock;
    } else { // what earlier jobs left is void until this job prints its result
        singlePointBlock.reset();
        finalBlock.reset();
    }
}

MopacOutputReader::Status MopacOutputReader::chooseGeometry()
{
    found.chargeOnSystem = job.system.charge;
    if (!anyBlock)
        return Status::NoCoordinates;
    passSystemOn();
    const Block &chosen = finalBlock         ? *finalBlock
                          : singlePointBlock ? *singlePointBlock
                                             : startBlock;
    found.atoms = chosen.atoms;
    found.atomCount = chosen.atomCount;
    found.chargeOnSystem = chosen.system.charge;
    found.unpairedElectrons = chosen.system.unpairedElectrons;
    found.zMatrix = chosen.zMatrix;
    const bool isWhole = chosen.intact && !chosen.atoms.isEmpty();
    if (finalBlock)
        return isWhole && chosen.atomCount >= finalBlockExpectedAtoms ? Status::Read
                                                                      : Status::NoFinalCoordinates;
    if (!isWhole)
        return Status::NoCoordinates;
    if (!singlePointBlock)
        return Status::NoFinalCoordinates;
    return job.hasReachedScf || job.complaint.isEmpty() ? Status::Read : Status::DiedBeforeScf;
}
