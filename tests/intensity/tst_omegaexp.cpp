#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmegaExp.h>

#include "TestSupport.h"
#include "intensity/radiativeRates_p.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <functional>
#include <limits>

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

QByteArray decimalComma(double x, double y)
{
    return plainLine(x, y).replace('.', ',').replace(' ', '\t');
}

QString scratchSpectrum(const QByteArray &text)
{
    return testSupport::scratchFile(QStringLiteral("spectrum.txt"), text);
}

EmissionSpectrumOptions options(EmissionSpectrumOptions::Signal signal)
{
    EmissionSpectrumOptions result;
    result.signal = signal;
    return result;
}

constexpr auto power = EmissionSpectrumOptions::Signal::EmittedPower;
constexpr auto photons = EmissionSpectrumOptions::Signal::PhotonCounts;

} // namespace

class TestOmegaExp : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void publishedCase();
    void inverseOfTheTheoreticalRate();
    void scaling();
    void bandsWithoutArea();
    void inputThatGivesNoResult_data();
    void inputThatGivesNoResult();
    void storedReport();
    void lifetimes();
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
    LanqorOmegaExp calculation(nullptr, 1.5);
    QCOMPARE(calculation.getAradExp(), 0.0);
    setUp(calculation, publishedAreas, publishedBarycentres);
    QVERIFY(calculation.calcOmegaExp());
    COMPARE_NEAR(calculation.getAradExp(), 637.23, 0.005); // 50.69 + 527.27 + 59.275
    COMPARE_NEAR(calculation.getOmega2Exp() * 1e20, 17.573924, 5e-7);
    COMPARE_NEAR(calculation.getOmega4Exp() * 1e20, 3.905230, 5e-7);
    QCOMPARE(calculation.getR02(), 17830.5);
}

// The theoretical rate of the same transition at the same wavenumber, written with other
// constants, must give back the rate from which Omega was derived.
void TestOmegaExp::inverseOfTheTheoreticalRate()
{
    for (const double n : {1.0, 1.33, 1.5}) {
        LanqorOmegaExp calculation(nullptr, n);
        setUp(calculation, {0.0, 2.0, 23.0, 0.0, 7.0, 0.0}, publishedBarycentres);
        QVERIFY(calculation.calcOmegaExp());
        const double A1 = 3.1e-12 * std::pow(n * 16921.0, 3);
        const double A2 = A1 * 11.5 * 16921.0 / 16267.0;
        const double A4 = A1 * 3.5 * 16921.0 / 14470.0;
        COMPARE_NEAR(radiativeRates::constArad(2, n) * calculation.getOmega2Exp() / A2, 1.0, 1e-6);
        COMPARE_NEAR(radiativeRates::constArad(4, n) * calculation.getOmega4Exp() / A4, 1.0, 1e-6);
        COMPARE_NEAR(calculation.getAradExp() / (A1 + A2 + A4), 1.0, 1e-14);
    }
}

void TestOmegaExp::scaling()
{
    const Values S = {0.05, 1.0, 9.0, 0.3, 2.0, 0.2};
    const Values sigma = {17240.0, 16900.0, 16280.0, 15350.0, 14390.0, 13350.0};
    LanqorOmegaExp one(nullptr, 1.0);
    setUp(one, S, sigma);
    QVERIFY(one.calcOmegaExp());

    // The unit of the areas does not matter, but for r02.
    LanqorOmegaExp other(nullptr, 1.0);
    Values scaled = S;
    for (double &area : scaled)
        area *= 4096.0;
    setUp(other, scaled, sigma);
    QVERIFY(other.calcOmegaExp());
    QCOMPARE(other.getOmega2Exp(), one.getOmega2Exp());
    QCOMPARE(other.getAradExp(), one.getAradExp());
    QCOMPARE(other.getR02(), one.getR02() / 4096.0);

    // All rates go as n^3; Omega as n^3/chi, which is 8/8 for n = 2.
    LanqorOmegaExp doubled(nullptr, 2.0);
    setUp(doubled, S, sigma);
    QVERIFY(doubled.calcOmegaExp());
    COMPARE_NEAR(doubled.getAradExp() / one.getAradExp(), 8.0, 1e-14);
    COMPARE_NEAR(doubled.getOmega4Exp() / one.getOmega4Exp(), 1.0, 1e-14);
}

