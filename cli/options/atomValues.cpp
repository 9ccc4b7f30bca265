#include "options/atomValues.h"

#include "Command.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>

namespace cli {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

} // namespace

AtomValues::AtomValues(const LanqorInputData &geometry, int coordNumber, const QString &option)
    : geometry(geometry)
    , coordNumber(coordNumber)
    , option(option)
{}

bool AtomValues::read(const QString &text)
{
    QVector<QPair<QString, double>> pairs;
    if (!parsePairs(text, pairs, reason)) {
        reason = QStringLiteral("%1: %2").arg(option, reason);
        return false;
    }
    byAtom.fill(0.0, coordNumber + 2);
    QVector<bool> isSet(coordNumber + 2, false);
    for (const bool namedAtoms : {false, true}) { // an atom's own value beats its element's
        for (const auto &pair : pairs) {
            if (!assign(pair, namedAtoms, isSet))
                return false;
        }
    }
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        if (!isSet.at(atom)) {
            reason = tr("%1 gives no value for element %2 (atom %3)")
                         .arg(option, geometry.getAtomLabel(atom))
                         .arg(atom);
            return false;
        }
    }
    return true;
}

bool AtomValues::assign(const QPair<QString, double> &pair, bool namedAtoms, QVector<bool> &isSet)
{
    bool isNumber = false;
    const int named = pair.first.toInt(&isNumber);
    if (isNumber != namedAtoms)
        return true;
    bool isUsed = false;
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        if (isNumber ? atom == named : geometry.getAtomLabel(atom) == pair.first) {
            byAtom[atom] = pair.second;
            isSet[atom] = true;
            isUsed = true;
        }
    }
    if (isUsed)
        return true;
    if (isNumber)
        reason = tr("%1: atom %2 is not coordinated; the coordinated atoms are 2 to %3")
                     .arg(option, pair.first)
                     .arg(coordNumber + 1);
    else
        note(tr("lanqor: %1: no coordinated atom is %2").arg(option, pair.first));
    return !isNumber;
}

} // namespace cli
