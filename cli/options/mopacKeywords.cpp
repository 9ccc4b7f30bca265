#include "options/mopacKeywords.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>

namespace cli {

int chargeOfSystem(const LanqorInputData &structure, const QString &file)
{
    const int charge = qRound(structure.getChargeOnSystem());
    if (!file.endsWith(QLatin1String(".out")))
        note(tr("lanqor: note: the charge of the system is taken "
                "as %1; give another with --charge")
                 .arg(charge));
    return charge;
}

QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge)
{
    if (options.isSet("keywords"))
        return options.text("keywords");
    const bool hasLanthanide = std::any_of(atoms.begin(), atoms.end(), [](const Coord &atom) {
        return LanqorInputData::isLanthanide(atom.label);
    });
    return (hasLanthanide ? QStringLiteral("SPARKLE ") : QString()) +
           QStringLiteral("CHARGE=%1").arg(charge);
}

} // namespace cli
