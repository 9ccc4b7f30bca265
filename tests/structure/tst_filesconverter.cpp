#include "TestSupport.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using testSupport::dataFile;
using testSupport::scratchFile;

namespace {

const QString chlorideComplex = QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out");

QStringList linesOf(const QString &file)
{
    return QString::fromUtf8(testSupport::readAll(file)).split(QLatin1Char('\n'));
}

QVector<Coord> atomsOf(const QString &file)
{
    LanqorInputData data(nullptr, file);
    return data.readStructureFile() ? data.getCoord() : QVector<Coord>();
}

/// Largest difference of any coordinate; huge when labels or counts differ.
double difference(const QVector<Coord> &a, const QVector<Coord> &b)
{
    double largest = a.size() == b.size() ? 0.0 : 1e9;
    for (int i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a.at(i).label != b.at(i).label)
            return 1e9;
        for (const double d : {a.at(i).x - b.at(i).x, a.at(i).y - b.at(i).y, a.at(i).z - b.at(i).z})
            largest = std::max(largest, std::abs(d));
    }
    return largest;
}

double distance(const QVector<Coord> &atoms, int i, int j)
{
    return std::hypot(atoms.at(i).x - atoms.at(j).x, atoms.at(i).y - atoms.at(j).y,
                      atoms.at(i).z - atoms.at(j).z);
}

/// The coordinates and the orbital energies of an ORCA ligand calculation, cut to what counts.
QByteArray orcaOutput(const QByteArray &orbitals)
{
    return "---------------------------------\n"
           "CARTESIAN COORDINATES (ANGSTROEM)\n"
           "---------------------------------\n"
           "  O      0.000000    0.000000    0.117300\n"
           "  H      0.000000    0.757200   -0.469200\n"
           "  H      0.000000   -0.757200   -0.469200\n"
           "\n"
           "----------------\n"
           "ORBITAL ENERGIES\n"
           "----------------\n"
           "\n"
           "  NO   OCC          E(Eh)            E(eV) \n" +
           orbitals + "\n";
}

struct RunResult
{
    bool isDone = false;
    QString output;
};

RunResult runInFolder(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool isDone = process.waitForFinished(240000) && process.exitCode() == 0;
    return {isDone, QString::fromUtf8(process.readAll())};
}

} // namespace

class TestFilesConverter : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;
    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

