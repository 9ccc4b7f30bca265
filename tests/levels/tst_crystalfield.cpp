#include "../intensity/testSpheres.h"
#include "TestSupport.h"

#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/LanqorCrystalField.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>

#include <Eigen/Geometry>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

using Parameter = StarkResults::FieldParameter;

QJsonArray casesOf(const QString &fileName)
{
    return QJsonDocument::fromJson(testSupport::readAll(fileName)).object()["cases"].toArray();
}

FreeIonParameters freeIonOf(const QJsonObject &reference)
{
    const QJsonObject given = reference["parameters"].toObject();
    FreeIonParameters ion;
    ion.F2 = LanqorFreeIonParameters::toSubscript(2, given["F2"].toDouble());
    ion.F4 = LanqorFreeIonParameters::toSubscript(4, given["F4"].toDouble());
    ion.F6 = LanqorFreeIonParameters::toSubscript(6, given["F6"].toDouble());
    ion.zeta = given["zeta"].toDouble();
    ion.alpha = given["alpha"].toDouble();
    ion.beta = given["beta"].toDouble();
    ion.gamma = given["gamma"].toDouble();
    return ion;
}

/// "B22", of Stevens's also "B22S" for the sine type.
QVector<Parameter> fieldOf(const QJsonObject &given)
{
    QVector<Parameter> field;
    for (const QString &name : given.keys()) {
        const int q = name.mid(2, 1).toInt();
        field.append({name.mid(1, 1).toInt(), name.endsWith(QLatin1Char('S')) ? -q : q,
                      given[name].toDouble(), 0.0});
    }
    return field;
}

constexpr double wavenumberPerMeV = 8.065543937;
constexpr double curie = 0.375148096; // N_A mu_B^2/k, cm^3 K/mol

/// The published ion in a field, calculated.
CrystalFieldResults resultsOf(int electrons, const QVector<Parameter> &field,
                              const QVector<double> &temperatures = {})
{
    LanqorCrystalField ion(electrons);
    ion.setFreeIon(LanqorFreeIonParameters::getParameters(electrons));
    if (!ion.setFieldParameters(field) || !ion.setTemperatures(temperatures) || !ion.calculate())
        qWarning("%s", qPrintable(ion.getLastError()));
    return ion.getResults();
}

/// The field of seven atoms at random, in a frame turned by an angle about a skew axis.
QVector<Parameter> fieldOfAtoms(double angle)
{
    std::mt19937 random(35);
    QVector<Coord> atoms = testSpheres::randomSphere(random, 7);
    const QVector<double> g = testSpheres::randomValues(random, 7, 0.1, 1.2);
    for (Coord &atom : atoms) {
        const Eigen::Vector3d place =
            Eigen::AngleAxisd(angle, Eigen::Vector3d(1.0, 2.0, 3.0).normalized()) *
            Eigen::Vector3d(atom.x, atom.y, atom.z);
        atom = {atom.label, place.x(), place.y(), place.z()};
    }
    LanqorBkq bkq(testSpheres::xyzFile(QStringLiteral("atoms.xyz"), atoms), 7);
    bkq.setChargeFactors(g);
    bkq.calculateRO(0.0801);
    QVector<Parameter> field;
    for (int k = 2; k <= 6; k += 2)
        for (int q = -k; q <= k; ++q)
            field.append({k, q, bkq.getBkq(k, q).real, bkq.getBkq(k, q).imag});
    return field;
}

} // namespace

class TestCrystalField : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void computedCases_data();
    void computedCases();
    void stevensMultiplets();
    void laws();
    void moreThanHalfFilled();
    void curieAndVanVleck();
    void cutOff();
    void parametersThatAreRefused();
};

void TestCrystalField::initTestCase()
{
    QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
}

void TestCrystalField::computedCases_data()
{
    QTest::addColumn<QJsonObject>("reference");
    const QString file =
        testSupport::referenceFile(QStringLiteral("levels/crystal_field_computed.json"));
    if (file.isEmpty())
        QSKIP("needs LANQOR_REFERENCE_DIR");
    for (const QJsonValue &entry : casesOf(file))
        QTest::newRow(qPrintable(entry["case"].toString())) << entry.toObject();
}

