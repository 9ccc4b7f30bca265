#include "structure/lorentzSpectrum_p.h"

namespace {

double lorentz(double distance, double width)
{
    return width / (4.0 * distance * distance + width * width);
}

} // namespace

QVector<double> lorentzSums(const QVector<LorentzBand> &bands, const QVector<double> &grid)
{
    QVector<double> sums(grid.size(), 0.0);
    for (const LorentzBand &band : bands) {
        for (int k = 0; k < grid.size(); ++k) {
            const double x = grid.at(k);
            const double p = band.wavenumber;
            sums[k] +=
                (lorentz(x + p, band.width) + lorentz(x - p, band.width)) * (x / p) * band.strength;
        }
    }
    return sums;
}
