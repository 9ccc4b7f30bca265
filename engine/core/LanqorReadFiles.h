#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/ReadFile.h>

#include <QByteArray>
#include <QString>
#include <QVector>

/// The files that this process has read, by which a result tells what it was made of. Files that
/// the process wrote itself (while inputs are protected, see LanqorOutputFile) do not count. The
/// functions may be called from several threads.
class LANQORENGINE_EXPORT LanqorReadFiles
{
public:
    /// With true every file that a reader of the library opens from then on is noted with the
    /// SHA-256 of its content, for which it is read once more. Off by default; false forgets all.
    static void setNoted(const bool &isNoted);

    /// In the order in which they were opened first, each file once.
    static QVector<ReadFile> getFiles();

    /// Reads a whole file, which is noted but may be written over; on failure false, with the
    /// reason in @p error.
    static bool read(const QString &fileName, QByteArray &bytes, QString &error);
};
