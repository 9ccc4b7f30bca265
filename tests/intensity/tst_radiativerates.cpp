#include "TestSupport.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/europium_p.h"

#include <QtTest>

#include <cmath>

/// Radiative rates of 5D0 against the rate of a classical form of the same law, in other units.
class TestRadiativeRates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void angularFrequencyForm();
    void publishedRates();
    void reducedTensorElements();
};

void TestRadiativeRates::angularFrequencyForm()
{
    // A = 4 alpha omega^3 / (3 c^2) * chi * <U>^2 * Omega, in SI units with the fine-structure
    // constant; agreement is limited by the digits of the constants.
    const double fineStructure = 7.2973525693e-3;
    const double speedOfLight = 2.99792458e8; // m/s
    const double squaredElement[] = {0.0032, 0.0023, 0.0002};
    const double sigma[] = {16267.0, 14470.0, 12386.0};
    for (const int lambda : {2, 4, 6}) {
        const double omega = 2.0 * M_PI * speedOfLight * sigma[lambda / 2 - 1] * 100.0;
        for (const double n : {1.0, 1.33, 1.5}) {
            const double chi = n * std::pow((n * n + 2.0) / 3.0, 2);
            const double expected = 4.0 * fineStructure * std::pow(omega, 3) /
                                    (3.0 * speedOfLight * speedOfLight) * chi *
                                    squaredElement[lambda / 2 - 1] * 1e-24; // m^2
            COMPARE_NEAR(radiativeRates::constArad(lambda, n) * 1e-20 / expected, 1.0, 1e-6);
        }
        QCOMPARE(radiativeRates::constArad(lambda + 1, 1.5), 0.0);
    }
}

void TestRadiativeRates::publishedRates()
{
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
}

void TestRadiativeRates::reducedTensorElements()
{
    COMPARE_NEAR(europium::reducedC[2], -std::sqrt(28.0 / 15.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[4], std::sqrt(14.0 / 11.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[6], -std::sqrt(700.0 / 429.0), 5e-4);
    // a0^8 = 6.14...e-67 cm^8 by logarithms
    COMPARE_NEAR(std::log10(europium::radialR8),
                 std::log10(110.03237) + 8.0 * std::log10(5.2917721092e-9), 1e-12);
}

QTEST_GUILESS_MAIN(TestRadiativeRates)
#include "tst_radiativerates.moc"
