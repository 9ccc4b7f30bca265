#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/OmegaExpResults.h>

#include "TestSupport.h"
#include "intensity/radiativeRates_p.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <functional>

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
struct Recording
{
    bool isPerNm = true;
    bool isPower = true;
};

/// A spectrum from 560 to @p lastNm nm in lines "x y" of 4001 points, with @p added to each signal.
QByteArray spectrumText(
    const Recording &recording = {}, double lastNm = 790.0,
    const std::function<double(double)> &added = [](double) { return 0.0; })
{
    QByteArray text;
    for (int i = 0; i <= 4000; ++i) {
        const double nm = 560.0 + (lastNm - 560.0) * i / 4000.0;
        const double sigma = 1.0e7 / nm;
        const double y = powerPerWavenumber(sigma) * (recording.isPerNm ? 1.0e7 / (nm * nm) : 1.0) /
                         (recording.isPower ? 1.0 : sigma);
        text += QByteArray::number(recording.isPerNm ? nm : sigma, 'g', 12) + ' ' +
                QByteArray::number(y + added(nm), 'g', 12) + '\n';
    }
    return text;
}

QString scratchSpectrum(const QByteArray &text)
{
    return testSupport::scratchFile("spectrum.txt", text);
}

/// A calculation that has read a spectrum.
struct Measured
{
    explicit Measured(const QByteArray &text, const EmissionSpectrumOptions &options = {})
        : isRead(calculation.readSpectrum(scratchSpectrum(text), options))
    {}
    double area(int J) const { return calculation.getAreaOfTransition(J); }
    double barycentre(int J) const { return calculation.getBarycenterOfEnergy(J); }

    LanqorOmegaExp calculation{nullptr, 1.5};
    testSupport::MessageSpy spy{calculation};
    bool isRead;
};

} // namespace

class TestOmegaExp : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void publishedCase();
    void inputThatGivesNoResult();
    void reports();
    void spectrumOnEitherAxis();
    void columnSeparators();
    void baselineAndWindows();
    void coverage();
    void brokenSpectra();
    void damagedSpectra();
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

void TestOmegaExp::inputThatGivesNoResult()
{
    const struct
    {
        std::size_t J;
        double area, barycentre, n;
        const char *message;
    } cases[] = {
        {1, 0.0, 16921.0, 1.5, "5D0 -> 7F1"},   {1, 1.0, 0.0, 1.5, "5D0 -> 7F1"},
        {2, 1.0, 0.0, 1.5, "5D0 -> 7F2"},       {4, 1.0, 0.0, 1.5, "5D0 -> 7F4"},
        {5, 0.1, 0.0, 1.5, "5D0 -> 7F5"},       {3, -0.1, 15300.0, 1.5, "5D0 -> 7F3"},
        {2, std::nan(""), 16267.0, 1.5, "5D0"}, {1, 1.0, 16921.0, 0.0, "index"},
        {1, 1.0, 1e120, 1.5, "beyond"},
    };
    LanqorOmegaExp inNanometres(nullptr, 1.5);
    setUp(inNanometres, publishedAreas, {0.0, 16921.0, 612.0, 0.0, 13000.0, 0.0});
    QVERIFY(inNanometres.getBarycentreError().contains("612 nm is 16339.9 cm^-1"));
    QVERIFY(inNanometres.getWarnings().contains("the barycentre of 5D0 -> 7F4, 13000 cm^-1, lies "
                                                "outside the usual place of this band, 13793 to "
                                                "14925 cm^-1"));
    for (const auto &wrong : cases) {
        LanqorOmegaExp calculation(nullptr, wrong.n);
        const testSupport::MessageSpy spy(calculation);
        Values S = publishedAreas;
        Values sigma = publishedBarycentres;
        S[wrong.J] = wrong.area;
        sigma[wrong.J] = wrong.barycentre;
        setUp(calculation, S, sigma);
        QVERIFY2(!calculation.calcOmegaExp(), wrong.message);
        QVERIFY2(spy.contains(wrong.message), qPrintable(calculation.getLastError()));
        QCOMPARE(spy.messages, QStringList(calculation.getLastError()));
        QCOMPARE(calculation.getAradExp(), 0.0);
        QVERIFY(calculation.createOutputFile(QString()).isEmpty());
    }
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
    setUp(calculation, {0.0, 1.0, 0.0, 0.0, 0.7, 0.0}, {0.0, 16921.0, 0.0, 0.0, 14470.0, 0.0});
    QVERIFY(reportWith(0.0).isEmpty());
    QVERIFY(calculation.calcOmegaExp());
    QCOMPARE(calculation.getOmega2Exp(), 0.0);
    QVERIFY(std::isinf(calculation.getR02()));
    calculation.setLifeTime(0.0);
    const QByteArray missing = LanqorOmegaExp::makeTables(calculation.getResults()).toCsv();
    QVERIFY(missing.contains("\nr02,,1\n") && missing.contains("\nlifetime,,ms\n"));
    const QString centred = reportWith(0.0);
    QVERIFY(!centred.isEmpty() && !centred.contains("inf") && !centred.contains("nan"));
}

