#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmegaExp.h>

#include "TestSupport.h"
#include "intensity/radiativeRates_p.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <functional>

using testSupport::ProgramRun;
using Values = std::array<double, 6>;

namespace {

const Values publishedAreas = {0.0, 1.0, 10.0, 0.0, 1.0, 0.0};
const Values publishedBarycentres = {0.0, 16921.0, 16267.0, 0.0, 14470.0, 0.0};

void setUp(LanqorOmegaExp &calculation, const Values &S, const Values &sigma)
{
    calculation.setAreaOfTransition(S[0], S[1], S[2], S[3], S[4], S[5]);
    calculation.setBarycenterOfEnergy(sigma[0], sigma[1], sigma[2], sigma[3], sigma[4], sigma[5]);
}

/// Bands of Gaussian shape along wavenumbers: their areas, emitted power, and centres are known.
const Values bandAreas = {0.11, 1.0, 8.7, 0.25, 1.9, 0.06};
const Values bandCentres = {17250.0, 16860.0, 16210.0, 15310.0, 14350.0, 13310.0};
constexpr double bandWidth = 25.0; // standard deviation, cm^-1

double powerPerWavenumber(double sigma)
{
    double sum = 0.0;
    for (std::size_t J = 0; J < 6; ++J)
        sum += bandAreas[J] / (bandWidth * std::sqrt(2.0 * M_PI)) *
               std::exp(-0.5 * std::pow((sigma - bandCentres[J]) / bandWidth, 2));
    return sum;
}

/// How an instrument records it.
enum class Recording { PowerPerNm, PowerPerWavenumber, PhotonsPerNm, PhotonsPerWavenumber };

double signal(Recording recording, double sigma)
{
    const bool isPerNm = recording == Recording::PowerPerNm || recording == Recording::PhotonsPerNm;
    const bool isPower =
        recording == Recording::PowerPerNm || recording == Recording::PowerPerWavenumber;
    const double wavelength = 1.0e7 / sigma;
    return powerPerWavenumber(sigma) * (isPerNm ? 1.0e7 / (wavelength * wavelength) : 1.0) /
           (isPower ? 1.0 : sigma);
}

/// A spectrum from 560 to @p lastNm nm; @p line writes a row.
QByteArray spectrumText(Recording recording, double lastNm,
                        const std::function<QByteArray(double, double)> &line)
{
    const bool isPerNm = recording == Recording::PowerPerNm || recording == Recording::PhotonsPerNm;
    QByteArray text;
    for (int i = 0; i <= 4000; ++i) {
        const double nm = 560.0 + (lastNm - 560.0) * i / 4000.0;
        text += line(isPerNm ? nm : 1.0e7 / nm, signal(recording, 1.0e7 / nm));
    }
    return text;
}

QByteArray plainLine(double x, double y)
{
    return QByteArray::number(x, 'g', 12) + " " + QByteArray::number(y, 'g', 12) + "\n";
}

QString scratchSpectrum(const QByteArray &text)
{
    return testSupport::scratchFile("spectrum.txt", text);
}

} // namespace

Q_DECLARE_METATYPE(Recording)

class TestOmegaExp : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void publishedCase();
    void scaling();
    void inputThatGivesNoResult_data();
    void inputThatGivesNoResult();
    void reports();
    void spectrumOnEitherAxis_data();
    void spectrumOnEitherAxis();
    void columnSeparators_data();
    void columnSeparators();
    void baselineAndWindows();
    void coverage();
    void brokenSpectra_data();
    void brokenSpectra();
    void damagedSpectra();
    void program();
};

