#include "TestSupport.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QDir>
#include <QTextCodec>
#include <QtTest>

#include <algorithm>
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

/// A CIF with a hexagonal cell of a = 12 Angstrom; @p sites hold label, element, place, occupancy,
/// assembly and group.
QByteArray crystalText(const char *spaceGroup, const char *sites, const char *c = "10.0")
{
    return QByteArray("data_made_by_hand\n_cell_length_a 12.0\n_cell_length_b 12.0(2)\n"
                      "_cell_angle_alpha 90\n_cell_angle_beta 90\n_cell_angle_gamma 120\n"
                      "_cell_length_c ") +
           c + "\n_symmetry_space_group_name_H-M " + spaceGroup +
           "\nloop_\n_atom_site_label\n_atom_site_type_symbol\n_atom_site_fract_x\n"
           "_atom_site_fract_y\n_atom_site_fract_z\n_atom_site_occupancy\n"
           "_atom_site_disorder_assembly\n_atom_site_disorder_group\n" +
           sites;
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
            {"a.mol2", "HEADER\nHETATM    1 EU\nHETATM    2 O\n", "is a PDB file"},
            {"a", "HEADER\nHETATM    1 EU\nHETATM    2 O\n", "cannot be read (Problem in line 2"},
            {"a.cif", "data_a\n_cell_length_a 9\n", "no atoms with fractional coordinates"},
            {"a.cif", "data_a\n_cell_length_a '9\n", "cannot be read ("},
            {"a.cif", crystalText("?", "O1 O 0 0 0.2 1 . .\n"), "neither symmetry operations"},
            {"a.cif", crystalText("'P 1'", "O1 O 0 0 0.2 1 . .\n"), "no lanthanide ion"},
            {"a.cif", crystalText("'P 1'", "Q1 Q 0 0 0.2 1 . .\n"), "\"Q1\" is of no element"},
            // Chloride bridges ions 5.0 Angstrom apart along c.
            {"a.cif", crystalText("'P 1'", "Eu1 Eu 0 0 0 1 . .\nCl1 Cl 0 0 0.5 1 . .\n", "5.0"),
             "go on without end (a chain)"},
            {"a.cif",
             crystalText("'P 1'", "Eu1 Eu 0 0 0 1 . .\nO1 O 0 0 0.24 1 . .\n"
                                  "Eu2 Eu 0.5 0.5 0.5 1 . .\nCl1 Cl 0.5 0.5 0.77 1 . .\n"),
             "  1  Eu1  EuO\n  2  Eu2  ClEu\n"},
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

    /// An ion on a threefold axis, just below the upper face of the cell, with water on the axis
    /// beyond it and a chelate in a general position: r = (1.93^2 + 1.40^2 + 0.5^2)^(1/2) = 2.436
    /// Angstrom for both of its donors.
    void complexOnThreefoldAxis()
    {
        const Reading data = readText("threefold.cif", crystalText("'P 3'", R"(
Eu1 Eu3+ 0.3333 0.6667 -0.0100 1 . .
O1W O 0.3333 0.6667 0.2350 1 . .
O1 O 0.5615 0.8014 -0.0600 1 . .
C1 C 0.6580 0.7860 -0.0600 1 . .
C2 C 0.6542 0.6667 -0.0600 1 . .
H2 H 0.7442 0.6667 -0.0600 1 . .
C3 C 0.5387 0.5473 -0.0600 1 . .
O2 O 0.4268 0.5320 -0.0600 1 . .
H1 H 0.7502 0.8755 -0.0600 1 . .
H3A H 0.5414 0.4579 -0.0600 0.4 A 1
F3B F 0.5440 0.4240 -0.0600 0.6 A 2
O9 O 0.0 0.0 0.5 0.5 . .
)"));
        QVERIFY2(data.ok, qPrintable(data.getLastError()));
        const QVector<Coord> atoms = data.getCoord();
        QCOMPARE(elements(data).count(QLatin1String("O")), 7);
        QCOMPARE(elements(data).count(QLatin1String("F")), 3);
        QCOMPARE(atoms.size(), 1 + 1 + 3 * 8);
        QCOMPARE(atoms.first().label, QStringLiteral("Eu"));
        for (int i = 1; i <= 7; ++i) {
            const double r = distance(atoms.first(), atoms.at(i));
            QVERIFY2(std::abs(r - 2.436) < 0.002 || std::abs(r - 2.45) < 0.002,
                     qPrintable(QString::number(r)));
            for (int j = 1; j < i; ++j)
                QVERIFY(distance(atoms.at(i), atoms.at(j)) > 1.5);
        }
        const QString told = data.spy.messages.join(QLatin1Char('\n'));
        for (const char *text :
             {"(F3B); left out are H3A", "F3B 0.6;", "missing on O1W;", "left out: O."})
            QVERIFY2(told.contains(QLatin1String(text)), qPrintable(told));
    }

    /// Lu-O distances as calculated from the cell edges and the listed places; the formula of the
    /// cell is C40H36Cl3LuN8O22: three perchlorates and two water molecules stay outside. In the
    /// gadolinium phosphonate of the corpus the ions on the threefold axes are bridged.
    void crystalsOfTheCorpus()
    {
        CORPUS_FILE(file, "structures/cif/lu_bipyridine_dioxide_perchlorate.cif");
        const Reading data(file);
        QVERIFY2(data.ok, qPrintable(data.getLastError()));
        QCOMPARE(data.getCoord().size(), 1 + 40 + 32 + 8 + 8);
        QVector<double> distances;
        for (int atom = 2; atom <= 9; ++atom)
            distances.append(distance(data.getCoord(1), data.getCoord(atom)));
        std::sort(distances.begin(), distances.end());
        const double expected[] = {2.2754, 2.3088, 2.3090, 2.3129, 2.3129, 2.3140, 2.3193, 2.3340};
        for (int i = 0; i < distances.size(); ++i)
            QVERIFY2(std::abs(distances.at(i) - expected[i]) < 1e-4,
                     qPrintable(QString::number(distances.at(i))));
        for (const char *extended :
             {"eu_k_s2_extended_solid.cif", "gd_c18h33n3o18p3_threefold_axis.cif"}) {
            const Reading solid(QFileInfo(file).path() + QLatin1Char('/') +
                                QLatin1String(extended));
            QVERIFY2(!solid.ok && solid.getLastError().contains(QLatin1String("without end")),
                     qPrintable(solid.getLastError()));
        }
    }

    void chosenComplexAndPdb()
    {
        LanqorInputData second(
            nullptr, scratchFile(QStringLiteral("two.cif"),
                                 crystalText("'P -1'", "Eu1 Eu 0 0 0.3 1 . .\nO1 O 0 0 0.06 1 . .\n"
                                                       "Tb1 Tb 0.5 0 0.5 1 . .\n"
                                                       "Cl1 Cl 0.5 0 0.77 1 . .\n")));
        second.setMolecule(2);
        QVERIFY2(second.readStructureFile(), qPrintable(second.getLastError()));
        QCOMPARE(second.getCoord().size(), 3); // Tb on the centre of inversion
        QCOMPARE(second.getAtomLabel(1), QStringLiteral("Tb"));
        // A cell of 6 Angstrom; the water molecule lies across its face.
        const Reading pdb =
            readText("a.pdb", R"(CRYST1    6.000    9.000    9.000  90.00  90.00  90.00 P 1
HETATM    1 EU   LIG A   1       0.200   0.000   0.000  1.00  0.00          EU
HETATM    2  O  AHOH A   2       3.900   0.000   0.000  0.30  0.00           O
HETATM    3  O  BHOH A   2       3.800   0.000   0.000  0.70  0.00           O
)");
        QVERIFY2(pdb.ok, qPrintable(pdb.getLastError()));
        QCOMPARE(elements(pdb), QStringLiteral("Eu O"));
        QVERIFY(std::abs(distance(pdb.getCoord(1), pdb.getCoord(2)) - 2.4) < 1e-9);
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
