#pragma once

#include <LanqorEngine/DonorTripletResults.h>
#include <LanqorEngine/XtbRunResults.h>

#include <QString>
#include <QVector>

/// The triplet energy from two optimisations by GFN1-xTB.
namespace adiabaticTriplet {

/// cm^-1 in a hartree, with the digits of the published comparison.
constexpr double wavenumberPerHartree = 219474.63;
/// Largest change of the charge of a ligand, elementary charges.
constexpr double largestChargeChange = 0.15;

/// Why two runs are no ground state and triplet of one system; empty when they are.
QString mismatch(const XtbRunResults &groundState, const XtbRunResults &triplet);

/// E(T1) - E(S0), cm^-1.
double energy(const XtbRunResults &groundState, const XtbRunResults &triplet);

/// By fragment the sum of the charges of the triplet less those of the ground state; empty without
/// the charges.
QVector<double> chargeChanges(const XtbRunResults &groundState, const XtbRunResults &triplet,
                              const QVector<DonorFragment> &fragments);

/// What the bonds within the ligands tell.
struct BondChanges
{
    /// By fragment the sum of squares of the changes, square Angstrom.
    QVector<double> squares;
    double longest = 0.0;    ///< largest growth of a bond, Angstrom
    int brokenFragment = -1; ///< one with a bond that is broken; -1 for none
};
BondChanges bondChanges(const XtbRunResults &groundState, const XtbRunResults &triplet,
                        const QVector<DonorFragment> &fragments);

} // namespace adiabaticTriplet
