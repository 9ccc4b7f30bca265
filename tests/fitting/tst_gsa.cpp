#include "TestSupport.h"
#include "plainAnnealing.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorGSA.h>

#include <QtTest>

using Vector = std::vector<double>;

namespace {

/// Records every evaluation of a given function.
class RecordedProblem : public LanqorAbstractParametric
{
public:
    explicit RecordedProblem(PlainAnnealing::Response response)
        : response(std::move(response))
    {}
    bool runParametrization(const int &n, double *&x) override
    {
        LanqorAbstractParametric::runParametrization(n, x);
        visited.emplace_back(x, x + n);
        responseFunction = response(visited.back());
        if (stopAt == int(visited.size()))
            LanqorGSA::isStopParametrization = true;
        if (refuseFrom > 0 && int(visited.size()) >= refuseFrom) {
            setLastError(QStringLiteral("refused"));
            return false;
        }
        return true;
    }
    void endOfParametrization() override { ++ends; }

    std::vector<Vector> visited;
    int ends = 0;
    int stopAt = 0;
    int refuseFrom = 0;

private:
    PlainAnnealing::Response response;
};

double bowl(const Vector &x)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        sum += double(i + 1) * (x[i] - 0.3) * (x[i] - 0.3);
    return sum;
}

double rosenbrock(const Vector &x)
{
    return 100.0 * std::pow(x[1] - x[0] * x[0], 2) + std::pow(1.0 - x[0], 2);
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

} // namespace

