#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QDir>
#include <QtTest>

#include <cmath>

using testSupport::dataFile;
using testSupport::scratchFile;

namespace {

double distance(const Coord &a, const Coord &b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                     (a.z - b.z) * (a.z - b.z));
}

struct Reading
{
    bool ok = false;
    QVector<Coord> atoms;
    QString error;
};

/// Reads @p text as a file of the given name.
Reading readText(const char *name, const QByteArray &text)
{
    LanqorInputData data(nullptr, scratchFile(QString::fromLatin1(name), text));
    const bool ok = data.readStructureFile();
    return {ok, data.getCoord(), data.getLastError()};
}

} // namespace

class TestStructureFiles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void zMatrixGivesTheGeometryOfTheProgram_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("mop") << dataFile(QStringLiteral("structures/eu_cl2_h2o6_internal.mop"));
        QTest::newRow("zmt") << dataFile(QStringLiteral("structures/eu_cl2_h2o6_int.zmt"));
    }

    /// MOPAC printed both the Z-matrix and the Cartesian geometry that it makes of it.
    void zMatrixGivesTheGeometryOfTheProgram()
    {
        QFETCH(QString, file);
        LanqorInputData output(nullptr, dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out")));
        QVERIFY(output.readStructureFile());
        LanqorInputData data(nullptr, file);
        QVERIFY2(data.readStructureFile(), qPrintable(data.getLastError()));
        QCOMPARE(data.getCoord().size(), 21);
        for (int atom = 1; atom <= 21; ++atom) {
            QCOMPARE(data.getAtomLabel(atom), output.getAtomLabel(atom));
            QVERIFY(distance(data.getCoord(atom), output.getCoord(atom)) < 5e-6);
            COMPARE_NEAR(data.getCoordZMT(atom).dihedral, output.getCoordZMT(atom).dihedral, 1e-6);
            QCOMPARE(data.getCoordZMT(atom).nc, output.getCoordZMT(atom).nc);
        }
    }

    void mopacInputWithCommentsAheadOfItsKeywords()
    {
        const QString path = dataFile(QStringLiteral("structures/eu_h2o9_internal_openmopac.mop"));
        QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(path),
                 LanqorInputData::InternalGeometry);
        QVERIFY(!LanqorInputData::checkTypeMopFile(path));
        LanqorInputData data(nullptr, path);
        QVERIFY2(data.readStructureFile(), qPrintable(data.getLastError()));
        QCOMPARE(data.getCoord().size(), 28);
        QVERIFY(data.createSphericalCoordinate());
        QCOMPARE(data.getCoordNumber(), 6);
        COMPARE_NEAR(data.getCoordSPH(2).r, 2.41159942, 1e-9);
    }

    void mopacInputs_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray title = "AM1 XYZ\ntitle\n\n";
        const QByteArray rows = "Eu 0 1 0 1 0 1\nO 2.4 1 0.5 1 -0.25 1\n";
        QTest::newRow("flags") << title + rows;
        QTest::newRow("signed flags, comment, small letters")
            << title + "EU 0. +0 0. +0 0. +0\n* a comment\no 2.4 +1 .5 +1 -2.5e-1 -1\n\nO 9 9 9\n";
        QTest::newRow("no flags") << title + "  Eu 0.0 0.0 0.0\n\tO\t2.4\t0.5\t-0.25";
        QTest::newRow("numbers of elements, commas") << title + "63 0, 0, 0,\n8 2.4, .5, -.25\n";
        QTest::newRow("references of 0")
            << title + "Eu 0.0 1 0.0 1 0.0 1 0 0 0\nO 2.4 1 0.5 1 -0.25 1 0 0 0\n";
        QTest::newRow("charges") << title + "Eu 0. 1 0. 1 0. 1    3.0000\n"
                                            "O 2.4 1 0.5 1 -0.25 1 0 0 0 -0.7252\n";
        QTest::newRow("atom tags, translation vectors, dummy, mass of the isotope")
            << title + "Eu(ion 1) 0 1 0 1 0 1\nXX 1 1 1 1 1 1\nO17.99( 2) 2.4 1 0.5 1 -0.25 1\n"
                       "Tv 13. 0 0. 0 0. 0\n";
        QTest::newRow("extra keyword line") << "AM1 +\nXYZ\ntitle\n\n" + rows;
        QTest::newRow("keyword line in place of a title, CR LF")
            << QByteArray("AM1 &\nXYZ\ntitle\n" + rows).replace("\n", "\r\n");
        QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + title + rows;
        QTest::newRow("no keywords at all") << "\ntitle\n\n" + rows + "0 0 0 0\n";
    }

    void mopacInputs()
    {
        QFETCH(QByteArray, text);
        const Reading reading = readText("a.mop", text);
        const QString path = scratchFile(QStringLiteral("a.mop"), text);
        QCOMPARE(LanqorInputData::checkTypeMopFile(path), text.contains("XYZ"));
        QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(path),
                 LanqorInputData::CartesianGeometry);
        QVERIFY2(reading.ok, qPrintable(reading.error));
        QCOMPARE(reading.atoms.size(), 2);
        QCOMPARE(reading.atoms.at(0).label, QStringLiteral("Eu"));
        QCOMPARE(reading.atoms.at(1).label, QStringLiteral("O"));
        QCOMPARE(distance(reading.atoms.at(1), {QString(), 2.4, 0.5, -0.25}), 0.0);
    }

    void shortRowsOfTheFirstAtoms_data()
    {
        QTest::addColumn<QByteArray>("rows");
        QTest::newRow("flags") << QByteArray("Eu\nO 2.4 1\nO 2.5 1 90.0 1\n"
                                             "N 2.6 1 90.0 1 90.0 1 1 2 3\n");
        QTest::newRow("no flags") << QByteArray("Eu\nO 2.4 1\nO 2.5 90.0 2 1\n"
                                                "N 2.6 90.0 90.0 1 2 3\n");
        QTest::newRow("zeros") << QByteArray("Eu 0. 0 0. 0 0. 0 0 0 0\nO 2.4 1 0. 0 0. 0 1 0 0\n"
                                             "O 2.5 1 90.0 1 0. 0 2 1 0\n"
                                             "N 2.6 1 90.0 1 90.0 1 1 2 3\n");
        QTest::newRow("dummy atom")
            << QByteArray("Eu\nO 2.4 1\nO 2.5 1 90.0 1\nXX 1. 0 90. 0 0. 0 1 2 3\n"
                          "N 2.6 1 90.0 1 90.0 1 1 2 4\n");
    }

    /// Eu at the origin, O on x, the second O bound to the first along y, N out of their plane.
    void shortRowsOfTheFirstAtoms()
    {
        QFETCH(QByteArray, rows);
        const Reading reading = readText("a.mop", "AM1\n\n\n" + rows);
        QVERIFY2(reading.ok, qPrintable(reading.error));
        QCOMPARE(reading.atoms.size(), 4);
        QVERIFY(distance(reading.atoms.at(1), {QString(), 2.4, 0.0, 0.0}) < 1e-12);
        QVERIFY(distance(reading.atoms.at(2), {QString(), 2.4, 2.5, 0.0}) < 1e-12);
        COMPARE_NEAR(distance(reading.atoms.at(3), reading.atoms.at(0)), 2.6, 1e-12);
        COMPARE_NEAR(std::abs(reading.atoms.at(3).z), 2.6, 1e-12);
        QVERIFY(rows.contains("XX") || readText("a.zmt", rows).ok);
    }

    void collinearReferences()
    {
        const QByteArray head = "Eu\nO 2.0 1\nC 1.2 180.0 2 1\nN 2.4 90. 0. 1 2 3\n";
        const Reading straight = readText("a.zmt", head + "N 1.1 180.0 0.0 3 2 1\n");
        QVERIFY(straight.ok);
        COMPARE_NEAR(straight.atoms.at(4).x, 4.3, 1e-9); // on the line no dihedral is needed
        const Reading bent = readText("a.zmt", head + "N 1.1 120.0 0.0 3 2 1\n");
        QVERIFY2(bent.error.contains(QStringLiteral("Atom 5 of the Z-matrix")),
                 qPrintable(bent.error));
    }

    void xyzAndMol2()
    {
        LanqorInputData xyz(nullptr, dataFile(QStringLiteral("structures/eu_acac3_h2o.xyz")));
        QVERIFY(xyz.readStructureFile());
        QCOMPARE(xyz.getCoord().size(), 46);
        QCOMPARE(xyz.getCoord(46).label, QStringLiteral("H"));
        QCOMPARE(xyz.getCoord(4).z, 2.985448893);

        LanqorInputData mol2(
            nullptr, dataFile(QStringLiteral("structures/eu_acac3_h2o_numbered_names.mol2")));
        testSupport::MessageSpy spy(mol2);
        QVERIFY(mol2.readStructureFile());
        QVERIFY(spy.contains(QStringLiteral("The structure has 2 residues.")));
        QCOMPARE(mol2.getCoord().size(), 46);
        for (int atom = 1; atom <= 46; ++atom) {
            QCOMPARE(mol2.getAtomLabel(atom), xyz.getAtomLabel(atom));
            QVERIFY(distance(mol2.getCoord(atom), xyz.getCoord(atom)) < 1e-4);
        }

        LanqorInputData capitals(nullptr,
                                 dataFile(QStringLiteral("structures/eu_cl2_h2o6_openbabel.mol2")));
        testSupport::MessageSpy capitalsSpy(capitals);
        QVERIFY(capitals.readStructureFile());
        QVERIFY(capitalsSpy.contains(QStringLiteral("The structure has 10 residues.")));
        QVERIFY(capitals.createSphericalCoordinate());
        QCOMPARE(capitals.getAtomLabel(1) + QString::number(capitals.getCoordNumber()),
                 QStringLiteral("Eu8"));

        // The type tells the element, the name where the type is none.
        const Reading labels = readText(
            "a.mol2", "@<TRIPOS>ATOM\n1 Eu1 0 0 0 Du\n2 CA 2 0 0 C.ar\n3 CL1 0 2 0 Cl 1 LIG -.3\n"
                      "4 O 0 0 2 O.co2\n@<TRIPOS>BOND\n");
        QString elements;
        for (const Coord &atom : labels.atoms)
            elements += atom.label + QLatin1Char(' ');
        QCOMPARE(elements, QStringLiteral("Eu C Cl O "));
    }

    void kindIsToldByContentWithoutATellingSuffix()
    {
        for (const char *name :
             {"structures/eu_acac3_h2o.xyz", "structures/eu_cl2_h2o6_openbabel.mol2",
              "structures/eu_cl2_h2o6_int.zmt", "structures/eu_cl2_h2o6_internal.mop",
              "structures/eu_h2o9_internal_openmopac.mop", "mopac/eu_cl6_pm7_1scf_disp.out"}) {
            const QString file = dataFile(QString::fromLatin1(name));
            LanqorInputData known(nullptr, file);
            QVERIFY(known.readStructureFile());
            const Reading unknown = readText("unknown", testSupport::readAll(file));
            QVERIFY2(unknown.ok, qPrintable(unknown.error));
            QCOMPARE(unknown.atoms.size(), known.getCoord().size());
            QCOMPARE(unknown.atoms.at(1).x, known.getCoord(2).x);
        }
    }

    void failuresNameWhatIsWrong_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *tag, const char *name, const char *text,
                            const char *message) {
            QTest::newRow(tag) << QByteArray(name) << QByteArray(text)
                               << QString::fromLatin1(message);
        };
        row("xyz without a count", "a.xyz", "Eu 0 0 0\n", "is not a number of atoms");
        row("xyz with a negative count", "a.xyz", "-4\n\nEu 0 0 0\n", "is not a number of atoms");
        row("xyz with a huge count", "a.xyz", "2000000000\n\nEu 0 0 0\n",
            "is not a number of atoms");
        row("xyz cut", "a.xyz", "3\n\nEu 0 0 0\nO 2 0 0\n", "announces 3 atoms and holds 2");
        row("xyz row cut", "a.xyz", "2\n\nEu 0 0 0\nO 2 0\n",
            "Line 4 of the structure file cannot be read; an element and its x, y and z");
        row("xyz overflow", "a.xyz", "2\n\nEu 0 0 0\nO 2 0 *****\n", "Line 4 of");
        row("xyz decimal commas", "a.xyz", "2\n\nEu 0 0 0\nO 2,0 0 0\n",
            "decimal points, no commas");
        row("xyz not finite", "a.xyz", "2\n\nEu 0 0 0\nO 2 0 nan\n", "Line 4 of");
        row("mol2 without atoms", "a.mol2", "@<TRIPOS>MOLECULE\n", "Cannot find the atoms");
        row("mol2 cut", "a.mol2",
            "@<TRIPOS>MOLECULE\nname\n 3 0\nSMALL\n\n@<TRIPOS>ATOM\n 1 EU 0 0 0 Eu\n",
            "announces 3 atoms and holds 1");
        row("mol2 without types", "a.mol2", "@<TRIPOS>ATOM\n 1 EU 0 0 0\n", "Line 2 of");
        row("mop without atoms", "a.mop", "AM1\n\n\n\n", "Cannot find the atoms");
        row("mop row cut", "a.mop", "AM1\n\n\nEu 0 1 0 1 0 1\nO 2 1 3.5 1 1\n", "Line 5 of");
        row("mop Cartesian row cut between fields", "a.mop",
            "AM1\n\n\nEu 0 1 0 1 0 1\nO 2 1 0 1 0 1\nO 2 1 3\n", "Line 6 of");
        row("mop reference to a later atom", "a.mop",
            "AM1\n\n\nEu\nO 2 1\nO 2 1 90 1\nO 2 1 90 1 90 1 1 2 5\n", "Atom 4 of the Z-matrix");
        row("zmt references twice the same", "a.zmt", "Eu\nO 2 1\nO 2 90 1 2\nO 2 90. 90. 1 1 3\n",
            "Atom 4 of the Z-matrix");
        row("empty", "a.zmt", "", "Cannot find the atoms");
        row("unknown kind", "a.dat", "\n\n\n\n", "cannot be told");
    }

    void failuresNameWhatIsWrong()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, text);
        QFETCH(QString, message);
        const Reading reading = readText(name, text);
        QVERIFY(!reading.ok);
        QVERIFY2(reading.error.contains(message), qPrintable(reading.error));
    }

    void missingFilesAndDirectories()
    {
        for (const char *suffix : {"", ".out", ".mop", ".zmt", ".xyz", ".mol2"}) {
            const QString path = QStringLiteral("/nowhere/file") + QLatin1String(suffix);
            LanqorInputData data(nullptr, path);
            testSupport::MessageSpy spy(data);
            QVERIFY(!data.readStructureFile());
            QCOMPARE(data.getLastError(), path + QStringLiteral(" does not exist."));
            QCOMPARE(spy.messages, QStringList(data.getLastError()));
        }
        QVERIFY(!LanqorInputData(nullptr, QDir::tempPath()).readStructureFile());
        QCOMPARE(LanqorInputData::numberOfAtomsFromXYZFile(QStringLiteral("/nowhere")), 0);
        QCOMPARE(LanqorInputData::numberOfAtomsFromXYZFile(
                     scratchFile(QStringLiteral("n.xyz"), "  12 \r\n")),
                 12);
        QCOMPARE(LanqorInputData::numberOfAtomsFromXYZFile(
                     scratchFile(QStringLiteral("n.xyz"), "0x12\n")),
                 0);
        QVERIFY(!LanqorInputData::checkTypeMopFile(QStringLiteral("/nowhere")));
        QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(QStringLiteral("/nowhere")),
                 LanqorInputData::NoGeometry);
    }

    void damagedFilesAreReadOrRefused_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString &name :
             QDir(dataFile(QStringLiteral("structures")))
                 .entryList({QStringLiteral("*.mop"), QStringLiteral("*.zmt"),
                             QStringLiteral("*.xyz"), QStringLiteral("*.mol2")}))
            QTest::newRow(name.toUtf8()) << dataFile(QStringLiteral("structures/") + name);
    }

    void damagedFilesAreReadOrRefused()
    {
        QFETCH(QString, file);
        testSupport::damageFile(testSupport::readAll(file), 300, 700, [](const QString &path) {
            for (auto read : {&LanqorInputData::readMopFile, &LanqorInputData::readZmtFile,
                              &LanqorInputData::readXYZFile, &LanqorInputData::readMol2File,
                              &LanqorInputData::readStructureFile}) {
                LanqorInputData data(nullptr, path);
                const bool ok = (data.*read)();
                QCOMPARE(ok, data.getLastError().isEmpty());
                for (const Coord &atom : data.getCoord())
                    QVERIFY(std::isfinite(atom.x) && std::isfinite(atom.y) &&
                            std::isfinite(atom.z));
                QVERIFY(!ok || data.createSphericalCoordinate());
            }
        });
    }
};

QTEST_GUILESS_MAIN(TestStructureFiles)
#include "tst_structurefiles.moc"
