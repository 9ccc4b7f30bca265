#include "programs/ProgramRun.h"

#include "programs/ProgramRunner.h"
#include "text.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using cli::tr;

namespace programs {

namespace {

constexpr qint64 bytesPerMegabyte = qint64(1) << 20;
constexpr qint64 graceTime = 3000; // ms between the request to end and the end by force

/// The environment that makes runs alike: numbers in the C locale, the asked number of threads, a
/// stack that large molecules need, no parameter files of the user's own.
QProcessEnvironment environmentOf(const ProgramJob &job, const QString &scratch)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString threads = QString::number(std::max(1, job.threads));
    for (const char *name : {"LC_ALL", "LANG"})
        environment.insert(QLatin1String(name), QStringLiteral("C"));
    for (const char *name : {"OMP_NUM_THREADS", "MKL_NUM_THREADS", "OPENBLAS_NUM_THREADS"})
        environment.insert(QLatin1String(name), threads);
    environment.insert(QStringLiteral("OMP_DYNAMIC"), QStringLiteral("false"));
    environment.insert(QStringLiteral("MKL_DYNAMIC"), QStringLiteral("false"));
    environment.insert(QStringLiteral("OMP_MAX_ACTIVE_LEVELS"), QStringLiteral("1"));
    environment.insert(QStringLiteral("OMP_STACKSIZE"), QStringLiteral("1G"));
    for (const char *name : {"TMPDIR", "XTBPATH", "XTBHOME"})
        environment.insert(QLatin1String(name), scratch);
    // Standard output of a Fortran program line by line, for progress.
    environment.insert(QStringLiteral("GFORTRAN_UNBUFFERED_PRECONNECTED"), QStringLiteral("y"));
    return environment;
}

QByteArray contentsOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray beginOfFile(const QString &fileName)
{
    constexpr qint64 length = 16384;
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.read(length) : QByteArray();
}

/// The end of a file that may be large.
QByteArray endOfFile(const QString &fileName)
{
    constexpr qint64 length = 16384;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    file.seek(std::max(qint64(0), file.size() - length));
    return file.readAll();
}

qint64 sizeOfFolder(const QString &folder)
{
    qint64 size = 0;
    for (QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         files.hasNext();) {
        files.next();
        size += files.fileInfo().size();
    }
    return size;
}

QString signalText(int signal)
{
    return QStringLiteral("%1, signal %2")
        .arg(QString::fromLocal8Bit(::strsignal(signal)), QString::number(signal));
}

QString timeText(double seconds)
{
    return seconds < 120.0 ? tr("%1 s").arg(seconds) : tr("%1 min").arg(qRound(seconds / 60.0));
}

} // namespace

QString nameOfFailed(const QString &fileName)
{
    const QFileInfo file(fileName);
    return file.path() + QLatin1Char('/') + file.completeBaseName() + QStringLiteral(".failed.") +
           file.suffix();
}

QString lastWords(const QByteArray &bytes, int lineCount)
{
    constexpr int longest = 200; // characters of a line
    static const QRegularExpression control(QStringLiteral("[\\x{00}-\\x{1f}\\x{7f}-\\x{9f}]"));
    static const QRegularExpression letter(QStringLiteral("\\w"));
    QStringList words;
    const QList<QByteArray> lines = bytes.split('\n');
    for (auto line = lines.crbegin(); line != lines.crend() && words.size() < lineCount; ++line) {
        QString text = QString::fromUtf8(*line).simplified();
        text.remove(control);
        if (text.contains(letter))
            words.prepend(text.left(longest));
    }
    return words.join(QStringLiteral(" / "));
}

GroupLeader::GroupLeader(qint64 fileSizeLimit)
    : fileSizeLimit(fileSizeLimit)
{
    QObject::connect(this, &QProcess::started, [this] { group = processId(); });
}

void GroupLeader::setupChildProcess()
{
    // Between fork and exec nothing but system calls.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGXFSZ, SIG_DFL); // lanqor itself ignores it
    struct rlimit limit = {};
    if (::getrlimit(RLIMIT_STACK, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_STACK, &limit);
    }
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0) {
        limit.rlim_cur = std::min(limit.rlim_max, rlim_t(fileSizeLimit));
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    limit = {0, 0};
    ::setrlimit(RLIMIT_CORE, &limit);
}

void GroupLeader::signalGroup(int signal) const
{
    if (state() == QProcess::NotRunning || processId() == 0)
        return;
    if (::kill(-pid_t(processId()), signal) != 0)
        ::kill(pid_t(processId()), signal);
}

