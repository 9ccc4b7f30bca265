#include "TestSupport.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

using testSupport::dataFile;
using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

const QString complexOutput = QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out");

/// A Gaussian list of two singlets, as far as the reader of absorption data looks.
const QByteArray gaussianStates =
    " Entering Gaussian System, Link 0=g16\n"
    " Excitation energies and oscillator strengths:\n\n"
    " Excited State   1:      Singlet-A      4.1000 eV  302.40 nm  f=0.2500  <S**2>=0.000\n"
    "      21 -> 22         0.69000\n"
    " Excited State   2:      Singlet-A      4.9000 eV  253.03 nm  f=0.6100  <S**2>=0.000\n"
    "      20 -> 22         0.68000\n"
    " SavETr:  write IOETrn=   770 NScale= 10 NData=  16 NLR=1 NState=    2 LETran=      46.\n";

/// The words of a picture; empty when it is no well-formed SVG.
QString textOfSvg(const QString &file)
{
    QXmlStreamReader reader(testSupport::readAll(file));
    QString text;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            text += reader.text();
    }
    return reader.hasError() ? QString() : text.simplified();
}

bool isPicture(const QString &file)
{
    const QByteArray bytes = testSupport::readAll(file);
    if (file.endsWith(QLatin1String("svg")))
        return !textOfSvg(file).isEmpty();
    return bytes.size() > 5000 &&
           bytes.startsWith(file.endsWith(QLatin1String("png")) ? "\x89PNG" : "%PDF-");
}

} // namespace

