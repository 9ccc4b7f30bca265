#include "TestSupport.h"

#include <LanqorEngine/LanqorXtbRun.h>

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using testSupport::corpusFile;
using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

QString existing(const QString &name)
{
    return QFileInfo::exists(name) ? name : QString();
}

QByteArray water()
{
    return readAll(dataFile(QStringLiteral("xtb/h2o_s0.out")));
}

QString waterFile(const char *suffix)
{
    return dataFile(QStringLiteral("xtb/h2o_s0") + QLatin1String(suffix));
}

} // namespace

class TestXtbRun : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Energies and gaps of all runs of the corpus, which a separate script has read.
    void facts()
    {
        CORPUS_FILE(path, "xtb/facts.json");
        const QJsonObject all = QJsonDocument::fromJson(readAll(path)).object();
        int runs = 0;
        for (auto complex = all.begin(); complex != all.end(); ++complex) {
            const QJsonObject parts = complex.value().toObject();
            for (auto part = parts.begin(); part != parts.end(); ++part) {
                const QJsonObject fact = part.value().toObject();
                if (!fact[QStringLiteral("finished")].toBool())
                    continue;
                const QString base = QFileInfo(path).path() + QLatin1Char('/') + complex.key() +
                                     QLatin1Char('/') + part.key();
                LanqorXtbRun run(nullptr, base + QStringLiteral(".out"));
                QVERIFY2(run.readOutput(existing(base + QStringLiteral(".xyz")),
                                        existing(base + QStringLiteral(".charges"))),
                         qPrintable(run.getLastError()));
                const XtbRunResults results = run.getResults();
                QCOMPARE(results.energy, fact[QStringLiteral("energy_Eh")].toDouble());
                QCOMPARE(results.gap, fact[QStringLiteral("gap_eV")].toDouble());
                QCOMPARE(results.programCall, fact[QStringLiteral("call")].toString());
                QCOMPARE(results.isOptimisation, part.key() != QLatin1String("t1v"));
                QCOMPARE(results.unpairedElectrons, part.key() == QLatin1String("s0") ? 0 : 2);
                ++runs;
            }
        }
        QCOMPARE(runs, 27);
        LanqorXtbRun anion(nullptr, corpusFile(QStringLiteral("xtb/eu_dipic3/s0.out")));
        QVERIFY(anion.readOutput());
        QCOMPARE(anion.getResults().charge, -3);
        QCOMPARE(anion.getResults().atoms.size(), 46); // of the output itself
        QCOMPARE(anion.getResults().atoms.first().label, QStringLiteral("Eu"));
    }

    void refusedRuns_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *file, const char *words) {
            QTest::newRow(file) << QStringLiteral("xtb/") + QLatin1String(file)
                                << QString::fromLatin1(words);
        };
        row("failed_eu_l2_no_convergence/s0.out", "|grad| > 500, something is totally wrong!\"");
        row("failed_eu_phen2_no3_3/s0.out", "Self consistent charge iterator did not converge");
        row("failed_eu_phen2_no3_3/t1.out", "No input file given");
        row("collapsed_eu_l2_la/l2.cold", "is 0.002 eV");
        row("collapsed_eu_l2_la/l2.la", "is 0.019 eV");
        row("nan_gradient_normal_termination/eu_nan_single_point.out", "\"gradient norm NaN");
    }
    void refusedRuns()
    {
        QFETCH(QString, file);
        QFETCH(QString, words);
        const QString path = corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorXtbRun run(nullptr, path);
        QVERIFY(!run.readOutput());
        QVERIFY2(run.getLastError().contains(words), qPrintable(run.getLastError()));
    }

    /// One change to a good run, and what is said; without words it stays good.
    void changedRun_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *name, const char *from, const char *to, const char *words) {
            QTest::newRow(name) << QByteArray(from) << QByteArray(to) << QString::fromUtf8(words);
        };
        row("unchanged", "xtb", "xtb", "");
        row("killed", " * finished run on", "", "has no end");
        row("other method", "GFN1-xTB      ", "GFN2-xTB      ", "is a run of GFN2-xTB");
        row("no number", "iterations        ", "NaN               ", "value that is no number");
        row("ratio of zeros", "(-100.00%)", "(    NaN%)", "");
        row("file of that name", "geom.xyz", "NaN.xyz", "");
        row("not converged", "GEOMETRY OPTIMIZATION CONVERGED", "FAILED TO CONVERGE",
            "is not optimised");
        row("SCF", "convergence criteria satisfied after", "convergence criteria cannot be",
            "did not converge");
        row("collapsed", "| HOMO-LUMO GAP  ", "| HOMO-LUMO GAP  0.0021 eV", "below 1.5 eV");
        row("no energy", "| TOTAL ENERGY ", "| TOTAL ENERGY ***", "TOTAL ENERGY");
        row("atom twice", "H      2, 3", "H      1, 2", "each atom once");
        row("another complex", "H      2, 3", "H      2-4", "another complex");
        row("other order", "   1    8 O      1\n    2    1 H      2, 3",
            "   1    1 H      1-2\n    2    8 O      3", "another order of atoms");
        row("charge", "total charge              -0.", "total charge              -1.",
            "charges of");
        row("no xtb", "xtb version", "other program", "no output of xtb");
    }
    void changedRun()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, words);
        QVERIFY(water().contains(from));
        LanqorXtbRun run(nullptr,
                         scratchFile(QStringLiteral("run.out"), water().replace(from, to)));
        const bool isRead = run.readOutput(waterFile(".xyz"), waterFile(".charges"));
        QVERIFY2(isRead == words.isEmpty(), qPrintable(run.getLastError()));
        QVERIFY2(run.getLastError().contains(words), qPrintable(run.getLastError()));
    }

    void temperatureAndMedium()
    {
        QByteArray text = water();
        text.replace("  300.0000000 ", " 1000.0000000 ");
        text.replace("      * Dispersion:", "      * Solvation model:               ALPB\n"
                                            "        Solvent                        water\n"
                                            "      * Dispersion:");
        LanqorXtbRun run(nullptr, scratchFile(QStringLiteral("run.out"), text));
        QVERIFY2(run.readOutput(), qPrintable(run.getLastError()));
        QCOMPARE(run.getResults().solvent, QStringLiteral("water (ALPB)"));
        QCOMPARE(run.getResults().warnings.filter(QStringLiteral("1000 K")).size(), 1);
    }

    /// Of geometry and charges: another one, and none.
    void filesOfAnotherRun()
    {
        LanqorXtbRun run(nullptr, waterFile(".out"));
        QByteArray moved = readAll(waterFile(".xyz"));
        moved.replace("O            ", "O           1");
        QVERIFY(!run.readOutput(scratchFile(QStringLiteral("moved.xyz"), moved)));
        QVERIFY(run.getLastError().contains(QStringLiteral("is not the geometry at the end")));
        QVERIFY(!run.readOutput(QString(), scratchFile(QStringLiteral("charges"), "0.1\nNaN\n")));
        QVERIFY(run.getLastError().contains(QStringLiteral("line 2")));
        QVERIFY(!run.readOutput(waterFile(".charges")));
        QVERIFY(!run.readOutput(QString(), QStringLiteral("/nowhere/charges")));
        QVERIFY(run.readOutput(waterFile(".xyz"), waterFile(".charges")));
    }

    /// Every run that is read has all its parts.
    void damage()
    {
        testSupport::damageFile(water(), 300, 1500, [](const QString &path) {
            LanqorXtbRun run(nullptr, path);
            if (run.readOutput(QString(), waterFile(".charges")))
                QCOMPARE(run.getResults().elements.size(), 3);
            else
                QVERIFY(!run.getLastError().isEmpty());
        });
    }
};

QTEST_GUILESS_MAIN(TestXtbRun)
#include "tst_xtbrun.moc"
