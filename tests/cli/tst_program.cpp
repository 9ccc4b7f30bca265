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
ProgramRun run(const QString &line, const QString &folder = QString())
{
    QStringList arguments = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (QString &argument : arguments) {
        if (argument.startsWith(QLatin1String("examples/")))
            argument = sourceFile(argument);
        else if (argument.startsWith(QLatin1String("tests/")))
            argument = dataFile(argument.mid(6));
    }
    return runProgram(arguments, folder);
}

/// Fields of a line of CSV; no field of a result holds a line break.
QStringList fieldsOf(const QString &line)
{
    static const QRegularExpression field(
        QStringLiteral("(?:^|,)(?:\"((?:[^\"]|\"\")*)\"|([^,]*))"));
    QStringList fields;
    auto matches = field.globalMatch(line);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        fields << match.captured(1).replace(QStringLiteral("\"\""), QStringLiteral("\"")) +
                      match.captured(2);
    }
    return fields;
}

/// Whether a value of JSON is the one of CSV, unit included.
bool isSame(const QJsonValue &json, const QString &value, const QString &unit)
{
    const QJsonObject quantity = json.toObject();
    const QVariant given =
        (unit.isEmpty() ? json : quantity.value(QStringLiteral("value"))).toVariant();
    const bool isNumber = given.userType() == QMetaType::Double;
    return quantity.value(QStringLiteral("unit")).toString() == unit &&
           (isNumber ? given.toDouble() == value.toDouble() : given.toString() == value);
}

/// The first line of CSV, a record or a table under its heading, that JSON tells otherwise.
QString firstDifference(const QJsonValue &json, const QStringList &lines)
{
    static const QRegularExpression heading(QStringLiteral("^(\\w+)(?: \\[(.+)\\])?$"));
    const bool isRecord = json.isObject();
    if (lines.size() - 1 != (isRecord ? json.toObject().size() : json.toArray().size()))
        return QStringLiteral("%1 lines").arg(lines.size());
    for (int i = 1; i < lines.size(); ++i) {
        const QStringList fields = fieldsOf(lines.at(i));
        if (isRecord && !isSame(json.toObject().value(fields.at(0)), fields.at(1), fields.value(2)))
            return lines.at(i);
        for (int k = 0; !isRecord && k < fields.size(); ++k) {
            const auto column = heading.match(fieldsOf(lines.first()).value(k));
            if (!isSame(json.toArray().at(i - 1).toObject().value(column.captured(1)), fields.at(k),
                        column.captured(2)))
                return lines.at(i);
        }
    }
    return QString();
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
        bool inTable = false;
        const QStringList lines =
            runProgram({QStringLiteral("--help")}).output.split(QLatin1Char('\n'));
        for (const QString &line : lines) {
            if (inTable && line.trimmed().isEmpty())
                break;
            if (inTable) // two blanks, the name, two or more blanks, the summary
                names << line.mid(2).section(QRegularExpression(QStringLiteral("  +")), 0, 0);
            inTable = inTable || line == QLatin1String("Commands:");
        }
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
            const ProgramRun unknown = run(name + QStringLiteral(" --no-such-option"));
            QVERIFY2(unknown.exitStatus == 2 && unknown.output.isEmpty(), qPrintable(name));
            QVERIFY2(unknown.error.contains(QStringLiteral("no-such-option")),
                     qPrintable(unknown.error));
        }
        QCOMPARE(runProgram({}).exitStatus, 2);
        QCOMPARE(runProgram({QStringLiteral("no-such-command")}).exitStatus, 2);
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
            "omega_fit groups");
        QFile::copy(dataFile(QStringLiteral("mopac/eu_acac3_phen_am1_allvec.out")), path("i.out"));
        row("indices i.out", "reactivity_indices");
        row("spectrum examples/data/eu_l2_zindos_excerpt.orcout", "spectrum transitions curve");
        row("organize tests/mopac/eu_f_acac3_rm1_opt.out o.xyz", "structure ligands atoms");
        row("states tests/gaussian/eu_td5050_two_jobs_g16.log",
            "donor_states singlets singlet_excitations triplets triplet_excitations");
        row("yield --omega 33,4.6,0 --omega-ed 0,0,0 --singlet-energy 28000 --triplet-energy 20500 "
            "--rl-singlet 4.5 --rl-triplet 5.1",
            "intensity_parameters emission emission_bands donors energy_transfer populations "
            "yield");
    }
    void resultsAsData()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, parts);
        const ProgramRun both = run(line + QStringLiteral(" --json - --csv r.csv"), folder.path());
        QVERIFY2(both.exitStatus == 0, qPrintable(both.error));
        const QJsonObject results = QJsonDocument::fromJson(both.output.toUtf8()).object();
        QStringList names = parts + QStringList(QStringLiteral("run"));
        names.sort();
        QCOMPARE(results.keys(), names);
        const QString csv = QString::fromUtf8(testSupport::readAll(path("r.csv")));
        for (const QString &part : qAsConst(names)) {
            const QString lines = csv.section(QStringLiteral("# %1\n").arg(part), 1)
                                      .section(QStringLiteral("\n\n"), 0, 0);
            QCOMPARE(firstDifference(results.value(part), lines.split(QLatin1Char('\n'))),
                     QString());
        }
        // The text is that of a run without, and the tables in files those of the output.
        const ProgramRun text = run(line + QStringLiteral(" --json r.json"), folder.path());
        QCOMPARE(text.output, run(line, folder.path()).output);
        QCOMPARE(testSupport::readAll(path("r.json")), both.output.toUtf8());
        QCOMPARE(run(line + QStringLiteral(" --csv -"), folder.path()).output, csv);
    }

    void placesOfResultsThatCannotBe()
    {
        const QString line = QStringLiteral("organize tests/mopac/eu_f_acac3_rm1_opt.out o.xyz ");
        for (const char *options : {"--json - --csv -", "--csv o.xyz", "--json ./r --csv r",
                                    "--json tests/mopac/eu_f_acac3_rm1_opt.out"})
            QCOMPARE(run(line + QLatin1String(options), folder.path()).exitStatus, 2);
        QCOMPARE(run(line + QStringLiteral("--csv no/such/folder/r.csv"), folder.path()).exitStatus,
                 1);
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
