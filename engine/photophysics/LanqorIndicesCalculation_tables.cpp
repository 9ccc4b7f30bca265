#include "LanqorIndicesCalculation.h"

#include <LanqorEngine/LanqorResultTables.h>

LanqorResultTables LanqorIndicesCalculation::makeTables(const IndicesResults &results)
{
    QVector<QVector<QVariant>> rows;
    for (const AtomIndices &atom : results.atoms)
        rows.append({atom.atom, atom.label, atom.population, atom.superDeslocalizability});
    LanqorResultTables tables;
    tables.addTable(
        QStringLiteral("reactivity_indices"),
        {{QStringLiteral("atom_from_1"), QString()},
         {QStringLiteral("element"), QString()},
         {QStringLiteral("electron_population"), QStringLiteral("1")},
         {QStringLiteral("superdelocalizability"), QStringLiteral("1/") + results.energyUnit}},
        rows);
    return tables;
}
