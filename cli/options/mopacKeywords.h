#pragma once

#include <LanqorEngine/Coord.h>

#include <QVector>

class QString;
class LanqorInputData;

namespace cli {

class OptionReader;

/// Charge of the system, when --charge does not tell it: that of the MOPAC output @p file, else 0,
/// of which a note tells.
int chargeOfSystem(const LanqorInputData &structure, const QString &file);

/// Second keyword line of a MOPAC job: the text of --keywords, else the charge and, when the
/// structure has a lanthanide, the sparkle model for it.
QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge);

} // namespace cli
