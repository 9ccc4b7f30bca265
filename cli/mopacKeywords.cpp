#include "mopacKeywords.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCommandLineParser>

#include <algorithm>

namespace cli {

QString mopacKeywords(const QCommandLineParser &parser, const QVector<Coord> &atoms, int charge)
{
    if (parser.isSet(QStringLiteral("keywords")))
        return parser.value(QStringLiteral("keywords"));
    const bool hasLanthanide = std::any_of(atoms.begin(), atoms.end(), [](const Coord &atom) {
        return LanqorInputData::isLanthanide(atom.label);
    });
    return (hasLanthanide ? QStringLiteral("SPARKLE ") : QString()) +
           QStringLiteral("CHARGE=%1").arg(charge);
}

} // namespace cli
