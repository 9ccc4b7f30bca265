#include "input/atomRows_p.h"

#include "LanqorInputData.h"
#include "core/elements_p.h"
#include "core/internalCoordinates_p.h"

#include <iterator>

namespace structureFiles {

namespace {

using textFields::Fields;

/// 1 and +1 optimise a value, 0 and +0 hold it, -1 follows a path.
bool isFlag(std::string_view field)
{
    bool ok = false;
    const int flag = textFields::toInt(field, &ok);
    return ok && flag >= -1 && flag <= 1;
}

bool hasAllFlags(const Fields &fields)
{
    for (std::size_t i = 2; i < fields.size() && i <= 6; i += 2) {
        if (!isFlag(fields[i]))
            return false;
    }
    return true;
}

bool setValue(AtomRow &row, std::size_t index, std::string_view field)
{
    double *const values[3] = {&row.atom.distance, &row.atom.angle, &row.atom.dihedral};
    bool ok = false;
    if (index >= std::size(values))
        return false;
    *values[index] = textFields::toDouble(field, &ok);
    row.valueCount = index + 1;
    return ok;
}

bool setReference(AtomRow &row, std::size_t index, std::string_view field)
{
    int *const references[3] = {&row.atom.na, &row.atom.nb, &row.atom.nc};
    bool ok = false;
    if (index >= std::size(references))
        return false;
    *references[index] = textFields::toInt(field, &ok);
    row.hasReferences = row.hasReferences || *references[index] > 0;
    return ok;
}

/// Values at fields 1, 2, 3 and references behind them; the first atoms have fewer of both.
bool readWithoutFlags(const Fields &fields, AtomRow &row)
{
    const std::size_t count = fields.size() - 1;
    const std::size_t values = count <= 3 ? count : count / 2;
    if (count > 6 || (count > 3 && count % 2 != 0))
        return false;
    for (std::size_t i = 0; i < values; ++i) {
        if (!setValue(row, i, fields[1 + i]))
            return false;
    }
    for (std::size_t i = values; i < count; ++i) {
        if (!setReference(row, i - values, fields[1 + i]))
            return false;
    }
    return true;
}

/// The charge of an atom may end its row, also ahead of any reference: archive files of MOPAC
/// print it behind the final geometry. References are whole numbers.
bool isChargeColumn(const Fields &fields, std::size_t i)
{
    bool ok = false;
    textFields::toDouble(fields[i], &ok);
    return ok && i + 1 == fields.size() && textFields::decimalsOf(fields[i]) >= 0;
}

bool readWithFlags(const Fields &fields, AtomRow &row)
{
    for (std::size_t i = 1; i < fields.size() && i <= 9; ++i) {
        if (i > 6 && isChargeColumn(fields, i))
            break;
        if (i > 6 ? !setReference(row, i - 7, fields[i])
                  : i % 2 == 1 && !setValue(row, i / 2, fields[i]))
            return false;
    }
    return true;
}

} // namespace

std::optional<AtomRow> parseAtomRow(const Fields &fields)
{
    AtomRow row;
    if (fields.empty())
        return std::nullopt;
    row.atom.label = elementLabel(textFields::toString(fields[0]));
    const bool hasPairs = fields.size() > 6 || fields.size() % 2 == 1;
    row.hasFlags = hasPairs && hasAllFlags(fields);
    const bool ok = row.hasFlags ? readWithFlags(fields, row) : readWithoutFlags(fields, row);
    return ok ? std::optional<AtomRow>(row) : std::nullopt;
}

void buildCartesian(Structure &structure, const QString &fileName,
                    const QVector<int> &cartesianRows)
{
    const auto geometry = internalCoordinates::gmetry(structure.zMatrix, cartesianRows);
    if (geometry.failedAtom > 0) {
        structure.error = LanqorInputData::tr("\nAtom %1 of the Z-matrix cannot be placed; check "
                                              "its reference atoms in the file: \n")
                              .arg(geometry.failedAtom) +
                          fileName + LanqorInputData::tr(internalCoordinates::gmetryFailure);
        return;
    }
    if (!cartesianRows.isEmpty())
        structure.zMatrix = internalCoordinates::xyzint(geometry.atoms).rows;
    for (const Coord &atom : geometry.atoms) {
        if (!isDummyAtom(atom.label))
            structure.atoms.append(atom);
    }
}

bool isTranslationVector(const QString &label)
{
    return label.compare(QLatin1String("Tv"), Qt::CaseInsensitive) == 0;
}

bool isDummyAtom(const QString &label)
{
    return label.startsWith(QLatin1Char('X'), Qt::CaseInsensitive) && label != QLatin1String("Xe");
}

} // namespace structureFiles
