#include "TestSupport.h"

#include <LanqorEngine/LanqorEmissionCurve.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorTransferChannels.h>
#include <LanqorEngine/LanqorYieldScan.h>

#include <QtTest>

#include <algorithm>
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
    void emission();
    void emissionCurve();
    void givenValues();
    void transferNeedsExcitedStates();
    void replacedValues();
    void plainValues();
    void kinetics();
    void scans();
    void route();
    void readersInsteadOfFiles();
    void twoTriplets();
    void stateSelection();
    void zindoListsBeginWithTheGroundState();
    void constructionErrors();
    void reportSections();
    void tables();
};

namespace {

const QString complexFile = sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out"));
const QString statesFile = sourceFile(QStringLiteral("examples/data/eu_l2_zindos_excerpt.orcout"));

/// Omega, refractive index 1.5 and a lifetime of 0.5 ms, as used for the expected values.
void setIllustrativeValues(Calculation &calculation)
{
    calculation.setOmegaValues(12.0, 5.0, 0.3);
    calculation.setOmegaEdValues(0.4, 0.3, 0.1);
    calculation.setLifeTime(0.5e-3);
    calculation.setETModel(2);
}

/// The example of complex and ligand states with these values.
class Example : public Calculation
{
public:
    explicit Example(int triplet = 0, int singlet = 0, const QString &states = statesFile)
        : Calculation(nullptr, 0, LanqorInputData::OrcaOutput, complexFile, complexFile, states,
                      triplet, singlet)
    {
        setIllustrativeValues(*this);
    }
};

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

} // namespace

void TestSpectroscopic::emission()
{
    // Published beta-diketonate diaqua complex of Eu3+.
    Calculation calculation(nullptr);
    calculation.setOmegaValues(33.0, 4.6, 0.0);
    calculation.setLifeTime(0.26e-3);
    calculation.calcArad();
    COMPARE_NEAR(calculation.getArad(), 1109.15, 0.01);
    COMPARE_NEAR(calculation.getAnrad(), 2737.0, 0.1);
    COMPARE_NEAR(calculation.getQuantumEfficiency(), 28.84, 0.005);
    const double branching[] = {0.0, 0.0, 49.232, 990.096, 0.0, 69.818, 0.0, 0.0, 0.0, 0.0};
    for (int J = -1; J < 9; ++J)
        COMPARE_NEAR(calculation.getBranchingRatio(J), branching[J + 1] / 11.09146, 1e-3);

    // Estimates without a lifetime.
    const double estimates[][2] = {{100.0, 440.717}, {500.0, 88.8615}, {1109.14586, 27.4921}};
    for (const auto &[arad, anrad] : estimates) {
        calculation.calcAnrad(arad);
        QCOMPARE(calculation.getArad(), arad);
        COMPARE_NEAR(calculation.getAnrad(), anrad, 1e-3);
        COMPARE_NEAR(calculation.getLifeTime() * (arad + anrad), 1.0, 1e-5);
        COMPARE_NEAR(calculation.getQuantumEfficiency(), 100.0 * arad / (arad + anrad), 1e-3);
    }
    calculation.initializeParameters();
    QCOMPARE(calculation.getLifeTime() + calculation.getArad() + calculation.getAnrad(), 0.0);
    calculation.calcArad();
    COMPARE_NEAR(calculation.getAnrad(), 27.4921, 1e-3);

    // A lifetime longer than the radiative one.
    calculation.setLifeTime(2e-3);
    calculation.calcArad();
    COMPARE_NEAR(calculation.getAnrad(), 500.0 - calculation.getArad(), 1e-9);
    QVERIFY(calculation.getQuantumEfficiency() > 100.0);

    MessageSpy spy(calculation);
    calculation.setLifeTime(0.0);
    calculation.calcArad();
    calculation.calcArad(); // the same again needs no word
    QVERIFY(spy.messages.isEmpty());
    calculation.setOmegaValues(0.0, 0.0, 0.0);
    calculation.calcArad();
    QVERIFY(spy.contains(QStringLiteral("intensity parameters are zero")));
    QVERIFY(spy.contains(QStringLiteral("is an earlier estimate")));
}

