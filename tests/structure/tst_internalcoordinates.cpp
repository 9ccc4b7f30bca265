#include "TestSupport.h"

#include "core/internalCoordinates_p.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>

#include <Eigen/Geometry>

#include <QtTest>

#include <cmath>
#include <random>

Q_DECLARE_METATYPE(Coord)
Q_DECLARE_METATYPE(CoordZMT)

using Eigen::Vector3d;

namespace {

Vector3d position(const Coord &atom)
{
    return {atom.x, atom.y, atom.z};
}

double distance(const QVector<Coord> &atoms, int i, int j)
{
    return (position(atoms.at(i)) - position(atoms.at(j))).norm();
}

/// Six times the volume of the tetrahedron of four atoms; its sign is their handedness.
double volume(const QVector<Coord> &atoms, int i, int j, int k, int l)
{
    const Vector3d origin = position(atoms.at(i));
    const Vector3d b = position(atoms.at(k)) - origin;
    return (position(atoms.at(j)) - origin).dot(b.cross(position(atoms.at(l)) - origin));
}

double sineAt(const QVector<Coord> &atoms, int first, int vertex, int last)
{
    const Vector3d a = position(atoms.at(first - 1)) - position(atoms.at(vertex - 1));
    const Vector3d b = position(atoms.at(last - 1)) - position(atoms.at(vertex - 1));
    return a.cross(b).norm() / (a.norm() * b.norm());
}

QVector<Coord> line(const char *labels, const QVector<double> &x)
{
    const QStringList names = QString::fromLatin1(labels).split(QLatin1Char(' '));
    const Vector3d axis = Vector3d(0.3, -0.5, 0.8).normalized();
    QVector<Coord> atoms;
    for (int i = 0; i < x.size(); ++i)
        atoms.append({names.at(i), 1.0 + x.at(i) * axis.x(), -2.0 + x.at(i) * axis.y(),
                      0.5 + x.at(i) * axis.z()});
    return atoms;
}

/// CH3CN with the three atoms of the linear part first: its hydrogens must not hang on them alone.
QVector<Coord> acetonitrile()
{
    QVector<Coord> atoms = {{QStringLiteral("N"), 0.0, 0.0, 2.617},
                            {QStringLiteral("C"), 0.0, 0.0, 1.458},
                            {QStringLiteral("C"), 0.0, 0.0, 0.0}};
    for (int i = 0; i < 3; ++i) {
        const double phi = 0.4 + 2.0 * M_PI * i / 3.0;
        atoms.append({QStringLiteral("H"), 1.03 * std::cos(phi), 1.03 * std::sin(phi), -0.37});
    }
    return atoms;
}

QVector<Coord> randomGlobule(int count)
{
    std::mt19937 random(7);
    const auto draw = [&random] { return 24.0 * (double(random()) / 4294967296.0 - 0.5); };
    QVector<Coord> atoms;
    while (atoms.size() < count) {
        const Coord atom{QStringLiteral("C"), draw(), draw(), draw()};
        bool isFree = true;
        for (const Coord &other : atoms)
            isFree = isFree && (position(atom) - position(other)).norm() > 0.7;
        if (isFree)
            atoms.append(atom);
    }
    return atoms;
}

/// A chain that is straight but for a tiny random sway: the worst case for error growth.
QVector<Coord> nearlyStraightChain(int count)
{
    std::mt19937 random(11);
    QVector<Coord> atoms;
    for (int i = 0; i < count; ++i)
        atoms.append({QStringLiteral("C"), 1.3 * i, 1e-3 * double(random() % 100),
                      1e-3 * double(random() % 100)});
    return atoms;
}

} // namespace