void TestOmegaExp::publishedCase()
{
    for (const double n : {1.0, 1.33, 1.5}) {
        LanqorOmegaExp calculation(nullptr, n);
        QCOMPARE(calculation.getAradExp(), 0.0);
        setUp(calculation, publishedAreas, publishedBarycentres);
        QVERIFY(calculation.calcOmegaExp());
        QCOMPARE(calculation.getR02(), 17830.5);
        const double A1 = 3.1e-12 * std::pow(n * 16921.0, 3);
        const double A2 = A1 * 10.0 * 16921.0 / 16267.0;
        const double A4 = A1 * 16921.0 / 14470.0;
        COMPARE_NEAR(calculation.getAradExp() / (A1 + A2 + A4), 1.0, 1e-14);
        // The theoretical rate of the same transition at the same wavenumber, written with other
        // constants, must give back the rate from which Omega was derived.
        COMPARE_NEAR(radiativeRates::constArad(2, n) * calculation.getOmega2Exp() / A2, 1.0, 1e-6);
        COMPARE_NEAR(radiativeRates::constArad(4, n) * calculation.getOmega4Exp() / A4, 1.0, 1e-6);
        if (n != 1.5)
            continue;
        COMPARE_NEAR(calculation.getAradExp(), 637.23, 0.005); // 50.69 + 527.27 + 59.275
        COMPARE_NEAR(calculation.getOmega2Exp() * 1e20, 17.573924, 5e-7);
        COMPARE_NEAR(calculation.getOmega4Exp() * 1e20, 3.905230, 5e-7);
    }
}

void TestOmegaExp::scaling()
{
    const Values S = {0.05, 1.0, 9.0, 0.3, 2.0, 0.2};
    const Values sigma = {17240.0, 16900.0, 16280.0, 15350.0, 14390.0, 13350.0};
    Values scaled = S;
    for (double &area : scaled)
        area *= 4096.0;
    LanqorOmegaExp one(nullptr, 1.0);
    LanqorOmegaExp other(nullptr, 1.0);
    LanqorOmegaExp doubled(nullptr, 2.0);
    setUp(one, S, sigma);
    setUp(other, scaled, sigma);
    setUp(doubled, S, sigma);
    QVERIFY(one.calcOmegaExp() && other.calcOmegaExp() && doubled.calcOmegaExp());
    // The unit of the areas does not matter, but for r02.
    QCOMPARE(other.getOmega2Exp(), one.getOmega2Exp());
    QCOMPARE(other.getAradExp(), one.getAradExp());
    QCOMPARE(other.getR02(), one.getR02() / 4096.0);
    // All rates go as n^3; Omega as n^3/chi, which is 8/8 for n = 2.
    COMPARE_NEAR(doubled.getAradExp() / one.getAradExp(), 8.0, 1e-14);
    COMPARE_NEAR(doubled.getOmega4Exp() / one.getOmega4Exp(), 1.0, 1e-14);
}

void TestOmegaExp::inputThatGivesNoResult_data()
{
    QTest::addColumn<int>("J");
    QTest::addColumn<double>("area");
    QTest::addColumn<double>("barycentre");
    QTest::addColumn<double>("n");
    QTest::addColumn<QString>("message");
    QTest::newRow("no 7F1") << 1 << 0.0 << 16921.0 << 1.5 << "5D0 -> 7F1";
    QTest::newRow("no barycentre of 7F1") << 1 << 1.0 << 0.0 << 1.5 << "5D0 -> 7F1";
    QTest::newRow("no barycentre of 7F2") << 2 << 0.0 << 0.0 << 1.5 << "5D0 -> 7F2";
    QTest::newRow("no barycentre of 7F4") << 4 << 1.0 << 0.0 << 1.5 << "5D0 -> 7F4";
    QTest::newRow("area of 7F5 without barycentre") << 5 << 0.1 << 0.0 << 1.5 << "5D0 -> 7F5";
    QTest::newRow("negative area") << 3 << -0.1 << 15300.0 << 1.5 << "5D0 -> 7F3";
    QTest::newRow("no number") << 2 << std::nan("") << 16267.0 << 1.5 << "5D0 -> 7F2";
    QTest::newRow("refractive index 0") << 1 << 1.0 << 16921.0 << 0.0 << "index";
    QTest::newRow("beyond doubles") << 1 << 1.0 << 1e120 << 1.5 << "beyond";
}

