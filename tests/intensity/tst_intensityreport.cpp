#include "testSpheres.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

using testSpheres::setChargeFactorAndAlpha;
using testSupport::MessageSpy;

namespace {

using Options = OmegaPrintingOptions;

struct Section
{
    bool Options::*field;
    const char *text; ///< stands in this section alone
};

const Section sections[] = {
    {&Options::printSphericalCoordinates, " Spherical coordinates of the coordination"},
    {&Options::printChargeFactors, " Charge Factors         Polarizabilies"},
    {&Options::printOmega, "\nomega(2) = "},
    {&Options::printConstants, "  Constant values for the Eu3+ Ion "},
    {&Options::printSphericalHarmonics, " Y(7,7,4) = "},
    {&Options::printSOM, "     beta(4) = "},
    {&Options::printGAMA, " GAMA(7,7,4) = "},
    {&Options::printSumGAMA, "Sum GAMA(7,7) = "},
    {&Options::printBltpDC, " B(6,7,7) DC = "},
    {&Options::printOmegaDC, "\nomegaDC(2) = "},
    {&Options::printgama, " gama(7,7,4) = "},
    {&Options::printSumgama, "Sum gama(7,7) = "},
    {&Options::printBltpED, " B(6,7,7) ED = "},
    {&Options::printOmegaED, "\nomegaED(2) = "},
    {&Options::printBltp, " B(6,7,7) = "},
    {&Options::printArad, " Arad(MD) (5D0->7F1)"},
    {&Options::printAradPartition, "Chemical Partition by Atom (s^-1)"},
    {&Options::printBkq, " Bkq(6,6) = "},
};

Options allSections()
{
    Options options;
    for (const Section &section : sections)
        options.*(section.field) = true;
    return options;
}

QString output()
{
    return testSupport::dataFile("mopac/eu_cl2_h2o6_pm7_allvec_force.out");
}

/// A finished calculation of @p count atoms in random directions.
std::unique_ptr<LanqorOmega> finished(int count, const Options &options)
{
    std::mt19937 random(21);
    const QString file =
        testSpheres::xyzFile("report.xyz", testSpheres::randomSphere(random, count));
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
std::unique_ptr<LanqorOmega> finishedQDC(const QString &file = output())
{
    auto omega = std::make_unique<LanqorOmega>(nullptr, 0, file, QString());
    omega->setAtomicCharges({0, 0, 0.66, 0.69, 0.72, 0.75, 0.78, 0.81, 0.84, 0.87});
    omega->setSuperDeslocalizability({0, 0, 28, 27, 26, 25, 24, 23, 22, 21});
    omega->setParametersQDC(1.5, 0.06, 0.4);
    omega->setLigandAtomsByLigandVector({"Cl 2 3", "water 4 5 6 7 8"});
    omega->setOmegaPrintingOptions(allSections());
    if (!omega->calcOmega())
        qFatal("%s", qPrintable(omega->getLastError()));
    return omega;
}

} // namespace

class TestIntensityReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void storedReport();
    void eachSwitchHasItsSection();
    void columnsOfTwoDigitAtomsAreAligned();
    void indicesSetAfterTheCalculation();
    void groupsThatCannotBeUsed();
    void citationsAndWriting();
    void readBack();
    void reportsThatAreRefused();
    void damagedReports();
};

void TestIntensityReport::storedReport()
{
    const auto omega = finishedQDC();
    QString report = omega->createOutFile(QString());
    QVERIFY(report.startsWith(LanqorInputData::LANQORTitle + "\n\n\n"));
    report.remove(0, LanqorInputData::LANQORTitle.size() + 3);
    report.replace(output(), "eu_cl2_h2o6_pm7_allvec_force.out");
    const QString stored =
        QString::fromUtf8(testSupport::readAll(testSupport::dataFile("reports/intensity.txt")));
    const QString difference = testSupport::reportDifference(report, stored);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));

    omega->setParametersQDC(1.0, 0.5, 0.0);             // no ratio
    QVERIFY(omega->createOutFile(QString()).isEmpty()); // these gave other charge factors
    QVERIFY(omega->calcOmega());
    QVERIFY(!omega->createOutFile(QString()).contains("inf"));
}

