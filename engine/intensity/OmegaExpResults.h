#pragma once

#include <LanqorEngine/EmissionSpectrumOptions.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

/// Results of LanqorOmegaExp.
struct OmegaExpResults
{
    /// A band 5D0 -> 7FJ.
    struct Transition
    {
        double area = 0.0;       ///< emitted power in any one unit
        double barycenter = 0.0; ///< cm^-1; 0 when there is none
        double rate = 0.0;       ///< A(J), s^-1
    };

    /// Where areas and barycentres come from.
    struct Source
    {
        bool isSpectrum = false; ///< integrated from a measured spectrum; otherwise given
        /// With the axis that the spectrum has. Its signal tells of given areas, too.
        EmissionSpectrumOptions options;
        /// Of a spectrum: the larger signal at the two ends of a window, less the baseline, as a
        /// fraction of the highest peak.
        std::array<double, 6> edgeSignals{};
        std::array<double, 6> givenAreas{}; ///< before photon counts were turned into power
    };

    bool isCalculated = false;               ///< otherwise the numbers are those of no calculation
    QString fileName;                        ///< of the spectrum
    double refractiveIndex = 0.0;            ///< of the medium
    std::array<Transition, 6> transitions{}; ///< by J
    double omega2 = 0.0;                     ///< cm^2
    double omega4 = 0.0;                     ///< cm^2
    double r02 = 0.0;                        ///< 178305 / S(2); infinite when S(2) is 0
    double arad = 0.0;                       ///< radiative rate, s^-1
    double lifeTime = 0.0;          ///< measured, ms; 0 when there is none, and then no decay
    double anrad = 0.0;             ///< non-radiative rate 1/lifetime - Arad, s^-1
    double quantumEfficiency = 0.0; ///< Arad / (Arad + Anrad), %
    Source source;
    double radiativeLifeTime = 0.0;          ///< 1 / Arad, ms
    std::array<double, 6> branchingRatios{}; ///< A(J) / Arad, %, by J
    QStringList warnings;                    ///< see LanqorOmegaExp::getWarnings()

    /// A measured spectrum as it was read, for a picture of it.
    struct Spectrum
    {
        /// What was subtracted from a band, a straight line between its ends.
        struct Baseline
        {
            double first = 0.0; ///< lower end of the band on the axis of the spectrum
            double last = 0.0;  ///< equal to first when the spectrum does not reach the band
            double signalAtFirst = 0.0;
            double signalAtLast = 0.0;
        };
        QVector<double> abscissa; ///< nm or cm^-1, see Source::options; ascending
        QVector<double> signal;
        std::array<Baseline, 6> baselines{}; ///< by J
    };
    Spectrum spectrum; ///< without points when none was read
};