// One emission, recorded in four ways (along wavenumbers in descending order), has the same areas
// and barycentres.
void TestOmegaExp::spectrumOnEitherAxis()
{
    using Signal = EmissionSpectrumOptions::Signal;
    for (const Recording &recording : {Recording{true, true}, Recording{false, true},
                                       Recording{true, false}, Recording{false, false}}) {
        EmissionSpectrumOptions options;
        options.signal = recording.isPower ? Signal::EmittedPower : Signal::PhotonCounts;
        const Measured right(spectrumText(recording), options);
        QVERIFY2(right.isRead, qPrintable(right.calculation.getLastError()));
        QVERIFY(right.spy.messages.isEmpty());
        for (int J = 0; J < 6; ++J) {
            const auto level = static_cast<std::size_t>(J);
            // The windows leave out the wings beyond five standard deviations.
            COMPARE_NEAR(right.area(J) / bandAreas[level], 1.0, 1e-6);
            COMPARE_NEAR(right.barycentre(J), bandCentres[level], 1e-3);
        }
        // The wrong kind weights by the wavenumber once too often or too seldom.
        options.signal = recording.isPower ? Signal::PhotonCounts : Signal::EmittedPower;
        const Measured wrong(spectrumText(recording), options);
        const double ratio = wrong.area(2) / wrong.area(1) / (right.area(2) / right.area(1));
        const double factor = bandCentres[2] / bandCentres[1];
        COMPARE_NEAR(ratio, recording.isPower ? factor : 1.0 / factor, 1e-4);
    }
}

void TestOmegaExp::columnSeparators()
{
    const QByteArray plain = spectrumText();
    const auto with = [&plain](const char *separator) {
        return QByteArray(plain).replace(" ", separator);
    };
    for (const QByteArray &text :
         {with(";"), with(","), with(", "), with("\t").replace('.', ','),
          with("\t").replace("\n", "\t1.0\r\n"), "559,0,1\n" + with(",").replace("\n", ",1\n"),
          "\xef\xbb\xbf"
          "Sample 12\nWavelength (nm)  S1 / R1\n# 300 K\n\n" +
              plain + "\n# end\nXYDATA END\n"}) {
        const Measured measured(text);
        QVERIFY2(measured.isRead, qPrintable(measured.calculation.getLastError()));
        COMPARE_NEAR(measured.area(2), bandAreas[2], 1e-6);
        COMPARE_NEAR(measured.barycentre(4), bandCentres[4], 1e-3);
    }
}

void TestOmegaExp::baselineAndWindows()
{
    // A background that rises along the recorded axis; the windows' ends lie between points.
    const QByteArray text = spectrumText({}, 790.0, [](double nm) { return 1e-3 * (nm - 500.0); });
    EmissionSpectrumOptions chosen;
    chosen.windows[1] = {1.0e7 / 603.3, 1.0e7 / 584.7};
    // The integral of the background over the window, in closed form.
    const double background = 0.5e-3 * (103.3 * 103.3 - 84.7 * 84.7);
    COMPARE_NEAR(Measured(text, chosen).area(1), bandAreas[1] + background, 1e-5);
    chosen.baseline = EmissionSpectrumOptions::Baseline::Linear;
    const Measured corrected(text, chosen);
    for (int J = 0; J < 6; ++J) {
        const auto level = static_cast<std::size_t>(J);
        COMPARE_NEAR(corrected.area(J), bandAreas[level], 2e-4);
        COMPARE_NEAR(corrected.barycentre(J), bandCentres[level], 1.0);
    }
    // A window shorter than the band gives the part of it, here the upper half.
    EmissionSpectrumOptions half;
    half.windows[2] = {bandCentres[2], bandCentres[2] + 300.0};
    const Measured part(spectrumText({false, true}), half);
    COMPARE_NEAR(part.area(2), 0.5 * bandAreas[2], 1e-4);
    COMPARE_NEAR(part.barycentre(2), bandCentres[2] + bandWidth * std::sqrt(2.0 / M_PI), 0.01);
    const auto warned = [](const Measured &measured, const char *words) {
        return measured.calculation.getWarnings().join('\n').contains(words);
    };
    QVERIFY(warned(part, "edge of the windows of 5D0 -> 7F2 (99"));
    QVERIFY(warned(Measured(text), "edge") && corrected.calculation.getWarnings().isEmpty());
    half.windows[2].lowest = 15500.0;
    half.windows[1].lowest = 16500.0;
    QVERIFY(warned(Measured(spectrumText(), half), "overlap: the emission from 16500 to 16510"));
    half.windows[2] = {16000.0, 15000.0};
    QVERIFY(!Measured(text, half).isRead);
}