// The area of each band is its share of the rates, its mean the barycentre; the power per nm is the
// photons per cm^-1 times the third power of the wavenumber.
void TestSpectroscopic::emissionCurve()
{
    const RadiativeRates rates{50.0, 400.0, 45.0, 5.0};
    const QVector<StarkResults::Manifold> split = {{2, {-150.0, -90.0, 0.0, 110.0, 130.0}, 280.0}};
    QVERIFY(LanqorEmissionCurve::calculate(rates, split, 0.0).lines.isEmpty());
    const CalculatedEmission emission = LanqorEmissionCurve::calculate(rates, split, 40.0);
    QCOMPARE(emission.lines.size(), 8);
    QCOMPARE(emission.lines.at(1).energy, 16267.0 + 150.0);
    const QVector<double> &s = emission.wavenumbers;
    const QMap<int, QPair<double, double>> expected = {
        {1, {10.0, 16921.0}}, {2, {80.0, 16267.0}}, {4, {9.0, 14470.0}}, {6, {1.0, 12386.0}}};
    for (auto band = expected.begin(); band != expected.end(); ++band) {
        double area = 0.0;
        double moment = 0.0;
        for (int i = 0; i < s.size(); ++i)
            if (std::abs(s.at(i) - band->second) < 320.0) {
                area += emission.photonDensity.at(i) * (s.at(1) - s.at(0));
                moment += emission.photonDensity.at(i) * (s.at(1) - s.at(0)) * s.at(i);
            }
        QVERIFY(std::abs(area - band->first) < 1e-9);
        QVERIFY(std::abs(moment / area - band->second) < 1e-6);
    }
    const int middle = s.size() / 2;
    for (int i = middle; i < s.size(); i += 100)
        QVERIFY(std::abs(emission.powerDensity.at(i) * emission.powerScale * 1e7 -
                         emission.photonDensity.at(i) * std::pow(s.at(i), 3)) <
                1e-9 * emission.photonDensity.at(i) * std::pow(s.at(i), 3) + 1e-30);
    QCOMPARE(*std::max_element(emission.powerDensity.begin(), emission.powerDensity.end()), 1.0);
}

void TestSpectroscopic::givenValues()
{
    Calculation calculation(nullptr);
    calculation.setOmegaValues(33.0, 4.6, 0.0);
    calculation.setOmegaEdValues(0.3, 0.2, 0.0);
    calculation.setETModel(2);
    QVERIFY2(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 1109.14586, 2737.00799),
             qPrintable(calculation.getLastError()));
    const double mismatches[] = {414, 0, 0, 8973, 10707, 0, 0, 0, 0, 0, -7086, 0, 0, 1473, 3207};
    for (int k = 0; k < 15; ++k)
        COMPARE_NEAR(calculation.getEnergyMismatch(k), mismatches[k], 1e-9);
    COMPARE_NEAR(calculation.getPopulation(8) / 0.719792110, 1.0, 2e-5);
    COMPARE_NEAR(calculation.getQuantumYield() / 28.5536432, 1.0, 2e-5);
    const struct
    {
        double singletEnergy, tripletEnergy, rlTriplet;
        const char *warning;
    } doubtful[] = {{28000.0, 20500.0, 5.1, ""},
                    {20400.0, 20500.0, 5.1, "singlet at 20400 cm^-1 lies below the triplet"},
                    {28000.0, 17292.0, 5.1, "triplet at 17292 cm^-1 lies below 5D0"},
                    {28000.0, 19026.0, 5.1, "back-transfer: T-5D1 by 1 cm^-1"},
                    {28000.0, 20500.0, 0.5, "above 1e13 s^-1, which no molecule has: T-5D1 "}};
    for (const auto &row : doubtful) {
        QVERIFY(calculation.calcQuantumYield(4.5, row.rlTriplet, row.singletEnergy,
                                             row.tripletEnergy, 1109.14586, 2737.00799));
        const QString text = calculation.getResults().warnings.join(QLatin1Char('\n'));
        QVERIFY2(text.contains(QLatin1String(row.warning)), qPrintable(text));
        QCOMPARE(text.isEmpty(), QByteArray(row.warning).isEmpty());
    }
    // The rates that were handed over belong to that call.
    QCOMPARE(calculation.getArad() + calculation.getForwardRate(-1) +
                 calculation.getForwardRate(20),
             0.0);
}

