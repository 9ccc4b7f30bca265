#include "LanqorRL.h"

namespace {

/// Where the search for the shortest distance starts, Angstrom; stays when the ion is alone.
constexpr double noDistance = 1000.0;

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
