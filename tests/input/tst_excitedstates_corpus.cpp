#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

#include <numeric>

using Program = LanqorInputData::ProgramType;

namespace {

constexpr double wavenumberPerEv = 8065.543937;

/// A coefficient looked up in a file by eye.
struct Coefficient
{
    int orbital; // index in the list
    int row;
    int atom;
    const char *label;
    double value;
};

/// What a file holds, looked up in the file.
struct Facts
{
    const char *file;
    Program program;
    const char *failure; // part of the message; empty for success
    int atoms;
    const char *firstLabel;
    double firstX; // of the geometry that belongs to the states
    int orbitals;
    int singlets;
    int triplets;
    double singletEnergy; // of the first, cm^-1
    double tripletEnergy;
    int strongState; // a singlet and its oscillator strength
    double strength;
    QVector<int> firstConfigurations; // of the first singlet, its beginning
    int firstTripletExcitations;
    QVector<Coefficient> coefficients;
};

const QVector<Facts> &allFacts()
{
    static const QVector<Facts> facts = {
        {"orca/orca42_zindos_ligand_s25_t25.out",
         Program::OrcaOutput,
         "",
         92,
         "N",
         -0.0232,
         284,
         25,
         25,
         31107.7,
         21009.9,
         7,
         1.116555234,
         {149, 158, 150, 156},
         11,
         {{0, 0, 1, "1s", 0.000588}, {3, 0, 1, "1s", 0.222703}, {1, 4, 2, "1s", -0.053200}}},
        {"orca/orca60_so2_tda_soc_s5_t5.out",
         Program::OrcaOutput,
         "",
         3,
         "S",
         0.0,
         31,
         5,
         5,
         21850.1,
         15020.0,
         3,
         0.053643904,
         {15, 16},
         1,
         {{0, 0, 1, "1s", -0.997488}, {1, 13, 2, "1s", 0.995241}, {7, 0, 1, "1s", -0.047319}}},
        {"orca/orca50_divinylbenzene_tda_s5_t5.out",
         Program::OrcaOutput,
         "",
         20,
         "C",
         0.0,
         60,
         5,
         5,
         43166.7,
         25241.0,
         2,
         1.171011871,
         {33, 35, 34, 36},
         4,
         {{0, 0, 1, "1s", -0.699272}, {5, 10, 3, "1s", -0.422302}}},
        {"orca/orca42_tddft_full_no_mos_s2_t2.out",
         Program::OrcaOutput,
         "LANQOR could not read the molecular orbitals",
         13,
         "",
         0.0,
         0,
         2,
         2,
         39322.7,
         27898.5,
         1,
         0.040478,
         {28, 29},
         4,
         {}},
        {"orca/orca30_benzene_uks_glued_mos.out",
         Program::OrcaOutput,
         "SINGLET states",
         12,
         "C",
         0.0,
         66,
         0,
         0,
         0.0,
         0.0,
         0,
         0.0,
         {},
         0,
         {{65, 14, 2, "3s", -11.625625}, {64, 14, 2, "3s", 2.717131}, {5, 0, 1, "1s", 0.439056}}},
        {"orca/orca61_eu_complex_uks_no_states.out",
         Program::OrcaOutput,
         "LANQOR could not read the molecular orbitals",
         49,
         "Eu",
         9.401109,
         0,
         0,
         0,
         0.0,
         0.0,
         0,
         0.0,
         {},
         0,
         {}},
        {"gaussian/g16_ch2o_td5050_popfull.log",
         Program::GaussianOutput,
         "",
         4,
         "C",
         -0.131829,
         50,
         5,
         5,
         4.0289 * wavenumberPerEv,
         3.3528 * wavenumberPerEv,
         2,
         0.1118,
         {3, 23, 3, 33},
         57,
         {{0, 19, 2, "1S", 0.43531}, {0, 14, 1, "9D 0", -0.00023}, {1, 1, 1, "2S", 0.60891}}},
        {"gaussian/g09_benzene_tda_opt_popregular.log",
         Program::GaussianOutput,
         "",
         12,
         "C",
         -0.711329,
         26,
         20,
         0,
         5.4086 * wavenumberPerEv,
         0.0,
         4,
         0.8885,
         {20, 22, 21, 23},
         0,
         {{16, 4, 1, "2PZ", 0.21955}, {17, 0, 1, "1S", 0.00252}, {20, 8, 1, "3PZ", 0.22833}}},
        {"gaussian/g09_opt_then_zindo_s15_glued_arrows.log",
         Program::GaussianOutput,
         "LANQOR could not read the molecular orbitals",
         54,
         "C",
         14.798203,
         0,
         15,
         0,
         2.0353 * wavenumberPerEv,
         0.0,
         1,
         2.4970,
         {103, 108, 104, 107, 105, 106},
         0,
         {}},
        {"gaussian/g03_co_td5050_no_savetr.log",
         Program::GaussianOutput,
         "LANQOR could not read the molecular orbitals",
         2,
         "C",
         0.0,
         0,
         12,
         12,
         8.4709 * wavenumberPerEv,
         5.7616 * wavenumberPerEv,
         12,
         0.2277,
         {7, 8, 7, 9},
         3,
         {}},
        {"gaussian/g16_h2o_cis5050_natural_orbitals.log",
         Program::GaussianOutput,
         "LANQOR could not read the molecular orbitals",
         3,
         "O",
         0.0,
         0,
         4,
         6,
         12.2266 * wavenumberPerEv,
         10.1773 * wavenumberPerEv,
         3,
         0.0735,
         {5, 6},
         1,
         {}},
        {"gaussian/g09_mo_table_1128_functions_excerpt.log",
         Program::GaussianOutput,
         "error during read of the excited states",
         0,
         "",
         0.0,
         5,
         0,
         0,
         0.0,
         0.0,
         0,
         0.0,
         {},
         0,
         {{1, 0, 1, "1S", 0.47278},
          {4, 1127, 71, "19D-2", -0.00010},
          {4, 28, 1, "17PX", -0.01947},
          {2, 996, 57, "1S", 0.00004}}},
        {"zindo/zindo99_naphthalene_rhf_no_ci.out",
         Program::ZindoOutput,
         "SINGLET states",
         18,
         "C",
         0.6295,
         48,
         0,
         0,
         0.0,
         0.0,
         0,
         0.0,
         {},
         0,
         {{0, 0, 10, "2s", -0.422}, {2, 1, 13, "2s", 0.344}, {5, 0, 10, "2p(z)", -0.257}}},
    };
    return facts;
}

bool readFile(LanqorInputData &data, Program program)
{
    if (program == Program::GaussianOutput)
        return data.readOutputGaussian();
    if (program == Program::OrcaOutput)
        return data.readCoordFromOrcaOutFile() && data.readOutputOrca();
    return data.readCoordFromZindoOutFile() && data.readOutputZindo();
}

} // namespace

