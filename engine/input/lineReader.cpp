#include "input/lineReader_p.h"

#include "core/inputGuard_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace {
constexpr int bufferSize = 1 << 18;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
} // namespace

QString missingFile(const QString &fileName)
{
    return fileName + QCoreApplication::translate("LanqorInputData", " does not exist.");
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
    const QFileInfo info(file->fileName());
    const bool isOtherKind = info.exists() && !info.isFile();
    if (file->fileName().isEmpty() || isOtherKind || !file->open(QIODevice::ReadOnly))
        return false;
    inputGuard::noteRead(file->handle());
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
    lineComplete = true;
    return true;
}

bool LineReader::refill()
{
    position = 0;
    filled = file.read(buffer.data(), bufferSize);
    return filled > 0;
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
