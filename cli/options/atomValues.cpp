#include "options/atomValues.h"

#include "Command.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QPair>
#include <QStringList>

#include <cmath>

namespace cli {

namespace {

using Pair = QPair<QString, double>;

/// What an option has to give: "O=...,N=...; the coordinated atoms are O 2, N 3".
QString neededValues(const QString &option, const LanqorInputData &geometry, int coordNumber)
{
    QStringList elements;
    QStringList atoms;
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const QString label = geometry.getAtomLabel(atom);
        atoms.append(QStringLiteral("%1 %2").arg(label, QString::number(atom)));
        if (!elements.contains(label))
            elements.append(label);
    }
    return tr("give %1 %2=NUMBER, by element or atom number; the coordinated atoms of %3 are %4")
        .arg(option, elements.join(QStringLiteral("=NUMBER,")), geometry.getFileName(),
             atoms.join(QStringLiteral(", ")));
}

/// Reads "O=0.9,N=1.2" or "2=0.9,3=1.1"; no value is below 0.
QVector<Pair> parsePairs(const QString &option, const QString &text)
{
    QVector<Pair> pairs;
    const QStringList entries = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &entry : entries) {
        const QStringList parts = entry.split(QLatin1Char('='));
        bool ok = false;
        const double value = parts.size() == 2 ? parts.at(1).trimmed().toDouble(&ok) : 0.0;
        const QString name = parts.at(0).trimmed();
        if (!ok || !std::isfinite(value) || name.isEmpty())
            throw UsageError{
                tr("%1: \"%2\" is not of the form NAME=NUMBER").arg(option, entry.trimmed())};
        if (value < 0.0)
            throw UsageError{tr("%1: %2 is negative, which neither a charge factor nor a "
                                "polarisability can be")
                                 .arg(option, entry.trimmed())};
        for (const Pair &pair : pairs)
            if (pair.first == name)
                throw UsageError{tr("%1: \"%2\" is given twice").arg(option, name)};
        pairs.append({name, value});
    }
    return pairs;
}

/// The coordinated atoms that the name of a value, an element or an atom number, stands for.
QVector<int> atomsOf(const QString &name, const LanqorInputData &geometry, int coordNumber)
{
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    QVector<int> atoms;
    for (int atom = 2; atom <= coordNumber + 1; ++atom)
        if (isNumber ? atom == number : geometry.getAtomLabel(atom) == name)
            atoms.append(atom);
    return atoms;
}

enum class Unused { Note, Pass };

/// The pair, from 0, that gives each coordinated atom its value; by atom number. Throws a
/// UsageError for an atom without one.
QVector<int> pairsOfAtoms(const QVector<Pair> &pairs, const LanqorInputData &geometry,
                          int coordNumber, const QString &option, Unused unused)
{
    QVector<int> sources(coordNumber + 2, -1);
    for (const bool namedAtoms : {false, true}) { // an atom's own value beats its element's
        for (int i = 0; i < pairs.size(); ++i) {
            const QString &name = pairs.at(i).first;
            bool isNumber = false;
            name.toInt(&isNumber);
            if (isNumber != namedAtoms)
                continue;
            const QVector<int> atoms = atomsOf(name, geometry, coordNumber);
            if (atoms.isEmpty() && isNumber)
                throw UsageError{
                    tr("%1: atom %2 is not coordinated; the coordinated atoms are 2 to %3")
                        .arg(option, name, QString::number(coordNumber + 1))};
            if (atoms.isEmpty() && unused == Unused::Note)
                note(tr("%1: no coordinated atom is %2").arg(option, name));
            for (const int atom : atoms)
                sources[atom] = i;
        }
    }
    for (int atom = 2; atom <= coordNumber + 1; ++atom)
        if (sources.at(atom) < 0)
            throw UsageError{tr("%1 gives no value for element %2 (atom %3): %4")
                                 .arg(option, geometry.getAtomLabel(atom), QString::number(atom),
                                      neededValues(option, geometry, coordNumber))};
    return sources;
}

} // namespace

QVector<int> readAtomSources(const LanqorInputData &geometry, int coordNumber,
                             const QString &option, const QString &text)
{
    return pairsOfAtoms(parsePairs(option, text), geometry, coordNumber, option, Unused::Pass);
}

QVector<double> readAtomValues(const LanqorInputData &geometry, int coordNumber,
                               const QString &option, const QString &text)
{
    const QVector<Pair> pairs = parsePairs(option, text);
    if (pairs.isEmpty())
        throw UsageError{
            tr("%1 is missing: %2").arg(option, neededValues(option, geometry, coordNumber))};
    const QVector<int> sources = pairsOfAtoms(pairs, geometry, coordNumber, option, Unused::Note);
    QVector<double> values(coordNumber + 2, 0.0);
    for (int atom = 2; atom <= coordNumber + 1; ++atom)
        values[atom] = pairs.at(sources.at(atom)).second;
    return values;
}

} // namespace cli
