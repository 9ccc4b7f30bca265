#pragma once

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QByteArray>
#include <QString>

/// The lines of a table of the 4f shell (terms with their coefficients of fractional parentage, or
/// electrostatic matrix elements), which ends at the first empty one or at the end of the file.
class FShellTableReader
{
public:
    explicit FShellTableReader(const QString &fileName);

    bool open();
    /// Moves to the next line; false at the end of the table and after a failure.
    bool next();
    /// True when @p text stands anywhere in the line.
    bool contains(const QByteArray &text) const;
    /// A field counted from 0; empty when the line has fewer.
    QString text(std::size_t field) const;
    /// 0 for what is no number; one that is not finite is a failure.
    double number(std::size_t field);
    void fail(const QString &reason);
    /// Empty while all went well.
    QString errorText() const { return error; }

private:
    LineReader reader;
    textFields::Fields fields;
    QString error;
};
