#include "LanqorDonorTriplet.h"

#include "photophysics/adiabaticTriplet_p.h"
#include "photophysics/complexComparison_p.h"
#include "photophysics/donorCandidates_p.h"
#include "photophysics/stateCharacter_p.h"
#include "photophysics/transferChannels_p.h"
#include "structure/ligandName_p.h"

#include <LanqorEngine/LanqorLigandClasses.h>
#include <LanqorEngine/LanqorRL.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

// Of the comparison with measured triplets, cm^-1.
constexpr double indoShift = 1220.0;     // the best one
constexpr double indoDeviation = 1100.0; // at the GFN1 ground state
constexpr double otherGeometryDeviation = 1500.0;
constexpr double agreement = 1200.0;
/// Of the excitations of the window that MOPAC takes; 0.86 and more in the comparison.
constexpr double leastShare = 0.8;

/// Both runs of one system by GFN1.
struct Gfn1Pair
{
    XtbRunResults groundState;
    XtbRunResults triplet;
};

/// The atoms of a run, for comparisons of complexes.
QVector<complexComparison::Atom> atomsAround(const QVector<Coord> &atoms, int ion)
{
    QVector<complexComparison::Atom> around;
    const Coord &centre = atoms.at(ion - 1);
    for (int i = 0; i < atoms.size(); ++i)
        if (i + 1 != ion)
            around.append({atoms.at(i).label, std::sqrt(std::pow(atoms.at(i).x - centre.x, 2) +
                                                        std::pow(atoms.at(i).y - centre.y, 2) +
                                                        std::pow(atoms.at(i).z - centre.z, 2))});
    return around;
}

/// Number, from 1, of the first lanthanide or of yttrium in its place; 0 for none.
int ionOf(const QVector<Coord> &atoms)
{
    for (int i = 0; i < atoms.size(); ++i)
        if (LanqorInputData::isLanthanide(atoms.at(i).label) ||
            atoms.at(i).label == QLatin1String("Y"))
            return i + 1;
    return 0;
}

/// The ion and the ligands; of a molecule without an ion an empty place and the molecule.
QVector<DonorFragment> fragmentsOf(const QVector<Coord> &atoms)
{
    const int ion = ionOf(atoms);
    if (ion > 0)
        return donorFragments(atoms, ion);
    DonorFragment molecule;
    for (int i = 0; i < atoms.size(); ++i)
        molecule.atoms.append(i + 1);
    QVector<complexComparison::Atom> members;
    for (const Coord &atom : atoms)
        members.append({atom.label, 0.0});
    molecule.formula = complexComparison::formula(complexComparison::composition(members));
    return {DonorFragment(), molecule};
}

QString wavenumber(double value)
{
    return QString::number(value, 'f', 0);
}

} // namespace

class LanqorDonorTripletPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorDonorTriplet)

public:
    // Each returns what is wrong with the input; empty when nothing is.
    QString checkInput() const;
    QString findDonor();
    QString choose();

    void takeMeasured();
    void findCandidates();
    void takeStates();
    QString gfn1Fault(const Gfn1Pair &pair, const QVector<DonorCandidate> &kinds,
                      int onCandidate) const;
    void takeGfn1();
    std::optional<Gfn1Pair> gfn1Pair() const;
    bool isAtGroundState() const;
    void takeSinglet();
    void compare();
    void makeInterval();
    void addRemarks();
    TripletValue &valueOf(TripletMethod method);

    std::optional<double> measuredEnergy;
    double measuredDeviation = 0.0;
    std::optional<DonorStatesResults> states;
    QVector<Coord> stateAtoms;
    QString statesMissing;
    std::optional<XtbRunResults> groundState;
    std::optional<XtbRunResults> triplet;
    std::optional<Gfn1Pair> model;
    QString gfn1Missing;
    QString ligand;
    TripletMethod choice = TripletMethod::None;

    DonorTripletResults results;
};

TripletValue &LanqorDonorTripletPrivate::valueOf(TripletMethod method)
{
    return method == TripletMethod::Measured ? results.measured
           : method == TripletMethod::States ? results.states
                                             : results.gfn1;
}

