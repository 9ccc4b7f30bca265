#pragma once

#include <LanqorEngine/KineticParameters.h>

/// The options of the kinetic constants, the temperature and the degeneracies of a yield.
namespace cli {

class OptionReader;

void addKineticOptions(OptionReader &options);
KineticParameters readKinetics(const OptionReader &options, bool twoTriplets);

} // namespace cli
