#include "TestSupport.h"
#include "plainAnnealing.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorFitPolish.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>

#include <QtTest>

using Vector = std::vector<double>;
Q_DECLARE_METATYPE(PlainAnnealing::Response)

namespace {

double bowl(const Vector &x)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        sum += double(i + 1) * (x[i] - 0.3) * (x[i] - 0.3);
    return sum;
}

/// Infeasible outside a small box, as the fits of physical parameters are.
double boxed(const Vector &x)
{
    for (const double value : x) {
        if (value < 0.01 || value > 3.0)
            return 1.0e20;
    }
    return bowl(x);
}

/// Records every evaluation of a given function.
class RecordedProblem : public LanqorAbstractParametric
{
public:
    bool runParametrization(const int &n, double *&x) override
    {
        LanqorAbstractParametric::runParametrization(n, x);
        visited.emplace_back(x, x + n);
        responseFunction = response(visited.back());
        bestResponse = std::min(bestResponse, responseFunction);
        const int count = static_cast<int>(visited.size());
        if (stopAt == count)
            LanqorGSA::isStopParametrization = true;
        if (refuseFrom == 0 || count < refuseFrom)
            return true;
        setLastError(QStringLiteral("refused"));
        return false;
    }
    void endOfParametrization() override { ++ends; }
    /// All responses are this one.
    void setHeight(double value)
    {
        response = [value](const Vector &) { return value; };
    }

    PlainAnnealing::Response response = bowl;
    std::vector<Vector> visited;
    int ends = 0;
    int stopAt = 0;
    int refuseFrom = 0;
};

/// A problem, its starting point and its minimiser.
struct Annealing
{
    Annealing(std::size_t n, int steps)
        : point(n, 1.0)
        , gsa(nullptr, static_cast<int>(n), x, target)
        , cycles(&gsa, &LanqorGSA::newOmegaCalculation)
        , errors(&gsa, &LanqorGSA::errorOmegaCalculation)
    {
        gsa.setNStopMax(steps);
    }
    RecordedProblem problem;
    LanqorAbstractParametric *target = &problem;
    Vector point;
    double *x = point.data();
    LanqorGSA gsa;
    QSignalSpy cycles;
    QSignalSpy errors;
};

} // namespace