std::optional<Gfn1Pair> LanqorDonorTripletPrivate::gfn1Pair() const
{
    if (model)
        return model;
    if (groundState && triplet)
        return Gfn1Pair{*groundState, *triplet};
    return std::nullopt;
}

QString LanqorDonorTripletPrivate::checkInput() const
{
    if (measuredEnergy && !(*measuredEnergy > 0.0 && std::isfinite(*measuredEnergy) &&
                            measuredDeviation >= 0.0 && std::isfinite(measuredDeviation)))
        return tr("a measured triplet energy must be above 0 cm^-1, with a standard deviation of 0 "
                  "or more");
    if (triplet && !groundState)
        return tr("the triplet %1 by GFN1 needs the run of the ground state")
            .arg(triplet->outputPath);
    const auto pair = gfn1Pair();
    QString fault = pair ? adiabaticTriplet::mismatch(pair->groundState, pair->triplet) : QString();
    if (fault.isEmpty() && model && triplet)
        fault = adiabaticTriplet::mismatch(*groundState, *triplet);
    if (!fault.isEmpty() || !groundState || groundState->atoms.isEmpty() || stateAtoms.isEmpty())
        return fault;
    const int ionOfStates = ionOf(stateAtoms);
    const int ionOfRun = ionOf(groundState->atoms);
    if (ionOfRun == 0)
        return tr("no lanthanide is among the atoms of %1, the ground state of the complex")
            .arg(groundState->outputPath);
    const auto amongStates =
        complexComparison::composition(ionOfStates > 0 ? atomsAround(stateAtoms, ionOfStates)
                                                       : QVector<complexComparison::Atom>());
    const auto inRun = complexComparison::composition(atomsAround(groundState->atoms, ionOfRun));
    if (!amongStates.isEmpty() && amongStates != inRun)
        return tr("%1 holds %2 beside the ion, but %3 holds %4: they are of different complexes")
            .arg(states->outputPath, complexComparison::formula(amongStates),
                 groundState->outputPath, complexComparison::formula(inRun));
    return QString();
}

void LanqorDonorTripletPrivate::takeMeasured()
{
    TripletValue &value = results.measured;
    value.name = tr("measured");
    if (!measuredEnergy) {
        value.reason = tr("none is given");
        return;
    }
    value.isAvailable = true;
    value.raw = value.energy = *measuredEnergy;
    value.standardDeviation = measuredDeviation;
    value.basis = tr("worth more than any calculation");
}

void LanqorDonorTripletPrivate::findCandidates()
{
    QVector<Coord> atoms;
    if (states && !states->fragments.isEmpty()) {
        results.fragments = states->fragments;
        atoms = stateAtoms;
    } else if (groundState && !groundState->atoms.isEmpty()) {
        results.fragments = fragmentsOf(groundState->atoms);
        atoms = groundState->atoms;
    }
    results.candidates = donorCandidates::of(results.fragments, atoms);
    if (!states || states->fragments.isEmpty())
        return;
    for (DonorCandidate &candidate : results.candidates) {
        candidate.triplet = donorCandidates::lowestState(states->triplets, candidate.fragments);
        candidate.singlet = donorCandidates::lowestState(states->singlets, candidate.fragments);
        if (candidate.triplet > 0)
            candidate.tripletEnergy = states->triplets.at(candidate.triplet - 1).energy;
        if (candidate.singlet > 0)
            candidate.singletEnergy = states->singlets.at(candidate.singlet - 1).energy;
    }
}

QString LanqorDonorTripletPrivate::findDonor()
{
    results.isDonorAskedFor = !ligand.isEmpty();
    if (results.candidates.isEmpty())
        return QString();
    if (ligand.isEmpty()) {
        results.donor = donorCandidates::withLowestTriplet(results.candidates);
        return QString();
    }
    results.donor = donorCandidates::named(results.candidates, ligand);
    if (results.donor >= 0)
        return QString();
    QStringList formulas;
    for (const DonorCandidate &candidate : qAsConst(results.candidates))
        formulas.append(candidate.formula);
    return tr("the complex has no ligand %1; it has %2")
        .arg(ligand, formulas.join(QStringLiteral(", ")));
}

