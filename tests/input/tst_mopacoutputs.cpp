#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

/// Real outputs against facts that a separate script took from them: those of this repository
/// and, where it is at hand, the corpus with further ones of MOPAC 7 to 22.
class TestMopacOutputs : public QObject
{
    Q_OBJECT

    /// Part of the message with which a job that did not finish must fail; empty for others.
    static QString expectedFailure(const QJsonObject &fact)
    {
        const QJsonObject lines = fact.value(QStringLiteral("failure_lines")).toObject();
        if (lines.contains(QStringLiteral("unable_to_achieve")))
            return QStringLiteral("UNABLE TO ACHIEVE SELF-CONSISTENCE. \n");
        if (lines.contains(QStringLiteral("dumped")))
            return QStringLiteral("THE CALCULATION IS BEING DUMPED TO DISK. \n");
        if (lines.contains(QStringLiteral("no_parameters")))
            return QStringLiteral("No parameters read in from spk.inp \n");
        if (fact.value(QStringLiteral("file")).toString().contains(QLatin1String("truncated")))
            return QStringLiteral("Cannot find the optimized cartesian coordinates");
        return QString();
    }

    static void addFacts(const QString &factsFile)
    {
        const QJsonArray facts = QJsonDocument::fromJson(testSupport::readAll(factsFile)).array();
        for (const QJsonValue &value : facts) {
            const QString name = value.toObject().value(QStringLiteral("file")).toString();
            QTest::newRow(name.toUtf8())
                << QFileInfo(factsFile).path() + QLatin1Char('/') + name << value.toObject();
        }
    }

private Q_SLOTS:
    void factsOfEveryOutput_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QJsonObject>("fact");
        const QString corpus = testSupport::corpusFile(QStringLiteral("mopac/facts.json"));
        addFacts(corpus.isEmpty() ? testSupport::dataFile(QStringLiteral("mopac/facts.json"))
                                  : corpus);
    }

    void factsOfEveryOutput()
    {
        QFETCH(QString, path);
        QFETCH(QJsonObject, fact);
        const auto number = [&fact](const char *key) {
            return fact.value(QLatin1String(key)).toDouble(); // 0 where nothing is printed
        };
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
        const QString citation = data.getMopacCitation();
        if (fact.value(QStringLiteral("citation_marker_lines")).toArray().isEmpty())
            QVERIFY(citation.isEmpty() || citation.endsWith(QLatin1String("zenodo.6511958")));
        else
            QVERIFY(!citation.isEmpty());
        compareCharges(fact, data);
        compareGeometry(fact, data);
        compareSphere(fact, data);
        compareForceConstants(fact, path);
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

    static void compareForceConstants(const QJsonObject &fact, const QString &path)
    {
        const QJsonArray expected =
            fact.value(QStringLiteral("force_constants_Ln_atom_2_up")).toArray();
        LanqorInputData data(nullptr, QString());
        QCOMPARE(data.readForceConstant(path, qMax(1, expected.size())), !expected.isEmpty());
        QCOMPARE(data.getForceConstantsCount(), expected.size());
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(data.getForceConstant(i), expected.at(i).toDouble());
        // Rows beyond the first page of 42, up to the last atom; none beyond it.
        const int atoms = fact.value(QStringLiteral("atoms")).toInt();
        QCOMPARE(LanqorInputData(nullptr, QString()).readForceConstant(path, atoms - 1),
                 !expected.isEmpty());
        QVERIFY(!LanqorInputData(nullptr, QString()).readForceConstant(path, atoms));
    }
};

QTEST_GUILESS_MAIN(TestMopacOutputs)
#include "tst_mopacoutputs.moc"
