#pragma once

#include <QString>
#include <QVector>

class LanqorInputData;

namespace cli {

/// Values of one quantity for atoms 2 to N+1, N being @p coordNumber, from a list of element or
/// atom number and value, "O=0.9,N=1.2,5=0.7"; an atom's own value beats that of its element. By
/// atom number, N+2 entries.
/// @param option  the command-line option, for messages
QVector<double> readAtomValues(const LanqorInputData &geometry, int coordNumber,
                               const QString &option, const QString &text);
/// Which entry of such a list, from 0, gives each atom its value; by atom number.
QVector<int> readAtomSources(const LanqorInputData &geometry, int coordNumber,
                             const QString &option, const QString &text);

} // namespace cli
