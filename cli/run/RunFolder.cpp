#include "run/RunFolder.h"

#include "Command.h"
#include "text.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace cli {

namespace {

const auto markName = QStringLiteral("step.json");
const auto lockName = QStringLiteral(".lock");
const auto settingsName = QStringLiteral("run.toml");
const auto versionSuffix = QStringLiteral(" version");
const auto unfinishedSuffix = QStringLiteral(".unfinished");
const auto failedSuffix = QStringLiteral(".failed");

void removeFolder(const QString &path)
{
    QDir folder(path);
    if (folder.exists() && !folder.removeRecursively())
        throw Failure{tr("%1 cannot be removed").arg(path)};
}

void rename(const QString &from, const QString &to)
{
    removeFolder(to);
    if (!QDir().rename(from, to))
        throw Failure{tr("%1 cannot be renamed to %2").arg(from, to)};
}

QJsonArray toJson(const StepInputs &inputs)
{
    QJsonArray array;
    for (const auto &input : inputs)
        array.append(QJsonObject{{QStringLiteral("name"), input.first},
                                 {QStringLiteral("value"), input.second}});
    return array;
}

/// Whether a step was done with @p inputs.
bool isSame(const QJsonArray &done, const StepInputs &inputs)
{
    if (done.size() != inputs.size())
        return false;
    for (int i = 0; i < inputs.size(); ++i) {
        const QJsonObject input = done.at(i).toObject();
        const bool isMissingProgram =
            inputs.at(i).first.endsWith(versionSuffix) && inputs.at(i).second.isEmpty();
        if (input.value(QStringLiteral("name")).toString() != inputs.at(i).first ||
            (input.value(QStringLiteral("value")).toString() != inputs.at(i).second &&
             !isMissingProgram))
            return false;
    }
    return true;
}

QJsonObject filesOf(const QString &folder)
{
    QJsonObject files;
    for (const QString &name : QDir(folder).entryList(QDir::Files, QDir::Name))
        if (name != markName)
            files.insert(name, hashOfFile(QDir(folder).filePath(name)));
    return files;
}

QJsonObject readMark(const QString &folder)
{
    QFile file(QDir(folder).filePath(markName));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace

QString hashOf(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QString hashOfFile(const QString &fileName)
{
    QFile file(fileName);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        throw Failure{tr("%1 cannot be read: %2").arg(fileName, file.errorString())};
    return QString::fromLatin1(hash.result().toHex());
}

QString versionOf(const QString &program)
{
    return program + versionSuffix;
}

void RunFolder::check(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isDir())
        throw Failure{tr("--out %1 is a file; name a folder").arg(path)};
    const QDir dir(path);
    QStringList entries = dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    entries.removeAll(lockName);
    if (!entries.isEmpty() && !dir.exists(settingsName))
        throw Failure{
            tr("--out %1 holds other files and no run (run.toml); name a new folder").arg(path)};
}

RunFolder::RunFolder(const QString &path)
    : folder(path)
{
    check(path);
    if (!QDir().mkpath(path))
        throw Failure{tr("the folder --out %1 cannot be made").arg(path)};
    // The system gives the lock back however this process ends.
    lock =
        ::open(QFile::encodeName(file(lockName)).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (lock < 0)
        throw Failure{tr("%1 cannot be written: %2").arg(file(lockName), qt_error_string())};
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0)
        return;
    const bool isTaken = errno == EWOULDBLOCK;
    const QString reason = qt_error_string();
    ::close(lock);
    throw Failure{isTaken
                      ? tr("another run is at work in %1; wait for it, or give this one another "
                           "folder with --out")
                            .arg(path)
                      : tr("%1 cannot be locked: %2").arg(file(lockName), reason)};
}

RunFolder::~RunFolder()
{
    ::close(lock);
}

QString RunFolder::file(const QString &name) const
{
    return QDir(folder).filePath(name);
}

QString RunFolder::file(const QString &step, const QString &name) const
{
    return QDir(file(step)).filePath(name);
}

std::optional<StepMark> RunFolder::finished(const QString &step, const StepInputs &inputs) const
{
    const QJsonObject json = readMark(file(step));
    if (json.isEmpty() || !isSame(json.value(QStringLiteral("inputs")).toArray(), inputs) ||
        json.value(QStringLiteral("files")).toObject() != filesOf(file(step)))
        return std::nullopt;
    const auto text = [&json](const char *key) {
        return json.value(QLatin1String(key)).toString();
    };
    StepMark mark;
    mark.title = text("title");
    mark.outcome = text("outcome");
    mark.program = text("program");
    mark.version = text("version");
    mark.commandLine = text("command_line");
    mark.seconds = json.value(QStringLiteral("seconds")).toDouble();
    mark.isFailed = json.value(QStringLiteral("failed")).toBool();
    return mark;
}

QString RunFolder::unfinished(const QString &step) const
{
    return file(step + unfinishedSuffix);
}

QString RunFolder::failed(const QString &step) const
{
    return file(step + failedSuffix);
}

QString RunFolder::begin(const QString &step) const
{
    const QString path = unfinished(step);
    forget(step);
    removeFolder(path);
    if (!QDir().mkpath(path))
        throw Failure{tr("the folder %1 cannot be made").arg(path)};
    return path;
}

void RunFolder::finish(const QString &step, const StepInputs &inputs, const StepMark &mark) const
{
    const QString path = unfinished(step);
    const QJsonObject json = {{QStringLiteral("step"), step},
                              {QStringLiteral("title"), mark.title},
                              {QStringLiteral("outcome"), mark.outcome},
                              {QStringLiteral("program"), mark.program},
                              {QStringLiteral("version"), mark.version},
                              {QStringLiteral("command_line"), mark.commandLine},
                              {QStringLiteral("seconds"), mark.seconds},
                              {QStringLiteral("failed"), mark.isFailed},
                              {QStringLiteral("inputs"), toJson(inputs)},
                              {QStringLiteral("files"), filesOf(path)}};
    QString reason;
    const QString markFile = QDir(path).filePath(markName);
    if (!LanqorOutputFile::write(markFile, QJsonDocument(json).toJson(), reason))
        throw Failure{tr("%1 cannot be written: %2").arg(markFile, reason)};
    rename(path, file(step));
    removeFolder(failed(step));
}

void RunFolder::abandon(const QString &step) const
{
    const QString path = unfinished(step);
    if (QDir(path).isEmpty())
        removeFolder(path);
    else
        rename(path, failed(step));
}

void RunFolder::forget(const QString &step) const
{
    // The mark first: what is left of a folder that is being removed must not look finished.
    QFile::remove(file(step, markName));
    removeFolder(file(step));
}

} // namespace cli
