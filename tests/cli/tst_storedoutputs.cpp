#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtEndian>
#include <QtTest>

#include <cmath>
#include <cstring>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

/// Counts how often the files of a folder are opened, from its making on.
class OpenCounter
{
public:
    explicit OpenCounter(const QString &folder)
        : descriptor(inotify_init1(IN_NONBLOCK))
    {
        // Equal events that follow each other become one: between two openings a file is read
        // or closed, which has to be seen.
        if (inotify_add_watch(descriptor, QFile::encodeName(folder).constData(),
                              IN_OPEN | IN_ACCESS | IN_CLOSE) < 0)
            qFatal("cannot watch %s", qPrintable(folder));
    }
    ~OpenCounter() { close(descriptor); }
    Q_DISABLE_COPY(OpenCounter)

    /// A line on each of @p files that was opened more than once.
    QString openedAgain(const QStringList &files) const
    {
        QByteArray events(1 << 20, '\0');
        QMap<QString, int> times;
        const ssize_t length = read(descriptor, events.data(), std::size_t(events.size()));
        inotify_event event;
        for (ssize_t at = 0; at < length; at += ssize_t(sizeof event + event.len)) {
            std::memcpy(&event, events.constData() + at, sizeof event);
            if ((event.mask & IN_Q_OVERFLOW) != 0U)
                return QStringLiteral("--- events were lost\n");
            if ((event.mask & IN_OPEN) != 0U && event.len > 0)
                ++times[QString::fromUtf8(events.constData() + at + sizeof event)];
        }
        QString text;
        for (const QString &file : files)
            if (times.value(file) > 1)
                text += QStringLiteral("--- %1 was opened again\n").arg(file);
        return text;
    }

private:
    int descriptor;
};

/// Surroundings that must not change a byte: another language, with a decimal comma in force in the
/// C library, another time zone and number of threads.
QMap<QString, QString> abroad(const QString &localeFolder)
{
    return {{QStringLiteral("LOCPATH"), localeFolder},
            {QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8")},
            {QStringLiteral("LANGUAGE"), QStringLiteral("en")}, // of the messages of the system
            {QStringLiteral("TZ"), QStringLiteral("Asia/Kolkata")},
            {QStringLiteral("OMP_NUM_THREADS"), QStringLiteral("7")},
            {QStringLiteral("DISPLAY"), QString()}, // nor a platform that cannot be had
            {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none")}};
}

/// Text without what differs from run to run: the version, the date, the speed of a fit and all of
/// its progress but the end; nor with the constants of every table of results.
QString lasting(QString text)
{
    static const QRegularExpression version(
        QStringLiteral("(?<=Version |program_version,|program_version\": \")[\\d.]+"));
    static const QRegularExpression date(QStringLiteral("\\d{4}-\\d\\d-\\d\\dT[\\d:]{8}"));
    static const QRegularExpression progress(QStringLiteral("(?m)^ *\\d?\\d % of .*\\n"));
    static const QRegularExpression speed(QStringLiteral(" \\S+/s,"));
    static const QRegularExpression constants(
        QStringLiteral("# run_constants\n(.+\n)*\n| *\"run_constants\": \\[[^]]*\\],\n"));
    return text.remove(constants).remove(version).remove(date).remove(progress).remove(speed);
}

/// Path of "tests/data/..." or "examples/data/...", or of "corpus:..."; empty when it is not there.
QString originOf(const QString &name)
{
    const QString corpus = QStringLiteral("corpus:");
    return name.startsWith(corpus) ? testSupport::corpusFile(name.mid(corpus.size()))
                                   : testSupport::sourceFile(name);
}

/// The numbers of a text to a tenth; of many about every fortieth.
QString places(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("-?\\d+(\\.\\d+)?(e-?\\d+)?"));
    QStringList numbers;
    for (auto match = number.globalMatch(text); match.hasNext();)
        numbers << QString::number(
            std::round(10.0 * match.next().captured().toDouble()) / 10.0 + 0.0, 'f', 1);
    QString chosen;
    for (int i = 0; i < numbers.size(); i += 1 + numbers.size() / 40)
        chosen += numbers.at(i) + QLatin1Char(' ');
    return chosen;
}

/// How a picture begins, and the dots per metre of a PNG.
QString kindOf(const QByteArray &picture)
{
    const int resolution = picture.indexOf("pHYs") + 4;
    return QString::fromLatin1(picture.mid(1, 3)) +
           (resolution < 4 ? QString()
                           : QStringLiteral(" %1").arg(
                                 qFromBigEndian<qint32>(picture.constData() + resolution))) +
           QLatin1Char('\n');
}

/// The shapes of an SVG picture, a line each: kind, colour, places and words; of other pictures
/// their kind.
QString shapesOf(const QString &path)
{
    constexpr int emptyPicture = 5000; // bytes
    const QByteArray bytes = testSupport::readAll(path);
    if (!path.endsWith(QLatin1String("svg")))
        return bytes.size() > emptyPicture ? kindOf(bytes) : QString();
    QXmlStreamReader reader(bytes);
    QString text;
    QString colour;
    QString frame;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const auto value = [&attributes](const char *name) {
            return attributes.value(QLatin1String(name)).toString() + QLatin1Char(' ');
        };
        const QString kind = reader.name().toString() + QLatin1Char(' ');
        if (kind == QLatin1String("g ")) {
            colour = value("stroke") + value("stroke-width") + value("fill");
            frame = value("transform").remove(QStringLiteral("matrix(1,0,0,1,0,0)"));
        } else if (attributes.hasAttribute(QStringLiteral("vector-effect"))) {
            text +=
                kind + colour + places(frame + value("points") + value("d")) + QLatin1Char('\n');
        } else if (kind == QLatin1String("text ")) {
            text += kind + value("fill") + places(frame + value("x") + value("y")) +
                    reader.readElementText() + QLatin1Char('\n');
        }
    }
    return reader.hasError() ? QString() : text;
}

} // namespace

