#include "LanqorEnergyLevels.h"

#include "core/reportText_p.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QTextStream>

#include <cmath>

namespace {

QString reportOf(const FreeIonLevelsResults &results)
{
    QString text;
    QTextStream stream(&text);
    for (const FreeIonLevelsResults::Level &level : results.levels) {
        stream << level.number << "  " << reportText::fixed(level.energy, 0) << '\n'
               << '|' << level.label << "> = ";
        for (const CoeffAndLabel &component : level.components) {
            const QString weight = (component.coefficient >= 0.0 ? '+' : '-') +
                                   reportText::fixed(std::abs(component.coefficient), 4);
            stream << weight.rightJustified(5) << '|' << component.label << "> ";
        }
        stream << "\n*********************\n";
    }
    stream.flush();
    return text;
}

} // namespace

QString LanqorEnergyLevels::createOutputFile(const QString &fileName) const
{
    QString text = reportOf(getResults());
    if (!fileName.isEmpty()) {
        QString ignored; // whether the file could be written is not reported
        LanqorOutputFile::write(fileName, text.toUtf8(), ignored);
    }
    return text;
}
