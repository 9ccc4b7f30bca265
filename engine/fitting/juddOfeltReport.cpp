#include "LanqorJuddOfelt.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "fitting/juddOfelt_p.h"

#include <QTextStream>

#include <cmath>

using reportText::exponential;
using reportText::fixed;

namespace juddOfelt {

namespace {

struct Weighting
{
    const char *name;
    const char *meaning;
};

// In the order of JuddOfeltWeighting.
constexpr Weighting weightings[] = {{"equal-strength", "all line strengths weigh alike"},
                                    {"equal-f", "all oscillator strengths weigh alike"},
                                    {"error", "each band weighs by 1/error"},
                                    {"relative", "each band weighs by 1/strength"}};

QString dispersionOf(const RefractiveIndexModel &model)
{
    QStringList numbers;
    for (const double coefficient : model.coefficients)
        numbers.append(QString::number(coefficient, 'g', 8));
    const QString list = numbers.join(QStringLiteral(", "));
    switch (model.kind) {
    case RefractiveIndexModel::Kind::Constant:
        return list;
    case RefractiveIndexModel::Kind::Sellmeier:
        return QStringLiteral("Sellmeier, A, B, C, ... = %1 (micrometre)").arg(list);
    case RefractiveIndexModel::Kind::Cauchy:
        return QStringLiteral("Cauchy, c0, c2, c4, d2, d4 = %1 (micrometre)").arg(list);
    case RefractiveIndexModel::Kind::Table:
        break;
    }
    return QStringLiteral("table of %1 wavelengths").arg(model.wavelengths.size());
}

void writeParameters(const JuddOfeltResults &results, QTextStream &stream)
{
    const bool hasErrors = results.bands.size() > 3;
    stream << "  parameter    1e-20 cm^2" << (hasErrors ? "  standard error" : "")
           << (results.isNonNegative ? "   free solution" : "") << '\n';
    for (int k = 0; k < 3; ++k) {
        stream << "  Omega(" << 2 * k + 2 << ")  " << fixed(results.omega[k], 5, 13);
        if (hasErrors)
            stream << (results.isNonNegative && results.standardErrors[k] == 0.0
                           ? QStringLiteral("held at 0").rightJustified(16)
                           : fixed(results.standardErrors[k], 5, 16));
        if (results.isNonNegative)
            stream << fixed(results.freeOmega[k], 5, 16);
        stream << '\n';
    }
    if (!hasErrors) {
        stream << "\n  No standard errors: there are no more bands than parameters.\n";
        return;
    }
    stream << "\n  Standard errors from the misfit per degree of freedom.\n\n"
           << "  correlations    Omega(2)  Omega(4)  Omega(6)\n";
    for (int k = 0; k < 3; ++k) {
        stream << "  Omega(" << 2 * k + 2 << ")    ";
        for (const double correlation : results.correlations[k])
            stream << fixed(correlation, 4, 10);
        stream << '\n';
    }
}

void writeBands(const JuddOfeltResults &results, QTextStream &stream)
{
    stream << "  band                     sigma       n     U(2)     U(4)     U(6)"
              "      f(meas)       f(MD)     f(calc)    S(meas)    S(calc)   difference\n";
    for (const JuddOfeltResults::Band &band : results.bands)
        stream << "  " << band.level.leftJustified(20) << fixed(band.wavenumber, 1, 10)
               << fixed(band.n, 4, 8) << fixed(band.U[0], 4, 9) << fixed(band.U[1], 4, 9)
               << fixed(band.U[2], 4, 9) << exponential(band.measuredF, 4, 13)
               << exponential(band.magneticF, 3, 12) << exponential(band.calculatedF, 3, 12)
               << fixed(band.measuredS, 5, 11) << fixed(band.calculatedS, 5, 11)
               << fixed(band.calculatedS - band.measuredS, 5, 13) << '\n';
    stream << "\n  sigma in cm^-1 (vacuum), f with its magnetic dipole part f(MD), S (electric "
              "dipole) in 1e-20 cm^2\n";
    if (results.bands.size() > 3)
        stream << "  rms of S " << fixed(results.rmsS, 5) << " 1e-20 cm^2, of f "
               << exponential(results.rmsF, 3)
               << " (square root of the sum of squares/(bands - 3))\n";
    if (std::isfinite(results.relativeRms))
        stream << "  relative rms of S " << fixed(100.0 * results.relativeRms, 1) << " %\n";
}

void writeEmission(const JuddOfeltResults::Emission &emission, QTextStream &stream)
{
    constexpr double smallestShown = 5e-4;
    stream << "\n  " << emission.level << " at " << fixed(emission.energy, 1) << " cm^-1: A "
           << fixed(emission.rate, 3) << " s^-1, radiative lifetime "
           << QString::number(emission.lifetime, 'g', 6) << " ms";
    if (emission.measuredLifetime > 0.0)
        stream << ", measured " << QString::number(emission.measuredLifetime, 'g', 6)
               << " ms, quantum efficiency " << fixed(100.0 * emission.quantumEfficiency, 1)
               << " %";
    stream << "\n    to                sigma   lambda/nm       n        A(ED)        A(MD)"
              "   branching\n";
    int leftOut = 0;
    for (const JuddOfeltResults::Transition &to : emission.transitions) {
        if (to.branchingRatio < smallestShown) {
            ++leftOut;
            continue;
        }
        stream << "    " << to.level.leftJustified(12) << fixed(to.wavenumber, 1, 11)
               << fixed(lanqor::nmPerCm / to.wavenumber, 1, 12) << fixed(to.n, 4, 8)
               << fixed(to.electricRate, 3, 13) << fixed(to.magneticRate, 3, 13)
               << fixed(to.branchingRatio, 4, 12) << '\n';
    }
    if (leftOut > 0)
        stream << "    and " << leftOut << " of less than 0.05 %\n";
}

} // namespace

QString nameOf(JuddOfeltWeighting weighting)
{
    return QLatin1String(weightings[static_cast<int>(weighting)].name);
}

QString report(const JuddOfeltResults &results)
{
    const Weighting &weighting = weightings[static_cast<int>(results.weighting)];
    QString text;
    QTextStream stream(&text);
    stream << " Judd-Ofelt analysis of "
           << (results.ion.symbol.isEmpty() ? QString()
                                            : results.ion.symbol + QStringLiteral("(III), "))
           << "4f^" << results.ion.electrons << ", from " << results.ground << "\n\n"
           << "  levels            "
           << (results.ion.source.isEmpty() ? QStringLiteral("parameters as given")
                                            : results.ion.source)
           << "\n  refractive index  " << dispersionOf(results.refractiveIndex)
           << "\n  weighting         " << weighting.name << ": " << weighting.meaning
           << "\n  magnetic dipole   "
           << (results.isMagneticTakenOff ? "taken off f, by the eigenvectors or the file"
                                          : "not taken off, but for what the file tells")
           << "\n  wavelengths       of the bands " << (results.isInAir ? "in air" : "in vacuum")
           << "\n\n";
    writeParameters(results, stream);
    stream << '\n';
    writeBands(results, stream);
    stream << "\n Emission, from the calculated energies (sigma in cm^-1, lambda in vacuum, A in "
              "s^-1)\n";
    for (const JuddOfeltResults::Emission &emission : results.emissions)
        writeEmission(emission, stream);
    stream.flush();
    return text;
}

} // namespace juddOfelt

QString LanqorJuddOfelt::makeReport(const JuddOfeltResults &results)
{
    return juddOfelt::report(results);
}
