#include "photophysics/complexComparison_p.h"

#include "core/elements_p.h"
#include "input/bondCutOff_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace complexComparison {

namespace {

/// Symbol of the element of a ligand atom; empty for anything else.
QString ligandElement(const QString &label)
{
    const QString symbol = elementLabel(label);
    if (symbol == QLatin1String("D") || symbol == QLatin1String("T"))
        return QStringLiteral("H");
    return atomicNumberOf(symbol) == 0 || LanqorInputData::isLanthanide(symbol) ? QString()
                                                                                : symbol;
}

/// Distances in ascending order, by element.
QMap<QString, QVector<double>> sortedDistances(const QVector<Atom> &atoms)
{
    QMap<QString, QVector<double>> distances;
    for (const Atom &atom : atoms) {
        const QString element = ligandElement(atom.label);
        if (!element.isEmpty())
            distances[element].append(atom.distance);
    }
    for (QVector<double> &list : distances)
        std::sort(list.begin(), list.end());
    return distances;
}

} // namespace

QMap<QString, int> composition(const QVector<Atom> &atoms)
{
    QMap<QString, int> counts;
    for (const Atom &atom : atoms) {
        const QString element = ligandElement(atom.label);
        if (!element.isEmpty())
            ++counts[element];
    }
    return counts;
}

QString formula(const QMap<QString, int> &composition)
{
    const QStringList first = {QStringLiteral("C"), QStringLiteral("H")};
    QStringList parts;
    const auto add = [&](const QString &element) {
        if (composition.contains(element))
            parts.append(element + QString::number(composition.value(element)));
    };
    for (const QString &element : first)
        add(element);
    for (auto entry = composition.begin(); entry != composition.end(); ++entry)
        if (!first.contains(entry.key()))
            add(entry.key());
    return parts.join(QLatin1Char(' '));
}

double Difference::size() const
{
    return std::abs(inComplex - amongLigands);
}

Difference largestDifference(const QVector<Atom> &complex, const QVector<Atom> &ligands)
{
    const QMap<QString, QVector<double>> inComplex = sortedDistances(complex);
    const QMap<QString, QVector<double>> amongLigands = sortedDistances(ligands);
    Difference largest;
    for (auto entry = inComplex.begin(); entry != inComplex.end(); ++entry) {
        const QVector<double> &own = entry.value();
        const QVector<double> others = amongLigands.value(entry.key());
        for (int i = 0; i < std::min(own.size(), others.size()); ++i) {
            if (std::min(own.at(i), others.at(i)) > bondCutOff(entry.key()))
                break;
            const Difference found = {entry.key(), own.at(i), others.at(i)};
            if (largest.element.isEmpty() || found.size() > largest.size())
                largest = found;
        }
    }
    return largest;
}

double largestShift(const QVector<Atom> &a, const QVector<Atom> &b)
{
    if (composition(a) != composition(b))
        return std::numeric_limits<double>::infinity();
    const QMap<QString, QVector<double>> ofA = sortedDistances(a);
    const QMap<QString, QVector<double>> ofB = sortedDistances(b);
    double largest = 0.0;
    for (auto entry = ofA.begin(); entry != ofA.end(); ++entry) {
        const QVector<double> others = ofB.value(entry.key());
        for (int i = 0; i < entry.value().size(); ++i)
            largest = std::max(largest, std::abs(entry.value().at(i) - others.at(i)));
    }
    return largest;
}

} // namespace complexComparison
