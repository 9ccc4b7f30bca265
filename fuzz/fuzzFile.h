#pragma once

#include <LanqorEngine/LanqorInputData.h>

#include <QString>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory that holds the bytes of a trial; readers open it by its path.
class FuzzFile
{
public:
    FuzzFile(const std::uint8_t *data, std::size_t size)
        : descriptor(memfd_create("trial", 0))
    {
        if (descriptor < 0 || write(descriptor, data, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~FuzzFile() { close(descriptor); }
    FuzzFile(const FuzzFile &) = delete;
    FuzzFile &operator=(const FuzzFile &) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(descriptor); }

private:
    int descriptor;
};

/// Ends the run unless a reading that succeeded left no error and one that failed left one, and
/// all coordinates are finite.
inline void requireSound(const LanqorInputData &input, bool ok)
{
    if (ok != input.getLastError().isEmpty())
        std::abort();
    const QVector<Coord> atoms = input.getCoord();
    for (const Coord &atom : atoms) {
        if (!std::isfinite(atom.x) || !std::isfinite(atom.y) || !std::isfinite(atom.z))
            std::abort();
    }
}
