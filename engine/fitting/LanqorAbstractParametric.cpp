#include "LanqorAbstractParametric.h"

#include <limits>

class LanqorAbstractParametricPrivate
{
};

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

double LanqorAbstractParametric::getResponseFunction() const
{
    return responseFunction;
}

double LanqorAbstractParametric::getBestResponse() const
{
    return bestResponse;
}

void LanqorAbstractParametric::setRequiredCitations(const QString &citations)
{
    requiredCitations = citations;
}

void LanqorAbstractParametric::incrementPointsNumber()
{
    if (pointNumber < std::numeric_limits<int>::max())
        ++pointNumber;
}

int LanqorAbstractParametric::getPointNumber() const
{
    return pointNumber;
}

void LanqorAbstractParametric::setPointNumberMaximum(const int &maximum)
{
    pointNumberMaximum = maximum;
}

int LanqorAbstractParametric::getPointNumberMaximum() const
{
    return pointNumberMaximum;
}
