#include "TestSupport.h"

#include <QRegularExpression>
#include <QtTest>

using testSupport::ProgramRun;
using testSupport::runProgram;

/// Manners that all subcommands share.
class TestProgram : public QObject
{
    Q_OBJECT

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
            const QStringList words = name.split(QLatin1Char(' '));
            const ProgramRun help = runProgram(words + QStringList(QStringLiteral("--help")));
            QVERIFY2(help.exitStatus == 0 && help.error.isEmpty(), qPrintable(name));
            QVERIFY2(help.output.startsWith(QStringLiteral("Usage: lanqor ") + name),
                     qPrintable(help.output.left(200)));
            const ProgramRun unknown =
                runProgram(words + QStringList(QStringLiteral("--no-such-option")));
            QVERIFY2(unknown.exitStatus == 2 && unknown.output.isEmpty(), qPrintable(name));
            QVERIFY2(unknown.error.contains(QStringLiteral("no-such-option")),
                     qPrintable(unknown.error));
        }
        QCOMPARE(runProgram({}).exitStatus, 2);
        QCOMPARE(runProgram({QStringLiteral("no-such-command")}).exitStatus, 2);
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
