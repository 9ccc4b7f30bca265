#include "LanqorReadFiles.h"

#include "core/inputGuard_p.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSet>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Notes
{
    QMutex mutex;
    bool isOn = false;
    QSet<inputGuard::FileIdentity> known;
    QVector<ReadFile> files;
};

Notes &notes()
{
    static Notes instance;
    return instance;
}

} // namespace

/// The place in the file at which its reader stands does not change.
void inputGuard::keepHash(int fileDescriptor, const FileIdentity &identity, const QString &fileName)
{
    constexpr int pieceSize = 1 << 18; // bytes
    Notes &all = notes();
    const QMutexLocker lock(&all.mutex);
    if (!all.isOn || all.known.contains(identity))
        return;
    all.known.insert(identity);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray piece(pieceSize, '\0');
    ReadFile file;
    file.fileName = fileName;
    for (;;) {
        const ssize_t count =
            ::pread(fileDescriptor, piece.data(), std::size_t(piece.size()), file.size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        hash.addData(piece.constData(), int(count));
        file.size += count;
    }
    file.sha256 = QString::fromLatin1(hash.result().toHex());
    all.files.append(file);
}

void LanqorReadFiles::setNoted(const bool &isNoted)
{
    Notes &all = notes();
    const QMutexLocker lock(&all.mutex);
    all.isOn = isNoted;
    if (!isNoted) {
        all.known.clear();
        all.files.clear();
    }
}

QVector<ReadFile> LanqorReadFiles::getFiles()
{
    Notes &all = notes();
    const QMutexLocker lock(&all.mutex);
    return all.files;
}

bool LanqorReadFiles::read(const QString &fileName, QByteArray &bytes, QString &error)
{
    // A device or pipe may never end.
    const QFileInfo place(fileName);
    if (place.exists() && !place.isFile()) {
        error = QCoreApplication::translate("LanqorReadFiles", "is no regular file");
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    struct stat status = {};
    if (::fstat(file.handle(), &status) == 0)
        inputGuard::keepHash(file.handle(), {status.st_dev, status.st_ino}, fileName);
    bytes = file.readAll();
    error = file.errorString();
    return file.error() == QFileDevice::NoError;
}
