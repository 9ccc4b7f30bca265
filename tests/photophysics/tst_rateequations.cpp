#include "TestSupport.h"
#include "photophysics/photonShares_p.h"

#include <QtTest>

#include <cmath>

using rateEquations::Scheme;
using transferRates::Tables;
using namespace transferChannels;

/// Populations against an elimination that subtracts nothing.
class TestRateEquations : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void populations_data();
    void populations();
    void closedChannelsLeaveTheIonDark();
};

namespace {

using Rates = std::vector<std::vector<double>>;

/// Rates 1e5 .. 1e12, different in every slot; back-transfer follows @p backFraction.
Tables variedTables(double backFraction)
{
    Tables tables;
    for (std::size_t slot = 0; slot < 15; ++slot) {
        const double rate = std::pow(10.0, 5.0 + std::fmod(2.7 * static_cast<double>(slot), 7.0));
        tables.forwardRates[slot] = rate;
        tables.exchangeForwardRates[slot] = 0.3 * rate;
        tables.backwardRates[slot] = backFraction * rate;
        tables.exchangeBackwardRates[slot] = backFraction * 0.6 * rate;
    }
    return tables;
}

/// Stationary distribution of k(i -> j) by the algorithm of W. K. Grassmann, M. I. Taksar,
/// D. P. Heyman, Oper. Res. 33, 1107 (1985): accurate in every component.
std::vector<double> stationary(Rates k)
{
    const std::size_t size = k.size();
    for (std::size_t n = size - 1; n > 0; --n) {
        double outflow = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            outflow += k[n][j];
        for (std::size_t i = 0; i < n; ++i)
            k[i][n] /= outflow;
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; j < n; ++j)
                if (i != j)
                    k[i][j] += k[i][n] * k[n][j];
    }
    std::vector<double> x(size, 1.0);
    double sum = 1.0;
    for (std::size_t n = 1; n < size; ++n) {
        x[n] = 0.0;
        for (std::size_t i = 0; i < n; ++i)
            x[n] += x[i] * k[i][n];
        sum += x[n];
    }
    for (double &value : x)
        value /= sum;
    return x;
}

// The schemes written out by hand; emission rate 1500 s^-1.

Rates eightByHand(const Tables &t)
{
    const auto &W = t.forwardRates;
    const auto &X = t.exchangeForwardRates;
    const auto &w = t.backwardRates;
    const auto &x = t.exchangeBackwardRates;
    return {{0, 1e4, 0, 0, 0, 0, 0, 0},
            {1e6, 0, 1e8, W[0], W[1], W[2], X[3], X[4]},
            {1e5, 0, 0, W[10], W[11], W[12], X[13], X[14]},
            {0, w[0], w[10], 0, 1e6, 0, 0, 0},
            {0, w[1], w[11], 0, 0, 1e6, 0, 0},
            {0, w[2], w[12], 0, 0, 0, 1e6, 0},
            {0, x[3], x[13], 0, 0, 0, 0, 1e6},
            {1500, x[4], x[14], 0, 0, 0, 0, 0}};
}

/// Without 5G6 and 5L6, whose places 5D1 takes in the cascade.
Rates sixByHand(const Tables &t)
{
    Rates k = eightByHand(t);
    k[3][6] = k[3][4];
    k.erase(k.begin() + 4, k.begin() + 6);
    for (std::vector<double> &row : k)
        row.erase(row.begin() + 4, row.begin() + 6);
    return k;
}

Rates twoTripletsByHand(const Tables &t)
{
    const auto &W = t.forwardRates;
    const auto &X = t.exchangeForwardRates;
    const auto &w = t.backwardRates;
    const auto &x = t.exchangeBackwardRates;
    return {{0, 1e4, 0, 0, 0, 0, 0},         {1e6, 0, 1e8, 1e8, W[0], 0, 0},
            {1e6, 0, 0, 1e8, W[5], 0, 0}, // the triplets decay ten times as fast here
            {1e6, 0, 0, 0, 0, X[13], X[14]}, {0, w[0], w[5], 0, 0, 1e6, 0},
            {0, 0, 0, x[13], 0, 0, 1e6},     {1500, 0, 0, x[14], 0, 0, 0}};
}

const Scheme &schemeOf(int states)
{
    if (states == 6)
        return rateEquations::sixStates();
    return states == 8 ? rateEquations::eightStates() : rateEquations::twoTriplets();
}

