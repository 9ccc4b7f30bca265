#include "TestSupport.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorUnitaryMatrixElement.h>

#include <QDir>
#include <QLoggingCategory>
#include <QtTest>

#include <cmath>

using LanqorSpectroscopicTermUtil::SpectroscopicTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;
using U = LanqorUnitaryMatrixElement;

namespace {

SpectroscopicTerm term(const char *label)
{
    return termFromLabel(QLatin1String(label), false);
}

SpectroscopicTerm level(const QString &label)
{
    return termFromLabel(label, true);
}

double square(double x)
{
    return x * x;
}

// <0|U(k)|J>^2 between levels in intermediate coupling.
double strength(int n, int k, const QString &bra, const QString &ket,
                const LanqorEnergyLevels &levels)
{
    return square(U::mixedUnitaryMatrixElementCouppling(n, k, level(bra), level(ket), levels));
}

int debugLines = 0;
void countDebugOutput(QtMsgType type, const QMessageLogContext &, const QString &)
{
    debugLines += type == QtDebugMsg ? 1 : 0;
}

} // namespace

class TestUnitaryMatrixElement : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void termSelectionRules();
    void moreThanHalfFilled();
    void angularMomentum();
    void spinOperator();
    void slaterCoefficients();
    void publishedStrengths();
};

void TestUnitaryMatrixElement::initTestCase()
{
    QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
}

void TestUnitaryMatrixElement::termSelectionRules()
{
    const LanqorEnergyLevels f1(nullptr, 1);
    const LanqorEnergyLevels f2(nullptr, 2);
    for (int k = 0; k <= 6; ++k)
        COMPARE_NEAR(U::unitaryMatrixElement(1, k, term("2F"), term("2F"), f1), 1.0, 1e-14);
    QCOMPARE(U::unitaryMatrixElement(1, 7.0, term("2F"), term("2F"), f1), 0.0);
    for (int k = 0; k <= 6; ++k)
        QCOMPARE(U::unitaryMatrixElement(2, k, term("3P"), term("1D"), f2), 0.0);
    QCOMPARE(U::unitaryMatrixElement(2, 2.0, term("3K"), term("3H"), f2), 0.0);
    QCOMPARE(U::unitaryMatrixElement(2, 2.0, term("2J"), term("2J"), f2), 0.0);
    // Odd ranks are generators of R7 and do not leave W: 4F of f^3 has W = (111) like 4D, 2F1
    // has (100) and 2F2 (210).
    const LanqorEnergyLevels f3(nullptr, 3);
    COMPARE_NEAR(U::unitaryMatrixElement(3, 3.0, term("2F1"), term("2F2"), f3), 0.0, 1e-14);
    QVERIFY(std::abs(U::unitaryMatrixElement(3, 2.0, term("2F1"), term("2F2"), f3)) > 0.01);
}

void TestUnitaryMatrixElement::moreThanHalfFilled()
{
    const LanqorEnergyLevels f3(nullptr, 3);
    const LanqorEnergyLevels f11(nullptr, 11);
    for (int k = 1; k <= 6; ++k) {
        const double few = U::unitaryMatrixElement(3, k, term("4I"), term("4G"), f3);
        const double many = U::unitaryMatrixElement(11, k, term("4I"), term("4G"), f11);
        COMPARE_NEAR(many, (k % 2 == 0 ? -1.0 : 1.0) * 11.0 / 3.0 * few, 1e-13);
        COMPARE_NEAR(U::unitaryMatrixElement(3, k, term("4I"), term("4G"), f11), few, 0.0);
    }
    // The half-filled shell has no such sign.
    const LanqorEnergyLevels f7(nullptr, 7);
    const double below = U::unitaryMatrixElement(6, 2.0, term("6P"), term("6D"), f7);
    COMPARE_NEAR(U::unitaryMatrixElement(7, 2.0, term("6P"), term("6D"), f7), 7.0 / 6.0 * below,
                 1e-13);
    COMPARE_NEAR(std::abs(below), 6.0 / 7.0 * std::sqrt(3.0 / 14.0), 1e-13);
    const double v = freeIon::calculateV1X(f3, 3, term("4I"), term("4I"));
    // zeta_SL = +- zeta/2S for Hund's term: V(11) = sqrt(S(S+1)(2S+1) L(L+1)(2L+1)) / (2S
    // sqrt(84)).
    COMPARE_NEAR(std::abs(v), std::sqrt(1.5 * 2.5 * 4.0 * 6.0 * 7.0 * 13.0) / 3.0 / std::sqrt(84.0),
                 1e-13);
}

void TestUnitaryMatrixElement::angularMomentum()
{
    // L = sqrt(l(l+1)(2l+1)) U(1): diagonal sqrt(L(L+1)(2L+1)), nothing between terms.
    const LanqorEnergyLevels f4(nullptr, 4);
    for (const SpectroscopicTerm &bra : f4.getSpectroscopicTermVector())
        for (const SpectroscopicTerm &ket : f4.getSpectroscopicTermVector()) {
            const bool same = LanqorSpectroscopicTermUtil::isSameTerm(bra, ket);
            const double expected =
                same ? std::sqrt(bra.L * (bra.L + 1.0) * (2.0 * bra.L + 1.0) / 84.0) : 0.0;
            COMPARE_NEAR(U::unitaryMatrixElement(4, 1.0, bra, ket, f4), expected, 1e-13);
        }
}

