#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <QtTest>

#include <cmath>

using Calculation = LanqorSpectroscopicCalculation;
using testSupport::MessageSpy;
using testSupport::sourceFile;

/// The calculation object: from rates to the yield, by given values and by files.
///
/// Expected rates, populations and yields were evaluated by a separate script in atomic units,
/// with CODATA 2018 constants and the populations in exact rational arithmetic.
class TestSpectroscopic : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void radiativeRates();
    void estimateOfAnrad_data();
    void estimateOfAnrad();
    void lifetimes();
    void givenValues();
    void transferNeedsExcitedStates();
    void badDonors_data();
    void badDonors();
    void route_data();
    void route();
    void allChannels();
    void twoTriplets();
    void closedChannels();
    void earlierRatesAreUsedAgain();
    void stateSelection_data();
    void stateSelection();
    void zindoListsBeginWithTheGroundState();
    void constructionErrors_data();
    void constructionErrors();
    void reports();
    void reportSections();
    void corpusRoute();
};

namespace {

const QString complexFile = sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out"));
const QString statesFile = sourceFile(QStringLiteral("examples/data/eu_l2_zindos_excerpt.orcout"));

constexpr EnergyTransferChannels everyChannel = {true, true, true, true, true,
                                                 true, true, true, true, true};

/// Omega, refractive index 1.5 and a lifetime of 0.5 ms, as used for the expected values.
void setIllustrativeValues(Calculation &calculation)
{
    calculation.setOmegaValues(12.0, 5.0, 0.3);
    calculation.setOmegaEdValues(0.4, 0.3, 0.1);
    calculation.setLifeTime(0.5e-3);
    calculation.setETModel(2);
}

/// The example's excited states, of each kind the first so many.
QString statesCutTo(int singlets, int triplets)
{
    const QString blank = QStringLiteral("\n\n");
    QStringList kept;
    int states = 0;
    int limit = singlets;
    for (const QString &part : QString::fromUtf8(testSupport::readAll(statesFile)).split(blank)) {
        if (part.contains(QStringLiteral("(TRIPLETS)"))) {
            limit = triplets;
            states = 0;
        }
        if (!part.startsWith(QStringLiteral("STATE ")) || ++states <= limit)
            kept.append(part);
    }
    testSupport::scratchFile(QStringLiteral("states.pointcharge"),
                             testSupport::readAll(sourceFile(QStringLiteral(
                                 "examples/data/eu_l2_zindos_excerpt.pointcharge"))));
    return testSupport::scratchFile(QStringLiteral("states.orcout"), kept.join(blank).toUtf8());
}

double sumOfPopulations(const Calculation &calculation)
{
    double sum = 0.0;
    for (int state = 0; state < 9; ++state)
        sum += calculation.getPopulation(state);
    return sum;
}

void compareRelative(double got, double expected, const char *what)
{
    QVERIFY2(std::abs(got / expected - 1.0) < 2e-5,
             qPrintable(QStringLiteral("%1: got %2, expected %3")
                            .arg(QLatin1String(what))
                            .arg(got, 0, 'g', 12)
                            .arg(expected, 0, 'g', 12)));
}

} // namespace

void TestSpectroscopic::radiativeRates()
{
    // Published beta-diketonate diaqua complex of Eu3+.
    Calculation calculation(nullptr);
    calculation.setOmegaValues(33.0, 4.6, 0.0);
    calculation.setLifeTime(0.26e-3);
    calculation.calcArad();
    COMPARE_NEAR(calculation.getArad(), 1109.15, 0.01);
    COMPARE_NEAR(calculation.getAnrad(), 2737.0, 0.1);
    COMPARE_NEAR(calculation.getQuantumEfficiency(), 28.84, 0.005);
    COMPARE_NEAR(calculation.getAradMD() + calculation.getArad02() + calculation.getArad04() +
                     calculation.getArad06(),
                 calculation.getArad(), 1e-9);
    double sum = 0.0;
    for (int J = -1; J < 9; ++J) {
        sum += calculation.getBranchingRatio(J);
        if (J != 1 && J != 2 && J != 4)
            QCOMPARE(calculation.getBranchingRatio(J), 0.0);
    }
    COMPARE_NEAR(sum, 100.0, 1e-12);
    COMPARE_NEAR(calculation.getBranchingRatio(2), 100.0 * 990.096 / 1109.146, 1e-3);
}