void TestOmegaExp::bandsWithoutArea()
{
    LanqorOmegaExp calculation(nullptr, 1.5);
    // No 7F2 in the field of an inversion centre.
    setUp(calculation, {0.0, 1.0, 0.0, 0.0, 0.7, 0.0}, publishedBarycentres);
    QVERIFY(calculation.calcOmegaExp());
    QCOMPARE(calculation.getOmega2Exp(), 0.0);
    QVERIFY(std::isinf(calculation.getR02()));
    const QString report = calculation.createOutputFile(QString());
    QVERIFY(!report.isEmpty());
    QVERIFY(!report.contains(QLatin1String("inf")) && !report.contains(QLatin1String("nan")));
}

void TestOmegaExp::inputThatGivesNoResult_data()
{
    QTest::addColumn<int>("J");
    QTest::addColumn<double>("area");
    QTest::addColumn<double>("barycentre");
    QTest::addColumn<double>("n");
    QTest::addColumn<QString>("message");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QString band = QStringLiteral("5D0 -> 7F%1");
    QTest::newRow("no 7F1") << 1 << 0.0 << 16921.0 << 1.5 << band.arg(1);
    QTest::newRow("no barycentre of 7F1") << 1 << 1.0 << 0.0 << 1.5 << band.arg(1);
    QTest::newRow("no barycentre of 7F2") << 2 << 0.0 << 0.0 << 1.5 << band.arg(2);
    QTest::newRow("no barycentre of 7F4") << 4 << 1.0 << 0.0 << 1.5 << band.arg(4);
    QTest::newRow("area of 7F0 without barycentre") << 0 << 0.1 << 0.0 << 1.5 << band.arg(0);
    QTest::newRow("area of 7F5 without barycentre") << 5 << 0.1 << 0.0 << 1.5 << band.arg(5);
    QTest::newRow("negative area") << 3 << -0.1 << 15300.0 << 1.5 << band.arg(3);
    QTest::newRow("no number") << 2 << nan << 16267.0 << 1.5 << band.arg(2);
    QTest::newRow("refractive index 0") << 1 << 1.0 << 16921.0 << 0.0 << QStringLiteral("index");
    QTest::newRow("beyond doubles") << 1 << 1.0 << 1e120 << 1.5 << QStringLiteral("beyond");
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

void TestOmegaExp::storedReport()
{
    LanqorOmegaExp calculation(nullptr, 1.5);
    setUp(calculation, {0.0123, 1.0, 9.8765, 0.3, 2.25, 0.0},
          {17241.5, 16910.25, 16270.0, 15352.0, 14385.5, 0.0});
    calculation.setFileName(QStringLiteral("emission.txt"));
    calculation.setLifeTime(0.42);
    QVERIFY(calculation.calcOmegaExp());
    const QString file = testSupport::scratchFile(QStringLiteral("report.txt"), QByteArray());
    QString report = calculation.createOutputFile(file);
    QCOMPARE(QString::fromUtf8(testSupport::readAll(file)), report);
    const QString head = LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n");
    QVERIFY(report.startsWith(head));
    const QString stored = QString::fromUtf8(
        testSupport::readAll(testSupport::dataFile(QStringLiteral("reports/omega_exp.txt"))));
    const QString difference = testSupport::reportDifference(report.mid(head.size()), stored, 1e-6);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));

    const QString unwritable = QStringLiteral("/no/such/folder/report.txt");
    QVERIFY(calculation.createOutputFile(unwritable).isEmpty());
    QVERIFY(calculation.getLastError().contains(unwritable));

    // Results of other input must not stand beside the new areas.
    setUp(calculation, publishedAreas, publishedBarycentres);
    QVERIFY(calculation.createOutputFile(QString()).isEmpty());
}

void TestOmegaExp::lifetimes()
{
    LanqorOmegaExp calculation(nullptr, 1.5);
    setUp(calculation, publishedAreas, publishedBarycentres);
    QVERIFY(calculation.calcOmegaExp());
    const auto reportWith = [&calculation](double lifeTime) {
        calculation.setLifeTime(lifeTime);
        return calculation.createOutputFile(QString());
    };
    QCOMPARE(reportWith(0.0).count(QStringLiteral("not given")), 3);
    const QString report = reportWith(1.0); // 1000 s^-1 in all, 637.23 of them radiative
    QVERIFY(report.contains(QStringLiteral("    Experimental Lifetime Used = 1.0000 ms\n\n")));
    QVERIFY(report.contains(QStringLiteral("    Anrad = 362.77 s^-1\n\n")));
    QVERIFY(report.contains(QStringLiteral("    Quantum Efficiency = 63.72 %\n")));
    QVERIFY(reportWith(2.0).contains(QStringLiteral("Arad exceeds 1/lifetime")));
    for (const double impossible : {-1.0, 1e-320, std::nan("")})
        QVERIFY(reportWith(impossible).isEmpty());
}

