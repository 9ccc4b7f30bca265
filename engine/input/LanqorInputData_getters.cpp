#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"

// What was read.

QVector<Coord> LanqorInputData::getCoord() const
{
    return d->coord;
}

Coord LanqorInputData::getCoord(const int &atom) const
{
    return d->coord.at(atom - 1);
}

QVector<CoordSPH> LanqorInputData::getCoordSPH() const
{
    return d->coordSPH;
}

CoordSPH LanqorInputData::getCoordSPH(const int &atom) const
{
    return d->coordSPH.at(atom - 1);
}

CoordZMT LanqorInputData::getCoordZMT(const int &atom) const
{
    return d->coordZMT.at(atom - 1);
}

QString LanqorInputData::getAtomLabel(const int &atom) const
{
    return d->coord.at(atom - 1).label;
}

int LanqorInputData::getCoordNumber() const
{
    return d->coordNumber;
}

double LanqorInputData::getFinalHeat() const
{
    return d->finalHeat;
}

double LanqorInputData::getIonPotential() const
{
    return d->ionPotential;
}

double LanqorInputData::getDipole() const
{
    return d->dipole;
}

double LanqorInputData::getChargeOnSystem() const
{
    return d->chargeOnSystem;
}

bool LanqorInputData::isChargeOnSystemTold() const
{
    return d->isChargeTold;
}

double LanqorInputData::getAtomicCharges(const int &index) const
{
    return d->atomicCharges.at(index);
}

int LanqorInputData::getAtomicChargesCount() const
{
    return d->atomicCharges.size();
}

QString LanqorInputData::getMopacCitation() const
{
    return d->mopacCitation;
}

int LanqorInputData::getSelExcitateState() const
{
    return d->selExcitateState;
}

double LanqorInputData::getSingletEnergy(const int &state) const
{
    return d->singletStates.at(state - 1).energy;
}

double LanqorInputData::getTripletEnergy(const int &state) const
{
    return d->tripletStates.at(state - 1).energy;
}

ExcitateState LanqorInputData::getSingletExcitateStateVector(const int &index) const
{
    return d->singletStates.at(index);
}

ExcitateState LanqorInputData::getTripletExcitateStateVector(const int &index) const
{
    return d->tripletStates.at(index);
}

QVector<double> LanqorInputData::getSingletWeights(const int &index) const
{
    return d->singletWeights.at(index);
}

QVector<double> LanqorInputData::getTripletWeights(const int &index) const
{
    return d->tripletWeights.at(index);
}

QVector<double> LanqorInputData::getSingletCoefficients(const int &index) const
{
    return d->singletCoefficients.value(index);
}

QVector<double> LanqorInputData::getTripletCoefficients(const int &index) const
{
    return d->tripletCoefficients.value(index);
}

double LanqorInputData::getExcitationShare() const
{
    return d->excitationShare;
}

int LanqorInputData::getSingletStatesCount() const
{
    return d->singletStates.size();
}

int LanqorInputData::getTripletStatesCount() const
{
    return d->tripletStates.size();
}

MolecularOrbital LanqorInputData::getMolecularOrbitalVector(const int &index) const
{
    return d->molecularOrbitals.at(index);
}

MolecularOrbitalOCC LanqorInputData::getMolecularOrbital(const int &index) const
{
    return d->molecularOrbitalsOCC.at(index);
}

int LanqorInputData::getMolecularOrbitalsOccCount() const
{
    return d->molecularOrbitalsOCC.size();
}

int LanqorInputData::getMolecularOrbitalNumber() const
{
    return d->molecularOrbitalNumber;
}

int LanqorInputData::getHomoMO() const
{
    return d->homoMO;
}

int LanqorInputData::getLumoMO() const
{
    return d->lumoMO;
}

double LanqorInputData::getEnergyVector(const int &index) const
{
    return d->energyVector.at(index);
}

double LanqorInputData::getOscForceVector(const int &index) const
{
    return d->oscForceVector.at(index);
}

int LanqorInputData::getExcitedStateCount() const
{
    return d->excitedStateCount;
}

double LanqorInputData::getForceConstant(const int &index) const
{
    return d->forceConstants.at(index);
}

int LanqorInputData::getForceConstantsCount() const
{
    return d->forceConstants.size();
}

bool LanqorInputData::getIsOrcaTDDFT() const
{
    return d->isOrcaTDDFT;
}
