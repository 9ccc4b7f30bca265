// Intensity parameters of nine coordinated atoms: calcOmega with new charge factors and
// polarisabilities, as a fit calls it, beside the plain sum that evaluates each harmonic and
// power anew in every term.
#include "../tests/intensity/plainOmega.h"

#include <LanqorEngine/LanqorOmega.h>

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int atomCount = 9;

/// A tricapped prism with donors of both signs of beta.
QVector<CoordSPH> tricappedPrism()
{
    QVector<CoordSPH> atoms = {{QStringLiteral("Eu"), 0.0, 0.0, 0.0}};
    for (int i = 0; i < atomCount; ++i) {
        const double theta = i < 3 ? 45.0 : i < 6 ? 135.0 : 90.0;
        const double phi = 120.0 * i + (i < 6 ? 0.0 : 60.0);
        atoms.append(
            {i % 2 ? QStringLiteral("N") : QStringLiteral("O"), 2.4 + 0.01 * i, theta, phi});
    }
    return atoms;
}

/// The same atoms as an XYZ file.
QString xyzFile(const QTemporaryDir &directory, const QVector<CoordSPH> &atoms)
{
    QString text = QStringLiteral("%1\n\n").arg(atoms.size());
    for (const CoordSPH &atom : atoms) {
        const double theta = atom.theta * M_PI / 180.0;
        const double phi = atom.phi * M_PI / 180.0;
        text += QStringLiteral("%1 %2 %3 %4\n")
                    .arg(atom.label)
                    .arg(atom.r * std::sin(theta) * std::cos(phi), 0, 'f', 8)
                    .arg(atom.r * std::sin(theta) * std::sin(phi), 0, 'f', 8)
                    .arg(atom.r * std::cos(theta), 0, 'f', 8);
    }
    QFile file(directory.filePath(QStringLiteral("sphere.xyz")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        return QString();
    return file.fileName();
}

struct Trial
{
    QVector<double> g = QVector<double>(atomCount + 2, 1.0);
    QVector<double> alpha = QVector<double>(atomCount + 2, 2e-24);

    void next(int step)
    {
        g[2 + step % atomCount] = 0.5 + 1e-3 * (step % 1000);
        alpha[2 + step % atomCount] = (1.0 + 1e-3 * (step % 997)) * 1e-24;
    }
};

void calcOmega(benchmark::State &state)
{
    const QTemporaryDir directory;
    const QString file = xyzFile(directory, tricappedPrism());
    LanqorOmega omega(nullptr, 0, file, file);
    omega.setCoordNumber(atomCount);
    Trial trial;
    int step = 0;
    for (auto _ : state) {
        trial.next(++step);
        double *g = trial.g.data();
        double *alpha = trial.alpha.data();
        omega.setChargeFactorAndAlpha(g, alpha);
        if (!omega.calcOmega()) {
            state.SkipWithError("calcOmega failed");
            break;
        }
        benchmark::DoNotOptimize(omega.getOmega(2));
    }
}

void plainSum(benchmark::State &state)
{
    const QVector<CoordSPH> atoms = tricappedPrism();
    Trial trial;
    int step = 0;
    for (auto _ : state) {
        trial.next(++step);
        benchmark::DoNotOptimize(plainOmega::omega(atoms, trial.g, trial.alpha).total[2]);
    }
}

BENCHMARK(calcOmega);
BENCHMARK(plainSum);

} // namespace