void TestSpectroscopic::estimateOfAnrad_data()
{
    QTest::addColumn<double>("arad");
    QTest::addColumn<double>("anrad");
    QTest::newRow("100") << 100.0 << 440.717;
    QTest::newRow("500") << 500.0 << 88.8615;
    QTest::newRow("1000") << 1000.0 << 32.6100;
}

void TestSpectroscopic::estimateOfAnrad()
{
    QFETCH(double, arad);
    QFETCH(double, anrad);
    Calculation calculation(nullptr);
    calculation.calcAnrad(arad);
    QCOMPARE(calculation.getArad(), arad);
    COMPARE_NEAR(calculation.getAnrad(), anrad, 1e-3);
    COMPARE_NEAR(calculation.getLifeTime() * (arad + calculation.getAnrad()), 1.0, 1e-14);
    COMPARE_NEAR(calculation.getQuantumEfficiency(), 100.0 * arad * calculation.getLifeTime(),
                 1e-10);
    const double estimate = calculation.getAnrad();
    calculation.calcAnrad(0.0); // by the rate in store
    QCOMPARE(calculation.getAnrad(), estimate);
}

void TestSpectroscopic::lifetimes()
{
    Calculation estimated(nullptr);
    estimated.setOmegaValues(12.0, 5.0, 0.3);
    estimated.calcArad();
    Calculation reference(nullptr);
    reference.calcAnrad(estimated.getArad());
    QCOMPARE(estimated.getAnrad(), reference.getAnrad());
    QCOMPARE(estimated.getLifeTime(), reference.getLifeTime());

    Calculation tooLong(nullptr);
    tooLong.setOmegaValues(33.0, 4.6, 0.0);
    tooLong.setLifeTime(2e-3);
    tooLong.calcArad();
    COMPARE_NEAR(tooLong.getAnrad(), 500.0 - tooLong.getArad(), 1e-9);
    QVERIFY(tooLong.getAnrad() < 0.0 && tooLong.getQuantumEfficiency() > 100.0);
    tooLong.initializeParameters();
    QCOMPARE(tooLong.getLifeTime() + tooLong.getArad() + tooLong.getAnrad(), 0.0);

    Calculation silent(nullptr);
    MessageSpy spy(silent);
    silent.calcArad();
    QVERIFY(spy.contains(QStringLiteral("intensity parameters are zero")));
}

void TestSpectroscopic::givenValues()
{
    Calculation calculation(nullptr);
    calculation.setOmegaValues(33.0, 4.6, 0.0);
    calculation.setOmegaEdValues(0.3, 0.2, 0.0);
    calculation.setETModel(2);
    QVERIFY2(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 1109.14586, 2737.00799),
             qPrintable(calculation.getLastError()));
    compareRelative(calculation.getForwardRate(0), 789656.055, "singlet -> 5D4");
    compareRelative(calculation.getBackwardRate(0), 108427.895, "5D4 -> singlet");
    compareRelative(calculation.getExchangeForwardRate(13), 4285577223.0, "triplet -> 5D1");
    compareRelative(calculation.getExchangeBackwardRate(13), 3664222.107, "5D1 -> triplet");
    compareRelative(calculation.getExchangeForwardRate(14), 4830928364.4, "triplet -> 5D0");
    compareRelative(calculation.getExchangeBackwardRate(14), 1010.07481, "5D0 -> triplet");
    const double mismatches[] = {414.0, 0.0, 0.0, 8973.0, 10707.0};
    for (int k = 0; k < 5; ++k) {
        COMPARE_NEAR(calculation.getEnergyMismatch(k), mismatches[k], 1e-9);
        COMPARE_NEAR(calculation.getEnergyMismatch(10 + k),
                     mismatches[k] == 0.0 ? 0.0 : mismatches[k] - 7500.0, 1e-9);
    }
    const double populations[] = {0.279598100,   2.74890839e-5, 0.0,
                                  6.07205154e-7, 1.95835215e-5, 0.0,
                                  0.0,           5.62110474e-4, 0.719792110};
    for (int state = 0; state < 9; ++state) {
        if (populations[state] == 0.0)
            QCOMPARE(calculation.getPopulation(state), 0.0);
        else
            compareRelative(calculation.getPopulation(state), populations[state], "population");
    }
    compareRelative(calculation.getQuantumYield(), 28.5536432, "yield");
    // The rates that were handed over belong to that call.
    QCOMPARE(calculation.getArad(), 0.0);
    QCOMPARE(calculation.getForwardRate(-1), 0.0);
    QCOMPARE(calculation.getForwardRate(20), 0.0);
}

