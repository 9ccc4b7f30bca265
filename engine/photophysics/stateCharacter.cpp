#include "photophysics/stateCharacter_p.h"

#include "photophysics/complexComparison_p.h"
#include "structure/fragments_p.h"

#include <algorithm>

QVector<DonorFragment> donorFragments(const QVector<Coord> &atoms, int ion)
{
    QVector<DonorFragment> result = {{atoms.at(ion - 1).label, {ion}}};
    const auto bonds = fragments::withMissingBonds(atoms, {});
    for (const fragments::Fragment &fragment : fragments::fragmentsAround(ion - 1, atoms, bonds)) {
        DonorFragment donor;
        QVector<complexComparison::Atom> members;
        for (const int atom : fragment.atoms) {
            donor.atoms.append(atom + 1);
            members.append({atoms.at(atom).label, 0.0});
        }
        donor.formula = complexComparison::formula(complexComparison::composition(members));
        result.append(donor);
    }
    return result;
}

StateCharacters::StateCharacters(const LanqorInputData &data,
                                 const QVector<DonorFragment> &fragments)
    : data(data)
    , fragmentCount(fragments.size())
    , fragmentOfAtom(data.getCoord().size(), -1)
{
    for (int f = 0; f < fragmentCount; ++f)
        for (const int atom : fragments.at(f).atoms)
            fragmentOfAtom[atom - 1] = f;
}

/// sum over mu on A of C(mu,p) C(mu,q) for orbitals p and q (numbers from 1), by A; empty when one
/// of them is not known.
QVector<double> StateCharacters::overlapByFragment(int first, int second) const
{
    const int last = data.getMolecularOrbitalNumber();
    if (std::min(first, second) < 1 || std::max(first, second) > last)
        return {};
    const MolecularOrbital p = data.getMolecularOrbitalVector(first - 1);
    const MolecularOrbital q = data.getMolecularOrbitalVector(second - 1);
    if (p.coefficients.isEmpty() || p.coefficients.size() != q.coefficients.size())
        return {};
    QVector<double> overlap(fragmentCount, 0.0);
    for (int i = 0; i < p.coefficients.size(); ++i) {
        const int fragment = fragmentOfAtom.value(p.atomNumbers.at(i) - 1, -1);
        if (fragment >= 0)
            overlap[fragment] += p.coefficients.at(i) * q.coefficients.at(i);
    }
    return overlap;
}

StateCharacter StateCharacters::of(const ExcitateState &state,
                                   const QVector<double> &coefficients) const
{
    StateCharacter character;
    if (coefficients.isEmpty() || state.configurations.size() != 2 * coefficients.size())
        return character;
    QVector<double> hole(fragmentCount, 0.0);
    QVector<double> electron(fragmentCount, 0.0);
    double local = 0.0;
    double total = 0.0;
    for (int k = 0; k < coefficients.size(); ++k) {
        for (int l = 0; l < coefficients.size(); ++l) {
            const QVector<double> from =
                overlapByFragment(state.configurations.at(2 * k), state.configurations.at(2 * l));
            const QVector<double> to = overlapByFragment(state.configurations.at(2 * k + 1),
                                                         state.configurations.at(2 * l + 1));
            if (from.isEmpty() || to.isEmpty())
                return character;
            const double weight = coefficients.at(k) * coefficients.at(l);
            for (int a = 0; a < fragmentCount; ++a) {
                for (int b = 0; b < fragmentCount; ++b) {
                    const double omega = weight * from.at(a) * to.at(b);
                    hole[a] += omega;
                    electron[b] += omega;
                    total += omega;
                    local += a == b ? omega : 0.0;
                }
            }
        }
    }
    if (!(total > 0.0))
        return character;
    for (int f = 0; f < fragmentCount; ++f) {
        hole[f] /= total;
        electron[f] /= total;
    }
    character.hole = hole;
    character.electron = electron;
    character.chargeTransfer = 1.0 - local / total;
    return character;
}