void TestSpectroscopic::transferNeedsExcitedStates()
{
    Calculation calculation(nullptr);
    setIllustrativeValues(calculation);
    QVERIFY(!calculation.calcEnergyTransferRate());
    QVERIFY(calculation.getLastError().contains(QStringLiteral("excited-state")));
    QVERIFY(!calculation.calcQuantumYieldNEW() && !calculation.calcQuantumYieldTwoTriplets());
    const struct
    {
        int model;
        double rlSinglet;
        double rlTriplet;
        double tripletEnergy;
        const char *named;
    } refused[] = {{0, 4.5, 5.1, 20500.0, "shortest ion-ligand distance"},
                   {1, 4.5, 5.1, 20500.0, "shortest ion-ligand distance"},
                   {2, 0.0, 5.0, 2e4, "singlet"},
                   {2, 4.0, -5.0, 2e4, "triplet"},
                   {2, 4.0, 5.0, NAN, "triplet"}};
    for (const auto &row : refused) {
        calculation.setETModel(2);
        QVERIFY(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 500.0, 500.0));
        calculation.setETModel(row.model);
        MessageSpy spy(calculation);
        QVERIFY(!calculation.calcQuantumYield(row.rlSinglet, row.rlTriplet, 28000.0,
                                              row.tripletEnergy, 500.0, 500.0));
        QVERIFY(calculation.getLastError().contains(QLatin1String(row.named)));
        QCOMPARE(spy.messages.size(), 1);
        for (int k = 0; k < 20; ++k)
            QCOMPARE(calculation.getForwardRate(k) + calculation.getExchangeForwardRate(k), 0.0);
        QCOMPARE(sumOfPopulations(calculation) + calculation.getQuantumYield(), 0.0);
        QVERIFY(calculation.getResults().populations.isEmpty());
    }
}

/// Given values take the place of read ones, and stand alone: both ways give the same bits.
void TestSpectroscopic::replacedValues()
{
    EnergyTransferChannels all;
    for (const TransferChannel &channel : LanqorTransferChannels::getChannels())
        if (channel.flag)
            all.*(channel.flag) = true;
    for (const int model : {0, 1, 2})
        for (const bool twoTriplets : {false, true}) {
            Example byFile(4, 2);
            Calculation byHand(nullptr);
            setIllustrativeValues(byHand);
            const LanqorRL &states = *byFile.getRLCalculation();
            byHand.setSingletEnergy(states.getSingletEnergy(2));
            byHand.setSingletRL(states.getSingletRL(2));
            byHand.setTripletRL(states.getTripletRL(twoTriplets ? 2 : 4));
            byHand.setFirstTripletEnergy(states.getTripletEnergy(4));
            byHand.setFirstTripletRL(states.getTripletRL(4));
            byHand.setMinDistanceLnLigand(states.getMinDistanceLnLigand());
            for (Calculation *calculation : {static_cast<Calculation *>(&byFile), &byHand}) {
                calculation->setETModel(model);
                calculation->setEnergyTransferChannels(all);
                calculation->setConsiderTwoTriplets(twoTriplets);
                calculation->setTripletEnergy(18765.0);
                QVERIFY(twoTriplets ? calculation->calcQuantumYieldTwoTriplets()
                                    : calculation->calcQuantumYieldNEW());
                COMPARE_NEAR(calculation->getEnergyMismatch(14), 18765.0 - 17293.0, 1e-9);
            }
            QCOMPARE(byHand.getQuantumYield(), byFile.getQuantumYield());
            const QVector<ReplacedValue> replaced = byFile.getResults().replacedValues;
            QCOMPARE(replaced.size(), 1);
            QCOMPARE(replaced.first().read, states.getTripletEnergy(twoTriplets ? 2 : 4));
        }
    const QByteArray readable = testSupport::readAll(statesFile);
    Example withoutOrbitals(
        4, 2,
        testSupport::scratchFile(QStringLiteral("states.orcout"),
                                 QByteArray(readable).replace("MOLECULAR ORBITALS", "ORBITALS")));
    QVERIFY(withoutOrbitals.getLastError().contains(QStringLiteral("molecular orbitals")));
    QVERIFY(!withoutOrbitals.calcEnergyTransferRate());
    withoutOrbitals.setSingletRL(4.0);
    withoutOrbitals.setTripletRL(5.0);
    QVERIFY(withoutOrbitals.calcQuantumYieldNEW());

    Example calculation(4, 2);
    QVERIFY(calculation.calcEnergyTransferRate());
    const double mismatch = calculation.getEnergyMismatch(14);
    QCOMPARE(withoutOrbitals.getEnergyMismatch(14), mismatch);
    calculation.setTripletShift(-250.0);
    QVERIFY(calculation.calcEnergyTransferRate());
    COMPARE_NEAR(calculation.getEnergyMismatch(14), mismatch - 250.0, 1e-9);
    calculation.setTripletShift(0.0);
    calculation.setTripletEnergy(20000.0);
    calculation.setTripletEnergy(0.0); // the value that was read counts again
    QVERIFY(calculation.calcEnergyTransferRate());
    QCOMPARE(calculation.getEnergyMismatch(14), mismatch);
}

