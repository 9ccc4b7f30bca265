#include "TestSupport.h"
#include "determinantLevels.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

using LanqorSpectroscopicTermUtil::SpectroscopicTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;

namespace {

QString dataFolder()
{
    return testSupport::sourceFile(QStringLiteral("data"));
}

// A folder with tables of one's own, which becomes the current one.
class Tables
{
public:
    Tables(int n, const QByteArray &cfp, const QByteArray &ele)
    {
        QDir(folder.path()).mkdir(QStringLiteral("EnergyLevels4f"));
        write(QStringLiteral("f%1.cfp").arg(n), cfp);
        write(QStringLiteral("f%1.ele").arg(n), ele);
        if (!QDir::setCurrent(folder.path()))
            qFatal("cannot enter the scratch folder");
    }
    ~Tables() { QDir::setCurrent(dataFolder()); }

    void write(const QString &name, const QByteArray &bytes)
    {
        QFile file(folder.filePath(QStringLiteral("EnergyLevels4f/") + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a table");
    }

private:
    QTemporaryDir folder;
};

QByteArray storedTable(const char *name)
{
    return testSupport::readAll(dataFolder() + QStringLiteral("/EnergyLevels4f/") +
                                QLatin1String(name));
}

struct Parameters
{
    double F2, F4, F6, zeta;
};

void setParameters(LanqorEnergyLevels &levels, const Parameters &p)
{
    levels.setSlaterIntegral(0.0, p.F2, p.F4, p.F6);
    levels.setZetaParameters(p.zeta);
}

double twiceJ(const QString &label)
{
    return 2.0 * termFromLabel(label, true).J;
}

} // namespace

class TestEnergyLevels : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void labels();
    void levelsFromDeterminants_data();
    void levelsFromDeterminants();
    void publishedLevels();
    void groundLevelOfGadolinium();
    void referenceLevels();
    void levelsWithTwoBodyInteraction();
    void reducedSquares();
    void statesOfOneJ();
    void parametersOfIons();
    void missingParameters();
    void missingTables();
    void tablesAreReadToTheEmptyLine();
    void shortLinesAndNumbers();
    void refusedTables();
    void damagedTables();
    void report();
};

void TestEnergyLevels::initTestCase()
{
    QVERIFY(QDir::setCurrent(dataFolder()));
}

void TestEnergyLevels::labels()
{
    const auto check = [](const char *label, bool withJ, double S, int L, int index, double J) {
        const SpectroscopicTerm term = termFromLabel(QLatin1String(label), withJ);
        QCOMPARE(term.S, S);
        QCOMPARE(term.L, L);
        QCOMPARE(term.termIndex, index);
        QCOMPARE(term.J, J);
    };
    check("8S", false, 3.5, 0, 0, 0.0);
    check("1I", false, 0.0, 6, 0, 0.0);
    check("2Q", false, 0.5, 12, 0, 0.0);
    check("2J", false, 0.5, -1, 0, 0.0);
    check("5D1", false, 2.0, 2, 1, 0.0);
    check("3H10", false, 1.0, 5, 10, 0.0);
    check("3H2.9", false, 1.0, 5, 2, 0.0);
    check("3H1e300", false, 1.0, 5, 0, 0.0);
    check("", false, -0.5, -1, 0, 0.0);
    check("7F6", true, 3.0, 3, 0, 6.0);
    check("5D(1)2", true, 2.0, 2, 1, 2.0);
    check("4I5.5", true, 1.5, 6, 0, 5.5);
    check("4I11/2", true, 1.5, 6, 0, 0.0);
    check("2Fnan", true, 0.5, 3, 0, 0.0);
}

void TestEnergyLevels::levelsFromDeterminants_data()
{
    QTest::addColumn<int>("n");
    for (int n = 1; n <= 13; ++n)
        QTest::addRow("f%d", n) << n;
}

void TestEnergyLevels::levelsFromDeterminants()
{
    QFETCH(int, n);
    const int terms[] = {1, 7, 17, 47, 73, 119, 119};
    LanqorEnergyLevels shell(nullptr, n);
    QCOMPARE(shell.getLastError(), QString());
    QCOMPARE(shell.getSpectroscopicTermVector().size(), terms[std::min(n, 14 - n) - 1]);
    // Strong spin-orbit coupling: every element between terms matters.
    for (const Parameters &p :
         {Parameters{330.0, 47.0, 5.1, 1100.0 + 120.0 * n}, Parameters{290.0, 61.0, 4.2, 4300.0}}) {
        setParameters(shell, p);
        QVERIFY(shell.calcEnergyLevels(-1.0));
        const QVector<MixedState> got = shell.getMixedStatesVector();
        const std::vector<double> expected = determinantLevels(n, p.F2, p.F4, p.F6, p.zeta);
        QCOMPARE(std::size_t(got.size()), expected.size());
        double multiplicity = 0.0;
        QSet<QString> labels;
        for (int i = 0; i < got.size(); ++i) {
            COMPARE_NEAR(got.at(i).energy, expected[std::size_t(i)], 1e-8);
            multiplicity += twiceJ(got.at(i).label) + 1.0;
            labels.insert(got.at(i).label);
        }
        QCOMPARE(labels.size(), got.size());
        QCOMPARE(multiplicity, std::round(std::exp(std::lgamma(15.0) - std::lgamma(n + 1.0) -
                                                   std::lgamma(15.0 - n)))); // C(14, n)
    }
}

// Lowest levels above the ground level (J, cm^-1) of these four parameters alone, aqueous ions:
// W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49, 4424 (1968) and following papers.
void TestEnergyLevels::publishedLevels()
{
    const struct
    {
        int n;
        Parameters parameters;
        QVector<QPair<double, double>> levels;
    } ions[] = {
        {2,
         {305.21955, 46.276753, 4.434816, 740.75},
         {{5, 2082.80}, {6, 4254.55}, {2, 4894.53}, {3, 6283.37}, {4, 6653.71}, {4, 9521.69}}},
        {3,
         {321.8266, 46.276234, 4.7133009, 884.58},
         {{5.5, 1891.45}, {6.5, 3893.78}, {7.5, 5962.66}, {1.5, 11315.86}, {4.5, 12002.68}}},
        {6,
         {369.60795, 56.240519, 5.6408009, 1326.0},
         {{1, 384.96}, {2, 1057.61}, {3, 1921.71}, {4, 2906.26}, {5, 3961.67}, {6, 5052.65}}},
        {8,
         {401.58881, 60.802078, 6.0124892, 1709.5},
         {{5, 2050.61}, {4, 3300.15}, {3, 4276.67}, {2, 4961.29}, {1, 5416.18}, {0, 5638.81}}},
    };
    for (const auto &ion : ions) {
        LanqorEnergyLevels shell(nullptr, ion.n);
        setParameters(shell, ion.parameters);
        QVERIFY(shell.calcEnergyLevels(-1.0));
        for (int i = 0; i < ion.levels.size(); ++i) {
            const MixedState state = shell.getMixedStatesVector().at(i + 1);
            QCOMPARE(twiceJ(state.label), 2.0 * ion.levels.at(i).first);
            COMPARE_NEAR(state.energy, ion.levels.at(i).second, 0.05);
        }
    }
}

void TestEnergyLevels::groundLevelOfGadolinium()
{
    // 0.987 |8S> + 0.162 |6P> - 0.012 |6D>, B. G. Wybourne, Phys. Rev. 148, 317 (1966).
    LanqorEnergyLevels gd(nullptr, 7);
    setParameters(gd, {384.99667, 57.745455, 5.7742424, 1450.0});
    QVERIFY(gd.calcEnergyLevels(3.5));
    const QVector<CoeffAndLabel> ground = gd.getMixedStatesVector().at(0).components;
    COMPARE_NEAR(ground.at(0).coefficient, 0.987, 0.005);
    COMPARE_NEAR(ground.at(1).coefficient, 0.162, 0.005);
    COMPARE_NEAR(ground.at(2).coefficient, -0.012, 0.001);
}

void TestEnergyLevels::referenceLevels()
{
    for (const int n : {2, 3, 6, 8}) {
        const QString path =
            testSupport::referenceFile(QStringLiteral("levels/levels_f%1.json").arg(n));
        if (path.isEmpty())
            QSKIP("needs LANQOR_REFERENCE_DIR");
        const QJsonObject reference = QJsonDocument::fromJson(testSupport::readAll(path)).object();
        const auto value = [&reference](const char *name) {
            return reference.value(QLatin1String(name)).toDouble();
        };
        LanqorEnergyLevels shell(nullptr, n);
        setParameters(shell, {value("F2"), value("F4"), value("F6"), value("zeta")});
        QVERIFY(shell.calcEnergyLevels(-1.0));
        const QVector<MixedState> states = shell.getMixedStatesVector();
        const QJsonArray levels = reference.value(QLatin1String("levels")).toArray();
        QCOMPARE(states.size(), levels.size());
        for (int i = 0; i < states.size(); ++i) {
            COMPARE_NEAR(states.at(i).energy, levels.at(i).toArray().at(1).toDouble(), 1e-6);
            QCOMPARE(twiceJ(states.at(i).label), 2.0 * levels.at(i).toArray().at(0).toDouble());
        }
    }
}

// All levels of the aqueous ions with alpha, beta and gamma, from determinants; the parameters of
// the library are those of the file.
void TestEnergyLevels::levelsWithTwoBodyInteraction()
{
    const QString path =
        testSupport::referenceFile(QStringLiteral("levels/computed_abg_levels.csv"));
    if (path.isEmpty())
        QSKIP("needs LANQOR_REFERENCE_DIR");
    QMap<QString, QVector<QPair<int, double>>> expected;
    for (const QByteArray &line : testSupport::readAll(path).split('\n')) {
        const QStringList fields = QString::fromLatin1(line).split(QLatin1Char(','));
        if (fields.size() > 6 && fields.at(0) != QLatin1String("set") &&
            fields.at(0) != QLatin1String("Sm3+:aq"))
            expected[fields.at(0).left(2)].append({fields.at(1).toInt(), fields.at(2).toDouble()});
    }
    int ions = 0;
    for (int n = 2; n <= 12; ++n) {
        const FreeIonParameters ion = LanqorFreeIonParameters::getParameters(n);
        LanqorEnergyLevels shell(nullptr, n);
        shell.setParameters(ion);
        QVERIFY(shell.calcEnergyLevels(-1.0));
        const QVector<MixedState> states = shell.getMixedStatesVector();
        const auto levels = expected.value(ion.symbol);
        QCOMPARE(states.size(), levels.size());
        for (int i = 0; i < states.size(); ++i) {
            COMPARE_NEAR(states.at(i).energy, levels.at(i).second, 1e-3);
            QCOMPARE(twiceJ(states.at(i).label), double(levels.at(i).first));
        }
        ++ions;
    }
    QCOMPARE(ions, expected.size());
}

void TestEnergyLevels::reducedSquares()
{
    // From 4I15/2 of the aqueous ion, W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49,
    // 4424 (1968), as printed.
    LanqorEnergyLevels er(nullptr, 11);
    er.setParameters(LanqorFreeIonParameters::getParameters(11));
    QVERIFY(er.calcEnergyLevels(-1.0));
    const auto first = [&er](const char *name) {
        return er.findLevels(QLatin1String(name)).value(0);
    };
    const ReducedSquares toMetastable = er.getReducedSquares(first("4I13/2"), first("4I15/2"));
    COMPARE_NEAR(toMetastable.U2, 0.0195, 6e-5);
    COMPARE_NEAR(toMetastable.U4, 0.1173, 6e-5);
    COMPARE_NEAR(toMetastable.U6, 1.4316, 6e-5);
    COMPARE_NEAR(er.getReducedSquares(1, first("2H11/2")).U2, 0.7125, 6e-5);
    QCOMPARE(first("2H(2)11/2"), 7);
    QCOMPARE(er.findLevels(QStringLiteral("4F9/2")), (QVector<int>{5, 4, 11}));
    for (const char *none : {"4I9", "2H(2)", "8S7/2", "4I1/2", ""})
        QCOMPARE(first(none), 0);
    QCOMPARE(er.getReducedSquares(0, 42).U6, 0.0);

    // Every pair of the aqueous ions, from determinants.
    const QString path =
        testSupport::referenceFile(QStringLiteral("intensities/reduced_squares_computed.csv"));
    if (path.isEmpty())
        QSKIP("needs LANQOR_REFERENCE_DIR");
    int pairs = 0;
    std::unique_ptr<LanqorEnergyLevels> ion;
    QString symbol;
    for (const QByteArray &line : testSupport::readAll(path).split('\n')) {
        const QStringList fields = QString::fromLatin1(line).split(QLatin1Char(','));
        if (fields.size() < 15 || fields.at(0) == QLatin1String("ion") || line.startsWith('#'))
            continue;
        if (fields.at(0) != symbol) {
            symbol = fields.at(0);
            const FreeIonParameters published = LanqorFreeIonParameters::getParameters(symbol);
            ion = std::make_unique<LanqorEnergyLevels>(nullptr, published.electrons);
            ion->setParameters(published);
            QVERIFY(ion->calcEnergyLevels(-1.0));
        }
        const ReducedSquares got =
            ion->getReducedSquares(fields.at(1).toInt() + 1, fields.at(2).toInt() + 1);
        COMPARE_NEAR(got.U2, fields.at(11).toDouble(), 1e-6);
        COMPARE_NEAR(got.U4, fields.at(12).toDouble(), 1e-6);
        COMPARE_NEAR(got.U6, fields.at(13).toDouble(), 1e-6);
        COMPARE_NEAR(got.magnetic, fields.at(14).toDouble(), 1e-5);
        ++pairs;
    }
    QCOMPARE(pairs, 1425);
}

void TestEnergyLevels::statesOfOneJ()
{
    LanqorEnergyLevels shell(nullptr, 6);
    setParameters(shell, {401.0, 55.4, 6.06, 1326.0});
    QVERIFY(shell.calcEnergyLevels(2.5)); // no such J
    QVERIFY(shell.getMixedStatesVector().isEmpty());
    QVERIFY(shell.calcEnergyLevels(2.0));
    const QVector<MixedState> alone = shell.getMixedStatesVector();
    QVERIFY(shell.calcEnergyLevels(0.0));
    double ground = 1e10;
    for (const MixedState &state : shell.getMixedStatesVector())
        ground = std::min(ground, state.energy);
    QVERIFY(ground < -1000.0);

    // The same block in a full run is shifted by the ground level and sorted.
    QVERIFY(shell.calcEnergyLevels(-1.0));
    for (int k = 0; k < alone.size(); ++k) {
        // A state is named after its place; components stand in the order of the terms.
        QCOMPARE(alone.at(k).label, alone.at(0).components.at(k).label);
        const MixedState full = shell.getMixedStates(termFromLabel(alone.at(k).label, true));
        COMPARE_NEAR(full.energy, alone.at(k).energy - ground, 1e-9);
        double norm = 0.0;
        for (int i = 0; i < full.components.size(); ++i) {
            const double coefficient = full.components.at(i).coefficient;
            norm += coefficient * coefficient;
            QVERIFY(i == 0 ||
                    std::abs(coefficient) <= std::abs(full.components.at(i - 1).coefficient));
        }
        COMPARE_NEAR(norm, 1.0, 1e-12);
    }
    QCOMPARE(alone.at(0).label, QStringLiteral("7F2"));
    QVERIFY(shell.getMixedStates(termFromLabel(QStringLiteral("7F9"), true)).components.isEmpty());
    // Most levels, but not all, bear the name of their largest component.
    int leading = 0;
    for (const MixedState &state : shell.getMixedStatesVector())
        leading += state.label == state.components.first().label ? 1 : 0;
    QVERIFY(leading > 100 && leading < 295);
}

void TestEnergyLevels::parametersOfIons()
{
    using Ions = LanqorFreeIonParameters;
    const QStringList symbols = Ions::getSymbols();
    for (int n = 0; n <= 14; ++n) {
        const FreeIonParameters ion = Ions::getParameters(n);
        QCOMPARE(ion.electrons, n >= 1 && n <= 13 ? n : 0);
        QCOMPARE(Ions::getParameters(symbols.value(n - 1).toLower()).zeta, ion.zeta);
    }
    const FreeIonParameters er = Ions::getParameters(QStringLiteral("Er"));
    QCOMPARE(er.symbol, QStringLiteral("Er"));
    // E1 of W. T. Carnall et al. (1968) from the integrals, in either convention.
    const double F6 = Ions::toSubscript(6, 25.0 * Ions::toSuperscript(6, er.F6)) / 25.0;
    COMPARE_NEAR((70.0 * er.F2 + 231.0 * er.F4 + 2002.0 * F6) / 9.0, 6769.9, 1e-9);
    COMPARE_NEAR(Ions::toSubscript(2, 22500.0) + Ions::toSubscript(4, 1089.0), 101.0, 1e-12);
    COMPARE_NEAR(Ions::toSuperscript(6, 25.0), 184041.0, 1e-9);
    QCOMPARE(Ions::toSubscript(3, 1.0), 0.0);

    LanqorEnergyLevels shell(nullptr, 11);
    shell.setParameters(er);
    QVERIFY(shell.calcEnergyLevels(-1.0));
    const FreeIonLevelsResults results = shell.getResults();
    QCOMPARE(results.parameters.source, er.source);
    QCOMPARE(results.levels.at(1).J, 6.5);
    shell.setZetaParameters(2000.0);
    QCOMPARE(shell.getResults().parameters.zeta, 2380.7); // of the calculation
    QVERIFY(shell.calcEnergyLevels(0.5));
    QCOMPARE(shell.getResults().parameters.zeta, 2000.0);
    QCOMPARE(shell.getResults().parameters.source, QString());
}

void TestEnergyLevels::missingParameters()
{
    LanqorEnergyLevels shell(nullptr, 2);
    testSupport::MessageSpy spy(shell);
    const QString message =
        QStringLiteral("It is need to specify the Slater Integral and Zeta parameters values\n");
    QVERIFY(!shell.calcEnergyLevels(-1.0));
    QCOMPARE(spy.messages, QStringList(message));
    QCOMPARE(shell.getLastError(), message);

    setParameters(shell, {305.2, 46.3, 4.43, 740.0});
    QVERIFY(shell.calcEnergyLevels(-1.0));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Parameters &p :
         {Parameters{0.0, 46.3, 4.43, 740.0}, Parameters{305.2, 46.3, 4.43, 0.0},
          Parameters{nan, 46.3, 4.43, 740.0}, Parameters{305.2, infinity, 4.43, 740.0},
          Parameters{305.2, 46.3, 4.43, -infinity}, Parameters{1e300, 46.3, 4.43, 740.0},
          Parameters{305.2, 46.3, 4.43, 1e12}}) {
        setParameters(shell, p);
        spy.messages.clear();
        QVERIFY(!shell.calcEnergyLevels(-1.0));
        QCOMPARE(spy.messages, QStringList(shell.getLastError()));
        QCOMPARE(shell.getMixedStatesVector().size(), 13); // of the run before
    }
    shell.setSlaterIntegral(nan, 305.2, 46.3, 4.43);
    shell.setZetaParameters(740.0);
    QVERIFY(!shell.calcEnergyLevels(-1.0));
    // One electron has zeta alone; its F_k may be left out with a set of parameters as a whole.
    LanqorEnergyLevels one(nullptr, 13);
    one.setParameters(LanqorFreeIonParameters::getParameters(13));
    QVERIFY(one.calcEnergyLevels(-1.0));
    COMPARE_NEAR(one.getMixedStatesVector().at(1).energy, 3.5 * 2928.0, 1e-9);
    one.setSlaterIntegral(0.0, 0.0, 0.0, 0.0);
    QVERIFY(!one.calcEnergyLevels(-1.0));
    // F0 is not asked for, and moves every level alike.
    shell.setSlaterIntegral(1000.0, 305.2, 46.3, 4.43);
    QVERIFY(shell.calcEnergyLevels(-1.0));
    QCOMPARE(shell.getMixedStatesVector().first().energy, 0.0);
}