void TestSpectroscopic::transferNeedsExcitedStates()
{
    Calculation calculation(nullptr);
    setIllustrativeValues(calculation);
    QVERIFY(!calculation.calcEnergyTransferRate());
    QVERIFY(calculation.getLastError().contains(QStringLiteral("excited-state")));
    QVERIFY(!calculation.calcQuantumYieldNEW());
    QVERIFY(!calculation.calcQuantumYieldTwoTriplets());
    for (const int model : {0, 1}) {
        QVERIFY(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 500.0, 500.0));
        calculation.setETModel(model);
        MessageSpy spy(calculation);
        QVERIFY(!calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 500.0, 500.0));
        QVERIFY(
            calculation.getLastError().contains(QStringLiteral("shortest ion-ligand distance")));
        QCOMPARE(spy.messages.size(), 1);
        for (int k = 0; k < 20; ++k)
            QCOMPARE(calculation.getForwardRate(k) + calculation.getExchangeForwardRate(k), 0.0);
        QCOMPARE(sumOfPopulations(calculation) + calculation.getQuantumYield(), 0.0);
        calculation.setETModel(2);
    }
}

void TestSpectroscopic::badDonors_data()
{
    QTest::addColumn<double>("rlSinglet");
    QTest::addColumn<double>("rlTriplet");
    QTest::addColumn<double>("tripletEnergy");
    QTest::addColumn<QString>("named");
    QTest::newRow("singlet on the ion") << 0.0 << 5.0 << 20000.0 << "singlet";
    QTest::newRow("negative distance") << 4.0 << -5.0 << 20000.0 << "triplet";
    QTest::newRow("no energy") << 4.0 << 5.0 << std::nan("") << "triplet";
}

void TestSpectroscopic::badDonors()
{
    QFETCH(double, rlSinglet);
    QFETCH(double, rlTriplet);
    QFETCH(double, tripletEnergy);
    QFETCH(QString, named);
    Calculation calculation(nullptr);
    setIllustrativeValues(calculation);
    QVERIFY(
        !calculation.calcQuantumYield(rlSinglet, rlTriplet, 28000.0, tripletEnergy, 500.0, 500.0));
    QVERIFY(calculation.getLastError().contains(named));
    QCOMPARE(calculation.getQuantumYield(), 0.0);
}

void TestSpectroscopic::route_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<double>("multipolar");
    QTest::addColumn<double>("to5D1");
    QTest::addColumn<double>("back5D1");
    QTest::addColumn<double>("triplet");
    QTest::addColumn<double>("yield");
    QTest::newRow("overlap squared")
        << 0 << 3285.98969 << 31119312.5 << 2306.53944 << 2.66909702e-5 << 23.9914016;
    QTest::newRow("overlap to the fourth power")
        << 1 << 3285.98969 << 79.0375320 << 5.85820090e-3 << 0.0892996708 << 0.0387846533;
    QTest::newRow("shielded") << 2 << 49050.9831 << 1474390639.0 << 109280.697 << 5.99520984e-7
                              << 24.0291732;
}

