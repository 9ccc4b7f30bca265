#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <string_view>

class QFile;

/// The message for a file that cannot be opened.
QString missingFile(const QString &fileName);

/// One opening of a text file, which several readers may share one after the other: each starts at
/// the beginning again. Copies are the same opening; the last one closes it.
class InputFile
{
public:
    /// The file is opened when a reader first needs it. Not explicit: a reader that is given a name
    /// has an opening of its own.
    InputFile(const QString &fileName); // NOLINT(google-explicit-constructor)

    /// Opens the file or goes back to its beginning; false when it is missing, unreadable or no
    /// regular file.
    bool rewind();
    /// Number of bytes read; 0 at the end and on an error.
    int read(char *buffer, int size);
    QString fileName() const;
    /// The system's reason when rewind() failed.
    QString errorString() const;

private:
    std::shared_ptr<QFile> file;
};

/// Reads a text file line by line in bounded memory.
///
/// A line longer than maximumLineLength is cut there and its rest skipped: no program whose
/// output we read prints longer lines, and a binary file may be one line of any length. A byte
/// order mark at the start of the file is skipped.
class LineReader
{
public:
    static constexpr int maximumLineLength = 1 << 16;

    /// @param file  no other reader may use the same opening meanwhile
    explicit LineReader(const InputFile &file);

    /// Opens the file, or starts again at its beginning; false when it is missing, unreadable or no
    /// regular file.
    bool open();
    /// Moves to the next line; false at the end of the file.
    bool next();
    /// Makes the following next() return the current line once more; nothing to repeat at the end
    /// of the file.
    void unread() { repeatLine = !atEnd; }

    /// The current line without its end ("\n" or "\r\n"); valid until the following next().
    std::string_view line() const { return currentLine; }
    /// False when the file ends within the current line: a file that was cut shows so, and the
    /// last number of the line may lack digits.
    bool isLineComplete() const { return lineComplete; }
    /// 1-based number of the current line.
    qint64 lineNumber() const { return number; }
    QString fileName() const { return file.fileName(); }
    /// The system's reason when open() failed.
    QString errorString() const { return file.errorString(); }

private:
    bool refill();

    InputFile file;
    QByteArray buffer;
    QByteArray joined; // a line that spans two buffers
    int position = 0;
    int filled = 0;
    std::string_view currentLine;
    qint64 number = 0;
    bool lineComplete = true;
    bool repeatLine = false;
    bool atEnd = false;
};
