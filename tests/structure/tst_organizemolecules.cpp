#include "TestSupport.h"

#include "input/bondLengths_p.h"
#include "input/mol2File_p.h"
#include "structure/fragments_p.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using testSupport::dataFile;
using testSupport::scratchFile;

namespace {

struct Mol2Atom
{
    QByteArray name;
    QByteArray type;
    double x;
    double y;
    double z;
};

QByteArray mol2Text(const QVector<Mol2Atom> &atoms, const QVector<QPair<int, int>> &bonds)
{
    QByteArray text = "@<TRIPOS>MOLECULE\nmade by hand\n" + QByteArray::number(atoms.size()) + " " +
                      QByteArray::number(bonds.size()) +
                      " 1 0 0\nSMALL\nNO_CHARGES\n\n"
                      "@<TRIPOS>ATOM\n";
    for (int i = 0; i < atoms.size(); ++i) {
        const Mol2Atom &atom = atoms.at(i);
        text += QByteArray::number(i + 1) + " " + atom.name + " " +
                QByteArray::number(atom.x, 'f', 4) + " " + QByteArray::number(atom.y, 'f', 4) +
                " " + QByteArray::number(atom.z, 'f', 4) + " " + atom.type + " 1 RES1 0.0\n";
    }
    text += "@<TRIPOS>BOND\n";
    for (int i = 0; i < bonds.size(); ++i)
        text += QByteArray::number(i + 1) + " " + QByteArray::number(bonds.at(i).first) + " " +
                QByteArray::number(bonds.at(i).second) + " 1\n";
    return text;
}

/// Eu(acac)3(H2O) as a crystallographer may hand it over: a water of crystallisation first, the
/// ion last, all atoms of the complex in reverse.
QByteArray crystal(bool withBonds)
{
    structureFiles::Mol2Reader reader(
        dataFile(QStringLiteral("structures/eu_acac3_h2o_numbered_names.mol2")));
    structureFiles::Mol2Molecule molecule;
    if (!reader.open() || !reader.next(molecule))
        qFatal("the fixture cannot be read");
    QVector<Mol2Atom> atoms = {{"O90", "O.3", 12.0, 0.0, 0.0},
                               {"H91", "H", 12.0, 0.76, 0.59},
                               {"H92", "H", 12.0, -0.76, 0.59}};
    const int count = molecule.atoms.size();
    for (int i = count - 1; i >= 0; --i)
        atoms.append({molecule.atomNames.at(i).toLatin1(), molecule.atomTypes.at(i).toLatin1(),
                      molecule.atoms.at(i).x, molecule.atoms.at(i).y, molecule.atoms.at(i).z});
    QVector<QPair<int, int>> bonds;
    if (withBonds) {
        bonds = {{1, 2}, {1, 3}};
        for (const structureFiles::Bond &bond : molecule.bonds)
            bonds.append({3 + count - bond.first, 3 + count - bond.second});
    }
    return mol2Text(atoms, bonds);
}

/// Europium with one water and one chloride.
const QVector<Mol2Atom> smallComplex = {{"O1", "O.3", 2.4, 0.0, 0.0},
                                        {"H1", "H", 3.0, 0.76, 0.0},
                                        {"H2", "H", 3.0, -0.76, 0.0},
                                        {"Cl1", "Cl", 0.0, 2.7, 0.0},
                                        {"Eu1", "Eu", 0.0, 0.0, 0.0}};
const QVector<QPair<int, int>> smallBonds = {{1, 2}, {1, 3}, {5, 1}, {4, 5}};

QStringList labelsOf(const QVector<Coord> &atoms)
{
    QStringList labels;
    for (const Coord &atom : atoms)
        labels.append(atom.label);
    return labels;
}

/// Atoms as text, to compare structures whatever their order.
QStringList asSortedText(const QVector<Coord> &atoms)
{
    QStringList text;
    for (const Coord &atom : atoms)
        text.append(QStringLiteral("%1 %2 %3 %4")
                        .arg(atom.label)
                        .arg(atom.x, 0, 'f', 4)
                        .arg(atom.y, 0, 'f', 4)
                        .arg(atom.z, 0, 'f', 4));
    text.sort();
    return text;
}

} // namespace

Q_DECLARE_METATYPE(QVector<Mol2Atom>)