void TestEnergyLevels::missingTables()
{
    const QTemporaryDir elsewhere;
    QVERIFY(QDir::setCurrent(elsewhere.path()));
    LanqorEnergyLevels shell(nullptr, 8);
    const QString folder = QDir::currentPath() + QStringLiteral("/EnergyLevels4f/");
    QVERIFY(QDir::setCurrent(dataFolder()));
    QVERIFY2(shell.getLastError().startsWith(QStringLiteral("Energy Levels Calculation\n") +
                                             folder + QStringLiteral("f6.ele  ")),
             qPrintable(shell.getLastError()));
    QVERIFY(shell.getLastError().size() > folder.size() + 36);
    const QString missing = shell.getLastError();
    QVERIFY(!shell.calcEnergyLevels(-1.0)); // without parameters, which hides the reason for now
    setParameters(shell, {305.2, 46.3, 4.43, 740.0});
    QVERIFY(!shell.calcEnergyLevels(-1.0));
    QCOMPARE(shell.getLastError(), missing);
    QVERIFY(shell.getMixedStatesVector().isEmpty());
    QCOMPARE(shell.createOutputFile(QString()), QString());
    for (int n : {0, 14, -5, std::numeric_limits<int>::max()})
        QVERIFY(!LanqorEnergyLevels(nullptr, n).getLastError().isEmpty());
}