/// The function of plain values gives the bits of the objects; every named number reaches it.
void TestSpectroscopic::plainValues()
{
    Example eight;
    eight.setETModel(1);
    eight.setTripletShift(120.0);
    QVERIFY(eight.calcQuantumYieldNEW());
    Example two(3, 1);
    two.setLifeTime(0.0);
    two.setConsiderTwoTriplets(true);
    QVERIFY(two.calcQuantumYieldTwoTriplets());
    Calculation six(nullptr);
    setIllustrativeValues(six);
    six.setTripletShift(-300.0);
    six.calcArad();
    QVERIFY(six.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, six.getArad(), six.getAnrad()));
    for (const Calculation *calculation :
         {static_cast<Calculation *>(&eight), static_cast<Calculation *>(&two), &six}) {
        YieldInputs inputs = calculation->getYieldInputs();
        const YieldOutcome outcome = Calculation::calcYield(inputs);
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.quantumYield, calculation->getQuantumYield());
        QCOMPARE(outcome.sensitisation, calculation->getSensitisation());
        QCOMPARE(outcome.lifeTime, calculation->getLifeTime());
        QCOMPARE(outcome.backwardRates[14], calculation->getExchangeBackwardRate(14));
        for (const YieldQuantity &quantity : Calculation::getYieldQuantities()) {
            quantity.set(inputs, 3.0);
            COMPARE_NEAR(quantity.get(inputs), 3.0, 1e-14);
        }
    }
    // Only what a scheme does not hold leaves its yield as it is.
    for (const YieldQuantity &quantity : Calculation::getYieldQuantities()) {
        YieldInputs inputs = two.getYieldInputs();
        inputs.etModel = 1;
        inputs.lifeTime = 0.4e-3;
        inputs.kinetics.lowerCascade = 10.0; // as slow as the return from 5D1
        const double before = Calculation::calcYield(inputs).quantumYield;
        quantity.set(inputs, quantity.get(inputs) * 1.01 + 1.0);
        const QStringList idle = {QStringLiteral("omega-ed2"), QStringLiteral("omega-ed6"),
                                  QStringLiteral("excitation-rate")};
        const double change = Calculation::calcYield(inputs).quantumYield / before - 1.0;
        QVERIFY2((std::abs(change) < 1e-12) == idle.contains(quantity.name),
                 qPrintable(QStringLiteral("%1 %2").arg(quantity.name).arg(change)));
    }
    YieldInputs unusable = eight.getYieldInputs();
    unusable.minDistance = 0.0;
    QVERIFY(Calculation::calcYield(unusable).error.contains(QStringLiteral("shortest")));
}