// Levels, degeneracies, g and chi T from Slater determinants, to the printed digits.
void TestCrystalField::computedCases()
{
    QFETCH(QJsonObject, reference);
    LanqorCrystalField ion(reference["n"].toInt());
    ion.setFreeIon(freeIonOf(reference));
    QVERIFY(ion.setFieldParameters(fieldOf(reference["Bkq"].toObject())));
    const QJsonArray levels = reference["levels"].toArray();
    ion.setMaximumEnergy(levels.last().toArray().first().toDouble() + 1.0);
    const QJsonObject chiT = reference["chiT"].toObject();
    QVector<double> temperatures;
    for (const QString &T : chiT.keys())
        temperatures.append(T.toDouble());
    QVERIFY(ion.setTemperatures(temperatures));
    QVERIFY2(ion.calculate(), qPrintable(ion.getLastError()));
    const CrystalFieldResults results = ion.getResults();
    QCOMPARE(results.levels.size(), levels.size());
    for (int i = 0; i < levels.size(); ++i) {
        const QJsonArray level = levels.at(i).toArray();
        COMPARE_NEAR(results.levels.at(i).energy, level.at(0).toDouble(), 1e-4);
        COMPARE_NEAR(results.levels.at(i).meanJ, level.at(2).toDouble(), 6e-4);
        QCOMPARE(results.levels.at(i).degeneracy, level.at(1).toInt());
    }
    const QJsonArray gTensors = reference["g"].toArray();
    for (int i = 0; i < gTensors.size(); ++i) {
        const CrystalFieldResults::GTensor &g = results.gTensors.at(i);
        const QJsonArray expected = gTensors.at(i).toArray();
        const double along[] = {g.x, g.y, g.z};
        for (int a = 0; a < 3; ++a) {
            COMPARE_NEAR(along[a], expected.at(1).toArray().at(a).toDouble(), 1e-5);
            COMPARE_NEAR(g.principal.at(a), expected.at(2).toArray().at(a).toDouble(), 1e-5);
        }
    }
    QCOMPARE(results.susceptibilities.size(), chiT.size());
    for (const CrystalFieldResults::Susceptibility &s : results.susceptibilities) {
        const QJsonArray expected = chiT[QString::number(s.T)].toArray();
        const double own[] = {s.chiTx, s.chiTy, s.chiTz, s.chiT};
        for (int a = 0; a < 4; ++a)
            COMPARE_NEAR(own[a], expected.at(a).toDouble(), 1e-6);
        COMPARE_NEAR(s.effectiveMoment, std::sqrt(8.0 * s.chiT), 0.001 * s.effectiveMoment);
    }
}

