#include "intensity/intensityReport_p.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "intensity/LanqorAradPartition.h"
#include "intensity/LanqorOmega.h"
#include "intensity/citations_p.h"
#include "intensity/intensityReportReader_p.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/europium_p.h"
#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>

using reportText::exponential;
using reportText::fixed;

namespace {

constexpr int lambdas[] = {2, 4, 6};

QString ruled(const QString &title, int width)
{
    const QString rule(width, QLatin1Char('-'));
    return rule + QLatin1Char('\n') + title + QLatin1Char('\n') + rule + QStringLiteral("\n\n");
}

/// Lines "name(l) = value" of Omega(lambda) in 1e-20 cm^2.
QString intensityLines(const QString &name, const QVector<double> &byLambda)
{
    QString text;
    for (const int l : lambdas)
        text += QStringLiteral("%1(%2) = %3e-20 cm^2\n")
                    .arg(name)
                    .arg(l)
                    .arg(fixed(byLambda.at(l) / lanqor::omegaUnitCm2, 2, 7));
    return text + QLatin1Char('\n');
}

/// A table with the column "Arad(ED)" and the sum of its rows.
class RateTable
{
public:
    void append(const QString &name, double rate)
    {
        names.append(name);
        rates.append(rate);
    }

    QString text(const QString &title, const QString &rowTitle) const
    {
        int width = rowTitle.size();
        for (const QString &name : names)
            width = std::max(width, name.size());
        QString text = title + QStringLiteral("\n\n ") + rowTitle.leftJustified(width) +
                       QStringLiteral("      Arad(ED)\n");
        double sum = 0.0;
        for (int i = 0; i < names.size(); ++i) {
            sum += rates.at(i);
            text += row(names.at(i), width, rates.at(i));
        }
        return text + row(QStringLiteral("Sum"), width, sum) + QLatin1Char('\n');
    }

private:
    static QString row(const QString &name, int width, double rate)
    {
        return QLatin1Char(' ') + name.leftJustified(width) + fixed(rate, 2, 14) +
               QLatin1Char('\n');
    }

    QStringList names;
    QVector<double> rates;
};

} // namespace

IntensityReport::IntensityReport(LanqorOmega &calculation)
    : calculation(calculation)
{}

int IntensityReport::lastAtom() const
{
    return calculation.coordNumber + 1;
}

QString IntensityReport::text() const
{
    const OmegaPrintingOptions &options = calculation.printingOptions;
    QString text = head();
    if (options.printSphericalCoordinates)
        text += sphericalCoordinates();
    if (calculation.hasParametersQDC)
        text += parametersQDC() + reactivityIndices();
    if (options.printChargeFactors)
        text += chargeFactors();
    if (options.printOmega)
        text += omega();
    if (options.printConstants)
        text += constants();
    if (options.printSphericalHarmonics)
        text += sphericalHarmonics();
    if (options.printSOM)
        text += overlapModel();
    if (options.printGAMA || options.printSumGAMA)
        text += latticeTermsDC();
    if (options.printBltpDC)
        text += amplitudesDC();
    if (options.printOmegaDC)
        text += omegaDC();
    if (options.printgama || options.printSumgama)
        text += latticeTermsED();
    if (options.printBltpED)
        text += amplitudesED();
    if (options.printOmegaED)
        text += omegaED();
    if (options.printBltp)
        text += amplitudes();
    if (options.printArad)
        text += radiativeRates();
    if (options.printAradPartition)
        text += partition();
    if (options.printBkq)
        text += crystalField();
    return text + citations();
}

QString IntensityReport::head() const
{
    return LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
           QLatin1String(intensityReportText::geometryLine) + QLatin1Char('\n') +
           calculation.geometryFile + QStringLiteral("\n\n");
}

