#include "TestSupport.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QDir>
#include <QTextCodec>
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

/// A reading of a structure file, its kind left to the reader.
struct Reading : LanqorInputData
{
    explicit Reading(const QString &path)
        : LanqorInputData(nullptr, path)
        , spy(*this)
        , ok(readStructureFile())
    {}

    testSupport::MessageSpy spy;
    bool ok;
};

Reading readText(const char *name, const QByteArray &text)
{
    return Reading(scratchFile(QString::fromLatin1(name), text));
}

Reading readFixture(const char *name)
{
    return Reading(dataFile(QString::fromLatin1(name)));
}

/// The bytes of a text in an encoding without a byte order mark of its own.
QByteArray encoded(const QString &text, const char *encoding)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForName(encoding)->fromUnicode(text.constData(), text.size(), &state);
}

/// Labels of the atoms, blank separated.
QString elements(const Reading &reading)
{
    QStringList labels;
    for (const Coord &atom : reading.getCoord())
        labels += atom.label;
    return labels.join(QLatin1Char(' '));
}

} // namespace

class TestStructureFiles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// MOPAC printed both the Z-matrix and the Cartesian geometry that it makes of it.
    void zMatrixGivesTheGeometryOfTheProgram()
    {
        const Reading output = readFixture("mopac/eu_cl2_h2o6_am1_int.out");
        for (const char *name :
             {"structures/eu_cl2_h2o6_internal.mop", "structures/eu_cl2_h2o6_int.zmt"}) {
            const Reading data = readFixture(name);
            QVERIFY2(data.ok, qPrintable(data.getLastError()));
            QCOMPARE(data.getCoord().size(), 21);
            for (int atom = 1; atom <= 21; ++atom) {
                QCOMPARE(data.getAtomLabel(atom), output.getAtomLabel(atom));
                QVERIFY(distance(data.getCoord(atom), output.getCoord(atom)) < 5e-6);
                const CoordZMT row = data.getCoordZMT(atom);
                const CoordZMT printed = output.getCoordZMT(atom);
                COMPARE_NEAR(row.distance, printed.distance, 1e-6);
                COMPARE_NEAR(row.angle, printed.angle, 1e-6);
                COMPARE_NEAR(row.dihedral, printed.dihedral, 1e-6);
                QCOMPARE(QVector<int>({row.na, row.nb, row.nc}),
                         QVector<int>({printed.na, printed.nb, printed.nc}));
            }
        }
    }

    void mopacInputWithCommentsAheadOfItsKeywords()
    {
        const char name[] = "structures/eu_h2o9_internal_openmopac.mop";
        const QString path = dataFile(QString::fromLatin1(name));
        QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(path),
                 LanqorInputData::InternalGeometry);
        QVERIFY(!LanqorInputData::checkTypeMopFile(path));
        Reading data(path);
        QVERIFY2(data.createSphericalCoordinate(), qPrintable(data.getLastError()));
        QCOMPARE(data.getCoord().size(), 28);
        QCOMPARE(data.getCoordNumber(), 6);
        COMPARE_NEAR(data.getCoordSPH(2).r, 2.41159942, 1e-9);
    }

    void mopacInputs()
    {
        const QByteArray title = "AM1 XYZ\ntitle\n\n";
        const QByteArray rows = "Eu 0 1 0 1 0 1\nO 2.4 1 0.5 1 -0.25 1\n";
        const QByteArray texts[] = {
            title + rows,
            title + "EU 0. +0 0. +0 0. +0\n* a comment\no 2.4 +1 .5 +1 -2.5e-1 -1\n\nO 9 9 9\n",
            "AM1 XYZ\nCARTESIAN COORDINATES\n\n  Eu 0.0 0.0 0.0\n\tO\t2.4\t0.5\t-0.25",
            title + "63 0, 0, 0,\n8 2.4, .5, -.25\n",
            title + "Eu 0 0 0\nO 2.4 1 0.5 1 -0.25 1\n",
            title + "Eu 0.0 1 0.0 1 0.0 1 0 0 0\nO 2.4 1 0.5 1 -0.25 1 0 0 0\n",
            title + "Eu 0. 1 0. 1 0. 1  3.0000\nO 2.4 1 0.5 1 -0.25 1 0 0 0 -0.7252\n", // charges
            title + "Eu(ion 1) 0 1 0 1 0 1\nXX 1 1 1 1 1 1\nO17.99( 2) 2.4 1 0.5 1 -0.25 1\n"
                    "Tv 13. 0 0. 0 0. 0\n",
            "AM1 +\nXYZ\ntitle\n\n" + rows,     // one line more
            "AM1 &\r\nXYZ\r\ntitle\r\n" + rows, // in place of a title
            "\xEF\xBB\xBF" + title + rows,
            "\ntitle\n\n" + rows + "0 0 0 0\n"};
        for (const QByteArray &text : texts) {
            const Reading reading = readText("a.mop", text);
            const QString path = scratchFile(QStringLiteral("a.mop"), text);
            QCOMPARE(LanqorInputData::checkTypeMopFile(path), text.contains("XYZ"));
            QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(path),
                     LanqorInputData::CartesianGeometry);
            QVERIFY2(reading.ok, qPrintable(reading.getLastError()));
            QVERIFY2(elements(reading) == QStringLiteral("Eu O"), text);
            QCOMPARE(distance(reading.getCoord(2), {QString(), 2.4, 0.5, -0.25}), 0.0);
        }
    }

    /// Both keywords as MOPAC 22 takes them: it refuses CHARGE and CHARGE=(1).
    void chargeOfMopacInputs()
    {
        const QPair<const char *, double> cases[] = {{"PM7 CHARGE=-1", -1.0},
                                                     {"charge=+3.0 PM7", 3.0},
                                                     {"CHARGE= 2;", 2.0},
                                                     {"PM7 +\nCHARGE=1", 1.0},
                                                     {"CHARGE=1 CHARGE=4", 1.0}};
        for (const auto &[keywords, charge] : cases) {
            const Reading reading =
                readText("a.mop", QByteArray(keywords) + "\n\n\nEu 0 0 0\nO 2.4 0 0\n");
            QVERIFY2(reading.isChargeOnSystemTold(), keywords);
            QCOMPARE(reading.getChargeOnSystem(), charge);
        }
        QVERIFY(!readText("a.mop", "XCHARGE=1\n\n\nEu 0 0 0\n").isChargeOnSystemTold());
        const Reading archive = readFixture("mopac/eu_h2o2_pm7.arc");
        QCOMPARE(archive.getChargeOnSystem(), 3.0);
        QCOMPARE(archive.getCoord(2).x, 2.35935574);
        QVERIFY(readText("a.arc", "FINAL GEOMETRY OBTAINED\nAM1\n\n\nEu 0 0 0\n\n"
                                  "FINAL GEOMETRY OBTAINED\nAM1\n\n\nGd 0 0 0\n")
                    .getAtomLabel(1) == QLatin1String("Gd"));
    }

    /// What MOPAC 22 makes of each function: the coordinates of the dependent atoms that it prints.
    void relationsOfSymmetry()
    {
        const double angle[] = {113.0, 37.0,  53.0,  127.0, 83.0,  157.0, 143.0, 217.0,
                                203.0, 277.0, 233.0, 307.0, -37.0, 0.725, 56.5,  67.0};
        const double round[] = {-0.7, 1.3, -0.33};
        for (int function = 1; function <= 18; ++function) {
            const Reading data =
                readText("a.mop", "AM1 SYMMETRY\n\n\nC\nO 1.22\nN 1.33 121.0 1 2\n"
                                  "C 1.45 113.0 37.0 3 1 2\nXX 0.9 101.0 11.0 3 1 2\n"
                                  "O 0.9 101.0 11.0 4 1 2\n\n4 " +
                                      QByteArray::number(function + function / 18) +
                                      (function == 18 ? " 1.63299, 5,6\n" : ", 5,6 each\n"));
            QVERIFY2(data.ok, qPrintable(data.getLastError()));
            for (const int atom : {5, 6}) {
                const CoordZMT row = data.getCoordZMT(atom);
                const double value = function == 1 || function == 15 || function == 18
                                         ? row.distance
                                     : function == 2 || function > 15 ? row.angle
                                                                      : row.dihedral;
                const double expected = function == 1    ? 1.45
                                        : function == 18 ? 1.45 * std::sqrt(8.0 / 3.0)
                                                         : angle[function - 2];
                COMPARE_NEAR(value, expected, 1e-9);
            }
            const Reading atoms = readText("a.mop", "AM1 SYM\n\n\nN -0.7 1.3 -0.33\nH 5 5 5\n\n1 " +
                                                        QByteArray::number(function) + " 2\n");
            const Coord h = atoms.getCoord(2);
            const int target = (function - 1) % 3;
            const int source = (target + (function - 1) / 6) % 3;
            COMPARE_NEAR((target == 0   ? h.x
                          : target == 1 ? h.y
                                        : h.z),
                         ((function - 1) / 3 % 2 == 0 ? 1.0 : -1.0) * round[source], 1e-12);
        }
        const Reading chain =
            readText("a.mop", "SYMM\n\n\nO 1 2 3\nO 5 5 5\nO 6 6 6\n\n2 1 3\n1 4 2\n");
        QCOMPARE(chain.getCoord(3).x, -1.0);
    }

    /// Eu at the origin, O on x, the second O bound to the first along y, N out of their plane.
    void shortRowsOfTheFirstAtoms()
    {
        const QByteArray texts[] = {
            "Eu\nO 2.4 1\nO 2.5 1 90.0 1\nN 2.6 1 90.0 1 90.0 1 1 2 3\n",
            "Eu\nO 2.4 1\nO 2.5 90.0 2 1\nN 2.6 90.0 90.0 1 2 3\n",
            "Eu 0. 0 0. 0 0. 0 0 0 0\nO 2.4 1 0. 0 0. 0 1 0 0\nO 2.5 1 90.0 1 0. 0 2 1 0\n"
            "N 2.6 1 90.0 1 90.0 1 1 2 3\n",
            "Eu\nO 2.4 1\nO 2.5 1 90.0 1\nXX 1. 0 90. 0 0. 0 1 2 3\nN 2.6 1 90.0 1 90.0 1 1 2 4\n",
            "Eu\nO 2.4 1\nO 2.5 1 90.0 1\nN 0. 1 0. 1 -2.6 1 0 0 0\n"}; // x, y, z for N
        for (const QByteArray &rows : texts) {
            const Reading reading = readText("a.mop", "AM1\n\n\n" + rows);
            QVERIFY2(reading.ok, qPrintable(reading.getLastError()));
            QCOMPARE(reading.getCoord().size(), 4);
            QVERIFY(distance(reading.getCoord(2), {QString(), 2.4, 0.0, 0.0}) < 1e-12);
            QVERIFY(distance(reading.getCoord(3), {QString(), 2.4, 2.5, 0.0}) < 1e-12);
            COMPARE_NEAR(distance(reading.getCoord(4), reading.getCoord(1)), 2.6, 1e-12);
            COMPARE_NEAR(std::abs(reading.getCoord(4).z), 2.6, 1e-12);
            COMPARE_NEAR(reading.getCoordZMT(rows.contains("XX") ? 5 : 4).distance, 2.6, 1e-12);
            QCOMPARE(readText("a.zmt", rows).ok, !rows.contains("-2.6"));
        }
    }

    void xyzAndMol2()
    {
        const Reading xyz = readFixture("structures/eu_acac3_h2o.xyz");
        QCOMPARE(xyz.getCoord().size(), 46);
        QCOMPARE(xyz.getCoord(46).label, QStringLiteral("H"));
        QCOMPARE(xyz.getCoord(4).z, 2.985448893);
        const Reading mol2 = readFixture("structures/eu_acac3_h2o_numbered_names.mol2");
        QVERIFY(mol2.spy.contains(QStringLiteral("The structure has 2 residues.")));
        QCOMPARE(mol2.getCoord().size(), 46);
        for (int atom = 1; atom <= 46; ++atom) {
            QCOMPARE(mol2.getAtomLabel(atom), xyz.getAtomLabel(atom));
            QVERIFY(distance(mol2.getCoord(atom), xyz.getCoord(atom)) < 1e-4);
        }
        Reading capitals = readFixture("structures/eu_cl2_h2o6_openbabel.mol2");
        QVERIFY(capitals.spy.contains(QStringLiteral("The structure has 10 residues.")));
        QVERIFY(capitals.createSphericalCoordinate());
        QCOMPARE(capitals.getCoordNumber(), 8);
    }

    void elementsOfAtomNames()
    {
        // The type tells the element, the name where the type is none.
        QCOMPARE(elements(readText("a.mol2", "@<TRIPOS>ATOM\n1 Eu1 0 0 0 Du\n2 CA 2 0 0 C.ar\n"
                                             "3 CL1 0 2 0 Cl 1 LIG -.3\n4 O 0 0 2 O.co2\n")),
                 QStringLiteral("Eu C Cl O"));
        QCOMPARE(elements(readText(
                     "a.xyz", "5\n\n63 0 0 0 1 2\nCL1 2 0 0\no 0 2 0 .5\nXX 0 0 2\n1 9 9 9\n")),
                 QStringLiteral("Eu Cl O XX H"));
        QCOMPARE(
            elements(readText("a.xyz", "5\n\nHg 0 0 0\nlr 2 0 0\nTv 0 0 9\nD 1 1 1\n+ 0 9 0\n")),
            QStringLiteral("Hg Lr Tv D +"));
        // Types of force fields: the first letter, unless the name is written as a symbol.
        QCOMPARE(elements(readText("a.mol2", "@<TRIPOS>ATOM\n1 Eu1 0 0 0 eu\n2 O2 2 0 0 oh\n"
                                             "3 N1 0 2 0 n\n4 C7 0 0 2 ca\n5 CA 3 0 2 ca\n"
                                             "6 HO5 4 0 0 ho\n7 CL1 0 4 0 cl\n8 Ca1 0 0 6 ca\n")),
                 QStringLiteral("Eu O N C C H Cl Ca"));
    }

    void kindIsToldByContentWithoutATellingSuffix()
    {
        for (const char *name :
             {"structures/eu_acac3_h2o.xyz", "structures/eu_cl2_h2o6_openbabel.mol2",
              "structures/eu_cl2_h2o6_int.zmt", "structures/eu_cl2_h2o6_internal.mop",
              "structures/eu_h2o9_internal_openmopac.mop", "mopac/eu_cl6_pm7_1scf_disp.out",
              "mopac/eu_h2o2_pm7.arc"}) {
            const Reading known = readFixture(name);
            const Reading unknown =
                readText("unknown", testSupport::readAll(dataFile(QString::fromLatin1(name))));
            QVERIFY2(unknown.ok, qPrintable(unknown.getLastError()));
            QCOMPARE(unknown.getCoord().size(), known.getCoord().size());
            QCOMPARE(unknown.getCoord(2).x, known.getCoord(2).x);
        }
    }

    /// Characters and lines that lie across the ends of the pieces that are read, in both byte
    /// orders; an unpaired surrogate at the place of "!", and half a character at the end.
    void utf16ReadsLikeUtf8()
    {
        QString text = QString(QChar::ByteOrderMark) + QStringLiteral("first!\r\n");
        for (int i = 0; i < 60000; ++i)
            text += QString::fromUtf8("O\u03b1 \u20ac \U0001F600 ") + QString::number(i) + '\n';
        const QByteArray utf8 =
            encoded(QString(text).replace('!', QChar(QChar::ReplacementCharacter)), "UTF-8");
        text.replace('!', QChar(0xD83D));
        for (const char *encoding : {"UTF-16LE", "UTF-16BE"}) {
            LineReader plain(scratchFile(QStringLiteral("utf8"), utf8));
            LineReader wide(scratchFile(QStringLiteral("utf16"), encoded(text, encoding) + 'x'));
            QVERIFY(wide.open() && wide.open() && plain.open());
            while (plain.next()) {
                QVERIFY(wide.next());
                if (plain.line() != wide.line())
                    QCOMPARE(textFields::toString(wide.line()), textFields::toString(plain.line()));
            }
            QCOMPARE(wide.lineNumber(), 60001);
            QVERIFY(!wide.next());
            const QString xyz = QString(QChar::ByteOrderMark) + "2\n\nEu 0 0 0\nO 2 0 .5\n";
            QCOMPARE(elements(readText("a.dat", encoded(xyz, encoding))), QStringLiteral("Eu O"));
        }
    }

    void failuresNameWhatIsWrong()
    {
        const struct
        {
            const char *name;
            QByteArray text;
            const char *message;
        } cases[] = {
            {"a.xyz", "Eu 0 0 0\n", "is not a number of atoms"},
            {"a.mop", "SYM\n\n\nC\nO 1.2\n\n2 18 1\n", "MOPAC knows no function 18 of internal"},
            {"a.mop", "SYM\n\n\nC 0 0 0\nO 2 0 0\n\n1 19 2 2\n", "function 19 of Cartesian"},
            {"a.mop", "SYM\n\n\nC 0 0 0\nO 2 0 0\n\n1 1 3\n",
             "line 7 cannot be applied, for there is no atom 3"},
            {"a.mop", "SYM\n\n\nC\nO 1.2\n\n1 1 2\n", "atom 1 of a Z-matrix has no coordinates"},
            {"a.mop", "SYM\n\n\nC\nO 1.2\n\n2 15 2\n", "in a circle"},
            {"a.mop", "SYM\n\n\nC\nO 1.2\n\n\"C1\" 1 2\n", "a relation of the keyword SYMMETRY"},
            {"a.arc", "AM1\n\n\nEu 0 0 0\n", "holds no FINAL GEOMETRY OBTAINED"},
            {"a.xyz", "2000000000\n\nEu 0 0 0\n", "is not a number of atoms"},
            {"a.xyz", "3\n\nEu 0 0 0\nO 2 0 0\n", "announces 3 atoms and holds 2"},
            {"a.xyz", "2\n\nEu 0 0 0\nO 2 0\n",
             "Line 4 of the structure file cannot be read; an element and its x, y and z"},
            {"a.xyz", "2\n\nEu 0 0 0\nO 2 0 *****\n", "Line 4 of"},
            {"a.xyz", "2\n\nEu 0 0 0\nO 2,0 0 0\n", "decimal points, no commas"},
            {"a.mol2", "@<TRIPOS>MOLECULE\n", "Cannot find the atoms"},
            {"a.mol2", "@<TRIPOS>MOLECULE\nname\n 3 0\nSMALL\n\n@<TRIPOS>ATOM\n 1 EU 0 0 0 Eu\n",
             "announces 3 atoms and holds 1"},
            {"a.mol2", "@<TRIPOS>ATOM\n 1 EU 0 0 0\n", "Line 2 of"},
            {"a.mop", "AM1\n\n\n\n", "Cannot find the atoms"},
            {"a.mop", "AM1\n\n\nEu 0 1 0 1 0 1\nO 2 1 3.5 1 1\n", "Line 5 of"},
            {"a.mop", "AM1\n\n\nEu 0 1 0 1 0 1\nO 2 1 0 1 0 1\nO 2 1 3\n", "Line 6 of"},
            {"a.mop", "AM1\n\n\nEu\nO 2 1\nO 2 1 90 1\nO 2 1 90 1 90 1 1 2 5\n",
             "Atom 4 of the Z-matrix"},
            {"a.zmt", "Eu\nO 2 1\nO 2 90 1 2\nO 2 90. 90. 1 1 3\n", "Atom 4 of the Z-matrix"},
            {"a.zmt", "Eu\nO 2 1\nC 1 180. 2 1\nN 2 90. 0. 1 2 3\nN 1 120. 0. 3 2 1\n",
             "Atom 5 of the Z-matrix"},
            {"a.zmt", "", "Cannot find the atoms"},
            {"a.dat", "\n\n\n\n", "cannot be told"},
            {"a.xyz", "2\n\nEu 0 0 0\nOW1 2 0 0\n", "Line 4 of the structure file: \"OW1\" is no"},
            {"a.xyz", "2\n\nEu 0 0 0\nO 2 0 -1.2e4\n", "a coordinate of 12000 Angstrom"},
            {"a.mol2", "@<TRIPOS>ATOM\n 1 C5 0 0 0 hc\n", "\"C5 hc\" is no element"},
            // Files of another kind than their suffix says.
            {"a.mop", "%chk=a\n#p b3lyp\n\ntitle\n\n0 1\nEu 0. 0. 0.\n", "is a Gaussian input"},
            {"a.zmt", "! TightSCF\n*xyz 0 1\nEu 0. 0. 0.\n*\n", "is an ORCA input"},
            {"a.mop", "2\n\nEu 0 0 0\nO 2 0 0\n", "is an .xyz file"},
            {"a.zmt", "AM1\ntitle\n\nEu\n", "is a MOPAC input (.mop)"},
            {"a.xyz", "# made by hand\ndata_eu\n_cell_length_a 9\n",
             "is a crystal structure (CIF)"},
            {"a", "HEADER\nHETATM    1 EU\nHETATM    2 O\n", "is a PDB file"},
            {"a.mol2", "\n\n\n  2  1  0  0 V2000\n", "is a MOL file"},
            {"a.out", "\n                 * O   R   C   A *\n", "is an ORCA output"},
            {"a.out", QByteArray("\x1f\x8b\0", 3), "is a binary file"},
        };
        for (const auto &wrong : cases) {
            const Reading reading = readText(wrong.name, wrong.text);
            QVERIFY2(!reading.ok, wrong.text);
            QVERIFY2(reading.getLastError().contains(QLatin1String(wrong.message)),
                     qPrintable(reading.getLastError()));
        }
    }

    void missingFilesAndDirectories()
    {
        for (const char *suffix : {"", ".out", ".mop", ".zmt", ".xyz", ".mol2"}) {
            const Reading reading(QStringLiteral("/nowhere/file") + QLatin1String(suffix));
            QCOMPARE(reading.getLastError(), QStringLiteral("/nowhere/file") +
                                                 QLatin1String(suffix) +
                                                 QStringLiteral(" does not exist."));
            QCOMPARE(reading.spy.messages, QStringList(reading.getLastError()));
        }
        QCOMPARE(Reading(QDir::tempPath()).getLastError(), QDir::tempPath() + " is a folder.");
        QCOMPARE(Reading(QStringLiteral("/dev/null")).getLastError(),
                 QStringLiteral("/dev/null is no regular file."));
        const QString nowhere = QStringLiteral("/nowhere");
        QVERIFY(!LanqorInputData::checkTypeMopFile(nowhere));
        QCOMPARE(LanqorInputData::getTypeOfGeometryFromMopFile(nowhere),
                 LanqorInputData::NoGeometry);
        QCOMPARE(LanqorInputData::numberOfAtomsFromXYZFile(nowhere), 0);
        const QPair<QByteArray, int> firstLines[] = {{"  12 \r\n", 12}, {"0x12\n", 0}};
        for (const auto &[line, count] : firstLines)
            QCOMPARE(LanqorInputData::numberOfAtomsFromXYZFile(
                         scratchFile(QStringLiteral("n.xyz"), line)),
                     count);
    }

    void damagedFilesAreReadOrRefused()
    {
        const auto readAsEveryKind = [](const QString &path) {
            for (auto read : {&LanqorInputData::readMopFile, &LanqorInputData::readZmtFile,
                              &LanqorInputData::readXYZFile, &LanqorInputData::readMol2File,
                              &LanqorInputData::readStructureFile}) {
                LanqorInputData data(nullptr, path);
                const bool ok = (data.*read)();
                QCOMPARE(ok, data.getLastError().isEmpty());
                for (const Coord &atom : data.getCoord())
                    QVERIFY(std::isfinite(atom.x + atom.y + atom.z));
                QVERIFY(!ok || data.createSphericalCoordinate());
            }
        };
        const QDir folder(dataFile(QStringLiteral("structures")));
        const QStringList names =
            folder.entryList({QStringLiteral("*.mop"), QStringLiteral("*.zmt"),
                              QStringLiteral("*.xyz"), QStringLiteral("*.mol2")});
        QVERIFY(names.size() >= 6);
        for (const QString &name : names)
            testSupport::damageFile(testSupport::readAll(folder.filePath(name)), 300, 700,
                                    readAsEveryKind);
    }
};

QTEST_GUILESS_MAIN(TestStructureFiles)
#include "tst_structurefiles.moc"
