#include "intensity/intensityReport_p.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "input/intensityReportReader_p.h"
#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaResults.h>

#include <algorithm>

using reportText::exponential;
using reportText::fixed;

namespace {

QString ruled(const QString &title, int width)
{
    const QString rule(width, QLatin1Char('-'));
    return rule + QLatin1Char('\n') + title + QLatin1Char('\n') + rule + QStringLiteral("\n\n");
}

/// Lines "name(l) = value" of Omega(lambda) in 1e-20 cm^2.
QString intensityLines(const QString &name, const ByRank &byLambda)
{
    QString text;
    for (const int l : {2, 4, 6})
        text += QStringLiteral("%1(%2) = %3e-20 cm^2\n")
                    .arg(name, QString::number(l), fixed(byLambda[l] / lanqor::omegaUnitCm2, 2, 7));
    return text + QLatin1Char('\n');
}

/// Rows "name(atom) = value" of one quantity, 4 decimals.
QString atomRows(const char *name, const QVector<OmegaResults::Atom> &atoms,
                 double OmegaResults::Atom::*quantity)
{
    QString text;
    for (const OmegaResults::Atom &atom : atoms)
        text += QStringLiteral("     %1(%2) = ")
                    .arg(QLatin1String(name), QString::number(atom.number)) +
                fixed(atom.*quantity, 4, atom.number < 10 ? 8 : 7) + QLatin1Char('\n');
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

IntensityReport::IntensityReport(const OmegaResults &results)
    : results(results)
{}

int IntensityReport::lastAtom() const
{
    return results.atoms.size() + 1;
}

QString IntensityReport::text() const
{
    const OmegaPrintingOptions &options = results.printingOptions;
    QString text = head();
    if (options.printSphericalCoordinates)
        text += sphericalCoordinates();
    if (results.qdc.isSet)
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
    return text + citations() + remarks();
}

QString IntensityReport::head() const
{
    return LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
           QLatin1String(intensityReportText::geometryLine) + QLatin1Char('\n') +
           results.geometryFile + QStringLiteral("\n\n");
}

QString IntensityReport::sphericalCoordinates() const
{
    QString text = QStringLiteral("------------------------------------------------------\n"
                                  " Spherical coordinates of the coordination polyhedron \n"
                                  "------------------------------------------------------\n\n"
                                  "ATOM        R          theta         phi\n"
                                  "        (Angstroms)  (degrees)    (degrees)\n");
    QVector<CoordSPH> positions = {results.ion};
    for (const OmegaResults::Atom &atom : results.atoms)
        positions.append(atom.position);
    for (const CoordSPH &position : positions)
        text += position.label.leftJustified(4) + fixed(position.r, 4, 12) +
                fixed(position.theta, 2, 13) + fixed(position.phi, 2, 13) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString IntensityReport::parametersQDC() const
{
    const QString title = QStringLiteral("              QDC Ajusted Values [Ref. QDC]           ");
    const OmegaResults::Qdc &qdc = results.qdc;
    const QString ratio = qdc.C == 0.0 ? QStringLiteral("not defined (C = 0)").rightJustified(12)
                                       : fixed(qdc.D / qdc.C, 4, 12);
    return ruled(title, title.size()) +
           QStringLiteral(" au^-1 = inverse atomic units       A^3 = cubic Angstroms\n\n") +
           QStringLiteral(" Q =") + fixed(qdc.Q, 6, 21) + QStringLiteral(" au^-1\n D =") +
           fixed(qdc.D, 6, 21) + QStringLiteral(" au^-1.A^3\n C =") + fixed(qdc.C, 6, 21) +
           QStringLiteral(" A^3\n Ratio D/C =") + ratio + QStringLiteral("\n\n");
}

QString IntensityReport::reactivityIndices() const
{
    if (!results.qdc.hasIndices)
        return QString();
    QString text = QLatin1String(reportText::indicesHeading);
    for (const OmegaResults::Atom &atom : results.atoms) {
        const int width = atom.number < 10 ? 9 : 8;
        text += QStringLiteral(" atomic charges(%1) = ").arg(atom.number) +
                fixed(atom.atomicCharge, 4, width) +
                QStringLiteral("      SDE(%1) = ").arg(atom.number) +
                fixed(atom.superdelocalizability, 4, width + 2) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::chargeFactors() const
{
    QString text = ruled(QLatin1String(intensityReportText::chargeFactorTitle), 66);
    for (const OmegaResults::Atom &atom : results.atoms) {
        const QString equals =
            (atom.number < 10 ? QStringLiteral("%1)  = ") : QStringLiteral("%1) = "))
                .arg(atom.number);
        text += QStringLiteral(" g(") + equals + fixed(atom.chargeFactor, 4, 8) +
                QStringLiteral("       alpha(") + equals +
                fixed(atom.alpha / lanqor::cm3PerCubicAngstrom, 4, 8) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::omega() const
{
    return QStringLiteral("-------------------------------------------------------\n"
                          " Theoretical Judd-Ofelt Intensity Parameters, omega(l) \n"
                          "-------------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omega"), results.omega);
}

QString IntensityReport::omegaDC() const
{
    return QStringLiteral("-----------------------------------------------------\n"
                          " Dynamics Coupling Judd-Ofelt Parameters, omegaDC(l) \n"
                          "-----------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omegaDC"), results.omegaDC);
}

QString IntensityReport::omegaED() const
{
    return QStringLiteral("-----------------------------------------------------------\n"
                          " Forced Electric Dipole Judd-Ofelt Parameters, omegaED (l) \n"
                          "-----------------------------------------------------------\n\n") +
           intensityLines(QStringLiteral("omegaED"), results.omegaED);
}

QString IntensityReport::constants() const
{
    const OmegaResults::Constants &constants = results.constants;
    const ByRank &reducedC = constants.reducedElements;
    const ByRank &shielding = constants.shielding;
    const ByRank &radialR = constants.radialIntegrals;
    QString thetas;
    for (const OmegaResults::Constants::Theta &theta : constants.thetas)
        thetas += QStringLiteral("%1    teta(%2,%3) =")
                      .arg(theta.t < theta.lambda ? QStringLiteral("\n") : QString(),
                           QString::number(theta.t), QString::number(theta.lambda)) +
                  fixed(theta.value, 3, 7);
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
           radialIndent + QStringLiteral("r(8) =") + exponential(constants.radialIntegral8, 3, 11) +
           QStringLiteral(" cm^8\n\n") +
           QStringLiteral(" Numberic Factors of Europium Ion, teta(t,l):") + thetas +
           QStringLiteral("\n\n Delta E = ") + exponential(constants.deltaE, 4) +
           QStringLiteral(
               "\n\n Delta E is a constant, approximately given by the energy difference between "
               "the barycenters\n of the ground 4fN and first opposite parity excited of "
               "configuration 4f(N-1)5d of the europium ion)\n\n");
}

QString IntensityReport::overlapModel() const
{
    return QStringLiteral("---------------------------------------------------\n"
                          " Quantities associated to the Simple Overlap Model \n"
                          "---------------------------------------------------\n\n"
                          "    Overlap (degree of covalency of the metal-ligand bond), ro(i), i "
                          "standing for each ligand atom.\n\n") +
           atomRows("ro", results.atoms, &OmegaResults::Atom::rho) +
           QStringLiteral("    Beta factor (according to the SOM the beta factor is introduced as "
                          "a parameter to account for the fact that the charge\n"
                          "    of the overlap region does not lie at the middle of the "
                          "metal-ligand bond, but at R/(2 beta) from the ion), i standing for\n"
                          "    each ligand atom.\n\n") +
           atomRows("beta", results.atoms, &OmegaResults::Atom::beta);
}

QString IntensityReport::radiativeRates() const
{
    const RadiativeRates &rates = results.rates;
    const auto line = [](const char *name, double rate) {
        return QLatin1String(name) + fixed(rate, 2, 12) + QStringLiteral(" s^-1\n\n");
    };
    const QString title =
        QStringLiteral("             Theoretical Radiative Emission Rates              ");
    return ruled(title, title.size()) +
           QStringLiteral(" ED electric dipole, MD magnetic dipole\n\n"
                          " Chosen Refractive Index =") +
           fixed(results.refractiveIndex, 4, 10) + QStringLiteral("\n\n") +
           line(" Arad(ED02) (5D0->7F2)        =", rates.ed02) +
           line(" Arad(ED04) (5D0->7F4)        =", rates.ed04) +
           line(" Arad(ED06) (5D0->7F6)        =", rates.ed06) +
           line(" Arad(ED) (5D0->7FJ, J=2,4,6) =", rates.electricDipole()) +
           line(" Arad(MD) (5D0->7F1)          =", rates.md) +
           line(" Arad [Arad(ED) + Arad(MD)]   =", rates.total());
}

QString IntensityReport::partition() const
{
    const QString rule =
        QStringLiteral("---------------------------------------------------------------\n");
    QString text = QLatin1Char('\n') + rule +
                   QStringLiteral("    Chemical Partition of Arad(ED)    [Ref. CP]\n") + rule +
                   QLatin1Char('\n');
    const AradPartitionResults &partition = results.partition;
    RateTable byAtom;
    for (const AradPartitionResults::AtomShare &share : partition.atoms)
        byAtom.append(share.label + QLatin1Char(' ') + QString::number(share.atom), share.rate);
    text +=
        byAtom.text(QStringLiteral("Chemical Partition by Atom (s^-1)"), QStringLiteral("Atom"));

    const QString title = QStringLiteral("Chemical Partition by Grouping (s^-1)");
    if (partition.groups.isEmpty())
        return text + title + QStringLiteral("\n\n ") +
               (partition.groupError.isEmpty() ? QStringLiteral("No groups of atoms were given.")
                                               : partition.groupError) +
               QStringLiteral("\n\n");
    RateTable byGroup;
    for (const AradPartitionResults::GroupShare &share : partition.groups)
        byGroup.append(share.group.name, share.rate);
    return text + byGroup.text(title, QStringLiteral("Group"));
}

QString IntensityReport::citations() const
{
    const QString &required = results.requiredCitations;
    if (required.isEmpty())
        return citations::required(results.mopacCitation, citations::intensityModel());
    // The text of a fit holds the citation already.
    if (results.mopacCitation.isEmpty() || required.contains(results.mopacCitation))
        return required + QLatin1Char('\n');
    return required + QStringLiteral("\n\n") + results.mopacCitation + QLatin1Char('\n');
}
