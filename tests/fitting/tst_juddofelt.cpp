#include "TestSupport.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorJuddOfelt.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

using Quantity = JuddOfeltBand::Quantity;
using Kind = RefractiveIndexModel::Kind;

RefractiveIndexModel constant(double n)
{
    RefractiveIndexModel model;
    model.coefficients = {n};
    return model;
}

/// The dispersion of a case of the reference file.
RefractiveIndexModel dispersionOf(const QJsonValue &value)
{
    if (!value.isObject())
        return constant(value.toDouble(1.8));
    const QJsonObject given = value.toObject();
    const auto of = [&given](const char *key) {
        return given.value(QLatin1String(key)).toDouble();
    };
    const QString formula = given.value(QStringLiteral("formula")).toString();
    RefractiveIndexModel model;
    model.kind = Kind::Sellmeier;
    if (formula.startsWith(QStringLiteral("n = A"))) {
        model.kind = Kind::Cauchy;
        model.coefficients = {of("C"), of("B"), of("A"), of("D"), of("E")};
    } else if (formula.contains(QStringLiteral("nm"))) { // the C in nm^2
        model.coefficients = {1.0, of("B1"), 1e-6 * of("C1"), of("B2"), 1e-6 * of("C2")};
    } else {
        model.coefficients = {of("A"), of("B1"), of("C1"), of("B2"), of("C2")};
    }
    return model;
}

/// Columns of a case, in the order of its bands: l level, p position (of P: nm), v value, e error,
/// m magnetic f, n index, U the three squares, - nothing.
struct Layout
{
    const char *columns;
    Quantity quantity;
    double unit;
};

JuddOfeltBand bandOf(const QJsonArray &row, const Layout &layout)
{
    JuddOfeltBand band;
    band.level = QStringLiteral("unnamed");
    band.quantity = layout.quantity;
    int i = 0;
    for (const char *column = layout.columns; *column != '\0'; ++column, ++i) {
        const double value = row.at(i).toDouble();
        switch (*column) {
        case 'l':
            band.level = row.at(i).toString();
            break;
        case 'P':
        case 'p':
            band.position = value;
            band.isWavelength = *column == 'P';
            break;
        case 'v':
            band.value = layout.unit * value;
            break;
        case 'e':
            band.error = layout.unit * value;
            break;
        case 'm':
            band.magneticStrength = layout.unit * value;
            break;
        case 'n':
            band.refractiveIndex = value;
            break;
        case 'U':
            band.U2 = value;
            band.U4 = row.at(++i).toDouble();
            band.U6 = row.at(++i).toDouble();
            break;
        default:
            break;
        }
    }
    return band;
}

Layout layoutOf(const QString &id)
{
    if (id == QLatin1String("er_glass_A") || id == QLatin1String("dy_literature"))
        return {"lPvU", Quantity::OscillatorStrength, 1.0};
    if (id == QLatin1String("er_tellurite_10Te")) // 1e20 ions in a cm^3
        return {"lpvU", Quantity::CrossSectionOverWavenumber, 1e-20};
    if (id == QLatin1String("sm_gts"))
        return {"lpvU", Quantity::Absorbance, 1.0};
    if (id.endsWith(QStringLiteral("_zblan")))
        return {"l-pvemU", Quantity::OscillatorStrength, 1e-8};
    if (id == QLatin1String("tm_silica_flawed"))
        return {"lPvnU", Quantity::CrossSectionOverWavelength, 1e-20};
    if (id == QLatin1String("er_literature") || id == QLatin1String("tm_literature"))
        return {"lPvU", Quantity::CrossSectionOverWavelength, 1.0};
    if (id.endsWith(QStringLiteral("_literature")))
        return {"lPvU", Quantity::LineStrength, 1.0};
    return {"pvU", Quantity::OscillatorStrength, 1.0};
}

/// Bands of Er whose f follow from Omega = 3, 1, 0.5 with the ion's own squares at n = 1.6.
QVector<JuddOfeltBand> madeBands(const double (&omega)[3])
{
    LanqorEnergyLevels er(nullptr, 11);
    er.setParameters(LanqorFreeIonParameters::getParameters(11));
    er.calcEnergyLevels(-1.0);
    QVector<JuddOfeltBand> bands;
    for (const char *name : {"4I13/2", "4I9/2", "4F9/2", "2H11/2", "4F7/2", "4G11/2"}) {
        JuddOfeltBand band;
        band.level = QLatin1String(name);
        const int number = er.findLevels(band.level).first();
        const ReducedSquares squares = er.getReducedSquares(1, number);
        band.position = er.getResults().levels.at(number - 1).energy;
        const double S =
            1e-20 * (omega[0] * squares.U2 + omega[1] * squares.U4 + omega[2] * squares.U6);
        band.value =
            LanqorJuddOfelt::calcElectricStrength(band.position, 1.6, 7.5, S) +
            LanqorJuddOfelt::calcMagneticStrength(band.position, 1.6, 7.5, squares.magnetic);
        band.error = 0.01 * band.value;
        bands.append(band);
    }
    return bands;
}

} // namespace