/// What users see: stored transcripts, in each of which
///     < NAME = FILE           a file is laid into an empty folder, or one of this
///     < NAME : TEXT           text, in which \\n ends a line,
///     $ lanqor ARGUMENTS      the program runs there and prints what follows,
///     --- messages            its standard error, if there is any,
///     --- exit status N       unless it is 0,
///     --- NAME was opened again   when a FILE was opened more than once: only QDC fits do so, each
///                             of whose reports reads the force constants,
///     --- file NAME           what it has written,
///     --- picture NAME        the shapes of a picture that it has drawn.
/// With LANQOR_STORE_OUTPUTS set they are stored anew.
class TestStoredOutputs : public QObject
{
    Q_OBJECT

    QTemporaryDir locales;
    QTemporaryDir results; ///< of all commands, as JSON

    /// The words of a command line, and a file for the results as JSON where the command has them.
    QStringList withResults(const QString &line) const
    {
        static const QRegularExpression without(
            QStringLiteral("^(-|help|show )|--json|--help|--example"));
        QStringList words = QProcess::splitCommand(line);
        const int place = words.value(0) == QLatin1String("fit") ? 2 : 1;
        if (!line.contains(without) && words.size() > place)
            words.insert(place,
                         QStringLiteral("--json=%1/%2.json")
                             .arg(results.path(), QString::number(QDir(results.path()).count())));
        return words;
    }