void TestSpectroscopic::scans()
{
    const auto yieldOf = [](double tripletEnergy, double index, YieldInputs *inputs) {
        Calculation calculation(nullptr);
        setIllustrativeValues(calculation);
        calculation.setRefractiveIndex(index);
        calculation.calcArad();
        calculation.calcQuantumYield(4.5, 5.1, 28000.0, tripletEnergy, calculation.getArad(),
                                     calculation.getAnrad());
        if (inputs)
            *inputs = calculation.getYieldInputs();
        return calculation.getQuantumYield();
    };
    YieldInputs inputs;
    const double asGiven = yieldOf(20500.0, 1.5, &inputs);
    LanqorYieldScan scan(inputs);
    for (const char *wrong :
         {"triplet-energy=17500:19000:0", "triplet-energy=17500:19000:-500", "n=1:2:1e-7",
          "n=0.5:2:0.1", "T1=1:2:1", "n=1:2", "n=1:x:1", "lifetime=nan:1:1",
          "temperature=300:3000:100", "excitation-rate=0:1:1"})
        QVERIFY2(!scan.addAxis(QLatin1String(wrong)), wrong);
    QVERIFY(scan.addAxis(QStringLiteral("triplet-energy=19000:17400:-500")));
    QVERIFY(scan.addAxis(QStringLiteral("n=1.3:1.6:0.1")));
    for (const char *further : {"n=1:2:1", "triplet-energy=1e4:2e4:1e4", "temperature=77:400:100"})
        QVERIFY2(!scan.addAxis(QLatin1String(further)), further);
    const YieldScanResults results = scan.calculate();
    QCOMPARE(results.asGiven.quantumYield, asGiven);
    QCOMPARE(results.points.size(), 16);
    for (int i = 0; i < results.points.size(); ++i)
        COMPARE_NEAR(results.points.at(i).quantumYield,
                     yieldOf(19000.0 - 500.0 * (i / 4), 1.3 + 0.1 * (i % 4), nullptr), 1e-9);
    // Beyond the radiative lifetime there is no yield.
    LanqorYieldScan lifetimes(inputs);
    QVERIFY(lifetimes.addAxis(QStringLiteral("lifetime=0.5:10.5:10")));
    const YieldScanResults found = lifetimes.calculate();
    QVERIFY(found.points.at(0).quantumYield > 0.0);
    QVERIFY(std::isnan(found.points.at(1).quantumYield));
}

void TestSpectroscopic::kinetics()
{
    Example calculation;
    QVERIFY(calculation.calcQuantumYieldNEW());
    const double back = calculation.getExchangeBackwardRate(14);
    const double mismatch = calculation.getEnergyMismatch(14);
    const double yield = calculation.getQuantumYield();
    KineticParameters parameters;
    parameters.temperature = 150.0;
    calculation.setKineticParameters(parameters);
    QVERIFY(calculation.calcEnergyTransferRate() && calculation.calcQuantumYieldNEW());
    // Half the temperature squares the Boltzmann factor; transfer itself stays.
    const double forward = calculation.getExchangeForwardRate(14);
    COMPARE_NEAR(calculation.getExchangeBackwardRate(14) * forward / (back * back), 1.0, 1e-12);
    parameters.withDegeneracies = true; // T -> 5D1: g = 3 and 3; T -> 5D0: 3 and 1
    calculation.setKineticParameters(parameters);
    QVERIFY(calculation.calcEnergyTransferRate());
    COMPARE_NEAR(calculation.getExchangeBackwardRate(14) * forward / (back * back), 3.0, 1e-12);
    COMPARE_NEAR(std::log(forward / calculation.getExchangeBackwardRate(14) * 3.0),
                 1.438776878 * mismatch / 150.0, 1e-4 * mismatch / 150.0);

    parameters = {};
    parameters.singletDecay = 1e9;
    calculation.setKineticParameters(parameters);
    QVERIFY(calculation.calcEnergyTransferRate() && calculation.calcQuantumYieldNEW());
    // Of what S1 loses, a tenth as much crosses to the triplet as before.
    COMPARE_NEAR(calculation.getQuantumYield() / yield, 0.0918, 1e-3);
    QVERIFY(calculation.getPhotonShares().limitingStep == LimitingStep::SingletDecay);
}

