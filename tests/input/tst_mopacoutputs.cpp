#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cmath>
#include <map>

/// Facts taken by a separate script from real outputs of MOPAC 7 to 22, none of them committed.
class TestMopacCorpus : public QObject
{
    Q_OBJECT

    QJsonArray facts;

    /// Part of the message with which a job that did not finish must fail.
    static QString expectedFailure(const QJsonObject &fact)
    {
        const QString name = fact.value(QStringLiteral("file")).toString();
        const QJsonObject lines = fact.value(QStringLiteral("failure_lines")).toObject();
        static const std::map<QString, QString> messages = {
            {QStringLiteral("unable_to_achieve"),
             QStringLiteral("UNABLE TO ACHIEVE SELF-CONSISTENCE. \n")},
            {QStringLiteral("dumped"),
             QStringLiteral("THE CALCULATION IS BEING DUMPED TO DISK. \n")},
            {QStringLiteral("no_parameters"),
             QStringLiteral("No parameters read in from spk.inp \n")},
        };
        for (const auto &message : messages) {
            if (!lines.value(message.first).toArray().isEmpty())
                return message.second;
        }
        if (name.contains(QLatin1String("truncated")))
            return QStringLiteral("Cannot find the optimized cartesian coordinates");
        return QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        CORPUS_FILE(path, "mopac/facts.json");
        facts = QJsonDocument::fromJson(testSupport::readAll(path)).array();
        QVERIFY(facts.size() >= 28);
    }

    void factsOfEveryOutput_data()
    {
        QTest::addColumn<QJsonObject>("fact");
        for (const QJsonValue &fact : facts)
            QTest::newRow(fact.toObject().value(QStringLiteral("file")).toString().toUtf8())
                << fact.toObject();
    }

    void factsOfEveryOutput()
    {
        QFETCH(QJsonObject, fact);
        const auto number = [&fact](const char *key) {
            return fact.value(QLatin1String(key)).toDouble(); // 0 where nothing is printed
        };
        const QString path = testSupport::corpusFile(QStringLiteral("mopac/") +
                                                     fact.value(QStringLiteral("file")).toString());
        LanqorInputData data(nullptr, path);
        testSupport::MessageSpy spy(data);
        const QString failure = expectedFailure(fact);
        if (!failure.isEmpty()) {
            QVERIFY(!data.readMopacOutFile(false));
            QVERIFY2(data.getLastError().contains(failure), qPrintable(data.getLastError()));
            QCOMPARE(spy.messages, QStringList(data.getLastError()));
            return;
        }
        QVERIFY2(data.readMopacOutFile(false), qPrintable(data.getLastError()));
        QVERIFY(spy.contains(QStringLiteral(" -> (Read Input Data) Cartesian coordinates ")));
        QCOMPARE(data.getFinalHeat(), number("final_heat_kcal"));
        QCOMPARE(data.getIonPotential(), number("ionisation_potential_eV"));
        QCOMPARE(data.getDipole(), number("dipole_debye"));
        QCOMPARE(data.getChargeOnSystem(), number("charge_on_system"));
        QCOMPARE(data.getMopacCitation().isEmpty(),
                 fact.value(QStringLiteral("citation_marker_lines")).toArray().isEmpty());
        compareCharges(fact, data);
        compareGeometry(fact, data);
        compareSphere(fact, data);
    }

    void forceConstants_data()
    {
        QTest::addColumn<QJsonObject>("fact");
        for (const QJsonValue &fact : facts) {
            const QJsonObject object = fact.toObject();
            QTest::newRow(object.value(QStringLiteral("file")).toString().toUtf8()) << object;
        }
    }

