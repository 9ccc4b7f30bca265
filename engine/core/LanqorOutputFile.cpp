#include "LanqorOutputFile.h"

#include "core/inputGuard_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QMutex>
#include <QSaveFile>
#include <QSet>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using inputGuard::FileIdentity;

namespace {

struct Guard
{
    QMutex mutex;
    bool isOn = false;
    QSet<FileIdentity> inputs;
    QSet<FileIdentity> outputs; // of this process: read again they are no inputs
};

Guard &guard()
{
    static Guard instance;
    return instance;
}

FileIdentity identityOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino};
}

bool find(const QString &fileName, struct stat &status)
{
    return ::stat(QFile::encodeName(fileName).constData(), &status) == 0;
}

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorOutputFile", text);
}

void addInput(const struct stat &status)
{
    Guard &files = guard();
    const QMutexLocker lock(&files.mutex);
    if (files.isOn)
        files.inputs.insert(identityOf(status));
}

bool isOutput(const struct stat &status)
{
    Guard &files = guard();
    const QMutexLocker lock(&files.mutex);
    return files.outputs.contains(identityOf(status));
}

void addOutput(const QString &fileName)
{
    struct stat status = {};
    Guard &files = guard();
    const QMutexLocker lock(&files.mutex);
    if (files.isOn && find(fileName, status))
        files.outputs.insert(identityOf(status));
}

bool isInput(const struct stat &status)
{
    Guard &files = guard();
    const QMutexLocker lock(&files.mutex);
    return files.inputs.contains(identityOf(status));
}

/// A device may take less than it is given.
bool writeAll(QIODevice &device, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 count = device.write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

bool writeToDescriptor(int descriptor, const QByteArray &bytes, QString &error)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.constData() + done,
                                      static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            error = qt_error_string();
            return false;
        }
        done += count;
    }
    return true;
}

/// The descriptor of a standard stream that goes to this file; -1 without.
int standardStream(const struct stat &target)
{
    for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
        struct stat stream = {};
        if (::fstat(descriptor, &stream) == 0 && identityOf(stream) == identityOf(target))
            return descriptor;
    }
    return -1;
}

bool writeToSocket(const QString &fileName, const QByteArray &bytes, QString &error)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(fileName);
    if (std::size_t(name.size()) >= sizeof address.sun_path) {
        error = qt_error_string(ENAMETOOLONG);
        return false;
    }
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isConnected =
        descriptor >= 0 &&
        ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    if (!isConnected)
        error = qt_error_string();
    const bool isWritten = isConnected && writeToDescriptor(descriptor, bytes, error);
    if (descriptor >= 0)
        ::close(descriptor);
    return isWritten;
}

/// Writes to what is there: a stream of this process, a socket, or by the given mode a device or
/// pipe.
bool writeInPlace(const QString &fileName, const struct stat &target, const QByteArray &bytes,
                  QString &error)
{
    const int stream = standardStream(target);
    if (stream >= 0) {
        std::fflush(stdout); // what was printed before comes first
        return writeToDescriptor(stream, bytes, error);
    }
    if (S_ISSOCK(target.st_mode))
        return writeToSocket(fileName, bytes, error);
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, bytes))
        return true;
    error = file.errorString();
    return false;
}

/// False, with the reason, for a name that is not to be written to at all.
bool checkTarget(const QString &fileName, bool exists, const struct stat &target, QString &error)
{
    if (fileName.isEmpty())
        error = tr("no name of a file is given");
    else if (exists && S_ISDIR(target.st_mode))
        error = tr("it is a folder");
    else if (exists && isInput(target))
        error = tr("it was read as an input and is not written over; give another name");
    else
        return true;
    return false;
}

} // namespace

void inputGuard::noteRead(int fileDescriptor, const QString &fileName)
{
    struct stat status = {};
    if (::fstat(fileDescriptor, &status) != 0 || !S_ISREG(status.st_mode) || isOutput(status))
        return;
    addInput(status);
    keepHash(fileDescriptor, identityOf(status), fileName);
}

bool LanqorOutputFile::write(const QString &fileName, const QByteArray &bytes, QString &error)
{
    struct stat target = {};
    const bool exists = find(fileName, target);
    if (!checkTarget(fileName, exists, target, error))
        return false;
    if (exists && (!S_ISREG(target.st_mode) || standardStream(target) >= 0))
        return writeInPlace(fileName, target, bytes, error);

    // Unbuffered, for a commit tells nothing of what a buffer could not get rid of; and to the disk
    // before the name is taken, for a disk may report so late that it is full.
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(file, bytes)) {
        error = file.errorString();
        return false;
    }
    if (::fsync(file.handle()) != 0 && errno != EINVAL) {
        error = qt_error_string();
        return false;
    }
    if (!file.commit()) {
        error = file.errorString();
        return false;
    }
    addOutput(fileName);
    return true;
}

bool LanqorOutputFile::append(const QString &fileName, const QByteArray &bytes, QString &error)
{
    struct stat target = {};
    const bool exists = find(fileName, target);
    if (!checkTarget(fileName, exists, target, error))
        return false;
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered) ||
        !writeAll(file, bytes)) {
        error = file.errorString();
        return false;
    }
    addOutput(fileName);
    return true;
}

void LanqorOutputFile::setInputsProtected(const bool &isProtected)
{
    Guard &files = guard();
    const QMutexLocker lock(&files.mutex);
    files.isOn = isProtected;
    if (!isProtected) {
        files.inputs.clear();
        files.outputs.clear();
    }
}
