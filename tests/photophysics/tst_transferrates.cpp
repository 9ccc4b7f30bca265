#include "TestSupport.h"
#include "photophysics/transferRates_p.h"

#include <QtTest>

#include <cmath>

using transferRates::Formulas;
using transferRates::Transfer;

/// Rates of energy transfer against the same laws in atomic units.
class TestTransferRates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void factors();
    void channelInAtomicUnits_data();
    void channelInAtomicUnits();
    void closedChannelsKeepTheirRates();
};

namespace {

// CODATA 2018, atomic units.
constexpr double hartreePerWavenumber = 1.0 / 219474.6313632;
constexpr double secondsPerAtomicTime = 2.4188843265857e-17;
constexpr double bohrPerAngstrom = 1.0 / 0.529177210903;
constexpr double esuCmPerAtomicDipole = 2.541746473e-18;
constexpr double secondRadiationConstant = 1.438776877; // cm K

constexpr double angstrom = 1e-8;

struct State
{
    double energy;   // cm^-1
    double distance; // Angstrom
};
constexpr State singlet = {29000.0, 4.0};
constexpr State firstTriplet = {23000.0, 6.0};
constexpr State triplet = {21500.0, 5.0};

Transfer twoTriplets()
{
    Transfer transfer;
    transfer.donors.singlet = {1, singlet.energy, singlet.distance, {}};
    transfer.donors.firstTriplet = {1, firstTriplet.energy, firstTriplet.distance, {}};
    transfer.donors.triplet = {2, triplet.energy, triplet.distance, {}};
    transfer.twoTriplets = true;
    return transfer;
}

Formulas someFormulas(int model)
{
    Formulas formulas;
    formulas.etModel = model;
    formulas.minDistance = 2.4 * angstrom;
    formulas.omegaEd = {0.0, 0.0, 0.3e-20, 0.0, 0.7e-20, 0.0, 0.2e-20};
    return formulas;
}

/// Normalised Gaussian of half width at half maximum 3250 cm^-1, per hartree.
double overlapPerHartree(double delta)
{
    const double variance = 3250.0 * 3250.0 / (2.0 * std::log(2.0));
    return std::exp(-delta * delta / (2.0 * variance)) / std::sqrt(2.0 * M_PI * variance) /
           hartreePerWavenumber;
}

} // namespace

void TestTransferRates::factors()
{
    COMPARE_NEAR(transferRates::F(0.0, 3250.0), 7.275750237e11, 1e3);
    COMPARE_NEAR(transferRates::boltzmannFactor(1000.0), 8.26336654e-3, 1e-11);
    COMPARE_NEAR(transferRates::overlap4fLigand(2.4, 9.6, 3.5), 0.05 / 128.0, 1e-17);
    COMPARE_NEAR(transferRates::overlap4f4f(0.0), 311.3216, 1e-10);
    COMPARE_NEAR(transferRates::overlap4f4f(3.26226 * angstrom) /
                     transferRates::overlap4f4f(3.0 * angstrom),
                 std::exp(-1.0), 1e-12);
}

void TestTransferRates::channelInAtomicUnits_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<double>("level");
    QTest::addColumn<int>("J");
    QTest::addColumn<int>("rank"); // of the multipole; 0 for exchange
    QTest::addColumn<double>("strength");
    for (const int donor : {0, 5, 10}) {
        const auto row = [donor](int i, const char *name, double energy, int J, int rank,
                                 double strength) {
            QTest::addRow("slot %d, to %s", donor + i, name)
                << donor + i << energy << J << rank << strength;
        };
        row(0, "5D4", 27586.0, 4, 4, 0.0011);
        if (donor == 5)
            continue;
        row(1, "5G6", 26752.0, 6, 6, 0.0037);
        row(2, "5L6", 25325.0, 6, 6, 0.0153);
        row(3, "5D1", 19027.0, 1, 0, 0.25);
        row(4, "5D0", 17293.0, 0, 0, 0.2);
    }
}

