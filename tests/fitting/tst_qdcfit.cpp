#include "fitSupport.h"

#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorParametricQDCBounded.h>

#include <QtTest>

#include <memory>

using namespace fitSupport;

namespace {

constexpr double infeasible = 1.0e20;
constexpr double omegaUnit = 1.0e-20;

/// A copy in the scratch folder, so that the ".indeces" file is written there.
QString scratchCopy(const QString &path)
{
    return testSupport::scratchFile(QFileInfo(path).fileName(), testSupport::readAll(path));
}

/// A fit with its indices and the geometry of a file.
struct QdcProblem
{
    explicit QdcProblem(const QString &file)
        : path(scratchCopy(file))
        , sphere(sphereOf(path))
        , indices(nullptr, path, LanqorIndicesCalculation::MopacOutput)
        , fit(nullptr, path, 0)
    {
        if (!indices.calculateIndices())
            qFatal("%s", qPrintable(indices.getLastError()));
        fit.setCoordNumber(sphere.size() - 1);
        fit.setSuperDeslocalizability(&indices);
        fit.setOmegaExp(20.5 * omegaUnit, 8.1 * omegaUnit);
        OmegaPrintingOptions options;
        options.printChargeFactors = true;
        options.printOmega = true;
        fit.setOmegaPrintingOptions(options);
    }

    plainOmega::Result plainValues(const QVector<double> &x) const
    {
        QVector<double> g(sphere.size() + 1, 0.0);
        QVector<double> alpha = g;
        for (int atom = 2; atom <= sphere.size(); ++atom) {
            g[atom] = x.at(0) * indices.getAtomicCharge(atom);
            alpha[atom] = (x.at(1) * indices.getSuperDeslocalizability(atom) + x.at(2)) * 1.0e-24;
        }
        return plainOmega::omega(sphere, g, alpha);
    }

    QString path;
    QVector<CoordSPH> sphere;
    LanqorIndicesCalculation indices;
    LanqorParametricQDC fit;
};

QString chlorides()
{
    return mopacFile("eu_cl2_h2o6_pm7_allvec_force.out");
}

QString withoutForces()
{
    return mopacFile("eu_acac3_phen_am1_allvec.out");
}

} // namespace

class TestQdcFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void responseHoldsThreeParameters()
    {
        QdcProblem problem(withoutForces());
        for (const QVector<double> &x :
             {QVector<double>{0.1, 5.0, 4.0}, QVector<double>{0.25, 9.0, 6.5}}) {
            const auto omega = problem.plainValues(x);
            const double expected = std::pow(omega.total[2] / omegaUnit - 20.5, 2) +
                                    std::pow(omega.total[4] / omegaUnit - 8.1, 2) +
                                    std::pow(omega.total[6] / omegaUnit, 2);
            COMPARE_NEAR(evaluate(problem.fit, x), expected, 1.0e-9 * expected);
        }
        const ParametersQDC best = problem.fit.getParametersQDC();
        QCOMPARE(evaluate(problem.fit, {best.Q, best.D, best.C}), problem.fit.getBestResponse());
    }

    void boundsOfFeasibleTrials()
    {
        QdcProblem problem(withoutForces());
        QVERIFY(evaluate(problem.fit, {0.1, 5.0, 4.0}) < infeasible);
        QVERIFY(evaluate(problem.fit, {0.1, 16.0, 15.0}) < infeasible);
        const QVector<double> outside[] = {
            {0.1, -1.0, 4.0},  {0.1, 5.0, -0.1}, {1.0, 0.0, 0.0},
            {0.31, 5.0, 4.0},  // g = Q q of the oxygens, about 6.7 Q, must not pass 2
            {0.1, 9.0, 1.8},   // alpha = D S + C below 0.005
            {0.1, 80.0, 79.0}, // and above 15
        };
        for (const QVector<double> &x : outside)
            QCOMPARE(evaluate(problem.fit, x), infeasible);

        // Chlorine: at least 0.01 here, at most 1.
        QdcProblem chlorine(chlorides());
        const double q = chlorine.indices.getAtomicCharge(2);
        QVERIFY(evaluate(chlorine.fit, {0.012 / q, 5.0, 4.0}) < infeasible);
        QCOMPARE(evaluate(chlorine.fit, {0.009 / q, 5.0, 4.0}), infeasible);
        QCOMPARE(evaluate(chlorine.fit, {1.01 / q, 5.0, 4.0}), infeasible);
    }

    void restrictionIsLiftedByCount()
    {
        QdcProblem problem(withoutForces());
        const QVector<double> restricted = {0.1, 4.0, 4.0}; // D must exceed C
        const QVector<double> allowed = {0.1, 4.001, 4.0};
        QVERIFY(evaluate(problem.fit, allowed) < infeasible);
        QCOMPARE(evaluate(problem.fit, restricted), infeasible);
        while (problem.fit.getPointNumber() < 99999)
            problem.fit.incrementPointsNumber();
        QCOMPARE(evaluate(problem.fit, restricted), infeasible); // point 100000
        QCOMPARE(evaluate(problem.fit, restricted), infeasible); // 100001: lifted behind it
        QVERIFY(evaluate(problem.fit, restricted) < infeasible);

        QdcProblem twice(withoutForces());
        twice.fit.setRestrictionValue(2);
        QCOMPARE(evaluate(twice.fit, {0.1, 7.9, 4.0}), infeasible);
        QVERIFY(evaluate(twice.fit, {0.1, 8.1, 4.0}) < infeasible);
    }

    void restrictionIsLiftedByASmallImprovement()
    {
        // Close to where the misfit falls: which way does Q have to go?
        QdcProblem probe(withoutForces());
        const double before = evaluate(probe.fit, {0.1, 5.0, 4.0});
        const double slope = (evaluate(probe.fit, {0.1 + 1.0e-6, 5.0, 4.0}) - before) / 1.0e-6;
        QVERIFY(std::abs(slope) > 1.0e-3);
        const auto steppedBy = [&](double improvement) {
            return QVector<double>{0.1 - improvement / slope, 5.0, 4.0};
        };
        const QVector<double> restricted = {0.1, 4.0, 4.0};

        for (const double improvement : {3.0e-5, 3.0e-6}) {
            QdcProblem problem(withoutForces());
            evaluate(problem.fit, {0.1, 5.0, 4.0});
            evaluate(problem.fit, steppedBy(improvement));
            QCOMPARE(evaluate(problem.fit, restricted) < infeasible, improvement < 1.0e-5);
        }
    }

    void faults()
    {
        LanqorParametricQDC missing(nullptr, QStringLiteral("nothing.out"), 0);
        QCOMPARE(evaluate(missing, {0.1, 5.0, 4.0}), infeasible);
        missing.endOfParametrization();
        QVERIFY(missing.getLastError().contains(QLatin1String("does not exist")));

        // A given geometry: all that is missed is the force constants.
        const auto geometry = geometryOfLostFile(withoutForces());
        QdcProblem read(withoutForces());
        LanqorParametricQDC given(nullptr, geometry.get(), 0);
        given.setCoordNumber(8);
        given.setOmegaExp(20.5 * omegaUnit, 8.1 * omegaUnit);
        given.setSuperDeslocalizability(&read.indices);
        QCOMPARE(evaluate(given, {0.1, 5.0, 4.0}), evaluate(read.fit, {0.1, 5.0, 4.0}));
        given.endOfParametrization();
        QVERIFY(!given.getReport().isEmpty());

        QdcProblem problem(withoutForces());
        LanqorIndicesCalculation empty(nullptr, problem.path, 0);
        for (LanqorIndicesCalculation *indices : {&empty, &problem.indices}) {
            problem.fit.setSuperDeslocalizability(indices);
            QCOMPARE(problem.fit.checkSetup(), indices == &problem.indices);
        }
        problem.fit.setCoordNumber(66);
        QVERIFY(!problem.fit.checkSetup());
        problem.fit.setCoordNumber(8);

        QCOMPARE(evaluate(problem.fit, {0.1, 5.0}), infeasible);
        QVERIFY(problem.fit.getLastError().contains(QLatin1String("not 2")));
        QCOMPARE(problem.fit.getResults().atoms.at(6).donor.maximumChargeFactor, 3.0); // N 8

        // Nothing feasible, nothing written.
        QCOMPARE(evaluate(problem.fit, {0.1, 5.0, -4.0}), infeasible);
        const QString file = testSupport::scratchFile(QStringLiteral("kept.omg"), "old");
        problem.fit.setFileNameOmg(file);
        problem.fit.endOfParametrization();
        QVERIFY(problem.fit.getReport().isEmpty());
        QVERIFY(problem.fit.getLastError().contains(QLatin1String("bounds")));
        QCOMPARE(testSupport::readAll(file), QByteArray("old"));
    }

    /// The report shows the Omega that was fitted, whether it could be made in QDC mode or not.
    void reportShowsWhatWasFitted_data()
    {
        QTest::addColumn<bool>("hasForces");
        QTest::newRow("eu_cl2_h2o6_pm7_allvec_force.out") << true;
        QTest::newRow("eu_acac3_h2o_rm1_allvec_force.out") << true;
        QTest::newRow("../complete_case/eu_l2_rm1_allvec_force.out") << true;
        QTest::newRow("eu_acac3_phen_am1_allvec.out") << false;
    }
    void reportShowsWhatWasFitted()
    {
        QFETCH(bool, hasForces);
        const QString path = mopacFile(QTest::currentDataTag());
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        QdcProblem problem(path);
        const QVector<double> start = problem.fit.makeStartingVector(1);
        QVERIFY(evaluate(problem.fit, start) < infeasible);
        anneal(problem.fit, start, 4000);
        const QString report = problem.fit.getReport();
        QVERIFY2(!report.isEmpty(), qPrintable(problem.fit.getLastError()));
        QCOMPARE(problem.fit.getLastError().isEmpty(), hasForces);
        QVERIFY(hasForces || problem.fit.getLastError().contains(QLatin1String("force constant")));

        const ParametersQDC best = problem.fit.getParametersQDC();
        const auto omega = problem.plainValues({best.Q, best.D, best.C});
        for (const int lambda : {2, 4, 6}) {
            const double fitted = problem.fit.getBestOmega(lambda) / omegaUnit;
            COMPARE_NEAR(omega.total[lambda] / omegaUnit, fitted, 1.0e-9);
            COMPARE_NEAR(printed(report, QStringLiteral("omega(%1)").arg(lambda)), fitted, 0.00501);
        }
        const QVector<QPair<QString, double>> values = {
            {"Q", best.Q}, {"D", best.D}, {"C", best.C}};
        for (const auto &[name, value] : values)
            COMPARE_NEAR(printed(report, name), value, 5.1e-7);
    }

    /// Beside the smallest response of five runs of scipy's dual_annealing on the plain model
    /// (benchmarks/compare_fits.py).
    void polishedStartsReachTheGlobalMinimum_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<double>("known");
        QTest::newRow("acac3 phen") << "eu_acac3_phen_am1_allvec.out" << 0.114249;
        QTest::newRow("complete case") << "../complete_case/eu_l2_rm1_allvec_force.out" << 55.94403;
        QTest::newRow("acac3") << "eu_acac3_h2o_rm1_allvec_force.out" << 46.16252;
        QTest::newRow("chlorides") << "eu_cl2_h2o6_pm7_allvec_force.out" << 0.244618;
    }
    void polishedStartsReachTheGlobalMinimum()
    {
        QFETCH(QString, file);
        QFETCH(double, known);
        const QString path = mopacFile(qPrintable(file));
        if (path.isEmpty())
            QSKIP("the file is in no corpus");
        LanqorInputData geometry(nullptr, scratchCopy(path));
        QVERIFY(geometry.readMopacOutFile(false) && geometry.createSphericalCoordinate());
        LanqorIndicesCalculation indices(nullptr, &geometry, LanqorIndicesCalculation::MopacOutput);
        QVERIFY(indices.calculateIndices());
        LanqorFitStarts starts(6, [&](int number) {
            auto fit = std::make_unique<LanqorParametricQDCBounded>(nullptr, &geometry, 0);
            fit->setCoordNumber(geometry.getCoordNumber());
            fit->setSuperDeslocalizability(&indices);
            fit->setOmegaExp(20.5 * omegaUnit, 8.1 * omegaUnit);
            const QVector<double> vector = fit->fromQdc(fit->makeStartingVector(number));
            const QVector<FitParameter> parameters = fit->getBoundedParameters();
            return FitStart{std::move(fit), vector, parameters};
        });
        starts.setPolished(true);
        for (int number = 1; number <= starts.getCount(); ++number) {
            starts.getAnnealing(number)->setNStopMax(200);
            starts.run(number);
        }
        const auto &best = *qobject_cast<LanqorParametricQDCBounded *>(starts.getBest());
        QVERIFY2(best.getBestResponse() < known * (1.0 + 1e-5),
                 qPrintable(QString::number(best.getBestResponse(), 'g', 9)));
        QVERIFY(best.getBestResponse() > known * (1.0 - 1e-4));
    }
};

QTEST_GUILESS_MAIN(TestQdcFit)
#include "tst_qdcfit.moc"
