#pragma once

#include <LanqorEngine/DonorStatesResults.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QVector>

/// Where hole and electron of an excited state are.
struct StateCharacter
{
    QVector<double> hole;     ///< share on each fragment; empty when it is not known
    QVector<double> electron; ///< likewise
    double chargeTransfer = 0.0;
};

/// The ion and its ligands, told by the distances of their atoms. @p ion  number from 1
QVector<DonorFragment> donorFragments(const QVector<Coord> &atoms, int ion);

/// Charge-transfer numbers of states of single excitations in an orthogonal basis (F. Plasser,
/// H. Lischka, J. Chem. Theory Comput. 8, 2777 (2012)):
///     T = sum c |i><a|,   Omega(A,B) = sum over mu on A, nu on B of T(mu,nu)^2
/// over the printed excitations i -> a with coefficients c; A, B are fragments. The hole's share of
/// A is sum_B Omega(A,B), the electron's of B is sum_A Omega(A,B), the charge transfer
/// 1 - sum_A Omega(A,A), all divided by the sum of Omega. The signs of the coefficients matter:
/// they tell an excitation on each ligand from one between ligands where orbitals spread over them.
class StateCharacters
{
public:
    StateCharacters(const LanqorInputData &data, const QVector<DonorFragment> &fragments);

    /// @param coefficients  of the excitations of @p state, with signs
    /// Empty shares when an orbital is not printed.
    StateCharacter of(const ExcitateState &state, const QVector<double> &coefficients) const;

private:
    QVector<double> overlapByFragment(int first, int second) const;

    const LanqorInputData &data;
    int fragmentCount;
    QVector<int> fragmentOfAtom; // atom number - 1; -1 for none
};