class TestGSA : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Check values of the same published generator in the GNU Scientific Library.
    void independentSequenceIsThePublishedOne()
    {
        for (const auto &known : {std::array<int, 4>{1, 298227348, 715119168, 186340785},
                                  std::array<int, 4>{14, 234172822, 812553913, 563267204}}) {
            SubtractiveSequence sequence(known[0]);
            QCOMPARE(sequence.draw(), known[1]);
            QCOMPARE(sequence.draw(), known[2]);
            for (int i = 3; i < 10000; ++i)
                sequence.draw();
            QCOMPARE(sequence.draw(), known[3]);
        }
    }

    void runIsThePlainRunToTheLastBit_data()
    {
        QTest::addColumn<bool>("isBoxed");
        QTest::addColumn<int>("n");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QVector<double>>("parameters"); // qA, qT, qV, T0
        const QVector<double> defaults = {2.5, 2.5, 2.5, 10.0};
        QTest::newRow("defaults") << false << 2 << 400 << defaults;
        QTest::newRow("infeasible outside a box") << true << 6 << 400 << defaults;
        QTest::newRow("slow cooling") << false << 2 << 400 << QVector<double>{1.7, 1.6, 2.2, 25.0};
        QTest::newRow("gamma of 1.5") << false << 3 << 200 << QVector<double>{1.3, 2.0, 1.5, 5.0};
        QTest::newRow("gamma of 4.5") << false << 3 << 200 << QVector<double>{1.3, 2.0, 1.2, 5.0};
        QTest::newRow("acceptance without number")
            << false << 2 << 200 << QVector<double>{0.5, 2.5, 2.5, 10.0};
        QTest::newRow("no parameters") << false << 0 << 20 << defaults;
        QTest::newRow("cycles without steps") << false << 2 << 1 << defaults;
    }
    void runIsThePlainRunToTheLastBit()
    {
        QFETCH(bool, isBoxed);
        QFETCH(int, n);
        QFETCH(int, steps);
        QFETCH(QVector<double>, parameters);
        Annealing run(static_cast<std::size_t>(n), steps);
        run.problem.response = isBoxed ? boxed : bowl;
        PlainAnnealing plain;
        plain.qA = parameters[0];
        plain.qT = parameters[1];
        plain.qV = parameters[2];
        plain.T0 = parameters[3];
        plain.stepsPerCycle = steps;
        plain.run(run.point, run.problem.response);

        run.gsa.setGSAParameters(parameters[0], parameters[1], parameters[2], parameters[3]);
        run.gsa.initializeGSA();
        QCOMPARE(run.problem.getPointNumber(), 15 * steps);
        QCOMPARE(run.problem.visited.size(), plain.visited.size());
        for (std::size_t i = 0; i < plain.visited.size(); ++i)
            QVERIFY2(run.problem.visited[i] == plain.visited[i], qPrintable(QString::number(i)));
        QVERIFY(run.point == plain.current);
        QVERIFY(std::equal(plain.best.begin(), plain.best.end(), run.gsa.getBestPoint()));
        QCOMPARE(run.problem.ends, 1);
        // The comparison is worth something only if uphill moves occur (a negative base has none).
        QVERIFY(plain.uphill > 0 || n == 0 || steps == 1 || parameters[0] < 1.0);
    }

    void signalsOfAFullRun()
    {
        Annealing run(2, 15000);
        QVector<qint64> done;
        double lastBest = 1.0e300;
        QObject::connect(&run.gsa, &LanqorGSA::pointsProgress,
                         [&](qint64 points, qint64 total, double best) {
                             QCOMPARE(total, qint64(225000));
                             QVERIFY(done.isEmpty() || points > done.last());
                             QVERIFY(best <= lastBest);
                             lastBest = best;
                             done.append(points);
                         });
        QElapsedTimer timer;
        timer.start();
        run.gsa.initializeGSA();
        QCOMPARE(run.problem.getPointNumber(), 225000);
        QCOMPARE(run.cycles.size(), 16);
        for (int i = 0; i < 16; ++i)
            QCOMPARE(run.cycles.at(i).at(0).toInt(), i == 0 ? 1 : i);
        QCOMPARE(done.first(), qint64(1));
        QCOMPARE(done.last(), qint64(225000));
        QVERIFY(done.size() <= 2 + timer.elapsed() / 50);
        QVERIFY(lastBest < 1.0e-3);
    }

    void stopLeavesAfterTheStep()
    {
        Annealing run(2, 100);
        run.problem.stopAt = 137;
        run.gsa.initializeGSA();
        QCOMPARE(run.problem.getPointNumber(), 137);
        QCOMPARE(run.problem.ends, 0);
        QCOMPARE(run.cycles.size(), 2);
        QVERIFY(LanqorGSA::isStopParametrization);
        const Annealing another(2, 100);
        QVERIFY(!LanqorGSA::isStopParametrization);
    }

    /// The best response counts, and of equal ones that of the lowest start; the object's own
    /// vectors give the runs of callers' arrays.
    void bestOfSeveralStarts()
    {
        const QVector<double> heights = {2.0, 1.0, 1.0, 3.0};
        LanqorFitStarts starts(heights.size(), [&](int number) {
            auto problem = std::make_unique<RecordedProblem>();
            problem->setHeight(heights.at(number - 1));
            return FitStart{std::move(problem), {1.0, double(number)}};
        });
        QCOMPARE(starts.getCount(), 4);
        for (const int number : {4, 2, 3, 1}) { // whatever the order
            starts.getAnnealing(number)->setNStopMax(100);
            starts.run(number);
        }
        QCOMPARE(starts.getBestNumber(), 2);
        QCOMPARE(starts.getPointNumber(), qint64(4 * 1500));
        QVERIFY(starts.getLastError().isEmpty() && !starts.isStopped());

        Annealing alone(2, 100);
        alone.problem.setHeight(1.0);
        alone.point = {1.0, 2.0};
        alone.gsa.initializeGSA();
        const auto *best = static_cast<RecordedProblem *>(starts.getBest());
        QVERIFY(best->visited == alone.problem.visited);
        const QVector<double> end = starts.getAnnealing(2)->getCurrentPoint();
        QVERIFY(std::equal(end.begin(), end.end(), alone.point.begin(), alone.point.end()));
    }

    /// A stop in a start or between two ends all, also when an annealing that is made meanwhile
    /// clears the flag.
    void stopEndsAllStarts()
    {
        for (const bool isBetween : {false, true}) {
            LanqorFitStarts starts(3, [&](int) {
                auto problem = std::make_unique<RecordedProblem>();
                problem->stopAt = isBetween ? 0 : 137;
                return FitStart{std::move(problem), {1.0, 1.0}};
            });
            for (int number = 1; number <= 3; ++number)
                starts.getAnnealing(number)->setNStopMax(100);
            starts.run(1);
            if (isBetween)
                starts.stop();
            const Annealing another(2, 100);
            QVERIFY(!LanqorGSA::isStopParametrization);
            starts.run(2);
            starts.run(3);
            QVERIFY(starts.isStopped());
            QCOMPARE(starts.getPointNumber(), qint64(isBetween ? 1500 : 137));
        }
    }

    /// A start without a vector, and one that is refused while it runs.
    void startsThatFail()
    {
        for (const bool isAtOnce : {true, false}) {
            LanqorFitStarts starts(3, [&](int number) {
                auto problem = std::make_unique<RecordedProblem>();
                problem->setLastError(QStringLiteral("refused"));
                problem->refuseFrom = number > 1 ? 1 : 0;
                const bool hasVector = !isAtOnce || number < 2;
                return FitStart{std::move(problem),
                                hasVector ? QVector<double>{1.0} : QVector<double>()};
            });
            QCOMPARE(starts.getCount(), isAtOnce ? 0 : 3);
            starts.run(2);
            QCOMPARE(starts.getLastError(), QStringLiteral("refused"));
        }
    }

    /// Refusals count at the start of a cycle only.
    void refusalAtACycleStartEndsTheRun()
    {
        Annealing run(2, 100);
        run.problem.refuseFrom = 120;
        run.gsa.initializeGSA();
        QCOMPARE(run.problem.getPointNumber(), 201);
        QCOMPARE(run.errors.size(), 1);
        QCOMPARE(run.errors.at(0).at(0).toString(), QStringLiteral("refused"));
        QCOMPARE(run.problem.ends, 1);
    }

    /// Indices at which the formulas have no value, and nothing to minimise.
    void senselessSetupsComeBack()
    {
        for (const double qV : {1.0, 1.0 + 1e-12, 3.0, 0.9, 1e300}) {
            Annealing run(2, 20);
            run.gsa.setGSAParameters(1.0, 1.0, qV, 0.0);
            run.gsa.initializeGSA();
            QCOMPARE(run.problem.getPointNumber(), 300);
        }
        double *none = nullptr;
        LanqorAbstractParametric *target = nullptr;
        LanqorGSA annealing(nullptr, 2, none, target);
        QSignalSpy errors(&annealing, &LanqorGSA::errorOmegaCalculation);
        annealing.initializeGSA();
        QCOMPARE(errors.size(), 1);
        QVERIFY(!annealing.getLastError().isEmpty());
    }

    /// Minima known in closed form: a curved valley, a sum of absolute values, a minimum outside
    /// the bounds, one beside a wall of refused trials.
    void polishFindsTheMinimumWithinTheBounds_data()
    {
        using Function = PlainAnnealing::Response;
        QTest::addColumn<Function>("response");
        QTest::addColumn<QVector<double>>("bounds"); // minimum, maximum of each parameter
        QTest::addColumn<QVector<double>>("minimum");
        QTest::newRow("valley") << Function([](const Vector &x) {
            return 100.0 * std::pow(x[1] - x[0] * x[0], 2) + std::pow(1.0 - x[0], 2);
        }) << QVector<double>{-2.0, 2.0, -2.0, 2.0}
                                << QVector<double>{1.0, 1.0};
        QTest::newRow("absolute values") << Function([](const Vector &x) {
            return std::abs(x[0] - 0.7) + 3.0 * std::abs(x[1] - 1.4) + std::abs(x[0] - x[1] + 0.7);
        }) << QVector<double>{0.0, 3.0, 0.0, HUGE_VAL}
                                         << QVector<double>{0.7, 1.4};
        QTest::newRow("outside") << Function(bowl) << QVector<double>{0.5, 2.0, 0.0, 0.2}
                                 << QVector<double>{0.5, 0.2};
        QTest::newRow("wall") << Function(boxed) << QVector<double>{-1.0, 3.0, -1.0, 3.0}
                              << QVector<double>{0.3, 0.3};
    }
    void polishFindsTheMinimumWithinTheBounds()
    {
        QFETCH(PlainAnnealing::Response, response);
        QFETCH(QVector<double>, bounds);
        QFETCH(QVector<double>, minimum);
        QVector<FitParameter> parameters;
        for (int i = 0; i < minimum.size(); ++i)
            parameters.append(
                {QString::number(i), QString(), bounds.at(2 * i), bounds.at(2 * i + 1)});
        FitPolishResults results[2];
        for (FitPolishResults &result : results) {
            RecordedProblem problem;
            problem.response = response;
            result = LanqorFitPolish(&problem, parameters).run({1.9, 0.1});
            QVERIFY(result.isConverged);
            QCOMPARE(result.points, int(problem.visited.size()));
            for (const Vector &x : problem.visited)
                for (int i = 0; i < minimum.size(); ++i)
                    QVERIFY(x[std::size_t(i)] >= bounds.at(2 * i) &&
                            x[std::size_t(i)] <= bounds.at(2 * i + 1));
        }
        QCOMPARE(results[0].vector, results[1].vector);
        for (int i = 0; i < minimum.size(); ++i)
            COMPARE_NEAR(results[0].vector.at(i), minimum.at(i), 1e-6);
    }

    void polishHoldsFixedParametersAndEnds()
    {
        RecordedProblem problem;
        const QVector<FitParameter> parameters = {
            {QStringLiteral("a"), QString(), 0.0, 2.0},
            {QStringLiteral("b"), QString(), 0.0, 2.0, true, 1.25}};
        const FitPolishResults held = LanqorFitPolish(&problem, parameters).run({1.0, 1.0});
        COMPARE_NEAR(held.vector.at(0), 0.3, 1e-7);
        for (const Vector &x : problem.visited)
            QCOMPARE(x[1], 1.25);
        LanqorFitPolish short_(&problem, parameters);
        short_.setMaximumPoints(7);
        const FitPolishResults spent = short_.run({1.0, 1.0});
        QVERIFY(!spent.isConverged && spent.points <= 8);
        problem.stopAt = int(problem.visited.size()) + 5;
        QVERIFY(!LanqorFitPolish(&problem, parameters).run({1.0, 1.0}).isConverged);
        QCOMPARE(int(problem.visited.size()), problem.stopAt);
        LanqorGSA::isStopParametrization = false;
    }

    /// Whatever the order of the starts, with steps scaled to a range of 1e-3 and one of 1e3.
    void polishedStartsReachTheMinimumOfAnyScale()
    {
        const auto makeStart = [](int number) {
            auto problem = std::make_unique<RecordedProblem>();
            problem->response = [](const Vector &x) {
                return std::abs(x[0] * 1.0e3 - 0.4) + std::abs(x[1] * 1.0e-3 - 0.6);
            };
            return FitStart{std::move(problem),
                            {number * 1.0e-4, number * 1.0e2},
                            {{QStringLiteral("a"), QString(), 0.0, 1.0e-3},
                             {QStringLiteral("b"), QString(), 0.0, 1.0e3}}};
        };
        LanqorFitStarts forward(3, makeStart);
        LanqorFitStarts backward(3, makeStart);
        for (LanqorFitStarts *starts : {&forward, &backward}) {
            starts->setPolished(true);
            for (int number = 1; number <= 3; ++number)
                starts->getAnnealing(number)->setNStopMax(50);
        }
        for (int number = 1; number <= 3; ++number) {
            forward.run(number);
            backward.run(4 - number);
        }
        QCOMPARE(forward.getBestNumber(), backward.getBestNumber());
        const QVector<double> best = forward.getBestVector(forward.getBestNumber());
        QCOMPARE(best, backward.getBestVector(backward.getBestNumber()));
        COMPARE_NEAR(best.at(0), 0.4e-3, 1e-9);
        COMPARE_NEAR(best.at(1), 0.6e3, 1e-3);
        QVERIFY(forward.isConverged(1));
        const FitTrace trace = forward.getTrace(2);
        for (int i = 1; i < trace.improvements.size(); ++i)
            QVERIFY(trace.improvements.at(i).response <= trace.improvements.at(i - 1).response);
    }
};

QTEST_GUILESS_MAIN(TestGSA)
#include "tst_gsa.moc"
