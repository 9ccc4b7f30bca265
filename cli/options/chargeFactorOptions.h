#pragma once

#include <QString>

class LanqorInputData;
class LanqorOmega;

namespace cli {

/// Gives @p omega the charge factors @p g and the polarisabilities @p alpha (cubic Angstrom) of the
/// command line, lists of element or atom number and value, and calculates. Each of the
/// @p coordNumber coordinated atoms of @p geometry needs both.
void calcOmega(LanqorOmega &omega, const LanqorInputData &geometry, int coordNumber,
               const QString &g, const QString &alpha);

} // namespace cli
