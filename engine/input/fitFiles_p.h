#pragma once

#include <LanqorEngine/ChargeFactorsGroup.h>
#include <LanqorEngine/GLimits.h>
#include <LanqorEngine/ParametersGroup.h>
#include <LanqorEngine/TransitionValues.h>

#include <QString>
#include <QVector>

#include <array>
#include <optional>

/// Readers of the small files of the fits: one record a line, its fields separated by blanks;
/// empty lines are passed over, and what is no number or is missing reads as 0. Nothing when the
/// file cannot be opened.
namespace fitFiles {

/// Name, atom numbers, charge factor.
std::optional<QVector<ChargeFactorsGroup>> readChargeFactors(const QString &fileName);
/// Name, atom numbers.
std::optional<QVector<ParametersGroup>> readGroups(const QString &fileName);
/// J, lowest and highest sublevel, offset, standard deviations of the two sublevels, which may be
/// left out (cm^-1).
std::optional<QVector<TransitionValues>> readTransitions(const QString &fileName);
/// Element, lowest and highest charge factor.
std::optional<QVector<GLimits>> readLimits(const QString &fileName);

/// A line of a file of measured levels.
struct MeasuredLevel
{
    QString label;
    double energy = 0.0;    ///< cm^-1
    double deviation = 0.0; ///< its standard deviation, cm^-1; 0: not told
};

/// A heading, which is skipped whatever it holds, then one level a line, its label first and its
/// energy last; "+-5" between them is the standard deviation of the energy. Nothing also when the
/// file has more lines than any ion has levels.
std::optional<QVector<MeasuredLevel>> readMeasuredLevels(const QString &fileName);

/// The weights of Omega(2) and Omega(4), a number on a line each; 0 reads as 1.
std::optional<std::array<double, 2>> readWeights(const QString &fileName);

} // namespace fitFiles
