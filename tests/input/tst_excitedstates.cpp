#include "TestSupport.h"
#include "input/textFields_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

#include <memory>
#include <random>
#include <utility>

using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

const QString orcaOptimisation = QStringLiteral("orca/eu_tddft_optimisation_v6.out");
const QString orcaPointCharge = QStringLiteral("orca/cis_point_charge_v26.orcout");
const QString gaussianTwoJobs = QStringLiteral("gaussian/eu_td5050_two_jobs_g16.log");
const QString gaussianUnrestricted = QStringLiteral("gaussian/eu_unrestricted_g03.log");
const QString indoSinglets = QStringLiteral("mopac/y_f2_h2co_indo_singlet.out");
const QString indoTriplets = QStringLiteral("mopac/y_f2_h2co_indo_triplet.out");
const QString zindoStates = QStringLiteral("zindo/eu_ci.zin");

using Reader = bool (LanqorInputData::*)();

constexpr Reader allReaders[] = {
    &LanqorInputData::readCoordFromOrcaOutFile,  &LanqorInputData::readOutputOrca,
    &LanqorInputData::readAbsorptionDataOrca,    &LanqorInputData::readMolecularOrbitalOccupancy,
    &LanqorInputData::readOutputGaussian,        &LanqorInputData::readAbsorptionDataGaussian,
    &LanqorInputData::readCoordFromZindoOutFile, &LanqorInputData::readOutputZindo,
    &LanqorInputData::readAbsorptionDataZindo,   &LanqorInputData::readAbsorptionDataMopacIndo};

/// The reader of the program that @p name, of a file or of a case, begins with.
Reader readerOf(const QString &name)
{
    return name.startsWith(QLatin1String("orca"))       ? &LanqorInputData::readOutputOrca
           : name.startsWith(QLatin1String("gaussian")) ? &LanqorInputData::readOutputGaussian
                                                        : &LanqorInputData::readOutputZindo;
}

/// Reads @p bytes as an output of that program.
std::unique_ptr<LanqorInputData> readBytes(const QString &name, const QByteArray &bytes, bool &ok)
{
    const QString path = scratchFile(QStringLiteral("output.out"), bytes);
    auto data = std::make_unique<LanqorInputData>(nullptr, path);
    ok = (data.get()->*readerOf(name))();
    return data;
}

/// Kind, energy in cm^-1 to a tenth, strength and orbital numbers of each state.
QStringList states(const LanqorInputData &data)
{
    QStringList texts;
    const int singlets = data.getSingletStatesCount();
    for (int i = 0; i < singlets + data.getTripletStatesCount(); ++i) {
        const ExcitateState state = i < singlets ? data.getSingletExcitateStateVector(i)
                                                 : data.getTripletExcitateStateVector(i - singlets);
        QString text = QStringLiteral("%1 %2 %3").arg(QLatin1String(i < singlets ? "S" : "T"));
        text = text.arg(state.energy, 0, 'f', 1).arg(state.oscillatorStrength);
        for (const int number : state.configurations)
            text += QLatin1Char(' ') + QString::number(number);
        texts.append(text);
    }
    return texts;
}

QByteArray replaced(QByteArray bytes, const QByteArray &before, const QByteArray &after)
{
    if (!bytes.contains(before))
        qFatal("fixture lacks %s", before.constData());
    return bytes.replace(before, after);
}

} // namespace

