#pragma once

#include "levels/fieldStates_p.h"

#include <LanqorEngine/CrystalFieldResults.h>

/// What is told of the states of a crystal field.
namespace crystalFieldLevels {

/// Turns the states of one energy so that the moment along z is diagonal, and adds levels and g
/// tensors up to @p maximumEnergy (cm^-1 from the lowest state).
void describe(const fieldStates::Basis &basis, const fieldStates::TensorOperator &moment,
              double maximumEnergy, fieldStates::States &states, CrystalFieldResults &results);

} // namespace crystalFieldLevels