class TestStructureCommands : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    static ProgramRun run(const char *command, const QStringList &arguments)
    {
        // No display, and a platform that cannot be had.
        return runProgram(QStringList(QLatin1String(command)) + arguments, QString(),
                          {{QStringLiteral("DISPLAY"), QString()},
                           {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none")}});
    }

private Q_SLOTS:
    void convertWritesWhatTheSuffixTells()
    {
        for (const char *name :
             {"a.mop", "a.gjf", "a.inp", "a.orcinp", "a.sph", "a.zmt", "a.xyz"}) {
            const ProgramRun done = run("convert", {dataFile(complexOutput), path(name)});
            QVERIFY2(done.exitStatus == 0, qPrintable(done.error));
            QVERIFY(QFileInfo(path(name)).size() > 100);
        }
        QVERIFY(testSupport::readAll(path("a.mop")).contains("SPARKLE CHARGE=1\n\n\nEu"));
        QVERIFY(testSupport::readAll(path("a.orcinp")).contains("*xyz -2 1\n")); // +1 less Eu3+
        const ProgramRun back = run("convert", {path("a.zmt"), path("b.xyz")});
        QVERIFY2(back.exitStatus == 0, qPrintable(back.error));
    }

    void organizePrintsTheLigands()
    {
        const ProgramRun done =
            run("organize",
                {dataFile(QStringLiteral("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out")),
                 path("o.mop")});
        QVERIFY2(done.exitStatus == 0, qPrintable(done.error));
        QVERIFY(done.output.contains(QLatin1String("Eu, coordination number 9")));
        QVERIFY(done.output.contains(QLatin1String("C15H11N3          8 9 10")));
        QVERIFY(testSupport::readAll(path("o.mop")).contains("SPARKLE CHARGE=0\n\n\nEu"));
        // The charge is that of the output.
        const ProgramRun charged = run("organize", {dataFile(complexOutput), path("p.mop")});
        QVERIFY2(charged.exitStatus == 0, qPrintable(charged.error));
        QVERIFY(testSupport::readAll(path("p.mop")).contains("SPARKLE CHARGE=1\n\n\nEu"));
    }

    void spectrumWritesCurveAndPicture()
    {
        const QString states =
            testSupport::scratchFile(QStringLiteral("states.log"), gaussianStates);
        for (const char *picture : {"s.svg", "s.png", "s.pdf"}) {
            const ProgramRun done =
                run("spectrum", {states, QStringLiteral("--range"), QStringLiteral("200:400"),
                                 QStringLiteral("--out"), path("s.esp"), QStringLiteral("--plot"),
                                 path(picture)});
            if (done.error.contains(QLatin1String("LANQOR_PLOTS=OFF")))
                QSKIP("built without plots");
            QVERIFY2(done.exitStatus == 0 && done.error.isEmpty(), qPrintable(done.error));
            QVERIFY2(isPicture(path(picture)), picture);
            QVERIFY(done.output.contains(QLatin1String("0.610000")));
        }
        QCOMPARE(testSupport::readAll(path("s.esp")).count('\n'), 1001);
        const QString words = textOfSvg(path("s.svg"));
        for (const char *word : {"wavelength / nm", "oscillator strength", "states.log", "300"})
            QVERIFY2(words.contains(QLatin1String(word)), qPrintable(words));
    }

    void yieldDrawsItsLevels()
    {
        const ProgramRun done = run(
            "yield",
            {QStringLiteral("--omega"), QStringLiteral("33,4.6,0"), QStringLiteral("--omega-ed"),
             QStringLiteral("0.3,0.2,0"), QStringLiteral("--singlet-energy"),
             QStringLiteral("28000"), QStringLiteral("--triplet-energy"), QStringLiteral("20500"),
             QStringLiteral("--rl-singlet"), QStringLiteral("4.5"), QStringLiteral("--rl-triplet"),
             QStringLiteral("5.1"), QStringLiteral("--plot"), path("y.svg")});
        if (done.error.contains(QLatin1String("LANQOR_PLOTS=OFF")))
            QSKIP("built without plots");
        QVERIFY2(done.exitStatus == 0, qPrintable(done.error));
        const QString words = textOfSvg(path("y.svg"));
        for (const char *word : {"energy / cm", "28000", "20500", "ligand triplets", "17293",
                                 "exchange transfer", "multipolar transfer"})
            QVERIFY2(words.contains(QLatin1String(word)), qPrintable(words));
    }

    void levelsDrawsAColumnForEachJ()
    {
        // The command changes its folder to that of the tables; the picture is still written here.
        const ProgramRun done =
            runProgram({QStringLiteral("levels"), QStringLiteral("--ion"), QStringLiteral("Eu"),
                        QStringLiteral("--max-energy"), QStringLiteral("20000"),
                        QStringLiteral("--plot"), QStringLiteral("l.svg")},
                       folder.path());
        if (done.error.contains(QLatin1String("LANQOR_PLOTS=OFF")))
            QSKIP("built without plots");
        QVERIFY2(done.exitStatus == 0, qPrintable(done.error));
        const QString words = textOfSvg(path("l.svg"));
        QCOMPARE(words.count(QString::fromUtf8("⁷F")), 7);
        QCOMPARE(words.count(QString::fromUtf8("⁵D")), 2);
        QVERIFY2(words.contains(QLatin1String("energy / cm")), qPrintable(words));
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("word");
        const QString out = dataFile(complexOutput);
        const QString states =
            testSupport::scratchFile(QStringLiteral("states.log"), gaussianStates);
        const auto row = [](const char *arguments, const QString &file, int status,
                            const char *word) {
            QTest::newRow(arguments)
                << QString::fromLatin1(arguments).arg(file).split(QLatin1Char(' ')) << status
                << QString::fromLatin1(word);
        };
        row("convert %1 c.pdb", out, 2, "c.pdb");
        row("convert %1 c.mop --charge one", out, 2, "one is not");
        row("convert %1 c.mop", QStringLiteral("/no/such.out"), 1, "/no/such.out does not exist.");
        row("organize %1 c.pdb", out, 1, "c.pdb");
        row("organize %1 c.mop", QStringLiteral("/no/such.mol2"), 1,
            "/no/such.mol2 does not exist.");
        row("organize %1 c.mop --charge 1.5", out, 2, "1.5 is not");
        row("spectrum %1", out, 1, "--program");
        row("spectrum %1 --range 200-400", states, 2, "200-400");
        row("spectrum %1 --range 500:600", states, 1, "500 and 600 nm");
        row("spectrum %1 --program word", states, 2, "gaussian");
        row("spectrum %1 --plot c.jpg", states, 2, "c.jpg");
        row("spectrum %1 --plot /no/such/folder/c.svg", states, 1, "/no/such/folder/c.svg");
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, word);
        const ProgramRun done = runProgram(arguments, folder.path());
        if (done.error.contains(QLatin1String("LANQOR_PLOTS=OFF")))
            QSKIP("built without plots");
        QCOMPARE(done.exitStatus, status);
        QVERIFY2(done.error.contains(word), qPrintable(done.error));
        QVERIFY(!QFileInfo::exists(path("c.mop")));
    }
};

QTEST_GUILESS_MAIN(TestStructureCommands)
#include "tst_structurecommands.moc"
