#include "photophysics/indicesTable_p.h"

#include "core/reportText_p.h"

QString indicesTable(const IndicesResults &results)
{
    QString text = QLatin1String(reportText::indicesHeading);
    for (const AtomIndices &atom : results.atoms)
        text += QString::number(atom.atom).rightJustified(5) + QLatin1Char(' ') +
                atom.label.leftJustified(3) + reportText::fixed(atom.population, 6, 16) +
                reportText::fixed(atom.superDeslocalizability, 6, 20) + QLatin1Char('\n');
    return text;
}
