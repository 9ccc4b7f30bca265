#include "LanqorParametricEnergyLevels.h"

#include "core/reportText_p.h"
#include "core/title_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QTextStream>

#include <cmath>

namespace {

/// More than any ion has levels.
constexpr int maximumLines = 10000;

/// 0 for what is no finite number.
double number(const QString &text)
{
    const double value = text.toDouble();
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

EnergyLevelsExp LanqorParametricEnergyLevels::levelFromLabel(const QString &label)
{
    EnergyLevelsExp level;
    level.label = label;
    const auto term = LanqorSpectroscopicTermUtil::termFromLabel(label.left(2), false);
    level.S = term.S;
    level.L = term.L;
    QString textOfJ = label.mid(2);
    if (textOfJ.startsWith(QLatin1Char('('))) {
        const int closing = textOfJ.indexOf(QLatin1Char(')'));
        level.index = textOfJ.mid(1, closing - 1).toInt();
        textOfJ = closing < 0 ? QString() : textOfJ.mid(closing + 1);
    }
    level.J = getJDoubleFromString(textOfJ);
    return level;
}

double LanqorParametricEnergyLevels::getJDoubleFromString(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (parts.size() != 2)
        return number(parts.value(0));
    const double denominator = number(parts.at(1));
    return denominator == 0.0 ? 0.0 : number(parts.at(0)) / denominator;
}

bool LanqorParametricEnergyLevels::readEnergyLevelsExp(const QString &fileName,
                                                       QVector<EnergyLevelsExp> &levels)
{
    LineReader reader(fileName);
    if (!reader.open())
        return false;
    QVector<EnergyLevelsExp> found;
    textFields::Fields fields;
    while (reader.next()) {
        if (reader.lineNumber() > maximumLines)
            return false;
        textFields::split(reader.line(), fields);
        if (reader.lineNumber() == 1 || fields.empty())
            continue;
        EnergyLevelsExp level = levelFromLabel(textFields::toString(fields.front()));
        level.energy = textFields::toDouble(fields.back());
        found.append(level);
    }
    levels = found;
    return true;
}

QString LanqorParametricEnergyLevels::companionFile(const QString &suffix) const
{
    const QString exp = QStringLiteral(".exp");
    return (fileNameExp.endsWith(exp) ? fileNameExp.chopped(exp.size()) : fileNameExp) + suffix;
}

QString LanqorParametricEnergyLevels::getProgressFileName() const
{
    return companionFile(QStringLiteral(".output"));
}

QString LanqorParametricEnergyLevels::getResultFileName() const
{
    return companionFile(QStringLiteral(".result"));
}

void LanqorParametricEnergyLevels::endOfParametrization()
{
    report.clear();
    summary.clear();
    if (bestParameters.isEmpty())
        return;
    F2 = bestParameters.at(0);
    F4 = bestParameters.at(1);
    F6 = bestParameters.at(2);
    zeta = bestParameters.at(3);
    setLastError(QString()); // of a trial outside the bounds
    if (!calcResponseFunction())
        return;
    summary = makeSummary();
    report = makeReportTitle() + QLatin1Char('\n') + summary + QLatin1Char('\n');
    if (!requiredCitations.isEmpty())
        report += requiredCitations + QLatin1Char('\n');
    report += energyLevels->createOutputFile(QString());
    QString error;
    if (!reportText::writeFile(getResultFileName(), report, error))
        failWith(tr("%1: %2").arg(getResultFileName(), error));
}

QString LanqorParametricEnergyLevels::makeSummary() const
{
    QString text;
    QTextStream stream(&text);
    stream << " Free-ion parameters of 4f^" << electrons << ", fitted to measured levels\n\n"
           << "  F2   = " << reportText::fixed(F2, 4, 10) << " cm^-1\n"
           << "  F4   = " << reportText::fixed(F4, 4, 10) << " cm^-1\n"
           << "  F6   = " << reportText::fixed(F6, 4, 10) << " cm^-1\n"
           << "  zeta = " << reportText::fixed(zeta, 4, 10) << " cm^-1\n\n"
           << "  Response Function = " << bestResponse
           << " (sum of the relative deviations, per cent)\n"
           << "  Points = " << pointNumber << "\n\n"
           << levelTable();
    stream.flush();
    return text;
}

/// Measured and computed energies, and the rms difference of the fitted levels.
QString LanqorParametricEnergyLevels::levelTable() const
{
    QString text;
    QTextStream stream(&text);
    stream << "  level            measured    computed  difference   (cm^-1)\n";
    const QVector<MixedState> states = energyLevels->getMixedStatesVector();
    double squares = 0.0;
    int fitted = 0;
    for (int k = 0; k < energyLevelsExp.size(); ++k) {
        const EnergyLevelsExp &level = energyLevelsExp.at(k);
        const QString name = QStringLiteral("  ") + level.label.leftJustified(13);
        bool isFound = false;
        for (const MixedState &state : states) {
            if (stateLabels.at(k).isEmpty() || state.label != stateLabels.at(k))
                continue;
            isFound = true;
            const double difference = state.energy - level.energy;
            if (k > 0) {
                squares += difference * difference;
                ++fitted;
            }
            stream << name << reportText::fixed(level.energy, 2, 10)
                   << reportText::fixed(state.energy, 2, 12) << reportText::fixed(difference, 2, 12)
                   << (k == 0 ? "   ground level, not fitted\n" : "\n");
        }
        if (!isFound)
            stream << name << reportText::fixed(level.energy, 2, 10)
                   << "           -           -   no such level, not fitted\n";
    }
    stream << "  rms difference of " << fitted << " levels"
           << reportText::fixed(fitted > 0 ? std::sqrt(squares / fitted) : 0.0, 2, 10) << '\n';
    stream.flush();
    return text;
}