void TestSpectroscopic::route()
{
    QFETCH(int, model);
    QFETCH(double, multipolar);
    QFETCH(double, to5D1);
    QFETCH(double, back5D1);
    QFETCH(double, triplet);
    QFETCH(double, yield);
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 0, 0);
    QCOMPARE(calculation.getLastError(), QString());
    MessageSpy spy(calculation);
    setIllustrativeValues(calculation);
    calculation.setETModel(model);
    QVERIFY2(calculation.calcQuantumYieldNEW(), qPrintable(calculation.getLastError()));
    // What was said while the states were read is heard now.
    QVERIFY(spy.contains(QStringLiteral("successfully loaded from the ORCA output")));
    // RL of the example has more digits than the four of the expected values.
    const double tolerance = 3e-4;
    COMPARE_NEAR(calculation.getForwardRate(0) / multipolar, 1.0, tolerance);
    COMPARE_NEAR(calculation.getExchangeForwardRate(13) / to5D1, 1.0, tolerance);
    COMPARE_NEAR(calculation.getExchangeBackwardRate(13) / back5D1, 1.0, tolerance);
    COMPARE_NEAR(calculation.getPopulation(3) / triplet, 1.0, tolerance);
    COMPARE_NEAR(calculation.getQuantumYield() / yield, 1.0, tolerance);
    COMPARE_NEAR(sumOfPopulations(calculation), 1.0, 1e-12);
    QVERIFY(calculation.getQuantumYield() <= calculation.getQuantumEfficiency());
}

void TestSpectroscopic::allChannels()
{
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 0, 0);
    setIllustrativeValues(calculation);
    calculation.setEnergyTransferChannels(everyChannel);
    QVERIFY(calculation.calcQuantumYieldNEW());
    // A triplet below 5D4, 5G6 and 5L6 takes back nearly all that it gave.
    COMPARE_NEAR(calculation.getBackwardRate(10) / 9.97864033e16, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getPopulation(5) / 1.47247209e-16, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getPopulation(7) / 8.00143256e-4, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getQuantumYield() / 24.0304080, 1.0, 3e-5);
}

void TestSpectroscopic::twoTriplets()
{
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 1, 1);
    setIllustrativeValues(calculation);
    calculation.setConsiderTwoTriplets(true);
    MessageSpy spy(calculation);
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    COMPARE_NEAR(calculation.getEnergyMismatch(5), 21009.9 - 27586.0, 1e-6);
    COMPARE_NEAR(calculation.getEnergyMismatch(13), 23087.5 - 19027.0, 1e-6);
    COMPARE_NEAR(calculation.getEnergyMismatch(4), 31107.7 - 17293.0, 1e-6);
    COMPARE_NEAR(calculation.getEnergyMismatch(12), 23087.5 - 25325.0, 1e-6);
    COMPARE_NEAR(calculation.getForwardRate(5) / 2004.88021, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getExchangeForwardRate(14) / 496073481.0, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getPopulation(2) / 8.27684090e-6, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getPopulation(3) / 1.28926991e-6, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getQuantumYield() / 24.0112961, 1.0, 3e-5);
    COMPARE_NEAR(sumOfPopulations(calculation), 1.0, 1e-12);
    QVERIFY(!spy.contains(QStringLiteral("leave open channels out")));

    EnergyTransferChannels more;
    more.singletTo5L6 = true;
    calculation.setEnergyTransferChannels(more);
    QVERIFY(calculation.calcEnergyTransferRate());
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    QVERIFY(spy.contains(QStringLiteral("singlet -> 5L6")));

    Calculation oneOnly(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                        statesCutTo(4, 1), 1, 1);
    setIllustrativeValues(oneOnly);
    oneOnly.setConsiderTwoTriplets(true);
    QVERIFY(!oneOnly.calcQuantumYieldTwoTriplets());
    QVERIFY2(oneOnly.getLastError().contains(QStringLiteral("triplet state number 2")),
             qPrintable(oneOnly.getLastError()));
}