void TestIntensityReport::eachSwitchHasItsSection()
{
    const auto omega = finished(3, Options());
    omega->setRequiredCitations("cite this");
    const QString bare = omega->createOutFile(QString());
    const QStringList lines =
        bare.mid(LanqorInputData::LANQORTitle.size()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3); // two of the file
    QCOMPARE(lines.last(), QString("cite this"));
    for (const Section &chosen : sections) {
        Options options;
        options.*(chosen.field) = true;
        omega->setOmegaPrintingOptions(options);
        const QString report = omega->createOutFile(QString());
        for (const Section &section : sections)
            QVERIFY2(report.contains(section.text) == (&section == &chosen), section.text);
    }
}

void TestIntensityReport::columnsOfTwoDigitAtomsAreAligned()
{
    const QString report = finished(12, allSections())->createOutFile(QString());
    for (const char *start :
         {"|Y(3,1,", "|GAMA(7,2,", "|gama(1,0,", " g(", "     ro(", "     beta("}) {
        QVector<int> lengths;
        for (const QString &line : report.split('\n')) {
            if (line.startsWith(start))
                lengths.append(line.size());
        }
        QCOMPARE(lengths.size(), 12);
        QCOMPARE(lengths.count(lengths.first()), 12);
    }
    QVERIFY(report.contains(" g(9)  = ") && report.contains(" g(13) = "));
}

void TestIntensityReport::indicesSetAfterTheCalculation()
{
    // The caller of an output without force constants computes g and alpha on its own.
    const auto reference = finishedQDC();
    LanqorOmega omega(nullptr, 0, output(), QString());
    QVector<double> g;
    QVector<double> alpha;
    for (int atom = 0; atom <= 9; ++atom) {
        g.append(reference->getChargeFactor(atom));
        alpha.append(reference->getAlpha(atom));
    }
    setChargeFactorAndAlpha(omega, g, alpha);
    omega.setParametersQDC(1.5, 0.06, 0.4);
    QVERIFY(omega.calcOmega());
    const QString table = " Atomic Charges (au) ";
    const QString without = omega.createOutFile(QString()); // there are none, nor a QDC mode
    QVERIFY(!without.contains(table) && !without.contains("QDC"));
    omega.setAtomicCharges({0, 0, 0.66, 0.69, 0.72, 0.75, 0.78, 0.81, 0.84, 0.87});
    omega.setSuperDeslocalizability({0, 0, 28, 27, 26, 25, 24, 23, 22, 21});
    QVERIFY(omega.createOutFile(QString()).contains(table));
    omega.setOrbitalEnergyUnit("eV");
    QVERIFY(omega.createOutFile(QString()).contains("S (SDE) in 1/eV, D in A^3 eV"));
    omega.setSuperDeslocalizability({0, 0, 28, 27, 26, 25, 24, 23, 22, 20});
    QVERIFY(omega.createOutFile(QString()).isEmpty());
}

void TestIntensityReport::groupsThatCannotBeUsed()
{
    const auto omega = finished(3, allSections());
    omega->setLigandAtomsByLigandVector({"A 2 9"});
    MessageSpy spy(*omega);
    const QString report = omega->createOutFile(QString()); // the other tables are not lost
    QVERIFY(report.contains("\"9\"") && report.contains("Chemical Partition by Atom (s^-1)"));
    QVERIFY(spy.contains("\"9\""));
}

