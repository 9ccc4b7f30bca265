#include "photophysics/donorDistance_p.h"

DonorDistance calcDonorDistance(const ExcitateState &state, const LanqorInputData &input,
                                int orbitalOffset, const QVector<double> &atomDistances)
{
    DonorDistance result;
    double numerator = 0.0;
    double denominator = 0.0;
    for (const int number : state.configurations) {
        if (number == 0)
            continue;
        const int index = number - orbitalOffset;
        MolecularOrbital orbital;
        if (index >= 0 && index < input.getMolecularOrbitalNumber())
            orbital = input.getMolecularOrbitalVector(index);
        if (orbital.coefficients.isEmpty() && !result.missingOrbitals.contains(number))
            result.missingOrbitals.append(number);
        for (int i = 0; i < orbital.coefficients.size(); ++i) {
            const int atom = orbital.atomNumbers.at(i);
            if (atom < 1 || atom > atomDistances.size()) {
                result.unknownAtom = atom;
                return result;
            }
            const double square = orbital.coefficients.at(i) * orbital.coefficients.at(i);
            numerator += square * atomDistances.at(atom - 1);
            denominator += square;
        }
    }
    if (denominator != 0.0)
        result.distance = numerator / denominator;
    return result;
}
