#include "run/RunDocument.h"

#include "plots/figures.h"
#include "run/RunReport.h"
#include "text.h"

#include <LanqorEngine/DonorTripletResults.h>

#include <QMap>

#include <algorithm>
#include <cmath>

namespace runDocument {

using cli::tr;

namespace {

/// More states than this are not listed.
constexpr int mostStates = 8;

QString atomName(const Coord &atom, int number)
{
    return QStringLiteral("%1 %2").arg(atom.label, QString::number(number));
}

QMap<int, QString> ligandsByAtom(const QVector<OrganizedLigand> &ligands)
{
    QMap<int, QString> names;
    for (const OrganizedLigand &ligand : ligands)
        for (const int atom : ligand.coordinatedAtoms)
            names.insert(atom, ligand.name);
    return names;
}

Block sphereTable(const RunReport &report)
{
    const QMap<int, QString> ligands = ligandsByAtom(report.ligands);
    QVector<QStringList> rows;
    for (const SphereAtom &atom : report.sphere.atoms)
        rows.append({QStringLiteral("%1 %2").arg(atom.position.label, QString::number(atom.atom)),
                     fixed(atom.position.r, 4), fixed(atom.position.theta, 2),
                     fixed(atom.position.phi, 2), ligands.value(atom.atom)});
    return table(tr("Coordinated atoms, about the ion"),
                 {tr("atom"), tr("R / Angstrom"), tr("theta / deg"), tr("phi / deg"), tr("ligand")},
                 rows);
}

Block tripletTable(const DonorTripletResults &triplet)
{
    QVector<QStringList> rows;
    for (const TripletValue *value : {&triplet.measured, &triplet.states, &triplet.gfn1}) {
        QStringList row = {value->name, value->raw > 0.0 ? fixed(value->raw, 0) : QString(),
                           value->shift > 0.0 ? fixed(value->shift, 0) : QString(),
                           value->isAvailable ? fixed(value->energy, 0) : QString(),
                           value->isAvailable && value->standardDeviation > 0.0
                               ? fixed(value->standardDeviation, 0)
                               : QString()};
        QString basis = value->isAvailable ? value->basis : tr("not used: %1").arg(value->reason);
        if (value->isAvailable && !value->knownError.isEmpty())
            basis += tr("; known to be %1").arg(value->knownError);
        rows.append(row << basis);
    }
    return table(tr("Triplet energy by each method, cm^-1"),
                 {tr("method"), tr("found"), tr("shift"), tr("T1"), tr("sd"), tr("stands on")},
                 rows);
}

QString nameOf(TripletMethod method, const DonorTripletResults &triplet)
{
    switch (method) {
    case TripletMethod::Measured:
        return triplet.measured.name;
    case TripletMethod::States:
        return triplet.states.name;
    case TripletMethod::Gfn1:
        return triplet.gfn1.name;
    case TripletMethod::None:
        break;
    }
    return tr("none");
}

QString donorName(const DonorTripletResults &triplet)
{
    if (triplet.donor < 0 || triplet.donor >= triplet.candidates.size())
        return QString();
    const DonorCandidate &donor = triplet.candidates.at(triplet.donor);
    return donor.name.isEmpty() ? donor.formula
                                : QStringLiteral("%1 (%2)").arg(donor.name, donor.formula);
}

/// "23713 +- 1100 cm^-1 (22613 to 24813)"
QString energyOf(const DonorTripletResults &triplet)
{
    if (triplet.chosen == TripletMethod::None)
        return QString();
    if (!(triplet.standardDeviation > 0.0))
        return tr("%1 cm^-1, deviation not known").arg(fixed(triplet.energy, 0));
    return tr("%1 +- %2 cm^-1 (%3 to %4)")
        .arg(fixed(triplet.energy, 0), fixed(triplet.standardDeviation, 0), fixed(triplet.low, 0),
             fixed(triplet.high, 0));
}

Block choiceFacts(const DonorTripletResults &triplet)
{
    const auto distance = [](double rl) {
        return rl > 0.0 ? tr("RL %1 Angstrom").arg(fixed(rl, 4)) : QString();
    };
    const auto state = [&distance](int number, const QString &energy, double rl) {
        QStringList parts = {energy, distance(rl)};
        if (number > 0)
            parts.append(tr("state %1 of its list").arg(number));
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    };
    QString agreement;
    if (triplet.areCompared)
        agreement = triplet.doAgree ? tr("two methods agree: they differ by %1 cm^-1, within 1200")
                                          .arg(fixed(std::abs(triplet.difference), 0))
                                    : tr("the two calculations do not agree: they differ by %1 "
                                         "cm^-1 (limit 1200)")
                                          .arg(fixed(std::abs(triplet.difference), 0));
    return facts(
        tr("What goes on"),
        {{tr("donor ligand"), donorName(triplet)},
         {tr("T1 by"), nameOf(triplet.chosen, triplet)},
         {tr("T1"), state(triplet.tripletState, energyOf(triplet), triplet.tripletDistance)},
         {tr("S1"),
          state(triplet.singletState,
                triplet.singletEnergy > 0.0 ? tr("%1 cm^-1").arg(fixed(triplet.singletEnergy, 0))
                                            : QString(),
                triplet.singletDistance)},
         {tr("comparison"), agreement},
         {tr("levels within T1's interval"), triplet.levelsReached.join(QStringLiteral(", "))}});
}

Block candidateTable(const DonorTripletResults &triplet)
{
    QVector<QStringList> rows;
    for (const DonorCandidate &candidate : triplet.candidates)
        rows.append({QString::number(candidate.fragments.size()), candidate.formula, candidate.name,
                     candidate.kind.name,
                     candidate.triplet > 0 ? fixed(candidate.tripletEnergy, 0) : QString(),
                     candidate.singlet > 0 ? fixed(candidate.singletEnergy, 0) : QString()});
    return table(tr("Ligands and their lowest local states as calculated, cm^-1"),
                 {tr("count"), tr("formula"), tr("name"), tr("kind"), tr("triplet"), tr("singlet")},
                 rows);
}

Block stateTable(const QString &title, const QVector<LigandState> &states, int groundState)
{
    QVector<QStringList> rows;
    for (int i = groundState; i < states.size() && rows.size() < mostStates; ++i) {
        const LigandState &state = states.at(i);
        rows.append(
            {QString::number(i + 1), fixed(state.energy, 1),
             state.oscillatorStrength > 0.0 ? fixed(state.oscillatorStrength, 4) : QString(),
             state.rl > 0.0 ? fixed(state.rl, 4) : QString(),
             state.holeShares.isEmpty() ? QString() : fixed(state.chargeTransfer, 2)});
    }
    const int count = states.size() - groundState;
    const QString told = count > rows.size()
                             ? tr("%1, the lowest %2 of %3")
                                   .arg(title, QString::number(rows.size()), QString::number(count))
                             : title;
    return table(
        told, {tr("state"), tr("E / cm^-1"), tr("f"), tr("RL / Angstrom"), tr("charge transfer")},
        rows);
}

} // namespace

Section structureSection(const RunReport &report)
{
    Section section{tr("Structure"), {}};
    QStringList ligands;
    for (const OrganizedLigand &ligand : report.ligands) {
        QStringList atoms;
        for (const int atom : ligand.coordinatedAtoms)
            atoms.append(atom <= report.atoms.size() ? atomName(report.atoms.at(atom - 1), atom)
                                                     : QString::number(atom));
        if (!atoms.isEmpty())
            ligands.append(
                QStringLiteral("%1 (%2)").arg(ligand.name, atoms.join(QStringLiteral(", "))));
    }
    const bool isKnown = !report.chargeSource.isEmpty();
    section.blocks.append(facts(
        QString(),
        {{tr("file"), report.structureFile},
         {tr("atoms"), report.atoms.isEmpty() ? QString() : QString::number(report.atoms.size())},
         {tr("charge"), isKnown
                            ? tr("%1 (%2)").arg(QString::number(report.charge), report.chargeSource)
                            : QString()},
         {tr("fragments"), report.fragments.join(QStringLiteral(", "))},
         {tr("bound ligands"), ligands.join(QStringLiteral("; "))},
         {tr("medium"), report.medium}}));
    if (!report.sphere.atoms.isEmpty()) {
        section.blocks.append(
            figure(tr("Coordination sphere: distances in Angstrom, edges of the convex hull"),
                   plots::sphereFigure(
                       {report.sphere, report.atoms, plots::SphereFigure::Backbone::Faint})));
        section.blocks.append(sphereTable(report));
    }
    return section;
}

Section donorSection(const RunReport &report)
{
    Section section{tr("Donor states"), {}};
    section.blocks.append(
        facts(tr("The geometries"), {{tr("of S1, T1 by INDO and RL"), report.geometryStates},
                                     {tr("of the second opinion on T1"), report.geometryTriplet},
                                     {tr("of the sphere and Omega"), report.geometryIntensities}}));
    if (report.triplet) {
        const DonorTripletResults &triplet = *report.triplet;
        section.blocks << choiceFacts(triplet) << tripletTable(triplet) << candidateTable(triplet)
                       << list(tr("Remarks"), triplet.remarks);
    }
    if (report.states) {
        const DonorStatesResults &states = *report.states;
        const QString program = states.program;
        section.blocks << stateTable(tr("Singlets by %1").arg(program), states.singlets,
                                     states.groundState)
                       << stateTable(tr("Triplets by %1").arg(program), states.triplets,
                                     states.groundState);
    }
    return section;
}

} // namespace runDocument