void TestUnitaryMatrixElement::spinOperator()
{
    SpectroscopicTerm bra = term("7F");
    SpectroscopicTerm ket = bra;
    for (int J = 0; J <= 6; ++J) {
        bra.J = ket.J = J;
        if (J > 0) // projection of S on J
            COMPARE_NEAR(U::matrixElementSpinOperator(bra, ket),
                         std::sqrt((2.0 * J + 1.0) / (J * (J + 1.0))) * (J * (J + 1.0)) / 2.0,
                         1e-13);
        double sum = 0.0;
        for (int other = 0; other <= 6; ++other) {
            ket.J = other;
            sum += square(U::matrixElementSpinOperator(bra, ket));
        }
        COMPARE_NEAR(sum, (2.0 * J + 1.0) * 3.0 * 4.0, 1e-12);
    }
    // L + S = J: sqrt(J(J+1)(2J+1)) on the diagonal. Between J and J' it is 0, but with the sign
    // that the spin operator keeps both parts are equal.
    const LanqorEnergyLevels f6(nullptr, 6);
    const auto orbital = [&] {
        return std::sqrt(84.0) * U::unitaryMatrixElementCouppling(6, 1.0, bra, ket, f6);
    };
    for (int J = 1; J < 6; ++J) {
        bra.J = ket.J = J;
        COMPARE_NEAR(U::matrixElementSpinOperator(bra, ket) + orbital(),
                     std::sqrt(J * (J + 1.0) * (2.0 * J + 1.0)), 1e-12);
        ket.J = J + 1;
        COMPARE_NEAR(U::matrixElementSpinOperator(bra, ket), orbital(), 1e-12);
    }
    QCOMPARE(U::matrixElementSpinOperator(level(QStringLiteral("5D(1)1")),
                                          level(QStringLiteral("5D(2)1"))),
             0.0);
}

// sum_k f_k F^k by U(k) and 3-j symbols against the coefficients of Racah's parameters.
void TestUnitaryMatrixElement::slaterCoefficients()
{
    const freeIon::Parameters p{0.0, 321.0, 47.0, 5.1, 0.0};
    for (int n = 2; n <= 6; ++n) {
        const LanqorEnergyLevels levels(nullptr, n);
        for (const SpectroscopicTerm &one : levels.getSpectroscopicTermVector()) {
            const freeIon::AngularElement element{levels.getElectrostaticMatrixVector(one, one),
                                                  0.0, 0.0, 0.0};
            const double energy = U::calc_fk(n, 2.0, one, levels) * 225.0 * p.F2 +
                                  U::calc_fk(n, 4.0, one, levels) * 1089.0 * p.F4 +
                                  U::calc_fk(n, 6.0, one, levels) * 184041.0 / 25.0 * p.F6;
            COMPARE_NEAR(energy, freeIon::matrixElementElectrostaticInteraction(element, p), 1e-7);
        }
    }
}

// W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49, 4424 and 4450 (1968).
void TestUnitaryMatrixElement::publishedStrengths()
{
    LanqorEnergyLevels eu(nullptr, 6);
    eu.setSlaterIntegral(0.0, 401.0, 55.4, 6.06);
    eu.setZetaParameters(1326.0);
    QVERIFY(eu.calcEnergyLevels(-1.0));
    const QString emitting = eu.getMixedStatesVector().at(7).label; // a 5D0 of three
    qInstallMessageHandler(countDebugOutput);
    COMPARE_NEAR(strength(6, 4, emitting, QStringLiteral("7F4"), eu), 0.0023, 0.0002);
    QCOMPARE(debugLines, 0);
    QLoggingCategory::setFilterRules(QStringLiteral("lanqor.levels.debug=true"));
    COMPARE_NEAR(strength(6, 2, emitting, QStringLiteral("7F2"), eu), 0.0032, 0.0002);
    QCOMPARE(debugLines, 14 * 37);
    QLoggingCategory::setFilterRules(QString());
    COMPARE_NEAR(strength(6, 6, emitting, QStringLiteral("7F6"), eu), 0.0002, 0.0001);
    QCOMPARE(strength(6, 4, emitting, QStringLiteral("7F2"), eu), 0.0); // rank J' alone
    QCOMPARE(strength(6, 2, QStringLiteral("7F9"), QStringLiteral("7F2"), eu), 0.0);
    // Squares within the ground term, full Hamiltonian, to a few per cent.
    const double diagonal[][2] = {{1, 0.15404}, {2, 0.10001}, {5, 0.27602}, {6, 1.20261}};
    for (const auto &[J, expected] : diagonal) {
        const QString label = QStringLiteral("7F%1").arg(J);
        COMPARE_NEAR(strength(6, 2, label, label, eu), expected, 0.05 * expected);
    }
    LanqorEnergyLevels pr(nullptr, 2);
    pr.setSlaterIntegral(0.0, 305.21955, 46.276753, 4.434816);
    pr.setZetaParameters(740.75);
    QVERIFY(pr.calcEnergyLevels(-1.0));
    const double of3F2[][2] = {{2, 0.5089}, {4, 0.4032}, {6, 0.1177}};
    for (const auto &[k, expected] : of3F2)
        COMPARE_NEAR(strength(2, int(k), QStringLiteral("3H4"), QStringLiteral("3F2"), pr),
                     expected, 0.01);
    qInstallMessageHandler(nullptr);
}

QTEST_GUILESS_MAIN(TestUnitaryMatrixElement)
#include "tst_unitarymatrixelement.moc"
