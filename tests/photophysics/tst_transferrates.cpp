#include "TestSupport.h"
#include "photophysics/transferRates_p.h"

#include <QtTest>

#include <cmath>

using europium::ByRank;
using transferRates::Formulas;
using transferRates::Transfer;

/// Rates of energy transfer against the same laws in atomic units, and their scaling laws.
class TestTransferRates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void spectralOverlap();
    void boltzmannFactor();
    void overlaps();
    void channelInAtomicUnits_data();
    void channelInAtomicUnits();
    void unknownModelHasNoExchange();
    void distanceLaws_data();
    void distanceLaws();
    void degeneracies();
    void detailedBalance();
    void closedChannelsKeepTheirRates();
    void twoTriplets();
};

namespace {

// CODATA 2018, atomic units.
constexpr double hartreePerWavenumber = 1.0 / 219474.6313632;
constexpr double secondsPerAtomicTime = 2.4188843265857e-17;
constexpr double bohrPerAngstrom = 1.0 / 0.529177210903;
constexpr double esuCmPerAtomicDipole = 2.541746473e-18;

constexpr double angstrom = 1e-8;

double relative(double got, double expected)
{
    return got / expected - 1.0;
}

ByRank onlyRank(int lambda, double value)
{
    ByRank parameters = {};
    parameters[static_cast<std::size_t>(lambda)] = value;
    return parameters;
}

Transfer bothDonors(double singletEnergy, double tripletEnergy)
{
    Transfer transfer;
    transfer.donors.singlet = {1, singletEnergy, 4.0 * angstrom};
    transfer.donors.triplet = {1, tripletEnergy, 5.0 * angstrom};
    transfer.openChannels = {true, true, true, true, true, true, true, true, true, true};
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

void TestTransferRates::spectralOverlap()
{
    const double peak = transferRates::F(0.0, 3250.0);
    COMPARE_NEAR(peak, 7.275750237e11, 1e3);
    COMPARE_NEAR(transferRates::F(3250.0, 3250.0) / peak, 0.5, 1e-14);
    COMPARE_NEAR(transferRates::F(-3250.0, 3250.0) / peak, 0.5, 1e-14);
    double area = 0.0; // of the band over energies in erg
    for (int i = -2000; i <= 2000; ++i)
        area += transferRates::F(10.0 * i, 3250.0) * 10.0 * 1.9864458571e-16;
    COMPARE_NEAR(area, 1.0, 1e-6);
}

void TestTransferRates::boltzmannFactor()
{
    COMPARE_NEAR(transferRates::boltzmannFactor(1000.0), 8.26336654e-3, 1e-11);
    COMPARE_NEAR(1.0 / std::log(transferRates::boltzmannFactor(-1.0)), 208.5104, 5e-5);
    QCOMPARE(transferRates::boltzmannFactor(0.0), 1.0);
}

void TestTransferRates::overlaps()
{
    COMPARE_NEAR(transferRates::overlap4fLigand(2.4, 2.4, 3.5), 0.05, 1e-17);
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
    const struct
    {
        const char *level;
        double energy;
        int J;
        int rank;
        double strength;
    } levels[] = {{"5D4", 27586.0, 4, 4, 0.0011},
                  {"5G6", 26752.0, 6, 6, 0.0037},
                  {"5L6", 25325.0, 6, 6, 0.0153},
                  {"5D1", 19027.0, 1, 0, 0.25},
                  {"5D0", 17293.0, 0, 0, 0.2}};
    for (const int donor : {0, 10})
        for (int i = 0; i < 5; ++i)
            QTest::addRow("%s to %s", donor == 0 ? "singlet" : "triplet", levels[i].level)
                << donor + i << levels[i].energy << levels[i].J << levels[i].rank
                << levels[i].strength;
}

void TestTransferRates::channelInAtomicUnits()
{
    QFETCH(int, slot);
    QFETCH(double, level);
    QFETCH(int, J);
    QFETCH(int, rank);
    QFETCH(double, strength);
    const bool isSinglet = slot < 10;
    const double energy = isSinglet ? 29000.0 : 21500.0;
    const double R = (isSinglet ? 4.0 : 5.0) * bohrPerAngstrom;
    const double degeneracy = (2.0 * J + 1.0) * (isSinglet ? 1.0 : 3.0);
    const double dipole2 = 1e-35 / (esuCmPerAtomicDipole * esuCmPerAtomicDipole);
    const double common = overlapPerHartree(energy - level) * dipole2 / secondsPerAtomicTime;
    for (const int model : {0, 1, 2}) {
        double expected = 0.0;
        if (rank > 0) {
            const double radial = rank == 4 ? 2.02 : 9.039;
            const double element = rank == 4 ? 1.128 : 1.2774;
            const double unshielded = rank == 4 ? 0.861 : 0.9;
            const double omega = (rank == 4 ? 0.7 : 0.2) * 1e-4 * bohrPerAngstrom * bohrPerAngstrom;
            const double dipole = 2.0 * omega / std::pow(R, 6) * (model == 2 ? 1.0 : 0.04);
            const double multipole =
                (rank + 1) * std::pow(radial * element * unshielded, 2) / std::pow(R, 2 * rank + 4);
            expected = 2.0 * M_PI * (dipole + multipole) * strength / degeneracy * common;
        } else {
            const double exchange =
                8.0 * M_PI / 3.0 * strength * strength / std::pow(R, 4) * common;
            const double rho = 0.05 * std::pow(2.4 / (isSinglet ? 4.0 : 5.0), 3.5);
            expected = model == 2 ? exchange * 0.019 * 0.019 / degeneracy
                                  : exchange * std::pow(rho, model == 0 ? 2 : 4) / (2.0 * J + 1.0);
        }
        Transfer transfer = bothDonors(29000.0, 21500.0);
        transferRates::calcRates(someFormulas(model), transfer);
        const auto k = static_cast<std::size_t>(slot);
        const auto &forward =
            rank > 0 ? transfer.tables.forwardRates : transfer.tables.exchangeForwardRates;
        const auto &other =
            rank > 0 ? transfer.tables.exchangeForwardRates : transfer.tables.forwardRates;
        COMPARE_NEAR(transfer.tables.energyMismatch[k], energy - level, 1e-9);
        COMPARE_NEAR(relative(forward[k], expected), 0.0, 1e-5);
        QCOMPARE(other[k], 0.0);
    }
}

void TestTransferRates::unknownModelHasNoExchange()
{
    Transfer transfer = bothDonors(29000.0, 21500.0);
    transferRates::calcRates(someFormulas(3), transfer);
    Transfer newer = bothDonors(29000.0, 21500.0);
    transferRates::calcRates(someFormulas(2), newer);
    QCOMPARE(transfer.tables.exchangeForwardRates, transferRates::Slots());
    QCOMPARE(transfer.tables.forwardRates, newer.tables.forwardRates);
}

void TestTransferRates::distanceLaws_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<double>("exchangePower"); // R^-4 and that of the overlap
    QTest::newRow("overlap squared") << 0 << 11.0;
    QTest::newRow("overlap to the fourth power") << 1 << 18.0;
    QTest::newRow("shielded") << 2 << 4.0;
}

void TestTransferRates::distanceLaws()
{
    QFETCH(int, model);
    QFETCH(double, exchangePower);
    const Formulas formulas = someFormulas(model);
    const double near = 3.7 * angstrom;
    const double far = 2.0 * near;
    const auto power = [](double atNear, double atFar) { return std::log2(atNear / atFar); };
    for (const int lambda : {2, 4, 6}) {
        const ByRank U2 = onlyRank(lambda, 0.01);
        COMPARE_NEAR(
            power(formulas.WetDD(500.0, 2, near, U2, 1), formulas.WetDD(500.0, 2, far, U2, 1)), 6.0,
            1e-12);
        COMPARE_NEAR(
            power(formulas.WetDM(500.0, 2, near, U2, 1), formulas.WetDM(500.0, 2, far, U2, 1)),
            2.0 * lambda + 4.0, 1e-12);
    }
    COMPARE_NEAR(power(formulas.calcWetEX(500.0, 1, 0.25, near, 3),
                       formulas.calcWetEX(500.0, 1, 0.25, far, 3)),
                 exchangePower, 1e-12);
}

void TestTransferRates::degeneracies()
{
    // The older exchange models leave the degeneracy of the donor out.
    const ByRank U2 = onlyRank(4, 0.01);
    const double R = 4.0 * angstrom;
    for (const int model : {0, 1, 2}) {
        const Formulas formulas = someFormulas(model);
        COMPARE_NEAR(formulas.WetDD(0.0, 4, R, U2, 1) / formulas.WetDD(0.0, 4, R, U2, 3), 3.0,
                     1e-12);
        COMPARE_NEAR(formulas.WetDM(0.0, 0, R, U2, 1) / formulas.WetDM(0.0, 4, R, U2, 1), 9.0,
                     1e-12);
        COMPARE_NEAR(formulas.calcWetEX(0.0, 1, 0.2, R, 1) / formulas.calcWetEX(0.0, 1, 0.2, R, 3),
                     model == 2 ? 3.0 : 1.0, 1e-12);
    }
}

void TestTransferRates::detailedBalance()
{
    // A singlet in resonance with 5D4 and a triplet below 5D1.
    Transfer transfer = bothDonors(27586.0, 18000.0);
    transferRates::calcRates(someFormulas(2), transfer);
    const transferRates::Tables &tables = transfer.tables;
    QVERIFY(tables.forwardRates[0] > 0.0);
    QCOMPARE(tables.backwardRates[0], tables.forwardRates[0]);
    QVERIFY(tables.exchangeBackwardRates[13] > tables.exchangeForwardRates[13]);
    const double secondRadiationConstant = 1.438776877; // cm K
    for (const transferChannels::Channel &channel : transferChannels::channels) {
        if (channel.donor == transferChannels::FirstTriplet)
            continue;
        const double mismatch = tables.energyMismatch[static_cast<std::size_t>(channel.slot)];
        const double expected = -mismatch * secondRadiationConstant / 300.0;
        COMPARE_NEAR(std::log(tables.backward(channel) / tables.forward(channel)), expected,
                     1e-5 * std::abs(expected));
    }
}

void TestTransferRates::closedChannelsKeepTheirRates()
{
    Transfer transfer = bothDonors(29000.0, 21500.0);
    transfer.openChannels = EnergyTransferChannels();
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

void TestTransferRates::twoTriplets()
{
    Transfer transfer = bothDonors(29000.0, 21500.0);
    transfer.openChannels.tripletTo5G6 = true;
    transfer.twoTriplets = true;
    transfer.donors.firstTriplet = {1, 23000.0, 6.0 * angstrom};
    const Formulas formulas = someFormulas(2);
    transferRates::calcRates(formulas, transfer);
    const auto &mismatch = transfer.tables.energyMismatch;
    COMPARE_NEAR(mismatch[5], 23000.0 - 27586.0, 1e-9);
    COMPARE_NEAR(mismatch[11], 21500.0 - 26752.0, 1e-9);
    COMPARE_NEAR(mismatch[3], 29000.0 - 19027.0, 1e-9);
    const ByRank U2 = onlyRank(4, 0.0011);
    const double R = 6.0 * angstrom;
    COMPARE_NEAR(
        relative(transfer.tables.forwardRates[5], formulas.WetDD(mismatch[5], 4, R, U2, 3) +
                                                      formulas.WetDM(mismatch[5], 4, R, U2, 3)),
        0.0, 1e-14);
    COMPARE_NEAR(relative(transfer.tables.exchangeForwardRates[14],
                          formulas.calcWetEX(21500.0 - 17293.0, 0, 0.2, 5.0 * angstrom, 3)),
                 0.0, 1e-14);
}

QTEST_GUILESS_MAIN(TestTransferRates)
#include "tst_transferrates.moc"