void TestSpectroscopic::closedChannels()
{
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 0, 0);
    setIllustrativeValues(calculation);
    calculation.setEnergyTransferChannels(
        {false, false, false, false, false, false, false, false, false, false});
    QVERIFY(calculation.calcQuantumYieldNEW());
    QCOMPARE(calculation.getQuantumYield(), 0.0);
    QCOMPARE(calculation.getPopulation(8), 0.0);
    COMPARE_NEAR(sumOfPopulations(calculation), 1.0, 1e-12);
}

void TestSpectroscopic::earlierRatesAreUsedAgain()
{
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 0, 0);
    setIllustrativeValues(calculation);
    QVERIFY(calculation.calcQuantumYieldNEW());
    const double rate = calculation.getExchangeForwardRate(13);
    calculation.setETModel(0);
    QVERIFY(calculation.calcQuantumYieldNEW());
    QCOMPARE(calculation.getExchangeForwardRate(13), rate);
    QVERIFY(calculation.calcEnergyTransferRate());
    QVERIFY(calculation.getExchangeForwardRate(13) < rate);
}

void TestSpectroscopic::stateSelection_data()
{
    QTest::addColumn<int>("singletCount");
    QTest::addColumn<int>("tripletCount");
    QTest::addColumn<int>("singlet");
    QTest::addColumn<int>("triplet");
    QTest::addColumn<int>("usedSinglet");
    QTest::addColumn<int>("usedTriplet");
    QTest::addColumn<QString>("error");
    const QString none;
    QTest::newRow("lowest") << 4 << 4 << 0 << 0 << 1 << 1 << none;
    QTest::newRow("last") << 4 << 4 << 4 << 4 << 4 << 4 << none;
    QTest::newRow("one too many") << 4 << 4 << 5 << 5 << 1 << 1 << none;
    QTest::newRow("singlet beyond the triplets") << 4 << 2 << 3 << 2 << 1 << 2 << none;
    QTest::newRow("singlet beyond its own list")
        << 2 << 4 << 3 << 1 << 3 << 1 << "no singlet state number 3";
    QTest::newRow("negative") << 4 << 4 << 1 << -1 << 1 << -1 << "no triplet state number -1";
}

void TestSpectroscopic::stateSelection()
{
    QFETCH(int, singletCount);
    QFETCH(int, tripletCount);
    QFETCH(int, singlet);
    QFETCH(int, triplet);
    QFETCH(QString, error);
    const QString states = statesCutTo(singletCount, tripletCount);
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            states, triplet, singlet);
    QVERIFY(calculation.getRLCalculation());
    QCOMPARE(calculation.getRLCalculation()->getSingletStatesCount(), singletCount);
    QCOMPARE(calculation.getRLCalculation()->getTripletStatesCount(), tripletCount);
    QTEST(calculation.getSelectedSinglet(), "usedSinglet");
    QTEST(calculation.getSelectedTriplet(), "usedTriplet");
    QCOMPARE(calculation.getLastError().isEmpty(), error.isEmpty());
    QVERIFY2(calculation.getLastError().contains(error), qPrintable(calculation.getLastError()));
    setIllustrativeValues(calculation);
    QCOMPARE(calculation.calcEnergyTransferRate(), error.isEmpty());
    QCOMPARE(calculation.getForwardRate(0) > 0.0, error.isEmpty());
}

