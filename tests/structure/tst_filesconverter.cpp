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

    // Jobs of excited states, run by MOPAC, are a pair for their reader; the ion has become
    // yttrium.
    void indoJobsAreReadAsAPair()
    {
        const QString mopac = QStandardPaths::findExecutable(QStringLiteral("mopac"));
        if (mopac.isEmpty())
            QSKIP("needs MOPAC");
        write("eu.xyz", "7\n\nEu 0 0 0\nO 2.35 0 0\nF -2.1 0.1 0\nF 0 2.15 0\nC 3.56 0 0\n"
                        "H 4.14 0.935 0\nH 4.14 -0.935 0\n");
        LanqorFilesConverter converter(nullptr, path("eu.xyz"));
        converter.setCharge(1);
        QVERIFY(converter.convertFromOutToMopIndo(path("indo.mop"), 3));
        for (const char *job : {"indo_singlet.mop", "indo_triplet.mop"})
            QVERIFY(runInFolder(mopac, {QLatin1String(job)}, folder.path()).isDone);
        LanqorInputData states(nullptr, path("indo_singlet.out"));
        QVERIFY2(states.readOutputMopacIndo(path("indo_singlet.out"), path("indo_triplet.out")),
                 qPrintable(states.getLastError()));
        QCOMPARE(states.getSingletStatesCount() + states.getTripletStatesCount(), 6);
        QCOMPARE(states.getAtomLabel(1), QStringLiteral("Y"));
        QVERIFY(!converter.convertFromOutToMopIndo(path("indo.mop"), 0));
    }

    // The job for a QDC fit, run by MOPAC, is what the fit reads.
    void qdcJobIsReadByTheFit()
    {
        const QString mopac = QStandardPaths::findExecutable(QStringLiteral("mopac"));
        if (mopac.isEmpty())
            QSKIP("needs MOPAC");
        const QString file =
            scratchFile(QStringLiteral("small.xyz"), "5\n\nEu 0 0 0\nCl 2.6 0 0\nO 0 2.4 0\n"
                                                     "H 0.76 2.95 0\nH -0.76 2.95 0\n");
        LanqorFilesConverter converter(nullptr, file);
        converter.setMopacMethod(QStringLiteral("RM1"));
        converter.setMopacJobForQdcFit(true);
        converter.setExtraMopacKeywords(QStringLiteral("SPARKLE CHARGE=2 THREADS=1"));
        QVERIFY(converter.convertFromOutToMop(path("qdc.mop")));
        const RunResult run = runInFolder(mopac, {QStringLiteral("qdc.mop")}, folder.path());
        QVERIFY2(run.isDone, qPrintable(run.output));
        const testSupport::ProgramRun fit = testSupport::runProgram(
            {QStringLiteral("fit"), QStringLiteral("qdc"), QStringLiteral("qdc.out"),
             QStringLiteral("--omega2"), QStringLiteral("5"), QStringLiteral("--omega4"),
             QStringLiteral("5"), QStringLiteral("--points"), QStringLiteral("20"),
             QStringLiteral("--print"), QStringLiteral("all")},
            folder.path());
        QVERIFY2(fit.exitStatus == 0, qPrintable(fit.error));
        converter.setMopacMethod(QStringLiteral("PM5"));
        QVERIFY(!converter.convertFromOutToMop(path("qdc.mop")));
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
            QVERIFY(!converter.convertFromOutToGjf(path("an ion.gjf")));
            QVERIFY(converter.getLastError().contains(QLatin1String("%chk=an ion.chk")));
            // Ten electrons of water oxide's oxygen, none of the ion's.
            QCOMPARE(LanqorFilesConverter::electronCount(atomsOf(file), 1).value_or(-1), 10);
        }
        const QString water = scratchFile(QStringLiteral("water.xyz"), "1\n\nO 0 0 0\n");
        LanqorFilesConverter converter(nullptr, water);
        QVERIFY(!converter.convertFromOutToGjf(path("water.gjf")));
        QVERIFY(converter.getLastError().contains(QLatin1String("lanthanide")));
        QVERIFY(!QFileInfo::exists(path("water.gjf")));
    }

    void zindoJobNeedsABasisAndTheFilledLevels()
    {
        QByteArray bytes = testSupport::readAll(dataFile(chlorideComplex));
        const QByteArray caesium = QByteArray(bytes).replace("Cl", "Cs"); // the first without
        LanqorFilesConverter heavy(nullptr, scratchFile(QStringLiteral("heavy.out"), caesium));
        QVERIFY(!heavy.convertFromOutToInp(path("none.inp")));
        QVERIFY(heavy.getLastError().contains(QLatin1String("INDO/S basis")));
        bytes.replace("NO. OF FILLED LEVELS", "NO. OF EMPTY LEVELS ");
        LanqorFilesConverter without(nullptr, scratchFile(QStringLiteral("nolevels.out"), bytes));
        QVERIFY(!without.convertFromOutToInp(path("none.inp")));
        QCOMPARE(without.getLastError(),
                 QStringLiteral("NO. OF FILLED LEVELS was not find in mopac output"));
        QVERIFY(!QFileInfo::exists(path("none.inp")));
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

        const QByteArray cutMark = "*Only the first 1 virtual orbitals were printed.\n";
        QVERIFY(!spy.contains(QStringLiteral("empty orbitals only")));
        write("ligand.orcout", orcaOutput(orbitals + cutMark));
        LanqorFilesConverter cut(nullptr, path("ligand.orcout"));
        testSupport::MessageSpy cutSpy(cut);
        QVERIFY(cut.convertFromOutToInpOrca(path("next.orcinp"), true, true, 0, 10, 5));
        QVERIFY(cutSpy.contains(QStringLiteral("first 1 empty orbitals only")));

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

    // A structure that was read already is not read again.
    void givenStructure()
    {
        const QString file = scratchFile(QStringLiteral("given.xyz"), "2\n\nEu 0 0 0\nO 0 0 2.4\n");
        LanqorInputData structure(nullptr, file);
        QVERIFY(structure.readStructureFile());
        scratchFile(QStringLiteral("given.xyz"), "changed meanwhile");
        LanqorFilesConverter converter(nullptr, &structure);
        QVERIFY(converter.convertToXYZ(path("given.xyz"), false));
        QVERIFY(difference(atomsOf(path("given.xyz")), structure.getCoord()) < 1e-9);
        LanqorInputData *none = nullptr;
        QVERIFY(!LanqorFilesConverter(nullptr, none).convertFromOutToMop(path("null.mop")));
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
