#pragma once

#include <LanqorEngine/MixedState.h>

#include <QVector>

namespace freeIon {

/// See LanqorEnergyLevels::findLevels().
QVector<int> findLevels(const QString &name, const QVector<MixedState> &states);
/// The S and L that have the largest share in a state, all ordinals together, with its J: "2H11/2".
QString leadingName(const MixedState &state);

} // namespace freeIon
