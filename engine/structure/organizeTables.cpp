#include "LanqorOrganizeMolecules.h"

#include <LanqorEngine/LanqorResultTables.h>

LanqorResultTables LanqorOrganizeMolecules::makeTables(const OrganizeResults &results)
{
    const QString none;
    const QString angstrom = QStringLiteral("Angstrom");
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("structure"),
                     {{QStringLiteral("ion"), none}, {QStringLiteral("coordination_number"), none}},
                     {results.ion, results.coordNumber});
    QVector<QVector<QVariant>> ligands;
    for (const OrganizedLigand &ligand : results.ligands) {
        QStringList atoms;
        for (const int atom : ligand.coordinatedAtoms)
            atoms.append(QString::number(atom));
        ligands.append({ligand.name, atoms.join(QLatin1Char(' '))});
    }
    tables.addTable(
        QStringLiteral("ligands"),
        {{QStringLiteral("ligand"), none}, {QStringLiteral("coordinated_atoms_from_1"), none}},
        ligands);
    QVector<QVector<QVariant>> omitted;
    for (const OmittedFragment &fragment : results.omittedFragments)
        omitted.append({fragment.formula, fragment.count,
                        fragment.isChargeKnown ? QVariant(fragment.charge) : QVariant()});
    if (!omitted.isEmpty())
        tables.addTable(QStringLiteral("omitted_fragments"),
                        {{QStringLiteral("fragment"), none},
                         {QStringLiteral("count"), none},
                         {QStringLiteral("charge"), QStringLiteral("e")}},
                        omitted);
    QVector<QVector<QVariant>> atoms;
    for (int i = 0; i < results.atoms.size(); ++i) {
        const OrganizedAtom &atom = results.atoms.at(i);
        atoms.append({i + 1, atom.position.label, atom.position.x, atom.position.y, atom.position.z,
                      atom.sourceAtom, atom.fragment, atom.isCoordinated});
    }
    tables.addTable(QStringLiteral("atoms"),
                    {{QStringLiteral("atom_from_1"), none},
                     {QStringLiteral("element"), none},
                     {QStringLiteral("x"), angstrom},
                     {QStringLiteral("y"), angstrom},
                     {QStringLiteral("z"), angstrom},
                     {QStringLiteral("source_atom_from_1"), none},
                     {QStringLiteral("fragment"), none},
                     {QStringLiteral("is_coordinated"), none}},
                    atoms);
    return tables;
}