/// Whether the excited states were calculated at the geometry of the GFN1 ground state.
bool LanqorDonorTripletPrivate::isAtGroundState() const
{
    if (!groundState || !groundState->isOptimisation || ionOf(groundState->atoms) == 0 ||
        ionOf(stateAtoms) == 0)
        return false;
    constexpr double tolerance = 0.005; // Angstrom, of jobs with few decimals
    return complexComparison::largestShift(
               atomsAround(groundState->atoms, ionOf(groundState->atoms)),
               atomsAround(stateAtoms, ionOf(stateAtoms))) < tolerance;
}

void LanqorDonorTripletPrivate::takeStates()
{
    TripletValue &value = results.states;
    value.name = states ? states->program : tr("excited states");
    if (!states || states->triplets.size() <= states->groundState) {
        value.reason = !states ? statesMissing : tr("%1 holds no triplets").arg(states->outputPath);
        if (value.reason.isEmpty())
            value.reason = tr("none were calculated");
        return;
    }
    const bool isIndo = !states->fragments.isEmpty();
    results.isAtGfn1GroundState = isAtGroundState();
    results.tripletState =
        isIndo ? results.donor >= 0 ? results.candidates.at(results.donor).triplet : 0
               : states->groundState + 1;
    if (results.tripletState == 0) {
        value.reason = results.donor < 0
                           ? tr("none of the %1 triplets is on one kind of ligand")
                                 .arg(states->triplets.size())
                           : tr("none of the %1 triplets is on %2; calculate more states")
                                 .arg(QString::number(states->triplets.size()),
                                      results.candidates.at(results.donor).formula);
        return;
    }
    const LigandState &state = states->triplets.at(results.tripletState - 1);
    results.tripletDistance = state.rl;
    value.raw = state.energy;
    value.shift = isIndo ? indoShift : 0.0;
    value.energy = value.raw + value.shift;
    if (!isIndo) {
        value.isAvailable = true;
        value.basis = tr("as calculated; no standard deviation is known");
        return;
    }
    value.standardDeviation = results.isAtGfn1GroundState ? indoDeviation : otherGeometryDeviation;
    value.basis =
        results.isAtGfn1GroundState
            ? tr("RMS error 1100 over 26 ligands, largest about 2900; the shift is the best one")
            : tr("estimated: the geometry is not known to be the GFN1 ground state, where the "
                 "shift was found (there 1100 over 26 ligands)");
    const LigandClassResults &kind = results.candidates.at(results.donor).kind;
    const bool isCut = states->excitationShare > 0.0 && states->excitationShare < leastShare;
    value.isAvailable = !kind.hasFiveMemberedRing && kind.isAntenna && !isCut;
    if (isCut) {
        value.knownError = tr("too high by thousands of cm^-1");
        value.reason = tr("MOPAC took %1 % of the excitations of its window, for the orbitals at "
                          "the edge are degenerate, which raises triplets by thousands of cm^-1; "
                          "calculate with another C.I.= (32, 36)")
                           .arg(QString::number(100.0 * states->excitationShare, 'f', 0));
    }
    if (!kind.isAntenna) {
        value.knownError = tr("too low by thousands of cm^-1");
        value.reason = tr("%1 is no antenna (a conjugated system with N, O or S); INDO gives "
                          "benzene rings and small ions too low by thousands of cm^-1")
                           .arg(results.candidates.at(results.donor).formula);
    }
    if (kind.hasFiveMemberedRing) {
        value.knownError = tr("too low by thousands of cm^-1");
        value.reason =
            tr("%1 has a conjugated five-membered ring (%2), whose triplets INDO gives "
               "too low by thousands of cm^-1")
                .arg(results.candidates.at(results.donor).formula, kind.fiveMemberedRing);
    }
}