/// The flows to the ground state per absorbed photon, by the rates written out by hand.
PhotonShares sharesByHand(int states, const Rates &k, double arad)
{
    const std::vector<double> x = stationary(k);
    Rates oneWay = k; // nothing returns from 5D0
    for (std::size_t i = 1; i < k.size(); ++i)
        oneWay.back()[i] = 0.0;
    const std::vector<double> first = stationary(oneWay);
    const auto flow = [&k](const std::vector<double> &p, std::size_t i) {
        return p[i] * k[i][0] / (p[0] * k[0][1]);
    };
    const auto triplets = [&](const std::vector<double> &p) {
        return flow(p, 2) + (states == 7 ? flow(p, 3) : 0.0);
    };
    PhotonShares shares;
    shares.singletDecay = flow(x, 1);
    shares.tripletDecay = triplets(x);
    shares.emitted = flow(x, k.size() - 1) * arad / 1500.0;
    shares.nonRadiative = flow(x, k.size() - 1) - shares.emitted;
    shares.reaching5D0 = flow(first, k.size() - 1);
    shares.backTransfer = flow(x, 1) - flow(first, 1) + triplets(x) - triplets(first);
    return shares;
}

/// Population of a state per population of S0.
double perGroundState(const Scheme &scheme, const Tables &tables, double emissionDecay, State state)
{
    const Eigen::VectorXd x =
        rateEquations::steadyState(rateEquations::rateMatrix(scheme, tables, emissionDecay));
    Eigen::Index index = 0;
    while (scheme.states[static_cast<std::size_t>(index)] != state)
        ++index;
    return x[index] / x[0];
}

} // namespace

void TestRateEquations::populations_data()
{
    QTest::addColumn<int>("states");
    QTest::addColumn<double>("backFraction");
    for (const int states : {6, 7, 8})
        for (const double backFraction : {0.0, 1e-6, 0.2, 1e4, 1e12})
            QTest::addRow("%d states, back-transfer %g", states, backFraction)
                << states << backFraction;
}

void TestRateEquations::populations()
{
    QFETCH(int, states);
    QFETCH(double, backFraction);
    const Tables tables = variedTables(backFraction);
    const Rates byHand = states == 6   ? sixByHand(tables)
                         : states == 8 ? eightByHand(tables)
                                       : twoTripletsByHand(tables);
    const std::vector<double> expected = stationary(byHand);
    const Eigen::VectorXd x =
        rateEquations::steadyState(rateEquations::rateMatrix(schemeOf(states), tables, 1500.0));
    QCOMPARE(static_cast<int>(x.size()), states);
    COMPARE_NEAR(x.sum(), 1.0, 1e-14);
    for (Eigen::Index i = 0; i < x.size(); ++i) {
        const double value = expected[static_cast<std::size_t>(i)];
        QVERIFY2(x[i] > 0.0 && std::abs(x[i] / value - 1.0) < 1e-9,
                 qPrintable(QStringLiteral("state %1: got %2, expected %3")
                                .arg(i)
                                .arg(x[i], 0, 'g', 17)
                                .arg(value, 0, 'g', 17)));
    }
    const PhotonShares shares =
        rateEquations::solve(schemeOf(states), tables, 600.0, 900.0, {}).shares;
    const PhotonShares flows = sharesByHand(states, byHand, 600.0);
    for (double PhotonShares::*share :
         {&PhotonShares::singletDecay, &PhotonShares::tripletDecay, &PhotonShares::nonRadiative,
          &PhotonShares::emitted, &PhotonShares::reaching5D0, &PhotonShares::backTransfer})
        COMPARE_NEAR(shares.*share, flows.*share, 1e-9);
    COMPARE_NEAR(shares.singletDecay + shares.tripletDecay + shares.nonRadiative + shares.emitted,
                 1.0, 1e-9);
    QVERIFY(shares.limitingShare >= std::max(shares.nonRadiative, shares.backTransfer));
}

void TestRateEquations::closedChannelsLeaveTheIonDark()
{
    for (const int states : {6, 7, 8})
        for (double decay = 10.0; decay < 5000.0; decay *= 1.07) {
            const Scheme &scheme = schemeOf(states);
            for (const State level : {Level5D4, Level5D1, Level5D0})
                QCOMPARE(perGroundState(scheme, Tables(), decay, level), 0.0);
            COMPARE_NEAR(perGroundState(scheme, Tables(), decay, S1),
                         1e4 / (states == 7 ? 2.01e8 : 1.01e8), 1e-18);
        }
}

QTEST_GUILESS_MAIN(TestRateEquations)
#include "tst_rateequations.moc"