void TestEnergyLevels::tablesAreReadToTheEmptyLine()
{
    {
        Tables tables(2, "\n" + storedTable("f2.cfp"), storedTable("f2.ele"));
        LanqorEnergyLevels shell(nullptr, 2);
        QCOMPARE(shell.getLastError(), QString());
        QVERIFY(shell.getSpectroscopicTermVector().isEmpty());
    }
    // Windows line ends, blanks in a row, no end of the last line, text after the table.
    const QByteArray cfp = storedTable("f2.cfp").replace(" ", "   ").replace("\n", "\r\n");
    Tables tables(2, cfp + "\r\nnan nan nan\r\n", storedTable("f2.ele").trimmed());
    LanqorEnergyLevels shell(nullptr, 2);
    QCOMPARE(shell.getLastError(), QString());
    QCOMPARE(shell.getSpectroscopicTermVector().size(), 7);
    const QVector<double> of1I = shell.getElectrostaticMatrixVector(
        termFromLabel(QStringLiteral("1I"), false), termFromLabel(QStringLiteral("1I"), false));
    QCOMPARE(of1I.size(), 4);
    COMPARE_NEAR(of1I.at(2), 70.0, 1e-12);

    // A folder without the third table serves as long as alpha, beta and gamma are 0.
    setParameters(shell, {305.2, 46.3, 4.43, 740.0});
    QVERIFY(shell.calcEnergyLevels(-1.0));
    for (const bool isDamaged : {false, true}) {
        if (isDamaged)
            tables.write(QStringLiteral("f2.cas"),
                         storedTable("f2.cas").replace("1I 2 200 20", "1I"));
        LanqorEnergyLevels lacking(nullptr, 2);
        setParameters(lacking, {305.2, 46.3, 4.43, 740.0});
        for (const int k : {0, 1, 2}) {
            lacking.setTwoBodyParameters(k == 0, k == 1, k == 2);
            QVERIFY(!lacking.calcEnergyLevels(-1.0));
            QVERIFY2(lacking.getLastError().contains(QStringLiteral("/f2.cas  ")),
                     qPrintable(lacking.getLastError()));
        }
        lacking.setTwoBodyParameters(0.0, 0.0, 0.0);
        QVERIFY(lacking.calcEnergyLevels(-1.0));
    }
}