void TestOmegaExp::coverage()
{
    Measured cut(spectrumText({}, 720.0));
    QVERIFY(cut.isRead);
    QCOMPARE(cut.spy.messages.size(), 2);
    QVERIFY(cut.spy.contains("ends within the window of 5D0 -> 7F4"));
    QVERIFY(cut.spy.contains("5D0 -> 7F5 lies outside"));
    QVERIFY(cut.area(5) == 0.0 && cut.barycentre(5) == 0.0);
    QVERIFY(cut.calculation.calcOmegaExp());
    // Without 7F4 there is no result, and the earlier input stays.
    const double area = cut.area(4);
    QVERIFY(!cut.calculation.readSpectrum(scratchSpectrum(spectrumText({}, 650.0))));
    QVERIFY(cut.calculation.getLastError().contains("7F4"));
    QCOMPARE(cut.area(4), area);
    // Noise below zero: the bands are absent, 7F2 with a place at which its rate is 0.
    Measured noisy(
        spectrumText({}, 790.0, [](double nm) { return nm > 604.0 && nm < 670.0 ? -100.0 : 0.0; }));
    QVERIFY(noisy.isRead && noisy.calculation.calcOmegaExp());
    QVERIFY(noisy.area(2) == 0.0 && noisy.area(3) == 0.0 && noisy.barycentre(3) == 0.0);
}

void TestOmegaExp::brokenSpectra()
{
    const QByteArray spectrum = spectrumText();
    const int middle = spectrum.indexOf('\n', spectrum.size() / 2) + 1;
    const QByteArray line = "line " + QByteArray::number(spectrum.left(middle).count('\n') + 1);
    const QVector<QPair<QByteArray, QByteArray>> cases = {
        {"", "no spectrum found"},
        {"580\n590\n", "no spectrum found"},
        {"580,1,2,5\n590,1,2,6\n", "no spectrum found"}, // the commas may be decimal
        {QByteArray(spectrum).insert(middle, "lamp changed\n"), "is broken"},
        {QByteArray(spectrum).insert(middle, "560.1 0\n"), line + ':'},
        {"600.5\t999\n601.0\t1,002\n", "line 2:"}, // a thousand and two, or 1.002
        {"600 1\n600 1\n", "line 2:"},
        {spectrum + spectrum, "line 4002:"},
        {"600 1\n15000 2\n16000 3\n", "600 to 16000"}, // neither nm nor cm^-1
        {"-600 1\n-500 2\n", "-600 to -500"},
        {"300 1\n400 2\n", "7F1"}, // an excitation spectrum
    };
    for (const auto &broken : cases) {
        const Measured measured(broken.first);
        QVERIFY2(!measured.isRead, broken.second);
        const QString error = measured.calculation.getLastError();
        QVERIFY2(error.contains(broken.second) && error.contains("spectrum.txt"),
                 qPrintable(error));
    }
}

void TestOmegaExp::damagedSpectra()
{
    QByteArray text;
    for (int nm = 570; nm <= 780; nm += 3)
        text += QByteArray::number(nm) + ' ' +
                QByteArray::number(1e3 * powerPerWavenumber(1.0e7 / nm) + 0.01) + '\n';
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

QTEST_GUILESS_MAIN(TestOmegaExp)
#include "tst_omegaexp.moc"
