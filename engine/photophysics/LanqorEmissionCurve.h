#pragma once

#include <LanqorEngine/CalculatedEmission.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/RadiativeRates.h>
#include <LanqorEngine/StarkResults.h>

class LanqorResultTables;

/// The emission spectrum of 5D0 of Eu3+ by calculated radiative rates, as a curve.
///
/// Each band 5D0 -> 7FJ holds A(J)/Arad of the photons; 7F0, 7F3 and 7F5 have no rate in the model.
/// A band consists of 2J+1 lines at sigma(J) - E(J,i), with the barycentre sigma(J) of the rates
/// and the Stark levels E(J,i) from the barycentre of their manifold. The lines of a band have
/// equal shares: those of the magnetic dipole band are equal in a randomly oriented sample as long
/// as the levels do not mix; those of the electric dipole bands are not known from Omega(lambda).
/// Each line is a Gaussian along the wavenumber.
///
/// A detector that records power along the wavelength sees photons(sigma) sigma^3, but for a
/// factor.
class LANQORENGINE_EXPORT LanqorEmissionCurve
{
public:
    /// @param manifolds  Stark levels by J; of one that is missing the barycentre alone is drawn
    /// @param width  full width at half maximum of every line, above 0, cm^-1
    /// @return nothing when the width or the sum of the rates is not above 0
    static CalculatedEmission calculate(const RadiativeRates &rates,
                                        const QVector<StarkResults::Manifold> &manifolds,
                                        const double &width);

    /// Record "calculated_emission", tables "calculated_emission_bands",
    /// "calculated_emission_lines" and "calculated_emission_curve".
    static LanqorResultTables makeTables(const CalculatedEmission &emission);
};