void TestEnergyLevels::shortLinesAndNumbers()
{
    Tables tables(2, "3P 2F 1\n3P\n3P 1S x\n5D10 2F1 0.5\n", "3P 5D10 1 2\n3P\n \n");
    LanqorEnergyLevels shell(nullptr, 2);
    QCOMPARE(shell.getLastError(), QString());
    const QVector<SpectroscopicTerm> terms = shell.getSpectroscopicTermVector();
    QCOMPARE(terms.size(), 2);
    QCOMPARE(terms.at(1).termIndex, 0); // an ordinal of two digits is not understood here
    const QVector<FractParentCoeff> of3P = shell.getFractParentCoeffVector(terms.at(0));
    QCOMPARE(of3P.size(), 3);
    QCOMPARE(of3P.at(0).cfp, 1.0);
    QCOMPARE(of3P.at(1).parent.L, -1);
    QCOMPARE(of3P.at(2).cfp, 0.0);
    QVERIFY(shell.getFractParentCoeffVector(termFromLabel(QStringLiteral("1S"), false)).isEmpty());
    const SpectroscopicTerm tenth = termFromLabel(QStringLiteral("5D10"), false);
    QCOMPARE(shell.getElectrostaticMatrixVector(tenth, terms.at(0)),
             (QVector<double>{1.0, 2.0, 0.0, 0.0}));
    QCOMPARE(shell.getElectrostaticMatrixVector(tenth, tenth), QVector<double>(4, 0.0));
}

