#pragma once

#include <LanqorEngine/Coord.h>

#include <QVector>

class QCommandLineParser;
class QString;

namespace cli {

/// Second keyword line of a MOPAC job: the text of --keywords, else the charge and, when the
/// structure has a lanthanide, the sparkle model for it.
QString mopacKeywords(const QCommandLineParser &parser, const QVector<Coord> &atoms, int charge);

} // namespace cli
