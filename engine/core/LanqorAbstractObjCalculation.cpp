#include "LanqorAbstractObjCalculation.h"

#include <QDateTime>

LanqorAbstractObjCalculation::LanqorAbstractObjCalculation(QObject *parent)
    : QObject(parent)
{}

LanqorAbstractObjCalculation::~LanqorAbstractObjCalculation() = default;

void LanqorAbstractObjCalculation::setLastError(const QString &error)
{
    lastError = error;
}

void LanqorAbstractObjCalculation::processStatus(const QString &message)
{
    Q_EMIT newObjCalculationMessage(message);
}

bool LanqorAbstractObjCalculation::failWith(const QString &message)
{
    lastError = message;
    Q_EMIT newObjCalculationMessage(message);
    return false;
}

void LanqorAbstractObjCalculation::emitProgress(const QString &message)
{
    Q_EMIT newObjCalculationMessage(QDateTime::currentDateTime().toString(Qt::ISODate) + message);
}
