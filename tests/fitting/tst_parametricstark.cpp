#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorParametricStarkLevels.h>
#include <LanqorEngine/LanqorStarkLeastSquares.h>
#include <LanqorEngine/LanqorStarkLevels.h>

#include "../intensity/testSpheres.h"
#include "TestSupport.h"
#include "fitSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <cstdio>
#include <unistd.h>

using Fit = LanqorParametricStarkLevels;

namespace {

constexpr double infeasible = 1.0e25;

QString structure()
{
    return testSupport::dataFile(QStringLiteral("mopac/eu_acac3_phen_am1_allvec.out"));
}

const QVector<ParametersGroup> groups = {{QStringLiteral("oxygens"), {2, 3, 4, 5, 6, 7}},
                                         {QStringLiteral("nitrogens"), {8, 9}}};

/// J, lowest, highest, offset.
TransitionValues transition(int J, double low, double high, double offset)
{
    TransitionValues values;
    values.level = J;
    values.energyLow = low;
    values.energyHigh = high;
    values.offset = offset;
    return values;
}

/// Sorted levels of 7FJ for one charge factor of O and one of N.
QVector<double> levelsOf(int J, double gO, double gN)
{
    LanqorStarkLevels levels(structure(), 0);
    QVector<double> g = {0.0, 0.0, gO, gO, gO, gO, gO, gO, gN, gN};
    double *array = g.data();
    levels.setChargeFactors(array);
    levels.calculateStarkLevels();
    QVector<double> result = levels.getStarkLevels(J);
    std::sort(result.begin(), result.end());
    return result;
}

/// What one would measure if these were the true charge factors.
QVector<TransitionValues> measured(double gO, double gN)
{
    QVector<TransitionValues> result;
    const QVector<QPair<int, double>> barycentres = {{1, 379.0}, {2, 1040.0}, {4, 2900.0}};
    for (const auto &[J, barycentre] : barycentres) {
        const QVector<double> levels = levelsOf(J, gO, gN);
        result.append(
            transition(J, barycentre + levels.first(), barycentre + levels.last(), barycentre));
    }
    return result;
}

void setUp(Fit &fit)
{
    fit.setParametersGroup(groups);
    fit.setTransitionValues(measured(0.6, 0.9));
    fit.setGLimits({{QStringLiteral("O"), 0.1, 1.5}, {QStringLiteral("N"), 0.2, 2.0}});
}

QString oxygenSphere(const QString &name, int count)
{
    QVector<std::array<double, 3>> places;
    for (int i = 0; i < count; ++i) {
        const double z = -1.0 + (2.0 * i + 1.0) / count;
        const double rho = std::sqrt(1.0 - z * z);
        places.append({2.4 * rho * std::cos(2.4 * i), 2.4 * rho * std::sin(2.4 * i), 2.4 * z});
    }
    return testSpheres::xyzFile(name, testSpheres::oxygens(places));
}

/// What @p action writes to standard output.
QByteArray standardOutputOf(const std::function<void()> &action)
{
    const QString path = testSupport::scratchFile(QStringLiteral("stdout"), QByteArray());
    std::fflush(stdout);
    const int kept = dup(STDOUT_FILENO);
    FILE *const file = std::fopen(qPrintable(path), "w");
    dup2(fileno(file), STDOUT_FILENO);
    action();
    std::fflush(stdout);
    dup2(kept, STDOUT_FILENO);
    close(kept);
    std::fclose(file);
    return testSupport::readAll(path);
}

/// Writes a file of the fit and returns its base name.
QString fitFile(const char *extension, const QByteArray &text)
{
    const QString path =
        testSupport::scratchFile(QStringLiteral("complex") + QLatin1String(extension), text);
    return path.left(path.size() - int(qstrlen(extension)));
}

} // namespace

