#include "fitSupport.h"

#include <LanqorEngine/LanqorParametric.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using namespace fitSupport;

namespace {

using Groups = QMap<int, QStringList>;

constexpr double infeasible = 1.0e20;
constexpr double omegaUnit = 1.0e-20;
constexpr double alphaUnit = 1.0e-24;

QString twoDonors()
{
    return mopacFile(QStringLiteral("eu_acac3_phen_am1_allvec.out"));
}

/// One group for each element, in the order of their first atoms.
Groups byElement(const QVector<CoordSPH> &sphere)
{
    Groups groups;
    QStringList elements;
    for (int atom = 2; atom <= sphere.size(); ++atom) {
        const QString label = sphere.at(atom - 1).label;
        if (!elements.contains(label))
            elements.append(label);
        groups[elements.indexOf(label)].append(QStringLiteral("%1 %2").arg(label).arg(atom));
    }
    return groups;
}

/// A fit of all coordinated atoms of a file, one group per element.
std::unique_ptr<LanqorParametric> makeFit(const QString &file, double omega2, double omega4)
{
    const QVector<CoordSPH> sphere = sphereOf(file);
    auto fit = std::make_unique<LanqorParametric>(nullptr, file, 0);
    fit->setCoordNumber(sphere.size() - 1);
    fit->setGroupsAndAtoms(byElement(sphere));
    fit->setOmegaExp(omega2 * omegaUnit, omega4 * omegaUnit);
    OmegaPrintingOptions options;
    options.printChargeFactors = true;
    options.printOmega = true;
    fit->setOmegaPrintingOptions(options);
    return fit;
}

/// g and alpha of every atom from those of its group.
plainOmega::Result plainValues(const QVector<CoordSPH> &sphere, const QVector<double> &x)
{
    const Groups groups = byElement(sphere);
    QVector<double> g(sphere.size() + 1, 0.0);
    QVector<double> alpha = g;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        for (const QString &atom : group.value()) {
            const int number = atom.section(QLatin1Char(' '), 1).toInt();
            g[number] = x.at(group.key());
            alpha[number] = x.at(groups.size() + group.key()) * alphaUnit;
        }
    }
    return plainOmega::omega(sphere, g, alpha);
}

double misfit(const plainOmega::Result &omega, double omega2, double omega4)
{
    return std::pow(omega.total[2] / omegaUnit - omega2, 2) +
           std::pow(omega.total[4] / omegaUnit - omega4, 2);
}

/// The bounds of an element, written down anew.
std::pair<double, double> boundsOf(const QString &element)
{
    if (element == QLatin1String("O") || element == QLatin1String("S"))
        return {0.01, 2.0};
    if (element == QLatin1String("N") || element == QLatin1String("P"))
        return {0.01, 3.0};
    return {0.001, 1.0};
}

/// Smallest misfit of one group by a fine grid that is narrowed about its best point. With one g
/// and one alpha, every Omega(lambda) is a g^2 + b g alpha + c alpha^2.
double bestOnGrid(const QVector<CoordSPH> &sphere, double omega2, double omega4)
{
    const auto first = plainValues(sphere, {1.0, 0.0}).total;
    const auto second = plainValues(sphere, {0.0, 1.0}).total;
    const auto both = plainValues(sphere, {1.0, 1.0}).total;
    const auto value = [&](double g, double alpha) {
        plainOmega::Result omega;
        for (const std::size_t lambda : {2U, 4U})
            omega.total[lambda] = first[lambda] * g * g + second[lambda] * alpha * alpha +
                                  (both[lambda] - first[lambda] - second[lambda]) * g * alpha;
        return misfit(omega, omega2, omega4);
    };
    const auto bounds = boundsOf(sphere.at(1).label);
    double low[2] = {bounds.first, 0.005};
    double high[2] = {bounds.second, 6.5};
    double best = 1e300;
    for (int round = 0; round < 10; ++round) {
        constexpr int cells = 500;
        constexpr int margin = 50;
        const double step[2] = {(high[0] - low[0]) / cells, (high[1] - low[1]) / cells};
        double at[2] = {low[0], low[1]};
        for (int i = 0; i <= cells; ++i) {
            for (int k = 0; k <= cells; ++k) {
                const double g = low[0] + i * step[0];
                const double alpha = low[1] + k * step[1];
                if (value(g, alpha) < best) {
                    best = value(g, alpha);
                    at[0] = g;
                    at[1] = alpha;
                }
            }
        }
        for (int i = 0; i < 2; ++i) {
            low[i] = std::max(low[i], at[i] - margin * step[i]);
            high[i] = std::min(high[i], at[i] + margin * step[i]);
        }
    }
    return best;
}

} // namespace

