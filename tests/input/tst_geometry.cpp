#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

#include <cmath>

using testSupport::scratchFile;

namespace {

QByteArray xyz(const QByteArray &rows)
{
    return QByteArray::number(rows.count('\n')) + "\n\n" + rows;
}

/// Object that holds the atoms of an XYZ text.
struct Geometry : LanqorInputData
{
    explicit Geometry(const QByteArray &rows)
        : LanqorInputData(nullptr, scratchFile(QStringLiteral("a.xyz"), xyz(rows)))
    {
        if (!readXYZFile())
            qFatal("%s", qPrintable(getLastError()));
    }
};

} // namespace

class TestGeometry : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anglesOfTheAxes()
    {
        const QPair<const char *, QPair<double, double>> cases[] = {
            {"1 1 3", {0, 0}},   {"1 1 -1", {180, 0}},  {"3 1 1", {90, 0}}, {"-1 1 1", {90, 180}},
            {"1 3 1", {90, 90}}, {"1 -1 1", {90, 270}}, {"1 1 1", {0, 0}}};
        for (const auto &[position, angles] : cases) {
            Geometry geometry(QByteArray("Eu 1 1 1\nC ") + position + '\n');
            QVERIFY(geometry.createSphericalCoordinate());
            QCOMPARE(geometry.getCoordSPH(2).label, QStringLiteral("C"));
            QCOMPARE(geometry.getCoordSPH(2).theta, angles.first);
            QCOMPARE(geometry.getCoordSPH(2).phi, angles.second);
        }
    }

    /// r, theta and phi give the place back, whatever the direction.
    void anglesGiveThePlaceBack()
    {
        QByteArray rows = "Eu -0.3 0.7 0.2\n";
        for (int i = 0; i < 200; ++i)
            rows += "O " + QByteArray::number(3 * std::sin(7.0 * i)) + ' ' +
                    QByteArray::number(3 * std::cos(3.0 * i)) + ' ' +
                    QByteArray::number(3 * std::sin(5.0 * i + 1)) + '\n';
        Geometry geometry(rows);
        QVERIFY(geometry.createSphericalCoordinate());
        const Coord ion = geometry.getCoord(1);
        const double radians = std::acos(-1.0) / 180.0;
        for (int atom = 2; atom <= 201; ++atom) {
            const CoordSPH s = geometry.getCoordSPH(atom);
            const double rho = s.r * std::sin(s.theta * radians);
            COMPARE_NEAR(ion.x + rho * std::cos(s.phi * radians), geometry.getCoord(atom).x, 1e-12);
            COMPARE_NEAR(ion.y + rho * std::sin(s.phi * radians), geometry.getCoord(atom).y, 1e-12);
            COMPARE_NEAR(ion.z + s.r * std::cos(s.theta * radians), geometry.getCoord(atom).z,
                         1e-12);
            QVERIFY(s.phi >= 0.0 && s.phi <= 360.0);
        }
    }

    void bondCutOffsAreStrict()
    {
        const QPair<QByteArray, double> cutOffs[] = {
            {"O", 2.65}, {"N", 2.65}, {"Cl", 2.9}, {"S", 2.9}, {"I", 3.0},
            {"F", 0.0},  {"Br", 0.0}, {"C", 0.0},  {"Eu", 0.0}}; // 0: never counted
        for (const auto &[label, cutOff] : cutOffs) {
            Geometry geometry("Eu 0 0 0\n" + label + " 0 0 " + QByteArray::number(cutOff) + '\n' +
                              label + " 0 " + QByteArray::number(cutOff - 1e-6, 'g', 12) + " 0\n" +
                              label + " " + QByteArray::number(cutOff + 0.1) + " 0 0\n");
            for (int i = 0; i < 2; ++i) { // every call counts anew
                QVERIFY(geometry.createSphericalCoordinate());
                QVERIFY2(geometry.getCoordNumber() == (cutOff > 0.0 ? 1 : 0), label);
            }
            QCOMPARE(geometry.getCoordinatedAtoms(),
                     cutOff > 0.0 ? QVector<int>{3} : QVector<int>());
        }
    }

    void rangeOfAtoms()
    {
        Geometry geometry("Eu 0 0 0\nO 2 0 0\nO 0 2 0\nO 0 0 2\nO 0 0 -2\n");
        QVERIFY(geometry.createSphericalCoordinate(3, 4));
        QCOMPARE(geometry.getCoordNumber(), 2);
        QCOMPARE(geometry.getCoordSPH(1).phi, 90.0);
        QCOMPARE(geometry.getCoordSPH(2).theta, 0.0);
        QVERIFY(!geometry.createSphericalCoordinate(0, 4));
        QVERIFY(!geometry.createSphericalCoordinate(3, 6));
        QVERIFY(!geometry.createSphericalCoordinate(4, 3));
        QVERIFY(geometry.getLastError().contains(QStringLiteral("the geometry has atoms 1 to 5")));
    }

    void emptyGeometry()
    {
        LanqorInputData data(nullptr, QString());
        const QString message = QStringLiteral(
            "\nThe vector of cartesian coordinates empty. This way, firstly, it is necessary to "
            "use a specific function to read the desired file. \n");
        for (const bool inRange : {false, true}) {
            data.setLastError(QString());
            QVERIFY(!(inRange ? data.createSphericalCoordinate(1, 2)
                              : data.createSphericalCoordinate()));
            QCOMPARE(data.getLastError(), message);
        }
        QVERIFY(data.getCoordinatedAtoms().isEmpty());
        QVERIFY(data.getAtomOrderError().isEmpty());
        QVERIFY(!data.getIonError().isEmpty());
    }

    void misplacedAtomsAreNamed()
    {
        const Geometry ordered("Gd 0 0 0\nO 2 0 0\nN 0 2 0\nC 0 0 3\n");
        QCOMPARE(ordered.getAtomOrderError() + ordered.getIonError(), QString());
        const QString error = Geometry("Eu 0 0 0\nO 2 0 0\nC 0 0 3\nH 0 0 4\nN 0 2 0\nO 0 -2 0\n")
                                  .getAtomOrderError();
        QVERIFY2(
            error.contains(QStringLiteral("are O 2, N 5 and O 6, not atoms 2 to 4")) &&
                error.contains(QStringLiteral("N 5 and O 6 must change places with C 3 and H 4")),
            qPrintable(error));
        QVERIFY(Geometry("O 0 0 0\nO 2 0 0\nEu 1 1 1\n")
                    .getIonError()
                    .startsWith(QStringLiteral("The ion (Eu) is atom 3")));
        QVERIFY(Geometry("Fe 0 0 0\nO 2 0 0\n")
                    .getIonError()
                    .contains(QStringLiteral("no lanthanide ion")));
    }

    void doubtfulStructures()
    {
        const QPair<QByteArray, const char *> cases[] = {
            {"Eu 0 0 0\nO 2.4 0 0\nO 2.4 0 0.8\nH 0 0 0.9\n", ""},
            {"Eu 0 0 0\nO 2.4 0 0\nO 2.4 0 0.68\n", "O 2 and O 3 are 0.680 Angstrom apart"},
            {"Eu 0 0 0\nO 2.4 0 0\nTb 9 0 0\n", "further lanthanide ions (Tb 3)"},
            {"Eu 0 0 0\nO 4.5 0 0\nH 5 1 0\n",
             "O 2, is 4.5 Angstrom away; are the coordinates in bohr?"},
            {"Eu 0 0 0\nO 240 0 0\n", "in pm?"},
            {"Eu 0 0 0\nO 0.24 0 0\n", "fractional or in nm?"}};
        for (const auto &[rows, warning] : cases) {
            const QString text = Geometry(rows).getStructureWarnings().join(QLatin1Char('\n'));
            QVERIFY2(text.contains(QLatin1String(warning)) && text.isEmpty() == (*warning == '\0'),
                     qPrintable(text));
        }
    }

    void centreOfMass()
    {
        const auto centre = [](const char *rows) {
            return LanqorInputData::calcCenterOfMass(Geometry(rows).getCoord());
        };
        const Coord water = centre("O 0 0 0.12\nH 0 0.76 -0.48\nH 0 -0.76 -0.48\n");
        QVERIFY(water.label.isEmpty());
        COMPARE_NEAR(water.y, 0.0, 1e-15);
        COMPARE_NEAR(water.z, (16.00 * 0.12 - 2 * 1.01 * 0.48) / 18.02, 1e-15);
        // A dummy atom weighs what the atom before it does; ahead of all atoms it weighs nothing.
        COMPARE_NEAR(centre("XX 50 0 0\nC 1 0 0\nXX 3 0 0\n").x, 2.0, 1e-15);
        // Mercury is in no table and "Mg" is magnesium.
        COMPARE_NEAR(centre("H 0 0 0\nHg 2 0 0\n").x, 1.0, 1e-15);
        COMPARE_NEAR(centre("H 0 0 0\nMg 1 0 0\n").x, 24.31 / 25.32, 1e-15);
        QCOMPARE(centre("XX 5 5 5\n").x, 0.0);
        QCOMPARE(LanqorInputData::calcCenterOfMass({}).x, 0.0);
    }

    void indices()
    {
        const QByteArray complex = "   1  Eu   0.0000   0.0000\n"
                                   "   2  O    6.7252  -0.2385\n"
                                   "   3  N    5.1000  -0.4554\n"
                                   "   4  C    4.0000  -9.0000\n";
        const struct
        {
            QByteArray rows;
            QVector<double> parameters; // Q, D, C
            const char *message;
        } cases[] = {
            {complex, {0.2, 10, 6}, ""},
            {complex, {0.2, 6, 6}, "The parameter D (6) is not larger than 1 times C (6)"},
            {complex, {1, 0, 0}, "is not larger than"},
            {complex, {0.2, 10, -1}, "must not be negative"},
            {complex, {0.3, 10, 6}, "Atom 2 (O): the charge factor 2.01756 is outside 0.01 to 2"},
            {complex, {-0.2, 10, 6}, "Atom 2 (O): the charge factor"},
            {complex, {0.2, 12, 5}, "Atom 3 (N): the polarisability -0.464"},
            {complex, {0.2, 40, 30}, "is outside 0.005 to 15"},
            {complex, {std::nan(""), 10, 6}, "Atom 2 (O)"},
            {"2 O 1 0\n3 C 2.5 0\n",
             {1, 3, 1},
             "Atom 3 (C): the charge factor 2.5 is outside 0.01 to 2"},
            {"2 O 1 0\n4 O 1 0\n", {1, 3, 1}, "Line 3 of the file"},
            {"2 O 1 0\n3 O 1\n", {1, 3, 1}, "the row of atom 3"},
            {"2 O 1 0\n",
             {1, 3, 1},
             "holds the reactivity indices of 1 coordinated atoms; 2 are needed"},
        };
        const QByteArray heading =
            " Atomic Charges (au)             Varno Superdelocalizabilities (au)\n";
        for (const auto &table : cases) {
            const QString error = LanqorInputData::readFileIndeces(
                scratchFile(QStringLiteral("a.indeces"), heading + table.rows), 2,
                table.parameters.constData(), 1);
            QVERIFY2(error.isEmpty() == (*table.message == '\0') &&
                         error.contains(QLatin1String(table.message)),
                     qPrintable(error));
        }
    }

    void indicesOfOtherFiles()
    {
        const double parameters[3] = {1, 0, 1};
        const auto readIndices = [&parameters](const QString &file, int coordNumber) {
            return LanqorInputData::readFileIndeces(file, coordNumber, parameters, 1);
        };
        QCOMPARE(readIndices(QStringLiteral("/nowhere"), 1),
                 QStringLiteral("/nowhere does not exist."));
        const QString other = scratchFile(QStringLiteral("b.indeces"), "2 O 1 0\n");
        QVERIFY(readIndices(other, 1).startsWith(QStringLiteral("Cannot find the heading")));
        QVERIFY(!readIndices(other, 0).isEmpty());
        // The bounds alone: no restriction, but as many entries as atoms.
        const auto check = [&parameters](const char *labels, int coordNumber) {
            return LanqorInputData::checkParametersQDC(QLatin1String(labels), {1, 1}, {0, 0},
                                                       coordNumber, parameters);
        };
        QCOMPARE(check("O N", 2), QString());
        QVERIFY(!check("O", 2).isEmpty());
        QVERIFY(!check("O N N", 3).isEmpty());
    }

    void listOfStructures()
    {
        QString prefix;
        QStringList names;
        QVector<int> first;
        QVector<int> second;
        const auto readList = [&](QString &directory) {
            return LanqorInputData::readMolNameFile(directory, prefix, names, first, second);
        };
        const QString path =
            scratchFile(QStringLiteral("mol_name.txt"),
                        "tomo: common text \n\nEu_acac3 12 3\nEu(tta)3 phen\r\n7\ncomplex 4\n");
        QString directory = path;
        for (int i = 0; i < 2; ++i) { // by its name, then by its folder; each reading starts anew
            QCOMPARE(readList(directory), QString());
            QCOMPARE(directory + QStringLiteral("/mol_name.txt"), path);
            QCOMPARE(prefix, QStringLiteral("common text"));
            QCOMPARE(names,
                     (QStringList{QStringLiteral("Eu_acac3"), QStringLiteral("Eu(tta)3 phen"),
                                  QStringLiteral("7"), QStringLiteral("complex")}));
            QCOMPARE(first, (QVector<int>{12, 0, 0, 4}));
            QCOMPARE(second, (QVector<int>{3, 0, 0, 0}));
        }
        // One decoding for both kinds of line: UTF-8, or Latin-1 where that is not valid.
        for (const QByteArray &bytes :
             {QByteArray("tomo: \xC3\xA9\n\xC3\xA9 1\n"), QByteArray("tomo: \xE9\n\xE9 1\n")}) {
            QString file = scratchFile(QStringLiteral("accents.txt"), bytes);
            QCOMPARE(readList(file), QString());
            QCOMPARE(prefix + names.first(), QStringLiteral("\u00e9\u00e9"));
        }
        QString empty = scratchFile(QStringLiteral("none.txt"), "tomo: x\n\n");
        QCOMPARE(readList(empty), QStringLiteral("Number of structures equal to 0, there has "
                                                 "probably been an error."));
        QString missing = QStringLiteral("/nowhere/list.txt");
        QCOMPARE(readList(missing), QStringLiteral("/nowhere/list.txt does not exist."));
    }
};

QTEST_GUILESS_MAIN(TestGeometry)
#include "tst_geometry.moc"