void TestOmegaExp::inputThatGivesNoResult()
{
    QFETCH(int, J);
    QFETCH(double, area);
    QFETCH(double, barycentre);
    QFETCH(double, n);
    QFETCH(QString, message);
    LanqorOmegaExp calculation(nullptr, n);
    const testSupport::MessageSpy spy(calculation);
    Values S = publishedAreas;
    Values sigma = publishedBarycentres;
    S[static_cast<std::size_t>(J)] = area;
    sigma[static_cast<std::size_t>(J)] = barycentre;
    setUp(calculation, S, sigma);
    QVERIFY(!calculation.calcOmegaExp());
    QVERIFY2(calculation.getLastError().contains(message), qPrintable(calculation.getLastError()));
    QCOMPARE(spy.messages, QStringList(calculation.getLastError()));
    QCOMPARE(calculation.getAradExp(), 0.0);
    QVERIFY(calculation.createOutputFile(QString()).isEmpty());
}

void TestOmegaExp::reports()
{
    LanqorOmegaExp calculation(nullptr, 1.5);
    setUp(calculation, {0.0123, 1.0, 9.8765, 0.3, 2.25, 0.0},
          {17241.5, 16910.25, 16270.0, 15352.0, 14385.5, 0.0});
    calculation.setFileName("emission.txt");
    calculation.setLifeTime(0.42);
    QVERIFY(calculation.calcOmegaExp());
    const QString file = testSupport::scratchFile("report.txt", QByteArray());
    const QString report = calculation.createOutputFile(file);
    QCOMPARE(QString::fromUtf8(testSupport::readAll(file)), report);
    const QString head = LanqorInputData::LANQORTitle + "\n\n\n";
    QVERIFY(report.startsWith(head));
    const QString stored =
        QString::fromUtf8(testSupport::readAll(testSupport::dataFile("reports/omega_exp.txt")));
    const QString difference = testSupport::reportDifference(report.mid(head.size()), stored, 1e-6);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    const QString unwritable = "/no/such/folder/report.txt";
    QVERIFY(calculation.createOutputFile(unwritable).isEmpty());
    QVERIFY(calculation.getLastError().contains(unwritable));

    const auto reportWith = [&calculation](double lifeTime) {
        calculation.setLifeTime(lifeTime);
        return calculation.createOutputFile(QString());
    };
    QCOMPARE(reportWith(0.0).count("not given"), 3);
    QVERIFY(reportWith(2.0).contains("Arad exceeds 1/lifetime"));
    for (const double impossible : {-1.0, 1e-320, std::nan("")})
        QVERIFY(reportWith(impossible).isEmpty());

    // Results of other input must not stand beside the new areas. These have no 7F2, as in the
    // field of an inversion centre.
    setUp(calculation, {0.0, 1.0, 0.0, 0.0, 0.7, 0.0}, publishedBarycentres);
    QVERIFY(reportWith(0.0).isEmpty());
    QVERIFY(calculation.calcOmegaExp());
    QCOMPARE(calculation.getOmega2Exp(), 0.0);
    QVERIFY(std::isinf(calculation.getR02()));
    const QString centred = reportWith(0.0);
    QVERIFY(!centred.isEmpty() && !centred.contains("inf") && !centred.contains("nan"));
}

void TestOmegaExp::spectrumOnEitherAxis_data()
{
    QTest::addColumn<Recording>("recording");
    QTest::newRow("power per nm") << Recording::PowerPerNm;
    QTest::newRow("power per cm^-1, descending") << Recording::PowerPerWavenumber;
    QTest::newRow("photons per nm") << Recording::PhotonsPerNm;
    QTest::newRow("photons per cm^-1") << Recording::PhotonsPerWavenumber;
}