    /// Does what the transcript tells; empty when a file of the corpus or pictures are not at hand.
    QString repeat(const QString &transcript)
    {
        const QTemporaryDir folder;
        QStringList laid;
        QString text;
        for (const QString &line : transcript.split(QLatin1Char('\n'))) {
            const QString operand = line.section(QLatin1Char(' '), 2);
            if (line.startsWith(QLatin1String("< "))) {
                const bool isText = line.section(QLatin1Char(' '), 2, 2) == QLatin1String(":");
                QString given = line.section(QLatin1Char(' '), 3);
                const QString origin = isText ? QString() : originOf(given);
                if (!isText && origin.isEmpty())
                    return QString();
                const QString name = line.section(QLatin1Char(' '), 1, 1);
                if (!isText) // fits read what they are given twice, to tell what is wrong
                    laid.append(name);
                QFile file(folder.filePath(name));
                if (!file.open(QIODevice::WriteOnly))
                    qFatal("cannot write %s", qPrintable(file.fileName()));
                file.write(isText
                               ? given.replace(QLatin1String("\\n"), QLatin1String("\n")).toUtf8()
                               : testSupport::readAll(origin));
                text += line + QLatin1Char('\n');
            } else if (line.startsWith(QLatin1String("$ lanqor "))) {
                const OpenCounter counter(folder.path());
                const auto run = testSupport::runProgram(withResults(operand), folder.path(),
                                                         abroad(locales.path()));
                if (run.error.contains(QLatin1String("LANQOR_PLOTS=OFF")))
                    return QString();
                text += line + QLatin1Char('\n') + run.output;
                if (!run.error.isEmpty())
                    text += QStringLiteral("--- messages\n") + run.error;
                text += run.exitStatus == 0
                            ? counter.openedAgain(laid)
                            : QStringLiteral("--- exit status %1\n").arg(run.exitStatus);
            } else if (line.startsWith(QLatin1String("--- file ")) ||
                       line.startsWith(QLatin1String("--- picture "))) {
                const QString path = folder.filePath(operand);
                text += line + QLatin1Char('\n');
                if (QFileInfo::exists(path))
                    text += line.at(4) == QLatin1Char('p')
                                ? shapesOf(path)
                                : QString::fromUtf8(testSupport::readAll(path));
            }
        }
        return lasting(text.replace(folder.path(), QStringLiteral("FOLDER")));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QProcess process;
        process.start(QStringLiteral("localedef"),
                      {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"),
                       QStringLiteral("UTF-8"), locales.filePath(QStringLiteral("de_DE.UTF-8"))});
        QVERIFY2(process.waitForFinished() && process.exitCode() == 0,
                 "needs the locale sources of Debian's package locales");
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(QStringLiteral("LOCPATH"), locales.path());
        variables.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
        process.setProcessEnvironment(variables);
        process.start(QStringLiteral("locale"), {QStringLiteral("decimal_point")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput(), QByteArray(",\n"));
    }

    void transcripts_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(testSupport::dataFile(QStringLiteral("outputs")));
        for (const QFileInfo &file : folder.entryInfoList({QStringLiteral("*.transcript")}))
            QTest::newRow(qPrintable(file.baseName())) << file.filePath();
    }
    void transcripts()
    {
        QFETCH(QString, path);
        const QString stored = QString::fromUtf8(testSupport::readAll(path));
        const QString repeated = repeat(stored);
        if (repeated.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR or LANQOR_PLOTS");
        QVERIFY2(!repeated.contains(QLatin1String("exit status -")), "the program crashed");
        if (qEnvironmentVariableIsSet("LANQOR_STORE_OUTPUTS")) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(repeated.toUtf8()) > 0);
        }
        constexpr double ofAllDigits = 1e-9; // JSON and CSV hold numbers in full
        const QString difference = testSupport::reportDifference(repeated, stored, ofAllDigits);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void resultsFollowTheirSchemas()
    {
        const QString files = results.filePath(QStringLiteral("*.json"));
        QCOMPARE(testSupport::schemaFaults(files), QString());
        if (qEnvironmentVariableIsSet("LANQOR_STORE_OUTPUTS"))
            return;
        // A key that is renamed, a unit that is missing, another type.
        for (const char *change : {"s/\"phi\"/\"angle\"/", "s/\"unit\": \"deg\",//",
                                   "s/\"atom_from_1\": 2/\"atom_from_1\": \"2\"/"})
            QVERIFY2(!testSupport::schemaFaults(
                          QStringLiteral("<(sed '%1' $(grep -l '\"phi\"' %2 | head -n 1))")
                              .arg(QLatin1String(change), files))
                          .isEmpty(),
                     change);
    }
};

QTEST_GUILESS_MAIN(TestStoredOutputs)
#include "tst_storedoutputs.moc"
