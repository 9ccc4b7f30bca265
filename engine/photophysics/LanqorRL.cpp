#include "LanqorRL.h"

#include "core/physicalConstants_p.h"
#include "photophysics/complexComparison_p.h"
#include "photophysics/donorDistance_p.h"
#include "photophysics/donorStatesReport_p.h"
#include "photophysics/stateCharacter_p.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

/// Where the search for the shortest distance starts, Angstrom; stays when the ion is alone.
constexpr double noDistance = 1000.0;

/// "singlet 3 (orbitals 27, 31)"
QString stateWithOrbitals(const QString &kind, int state, const QVector<int> &orbitals)
{
    QStringList numbers;
    for (const int number : orbitals)
        numbers.append(QString::number(number));
    return QStringLiteral("%1 %2 (%3)")
        .arg(kind, QString::number(state), numbers.join(QStringLiteral(", ")));
}

QString programName(int programType)
{
    switch (programType) {
    case LanqorInputData::ZindoOutput:
        return QStringLiteral("ZINDO");
    case LanqorInputData::OrcaOutput:
        return QStringLiteral("ORCA");
    case LanqorInputData::GaussianOutput:
        return QStringLiteral("Gaussian");
    case LanqorInputData::MopacIndoOutput:
        return QStringLiteral("MOPAC INDO");
    default:
        return QString();
    }
}

/// The atoms of @p complex but its lanthanides or, without any, atom 1 that stands for one.
QVector<complexComparison::Atom> ligandAtoms(const LanqorInputData &complex)
{
    const QVector<CoordSPH> all = complex.getCoordSPH();
    QVector<complexComparison::Atom> atoms;
    for (const CoordSPH &atom : all)
        if (!LanqorInputData::isLanthanide(atom.label))
            atoms.append({atom.label, atom.r});
    return atoms.size() < all.size() ? atoms : atoms.mid(1);
}

/// @p rl  of the state; 0 where it is not known
LigandState ligandState(const ExcitateState &state, const QVector<double> &weights, double rl,
                        const StateCharacter &character)
{
    LigandState result;
    result.energy = state.energy;
    result.wavelength = state.energy > 0.0 ? lanqor::nmPerCm / state.energy : 0.0;
    result.oscillatorStrength = state.oscillatorStrength;
    result.rl = rl;
    result.configurations = state.configurations;
    result.weights = weights;
    result.holeShares = character.hole;
    result.electronShares = character.electron;
    result.chargeTransfer = character.chargeTransfer;
    return result;
}

} // namespace

class LanqorRLPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorRL)

public:
    LanqorRLPrivate(LanqorRL &owner, LanqorInputData *given, const QString &outputPath,
                    const QString &tripletPath = QString())
        : owner(owner)
        , given(given)
        , outputPath(outputPath)
        , tripletPath(tripletPath)
    {
        restart();
    }

    void restart();
    bool calculate();
    bool readOutput();
    /// Place of the ion and its atom number, 0 for a point charge.
    bool findIon(Coord &place, int &atom);
    void calcAtomDistances(const Coord &ion);
    bool calcStateDistances();
    /// Where hole and electron of the states are, as far as the output tells.
    void calcCharacters();
    /// The output or both of a pair, for messages.
    QString outputName() const;
    /// What was read but the ion.
    QVector<complexComparison::Atom> ligandAtoms() const;
    /// Why there is no RL, with what the user may do about it.
    QString reasonWithoutDistances() const;

    LanqorRL &owner;
    LanqorInputData *const given; // null: inputData is our own
    QString outputPath;
    QString tripletPath; // second file of our own reader
    int programType = LanqorInputData::UnknownOutput;
    int selExcitateState = 1;
    double minDistanceLnLigand = noDistance;
    int ionAtom = 0; // its number (1-based), 0 for a point charge
    bool isCalculated = false;
    QString missingDistances; // the reason
    LanqorInputData *inputData = nullptr;
    QVector<double> singletRL;     // by state number, entry 0 unused
    QVector<double> tripletRL;     // by state number, entry 0 unused
    QVector<double> atomDistances; // atom number - 1
    QVector<DonorFragment> fragments;
    QVector<StateCharacter> singletCharacters; // state number - 1
    QVector<StateCharacter> tripletCharacters; // likewise
};

void LanqorRLPrivate::restart()
{
    if (given) {
        inputData = given;
    } else {
        delete inputData;
        inputData = new LanqorInputData(&owner, outputPath);
    }
    isCalculated = false;
    missingDistances.clear();
    selExcitateState = inputData->getSelExcitateState();
    minDistanceLnLigand = noDistance;
    ionAtom = 0;
    singletRL = {0.0};
    tripletRL = {0.0};
    atomDistances.clear();
    fragments.clear();
    singletCharacters.clear();
    tripletCharacters.clear();
}