void TestTransferRates::channelInAtomicUnits()
{
    QFETCH(int, slot);
    QFETCH(double, level);
    QFETCH(int, J);
    QFETCH(int, rank);
    QFETCH(double, strength);
    const State donor = slot < 5 ? singlet : slot == 5 ? firstTriplet : triplet;
    const double R = donor.distance * bohrPerAngstrom;
    const double degeneracy = (2.0 * J + 1.0) * (slot < 5 ? 1.0 : 3.0);
    const double dipole2 = 1e-35 / (esuCmPerAtomicDipole * esuCmPerAtomicDipole);
    const double common = overlapPerHartree(donor.energy - level) * dipole2 / secondsPerAtomicTime;
    const double rho = 0.05 * std::pow(2.4 / donor.distance, 3.5);
    for (const int model : {0, 1, 2, 3}) {
        double expected = 0.0; // model 3 has no exchange
        if (rank > 0) {
            const double radial = rank == 4 ? 2.02 : 9.039;
            const double element = rank == 4 ? 1.128 : 1.2774;
            const double unshielded = rank == 4 ? 0.861 : 0.9;
            const double omega = (rank == 4 ? 0.7 : 0.2) * 1e-4 * bohrPerAngstrom * bohrPerAngstrom;
            const double dipole = 2.0 * omega / std::pow(R, 6) * (model >= 2 ? 1.0 : 0.04);
            const double multipole =
                (rank + 1) * std::pow(radial * element * unshielded, 2) / std::pow(R, 2 * rank + 4);
            expected = 2.0 * M_PI * (dipole + multipole) * strength / degeneracy * common;
        } else if (model < 3) {
            // The older models leave the degeneracy of the donor out.
            expected = 8.0 * M_PI / 3.0 * strength * strength / std::pow(R, 4) * common *
                       (model == 2 ? 0.019 * 0.019 / degeneracy
                                   : std::pow(rho, model == 0 ? 2 : 4) / (2.0 * J + 1.0));
        }
        Transfer transfer = twoTriplets();
        transfer.openChannels = {true, true, true, true, true, true, true, true, true, true};
        transferRates::calcRates(someFormulas(model), transfer);
        const auto k = static_cast<std::size_t>(slot);
        const transferRates::Tables &t = transfer.tables;
        const bool isExchange = rank == 0;
        const double forward = isExchange ? t.exchangeForwardRates[k] : t.forwardRates[k];
        const double backward = isExchange ? t.exchangeBackwardRates[k] : t.backwardRates[k];
        QCOMPARE(isExchange ? t.forwardRates[k] : t.exchangeForwardRates[k], 0.0);
        COMPARE_NEAR(t.energyMismatch[k], donor.energy - level, 1e-9);
        COMPARE_NEAR(forward, expected, 1e-5 * expected);
        const double exponent = (level - donor.energy) * secondRadiationConstant / 300.0;
        if (expected > 0.0)
            COMPARE_NEAR(std::log(backward / forward), exponent, 1e-5 * std::abs(exponent));
    }
}

void TestTransferRates::closedChannelsKeepTheirRates()
{
    Transfer transfer = twoTriplets();
    transfer.twoTriplets = false;
    transfer.tables.forwardRates[1] = 7.0;
    transferRates::calcRates(someFormulas(2), transfer);
    for (std::size_t slot = 0; slot < transferRates::slotCount; ++slot) {
        const bool isDefault = slot == 0 || slot == 13 || slot == 14;
        const double rate =
            transfer.tables.forwardRates[slot] + transfer.tables.exchangeForwardRates[slot];
        if (slot == 1)
            QCOMPARE(rate, 7.0);
        else
            QCOMPARE(rate > 0.0, isDefault);
    }
}

QTEST_GUILESS_MAIN(TestTransferRates)
#include "tst_transferrates.moc"
