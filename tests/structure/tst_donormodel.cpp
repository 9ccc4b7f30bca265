#include "TestSupport.h"

#include "structure/fragments_p.h"
#include "structure/ligandName_p.h"

#include <LanqorEngine/LanqorDonorModel.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorLigandClasses.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QtTest>

using testSupport::corpusFile;
using testSupport::isNear;

namespace {

OrganizeResults organized(const QString &file)
{
    LanqorOrganizeMolecules structure(nullptr, file);
    if (!structure.organize())
        qFatal("%s", qPrintable(structure.getLastError()));
    return structure.getResults();
}

/// The atoms of the first ligand of that formula.
QVector<Coord> ligandOf(const OrganizeResults &structure, const QString &formula)
{
    QVector<Coord> atoms;
    QString name;
    for (const OrganizedAtom &atom : structure.atoms) {
        if (name.isEmpty() && ligandName::canonical(atom.fragment) == formula)
            name = atom.fragment;
        if (!name.isEmpty() && atom.fragment == name)
            atoms.append(atom.position);
    }
    return atoms;
}

} // namespace

class TestDonorModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void names_data()
    {
        QTest::addColumn<QString>("canonical");
        QTest::newRow("C5 H7 O2") << QStringLiteral("C5H7O2");
        QTest::newRow("O2C5H7_12") << QStringLiteral("C5H7O2");
        QTest::newRow("H2 O1") << QStringLiteral("H2O");
        QTest::newRow("acetate") << QStringLiteral("acetate");
    }
    void names()
    {
        QFETCH(QString, canonical);
        QCOMPARE(ligandName::canonical(QLatin1String(QTest::currentDataTag())), canonical);
    }

    /// Ligands of real complexes.
    void classes_data()
    {
        QTest::addColumn<QString>("formula");
        QTest::addColumn<int>("ligandClass");
        QTest::addColumn<double>("deviation");
        QTest::addColumn<QString>("ring");
        QTest::addColumn<bool>("isAntenna");
        const auto row = [](const char *file, const char *formula, LigandClass kind,
                            double deviation, const char *ring = "", bool isAntenna = true) {
            QTest::newRow(qPrintable(
                QStringLiteral("%1 %2").arg(QLatin1String(file), QLatin1String(formula))))
                << QString::fromLatin1(formula) << static_cast<int>(kind) << deviation
                << QString::fromLatin1(ring) << isAntenna;
        };
        row("xtb/eu_acac3_h2o/s0.xyz", "C5H7O2", LigandClass::Other, 2000);
        row("xtb/eu_acac3_h2o/s0.xyz", "H2O", LigandClass::Other, 2000, "", false);
        row("xtb/eu_btfa3_h2o/s0.xyz", "C10H6F3O2", LigandClass::ArylDiketonate, 500);
        row("xtb/eu_tta3_h2o/s0.xyz", "C8H4F3O2S", LigandClass::ArylDiketonate, 500, "C4S");
        row("xtb/eu_ffa3_h2o/s0.xyz", "C8H4F3O3", LigandClass::ArylDiketonate, 500, "C4O");
        row("xtb/eu_hfac3_bpy/s0.xyz", "C5HF6O2", LigandClass::FluoroalkylDiketonate, 3000);
        row("xtb/eu_hfac3_bpy/s0.xyz", "C10H8N2", LigandClass::Polypyridine, 800);
        row("xtb/eu_acac3_phen/s0.xyz", "C12H8N2", LigandClass::Polypyridine, 800);
        row("xtb/eu_bath_hfac3/s0.xyz", "C24H16N2", LigandClass::Polypyridine, 800);
        row("xtb/eu_dipic3/s0.xyz", "C7H3NO4", LigandClass::PyridineCarboxylate, 3000);
        row("xtb/eu_acac2_no3_bpy/s0.xyz", "NO3", LigandClass::Other, 2000, "", false);
        const char *const mop = "structures/mop/eu_%1.mop";
        const auto crystal = [&](const char *code, const char *formula, LigandClass kind,
                                 double deviation, const char *ring = "", bool isAntenna = true) {
            row(qPrintable(QString::fromLatin1(mop).arg(QLatin1String(code))), formula, kind,
                deviation, ring, isAntenna);
        };
        crystal("jaxxov", "C15H11O2", LigandClass::ArylDiketonate, 500);    // dbm
        crystal("bafzeo", "C15H11N3", LigandClass::Polypyridine, 800);      // terpy
        crystal("qhdoeu", "C11H19O2", LigandClass::Other, 2000);            // thd
        crystal("gebyan", "C18H15OP", LigandClass::Other, 2000, "", false); // OPPh3
        crystal("gacjoj", "C12H12N2O2", LigandClass::Other, 2000);          // bpy dioxide
        crystal("kihsez", "C2H3O2", LigandClass::Carboxylate, 3000, "", false);
        crystal("jugbui", "C21H17N5", LigandClass::Other, 2000, "C3N2"); // benzimidazole
    }
    void classes()
    {
        QFETCH(QString, formula);
        QFETCH(int, ligandClass);
        QFETCH(double, deviation);
        QFETCH(QString, ring);
        QFETCH(bool, isAntenna);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const QString file = corpusFile(tag.section(QLatin1Char(' '), 0, 0));
        if (file.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        const QVector<Coord> ligand = ligandOf(organized(file), formula);
        QVERIFY(!ligand.isEmpty());
        const LigandClassResults kind = LanqorLigandClasses::classify(ligand);
        QCOMPARE(static_cast<int>(kind.ligandClass), ligandClass);
        QCOMPARE(kind.gfn1StandardDeviation, deviation);
        QCOMPARE(kind.fiveMemberedRing, ring);
        QCOMPARE(kind.isAntenna, isAntenna);
        QCOMPARE(kind.gfn1Error.isEmpty(), deviation < 3000.0);
    }

    /// A neutral ligand alone, where it is.
    void neutralLigand()
    {
        CORPUS_FILE(path, "xtb/eu_acac3_phen/s0.xyz");
        LanqorDonorModel model(nullptr, organized(path));
        for (const char *name : {"C12H8N2", "1,10-Phenanthroline"}) {
            QVERIFY2(model.build(QLatin1String(name)), qPrintable(model.getLastError()));
            QVERIFY(model.getResults().isLigandAlone);
            QCOMPARE(model.getResults().atoms.size(), 22);
            QCOMPARE(model.getResults().charge, 0);
            QCOMPARE(model.getResults().removed.size(), 3);
        }
    }

    /// Three anions stay and a water takes the place of phenanthroline, far from all else.
    void anion()
    {
        CORPUS_FILE(path, "xtb/eu_acac3_phen/s0.xyz");
        const OrganizeResults structure = organized(path);
        LanqorDonorModel model(nullptr, structure);
        QVERIFY2(model.build(QStringLiteral("C5 H7 O2")), qPrintable(model.getLastError()));
        const DonorModelResults results = model.getResults();
        QCOMPARE(results.description, QStringLiteral("[Eu(C5H7O2)3(H2O)]"));
        QCOMPARE(results.atoms.size(), 46);
        QCOMPARE(results.charge, 0);
        const QVector<Coord> &atoms = results.atoms;
        COMPARE_NEAR(fragments::distance(atoms.first(), atoms.at(43)), 2.45, 1e-9);
        COMPARE_NEAR(fragments::distance(atoms.at(43), atoms.at(44)), 0.96, 1e-9);
        COMPARE_NEAR(fragments::distance(atoms.at(44), atoms.at(45)), 1.518, 1e-3); // 104.5 degrees
        // Where phenanthroline was: nearer to its nitrogen atoms than to any atom that stays.
        double toNitrogen = 1000.0;
        for (const OrganizedAtom &atom : structure.atoms)
            if (atom.position.label == QLatin1String("N"))
                toNitrogen = std::min(toNitrogen, fragments::distance(atoms.at(43), atom.position));
        QVERIFY2(toNitrogen < results.nearestToWater,
                 qPrintable(QStringLiteral("%1 %2").arg(toNitrogen).arg(results.nearestToWater)));
        QVERIFY(results.nearestToWater > 2.5);
        const auto parts =
            fragments::fragmentsAround(0, atoms, fragments::withMissingBonds(atoms, {}));
        QCOMPARE(parts.size(), 4);
    }

    void refused_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("ligand");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *file, const char *ligand, const char *words) {
            QTest::newRow(words) << QString::fromLatin1(file) << QString::fromLatin1(ligand)
                                 << QString::fromLatin1(words);
        };
        row("xtb/eu_acac3_h2o/s0.xyz", "C5H7O2", "[Eu(C5H7O2)3(H2O)] itself");
        row("xtb/eu_acac3_h2o/s0.xyz", "C6H6", "no ligand C6H6; it has C5H7O2, H2O");
        row("xtb/eu_acac2_no3_bpy/s0.xyz", "C5H7O2", "holds 2 of C5H7O2");
        row("xtb/eu_dipic3/s0.xyz", "C7H3NO4", "has the charge -2");
        row("structures/mop/eu_jugbui.mop", "C21H17N5", "charge of C21H17N5 is not known");
    }
    void refused()
    {
        QFETCH(QString, file);
        QFETCH(QString, ligand);
        QFETCH(QString, words);
        const QString path = corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorDonorModel model(nullptr, organized(path));
        QVERIFY(!model.build(ligand));
        QVERIFY2(model.getLastError().contains(words), qPrintable(model.getLastError()));
        if (words.contains(QStringLiteral("not known"))) {
            model.setComplexCharge(0); // three nitrates beside it
            QVERIFY2(model.build(ligand), qPrintable(model.getLastError()));
            model.setLigandCharge(1);
            QVERIFY(!model.build(ligand)); // odd number of electrons
        }
    }
};

QTEST_GUILESS_MAIN(TestDonorModel)
#include "tst_donormodel.moc"
