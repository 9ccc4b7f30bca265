#include "LanqorParametricQDCBounded.h"

#include "core/chargeFactorBounds_p.h"

LanqorParametricQDCBounded::LanqorParametricQDCBounded(QObject *parent, LanqorInputData *geometry,
                                                       const int &value)
    : LanqorParametricQDC(parent, geometry, value)
{}

LanqorParametricQDCBounded::~LanqorParametricQDCBounded() = default;

bool LanqorParametricQDCBounded::runParametrization(const int &n, double *&x)
{
    QVector<double> qdc = toQdc(QVector<double>(x, x + n));
    double *values = qdc.isEmpty() ? x : qdc.data();
    return LanqorParametricQDC::runParametrization(n, values);
}

QVector<double> LanqorParametricQDCBounded::toQdc(const QVector<double> &vector)
{
    if (vector.size() != 3 || !isSetUp())
        return {};
    return {vector.at(0), vector.at(1), vector.at(2) - vector.at(1) * getSmallestIndex()};
}

QVector<double> LanqorParametricQDCBounded::fromQdc(const QVector<double> &qdc)
{
    if (qdc.size() != 3 || !isSetUp())
        return {};
    return {qdc.at(0), qdc.at(1), qdc.at(2) + qdc.at(1) * getSmallestIndex()};
}

QVector<FitParameter> LanqorParametricQDCBounded::getBoundedParameters()
{
    QVector<FitParameter> parameters = getParameters();
    if (!parameters.isEmpty())
        parameters[2] = {QStringLiteral("alpha_min"), QStringLiteral("Angstrom^3"), minimumAlpha,
                         maximumAlphaQdcFit};
    return parameters;
}