class TestJuddOfelt : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
    }

    void publishedCases()
    {
        const QString path =
            testSupport::referenceFile(QStringLiteral("intensities/judd_ofelt_cases.json"));
        if (path.isEmpty())
            QSKIP("needs LANQOR_REFERENCE_DIR");
        const QJsonObject file = QJsonDocument::fromJson(testSupport::readAll(path)).object();
        int fits = 0;
        int rates = 0;
        for (const QJsonValue &entry : file.value(QStringLiteral("cases")).toArray()) {
            const QJsonObject given = entry.toObject();
            const QString id = given.value(QStringLiteral("id")).toString();
            if (!given.contains(QStringLiteral("bands")))
                continue;
            QVector<JuddOfeltBand> bands;
            for (const QJsonValue &row : given.value(QStringLiteral("bands")).toArray())
                bands.append(bandOf(row.toArray(), layoutOf(id)));
            LanqorJuddOfelt analysis(nullptr, LanqorFreeIonParameters::getParameters(
                                                  given.value(QStringLiteral("ion")).toString()));
            analysis.setBands(bands);
            analysis.setRefractiveIndex(
                dispersionOf(given.value(QStringLiteral("refractive_index"))));
            analysis.setMagneticPartTakenOff(false);
            analysis.setSample(given.value(QStringLiteral("concentration_mol_per_l")).toDouble(),
                               given.value(QStringLiteral("thickness_cm")).toDouble());
            const QJsonObject recomputed = given.value(QStringLiteral("recomputed")).toObject();
            QMap<JuddOfeltWeighting, QJsonValue> expected;
            const JuddOfeltWeighting own = id.endsWith(QStringLiteral("_zblan"))
                                               ? JuddOfeltWeighting::Error
                                               : JuddOfeltWeighting::EqualStrength;
            expected[own] = recomputed;
            if (recomputed.contains(QStringLiteral("equal_weights_on_S"))) {
                expected[own] = recomputed.value(QStringLiteral("equal_weights_on_S"));
                expected[JuddOfeltWeighting::EqualF] =
                    recomputed.value(QStringLiteral("equal_weights_on_f"));
                expected[JuddOfeltWeighting::Relative] =
                    recomputed.value(QStringLiteral("relative_weights"));
            } else if (recomputed.contains(QStringLiteral("with_2Jp1_13"))) {
                expected[own] = recomputed.value(QStringLiteral("with_2Jp1_13"));
            } else if (own == JuddOfeltWeighting::Error) {
                expected[JuddOfeltWeighting::EqualStrength] =
                    recomputed.value(QStringLiteral("unweighted_Omega_1e20cm2"));
            }
            // The constant of the absorbance is 4.319e-9; the program of this case has 4.33e-9.
            const double scale = id == QLatin1String("sm_gts") ? 4.33 / 4.319 : 1.0;
            const double tolerance = scale == 1.0 ? 1e-4 : 3e-4;
            for (auto weighting = expected.begin(); weighting != expected.end(); ++weighting) {
                analysis.setWeighting(weighting.key());
                QVERIFY2(analysis.calcIntensities(), qPrintable(id + analysis.getLastError()));
                const JuddOfeltResults got = analysis.getResults();
                const QJsonObject of = weighting.value().toObject();
                const QJsonArray omega = of.isEmpty()
                                             ? weighting.value().toArray()
                                             : of.value(QStringLiteral("Omega_1e20cm2")).toArray();
                const QJsonArray errors = of.value(QStringLiteral("error_1e20cm2")).toArray();
                QCOMPARE(omega.size(), 3);
                for (int k = 0; k < 3; ++k) {
                    COMPARE_NEAR(scale * got.omega[k], omega.at(k).toDouble(),
                                 tolerance * omega.at(k).toDouble());
                    if (!errors.isEmpty())
                        COMPARE_NEAR(scale * got.standardErrors[k], errors.at(k).toDouble(),
                                     tolerance * errors.at(k).toDouble() + 6e-6);
                }
                if (!errors.isEmpty())
                    COMPARE_NEAR(scale * got.rmsS,
                                 of.value(QStringLiteral("rms_S_1e20cm2")).toDouble(), 4e-5);
                ++fits;
            }
            rates += compareEmission(analysis, own, given);
        }
        QVERIFY2(fits == 24 && rates > 30, qPrintable(QString::number(1000 * fits + rates)));
    }

    /// The emission that a case lists, of the analysis with these weights; the number of rates.
    int compareEmission(LanqorJuddOfelt &analysis, JuddOfeltWeighting weighting,
                        const QJsonObject &given)
    {
        int rates = 0;
        for (const QString &key : given.keys()) {
            if (!key.startsWith(QStringLiteral("derived_")))
                continue;
            const QJsonObject derived = given.value(key).toObject();
            analysis.setWeighting(weighting);
            analysis.setEmittingLevels({derived.value(QStringLiteral("level")).toString()});
            if (!analysis.calcIntensities())
                qFatal("%s", qPrintable(analysis.getLastError()));
            const JuddOfeltResults results = analysis.getResults();
            const JuddOfeltResults::Emission &emission = results.emissions.first();
            const double total = derived.value(QStringLiteral("A_total")).toDouble();
            rates += std::abs(emission.rate - total) < 1e-4 * total ? 1 : -1000;
            for (const QJsonValue &row : derived.value(QStringLiteral("rows")).toArray())
                for (const JuddOfeltResults::Transition &to : emission.transitions) {
                    const double wavenumber = row.toArray().at(1).toDouble();
                    if (std::abs(to.wavenumber - wavenumber) > 0.1)
                        continue;
                    const bool agrees =
                        std::abs(to.electricRate - row.toArray().at(3).toDouble()) < 1e-4 * total &&
                        std::abs(to.magneticRate - row.toArray().at(4).toDouble()) < 1e-4 * total &&
                        std::abs(to.branchingRatio - row.toArray().at(5).toDouble()) < 1e-4;
                    rates += agrees ? 1 : -1000;
                }
        }
        return rates;
    }

    /// Rates and oscillator strengths of a dissertation from its own squares.
    void transitionsInZblan()
    {
        const QString path =
            testSupport::referenceFile(QStringLiteral("intensities/zblan_transitions.csv"));
        if (path.isEmpty())
            QSKIP("needs LANQOR_REFERENCE_DIR");
        RefractiveIndexModel zblan;
        zblan.kind = Kind::Cauchy;
        zblan.coefficients = {1.49985, 0.0029478, 1.35123e-5, -0.00130933, -3.23335e-6};
        const QMap<QString, QVector<double>> omegas = {
            {QStringLiteral("Pr"), {1.981, 4.645, 6.972}},
            {QStringLiteral("Er"), {2.915, 1.464, 1.184}}};
        // J from a label.
        const auto momentum = [](const QString &label) {
            double J = 0.0;
            LanqorSpectroscopicTermUtil::parseJ(label.mid(2), J);
            return J;
        };
        int compared = 0;
        for (const QByteArray &line : testSupport::readAll(path).split('\n')) {
            const QStringList row = QString::fromLatin1(line).split(QLatin1Char(','));
            if (row.size() < 12 || !omegas.contains(row.at(0)))
                continue;
            const QVector<double> &omega = omegas[row.at(0)];
            const bool isEmission = row.at(1) == QLatin1String("emission");
            const double J = momentum(row.at(2));
            const double wavenumber = row.at(4).toDouble();
            const double n = LanqorJuddOfelt::calcRefractiveIndex(zblan, wavenumber);
            double S = 0.0;
            double printing = 0.0; // of the squares, half their last digit
            for (int k = 0; k < 3; ++k) {
                S += 1e-20 * omega.at(k) * row.at(5 + k).toDouble();
                printing += 5e-25 * omega.at(k) * (row.at(5 + k).toDouble() > 0.0);
            }
            const auto electric = [&](double strength) {
                return isEmission ? LanqorJuddOfelt::calcElectricRate(wavenumber, n, J, strength)
                                  : 1e8 * LanqorJuddOfelt::calcElectricStrength(wavenumber, n, J,
                                                                                strength);
            };
            const auto magnetic = [&](double square) {
                return isEmission
                           ? LanqorJuddOfelt::calcMagneticRate(wavenumber, n, J, square)
                           : 1e8 * LanqorJuddOfelt::calcMagneticStrength(wavenumber, n, J, square);
            };
            const double lastDigit = isEmission ? 0.6 : 0.06;
            const double square = row.at(8).toDouble();
            COMPARE_NEAR(electric(S), row.at(9).toDouble(),
                         0.005 * electric(S) + electric(printing) + lastDigit);
            COMPARE_NEAR(magnetic(square), row.at(10).toDouble(),
                         0.005 * magnetic(square) + magnetic(5e-5) + lastDigit);
            ++compared;
        }
        QVERIFY(compared > 150);
    }

    /// f made from Omega come back whatever the weights, in vacuum and in air, and so do other
    /// quantities of the same bands.
    void returnsWhatItIsMadeFrom()
    {
        const double omega[3] = {3.0, 1.0, 0.5};
        LanqorJuddOfelt analysis(nullptr, LanqorFreeIonParameters::getParameters(11));
        analysis.setRefractiveIndex(constant(1.6));
        const auto check = [&]() {
            QVERIFY2(analysis.calcIntensities(), qPrintable(analysis.getLastError()));
            for (int k = 0; k < 3; ++k)
                COMPARE_NEAR(analysis.getResults().omega[k], omega[k], 1e-9);
        };
        analysis.setBands(madeBands(omega));
        for (const auto weighting : {JuddOfeltWeighting::EqualStrength, JuddOfeltWeighting::EqualF,
                                     JuddOfeltWeighting::Error, JuddOfeltWeighting::Relative}) {
            analysis.setWeighting(weighting);
            check();
        }
        // The cross section over the wavelength, in air: n of air is 1.00027 at 15 degrees C.
        QVector<JuddOfeltBand> bands = madeBands(omega);
        constexpr double refraction = 2.766e-4;
        constexpr double crossSection = 8.852821e-13; // pi e^2/(m c^2), cm
        for (JuddOfeltBand &band : bands) {
            const double nm = 1e7 / band.position;
            band.quantity = Quantity::CrossSectionOverWavelength;
            band.value *= crossSection * nm * nm / 1e7;
            band.position = nm / (1.0 + refraction);
            band.isWavelength = true;
        }
        analysis.setBands(bands);
        analysis.setWavelengthsInAir(true);
        analysis.setWeighting(JuddOfeltWeighting::EqualStrength);
        QVERIFY(analysis.calcIntensities());
        for (int k = 0; k < 3; ++k)
            COMPARE_NEAR(analysis.getResults().omega[k], omega[k], 3e-5);
        // The lifetime of 4I13/2 with both parts, and its quantum efficiency.
        analysis.setLifetimes({{QStringLiteral("4I13/2"), 3.0}});
        QVERIFY(analysis.calcIntensities());
        const JuddOfeltResults::Emission first = analysis.getResults().emissions.first();
        QCOMPARE(first.transitions.size(), 1);
        COMPARE_NEAR(first.transitions.first().magneticRate, 10.012 * 1.6 * 1.6 * 1.6, 0.005);
        COMPARE_NEAR(first.quantumEfficiency, 3e-3 * first.rate, 1e-12);
    }

    void nonNegativeSolution()
    {
        const double omega[3] = {-0.2, 1.0, 0.5};
        LanqorJuddOfelt analysis(nullptr, LanqorFreeIonParameters::getParameters(11));
        analysis.setRefractiveIndex(constant(1.6));
        QVector<JuddOfeltBand> bands = madeBands(omega);
        analysis.setBands(bands);
        QVERIFY2(analysis.calcIntensities(), qPrintable(analysis.getLastError()));
        const JuddOfeltResults results = analysis.getResults();
        QVERIFY(results.isNonNegative && !results.warnings.isEmpty());
        QCOMPARE(results.omega[0], 0.0);
        COMPARE_NEAR(results.freeOmega[0], -0.2, 1e-9);
        // Nothing near it is better.
        const auto misfit = [&results](double a, double b, double c) {
            double sum = 0.0;
            for (const JuddOfeltResults::Band &band : results.bands) {
                const double r = a * band.U[0] + b * band.U[1] + c * band.U[2] - band.measuredS;
                sum += r * r;
            }
            return sum;
        };
        const double best = misfit(results.omega[0], results.omega[1], results.omega[2]);
        for (const double step : {-1e-3, 1e-3}) {
            QVERIFY(misfit(std::abs(step), results.omega[1], results.omega[2]) > best);
            QVERIFY(misfit(0.0, results.omega[1] + step, results.omega[2]) > best);
            QVERIFY(misfit(0.0, results.omega[1], results.omega[2] + step) > best);
        }
    }
};

QTEST_GUILESS_MAIN(TestJuddOfelt)
#include "tst_juddofelt.moc"