/// Why a pair of runs gives no triplet of the donor.
/// @param onCandidate  of @p kinds, the ligands whose bonds change; -1 when it is not known
QString LanqorDonorTripletPrivate::gfn1Fault(const Gfn1Pair &pair,
                                             const QVector<DonorCandidate> &kinds,
                                             int onCandidate) const
{
    const QString wayOut = tr("calculate the ligand alone when it is neutral, or three of it and "
                              "a water with the ion when it is an anion (a donor model)");
    if (!(results.gfn1.raw > 0.0))
        return tr("the triplet lies below the ground state: one of the runs has collapsed");
    if (results.chargeChanges.isEmpty() && results.gfn1Fragments.size() > 2)
        return tr("without the charges of both runs (files \"charges\" of xtb) a false charge "
                  "transfer cannot be told");
    for (int f = 1; f < results.chargeChanges.size(); ++f)
        if (std::abs(results.chargeChanges.at(f)) > adiabaticTriplet::largestChargeChange)
            return tr("the charge of %1 changes by %2 e, more than 0.15: a false charge-transfer "
                      "triplet; %3")
                .arg(ligandName::canonical(results.gfn1Fragments.at(f).formula),
                     QString::number(results.chargeChanges.at(f), 'f', 2), wayOut);
    const auto bonds =
        adiabaticTriplet::bondChanges(pair.groundState, pair.triplet, results.gfn1Fragments);
    if (bonds.brokenFragment >= 0)
        return tr("a bond of %1 grows by %2 Angstrom in the triplet: the ligand breaks")
            .arg(ligandName::canonical(results.gfn1Fragments.at(bonds.brokenFragment).formula),
                 QString::number(bonds.longest, 'f', 2));
    if (onCandidate < 0)
        return tr("on which ligand the triplet is cannot be told from the bonds that change (the "
                  "geometries at the end of both runs are needed)");
    const QString formula = kinds.at(onCandidate).formula;
    if (results.donor >= 0 && formula != results.candidates.at(results.donor).formula)
        return tr("the triplet (%1 cm^-1) is on %2, as the bonds tell that change, and not on %3; "
                  "%4")
            .arg(wavenumber(results.gfn1.raw), formula,
                 results.candidates.at(results.donor).formula, wayOut);
    return QString();
}

void LanqorDonorTripletPrivate::takeGfn1()
{
    TripletValue &value = results.gfn1;
    value.name = QStringLiteral("GFN1-xTB");
    const auto pair = gfn1Pair();
    if (!pair) {
        value.reason = gfn1Missing.isEmpty() ? tr("none was calculated") : gfn1Missing;
        return;
    }
    const QVector<Coord> &atoms = pair->groundState.atoms;
    results.gfn1System = model ? tr("a model of the ligand") : tr("the complex");
    results.gfn1Fragments = fragmentsOf(atoms);
    results.chargeChanges =
        adiabaticTriplet::chargeChanges(pair->groundState, pair->triplet, results.gfn1Fragments);
    value.raw = value.energy = adiabaticTriplet::energy(pair->groundState, pair->triplet);
    const auto kinds = donorCandidates::of(results.gfn1Fragments, atoms);
    const int on = donorCandidates::withMost(
        kinds,
        adiabaticTriplet::bondChanges(pair->groundState, pair->triplet, results.gfn1Fragments)
            .squares);
    if (on >= 0)
        results.gfn1Donor = kinds.at(on).formula;
    if (on >= 0 && results.donor < 0)
        results.donor = donorCandidates::named(results.candidates, results.gfn1Donor);
    value.reason = gfn1Fault(*pair, kinds, on);
    value.isAvailable = value.reason.isEmpty();
    if (on < 0)
        return;
    const LigandClassResults &kind = kinds.at(on).kind;
    value.standardDeviation = kind.gfn1StandardDeviation;
    value.knownError = kind.gfn1Error;
    value.basis = QStringLiteral("%1: %2").arg(kind.name, kind.gfn1Basis);
    for (const XtbRunResults *run : {&pair->groundState, &pair->triplet})
        results.warnings += run->warnings;
    if (pair->groundState.version != pair->triplet.version)
        results.warnings.append(tr("the ground state was calculated by xtb %1, the triplet by %2")
                                    .arg(pair->groundState.version, pair->triplet.version));
}