void TestSpectroscopic::route()
{
    Example calculation;
    QCOMPARE(calculation.getLastError(), QString());
    MessageSpy spy(calculation);
    QVERIFY2(calculation.calcQuantumYieldNEW(), qPrintable(calculation.getLastError()));
    // What was said while the states were read is heard now.
    QVERIFY(spy.contains(QStringLiteral("successfully loaded from the ORCA output")));
    // RL of the example has more digits than the four of the expected values.
    COMPARE_NEAR(calculation.getPopulation(3) / 5.99520984e-7, 1.0, 3e-4);
    COMPARE_NEAR(calculation.getQuantumYield() / 24.0291732, 1.0, 3e-5);
    COMPARE_NEAR(sumOfPopulations(calculation), 1.0, 1e-12);

    // Rates of earlier are used again until they are asked for.
    const double rate = calculation.getExchangeForwardRate(13);
    calculation.setETModel(0);
    QVERIFY(calculation.calcQuantumYieldNEW());
    QCOMPARE(calculation.getExchangeForwardRate(13), rate);
    QVERIFY(calculation.calcEnergyTransferRate());
    QVERIFY(calculation.getExchangeForwardRate(13) < rate);

    Example closed;
    closed.setEnergyTransferChannels(
        {false, false, false, false, false, false, false, false, false, false});
    QVERIFY(closed.calcQuantumYieldNEW());
    QCOMPARE(closed.getQuantumYield() + closed.getPopulation(8), 0.0);
    COMPARE_NEAR(sumOfPopulations(closed), 1.0, 1e-12);
}

/// Readers that were given are read once, whoever asks, and belong to the caller.
void TestSpectroscopic::readersInsteadOfFiles()
{
    LanqorInputData complex(nullptr, complexFile);
    LanqorInputData states(nullptr, statesFile);
    QVERIFY(complex.readMopacOutFile(false));
    Example byFiles(4, 3);
    QVERIFY(byFiles.calcQuantumYieldNEW());
    for (int time = 0; time < 2; ++time) {
        Calculation calculation(nullptr, 0, LanqorInputData::OrcaOutput, &complex, QString(),
                                &states, 4, 3);
        QCOMPARE(calculation.getLastError(), QString());
        setIllustrativeValues(calculation);
        QVERIFY(calculation.calcQuantumYieldNEW());
        QCOMPARE(calculation.getQuantumYield(), byFiles.getQuantumYield());
        QCOMPARE(calculation.createOutFileET(QString()), byFiles.createOutFileET(QString()));
        QCOMPARE(states.getSingletStatesCount(), 4);
        const LanqorRL *rl = calculation.getRLCalculation();
        QCOMPARE(rl->getInputData(), &states);
        QCOMPARE(rl->getComplexMismatch(complex), QString());
        LanqorInputData other(
            nullptr, testSupport::dataFile(QStringLiteral("mopac/eu_cl6_pm7_1scf_disp.out")));
        QVERIFY(other.readMopacOutFile(false) && other.createSphericalCoordinate());
        QVERIFY(rl->getComplexMismatch(other).contains(other.getFileName()));
    }
    LanqorInputData *const none = nullptr;
    Calculation byHand(nullptr, 0, 0, none, QString(), none, 0, 0);
    QCOMPARE(byHand.getLastError(), QString());
    Calculation withoutGeometry(nullptr, 0, 0, none, QStringLiteral("report.txt"), none, 0, 0);
    QVERIFY(!withoutGeometry.getLastError().isEmpty());
    LanqorRL withoutOutput(nullptr, none);
    QVERIFY(!withoutOutput.calcRL(LanqorInputData::OrcaOutput));
    QVERIFY(withoutOutput.getLastError().contains(QStringLiteral("does not exist")));
}

void TestSpectroscopic::twoTriplets()
{
    Example calculation(1, 1);
    calculation.setConsiderTwoTriplets(true);
    MessageSpy spy(calculation);
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    COMPARE_NEAR(calculation.getQuantumYield() / 24.0112961, 1.0, 3e-5);
    QVERIFY(!spy.contains(QStringLiteral("leave open channels out")));

    EnergyTransferChannels more;
    more.singletTo5L6 = true;
    calculation.setEnergyTransferChannels(more);
    QVERIFY(calculation.calcEnergyTransferRate());
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    QVERIFY(spy.contains(QStringLiteral("singlet -> 5L6")));

    Example oneOnly(1, 1, statesCutTo(4, 1));
    oneOnly.setConsiderTwoTriplets(true);
    QVERIFY(!oneOnly.calcQuantumYieldTwoTriplets());
    QVERIFY(oneOnly.getLastError().contains(QStringLiteral("triplet state number 2")));
}

