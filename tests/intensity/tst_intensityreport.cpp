#include "testSpheres.h"

#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QRegularExpression>
#include <QtTest>

using testSpheres::setChargeFactorAndAlpha;
using testSupport::MessageSpy;

namespace {

using Switch = bool OmegaPrintingOptions::*;

struct Section
{
    Switch field;
    const char *heading;
};

/// In the order of the report; the lattice sections have two switches.
const Section sections[] = {
    {&OmegaPrintingOptions::printSphericalCoordinates,
     " Spherical coordinates of the coordination"},
    {&OmegaPrintingOptions::printChargeFactors, " Charge Factors         Polarizabilies"},
    {&OmegaPrintingOptions::printOmega, " Theoretical Judd-Ofelt Intensity Parameters, omega(l) "},
    {&OmegaPrintingOptions::printConstants, "  Constant values for the Eu3+ Ion "},
    {&OmegaPrintingOptions::printSphericalHarmonics, " Spherical Harmonicals Y(t,p,i)"},
    {&OmegaPrintingOptions::printSOM, " Quantities associated to the Simple Overlap Model "},
    {&OmegaPrintingOptions::printGAMA, "   Parameters GAMA(t,p,i)  "},
    {&OmegaPrintingOptions::printSumGAMA, "   Parameters GAMA(t,p,i)  "},
    {&OmegaPrintingOptions::printBltpDC, "  Dynamics Coupling Bltp Parameters, B(l,t,p) DC "},
    {&OmegaPrintingOptions::printOmegaDC, " Dynamics Coupling Judd-Ofelt Parameters, omegaDC(l) "},
    {&OmegaPrintingOptions::printgama, " Odd-rank ligand field parameters, gama(t,p,i)"},
    {&OmegaPrintingOptions::printSumgama, " Odd-rank ligand field parameters, gama(t,p,i)"},
    {&OmegaPrintingOptions::printBltpED, " Electric Dipole Bltp Parameters, B(l,t,p) ED "},
    {&OmegaPrintingOptions::printOmegaED, " Forced Electric Dipole Judd-Ofelt Parameters"},
    {&OmegaPrintingOptions::printBltp, " Bltp parameters (B(l,t,p) = B(l,t,p) ED + B(l,t,p) DC)"},
    {&OmegaPrintingOptions::printArad, "             Theoretical Radiative Emission Rates"},
    {&OmegaPrintingOptions::printAradPartition, "    Chemical Partition of Arad(ED)    "},
    {&OmegaPrintingOptions::printBkq, "    Bkq ligand field parameters, Bkq(k,q)   "},
};

OmegaPrintingOptions allSections()
{
    OmegaPrintingOptions options;
    for (const Section &section : sections)
        options.*(section.field) = true;
    return options;
}

QString output()
{
    return testSupport::dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out"));
}

/// A finished calculation of @p count atoms in random directions, with the sections switched on.
std::unique_ptr<LanqorOmega> finished(int count, const OmegaPrintingOptions &options)
{
    std::mt19937 random(21);
    const QString file = testSpheres::xyzFile(QStringLiteral("report.xyz"),
                                              testSpheres::randomSphere(random, count));
    auto omega = std::make_unique<LanqorOmega>(nullptr, 0, file, file);
    omega->setCoordNumber(count);
    setChargeFactorAndAlpha(*omega, testSpheres::randomValues(random, count, 0.2, 2.0),
                            testSpheres::randomValues(random, count, 0.5e-24, 6e-24));
    omega->setOmegaPrintingOptions(options);
    if (!omega->calcOmega())
        qFatal("%s", qPrintable(omega->getLastError()));
    return omega;
}

/// Finished calculation of the model complex by charges and superdelocalizabilities.
std::unique_ptr<LanqorOmega> finishedQDC()
{
    auto omega = std::make_unique<LanqorOmega>(nullptr, 0, output(), QString());
    QVector<double> charges(10);
    QVector<double> superdelocalizabilities(10);
    for (int k = 2; k <= 9; ++k) {
        charges[k] = 0.6 + 0.03 * k;
        superdelocalizabilities[k] = 30.0 - k;
    }
    omega->setAtomicCharges(charges);
    omega->setSuperDeslocalizability(superdelocalizabilities);
    omega->setParametersQDC(1.5, 0.06, 0.4);
    omega->setLigandAtomsByLigandVector(
        {QStringLiteral("Cl 2 3"), QStringLiteral("water 4 5 6 7 8")});
    omega->setOmegaPrintingOptions(allSections());
    if (!omega->calcOmega())
        qFatal("%s", qPrintable(omega->getLastError()));
    return omega;
}

/// Value behind "name = " in a report.
double valueOf(const QString &report, const QString &name)
{
    const QRegularExpression pattern(QRegularExpression::escape(name) +
                                     QStringLiteral(" *= *([-0-9.]+(e[-+]\\d+)?)"));
    const QRegularExpressionMatch match = pattern.match(report);
    return match.hasMatch() ? match.captured(1).toDouble() : std::nan("");
}

} // namespace

class TestIntensityReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void storedReport();
    void switchesOff();
    void eachSwitchHasItsSection();
    void latticeSwitches();
    void printedNumbersAgreeWithEachOther();
    void crystalFieldIsThatOfItsOwnCalculation();
    void columnsOfTwoDigitAtomsAreAligned();
    void indicesSetAfterTheCalculation();
    void groupsThatCannotBeUsed();
    void citations();
    void writing();
    void readBack();
    void reportsThatAreRefused_data();
    void reportsThatAreRefused();
    void damagedReports();
};

void TestIntensityReport::storedReport()
{
    QString report = finishedQDC()->createOutFile(QString());
    QVERIFY(report.startsWith(LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n")));
    report.remove(0, LanqorInputData::LANQORTitle.size() + 3);
    report.replace(output(), QStringLiteral("eu_cl2_h2o6_pm7_allvec_force.out"));
    const QString stored = QString::fromUtf8(
        testSupport::readAll(testSupport::dataFile(QStringLiteral("reports/intensity.txt"))));
    const QString difference = testSupport::reportDifference(report, stored);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestIntensityReport::switchesOff()
{
    const auto omega = finished(3, OmegaPrintingOptions());
    omega->setRequiredCitations(QStringLiteral("cite this"));
    const QString report = omega->createOutFile(QString());
    QVERIFY(report.startsWith(LanqorInputData::LANQORTitle));
    const QStringList lines = report.mid(LanqorInputData::LANQORTitle.size())
                                  .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QStringLiteral("The data shown below were calculated from the geometry "
                                         "read in following file: "));
    QVERIFY(lines.at(1).endsWith(QStringLiteral("report.xyz")));
    QCOMPARE(lines.at(2), QStringLiteral("cite this"));

    const auto qdc = finishedQDC();
    qdc->setOmegaPrintingOptions(OmegaPrintingOptions());
    QVERIFY(qdc->createOutFile(QString()).contains(QStringLiteral("QDC Ajusted Values")));
    qdc->setParametersQDC(1.0, 0.5, 0.0);             // no ratio
    QVERIFY(qdc->createOutFile(QString()).isEmpty()); // these gave other charge factors
    QVERIFY(qdc->calcOmega());
    QVERIFY(!qdc->createOutFile(QString()).contains(QStringLiteral("inf")));
}

void TestIntensityReport::eachSwitchHasItsSection()
{
    const auto omega = finished(3, OmegaPrintingOptions());
    int lastPlace = 0;
    const auto all = finished(3, allSections());
    const QString whole = all->createOutFile(QString());
    for (const Section &chosen : sections) {
        OmegaPrintingOptions options;
        options.*(chosen.field) = true;
        omega->setOmegaPrintingOptions(options);
        const QString report = omega->createOutFile(QString());
        for (const Section &section : sections)
            QCOMPARE(report.contains(QLatin1String(section.heading)),
                     QLatin1String(section.heading) == QLatin1String(chosen.heading));
        const int place = whole.indexOf(QLatin1String(chosen.heading));
        QVERIFY2(place >= lastPlace, chosen.heading);
        lastPlace = place;
    }
}

void TestIntensityReport::latticeSwitches()
{
    OmegaPrintingOptions atoms;
    atoms.printGAMA = true;
    atoms.printSumgama = true;
    const QString report = finished(3, atoms)->createOutFile(QString());
    QVERIFY(report.contains(QStringLiteral("|GAMA(7,7,4)|")));
    QVERIFY(!report.contains(QStringLiteral("Sum GAMA(")));
    QVERIFY(report.contains(QStringLiteral("Sum gama(7,7)")));
    QVERIFY(!report.contains(QStringLiteral("|gama(1,0,2)|")));
}

void TestIntensityReport::printedNumbersAgreeWithEachOther()
{
    const auto omega = finished(5, allSections());
    const QString report = omega->createOutFile(QString());
    const auto fromAmplitudes = [&report](int lambda, const QString &suffix, int firstT) {
        double sum = 0.0;
        for (int t = firstT; t <= lambda + 1; t += 2) {
            for (int p = 0; p <= t; ++p) {
                const QString name =
                    QStringLiteral("|B(%1,%2,%3)%4|").arg(lambda).arg(t).arg(p).arg(suffix);
                const double modulus = valueOf(report, name);
                sum += (p == 0 ? 1.0 : 2.0) * modulus * modulus / (2 * t + 1);
            }
        }
        return (2 * lambda + 1) * sum * 1e20;
    };
    for (const int lambda : {2, 4, 6}) {
        const double total = omega->getOmega(lambda) * 1e20;
        const QString index = QStringLiteral("(%1)").arg(lambda);
        COMPARE_NEAR(valueOf(report, QStringLiteral("omega") + index) * 1e20, total, 0.0051);
        COMPARE_NEAR(fromAmplitudes(lambda, QString(), lambda - 1) / total, 1.0, 2e-3);
        COMPARE_NEAR(fromAmplitudes(lambda, QStringLiteral(" ED"), lambda - 1) /
                         (omega->getOmegaED(lambda) * 1e20),
                     1.0, 2e-3);
        COMPARE_NEAR(fromAmplitudes(lambda, QStringLiteral(" DC"), lambda + 1) /
                         (omega->getOmegaDC(lambda) * 1e20),
                     1.0, 2e-3);
        QVERIFY(!report.contains(QStringLiteral("B(%1,%2,0) DC").arg(lambda).arg(lambda - 1)));
    }
    const double rate = valueOf(report, QStringLiteral(" Arad(ED) (5D0->7FJ, J=2,4,6)"));
    double parts = 0.0;
    for (const int J : {2, 4, 6})
        parts += valueOf(report, QStringLiteral(" Arad(ED0%1) (5D0->7F%1)").arg(J));
    COMPARE_NEAR(parts, rate, 0.02);
    const QRegularExpression sum(QStringLiteral("\\n Sum +([-0-9.]+)\\n"));
    COMPARE_NEAR(sum.match(report).captured(1).toDouble(), rate, 0.011);
}

void TestIntensityReport::crystalFieldIsThatOfItsOwnCalculation()
{
    const QString report = finishedQDC()->createOutFile(QString());
    QVector<double> g;
    for (int atom = 0; atom <= 9; ++atom)
        g.append(1.5 * (0.6 + 0.03 * atom));
    double *chargeFactors = g.data();
    LanqorBkq field(output(), 0);
    field.setChargeFactors(chargeFactors);
    QVERIFY(field.calculateRO(0.05));
    for (int k = 2; k <= 6; k += 2) {
        for (int q = 0; q <= k; ++q) {
            const MyComplex expected = field.getBkq(k, q);
            const QString name = QStringLiteral("Bkq(%1,%2)").arg(k).arg(q);
            COMPARE_NEAR(valueOf(report, QLatin1Char('|') + name + QLatin1Char('|')),
                         std::hypot(expected.real, expected.imag), 0.0051);
            COMPARE_NEAR(valueOf(report, QLatin1Char(' ') + name), expected.real, 0.0051);
        }
    }
}

void TestIntensityReport::columnsOfTwoDigitAtomsAreAligned()
{
    const QString report = finished(12, allSections())->createOutFile(QString());
    for (const QString &start :
         {QStringLiteral("|Y(3,1,"), QStringLiteral("|GAMA(7,2,"), QStringLiteral("|gama(1,0,"),
          QStringLiteral(" g("), QStringLiteral("     ro("), QStringLiteral("     beta(")}) {
        int length = 0;
        int rows = 0;
        for (const QString &line : report.split(QLatin1Char('\n'))) {
            if (!line.startsWith(start))
                continue;
            length = rows == 0 ? line.size() : length;
            QCOMPARE(line.size(), length);
            ++rows;
        }
        QVERIFY2(rows == 12, qPrintable(start));
    }
    QVERIFY(report.contains(QStringLiteral(" g(9)  = ")));
    QVERIFY(report.contains(QStringLiteral(" g(13) = ")));
}

void TestIntensityReport::indicesSetAfterTheCalculation()
{
    // The caller of an output without force constants computes g and alpha on its own.
    const auto reference = finishedQDC();
    const QString expected = reference->createOutFile(QString());
    LanqorOmega omega(nullptr, 0, output(), QString());
    QVector<double> g;
    QVector<double> alpha;
    QVector<double> charges;
    for (int atom = 0; atom <= 9; ++atom) {
        g.append(reference->getChargeFactor(atom));
        alpha.append(reference->getAlpha(atom));
        charges.append(g.last() / 1.5);
    }
    setChargeFactorAndAlpha(omega, g, alpha);
    omega.setParametersQDC(1.5, 0.06, 0.4);
    OmegaPrintingOptions options;
    options.printOmega = true;
    omega.setOmegaPrintingOptions(options);
    QVERIFY(omega.calcOmega());
    const QString table = QStringLiteral(" Atomic Charges (au) ");
    QVERIFY(!omega.createOutFile(QString()).contains(table)); // there are none
    omega.setAtomicCharges(charges);
    omega.setSuperDeslocalizability({0, 0, 28, 27, 26, 25, 24, 23, 22, 21});
    QVERIFY(omega.createOutFile(QString()).contains(table));
    QVERIFY(expected.contains(table));
    omega.setSuperDeslocalizability({0, 0, 28, 27, 26, 25, 24, 23, 22, 20});
    QVERIFY(omega.createOutFile(QString()).isEmpty());
}

void TestIntensityReport::groupsThatCannotBeUsed()
{
    OmegaPrintingOptions options;
    options.printAradPartition = true;
    const auto omega = finished(3, options);
    omega->setLigandAtomsByLigandVector({QStringLiteral("A 2 9")});
    MessageSpy spy(*omega);
    const QString report = omega->createOutFile(QString()); // the other tables are not lost
    QVERIFY(report.contains(QStringLiteral("\"9\"")));
    QVERIFY(report.contains(QStringLiteral("Chemical Partition by Atom (s^-1)")));
    QVERIFY(spy.contains(QStringLiteral("\"9\"")));
}

void TestIntensityReport::citations()
{
    LanqorInputData data(nullptr, output());
    QVERIFY(data.readMopacOutFile(false));
    const QString mopac = data.getMopacCitation();
    const auto omega = finishedQDC();
    QCOMPARE(omega->getMopacCitation(), mopac);
    const QString heading =
        QStringLiteral("      Required Citations for this Calculation         \n");
    QVERIFY(omega->createOutFile(QString()).contains(heading));
    for (const QString &own : {QStringLiteral("own paper"), mopac + QStringLiteral("own paper")}) {
        omega->setRequiredCitations(own);
        const QString report = omega->createOutFile(QString());
        QCOMPARE(report.count(QStringLiteral("own paper")), 1);
        QVERIFY(!report.contains(heading)); // the caller's text has one
        if (!mopac.isEmpty())
            QCOMPARE(report.count(mopac), 1);
    }
}

void TestIntensityReport::writing()
{
    const auto omega = finished(4, allSections());
    const QString file = testSupport::scratchFile(QStringLiteral("written.txt"), "old text");
    const QString report = omega->createOutFile(file);
    QCOMPARE(QString::fromUtf8(testSupport::readAll(file)), report);
    MessageSpy spy(*omega);
    QVERIFY(omega->createOutFile(QStringLiteral("/no/such/folder/report.txt")).isEmpty());
    QCOMPARE(spy.messages, QStringList(omega->getLastError()));
    QVERIFY(omega->getLastError().contains(QStringLiteral("/no/such/folder/report.txt")));
    QVERIFY(omega->getOmega(2) > 0.0);
}

void TestIntensityReport::readBack()
{
    const QString report = testSupport::scratchFile(QStringLiteral("fit.txt"), QByteArray());
    const auto omega = finishedQDC();
    QVERIFY(!omega->createOutFile(report).isEmpty());
    QByteArray crlf = testSupport::readAll(report).replace("\n", "\r\n");
    for (const QString &file :
         {report, testSupport::scratchFile(QStringLiteral("fit_crlf.txt"), crlf)}) {
        LanqorOmega again(nullptr, 0, output(), file);
        QCOMPARE(again.getLastError(), QString());
        QCOMPARE(again.getCoordNumber(), 8);
        for (const int lambda : {2, 4, 6}) {
            COMPARE_NEAR(again.getOmega(lambda) * 1e20, omega->getOmega(lambda) * 1e20, 2e-3);
            COMPARE_NEAR(again.getOmegaED(lambda) * 1e20, omega->getOmegaED(lambda) * 1e20, 2e-3);
        }
        for (int atom = 2; atom <= 9; ++atom) {
            COMPARE_NEAR(again.getChargeFactor(atom), omega->getChargeFactor(atom), 5.1e-5);
            COMPARE_NEAR(again.getAlpha(atom) * 1e24, omega->getAlpha(atom) * 1e24, 5.1e-5);
        }
    }
    // N is the number of rows, whatever was counted.
    LanqorOmega five(nullptr, 0, output(), QString());
    five.setCoordNumber(5);
    setChargeFactorAndAlpha(five, QVector<double>(7, 0.8), QVector<double>(7, 3e-24));
    five.setOmegaPrintingOptions(allSections());
    QVERIFY(five.calcOmega() && !five.createOutFile(report).isEmpty());
    LanqorOmega again(nullptr, 0, output(), report);
    QCOMPARE(again.getCoordNumber(), 5);
    COMPARE_NEAR(again.getOmega(2) / five.getOmega(2), 1.0, 1e-12); // these digits are all printed
}

void TestIntensityReport::reportsThatAreRefused_data()
{
    QTest::addColumn<QByteArray>("from"); // text of the report that is replaced
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no charge factors") << QByteArray(" Charge Factors ") << QByteArray(" Nothing ")
                                       << QStringLiteral("no section");
    QTest::newRow("a row is missing")
        << QByteArray(" g(4) ") << QByteArray(" x(4) ") << QStringLiteral("damaged");
    QTest::newRow("rows out of order")
        << QByteArray(" g(4) ") << QByteArray(" g(5) ") << QStringLiteral("damaged");
    QTest::newRow("no first row") << QByteArray(" g(2) ") << QByteArray(" x(2) ")
                                  << QStringLiteral("damaged");
    QTest::newRow("cut in the rows") << QByteArray() << QByteArray() << QStringLiteral("damaged");
    QTest::newRow("no number") << QByteArray(" alpha(3)  =   2.0200")
                               << QByteArray(" alpha(3)  =   ******") << QStringLiteral("damaged");
    QTest::newRow("other charge factor")
        << QByteArray("g(2)  =   0.9900") << QByteArray("g(2)  =   1.9900")
        << QStringLiteral("another geometry");
    QTest::newRow("other omega") << QByteArray("omega(6) =    0.40")
                                 << QByteArray("omega(6) =    0.44")
                                 << QStringLiteral("another geometry");
}

void TestIntensityReport::reportsThatAreRefused()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, reason);
    QByteArray text = finishedQDC()->createOutFile(QString()).toUtf8();
    QVERIFY(text.contains(from));
    if (from.isEmpty())
        text.truncate(text.indexOf(" g(6)"));
    else
        text.replace(from, to);
    const QString file = testSupport::scratchFile(QStringLiteral("refused.txt"), text);
    LanqorOmega omega(nullptr, 0, output(), file);
    QVERIFY2(omega.getLastError().contains(reason), qPrintable(omega.getLastError()));
    QVERIFY(omega.getLastError().contains(file));
    for (const int lambda : {2, 4, 6})
        QCOMPARE(omega.getOmega(lambda), 0.0);
    QCOMPARE(omega.getChargeFactor(2), 0.0);
    QVERIFY(!omega.calcOmega()); // nothing of the report stays
}

void TestIntensityReport::damagedReports()
{
    OmegaPrintingOptions options;
    options.printChargeFactors = true;
    options.printOmega = true;
    const auto original = finishedQDC();
    original->setOmegaPrintingOptions(options);
    const QByteArray text = original->createOutFile(QString()).toUtf8();
    int accepted = 0;
    testSupport::damageFile(text, 100, 400, [&](const QString &path) {
        LanqorOmega omega(nullptr, 0, output(), path);
        if (omega.getOmega(2) > 0.0)
            ++accepted;
        QCOMPARE(omega.getOmega(2) > 0.0, omega.getLastError().isEmpty());
    });
    QVERIFY(accepted > 0);
}

QTEST_GUILESS_MAIN(TestIntensityReport)
#include "tst_intensityreport.moc"