// One emission, recorded in four ways, has the same areas and barycentres.
void TestOmegaExp::spectrumOnEitherAxis()
{
    QFETCH(Recording, recording);
    const bool countsPhotons =
        recording == Recording::PhotonsPerNm || recording == Recording::PhotonsPerWavenumber;
    EmissionSpectrumOptions right;
    EmissionSpectrumOptions wrong; // weights by the wavenumber once too often or too seldom
    (countsPhotons ? right : wrong).signal = EmissionSpectrumOptions::Signal::PhotonCounts;
    LanqorOmegaExp calculation(nullptr, 1.5);
    const testSupport::MessageSpy spy(calculation);
    const QString file = scratchSpectrum(spectrumText(recording, 790.0, plainLine));
    QVERIFY2(calculation.readSpectrum(file, right), qPrintable(calculation.getLastError()));
    QVERIFY(spy.messages.isEmpty());
    for (int J = 0; J < 6; ++J) {
        const auto level = static_cast<std::size_t>(J);
        // The windows leave out the wings beyond five standard deviations.
        COMPARE_NEAR(calculation.getAreaOfTransition(J) / bandAreas[level], 1.0, 1e-6);
        COMPARE_NEAR(calculation.getBarycenterOfEnergy(J), bandCentres[level], 1e-3);
    }
    QCOMPARE(calculation.getFileName(), file);
    QVERIFY(calculation.readSpectrum(file, wrong));
    const double ratio = (calculation.getAreaOfTransition(2) / calculation.getAreaOfTransition(1)) /
                         (bandAreas[2] / bandAreas[1]);
    const double expected = bandCentres[2] / bandCentres[1];
    COMPARE_NEAR(ratio, countsPhotons ? 1.0 / expected : expected, 1e-4);
}

void TestOmegaExp::columnSeparators_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray plain = spectrumText(Recording::PowerPerNm, 790.0, plainLine);
    const auto with = [](char separator) {
        return spectrumText(Recording::PowerPerNm, 790.0, [separator](double x, double y) {
            return plainLine(x, y).replace(' ', separator);
        });
    };
    QTest::newRow("semicolons") << with(';');
    QTest::newRow("commas") << with(',');
    QTest::newRow("comma and blank") << with(',').replace(",", ", ");
    QTest::newRow("decimal commas") << with('\t').replace('.', ',');
    QTest::newRow("third column, Windows lines")
        << QByteArray(plain).replace("\n", "\t1.0\r\n").replace(' ', '\t');
    // The first line is 560, without a point.
    QTest::newRow("three columns with commas") << with(',').replace("\n", ",1\n");
    QTest::newRow("heading, comments and trailer")
        << "\xef\xbb\xbf"
           "Emission of sample 12\nWavelength (nm)  S1 / R1\n# 300 K\n\n" +
               plain + "\n# end\nXYDATA END\n";
}

void TestOmegaExp::columnSeparators()
{
    QFETCH(QByteArray, text);
    LanqorOmegaExp calculation(nullptr, 1.5);
    QVERIFY2(calculation.readSpectrum(scratchSpectrum(text)),
             qPrintable(calculation.getLastError()));
    COMPARE_NEAR(calculation.getAreaOfTransition(2), bandAreas[2], 1e-6);
    COMPARE_NEAR(calculation.getBarycenterOfEnergy(4), bandCentres[4], 1e-3);
}