// One multiplet in Stevens operators; cosine and sine types, even and odd q.
void TestCrystalField::stevensMultiplets()
{
    const QString file =
        testSupport::referenceFile(QStringLiteral("levels/stevens_single_multiplet.json"));
    if (file.isEmpty())
        QSKIP("needs LANQOR_REFERENCE_DIR");
    for (const QJsonValue &entry : casesOf(file)) {
        const QJsonObject reference = entry.toObject();
        const int electrons = reference["ion"].toString() == QLatin1String("Ce") ? 1 : 2;
        LanqorCrystalField ion(electrons);
        ion.setFreeIon(LanqorFreeIonParameters::getParameters(electrons));
        ion.setCutOff(1.0);
        ion.setSpinFactor(2.0);
        QVector<Parameter> field = fieldOf(reference["Stevens"].toObject());
        for (Parameter &B : field)
            B.real *= wavenumberPerMeV;
        QVERIFY(ion.setFieldParameters(field, FieldNormalisation::StevensOperators));
        const QJsonArray chi = reference["chi_powder"].toArray();
        QVector<double> temperatures;
        for (const QJsonValue &row : chi)
            temperatures.append(row.toArray().at(0).toDouble());
        QVERIFY(ion.setTemperatures(temperatures) && ion.setMagneticFields({0.1, 10.0}));
        QVERIFY(ion.calculate());
        const CrystalFieldResults results = ion.getResults();
        const bool isOfSixDigits = reference.contains(QStringLiteral("levels"));
        const QJsonArray levels =
            reference[isOfSixDigits ? QStringLiteral("levels") : QStringLiteral("levels_computed")]
                .toArray();
        QCOMPARE(results.levels.size(), levels.size());
        for (int i = 0; i < levels.size(); ++i) {
            const double energy = levels.at(i).toDouble();
            COMPARE_NEAR(results.levels.at(i).energy / wavenumberPerMeV, energy,
                         std::max(1e-6, 6e-5 * energy));
        }
        for (int i = 0; i < chi.size(); ++i) {
            const CrystalFieldResults::Susceptibility &s = results.susceptibilities.at(i);
            const QJsonArray along = chi.at(i).toArray().at(2).toArray();
            COMPARE_NEAR(s.chiTx / s.T, along.at(0).toDouble(), 1e-6);
            COMPARE_NEAR(s.chiTy / s.T, along.at(1).toDouble(), 2e-6);
            COMPARE_NEAR(s.chiTz / s.T, along.at(2).toDouble(), 1e-6);
            // Three directions in the reference, all of them here.
            const double moment =
                reference["moment_10T_muB"].toArray().at(i).toArray().at(1).toDouble();
            COMPARE_NEAR(results.magnetisations.at(2 * i + 1).moment, moment, 0.03 * moment);
            // In a weak field it is chi B: 1000 G, N_A mu_B = 5584.94 cm^3 G/mol.
            COMPARE_NEAR(results.magnetisations.at(2 * i).moment, s.chiT / s.T * 1000.0 / 5584.94,
                         1e-7);
        }
        // Given back as they came in.
        for (const Parameter &B : qAsConst(field)) {
            const auto same = [&B](const auto &A) { return A.k == B.k && A.q == B.q; };
            const auto found = std::find_if(results.stevensParameters.cbegin(),
                                            results.stevensParameters.cend(), same);
            QVERIFY(found != results.stevensParameters.cend());
            COMPARE_NEAR(found->ofOperators, B.real, 1e-12);
        }
    }
}

// No level, g or mean susceptibility depends on the frame, though every parameter does; the states
// of an odd number of electrons come in pairs; the field leaves the sum of all energies.
void TestCrystalField::laws()
{
    const QVector<Parameter> here = fieldOfAtoms(0.0);
    const QVector<Parameter> there = fieldOfAtoms(0.8);
    QVERIFY(std::abs(here.at(3).imaginary - there.at(3).imaginary) > 1.0);
    for (const int electrons : {2, 3, 12}) {
        const CrystalFieldResults a = resultsOf(electrons, here, {5.0, 300.0});
        const CrystalFieldResults b = resultsOf(electrons, there, {5.0, 300.0});
        QCOMPARE(a.levels.size(), b.levels.size());
        double sum = 0.0;
        double sumOfFreeIon = 0.0;
        for (int i = 0; i < a.levels.size(); ++i) {
            COMPARE_NEAR(a.levels.at(i).energy, b.levels.at(i).energy, 1e-6);
            QCOMPARE(a.levels.at(i).degeneracy, electrons % 2 == 0 ? 1 : 2);
            sum += a.levels.at(i).degeneracy * (a.levels.at(i).energy + a.lowestEnergy);
        }
        for (const CrystalFieldResults::FreeIonLevel &level : a.freeIonLevels)
            sumOfFreeIon += (2.0 * level.J + 1.0) * level.energy;
        COMPARE_NEAR(sum / sumOfFreeIon, 1.0, 1e-12);
        QCOMPARE(a.gTensors.size(), electrons % 2 == 0 ? 0 : a.levels.size());
        for (int i = 0; i < a.gTensors.size(); ++i)
            for (int p = 0; p < 3; ++p)
                COMPARE_NEAR(a.gTensors.at(i).principal.at(p), b.gTensors.at(i).principal.at(p),
                             1e-7);
        for (int i = 0; i < 2; ++i)
            COMPARE_NEAR(a.susceptibilities.at(i).chiT, b.susceptibilities.at(i).chiT, 1e-8);
    }
}

