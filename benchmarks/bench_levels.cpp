// All levels of 4f^6 and 4f^7 by rotations of two rows and columns, as a fit calls them, beside
// the same method with full matrix products; 6-j symbols beside those of GSL.
#include "fullProductJacobi.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorWignerSymbols.h>

#include <QDir>

#include <benchmark/benchmark.h>
#include <gsl/gsl_sf_coupling.h>

namespace {

constexpr freeIon::Parameters europium{0.0, 369.60795, 56.240519, 5.6408009, 1326.0};
constexpr double tolerance = 1e-10;

/// The tables are looked for in the current folder.
LanqorEnergyLevels &ion(int electrons)
{
    static LanqorEnergyLevels *ions[14] = {};
    LanqorEnergyLevels *&levels = ions[electrons];
    if (!levels) {
        QDir::setCurrent(QStringLiteral(LANQOR_SOURCE_DATA));
        levels = new LanqorEnergyLevels(nullptr, electrons);
        levels->setSlaterIntegral(europium.F0, europium.F2, europium.F4, europium.F6);
        levels->setZetaParameters(europium.zeta);
    }
    return *levels;
}

std::vector<freeIon::AngularBlock> blocksOf(int electrons)
{
    std::vector<freeIon::AngularBlock> blocks;
    for (double J = electrons % 2 * 0.5; J < 13.0; J += 1.0)
        blocks.push_back(freeIon::angularBlock(ion(electrons), electrons, false, J));
    return blocks;
}

void allLevels(benchmark::State &state)
{
    LanqorEnergyLevels &levels = ion(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        levels.calcEnergyLevels(-1.0);
        benchmark::DoNotOptimize(levels.getMixedStatesVector().constData());
    }
}

void allLevelsByFullProducts(benchmark::State &state)
{
    const auto blocks = blocksOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        for (const freeIon::AngularBlock &block : blocks) {
            FullProductJacobi jacobi(freeIon::hamiltonian(block, europium));
            jacobi.run(tolerance);
            benchmark::DoNotOptimize(jacobi.eigenvalue(0));
        }
}

template <class Symbol> void sixJSymbols(benchmark::State &state, Symbol symbol)
{
    double sum = 0.0;
    for (auto _ : state)
        for (int L = 0; L <= 12; ++L)
            for (int parent = 0; parent <= 12; ++parent)
                for (int k = 2; k <= 6; k += 2)
                    sum += symbol(L, 3, parent, 3, L, k);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations() * 13 * 13 * 3);
}

double ours(int a, int b, int c, int d, int e, int f)
{
    return LanqorWignerSymbols::calcSixJSymbol(a, b, c, d, e, f);
}

double ofGsl(int a, int b, int c, int d, int e, int f)
{
    return gsl_sf_coupling_6j(2 * a, 2 * b, 2 * c, 2 * d, 2 * e, 2 * f);
}

} // namespace

BENCHMARK(allLevels)->Arg(6)->Arg(7)->Unit(benchmark::kMillisecond);
BENCHMARK(allLevelsByFullProducts)->Arg(6)->Arg(7)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sixJSymbols, ours, ours);
BENCHMARK_CAPTURE(sixJSymbols, gsl, ofGsl);
