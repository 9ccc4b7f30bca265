#include "input/mopSymmetry_p.h"

#include "LanqorInputData.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace structureFiles {

namespace {

/// Coordinate @p target of the dependent atom = offset + factor * coordinate @p source of the
/// reference atom. Coordinates are counted from 0: distance, angle, dihedral or x, y, z; Angstrom
/// and degrees.
struct Function
{
    int target;
    int source;
    double offset;
    double factor;
};

/// Functions 1 to 17 of internal coordinates, as MOPAC 22 lists and applies them.
constexpr Function internalFunctions[] = {
    {0, 0, 0.0, 1.0},    {1, 1, 0.0, 1.0},    {2, 2, 0.0, 1.0},   {2, 2, 90.0, -1.0},
    {2, 2, 90.0, 1.0},   {2, 2, 120.0, -1.0}, {2, 2, 120.0, 1.0}, {2, 2, 180.0, -1.0},
    {2, 2, 180.0, 1.0},  {2, 2, 240.0, -1.0}, {2, 2, 240.0, 1.0}, {2, 2, 270.0, -1.0},
    {2, 2, 270.0, 1.0},  {2, 2, 0.0, -1.0},   {0, 0, 0.0, 0.5},   {1, 1, 0.0, 0.5},
    {1, 1, 180.0, -1.0},
};

constexpr int multipleOfDistance = 19;
constexpr int lastCartesianFunction = 18;

/// Three functions each (of x, y and z): the same coordinate, its negative; the next one in the
/// round x, y, z, its negative; the one before, its negative.
Function cartesianFunction(int number)
{
    const int target = (number - 1) % 3;
    const int group = (number - 1) / 3;
    return {target, (target + group / 2) % 3, 0.0, group % 2 == 0 ? 1.0 : -1.0};
}

std::optional<Function> functionOf(const SymmetryRelation &relation, bool isInternal)
{
    const int number = relation.function;
    if (!isInternal)
        return number >= 1 && number <= lastCartesianFunction
                   ? std::optional<Function>(cartesianFunction(number))
                   : std::nullopt;
    if (number == multipleOfDistance)
        return Function{0, 0, 0.0, relation.factor};
    return number >= 1 && number <= int(std::size(internalFunctions))
               ? std::optional<Function>(internalFunctions[number - 1])
               : std::nullopt;
}

/// MOPAC takes a factor for the root of a simple fraction when it is one to a relative 1e-4, so
/// that "1.63299" is the root of 8/3.
double exactFactor(double factor)
{
    constexpr double tolerance = 1e-4;
    for (const int denominator : {3, 6, 8, 12}) {
        const double numerator = factor * factor * denominator;
        if (std::abs(std::round(numerator) - numerator) < denominator * tolerance)
            return std::sqrt(std::round(numerator) / denominator);
    }
    return factor;
}

double &coordinate(AtomRow &row, int index)
{
    return index == 0 ? row.atom.distance : index == 1 ? row.atom.angle : row.atom.dihedral;
}

/// What is wrong with a relation; empty when nothing is.
QString faultOf(const SymmetryRelation &relation, bool isInternal, int atoms)
{
    if (!functionOf(relation, isInternal))
        return isInternal
                   ? LanqorInputData::tr("MOPAC knows no function %1 of internal coordinates "
                                         "(there are 1 to 17 and 19)")
                         .arg(relation.function)
                   : LanqorInputData::tr("MOPAC knows no function %1 of Cartesian coordinates "
                                         "(there are 1 to 18)")
                         .arg(relation.function);
    for (const int atom : {relation.reference, relation.dependent}) {
        if (atom < 1 || atom > atoms)
            return LanqorInputData::tr("there is no atom %1").arg(atom);
        if (isInternal && atom == 1)
            return LanqorInputData::tr("atom 1 of a Z-matrix has no coordinates");
    }
    return QString();
}

/// The number of an atom or a function; what is far from any becomes one that does not exist.
int numberOf(double value)
{
    constexpr double far = 1e9;
    return int(std::lround(std::clamp(value, -far, far)));
}

/// Applies the relations once, in their order. @return the dependent coordinates after it
std::vector<double> applyOnce(const std::vector<SymmetryRelation> &relations, bool isInternal,
                              std::vector<AtomRow> &rows)
{
    std::vector<double *> targets;
    for (const SymmetryRelation &relation : relations) {
        const Function function = *functionOf(relation, isInternal);
        targets.push_back(&coordinate(rows[std::size_t(relation.dependent) - 1], function.target));
        *targets.back() = function.offset +
                          function.factor * coordinate(rows[std::size_t(relation.reference) - 1],
                                                       function.source);
    }
    std::vector<double> values;
    std::transform(targets.begin(), targets.end(), std::back_inserter(values),
                   [](const double *target) { return *target; });
    return values;
}

} // namespace

bool hasSymmetryKeyword(const QString &keywords)
{
    const QStringList words = keywords.split(QRegularExpression(QStringLiteral("\\s+")));
    return std::any_of(words.begin(), words.end(), [](const QString &word) {
        constexpr int shortest = 3;
        return word.size() >= shortest &&
               QStringLiteral("SYMMETRY").startsWith(word, Qt::CaseInsensitive);
    });
}

bool appendRelations(const textFields::Fields &fields, qint64 line,
                     std::vector<SymmetryRelation> &relations, QString &error)
{
    std::vector<double> numbers;
    for (const std::string_view field : fields) {
        bool isNumber = false;
        const double number = textFields::toDouble(field, &isNumber);
        if (isNumber)
            numbers.push_back(number);
        else if (field.find_first_of("0123456789\"") != std::string_view::npos)
            error = textFields::toString(field);
    }
    if (!error.isEmpty() || numbers.empty())
        return false;
    numbers.resize(std::max<std::size_t>(numbers.size(), 3));
    SymmetryRelation relation;
    relation.reference = numberOf(numbers[0]);
    relation.function = numberOf(numbers[1]);
    relation.line = line;
    std::size_t next = 2;
    if (relation.function == multipleOfDistance)
        relation.factor = exactFactor(numbers[next++]);
    if (numbers[2] == 0.0)
        return false;
    for (; next < numbers.size() && numbers[next] != 0.0; ++next) {
        relation.dependent = numberOf(numbers[next]);
        relations.push_back(relation);
    }
    return true;
}

QString applyRelations(const std::vector<SymmetryRelation> &relations, bool isInternal,
                       std::vector<AtomRow> &rows)
{
    for (const SymmetryRelation &relation : relations) {
        const QString fault = faultOf(relation, isInternal, int(rows.size()));
        if (!fault.isEmpty())
            return LanqorInputData::tr(
                       "\nThe relation of the keyword SYMMETRY on line %1 cannot be "
                       "applied, for %2: \n")
                .arg(QString::number(relation.line), fault);
    }
    // A relation may refer to an atom that a later one sets; each pass settles one more of a chain.
    // MOPAC applies them anew for each energy.
    constexpr int longestChain = 100;
    std::vector<double> values = applyOnce(relations, isInternal, rows);
    for (int pass = 0; pass < longestChain; ++pass) {
        const std::vector<double> before =
            std::exchange(values, applyOnce(relations, isInternal, rows));
        if (values == before)
            return QString();
    }
    return LanqorInputData::tr(
        "\nThe relations of the keyword SYMMETRY refer to each other in a circle: \n");
}

} // namespace structureFiles
