#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

#include <QObject>
#include <QString>

#include <memory>

class LanqorAbstractObjCalculationPrivate;

/// Base of every calculation object: a message channel to the host program and the text of
/// the last failure.
///
/// Operations of derived classes report a failure by their result and leave its reason in
/// getLastError(). An object is used by one thread at a time.
class LANQORENGINE_EXPORT LanqorAbstractObjCalculation : public QObject
{
    Q_OBJECT
public:
    explicit LanqorAbstractObjCalculation(QObject *parent = nullptr);
    ~LanqorAbstractObjCalculation() override;

    /// Text of the last failure; empty when there was none.
    QString getLastError() const;
    /// Replaces the text of the last failure; emits nothing.
    void setLastError(const QString &error);

Q_SIGNALS:
    /// A progress or report line for the host program's log.
    void newObjCalculationMessage(const QString &message);

protected Q_SLOTS:
    /// Passes on a message of a worker object.
    void processStatus(const QString &message);

protected:
    /// Keeps @p message as the last error, emits it once and returns false.
    bool failWith(const QString &message);
    /// Emits @p message preceded by the current date and time.
    void emitProgress(const QString &message);

private:
    std::unique_ptr<LanqorAbstractObjCalculationPrivate> d;
};
