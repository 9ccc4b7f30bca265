#include "TestSupport.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

using Program = LanqorInputData::ProgramType;

namespace {

/// Sum over a list that sees every value and its place.
class PlaceSum
{
public:
    void add(double value)
    {
        constexpr int period = 97;
        sum += (1 + place % period) * value;
        ++place;
    }
    double value() const { return sum; }

private:
    int place = 0;
    double sum = 0.0;
};

/// What a reader took from a file: the counts of atoms, orbitals, singlets, triplets and rows of
/// the spectrum, then sums over coordinates, coefficients, the atom numbers of their functions,
/// energies, strengths and orbital numbers of the singlets, energies and orbital numbers of the
/// triplets, and the spectrum.
QVector<double> digest(const LanqorInputData &data)
{
    PlaceSum sums[9];
    const QVector<Coord> atoms = data.getCoord();
    for (const Coord &atom : atoms) {
        for (const double x : {atom.x, atom.y, atom.z})
            sums[0].add(x);
    }
    for (int i = 0; i < data.getMolecularOrbitalNumber(); ++i) {
        const MolecularOrbital orbital = data.getMolecularOrbitalVector(i);
        for (int row = 0; row < orbital.coefficients.size(); ++row) {
            sums[1].add(orbital.coefficients.at(row));
            sums[2].add(orbital.atomNumbers.at(row));
        }
    }
    const auto addState = [&](const ExcitateState &state, PlaceSum &energy, PlaceSum &numbers) {
        energy.add(state.energy);
        for (const int number : state.configurations)
            numbers.add(number);
    };
    for (int i = 0; i < data.getSingletStatesCount(); ++i) {
        addState(data.getSingletExcitateStateVector(i), sums[3], sums[5]);
        sums[4].add(data.getSingletExcitateStateVector(i).oscillatorStrength);
    }
    for (int i = 0; i < data.getTripletStatesCount(); ++i)
        addState(data.getTripletExcitateStateVector(i), sums[6], sums[7]);
    for (int i = 0; i < data.getExcitedStateCount(); ++i) {
        sums[8].add(data.getEnergyVector(i));
        sums[8].add(data.getOscForceVector(i));
    }
    QVector<double> result = {double(atoms.size()), double(data.getMolecularOrbitalNumber()),
                              double(data.getSingletStatesCount()),
                              double(data.getTripletStatesCount()),
                              double(data.getExcitedStateCount())};
    for (const PlaceSum &sum : sums)
        result.append(sum.value());
    return result;
}

} // namespace