void TestEnergyLevels::refusedTables()
{
    const QByteArray cfp = storedTable("f2.cfp");
    const QByteArray ele = storedTable("f2.ele");
    QByteArray labels;
    for (int i = 0; i < 2000; ++i)
        labels += "3P" + QByteArray::number(i) + " 2F 1\n";
    const QByteArray takenByMany =
        QByteArray("3P 2F 1 3F 3H 1S 1D 1G 1I 5S 5D 7F 2P 2D\n").repeated(15000) +
        "3F\n3H\n1S\n1D\n";
    const QByteArray tooLong = QByteArray("3P 3P 1 0 0 0\n").repeated(30000);
    struct Case
    {
        QByteArray cfp, ele;
        QString file;
    };
    for (const Case &wrong : QVector<Case>{{cfp + "1I 2F nan\n", ele, "f2.cfp"},
                                           {cfp + "1I 2F -inf\n", ele, "f2.cfp"},
                                           {cfp + "1I 2F 1e999\n", ele, "f2.cfp"},
                                           {cfp, ele + "3P 3F 0 0 nan 0\n", "f2.ele"},
                                           {cfp, tooLong, "f2.ele"},
                                           {labels, ele, "f2.cfp"},
                                           {takenByMany, ele, "f2.cfp"}}) {
        Tables tables(2, wrong.cfp, wrong.ele);
        LanqorEnergyLevels shell(nullptr, 2);
        QVERIFY2(
            shell.getLastError().contains(QLatin1Char('/') + wrong.file + QStringLiteral("  ")),
            qPrintable(shell.getLastError()));
        QVERIFY(shell.getSpectroscopicTermVector().isEmpty());
        setParameters(shell, {305.2, 46.3, 4.43, 740.0});
        QVERIFY(!shell.calcEnergyLevels(-1.0));
        QVERIFY(shell.getMixedStatesVector().isEmpty());
    }
}

