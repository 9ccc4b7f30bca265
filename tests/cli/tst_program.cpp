#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using testSupport::dataFile;
using testSupport::ProgramRun;
using testSupport::runProgram;
using testSupport::sourceFile;

namespace {

/// Runs a line of arguments; names that begin with a folder of the fixtures stand for their files.
ProgramRun run(const QString &line, const QString &folder = QString(),
               const QString &shellScript = QString())
{
    QStringList arguments = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString &argument : arguments) {
        if (argument.startsWith(QLatin1String("examples/")))
            argument = sourceFile(argument);
        else if (argument.startsWith(QLatin1String("tests/")))
            argument = dataFile(argument.mid(6));
    }
    return runProgram(arguments, folder, {}, shellScript);
}

} // namespace

/// Manners that all subcommands share.
class TestProgram : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    static QStringList commandNames()
    {
        QStringList names;
        // two blanks, the name, two or more blanks, the summary
        static const QRegularExpression row(QStringLiteral("\n  (\\w\\S*(?: \\w\\S*)?)  "));
        auto match = row.globalMatch(runProgram({QStringLiteral("--help")}).output);
        while (match.hasNext())
            names << match.next().captured(1);
        return names;
    }

private Q_SLOTS:
    void everyCommandHasHelpAndTellsWrongUseFromFailure()
    {
        const QStringList names = commandNames();
        QVERIFY(names.contains(QStringLiteral("sphere")));
        QVERIFY(names.contains(QStringLiteral("fit levels")));
        for (const QString &name : names) {
            const ProgramRun help = run(name + QStringLiteral(" --help"));
            QVERIFY2(help.exitStatus == 0 && help.error.isEmpty(), qPrintable(name));
            QVERIFY2(help.output.startsWith(QStringLiteral("Usage: lanqor ") + name),
                     qPrintable(help.output.left(200)));
            QVERIFY2(!help.output.contains(QRegularExpression(QStringLiteral("\n  -\\w <"))),
                     qPrintable(help.output)); // options with a value have two dashes
            const QString schema =
                QStringLiteral("share/LanqorEngine/schemas/%1.schema.json")
                    .arg(QString(name).replace(QLatin1Char(' '), QLatin1Char('-')));
            const bool hasResults = name != QLatin1String("show") &&
                                    help.output.contains(QLatin1String("--json <file>"));
            QVERIFY2(hasResults == QFile::exists(sourceFile(schema)), qPrintable(schema));
            const ProgramRun unknown = run(name + QStringLiteral(" --no-such-option"));
            QVERIFY2(unknown.exitStatus == 2 && unknown.output.isEmpty(), qPrintable(name));
            QVERIFY2(unknown.error.contains(QStringLiteral("no-such-option")),
                     qPrintable(unknown.error));
        }
        QCOMPARE(runProgram({}).exitStatus, 2);
        QCOMPARE(runProgram({QStringLiteral("no-such-command")}).exitStatus, 2);
        QVERIFY(run(QStringLiteral("yeild")).error.contains(QStringLiteral("\"yield\"")));
        QVERIFY(run(QStringLiteral("yield --omgea 1")).error.contains(QStringLiteral("--omega?")));
    }

    void manualIsWellFormedAndCompletionKnowsTheOptions()
    {
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("manual")));
        QCOMPARE(run(QStringLiteral("--write-manual manual"), folder.path()).exitStatus, 0);
        const QDir manual(path("manual"));
        const QStringList pages = manual.entryList({QStringLiteral("*.1")});
        QCOMPARE(pages.size(), commandNames().size() + 1);
        for (const QString &page : pages) {
            const ProgramRun groff =
                runProgram({}, QString(), {},
                           QStringLiteral("groff -man -ww -z -K utf8 ") + manual.filePath(page));
            QVERIFY2(groff.exitStatus == 0 && groff.error.isEmpty(), qPrintable(groff.error));
        }
        const auto complete = [&](const QString &words) {
            return runProgram(
                       {}, QString(), {},
                       QStringLiteral("_init_completion() { words=(%1); "
                                      "cword=$((${#words[@]} - 1)); cur=${words[cword]}; "
                                      "prev=${words[cword-1]}; }; _filedir() { echo \"$1\"; }; "
                                      ". %2; _lanqor; echo ${COMPREPLY[*]}")
                           .arg(words, manual.filePath(QStringLiteral("lanqor.bash"))))
                .output.simplified();
        };
        QCOMPARE(complete(QStringLiteral("lanqor fit om")), QStringLiteral("omega"));
        QCOMPARE(complete(QStringLiteral("lanqor fit levels --no-pol")),
                 QStringLiteral("--no-polish"));
        QCOMPARE(complete(QStringLiteral("lanqor yield --plot x")),
                 QStringLiteral("@(svg|png|pdf)"));
        QVERIFY(complete(QStringLiteral("lanqor sphere com")).contains(QStringLiteral("|cif|")));
    }

    // Each command that computes gives the numbers of its records as JSON and as CSV.
    void resultsAsData_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("parts");
        const auto row = [](const char *line, const char *parts) {
            QTest::newRow(line) << QString::fromLatin1(line)
                                << QString::fromLatin1(parts).split(QLatin1Char(' '));
        };
        row("fit omega tests/mopac/eu_cl2_h2o6_am1_int.out --omega2 3 --omega4 40 --points 2",
            "omega_fit groups fit_account fit_parameters solution solution_ranges");
        QFile::copy(dataFile(QStringLiteral("mopac/eu_acac3_phen_am1_allvec.out")), path("i.out"));
        row("indices i.out", "reactivity_indices");
        row("spectrum examples/data/eu_l2_zindos_excerpt.orcout",
            "spectrum transitions main_configurations curve");
        row("organize tests/mopac/eu_f_acac3_rm1_opt.out o.xyz", "structure ligands atoms");
        row("states tests/gaussian/eu_td5050_two_jobs_g16.log",
            "donor_states singlets singlet_excitations triplets triplet_excitations");
        row("yield --omega 33,4.6,0 --omega-ed 0,0,0 --singlet-energy 28000 --triplet-energy 20500 "
            "--rl-singlet 4.5 --rl-triplet 5.1 --t1-shift 90",
            "intensity_parameters emission emission_bands donors energy_transfer populations "
            "yield photon_shares given_values kinetic_constants");
    }
    void resultsAsData()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, parts);
        const ProgramRun both = run(line + QStringLiteral(" --json - --csv r.csv"), folder.path());
        QVERIFY2(both.exitStatus == 0, qPrintable(both.error));
        const QJsonObject results = QJsonDocument::fromJson(both.output.toUtf8()).object();
        QStringList names =
            parts + QStringList{"contents",        "run",        "run_arguments", "run_constants",
                                "run_input_files", "run_options"};
        names.sort();
        QCOMPARE(results.keys(), names);
        const QString csv = QString::fromUtf8(testSupport::readAll(path("r.csv")));
        // The text is that of a run without, and the tables in files those of the output.
        const ProgramRun text = run(line + QStringLiteral(" --json r.json"), folder.path());
        QCOMPARE(text.output, run(line, folder.path()).output);
        QCOMPARE(testSupport::readAll(path("r.json")), both.output.toUtf8());
        QCOMPARE(run(line + QStringLiteral(" --csv -"), folder.path()).output, csv);
        QCOMPARE(run(QStringLiteral("show r.json --csv -"), folder.path()).output, csv);
    }

    void placesOfResultsThatCannotBe()
    {
        const QString line = QStringLiteral("organize tests/mopac/eu_f_acac3_rm1_opt.out o.xyz ");
        for (const char *options : {"--json - --csv -", "--csv o.xyz", "--json ./r --csv r",
                                    "--json tests/mopac/eu_f_acac3_rm1_opt.out"})
            QCOMPARE(run(line + QLatin1String(options), folder.path()).exitStatus, 2);
    }

    // No write is lost in silence: the old file stays, the result stands on standard output.
    void filesThatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("target");
        const auto row = [](const char *line, const char *target = "old") {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(target);
        };
        row("omega ion.out --g O=1,Cl=1 --alpha O=1,Cl=1 --report old");
        row("omega ion.out --g O=1,Cl=1 --alpha O=1,Cl=1 --json old");
        row("stark ion.out --g O=1,Cl=1 --report old");
        row("levels --ion Ce --report old");
        row("levels --ion Ce --plot old.svg", "old.svg");
        row("omega-exp --areas 0.1,1,8.5,0.2,1.9,0 --barycentres 17240,16910,16290,15350,14380,0 "
            "--lifetime 0.4 --report old");
        row("fit omega ion.out --omega2 3 --omega4 40 --points 1 --report old");
        row("fit levels ce --ion Ce --points 1", "ce.result");
        row("fit stark ion ion.out --points 1", "ion.stark");
        row("fit stark ion ion.out --points 1", "ion.progress");
        row("convert ion.out old.xyz", "old.xyz");
        row("organize ion.out old.xyz", "old.xyz");
        row("indices phen.out", "phen.indeces");
        row("spectrum examples/data/eu_l2_zindos_excerpt.orcout --out old");
        row("states examples/data/eu_l2_zindos_excerpt.orcout --report old");
        row("yield --omega 33,4.6,0 --omega-ed 0,0,0 --singlet-energy 28000 --triplet-energy 20500 "
            "--rl-singlet 4.5 --rl-triplet 5.1 --report old");
    }
    void filesThatCannotBeWritten()
    {
        QFETCH(QString, line);
        QFETCH(QString, target);
        QFile::copy(dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out")), path("ion.out"));
        QFile::copy(dataFile(QStringLiteral("mopac/eu_acac3_phen_am1_allvec.out")),
                    path("phen.out"));
        testSupport::writeAll(path("ion.groups"), "all 2 3 4 5 6 7 8 9\n");
        testSupport::writeAll(path("ion.exp"), "1 302 455 379\n");
        testSupport::writeAll(path("ce"), "Ce3+\n2F5/2 0\n2F7/2 2253\n");
        const bool grows = target.endsWith(QLatin1String("progress"));
        const QString file = folder.filePath(target);
        // The limit counts KiB; a file that grows is there already.
        const QByteArray old(grows ? 1024 : 3, 'x');
        testSupport::writeAll(file, old);
        const QString normal = run(line, folder.path()).output;
        testSupport::writeAll(file, old);
        const ProgramRun limited =
            run(line, folder.path(),
                QStringLiteral("ulimit -f %1; exec \"$0\" \"$@\"").arg(grows ? 1 : 0));
        QCOMPARE(testSupport::readAll(file), old);
        QVERIFY2(limited.error.contains(target), qPrintable(limited.error));
        if (!grows)
            QCOMPARE(limited.exitStatus, 1);
        QVERIFY2(limited.output.startsWith(normal), qPrintable(limited.output));
        const ProgramRun full =
            run(line, folder.path(), QStringLiteral("\"$0\" \"$@\" >/dev/full"));
        QCOMPARE(full.exitStatus, normal.isEmpty() ? 0 : 1);
        const ProgramRun closed = run(line, folder.path(), QStringLiteral("\"$0\" \"$@\" >&-"));
        QCOMPARE(closed.exitStatus, normal.isEmpty() ? 0 : 1);
    }

    // No link hides an input; what is no regular file is written to and stays.
    void targetsThatAreNotReplaced()
    {
        const QByteArray original =
            testSupport::readAll(dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out")));
        testSupport::writeAll(path("in.out"), original);
        const QString line = QStringLiteral("omega in.out --g O=1,Cl=1 --alpha O=1,Cl=1 --report ");
        const QString links = QStringLiteral("ln -s in.out soft; ln in.out hard; mkfifo pipe; ");
        run(QString(), folder.path(), links);
        for (const char *target : {"in.out", "soft", "hard", "."}) {
            const ProgramRun refused = run(line + QLatin1String(target), folder.path());
            QVERIFY2(refused.exitStatus == 1 && !refused.output.isEmpty(), target);
            QCOMPARE(testSupport::readAll(path("in.out")), original);
        }
        QVERIFY(run(line + QStringLiteral("/dev/full"), folder.path()).exitStatus == 1);
        const QString report = run(line + QStringLiteral("r"), folder.path()).output;
        const ProgramRun piped =
            run(line + QStringLiteral("pipe"), folder.path(),
                QStringLiteral("cat pipe > copy & \"$0\" \"$@\"; wait; test -p pipe"));
        QCOMPARE(piped.exitStatus, 0);
        QCOMPARE(testSupport::readAll(path("copy")), testSupport::readAll(path("r")));
        const ProgramRun both = run(line + QStringLiteral("/dev/stdout"), folder.path(),
                                    QStringLiteral("\"$0\" \"$@\" > both"));
        QCOMPARE(both.exitStatus, 0);
        QCOMPARE(testSupport::readAll(path("both")).size(),
                 testSupport::readAll(path("r")).size() + report.toUtf8().size());
    }

    // Whatever a command reads stays as it is when a link to it has the name of what it writes.
    void inputsAreNotWrittenOver_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QStringList>("inputs");
        const auto row = [](const char *line, const char *target, const char *inputs) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(target)
                                << QString::fromLatin1(inputs).split(QLatin1Char(' '));
        };
        row("omega ion.out --g O=1,Cl=1 --alpha O=1,Cl=1 --ligands lines --report t", "t",
            "ion.out lines");
        row("omega ion.out --g O=1,Cl=1 --alpha O=1,Cl=1 --json t", "t", "ion.out");
        row("sphere ion.out --csv t", "t", "ion.out");
        row("stark ion.out --g O=1,Cl=1 --report t", "t", "ion.out");
        row("omega-exp --spectrum spectrum.txt --report t", "t", "spectrum.txt");
        row("fit omega ion.out --omega2 3 --omega4 40 --points 1 --report t", "t", "ion.out");
        row("fit qdc force.out --omega2 8 --omega4 6 --points 1 --report t", "t", "force.out");
        row("fit levels ce --ion Ce --points 1", "ce.result", "ce");
        row("fit stark ion ion.out --points 1", "ion.stark", "ion.out ion.groups ion.exp");
        row("fit stark ion ion.out --points 1", "ion.progress", "ion.out ion.groups ion.exp");
        row("convert ion.out t.xyz", "t.xyz", "ion.out");
        row("convert l2.orcout t.orcinp --charge -1", "t.pointcharge", "l2.orcout l2.pointcharge");
        row("organize ion.out t.mol2", "t.mol2", "ion.out");
        row("organize ion.out o.xyz --csv t", "t", "ion.out");
        row("indices phen.out", "phen.indeces", "phen.out");
        row("spectrum l2.orcout --out t", "t", "l2.orcout");
        row("spectrum l2.orcout --plot t.pdf", "t.pdf", "l2.orcout");
        row("states l2.orcout --report t", "t", "l2.orcout l2.pointcharge");
        row("yield l2.out --g O=1,N=1 --alpha O=1,N=1 --excited l2.orcout --report t", "t",
            "l2.out l2.orcout l2.pointcharge");
    }
    void inputsAreNotWrittenOver()
    {
        QFETCH(QString, line);
        QFETCH(QString, target);
        QFETCH(QStringList, inputs);
        QTemporaryDir own;
        const auto put = [&own](const char *name, const QString &origin) {
            QFile::remove(own.filePath(QLatin1String(name)));
            QFile::copy(origin, own.filePath(QLatin1String(name)));
        };
        put("ion.out", dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out")));
        put("force.out", dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out")));
        put("phen.out", dataFile(QStringLiteral("mopac/eu_acac3_phen_am1_allvec.out")));
        put("l2.out", sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out")));
        put("l2.orcout", sourceFile(QStringLiteral("examples/data/eu_l2_zindos_excerpt.orcout")));
        put("l2.pointcharge",
            sourceFile(QStringLiteral("examples/data/eu_l2_zindos_excerpt.pointcharge")));
        put("spectrum.txt", dataFile(QStringLiteral("outputs/emission.txt")));
        testSupport::writeAll(own.filePath(QStringLiteral("lines")), "all 2 3 4 5 6 7 8 9\n");
        testSupport::writeAll(own.filePath(QStringLiteral("ion.groups")), "all 2 3 4 5 6 7 8 9\n");
        testSupport::writeAll(own.filePath(QStringLiteral("ion.exp")), "1 302 455 379\n");
        testSupport::writeAll(own.filePath(QStringLiteral("ce")), "Ce3+\n2F5/2 0\n2F7/2 2253\n");
        for (const QString &input : qAsConst(inputs)) {
            const QByteArray original = testSupport::readAll(own.filePath(input));
            for (const char *link : {"ln -s", "ln"}) {
                const ProgramRun refused = run(line, own.path(),
                                               QStringLiteral("rm -f %1; %2 %3 %1; \"$0\" \"$@\"")
                                                   .arg(target, QLatin1String(link), input));
                QCOMPARE(testSupport::readAll(own.filePath(input)), original);
                const bool isTold = refused.error.contains(QLatin1String("read")) ||
                                    refused.error.contains(QLatin1String("a second time"));
                QVERIFY2(isTold, qPrintable(input + refused.error));
                QVERIFY(refused.exitStatus > 0 || target.endsWith(QLatin1String("progress")));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
