#include "TestSupport.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorLevelsLeastSquares.h>
#include <LanqorEngine/LanqorParametricEnergyLevels.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

using Fit = LanqorParametricEnergyLevels;

/// Levels from labels and energies, "7F0 0, 7F1 379".
QVector<EnergyLevelsExp> levelList(const char *text)
{
    QVector<EnergyLevelsExp> levels;
    for (const QString &entry : QString::fromLatin1(text).split(QStringLiteral(", "))) {
        EnergyLevelsExp level;
        level.label = entry.section(QLatin1Char(' '), 0, 0);
        level.energy = entry.section(QLatin1Char(' '), 1).toDouble();
        levels.append(level);
    }
    return levels;
}

/// Levels of an ion below a limit, rounded to 1 cm^-1, as one would measure them.
QVector<EnergyLevelsExp> madeLevels(int electrons, const QVector<double> &x, double below)
{
    LanqorEnergyLevels ion(nullptr, electrons);
    ion.setSlaterIntegral(0.0, x.at(0), x.at(1), x.at(2));
    ion.setZetaParameters(x.at(3));
    if (x.size() > 4)
        ion.setTwoBodyParameters(x.at(4), x.at(5), x.at(6));
    ion.calcEnergyLevels(-1.0);
    QVector<EnergyLevelsExp> levels;
    for (const MixedState &state : ion.getMixedStatesVector()) {
        EnergyLevelsExp level;
        level.label = state.label;
        level.energy = std::round(state.energy);
        if (level.energy < below)
            levels.append(level);
    }
    return levels;
}

bool evaluate(Fit &fit, QVector<double> x)
{
    double *values = x.data();
    fit.incrementPointsNumber();
    return fit.runParametrization(x.size(), values);
}

// A measured-levels file in a folder of its own.
struct Workspace
{
    QTemporaryDir folder;
    QString exp = folder.filePath(QStringLiteral("levels.exp"));

    QString result() const { return folder.filePath(QStringLiteral("levels.result")); }
    QString progress() const { return folder.filePath(QStringLiteral("levels.output")); }
};

} // namespace

class TestEnergyLevelFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
    }

    void measuredLevelsFile()
    {
        const QString path = testSupport::scratchFile(
            QStringLiteral("eu.exp"),
            "7F0 9.0\n7F0 0\r\n\n  7F1 some words   379\n5D(3)0 +-2.5 17277.5\n"
            "4I11/2 +- 4 2001\n2J5/2 x\n(\n6H(12\n");
        QVector<EnergyLevelsExp> levels;
        QVERIFY(Fit::readEnergyLevelsExp(path, levels));
        // S, L, index, J, energy; the heading is skipped, though it reads as a level.
        const QVector<QVector<double>> expected = {{3, 3, 0, 0, 0},
                                                   {3, 3, 0, 1, 379},
                                                   {2, 2, 3, 0, 17277.5},
                                                   {1.5, 6, 0, 5.5, 2001},
                                                   {0.5, -1, 0, 2.5, 0}};
        QCOMPARE(levels.size(), expected.size() + 2);
        for (int i = 0; i < expected.size(); ++i) {
            const EnergyLevelsExp &level = levels.at(i);
            QCOMPARE((QVector<double>{level.S, double(level.L), double(level.index), level.J,
                                      level.energy}),
                     expected.at(i));
        }
        QCOMPARE(levels.at(1).standardDeviation, 0.0);
        QCOMPARE(levels.at(2).standardDeviation, 2.5);
        QCOMPARE(levels.at(3).standardDeviation, 4.0);
        QVERIFY(!Fit::readEnergyLevelsExp(path + QStringLiteral("x"), levels));
        QVERIFY(!Fit::readEnergyLevelsExp(
            testSupport::scratchFile(QStringLiteral("long.exp"),
                                     QByteArray("7F1 1\n").repeated(20000)),
            levels));
        QCOMPARE(levels.size(), 7);

        const QVector<QPair<QString, double>> texts{{"5/2", 2.5}, {"4", 4.0},    {"5.5", 5.5},
                                                    {"7/", 7.0},  {"x", 0.0},    {"5/0", 0.0},
                                                    {"/", 0.0},   {"1e999", 0.0}};
        for (const auto &[text, J] : texts)
            QCOMPARE(Fit::getJDoubleFromString(text), J);
        const QVector<QPair<QString, QString>> names{{"/a.exp/eu.exp", "/a.exp/eu.output"},
                                                     {"eu.dat", "eu.dat.output"},
                                                     {"exp", "exp.output"}};
        for (const auto &[exp, output] : names)
            QCOMPARE(Fit(nullptr, 6, exp).getProgressFileName(), output);
    }

    void response()
    {
        // One electron: 2F7/2 lies 3.5 zeta above 2F5/2.
        const Workspace work;
        Fit fit(nullptr, 1, work.exp);
        fit.setEnergyLevelsExp(levelList("2F5/2 0.0, 2F7/2 2253.0"));
        QVERIFY(evaluate(fit, {100.0, 10.0, 1.0, 640.0}));
        COMPARE_NEAR(fit.getResponseFunction(), 100.0 * 13.0 / 2253.0, 1e-10);
        // The first level is not fitted whatever its energy; each further line counts.
        fit.setEnergyLevelsExp(levelList("2F5/2 77.0, 2F7/2 2253.0, 2F3.5 2200.0"));
        testSupport::MessageSpy spy(fit);
        QVERIFY(evaluate(fit, {100.0, 10.0, 1.0, 640.0}));
        COMPARE_NEAR(fit.getResponseFunction(), 100.0 * (13.0 / 2253.0 + 40.0 / 2200.0), 1e-10);
        QVERIFY(spy.contains(QStringLiteral("2F5/2 at 77 cm^-1")));
        QCOMPARE(fit.getMixedStateVector().size(), 2);
        QCOMPARE(fit.getBestParameters(), (QVector<double>{100.0, 10.0, 1.0, 640.0}));

        // A new number of electrons reads the tables anew: one hole turns the multiplet round.
        fit.setElectronsNumber(13);
        fit.setEnergyLevelsExp(levelList("2F7/2 0.0, 2F5/2 10000.0"));
        QVERIFY(evaluate(fit, {100.0, 10.0, 1.0, 2900.0}));
        COMPARE_NEAR(fit.getResponseFunction(), 1.5, 1e-10);
    }

    void bounds()
    {
        const Workspace work;
        Fit fit(nullptr, 2, work.exp);
        fit.setEnergyLevelsExp(levelList("3H4 0.0, 3H5 2152.0"));
        QVERIFY(evaluate(fit, {1000.0, 100.0, 10.0, 5000.0}));
        QVERIFY(evaluate(fit, {100.0, 10.0, 1.0, 100.0}));
        const double before = fit.getResponseFunction();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QVector<QVector<double>> outside = {{nan, 50.0, 5.0, 800.0}, {300.0, 50.0, 5.0}};
        const double lows[] = {100.0, 10.0, 1.0, 100.0};
        for (int i = 0; i < 4; ++i)
            for (const double value : {0.999 * lows[i], (i == 3 ? 50.05 : 10.01) * lows[i]}) {
                outside.append({300.0, 50.0, 5.0, 800.0});
                outside.last()[i] = value;
            }
        for (const QVector<double> &x : qAsConst(outside)) {
            QVERIFY(!evaluate(fit, x));
            QVERIFY(!fit.getLastError().isEmpty());
            QCOMPARE(fit.getResponseFunction(), before);
        }
        // alpha, beta and gamma held by the fit, or of the trial itself.
        const QVector<double> seven = {305.0, 46.3, 4.43, 741.0, 21.0, -800.0, 1343.0};
        Fit alike(nullptr, 2, work.exp);
        for (Fit *one : {&fit, &alike})
            one->setEnergyLevelsExp(levelList("3H4 0.0, 1G4 9700.0, 3P0 20700.0"));
        fit.setTwoBodyParameters(21.0, -800.0, 1343.0);
        QVERIFY(evaluate(fit, seven.mid(0, 4)) && evaluate(alike, seven));
        QCOMPARE(fit.getResponseFunction(), alike.getResponseFunction());
        QCOMPARE(alike.getBestParameters(), seven);
        QVERIFY(fit.getResponseFunction() > 1.0 && fit.getResponseFunction() < 10.0);
        QVERIFY(!evaluate(fit, {305.0, 46.3, 4.43, 741.0, 21.0, -800.0, 5001.0}));
    }

    void labels()
    {
        // 4I11/2 meets 4I5.5; what meets nothing is named once.
        const Workspace work;
        Fit fit(nullptr, 3, work.exp);
        testSupport::MessageSpy spy(fit);
        fit.setEnergyLevelsExp(
            levelList("4I9/2 0.0, 4I11/2 1891.45, 2H9/2 12002.68, 2H(2)9/2 12002.68"));
        for (int i = 0; i < 3; ++i)
            QVERIFY(evaluate(fit, {321.8266, 46.276234, 4.7133009, 884.58}));
        QVERIFY(fit.getResponseFunction() < 0.01);
        QCOMPARE(spy.messages.size(), 1);
        QVERIFY2(spy.messages.first().contains(QStringLiteral("no such level: 2H9/2.")),
                 qPrintable(spy.messages.first()));
    }

    void refusals()
    {
        struct Case
        {
            int electrons;
            const char *levels;
            QString message;
        };
        for (const Case &wrong :
             {Case{6, "7F0 0, 5D0 17277", "4f^6"}, Case{6, "7F0 0, 7F1 0", "7F1"},
              Case{6, "7F0 0, 7F1 -379", "7F1"}, Case{6, "7F0 0", "above the ground level"},
              Case{14, "7F0 0, 7F1 379", "f0.ele"}}) {
            const Workspace work;
            Fit fit(nullptr, wrong.electrons, work.exp);
            fit.setEnergyLevelsExp(levelList(wrong.levels));
            QVERIFY(!evaluate(fit, {369.6, 56.2, 5.64, 1326.0}));
            QVERIFY2(fit.getLastError().contains(wrong.message), qPrintable(fit.getLastError()));
            fit.endOfParametrization();
            QVERIFY(!QFile::exists(work.result()));
        }
    }

    void files()
    {
        const Workspace work;
        Fit fit(nullptr, 1, work.exp);
        fit.setEnergyLevelsExp(levelList("2F5/2 0.0, 2F7/2 2240.0, 2F9/2 5000.0"));
        QVERIFY(evaluate(fit, {200.5, 20.25, 2.0, 700.0}));
        QVERIFY(evaluate(fit, {200.5, 20.25, 2.0, 800.0})); // no improvement
        QVERIFY(evaluate(fit, {369.60795, 20.25, 2.0, 650.0}));
        QCOMPARE(testSupport::readAll(work.progress()),
                 QByteArray("Point Number = 1\tF2 = 200.5\tF4 = 20.25\tF6 = 2\tzeta = 700\t "
                            "Response Function = 9.375\n"
                            "Point Number = 3\tF2 = 369.608\tF4 = 20.25\tF6 = 2\tzeta = 650\t "
                            "Response Function = 1.5625\n"));
        QVERIFY(evaluate(fit, {200.5, 20.25, 2.0, 800.0}));
        fit.setRequiredCitations(QStringLiteral("cite this"));
        fit.endOfParametrization();
        QVERIFY(fit.getReport().contains(QStringLiteral("cite this")));
        QCOMPARE(QString::fromUtf8(testSupport::readAll(work.result())), fit.getReport());
        const LevelsFitResults results = fit.getResults();
        COMPARE_NEAR(results.rmsDifference, 35.0, 1e-9); // 3.5 zeta is 2275
        QCOMPARE(results.fittedCount, 1);
        QVERIFY(results.levels.at(1).isFitted && std::isnan(results.levels.at(2).computed));
        QCOMPARE(results.parameters.at(3).maximum, 5000.0);
    }

    void findsTheParameters()
    {
        // Levels of four parameters (Carnall, Fields, Rajnak 1968, Pr3+), which the annealing comes
        // near from another start.
        const Workspace work;
        Fit fit(nullptr, 2, work.exp);
        fit.setEnergyLevelsExp(levelList(
            "3H4 0.0, 3H5 2082.80, 3H6 4254.55, 3F2 4894.53, 3F3 6283.37, 3F4 6653.71, 1G4 "
            "9521.69, 1D2 16740.42, 1I6 20603.34, 3P0 21066.81, 3P1 21685.46, 3P2 22853.60"));
        const QVector<double> x{310.0, 45.0, 4.0, 760.0};
        QVERIFY(evaluate(fit, x));
        const double start = fit.getResponseFunction();
        LanqorGSA annealing(nullptr, x, &fit);
        annealing.setGSAParameters(2.5, 2.5, 2.5, 1.0);
        annealing.setNStopMax(2000);
        annealing.initializeGSA();
        QCOMPARE(fit.getPointNumber(), 1 + 15 * 2000);
        QVERIFY2(fit.getBestResponse() < 0.25 * start,
                 qPrintable(QStringLiteral("%1 of %2").arg(fit.getBestResponse()).arg(start)));
        COMPARE_NEAR(fit.getBestParameters().at(0), 305.22, 2.0);
        COMPARE_NEAR(fit.getBestParameters().at(1), 46.277, 1.0);
        COMPARE_NEAR(fit.getBestParameters().at(2), 4.4348, 0.1);
        COMPARE_NEAR(fit.getBestParameters().at(3), 740.75, 15.0);
        QVERIFY(QFile::exists(work.result()));
    }

    /// Levels made from parameters some per cent off the published ones, which are the first
    /// start; the others lie within 5 % of these. Two labels of one J that cross change places, and
    /// levels that are missing from the list leave gaps.
    void leastSquaresFindTheParametersOfTheirLevels_data()
    {
        QTest::addColumn<QString>("ion");
        QTest::addColumn<int>("leftOut"); // every so many levels; 0: none
        QTest::addColumn<bool>("isCrossed");
        QTest::newRow("Pr") << "Pr" << 0 << false;
        QTest::newRow("Nd") << "Nd" << 0 << false;
        QTest::newRow("Nd, gaps") << "Nd" << 3 << false;
        QTest::newRow("Nd, crossed labels") << "Nd" << 4 << true;
        QTest::newRow("Eu") << "Eu" << 0 << false;
        QTest::newRow("Er") << "Er" << 0 << false;
        QTest::newRow("Ho, with alpha, beta and gamma") << "Ho" << 0 << false;
    }
    void leastSquaresFindTheParametersOfTheirLevels()
    {
        QFETCH(QString, ion);
        QFETCH(int, leftOut);
        QFETCH(bool, isCrossed);
        const FreeIonParameters usual = LanqorFreeIonParameters::getParameters(ion);
        QVector<double> published = {usual.F2, usual.F4, usual.F6, usual.zeta};
        QVector<double> truth = {1.03 * usual.F2, 0.97 * usual.F4, 1.02 * usual.F6,
                                 0.98 * usual.zeta};
        QVector<FitParameter> parameters = Fit::getParameters();
        if (usual.electrons == 10) {
            published += {usual.alpha, usual.beta, usual.gamma};
            truth += {1.1 * usual.alpha, 0.9 * usual.beta, 1.2 * usual.gamma};
            parameters += Fit::getTwoBodyParameters();
        }
        QVector<EnergyLevelsExp> levels = madeLevels(usual.electrons, truth, 32000.0);
        for (int k = levels.size() - 1; leftOut > 0 && k > 0; k -= leftOut)
            levels.remove(k);
        QVector<int> pair;
        for (int k = 1; isCrossed && k < levels.size(); ++k)
            if (levels.at(k).label.endsWith(QStringLiteral("4.5")))
                pair.append(k);
        if (isCrossed)
            std::swap(levels[pair.at(0)].label, levels[pair.at(1)].label);
        LanqorLevelsLeastSquares problem(usual.electrons);
        problem.setParameters(parameters);
        QVERIFY2(problem.setEnergyLevelsExp(levels), qPrintable(problem.getLastError()));
        QVector<LeastSquaresResults> all;
        for (int number = 0; number < (usual.electrons == 6 ? 6 : 20); ++number) {
            QVector<double> start = published;
            for (int i = 0; i < start.size(); ++i)
                start[i] *= 1.0 + (number == 0 ? 0.0 : 0.05 * std::sin(7.0 * number + 3.0 * i));
            all.append(problem.fit(start));
            const FitAccount &account = all.last().account;
            QVERIFY(account.end == FitAccount::End::Converged);
            // The rounding of the data has a variance of 1/12.
            QVERIFY2(account.misfit < 2.0 / 12.0 * levels.size(),
                     qPrintable(QString::number(account.misfit)));
            for (int i = 0; i < truth.size(); ++i) {
                const FitAccount::Parameter &found = account.parameters.at(i);
                COMPARE_NEAR(found.value, truth.at(i), 5.0 * found.standardError);
                QVERIFY(found.standardError < (i < 4 ? 1e-3 : 2e-2) * std::abs(truth.at(i)));
            }
        }
        QCOMPARE(LanqorFitAccount::chooseBest(all).account.minima.size(), 1);
    }

    /// One electron or hole: 2F7/2 and 2F5/2 are 3.5 zeta apart, and nothing else is to be had.
    void whatTheDataDoNotDetermine()
    {
        LanqorLevelsLeastSquares cerium(1);
        QVector<EnergyLevelsExp> levels = levelList("2F5/2 0.0, 2F7/2 2253.0");
        levels[1].standardDeviation = 7.0;
        QVERIFY(cerium.setEnergyLevelsExp(levels));
        FitAccount account = cerium.fit({300.0, 45.0, 4.0, 600.0}).account;
        COMPARE_NEAR(account.parameters.at(3).value, 2253.0 / 3.5, 1e-9);
        COMPARE_NEAR(account.parameters.at(3).standardError, 7.0 / 3.5, 1e-9);
        COMPARE_NEAR(account.parameters.at(1).value, 45.0, 1e-9);
        QCOMPARE(account.undetermined.size(), 3);
        QCOMPARE(LanqorFitAccount::getDegreesOfFreedom(account), 0);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(account.parameters.at(i).isUndetermined, i < 3);
        QVERIFY(LanqorFitAccount::makeText(account).contains(QStringLiteral("do not determine")));

        // One level above the ground level gives one combination of four parameters.
        LanqorLevelsLeastSquares praseodymium(2);
        QVERIFY(praseodymium.setEnergyLevelsExp(levelList("3H4 0.0, 3H5 2152.0")));
        account = praseodymium.fit({305.0, 46.0, 4.4, 741.0}).account;
        QCOMPARE(account.undetermined.size(), 3);
        QVERIFY(account.misfit < 1e-12);

        // A parameter at its bound, and a fixed one.
        QVector<FitParameter> parameters = LanqorParametricEnergyLevels::getParameters();
        parameters[3].maximum = 600.0;
        parameters[0].isFixed = true;
        parameters[0].fixedValue = 301.0;
        cerium.setParameters(parameters);
        account = cerium.fit({300.0, 45.0, 4.0, 500.0}).account;
        QCOMPARE(account.parameters.at(0).value, 301.0);
        QVERIFY(account.parameters.at(3).isAtMaximum);
        COMPARE_NEAR(account.misfit, std::pow((2253.0 - 3.5 * 600.0) / 7.0, 2), 1e-6);

        QVERIFY(!cerium.setEnergyLevelsExp(levelList("2F5/2 0.0, 2F7/2 -2253.0")));
        QVERIFY(!LanqorLevelsLeastSquares(1).setEnergyLevelsExp(levelList("3H4 0.0, 3H5 9.0")));
    }
};

QTEST_GUILESS_MAIN(TestEnergyLevelFit)
#include "tst_energylevelfit.moc"