void TestEnergyLevels::damagedTables()
{
    const QByteArray cfp = storedTable("f3.cfp");
    const QByteArray ele = storedTable("f3.ele");
    int complete = 0;
    const auto calculate = [&complete](const QByteArray &cfp, const QByteArray &ele) {
        Tables tables(3, cfp, ele);
        LanqorEnergyLevels shell(nullptr, 3);
        setParameters(shell, {321.8, 46.3, 4.7, 884.0});
        shell.calcEnergyLevels(-1.0);
        for (const MixedState &state : shell.getMixedStatesVector())
            QVERIFY(std::isfinite(state.energy));
        complete += shell.getMixedStatesVector().size() == 41 ? 1 : 0;
    };
    testSupport::damageFile(
        cfp, 60, 500, [&](const QString &path) { calculate(testSupport::readAll(path), ele); });
    testSupport::damageFile(
        ele, 60, 500, [&](const QString &path) { calculate(cfp, testSupport::readAll(path)); });
    QVERIFY(complete > 100);
}

void TestEnergyLevels::report()
{
    LanqorEnergyLevels one(nullptr, 1);
    setParameters(one, {1.0, 1.0, 1.0, 640.0});
    QCOMPARE(one.createOutputFile(QString()), QString());
    QVERIFY(one.calcEnergyLevels(-1.0));
    const QString path = testSupport::scratchFile(QStringLiteral("levels.txt"), "older and longer");
    const QString text = one.createOutputFile(path);
    QCOMPARE(text, QStringLiteral("1  0\n|2F2.5> = +1.0000|2F2.5> \n*********************\n"
                                  "2  2240\n|2F3.5> = +1.0000|2F3.5> \n*********************\n"));
    QCOMPARE(QString::fromUtf8(testSupport::readAll(path)), text);
    // An impossible file is not reported.
    QCOMPARE(one.createOutputFile(QStringLiteral("/nowhere/levels.txt")), text);
    QCOMPARE(one.getLastError(), QString());
}

QTEST_GUILESS_MAIN(TestEnergyLevels)
#include "tst_energylevels.moc"
