#include "TestSupport.h"
#include "core/chargeFactorBounds_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <limits>

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
        const QPair<int, const char *> symbols[] = {{1, "H"},    {63, "Eu"}, {80, "Mg"},
                                                    {103, "Lw"}, {0, ""},    {104, ""}};
        for (const auto &[number, symbol] : symbols)
            QCOMPARE(LanqorInputData::getElementSymbol(number), QLatin1String(symbol));
        QCOMPARE(LanqorInputData::elementMassTable.last().first, QStringLiteral("Lr"));
        double sum = 0.0;
        for (const auto &element : LanqorInputData::elementMassTable)
            sum += element.second;
        COMPARE_NEAR(sum, 13067.64, 1e-9); // of all masses, g/mol, added separately
        for (int i = 0; i < 15; ++i)       // the lanthanides are elements 57 to 71
            QCOMPARE(LanqorInputData::lanthanideList[i], LanqorInputData::getElementSymbol(57 + i));
    }

    void chargeFactorBoundsOfTheTwoFits()
    {
        using Update = void (*)(const QString &, ChargeFactorBounds &);
        const auto boundsOf = [](Update update, const char *symbols) {
            ChargeFactorBounds bounds;
            for (const QString &symbol : QString::fromLatin1(symbols).split(QLatin1Char(' ')))
                update(symbol, bounds);
            return QVector<double>{bounds.minimum, bounds.maximum};
        };
        // Se is in no class and Br in none of the QDC fits: the bounds before them stay.
        QCOMPARE(boundsOf(updateDirectFitBounds, "Se"), (QVector<double>{0.01, 3.0}));
        QCOMPARE(boundsOf(updateDirectFitBounds, "O Br Se"), (QVector<double>{0.001, 1.0}));
        QCOMPARE(boundsOf(updateQdcFitBounds, "O Br"), (QVector<double>{0.01, 2.0}));
        QCOMPARE(boundsOf(updateQdcFitBounds, "O Cl"), (QVector<double>{0.01, 1.0}));
    }

    void resultsAsJsonAndCsv()
    {
        const double third = 1.0 / 3.0;
        const double infinite = std::numeric_limits<double>::infinity();
        LanqorResultTables tables;
        tables.addTable("atoms", {{"atom_from_1", ""}, {"name", ""}, {"distance", "Angstrom"}},
                        {{2, "O, \"axial\"", third}, {3, "N", infinite}, {4}});
        LanqorResultTables run;
        run.addRecord("run", {{"version", ""}, {"yield", "%"}}, {"1.0", 1e-7});
        run.append(tables);
        const QJsonObject json = QJsonDocument::fromJson(run.toJson()).object();
        QCOMPARE(json["run"]["yield"]["unit"].toString(), QStringLiteral("%"));
        const QJsonArray atoms = json["atoms"].toArray();
        QCOMPARE(atoms.size(), 3);
        QCOMPARE(atoms[0]["atom_from_1"].toInt(), 2);
        QCOMPARE(atoms[0]["distance"]["value"].toDouble(), third); // to the last bit
        QVERIFY(atoms[1]["distance"]["value"].isNull());
        QVERIFY(atoms[2]["name"].isNull());
        QCOMPARE(run.toCsv(), QByteArray("# run\nquantity,value,unit\nversion,1.0,\nyield,1e-07,%"
                                         "\n\n# atoms\natom_from_1,name,distance [Angstrom]\n"
                                         "2,\"O, \"\"axial\"\"\",0.3333333333333333\n"
                                         "3,N,inf\n4,,\n\n"));
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "tst_core.moc"
