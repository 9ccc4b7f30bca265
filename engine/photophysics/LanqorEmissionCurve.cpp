#include "LanqorEmissionCurve.h"

#include "core/physicalConstants_p.h"
#include "overlap/europium_p.h"

#include <LanqorEngine/LanqorResultTables.h>

#include <algorithm>
#include <cmath>

namespace {

using lanqor::nmPerCm;
using Line = CalculatedEmission::Line;

constexpr int highestJ = 6;
constexpr double percent = 100.0;

QVector<CalculatedEmission::Band> bandsOf(const RadiativeRates &rates)
{
    QVector<CalculatedEmission::Band> bands(highestJ + 1);
    for (int J = 0; J <= highestJ; ++J)
        bands[J].J = J;
    bands[1].barycenter = europium::magneticDipoleSigma;
    bands[1].rate = rates.md;
    const double electric[] = {rates.ed02, rates.ed04, rates.ed06};
    for (std::size_t i = 0; i < europium::emissions.size(); ++i) {
        CalculatedEmission::Band &band = bands[europium::emissions.at(i).J];
        band.barycenter = europium::emissions.at(i).sigma;
        band.rate = electric[i];
    }
    for (CalculatedEmission::Band &band : bands)
        band.share = percent * band.rate / rates.total();
    return bands;
}

QVector<Line> linesOf(const QVector<CalculatedEmission::Band> &bands,
                      const QVector<StarkResults::Manifold> &manifolds)
{
    QVector<Line> lines;
    for (const CalculatedEmission::Band &band : bands) {
        if (!(band.rate > 0.0))
            continue;
        QVector<double> levels = {0.0};
        for (const StarkResults::Manifold &manifold : manifolds)
            if (manifold.J == band.J && !manifold.levels.isEmpty())
                levels = manifold.levels;
        for (int i = 0; i < levels.size(); ++i)
            lines.append(
                {band.J, i + 1, band.barycenter - levels.at(i), band.share / levels.size()});
    }
    return lines;
}

void addCurve(CalculatedEmission &emission)
{
    constexpr double pointsPerWidth = 10.0;
    constexpr double widthsAround = 4.0; // a Gaussian has fallen below 1e-19 of its maximum
    const double step = emission.width / pointsPerWidth;
    const double sigma = emission.width / (2.0 * std::sqrt(2.0 * std::log(2.0)));
    const double height = 1.0 / (sigma * std::sqrt(2.0 * std::acos(-1.0)));
    const auto ends =
        std::minmax_element(emission.lines.cbegin(), emission.lines.cend(),
                            [](const Line &a, const Line &b) { return a.energy < b.energy; });
    const double around = widthsAround * emission.width;
    const double first = std::max(step, ends.first->energy - around);
    const int count = int(std::ceil((ends.second->energy + around - first) / step)) + 1;
    for (int i = 0; i < count; ++i) {
        const double wavenumber = first + i * step;
        double density = 0.0;
        for (const Line &line : qAsConst(emission.lines)) {
            const double distance = (wavenumber - line.energy) / sigma;
            density += line.share * height * std::exp(-0.5 * distance * distance);
        }
        emission.wavenumbers.append(wavenumber);
        emission.photonDensity.append(density);
        emission.wavelengths.append(nmPerCm / wavenumber);
        emission.powerDensity.append(density * wavenumber * wavenumber * wavenumber / nmPerCm);
    }
    emission.powerScale =
        *std::max_element(emission.powerDensity.cbegin(), emission.powerDensity.cend());
    for (double &density : emission.powerDensity)
        density /= emission.powerScale;
}

} // namespace

CalculatedEmission LanqorEmissionCurve::calculate(const RadiativeRates &rates,
                                                  const QVector<StarkResults::Manifold> &manifolds,
                                                  const double &width)
{
    CalculatedEmission emission;
    if (!(width > 0.0) || !(rates.total() > 0.0))
        return emission;
    emission.width = width;
    emission.bands = bandsOf(rates);
    emission.lines = linesOf(emission.bands, manifolds);
    addCurve(emission);
    return emission;
}

LanqorResultTables LanqorEmissionCurve::makeTables(const CalculatedEmission &emission)
{
    const auto column = [](const char *key, const char *unit = "") {
        return ResultColumn{QLatin1String(key), QLatin1String(unit)};
    };
    using Rows = QVector<QVector<QVariant>>;
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("calculated_emission"),
                     {column("line_width", "cm^-1"), column("line_shape"),
                      column("shares_of_the_lines_of_a_band")},
                     {emission.width, QStringLiteral("Gaussian"), QStringLiteral("equal")});
    Rows rows;
    for (const CalculatedEmission::Band &band : emission.bands)
        rows.append({band.J, band.barycenter > 0.0 ? QVariant(band.barycenter) : QVariant(),
                     band.rate, band.share});
    tables.addTable(
        QStringLiteral("calculated_emission_bands"),
        {column("J"), column("barycentre", "cm^-1"), column("rate", "s^-1"), column("share", "%")},
        rows);
    rows.clear();
    for (const Line &line : emission.lines)
        rows.append({line.J, line.level, line.energy, nmPerCm / line.energy, line.share});
    tables.addTable(QStringLiteral("calculated_emission_lines"),
                    {column("J"), column("stark_level_from_1"), column("energy", "cm^-1"),
                     column("wavelength", "nm"), column("share", "%")},
                    rows);
    rows.clear();
    for (int i = 0; i < emission.wavenumbers.size(); ++i)
        rows.append({emission.wavenumbers.at(i), emission.photonDensity.at(i),
                     emission.wavelengths.at(i), emission.powerDensity.at(i)});
    tables.addTable(QStringLiteral("calculated_emission_curve"),
                    {column("wavenumber", "cm^-1"), column("photons_per_wavenumber", "%/cm^-1"),
                     column("wavelength", "nm"), column("power_per_wavelength", "1")},
                    rows);
    return tables;
}
