#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QDir>
#include <QLocale>
#include <QtTest>

#include <algorithm>
#include <cmath>

using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

/// Everything that a MOPAC output gives.
struct Reading
{
    bool ok = false;
    QString error;
    QVector<Coord> atoms;
    QVector<double> charges;
    double heat = 0.0;
    double ionPotential = 0.0;
    double dipole = 0.0;
    double charge = 0.0;
    QString citation;
};

Reading read(const QString &path, bool keepTv = false)
{
    LanqorInputData data(nullptr, path);
    Reading reading;
    reading.ok = data.readMopacOutFile(keepTv);
    reading.error = data.getLastError();
    reading.atoms = data.getCoord();
    for (int i = 0; i < data.getAtomicChargesCount(); ++i)
        reading.charges.append(data.getAtomicCharges(i));
    reading.heat = data.getFinalHeat();
    reading.ionPotential = data.getIonPotential();
    reading.dipole = data.getDipole();
    reading.charge = data.getChargeOnSystem();
    reading.citation = data.getMopacCitation();
    return reading;
}

Reading readText(const QByteArray &text, bool keepTv = false)
{
    return read(scratchFile(QStringLiteral("job.out"), text), keepTv);
}

/// Path of the file that readText() reads.
QString jobPath()
{
    return scratchFile(QStringLiteral("job.out"), QByteArray());
}

/// @p text with every @p before replaced.
QByteArray changed(QByteArray text, const char *before, const char *after)
{
    return text.replace(before, after);
}

// Blocks as the versions print them, for the two atoms of a europium oxide ion.

const QByteArray titleBox = " ****************************************\n"
                            " **            MOPAC v22.0.6           **\n"
                            " ****************************************\n\n"
                            "                              AM1 CALCULATION RESULTS\n\n";
const QByteArray keywords = " ****************************************\n"
                            " *  AM1        - The AM1 Hamiltonian to be used\n"
                            " *                 CHARGE ON SYSTEM = +1\n"
                            " ****************************************\n"
                            "AM1 SPARKLE XYZ CHARGE=1\n oxoeuropium(III) cation\n\n";
const QByteArray singlePointKeywords = QByteArray(keywords).replace(
    " *  AM1        - The", " *  1SCF       - DO 1 SCF AND THEN STOP \n *  AM1        - The");
const QByteArray echo = "   ATOM   CHEMICAL          X               Y               Z\n"
                        "  NUMBER   SYMBOL      (ANGSTROMS)     (ANGSTROMS)     (ANGSTROMS)\n \n"
                        "     1      Eu          0.00000000  *   0.00000000  *   0.00000000  *\n"
                        "     2       O          1.80000000  *   0.00000000  *   0.00000000  *\n\n";
const QByteArray start = "          CARTESIAN COORDINATES \n\n"
                         "    NO.       ATOM         X         Y         Z\n\n"
                         "     1        Eu        0.0000    0.0000    0.0000\n"
                         "     2         O        1.8000    0.0000    0.0000\n\n";
const QByteArray heat =
    "          FINAL HEAT OF FORMATION =       -175.21231 KCAL/MOL =    -733.08829 KJ/MOL\n\n"
    "          IONIZATION POTENTIAL    =         15.257254 EV\n";
const QByteArray final = "                             CARTESIAN COORDINATES\n\n"
                         "   1   Eu        0.100000000     0.000000000     0.000000000\n"
                         "   2    O        1.900000000     0.000000000     0.000000000\n\n";
const QByteArray charges =
    "              NET ATOMIC CHARGES AND DIPOLE CONTRIBUTIONS\n\n"
    "  ATOM NO.   TYPE          CHARGE      No. of ELECS.   s-Pop       p-Pop       \n"
    "    1         Eu           3.000000        0.0000\n"
    "    2          O          -2.000000        8.0000     2.00000     6.00000\n";
const QByteArray dipole = " DIPOLE           X         Y         Z       TOTAL\n"
                          " POINT-CHG.    -0.859    -0.138     0.000     0.870\n"
                          " HYBRID         1.790     0.287     0.000     1.813\n"
                          " SUM            0.931     0.150     0.000     0.943\n\n";