void TestSpectroscopic::stateSelection()
{
    const struct
    {
        int counts[2]; // singlets, triplets
        int chosen[2];
        int used[2];
        const char *error;
    } cases[] = {
        {{4, 4}, {0, 0}, {1, 1}, ""},
        {{4, 4}, {4, 4}, {4, 4}, ""},
        {{4, 4}, {5, 5}, {1, 1}, ""},
        {{4, 2}, {3, 2}, {1, 2}, ""}, // both are measured by the triplets
        {{2, 4}, {3, 1}, {3, 1}, "no singlet state number 3"},
        {{4, 4}, {1, -1}, {1, -1}, "no triplet state number -1"},
    };
    for (const auto &row : cases) {
        Example calculation(row.chosen[1], row.chosen[0],
                            statesCutTo(row.counts[0], row.counts[1]));
        QCOMPARE(calculation.getSelectedSinglet(), row.used[0]);
        QCOMPARE(calculation.getSelectedTriplet(), row.used[1]);
        const auto replaced = [&row](int i) {
            return row.chosen[i] == row.used[i] ? 0 : row.chosen[i];
        };
        QCOMPARE(calculation.getReplacedSinglet(), replaced(0));
        QCOMPARE(calculation.getReplacedTriplet(), replaced(1));
        const QString said = calculation.getLastError();
        QVERIFY2(said.contains(QLatin1String(row.error)), qPrintable(said));
        QCOMPARE(said.isEmpty(), QByteArray(row.error).isEmpty());
        QCOMPARE(calculation.calcEnergyTransferRate(), said.isEmpty());
        QCOMPARE(calculation.getForwardRate(0) > 0.0, said.isEmpty());
    }
}

void TestSpectroscopic::zindoListsBeginWithTheGroundState()
{
    const QString states = testSupport::dataFile(QStringLiteral("zindo/eu_ci.zin"));
    for (const int number : {0, 1, 2, 3, 9}) {
        Calculation calculation(nullptr, 0, LanqorInputData::ZindoOutput, complexFile, QString(),
                                states, number, number);
        QCOMPARE(calculation.getLastError(), QString());
        QCOMPARE(calculation.getSelectedSinglet(), number == 3 ? 3 : 2);
        QCOMPARE(calculation.getSelectedTriplet(), number == 3 ? 3 : 2);
        QCOMPARE(calculation.calcEnergyTransferRate(), number != 3);
        if (number == 3) { // without configurations there is no RL to calculate with
            QVERIFY(calculation.getLastError().contains(QStringLiteral("triplet state number 3")));
            continue;
        }
        COMPARE_NEAR(calculation.getEnergyMismatch(0), 25000.5 - 27586.0, 1e-9);
        MessageSpy spy(calculation);
        calculation.setConsiderTwoTriplets(true);
        QVERIFY(calculation.calcEnergyTransferRate() && calculation.calcQuantumYieldTwoTriplets());
        QVERIFY(spy.contains(QStringLiteral("Both triplets are state number 2")));
    }
}

void TestSpectroscopic::constructionErrors()
{
    const QString gadolinium =
        testSupport::dataFile(QStringLiteral("mopac/gd_no3_3_h2o3_rm1_opt.out"));
    const QString unrestricted =
        testSupport::dataFile(QStringLiteral("gaussian/eu_unrestricted_g03.log"));
    const struct
    {
        QString omegaPath;
        QString rlPath;
        const char *error;
        int program = LanqorInputData::OrcaOutput;
    } cases[] = {
        {complexFile, QStringLiteral("/no/such/file.orcout"), "/no/such/file.orcout"},
        {complexFile, statesCutTo(4, 0), "TRIPLET"},
        {gadolinium, statesFile, "Gd atoms[0] isn't Eu"},
        {QString(), unrestricted, "gives no singlet states", LanqorInputData::GaussianOutput},
    };
    for (const auto &row : cases) {
        Calculation calculation(nullptr, 0, row.program, complexFile, row.omegaPath, row.rlPath, 0,
                                0);
        QVERIFY2(calculation.getLastError().contains(QLatin1String(row.error)),
                 qPrintable(calculation.getLastError()));
        QVERIFY(!calculation.calcQuantumYieldNEW());
        QCOMPARE(calculation.getQuantumYield(), 0.0);
    }
}