QString IntensityReport::sphericalCoordinates() const
{
    QString text = QStringLiteral("------------------------------------------------------\n"
                                  " Spherical coordinates of the coordination polyhedron \n"
                                  "------------------------------------------------------\n\n"
                                  "ATOM        R          theta         phi\n"
                                  "        (Angstroms)  (degrees)    (degrees)\n");
    for (int atom = 1; atom <= lastAtom(); ++atom) {
        const CoordSPH &position = calculation.positions.at(atom - 1);
        text += position.label.leftJustified(4) + fixed(position.r, 4, 12) +
                fixed(position.theta, 2, 13) + fixed(position.phi, 2, 13) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::parametersQDC() const
{
    const QString title = QStringLiteral("              QDC Ajusted Values [Ref. QDC]           ");
    const QString ratio = calculation.parameterC == 0.0
                              ? QStringLiteral("not defined (C = 0)").rightJustified(12)
                              : fixed(calculation.parameterD / calculation.parameterC, 4, 12);
    return ruled(title, title.size()) +
           QStringLiteral(" au^-1 = inverse atomic units       A^3 = cubic Angstroms\n\n") +
           QStringLiteral(" Q =") + fixed(calculation.parameterQ, 6, 21) +
           QStringLiteral(" au^-1\n D =") + fixed(calculation.parameterD, 6, 21) +
           QStringLiteral(" au^-1.A^3\n C =") + fixed(calculation.parameterC, 6, 21) +
           QStringLiteral(" A^3\n Ratio D/C =") + ratio + QStringLiteral("\n\n");
}

QString IntensityReport::reactivityIndices() const
{
    if (!calculation.hasReactivityIndices())
        return QString();
    QString text = QLatin1String(reportText::indicesHeading);
    for (int atom = 2; atom <= lastAtom(); ++atom) {
        const int width = atom < 10 ? 9 : 8;
        text += QStringLiteral(" atomic charges(%1) = ").arg(atom) +
                fixed(calculation.atomicCharges.at(atom), 4, width) +
                QStringLiteral("      SDE(%1) = ").arg(atom) +
                fixed(calculation.superDeslocalizability.at(atom), 4, width + 2) +
                QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::chargeFactors() const
{
    QString text = ruled(QLatin1String(intensityReportText::chargeFactorTitle), 66);
    for (int atom = 2; atom <= lastAtom(); ++atom) {
        const QString equals =
            atom < 10 ? QStringLiteral("%1)  = ").arg(atom) : QStringLiteral("%1) = ").arg(atom);
        text += QStringLiteral(" g(") + equals + fixed(calculation.chargeFactor.at(atom), 4, 8) +
                QStringLiteral("       alpha(") + equals +
                fixed(calculation.alpha.at(atom) / lanqor::cm3PerCubicAngstrom, 4, 8) +
                QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::omega() const
{
    return QStringLiteral("-------------------------------------------------------\n"
                          " Theoretical Judd-Ofelt Intensity Parameters, omega(l) \n"
                          "-------------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omega"), calculation.omega);
}

QString IntensityReport::omegaDC() const
{
    return QStringLiteral("-----------------------------------------------------\n"
                          " Dynamics Coupling Judd-Ofelt Parameters, omegaDC(l) \n"
                          "-----------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omegaDC"), calculation.omegaDC);
}

QString IntensityReport::omegaED() const
{
    return QStringLiteral("-----------------------------------------------------------\n"
                          " Forced Electric Dipole Judd-Ofelt Parameters, omegaED (l) \n"
                          "-----------------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omegaED"), calculation.omegaED);
}

QString IntensityReport::constants() const
{
    using namespace europium;
    const auto teta = [this](int t, int lambda) { return fixed(calculation.tet(t, lambda), 3, 7); };
    const QString indent(29, QLatin1Char(' '));
    const QString sigmaIndent(31, QLatin1Char(' '));
    const QString radialIndent(20, QLatin1Char(' '));
    return QStringLiteral("-----------------------------------\n"
                          "  Constant values for the Eu3+ Ion \n"
                          "-----------------------------------\n\n") +
           QStringLiteral(" Used Racah Tensor Operator:  <f|C(2)|f> =") + fixed(reducedC[2], 4, 8) +
           QLatin1Char('\n') + indent + QStringLiteral(" <f|C(4)|f> =") + fixed(reducedC[4], 4, 8) +
           QLatin1Char('\n') + indent + QStringLiteral(" <f|C(6)|f> =") + fixed(reducedC[6], 4, 8) +
           QStringLiteral("\n\n Used Shielding Factor:         sigma(2) =") +
           fixed(shielding[2], 3, 7) + QLatin1Char('\n') + sigmaIndent +
           QStringLiteral(" sigma(4) =") + fixed(shielding[4], 3, 7) + QLatin1Char('\n') +
           sigmaIndent + QStringLiteral(" sigma(6) =") + fixed(shielding[6], 3, 7) +
           QStringLiteral("\n\n Radial Integrals:  r(2) =") + exponential(radialR[2], 3, 11) +
           QStringLiteral(" cm^2\n") + radialIndent + QStringLiteral("r(4) =") +
           exponential(radialR[4], 3, 11) + QStringLiteral(" cm^4\n") + radialIndent +
           QStringLiteral("r(6) =") + exponential(radialR[6], 3, 11) + QStringLiteral(" cm^6\n") +
           radialIndent + QStringLiteral("r(8) =") + exponential(radialR8, 3, 11) +
           QStringLiteral(" cm^8\n\n") +
           QStringLiteral(" Numberic Factors of Europium Ion, teta(t,l):\n    teta(1,2) =") +
           teta(1, 2) + QStringLiteral("    teta(3,2) =") + teta(3, 2) +
           QStringLiteral("\n    teta(3,4) =") + teta(3, 4) + QStringLiteral("    teta(5,4) =") +
           teta(5, 4) + QStringLiteral("\n    teta(5,6) =") + teta(5, 6) +
           QStringLiteral("    teta(7,6) =") + teta(7, 6) + QStringLiteral("\n\n Delta E = ") +
           exponential(deltaE, 4) +
           QStringLiteral(
               "\n\n Delta E is a constant, approximately given by the energy difference between "
               "the barycenters\n of the ground 4fN and first opposite parity excited of "
               "configuration 4f(N-1)5d of the europium ion)\n\n");
}

QString IntensityReport::atomRows(const QString &name, const QVector<double> &values) const
{
    QString text;
    for (int atom = 2; atom <= lastAtom(); ++atom)
        text += QStringLiteral("     %1(%2) = ").arg(name).arg(atom) +
                fixed(values.at(atom), 4, atom < 10 ? 8 : 7) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString IntensityReport::overlapModel() const
{
    QVector<double> rho(2, 0.0);
    QVector<double> beta(2, 0.0);
    for (int atom = 2; atom <= lastAtom(); ++atom) {
        rho.append(calculation.sphere->rho(atom));
        beta.append(calculation.sphere->beta(atom));
    }
    return QStringLiteral("---------------------------------------------------\n"
                          " Quantities associated to the Simple Overlap Model \n"
                          "---------------------------------------------------\n\n"
                          "    Overlap (degree of covalency of the metal-ligand bond), ro(i), i "
                          "standing for each ligand atom.\n\n") +
           atomRows(QStringLiteral("ro"), rho) +
           QStringLiteral("    Beta factor (according to the SOM the beta factor is introduced as "
                          "a parameter to account for the fact that the charge\n"
                          "    of the overlap region does not lie at the middle of the "
                          "metal-ligand bond, but at R/(2 beta) from the ion), i standing for\n"
                          "    each ligand atom.\n\n") +
           atomRows(QStringLiteral("beta"), beta);
}

QString IntensityReport::radiativeRates() const
{
    ByRank byLambda;
    for (const int l : lambdas)
        byLambda[l] = calculation.getOmega(l);
    const radiativeRates::Rates rates =
        radiativeRates::calcRates(byLambda, calculation.refractiveIndex);
    const auto line = [](const char *name, double rate) {
        return QLatin1String(name) + fixed(rate, 2, 12) + QStringLiteral(" s^-1\n\n");
    };
    const QString title =
        QStringLiteral("             Theoretical Radiative Emission Rates              ");
    return ruled(title, title.size()) +
           QStringLiteral(" ED electric dipole, MD magnetic dipole\n\n"
                          " Chosen Refractive Index =") +
           fixed(calculation.refractiveIndex, 4, 10) + QStringLiteral("\n\n") +
           line(" Arad(ED02) (5D0->7F2)        =", rates.ed02) +
           line(" Arad(ED04) (5D0->7F4)        =", rates.ed04) +
           line(" Arad(ED06) (5D0->7F6)        =", rates.ed06) +
           line(" Arad(ED) (5D0->7FJ, J=2,4,6) =", rates.electricDipole()) +
           line(" Arad(MD) (5D0->7F1)          =", rates.md) +
           line(" Arad [Arad(ED) + Arad(MD)]   =", rates.total());
}

QString IntensityReport::partition() const
{
    LanqorAradPartition partition(nullptr, calculation.inputData, calculation.coordNumber,
                                  calculation.refractiveIndex);
    double *g = calculation.chargeFactor.data();
    double *alpha = calculation.alpha.data();
    partition.setChargeFactorAndAlpha(g, alpha);

    const QString rule =
        QStringLiteral("---------------------------------------------------------------\n");
    QString text = QLatin1Char('\n') + rule +
                   QStringLiteral("    Chemical Partition of Arad(ED)    [Ref. CP]\n") + rule +
                   QLatin1Char('\n');
    RateTable byAtom;
    for (int atom = 2; atom <= lastAtom(); ++atom)
        byAtom.append(calculation.positions.at(atom - 1).label + QLatin1Char(' ') +
                          QString::number(atom),
                      partition.getSumByAtom(atom));
    text +=
        byAtom.text(QStringLiteral("Chemical Partition by Atom (s^-1)"), QStringLiteral("Atom"));

    const QString title = QStringLiteral("Chemical Partition by Grouping (s^-1)");
    if (calculation.ligandAtoms.isEmpty())
        return text + title + QStringLiteral("\n\n No groups of atoms were given.\n\n");
    if (!partition.setLigandsVector(calculation.ligandAtoms)) {
        calculation.processStatus(partition.getLastError());
        return text + title + QStringLiteral("\n\n ") + partition.getLastError() +
               QStringLiteral("\n\n");
    }
    RateTable byGroup;
    for (int a = 0; a < partition.getLigandsNumber(); ++a)
        byGroup.append(partition.getLigandsName(a), partition.getSumByLigand(a));
    return text + byGroup.text(title, QStringLiteral("Group"));
}

QString IntensityReport::citations() const
{
    const QString mopacCitation = calculation.getMopacCitation();
    if (calculation.requiredCitations.isEmpty())
        return citations::required(mopacCitation, citations::intensityModel());
    // The text of a fit holds the citation already.
    if (mopacCitation.isEmpty() || calculation.requiredCitations.contains(mopacCitation))
        return calculation.requiredCitations + QLatin1Char('\n');
    return calculation.requiredCitations + QStringLiteral("\n\n") + mopacCitation +
           QLatin1Char('\n');
}

QString LanqorOmega::createOutFile(const QString &fileName)
{
    if (!isCalculated || !agreesWithQDC()) {
        failWith(tr("There is no report: the intensity parameters of the present geometry, charge "
                    "factors and polarizabilities were not calculated."));
        return QString();
    }
    const QString text = IntensityReport(*this).text();
    QString error;
    if (!fileName.isEmpty() && !reportText::writeFile(fileName, text, error)) {
        failWith(tr("The report %1 cannot be written: %2.").arg(fileName, error));
        return QString();
    }
    return text;
}