// Stevens factors of Russell-Saunders coupling: theta of n > 7 has the sign of the electrons.
// The cubic field leaves the doublets E', E'' and the quartet U' of J = 15/2 and 8 = A1 + 2E + 2T1
// + 2T2.
void TestCrystalField::moreThanHalfFilled()
{
    const double cubic = std::sqrt(5.0 / 14.0);
    const QVector<Parameter> field = {{4, 0, 2000.0, 0.0}, {4, 4, 2000.0 * cubic, 0.0}};
    const CrystalFieldResults er = resultsOf(11, field);
    const CrystalFieldResults ho = resultsOf(10, field);
    const double ofEr[] = {4.0 / 1575.0, 2.0 / 45045.0, 8.0 / 3864861.0};
    const double ofHo[] = {-1.0 / 450.0, -1.0 / 30030.0, -5.0 / 3864861.0};
    for (int i = 0; i < 3; ++i) {
        COMPARE_NEAR(er.stevensFactors.at(i) / ofEr[i], 1.0, 0.1);
        COMPARE_NEAR(ho.stevensFactors.at(i) / ofHo[i], 1.0, 0.1);
    }
    const auto degeneracies = [](const CrystalFieldResults &results, int count) {
        QVector<int> list;
        for (const CrystalFieldResults::Level &level : results.levels.mid(0, count))
            list.append(level.degeneracy);
        std::sort(list.begin(), list.end());
        return list;
    };
    QCOMPARE(degeneracies(er, 5), (QVector<int>{2, 2, 4, 4, 4}));
    QCOMPARE(degeneracies(ho, 7), (QVector<int>{1, 2, 2, 3, 3, 3, 3}));
    QCOMPARE(er.levels.first().multiplet, QStringLiteral("4I7.5"));
}

// Without a field: Eu3+ with terms far apart follows the closed form of pure 7FJ levels, and Ce3+
// that of two levels of one electron, both with g = 2.
void TestCrystalField::curieAndVanVleck()
{
    FreeIonParameters ion = LanqorFreeIonParameters::getParameters(6);
    for (double *F : {&ion.F2, &ion.F4, &ion.F6})
        *F *= 300.0;
    ion.alpha = ion.beta = ion.gamma = 0.0;
    LanqorCrystalField eu(6);
    eu.setFreeIon(ion);
    eu.setCutOff(20000.0);
    eu.setSpinFactor(2.0);
    const QVector<double> temperatures = {1.0, 50.0, 300.0, 1000.0};
    QVERIFY(eu.setTemperatures(temperatures));
    QVERIFY(eu.calculate());
    const double lambda = eu.getResults().levels.at(1).energy; // 7F1
    COMPARE_NEAR(lambda / (ion.zeta / 6.0), 1.0, 2e-3);
    for (const CrystalFieldResults::Susceptibility &s : eu.getResults().susceptibilities)
        COMPARE_NEAR(s.chiT / LanqorCrystalField::calcVanVleckEuropium(lambda, s.T), 1.0, 1e-3);
    QCOMPARE(eu.getResults().states, 49);

    // g_J = 6/7 and 8/7, E(7/2) - E(5/2) = 7/2 zeta, and what each level has of the other.
    LanqorCrystalField ce(1);
    ce.setFreeIon(LanqorFreeIonParameters::getParameters(1));
    ce.setSpinFactor(2.0);
    QVERIFY(ce.setTemperatures(temperatures));
    QVERIFY(ce.calculate());
    const double gap = 3.5 * LanqorFreeIonParameters::getParameters(1).zeta;
    for (const CrystalFieldResults::Susceptibility &s : ce.getResults().susceptibilities) {
        const double kT = 0.6950348 * s.T;
        const double excited = 8.0 * std::exp(-gap / kT);
        const double Z = 6.0 + excited;
        // The sum over M of <7/2 M|S_z|5/2 M>^2 = (49/4 - M^2)/49.
        const double mixing = 2.0 * 8.0 / 7.0 * (1.0 - excited / 8.0) / gap * kT;
        const double first = 36.0 / 49.0 * 17.5 + 64.0 / 49.0 * 42.0 * excited / 8.0;
        COMPARE_NEAR(s.chiT, curie * (first + mixing) / Z, 1e-8);
    }
}