    void forceConstants()
    {
        QFETCH(QJsonObject, fact);
        const QString path = testSupport::corpusFile(QStringLiteral("mopac/") +
                                                     fact.value(QStringLiteral("file")).toString());
        const QJsonArray expected =
            fact.value(QStringLiteral("force_constants_Ln_atom_2_up")).toArray();
        LanqorInputData data(nullptr, QString());
        if (expected.isEmpty()) {
            QVERIFY(!data.readForceConstant(path, 1));
            QCOMPARE(data.getLastError(), QStringLiteral("There has been an error during read in "
                                                         "force constant from Mopac output."));
            return;
        }
        QVERIFY(data.readForceConstant(path, expected.size()));
        QCOMPARE(data.getForceConstantsCount(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(data.getForceConstant(i), expected.at(i).toDouble());
        // Rows beyond the first page of 42, up to the last atom; none beyond it.
        const int atoms = fact.value(QStringLiteral("atoms")).toInt();
        QVERIFY(LanqorInputData(nullptr, QString()).readForceConstant(path, atoms - 1));
        QVERIFY(!LanqorInputData(nullptr, QString()).readForceConstant(path, atoms));
    }

    void completeCase()
    {
        CORPUS_FILE(path, "complete_case/eu_l2_rm1_allvec_force.out");
        LanqorInputData data(nullptr, path);
        QVERIFY(data.readMopacOutFile(false));
        QCOMPARE(data.getCoord().size(), 93);
        QVERIFY(data.createSphericalCoordinate());
        QCOMPARE(data.getCoordNumber(), 6);
        QVERIFY(data.getAtomOrderError().isEmpty());
        QVERIFY(data.readForceConstant(path, 6));
        QCOMPARE(data.getForceConstantsCount(), 6);
    }

private:
    static void compareCharges(const QJsonObject &fact, const LanqorInputData &data)
    {
        QCOMPARE(data.getAtomicChargesCount(), fact.value(QStringLiteral("charges_count")).toInt());
        double sum = 0.0;
        for (int i = 0; i < data.getAtomicChargesCount(); ++i)
            sum += data.getAtomicCharges(i);
        COMPARE_NEAR(sum, fact.value(QStringLiteral("charges_sum")).toDouble(), 1e-5);
        const QJsonArray first = fact.value(QStringLiteral("charges_atoms_1_to_4")).toArray();
        for (int i = 0; i < first.size(); ++i)
            QCOMPARE(data.getAtomicCharges(i), first.at(i).toDouble());
    }

    static void compareGeometry(const QJsonObject &fact, const LanqorInputData &data)
    {
        QCOMPARE(data.getCoord().size(), fact.value(QStringLiteral("atoms")).toInt());
        const QJsonArray atoms = fact.value(QStringLiteral("final_coord_atoms_1_to_3")).toArray();
        for (int i = 0; i < atoms.size(); ++i) {
            const QJsonArray atom = atoms.at(i).toArray();
            QCOMPARE(data.getAtomLabel(i + 1), atom.at(0).toString());
            QCOMPARE(data.getCoord(i + 1).x, atom.at(1).toDouble());
            QCOMPARE(data.getCoord(i + 1).y, atom.at(2).toDouble());
            QCOMPARE(data.getCoord(i + 1).z, atom.at(3).toDouble());
        }
    }

    static void compareSphere(const QJsonObject &fact, LanqorInputData &data)
    {
        QVERIFY(data.createSphericalCoordinate());
        QCOMPARE(data.getCoordNumber(), fact.value(QStringLiteral("coordination_number")).toInt());
        QVector<int> expected;
        for (const QJsonValue &atom : fact.value(QStringLiteral("coordinated_atoms")).toArray())
            expected.append(atom.toInt());
        QCOMPARE(data.getCoordinatedAtoms(), expected);
        QCOMPARE(data.getAtomOrderError().isEmpty(),
                 fact.value(QStringLiteral("coordinated_are_2_to_N_plus_1")).toBool());
        const QJsonArray distances = fact.value(QStringLiteral("coordinated_r")).toArray();
        for (int i = 0; i < distances.size(); ++i)
            COMPARE_NEAR(data.getCoordSPH(expected.at(i)).r, distances.at(i).toDouble(), 1e-6);
        for (const char *key : {"nearest_atom", "atom2_spherical"}) {
            const QJsonObject atom = fact.value(QLatin1String(key)).toObject();
            const CoordSPH found = data.getCoordSPH(atom.value(QStringLiteral("number")).toInt(2));
            QCOMPARE(found.label, atom.value(QStringLiteral("label")).toString());
            COMPARE_NEAR(found.r, atom.value(QStringLiteral("r")).toDouble(), 1e-6);
            COMPARE_NEAR(found.theta, atom.value(QStringLiteral("theta")).toDouble(), 1e-4);
            COMPARE_NEAR(found.phi, atom.value(QStringLiteral("phi")).toDouble(), 1e-4);
        }
    }
};

QTEST_GUILESS_MAIN(TestMopacCorpus)
#include "tst_mopac_corpus.moc"
