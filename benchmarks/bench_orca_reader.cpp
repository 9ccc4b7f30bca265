// Reading a generated ORCA output of about 200 MB: an optimisation of 15 steps that prints the
// orbitals and states of each, 1000 atomic orbitals on 250 atoms. "grep -c" counts a text in the
// same file beside it. peak_MB is the largest memory of the process so far; the file is never in
// memory, and of its 15 tables of 8 MB no more than two are at a time.
#include <LanqorEngine/LanqorInputData.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

constexpr int stepCount = 15;
constexpr int atomCount = 250;
constexpr int orbitalCount = 1000;
constexpr int orbitalsPerBlock = 6;
constexpr int stateCount = 25;

QByteArray number(double value, int decimals, int width)
{
    return QByteArray::number(value, 'f', decimals).rightJustified(width);
}

QByteArray heading(const QByteArray &text)
{
    const QByteArray rule(text.size(), '-');
    return rule + '\n' + text + '\n' + rule + '\n';
}

void writeGeometry(QFile &file, int step)
{
    file.write(heading("CARTESIAN COORDINATES (ANGSTROEM)"));
    for (int atom = 0; atom < atomCount; ++atom) {
        file.write(atom == 0 ? "  Eu" : "  C ");
        for (int axis = 0; axis < 3; ++axis)
            file.write(number(0.01 * ((atom * (axis + 7)) % 997) + 0.001 * step, 6, 14));
        file.write("\n");
    }
    file.write("\n");
}

void writeOrbitals(QFile &file)
{
    file.write(heading("MOLECULAR ORBITALS"));
    for (int first = 0; first < orbitalCount; first += orbitalsPerBlock) {
        const int end = std::min(first + orbitalsPerBlock, orbitalCount);
        QByteArray head[4];
        for (QByteArray &line : head)
            line = QByteArray(16, ' ');
        for (int i = first; i < end; ++i) {
            head[0] += QByteArray::number(i).rightJustified(10);
            head[1] += number(-1.0 + 0.002 * i, 5, 10);
            head[2] += number(i < orbitalCount / 2 ? 2.0 : 0.0, 5, 10);
            head[3] += "  --------";
        }
        for (const QByteArray &line : head)
            file.write(line + '\n');
        for (int row = 0; row < orbitalCount; ++row) {
            QByteArray line = QByteArray::number(row / 4).rightJustified(3) + "C   1pz       ";
            for (int i = first; i < end; ++i)
                line += number(((row * 37 + i * 91) % 1999 - 999) * 1e-3, 6, 10);
            file.write(line + '\n');
        }
    }
    file.write("\n\n\n");
}

void writeStates(QFile &file, const QByteArray &title, int step)
{
    file.write(heading(title) + '\n');
    for (int state = 1; state <= stateCount; ++state) {
        const double energy = 20000.0 + 250.0 * state + step;
        file.write("STATE " + QByteArray::number(state).rightJustified(2) +
                   ":  E=   0.100000 au      2.721 eV" + number(energy, 1, 11) + " cm**-1\n");
        for (int i = 0; i < 10; ++i) {
            file.write(QByteArray::number(490 + i).rightJustified(6) + "a -> " +
                       QByteArray::number(500 + (state + i) % 20) +
                       "a  :     0.100000 (c=  0.31622777)\n");
        }
        file.write("\n");
    }
    file.write("\n");
}

void writeSpectrum(QFile &file, int step)
{
    file.write(heading("ABSORPTION SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS") +
               "State\n(cm-1)\n---\n");
    for (int state = 1; state <= stateCount; ++state) {
        file.write(QByteArray::number(state).rightJustified(4) +
                   number(20000.0 + 250.0 * state + step, 1, 10) +
                   "    321.5   0.022972521   0.24312\n");
    }
    file.write("\n");
}

/// The generated file, made once.
QString outputFile()
{
    static const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("optimisation.out"));
    QFile file(path);
    if (file.exists())
        return path;
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    for (int step = 0; step < stepCount; ++step) {
        writeGeometry(file, step);
        writeOrbitals(file);
        writeStates(file, "TD-DFT/TDA EXCITED STATES (SINGLETS)", step);
        writeStates(file, "TD-DFT/TDA EXCITED STATES (TRIPLETS)", step);
        writeSpectrum(file, step);
    }
    return path;
}

void reportSpeed(benchmark::State &state, const QString &path)
{
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void readOutputOrca(benchmark::State &state)
{
    const QString path = outputFile();
    for (auto _ : state) {
        LanqorInputData data(nullptr, path);
        if (!data.readOutputOrca() || data.getMolecularOrbitalNumber() != orbitalCount)
            state.SkipWithError("the generated file was not read");
    }
    reportSpeed(state, path);
}
BENCHMARK(readOutputOrca)->Unit(benchmark::kMillisecond)->UseRealTime();

void readCoordFromOrcaOutFile(benchmark::State &state)
{
    const QString path = outputFile();
    for (auto _ : state) {
        LanqorInputData data(nullptr, path);
        if (!data.readCoordFromOrcaOutFile() || data.getCoord().size() != atomCount)
            state.SkipWithError("the generated file was not read");
    }
    reportSpeed(state, path);
}
BENCHMARK(readCoordFromOrcaOutFile)->Unit(benchmark::kMillisecond)->UseRealTime();

void grepCount(benchmark::State &state)
{
    const QString path = outputFile();
    for (auto _ : state) {
        QProcess grep;
        grep.start(QStringLiteral("grep"),
                   {QStringLiteral("-c"), QStringLiteral("EXCITED STATES"), path});
        if (!grep.waitForFinished(-1) || grep.readAll().toInt() != 2 * stepCount)
            state.SkipWithError("grep failed");
    }
    reportSpeed(state, path);
}
BENCHMARK(grepCount)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
