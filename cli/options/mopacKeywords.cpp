#include "options/mopacKeywords.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>

namespace cli {

int chargeOfSystem(const LanqorInputData &structure)
{
    const int charge = qRound(structure.getChargeOnSystem());
    if (!structure.isChargeOnSystemTold())
        note(tr("the charge of the system is taken as %1; give another with --charge").arg(charge));
    return charge;
}

QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge)
{
    return options.isSet("keywords") ? options.text("keywords")
                                     : LanqorFilesConverter::sparkleKeywords(atoms, charge);
}

} // namespace cli
