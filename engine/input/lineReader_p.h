#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <string_view>

/// The message for a file that cannot be opened.
QString missingFile(const QString &fileName);

/// Reads a text file line by line in bounded memory.
///
/// A line longer than maximumLineLength is cut there and its rest skipped: no program whose
/// output we read prints longer lines, and a binary file may be one line of any length. A byte
/// order mark at the start of the file is skipped.
class LineReader
{
public:
    static constexpr int maximumLineLength = 1 << 16;

    explicit LineReader(const QString &fileName);

    /// Opens the file; false when it is missing, unreadable or no regular file.
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
    /// The system's reason when open() failed.
    QString errorString() const { return file.errorString(); }

private:
    bool refill();

    QFile file;
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
