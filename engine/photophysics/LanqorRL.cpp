#include "LanqorRL.h"

#include "photophysics/donorDistance_p.h"

#include <QStringList>

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
        .arg(kind)
        .arg(state)
        .arg(numbers.join(QStringLiteral(", ")));
}

} // namespace

LanqorRL::LanqorRL(QObject *parent, const QString &outputPath)
    : LanqorAbstractObjCalculation(parent)
    , outputPath(outputPath)
    , minDistanceLnLigand(noDistance)
{
    restart();
}

LanqorRL::~LanqorRL() = default;

void LanqorRL::restart()
{
    delete inputData;
    inputData = new LanqorInputData(this, outputPath);
    connect(inputData, &LanqorAbstractObjCalculation::newObjCalculationMessage, this,
            &LanqorRL::processStatus);
    isCalculated = false;
    selExcitateState = inputData->getSelExcitateState();
    minDistanceLnLigand = noDistance;
    singletRL = {0.0};
    tripletRL = {0.0};
    atomDistances.clear();
}

bool LanqorRL::calcRL(const int &programType)
{
    restart();
    this->programType = programType;
    Coord ion;
    int ionAtom = 0;
    if (!readOutput())
        return false;
    selExcitateState = inputData->getSelExcitateState();
    if (!findIon(ion, ionAtom))
        return false;
    calcAtomDistances(ion, ionAtom);
    isCalculated = calcStateDistances();
    return isCalculated;
}

bool LanqorRL::readOutput()
{
    bool isRead = false;
    switch (programType) {
    case LanqorInputData::ZindoOutput:
        isRead = inputData->readCoordFromZindoOutFile() && inputData->readOutputZindo();
        break;
    case LanqorInputData::OrcaOutput:
        isRead = inputData->readCoordFromOrcaOutFile() && inputData->readOutputOrca();
        break;
    case LanqorInputData::GaussianOutput:
        isRead = inputData->readOutputGaussian();
        break;
    default:
        return failWith(tr("\nUnknown program type %1: 0 stands for a ZINDO, 1 for an ORCA and 2 "
                           "for a Gaussian output.")
                            .arg(programType));
    }
    if (!isRead) // the reader has emitted its message
        setLastError(inputData->getLastError());
    return isRead;
}

bool LanqorRL::findIon(Coord &place, int &atom)
{
    const QVector<Coord> atoms = inputData->getCoord();
    if (programType == LanqorInputData::OrcaOutput && !inputData->getIsOrcaTDDFT()) {
        atom = 0;
        if (inputData->readChargePointFileOrca(place.x, place.y, place.z))
            return true;
        setLastError(inputData->getLastError());
        return false;
    }
    for (int i = 0; i < atoms.size(); ++i) {
        if (programType == LanqorInputData::ZindoOutput ||
            LanqorInputData::isLanthanide(atoms.at(i).label)) {
            place = atoms.at(i);
            atom = i + 1;
            return true;
        }
    }
    return failWith(tr("\nCannot find a lanthanide ion among the atoms of the output file: \n") +
                    outputPath + tr("\nThe distances RL are those from the ion."));
}

void LanqorRL::calcAtomDistances(const Coord &ion, int ionAtom)
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

bool LanqorRL::calcStateDistances()
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
        return failWith(
            tr("\nThe molecular orbitals name atom %1, but the geometry has %2 atoms: \n")
                .arg(unknownAtom)
                .arg(atomDistances.size()) +
            outputPath);
    }
    if (!incompleteStates.isEmpty()) {
        emitProgress(tr(" -> (RL Calculation) These states use molecular orbitals (numbers in "
                        "brackets) that the output does not print; their RL leaves them out: ") +
                     incompleteStates.join(QStringLiteral("; ")));
    }
    return true;
}