/// The texts of the sections are held by stored transcripts.
void TestSpectroscopic::reportSections()
{
    using Options = SpecPrintingOptions;
    bool Options::*const flags[] = {
        &Options::printInputFile,    &Options::printOmega,         &Options::printOmegaED,
        &Options::printConstants,    &Options::printDonorStates,   &Options::printGama,
        &Options::printFranckCondon, &Options::printTransferRates, &Options::printArad,
        &Options::printAnrad,        &Options::printPopulations,   &Options::printQuantumYield,
        &Options::printSettings};
    Calculation calculation(nullptr);
    setIllustrativeValues(calculation);
    QVERIFY(calculation.calcQuantumYield(4.5, 5.1, 28000.0, 20500.0, 500.0, 500.0));
    const auto report = [&calculation](const Options &options) {
        calculation.setSpecPrintingOptions(options);
        return calculation.createOutFileET(QString()) + calculation.createOutFile(QString());
    };
    QString sections; // each printed alone, in their order
    for (bool Options::*flag : flags) {
        Options alone = {false, false, false, false, false, false, false,
                         false, false, false, false, false, false};
        alone.*flag = true;
        QVERIFY(!report(alone).isEmpty());
        sections += report(alone);
    }
    QCOMPARE(sections, report(Options()));
}

/// Each value of the tables in its place; units are those of publications.
void TestSpectroscopic::tables()
{
    Example calculation(3, 2);
    calculation.setConsiderTwoTriplets(true);
    QVERIFY(calculation.calcQuantumYieldTwoTriplets());
    QMap<QString, QVariant> cells;
    for (const ResultTable &table : Calculation::makeTables(calculation.getResults()).getTables())
        for (const QVector<QVariant> &row : table.rows)
            for (int i = 0; i < row.size(); ++i)
                cells.insert(QStringLiteral("%1 %2 %3 / %4")
                                 .arg(table.name, table.isRecord ? QString() : row.at(0).toString(),
                                      table.columns.at(i).key, table.columns.at(i).unit),
                             row.at(i));
    const LanqorRL &states = *calculation.getRLCalculation();
    const struct
    {
        const char *cell;
        double expected;
    } expected[] = {
        {"intensity_parameters  omega_4 / 1e-20 cm^2", 5.0},
        {"intensity_parameters  omega_ed_6 / 1e-20 cm^2", 0.1},
        {"emission  radiative_rate / s^-1", calculation.getArad()},
        {"emission  nonradiative_rate / s^-1", calculation.getAnrad()},
        {"emission  lifetime / ms", 0.5},
        {"emission  quantum_efficiency / %", calculation.getQuantumEfficiency()},
        {"emission_bands 7F1 radiative_rate / s^-1", calculation.getAradMD()},
        {"emission_bands 7F2 branching_ratio / %", calculation.getBranchingRatio(2)},
        {"emission_bands 7F4 radiative_rate / s^-1", calculation.getArad04()},
        {"emission_bands 7F6 branching_ratio / %", calculation.getBranchingRatio(6)},
        {"donors S rl / Angstrom", states.getSingletRL(2)},
        {"donors Ta energy / cm^-1", states.getTripletEnergy(3)},
        {"donors T rl / Angstrom", states.getTripletRL(2)},
        {"energy_transfer T-5D1 energy_mismatch / cm^-1", calculation.getEnergyMismatch(13)},
        {"energy_transfer T-5D1 transfer_rate / s^-1", calculation.getExchangeForwardRate(13)},
        {"energy_transfer Ta-5D4 back_transfer_rate / s^-1", calculation.getBackwardRate(5)},
        {"populations Ta population / 1", calculation.getPopulation(2)},
        {"populations 5D0 population / 1", calculation.getPopulation(8)},
        {"yield  quantum_yield / %", calculation.getQuantumYield()},
        {"singlets 3 rl / Angstrom", states.getSingletRL(3)},
        {"triplets 3 rl / Angstrom", states.getTripletRL(3)},
        {"triplets 1 wavelength / nm", 1e7 / states.getTripletEnergy(1)},
        {"donor_states  shortest_distance / Angstrom", states.getMinDistanceLnLigand()}};
    for (const auto &row : expected) {
        QVERIFY2(cells.contains(QLatin1String(row.cell)), row.cell);
        const double value = cells.value(QLatin1String(row.cell)).toDouble();
        QVERIFY2(std::abs(value / row.expected - 1.0) < 1e-12, row.cell);
    }
}

QTEST_GUILESS_MAIN(TestSpectroscopic)
#include "tst_spectroscopic.moc"
