// Fit of charge factors and polarisabilities, one group of atoms per element: one evaluation,
// feasible and outside the bounds, and a whole default fit of 225000 points.
#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorParametric.h>

#include <QString>

#include <benchmark/benchmark.h>

namespace {

constexpr int donorCount = 8;

/// Eu(acac)3(phen), six O and two N.
class Fit : public LanqorParametric
{
public:
    Fit()
        : LanqorParametric(
              nullptr, QStringLiteral(LANQOR_TEST_DATA_DIR "/mopac/eu_acac3_phen_am1_allvec.out"),
              0)
    {
        QStringList oxygens;
        for (int atom = 2; atom <= 7; ++atom)
            oxygens.append(QStringLiteral("O %1").arg(atom));
        setCoordNumber(donorCount);
        setGroupsAndAtoms({{1, oxygens}, {2, {QStringLiteral("N 8"), QStringLiteral("N 9")}}});
        setOmegaExp(20.5e-20, 8.1e-20);
        if (!checkSetup())
            qFatal("%s", qPrintable(getLastError()));
    }
};

void evaluateFit(benchmark::State &state, double g)
{
    Fit fit;
    double vector[] = {g, 1.0, 2.0, 3.0};
    double *x = vector;
    for (auto _ : state) {
        vector[2] = vector[2] > 4.0 ? 1.0 : vector[2] + 1e-3;
        fit.runParametrization(4, x);
        benchmark::DoNotOptimize(fit.getResponseFunction());
    }
}

void feasibleEvaluation(benchmark::State &state)
{
    evaluateFit(state, 1.0);
}

void infeasibleEvaluation(benchmark::State &state)
{
    evaluateFit(state, 9.0);
}

void wholeFit(benchmark::State &state)
{
    for (auto _ : state) {
        Fit fit;
        LanqorAbstractParametric *target = &fit;
        QVector<double> start = fit.makeStartingVector(1);
        double *x = start.data();
        LanqorGSA annealing(nullptr, start.size(), x, target);
        annealing.initializeGSA();
        benchmark::DoNotOptimize(fit.getBestResponse());
    }
    state.SetItemsProcessed(state.iterations() * 225000);
}

} // namespace

BENCHMARK(feasibleEvaluation);
BENCHMARK(infeasibleEvaluation);
BENCHMARK(wholeFit)->Unit(benchmark::kMillisecond);