void GroupLeader::endGroup() const
{
    if (group > 1)
        ::kill(-pid_t(group), SIGKILL);
}

ProgramRun::ProgramRun(const ProgramJob &job)
    : job(job)
    , scratch(QDir::tempPath() + QStringLiteral("/lanqor-%1-XXXXXX").arg(job.program.name))
    , process(job.sizeLimit)
    , preparationsLeft(job.preparations.size())
{
    QObject::connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                     [this] {
                         process.endGroup();
                         if (isEnded || preparationsLeft == 0)
                             return;
                         --preparationsLeft;
                         startProcess();
                     });
}

ProgramRun::~ProgramRun()
{
    if (!isRunning())
        return;
    isEnded = true;
    process.signalGroup(SIGKILL);
    process.waitForFinished();
}

QString ProgramRun::path(const QString &name) const
{
    return scratch.filePath(name);
}

void ProgramRun::fail(ProgramEnd end, const QString &error)
{
    outcome.end = end;
    outcome.error = error;
}

void ProgramRun::start()
{
    outcome.end = ProgramEnd::Done;
    QStringList lines;
    for (const QStringList &arguments : job.preparations + QVector<QStringList>{job.arguments})
        lines.append((QStringList{job.program.name} + arguments).join(QLatin1Char(' ')));
    outcome.commandLine = lines.join(QStringLiteral("; "));
    elapsed.start();
    QString error;
    outcome.executable = findProgram(job.program, error);
    if (outcome.executable.isEmpty())
        return fail(ProgramEnd::Missing, error);
    const QString unwritable = tr("the scratch folder for %1 cannot be written: %2; TMPDIR names "
                                  "another place");
    if (!scratch.isValid())
        return fail(ProgramEnd::Failed, unwritable.arg(job.program.name, scratch.errorString()));
    for (const InputFile &input : job.inputs)
        if (!LanqorOutputFile::write(path(input.name), input.text, error))
            return fail(ProgramEnd::Failed, unwritable.arg(job.program.name, error));
    process.setWorkingDirectory(scratch.path());
    process.setProcessEnvironment(environmentOf(job, scratch.path()));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(path(job.stdoutName));
    process.setStandardErrorFile(path(job.stderrName));
    startProcess();
}

void ProgramRun::startProcess()
{
    // The output of a preparation gives way to that of the run.
    output.close();
    unread.clear();
    const int next = job.preparations.size() - preparationsLeft;
    process.start(outcome.executable, job.preparations.value(next, job.arguments));
    if (!process.waitForStarted())
        fail(ProgramEnd::Missing, tr("%1 cannot be started: %2; install the program with "
                                     "\"apt-get install %3\", or name another with %4 FILE")
                                      .arg(outcome.executable, process.errorString(),
                                           job.program.package, job.program.option));
}

bool ProgramRun::isRunning() const
{
    return process.state() != QProcess::NotRunning;
}

void ProgramRun::showProgress()
{
    if (!job.readProgress || !job.showProgress)
        return;
    if (!output.isOpen()) {
        output.setFileName(path(job.outputName));
        if (!output.open(QIODevice::ReadOnly))
            return;
    }
    unread += output.readAll();
    const int end = unread.lastIndexOf('\n');
    if (end < 0) {
        constexpr int longestLine = 1 << 20;
        if (unread.size() > longestLine)
            unread.clear();
        return;
    }
    std::optional<ProgramProgress> last;
    const QList<QByteArray> lines = unread.left(end).split('\n');
    for (const QByteArray &line : lines)
        if (const auto progress = job.readProgress(line))
            last = progress;
    unread.remove(0, end + 1);
    if (last)
        job.showProgress(*last);
}

void ProgramRun::end(ProgramEnd end, const QString &error)
{
    fail(end, error);
    isEnded = true;
    sinceEnd.start();
    process.signalGroup(SIGTERM);
}

void ProgramRun::lookAfter()
{
    if (!isRunning())
        return;
    if (isEnded) {
        if (sinceEnd.elapsed() > graceTime)
            process.signalGroup(SIGKILL);
        return;
    }
    showProgress();
    if (job.timeLimit > 0.0 && double(elapsed.elapsed()) > 1000.0 * job.timeLimit)
        end(ProgramEnd::TimeUp,
            tr("%1 was ended after %2, the time limit; %3 gives another")
                .arg(job.program.name, timeText(job.timeLimit), job.timeLimitOption));
    else if (sizeOfFolder(scratch.path()) > job.sizeLimit)
        end(ProgramEnd::TooLarge,
            withLastWords(
                tr("%1 was ended because its files grew beyond %2 MB")
                    .arg(job.program.name, QString::number(job.sizeLimit / bytesPerMegabyte))));
}