// What the states left out would do in second order is what they do.
void TestCrystalField::cutOff()
{
    const QVector<Parameter> field = {
        {2, 0, 500.0, 0.0}, {4, 0, -1100.0, 0.0}, {4, 4, 900.0, 300.0}};
    LanqorCrystalField ion(2);
    ion.setFreeIon(LanqorFreeIonParameters::getParameters(2));
    QVERIFY(ion.setFieldParameters(field));
    QVERIFY(ion.calculate());
    const CrystalFieldResults full = ion.getResults();
    QCOMPARE(full.states, 91);
    QCOMPARE(full.cutOffShift, 0.0);
    ion.setCutOff(15000.0);
    QVERIFY(ion.calculate());
    const CrystalFieldResults kept = ion.getResults();
    QCOMPARE(kept.states, 9 + 11 + 13 + 5 + 7 + 9 + 9);
    double largest = 0.0;
    for (int i = 0; i < kept.levels.size(); ++i)
        largest = std::max(largest, std::abs(kept.levels.at(i).energy - full.levels.at(i).energy));
    COMPARE_NEAR(kept.cutOffShift / largest, 1.0, 0.1);
}

void TestCrystalField::parametersThatAreRefused()
{
    struct Case
    {
        const char *text;
        FieldNormalisation normalisation;
        const char *message; ///< empty: accepted
    };
    constexpr auto wybourne = FieldNormalisation::Wybourne;
    constexpr auto stevens = FieldNormalisation::Stevens;
    const Case cases[] = {
        {"# D2\n\n2 0 350.5\nB44 -1249\nB(6,-4), -65, 12 # note\n", wybourne, ""},
        {"2 1 5 3\n2 -1 -5 3\n", wybourne, ""},
        {"2 2 5\n2 -2 7\n", stevens, ""},
        {"2 0 1\n2 1 5 3\n2 -1 5 3\n", wybourne, "line 3: B(2,-1) is not (-1)^q"},
        {"2 0 1 0.5\n", wybourne, "line 1: B(2,0) has an imaginary part"},
        {"2 2 1 0.5\n", stevens, "sine type"},
        {"3 0 1\n", wybourne, "line 1: there is no B(3,0)"},
        {"2 3 1\n", wybourne, "there is no B(2,3)"},
        {"4 0 1\n4 0 1\n", wybourne, "line 2: B(4,0) stands twice"},
        {"4 0 nan\n", wybourne, "finite"},
        {"4 0 1,5 x\n", wybourne, "line 1: \"4 0 1,5 x\" is no parameter"},
        {"# nothing\n", wybourne, "holds no parameter"},
    };
    for (const Case &entry : cases) {
        const QString file =
            testSupport::scratchFile(QStringLiteral("field.bkq"), QByteArray(entry.text));
        QVector<Parameter> parameters;
        QString error;
        const bool isRead =
            LanqorCrystalField::readParameters(file, entry.normalisation, parameters, error);
        QVERIFY2(isRead == error.isEmpty() && error.contains(QLatin1String(entry.message)) &&
                     isRead == !*entry.message,
                 qPrintable(QLatin1String(entry.text) + error));
    }
    LanqorCrystalField ion(3);
    QVERIFY(!ion.setFieldParameters({{2, 1, 5.0, 3.0}, {2, -1, 5.0, 3.0}}));
    QVERIFY(ion.getLastError().contains(QStringLiteral("B(2,-1)")));
    QVERIFY(!ion.setTemperatures({0.0}) && !ion.setMagneticFields({-1.0}));
    QVERIFY(!ion.calculate()); // no free ion
    QVERIFY(ion.getResults().levels.isEmpty());
    QVERIFY(!LanqorCrystalField(15).calculate());
}

QTEST_GUILESS_MAIN(TestCrystalField)
#include "tst_crystalfield.moc"
