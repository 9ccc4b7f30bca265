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
}

void TestRadiativeRates::reducedTensorElements()
{
    COMPARE_NEAR(europium::reducedC[2], -std::sqrt(28.0 / 15.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[4], std::sqrt(14.0 / 11.0), 5e-4);
    COMPARE_NEAR(europium::reducedC[6], -std::sqrt(700.0 / 429.0), 5e-4);
}

QTEST_GUILESS_MAIN(TestRadiativeRates)
#include "tst_radiativerates.moc"
