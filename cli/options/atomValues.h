#pragma once

#include <QPair>
#include <QString>
#include <QVector>

class LanqorInputData;

namespace cli {

/// Values of one quantity for atoms 2 to N+1 from pairs of element or atom number and value.
class AtomValues
{
public:
    /// @param geometry  must outlive this object
    /// @param option  the command-line option, for messages
    AtomValues(const LanqorInputData &geometry, int coordNumber, const QString &option);

    /// Fills values(); false with the reason in error().
    bool read(const QString &text);

    QVector<double> values() const { return byAtom; } ///< by atom number, N+2 entries
    QString error() const { return reason; }

private:
    bool assign(const QPair<QString, double> &pair, bool namedAtoms, QVector<bool> &isSet);

    const LanqorInputData &geometry;
    int coordNumber;
    QString option;
    QVector<double> byAtom;
    QString reason;
};

} // namespace cli
