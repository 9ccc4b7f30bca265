#include "LanqorAbstractObjCalculation.h"

#include <QDateTime>

class LanqorAbstractObjCalculationPrivate
{
public:
    QString lastError;
};

LanqorAbstractObjCalculation::LanqorAbstractObjCalculation(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<LanqorAbstractObjCalculationPrivate>())
{}

LanqorAbstractObjCalculation::~LanqorAbstractObjCalculation() = default;

QString LanqorAbstractObjCalculation::getLastError() const
{
    return d->lastError;
}

void LanqorAbstractObjCalculation::setLastError(const QString &error)
{
    d->lastError = error;
}

void LanqorAbstractObjCalculation::processStatus(const QString &message)
{
    Q_EMIT newObjCalculationMessage(message);
}

bool LanqorAbstractObjCalculation::failWith(const QString &message)
{
    d->lastError = message;
    Q_EMIT newObjCalculationMessage(message);
    return false;
}

void LanqorAbstractObjCalculation::emitProgress(const QString &message)
{
    Q_EMIT newObjCalculationMessage(QDateTime::currentDateTime().toString(Qt::ISODate) + message);
}