void TestSpectroscopic::zindoListsBeginWithTheGroundState()
{
    const QString states = testSupport::dataFile(QStringLiteral("zindo/eu_ci.zin"));
    for (const int number : {0, 1, 2, 9}) {
        Calculation calculation(nullptr, 0, LanqorInputData::ZindoOutput, complexFile, QString(),
                                states, number, number);
        QCOMPARE(calculation.getLastError(), QString());
        QCOMPARE(calculation.getSelectedSinglet(), 2);
        QCOMPARE(calculation.getSelectedTriplet(), 2);
        QVERIFY(calculation.calcEnergyTransferRate());
        COMPARE_NEAR(calculation.getEnergyMismatch(0), 25000.5 - 27586.0, 1e-9);
        COMPARE_NEAR(calculation.getEnergyMismatch(14), 18000.5 - 17293.0, 1e-9);
    }
    // A state without configurations: there is no RL to calculate with.
    Calculation third(nullptr, 0, LanqorInputData::ZindoOutput, complexFile, QString(), states, 3,
                      3);
    QCOMPARE(third.getSelectedTriplet(), 3);
    QVERIFY(!third.calcEnergyTransferRate());
    QVERIFY2(third.getLastError().contains(QStringLiteral("triplet state number 3")),
             qPrintable(third.getLastError()));
    // Number 2 of the list is the chosen triplet itself.
    Calculation twice(nullptr, 0, LanqorInputData::ZindoOutput, complexFile, QString(), states, 0,
                      0);
    MessageSpy spy(twice);
    twice.setConsiderTwoTriplets(true);
    QVERIFY(twice.calcQuantumYieldTwoTriplets());
    QVERIFY(spy.contains(QStringLiteral("Both triplets are state number 2")));
}

void TestSpectroscopic::constructionErrors_data()
{
    QTest::addColumn<QString>("omegaPath");
    QTest::addColumn<QString>("rlPath");
    QTest::addColumn<QString>("error");
    QTest::newRow("no complex") << "/no/such/file.out" << statesFile << "/no/such/file.out";
    QTest::newRow("no states") << complexFile << "/no/such/file.orcout"
                               << "/no/such/file.orcout";
    QTest::newRow("states of another kind")
        << complexFile << complexFile << "cartesian coordinates";
    QTest::newRow("no triplets") << complexFile << statesCutTo(4, 0) << "TRIPLET";
    QTest::newRow("not europium") << testSupport::dataFile(
                                         QStringLiteral("mopac/gd_no3_3_h2o3_rm1_opt.out"))
                                  << statesFile << "Gd atoms[0] isn't Eu";
}

void TestSpectroscopic::constructionErrors()
{
    QFETCH(QString, omegaPath);
    QFETCH(QString, rlPath);
    QFETCH(QString, error);
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, omegaPath, rlPath,
                            0, 0);
    QVERIFY2(calculation.getLastError().contains(error), qPrintable(calculation.getLastError()));
    QVERIFY(!calculation.calcQuantumYieldNEW());
    QCOMPARE(calculation.getQuantumYield(), 0.0);

    // A Gaussian output may hold states of one kind alone.
    const QString unrestricted =
        testSupport::dataFile(QStringLiteral("gaussian/eu_unrestricted_g03.log"));
    Calculation oneKind(nullptr, 0, LanqorInputData::GaussianOutput, complexFile, QString(),
                        unrestricted, 0, 0);
    QVERIFY(oneKind.getLastError().contains(QStringLiteral("gives no singlet states")));
}

void TestSpectroscopic::reports()
{
    const auto differenceFrom = [](const char *stored, Calculation &calculation) {
        const QString cited = QStringLiteral("complex.out");
        const QString path =
            testSupport::dataFile(QStringLiteral("reports/") + QLatin1String(stored));
        return testSupport::reportDifference(calculation.createOutFileET(cited) +
                                                 calculation.createOutFile(cited),
                                             QString::fromUtf8(testSupport::readAll(path)));
    };
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                            statesFile, 0, 0);
    setIllustrativeValues(calculation);
    calculation.setEnergyTransferChannels(everyChannel);
    QVERIFY(calculation.calcQuantumYieldNEW());
    QCOMPARE(differenceFrom("yield_all_channels.txt", calculation), QString());

    calculation.setConsiderTwoTriplets(true);
    QVERIFY(calculation.calcEnergyTransferRate());
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    QCOMPARE(differenceFrom("yield_two_triplets.txt", calculation), QString());

    Calculation given(nullptr);
    setIllustrativeValues(given);
    given.calcArad();
    QVERIFY(given.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, given.getArad(), given.getAnrad()));
    QCOMPARE(differenceFrom("yield_given_states.txt", given), QString());
}

