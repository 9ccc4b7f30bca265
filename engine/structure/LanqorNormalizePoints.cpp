#include "LanqorNormalizePoints.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "structure/lorentzSpectrum_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <algorithm>
#include <cmath>
#include <utility>

class LanqorNormalizePointsPrivate
{
public:
    LanqorNormalizePointsPrivate()
        : positions(2, 0.0)
        , intensities(2, 0.0)
    {}

    void takeTransitions(const LanqorInputData &output);

    int count = 0;
    double bandWidth = 25.0;   // nm
    double rangeStart = 150.0; // nm
    double rangeEnd = 450.0;   // nm
    QVector<double> positions; // nm, count + 2 entries, 1 to count used
    QVector<double> intensities;
    QVector<double> axisX; // nm
    QVector<double> axisY; // largest value 1
};

namespace {

using lanqor::nmPerCm;

constexpr int gridPoints = 1001;

bool readTransitions(LanqorInputData &data, int program)
{
    switch (program) {
    case LanqorInputData::ZindoOutput:
        return data.readAbsorptionDataZindo();
    case LanqorInputData::OrcaOutput:
        return data.readAbsorptionDataOrca();
    case LanqorInputData::MopacIndoOutput:
        return data.readAbsorptionDataMopacIndo();
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
    double start = nmPerCm / firstWavelength;
    double end = nmPerCm / secondWavelength;
    if (end < start)
        std::swap(start, end);
    const double step = std::abs(end - start) / (gridPoints - 1);
    QVector<double> grid;
    grid.reserve(gridPoints);
    for (int k = 1; k <= gridPoints; ++k)
        grid.append(start + (k - 1) * step);
    return grid;
}

/// Heapsort of entries 1 to n of keys in ascending order; a, and b when asked, move along.
void hpsort(int n, double *&keys, double *&a, double *&b, bool carryB)
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

/// Why no spectrum can be made; empty when one can. @p readingError  of the constructor
QString parameterError(const LanqorNormalizePointsPrivate &d, const QString &readingError)
{
    if (d.count == 0)
        return readingError.isEmpty()
                   ? LanqorNormalizePoints::tr("The output holds no transitions.")
                   : readingError;
    if (!isPositive(d.bandWidth) || !isPositive(d.rangeStart) || !isPositive(d.rangeEnd))
        return LanqorNormalizePoints::tr(
            "The band width and both limits of the spectrum must be above 0 nm.");
    if (d.rangeStart == d.rangeEnd)
        return LanqorNormalizePoints::tr("The limits of the spectrum are equal (%1 nm).")
            .arg(d.rangeStart);
    return QString();
}

} // namespace

LanqorNormalizePoints::LanqorNormalizePoints(QObject *parent, QString const &fileName,
                                             int const &program)
    : LanqorNormalizePoints(parent, std::make_unique<LanqorInputData>(nullptr, fileName).get(),
                            program)
{}

LanqorNormalizePoints::LanqorNormalizePoints(QObject *parent, LanqorInputData *output,
                                             int const &program)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorNormalizePointsPrivate>())
{
    if (program < LanqorInputData::ZindoOutput || program > LanqorInputData::MopacIndoOutput)
        setLastError(tr("The program of an output with excited states is 0 (ZINDO), 1 (ORCA), 2 "
                        "(Gaussian) or 3 (MOPAC INDO), not %1.")
                         .arg(program));
    else if (!output)
        setLastError(tr("There is no output to read transitions from."));
    else if (!readTransitions(*output, program))
        setLastError(output->getLastError());
    else
        d->takeTransitions(*output);
}

void LanqorNormalizePointsPrivate::takeTransitions(const LanqorInputData &output)
{
    count = output.getExcitedStateCount();
    positions.fill(0.0, count + 2);
    intensities.fill(0.0, count + 2);
    for (int i = 1; i <= count; ++i) {
        const double energy = output.getEnergyVector(i - 1);
        positions[i] = energy != 0.0 ? nmPerCm / energy : 0.0;
        intensities[i] = output.getOscForceVector(i - 1);
    }
}

LanqorNormalizePoints::~LanqorNormalizePoints() = default;

