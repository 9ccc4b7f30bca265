#include "LanqorEnergyLevels_p.h"

#include "core/reportText_p.h"

#include <QTextStream>

#include <cmath>

QString LanqorEnergyLevels::createOutputFile(const QString &fileName) const
{
    QString text;
    QTextStream stream(&text);
    for (int i = 0; i < d->mixedStates.size(); ++i) {
        const MixedState &state = d->mixedStates.at(i);
        stream << i + 1 << "  " << reportText::fixed(state.energy, 0) << '\n'
               << '|' << state.label << "> = ";
        for (const CoeffAndLabel &component : state.components) {
            const QString weight = (component.coefficient >= 0.0 ? '+' : '-') +
                                   reportText::fixed(std::abs(component.coefficient), 4);
            stream << weight.rightJustified(5) << '|' << component.label << "> ";
        }
        stream << "\n*********************\n";
    }
    stream.flush();
    if (!fileName.isEmpty()) {
        QString ignored; // whether the file could be written is not reported
        reportText::writeFile(fileName, text, ignored);
    }
    return text;
}