class TestExcitedStates : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// The short way of reading plain decimals gives the bits of the general one.
    void numbersAreReadToTheLastBit()
    {
        std::mt19937_64 random(7);
        for (int i = 0; i < 20000; ++i) {
            const int decimals = 1 + static_cast<int>(random() % 9);
            const double value = static_cast<double>(random() % 2000000000ull) / 1e3 - 1e6;
            const QByteArray text = QByteArray::number(value, 'f', decimals);
            bool ok = false;
            const double read =
                textFields::toDouble({text.constData(), std::size_t(text.size())}, &ok);
            QVERIFY2(ok && read == text.toDouble(), text.constData());
        }
        for (const char *text : {"", "-", ".", "1.2.3", "12a.5", "--1.0", "nan", "1e999"}) {
            bool ok = true;
            QCOMPARE(textFields::toDouble(text, &ok), 0.0);
            QVERIFY2(!ok, text);
        }
    }

    /// Steps of an optimisation: the last whole set counts, with its own geometry and orbitals.
    void orcaLastWholeStep()
    {
        LanqorInputData data(nullptr, dataFile(orcaOptimisation));
        testSupport::MessageSpy spy(data);
        QVERIFY(data.readCoordFromOrcaOutFile());
        QVERIFY(data.readOutputOrca());
        QVERIFY(spy.contains(QStringLiteral(" -> (Read Input Data) All data were successfully "
                                            "loaded from the ORCA output file. \n")));
        QCOMPARE(data.getCoord().size(), 3);
        QCOMPARE(data.getAtomLabel(2), QStringLiteral("Eu"));
        QCOMPARE(data.getCoord(1).y, 4.0);
        QVERIFY(data.getIsOrcaTDDFT());

        QCOMPARE(data.getSelExcitateState(), 1);
        // File order is kept, a de-excitation counts, and strengths go by state, not by row, and
        // from the plain table.
        QCOMPARE(states(data), QStringList({QStringLiteral("S 25000.3 0.125 3 4"),
                                            QStringLiteral("S 24000.0 0.25 2 4 3 4"),
                                            QStringLiteral("S 30000.5 0.0625 0 4"),
                                            QStringLiteral("T 18000.2 0 3 7"),
                                            QStringLiteral("T 19500.0 0 3 9")}));
        QCOMPARE(data.getSingletWeights(1), (QVector<double>{0.6, 0.02}));
        QCOMPARE(data.getExcitedStateCount(), 3); // those allowed by spin
        QCOMPARE(data.getEnergyVector(0), 24000.0);
        QCOMPARE(data.getOscForceVector(0), 0.25);

        QCOMPARE(data.getMolecularOrbitalNumber(), 8);
        const MolecularOrbital touching = data.getMolecularOrbitalVector(7);
        QCOMPARE(touching.coefficients, (QVector<double>{2.717131, -11.625625, 131.30264}));
        QCOMPARE(touching.atomNumbers, (QVector<int>{1, 2, 3}));
        QCOMPARE(touching.atomicOrbitals.at(1), QStringLiteral("1f+1"));
    }

    void orcaWithPointCharge()
    {
        LanqorInputData data(nullptr, dataFile(orcaPointCharge));
        QVERIFY(data.readOutputOrca());
        QVERIFY(!data.getIsOrcaTDDFT());
        // Version 2.6: in the spectrum the row of a triplet bears the number of a singlet.
        QCOMPARE(
            states(data),
            QStringList({QStringLiteral("S 25000.0 0.5 2 3"), QStringLiteral("S 26000.0 0.25 0 3"),
                         QStringLiteral("T 18000.0 0 1 2"), QStringLiteral("T 19000.0 0 1 3")}));
        double x = 1.0;
        double y = 1.0;
        double z = 1.0;
        QVERIFY(data.readChargePointFileOrca(x, y, z));
        QCOMPARE(x + y + z, 0.0);
        QVERIFY(data.readMolecularOrbitalOccupancy());
        QCOMPARE(data.getHomoMO(), 1);
        QCOMPARE(data.getLumoMO(), 2);
        QCOMPARE(data.getMolecularOrbitalsOccCount(), 4);
        COMPARE_NEAR(data.getMolecularOrbital(3).energy, 0.2 * 27.21138, 1e-4);

        // Any suffix is replaced, and of several charges the most positive one is the ion.
        const auto charges = [&](const QByteArray &text) {
            scratchFile(QStringLiteral("run.v2.pointcharge"), text);
            LanqorInputData other(nullptr,
                                  scratchFile(QStringLiteral("run.v2.out"), QByteArray("x")));
            const bool ok = other.readChargePointFileOrca(x, y, z);
            return ok ? QString() : other.getLastError();
        };
        QCOMPARE(charges("3\n-1.0 9 9 9\r\n\r\n 3.0 1.5 -2.5 4\r\n2 8 8 8\n"), QString());
        QCOMPARE(QVector<double>({x, y, z}), QVector<double>({1.5, -2.5, 4.0}));
        for (const char *text : {"", "1\n", "1\n3.0 1.0 2.0\n", "1\n3.0 1.0 **** 2.0\n", "x\n"})
            QCOMPARE(charges(text),
                     QStringLiteral("LANQOR could not read the ORCA point charge file."));
        QCOMPARE(x, 1.5); // untouched by a failure
    }

    /// The second job counts, and its table of orbitals, which starts at 99.
    void gaussianLastJob()
    {
        LanqorInputData data(nullptr, dataFile(gaussianTwoJobs));
        testSupport::MessageSpy spy(data);
        QVERIFY(data.readOutputGaussian());
        QVERIFY(spy.contains(QStringLiteral(" -> (Read Input Data) All data were successfully "
                                            "loaded from the Gaussian output file. \n")));
        QCOMPARE(data.getCoord().size(), 3);
        QCOMPARE(data.getAtomLabel(2), QStringLiteral("Eu"));
        QCOMPARE(data.getCoord(1).x, -4.0);
        QCOMPARE(states(data), QStringList({QStringLiteral("S 25003.2 0.25 100 101 100 101"),
                                            QStringLiteral("S 28229.4 0.5 99 102"),
                                            QStringLiteral("S 29036.0 0 100 104"),
                                            QStringLiteral("T 16131.1 0 99 101 100 101"),
                                            QStringLiteral("T 25809.7 0 98 102")}));
        COMPARE_NEAR(data.getSingletEnergy(1), 3.1 * 8065.543937, 1e-9);
        COMPARE_NEAR(data.getSingletWeights(0).at(0), 2 * 0.36, 1e-12);

        QCOMPARE(data.getMolecularOrbitalNumber(), 104);
        for (int index = 0; index < 98; ++index)
            QVERIFY(data.getMolecularOrbitalVector(index).coefficients.isEmpty());
        const MolecularOrbital orbital = data.getMolecularOrbitalVector(102);
        QCOMPARE(orbital.coefficients, (QVector<double>{0.3, 0.1, 0.5, 0.2, 0.7}));
        QCOMPARE(orbital.atomNumbers, (QVector<int>{1, 1, 2, 3, 3}));
        QCOMPARE(orbital.atomicOrbitals.join(QLatin1Char('|')),
                 QStringLiteral("1S|9D 0|22F 0|2PX|4XX"));
        // A coefficient that does not fit its field makes the orbital unknown.
        QVERIFY(data.getMolecularOrbitalVector(103).coefficients.isEmpty());

        LanqorInputData spectrum(nullptr, dataFile(gaussianTwoJobs));
        QVERIFY(spectrum.readAbsorptionDataGaussian());
        QCOMPARE(spectrum.getExcitedStateCount(), 3);
        QVERIFY(spectrum.readAbsorptionDataGaussian()); // appends
        QCOMPARE(spectrum.getExcitedStateCount(), 6);
        QCOMPARE(spectrum.getOscForceVector(4), 0.5);
    }

    void gaussianUnrestrictedReference()
    {
        LanqorInputData data(nullptr, dataFile(gaussianUnrestricted));
        testSupport::MessageSpy spy(data);
        QVERIFY(data.readOutputGaussian());
        QVERIFY(spy.contains(QStringLiteral("1 excited states are called neither singlet nor")));
        QCOMPARE(data.getSelExcitateState(), 0);
        QCOMPARE(states(data), QStringList(QStringLiteral("T 16131.1 0.1 1 2 2 3")));
        QCOMPARE(data.getMolecularOrbitalNumber(), 3); // alpha; the beta table begins anew
        QCOMPARE(data.getMolecularOrbitalVector(0).coefficients, (QVector<double>{1.0, 0.0}));
    }

    void zindoWithStates()
    {
        LanqorInputData data(nullptr, dataFile(zindoStates));
        QVERIFY(data.readCoordFromZindoOutFile());
        QVERIFY(data.readOutputZindo());
        QCOMPARE(data.getCoord().size(), 3);
        QCOMPARE(data.getAtomLabel(1), QStringLiteral("Eu"));
        QCOMPARE(data.getAtomLabel(3), QStringLiteral("N")); // by its atomic number
        QCOMPARE(data.getMolecularOrbitalNumber(), 4);
        QCOMPARE(data.getMolecularOrbitalVector(2).coefficients, (QVector<double>{0.8, -0.6}));
        // The ground state is the first; asterisks and nothing at all read as 0.
        QCOMPARE(states(data),
                 QStringList({QStringLiteral("S 0.0 0"), QStringLiteral("S 25000.5 0.125 2 3 1 3"),
                              QStringLiteral("S 31000.0 0 2 4"), QStringLiteral("T 0.0 0"),
                              QStringLiteral("T 18000.5 0 1 4"), QStringLiteral("T 19000.0 0")}));

        LanqorInputData spectrum(nullptr, dataFile(zindoStates));
        QVERIFY(spectrum.readAbsorptionDataZindo());
        QCOMPARE(spectrum.getExcitedStateCount(), 3);
        QCOMPARE(spectrum.getEnergyVector(2), 31000.0);
        QCOMPARE(spectrum.getOscForceVector(2), 0.0);
    }

    /// Wavenumbers by the constants of the program, orbitals of d functions, states without row 1.
    void mopacIndoPair()
    {
        LanqorInputData data(nullptr, dataFile(indoSinglets));
        QCOMPARE(data.detectProgram(), LanqorInputData::MopacIndoOutput);
        QVERIFY(data.readOutputMopacIndo(dataFile(indoSinglets), dataFile(indoTriplets)));
        QCOMPARE(data.getCoord().size(), 7);
        QCOMPARE(data.getCoord(3).x, -2.1);
        QCOMPARE(states(data).mid(0, 6).join(QLatin1Char('|')),
                 "S 32461.9 0 14 15|S 68755.9 0.004041 14 16 13 16|S 70570.0 0.005385 14 16 13 16|"
                 "S 70613.4 0.000102 13 15 11 15|T 29850.4 0 14 15|T 68473.2 0 14 16 13 16");
        QCOMPARE(data.getSingletCoefficients(1), (QVector<double>{0.97540626, -0.20138011}));
        QCOMPARE(data.getSingletWeights(1), (QVector<double>{0.95141736, 0.04055395}));
        QCOMPARE(data.getHomoMO(), 14);
        QCOMPARE(data.getMolecularOrbitalNumber(), 27);
        const MolecularOrbital orbital = data.getMolecularOrbitalVector(0);
        QCOMPARE(orbital.atomicOrbitals.mid(3, 3).join(QLatin1Char(' ')), "PZ Z2 X2");
        QCOMPARE(data.getMolecularOrbital(13).occupancy, 2.0);
        QCOMPARE(data.getExcitedStateCount(), 4);
        LanqorInputData alone(nullptr, dataFile(indoTriplets));
        QVERIFY(alone.readExcitedStates(LanqorInputData::MopacIndoOutput));
        QCOMPARE(alone.getSingletStatesCount() + alone.getSelExcitateState(), 0);
        QCOMPARE(alone.getTripletStatesCount(), 4);
    }

    /// Refused jobs end "normally", and two jobs that do not belong together look alike.
    void mopacIndoRefusals()
    {
        const QByteArray singlets = readAll(dataFile(indoSinglets));
        const QByteArray triplets = readAll(dataFile(indoTriplets));
        const auto error = [&](const QByteArray &second) {
            LanqorInputData data(nullptr, QString());
            const bool ok = data.readOutputMopacIndo(scratchFile(QStringLiteral("s.out"), singlets),
                                                     scratchFile(QStringLiteral("t.out"), second));
            return ok ? QString() : data.getLastError();
        };
        const auto changed = [&](const char *before, const char *after) {
            return error(replaced(triplets, before, after));
        };
        const QByteArray refused =
            "  INDO CALCULATION RESULTS\n *  Error and normal termination messages *\n *   *\n"
            " *  Data are not available for Europium. *\n * JOB ENDED NORMALLY *\n";
        const std::pair<QString, const char *> cases[] = {
            {error(refused), "\"Data are not available for Europium.\""},
            {error(singlets), "holds singlets, where triplets are wanted"},
            {error(readAll(dataFile(zindoStates))), "no output of an INDO job"},
            {changed("-2.10000000", "-2.10010000"), "atom 3 (Angstrom) is F -2.10000"},
            {changed("WRTCONF =  0.1", "WRTCONF =  0.2"), "WRTCONF"},
            {changed("INTO orbs  15 to  18", "INTO orbs  15 to  19"), "other orbitals"},
            {changed(" SINGLE excitations", " DOUBLE excitations"), "CISD"},
            {changed("Config       1   1.0", "Config       2   1.0"), "below it"},
            {error(triplets.left(triplets.lastIndexOf(" Total coeff"))), "cut off"},
            {changed("NO. OF DOUBLY OCCUPIED LEVELS", "NO. OF ALPHA ELECTRONS"), "open shell"}};
        for (const auto &refusal : cases)
            QVERIFY2(refusal.first.contains(QLatin1String(refusal.second)),
                     qPrintable(refusal.first));
    }

    void failuresKeepWhatWasRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("missing");
        QTest::addColumn<QVector<int>>("counts"); // of orbitals, singlets, triplets
        const QByteArray orca = readAll(dataFile(orcaPointCharge));
        const QByteArray gaussian = readAll(dataFile(gaussianTwoJobs));
        const QByteArray zindo = readAll(dataFile(zindoStates));
        const auto row = [](const char *name, const QByteArray &bytes, const char *missing,
                            const QVector<int> &counts) {
            QTest::newRow(name) << bytes << QString::fromLatin1(missing) << counts;
        };
        row("orca, localized orbitals only",
            replaced(orca, "\nMOLECULAR ORBITALS\n", "\nLOCALIZED MOLECULAR ORBITAL\n"), "",
            {0, 2, 2});
        row("orca, a row of orbitals lost",
            replaced(orca, "  1N   1pz        0.000000", "  1N   1pz  0.000000 x"), "", {0, 2, 2});
        row("orca, an orbital of a number that would take all memory",
            replaced(orca, "         2         3\n", "         2 999999999\n"), "", {0, 2, 2});
        row("orca, kind of the states not printed",
            replaced(orca, "CIS-EXCITED STATES (SINGLETS)", "CIS-EXCITED STATES"), "SINGLET states",
            {4, 0, 2});
        row("orca, an energy not readable",
            replaced(replaced(orca, "3.224 eV", "***** eV"), "26000.0 cm", "******* cm"),
            "SINGLET states", {4, 1, 2});
        row("orca, no triplets",
            replaced(orca, "CIS EXCITED STATES (TRIPLETS)", "CIS EXCITED STATES"), "TRIPLET states",
            {4, 2, 0});
        row("orca, cut in the triplets", orca.left(orca.indexOf("1a ->   3a")), "TRIPLET states",
            {4, 2, 2});
        row("orca, no spectrum", replaced(orca, " ABSORPTION SPECTRUM\n", " SPECTRUM\n"),
            "absorption spectrum data", {4, 2, 2});
        row("gaussian, no list", gaussian.left(gaussian.indexOf(" Excitation energies")),
            "excited states", {0, 0, 0});
        const int lastTable = gaussian.lastIndexOf("     Molecular Orbital");
        const int lastBlock = gaussian.indexOf("       104\n", lastTable);
        row("gaussian, cut in the orbitals", gaussian.left(gaussian.indexOf("   4 3", lastBlock)),
            "", {103, 3, 2});
        row("gaussian, an orbital of a number that would take all memory",
            QByteArray(gaussian).replace(lastBlock, 10, " 888888888"), "", {103, 3, 2});
        row("gaussian, natural orbitals",
            QByteArray(gaussian).replace(lastTable, 22, "     Natural Orbital C"), "", {0, 3, 2});
        row("gaussian, orbitals of another structure",
            QByteArray(gaussian).replace(gaussian.lastIndexOf("2.000000"), 8, "2.500000"), "",
            {0, 3, 2});
        row("gaussian, alpha orbitals damaged: no beta ones instead",
            replaced(readAll(dataFile(gaussianUnrestricted)), "1.00000   0.60000", "x.00000   0.6"),
            "", {0, 0, 1});
        row("zindo, no orbitals", replaced(zindo, "RHF/ROHF - MOs follow", "UHF"), "", {0, 3, 3});
        row("zindo, no singlets", replaced(zindo, "SINGLETS", "S"), "SINGLET states", {4, 0, 3});
        row("zindo, no triplets", replaced(zindo, "TRIPLETS", "T"), "TRIPLET states", {4, 6, 0});
        row("zindo, cut in the triplets", zindo.left(zindo.indexOf(" SUMMARY")).chopped(40),
            "TRIPLET states", {4, 3, 3});
    }

    /// The messages name the list of states that is missing, or else the orbitals.
    void failuresKeepWhatWasRead()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, missing);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        bool ok = true;
        const auto data = readBytes(name, bytes, ok);
        QVERIFY(!ok);
        const QString program = name.left(name.indexOf(QLatin1Char(','))).toUpper();
        QCOMPARE(
            data->getLastError(),
            missing.isEmpty()
                ? QStringLiteral("LANQOR could not read the molecular orbitals from the %1 "
                                 "output file: \n")
                      .arg(program == QLatin1String("ZINDO") ? QStringLiteral("Zindo") : program)
                : QStringLiteral("There has been an error during read of the %1 from the %2 "
                                 "output file. \n")
                      .arg(missing, program));
        const QVector<int> counts = {data->getMolecularOrbitalNumber(),
                                     data->getSingletStatesCount(), data->getTripletStatesCount()};
        QTEST(counts, "counts");
    }

    void otherFailures()
    {
        for (const Reader reader : allReaders) {
            LanqorInputData missing(nullptr, QStringLiteral("/no/such/file"));
            QVERIFY(!(missing.*reader)());
            QCOMPARE(missing.getLastError(), QStringLiteral("/no/such/file does not exist."));
        }
        const QString path = scratchFile(QStringLiteral("empty.out"), QByteArray("\n\n"));
        QCOMPARE(LanqorInputData::detectProgram(path), LanqorInputData::UnknownOutput);
        const std::pair<Reader, QString> messages[] = {
            {&LanqorInputData::readMolecularOrbitalOccupancy,
             QStringLiteral("\nCannot find the molecular orbitals in the desired ORCA output file: "
                            "\n%1\nCheck the file to identify the possible errors.")},
            {&LanqorInputData::readCoordFromOrcaOutFile,
             QStringLiteral("\nCannot find the cartesian coordinates from the desired .out file: "
                            "\n%1\nCheck the file to identify the possible errors.")},
            {&LanqorInputData::readCoordFromZindoOutFile,
             QStringLiteral("There has been an error during read in cartesian coordinates from the "
                            "desired Zindo output file (.zin): \n%1")},
            {&LanqorInputData::readAbsorptionDataZindo,
             QStringLiteral("There has been an error during read of the absorption spectrum data "
                            "from the ZINDO output file. \n")}};
        for (const auto &message : messages) {
            LanqorInputData data(nullptr, path);
            QVERIFY(!(data.*message.first)());
            QCOMPARE(data.getLastError(),
                     QString(message.second).replace(QLatin1String("%1"), path));
        }
    }

    /// States without a list of triplets, and lists whose usual end is missing.
    void variants()
    {
        bool ok = false;
        const QByteArray gaussian = readAll(dataFile(gaussianTwoJobs));
        auto data = readBytes(gaussianTwoJobs, replaced(gaussian, "Triplet", "Singlet"), ok);
        QVERIFY(ok);
        QCOMPARE(data->getTripletStatesCount(), 0);
        QCOMPARE(data->getSingletStatesCount(), 5);

        // Steps of an optimisation in Gaussian 03: the geometry of the next one ends a list.
        QByteArray steps = gaussian;
        const int end = steps.indexOf(" SavETr:");
        steps.remove(end, steps.indexOf(" Entering Link 1") - end);
        data = readBytes(gaussianTwoJobs, steps, ok);
        QVERIFY(ok);
        QCOMPARE(data->getSingletStatesCount(), 3);
        QCOMPARE(data->getCoord(1).x, -4.0);

        QByteArray orca = readAll(dataFile(orcaPointCharge));
        orca.insert(orca.indexOf("\n\n", orca.indexOf(" ABSORPTION SPECTRUM\n")), "\n-------");
        data = readBytes(orcaPointCharge, orca, ok);
        QVERIFY2(ok, qPrintable(data->getLastError()));
        QCOMPARE(data->getSingletExcitateStateVector(1).oscillatorStrength, 0.25);
    }

    void damagedFilesReturnCleanly()
    {
        const auto readAllWays = [](const QString &path) {
            for (const Reader reader : allReaders) {
                LanqorInputData data(nullptr, path);
                if (!(data.*reader)() && data.getLastError().isEmpty())
                    QFAIL("failed without a reason");
            }
            LanqorInputData::detectProgram(path);
            LanqorInputData indo(nullptr, path);
            if (!indo.readExcitedStates(LanqorInputData::MopacIndoOutput) &&
                indo.getLastError().isEmpty())
                QFAIL("failed without a reason");
        };
        for (const QString &file : {orcaOptimisation, orcaPointCharge, gaussianTwoJobs,
                                    gaussianUnrestricted, zindoStates, indoTriplets})
            testSupport::damageFile(readAll(dataFile(file)), 150, 400, readAllWays);
    }
};

QTEST_APPLESS_MAIN(TestExcitedStates)
#include "tst_excitedstates.moc"
