#include "LanqorParametricStarkLevels.h"

#include "input/fitFiles_p.h"

#include <cstdio>

namespace {

/// Gives @p records what was read; false, and a message on the standard output, when the file
/// could not be opened.
template <typename Record>
bool take(const std::optional<QVector<Record>> &read, QVector<Record> &records,
          const QString &message)
{
    if (read) {
        records = *read;
        return true;
    }
    const QByteArray bytes = message.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
    return false;
}

} // namespace

bool LanqorParametricStarkLevels::readChargeFactorsFile(const QString &baseName,
                                                        QVector<ChargeFactorsGroup> &groups)
{
    const QString fileName = baseName + QStringLiteral(".chargefactors");
    return take(fitFiles::readChargeFactors(fileName), groups,
                tr("File ") + fileName + tr(" cannot be found"));
}

bool LanqorParametricStarkLevels::readParametersGroup(const QString &baseName,
                                                      QVector<ParametersGroup> &groups)
{
    const QString fileName = baseName + QStringLiteral(".groups");
    return take(fitFiles::readGroups(fileName), groups,
                tr("Cannot open the file ") + fileName + QLatin1Char('\n'));
}

bool LanqorParametricStarkLevels::readTransitionValues(const QString &baseName,
                                                       QVector<TransitionValues> &transitions)
{
    const QString fileName = baseName + QStringLiteral(".exp");
    return take(fitFiles::readTransitions(fileName), transitions,
                tr("LANQOR could not read the file ") + fileName + QLatin1Char('\n'));
}

void LanqorParametricStarkLevels::readGLimitsFile(const QString &baseName, QVector<GLimits> &limits)
{
    limits = fitFiles::readLimits(baseName + QStringLiteral(".limits")).value_or(limits);
}
