#include "input/lineReader_p.h"

#include "core/inputGuard_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace {
constexpr int bufferSize = 1 << 18;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view bigEndianMark = "\xFE\xFF";

/// What stands under a name instead of a file that can be read.
enum class Obstacle { None, Folder, NoRegularFile };

Obstacle obstacleAt(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (fileName.isEmpty() || !info.exists() || info.isFile())
        return Obstacle::None;
    return info.isDir() ? Obstacle::Folder : Obstacle::NoRegularFile;
}

constexpr unsigned firstHighSurrogate = 0xD800;
constexpr unsigned firstLowSurrogate = 0xDC00;
constexpr unsigned endOfSurrogates = 0xE000;

/// Appends a code point; returns the place behind it.
char *appendUtf8(unsigned codePoint, char *text)
{
    const auto put = [&text](unsigned byte) { *text++ = static_cast<char>(byte); };
    const auto putRest = [&put, codePoint](unsigned shift) {
        put(0x80U | ((codePoint >> shift) & 0x3FU));
    };
    if (codePoint < 0x80U) {
        put(codePoint);
    } else if (codePoint < 0x800U) {
        put(0xC0U | (codePoint >> 6U));
        putRest(0);
    } else if (codePoint < 0x10000U) {
        put(0xE0U | (codePoint >> 12U));
        putRest(6);
        putRest(0);
    } else {
        put(0xF0U | (codePoint >> 18U));
        putRest(12);
        putRest(6);
        putRest(0);
    }
    return text;
}

} // namespace

QString missingFile(const QString &fileName)
{
    switch (obstacleAt(fileName)) {
    case Obstacle::None:
        break;
    case Obstacle::Folder:
        return fileName + QCoreApplication::translate("LanqorInputData", " is a folder.");
    case Obstacle::NoRegularFile:
        return fileName + QCoreApplication::translate("LanqorInputData", " is no regular file.");
    }
    return fileName + QCoreApplication::translate("LanqorInputData", " does not exist.");
}

int Utf16Decoder::decode(const char *bytes, int size, char *text)
{
    constexpr unsigned replacement = 0xFFFD;
    char *end = text;
    for (int i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (!firstByte) {
            firstByte = byte;
            continue;
        }
        const unsigned unit =
            order == ByteOrder::LittleEndian ? *firstByte | byte << 8U : *firstByte << 8U | byte;
        firstByte.reset();
        const bool isHigh = unit >= firstHighSurrogate && unit < firstLowSurrogate;
        const bool isLow = unit >= firstLowSurrogate && unit < endOfSurrogates;
        if (highSurrogate != 0 && isLow) {
            end = appendUtf8(0x10000U + ((highSurrogate - firstHighSurrogate) << 10U) +
                                 (unit - firstLowSurrogate),
                             end);
            highSurrogate = 0;
            continue;
        }
        if (highSurrogate != 0)
            end = appendUtf8(replacement, end);
        highSurrogate = isHigh ? unit : 0;
        if (!isHigh)
            end = appendUtf8(isLow ? replacement : unit, end);
    }
    return static_cast<int>(end - text);
}

InputFile::InputFile(const QString &fileName)
    : file(std::make_shared<QFile>(fileName))
{}

bool InputFile::rewind()
{
    if (file->isOpen())
        return file->seek(0);
    // Devices and pipes may never end, and cannot be read twice. QFile warns on the terminal about
    // an empty name.
    if (file->fileName().isEmpty() || obstacleAt(file->fileName()) != Obstacle::None ||
        !file->open(QIODevice::ReadOnly))
        return false;
    inputGuard::noteRead(file->handle(), file->fileName());
    return true;
}

int InputFile::read(char *buffer, int size)
{
    return static_cast<int>(std::max<qint64>(0, file->read(buffer, size)));
}

QString InputFile::fileName() const
{
    return file->fileName();
}

QString InputFile::errorString() const
{
    switch (obstacleAt(file->fileName())) {
    case Obstacle::None:
        break;
    case Obstacle::Folder:
        return QCoreApplication::translate("LanqorInputData", "is a folder");
    case Obstacle::NoRegularFile:
        return QCoreApplication::translate("LanqorInputData", "is no regular file");
    }
    return file->errorString();
}

LineReader::LineReader(const InputFile &file)
    : file(file)
{}

bool LineReader::open()
{
    if (!file.rewind())
        return false;
    buffer.resize(bufferSize);
    joined.clear();
    currentLine = {};
    position = filled = 0;
    number = 0;
    repeatLine = atEnd = false;
    lineComplete = atStart = true;
    decoder.reset();
    return true;
}

bool LineReader::refill()
{
    position = 0;
    if (decoder)
        return refillDecoded();
    filled = file.read(buffer.data(), bufferSize);
    if (!atStart)
        return filled > 0;
    atStart = false;
    const std::string_view start(buffer.constData(), static_cast<std::size_t>(filled));
    const bool isLittleEndian = textFields::startsWith(start, littleEndianMark);
    if (!isLittleEndian && !textFields::startsWith(start, bigEndianMark))
        return filled > 0;
    decoder = Utf16Decoder(isLittleEndian ? Utf16Decoder::ByteOrder::LittleEndian
                                          : Utf16Decoder::ByteOrder::BigEndian);
    file.rewind();
    encoded.resize(bufferSize / Utf16Decoder::growth - 1);
    return refillDecoded();
}

/// The byte order mark becomes that of UTF-8. A piece may end within its first character and give
/// no text yet.
bool LineReader::refillDecoded()
{
    filled = 0;
    while (filled == 0) {
        const int size = file.read(encoded.data(), encoded.size());
        if (size == 0)
            return false;
        filled = decoder->decode(encoded.constData(), size, buffer.data());
    }
    return true;
}

bool LineReader::next()
{
    if (repeatLine) {
        repeatLine = false;
        return true;
    }
    joined.clear();
    bool any = false;
    lineComplete = false;
    while (position < filled || refill()) {
        any = true;
        const char *begin = buffer.constData() + position;
        const auto available = static_cast<std::size_t>(filled - position);
        const auto *end = static_cast<const char *>(std::memchr(begin, '\n', available));
        const int length = static_cast<int>(end ? end - begin : filled - position);
        position += length + (end ? 1 : 0);
        lineComplete = end != nullptr;
        if (end && joined.isEmpty()) {
            currentLine = std::string_view(
                begin, static_cast<std::size_t>(std::min(length, maximumLineLength)));
            break;
        }
        joined.append(begin, std::min(length, maximumLineLength - joined.size()));
        currentLine = std::string_view(joined.constData(), static_cast<std::size_t>(joined.size()));
        if (end)
            break;
    }
    if (!any) {
        atEnd = true;
        currentLine = {};
        return false;
    }
    if (!currentLine.empty() && currentLine.back() == '\r')
        currentLine.remove_suffix(1);
    ++number;
    if (number == 1 && currentLine.substr(0, byteOrderMark.size()) == byteOrderMark)
        currentLine.remove_prefix(byteOrderMark.size());
    return true;
}