QString LanqorRLPrivate::outputName() const
{
    const QString second = given ? given->getTripletFileName() : tripletPath;
    return second.isEmpty() ? outputPath : outputPath + QStringLiteral(", ") + second;
}

bool LanqorRLPrivate::calculate()
{
    Coord ion;
    if (!readOutput())
        return false;
    selExcitateState = inputData->getSelExcitateState();
    if (!findIon(ion, ionAtom))
        return false;
    calcAtomDistances(ion);
    if (!calcStateDistances())
        return false;
    calcCharacters();
    return true;
}

bool LanqorRLPrivate::readOutput()
{
    if (programType < LanqorInputData::ZindoOutput ||
        programType > LanqorInputData::MopacIndoOutput) {
        return owner.failWith(tr("\nUnknown program type %1: 0 stands for a ZINDO, 1 for an ORCA, "
                                 "2 for a Gaussian and 3 for a MOPAC INDO output.")
                                  .arg(programType));
    }
    const bool hasStates =
        inputData->getSingletStatesCount() + inputData->getTripletStatesCount() > 0;
    if (hasStates && inputData->getMolecularOrbitalNumber() == 0) {
        return owner.failWith(
            tr("The molecular orbitals of the file %1 have not been read.").arg(outputPath));
    }
    const bool isPair = programType == LanqorInputData::MopacIndoOutput && !tripletPath.isEmpty();
    if (hasStates || (isPair && inputData->readOutputMopacIndo(outputPath, tripletPath)) ||
        (!isPair &&
         inputData->readExcitedStates(static_cast<LanqorInputData::ProgramType>(programType))))
        return true;
    owner.setLastError(inputData->getLastError()); // the reader has emitted its message
    return false;
}

bool LanqorRLPrivate::findIon(Coord &place, int &atom)
{
    const QVector<Coord> atoms = inputData->getCoord();
    if (programType == LanqorInputData::OrcaOutput && !inputData->getIsOrcaTDDFT()) {
        atom = 0;
        if (inputData->readChargePointFileOrca(place.x, place.y, place.z))
            return true;
        owner.setLastError(inputData->getLastError());
        return false;
    }
    // INDO/S has yttrium, of the same charge and nearly the same radius, but no lanthanides.
    const bool isYttriumIon = programType == LanqorInputData::MopacIndoOutput;
    for (int i = 0; i < atoms.size(); ++i) {
        if (programType == LanqorInputData::ZindoOutput ||
            LanqorInputData::isLanthanide(atoms.at(i).label) ||
            (isYttriumIon && atoms.at(i).label == QLatin1String("Y"))) {
            place = atoms.at(i);
            atom = i + 1;
            return true;
        }
    }
    return owner.failWith(
        (isYttriumIon
             ? tr("\nCannot find yttrium, in the place of the ion, among the atoms of the output "
                  "file: \n")
             : tr("\nCannot find a lanthanide ion among the atoms of the output file: \n")) +
        outputName() + tr("\nThe distances RL are those from the ion."));
}

void LanqorRLPrivate::calcAtomDistances(const Coord &ion)
{
    const QVector<Coord> atoms = inputData->getCoord();
    for (int i = 0; i < atoms.size(); ++i) {
        const double dx = atoms.at(i).x - ion.x;
        const double dy = atoms.at(i).y - ion.y;
        const double dz = atoms.at(i).z - ion.z;
        const double distance = std::sqrt(dx * dx + dy * dy + dz * dz);
        atomDistances.append(distance);
        if (i + 1 != ionAtom && distance < minDistanceLnLigand)
            minDistanceLnLigand = distance;
    }
}

bool LanqorRLPrivate::calcStateDistances()
{
    const int orbitalOffset = programType == LanqorInputData::OrcaOutput ? 0 : 1;
    QStringList incompleteStates;
    int unknownAtom = 0;
    const auto add = [&](const ExcitateState &state, const QString &kind, QVector<double> &list) {
        const DonorDistance result =
            calcDonorDistance(state, *inputData, orbitalOffset, atomDistances);
        if (result.unknownAtom != 0)
            unknownAtom = result.unknownAtom;
        if (!result.missingOrbitals.isEmpty())
            incompleteStates.append(stateWithOrbitals(kind, list.size(), result.missingOrbitals));
        list.append(result.distance);
    };
    for (int i = 0; i < inputData->getSingletStatesCount(); ++i)
        add(inputData->getSingletExcitateStateVector(i), tr("singlet"), singletRL);
    for (int i = 0; i < inputData->getTripletStatesCount(); ++i)
        add(inputData->getTripletExcitateStateVector(i), tr("triplet"), tripletRL);
    if (unknownAtom != 0) {
        return owner.failWith(
            tr("\nThe molecular orbitals name atom %1, but the geometry has %2 atoms: \n")
                .arg(QString::number(unknownAtom), QString::number(atomDistances.size())) +
            outputPath);
    }
    if (!incompleteStates.isEmpty()) {
        owner.emitProgress(tr(" -> (RL Calculation) These states use molecular orbitals (numbers "
                              "in brackets) that the output does not print; their RL leaves them "
                              "out: ") +
                           incompleteStates.join(QStringLiteral("; ")));
    }
    return true;
}

