#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QLocale>
#include <QtTest>

#include <algorithm>
#include <cmath>

using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

/// A reading of a MOPAC output.
struct Reading : LanqorInputData
{
    explicit Reading(const QString &path, bool keepTv = false)
        : LanqorInputData(nullptr, path)
        , ok(readMopacOutFile(keepTv))
    {
        for (int i = 0; i < getAtomicChargesCount(); ++i)
            charges.append(getAtomicCharges(i));
    }

    bool ok;
    QVector<double> charges;
};

Reading readText(const QByteArray &text, bool keepTv = false)
{
    return Reading(scratchFile(QStringLiteral("job.out"), text), keepTv);
}

/// Path of the file that readText() reads.
QString jobPath()
{
    return scratchFile(QStringLiteral("job.out"), QByteArray());
}

/// @p text with every @p before replaced.
QByteArray changed(QByteArray text, const char *before, const QByteArray &after)
{
    return text.replace(before, after);
}

} // namespace

/// The europium oxide ion of tests/data/mopac/layouts, as a whole and in parts.
class TestMopac : public QObject
{
    Q_OBJECT

    const QByteArray whole = readAll(dataFile(QStringLiteral("mopac/layouts/mopac22.out")));
    const QByteArray head = part("", "          FINAL HEAT");
    const QByteArray heat = part("          FINAL HEAT", "   ATOM   CHEMICAL");
    const QByteArray final =
        part("                             CARTESIAN", "              NET ATOMIC");
    const QByteArray results = part("              NET ATOMIC", " TOTAL JOB TIME");
    const QByteArray start = part("          CARTESIAN COORDINATES \n", "          FINAL HEAT");
    const QByteArray singlePointHead =
        changed(head, " *  AM1 ", " *  1SCF       - DO 1 SCF AND THEN STOP \n *  AM1 ");
    const QByteArray forceHead = changed(singlePointHead, "1SCF", "FORCE");

    /// What stands from the first occurrence of @p first up to the next of @p behind.
    QByteArray part(const char *first, const char *behind) const
    {
        const int from = whole.indexOf(first);
        return whole.mid(from, whole.indexOf(behind, from) - from);
    }

    static void compareWhole(const Reading &reading)
    {
        QVERIFY2(reading.ok && reading.getLastError().isEmpty(),
                 qPrintable(reading.getLastError()));
        QCOMPARE(reading.getCoord().size(), 2);
        QCOMPARE(reading.getCoord(1).label, QStringLiteral("Eu"));
        QCOMPARE(reading.getCoord(2).x, 1.9);
        QCOMPARE(reading.charges, (QVector<double>{3.0, -2.0}));
        QCOMPARE(reading.getFinalHeat(), -175.21231);
        QCOMPARE(reading.getIonPotential(), 15.257254);
        QCOMPARE(reading.getDipole(), 0.943);
        QCOMPARE(reading.getChargeOnSystem(), 1.0);
    }

private Q_SLOTS:
    void failuresHaveTheirTexts()
    {
        const auto detected = [](const char *what) {
            return QStringLiteral(
                       "\nThe following error was detected in the MOPAC output file: %1 \n")
                .arg(QLatin1String(what));
        };
        const QString notSelfConsistent = detected("UNABLE TO ACHIEVE SELF-CONSISTENCE.");
        const QString dumped = detected("THE CALCULATION IS BEING DUMPED TO DISK.");
        const QString noGeometry =
            QStringLiteral("\nCannot find the %2cartesian coordinates from the desired .out file: "
                           "\n%1\nCheck the file to identify the possible errors.")
                .arg(jobPath());
        const QString noStart = noGeometry.arg(QString());
        const QString noFinal = noGeometry.arg(QStringLiteral("optimized "));
        const QString noDipole = QStringLiteral("\nThere has been an error during read in dipole.");
        const QPair<QByteArray, QString> cases[] = {
            {whole + " \"\"\"UNABLE TO ACHIEVE SELF-CONSISTENCE\n", notSelfConsistent},
            {head + "\"\"UNABLE TO ACHIEVE SELF-CONSISTENCE, JOB CONTINUING\n" + whole,
             notSelfConsistent},
            {head + " - THE CALCULATION IS BEING DUMPED TO DISK\n" + final, dumped},
            {head + "  ++++----**** FAILED TO ACHIEVE SCF. ****----++++\n",
             detected("++++----**** FAILED TO ACHIEVE SCF. ****----++++.")},
            {head + "THE CALCULATION IS BEING DUMPED TO DISK\nUNABLE TO ACHIEVE SELF-CONSISTENCE\n",
             dumped},
            {head + "  No parameters read in from 'other.inp'\n",
             detected("No parameters read in from spk.inp")},
            {singlePointHead + "           Data are not available for Iron.\n *** \n"
                               " *     Error and normal termination messages reported *\n *  *\n"
                               " * Data are not available for Iron.  *\n * Second line *\n"
                               " * JOB ENDED NORMALLY *\n *  *\n",
             detected("Data are not available for Iron. / Second line") + jobPath()},
            {singlePointHead + " DATA ARE NOT AVAILABLE FOR ELEMENT NO.26\n",
             detected("DATA ARE NOT AVAILABLE FOR ELEMENT NO.26") + jobPath()},
            {head + " Data are not available for Iron.\n", noFinal},
            {QByteArray(), noStart},
            {head.left(head.indexOf("          CARTESIAN")) + heat, noStart},
            {singlePointHead.left(singlePointHead.size() - 30), noStart},
            {head + heat + results, noFinal},
            {changed(whole, "   2    O        1.900000000     0.000000000     0.000000000\n", ""),
             noFinal},
            {changed(whole, "1.900000000", "***********"), noFinal},
            {changed(whole, "1.900000000     0.0", "1.900000000-10000.0"), noFinal},
            {whole + head + heat, noFinal},
            {whole + head + heat + final.left(final.size() - 20), noFinal},
            {changed(whole, "     0.943", "    ******"), noDipole},
            {changed(whole, " SUM ", "     "), noDipole},
        };
        for (const auto &[text, message] : cases) {
            const Reading reading = readText(text);
            QVERIFY2(!reading.ok, text);
            QVERIFY2(reading.getLastError() == message, qPrintable(reading.getLastError()));
            if (text.startsWith(whole)) { // what was read before stays
                QCOMPARE(reading.getFinalHeat(), -175.21231);
                QCOMPARE(reading.charges.size(), 2);
                QVERIFY(!reading.getCoord().isEmpty());
            }
        }
    }

