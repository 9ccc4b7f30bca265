#include "TestSupport.h"

#include <LanqorEngine/LanqorNormalizePoints.h>

#include <QtTest>

#include <algorithm>
#include <cmath>

using testSupport::scratchFile;

namespace {

constexpr int orca = 1;

/// The spectrum table of an ORCA output from pairs of energy (cm^-1) and strength.
QString orcaOutput(const QVector<QPair<double, double>> &transitions)
{
    QByteArray text =
        "-----------------------------------------------------------------------------\n"
        "         ABSORPTION SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS\n"
        "-----------------------------------------------------------------------------\n"
        "State   Energy    Wavelength  fosc         T2        TX        TY        TZ  \n"
        "        (cm-1)      (nm)                 (au**2)    (au)      (au)      (au)\n"
        "-----------------------------------------------------------------------------\n";
    int number = 0;
    for (const auto &transition : transitions)
        text += QStringLiteral("%1 %2 %3 %4   0.1   0.1   0.1   0.1\n")
                    .arg(++number, 4)
                    .arg(transition.first, 9, 'f', 1)
                    .arg(transition.first > 0.0 ? 1e7 / transition.first : 0.0, 8, 'f', 1)
                    .arg(transition.second, 13, 'f', 9)
                    .toLatin1();
    return scratchFile(QStringLiteral("spectrum.out"), text + "\n");
}

/// The curve at wavenumber x before scaling, written out from the definition.
double curve(const QVector<QPair<double, double>> &transitions, double widthNm, double x)
{
    double sum = 0.0;
    for (const auto &transition : transitions) {
        const double p = transition.first;
        if (p == 0.0)
            continue;
        const double w = widthNm * p * p / 1e7;
        sum += (w / (4.0 * std::pow(x + p, 2) + w * w) + w / (4.0 * std::pow(x - p, 2) + w * w)) *
               (x / p) * transition.second;
    }
    return sum;
}

} // namespace