/// Real outputs of ORCA 3.0 to 6.1, Gaussian 03 to 16 and ZINDO 99.1, none of them committed.
class TestExcitedStatesCorpus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Every value of every output, by sums that a script with parsers of its own has taken.
    void valuesOfEveryOutput_data()
    {
        QTest::addColumn<QString>("failure"); // part of the message; empty for success
        QTest::addColumn<QString>("labels");  // of the first atom and of a row of orbitals
        QTest::addColumn<QVector<double>>("expected");
        const auto row = [](const char *file, const char *failure, const char *labels,
                            const QVector<double> &expected) {
            QTest::newRow(file) << QString::fromLatin1(failure) << QString::fromLatin1(labels)
                                << expected;
        };
        const char *const noOrbitals = "could not read the molecular orbitals";
        row("gaussian/g03_co_td5050_no_savetr.log", noOrbitals, "C",
            {2, 0, 12, 12, 12, 0.964611, 0, 0, 7413074.501227, 6.636, 11486, 6651434.702049, 18733,
             13764009.180281});
        row("gaussian/g09_benzene_tda_opt_popregular.log", "", "C 4YZ",
            {12, 26, 20, 0, 20, 20.072618, 404.65045, 287645, 15729725.437281, 8.0367, 107662, 0, 0,
             30065976.469531});
        row("gaussian/g09_mo_table_1128_functions_excerpt.log",
            "error during read of the excited states", "12PY",
            {0, 5, 0, 0, 0, 0, 229.7452, 7532783, 0, 0, 0, 0, 0, 0});
        row("gaussian/g09_opt_then_zindo_s15_glued_arrows.log", noOrbitals, "C",
            {54, 0, 15, 0, 15, -3443.470407, 0, 0, 3817463.886211, 3.9777, 1029396, 0, 0,
             7196928.298778});
        row("gaussian/g16_ch2o_td5050_popfull.log", "", "C 9D 0",
            {4, 50, 5, 5, 5, -10.901085, 929.5122, 239740, 1095339.581255, 0.5532, 539044,
             953647.331588, 561256, 1859146.891935});
        row("gaussian/g16_h2o_cis5050_natural_orbitals.log", noOrbitals, "O",
            {3, 0, 4, 6, 4, -9.164025, 0, 0, 1298193.657152, 0.4259, 408, 2664087.070448, 1266,
             2108438.889003});
        row("orca/orca30_benzene_uks_glued_mos.out", "SINGLET states", "C 3s",
            {12, 66, 0, 0, 10, 382.833332, 784.977712, 976225, 0, 0, 0, 0, 0, 5658086.800133});
        row("orca/orca42_tddft_full_no_mos_s2_t2.out", noOrbitals, "N",
            {13, 0, 2, 2, 2, -267.006247, 0, 0, 119199.7, 0.041609, 586, 96290.3, 3866,
             159138.283217});
        row("orca/orca42_zindos_ligand_s25_t25.out", "", "N 1px",
            {92, 284, 25, 25, 25, 2586.8598, -1462.818519, 168779571, 12744031.8, 75.346587,
             4674803, 9802726.9, 5603965, 24553810.493173});
        row("orca/orca50_divinylbenzene_tda_s5_t5.out", "", "C 1py",
            {20, 60, 5, 5, 5, -74.807343, 78.299781, 1492148, 815051.7, 3.220445, 12150, 581076.6,
             34083, 1373257.34089});
        row("orca/orca60_so2_tda_soc_s5_t5.out", "", "S 2s",
            {3, 31, 5, 5, 5, 8.25, 41.079639, 88356, 730465.8, 0.165572, 2469, 553614.8, 1097,
             1252951.031143});
        row("orca/orca61_eu_complex_uks_no_states.out", noOrbitals, "Eu",
            {49, 0, 0, 0, 0, 53775.432688, 0, 0, 0, 0, 0, 0, 0, 0});
        row("zindo/zindo99_naphthalene_rhf_no_ci.out", "SINGLET states", "C",
            {18, 48, 0, 0, 0, 512.3128, -291.561, 90215, 0, 0, 0, 0, 0, 0});
    }

    void valuesOfEveryOutput()
    {
        const QString file = QString::fromLatin1(QTest::currentDataTag());
        const QString path = testSupport::corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        const Program program = LanqorInputData::detectProgram(path);
        LanqorInputData data(nullptr, path);
        bool ok = false;
        if (file.startsWith(QLatin1String("gaussian")) && program == Program::GaussianOutput)
            ok = data.readOutputGaussian();
        else if (file.startsWith(QLatin1String("orca")) && program == Program::OrcaOutput)
            ok = data.readCoordFromOrcaOutFile() && data.readOutputOrca();
        else if (file.startsWith(QLatin1String("zindo")) && program == Program::ZindoOutput)
            ok = data.readCoordFromZindoOutFile() && data.readOutputZindo();
        QFETCH(const QString, failure);
        QCOMPARE(ok, failure.isEmpty());
        QVERIFY2(data.getLastError().contains(failure), qPrintable(data.getLastError()));

        QFETCH(const QVector<double>, expected);
        const QVector<double> actual = digest(data);
        QCOMPARE(actual.size(), expected.size());
        for (int i = 0; i < actual.size(); ++i)
            COMPARE_NEAR(actual.at(i), expected.at(i), 1e-5);
        const int last = data.getMolecularOrbitalNumber() - 1;
        QStringList labels;
        if (!data.getCoord().isEmpty())
            labels += data.getAtomLabel(1);
        if (last >= 0)
            labels += data.getMolecularOrbitalVector(last).atomicOrbitals.mid(14, 1);
        QTEST(labels.join(QLatin1Char(' ')), "labels");
    }

    void orcaOrbitalEnergies_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("homo");
        QTest::addColumn<double>("lowest");
        QTest::newRow("orca/orca42_zindos_ligand_s25_t25.out") << 284 << 153 << -46.3017;
        QTest::newRow("orca/orca50_divinylbenzene_tda_s5_t5.out") << 60 << 34 << -272.5672;
        QTest::newRow("orca/orca60_so2_tda_soc_s5_t5.out") << 27 << 15 << -2442.1366;
        QTest::newRow("orca/orca61_eu_complex_uks_no_states.out") << 173 << 161 << -51104.7944;
    }

    void orcaOrbitalEnergies()
    {
        const QString path = testSupport::corpusFile(QString::fromLatin1(QTest::currentDataTag()));
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorInputData data(nullptr, path);
        QVERIFY(data.readMolecularOrbitalOccupancy());
        QTEST(data.getMolecularOrbitalsOccCount(), "rows");
        QTEST(data.getHomoMO(), "homo");
        QCOMPARE(data.getLumoMO(), data.getHomoMO() + 1);
        QTEST(data.getMolecularOrbital(0).energy, "lowest");
    }
};

QTEST_APPLESS_MAIN(TestExcitedStatesCorpus)
#include "tst_excitedstates_corpus.moc"