void LanqorNormalizePoints::setParametersNormalization(double const &width, double const &start,
                                                       double const &end)
{
    d->bandWidth = width;
    d->rangeStart = start;
    d->rangeEnd = end;
}

bool LanqorNormalizePoints::spectrum()
{
    const QString error = parameterError(*d, getLastError());
    if (!error.isEmpty())
        return failWith(error);

    QVector<double> widths(d->count + 2, 0.0); // cm^-1
    for (int i = 1; i <= d->count; ++i) {
        if (isPositive(d->positions.at(i)))
            widths[i] = d->bandWidth * nmPerCm / (d->positions.at(i) * d->positions.at(i));
    }
    double *keys = d->positions.data();
    double *strengths = d->intensities.data();
    double *companions = widths.data();
    hpsort(d->count, keys, strengths, companions, true);

    const QVector<double> grid = wavenumberGrid(d->rangeStart, d->rangeEnd);
    QVector<LorentzBand> bands;
    bool isInRange = false;
    for (int i = 1; i <= d->count; ++i) {
        if (!isPositive(d->positions.at(i)))
            continue;
        const double p = nmPerCm / d->positions.at(i);
        bands.append({p, widths.at(i), d->intensities.at(i)});
        isInRange =
            isInRange || (d->intensities.at(i) > 0.0 && p >= grid.first() && p <= grid.last());
    }
    const QVector<double> sums = lorentzSums(bands, grid);
    const double maximum = *std::max_element(sums.cbegin(), sums.cend());
    const QString range = QStringLiteral("%1 to %2 nm")
                              .arg(QString::number(std::min(d->rangeStart, d->rangeEnd)),
                                   QString::number(std::max(d->rangeStart, d->rangeEnd)));
    if (!isPositive(maximum))
        return failWith(tr("No transition with an oscillator strength above zero reaches into the "
                           "range %1.")
                            .arg(range));
    if (!isInRange)
        processStatus(tr("No transition with an oscillator strength above zero lies in the range "
                         "%1: the curve is the wing of bands outside, its largest value scaled to "
                         "1.")
                          .arg(range));

    d->axisX.clear();
    d->axisY.clear();
    for (int k = 0; k < grid.size(); ++k) {
        d->axisX.append(nmPerCm / grid.at(k));
        d->axisY.append(sums.at(k) / maximum);
    }
    return true;
}

bool LanqorNormalizePoints::createEspFile(QString const &fileName)
{
    if (d->axisX.isEmpty())
        return failWith(tr("There is no spectrum to write; it must be computed first."));
    QString text;
    for (int k = 0; k < d->axisX.size(); ++k)
        text += reportText::fixed(d->axisX.at(k), 6, 14) +
                reportText::fixed(d->axisY.at(k), 9, 14) + QLatin1Char('\n');
    QString error;
    return LanqorOutputFile::write(fileName, text.toUtf8(), error) ||
           failWith(tr("The file %1 cannot be written: %2").arg(fileName, error));
}

QVector<double> LanqorNormalizePoints::getaxisX() const
{
    return d->axisX;
}

QVector<double> LanqorNormalizePoints::getaxisY() const
{
    return d->axisY;
}

int LanqorNormalizePoints::getCount() const
{
    return d->count;
}

double LanqorNormalizePoints::getPosition(const int &transition) const
{
    return d->positions.at(transition);
}

double LanqorNormalizePoints::getIntensity(const int &transition) const
{
    return d->intensities.at(transition);
}

AbsorptionResults LanqorNormalizePoints::getResults() const
{
    AbsorptionResults results;
    results.bandWidth = d->bandWidth;
    results.rangeStart = d->rangeStart;
    results.rangeEnd = d->rangeEnd;
    for (int i = 1; i <= d->count; ++i) {
        const double wavelength = d->positions.at(i);
        if (wavelength >= std::min(d->rangeStart, d->rangeEnd) &&
            wavelength <= std::max(d->rangeStart, d->rangeEnd)) {
            AbsorptionTransition transition;
            transition.wavelength = wavelength;
            transition.energy = nmPerCm / wavelength;
            transition.oscillatorStrength = d->intensities.at(i);
            results.transitions.append(transition);
        }
    }
    results.wavelengths = d->axisX;
    results.absorption = d->axisY;
    return results;
}