void TestSpectroscopic::reportSections()
{
    const struct
    {
        bool SpecPrintingOptions::*flag;
        const char *heading;
    } sections[] = {
        {&SpecPrintingOptions::printInputFile, "The data shown below"},
        {&SpecPrintingOptions::printOmega, "Theoretical Judd-Ofelt Intensity Parameters"},
        {&SpecPrintingOptions::printOmegaED, "Forced Electric Dipole Judd-Ofelt Parameters"},
        {&SpecPrintingOptions::printConstants, "Constant values for the Eu3+ Ion"},
        {&SpecPrintingOptions::printDonorStates, "Singlet and Triplet Excited States Energies"},
        {&SpecPrintingOptions::printGama, "gama(l) Parameters"},
        {&SpecPrintingOptions::printFranckCondon, "Frank Condon's Factor (F)"},
        {&SpecPrintingOptions::printTransferRates, "Energy Transfer (Wet) and Back-Transfer"},
        {&SpecPrintingOptions::printArad, "Radiative emission rate (Arad)"},
        {&SpecPrintingOptions::printAnrad, "Nonradiative Decay Rate (Anrad)"},
        {&SpecPrintingOptions::printPopulations, "Level Population of each State"},
        {&SpecPrintingOptions::printQuantumYield, "Quantum Yield:"},
    };
    Calculation calculation(nullptr);
    setIllustrativeValues(calculation);
    QVERIFY(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 500.0, 500.0));
    const auto report = [&calculation](const SpecPrintingOptions &options) {
        calculation.setSpecPrintingOptions(options);
        return calculation.createOutFileET(QString()) + calculation.createOutFile(QString());
    };
    const QString whole = report(SpecPrintingOptions());
    for (const auto &section : sections) {
        SpecPrintingOptions others;
        others.*section.flag = false;
        const QString text = report(others);
        QVERIFY(whole.count(QLatin1String(section.heading)) == 1);
        QVERIFY(!text.contains(QLatin1String(section.heading)));
        for (const auto &other : sections)
            QVERIFY(other.flag == section.flag || text.contains(QLatin1String(other.heading)));
    }
}

void TestSpectroscopic::corpusRoute()
{
    CORPUS_FILE(outputFile, "orca/orca42_zindos_ligand_s25_t25.out");
    CORPUS_FILE(chargeFile, "complete_case/orca42_zindos_ligand_s25_t25.pointcharge");
    CORPUS_FILE(mopacFile, "complete_case/eu_l2_rm1_opt.out");
    const QString states =
        testSupport::scratchFile(QStringLiteral("whole.orcout"), testSupport::readAll(outputFile));
    testSupport::scratchFile(QStringLiteral("whole.pointcharge"), testSupport::readAll(chargeFile));
    Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, mopacFile, mopacFile, states,
                            25, 26);
    QCOMPARE(calculation.getLastError(), QString());
    QCOMPARE(calculation.getSelectedTriplet(), 25);
    QCOMPARE(calculation.getSelectedSinglet(), 1);
    Calculation lowest(nullptr, 0, LanqorInputData::OrcaOutput, mopacFile, mopacFile, states, 0, 0);
    Calculation excerpt(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile,
                        statesFile, 0, 0);
    for (Calculation *each : {&lowest, &excerpt}) {
        setIllustrativeValues(*each);
        QVERIFY(each->calcQuantumYieldNEW());
    }
    COMPARE_NEAR(lowest.getRLCalculation()->getMinDistanceLnLigand(), 2.41698, 5e-6);
    COMPARE_NEAR(lowest.getQuantumYield() / 24.0291732, 1.0, 3e-5);
    QCOMPARE(lowest.getQuantumYield(), excerpt.getQuantumYield());
}

QTEST_GUILESS_MAIN(TestSpectroscopic)
#include "tst_spectroscopic.moc"