class TestOmegaFit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Response against the sums of the model as they are written, and against the plain rule of
    /// the bounds.
    void responseIsTheWeightedMisfit()
    {
        const QVector<CoordSPH> sphere = sphereOf(twoDonors());
        auto fit = makeFit(twoDonors(), 12.0, 7.0);
        double best = 1.0e24;
        for (const QVector<double> &x :
             {QVector<double>{1.0, 1.0, 1.0, 1.0}, QVector<double>{0.3, 2.1, 4.0, 0.5},
              QVector<double>{1.7, 0.2, 0.1, 6.0}}) {
            const double response = evaluate(*fit, x);
            const double expected = misfit(plainValues(sphere, x), 12.0, 7.0);
            COMPARE_NEAR(response, expected, 1.0e-9 * (1.0 + expected));
            best = std::min(best, response);
            QCOMPARE(fit->getBestResponse(), best);
        }
    }

    /// The bounds themselves pass; the next number beyond does not.
    void boundsOfFeasibleTrials()
    {
        const double up = std::numeric_limits<double>::infinity();
        const QVector<double> inside = {1.0, 1.0, 1.0, 1.0}; // g of O and N, alpha of O and N
        const struct
        {
            int index;
            double low;
            double high;
        } limits[] = {{0, 0.01, 2.0}, {1, 0.01, 3.0}, {2, 0.005, 6.5}, {3, 0.005, 6.5}};
        for (const auto &limit : limits) {
            auto fit = makeFit(twoDonors(), 12.0, 7.0);
            const auto at = [&](double value) {
                QVector<double> x = inside;
                x[limit.index] = value;
                return evaluate(*fit, x);
            };
            QVERIFY(at(limit.low) < infeasible);
            QVERIFY(at(limit.high) < infeasible);
            QCOMPARE(at(std::nextafter(limit.high, up)), infeasible);
            QCOMPARE(at(std::nextafter(limit.low, -up)), infeasible);
            QCOMPARE(fit->getResponseFunction(), infeasible);
            QVERIFY(fit->getBestResponse() < infeasible);
        }
        // Chlorine has bounds of its own.
        auto chlorine = makeFit(mopacFile(QStringLiteral("eu_cl2_h2o6_am1_int.out")), 5.0, 5.0);
        QVERIFY(evaluate(*chlorine, {0.001, 1.0, 1.0, 1.0}) < infeasible);
        QVERIFY(evaluate(*chlorine, {1.0, 1.0, 1.0, 1.0}) < infeasible);
        QCOMPARE(evaluate(*chlorine, {1.01, 1.0, 1.0, 1.0}), infeasible);
        QCOMPARE(evaluate(*chlorine, {0.0009, 1.0, 1.0, 1.0}), infeasible);
    }

    /// An element without bounds takes those of the atom before it.
    void elementsWithoutBounds()
    {
        const auto complexOf = [](const char *first, const char *second) {
            return asMopacOutput(QStringLiteral("odd.out"),
                                 {{QStringLiteral("Eu"), 0.0, 0.0, 0.0},
                                  {QLatin1String(first), 2.4, 0.0, 0.3},
                                  {QLatin1String(second), 0.2, 2.5, 0.0}});
        };
        const auto fitOf = [&](const char *first, const char *second) {
            auto fit = std::make_unique<LanqorParametric>(nullptr, complexOf(first, second), 0);
            fit->setCoordNumber(2);
            fit->setGroupsAndAtoms({{1, {QLatin1String(first) + QStringLiteral(" 2")}},
                                    {2, {QLatin1String(second) + QStringLiteral(" 3")}}});
            return fit;
        };
        auto afterOxygen = fitOf("O", "Se");
        QVERIFY(evaluate(*afterOxygen, {1.0, 2.0, 1.0, 1.0}) < infeasible);
        QCOMPARE(evaluate(*afterOxygen, {1.0, 2.5, 1.0, 1.0}), infeasible);
        auto afterNitrogen = fitOf("N", "Se");
        QVERIFY(evaluate(*afterNitrogen, {1.0, 2.5, 1.0, 1.0}) < infeasible);
        auto first = fitOf("Se", "O");
        QVERIFY(evaluate(*first, {3.0, 1.0, 1.0, 1.0}) < infeasible);
        QCOMPARE(evaluate(*first, {3.01, 1.0, 1.0, 1.0}), infeasible);
        QCOMPARE(evaluate(*first, {0.009, 1.0, 1.0, 1.0}), infeasible);
    }

    void weightFile_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("weight2");
        QTest::addColumn<double>("weight4");
        QTest::newRow("two weights") << QByteArray("2.5\n0.25\n9\n") << 2.5 << 0.25;
        QTest::newRow("zero and words count as 1") << QByteArray("0\nabc\n") << 1.0 << 1.0;
        QTest::newRow("one line") << QByteArray("  3 \r\n") << 3.0 << 1.0;
        QTest::newRow("empty") << QByteArray() << 1.0 << 1.0;
    }
    void weightFile()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, weight2);
        QFETCH(double, weight4);
        const QString before = QDir::currentPath();
        const QTemporaryDir directory;
        QFile file(directory.filePath(QStringLiteral("pesos.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        QVERIFY(QDir::setCurrent(directory.path()));
        auto fit = makeFit(twoDonors(), 12.0, 7.0);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(fit->getWeight(2), weight2);
        QCOMPARE(fit->getWeight(4), weight4);
        const QVector<double> x = {1.0, 1.0, 1.0, 1.0};
        const auto omega = plainValues(sphereOf(twoDonors()), x);
        const double expected = weight2 * std::pow(omega.total[2] / omegaUnit - 12.0, 2) +
                                weight4 * std::pow(omega.total[4] / omegaUnit - 7.0, 2);
        COMPARE_NEAR(evaluate(*fit, x), expected, 1.0e-9 * expected);
    }

    void wrongSetupsAreRefused_data()
    {
        QTest::addColumn<Groups>("groups");
        QTest::addColumn<int>("coordNumber");
        QTest::addColumn<QString>("hint");
        const QStringList oxygens = {QStringLiteral("O 2"), QStringLiteral("O 3"),
                                     QStringLiteral("O 4"), QStringLiteral("O 5"),
                                     QStringLiteral("O 6"), QStringLiteral("O 7")};
        const QStringList nitrogens = {QStringLiteral("N 8"), QStringLiteral("N 9")};
        QTest::newRow("an atom in no group") << Groups{{1, oxygens}} << 8 << "N 8";
        QTest::newRow("an atom named twice")
            << Groups{{1, oxygens}, {2, nitrogens + QStringList(QStringLiteral("O 3"))}} << 8
            << "O 3";
        QTest::newRow("another symbol")
            << Groups{{1, oxygens}, {2, {QStringLiteral("O 8"), QStringLiteral("N 9")}}} << 8
            << "O 8";
        QTest::newRow("outside the sphere")
            << Groups{{1, oxygens}, {2, nitrogens + QStringList(QStringLiteral("C 10"))}} << 8
            << "C 10";
        QTest::newRow("the ion") << Groups{{1, oxygens + QStringList(QStringLiteral("Eu 1"))},
                                           {2, nitrogens}}
                                 << 8 << "Eu 1";
        QTest::newRow("no number") << Groups{{1, {QStringLiteral("O")}}} << 8 << "\"O\"";
        QTest::newRow("no groups") << Groups() << 8 << "O 2";
        QTest::newRow("no coordination number") << Groups{{1, oxygens}, {2, nitrogens}} << 0 << "0";
        QTest::newRow("more than there are") << Groups{{1, oxygens}} << 65 << "65";
        QTest::newRow("huge") << Groups{{1, oxygens}} << std::numeric_limits<int>::max() - 1 << "";
    }
    void wrongSetupsAreRefused()
    {
        QFETCH(Groups, groups);
        QFETCH(int, coordNumber);
        QFETCH(QString, hint);
        auto fit = makeFit(twoDonors(), 12.0, 7.0);
        fit->setGroupsAndAtoms(groups);
        fit->setCoordNumber(coordNumber);
        QVERIFY(!fit->checkSetup());
        QVERIFY2(fit->getLastError().contains(hint), qPrintable(fit->getLastError()));
        QVERIFY(fit->makeStartingVector(1).isEmpty());
        QCOMPARE(evaluate(*fit, QVector<double>(2 * groups.size(), 1.0)), infeasible);
        fit->setFileNameOmg(testSupport::scratchFile(QStringLiteral("none.omg"), "old"));
        fit->endOfParametrization();
        QVERIFY(fit->getReport().isEmpty());
        QVERIFY2(fit->getLastError().contains(hint), qPrintable(fit->getLastError()));
    }

    void furtherFaults()
    {
        // Blanks between symbol and number do not matter; a wrong number of parameters does.
        auto fit = makeFit(mopacFile(QStringLiteral("eu_cl6_pm7_1scf_disp.out")), 5.0, 5.0);
        fit->setGroupsAndAtoms(
            {{7,
              {QStringLiteral(" Cl   2"), QStringLiteral("Cl 3"), QStringLiteral("Cl 4"),
               QStringLiteral("Cl 5"), QStringLiteral("Cl 6"), QStringLiteral("Cl  7 ")}}});
        QVERIFY2(fit->checkSetup(), qPrintable(fit->getLastError()));
        QVERIFY(evaluate(*fit, {0.5, 1.0}) < infeasible);
        QCOMPARE(evaluate(*fit, {0.5, 1.0, 1.0}), infeasible);
        QVERIFY(fit->getLastError().contains(QLatin1Char('3')));
        QVERIFY(evaluate(*fit, {0.5, 1.0}) < infeasible);

        // No trial within the bounds: nothing is written.
        const QString untouched = testSupport::scratchFile(QStringLiteral("kept.omg"), "old");
        auto outside = makeFit(twoDonors(), 12.0, 7.0);
        outside->setFileNameOmg(untouched);
        QCOMPARE(evaluate(*outside, {50.0, 1.0, 1.0, 1.0}), infeasible);
        outside->endOfParametrization();
        QVERIFY(outside->getReport().isEmpty());
        QVERIFY(outside->getLastError().contains(QLatin1String("bounds")));
        QCOMPARE(testSupport::readAll(untouched), QByteArray("old"));

        // Geometries that cannot be calculated.
        for (const QString &file : {mopacFile(QStringLiteral("gd_no3_3_h2o3_rm1_opt.out")),
                                    QStringLiteral("nothing.out")}) {
            LanqorParametric bad(nullptr, file, 0);
            QVERIFY(!bad.getLastError().isEmpty());
            bad.setCoordNumber(1);
            bad.setGroupsAndAtoms({{1, {QStringLiteral("O 2")}}});
            QCOMPARE(evaluate(bad, {1.0, 1.0}), infeasible);
            QVERIFY(!bad.checkSetup());
            QVERIFY(!bad.getLastError().isEmpty());
        }
    }

    /// Targets made from g and alpha put in by hand are reached to the printed decimals, within
    /// the bounds, and the report's values give its Omega again.
    void targetsAreReached_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file :
             {"eu_acac3_phen_am1_allvec.out", "eu_cl2_h2o6_pm7_allvec_force.out",
              "eu_cl2_h2o6_am1_int.out", "eu_cl6_pm7_1scf_disp.out", "eu_f_acac3_rm1_opt.out",
              "eu_no3_3_h2o3_am1_periodic_tv.out", "eu_acac3_h2o_rm1_allvec_force.out",
              "eu_dipic3_pm6_opt.out", "eu_dtc3_bpy_am1_opt.out", "eu_hfac3_bpy_am1_opt.out",
              "eu_ncs6_rm1_vectors.out", "complete_case/eu_l2_rm1_allvec_force.out"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }
    void targetsAreReached()
    {
        QFETCH(QString, file);
        const QString path = mopacFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        const QVector<CoordSPH> sphere = sphereOf(path);
        const Groups groups = byElement(sphere);
        QVector<double> byHand;
        for (int i = 0; i < groups.size(); ++i)
            byHand.append(0.62 + 0.15 * i);
        for (int i = 0; i < groups.size(); ++i)
            byHand.append(3.4 - 0.9 * i);
        const auto wanted = plainValues(sphere, byHand);

        QString reports[2];
        for (QString &report : reports) {
            auto fit = makeFit(path, wanted.total[2] / omegaUnit, wanted.total[4] / omegaUnit);
            QVERIFY2(fit->checkSetup(), qPrintable(fit->getLastError()));
            const QString omg = testSupport::scratchFile(QStringLiteral("fit.omg"), QByteArray());
            fit->setFileNameOmg(omg);
            QCOMPARE(anneal(*fit, fit->makeStartingVector(1)), 225000);
            for (const int lambda : {2, 4})
                COMPARE_NEAR(fit->getBestOmega(lambda) / omegaUnit,
                             wanted.total[std::size_t(lambda)] / omegaUnit, 0.005);
            report = fit->getReport();
            QCOMPARE(report.toUtf8(), testSupport::readAll(omg));
        }
        QCOMPARE(reports[0], reports[1]);

        QVector<double> g(sphere.size() + 1, 0.0);
        QVector<double> alpha = g;
        for (int atom = 2; atom <= sphere.size(); ++atom) {
            g[atom] = printed(reports[0], QStringLiteral("g(%1)").arg(atom));
            const double cubicAngstrom = printed(reports[0], QStringLiteral("alpha(%1)").arg(atom));
            alpha[atom] = cubicAngstrom * alphaUnit;
            const auto bounds = boundsOf(sphere.at(atom - 1).label);
            QVERIFY(g.at(atom) >= bounds.first && g.at(atom) <= bounds.second);
            QVERIFY(cubicAngstrom >= 0.005 && cubicAngstrom <= 6.5);
        }
        const auto again = plainOmega::omega(sphere, g, alpha);
        for (const int lambda : {2, 4, 6}) {
            const double shown = printed(reports[0], QStringLiteral("omega(%1)").arg(lambda));
            const double recomputed = again.total[std::size_t(lambda)] / omegaUnit;
            // Two decimals are printed, and g and alpha have four.
            COMPARE_NEAR(recomputed, shown, 0.005 + 1.0e-3 * (1.0 + shown));
        }
        QVERIFY(reports[0].contains(QLatin1String("Required Citations")));
    }

    /// Nine waters with one group of donors cannot give most pairs of values: the fit comes within
    /// 5 % of the smallest misfit that a search over a grid finds.
    void outOfReach_data()
    {
        QTest::addColumn<double>("omega2");
        QTest::addColumn<double>("omega4");
        QTest::newRow("usual values") << 20.5 << 8.1;
        QTest::newRow("small values") << 1.5 << 5.5;
    }
    void outOfReach()
    {
        QFETCH(double, omega2);
        QFETCH(double, omega4);
        LanqorInputData waters(nullptr, testSupport::dataFile(QStringLiteral(
                                            "structures/eu_h2o9_internal_openmopac.mop")));
        QVERIFY(waters.readMopFile());
        const QVector<CoordSPH> sphere = sphereOf(waters);
        QCOMPARE(sphere.size(), 7); // three of the waters are outside the bonding distance
        auto fit =
            makeFit(asMopacOutput(QStringLiteral("waters.out"), waters.getCoord()), omega2, omega4);
        anneal(*fit, fit->makeStartingVector(1));
        const double smallest = bestOnGrid(sphere, omega2, omega4);
        QVERIFY2(fit->getBestResponse() <= 1.05 * smallest,
                 qPrintable(
                     QStringLiteral("fit %1, grid %2").arg(fit->getBestResponse()).arg(smallest)));
        QVERIFY(fit->getBestResponse() >= smallest * (1.0 - 1.0e-3));
    }
};

QTEST_GUILESS_MAIN(TestOmegaFit)
#include "tst_omegafit.moc"