void TestOmegaExp::baselineAndWindows()
{
    // A background that rises along the recorded axis; 1 nm steps do not meet the windows' ends.
    const QByteArray text = spectrumText(Recording::PowerPerNm, 790.0, [](double nm, double y) {
        return plainLine(nm, y + 1e-3 * (nm - 500.0));
    });
    const QString file = scratchSpectrum(text);
    EmissionSpectrumOptions chosen;
    chosen.windows[1] = {1.0e7 / 603.3, 1.0e7 / 584.7};
    LanqorOmegaExp raw(nullptr, 1.5);
    QVERIFY(raw.readSpectrum(file, chosen));
    // The integral of the background over the window, in closed form.
    const double background = 0.5e-3 * (103.3 * 103.3 - 84.7 * 84.7);
    COMPARE_NEAR(raw.getAreaOfTransition(1), bandAreas[1] + background, 1e-5);
    chosen.baseline = EmissionSpectrumOptions::Baseline::Linear;
    LanqorOmegaExp corrected(nullptr, 1.5);
    QVERIFY(corrected.readSpectrum(file, chosen));
    for (int J = 0; J < 6; ++J) {
        const auto level = static_cast<std::size_t>(J);
        COMPARE_NEAR(corrected.getAreaOfTransition(J), bandAreas[level], 2e-4);
        COMPARE_NEAR(corrected.getBarycenterOfEnergy(J), bandCentres[level], 1.0);
    }

    // A window shorter than the band gives the part of it, here the upper half.
    EmissionSpectrumOptions half;
    half.windows[2] = {bandCentres[2], bandCentres[2] + 300.0};
    LanqorOmegaExp part(nullptr, 1.5);
    QVERIFY(part.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerWavenumber, 790.0, plainLine)), half));
    COMPARE_NEAR(part.getAreaOfTransition(2), 0.5 * bandAreas[2], 1e-4);
    COMPARE_NEAR(part.getBarycenterOfEnergy(2), bandCentres[2] + bandWidth * std::sqrt(2.0 / M_PI),
                 0.01);

    half.windows[2] = {16000.0, 15000.0};
    QVERIFY(!part.readSpectrum(file, half));
}

void TestOmegaExp::coverage()
{
    LanqorOmegaExp calculation(nullptr, 1.5);
    testSupport::MessageSpy spy(calculation);
    QVERIFY(calculation.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerNm, 720.0, plainLine))));
    QCOMPARE(spy.messages.size(), 2);
    QVERIFY(spy.contains("ends within the window of 5D0 -> 7F4"));
    QVERIFY(spy.contains("5D0 -> 7F5 lies outside"));
    QCOMPARE(calculation.getAreaOfTransition(5), 0.0);
    QCOMPARE(calculation.getBarycenterOfEnergy(5), 0.0);
    QVERIFY(calculation.calcOmegaExp());

    // Without 7F4 there is no result, and the earlier input stays.
    const double area = calculation.getAreaOfTransition(4);
    QVERIFY(!calculation.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerNm, 650.0, plainLine))));
    QVERIFY(calculation.getLastError().contains("7F4"));
    QCOMPARE(calculation.getAreaOfTransition(4), area);

    // Noise below zero: the band is absent.
    spy.messages.clear();
    QVERIFY(calculation.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerNm, 790.0, [](double nm, double y) {
            return plainLine(nm, nm > 640.0 && nm < 670.0 ? -0.01 : y);
        }))));
    QCOMPARE(calculation.getAreaOfTransition(3), 0.0);
    QVERIFY(spy.contains("5D0 -> 7F3 has no positive area"));
    QVERIFY(calculation.calcOmegaExp());
}

void TestOmegaExp::brokenSpectra_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message");
    const QByteArray spectrum = spectrumText(Recording::PowerPerNm, 790.0, plainLine);
    const int middle = spectrum.indexOf('\n', spectrum.size() / 2) + 1;
    const QByteArray line =
        "line " + QByteArray::number(spectrum.left(middle).count('\n') + 1) + ':';
    const auto inserted = [&](const char *text) {
        return QByteArray(spectrum).insert(middle, text);
    };
    QTest::newRow("empty") << QByteArray() << "no spectrum found";
    QTest::newRow("one column") << QByteArray("580\n590\n") << "no spectrum found";
    QTest::newRow("commas that may be decimal")
        << QByteArray("580,1,2,5\n590,1,2,6\n") << "no spectrum found";
    QTest::newRow("words between") << inserted("lamp changed\n") << "is broken";
    QTest::newRow("backwards") << inserted("560.1 0\n") << line.constData();
    QTest::newRow("thousands") << QByteArray("600.5\t999\n601.0\t1,002\n") << "line 2:";
    QTest::newRow("a point twice") << QByteArray("600 1\n600 1\n") << "line 2:";
    QTest::newRow("two spectra") << spectrum + spectrum << "line 4002:";
    QTest::newRow("neither nm nor cm^-1")
        << QByteArray("600 1\n15000 2\n16000 3\n") << "600 to 16000";
    QTest::newRow("negative wavelengths") << QByteArray("-600 1\n-500 2\n") << "-600 to -500";
    QTest::newRow("excitation") << QByteArray("300 1\n400 2\n") << "7F1";
}

