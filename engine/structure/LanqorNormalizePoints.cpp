#include "LanqorNormalizePoints.h"

#include "core/reportText_p.h"
#include "structure/lorentzSpectrum_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Product of a wavelength in nm and its wavenumber in cm^-1.
constexpr double nmTimesWavenumber = 10000000.0;
constexpr int gridPoints = 1001;

bool readTransitions(LanqorInputData &data, int program)
{
    switch (program) {
    case LanqorInputData::ZindoOutput:
        return data.readAbsorptionDataZindo();
    case LanqorInputData::OrcaOutput:
        return data.readAbsorptionDataOrca();
    default:
        return data.readAbsorptionDataGaussian();
    }
}

bool isPositive(double value)
{
    return std::isfinite(value) && value > 0.0;
}

/// 1001 wavenumbers between two limits given as wavelengths.
QVector<double> wavenumberGrid(double firstWavelength, double secondWavelength)
{
    double start = nmTimesWavenumber / firstWavelength;
    double end = nmTimesWavenumber / secondWavelength;
    if (end < start)
        std::swap(start, end);
    const double step = std::abs(end - start) / (gridPoints - 1);
    QVector<double> grid;
    grid.reserve(gridPoints);
    for (int k = 1; k <= gridPoints; ++k)
        grid.append(start + (k - 1) * step);
    return grid;
}

} // namespace

LanqorNormalizePoints::LanqorNormalizePoints(QObject *parent, QString const &fileName,
                                             int const &program)
    : LanqorAbstractObjCalculation(parent)
    , positions(2, 0.0)
    , intensities(2, 0.0)
{
    if (program < LanqorInputData::ZindoOutput || program > LanqorInputData::GaussianOutput) {
        setLastError(tr("The program of an output with excited states is 0 (ZINDO), 1 (ORCA) or 2 "
                        "(Gaussian), not %1.")
                         .arg(program));
        return;
    }
    LanqorInputData data(nullptr, fileName);
    if (!readTransitions(data, program)) {
        setLastError(data.getLastError());
        return;
    }
    count = data.getExcitedStateCount();
    positions.fill(0.0, count + 2);
    intensities.fill(0.0, count + 2);
    for (int i = 1; i <= count; ++i) {
        const double energy = data.getEnergyVector(i - 1);
        positions[i] = energy != 0.0 ? nmTimesWavenumber / energy : 0.0;
        intensities[i] = data.getOscForceVector(i - 1);
    }
}

LanqorNormalizePoints::~LanqorNormalizePoints() = default;

void LanqorNormalizePoints::setParametersNormalization(double const &width, double const &start,
                                                       double const &end)
{
    bandWidth = width;
    rangeStart = start;
    rangeEnd = end;
}

bool LanqorNormalizePoints::spectrum()
{
    const QString error = parameterError();
    if (!error.isEmpty())
        return failWith(error);

    QVector<double> widths(count + 2, 0.0); // cm^-1
    for (int i = 1; i <= count; ++i) {
        if (isPositive(positions.at(i)))
            widths[i] = bandWidth * nmTimesWavenumber / (positions.at(i) * positions.at(i));
    }
    double *keys = positions.data();
    double *strengths = intensities.data();
    double *companions = widths.data();
    hpsort(count, keys, strengths, companions, true);

    const QVector<double> grid = wavenumberGrid(rangeStart, rangeEnd);
    QVector<LorentzBand> bands;
    bool isInRange = false;
    for (int i = 1; i <= count; ++i) {
        if (!isPositive(positions.at(i)))
            continue;
        const double p = nmTimesWavenumber / positions.at(i);
        bands.append({p, widths.at(i), intensities.at(i)});
        isInRange = isInRange || (intensities.at(i) > 0.0 && p >= grid.first() && p <= grid.last());
    }
    const QVector<double> sums = lorentzSums(bands, grid);
    const double maximum = *std::max_element(sums.cbegin(), sums.cend());
    if (!isInRange || !isPositive(maximum))
        return failWith(tr("No transition with an oscillator strength above zero lies between %1 "
                           "and %2 nm.")
                            .arg(std::min(rangeStart, rangeEnd))
                            .arg(std::max(rangeStart, rangeEnd)));

    axisX.clear();
    axisY.clear();
    for (int k = 0; k < grid.size(); ++k) {
        axisX.append(nmTimesWavenumber / grid.at(k));
        axisY.append(sums.at(k) / maximum);
    }
    return true;
}

bool LanqorNormalizePoints::createEspFile(QString const &fileName)
{
    if (axisX.isEmpty())
        return failWith(tr("There is no spectrum to write; it must be computed first."));
    QString text;
    for (int k = 0; k < axisX.size(); ++k)
        text += reportText::fixed(axisX.at(k), 6, 14) + reportText::fixed(axisY.at(k), 9, 14) +
                QLatin1Char('\n');
    QString error;
    return reportText::writeFile(fileName, text, error) ||
           failWith(tr("The file %1 cannot be written: %2").arg(fileName, error));
}

/// Heapsort of entries 1 to n of keys in ascending order; a, and b when asked, move along.
void LanqorNormalizePoints::hpsort(int n, double *&keys, double *&a, double *&b, bool carryB)
{
    const auto exchange = [&](int i, int j) {
        std::swap(keys[i], keys[j]);
        std::swap(a[i], a[j]);
        if (carryB)
            std::swap(b[i], b[j]);
    };
    // Lets entry root sink until no child within 1..last has a larger key.
    const auto sift = [&](int root, int last) {
        for (int child = 2 * root; child <= last; child = 2 * root) {
            if (child < last && keys[child] < keys[child + 1])
                ++child;
            if (keys[root] >= keys[child])
                return;
            exchange(root, child);
            root = child;
        }
    };
    for (int root = n / 2; root >= 1; --root)
        sift(root, n);
    for (int last = n; last > 1; --last) {
        exchange(1, last);
        sift(1, last - 1);
    }
}

QString LanqorNormalizePoints::parameterError() const
{
    if (count == 0)
        return getLastError().isEmpty() ? tr("The output holds no transitions.") : getLastError();
    if (!isPositive(bandWidth) || !isPositive(rangeStart) || !isPositive(rangeEnd))
        return tr("The band width and both limits of the spectrum must be above 0 nm.");
    if (rangeStart == rangeEnd)
        return tr("The limits of the spectrum are equal (%1 nm).").arg(rangeStart);
    return QString();
}