class TestParametricStark : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readers()
    {
        const auto text = [](const QString &name, const QVector<int> &atoms,
                             const QVector<double> &numbers) {
            QStringList words{name};
            for (const int atom : atoms)
                words.append(QString::number(atom));
            for (const double number : numbers)
                words.append(QString::number(number, 'g', 10));
            return words.join(QLatin1Char(' '));
        };
        QStringList got;
        QVector<ChargeFactorsGroup> start = {{QStringLiteral("old"), {1}, 1.0}};
        const QString base = fitFile(".chargefactors", "O1 2 3 0.85\n\n  N1  8 9\t1.25 \r\n"
                                                       "O1\nO2 0.5\nO3 2 x 0,85\n");
        QVERIFY(Fit::readChargeFactorsFile(base, start));
        for (const ChargeFactorsGroup &group : start)
            got.append(text(group.name, group.atoms, {group.chargeFactor}));
        QVector<ParametersGroup> read;
        fitFile(".groups", "oxygens 2 3 4\nempty\nnitrogens 8 9");
        QVERIFY(Fit::readParametersGroup(base, read));
        for (const ParametersGroup &group : read)
            got.append(text(group.name, group.atoms, {}));
        QVector<TransitionValues> transitions;
        fitFile(".exp", "1 302.5 455 379\n4 2.7e3 3100.25 -2900\n2 900\nx y z\n1 nan inf 1e999\n");
        QVERIFY(Fit::readTransitionValues(base, transitions));
        for (const TransitionValues &t : transitions)
            got.append(text(QString(), {t.level}, {t.energyLow, t.energyHigh, t.offset}));
        QVector<GLimits> limits;
        fitFile(".limits", "O 0.1 1.5\nN 0.2 2\n");
        Fit::readGLimitsFile(base, limits);
        for (const GLimits &each : limits)
            got.append(text(each.name, {}, {each.minimum, each.maximum}));
        QCOMPARE(got, (QStringList{"O1 2 3 0.85", "N1 8 9 1.25", "O1 0", "O2 0.5", "O3 2 0 0",
                                   "oxygens 2 3 4", "empty", "nitrogens 8 9", " 1 302.5 455 379",
                                   " 4 2700 3100.25 -2900", " 2 900 0 0", " 0 0 0 0", " 1 0 0 0",
                                   "O 0.1 1.5", "N 0.2 2"}));
    }

    void missingFiles()
    {
        const QString base = QStringLiteral("/no/such/complex");
        QVector<ChargeFactorsGroup> start(1);
        QVector<ParametersGroup> read(1);
        QVector<TransitionValues> transitions(1);
        QVector<GLimits> limitsRead(1);
        const QByteArray output = standardOutputOf([&] {
            QVERIFY(!Fit::readChargeFactorsFile(base, start));
            QVERIFY(!Fit::readParametersGroup(base, read));
            QVERIFY(!Fit::readTransitionValues(base, transitions));
            Fit::readGLimitsFile(base, limitsRead);
        });
        QCOMPARE(output, QByteArray("File /no/such/complex.chargefactors cannot be found"
                                    "Cannot open the file /no/such/complex.groups\n"
                                    "LANQOR could not read the file /no/such/complex.exp\n"));
        QVERIFY(start.size() == 1 && read.size() == 1 && transitions.size() == 1);
        QCOMPARE(limitsRead.size(), 1);
    }

    void damagedFiles()
    {
        const QByteArray text =
            "oxygens 2 3 4 5 6 7 0.6\nnitrogens 8 9 0.9\n1 302.5 455 379\nO 0 1\n";
        testSupport::damageFile(text, 20, 300, [](const QString &path) {
            const QByteArray bytes = testSupport::readAll(path);
            QVector<ChargeFactorsGroup> start;
            QVector<ParametersGroup> read;
            QVector<TransitionValues> transitions;
            QVector<GLimits> limitsRead;
            QVERIFY(Fit::readChargeFactorsFile(fitFile(".chargefactors", bytes), start));
            QVERIFY(Fit::readParametersGroup(fitFile(".groups", bytes), read));
            QVERIFY(Fit::readTransitionValues(fitFile(".exp", bytes), transitions));
            Fit::readGLimitsFile(fitFile(".limits", bytes), limitsRead);
            Fit fit(nullptr, structure(), 0);
            fit.setParametersGroup(read);
            fit.setTransitionValues(transitions);
            fit.setGLimits(limitsRead);
            QVERIFY(fitSupport::evaluate(fit, QVector<double>(read.size(), 0.5)) >= 0.0);
        });
    }

    void response()
    {
        Fit fit(nullptr, structure(), 0);
        fit.setParametersGroup(groups);
        const QVector<TransitionValues> transitions = {transition(1, 300.0, 470.0, 379.0),
                                                       transition(3, 1900.0, 1800.0, 1850.0)};
        fit.setTransitionValues(transitions);
        QVERIFY2(fit.checkSetup(), qPrintable(fit.getLastError()));
        double best = 1.0e24;
        for (const auto &[gO, gN] : {std::pair<double, double>{0.5, 0.5}, {0.9, 0.3}, {0.4, 0.6}}) {
            double expected = 0.0;
            for (const TransitionValues &t : transitions) {
                const QVector<double> levels = levelsOf(t.level, gO, gN);
                const double low = levels.first();
                const double high = levels.last();
                expected += 100.0 * std::abs(high - low - std::abs(t.energyHigh - t.energyLow)) +
                            std::abs(low - t.energyLow + t.offset) +
                            std::abs(high - t.energyHigh + t.offset);
            }
            COMPARE_NEAR(fitSupport::evaluate(fit, {gO, gN}), expected, 1e-9);
            best = std::min(best, expected);
            COMPARE_NEAR(fit.getBestResponse(), best, 1e-9);
        }
        const auto geometry = fitSupport::geometryOfLostFile(structure());
        Fit given(nullptr, geometry.get(), 0);
        given.setParametersGroup(groups);
        given.setTransitionValues(transitions);
        QCOMPARE(fitSupport::evaluate(given, {0.4, 0.6}), fit.getResponseFunction());
        // A manifold of one level.
        fit.setTransitionValues({transition(0, 7.0, 10.0, 5.0)});
        COMPARE_NEAR(fitSupport::evaluate(fit, {0.6, 0.9}), 100.0 * 3.0 + 2.0 + 5.0, 1e-12);
        // The charge factors that made the levels leave no misfit.
        fit.setTransitionValues(measured(0.6, 0.9));
        COMPARE_NEAR(fitSupport::evaluate(fit, {0.6, 0.9}), 0.0, 1e-8);
        QCOMPARE(fit.getBestChargeFactor(1), 0.9);
    }

    void limits()
    {
        Fit fit(nullptr, structure(), 0);
        setUp(fit);
        QVERIFY(fitSupport::evaluate(fit, {0.1, 0.2}) < infeasible);
        QVERIFY(fitSupport::evaluate(fit, {1.5, 2.0}) < infeasible);
        const double best = fit.getBestResponse();
        for (const auto &[gO, gN] : {std::pair<double, double>{0.0999, 0.9},
                                     {1.5001, 0.9},
                                     {0.6, 0.1999},
                                     {0.6, 2.0001},
                                     {std::nan(""), 0.9}})
            QCOMPARE(fitSupport::evaluate(fit, {gO, gN}), infeasible);
        QCOMPARE(fitSupport::evaluate(fit, {0.6}), infeasible);
        QVERIFY(fit.getLastError().contains(QStringLiteral("2 groups")));
        QCOMPARE(fit.getBestResponse(), best);
        // Without limits of its element a charge factor must not be negative.
        fit.setGLimits({{QStringLiteral("O"), -1.0, 1.5}});
        QVERIFY(fitSupport::evaluate(fit, {0.0, 50.0}) < infeasible);
        QCOMPARE(fitSupport::evaluate(fit, {-0.5, 0.9}), infeasible);
        QCOMPARE(fitSupport::evaluate(fit, {0.6, -1e-9}), infeasible);
        // An atom in two groups has the value of the last.
        fit.setParametersGroup(
            groups + QVector<ParametersGroup>{{QStringLiteral("all"), {2, 3, 4, 5, 6, 7, 8, 9}}});
        const double last = fitSupport::evaluate(fit, {0.1, 0.2, 0.7});
        fit.setParametersGroup(groups);
        QCOMPARE(fitSupport::evaluate(fit, {0.7, 0.7}), last);
    }

    void setupFaults()
    {
        struct Case
        {
            QString file;
            int coordNumber;
            QVector<int> nitrogens;
            QVector<int> manifolds;
            QString message;
        };
        const QVector<Case> cases = {
            {"/no/such.out", 8, {8, 9}, {1}, "/no/such.out does not exist."},
            {structure(), 9, {8, 9}, {1}, "9"},
            {structure(), 8, {8}, {1}, "N 9"},
            {structure(), 8, {8, 9, 10}, {1}, "atom 10"},
            {structure(), 8, {8, 9, 1}, {1}, "atom 1;"},
            {structure(), 8, {8, 9}, {7}, "7F7"},
            {structure(), 8, {8, 9}, {}, "no measured levels"}};
        for (const Case &wrong : cases) {
            Fit fit(nullptr, wrong.file, 0);
            const testSupport::MessageSpy spy(fit);
            fit.setCoordNumber(wrong.coordNumber);
            fit.setParametersGroup({groups.at(0), {QStringLiteral("nitrogens"), wrong.nitrogens}});
            QVector<TransitionValues> transitions;
            for (const int J : wrong.manifolds)
                transitions.append(transition(J, 300.0, 450.0, 379.0));
            fit.setTransitionValues(transitions);
            for (int i = 0; i < 3; ++i)
                QCOMPARE(fitSupport::evaluate(fit, {0.6, 0.9}), infeasible);
            QVERIFY2(fit.getLastError().contains(wrong.message), qPrintable(fit.getLastError()));
            QCOMPARE(spy.messages, QStringList(fit.getLastError())); // once, not at each trial
            QVERIFY(!fit.checkSetup());
            QVERIFY(fit.getReport().isEmpty());
            QVERIFY(!fit.createOuputFile());
        }
    }

    void effectiveCharge()
    {
        const auto closedForm = [](double ligands, double ion) {
            const double d = 0.5 * (ligands + ion) * 1.889725988579;
            return 3.0 + 14.0 * std::exp(-0.5 * d * d);
        };
        COMPARE_NEAR(Fit(nullptr, structure(), 0).getEffectiveCharge(),
                     closedForm((6 * 1.016 + 2 * 1.19) / 8, 1.066), 1e-12);
        const double radii[] = {0.947, 0.947, 1.01, 1.066, 1.12, 1.12};
        for (int N = 5; N <= 10; ++N) {
            Fit fit(nullptr, oxygenSphere(QStringLiteral("oxygens.xyz"), N), N);
            COMPARE_NEAR(fit.calculateEffectiveCharge(), closedForm(1.016, radii[N - 5]), 1e-12);
        }
        QCOMPARE(Fit(nullptr, QStringLiteral("/no/such.out"), 0).getEffectiveCharge(), 0.0);
    }

    void filesOfTheFit()
    {
        const QTemporaryDir directory;
        const QString base = directory.filePath(QStringLiteral("complex"));
        const auto progress = [&] {
            return testSupport::readAll(base + QStringLiteral(".progress")).split('\n');
        };
        {
            Fit fit(nullptr, structure(), 0);
            setUp(fit);
            fit.setFileName(base);
            QVERIFY(!fit.createOuputFile()); // nothing to write yet
            fitSupport::evaluate(fit, {0.3, 0.3});
            QCOMPARE(progress().size(), 2); // flushed at once
            fitSupport::evaluate(fit, {0.1, 0.2});
            const double better = fitSupport::evaluate(fit, {0.6, 0.8});
            QCOMPARE(progress().size(), 3); // the second trial was worse
            const QList<QByteArray> fields = progress().at(1).split(' ');
            QCOMPARE(fields.size(), 3); // two blanks
            QCOMPARE(fields.at(0), QByteArray("3"));
            COMPARE_NEAR(fields.at(2).toDouble() / better, 1.0, 1e-9);
            QCOMPARE(QString::fromUtf8(testSupport::readAll(base + QStringLiteral(".stark"))),
                     fit.getReport());
            fit.setRequiredCitations(QStringLiteral("cite this"));
            QVERIFY(fit.getReport().endsWith(QStringLiteral("cite this")));
        }
        Fit second(nullptr, structure(), 0);
        setUp(second);
        second.setFileName(base);
        fitSupport::evaluate(second, {0.3, 0.3});
        QCOMPARE(progress().size(), 4); // appended

        Fit lost(nullptr, structure(), 0);
        const testSupport::MessageSpy spy(lost);
        setUp(lost);
        lost.setFileName(QStringLiteral("/no/such/folder/complex"));
        fitSupport::evaluate(lost, {0.3, 0.3});
        fitSupport::evaluate(lost, {0.5, 0.8});
        QCOMPARE(spy.messages.size(), 1);
        QVERIFY(spy.contains(QStringLiteral("/no/such/folder/complex.progress")));
        QCOMPARE(lost.getBestChargeFactor(0), 0.5);
    }

    void start()
    {
        // By the first atom of the group, the last entry that names it; 0.5 without one; within the
        // limits 0.1 to 1.5 of O and 0.2 to 2 of N.
        Fit fit(nullptr, structure(), 0);
        setUp(fit);
        const auto given = [&fit](const QVector<int> &atoms, double g) {
            return fit.makeStartingVector(
                {{QStringLiteral("a"), {3, 9}, 0.7}, {QStringLiteral("b"), atoms, g}});
        };
        QCOMPARE(fit.makeStartingVector({}), (QVector<double>{0.5, 0.5}));
        QCOMPARE(given({8, 2}, 0.6), (QVector<double>{0.6, 0.6}));
        QCOMPARE(given({2}, 1.9), (QVector<double>{1.5, 0.5}));
        QCOMPARE(given({8}, 0.1), (QVector<double>{0.5, 0.2}));
        fit.setGLimits({});
        QCOMPARE(given({8}, -0.1), (QVector<double>{0.5, 0.0}));
        fit.setTransitionValues({});
        QVERIFY(fit.makeStartingVector({}).isEmpty());
    }

    /// Exact levels of two groups, from four starts that each end in another minimum now and then:
    /// with the further starts all reach the true one, by either objective.
    void severalStartsFindTheTrueChargeFactors()
    {
        LanqorInputData geometry(nullptr, structure());
        QVERIFY(geometry.readMopacOutFile(false) && geometry.createSphericalCoordinate());
        Fit model(nullptr, &geometry, 0);
        const QVector<TransitionValues> data = measured(0.9, 1.4);
        model.setParametersGroup(groups);
        model.setTransitionValues(data);
        QVector<FitParameter> parameters = model.getParameters();
        LanqorStarkLeastSquares problem(&geometry, 0, 0.0801);
        QVERIFY(problem.setProblem(groups, parameters, data));
        for (FitParameter &parameter : parameters)
            parameter.maximum = 3.0;
        const auto furtherStart = [](int number) {
            return QVector<double>{3.0 * LanqorFitStarts::getStartingFraction(number, 0),
                                   3.0 * LanqorFitStarts::getStartingFraction(number, 1)};
        };
        int wrong = 0;
        for (const QVector<double> &first :
             {QVector<double>{0.5, 0.5}, {0.1, 2.5}, {1.9, 0.1}, {1.5, 0.3}}) {
            QVector<LeastSquaresResults> all = {problem.fit(first)};
            wrong += all.first().account.misfit > 1.0 ? 1 : 0;
            for (int number = 2; number <= 20; ++number)
                all.append(problem.fit(furtherStart(number)));
            const LeastSquaresResults best = LanqorFitAccount::chooseBest(all);
            COMPARE_NEAR(best.vector.at(0), 0.9, 1e-6);
            COMPARE_NEAR(best.vector.at(1), 1.4, 1e-6);
            QVERIFY(best.account.minima.size() > 1);

            LanqorFitStarts starts(4, [&](int number) {
                auto fit = std::make_unique<Fit>(nullptr, &geometry, 0);
                fit->setParametersGroup(groups);
                fit->setTransitionValues(data);
                return FitStart{std::move(fit), number == 1 ? first : furtherStart(number),
                                parameters};
            });
            starts.setPolished(true);
            for (int number = 1; number <= 4; ++number) {
                starts.getAnnealing(number)->setNStopMax(20);
                starts.run(number);
            }
            QVERIFY(starts.getBest()->getBestResponse() < 0.01);
        }
        QVERIFY(wrong > 0);
    }

    /// Data made with signed elements give the charge factors back with signed ones alone; either
    /// fit takes the choice.
    void signsDecideTheChargeFactors()
    {
        LanqorInputData geometry(nullptr, structure());
        QVERIFY(geometry.readMopacOutFile(false) && geometry.createSphericalCoordinate());
        LanqorStarkLevels truth(&geometry, 0);
        truth.setReducedElements(ReducedElements::Signed);
        QVERIFY(truth.setChargeFactors({0, 0, 0.6, 0.6, 0.6, 0.6, 0.6, 0.6, 0.9, 0.9}));
        truth.calculateStarkLevels();
        QVector<TransitionValues> data;
        for (const int J : {1, 2, 4}) {
            const QVector<double> levels = truth.getSortedStarkLevels(J);
            data.append(transition(J, levels.first(), levels.last(), 0.0));
        }
        for (const ReducedElements choice :
             {ReducedElements::Signed, ReducedElements::Magnitudes}) {
            Fit model(nullptr, &geometry, 0);
            model.setReducedElements(choice);
            model.setParametersGroup(groups);
            model.setTransitionValues(data);
            LanqorStarkLeastSquares problem(&geometry, 0, 0.0801);
            problem.setReducedElements(choice);
            QVERIFY(problem.setProblem(groups, model.getParameters(), data));
            const QVector<double> fitted = problem.fit({0.5, 0.8}).vector;
            const bool isSigned = choice == ReducedElements::Signed;
            const double response = fitSupport::evaluate(model, {0.6, 0.9});
            QCOMPARE(response < 1e-6, isSigned);
            QCOMPARE(testSupport::isNear(fitted.at(1), 0.9, 1e-5), isSigned);
            QCOMPARE(model.getReport().contains(QStringLiteral("with their signs")), isSigned);
        }
    }

    /// The levels of one group are linear in its g, E = g e: sd(g) = sd / sqrt(sum of e^2).
    void standardErrorOfOneChargeFactor()
    {
        LanqorInputData geometry(nullptr, structure());
        QVERIFY(geometry.readMopacOutFile(false) && geometry.createSphericalCoordinate());
        const QVector<ParametersGroup> one = {{QStringLiteral("all"), {2, 3, 4, 5, 6, 7, 8, 9}}};
        QVector<TransitionValues> data = measured(0.8, 0.8);
        double squares = 0.0;
        for (TransitionValues &t : data) {
            squares += std::pow((t.energyLow - t.offset) / 0.8, 2);
            squares += std::pow((t.energyHigh - t.offset) / 0.8, 2);
            t.deviationLow = t.deviationHigh = 2.5;
        }
        LanqorStarkLeastSquares problem(&geometry, 0, 0.0801);
        QVERIFY(problem.setProblem(one, {{QStringLiteral("g:all"), QStringLiteral("1"), 0.0, 3.0}},
                                   data));
        const FitAccount account = problem.fit({0.3}).account;
        COMPARE_NEAR(account.parameters.at(0).value, 0.8, 1e-9);
        COMPARE_NEAR(account.parameters.at(0).standardError, 2.5 / std::sqrt(squares), 1e-9);
        QCOMPARE(account.dataCount, 6);
    }
};

QTEST_GUILESS_MAIN(TestParametricStark)
#include "tst_parametricstark.moc"