void TestOmegaExp::brokenSpectra()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, message);
    LanqorOmegaExp calculation(nullptr, 1.5);
    const QString file = scratchSpectrum(text);
    QVERIFY(!calculation.readSpectrum(file));
    QVERIFY2(calculation.getLastError().contains(message), qPrintable(calculation.getLastError()));
    QVERIFY(calculation.getLastError().contains(file));
}

void TestOmegaExp::damagedSpectra()
{
    QByteArray text;
    for (int nm = 570; nm <= 780; nm += 3)
        text += plainLine(nm, signal(Recording::PowerPerNm, 1.0e7 / nm) + 0.01);
    int results = 0;
    testSupport::damageFile(text, 60, 1500, [&results](const QString &path) {
        LanqorOmegaExp calculation(nullptr, 1.5);
        if (!calculation.readSpectrum(path))
            QVERIFY(!calculation.getLastError().isEmpty());
        else if (calculation.calcOmegaExp())
            results += std::isfinite(calculation.getOmega2Exp()) ? 1 : -10000;
    });
    QVERIFY(results > 0);
}

void TestOmegaExp::program()
{
    const auto run = [](const QString &arguments) {
        return testSupport::runProgram(
            QString("omega-exp " + arguments).split(' ', Qt::SkipEmptyParts));
    };
    const QString barycentres = " --barycentres 0,16921,16267,0,14470,0";
    const QString omega2 = "omega(2) =   17.5739e-20 cm^2 ";
    QVERIFY(run("--areas 0,1,10,0,1,0" + barycentres).output.contains(omega2));
    // Photon counts S/sigma of the same emission give the same parameters.
    const QString counts = QStringLiteral("--photon-counts --areas 0,%1,%2,0,%3,0")
                               .arg(1 / 16921.0, 0, 'g', 15)
                               .arg(10 / 16267.0, 0, 'g', 15)
                               .arg(1 / 14470.0, 0, 'g', 15);
    QVERIFY(run(counts + barycentres).output.contains(omega2));
    const QString table = testSupport::scratchFile(
        "bands.txt", "# J area barycentre\n1 1 16921\n4 1 14470 # weak\n\n2 10 16267\n");
    QVERIFY(run(table).output.contains(omega2));
    const QString spectrum =
        "--spectrum " + scratchSpectrum(spectrumText(Recording::PowerPerNm, 790.0, plainLine));
    QVERIFY(run(spectrum + " --lifetime 0.5 --windows 1=584-603,2=15620-16570")
                .output.contains("I(5D0 -> 7F1) = 8.7000"));

    const ProgramRun noFile = run("--spectrum /no/such/spectrum.txt");
    QCOMPARE(noFile.exitStatus, 1);
    QVERIFY(noFile.error.contains("/no/such/spectrum.txt"));
    const QString twice = testSupport::scratchFile("wrong.txt", "1 1 16921\n1 2 16900\n");
    QVERIFY(run(twice).error.contains("line 2"));
    for (const QString &wrong :
         {QString(), QString("--areas 1,2"), table + " --n 0.5", table + " --lifetime -1",
          table + " --axis nm", table + ' ' + spectrum, spectrum + " --windows 6=800-830",
          spectrum + " --axis eV"})
        QCOMPARE(run(wrong).exitStatus, 2);
}

QTEST_GUILESS_MAIN(TestOmegaExp)
#include "tst_omegaexp.moc"
