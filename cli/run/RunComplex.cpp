#include "run/RunComplex.h"

#include "Command.h"
#include "options/complexOptions.h"
#include "options/jobOptions.h"
#include "run/RunRequest.h"
#include "text.h"

#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace cli {

namespace {

QString nameOf(const OmittedFragment &fragment)
{
    return fragment.count > 1
               ? QStringLiteral("%1 %2").arg(QString::number(fragment.count), fragment.formula)
               : fragment.formula;
}

/// The ion of a complex without europium that a chemist might take for one.
void refuseOtherIon(const QString &file, const QString &ion)
{
    throw Failure{
        tr("%1 is a complex of %2: a run computes the emission of Eu3+ alone. What can be done "
           "with it: \"lanqor sphere\", \"lanqor organize\" and \"lanqor convert\" for its "
           "structure and for jobs, \"lanqor states\" for the states of its ligands%3.")
            .arg(file, ion,
                 LanqorFreeIonParameters::getSymbols().contains(ion)
                     ? tr(", \"lanqor levels --ion %1\" for the levels of the ion").arg(ion)
                     : QString())};
}

/// What to do with a structure that does not hold one ion; empty for one that does.
QString wayOutOfIons(const QVector<Coord> &atoms)
{
    const auto ions = std::count_if(atoms.begin(), atoms.end(), [](const Coord &atom) {
        return LanqorInputData::isLanthanide(atom.label);
    });
    if (ions == 0)
        return tr(". A run needs a complex of Eu3+; is the ion left out of the file?");
    return ions == 1
               ? QString()
               : tr(". A run needs one: cut out a complex of one ion and give that as .xyz or "
                    ".mol2.");
}

/// The charge of what is kept of a file whose whole charge is @p whole.
int chargeOfKept(int whole, const OrganizeResults &structure)
{
    QStringList unknown;
    for (const OmittedFragment &fragment : structure.omittedFragments) {
        whole -= fragment.count * fragment.charge;
        if (!fragment.isChargeKnown)
            unknown.append(nameOf(fragment));
    }
    if (!unknown.isEmpty())
        throw Failure{tr("--drop-unbound leaves out %1, whose charge is not known: give the charge "
                         "of the atoms that are kept with --charge.")
                          .arg(unknown.join(QStringLiteral(", ")))};
    return whole;
}

void settleCharge(const RunRequest &request, const LanqorInputData &source, RunComplex &complex)
{
    const OrganizeResults &structure = complex.structure;
    const QString fragments = structure.fragmentCharges.join(QStringLiteral(", "));
    const bool isMopacJob =
        source.getFileName().endsWith(QLatin1String(".mop"), Qt::CaseInsensitive);
    std::optional<int> charge;
    if (request.charge) {
        charge = request.charge;
        complex.chargeSource = tr("given");
    } else if (source.isChargeOnSystemTold()) {
        charge = chargeOfKept(qRound(source.getChargeOnSystem()), structure);
        complex.chargeSource = tr("from the file");
    } else if (structure.isChargeKnown) {
        charge = structure.charge;
        complex.chargeSource = tr("derived from %1 (+3) and %2").arg(structure.ion, fragments);
    } else if (isMopacJob) {
        charge = chargeOfKept(0, structure);
        complex.chargeSource = tr("that of a MOPAC job without CHARGE=");
    }
    if (!charge)
        throw Failure{tr("%1 does not tell the charge of the complex, nor can it be derived from "
                         "the fragments %2: give it with --charge.")
                          .arg(source.getFileName(), fragments)};
    complex.charge = *charge;
    if (structure.isChargeKnown && structure.charge != complex.charge) {
        complex.warnings.append(tr("the charge is %1 (%2), but %3 (+3) and %4 add up to %5")
                                    .arg(QString::number(complex.charge), complex.chargeSource,
                                         structure.ion, fragments,
                                         QString::number(structure.charge)));
        warn(complex.warnings.last());
    }
    checkElectrons(complex.atoms(), {complex.charge, 1, tr("Give the charge with --charge.")});
}

} // namespace

QVector<Coord> RunComplex::atoms() const
{
    QVector<Coord> positions;
    for (const OrganizedAtom &atom : structure.atoms)
        positions.append(atom.position);
    return positions;
}

QString RunComplex::summary() const
{
    return tr("%1 with %2 coordinated atoms in %3 ligands, %4 atoms, charge %5 (%6)")
        .arg(structure.ion, QString::number(structure.coordNumber),
             QString::number(structure.ligands.size()), QString::number(structure.atoms.size()),
             QString::number(charge), chargeSource);
}

QByteArray xyzOf(const QVector<Coord> &atoms, const QString &title)
{
    constexpr int decimals = 9;
    QString text = QStringLiteral("%1\n%2\n").arg(QString::number(atoms.size()), title);
    for (const Coord &atom : atoms)
        text += atom.label.leftJustified(4) + column(atom.x, decimals, 16) +
                column(atom.y, decimals, 16) + column(atom.z, decimals, 16) + QLatin1Char('\n');
    return text.toUtf8();
}

RunComplex readRunComplex(const RunRequest &request)
{
    RunComplex complex;
    LanqorInputData source(nullptr, request.structureFile);
    requireFile(
        QString(), request.structureFile,
        tr("a crystal structure (.cif, .pdb), an .xyz, .mol2, .mop, .zmt or .arc file or an "
           "output of MOPAC"));
    keepWarnings(source, complex.warnings);
    source.setKeepFileOpen(true);
    source.setMolecule(request.molecule);
    if (!source.readStructureFile())
        failOf(source);
    for (const Coord &atom : source.getCoord())
        if (atom.label == QLatin1String("Y") && !source.getIonError().isEmpty())
            refuseOtherIon(request.structureFile, atom.label);
    LanqorOrganizeMolecules organizer(nullptr, &source);
    keepWarnings(organizer, complex.warnings);
    organizer.setKeepUnboundFragments(!request.dropsUnbound);
    organizer.setCoordinationNumber(request.coordNumber);
    if (!organizer.organize())
        throw Failure{organizer.getLastError().simplified() + wayOutOfIons(source.getCoord())};
    complex.structure = organizer.getResults();
    if (complex.structure.ion != QLatin1String("Eu"))
        refuseOtherIon(request.structureFile, complex.structure.ion);
    if (complex.structure.coordNumber == 0)
        throw Failure{tr("%1: no atom is within bonding distance of the ion; are the coordinates "
                         "in Angstrom?")
                          .arg(request.structureFile)};
    settleCharge(request, source, complex);
    complex.xyz = xyzOf(complex.atoms(), tr("in the order of all calculations"));
    return complex;
}

} // namespace cli
