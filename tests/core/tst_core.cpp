#include "TestSupport.h"
#include "core/chargeFactorBounds_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorUncertainty.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cmath>
#include <limits>
#include <numeric>

namespace {

/// Error bars of the only result of @p model.
UncertaintyResults::Quantity errorBars(const QVector<UncertainInput> &inputs,
                                       const std::function<double(const QVector<double> &)> &model)
{
    LanqorUncertainty uncertainty;
    for (const UncertainInput &input : inputs)
        if (!uncertainty.addInput(input))
            return {};
    const auto row = [&model](const QVector<double> &values) {
        return QVector<double>{model(values)};
    };
    return uncertainty.calculate({{"y", "1"}}, {0.0}, row).quantities.first();
}

} // namespace

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
                                         "3,N,\n4,,\n\n"));
    }

    void resultsAreReadBackOrRefused()
    {
        LanqorResultTables tables;
        tables.addTable("fit",
                        {{"name", ""},
                         {"unit", ""},
                         {"value", "unit"},
                         {"standard_error", "unit", "value"},
                         {"points", ""}},
                        {{"zeta", "cm^-1", 1e6, 0.1, 1000000}, {"g", "1", -0.0}});
        tables.addTable("empty", {{"energy", "cm^-1"}}, {});
        const QByteArray json = tables.toJson();
        const QJsonValue value =
            QJsonDocument::fromJson(json).object()["fit"].toArray().first().toObject()["value"];
        QCOMPARE(value["unit"].toString(), QStringLiteral("cm^-1"));
        QCOMPARE(value["uncertainty"]["standard_error"].toDouble(), 0.1);
        LanqorResultTables back;
        QString error;
        QVERIFY2(back.readJson(json, error), qPrintable(error));
        QCOMPARE(back.toCsv(), tables.toCsv());
        QCOMPARE(back.toJson(), json);
        const auto refused = [&](const char *text, const char *other, const char *reason) {
            QVERIFY(!back.readJson(QByteArray(json).replace(text, other), error));
            QVERIFY2(error.contains(QLatin1String(reason)), qPrintable(error));
            QCOMPARE(back.toJson(), json);
        };
        refused("\"schema_version\": 2", "\"schema_version\": 3", "schema 3");
        refused("\"contents\"", "\"content\"", "no result");
        refused("\"fit\": [", "\"fits\": [", "\"fit\" is missing");
        refused("\"uncertainty\": {", "\"doubt\": {", "standard_error is missing");
        refused("\"value\": 1000000", "\"value\": true", "row 1, value is no number");
        refused("\"empty\": [", "\"more\": [], \"empty\": [", "lists 2");
        testSupport::damageFile(json, 100, 300, [&](const QString &path) {
            back.readJson(testSupport::readAll(path), error);
        });
    }

    void errorBarsOfALinearResult()
    {
        const auto linear = [](const QVector<double> &x) {
            return 2.0 * x[0] - 3.0 * x[1] + 0.5 * x[2];
        };
        const auto normal = [](double value, double sd) {
            return UncertainInput{"x", "1", UncertaintyKind::Normal, value, sd};
        };
        double widths[2];
        for (const double scale : {1.0, 0.5}) {
            const double sd[3] = {0.3 * scale, 0.2 * scale, 1.0 * scale};
            const auto y =
                errorBars({normal(5, sd[0]), normal(7, sd[1]), normal(1, sd[2])}, linear);
            const double variance = 4 * sd[0] * sd[0] + 9 * sd[1] * sd[1] + 0.25 * sd[2] * sd[2];
            const double gauss = std::sqrt(variance);
            COMPARE_NEAR(y.median, -10.5, 0.01 * gauss);
            COMPARE_NEAR(y.high68 - y.low68, 2 * 0.994458 * gauss, 0.02 * gauss);
            COMPARE_NEAR(y.high95 - y.low95, 2 * 1.959964 * gauss, 0.04 * gauss);
            COMPARE_NEAR(y.firstOrder[1], 9 * sd[1] * sd[1] / variance, 0.01);
            COMPARE_NEAR(y.firstOrder[0] + y.firstOrder[1] + y.firstOrder[2], 1.0, 0.02);
            widths[scale == 1.0 ? 0 : 1] = y.high95 - y.low95;
        }
        COMPARE_NEAR(widths[1] / widths[0], 0.5, 1e-9);
        // Many inputs: chance correlations between them do not add up.
        const auto sum =
            errorBars(QVector<UncertainInput>(12, normal(1, 0.1)), [](const QVector<double> &x) {
                return std::accumulate(x.begin(), x.end(), 0.0);
            });
        COMPARE_NEAR(std::accumulate(sum.firstOrder.begin(), sum.firstOrder.end(), 0.0), 1.0,
                     0.005);
        COMPARE_NEAR(sum.high68 - sum.low68, 2 * 0.994458 * 0.1 * std::sqrt(12),
                     0.02 * 0.1 * std::sqrt(12));
        // Cut at 0 and at 1: the middle of what is left of each distribution.
        const double infinity = std::numeric_limits<double>::infinity();
        const auto own = [](const QVector<double> &x) { return x[0]; };
        COMPARE_NEAR(
            errorBars({{"x", "1", UncertaintyKind::Normal, 0, 1, 0, 0, 0, infinity}}, own).median,
            0.674490, 2e-3);
        COMPARE_NEAR(
            errorBars({{"x", "1", UncertaintyKind::Uniform, 0, 0, -4, 1, 0, infinity}}, own).median,
            0.5, 1e-3);
        COMPARE_NEAR(errorBars({{"k", "1", UncertaintyKind::LogNormal, 3, 3}}, own).high68,
                     3 * std::exp(0.994458 * std::sqrt(std::log(2))), 0.02);
        LanqorUncertainty uncertainty;
        for (const UncertainInput &wrong :
             {normal(1, -0.1), normal(1, std::nan("")),
              UncertainInput{"k", "1", UncertaintyKind::LogNormal, 0, 1},
              UncertainInput{"x", "1", UncertaintyKind::Uniform, 0, 0, 2, 1},
              UncertainInput{"x", "1", UncertaintyKind::Uniform, 0, 0, -2, -1, 0, infinity}})
            QVERIFY(!uncertainty.addInput(wrong));
        QVERIFY(uncertainty.isEmpty());
    }

    /// T. Ishigami, T. Homma, Proc. ISUMA 1990, 398: variances in closed form.
    void sensitivitiesOfIshigami()
    {
        const double pi = 3.14159265358979;
        const UncertainInput x{"x", "1", UncertaintyKind::Uniform, 0, 0, -pi, pi};
        const auto y = errorBars({x, x, x}, [](const QVector<double> &v) {
            return std::sin(v[0]) * (1 + 0.1 * std::pow(v[2], 4)) + 7 * std::pow(std::sin(v[1]), 2);
        });
        const double alone = 0.5 * std::pow(1 + 0.1 * std::pow(pi, 4) / 5, 2);
        const double together = 0.01 * std::pow(pi, 8) * (1.0 / 18 - 1.0 / 50);
        const double variance = alone + 49.0 / 8 + together;
        const double first[] = {alone, 49.0 / 8, 0.0};
        const double total[] = {alone + together, 49.0 / 8, together};
        for (int i = 0; i < 3; ++i) {
            COMPARE_NEAR(y.firstOrder[i], first[i] / variance, 0.01);
            COMPARE_NEAR(y.total[i], total[i] / variance, 0.01);
        }
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "tst_core.moc"