void LanqorRLPrivate::calcCharacters()
{
    const int singlets = inputData->getSingletStatesCount();
    const int triplets = inputData->getTripletStatesCount();
    if ((singlets == 0 || inputData->getSingletCoefficients(0).isEmpty()) &&
        (triplets == 0 || inputData->getTripletCoefficients(0).isEmpty()))
        return;
    fragments = donorFragments(inputData->getCoord(), ionAtom);
    const StateCharacters characters(*inputData, fragments);
    for (int i = 0; i < singlets; ++i)
        singletCharacters.append(characters.of(inputData->getSingletExcitateStateVector(i),
                                               inputData->getSingletCoefficients(i)));
    for (int i = 0; i < triplets; ++i)
        tripletCharacters.append(characters.of(inputData->getTripletExcitateStateVector(i),
                                               inputData->getTripletCoefficients(i)));
}

QVector<complexComparison::Atom> LanqorRLPrivate::ligandAtoms() const
{
    const QVector<Coord> coordinates = inputData->getCoord();
    QVector<complexComparison::Atom> atoms;
    for (int i = 0; i < atomDistances.size(); ++i)
        if (i + 1 != ionAtom)
            atoms.append({coordinates.at(i).label, atomDistances.at(i)});
    return atoms;
}

QString LanqorRLPrivate::reasonWithoutDistances() const
{
    QString reason = owner.getLastError().simplified();
    if (inputData->getMolecularOrbitalNumber() == 0) {
        return reason + tr(" RL needs the table of orbital coefficients (ORCA: %output "
                           "print[p_mos] 1 end; Gaussian: pop=full).");
    }
    if (programType == LanqorInputData::OrcaOutput && !inputData->getIsOrcaTDDFT()) {
        return reason + tr(" It holds the place of the ion and stands beside the output, under the "
                           "same name with the suffix .pointcharge.");
    }
    return reason;
}

LanqorRL::LanqorRL(QObject *parent, const QString &outputPath)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorRLPrivate>(*this, nullptr, outputPath))
{}

LanqorRL::LanqorRL(QObject *parent, const QString &singletFile, const QString &tripletFile)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorRLPrivate>(*this, nullptr, singletFile, tripletFile))
{}

LanqorRL::LanqorRL(QObject *parent, LanqorInputData *excitedStates)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorRLPrivate>(*this, excitedStates,
                                          excitedStates ? excitedStates->getFileName() : QString()))
{}

LanqorRL::~LanqorRL() = default;

bool LanqorRL::calcRL(const int &programType)
{
    d->restart();
    d->programType = programType;
    const QMetaObject::Connection heard =
        connect(d->inputData, &LanqorAbstractObjCalculation::newObjCalculationMessage, this,
                &LanqorRL::processStatus);
    d->isCalculated = d->calculate();
    disconnect(heard);
    if (!d->isCalculated)
        d->missingDistances = d->reasonWithoutDistances();
    return d->isCalculated;
}

double LanqorRL::getSingletRL(const int &n) const
{
    return d->singletRL.value(n);
}

double LanqorRL::getTripletRL(const int &n) const
{
    return d->tripletRL.value(n);
}

double LanqorRL::getMinDistanceLnLigand() const
{
    return d->minDistanceLnLigand;
}

int LanqorRL::getStatesNumber() const
{
    return d->tripletRL.size();
}

int LanqorRL::getSelExcitateState() const
{
    return d->selExcitateState;
}

double LanqorRL::getSingletEnergy(const int &n) const
{
    return d->inputData->getSingletEnergy(n);
}

double LanqorRL::getTripletEnergy(const int &n) const
{
    return d->inputData->getTripletEnergy(n);
}

int LanqorRL::getSingletStatesCount() const
{
    return d->inputData->getSingletStatesCount();
}