class TestOrganizeMolecules : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;

private Q_SLOTS:
    void ionLastAndWaterOfCrystallisation_data()
    {
        QTest::addColumn<bool>("withBonds");
        QTest::newRow("bonds of the file") << true;
        QTest::newRow("bonds from radii") << false;
    }
    void ionLastAndWaterOfCrystallisation()
    {
        QFETCH(bool, withBonds);
        const QString file = scratchFile(QStringLiteral("crystal.mol2"), crystal(withBonds));
        LanqorOrganizeMolecules structure(nullptr, file);
        QVERIFY2(structure.organize(), qPrintable(structure.getLastError()));
        QCOMPARE(structure.getLanthanideLabel(), QStringLiteral("Eu"));
        QCOMPARE(structure.getCoordNumber(), 7);
        // Ligands in the order of their first atoms: reversed, the aqua ligand leads.
        QCOMPARE(structure.getLigands(),
                 QStringList({QStringLiteral("H2O_1 2"), QStringLiteral("C5H7O2_1 3 4"),
                              QStringLiteral("C5H7O2_2 5 6"), QStringLiteral("C5H7O2_3 7 8")}));
        const QVector<Coord> atoms = structure.getCoord();
        QCOMPARE(atoms.size(), 49);
        QCOMPARE(labelsOf(atoms).mid(0, 8), QStringList(QStringLiteral("Eu")) +
                                                QVector<QString>(7, QStringLiteral("O")).toList());
        QCOMPARE(labelsOf(atoms).mid(46).join(QString()), QStringLiteral("OHH"));
        COMPARE_NEAR(atoms.at(46).x, 12.0, 0.0);
        // Each ligand stands together: the two H of the aqua ligand, then 5 C and 7 H thrice.
        const QString rest = labelsOf(atoms).mid(8, 38).join(QString());
        QCOMPARE(rest.left(2), QStringLiteral("HH"));
        for (const int start : {2, 14, 26})
            QCOMPARE(rest.mid(start, 12).count(QLatin1Char('C')), 5);

        LanqorInputData original(nullptr, file);
        QVERIFY(original.readMol2File());
        const OrganizeResults results = structure.getResults();
        QVector<bool> isTaken(atoms.size() + 1, false);
        for (int i = 0; i < atoms.size(); ++i) {
            const OrganizedAtom &atom = results.atoms.at(i);
            const Coord source = original.getCoord(atom.sourceAtom);
            QVERIFY(source.label == atoms.at(i).label && source.x == atoms.at(i).x &&
                    source.z == atoms.at(i).z && !isTaken.at(atom.sourceAtom));
            QCOMPARE(atom.isCoordinated, i >= 1 && i <= 7);
            isTaken[atom.sourceAtom] = true;
        }
        QCOMPARE(results.atoms.at(7).fragment, results.ligands.at(3).name);

        structure.setKeepUnboundFragments(false);
        QVERIFY(structure.organize());
        QCOMPARE(structure.getCoord().size(), 46);
        QCOMPARE(structure.getLigands().value(0), QStringLiteral("H2O 2"));
    }

    // What all calculations ask for holds in MOPAC's output of the organised structure.
    void mopacOutputIsOrdered()
    {
        const QString mopac = QStandardPaths::findExecutable(QStringLiteral("mopac"));
        if (mopac.isEmpty())
            QSKIP("needs MOPAC");
        LanqorOrganizeMolecules structure(
            nullptr, scratchFile(QStringLiteral("crystal.mol2"), crystal(true)));
        QVERIFY(structure.organize());
        structure.setExtraMopacKeywords(QStringLiteral("SPARKLE CHARGE=0 1SCF THREADS=1"));
        QVERIFY(structure.createOutpuFile(folder.filePath(QStringLiteral("organised.mop"))));
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(mopac, {QStringLiteral("organised.mop")});
        QVERIFY(process.waitForFinished(240000));
        LanqorInputData data(nullptr, folder.filePath(QStringLiteral("organised.out")));
        QVERIFY(data.readMopacOutFile(false) && data.createSphericalCoordinate());
        QCOMPARE(data.getCoordNumber(), 7);
        QVERIFY2(data.getAtomOrderError().isEmpty(), qPrintable(data.getAtomOrderError()));
        QCOMPARE(data.getCoord().size(), 49);
    }

    // The printed ligands are those that the partition of the radiative rate takes.
    void ligandsOfThePartition()
    {
        LanqorOrganizeMolecules structure(
            nullptr, dataFile(QStringLiteral("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out")));
        const QString file = folder.filePath(QStringLiteral("ordered.xyz"));
        QVERIFY(structure.organize() && structure.createOutpuFile(file));
        LanqorInputData data(nullptr, file);
        QVERIFY(data.readXYZFile() && data.createSphericalCoordinate());
        LanqorInputData *geometry = &data;
        LanqorAradPartition partition(nullptr, geometry, 9, 1.5);
        QVERIFY2(partition.setLigandsVector(structure.getLigands()),
                 qPrintable(partition.getLastError()));
        QCOMPARE(partition.getLigandsNumber(), 4);
    }

    // Those of Cordero et al. from H to Cm, added separately; element 80 is spelled as magnesium.
    void coordinationNumberThatIsAskedFor()
    {
        // the water of the free molecule lies at 2.765 Angstrom, beyond the limit of oxygen
        LanqorOrganizeMolecules organizer(nullptr, testSupport::sourceFile(QStringLiteral(
                                                       "examples/data/eu_acac3_h2o_gfn1.xyz")));
        QVERIFY(organizer.organize());
        QCOMPARE(organizer.getCoordNumber(), 6);
        organizer.setCoordinationNumber(7);
        QVERIFY(organizer.organize());
        QCOMPARE(organizer.getLigands().size(), 4);
        const OrganizeResults results = organizer.getResults();
        QVERIFY(results.atoms.at(7).isCoordinated && !results.atoms.at(8).isCoordinated);
        QCOMPARE(results.ligands.last().coordinatedAtoms, QVector<int>{8});
        organizer.setCoordinationNumber(8);
        QVERIFY(!organizer.organize());
        QVERIFY(organizer.getLastError().contains(QStringLiteral("only 7 atoms")));
    }

    void sumOfTheCovalentRadii()
    {
        double sum = 0.0;
        for (int number = 1; number <= 96; ++number) {
            const QString symbol = LanqorInputData::getElementSymbol(number);
            int steps = 0; // of 0.01 Angstrom to the longest bond of two such atoms
            while (bondLengths::isWithinBondLength({symbol, 0.0, 0.0, 0.0},
                                                   {symbol, 0.01 * (steps + 0.5), 0.0, 0.0}))
                ++steps;
            sum += (0.01 * steps - 0.4) / 2.0;
        }
        COMPARE_NEAR(sum, 145.91 - 1.32 + 1.41, 0.004);
    }

    // One of the molecules is without bonds, and the ion may bear any name.
    void severalMoleculesAreOneStructure_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QString>("label");
        QTest::newRow("Eu1") << QByteArray("Eu1") << QByteArray("Eu1") << QStringLiteral("Eu");
        QTest::newRow("EU") << QByteArray("EU") << QByteArray("EU") << QStringLiteral("Eu");
        QTest::newRow("by name, dummy type")
            << QByteArray("Tb1") << QByteArray("Du") << QStringLiteral("Tb");
        QTest::newRow("oxidation state")
            << QByteArray("M1") << QByteArray("Gd.3") << QStringLiteral("Gd");
    }
    void severalMoleculesAreOneStructure()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, type);
        QFETCH(QString, label);
        const QByteArray water = mol2Text({{"O1", "O.3", 0.0, 0.0, -2.5},
                                           {"H1", "H", 0.7, 0.0, -3.1},
                                           {"H2", "H", -0.7, 0.0, -3.1}},
                                          {});
        QVector<Mol2Atom> atoms = smallComplex;
        atoms.last().name = name;
        atoms.last().type = type;
        atoms.append({"CE", "C.3", 9.0, 9.0, 9.0}); // a carbon, whatever its name
        LanqorOrganizeMolecules structure(
            nullptr,
            scratchFile(QStringLiteral("several.mol2"), water + mol2Text(atoms, smallBonds)));
        QVERIFY2(structure.organize(), qPrintable(structure.getLastError()));
        QCOMPARE(structure.getLanthanideLabel(), label);
        QCOMPARE(structure.getLigands(),
                 QStringList({QStringLiteral("H2O_1 2"), QStringLiteral("H2O_2 3"),
                              QStringLiteral("Cl 4")}));
        QCOMPARE(labelsOf(structure.getCoord()).last(), QStringLiteral("C"));
    }

    void writtenMol2KeepsTheBonds()
    {
        LanqorOrganizeMolecules structure(
            nullptr, scratchFile(QStringLiteral("crystal.mol2"), crystal(true)));
        QVERIFY(structure.organize());
        const QString file = folder.filePath(QStringLiteral("organised.mol2"));
        QVERIFY(structure.createOutputFile(file));
        structureFiles::Mol2Reader reader(file);
        structureFiles::Mol2Molecule molecule;
        QVERIFY(reader.open() && reader.next(molecule));
        QCOMPARE(molecule.bonds.size(), 49); // 47 of the complex, 2 of the water
        QCOMPARE(molecule.residues, 6);

        const QString babel = QStandardPaths::findExecutable(QStringLiteral("obabel"));
        if (babel.isEmpty())
            QSKIP("needs Open Babel");
        QProcess process;
        process.start(babel, {QStringLiteral("-imol2"), file, QStringLiteral("-oxyz")});
        QVERIFY(process.waitForFinished(60000));
        const QString xyz =
            scratchFile(QStringLiteral("babel.xyz"), process.readAllStandardOutput());
        LanqorInputData read(nullptr, xyz);
        QVERIFY(read.readXYZFile());
        QCOMPARE(asSortedText(read.getCoord()), asSortedText(structure.getCoord()));
    }

    void structuresThatCannotBeOrganised_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("message");
        QVector<Mol2Atom> atoms = smallComplex;
        atoms.last() = {"Y1", "Y", 0.0, 0.0, 0.0};
        QTest::newRow("no ion") << mol2Text(atoms, smallBonds)
                                << QStringLiteral("no lanthanide ion");
        atoms = smallComplex;
        atoms.append({"Tb1", "Tb", 8.0, 0.0, 0.0});
        QTest::newRow("two ions") << mol2Text(atoms, smallBonds) << QStringLiteral("Eu 5 and Tb 6");
        atoms = smallComplex;
        atoms.append({"N2", "N.3", 3.0, 0.76, 0.1});
        QTest::newRow("two elements in one place")
            << mol2Text(atoms, smallBonds) << QStringLiteral("H 2 and N 6");
        QTest::newRow("an atom number twice")
            << mol2Text(smallComplex, smallBonds).replace("\n2 H1", "\n1 H1")
            << QStringLiteral("Atom number 1 stands twice");
        QTest::newRow("a bond to nowhere")
            << mol2Text(smallComplex, {{1, 2}, {1, 9}}) << QStringLiteral("Line 15");
        QTest::newRow("an atom far away")
            << mol2Text(smallComplex, smallBonds).replace("2.7000", "2.7e99")
            << QStringLiteral("\"Cl1 Cl\" has a coordinate of 2.7e+99 Angstrom");
    }
    void structuresThatCannotBeOrganised()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        LanqorOrganizeMolecules structure(nullptr,
                                          scratchFile(QStringLiteral("faulty.mol2"), bytes));
        testSupport::MessageSpy spy(structure);
        QVERIFY(!structure.organize());
        QVERIFY2(structure.getLastError().contains(message), qPrintable(structure.getLastError()));
        QCOMPARE(spy.messages, QStringList(structure.getLastError()));
        QVERIFY(!structure.createOutpuFile(folder.filePath(QStringLiteral("never.xyz"))));
    }

    void disorderedAtomsKeepTheirFirstPlace_data()
    {
        QTest::addColumn<QVector<Mol2Atom>>("further");
        QTest::addColumn<QString>("leftOut");
        const auto row = [](const char *name, const QVector<Mol2Atom> &further,
                            const QString &leftOut) { QTest::newRow(name) << further << leftOut; };
        row("an atom twice", {{"O2", "O.3", 2.4, 0.1, 0.0}},
            QStringLiteral("O 6 (0.100 Angstrom from O 1)"));
        row("water in two places, which count as one donor",
            {{"O2", "O.3", 2.35, 0.0, 0.68},
             {"H3", "H", 2.95, 0.76, 0.9},
             {"H4", "H", 2.95, -0.76, 0.9}},
            QStringLiteral("O 6 (0.682 Angstrom from O 1), H 7, H 8"));
        row("water shifted, a hydrogen atom of one place nearest to the oxygen of the other",
            {{"O2", "O.3", 2.01, 0.39, 0.39},
             {"H3", "H", 2.61, 1.15, 0.39},
             {"H4", "H", 2.61, -0.37, 0.39}},
            QStringLiteral("O 6 (0.675 Angstrom from O 1), H 7, H 8"));
        row("methylene in two places, turned",
            {{"C1", "C.3", 0.0, 9.0, 0.0},
             {"H5", "H", 0.8, 9.5, -0.5},
             {"H6", "H", -0.8, 9.5, -0.5},
             {"C2", "C.3", 0.0, 9.0, 0.3},
             {"H7", "H", 0.0, 9.8, 1.0},
             {"H8", "H", 0.0, 8.2, 1.0}},
            QStringLiteral("C 9 (0.300 Angstrom from C 6), H 10, H 11"));
        row("hydrogen twice", {{"H3", "H", 3.0, 0.76, 0.3}},
            QStringLiteral("H 6 (0.300 Angstrom from H 2)"));
        row("an atom in the ion's place", {{"Cl2", "Cl", 0.3, 0.0, 0.0}},
            QStringLiteral("Cl 6 (0.300 Angstrom from Eu 5)"));
    }
    void disorderedAtomsKeepTheirFirstPlace()
    {
        QFETCH(QVector<Mol2Atom>, further);
        QFETCH(QString, leftOut);
        for (const bool isFirst : {false, true}) { // the further atoms stand before the others
            if (isFirst && !leftOut.startsWith(QLatin1String("Cl")))
                continue;
            const QVector<Mol2Atom> atoms =
                isFirst ? further + smallComplex : smallComplex + further;
            LanqorOrganizeMolecules structure(
                nullptr, scratchFile(QStringLiteral("disorder.mol2"), mol2Text(atoms, {})));
            testSupport::MessageSpy spy(structure);
            QVERIFY2(structure.organize(), qPrintable(structure.getLastError()));
            QVERIFY2(isFirst || spy.messages.first().contains(QLatin1String("Left out are ") +
                                                              leftOut + QLatin1Char('.')),
                     qPrintable(spy.messages.first()));
            QCOMPARE(structure.getCoordNumber(), 2);
            QCOMPARE(structure.getCoord().size(),
                     atoms.size() - leftOut.count(QStringLiteral(", ")) - 1);
            QCOMPARE(structure.getLanthanideLabel(), QStringLiteral("Eu"));
            QCOMPARE(structure.getResults().atoms.first().sourceAtom, isFirst ? 6 : 5);
        }
    }

    // Isomers and what lacks hydrogen atoms are not taken for a species of known charge.
    void chargesOfFragmentsLeftOut()
    {
        const QString babel = QStandardPaths::findExecutable(QStringLiteral("obabel"));
        if (babel.isEmpty())
            QSKIP("needs Open Babel");
        const QByteArray species = "[Cl-] -1\n[I-] -1\n[Na+] 1\n[O-][N+](=O)[O-] -1\n"
                                   "[O-]Cl(=O)(=O)=O -1\nF[B-](F)(F)F -1\n"
                                   "F[P-](F)(F)(F)(F)F -1\nFC(F)(F)S(=O)(=O)[O-] -1\n"
                                   "CC(=O)[O-] -1\nFC(F)(F)C(=O)[O-] -1\n[OH3+] 1\n[NH4+] 1\n"
                                   "C[N+](C)(C)C 1\nCC[NH+](CC)CC 1\nCC[N+](CC)(CC)CC 1\nO 0\n"
                                   "CO 0\nCCO 0\nCC(O)C 0\nCC#N 0\nCN(C)C=O 0\nCS(=O)C 0\n"
                                   "C1CCCO1 0\nO1CCOCC1 0\nCCOCC 0\nCC(=O)C 0\nCCOC(C)=O 0\n"
                                   "ClCCl 0\nClC(Cl)Cl 0\nClCCCl 0\nc1ccccc1 0\nCc1ccccc1 0\n"
                                   "c1ccncc1 0\nCCCCCC 0\nCOC ?\nCC(Cl)Cl ?\n[O-]ON=O ?\n"
                                   "CC(C)CCC ?\nC=CCO ?\nCNC(C)=O ?\n[OH-] ?\nC1=CC=CC=CC1 ?\n"
                                   "CC(=O)O ?\nCCN(CC)CC ?\n[O-2] ?\n"
                                   "CC(=O)[CH-]C(C)=O -1\nCC(=O)CC(C)=O ?\n"
                                   "FC(F)(F)C(=O)[CH-]C(=O)c1cccs1 -1\n"
                                   "FC(F)(F)C(=O)[CH-]C(=O)c1ccsc1 ?\n"
                                   "FC(F)(F)C(=O)[CH-]C(=O)c1ccc2ccccc2c1 -1\n"
                                   "O=C(c1ccccc1)[CH-]C(=O)c1ccccc1 -1\n"
                                   "CC(C)(C)C(=O)[CH-]C(=O)C(F)(F)C(F)(F)C(F)(F)F -1\n"
                                   "[O-]C(=O)c1cccc(n1)C(=O)[O-] -2\n[O-]C(=O)c1ccccc1O -1\n"
                                   "[O-]C(=O)c1cccnc1 -1\n[O-]C(=O)c1ccccn1 -1\n"
                                   "c1ccnc(c1)-c1ccccn1 0\nc1cnc2c(c1)ccc1cccnc12 0\n"
                                   "c1ccnc(c1)-c1cccc(n1)-c1ccccn1 0\n"
                                   "[O-][n+]1ccccc1-c1cccc[n+]1[O-] 0\n"
                                   "O=P(c1ccccc1)(c1ccccc1)c1ccccc1 0\n";
        QProcess process;
        process.start(babel, {scratchFile(QStringLiteral("species.smi"), species),
                              QStringLiteral("-h"), QStringLiteral("-omol2")});
        QVERIFY(process.waitForFinished(60000));
        structureFiles::Mol2Reader reader(
            scratchFile(QStringLiteral("species.mol2"), process.readAllStandardOutput()));
        QVERIFY(reader.open());
        structureFiles::Mol2Molecule molecule;
        const QList<QByteArray> rows = species.trimmed().split('\n');
        for (const QByteArray &row : rows) {
            QVERIFY(reader.next(molecule));
            QVector<Mol2Atom> atoms = {{"Eu1", "Eu", -9.0, 0.0, 0.0},
                                       {"Cl1", "Cl", -9.0, 2.7, 0.0}};
            QVector<QPair<int, int>> bonds;
            for (const Coord &atom : qAsConst(molecule.atoms)) // no distance tells of a bond
                atoms.append(
                    {atom.label.toLatin1(), atom.label.toLatin1(), 5.0 * atoms.size(), 0.0, 0.0});
            for (const structureFiles::Bond &bond : qAsConst(molecule.bonds))
                bonds.append({3 + bond.first, 3 + bond.second});
            LanqorOrganizeMolecules structure(
                nullptr, scratchFile(QStringLiteral("solvate.mol2"), mol2Text(atoms, bonds)));
            structure.setKeepUnboundFragments(false);
            QVERIFY2(structure.organize(), qPrintable(structure.getLastError()));
            const OmittedFragment omitted = structure.getResults().omittedFragments.value(0);
            QCOMPARE(row.left(row.indexOf(' ') + 1) +
                         (omitted.isChargeKnown ? QByteArray::number(omitted.charge) : "?"),
                     row);
        }
    }

    void damagedFilesAreOrganisedOrRefused()
    {
        testSupport::damageFile(crystal(true), 200, 1500, [](const QString &path) {
            const QString file = path + QStringLiteral(".mol2");
            QFile::remove(file);
            QVERIFY(QFile::rename(path, file));
            LanqorOrganizeMolecules structure(nullptr, file);
            const bool ok = structure.organize();
            QCOMPARE(ok, structure.getLastError().isEmpty());
            if (ok)
                QVERIFY(structure.getCoordNumber() < structure.getCoord().size());
        });
    }
};

QTEST_GUILESS_MAIN(TestOrganizeMolecules)
#include "tst_organizemolecules.moc"