    void missingFilesAndSecondReadings()
    {
        LanqorInputData data(nullptr, scratchFile(QStringLiteral("job.out"), whole));
        QVERIFY(!data.readForceConstant(QStringLiteral("/nowhere.out"), 1));
        QCOMPARE(data.getLastError(), QStringLiteral("/nowhere.out does not exist."));
        QVERIFY(data.readMopacOutFile(false) && data.readMopacOutFile(false));
        QCOMPARE(data.getCoord().size(), 4); // a second reading appends
        QCOMPARE(data.getAtomicChargesCount(), 4);
    }

    void layoutsOfTheVersions()
    {
        const QString opening = QStringLiteral("MOPAC Program Reference\n\n");
        const QPair<QString, QString> citations[] = {
            {QStringLiteral("mopac7.out"), QString()},
            {QStringLiteral("mopac2002.out"), QString()},
            {QStringLiteral("mopac2012.out"),
             opening + "MOPAC2012, James J. P. Stewart, Stewart Computational Chemistry, Version "
                       "12.151M web: HTTP://OpenMOPAC.net"},
            {QStringLiteral("mopac2012_two_works.out"),
             opening + "MOPAC2012, James J. P. Stewart, Version 14.208M AND (b) Maia, J.D.C., et "
                       "al., J. Chem. Theory Comput. 2012, 8, 3072-3081. DOI: "
                       "10.1021/ct3004645."},
            {QStringLiteral("mopac2016_no_days.out"),
             opening + "MOPAC2016, Version: 21.298M, web-site: HTTP://OpenMOPAC.net."},
            {QStringLiteral("mopac22.out"),
             opening + "MOPAC v22.0.6 Digital Object Identifier (DOI): 10.5281/zenodo.6511958"}};
        for (const auto &[name, citation] : citations) {
            const QByteArray text = readAll(dataFile(QStringLiteral("mopac/layouts/") + name));
            for (const QByteArray &job : {text, text + text}) { // a second job replaces the first
                const Reading reading = readText(job);
                compareWhole(reading);
                QCOMPARE(reading.getMopacCitation(), citation);
            }
            QLocale::setDefault(QLocale(QLocale::German));
            compareWhole(readText(text));
            QLocale::setDefault(QLocale::c());
        }
    }

