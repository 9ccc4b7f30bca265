#include "LanqorDonorTriplet.h"

#include "core/reportText_p.h"
#include "core/resultColumns_p.h"
#include "structure/ligandName_p.h"

#include <LanqorEngine/LanqorResultTables.h>

namespace {

using reportText::fixed;
using resultColumns::column;
using resultColumns::uncertainty;

using Row = QVector<QVariant>;

QString tr(const char *text)
{
    return LanqorDonorTriplet::tr(text);
}

QString cell(const QString &text, int width)
{
    return text.rightJustified(width);
}

QString dash(int width)
{
    return cell(QStringLiteral("-"), width);
}

/// "23713 +- 1100 cm-1 (22613 to 24813)"
QString interval(const DonorTripletResults &results)
{
    if (!(results.standardDeviation > 0.0))
        return tr("%1 cm-1, standard deviation not known").arg(fixed(results.energy, 0));
    return tr("%1 +- %2 cm-1 (%3 to %4)")
        .arg(fixed(results.energy, 0), fixed(results.standardDeviation, 0), fixed(results.low, 0),
             fixed(results.high, 0));
}

const TripletValue &chosenValue(const DonorTripletResults &results)
{
    return results.chosen == TripletMethod::Measured ? results.measured
           : results.chosen == TripletMethod::States ? results.states
                                                     : results.gfn1;
}

/// "acetylacetonate, C5H7O2", or the formula alone.
QString nameOf(const DonorCandidate &candidate)
{
    return candidate.name.isEmpty()
               ? candidate.formula
               : QStringLiteral("%1, %2").arg(candidate.name, candidate.formula);
}

QString donorLine(const DonorTripletResults &results)
{
    if (results.donor < 0)
        return tr("Donor ligand: not known\n");
    const DonorCandidate &donor = results.candidates.at(results.donor);
    const int count = donor.fragments.size();
    const QString source = results.isDonorAskedFor ? tr("asked for")
                           : donor.triplet > 0     ? tr("with the lowest local triplet by INDO")
                                                   : tr("told by the bonds that change by GFN1");
    return (count > 1 ? tr("Donor ligand: %1, %2 equal ones; %3\n")
                            .arg(nameOf(donor), QString::number(count), source)
                      : tr("Donor ligand: %1; %2\n").arg(nameOf(donor), source));
}

QString valueLine(const TripletValue &value)
{
    const bool hasNumber = value.raw > 0.0;
    QString text =
        value.name.leftJustified(14) + (hasNumber ? fixed(value.raw, 1, 11) : dash(11)) +
        (value.shift > 0.0 ? fixed(value.shift, 0, 8) : dash(8)) +
        (value.isAvailable ? fixed(value.energy, 1, 11) : dash(11)) +
        (value.isAvailable && value.standardDeviation > 0.0 ? fixed(value.standardDeviation, 0, 8)
                                                            : dash(8)) +
        QStringLiteral("  ") +
        (value.isAvailable ? value.basis
         : hasNumber       ? tr("not used: %1").arg(value.reason)
                           : value.reason);
    if (value.isAvailable && !value.knownError.isEmpty())
        text += tr("; known to be %1").arg(value.knownError);
    return text + QLatin1Char('\n');
}

QString valueTable(const DonorTripletResults &results)
{
    QString text =
        QStringLiteral("\n%1%2%3%4%5  %6\n")
            .arg(tr("method").leftJustified(14), cell(tr("found/cm-1"), 11), cell(tr("shift"), 8),
                 cell(tr("T1/cm-1"), 11), cell(tr("sd"), 8), tr("basis"));
    for (const TripletValue *value : {&results.measured, &results.states, &results.gfn1})
        text += valueLine(*value);
    if (results.areCompared)
        text +=
            results.doAgree
                ? tr("Two methods agree: they differ by %1 cm-1, within 1200.\n")
                      .arg(fixed(std::abs(results.difference), 0))
                : tr("The two calculations do not agree: they differ by %1 cm-1 (limit 1200).\n")
                      .arg(fixed(std::abs(results.difference), 0));
    return text;
}

QString candidateTable(const DonorTripletResults &results)
{
    if (results.candidates.isEmpty())
        return QString();
    QString text = QStringLiteral("\n%1%2%3%4%5%6  %7\n")
                       .arg(tr("ligand").leftJustified(20), cell(tr("count"), 6),
                            cell(tr("triplet"), 9), cell(tr("E/cm-1"), 11), cell(tr("singlet"), 9),
                            cell(tr("E/cm-1"), 11), tr("kind (lowest local states as calculated)"));
    for (const DonorCandidate &candidate : results.candidates) {
        text += candidate.formula.leftJustified(20) +
                cell(QString::number(candidate.fragments.size()), 6);
        text += candidate.triplet > 0 ? cell(QString::number(candidate.triplet), 9) +
                                            fixed(candidate.tripletEnergy, 1, 11)
                                      : dash(9) + dash(11);
        text += candidate.singlet > 0 ? cell(QString::number(candidate.singlet), 9) +
                                            fixed(candidate.singletEnergy, 1, 11)
                                      : dash(9) + dash(11);
        text += QStringLiteral("  ") + candidate.kind.name;
        if (!candidate.kind.isAntenna)
            text += tr("; no antenna");
        if (candidate.kind.hasFiveMemberedRing)
            text += tr("; five-membered ring %1").arg(candidate.kind.fiveMemberedRing);
        text += QLatin1Char('\n');
    }
    return text;
}

QString chargeTable(const DonorTripletResults &results)
{
    if (results.chargeChanges.isEmpty())
        return QString();
    QString text = tr("\nCharges of the triplet less those of the ground state by GFN1 (e; limit "
                      "0.15 for a ligand)\n");
    for (int f = 0; f < results.chargeChanges.size(); ++f)
        if (!results.gfn1Fragments.at(f).atoms.isEmpty())
            text += ligandName::canonical(results.gfn1Fragments.at(f).formula).leftJustified(20) +
                    fixed(results.chargeChanges.at(f), 3, 8) + QLatin1Char('\n');
    return text;
}

QString list(const QString &title, const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += QStringLiteral("%1: %2\n").arg(title, line);
    return text.isEmpty() ? text : QLatin1Char('\n') + text;
}

QString keyOf(TripletMethod method)
{
    switch (method) {
    case TripletMethod::Measured:
        return QStringLiteral("measured");
    case TripletMethod::States:
        return QStringLiteral("states");
    case TripletMethod::Gfn1:
        return QStringLiteral("gfn1");
    case TripletMethod::None:
        break;
    }
    return QString();
}

/// Nothing for a number or a text that is not there.
QVariant existing(double value)
{
    return value > 0.0 ? QVariant(value) : QVariant();
}

QVariant existing(int number)
{
    return number > 0 ? QVariant(number) : QVariant();
}

QVariant existing(const QString &text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

void addSummary(LanqorResultTables &tables, const DonorTripletResults &results)
{
    const bool isChosen = results.chosen != TripletMethod::None;
    const bool hasDonor = results.donor >= 0;
    tables.addRecord(
        QStringLiteral("donor_triplet"),
        {column("method"), column("energy", "cm^-1"),
         uncertainty("standard_deviation", "energy", "cm^-1"),
         uncertainty("low", "energy", "cm^-1"), uncertainty("high", "energy", "cm^-1"),
         column("levels_reached"), column("is_measurement_needed"), column("first_line"),
         column("donor_ligand"), column("triplet_from_1"), column("triplet_rl", "Angstrom"),
         column("singlet_from_1"), column("singlet_energy", "cm^-1"),
         column("singlet_rl", "Angstrom"), column("is_at_gfn1_ground_state"),
         column("gfn1_less_states", "cm^-1"), column("do_two_methods_agree"), column("gfn1_system"),
         column("gfn1_donor_ligand")},
        {existing(keyOf(results.chosen)), isChosen ? QVariant(results.energy) : QVariant(),
         existing(results.standardDeviation), isChosen ? QVariant(results.low) : QVariant(),
         isChosen ? QVariant(results.high) : QVariant(),
         existing(results.levelsReached.join(QLatin1Char(' '))), results.isMeasurementNeeded,
         existing(results.firstLine),
         hasDonor ? QVariant(results.candidates.at(results.donor).formula) : QVariant(),
         existing(results.tripletState), existing(results.tripletDistance),
         existing(results.singletState), existing(results.singletEnergy),
         existing(results.singletDistance), results.isAtGfn1GroundState,
         results.areCompared ? QVariant(results.difference) : QVariant(),
         results.areCompared ? QVariant(results.doAgree) : QVariant(), existing(results.gfn1System),
         existing(results.gfn1Donor)});
}

void addMethods(LanqorResultTables &tables, const DonorTripletResults &results)
{
    QVector<Row> rows;
    for (const TripletMethod method :
         {TripletMethod::Measured, TripletMethod::States, TripletMethod::Gfn1}) {
        const TripletValue &value = method == TripletMethod::Measured ? results.measured
                                    : method == TripletMethod::States ? results.states
                                                                      : results.gfn1;
        rows.append({keyOf(method), value.name, value.isAvailable, existing(value.reason),
                     existing(value.raw),
                     existing(value.raw).isValid() ? QVariant(value.shift) : QVariant(),
                     existing(value.energy), existing(value.standardDeviation),
                     existing(value.knownError), existing(value.basis)});
    }
    tables.addTable(QStringLiteral("triplet_methods"),
                    {column("method"), column("name"), column("is_available"),
                     column("reason_without"), column("found", "cm^-1"), column("shift", "cm^-1"),
                     column("energy", "cm^-1"),
                     uncertainty("standard_deviation", "energy", "cm^-1"), column("known_error"),
                     column("basis")},
                    rows);
}

void addCandidates(LanqorResultTables &tables, const DonorTripletResults &results)
{
    QVector<Row> rows;
    for (const DonorCandidate &candidate : results.candidates)
        rows.append({candidate.formula, existing(candidate.name), candidate.fragments.size(),
                     candidate.kind.name, candidate.kind.gfn1StandardDeviation,
                     existing(candidate.kind.gfn1Error), existing(candidate.kind.fiveMemberedRing),
                     existing(candidate.triplet), existing(candidate.tripletEnergy),
                     existing(candidate.singlet), existing(candidate.singletEnergy),
                     candidate.kind.isAntenna});
    tables.addTable(QStringLiteral("donor_candidates"),
                    {column("ligand"), column("name"), column("count"), column("kind"),
                     column("gfn1_standard_deviation", "cm^-1"), column("gfn1_known_error"),
                     column("five_membered_ring"), column("triplet_from_1"),
                     column("triplet_energy", "cm^-1"), column("singlet_from_1"),
                     column("singlet_energy", "cm^-1")},
                    rows);
    rows.clear();
    for (int f = 0; f < results.chargeChanges.size(); ++f)
        rows.append({f + 1, existing(ligandName::canonical(results.gfn1Fragments.at(f).formula)),
                     results.chargeChanges.at(f)});
    tables.addTable(QStringLiteral("gfn1_charge_changes"),
                    {column("fragment_from_1"), column("fragment"), column("charge_change", "e")},
                    rows);
}

void addTexts(LanqorResultTables &tables, const DonorTripletResults &results)
{
    QVector<Row> rows;
    for (const QString &text : results.warnings)
        rows.append({QStringLiteral("warning"), text});
    for (const QString &text : results.remarks)
        rows.append({QStringLiteral("remark"), text});
    tables.addTable(QStringLiteral("donor_triplet_remarks"), {column("kind"), column("text")},
                    rows);
}

} // namespace

QString LanqorDonorTriplet::makeText(const DonorTripletResults &results)
{
    QString text;
    if (!results.firstLine.isEmpty())
        text += results.firstLine + QStringLiteral("\n\n");
    text += tr("Triplet energy of the donor ligand\n") + donorLine(results);
    text += valueTable(results);
    if (results.chosen != TripletMethod::None)
        text += tr("\nT1 = %1, %2\n").arg(interval(results), chosenValue(results).name);
    if (results.tripletState > 0)
        text += tr("T1 is triplet %1 of the excited states, RL %2 Angstrom\n")
                    .arg(QString::number(results.tripletState), fixed(results.tripletDistance, 4));
    if (results.singletState > 0)
        text += tr("S1 is singlet %1, %2 cm-1 as calculated, RL %3 Angstrom\n")
                    .arg(QString::number(results.singletState), fixed(results.singletEnergy, 1),
                         fixed(results.singletDistance, 4));
    return text + candidateTable(results) + chargeTable(results) +
           list(tr("Warning"), results.warnings) + list(tr("Remark"), results.remarks);
}

LanqorResultTables LanqorDonorTriplet::makeTables(const DonorTripletResults &results)
{
    LanqorResultTables tables;
    addSummary(tables, results);
    addMethods(tables, results);
    addCandidates(tables, results);
    addTexts(tables, results);
    return tables;
}
