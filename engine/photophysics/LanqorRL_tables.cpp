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
    return tables;
}