private Q_SLOTS:
    void mopacJob()
    {
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        testSupport::MessageSpy spy(converter);
        QVERIFY(converter.convertFromOutToMop(path("plain.mop")));
        const char *const expected[] = {"Conversion from .out file to .mop file",
                                        "Cartesian coordinates  read successfully. The chemical "
                                        "structure contains 21 atoms",
                                        "Creating output file.",
                                        "The output file created successfully."};
        QCOMPARE(spy.messages.size(), 4);
        for (int i = 0; i < 4; ++i)
            QVERIFY2(
                spy.messages.at(i).endsWith(QLatin1String(" -> (Lanqor Files Converter Module) ") +
                                            QLatin1String(expected[i])),
                qPrintable(spy.messages.at(i)));
        const QByteArray header = "AM1 PRECISE XYZ T=10D BFGS GNORM=0.25 +   \n"
                                  "NOLOG GEO-OK SCFCRT=1.D-10    ";
        const QByteArray ion =
            "\n\n\nEu       0.000000000 1      0.000000000 1      0.000000000 1\n";
        QVERIFY(testSupport::readAll(path("plain.mop")).startsWith(header + ion));
        converter.setExtraMopacKeywords(QStringLiteral("SPARKLE CHARGE=1"));
        QVERIFY(converter.convertFromOutToMop(path("sparkle.mop")));
        QVERIFY(testSupport::readAll(path("sparkle.mop"))
                    .startsWith(header + "SPARKLE CHARGE=1" + ion));
        QVERIFY(difference(atomsOf(path("sparkle.mop")), atomsOf(dataFile(chlorideComplex))) <
                1e-9);
    }

    // MOPAC itself reads the written job: all atoms, the ion first, and the energy of a plain
    // job of the same coordinates.
    void mopacReadsTheJob()
    {
        const QString mopac = QStandardPaths::findExecutable(QStringLiteral("mopac"));
        if (mopac.isEmpty())
            QSKIP("needs MOPAC");
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        converter.setExtraMopacKeywords(QStringLiteral("SPARKLE CHARGE=1 1SCF THREADS=1"));
        QVERIFY(converter.convertFromOutToMop(path("ours.mop")));
        const QVector<Coord> atoms = atomsOf(dataFile(chlorideComplex));
        QByteArray plain = "AM1 SPARKLE 1SCF XYZ PRECISE SCFCRT=1.D-10 GEO-OK CHARGE=1 THREADS=1\n"
                           "title\ncomment\n";
        for (const Coord &atom : atoms)
            plain += QStringLiteral("%1 %2 0 %3 0 %4 0\n")
                         .arg(atom.label)
                         .arg(atom.x, 0, 'f', 9)
                         .arg(atom.y, 0, 'f', 9)
                         .arg(atom.z, 0, 'f', 9)
                         .toLatin1();
        write("plain1scf.mop", plain);
        for (const char *job : {"ours.mop", "plain1scf.mop"}) {
            const RunResult run = runInFolder(mopac, {QLatin1String(job)}, folder.path());
            QVERIFY2(run.isDone, qPrintable(run.output));
        }
        LanqorInputData ours(nullptr, path("ours.out"));
        LanqorInputData reference(nullptr, path("plain1scf.out"));
        QVERIFY2(ours.readMopacOutFile(false), qPrintable(ours.getLastError()));
        QVERIFY2(reference.readMopacOutFile(false), qPrintable(reference.getLastError()));
        QVERIFY(difference(ours.getCoord(), atoms) < 1e-8);
        QVERIFY(ours.getFinalHeat() < -100.0);
        COMPARE_NEAR(ours.getFinalHeat(), reference.getFinalHeat(), 1e-5);
    }

    void openBabelReadsXyz()
    {
        const QString babel = QStandardPaths::findExecutable(QStringLiteral("obabel"));
        if (babel.isEmpty())
            QSKIP("needs Open Babel");
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        QVERIFY(converter.convertFromOutToXYZ(path("babel.xyz"), false));
        const RunResult run =
            runInFolder(babel,
                        {QStringLiteral("-ixyz"), path("babel.xyz"), QStringLiteral("-oxyz"),
                         QStringLiteral("-O"), path("back.xyz")},
                        folder.path());
        QVERIFY2(run.isDone, qPrintable(run.output));
        QVERIFY(difference(atomsOf(path("back.xyz")), atomsOf(dataFile(chlorideComplex))) < 1e-5);
    }

    void gaussianJob()
    {
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        QVERIFY(converter.convertFromOutToGjf(path("complex.gjf")));
        const QString text = QString::fromUtf8(testSupport::readAll(path("complex.gjf")));
        QVERIFY(text.startsWith(QStringLiteral(
            "%chk=complex.chk\n%nproc=8\n%mem=4GB\n"
            "#td=(nstates=10,50-50) scf=(maxcyc=800) LC-wPBE/genecp pseudo=read guess=core "
            "pop=full\n"
            "\n Title Card Required \n\n"
            "1 1\n")));
        QVERIFY(text.endsWith(QStringLiteral("\n\nCl O H 0 \n6-31+G(d)\n****\nEu 0 \nMWB52\n****\n"
                                             "\nEu 0 \nMWB52\n\n")));
        converter.setCharge(-2);
        QVERIFY(converter.convertFromOutToGjf(path("complex.gjf")));
        QVERIFY(linesOf(path("complex.gjf")).contains(QStringLiteral("-2 1")));
    }

    // Large-core potentials of Dolg et al.: as many electrons in the core as Xe would have
    // without 5s, 5p (46), and the 4f electrons of the trivalent ion.
    void pseudopotentialOfEveryLanthanide()
    {
        const QByteArray xyz = "2\n\nLn 0 0 0\nO 2.4 0 0\n";
        for (int i = 0; i < 15; ++i) {
            const QString ion = LanqorInputData::lanthanideList[i];
            const QString file = scratchFile(QStringLiteral("ion.xyz"),
                                             QByteArray(xyz).replace("Ln", ion.toLatin1()));
            LanqorFilesConverter converter(nullptr, file);
            QVERIFY(converter.convertFromOutToGjf(path("ion.gjf")));
            const QString expected = QStringLiteral("%1 0 \nMWB%2\n").arg(ion).arg(46 + i);
            const QString text = QString::fromUtf8(testSupport::readAll(path("ion.gjf")));
            QVERIFY2(text.count(expected) == 2, qPrintable(text));
        }
        const QString water = scratchFile(QStringLiteral("water.xyz"), "1\n\nO 0 0 0\n");
        LanqorFilesConverter converter(nullptr, water);
        QVERIFY(!converter.convertFromOutToGjf(path("water.gjf")));
        QVERIFY(converter.getLastError().contains(QLatin1String("lanthanide")));
        QVERIFY(!QFileInfo::exists(path("water.gjf")));
    }

    void zindoJob()
    {
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        QVERIFY2(converter.convertFromOutToInp(path("job.inp")),
                 qPrintable(converter.getLastError()));
        const QStringList lines = linesOf(path("job.inp"));
        for (const char *line :
             {"  cis calculation ( for spectrum )", " $TITLEI", " $CONTRL",
              " SCFTYP=RHF RUNTYP=CI ENTTYP=COORD UNITS=ANGS", " ONAME=lixo VEC=9 IPRINT=0",
              " MULT=1  ITMAX=200  SCFTOL=0.00001  IAPX=3  INTTYP=1",
              " INTFA(1)= 1.0  1.2675  0.585  1.0  1.0  1.0", " $DATAIN", " $CIINPU",
              // 2 Cl- (8 electrons each) and 6 water (8 each); 21 centres with the point charge
              " NEL=64", " NAT=21"})
            QVERIFY2(lines.contains(QLatin1String(line)), line);
        QCOMPARE(lines.count(QStringLiteral(" $END")), 4);
        // 12 H of one function, 8 others of four: 44 orbitals, 32 filled; the window is 3-44.
        QVERIFY(lines.contains(QStringLiteral(" DYNAL(1)=    1   12    8    0    0   721   44")));
        QCOMPARE(lines.count(QStringLiteral("   21    3   32   33   44")), 2);
        const QStringList ion = lines.at(lines.indexOf(QStringLiteral(" $DATAIN")) + 1)
                                    .split(QLatin1Char(' '), Qt::SkipEmptyParts);
        QVERIFY(ion.size() == 5 && ion.at(3) == QLatin1String("0") && ion.at(4).toDouble() == 3.0);

        QByteArray bytes = testSupport::readAll(dataFile(chlorideComplex));
        bytes.replace("NO. OF FILLED LEVELS", "NO. OF EMPTY LEVELS ");
        LanqorFilesConverter without(nullptr, scratchFile(QStringLiteral("nolevels.out"), bytes));
        QVERIFY(!without.convertFromOutToInp(path("none.inp")));
        QCOMPARE(without.getLastError(),
                 QStringLiteral("NO. OF FILLED LEVELS was not find in mopac output"));
        QVERIFY(!QFileInfo::exists(path("none.inp")));
    }

    void orcaJob()
    {
        LanqorFilesConverter converter(nullptr, dataFile(chlorideComplex));
        QVERIFY(converter.convertFromOutToInpOrca(path("job.orcinp"), true, false, -2, 25, 10));
        const QString text = QString::fromUtf8(testSupport::readAll(path("job.orcinp")));
        QVERIFY(text.startsWith(QStringLiteral(
            "!RHF ZINDO/S TightSCF DIIS PrintBasis\n%method\n\tfrozencore fc_ewin\nend\n%cis\n"
            "\tewin -3.000000,3.000000\n\tTriplets false\n\tmaxdim 10\n\tnroots 25\nend\n"
            "%output\n\tprint[p_mos] 1\nend\n%pointcharges \"job.pointcharge\"\n*xyz -2 1\nCl")));
        QVERIFY(text.endsWith(QStringLiteral("\n*\n")));
        QVERIFY(!text.contains(QLatin1String("Eu")));
        const QStringList charges = linesOf(path("job.pointcharge"));
        QCOMPARE(charges.at(0), QStringLiteral("1"));
        QCOMPARE(charges.at(1).split(QLatin1Char(' '), Qt::SkipEmptyParts).size(), 4);

        QVERIFY(converter.convertFromOutToInpOrca(path("ion.orcinp"), false, true, 1, 5, 5));
        const QString withIon = QString::fromUtf8(testSupport::readAll(path("ion.orcinp")));
        QVERIFY(withIon.contains(QLatin1String("\tTriplets true\n")));
        QVERIFY(withIon.contains(QLatin1String("*xyz 1 1\nEu")));
        QVERIFY(!withIon.contains(QLatin1String("%pointcharges")));
        QVERIFY(!QFileInfo::exists(path("ion.pointcharge")));
        QVERIFY(!converter.convertFromOutToInpOrca(path("no.orcinp"), true, true, 0, 0, 5));
        QVERIFY(!QFileInfo::exists(path("no.orcinp")));
    }

    void orcaJobFromOrcaOutput()
    {
        const QByteArray orbitals = "   0   2.0000      -1.000000       -27.2114 \n"
                                    "   1   2.0000      -0.500000       -13.6057 \n"
                                    "   2   0.0000       0.250000         6.8028 \n";
        write("ligand.orcout", orcaOutput(orbitals));
        write("ligand.pointcharge", "1\n3.0 0.5 -0.25 2.4\n");
        LanqorFilesConverter converter(nullptr, path("ligand.orcout"));
        testSupport::MessageSpy spy(converter);
        QVERIFY2(converter.convertFromOutToInpOrca(path("next.orcinp"), true, true, 0, 10, 5),
                 qPrintable(converter.getLastError()));
        QVERIFY(spy.contains(QStringLiteral(
            " -> (Lanqor Files Converter Module) Conversion from .orcout file to .orcinp file")));
        QVERIFY(testSupport::readAll(path("next.orcinp"))
                    .contains("\tewin -1.001001,0.250998\n")); // the eV in hartree, opened by 0.001
        LanqorInputData next(nullptr, path("next.orcout"));
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        QVERIFY(next.readChargePointFileOrca(x, y, z)); // as ORCA's output beside it will be read
        QVERIFY(x == 0.5 && y == -0.25 && z == 2.4);

        const QString noEmpty = scratchFile(QStringLiteral("filled.orcout"),
                                            orcaOutput(orbitals.left(orbitals.indexOf("   2 "))));
        LanqorFilesConverter inconsistent(nullptr, noEmpty);
        QVERIFY(!inconsistent.convertFromOutToInpOrca(path("x.orcinp"), false, true, 0, 10, 5));
        QCOMPARE(inconsistent.getLastError(),
                 QString::fromUtf8("problema na defini\xc3\xa7\xc3\xa3o dos orbitais!"));
    }

    void zMatrixAndBack()
    {
        LanqorFilesConverter toZmt(nullptr,
                                   dataFile(QStringLiteral("structures/eu_acac3_h2o.xyz")));
        QVERIFY(toZmt.convertFromOutToZmt(path("acac.zmt")));
        LanqorFilesConverter toXyz(nullptr, path("acac.zmt"));
        QVERIFY(toXyz.convertFromZmtToXYZ()); // beside it, with the new ending
        // The same distances to the ion and between neighbours in the file, digits of it lost.
        const QVector<Coord> back = atomsOf(path("acac.xyz"));
        const QVector<Coord> atoms =
            atomsOf(dataFile(QStringLiteral("structures/eu_acac3_h2o.xyz")));
        QCOMPARE(back.size(), atoms.size());
        for (int i = 1; i < atoms.size(); ++i) {
            COMPARE_NEAR(distance(back, i, 0), distance(atoms, i, 0), 1e-6);
            COMPARE_NEAR(distance(back, i, i - 1), distance(atoms, i, i - 1), 1e-6);
        }
        LanqorFilesConverter bad(
            nullptr, scratchFile(QStringLiteral("bad.zmt"), "C 0 0 0 0 0 0\nC 1.5 0 0 2 0 0\n"));
        QVERIFY(!bad.convertFromZmtToXYZ());
        QVERIFY(bad.getLastError().endsWith(
            QLatin1String(" THIS IS A FATAL ERROR, RUN STOPPED IN GMETRY")));
    }

    void sphericalCoordinates()
    {
        const QString file =
            scratchFile(QStringLiteral("two.xyz"), "3\n\nEu 1 1 1\nO 1 1 3.5\nN 1 -1.5 1\n");
        LanqorFilesConverter converter(nullptr, file);
        QVERIFY(converter.convertFromOutToSph(path("two.sph")));
        const QStringList lines = linesOf(path("two.sph"));
        const QStringList above = lines.at(1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QStringList beside = lines.at(2).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        QVERIFY(above.at(0) == QLatin1String("O") && above.at(1).toDouble() == 2.5 &&
                above.at(2).toDouble() == 0.0);
        QVERIFY(beside.at(2).toDouble() == 90.0 && beside.at(3).toDouble() == 270.0);
    }

    void translationVectors()
    {
        const QByteArray mop = "AM1 SPARKLE XYZ\n\n\n Eu 0 1 0 1 0 1\n O 2.4 1 0 1 0 1\n"
                               " Tv 13 1 0 1 0 1\n Tv 0 1 13 1 0 1\n";
        LanqorFilesConverter converter(nullptr, scratchFile(QStringLiteral("tv.mop"), mop));
        QVERIFY(converter.convertFromMopToXYZ(path("with.xyz"), true));
        QVERIFY(converter.convertFromMopToXYZ(path("without.xyz"), false));
        QCOMPARE(linesOf(path("with.xyz")).filter(QStringLiteral("Tv")).size(), 2);
        QCOMPARE(linesOf(path("with.xyz")).at(0), QStringLiteral("4"));
        QCOMPARE(linesOf(path("without.xyz")).filter(QStringLiteral("Tv")).size(), 0);
        QCOMPARE(linesOf(path("without.xyz")).at(0), QStringLiteral("2"));
    }

    void structureFilesToXyz()
    {
        for (const char *name : {"eu_cl2_h2o6_int.zmt", "eu_cl2_h2o6_internal.mop",
                                 "eu_cl2_h2o6_openbabel.mol2", "eu_h2o9_internal_openmopac.mop"}) {
            const QString file = dataFile(QStringLiteral("structures/") + QLatin1String(name));
            LanqorFilesConverter converter(nullptr, file);
            const QString out = path("out.xyz");
            QVERIFY(file.endsWith(QLatin1String("zmt"))   ? converter.convertFromZmtToXYZ(out)
                    : file.endsWith(QLatin1String("mop")) ? converter.convertFromMopToXYZ(out, true)
                                                          : converter.convertFromMOL2ToXYZ(out));
            QVERIFY2(difference(atomsOf(out), atomsOf(file)) < 1e-8, name);
        }
    }

    void failuresLeaveFilesAlone()
    {
        const QString kept = scratchFile(QStringLiteral("kept.mop"), "something");
        const QString missing = QStringLiteral("/no/such.out");
        LanqorFilesConverter converter(nullptr, missing);
        testSupport::MessageSpy spy(converter);
        QVERIFY(!converter.convertFromOutToMop(kept));
        QCOMPARE(converter.getLastError(), missing + QStringLiteral(" does not exist."));
        QCOMPARE(spy.messages.filter(missing).size(), 1);
        QCOMPARE(testSupport::readAll(kept), QByteArray("something"));

        const QString input = scratchFile(QStringLiteral("in.xyz"), "1\n\nEu 0 0 0\n");
        LanqorFilesConverter onto(nullptr, input);
        QVERIFY(!onto.convertFromOutToXYZ(QString(), false)); // would replace what it reads
        QCOMPARE(testSupport::readAll(input), QByteArray("1\n\nEu 0 0 0\n"));
        QVERIFY(!onto.convertFromOutToMop(QStringLiteral("/no/such/folder/out.mop")));
        QVERIFY(onto.getLastError().contains(QLatin1String("/no/such/folder/out.mop")));
        QVERIFY(!LanqorFilesConverter().convertFromOutToZmt());
    }
};

QTEST_GUILESS_MAIN(TestFilesConverter)
#include "tst_filesconverter.moc"
