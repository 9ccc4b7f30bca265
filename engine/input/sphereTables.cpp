#include "LanqorInputData.h"

#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorResultTables.h>

using resultColumns::column;

LanqorResultTables LanqorInputData::makeTables(const SphereResults &results)
{
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("sphere"),
                     {column("structure_file"), column("ion"), column("coordination_number")},
                     {results.structureFile, results.ion, results.coordNumber});
    QVector<QVector<QVariant>> rows;
    for (const SphereAtom &atom : results.atoms) {
        const CoordSPH &position = atom.position;
        rows.append({atom.atom, position.label, position.r, position.theta, position.phi});
    }
    tables.addTable(QStringLiteral("atoms"),
                    {column("atom_from_1"), column("element"), column("distance", "Angstrom"),
                     column("theta", "deg"), column("phi", "deg")},
                    rows);
    return tables;
}
