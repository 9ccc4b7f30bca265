#include "TestSupport.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/europium_p.h"

#include <QtTest>

#include <cmath>

/// Radiative rates of 5D0 and constants of the 4f shell against published values.
class TestRadiativeRates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void publishedRates();
    void reducedTensorElements();
};

void TestRadiativeRates::publishedRates()
{
    COMPARE_NEAR(radiativeRates::constArad(2, 1.5) * 1e-20, 30.00, 0.005);
    COMPARE_NEAR(radiativeRates::constArad(4, 1.5) * 1e-20, 15.18, 0.005);
    COMPARE_NEAR(radiativeRates::magneticDipoleRate(1.5), 49.23, 0.005);
    QCOMPARE(radiativeRates::localField(1.0), 1.0);
    COMPARE_NEAR(radiativeRates::magneticDipoleRate(3.0) / radiativeRates::magneticDipoleRate(1.5),
                 8.0, 1e-14);
    // A beta-diketonate diaqua complex of Eu3+ with Omega(2) 33, Omega(4) 4.6.
    const RadiativeRates rates =
        radiativeRates::calcRates({0, 0, 33e-20, 0, 4.6e-20, 0, 1e-20}, 1.5);
    COMPARE_NEAR(rates.total() - rates.ed06, 1109.0, 0.5);
    COMPARE_NEAR(100.0 * (rates.total() - rates.ed06) * 0.26e-3, 28.8, 0.05);
    COMPARE_NEAR(rates.ed06, radiativeRates::constArad(6, 1.5) * 1e-20, 1e-12);
    // The same in SI units with the constants of CODATA 2018, worked out by hand: with
    // e^2/(4 pi eps0) and, for the magnetic dipole, 9.6e-42 esu^2 cm^2 = 0.11162 Bohr magnetons^2.
    COMPARE_NEAR(rates.md, 49.22948, 1e-4);
    COMPARE_NEAR(rates.electricDipole(), 1060.7442, 1e-3);
    COMPARE_NEAR(1000.0 / rates.total(), 0.9009223, 1e-6); // radiative lifetime, ms
    const double branching[][2] = {{rates.md, 4.435194},
                                   {rates.ed02, 89.199955},
                                   {rates.ed04, 6.290274},
                                   {rates.ed06, 0.074576}};
    for (const auto &[rate, percent] : branching)
        COMPARE_NEAR(100.0 * rate / rates.total(), percent, 1e-5);
}

void TestRadiativeRates::reducedTensorElements()
{
    COMPARE_NEAR(europium::reducedC[2], -std::sqrt(28.0 / 15.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[4], std::sqrt(14.0 / 11.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[6], -std::sqrt(700.0 / 429.0), 5e-4);
}

QTEST_GUILESS_MAIN(TestRadiativeRates)
#include "tst_radiativerates.moc"
