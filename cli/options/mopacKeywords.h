#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QVector>

class LanqorInputData;

namespace cli {

class OptionReader;

/// Charge of the system of a job, when --charge does not tell it: that which the file tells, else
/// 0, of which a note tells.
int chargeOfSystem(const LanqorInputData &structure);

/// Second keyword line of a MOPAC job: the text of --keywords, else the keywords that the atoms
/// need.
QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge);

} // namespace cli
