#include "intensity/emissionSpectrum_p.h"

#include "core/physicalConstants_p.h"

#include <algorithm>
#include <cmath>

namespace emissionSpectrum {

namespace {

struct Point
{
    double x;
    double y;
};

double toWavenumber(Spectrum::Axis axis, double x)
{
    return axis == Spectrum::Axis::Nanometre ? lanqor::nmPerCm / x : x;
}

double interpolated(const Spectrum &spectrum, double x)
{
    const auto &xs = spectrum.abscissa;
    const auto above = std::lower_bound(xs.begin(), xs.end(), x);
    const auto i = static_cast<std::size_t>(above - xs.begin());
    if (xs[i] == x)
        return spectrum.intensity[i];
    const double fraction = (x - xs[i - 1]) / (xs[i] - xs[i - 1]);
    return spectrum.intensity[i - 1] +
           fraction * (spectrum.intensity[i] - spectrum.intensity[i - 1]);
}

/// The points from @p low to @p high, which lie within the spectrum, both ends among them.
std::vector<Point> cutOut(const Spectrum &spectrum, double low, double high)
{
    std::vector<Point> points{{low, interpolated(spectrum, low)}};
    const auto &xs = spectrum.abscissa;
    auto x = std::upper_bound(xs.begin(), xs.end(), low);
    for (; x != xs.end() && *x < high; ++x)
        points.push_back({*x, spectrum.intensity[static_cast<std::size_t>(x - xs.begin())]});
    points.push_back({high, interpolated(spectrum, high)});
    return points;
}

/// Mean of the points from @p low to @p high, of which there is at least one.
Point meanBetween(const std::vector<Point> &points, double low, double high)
{
    Point mean{0.0, 0.0};
    double count = 0.0;
    for (const Point &point : points) {
        if (point.x < low || point.x > high)
            continue;
        mean.x += point.x;
        mean.y += point.y;
        count += 1.0;
    }
    return {mean.x / count, mean.y / count};
}

/// Returns the line.
OmegaExpResults::Spectrum::Baseline subtractLine(std::vector<Point> &points)
{
    constexpr double endPart = 0.05;
    const double low = points.front().x;
    const double high = points.back().x;
    const Point first = meanBetween(points, low, low + endPart * (high - low));
    const Point last = meanBetween(points, high - endPart * (high - low), high);
    const double slope = (last.y - first.y) / (last.x - first.x);
    for (Point &point : points)
        point.y -= first.y + slope * (point.x - first.x);
    return {low, high, first.y + slope * (low - first.x), first.y + slope * (high - first.x)};
}

void keepPeakAndEdge(const std::vector<Point> &points, Band &band)
{
    constexpr double endPart = 0.01;
    const double low = points.front().x;
    const double high = points.back().x;
    const double part = endPart * (high - low);
    band.edge = std::max(std::abs(meanBetween(points, low, low + part).y),
                         std::abs(meanBetween(points, high - part, high).y));
    for (const Point &point : points)
        band.peak = std::max(band.peak, point.y);
}

} // namespace

Band integrate(const Spectrum &spectrum, const EmissionSpectrumOptions::Window &window,
               EmissionSpectrumOptions::Signal signal, EmissionSpectrumOptions::Baseline baseline)
{
    Band band;
    const bool isWavelength = spectrum.axis == Spectrum::Axis::Nanometre;
    const double windowLow = isWavelength ? lanqor::nmPerCm / window.highest : window.lowest;
    const double windowHigh = isWavelength ? lanqor::nmPerCm / window.lowest : window.highest;
    const double low = std::max(windowLow, spectrum.abscissa.front());
    const double high = std::min(windowHigh, spectrum.abscissa.back());
    if (!(low < high))
        return band;
    band.coverage =
        low == windowLow && high == windowHigh ? Band::Coverage::Whole : Band::Coverage::Part;

    std::vector<Point> points = cutOut(spectrum, low, high);
    band.baseline.first = low;
    band.baseline.last = high;
    if (baseline == EmissionSpectrumOptions::Baseline::Linear)
        band.baseline = subtractLine(points);
    keepPeakAndEdge(points, band);
    const auto power = [&](const Point &point) {
        return signal == EmissionSpectrumOptions::Signal::PhotonCounts
                   ? point.y * toWavenumber(spectrum.axis, point.x)
                   : point.y;
    };
    double moment = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Point &a = points[i - 1];
        const Point &b = points[i];
        const double half = 0.5 * (b.x - a.x);
        band.area += half * (power(a) + power(b));
        moment += half * (power(a) * toWavenumber(spectrum.axis, a.x) +
                          power(b) * toWavenumber(spectrum.axis, b.x));
    }
    if (band.area > 0.0)
        band.barycenter = moment / band.area;
    return band;
}

} // namespace emissionSpectrum