void TestOmegaExp::spectrumOnEitherAxis_data()
{
    QTest::addColumn<int>("recording");
    QTest::addColumn<bool>("countsPhotons");
    QTest::newRow("power per nm") << int(Recording::PowerPerNm) << false;
    QTest::newRow("power per cm^-1, descending") << int(Recording::PowerPerWavenumber) << false;
    QTest::newRow("photons per nm") << int(Recording::PhotonsPerNm) << true;
    QTest::newRow("photons per cm^-1") << int(Recording::PhotonsPerWavenumber) << true;
}

// One emission, recorded in four ways, has the same areas and barycentres.
void TestOmegaExp::spectrumOnEitherAxis()
{
    QFETCH(int, recording);
    QFETCH(bool, countsPhotons);
    LanqorOmegaExp calculation(nullptr, 1.5);
    const testSupport::MessageSpy spy(calculation);
    const QString file =
        scratchSpectrum(spectrumText(static_cast<Recording>(recording), 790.0, plainLine));
    QVERIFY2(calculation.readSpectrum(file, options(countsPhotons ? photons : power)),
             qPrintable(calculation.getLastError()));
    QVERIFY(spy.messages.isEmpty());
    for (int J = 0; J < 6; ++J) {
        const auto level = static_cast<std::size_t>(J);
        // The windows leave out the wings beyond five standard deviations.
        COMPARE_NEAR(calculation.getAreaOfTransition(J) / bandAreas[level], 1.0, 1e-6);
        COMPARE_NEAR(calculation.getBarycenterOfEnergy(J), bandCentres[level], 1e-3);
    }
    QCOMPARE(calculation.getFileName(), file);

    // The wrong kind of detector weights by the wavenumber once too often or too seldom.
    LanqorOmegaExp wrong(nullptr, 1.5);
    QVERIFY(wrong.readSpectrum(file, options(countsPhotons ? power : photons)));
    const double ratio = (wrong.getAreaOfTransition(2) / wrong.getAreaOfTransition(1)) /
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
    QTest::newRow("tabs") << with('\t');
    QTest::newRow("semicolons") << with(';');
    QTest::newRow("commas") << with(',');
    QTest::newRow("comma and blank") << with(',').replace(",", ", ");
    QTest::newRow("decimal commas") << spectrumText(Recording::PowerPerNm, 790.0, decimalComma);
    QTest::newRow("third column, Windows lines")
        << QByteArray(plain).replace("\n", "\t1.0\r\n").replace(' ', '\t');
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
    QVERIFY(spy.contains(QStringLiteral("ends within the window of 5D0 -> 7F4")));
    QVERIFY(spy.contains(QStringLiteral("5D0 -> 7F5 lies outside")));
    QCOMPARE(calculation.getAreaOfTransition(5), 0.0);
    QCOMPARE(calculation.getBarycenterOfEnergy(5), 0.0);
    QVERIFY(calculation.calcOmegaExp());

    // Without 7F4 there is no result, and the earlier input stays.
    const double area = calculation.getAreaOfTransition(4);
    QVERIFY(!calculation.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerNm, 650.0, plainLine))));
    QVERIFY(calculation.getLastError().contains(QStringLiteral("7F4")));
    QCOMPARE(calculation.getAreaOfTransition(4), area);

    // Noise below zero: the band is absent.
    spy.messages.clear();
    QVERIFY(calculation.readSpectrum(
        scratchSpectrum(spectrumText(Recording::PowerPerNm, 790.0, [](double nm, double y) {
            return plainLine(nm, nm > 640.0 && nm < 670.0 ? -0.01 : y);
        }))));
    QCOMPARE(calculation.getAreaOfTransition(3), 0.0);
    QVERIFY(spy.contains(QStringLiteral("5D0 -> 7F3 has no positive area")));
    QVERIFY(calculation.calcOmegaExp());
}