/// The lowest singlet by the rule of the triplet; else the lowest one of all.
void LanqorDonorTripletPrivate::takeSinglet()
{
    if (!states || states->singlets.size() <= states->groundState)
        return;
    const bool isKnown = results.donor >= 0 && !states->fragments.isEmpty();
    results.singletState = isKnown ? results.candidates.at(results.donor).singlet : 0;
    if (results.singletState == 0) {
        results.singletState = states->groundState + 1;
        if (isKnown)
            results.warnings.append(
                tr("none of the %1 singlets is on %2; the lowest one of all stands for S1")
                    .arg(QString::number(states->singlets.size()),
                         results.candidates.at(results.donor).formula));
    }
    const LigandState &state = states->singlets.at(results.singletState - 1);
    results.singletEnergy = state.energy;
    results.singletDistance = state.rl;
}

void LanqorDonorTripletPrivate::compare()
{
    results.areCompared = results.states.isAvailable && results.gfn1.isAvailable;
    if (!results.areCompared)
        return;
    results.difference = results.gfn1.energy - results.states.energy;
    results.doAgree = std::abs(results.difference) <= agreement;
}

QString LanqorDonorTripletPrivate::choose()
{
    QStringList reasons;
    for (const TripletMethod method :
         {TripletMethod::Measured, TripletMethod::States, TripletMethod::Gfn1}) {
        const TripletValue &value = valueOf(method);
        if (choice != TripletMethod::None && choice != method)
            continue;
        if (value.isAvailable) {
            results.chosen = method;
            results.energy = value.energy;
            results.standardDeviation = value.standardDeviation;
            return QString();
        }
        reasons.append(QStringLiteral("%1: %2").arg(value.name, value.reason));
    }
    return tr("no triplet energy (%1). Give a measured one.")
        .arg(reasons.join(QStringLiteral("; ")));
}

void LanqorDonorTripletPrivate::makeInterval()
{
    results.low = results.energy - results.standardDeviation;
    results.high = results.energy + results.standardDeviation;
    const QVector<QPair<QString, double>> levels = {
        {QStringLiteral("5D0"), transferChannels::acceptorEnergy(transferChannels::Level5D0)},
        {QStringLiteral("5D1"), transferChannels::acceptorEnergy(transferChannels::Level5D1)}};
    QStringList texts;
    for (const auto &level : levels) {
        if (results.low > level.second || results.high < level.second)
            continue;
        results.levelsReached.append(level.first);
        texts.append(tr("%1 (%2)").arg(level.first, wavenumber(level.second)));
    }
    const bool isBelow = results.high < levels.first().second;
    if (texts.isEmpty() && !isBelow)
        return;
    const bool isMeasured = results.chosen == TripletMethod::Measured;
    results.isMeasurementNeeded = !isMeasured;
    results.firstLine =
        tr("%1: T1 = %2 +- %3 cm^-1 (one standard deviation, %4) %5")
            .arg(isMeasured ? tr("A more accurate triplet energy is needed")
                            : tr("A measured triplet energy is needed"),
                 wavenumber(results.energy), wavenumber(results.standardDeviation),
                 isMeasured ? tr("as measured") : tr("by %1").arg(valueOf(results.chosen).name),
                 isBelow ? tr("lies below 5D0 (%1), which it cannot feed but by heat")
                               .arg(wavenumber(levels.first().second))
                         : tr("reaches %1, so that the transfer to the ion may go or fail")
                               .arg(texts.join(tr(" and "))));
}

