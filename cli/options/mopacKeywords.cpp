#include "options/mopacKeywords.h"

#include "Command.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>

namespace cli {

int chargeOfSystem(const LanqorInputData &structure, const QString &file)
{
    const int charge = qRound(structure.getChargeOnSystem());
    if (!file.endsWith(QLatin1String(".out")))
        note(QCoreApplication::translate("cli", "lanqor: note: the charge of the system is taken "
                                                "as %1; give another with --charge")
                 .arg(charge));
    return charge;
}

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
