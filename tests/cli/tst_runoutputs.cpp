#include "TestSupport.h"

#include "plots/plots.h"
#include "plots/polyhedron.h"
#include "run/RunReport.h"
#include "run/runOutputs.h"

#include <LanqorEngine/DonorTripletResults.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>
#include <QtTest>

#include <cmath>

using polyhedron::Point;

Q_DECLARE_METATYPE(Point)

namespace {

/// A run to the yield, with texts that would break a page.
RunReport completeReport()
{
    RunReport report;
    report.name = QStringLiteral("a<b & \"c\"");
    report.lanqorVersion = QStringLiteral("1.2.3");
    report.end = RunReport::End::Complete;
    report.structureFile = QStringLiteral("<script>alert(1)</script>.cif");
    report.inputs = {{QStringLiteral("d&e.cif"), QStringLiteral("0123abcd")}};
    report.settingsToml = QStringLiteral("charge = -1 # <none>\n");
    report.steps = {{QStringLiteral("02-geometry"), QStringLiteral("geometry"),
                     RunStep::State::Kept, QStringLiteral("CN 6"), QStringLiteral("mopac"),
                     QStringLiteral("22.0.6"), QStringLiteral("mopac 'f<g>.mop'"), 12.5}};
    report.firstLines = QStringList{QStringLiteral("first & foremost")};
    report.charge = -1;
    report.chargeSource = QStringLiteral("given");

    LanqorInputData data(
        nullptr, testSupport::sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out")));
    if (!data.readStructureFile() || !data.createSphericalCoordinate())
        qFatal("%s", qPrintable(data.getLastError()));
    report.sphere = data.getSphereResults();
    report.atoms = data.getCoord();
    LanqorOmega omega(nullptr, 0, &data);
    omega.setCoordNumber(6);
    if (!omega.setChargeFactorAndAlpha({0, 0, 0.9, 0.9, 0.9, 0.9, 1.2, 1.2},
                                       {0, 0, 3e-24, 3e-24, 3e-24, 3e-24, 4e-24, 4e-24}) ||
        !omega.calcOmega())
        qFatal("%s", qPrintable(omega.getLastError()));
    report.omega = omega.getResults();
    report.partition = report.omega->partition;

    LanqorOmegaExp spectrum(nullptr, 1.5);
    if (!spectrum.readSpectrum(testSupport::dataFile(QStringLiteral("outputs/emission.txt"))) ||
        !spectrum.calcOmegaExp())
        qFatal("%s", qPrintable(spectrum.getLastError()));
    report.measured = spectrum.getResults();

    LanqorSpectroscopicCalculation yield(nullptr);
    yield.setETModel(2);
    yield.setSingletEnergy(28000.0);
    yield.setSingletRL(4.5);
    yield.setTripletEnergy(20500.0);
    yield.setTripletRL(5.1);
    yield.setOmegaValues(33.0, 4.6, 0.2);
    yield.setOmegaEdValues(0.3, 0.2, 0.1);
    yield.setRefractiveIndex(1.5);
    yield.setLifeTime(0.5e-3);
    if (!yield.calcQuantumYieldNEW())
        qFatal("%s", qPrintable(yield.getLastError()));
    report.yield = yield.getResults();
    report.yieldInputs = yield.getYieldInputs();
    UncertaintyResults uncertainty;
    uncertainty.samples = 64;
    uncertainty.factors.resize(1);
    uncertainty.factors[0].name = QStringLiteral("triplet-energy");
    uncertainty.quantities.append({QStringLiteral("quantum_yield"),
                                   QStringLiteral("%"),
                                   report.yield->quantumYield,
                                   21.0,
                                   12.25,
                                   33.5,
                                   3.75,
                                   44.0,
                                   0,
                                   {1.0},
                                   {1.0}});
    report.uncertainty = uncertainty;
    auto triplet = std::make_shared<DonorTripletResults>();
    triplet->states = {
        QStringLiteral("MOPAC INDO"), true, QString(), 19280.0, 1220.0, 20500.0, 1100.0, QString(),
        QStringLiteral("26 ligands")};
    triplet->chosen = TripletMethod::States;
    triplet->energy = 20500.0;
    triplet->standardDeviation = 1100.0;
    triplet->low = 19400.0;
    triplet->high = 21600.0;
    report.triplet = triplet;
    return report;
}

/// A run that came nowhere.
RunReport failedReport()
{
    RunReport report;
    report.name = QStringLiteral("failed");
    report.failure = QStringLiteral("no lanthanide in <x>");
    return report;
}

QJsonObject summaryOf(const RunReport &report)
{
    return QJsonDocument::fromJson(makeRunTables(report).toJson()).object();
}

} // namespace

/// What tells of a run: its drawing of the sphere, its page, its text and its data.
class TestRunOutputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hulls_data()
    {
        QTest::addColumn<QVector<Point>>("points");
        QTest::addColumn<int>("faces");
        QTest::addColumn<int>("edges");
        QTest::addColumn<double>("fold"); // between the faces at an edge, degrees
        QVector<Point> octahedron;
        QVector<Point> cube;
        QVector<Point> antiprism;
        for (const double s : {-1.0, 1.0}) {
            octahedron << Point{s, 0.0, 0.0} << Point{0.0, s, 0.0} << Point{0.0, 0.0, s};
            for (const double t : {-1.0, 1.0})
                cube << Point{s, t, -1.0} << Point{s, t, 1.0};
            for (int i = 0; i < 4; ++i) {
                const double phi = (i + 0.25 * s) * std::acos(0.0);
                antiprism << Point{std::cos(phi), std::sin(phi), 0.6 * s};
            }
        }
        const double degree = 90.0 / std::acos(0.0);
        QTest::newRow("octahedron") << octahedron << 8 << 12 << std::acos(1.0 / 3.0) * degree;
        QTest::newRow("cube: no diagonals") << cube << 6 << 12 << 90.0;
        QTest::newRow("square antiprism") << antiprism << 10 << 16 << -1.0;
        QTest::newRow("three atoms") << octahedron.mid(0, 3) << 1 << 3 << 180.0;
        QTest::newRow("square") << cube.mid(0, 4) << 1 << 4 << 180.0;
        QTest::newRow("two atoms") << octahedron.mid(0, 2) << 0 << 0 << 180.0;
        QTest::newRow("one atom") << octahedron.mid(0, 1) << 0 << 0 << 180.0;
    }
    void hulls()
    {
        QFETCH(QVector<Point>, points);
        QFETCH(int, faces);
        QFETCH(int, edges);
        QFETCH(double, fold);
        const polyhedron::Hull hull = polyhedron::hullOf(points);
        QCOMPARE(hull.faces.size(), faces);
        QCOMPARE(hull.edges.size(), edges);
        for (const polyhedron::Edge &edge : hull.edges)
            QVERIFY(fold < 0.0 || std::abs(edge.fold - fold) < 1e-9);
        // Seen so that none hides another, by a rotation without reflection.
        const polyhedron::Rotation view = polyhedron::viewOf(points);
        for (std::size_t i = 0; i < 3; ++i) {
            const Point &a = view[i];
            const Point &b = view[(i + 1) % 3];
            const Point &c = view[(i + 2) % 3];
            for (std::size_t k = 0; k < 3; ++k)
                QVERIFY(std::abs(a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3] -
                                 c[k]) < 1e-12);
        }
        for (int i = 0; i < points.size(); ++i)
            for (int k = 0; k < i; ++k) {
                const Point a = polyhedron::rotated(view, points.at(i));
                const Point b = polyhedron::rotated(view, points.at(k));
                QVERIFY(std::hypot(a[0] - b[0], a[1] - b[1]) > 0.3);
            }
    }

    void pages_data()
    {
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<int>("figures");
        QTest::newRow("complete") << true << 5;
        QTest::newRow("failed at once") << false << 0;
    }
    void pages()
    {
        QFETCH(bool, isComplete);
        QFETCH(int, figures);
        const RunReport report = isComplete ? completeReport() : failedReport();
        const QByteArray page = makeRunPage(report);
        QXmlStreamReader reader(page);
        QString text;
        int pictures = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isCharacters())
                text += reader.text();
            if (!reader.isStartElement())
                continue;
            pictures += reader.name() == QLatin1String("svg") ? 1 : 0;
            QVERIFY(reader.name() != QLatin1String("script") &&
                    reader.name() != QLatin1String("link"));
            for (const QXmlStreamAttribute &attribute : reader.attributes())
                QVERIFY2(!attribute.name().contains(QLatin1String("href")) &&
                             attribute.name() != QLatin1String("src") &&
                             !attribute.value().contains(QLatin1String("url(")),
                         qPrintable(attribute.name().toString()));
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QCOMPARE(pictures, figures);
        QVERIFY(!page.contains("@import") && !page.contains("url("));
        QVERIFY(text.contains(report.name) && text.contains(report.failure));
        const QString plain = makeRunText(report);
        QVERIFY(plain.contains(report.name) && plain.contains(report.failure));
        if (!isComplete)
            return;
        for (const QString &told :
             {report.structureFile, report.inputs.at(0).fileName, report.steps.at(0).commandLine,
              report.settingsToml.trimmed(), report.firstLines.at(0)}) {
            QVERIFY2(text.contains(told), qPrintable(told));
            QVERIFY2(plain.contains(told), qPrintable(told));
        }
    }

    /// Page and text show the numbers of the record, the data all their digits.
    void numbers()
    {
        const RunReport report = completeReport();
        const QString page = QString::fromUtf8(makeRunPage(report));
        const QString text = makeRunText(report);
        const auto shown = [](double value, int decimals) {
            return QString::number(value, 'f', decimals);
        };
        QStringList numbers = {
            QStringLiteral("12.25 to 33.50 %"),       QStringLiteral("3.75 to 44.00 %"),
            shown(report.yield->quantumYield, 2),     shown(report.yield->anrad, 2),
            shown(1e20 * report.measured->omega2, 3), QStringLiteral("19400 to 21600")};
        for (const int rank : {2, 4, 6})
            numbers << shown(1e20 * report.omega->omega[rank], 4);
        for (const SphereAtom &atom : report.sphere.atoms)
            numbers << shown(atom.position.r, 4);
        for (const AradPartitionResults::AtomShare &atom : report.partition->atoms)
            numbers << shown(atom.rate, 2);
        for (const QString &number : qAsConst(numbers)) {
            QVERIFY2(page.contains(number), qPrintable(number));
            QVERIFY2(text.contains(number), qPrintable(number));
        }

        const QJsonObject summary = summaryOf(report);
        QCOMPARE(
            summary[QStringLiteral("run_state")].toObject()[QStringLiteral("state")].toString(),
            QStringLiteral("finished"));
        const QJsonArray results = summary[QStringLiteral("main_results")].toArray();
        const QJsonObject yield = results.last().toObject();
        QCOMPARE(yield[QStringLiteral("quantity")].toString(), QStringLiteral("quantum_yield"));
        const QJsonObject value = yield[QStringLiteral("value")].toObject();
        QCOMPARE(value[QStringLiteral("value")].toDouble(), report.yield->quantumYield);
        QCOMPARE(value[QStringLiteral("unit")].toString(), QStringLiteral("%"));
        QCOMPARE(
            value[QStringLiteral("uncertainty")].toObject()[QStringLiteral("low_95")].toDouble(),
            3.75);
        const QJsonObject failed =
            summaryOf(failedReport())[QStringLiteral("run_state")].toObject();
        QCOMPARE(failed[QStringLiteral("state")].toString(), QStringLiteral("failed"));
        QCOMPARE(failed[QStringLiteral("reason")].toString(), failedReport().failure);
    }

    /// No part hides another one: in JSON the last of one name would remain.
    void names()
    {
        QStringList names;
        for (const ResultTable &part : makeRunTables(completeReport()).getTables())
            names.append(part.name);
        QCOMPARE(names.removeDuplicates(), 0);
    }
};

int main(int argc, char *argv[])
{
    const auto application = plots::makeApplication(argc, argv, {QStringLiteral("run")});
    TestRunOutputs test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_runoutputs.moc"
