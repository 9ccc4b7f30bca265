#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

#include <QByteArray>
#include <QString>

/// Writing of every file of the library and of the program.
///
/// A regular file appears whole under its final name or not at all: the bytes go to a temporary
/// file in the same folder, are handed to the disk, and take the name only then, so that a full
/// disk or a limit leaves the old file as it was. A device, pipe or socket is written to and never
/// replaced, and so is the file to which the process's standard output or standard error goes. The
/// functions may be called from several threads.
class LANQORENGINE_EXPORT LanqorOutputFile
{
public:
    /// Writes @p bytes as the whole file; on failure false, with the system's reason in @p error.
    static bool write(const QString &fileName, const QByteArray &bytes, QString &error);

    /// Adds @p bytes at the end of a file that grows while a calculation runs; on failure false,
    /// with the system's reason in @p error.
    static bool append(const QString &fileName, const QByteArray &bytes, QString &error);

    /// With true no file that a reader of the library opens from then on is written over in this
    /// process, whatever link leads to it, unless the process wrote it itself. Off by default.
    static void setInputsProtected(const bool &isProtected);
};
