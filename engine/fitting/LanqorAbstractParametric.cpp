#include "LanqorAbstractParametric.h"

#include <limits>

LanqorAbstractParametric::LanqorAbstractParametric(QObject *parent)
    : LanqorAbstractObjCalculation(parent)
{}

LanqorAbstractParametric::~LanqorAbstractParametric() = default;

bool LanqorAbstractParametric::runParametrization(const int &n, double *&x)
{
    parameterCount = n;
    parameters = x;
    return true;
}

void LanqorAbstractParametric::endOfParametrization() {}

void LanqorAbstractParametric::setRequiredCitations(const QString &citations)
{
    requiredCitations = citations;
}

void LanqorAbstractParametric::incrementPointsNumber()
{
    if (pointNumber < std::numeric_limits<int>::max())
        ++pointNumber;
}

void LanqorAbstractParametric::setPointNumberMaximum(const int &maximum)
{
    pointNumberMaximum = maximum;
}