void TestOmegaExp::brokenSpectra_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("message");
    const QByteArray spectrum = spectrumText(Recording::PowerPerNm, 790.0, plainLine);
    const int middle = spectrum.indexOf('\n', spectrum.size() / 2) + 1;
    QTest::newRow("empty") << QByteArray() << QStringLiteral("no spectrum found");
    QTest::newRow("words") << QByteArray("a b\nc d\n") << QStringLiteral("no spectrum found");
    QTest::newRow("one column") << QByteArray("580\n590\n") << QStringLiteral("no spectrum found");
    QTest::newRow("commas that may be decimal")
        << QByteArray("580,1,2,5\n590,1,2,6\n") << QStringLiteral("no spectrum found");
    QTest::newRow("a line of words between")
        << QByteArray(spectrum).insert(middle, "lamp changed\n") << QStringLiteral("is broken");
    QTest::newRow("backwards")
        << QByteArray(spectrum).insert(middle, "560.1 0\n")
        << QStringLiteral("line %1:").arg(spectrum.left(middle).count('\n') + 1);
    QTest::newRow("a point twice") << QByteArray("600 1\n600 1\n") << QStringLiteral("line 2:");
    QTest::newRow("two spectra") << spectrum + spectrum << QStringLiteral("line 4002:");
    QTest::newRow("neither nm nor cm^-1")
        << QByteArray("600 1\n15000 2\n16000 3\n") << QStringLiteral("600 to 16000");
    QTest::newRow("negative wavelengths")
        << QByteArray("-600 1\n-500 2\n") << QStringLiteral("-600 to -500");
    QTest::newRow("excitation") << QByteArray("300 1\n400 2\n") << QStringLiteral("7F1");
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
    const auto run = [](const QStringList &arguments) {
        return testSupport::runProgram(QStringList(QStringLiteral("omega-exp")) + arguments);
    };
    const ProgramRun numbers =
        run({QStringLiteral("--areas"), QStringLiteral("0,1,10,0,1,0"),
             QStringLiteral("--barycentres"), QStringLiteral("0,16921,16267,0,14470,0")});
    QCOMPARE(numbers.exitStatus, 0);
    QVERIFY(numbers.output.contains(QStringLiteral("omega(2) =   17.5739e-20 cm^2 ")));

    const QString table = testSupport::scratchFile(
        QStringLiteral("bands.txt"),
        "# J area barycentre\n1 1 16921\n4 1 14470 # weak\n\n2 10 16267\n");
    const ProgramRun fromTable = run({table});
    QVERIFY(fromTable.output.contains(QStringLiteral("omega(4) =    3.9052e-20 cm^2 ")));

    // Photon counts S/sigma of the same emission give the same parameters.
    const ProgramRun counted =
        run({QStringLiteral("--photon-counts"), QStringLiteral("--areas"),
             QStringLiteral("0,%1,%2,0,%3,0")
                 .arg(1 / 16921.0, 0, 'g', 15)
                 .arg(10 / 16267.0, 0, 'g', 15)
                 .arg(1 / 14470.0, 0, 'g', 15),
             QStringLiteral("--barycentres"), QStringLiteral("0,16921,16267,0,14470,0")});
    QVERIFY(counted.output.contains(QStringLiteral("omega(2) =   17.5739e-20 cm^2 ")));

    const QString spectrum = scratchSpectrum(spectrumText(Recording::PowerPerNm, 790.0, plainLine));
    const ProgramRun measured =
        run({QStringLiteral("--spectrum"), spectrum, QStringLiteral("--lifetime"),
             QStringLiteral("0.5"), QStringLiteral("--windows"),
             QStringLiteral("1=584-603,2=15620-16570")});
    QCOMPARE(measured.exitStatus, 0);
    QVERIFY(measured.output.contains(QStringLiteral("I(5D0 -> 7F1) = 8.7000")));

    const QString missing = QStringLiteral("/no/such/spectrum.txt");
    const ProgramRun noFile = run({QStringLiteral("--spectrum"), missing});
    QCOMPARE(noFile.exitStatus, 1);
    QVERIFY(noFile.error.contains(missing));
    const QString wrongTable =
        testSupport::scratchFile(QStringLiteral("wrong.txt"), "1 1 16921\n1 2 16900\n");
    QVERIFY(run({wrongTable}).error.contains(QStringLiteral("line 2")));
    const QStringList none;
    for (const QStringList &wrong :
         {none, QStringList{QStringLiteral("--areas"), QStringLiteral("1,2")},
          QStringList{table, QStringLiteral("--n"), QStringLiteral("0.5")},
          QStringList{table, QStringLiteral("--lifetime"), QStringLiteral("-1")},
          QStringList{table, QStringLiteral("--spectrum"), spectrum},
          QStringList{QStringLiteral("--spectrum"), spectrum, QStringLiteral("--windows"),
                      QStringLiteral("6=800-830")},
          QStringList{QStringLiteral("--spectrum"), spectrum, QStringLiteral("--axis"),
                      QStringLiteral("eV")}})
        QCOMPARE(run(wrong).exitStatus, 2);
}

QTEST_GUILESS_MAIN(TestOmegaExp)
#include "tst_omegaexp.moc"
