#include "LanqorRL.h"

#include <LanqorEngine/LanqorResultTables.h>

namespace {

using Row = QVector<QVariant>;

/// 0 stands for a value that is not known.
QVariant known(double value)
{
    return value > 0.0 ? QVariant(value) : QVariant();
}

QString key(const char *text)
{
    return QLatin1String(text);
}

/// @p kind  "singlet" or "triplet"
void addStates(LanqorResultTables &tables, const QString &kind, const QVector<LigandState> &states)
{
    const ResultColumn number = {kind + key("_from_1"), QString()};
    QVector<Row> rows;
    QVector<Row> excitations;
    for (int i = 0; i < states.size(); ++i) {
        const LigandState &state = states.at(i);
        rows.append({i + 1, state.energy, known(state.wavelength), state.oscillatorStrength,
                     known(state.rl)});
        for (int pair = 0; pair < state.weights.size(); ++pair)
            excitations.append({i + 1, state.configurations.at(2 * pair),
                                state.configurations.at(2 * pair + 1),
                                known(state.weights.at(pair))});
    }
    tables.addTable(kind + key("s"),
                    {number,
                     {key("energy"), key("cm^-1")},
                     {key("wavelength"), key("nm")},
                     {key("oscillator_strength"), key("1")},
                     {key("rl"), key("Angstrom")}},
                    rows);
    tables.addTable(kind + key("_excitations"),
                    {number,
                     {key("from_orbital_as_printed"), QString()},
                     {key("to_orbital_as_printed"), QString()},
                     {key("weight"), key("1")}},
                    excitations);
}

/// Hole and electron of the states of one kind; @p kind as above.
void addCharacters(LanqorResultTables &tables, const QString &kind,
                   const QVector<LigandState> &states)
{
    const ResultColumn number = {kind + key("_from_1"), QString()};
    QVector<Row> transfers;
    QVector<Row> shares;
    for (int i = 0; i < states.size(); ++i) {
        const LigandState &state = states.at(i);
        if (!state.holeShares.isEmpty())
            transfers.append({i + 1, state.chargeTransfer});
        for (int f = 0; f < state.holeShares.size(); ++f)
            shares.append({i + 1, f + 1, state.holeShares.at(f), state.electronShares.at(f)});
    }
    tables.addTable(kind + key("_charge_transfer"), {number, {key("charge_transfer"), key("1")}},
                    transfers);
    tables.addTable(kind + key("_hole_and_electron"),
                    {number,
                     {key("fragment_from_1"), QString()},
                     {key("hole_share"), key("1")},
                     {key("electron_share"), key("1")}},
                    shares);
}

void addFragments(LanqorResultTables &tables, const QVector<DonorFragment> &fragments)
{
    QVector<Row> rows;
    for (int f = 0; f < fragments.size(); ++f)
        for (const int atom : fragments.at(f).atoms)
            rows.append({f + 1, fragments.at(f).formula, atom});
    tables.addTable(key("fragments"),
                    {{key("fragment_from_1"), QString()},
                     {key("formula"), QString()},
                     {key("atom_from_1"), QString()}},
                    rows);
}

} // namespace

LanqorResultTables LanqorRL::makeTables(const DonorStatesResults &results)
{
    const bool hasDistances = results.reasonWithoutDistances.isEmpty();
    LanqorResultTables tables;
    tables.addRecord(
        key("donor_states"),
        {{key("excited_state_file"), QString()},
         {key("shortest_distance"), key("Angstrom")},
         {key("reason_without_rl"), QString()},
         {key("program"), QString()},
         {key("ground_state_from_1"), QString()}},
        {results.outputPath, hasDistances ? QVariant(results.minDistanceLnLigand) : QVariant(),
         hasDistances ? QVariant() : QVariant(results.reasonWithoutDistances), results.program,
         results.groundState > 0 ? QVariant(results.groundState) : QVariant()});
    addStates(tables, key("singlet"), results.singlets);
    addStates(tables, key("triplet"), results.triplets);
    if (results.fragments.isEmpty())
        return tables;
    addCharacters(tables, key("singlet"), results.singlets);
    addCharacters(tables, key("triplet"), results.triplets);
    addFragments(tables, results.fragments);
    return tables;
}
