#include "input/disorder_p.h"

#include "core/covalentRadii_p.h"
#include "input/atomGrid_p.h"

namespace disorder {

namespace {

constexpr double shareOfRadii = 0.6;
constexpr double largestRadius = 2.60; // Angstrom, of francium

} // namespace

QVector<std::pair<int, int>> pairs(const QVector<Coord> &atoms)
{
    QVector<Coord> heavy;
    QVector<int> numbers;
    QVector<double> radii;
    for (int i = 0; i < atoms.size(); ++i) {
        const double radius = covalentRadius(atoms.at(i).label);
        if (radius == 0.0 || atoms.at(i).label == QLatin1String("H"))
            continue;
        heavy.append(atoms.at(i));
        numbers.append(i);
        radii.append(radius);
    }
    QVector<std::pair<int, int>> found;
    const AtomGrid grid(heavy, shareOfRadii * 2.0 * largestRadius);
    for (int i = 0; i < heavy.size() && found.size() < maximumPairs; ++i) {
        grid.visitEarlier(heavy.at(i), i, [&](int other) {
            if (distanceOf(heavy.at(i), heavy.at(other)) <
                shareOfRadii * (radii.at(i) + radii.at(other)))
                found.append(std::make_pair(numbers.at(other), numbers.at(i)));
            return found.size() == maximumPairs;
        });
    }
    return found;
}

} // namespace disorder