void ProgramRun::interrupt(bool isAtOnce)
{
    if (!isRunning())
        return;
    if (!isEnded)
        end(ProgramEnd::Interrupted, tr("%1 was interrupted").arg(job.program.name));
    if (isAtOnce)
        process.signalGroup(SIGKILL);
}

QString ProgramRun::withLastWords(const QString &text) const
{
    const QString words = lastWords(endOfFile(path(job.outputName)), 3);
    return words.isEmpty() ? text : tr("%1; its last words: %2").arg(text, words);
}

QString ProgramRun::endOfProcess() const
{
    const QString how = process.exitStatus() == QProcess::CrashExit
                            ? tr("crashed (%1)").arg(signalText(process.exitCode()))
                            : tr("ended with exit status %1").arg(process.exitCode());
    QString words = lastWords(endOfFile(path(job.stderrName)), 4);
    if (words.isEmpty())
        words = lastWords(endOfFile(path(job.outputName)), 4);
    return words.isEmpty() ? tr("%1 %2 without a word").arg(job.program.name, how)
                           : tr("%1 %2; its last words: %3").arg(job.program.name, how, words);
}

void ProgramRun::judge()
{
    if (process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGXFSZ)
        return fail(ProgramEnd::TooLarge,
                    withLastWords(tr("%1 was ended because a file of it grew beyond %2 MB")
                                      .arg(job.program.name,
                                           QString::number(job.sizeLimit / bytesPerMegabyte))));
    const Verdict verdict = job.judge ? job.judge(QDir(scratch.path())) : Verdict();
    // What the program itself tells of its fault says more than how it ended.
    if (!verdict.fault.isEmpty())
        return fail(ProgramEnd::Failed, verdict.fault);
    if (process.exitStatus() == QProcess::CrashExit || process.exitCode() != 0)
        return fail(ProgramEnd::Failed, endOfProcess());
    if (!verdict.isFinished)
        return fail(
            ProgramEnd::Failed,
            withLastWords(tr("%1 ended without complaint, but its output does not end as that of a "
                             "finished run")
                              .arg(job.program.name)));
    for (const ResultFile &result : job.results)
        if (result.isNeeded && QFileInfo(path(result.name)).size() == 0)
            return fail(ProgramEnd::Failed,
                        withLastWords(tr("%1 ended, but its file %2 is missing or empty")
                                          .arg(job.program.name, result.name)));
    outcome.remarks = verdict.remarks;
}

void ProgramRun::keepResults()
{
    for (const ResultFile &result : job.results) {
        if (!QFileInfo::exists(path(result.name)))
            continue;
        QString error;
        if (!LanqorOutputFile::write(result.fileName, contentsOf(path(result.name)), error))
            return fail(ProgramEnd::Failed,
                        tr("%1 cannot be written: %2").arg(result.fileName, error));
        outcome.files.append(result.fileName);
        QFile::remove(nameOfFailed(result.fileName));
    }
}

void ProgramRun::keepFailed()
{
    constexpr qint64 longest = 50 * bytesPerMegabyte;
    for (const ResultFile &result : job.results) {
        const bool isTelling = result.name == job.outputName || result.name == job.stderrName;
        const QFileInfo file(path(result.name));
        const QString kept = nameOfFailed(result.fileName);
        QString error;
        if (!isTelling || file.size() == 0 || file.size() > longest ||
            !LanqorOutputFile::write(kept, contentsOf(file.filePath()), error))
            continue;
        outcome.files.append(kept);
        if (result.name == job.outputName && !outcome.error.contains(kept))
            outcome.error += tr("; its output is kept in %1").arg(kept);
    }
}

ProgramOutcome ProgramRun::finish()
{
    outcome.seconds = double(elapsed.elapsed()) / 1000.0;
    if (outcome.end == ProgramEnd::Missing)
        return outcome;
    const QString head = QString::fromUtf8(beginOfFile(path(job.outputName)));
    outcome.version = job.versionPattern.match(head).captured(1);
    if (outcome.end == ProgramEnd::Done)
        judge();
    if (outcome.end == ProgramEnd::Done)
        keepResults();
    if (outcome.end != ProgramEnd::Done)
        keepFailed();
    return outcome;
}

} // namespace programs