void LanqorDonorTripletPrivate::addRemarks()
{
    if (results.donor < 0 || !states || states->fragments.isEmpty())
        return;
    const DonorCandidate &donor = results.candidates.at(results.donor);
    const int lowest = donorCandidates::withLowestTriplet(results.candidates);
    if (results.tripletState > 1)
        results.remarks.append(
            tr("the triplet is number %1 of the output: lower ones are on other ligands, between "
               "ligands, or between ion and ligand")
                .arg(results.tripletState));
    for (int i = 0; i < results.candidates.size(); ++i) {
        const DonorCandidate &other = results.candidates.at(i);
        if (i == results.donor || other.triplet == 0 || donor.triplet == 0 || !other.kind.isAntenna)
            continue;
        const QString energy = wavenumber(other.tripletEnergy + indoShift);
        if (i == lowest && results.isDonorAskedFor)
            results.remarks.append(tr("the lowest triplet by INDO, at %1 cm^-1, is on %2 and not "
                                      "on %3, which was asked for")
                                       .arg(energy, other.formula, donor.formula));
        else if (std::abs(other.tripletEnergy - donor.tripletEnergy) <= indoDeviation)
            results.remarks.append(tr("a triplet of %1, at %2 cm^-1 by INDO, is within one "
                                      "standard deviation: which ligand has the lower one is not "
                                      "certain")
                                       .arg(other.formula, energy));
    }
    if (donor.kind.hasFiveMemberedRing && !results.isDonorAskedFor && lowest == results.donor &&
        std::any_of(
            results.candidates.begin(), results.candidates.end(), [&](const DonorCandidate &other) {
                return other.triplet > 0 && other.kind.isAntenna && other.formula != donor.formula;
            }))
        results.warnings.append(
            tr("%1 is taken for the donor by its INDO triplet, which is too low: name the donor "
               "ligand when it is another one")
                .arg(donor.formula));
    if (results.singletState > 0 && results.chosen != TripletMethod::None &&
        results.singletEnergy < results.energy)
        results.warnings.append(
            tr("the singlet S1, calculated at %1 cm^-1, lies below the triplet "
               "at %2 cm^-1")
                .arg(wavenumber(results.singletEnergy), wavenumber(results.energy)));
}

LanqorDonorTriplet::LanqorDonorTriplet(QObject *parent)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorDonorTripletPrivate>())
{}

LanqorDonorTriplet::~LanqorDonorTriplet() = default;

void LanqorDonorTriplet::setMeasured(const double &energy, const double &standardDeviation)
{
    d->measuredEnergy = energy;
    d->measuredDeviation = standardDeviation;
}

void LanqorDonorTriplet::setStates(const LanqorRL &states)
{
    d->states = states.getResults();
    d->stateAtoms = states.getInputData()->getCoord();
}

void LanqorDonorTriplet::setStatesMissing(const QString &reason)
{
    d->statesMissing = reason;
}

void LanqorDonorTriplet::setGroundState(const XtbRunResults &groundState)
{
    d->groundState = groundState;
}

void LanqorDonorTriplet::setTriplet(const XtbRunResults &triplet)
{
    d->triplet = triplet;
}

void LanqorDonorTriplet::setModel(const XtbRunResults &groundState, const XtbRunResults &triplet)
{
    d->model = Gfn1Pair{groundState, triplet};
}

void LanqorDonorTriplet::setGfn1Missing(const QString &reason)
{
    d->gfn1Missing = reason;
}

void LanqorDonorTriplet::setLigand(const QString &formula)
{
    d->ligand = formula.trimmed();
}

void LanqorDonorTriplet::setChoice(const TripletMethod &method)
{
    d->choice = method;
}

bool LanqorDonorTriplet::calculate()
{
    d->results = DonorTripletResults();
    QString fault = d->checkInput();
    if (!fault.isEmpty())
        return failWith(fault);
    d->takeMeasured();
    d->findCandidates();
    fault = d->findDonor();
    if (!fault.isEmpty())
        return failWith(fault);
    d->takeGfn1(); // which may tell the donor
    d->takeStates();
    d->takeSinglet();
    d->compare();
    fault = d->choose();
    d->addRemarks();
    if (!fault.isEmpty())
        return failWith(fault);
    d->makeInterval();
    return true;
}

DonorTripletResults LanqorDonorTriplet::getResults() const
{
    return d->results;
}
