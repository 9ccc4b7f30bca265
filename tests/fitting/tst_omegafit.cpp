#include "fitSupport.h"

#include <LanqorEngine/LanqorFitPolish.h>
#include <LanqorEngine/LanqorIntensitySolutions.h>
#include <LanqorEngine/LanqorParametric.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace fitSupport;

namespace {

constexpr double infeasible = 1.0e20;
constexpr double omegaUnit = 1.0e-20;
constexpr double alphaUnit = 1.0e-24;

QString twoDonors()
{
    return mopacFile("eu_acac3_phen_am1_allvec.out");
}

/// Elements of the coordinated atoms in the order of their first atoms.
QStringList elementsOf(const QVector<CoordSPH> &sphere)
{
    QStringList elements;
    for (const CoordSPH &atom : sphere.mid(1))
        elements.append(atom.label);
    elements.removeDuplicates();
    return elements;
}

/// A fit of @p coordNumber atoms, one group for each element.
void setUp(LanqorParametric &fit, int coordNumber, double omega2, double omega4)
{
    fit.setCoordNumber(coordNumber);
    fit.setGroupsAndAtoms(fit.makeElementGroups());
    fit.setOmegaExp(omega2 * omegaUnit, omega4 * omegaUnit);
    OmegaPrintingOptions options;
    options.printChargeFactors = true;
    options.printOmega = true;
    fit.setOmegaPrintingOptions(options);
}

std::unique_ptr<LanqorParametric> makeFit(const QString &file, double omega2, double omega4)
{
    auto fit = std::make_unique<LanqorParametric>(nullptr, file, 0);
    setUp(*fit, sphereOf(file).size() - 1, omega2, omega4);
    return fit;
}

/// Omega from g, then alpha, of the elements.
plainOmega::Result plainValues(const QVector<CoordSPH> &sphere, const QVector<double> &x)
{
    QVector<double> g(sphere.size() + 1, 0.0);
    QVector<double> alpha = g;
    for (int atom = 2; atom <= sphere.size(); ++atom) {
        const int index = elementsOf(sphere).indexOf(sphere.at(atom - 1).label);
        g[atom] = x.at(index);
        alpha[atom] = x.at(x.size() / 2 + index) * alphaUnit;
    }
    return plainOmega::omega(sphere, g, alpha);
}

double misfit(const plainOmega::Result &omega, double omega2, double omega4, double weight2 = 1.0,
              double weight4 = 1.0)
{
    return weight2 * std::pow(omega.total[2] / omegaUnit - omega2, 2) +
           weight4 * std::pow(omega.total[4] / omegaUnit - omega4, 2);
}

} // namespace

class TestOmegaFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Response against the sums of the model as they are written, with the weights of a file.
    void responseIsTheWeightedMisfit_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("weight2");
        QTest::addColumn<double>("weight4");
        QTest::newRow("no file") << QByteArray() << 1.0 << 1.0;
        QTest::newRow("two weights") << QByteArray("2.5\n0.25\n9\n") << 2.5 << 0.25;
        QTest::newRow("zero and words count as 1") << QByteArray("0\nabc\n") << 1.0 << 1.0;
        QTest::newRow("one line") << QByteArray("  3 \r\n") << 3.0 << 1.0;
    }
    void responseIsTheWeightedMisfit()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, weight2);
        QFETCH(double, weight4);
        const QString before = QDir::currentPath();
        const QTemporaryDir directory;
        QVERIFY(QDir::setCurrent(directory.path()));
        QFile file(QStringLiteral("pesos.txt"));
        if (!text.isEmpty())
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        auto fit = makeFit(twoDonors(), 12.0, 7.0);
        QVERIFY(QDir::setCurrent(before));

        double best = 1.0e24;
        for (const QVector<double> &x :
             {QVector<double>{1.0, 1.0, 1.0, 1.0}, QVector<double>{0.3, 2.1, 4.0, 0.5},
              QVector<double>{1.7, 0.2, 0.1, 6.0}}) {
            const double response = evaluate(*fit, x);
            const auto omega = plainValues(sphereOf(twoDonors()), x);
            const double expected = misfit(omega, 12.0, 7.0, weight2, weight4);
            COMPARE_NEAR(response, expected, 1.0e-9 * (1.0 + expected));
            best = std::min(best, response);
            QCOMPARE(fit->getBestResponse(), best);
        }
    }

    /// The bounds themselves pass; the next number beyond does not. An element in no class takes
    /// the bounds of the atom before it.
    void boundsOfFeasibleTrials_data()
    {
        QTest::addColumn<QStringList>("elements"); // of atoms 2 and 3
        QTest::addColumn<int>("index");            // g of atoms 2 and 3, alpha of atoms 2 and 3
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        const auto row = [](const char *elements, int index, double low, double high) {
            QTest::addRow("%s, parameter %d", elements, index)
                << QString::fromLatin1(elements).split(QLatin1Char(' ')) << index << low << high;
        };
        for (const char *elements : {"O N", "S N"})
            row(elements, 0, 0.01, 2.0);
        for (const char *elements : {"F N", "Cl N", "Br N", "I N"})
            row(elements, 0, 0.001, 1.0);
        for (const char *elements : {"Cl N", "O P", "N Se"})
            row(elements, 1, 0.01, 3.0);
        row("O Se", 1, 0.01, 2.0);
        row("Se O", 0, 0.01, 3.0);
        row("O Se", 2, 0.005, 6.5);
        row("Cl N", 3, 0.005, 6.5);
    }
    void boundsOfFeasibleTrials()
    {
        QFETCH(QStringList, elements);
        QFETCH(int, index);
        QFETCH(double, low);
        QFETCH(double, high);
        LanqorParametric fit(
            nullptr,
            asMopacOutput(QStringLiteral("pair.out"), {{QStringLiteral("Eu"), 0.0, 0.0, 0.0},
                                                       {elements.at(0), 2.4, 0.0, 0.3},
                                                       {elements.at(1), 0.2, 2.5, 0.0}}),
            0);
        fit.setCoordNumber(2);
        fit.setGroupsAndAtoms({{1, {elements.at(0) + QStringLiteral(" 2")}},
                               {2, {elements.at(1) + QStringLiteral(" 3")}}});
        const auto at = [&](double value) {
            QVector<double> x(4, 1.0);
            x[index] = value;
            return evaluate(fit, x);
        };
        const double up = std::numeric_limits<double>::infinity();
        QVERIFY2(at(low) < infeasible, qPrintable(fit.getLastError()));
        QVERIFY(at(high) < infeasible);
        QCOMPARE(at(std::nextafter(high, up)), infeasible);
        QCOMPARE(at(std::nextafter(low, -up)), infeasible);
        QVERIFY(fit.getBestResponse() < infeasible);
    }

    void wrongSetupsAreRefused()
    {
        struct Case
        {
            const char *atoms; ///< of the second group
            int coordNumber;
            const char *hint;
        };
        const QString oxygens = QStringLiteral("O 2,O 3,O 4,O 5,O 6,O 7");
        const Case cases[] = {{"N 8", 8, "N 9"},
                              {"N 8,N 9,O 3", 8, "O 3"}, // twice
                              {"O 8,N 9", 8, "O 8"},
                              {"N 8,N 9,C 10", 8, "C 10"},
                              {"Eu 1,N 8,N 9", 8, "Eu 1"},
                              {"N", 8, "\"N\""},
                              {"N 8,N 9", 0, "0"},
                              {"N 8,N 9", 65, "65"},
                              {"N 8,N 9", std::numeric_limits<int>::max() - 1, ""}};
        for (const Case &wrong : cases) {
            auto fit = makeFit(twoDonors(), 12.0, 7.0);
            fit->setGroupsAndAtoms({{1, oxygens.split(QLatin1Char(','))},
                                    {2, QString::fromLatin1(wrong.atoms).split(QLatin1Char(','))}});
            fit->setCoordNumber(wrong.coordNumber);
            QVERIFY2(!fit->checkSetup(), wrong.atoms);
            QVERIFY2(fit->getLastError().contains(QLatin1String(wrong.hint)),
                     qPrintable(fit->getLastError()));
            QVERIFY(fit->makeStartingVector(1).isEmpty());
            QCOMPARE(evaluate(*fit, {1.0, 1.0, 1.0, 1.0}), infeasible);
            fit->endOfParametrization();
            QVERIFY(fit->getReport().isEmpty());
            QVERIFY2(fit->getLastError().contains(QLatin1String(wrong.hint)),
                     qPrintable(fit->getLastError()));
        }
    }

    void furtherFaults()
    {
        // Blanks between symbol and number do not matter; a wrong number of parameters does.
        auto fit = makeFit(mopacFile("eu_cl6_pm7_1scf_disp.out"), 5.0, 5.0);
        fit->setGroupsAndAtoms(
            {{7, QStringLiteral(" Cl   2,Cl 3,Cl 4,Cl 5,Cl 6,Cl  7 ").split(QLatin1Char(','))}});
        QVERIFY2(fit->checkSetup(), qPrintable(fit->getLastError()));
        QCOMPARE(evaluate(*fit, {0.5, 1.0, 1.0}), infeasible);
        QVERIFY(fit->getLastError().contains(QLatin1Char('3')));

        // No trial within the bounds: nothing is written.
        const QString untouched = testSupport::scratchFile(QStringLiteral("kept.omg"), "old");
        fit->setFileNameOmg(untouched);
        QCOMPARE(evaluate(*fit, {50.0, 1.0}), infeasible);
        fit->endOfParametrization();
        QVERIFY(fit->getReport().isEmpty());
        QVERIFY(fit->getLastError().contains(QLatin1String("bounds")));
        QCOMPARE(testSupport::readAll(untouched), QByteArray("old"));
        QVERIFY(evaluate(*fit, {0.5, 1.0}) < infeasible);

        // A report that cannot be written is told once, and known as the last error by then.
        QStringList told;
        QObject::connect(fit.get(), &LanqorParametric::newObjCalculationMessage,
                         [&](const QString &message) {
                             if (message == fit->getLastError())
                                 told.append(message);
                         });
        fit->setFileNameOmg(QStringLiteral("/nowhere/x.omg"));
        fit->endOfParametrization();
        QCOMPARE(told.size(), 1);
        QVERIFY(told.first().contains(QLatin1String("/nowhere/x.omg")));

        // Geometries that cannot be calculated.
        for (const QString &file :
             {mopacFile("gd_no3_3_h2o3_rm1_opt.out"), QStringLiteral("nothing.out")}) {
            LanqorParametric bad(nullptr, file, 0);
            bad.setCoordNumber(1);
            bad.setGroupsAndAtoms({{1, {QStringLiteral("O 2")}}});
            QCOMPARE(evaluate(bad, {1.0, 1.0}), infeasible);
            QVERIFY(!bad.checkSetup());
            QVERIFY(!bad.getLastError().isEmpty());
            bad.setFileNameMopacOutputFile(twoDonors()); // another output makes it good
            setUp(bad, 8, 12.0, 7.0);
            QVERIFY2(bad.checkSetup(), qPrintable(bad.getLastError()));
        }
    }

    /// A given geometry serves the whole fit; no file is opened again.
    void givenGeometry()
    {
        const auto geometry = geometryOfLostFile(twoDonors());
        LanqorParametric given(nullptr, geometry.get(), 0);
        setUp(given, 8, 12.0, 7.0);
        const auto read = makeFit(twoDonors(), 12.0, 7.0);
        for (LanqorParametric *fit : {&given, read.get()}) {
            anneal(*fit, fit->makeStartingVector(1), 20);
            QVERIFY2(!fit->getReport().isEmpty(), qPrintable(fit->getLastError()));
        }
        QCOMPARE(given.getReport().section(QLatin1Char('\n'), 20),
                 read->getReport().section(QLatin1Char('\n'), 20));
        const OmegaFitResults results = given.getResults();
        QCOMPARE(results.points, qint64(300));
        QCOMPARE(results.response, read->getBestResponse());
        QCOMPARE(results.omega.at(1).fitted, read->getBestOmega(4));
        const FittedDonor &nitrogen = results.groups.at(1).donor;
        QCOMPARE(nitrogen.chargeFactor, read->getBestChargeFactor(8));
        QCOMPARE(nitrogen.maximumChargeFactor, 3.0);
        QCOMPARE(nitrogen.alpha, read->getBestAlpha(8));

        LanqorParametric none(nullptr, static_cast<LanqorInputData *>(nullptr), 0);
        none.setCoordNumber(8);
        QVERIFY(!none.getLastError().isEmpty() && !none.checkSetup());
    }

    /// Targets made from g and alpha put in by hand are reached to the printed decimals.
    void targetsAreReached_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file :
             {"eu_acac3_phen_am1_allvec.out", "eu_cl2_h2o6_pm7_allvec_force.out",
              "eu_cl6_pm7_1scf_disp.out", "eu_f_acac3_rm1_opt.out", "eu_dtc3_bpy_am1_opt.out",
              "complete_case/eu_l2_rm1_allvec_force.out"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }
    void targetsAreReached()
    {
        const QString path = mopacFile(QTest::currentDataTag());
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        const QVector<CoordSPH> sphere = sphereOf(path);
        const int count = elementsOf(sphere).size();
        QVector<double> byHand(2 * count);
        for (int i = 0; i < count; ++i) {
            byHand[i] = 0.62 + 0.15 * i;
            byHand[count + i] = 3.4 - 0.9 * i;
        }
        const auto wanted = plainValues(sphere, byHand);

        auto fit = makeFit(path, wanted.total[2] / omegaUnit, wanted.total[4] / omegaUnit);
        QVERIFY2(fit->checkSetup(), qPrintable(fit->getLastError()));
        const QString omg = testSupport::scratchFile(QStringLiteral("fit.omg"), QByteArray());
        fit->setFileNameOmg(omg);
        QCOMPARE(anneal(*fit, fit->makeStartingVector(1)), 225000);
        const QString report = fit->getReport();
        QCOMPARE(report.toUtf8(), testSupport::readAll(omg));
        for (const int lambda : {2, 4, 6}) {
            const double fitted = fit->getBestOmega(lambda) / omegaUnit;
            COMPARE_NEAR(printed(report, QStringLiteral("omega(%1)").arg(lambda)), fitted, 0.00501);
            if (lambda < 6)
                COMPARE_NEAR(fitted, wanted.total[lambda] / omegaUnit, 0.005);
        }
    }

    /// Every set of the sample gives the targets by a calculation of its own; the sample is wide,
    /// keeps what is fixed, and is always the same.
    void solutionsReachTheTargets()
    {
        const QString file = mopacFile("eu_acac3_phen_am1_allvec.out");
        LanqorInputData geometry(nullptr, file);
        QVERIFY(geometry.readMopacOutFile(false) && geometry.createSphericalCoordinate());
        const QVector<CoordSPH> sphere = sphereOf(file);
        const int N = sphere.size() - 1;
        LanqorParametric fit(nullptr, &geometry, 0);
        fit.setCoordNumber(N);
        fit.setGroupsAndAtoms(fit.makeElementGroups());
        fit.setOmegaExp(20.5e-20, 8.1e-20);
        QVector<FitParameter> parameters = fit.getParameters();
        QCOMPARE(parameters.size(), 4);
        QCOMPARE(parameters.at(3).name, QStringLiteral("alpha:N"));
        for (const bool isHeld : {false, true}) {
            parameters[3].isFixed = isHeld;
            parameters[3].fixedValue = 3.5;
            const FitPolishResults known =
                LanqorFitPolish(&fit, parameters).run({1.0, 1.0, 4.5, 3.5});
            QVERIFY(known.response < 1e-12);
            LanqorIntensitySolutions problem(
                &geometry, N, parameters,
                [&](const QVector<double> &x, QVector<double> &g, QVector<double> &alpha) {
                    return fit.makeDonors(x, g, alpha);
                });
            problem.setTargets(20.5e-20, 8.1e-20, 1.0, 1.0, 0.0);
            const IntensitySolutions solutions = problem.sample({known.vector}, 250);
            QVERIFY(solutions.sets.size() >= 250);
            QCOMPARE(solutions.sets, problem.sample({known.vector}, 250).sets);
            for (const QVector<double> &set : solutions.sets) {
                QVector<double> g;
                QVector<double> alpha;
                QVERIFY(fit.makeDonors(set.mid(0, 4), g, alpha));
                const plainOmega::Result plain = plainOmega::omega(sphere, g, alpha);
                COMPARE_NEAR(plain.total[2] * 1e20, 20.5, 0.0072);
                COMPARE_NEAR(plain.total[4] * 1e20, 8.1, 0.0072);
                COMPARE_NEAR(plain.total[6] * 1e20, set.at(6), 1e-6);
                QVERIFY(!isHeld || set.at(3) == 3.5);
            }
            QVERIFY(solutions.quantities.at(4).isDetermined); // Omega(2)
            // As far as the tolerance of 5e-5 of its squared difference goes, to both sides.
            COMPARE_NEAR(solutions.quantities.at(4).maximum - solutions.quantities.at(4).minimum,
                         2.0 * std::sqrt(5.0e-5), 2.0e-5);
            QVERIFY(!solutions.quantities.at(1).isDetermined); // g of N
            QVERIFY(solutions.quantities.at(1).maximum - solutions.quantities.at(1).minimum > 1.0);
            QVERIFY(solutions.central >= 0 && solutions.central < solutions.sets.size());
        }
    }
};

QTEST_GUILESS_MAIN(TestOmegaFit)
#include "tst_omegafit.moc"