void TestIntensityReport::citationsAndWriting()
{
    const QByteArray cited =
        " Cite this work as: paper of the program\n " + QByteArray(80, '*') + '\n';
    const auto omega =
        finishedQDC(testSupport::scratchFile("cited.out", cited + testSupport::readAll(output())));
    const QString mopac = omega->getMopacCitation();
    QVERIFY(mopac.endsWith("paper of the program"));
    for (const QString &own : {QString(), QString("own paper"), mopac + "own paper"}) {
        omega->setRequiredCitations(own);
        const QString report = omega->createOutFile(QString());
        QCOMPARE(report.count("own paper"), own.isEmpty() ? 0 : 1);
        QCOMPARE(report.count(mopac), 1);
        QCOMPARE(report.contains("Required Citations"), own.isEmpty()); // the caller's has its own
    }
    const QString file = testSupport::scratchFile("written.txt", "old text");
    const QString report = omega->createOutFile(file);
    QCOMPARE(QString::fromUtf8(testSupport::readAll(file)), report);
    MessageSpy spy(*omega);
    QVERIFY(omega->createOutFile("/no/such/folder/report.txt").isEmpty());
    QCOMPARE(spy.messages, QStringList(omega->getLastError()));
    QVERIFY(omega->getLastError().contains("/no/such/folder/report.txt"));
}

void TestIntensityReport::readBack()
{
    const QString report = testSupport::scratchFile("fit.txt", QByteArray());
    const auto omega = finishedQDC();
    QVERIFY(!omega->createOutFile(report).isEmpty());
    QByteArray crlf = testSupport::readAll(report).replace("\n", "\r\n");
    for (const QString &file : {report, testSupport::scratchFile("fit_crlf.txt", crlf)}) {
        LanqorOmega again(nullptr, 0, output(), file);
        QCOMPARE(again.getLastError(), QString());
        QCOMPARE(again.getCoordNumber(), 8);
        for (const int lambda : {2, 4, 6}) {
            COMPARE_NEAR(again.getOmega(lambda) * 1e20, omega->getOmega(lambda) * 1e20, 2e-3);
            COMPARE_NEAR(again.getOmegaED(lambda) * 1e20, omega->getOmegaED(lambda) * 1e20, 2e-3);
        }
        COMPARE_NEAR(again.getAlpha(9) * 1e24, omega->getAlpha(9) * 1e24, 5.1e-5);
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

void TestIntensityReport::reportsThatAreRefused()
{
    const struct
    {
        const char *from; // text of the report that is replaced
        const char *to;   // null: the report ends there
        const char *reason;
    } cases[] = {
        {" Charge Factors ", " Nothing ", "no section"},
        {" g(4) ", " x(4) ", "damaged"},
        {" g(4) ", " g(5) ", "damaged"},
        {" g(2) ", " x(2) ", "damaged"},
        {" g(6) ", nullptr, "damaged"},
        {" alpha(3)  =   2.0200", " alpha(3)  =   ******", "damaged"},
        {"g(2)  =   0.9900", "g(2)  =   1.9900", "another geometry"},
        {"omega(6) =    0.40", "omega(6) =    0.44", "another geometry"},
    };
    for (const auto &wrong : cases) {
        QByteArray text = finishedQDC()->createOutFile(QString()).toUtf8();
        const int place = text.indexOf(wrong.from);
        QVERIFY2(place > 0, wrong.from);
        if (wrong.to)
            text.replace(wrong.from, wrong.to);
        else
            text.truncate(place);
        const QString file = testSupport::scratchFile("refused.txt", text);
        LanqorOmega omega(nullptr, 0, output(), file);
        const QString error = omega.getLastError();
        QVERIFY2(error.contains(wrong.reason) && error.contains(file), qPrintable(error));
        QVERIFY(omega.getOmega(2) == 0.0 && omega.getChargeFactor(2) == 0.0);
        QVERIFY(!omega.calcOmega()); // nothing of the report stays
    }
}

void TestIntensityReport::damagedReports()
{
    Options options;
    options.printChargeFactors = true;
    options.printOmega = true;
    const auto original = finishedQDC();
    original->setOmegaPrintingOptions(options);
    const QByteArray text = original->createOutFile(QString()).toUtf8();
    int accepted = 0;
    testSupport::damageFile(text, 100, 400, [&](const QString &path) {
        LanqorOmega omega(nullptr, 0, output(), path);
        accepted += omega.getOmega(2) > 0.0 ? 1 : 0;
        QCOMPARE(omega.getOmega(2) > 0.0, omega.getLastError().isEmpty());
    });
    QVERIFY(accepted > 0);
}

QTEST_GUILESS_MAIN(TestIntensityReport)
#include "tst_intensityreport.moc"
