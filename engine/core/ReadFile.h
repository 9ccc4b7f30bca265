#pragma once

#include <QString>

/// A file that was read, as it was.
struct ReadFile
{
    QString fileName; ///< as it was opened
    qint64 size = 0;  ///< bytes
    QString sha256;   ///< of its content, hexadecimal
};