int LanqorRL::getTripletStatesCount() const
{
    return d->inputData->getTripletStatesCount();
}

double LanqorRL::getAtomDistance(const int &atom) const
{
    return d->atomDistances.value(atom - 1);
}

int LanqorRL::getAtomDistancesCount() const
{
    return d->atomDistances.size();
}

const LanqorInputData *LanqorRL::getInputData() const
{
    return d->inputData;
}

QString LanqorRL::getCompositionMismatch(const LanqorInputData &complex) const
{
    const auto inComplex = complexComparison::composition(ligandAtoms(complex));
    const auto amongLigands = complexComparison::composition(d->ligandAtoms());
    if (inComplex.isEmpty() || amongLigands.isEmpty() || inComplex == amongLigands)
        return QString();
    return tr("%1 holds %2 beside the ion, but %3 holds %4: these are not the excited states of "
              "this complex")
        .arg(complex.getFileName(), complexComparison::formula(inComplex), d->outputName(),
             complexComparison::formula(amongLigands));
}

QString LanqorRL::getComplexMismatch(const LanqorInputData &complex) const
{
    constexpr double nearestTolerance = 0.1; // Angstrom
    constexpr double sphereTolerance = 0.3;  // Angstrom
    const QVector<complexComparison::Atom> atoms = ligandAtoms(complex);
    if (atoms.isEmpty())
        return QString();
    const auto text = [](double distance) { return QString::number(distance, 'f', 3); };
    const auto largest = complexComparison::largestDifference(atoms, d->ligandAtoms());
    if (largest.size() > sphereTolerance)
        return tr("the coordination spheres differ: a coordinated %1 is %2 A from the ion in %3 "
                  "but %4 A in %5, the largest difference; are these the same complex in the same "
                  "geometry?")
            .arg(largest.element, text(largest.inComplex), complex.getFileName(),
                 text(largest.amongLigands), d->outputName());
    const auto isNearer = [](const auto &a, const auto &b) { return a.distance < b.distance; };
    const double shortest = std::min_element(atoms.begin(), atoms.end(), isNearer)->distance;
    if (!(shortest > 0.0 && std::abs(d->minDistanceLnLigand - shortest) > nearestTolerance))
        return QString();
    return tr("the atom nearest to the ion is %1 A away in %2 but %3 A in %4: are these the same "
              "complex in the same geometry?")
        .arg(text(shortest), complex.getFileName(), text(d->minDistanceLnLigand), d->outputName());
}

double LanqorRL::getShortestDistance(const LanqorInputData &complex)
{
    double shortest = 0.0;
    for (const complexComparison::Atom &atom : ligandAtoms(complex)) {
        const bool isElement = !complexComparison::composition({atom}).isEmpty();
        if (isElement && (shortest == 0.0 || atom.distance < shortest))
            shortest = atom.distance;
    }
    return shortest;
}

DonorStatesResults LanqorRL::getResults() const
{
    const LanqorInputData &data = *d->inputData;
    DonorStatesResults results;
    results.outputPath = d->outputName();
    results.fragments = d->fragments;
    results.excitationShare = data.getExcitationShare();
    results.program = programName(d->programType);
    results.groundState = d->programType == LanqorInputData::ZindoOutput ? 1 : 0;
    results.reasonWithoutDistances =
        d->isCalculated || !d->missingDistances.isEmpty()
            ? d->missingDistances
            : tr("\nThe distances RL have not been calculated.").trimmed();
    results.minDistanceLnLigand = d->minDistanceLnLigand;
    const auto rl = [this](double distance) { return d->isCalculated ? distance : 0.0; };
    for (int i = 0; i < data.getSingletStatesCount(); ++i)
        results.singlets.append(ligandState(data.getSingletExcitateStateVector(i),
                                            data.getSingletWeights(i), rl(getSingletRL(i + 1)),
                                            d->singletCharacters.value(i)));
    for (int i = 0; i < data.getTripletStatesCount(); ++i)
        results.triplets.append(ligandState(data.getTripletExcitateStateVector(i),
                                            data.getTripletWeights(i), rl(getTripletRL(i + 1)),
                                            d->tripletCharacters.value(i)));
    return results;
}

QString LanqorRL::createOutput(const QString &path)
{
    if (!d->isCalculated) {
        failWith(tr("\nThe distances RL have not been calculated."));
        return QString();
    }
    QString text = donorStatesReport(getResults());
    QString error;
    if (!LanqorOutputFile::write(path, text.toUtf8(), error)) {
        failWith(tr("\nThe report of the distances RL could not be written to the file: \n") +
                 path + QLatin1Char('\n') + error);
        return QString();
    }
    return text;
}