/// Real outputs of ORCA 3.0 to 6.1, Gaussian 03 to 16 and ZINDO 99.1, none of them committed.
class TestExcitedStatesCorpus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void factsOfEveryOutput_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < allFacts().size(); ++i)
            QTest::newRow(allFacts().at(i).file) << i;
    }

    void factsOfEveryOutput()
    {
        QFETCH(const int, index);
        const Facts &facts = allFacts().at(index);
        const QString path = testSupport::corpusFile(QString::fromLatin1(facts.file));
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        QCOMPARE(LanqorInputData::detectProgram(path), facts.program);
        LanqorInputData data(nullptr, path);
        const bool ok = readFile(data, facts.program);
        QVERIFY2(ok == (*facts.failure == '\0') &&
                     data.getLastError().contains(QLatin1String(facts.failure)),
                 qPrintable(data.getLastError()));

        QCOMPARE(data.getCoord().size(), facts.atoms);
        if (*facts.firstLabel)
            QCOMPARE(data.getAtomLabel(1), QString::fromLatin1(facts.firstLabel));
        if (facts.firstX != 0.0)
            QCOMPARE(data.getCoord(1).x, facts.firstX);
        QCOMPARE(data.getMolecularOrbitalNumber(), facts.orbitals);
        for (const Coefficient &fact : facts.coefficients) {
            const MolecularOrbital orbital = data.getMolecularOrbitalVector(fact.orbital);
            QCOMPARE(orbital.coefficients.at(fact.row), fact.value);
            QCOMPARE(orbital.atomNumbers.at(fact.row), fact.atom);
            QCOMPARE(orbital.atomicOrbitals.at(fact.row), QString::fromLatin1(fact.label));
        }
        QCOMPARE(data.getSingletStatesCount(), facts.singlets);
        QCOMPARE(data.getTripletStatesCount(), facts.triplets);
        if (facts.singlets > 0) {
            COMPARE_NEAR(data.getSingletEnergy(1), facts.singletEnergy, 1e-6);
            COMPARE_NEAR(
                data.getSingletExcitateStateVector(facts.strongState - 1).oscillatorStrength,
                facts.strength, 1e-6);
            QCOMPARE(data.getSingletExcitateStateVector(0).configurations.mid(
                         0, facts.firstConfigurations.size()),
                     facts.firstConfigurations);
        }
        if (facts.triplets > 0) {
            COMPARE_NEAR(data.getTripletEnergy(1), facts.tripletEnergy, 1e-6);
            QCOMPARE(data.getTripletExcitateStateVector(0).configurations.size(),
                     2 * facts.firstTripletExcitations);
        }
    }

    /// Orbitals of a minimal valence basis without overlap are normalised.
    void orcaOrbitalsAreNormalised()
    {
        CORPUS_FILE(path, "orca/orca42_zindos_ligand_s25_t25.out");
        LanqorInputData data(nullptr, path);
        QVERIFY(data.readOutputOrca());
        for (int i = 0; i < data.getMolecularOrbitalNumber(); ++i) {
            const QVector<double> c = data.getMolecularOrbitalVector(i).coefficients;
            QCOMPARE(c.size(), 284);
            COMPARE_NEAR(std::inner_product(c.begin(), c.end(), c.begin(), 0.0), 1.0, 1e-4);
        }
    }

    void orcaOrbitalEnergies_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("homo");
        QTest::addColumn<double>("lowest");
        const auto row = [](const char *file, int rows, int homo, double lowest) {
            QTest::newRow(file) << QString::fromLatin1(file) << rows << homo << lowest;
        };
        row("orca/orca42_zindos_ligand_s25_t25.out", 284, 153, -46.3017);
        row("orca/orca50_divinylbenzene_tda_s5_t5.out", 60, 34, -272.5672);
        row("orca/orca60_so2_tda_soc_s5_t5.out", 27, 15, -2442.1366);
        row("orca/orca61_eu_complex_uks_no_states.out", 173, 161, -51104.7944);
    }

    void orcaOrbitalEnergies()
    {
        QFETCH(const QString, file);
        const QString path = testSupport::corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorInputData data(nullptr, path);
        QVERIFY(data.readMolecularOrbitalOccupancy());
        QTEST(data.getMolecularOrbitalsOccCount(), "rows");
        QTEST(data.getHomoMO(), "homo");
        QCOMPARE(data.getLumoMO(), data.getHomoMO() + 1);
        QTEST(data.getMolecularOrbital(0).energy, "lowest");
    }

    /// The printed strengths f = 2/3 E(au) |T|^2(au) belong to the energies they stand beside.
    void spectraObeyTheSumOverComponents()
    {
        CORPUS_FILE(path, "orca/orca42_zindos_ligand_s25_t25.out");
        LanqorInputData data(nullptr, path);
        QVERIFY(data.readAbsorptionDataOrca());
        QCOMPARE(data.getExcitedStateCount(), 25);
        // T^2 of states 1, 5 and 22 as printed.
        const QPair<int, double> squares[] = {{0, 0.24312}, {4, 5.64594}, {21, 5.11219}};
        for (const auto &square : squares) {
            const double energy = data.getEnergyVector(square.first) / 219474.63;
            COMPARE_NEAR(data.getOscForceVector(square.first), 2.0 / 3.0 * energy * square.second,
                         2e-6);
        }
    }
};

QTEST_APPLESS_MAIN(TestExcitedStatesCorpus)
#include "tst_excitedstates_corpus.moc"