const QByteArray end = "\n TOTAL JOB TIME:             0.14 SECONDS\n\n == MOPAC DONE ==\n";
const QByteArray head = titleBox + keywords + echo + start;
const QByteArray whole = head + heat + echo + final + charges + dipole + end;

} // namespace

class TestMopac : public QObject
{
    Q_OBJECT

    static void compareWhole(const Reading &reading)
    {
        QVERIFY2(reading.ok, qPrintable(reading.error));
        QVERIFY(reading.error.isEmpty());
        QCOMPARE(reading.atoms.size(), 2);
        QCOMPARE(reading.atoms.at(0).label, QStringLiteral("Eu"));
        QCOMPARE(reading.atoms.at(1).x, 1.9);
        QCOMPARE(reading.charges, (QVector<double>{3.0, -2.0}));
        QCOMPARE(reading.heat, -175.21231);
        QCOMPARE(reading.ionPotential, 15.257254);
        QCOMPARE(reading.dipole, 0.943);
        QCOMPARE(reading.charge, 1.0);
    }

private Q_SLOTS:
    void failuresHaveTheirTexts_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        const auto detected = [](const char *tag, const QByteArray &text, const char *what) {
            QTest::newRow(tag) << text
                               << QStringLiteral("\nThe following error was detected in the MOPAC "
                                                 "output file: ") +
                                      QLatin1String(what) + QStringLiteral(" \n");
        };
        const auto lacks = [](const char *tag, const QByteArray &text, const char *what) {
            QTest::newRow(tag) << text
                               << QStringLiteral("\nCannot find the %1cartesian coordinates from "
                                                 "the desired .out file: \n%2\nCheck the file to "
                                                 "identify the possible errors.")
                                      .arg(QLatin1String(what), jobPath());
        };
        const auto noDipole =
            [](const char *tag, const QByteArray &text) {
                QTest::newRow(tag)
                    << text << QStringLiteral("\nThere has been an error during read in dipole.");
            };
        const char notSelfConsistent[] = "UNABLE TO ACHIEVE SELF-CONSISTENCE.";
        const char dumped[] = "THE CALCULATION IS BEING DUMPED TO DISK.";
        detected("not self-consistent", whole + " \"\"\"UNABLE TO ACHIEVE SELF-CONSISTENCE\n",
                 notSelfConsistent);
        detected("not self-consistent, went on",
                 head + "\"\"UNABLE TO ACHIEVE SELF-CONSISTENCE, JOB CONTINUING\n" + whole,
                 notSelfConsistent);
        detected("dumped", head + " - THE CALCULATION IS BEING DUMPED TO DISK\n" + final, dumped);
        detected("failed", head + "  ++++----**** FAILED TO ACHIEVE SCF. ****----++++\n",
                 "++++----**** FAILED TO ACHIEVE SCF. ****----++++.");
        detected("two texts, the first counts",
                 head + "THE CALCULATION IS BEING DUMPED TO DISK\nUNABLE TO ACHIEVE "
                        "SELF-CONSISTENCE\n",
                 dumped);
        detected("no parameters", head + "  No parameters read in from 'other.inp'\n",
                 "No parameters read in from spk.inp");
        lacks("nothing", QByteArray(), "");
        lacks("no geometry", titleBox + keywords + heat, "");
        lacks("single point with an incomplete geometry",
              titleBox + singlePointKeywords + echo + start.left(start.size() - 30), "");
        lacks("no final geometry", head + heat + charges + dipole + end, "optimized ");
        lacks("final block with fewer atoms",
              changed(whole, "   2    O        1.900000000     0.000000000     0.000000000\n", ""),
              "optimized ");
        lacks("field of the final block overflown", changed(whole, "1.900000000", "***********"),
              "optimized ");
        lacks("columns of the final block grown together",
              changed(whole, "1.900000000     0.0", "1.900000000-10000.0"), "optimized ");
        lacks("second optimisation unfinished", whole + head + heat, "optimized ");
        lacks("second optimisation cut", whole + head + heat + final.left(final.size() - 20),
              "optimized ");
        noDipole("dipole unreadable", changed(whole, "     0.943", "    ******"));
        noDipole("dipole without a sum", changed(whole, " SUM ", "     "));
    }

    void failuresHaveTheirTexts()
    {
        QFETCH(QByteArray, text);
        const Reading reading = readText(text);
        QVERIFY(!reading.ok);
        QTEST(reading.error, "message");
        if (text.startsWith(whole)) { // what was read before stays
            QCOMPARE(reading.heat, -175.21231);
            QCOMPARE(reading.charges.size(), 2);
            QVERIFY(!reading.atoms.isEmpty());
        }
    }

    void missingFilesAndSecondReadings()
    {
        QCOMPARE(read(QStringLiteral("/nowhere.out")).error,
                 QStringLiteral("/nowhere.out does not exist."));
        QVERIFY(read(QDir::tempPath()).error.endsWith(QStringLiteral(" does not exist.")));
        LanqorInputData data(nullptr, scratchFile(QStringLiteral("job.out"), whole));
        QVERIFY(!data.readForceConstant(QStringLiteral("/nowhere.out"), 1));
        QCOMPARE(data.getLastError(), QStringLiteral("/nowhere.out does not exist."));
        QVERIFY(data.readMopacOutFile(false) && data.readMopacOutFile(false));
        QCOMPARE(data.getCoord().size(), 4); // a second reading appends
        QCOMPARE(data.getAtomicChargesCount(), 4);
    }

    void layoutsOfTheVersions_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray oldFinal =
            QByteArray(start)
                .replace("0.0000    0.0000    0.0000\n     2", "0.1000    0.0000    0.0000\n     2")
                .replace("1.8000", "1.9000");
        QTest::newRow("22") << whole;
        QTest::newRow("2012: geometry behind the dipole, wide charge on system")
            << QByteArray(head).replace("= +1", "=     1") + heat + charges + dipole + oldFinal +
                   " TOTAL CPU TIME:             0.01 SECONDS\n";
        QTest::newRow("2002: KCAL =, no EV, no results title, atom tags")
            << QByteArray(head + heat + charges + dipole + oldFinal)
                   .replace("                              AM1 CALCULATION RESULTS\n", "")
                   .replace("KCAL/MOL =    -733.08829 KJ/MOL", "KCAL =       -733.08829 KJ")
                   .replace(" EV\n", "\n")
                   .replace(" O          1.8", " O(  1)     1.8");
        QTest::newRow("7: KCAL alone, text at the end of the starting block, short charge rows")
            << QByteArray(head + " == symtrz.f SYMAN1 ==\n" + heat + charges + dipole + oldFinal)
                   .replace("1.8000    0.0000    0.0000\n\n == sym",
                            "1.8000    0.0000    0.0000\n == sym")
                   .replace("KCAL/MOL =    -733.08829 KJ/MOL", "KCAL")
                   .replace(" EV\n", "\n")
                   .replace("  No. of ELECS.   s-Pop       p-Pop       ",
                            "  ATOM  ELECTRON DENSITY")
                   .replace("8.0000     2.00000     6.00000", "8.0000");
        QTest::newRow("CR LF") << QByteArray(whole).replace("\n", "\r\n");
        QTest::newRow("large heat in joules")
            << QByteArray(whole).replace("KCAL/MOL =    -733.08829", "KCAL/MOL =  -733088.29");
        QTest::newRow("charge on system behind the geometry")
            << changed(whole, "CHARGE ON SYSTEM = +1", "") + "  COMPUTED CHARGE ON SYSTEM: +1\n";
        QTest::newRow("words of the heat without a value")
            << whole + "          SUM =        225.58630 KCAL/MOL = FINAL HEAT OF FORMATION\n";
        QTest::newRow("force job behind")
            << whole +
                   QByteArray(head)
                       .replace(" *  AM1 ", " *  FORCE      - FORCE CALCULATION SPECIFIED\n *  "
                                            "AM1 ")
                       .replace("1.8000", "1.7000") +
                   "   FORCE CONSTANT IN CARTESIAN COORDINATES (Millidynes/A)\n\n"
                   "      2       O   5.365997   0.205668   0.205668\n";
        QTest::newRow("earlier job with other values")
            << QByteArray(whole)
                       .replace("-175.21231", "-100.00000")
                       .replace("15.257254", "11.000000")
                       .replace("0.943", "9.999")
                       .replace("1.900000000", "2.900000000")
                       .replace("-2.000000 ", "-1.000000 ") +
                   whole;
        QTest::newRow("results title only behind the starting geometry")
            << QByteArray(head).replace("AM1 CALCULATION RESULTS", "") + heat + charges + dipole +
                   "   CALCULATION RESULTS\n" + final;
        QTest::newRow("end of the file behind the last number")
            << (head + heat + charges + dipole + final).trimmed();
    }

    void layoutsOfTheVersions()
    {
        QFETCH(QByteArray, text);
        compareWhole(readText(text));
        QLocale::setDefault(QLocale(QLocale::German));
        compareWhole(readText(text));
        QLocale::setDefault(QLocale::c());
    }

    /// Without a final block the first serves jobs that do not optimise, as their keywords tell.
    void jobsAtAGivenGeometry()
    {
        const QPair<const char *, bool> cases[] = {
            {"GNORM=0.1", false}, {"1SCF", true},
            {"0SCF", true},       {"force", true},
            {"FORCETS", true},    {"THERMO(298,400)", true},
            {"+\n 1SCF", true},   {"\n a FORCE field start", false}};
        for (const auto &[keyword, served] : cases) {
            const Reading reading = readText(
                QByteArray(head).replace("CHARGE=1\n", QByteArray("CHARGE=1 ") + keyword + '\n'));
            QVERIFY2(reading.ok == served, keyword);
            QCOMPARE(reading.atoms.at(1).x, 1.8);
        }
    }

    void translationVectors()
    {
        const QByteArray text = QByteArray(whole).replace(
            "1.900000000     0.000000000     0.000000000\n",
            "1.900000000     0.000000000     0.000000000\n"
            "   3   Tv       13.000000000     0.000000000     0.000000000\n");
        compareWhole(readText(text));
        const Reading kept = readText(text, true);
        QCOMPARE(kept.atoms.size(), 3);
        QCOMPARE(kept.atoms.at(2).x, 13.0);
    }

    void zMatrixWithMissingValues()
    {
        const QByteArray table =
            "    ATOM   CHEMICAL  BOND LENGTH    BOND ANGLE     TWIST ANGLE\n"
            "   NUMBER  SYMBOL    (ANGSTROMS)     (DEGREES)      (DEGREES)\n"
            "    (I)                  NA:I          NB:NA:I      NC:NB:NA:I     NA   NB   NC\n\n"
            "      1      Eu      \n"
            "      2      O         2.55767  *                                  1\n"
            "      3      C         1.25876  *      87.94270  *                 2    1\n"
            "      4      C         1.41258  *     120.94462  *    7.13728  *   3    2    1\n\n";
        LanqorInputData data(nullptr, scratchFile(QStringLiteral("job.out"),
                                                  head + heat + table + final + charges + dipole));
        QVERIFY(data.readMopacOutFile(false));
        QCOMPARE(data.getCoordZMT(1).label, QStringLiteral("Eu"));
        QCOMPARE(data.getCoordZMT(2).distance, 2.55767);
        QCOMPARE(data.getCoordZMT(2).na, 1);
        QCOMPARE(data.getCoordZMT(3).angle, 87.9427);
        QCOMPARE(data.getCoordZMT(3).nb, 1);
        QCOMPARE(data.getCoordZMT(4).dihedral, 7.13728);
        QCOMPARE(data.getCoordZMT(4).nc, 1);
    }

    void citations_data()
    {
        QTest::addColumn<QByteArray>("box");
        QTest::addColumn<QString>("citation");
        const QByteArray rule = ' ' + QByteArray(79, '*') + '\n';
        const QString opening = QStringLiteral("MOPAC Program Reference\n\n");
        QTest::newRow("2012, one line")
            << rule +
                   " ** Cite this work as: MOPAC2012, James J. P. Stewart, Stewart Computational "
                   " **\n ** Chemistry, Version 12.151M web: HTTP://OpenMOPAC.net  Days remaining: "
                   "  0 **\n" +
                   rule
            << opening + "MOPAC2012, James J. P. Stewart, Stewart Computational Chemistry, Version "
                         "12.151M web: HTTP://OpenMOPAC.net";
        QTest::newRow("2012, two works")
            << rule +
                   " ** Cite this work as:              **\n **             **\n"
                   " ** (a) MOPAC2012, James J. P. Stewart,      **\n"
                   " **  Version 14.208M         Days remaining:   0    **\n"
                   " ** (b) Maia, J.D.C., et al. **\n" +
                   rule
            << opening + "MOPAC2012, James J. P. Stewart, Version 14.208M";
        QTest::newRow("2016, no days")
            << rule +
                   " ** Cite this program as: MOPAC2016, Version: 21.298M,   **\n"
                   " **                  web-site: HTTP://OpenMOPAC.net.            **\n" +
                   rule + " **   MOPAC2016   **\n" + rule
            << opening + "MOPAC2016, Version: 21.298M, web-site: HTTP://OpenMOPAC.net.";
        QTest::newRow("no end of the box")
            << " ** Cite this work as: MOPAC2012\n" + QByteArray(" ** word **\n").repeated(40)
            << opening + "MOPAC2012" + QStringLiteral(" word").repeated(19);
        QTest::newRow("22") << QByteArray() << QString();
    }

    void citations()
    {
        QFETCH(QByteArray, box);
        const Reading reading = readText(box + whole);
        compareWhole(reading);
        QTEST(reading.citation, "citation");
        QCOMPARE(readText(box + whole + box + whole).citation, reading.citation);
    }

    void forceConstants_data()
    {
        QTest::addColumn<QByteArray>("matrix");
        QTest::addColumn<bool>("readable");
        const QByteArray title = "           FORCE MATRIX IN MILLIDYNES/ANGSTROM\n\n\n";
        const QByteArray columns = "                 Eu  1       O  2       O  3\n ----------\n";
        const QByteArray rows = "    Eu    1  15.897903\n     O    2   2.810755  15.289968\n"
                                "     O    3   2.825294   0.898453  15.386498\n";
        const QByteArray matrix = title + columns + rows;
        QTest::newRow("22") << matrix << true;
        QTest::newRow("7, with zeros") << title + "0\n" + columns + rows << true;
        QTest::newRow("title repeated on a new page")
            << matrix.left(matrix.indexOf("     O    3")) + "\n\n" + columns +
                   matrix.mid(matrix.indexOf("     O    3"))
            << true;
        QTest::newRow("two matrices, the last counts")
            << changed(matrix, "2.8", "9.8") + matrix << true;
        QTest::newRow("end of the file behind the last number") << matrix.trimmed() << true;
        QTest::newRow("cut in the number") << matrix.left(matrix.indexOf("2.825294") + 4) << false;
        QTest::newRow("row missing")
            << changed(matrix, "     O    2   2.810755  15.289968\n", "") << false;
        QTest::newRow("overflow") << changed(matrix, "2.825294", "********") << false;
        QTest::newRow("next columns too early")
            << title + columns + "    Eu    1  15.897903\n\n     O  2     O  3\n" + rows << false;
        QTest::newRow("none") << QByteArray("ISOTOPE  - FORCE MATRIX WRITTEN TO DISK\n") << false;
    }

    void forceConstants()
    {
        QFETCH(QByteArray, matrix);
        QFETCH(bool, readable);
        const QString path = scratchFile(QStringLiteral("force.out"), whole + matrix);
        LanqorInputData data(nullptr, QString());
        QCOMPARE(data.readForceConstant(path, 2), readable);
        QCOMPARE(data.getForceConstantsCount(), readable ? 2 : 0);
        if (readable) {
            QCOMPARE(data.getForceConstant(0), 2.810755);
            QCOMPARE(data.getForceConstant(1), 2.825294);
        }
        QVERIFY(!data.readForceConstant(path, 0));
        QVERIFY(!data.readForceConstant(path, 3));
        QCOMPARE(data.getLastError(), QStringLiteral("There has been an error during read in force "
                                                     "constant from Mopac output."));
    }

    void cutAnywhere_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("step");
        QTest::newRow("22, made by hand") << whole << 1;
        QTest::newRow("single point, made by hand")
            << titleBox + singlePointKeywords + echo + start + heat +
                   changed(changed(final, "0.1000", "0.0000"), "1.9000", "1.8000") + charges +
                   dipole
            << 1;
        QTest::newRow("force job behind, made by hand")
            << whole + titleBox + changed(singlePointKeywords, "1SCF", "FORCE") + echo +
                   changed(start, "1.8000", "1.9000")
            << 1;
        for (const char *name :
             {"eu_cl6_pm7_1scf_disp.out", "eu_cl6_pm7_force_only.out", "eu_cl2_h2o6_am1_int.out"})
            QTest::newRow(name) << readAll(dataFile(QStringLiteral("mopac/") + QLatin1String(name)))
                                << 3;
    }

    /// Whatever byte a file is cut at: a failure, or values of the whole file.
    void cutAnywhere()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, step);
        const Reading complete = readText(text);
        QVERIFY(complete.ok);
        const auto isRight = [](double value, double expected) {
            return value == expected || value == 0.0;
        };
        int read = 0;
        for (int length = 0; length < text.size(); length += step) {
            const Reading cut = readText(text.left(length));
            QCOMPARE(cut.ok, cut.error.isEmpty());
            if (!cut.ok)
                continue;
            ++read;
            QVERIFY2(isRight(cut.heat, complete.heat) &&
                         isRight(cut.ionPotential, complete.ionPotential) &&
                         isRight(cut.dipole, complete.dipole) && cut.charge == complete.charge &&
                         (cut.charges.isEmpty() || cut.charges == complete.charges),
                     qPrintable(QStringLiteral("cut at %1").arg(length)));
            QCOMPARE(cut.atoms.size(), complete.atoms.size());
            for (int i = 0; i < cut.atoms.size(); ++i) {
                QCOMPARE(cut.atoms.at(i).label, complete.atoms.at(i).label);
                // The starting block of a single point has four decimals.
                COMPARE_NEAR(cut.atoms.at(i).x, complete.atoms.at(i).x, 6e-5);
                COMPARE_NEAR(cut.atoms.at(i).y, complete.atoms.at(i).y, 6e-5);
                COMPARE_NEAR(cut.atoms.at(i).z, complete.atoms.at(i).z, 6e-5);
            }
        }
        QVERIFY(read > 0);
    }

    void damagedFilesAreReadOrRefused_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *name :
             {"mopac/eu_cl6_pm7_1scf_disp.out", "mopac/eu_cl2_h2o6_am1_int.out",
              "mopac/eu_cl6_pm7_force_only.out", "regress/mopac_citation_ends_the_file.out"})
            QTest::newRow(name) << dataFile(QLatin1String(name));
    }

    void damagedFilesAreReadOrRefused()
    {
        QFETCH(QString, file);
        const auto readAllOf = [](const QString &path) {
            LanqorInputData data(nullptr, path);
            const bool ok = data.readMopacOutFile(true);
            QCOMPARE(ok, data.getLastError().isEmpty());
            data.createSphericalCoordinate();
            data.readForceConstant(path, 6);
        };
        readAllOf(file);
        testSupport::damageFile(readAll(file), 200, 1500, readAllOf);
    }

    void hostileFiles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("ok");
        QTest::newRow("line of 10 MB")
            << head + QByteArray(10000000, 'x') + '\n' + heat + final << true;
        QTest::newRow("10 MB in a row of the geometry")
            << head + heat + final.left(final.size() - 2) + QByteArray(10000000, '9') << false;
        QTest::newRow("NUL bytes") << head + QByteArray(5000, '\0') + '\n' + heat + final << true;
        QTest::newRow("NUL bytes in a number")
            << head + heat +
                   QByteArray(final).replace("1.900000000", QByteArray("1.9\0\0\0\0\0\0\0", 10))
            << false;
        QTest::newRow("tables without end")
            << head + QByteArray("  ATOM NO.   TYPE\n").repeated(50000) +
                   QByteArray("   SYMBOL (ANGSTROMS)\n").repeated(50000) +
                   QByteArray(" CARTESIAN COORDINATES\n").repeated(50000)
            << false;
    }

    void hostileFiles()
    {
        QFETCH(QByteArray, text);
        const Reading reading = readText(text);
        QTEST(reading.ok, "ok");
        QCOMPARE(reading.error.isEmpty(), reading.ok);
    }
};

QTEST_GUILESS_MAIN(TestMopac)
#include "tst_mopac.moc"
