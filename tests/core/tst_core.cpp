#include "TestSupport.h"
#include "core/chargeFactorBounds_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

/// Opens the protected slot of the base object.
class RelayingCalculation : public LanqorAbstractObjCalculation
{
public:
    void relay(const QString &text) { processStatus(text); }
};

class TestCore : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void metaObjectKeepsItsOrder()
    {
        const QMetaObject &meta = LanqorAbstractObjCalculation::staticMetaObject;
        const int offset = meta.methodOffset();
        QCOMPARE(meta.methodCount() - offset, 2);
        QCOMPARE(meta.method(offset).methodSignature(),
                 QByteArray("newObjCalculationMessage(QString)"));
        QCOMPARE(meta.method(offset).methodType(), QMetaMethod::Signal);
        QCOMPARE(meta.method(offset + 1).methodSignature(), QByteArray("processStatus(QString)"));
        QCOMPARE(meta.method(offset + 1).access(), QMetaMethod::Protected);
    }

    void messagesAreRelayedOnce()
    {
        RelayingCalculation calculation;
        QVERIFY(calculation.getLastError().isEmpty());
        testSupport::MessageSpy spy(calculation);
        calculation.setLastError(QStringLiteral("silent"));
        QVERIFY(spy.messages.isEmpty());
        calculation.relay(QStringLiteral("text"));
        QCOMPARE(spy.messages, QStringList{QStringLiteral("text")});
        QCOMPARE(calculation.getLastError(), QStringLiteral("silent"));
    }

    void elementTables()
    {
        QCOMPARE(LanqorInputData::elementMassTable.size(), 103);
        QCOMPARE(LanqorInputData::elementNumberTable.size(), 103);
        QCOMPARE(LanqorInputData::getElementSymbol(63), QStringLiteral("Eu"));
        QCOMPARE(LanqorInputData::getElementSymbol(80), QStringLiteral("Mg"));
        QCOMPARE(LanqorInputData::getElementSymbol(103), QStringLiteral("Lw"));
        QCOMPARE(LanqorInputData::elementMassTable.last().first, QStringLiteral("Lr"));
        QVERIFY(LanqorInputData::getElementSymbol(0).isEmpty());
        QVERIFY(LanqorInputData::getElementSymbol(104).isEmpty());
        QCOMPARE(LanqorInputData::elementMassTable.at(62).second, 151.97);
        QCOMPARE(LanqorInputData::lanthanideList[6], QStringLiteral("Eu"));
        for (int i = 0; i < 15; ++i) // the lanthanides are elements 57 to 71
            QCOMPARE(LanqorInputData::lanthanideList[i], LanqorInputData::getElementSymbol(57 + i));
    }

    void titleHasElevenLinesOf107()
    {
        const QStringList lines = LanqorInputData::LANQORTitle.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 12);
        QVERIFY(lines.last().isEmpty());
        for (int i = 0; i < 11; ++i)
            QCOMPARE(lines.at(i).size(), 107);
        QCOMPARE(lines.at(0), QString(16, QLatin1Char(' ')) + QString(91, QLatin1Char('*')));
        QCOMPARE(lines.at(10), lines.at(0));
    }

    void chargeFactorBoundsOfTheTwoFits()
    {
        ChargeFactorBounds bounds;
        updateDirectFitBounds(QStringLiteral("Se"), bounds); // no class: unchanged
        QCOMPARE(bounds.maximum, 3.0);
        updateDirectFitBounds(QStringLiteral("Br"), bounds);
        QCOMPARE(bounds.minimum, 0.001);
        QCOMPARE(bounds.maximum, 1.0);
        updateQdcFitBounds(QStringLiteral("O"), bounds);
        updateQdcFitBounds(QStringLiteral("Br"), bounds);
        QCOMPARE(bounds.maximum, 2.0);
        updateQdcFitBounds(QStringLiteral("Cl"), bounds);
        QCOMPARE(bounds.minimum, 0.01);
        QCOMPARE(bounds.maximum, 1.0);
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "tst_core.moc"
