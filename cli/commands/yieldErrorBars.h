#pragma once

#include <LanqorEngine/LanqorUncertainty.h>
#include <LanqorEngine/YieldInputs.h>

#include <QVector>

#include <functional>

class LanqorSpectroscopicCalculation;

/// Error bars of a quantum yield.
namespace cli {

/// Puts one set of values of the uncertain inputs in their places; false when it gives no yield.
using SetYieldInputs = std::function<bool(const QVector<double> &values, YieldInputs &inputs)>;

/// Sets Omega and its forced electric dipole part of lambda = 2, 4, 6, cm^2.
void setOmegas(YieldInputs &inputs, const std::function<double(int)> &omega,
               const std::function<double(int)> &omegaEd);

/// Yield, efficiencies and rates of a finished calculation over the inputs of @p uncertainty.
UncertaintyResults calcYieldErrorBars(const LanqorUncertainty &uncertainty,
                                      const LanqorSpectroscopicCalculation &calculation,
                                      const SetYieldInputs &set);

} // namespace cli