    void citationWithoutAnEnd()
    {
        const Reading reading = readText(" ** Cite this work as: MOPAC2012\n" +
                                         QByteArray(" ** word **\n").repeated(40) + whole);
        compareWhole(reading);
        QCOMPARE(reading.getMopacCitation(),
                 QStringLiteral("MOPAC Program Reference\n\nMOPAC2012") +
                     QStringLiteral(" word").repeated(19));
    }

    void variationsOfOneLayout()
    {
        QByteArray earlier = whole;
        for (const char *value : {"-175.21231", "15.257254", "0.943", "1.900000000", "-2.000000 "})
            earlier.replace(value, QByteArray(value).replace(1, 1, "7"));
        const QByteArray texts[] = {
            changed(whole, "\n", "\r\n"),
            changed(whole, "KCAL/MOL =    -733.08829", "KCAL/MOL =  -733088.29"),
            changed(whole, "CHARGE ON SYSTEM = +1", "") + "  COMPUTED CHARGE ON SYSTEM: +1\n",
            whole + "          SUM =        225.58630 KCAL/MOL = FINAL HEAT OF FORMATION\n",
            whole + changed(forceHead, "1.8000", "1.7000") +
                "   FORCE CONSTANT IN CARTESIAN COORDINATES (Millidynes/A)\n\n"
                "      2       O   5.365997   0.205668   0.205668\n",
            earlier + whole,                                         // values of a later job count
            whole + changed(forceHead, "CHARGE ON SYSTEM = +1", ""), // none for that geometry
            changed(earlier, "SYSTEM = +1", "SYSTEM = -3") + whole,
            head.left(head.indexOf("          CARTESIAN")) + heat + final + results, // NOXYZ
            whole + " ROTATION MATRIX FOR ORIENTATION OF MOLECULE:\n\n" +            // POLAR
                changed(start, "1.8000", "1.1000"),
            head + heat + final +
                changed(changed(changed(results, "NO.   TYPE", "NO.                 TYPE"), " Eu  ",
                                " Eu(HETATM    1 EU   MOH A   1) "),
                        " O  ", " O(HETATM    2  O   MOH A   1) "),
            changed(head, "AM1 CALCULATION RESULTS", "") + heat + results +
                "   CALCULATION RESULTS\n" + final,
            (head + heat + results + final).trimmed()};
        for (const QByteArray &text : texts)
            compareWhole(readText(text));
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
            const Reading reading =
                readText(changed(head, "CHARGE=1\n", QByteArray("CHARGE=1 ") + keyword + '\n'));
            QVERIFY2(reading.ok == served, keyword);
            QCOMPARE(reading.getCoord(2).x, 1.8);
        }
    }

    void translationVectors()
    {
        const QByteArray text =
            head + heat + final.trimmed() + "\n   3   Tv   13.000000000  0.0  0.0\n\n" + results;
        compareWhole(readText(text));
        const Reading kept = readText(text, true);
        QCOMPARE(kept.getCoord().size(), 3);
        QCOMPARE(kept.getCoord(3).x, 13.0);
        // MOPAC 22 prints them in the echo of the input alone, there in the form of the input.
        const QByteArray echo =
            "   ATOM   CHEMICAL          X               Y               Z\n"
            "  NUMBER   SYMBOL      (ANGSTROMS)     (ANGSTROMS)     (ANGSTROMS)\n\n"
            "     1      Eu          0.10000000  *   0.00000000  *   0.00000000  *\n"
            "     2       O          1.90000000  *   0.00000000  *   0.00000000  *\n"
            "     3      Tv         11.00000000  *   0.00000000      2.00000000   \n\n";
        const QByteArray internal =
            "    ATOM   CHEMICAL  BOND LENGTH    BOND ANGLE     TWIST ANGLE\n"
            "   NUMBER  SYMBOL    (ANGSTROMS)     (DEGREES)      (DEGREES)\n"
            "    (I)                  NA:I          NB:NA:I      NC:NB:NA:I     NA   NB   NC\n"
            "     1      Eu          0.00000000       0.0000000       0.0000000        0     0     "
            "0\n"
            "     2       O          1.80000000  *    0.0000000       0.0000000        1     0     "
            "0\n"
            "     3      Tv         11.00000000  *   90.0000000       0.0000000        1     2     "
            "0\n\n";
        for (const auto &[table, x, y] :
             {std::make_tuple(echo, 11.0, 0.0), std::make_tuple(internal, 0.0, 11.0)}) {
            const QByteArray job = head + heat + table + final + results;
            compareWhole(readText(job));
            const Reading periodic = readText(job, true);
            QCOMPARE(periodic.getCoord().size(), 3);
            COMPARE_NEAR(periodic.getCoord(3).x, x, 1e-9);
            COMPARE_NEAR(periodic.getCoord(3).y, y, 1e-9);
        }
    }

    void doubtsAreTold()
    {
        const QByteArray charges = results.left(results.indexOf("    2 "));
        const QByteArray dipole = results.mid(results.indexOf(" DIPOLE   "));
        const QByteArray odd = "     UHF CALCULATION, NO. OF ALPHA ELECTRONS =    5\n"
                               "                      NO. OF BETA  ELECTRONS =    4\n";
        const QPair<QByteArray, const char *> cases[] = {
            {forceHead, "neither a heat of formation nor atomic charges"},
            {head + heat + final + charges + dipole, "the charges of 1 of its 2 atoms"},
            {head + heat + final, "the charges of 0 of its 2 atoms"},
            {head + odd + heat + final + results, "(unpaired electrons: 1)"},
            {whole + "   NO. OF SINGLY OCCUPIED LEVELS =    1\n", "the charge of the system, 1."},
            {whole + singlePointHead + "  Parameters for some elements are missing\n",
             "of the last job of this output: \"Parameters for"},
            {changed(head + odd + heat + final + results, "Eu ", "Y  "), nullptr},
            {head + changed(odd, "5", "4") + heat + final + results, nullptr},
            {odd + whole, nullptr}};
        for (const auto &[text, doubt] : cases) {
            LanqorInputData data(nullptr, scratchFile(QStringLiteral("job.out"), text));
            testSupport::MessageSpy spy(data);
            QVERIFY2(data.readMopacOutFile(false), text);
            QVERIFY2(spy.messages.size() == (doubt ? 2 : 1), doubt);
            QVERIFY2(!doubt || spy.contains(QLatin1String(doubt)), qPrintable(spy.messages.last()));
        }
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
        LanqorInputData data(
            nullptr, scratchFile(QStringLiteral("job.out"), head + heat + table + final + results));
        QVERIFY(data.readMopacOutFile(false));
        QCOMPARE(data.getCoordZMT(1).label, QStringLiteral("Eu"));
        const CoordZMT carbon = data.getCoordZMT(4);
        QCOMPARE(carbon.distance, 1.41258);
        QCOMPARE(carbon.angle, 120.94462);
        QCOMPARE(carbon.dihedral, 7.13728);
        QCOMPARE(
            QVector<int>({data.getCoordZMT(2).na, data.getCoordZMT(2).nb, data.getCoordZMT(3).na,
                          data.getCoordZMT(3).nb, carbon.na, carbon.nb, carbon.nc}),
            QVector<int>({1, 0, 2, 1, 3, 2, 1}));
    }

    void forceConstants()
    {
        const QByteArray title = "           FORCE MATRIX IN MILLIDYNES/ANGSTROM\n\n\n";
        const QByteArray columns = "                 Eu  1       O  2       O  3\n ----------\n";
        const QByteArray rows = "    Eu    1  15.897903\n     O    2   2.810755  15.289968\n"
                                "     O    3   2.825294   0.898453  15.386498\n";
        const QByteArray matrix = title + columns + rows;
        const QByteArray lastRow = "     O    3";
        const QPair<QByteArray, bool> matrices[] = {
            {matrix, true},                         // 22
            {title + "0\n" + columns + rows, true}, // 7, with zeros
            {changed(matrix, lastRow, "\n\n" + columns + lastRow),
             true},                                         // title repeated on a new page
            {changed(matrix, "2.8", "9.8") + matrix, true}, // two matrices, the last counts
            {matrix.trimmed(), true}, // end of the file behind the last number
            {matrix.left(matrix.indexOf("2.825294") + 4), false}, // cut in the number
            {changed(matrix, "     O    2   2.810755  15.289968\n", ""), false}, // row missing
            {changed(matrix, "2.825294", "********"), false},                    // overflow
            {title + columns + "    Eu    1  15.897903\n\n     O  2     O  3\n" + rows,
             false},                                              // next columns too early
            {"ISOTOPE  - FORCE MATRIX WRITTEN TO DISK\n", false}, // none
        };
        for (const auto &[text, readable] : matrices) {
            const QString path = scratchFile(QStringLiteral("force.out"), whole + text);
            LanqorInputData data(nullptr, QString());
            QVERIFY2(data.readForceConstant(path, 2) == readable, text);
            QCOMPARE(data.getForceConstantsCount(), readable ? 2 : 0);
            if (readable) {
                QCOMPARE(data.getForceConstant(0), 2.810755);
                QCOMPARE(data.getForceConstant(1), 2.825294);
            }
            QVERIFY(!data.readForceConstant(path, 0));
            QVERIFY(!data.readForceConstant(path, 3));
            QCOMPARE(data.getLastError(), QStringLiteral("There has been an error during read in "
                                                         "force constant from Mopac output."));
        }
    }

    void cutAnywhere_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("step");
        QTest::newRow("22, made by hand") << whole << 1;
        QTest::newRow("single point, made by hand")
            << singlePointHead + heat +
                   changed(changed(final, "0.1000", "0.0000"), "1.9000", "1.8000") + results
            << 1;
        QTest::newRow("NOXYZ, made by hand")
            << head.left(head.indexOf("          CARTESIAN")) + heat + final + results << 1;
        QTest::newRow("force job behind, made by hand")
            << whole + changed(forceHead, "1.8000", "1.9000") << 1;
        for (const char *name : {"eu_cl6_pm7_1scf_disp.out", "eu_cl6_pm7_force_only.out",
                                 "eu_cl2_h2o6_am1_int.out", "eu_h2o_pm7_open_shell.out"})
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
            QCOMPARE(cut.ok, cut.getLastError().isEmpty());
            if (!cut.ok)
                continue;
            ++read;
            QVERIFY2(isRight(cut.getFinalHeat(), complete.getFinalHeat()) &&
                         isRight(cut.getIonPotential(), complete.getIonPotential()) &&
                         isRight(cut.getDipole(), complete.getDipole()) &&
                         cut.getChargeOnSystem() == complete.getChargeOnSystem() &&
                         (cut.charges.isEmpty() || cut.charges == complete.charges),
                     qPrintable(QStringLiteral("cut at %1").arg(length)));
            QCOMPARE(cut.getCoord().size(), complete.getCoord().size());
            for (int i = 1; i <= cut.getCoord().size(); ++i) {
                QCOMPARE(cut.getCoord(i).label, complete.getCoord(i).label);
                // The starting block of a single point has four decimals.
                COMPARE_NEAR(cut.getCoord(i).x, complete.getCoord(i).x, 6e-5);
                COMPARE_NEAR(cut.getCoord(i).y, complete.getCoord(i).y, 6e-5);
                COMPARE_NEAR(cut.getCoord(i).z, complete.getCoord(i).z, 6e-5);
            }
        }
        QVERIFY(read > 0);
    }

    void damagedFilesAreReadOrRefused()
    {
        const auto readAllOf = [](const QString &path) {
            Reading reading(path, true);
            QCOMPARE(reading.ok, reading.getLastError().isEmpty());
            reading.createSphericalCoordinate();
            reading.readForceConstant(path, 6);
        };
        for (const char *name :
             {"mopac/eu_cl6_pm7_1scf_disp.out", "mopac/eu_cl2_h2o6_am1_int.out",
              "mopac/eu_cl6_pm7_force_only.out", "mopac/eu_h2o_pm7_open_shell.out",
              "regress/mopac_citation_ends_the_file.out"}) {
            const QString file = dataFile(QLatin1String(name));
            readAllOf(file);
            testSupport::damageFile(readAll(file), 200, 1500, readAllOf);
        }
    }

    void hostileFiles()
    {
        const QPair<QByteArray, bool> texts[] = {
            {head + QByteArray(10000000, 'x') + '\n' + heat + final, true},
            {head + heat + final.left(final.size() - 2) + QByteArray(10000000, '9'), false},
            {head + QByteArray(5000, '\0') + '\n' + heat + final, true},
            {head + heat + changed(final, "1.900000", QByteArray("1.9\0\0\0\0\0", 8)), false},
            {head + QByteArray("  ATOM NO.   TYPE\n").repeated(50000) +
                 QByteArray("   SYMBOL (ANGSTROMS)\n").repeated(50000) +
                 QByteArray(" CARTESIAN COORDINATES\n").repeated(50000),
             false}};
        for (const auto &[text, ok] : texts) {
            const Reading reading = readText(text);
            QCOMPARE(reading.ok, ok);
            QCOMPARE(reading.getLastError().isEmpty(), ok);
        }
    }
};

QTEST_GUILESS_MAIN(TestMopac)
#include "tst_mopac.moc"
