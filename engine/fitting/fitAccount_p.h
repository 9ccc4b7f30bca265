#pragma once

#include <LanqorEngine/FitAccount.h>

namespace fitAccount {

/// The parameters with their values; a value within 1e-6 of the range of a bound is at it.
void addParameters(FitAccount &account, const QVector<FitParameter> &parameters,
                   const QVector<double> &values);

/// Where the starts ended; equal points count as one minimum.
void addMinima(FitAccount &account, const QVector<QVector<double>> &vectors,
               const QVector<double> &misfits);

/// Number of parameters that are not fixed.
int freeCount(const FitAccount &account);
/// Data less the dimensions of the parameters, those at a bound and the undetermined directions
/// left out; negative when there are fewer data.
int degreesOfFreedom(const FitAccount &account);

} // namespace fitAccount