class TestNormalizePoints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void singleTransition()
    {
        LanqorNormalizePoints points(nullptr, orcaOutput({{40000.0, 0.3}}), orca);
        QVERIFY2(points.spectrum(), qPrintable(points.getLastError()));
        const QVector<double> x = points.getaxisX();
        const QVector<double> y = points.getaxisY();
        QCOMPARE(x.size(), 1001);
        QCOMPARE(y.size(), 1001);
        QCOMPARE(*std::max_element(y.cbegin(), y.cend()), 1.0);
        // Default range, in the order of rising wavenumber.
        COMPARE_NEAR(x.first(), 450.0, 1e-10);
        COMPARE_NEAR(x.last(), 150.0, 1e-10);
        const QString file = scratchFile(QStringLiteral("curve.esp"), "old");
        QVERIFY(points.createEspFile(file));
        const QList<QByteArray> lines = testSupport::readAll(file).trimmed().split('\n');
        QCOMPARE(lines.size(), 1001);
        for (int k = 0; k < 1001; k += 100) {
            const QList<QByteArray> values = lines.at(k).simplified().split(' ');
            QCOMPARE(values.size(), 2);
            COMPARE_NEAR(values.at(0).toDouble(), x.at(k), 1e-6);
            COMPARE_NEAR(values.at(1).toDouble(), y.at(k), 1e-9);
        }
        QVERIFY(!points.createEspFile(QStringLiteral("/no/such/folder/curve.esp")));
        // A narrow band has the width at half height that was asked for.
        points.setParametersNormalization(2.0, 240.0, 260.0);
        QVERIFY(points.spectrum());
        const QVector<double> nm = points.getaxisX();
        const QVector<double> narrow = points.getaxisY();
        const auto inHalf = std::count_if(narrow.cbegin(), narrow.cend(),
                                          [](double value) { return value >= 0.5; });
        const double step = 1e7 / nm.at(1) - 1e7 / nm.at(0);
        COMPARE_NEAR(double(inHalf) * step, 2.0 * 40000.0 * 40000.0 / 1e7, 2.0 * step);
    }

    void sumOfTransitionsMatchesTheDefinition()
    {
        // Unsorted, one pair of equal energies, one state of zero energy.
        const QVector<QPair<double, double>> transitions = {
            {35000.0, 0.2}, {29411.8, 0.05}, {0.0, 0.7},    {41666.7, 0.9},
            {35000.0, 0.1}, {60000.0, 0.4},  {31250.0, 0.0}};
        LanqorNormalizePoints points(nullptr, orcaOutput(transitions), orca);
        QCOMPARE(points.getCount(), transitions.size());
        QCOMPARE(points.getPosition(3), 0.0);
        // The limits may be swapped, and computing again changes nothing.
        points.setParametersNormalization(18.0, 400.0, 200.0);
        QVERIFY2(points.spectrum(), qPrintable(points.getLastError()));
        const QVector<double> first = points.getaxisY();
        const AbsorptionResults results = points.getResults(); // 60000 cm^-1 lies outside
        QCOMPARE(results.transitions.size(), 5);
        COMPARE_NEAR(results.transitions.first().energy, 41666.7, 1e-9);
        QCOMPARE(results.transitions.first().oscillatorStrength, 0.9);
        QCOMPARE(results.absorption, first);
        points.setParametersNormalization(18.0, 200.0, 400.0);
        QVERIFY(points.spectrum() && points.spectrum());
        QCOMPARE(points.getaxisY(), first);
        QVector<double> expected;
        for (int k = 0; k <= 1000; ++k)
            expected.append(curve(transitions, 18.0, 25000.0 + 25.0 * k));
        const double maximum = *std::max_element(expected.cbegin(), expected.cend());
        for (int k = 0; k <= 1000; ++k) {
            COMPARE_NEAR(points.getaxisX().at(k), 1e7 / (25000.0 + 25.0 * k), 1e-9);
            COMPARE_NEAR(points.getaxisY().at(k), expected.at(k) / maximum, 1e-12);
        }
    }

    // The wing of a band whose centre lies outside, beside a forbidden transition inside.
    void bandOutsideTheRange()
    {
        LanqorNormalizePoints points(nullptr, orcaOutput({{40000.0, 0.3}, {18000.0, 0.0}}), orca);
        points.setParametersNormalization(25.0, 500.0, 600.0);
        testSupport::MessageSpy spy(points);
        QVERIFY2(points.spectrum(), qPrintable(points.getLastError()));
        QVERIFY(spy.contains(QStringLiteral("500 to 600 nm: the curve is the wing")));
        QCOMPARE(points.getaxisY().last(), 1.0);
        COMPARE_NEAR(points.getaxisY().first(),
                     curve({{40000.0, 0.3}}, 25.0, 1e7 / 600.0) /
                         curve({{40000.0, 0.3}}, 25.0, 1e7 / 500.0),
                     1e-9);
        LanqorNormalizePoints forbidden(nullptr, orcaOutput({{18000.0, 0.0}}), orca);
        QVERIFY(!forbidden.spectrum());
        QVERIFY(forbidden.getLastError().contains(QLatin1String("150 to 450 nm")));
    }

    void senselessRequestsFailAndKeepTheAxes_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::newRow("equal limits") << 25.0 << 300.0 << 300.0;
        QTest::newRow("zero limit") << 25.0 << 0.0 << 300.0;
        QTest::newRow("no width") << 0.0 << 200.0 << 300.0;
        QTest::newRow("not a number") << std::nan("") << 200.0 << 300.0;
    }
    void senselessRequestsFailAndKeepTheAxes()
    {
        QFETCH(double, width);
        QFETCH(double, start);
        QFETCH(double, end);
        LanqorNormalizePoints points(nullptr, orcaOutput({{40000.0, 0.3}, {18000.0, 0.0}}), orca);
        QVERIFY(points.spectrum());
        const QVector<double> y = points.getaxisY();
        points.setParametersNormalization(width, start, end);
        testSupport::MessageSpy spy(points);
        QVERIFY(!points.spectrum());
        QVERIFY(!points.getLastError().isEmpty());
        QCOMPARE(spy.messages, QStringList(points.getLastError()));
        QCOMPARE(points.getaxisY(), y);
    }

    void filesThatHoldNoTransitions()
    {
        const QString file = orcaOutput({{40000.0, 0.3}});
        const char *const words[] = {"ZINDO", "ORCA", "GAUSSIAN", "INDO job", "not 4"}; // of errors
        for (const int program : {0, 2, 3, 4}) {
            LanqorNormalizePoints wrong(nullptr, file, program);
            QVERIFY(wrong.getLastError().contains(QLatin1String(words[program])));
            QVERIFY(!wrong.spectrum());
            QVERIFY(!wrong.createEspFile(QStringLiteral("never.esp")));
        }
    }
};

QTEST_GUILESS_MAIN(TestNormalizePoints)
#include "tst_normalizepoints.moc"