class TestGSA : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { LanqorGSA::isStopParametrization = false; }

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
        QTest::addColumn<int>("problem");
        QTest::addColumn<int>("n");
        QTest::addColumn<int>("steps");
        QTest::addColumn<double>("qA");
        QTest::addColumn<double>("qT");
        QTest::addColumn<double>("qV");
        QTest::addColumn<double>("T0");
        QTest::newRow("defaults, two parameters") << 0 << 2 << 400 << 2.5 << 2.5 << 2.5 << 10.0;
        QTest::newRow("infeasible outside a box") << 1 << 6 << 400 << 2.5 << 2.5 << 2.5 << 10.0;
        QTest::newRow("Rosenbrock, slow cooling") << 2 << 2 << 400 << 1.7 << 1.6 << 2.2 << 25.0;
        QTest::newRow("gamma of 1.5") << 0 << 3 << 200 << 1.3 << 2.0 << 1.5 << 5.0;
        QTest::newRow("gamma of 4.5") << 0 << 3 << 200 << 1.3 << 2.0 << 1.2 << 5.0;
        QTest::newRow("acceptance without number") << 0 << 2 << 200 << 0.5 << 2.5 << 2.5 << 10.0;
        QTest::newRow("no parameters") << 0 << 0 << 20 << 2.5 << 2.5 << 2.5 << 10.0;
        QTest::newRow("cycles without steps") << 0 << 2 << 1 << 2.5 << 2.5 << 2.5 << 10.0;
    }
    void runIsThePlainRunToTheLastBit()
    {
        QFETCH(int, problem);
        QFETCH(int, n);
        QFETCH(int, steps);
        QFETCH(double, qA);
        QFETCH(double, qT);
        QFETCH(double, qV);
        QFETCH(double, T0);
        const PlainAnnealing::Response response = problem == 0   ? bowl
                                                  : problem == 1 ? boxed
                                                                 : rosenbrock;
        const Vector start(std::size_t(n), problem == 1 ? 1.0 : -1.2);

        PlainAnnealing plain;
        plain.qA = qA;
        plain.qT = qT;
        plain.qV = qV;
        plain.T0 = T0;
        plain.stepsPerCycle = steps;
        plain.run(start, response);

        RecordedProblem recorded(response);
        LanqorAbstractParametric *target = &recorded;
        Vector point = start;
        double *x = point.data();
        LanqorGSA annealing(nullptr, n, x, target);
        annealing.setGSAParameters(qA, qT, qV, T0);
        annealing.setNStopMax(steps);
        annealing.initializeGSA();

        QCOMPARE(recorded.getPointNumber(), 15 * steps);
        QCOMPARE(recorded.visited.size(), plain.visited.size());
        for (std::size_t i = 0; i < plain.visited.size(); ++i)
            QVERIFY2(recorded.visited[i] == plain.visited[i], qPrintable(QString::number(i)));
        QVERIFY(point == plain.current);
        QVERIFY(std::equal(plain.best.begin(), plain.best.end(), annealing.getBestPoint()));
        QCOMPARE(recorded.ends, 1);
        // The comparison is worth something only if uphill moves occur (a negative base has none).
        QVERIFY(plain.uphill > 0 || n == 0 || steps == 1 || qA < 1.0);
    }

    /// No parameter ever moves by more than 1 in a step; at a high temperature hardly by less.
    void stepsAreBounded()
    {
        RecordedProblem recorded([](const Vector &) { return 1.0; }); // every trial is accepted
        LanqorAbstractParametric *target = &recorded;
        Vector point(3, 0.0);
        double *x = point.data();
        LanqorGSA annealing(nullptr, 3, x, target);
        annealing.setNStopMax(50);
        annealing.initializeGSA();
        for (std::size_t i = 1; i < recorded.visited.size(); ++i) {
            for (std::size_t k = 0; k < 3; ++k) {
                const double step = std::abs(recorded.visited[i][k] - recorded.visited[i - 1][k]);
                QVERIFY(step <= 1.0 + 1e-12);
                QVERIFY(step > 0.9999 || i > 1);
            }
        }
    }

    void signalsOfAFullRun()
    {
        RecordedProblem recorded(bowl);
        LanqorAbstractParametric *target = &recorded;
        Vector point(2, 1.0);
        double *x = point.data();
        LanqorGSA annealing(nullptr, 2, x, target);
        QSignalSpy cycles(&annealing, &LanqorGSA::newOmegaCalculation);
        QVector<qint64> done;
        double lastBest = 1.0e300;
        QObject::connect(&annealing, &LanqorGSA::pointsProgress,
                         [&](qint64 points, qint64 total, double best) {
                             QCOMPARE(total, qint64(225000));
                             QVERIFY(done.isEmpty() || points > done.last());
                             QVERIFY(best <= lastBest);
                             lastBest = best;
                             done.append(points);
                         });
        QElapsedTimer timer;
        timer.start();
        annealing.initializeGSA();
        QCOMPARE(recorded.getPointNumber(), 225000);
        QCOMPARE(cycles.size(), 16);
        for (int i = 0; i < 16; ++i)
            QCOMPARE(cycles.at(i).at(0).toInt(), i == 0 ? 1 : i);
        QCOMPARE(done.first(), qint64(1));
        QCOMPARE(done.last(), qint64(225000));
        QVERIFY(done.size() <= 2 + timer.elapsed() / 50);
        QVERIFY(lastBest < 1.0e-3);
    }

    void stopLeavesAfterTheStep()
    {
        RecordedProblem recorded(bowl);
        recorded.stopAt = 137;
        LanqorAbstractParametric *target = &recorded;
        Vector point(2, 1.0);
        double *x = point.data();
        LanqorGSA annealing(nullptr, 2, x, target);
        annealing.setNStopMax(100);
        QSignalSpy cycles(&annealing, &LanqorGSA::newOmegaCalculation);
        annealing.initializeGSA();
        QCOMPARE(recorded.getPointNumber(), 137);
        QCOMPARE(recorded.ends, 0);
        QCOMPARE(cycles.size(), 2);
        QVERIFY(LanqorGSA::isStopParametrization);
        LanqorGSA another(nullptr, 2, x, target);
        QVERIFY(!LanqorGSA::isStopParametrization);
    }

    /// Refusals count at the start of a cycle only.
    void refusalAtACycleStartEndsTheRun()
    {
        RecordedProblem recorded(bowl);
        recorded.refuseFrom = 120;
        LanqorAbstractParametric *target = &recorded;
        Vector point(2, 1.0);
        double *x = point.data();
        LanqorGSA annealing(nullptr, 2, x, target);
        annealing.setNStopMax(100);
        QSignalSpy errors(&annealing, &LanqorGSA::errorOmegaCalculation);
        annealing.initializeGSA();
        QCOMPARE(recorded.getPointNumber(), 201);
        QCOMPARE(errors.size(), 1);
        QCOMPARE(errors.at(0).at(0).toString(), QStringLiteral("refused"));
        QCOMPARE(recorded.ends, 1);
    }

    /// Indices at which the formulas have no value, and nothing to minimise.
    void senselessSetupsComeBack()
    {
        for (const double qV : {1.0, 1.0 + 1e-12, 3.0, 0.9, 1e300}) {
            RecordedProblem recorded(boxed);
            LanqorAbstractParametric *target = &recorded;
            Vector point(2, 1.0);
            double *x = point.data();
            LanqorGSA annealing(nullptr, 2, x, target);
            annealing.setGSAParameters(1.0, 1.0, qV, 0.0);
            annealing.setNStopMax(20);
            annealing.initializeGSA();
            QCOMPARE(recorded.getPointNumber(), 300);
        }
        double *none = nullptr;
        LanqorAbstractParametric *target = nullptr;
        LanqorGSA annealing(nullptr, 2, none, target);
        QSignalSpy errors(&annealing, &LanqorGSA::errorOmegaCalculation);
        annealing.initializeGSA();
        QCOMPARE(errors.size(), 1);
        QVERIFY(!annealing.getLastError().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestGSA)
#include "tst_gsa.moc"