class TestInternalCoordinates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void singleAngles()
    {
        using namespace internalCoordinates;
        const Coord a{QString(), 1.0, 0.0, 0.0};
        const Coord b{QString(), 0.0, 0.0, 0.0};
        const Coord c{QString(), 0.0, 0.0, -1.0};
        COMPARE_NEAR(bangle(a, b, c), M_PI / 2.0, 1e-15);
        COMPARE_NEAR(bangle(a, b, Coord{QString(), -3.0, 0.0, 1e-9}), M_PI - 1e-9 / 3.0, 1e-15);
        COMPARE_NEAR(dang(1.0, 0.0, 0.0, 2.0), M_PI / 2.0, 1e-15);
        COMPARE_NEAR(dang(0.0, 2.0, 1.0, 0.0), -M_PI / 2.0, 1e-15);
        // Seen from above (from b down to c), turning the front bond along x to the rear bond
        // along -y is clockwise.
        COMPARE_NEAR(dihed(a, b, c, Coord{QString(), 0.0, -1.0, -1.0}), M_PI / 2.0, 1e-15);
        COMPARE_NEAR(dihed(a, b, c, Coord{QString(), -1.0, 0.0, -2.0}), M_PI, 1e-15);
        COMPARE_NEAR(dihed(a, b, c, Coord{QString(), 0.0, 0.0, -3.0}), 0.0, 0.0); // collinear
    }

    void roundTripKeepsTheStructure_data()
    {
        QTest::addColumn<QVector<Coord>>("atoms");
        QTest::newRow("one atom") << line("Eu", {0.0});
        QTest::newRow("two atoms") << line("N N", {0.0, 1.1});
        QTest::newRow("azide") << line("N N N", {0.0, 1.18, 2.36});
        QVector<Coord> solvated = line("H C C H", {-1.06, 0.0, 1.2, 2.26});
        solvated += randomGlobule(4);
        QTest::newRow("linear molecule first, then others") << solvated;
        QTest::newRow("acetonitrile") << acetonitrile();
        QTest::newRow("500 atoms") << randomGlobule(500);
        QTest::newRow("500 atoms almost on a line") << nearlyStraightChain(500);
        for (const char *name : {"eu_acac3_h2o.xyz", "eu_acac3_h2o_numbered_names.mol2",
                                 "eu_cl2_h2o6_int.zmt", "eu_cl2_h2o6_internal.mop",
                                 "eu_cl2_h2o6_openbabel.mol2", "eu_h2o9_internal_openmopac.mop"}) {
            LanqorInputData data(nullptr, testSupport::dataFile(QStringLiteral("structures/") +
                                                                QLatin1String(name)));
            QVERIFY(data.readStructureFile());
            QTest::newRow(name) << data.getCoord();
        }
    }
    void roundTripKeepsTheStructure()
    {
        QFETCH(QVector<Coord>, atoms);
        LanqorFilesConverter converter;
        const QVector<CoordZMT> rows = converter.createZMTFromXYZCoord(atoms);
        QCOMPARE(rows.size(), atoms.size());
        const QVector<Coord> back = converter.createXYZFromZMTCoord(rows);
        QVERIFY2(back.size() == atoms.size(), qPrintable(converter.getLastError()));
        for (int i = 0; i < atoms.size(); ++i) {
            QCOMPARE(back.at(i).label, atoms.at(i).label);
            for (int j = 0; j < i; ++j)
                QVERIFY2(std::abs(distance(back, i, j) - distance(atoms, i, j)) < 1e-8,
                         qPrintable(QStringLiteral("atoms %1 and %2").arg(j + 1).arg(i + 1)));
        }
        double offLine = 0.0; // largest sine at atom 1 of the line to atom 2 and an earlier atom
        for (int i = 3; i < atoms.size(); ++i) {
            offLine = std::max(offLine, sineAt(atoms, i, 1, 2));
            const CoordZMT &row = rows.at(i);
            QVERIFY2(offLine < 1e-2 || sineAt(atoms, row.na, row.nb, row.nc) > 1e-3,
                     qPrintable(QStringLiteral("references of atom %1").arg(i + 1)));
            const double expected = volume(atoms, 0, i / 3, i / 2, i);
            COMPARE_NEAR(volume(back, 0, i / 3, i / 2, i), expected,
                         1e-6 * (1.0 + std::abs(expected)));
        }
        // The frame: atom 1 at the origin, atom 2 on +x, the first atom off this line in the xy
        // plane.
        QVERIFY(position(back.at(0)).isZero(0.0));
        if (back.size() > 1)
            QVERIFY(back.at(1).x > 0.0 && back.at(1).y == 0.0 && back.at(1).z == 0.0);
        if (back.size() > 2)
            QVERIFY(back.at(2).z == 0.0 && back.at(2).y >= 0.0);
    }

    void matricesThatCannotBeBuilt_data()
    {
        QTest::addColumn<CoordZMT>("row");
        const QString c = QStringLiteral("C");
        QTest::newRow("reference to itself") << CoordZMT{c, 1.5, 109.0, 60.0, 5, 2, 1};
        QTest::newRow("negative reference") << CoordZMT{c, 1.5, 109.0, 60.0, -1, 2, 1};
        QTest::newRow("the same reference twice") << CoordZMT{c, 1.5, 109.0, 60.0, 4, 2, 2};
        QTest::newRow("no third reference") << CoordZMT{c, 1.5, 109.0, 60.0, 4, 2, 0};
        QTest::newRow("negative distance") << CoordZMT{c, -1.0, 109.0, 60.0, 4, 2, 1};
        QTest::newRow("not a number") << CoordZMT{c, 1.5, std::nan(""), 60.0, 4, 2, 1};
        QTest::newRow("dihedral on a straight line") << CoordZMT{c, 1.5, 109.0, 60.0, 3, 2, 1};
    }
    void matricesThatCannotBeBuilt()
    {
        QFETCH(CoordZMT, row);
        const QString c = QStringLiteral("C");
        // Atoms 1, 2, 3 on a line, atom 4 beside it.
        const QVector<CoordZMT> rows = {{c, 0.0, 0.0, 0.0, 0, 0, 0},
                                        {c, 1.2, 0.0, 0.0, 1, 0, 0},
                                        {c, 1.2, 180.0, 0.0, 2, 1, 0},
                                        {c, 1.5, 120.0, 0.0, 1, 2, 3}};
        LanqorFilesConverter converter;
        // The straight continuation of the line needs no third direction.
        const QVector<Coord> longer = converter.createXYZFromZMTCoord(
            rows + QVector<CoordZMT>{{c, 1.5, 180.0, 0.0, 3, 2, 1}});
        QCOMPARE(longer.size(), 5);
        COMPARE_NEAR(longer.at(4).x, 3.9, 1e-9);
        testSupport::MessageSpy spy(converter);
        QVERIFY(converter.createXYZFromZMTCoord(rows + QVector<CoordZMT>{row}).isEmpty());
        const QString error = converter.getLastError();
        QVERIFY2(error.contains(QLatin1String("Atom 5")) &&
                     error.endsWith(QLatin1String(" THIS IS A FATAL ERROR, RUN STOPPED IN GMETRY")),
                 qPrintable(error));
        QCOMPARE(spy.messages, QStringList(error));
    }

    void coincidentAtoms()
    {
        QVector<Coord> atoms = acetonitrile();
        atoms.append(atoms.at(2));
        LanqorFilesConverter converter;
        QVERIFY(converter.createZMTFromXYZCoord(atoms).isEmpty());
        QCOMPARE(converter.getLastError(),
                 QStringLiteral("TWO ATOMS ARE COINCIDENT.  A FATAL ERROR.\n"
                                "ATOMS   3 AND   7 ARE COINCIDENT\n"));
    }
};

QTEST_GUILESS_MAIN(TestInternalCoordinates)
#include "tst_internalcoordinates.moc"
