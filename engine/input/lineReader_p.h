#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <string_view>

class QFile;

/// The message for a file that cannot be opened: it does not exist, or is a folder, a device or a
/// pipe.
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
    /// The reason when rewind() failed.
    QString errorString() const;

private:
    std::shared_ptr<QFile> file;
};

/// Turns UTF-16 into UTF-8, piece by piece. A surrogate without its partner becomes the
/// replacement character; half a character at the end of the text is dropped.
class Utf16Decoder
{
public:
    enum class ByteOrder { LittleEndian, BigEndian };
    /// Bytes of UTF-8 that one byte of UTF-16 may become, with what is pending.
    static constexpr int growth = 3;

    explicit Utf16Decoder(ByteOrder order)
        : order(order)
    {}
    /// Decodes @p size bytes into @p text, which has room for growth * (size + 1) bytes; returns
    /// the number of bytes written.
    int decode(const char *bytes, int size, char *text);

private:
    ByteOrder order;
    std::optional<unsigned char> firstByte; // of a unit cut by the end of a piece
    unsigned highSurrogate = 0;             // 0: none is pending
};

/// Reads a text file line by line in bounded memory.
///
/// A line longer than maximumLineLength is cut there and its rest skipped: no program whose
/// output we read prints longer lines, and a binary file may be one line of any length. A byte
/// order mark at the start of the file is skipped; text in UTF-16 needs one and is read as UTF-8
/// (a Windows shell writes it for "orca job.inp > job.out").
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
    /// The reason when open() failed.
    QString errorString() const { return file.errorString(); }

private:
    bool refill();
    bool refillDecoded();

    InputFile file;
    std::optional<Utf16Decoder> decoder;
    QByteArray encoded; // bytes of the file that are decoded into the buffer
    QByteArray buffer;
    QByteArray joined; // a line that spans two buffers
    int position = 0;
    int filled = 0;
    std::string_view currentLine;
    qint64 number = 0;
    bool lineComplete = true;
    bool repeatLine = false;
    bool atEnd = false;
    bool atStart = true; // of the file: nothing is read yet
};
