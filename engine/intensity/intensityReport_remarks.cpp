// What stands behind the citations of the report: units, conventions and methods to which the
// sections above refer.
#include "intensity/intensityReport_p.h"

#include "core/reportText_p.h"

#include <LanqorEngine/OmegaResults.h>

using Source = OmegaResults::ChargeFactorSource;

QString IntensityReport::remarks() const
{
    QString text;
    if (results.qdc.isSet)
        text += remarksOnQDC();
    if (results.chargeFactorSource == Source::BondEstimate)
        text += QStringLiteral(
            " The charge factors and polarizabilities are an estimate from the force constants of\n"
            " the bonds and the superdelocalizabilities, not a fit to measured intensities; the\n"
            " sources of its numbers are not known.\n\n");
    if (results.printingOptions.printAradPartition)
        text += QStringLiteral(
            " [Ref. CP] Chemical partition: Omega(l) is a double sum over the coordinated atoms,\n"
            " and an atom or group has the rate of its own terms and of half of its cross terms\n"
            " with all others; source of the method not known. Arad(ED) is the rate of Omega(l),\n"
            " dynamic coupling included.\n\n");
    if (results.printingOptions.printBkq)
        text += remarksOnCrystalField();
    if (text.isEmpty())
        return text;
    text.chop(1);
    return QStringLiteral("\n------------------------------------------------------\n"
                          "      Remarks                                         \n"
                          "------------------------------------------------------\n\n") +
           text;
}

QString IntensityReport::remarksOnQDC() const
{
    const QString &unit = results.orbitalEnergyUnit;
    const QString units =
        unit.isEmpty()
            ? QStringLiteral(
                  " S (SDE) in 1/eV and D in A^3 eV when the orbital energies are those of "
                  "MOPAC,\n 1/hartree and A^3 hartree when they are those of Gaussian.")
            : QStringLiteral(" S (SDE) in 1/%1, D in A^3 %1.").arg(unit);
    return QStringLiteral(
               " [Ref. QDC] QDC model: an atom with the electron population q and the\n"
               " superdelocalizability S has g = Q q and alpha = D S + C, with one Q, D and C for\n"
               " all atoms; source of the method not known.\n"
               " \"Atomic charges\" are the electron populations q, not charges. Units in place "
               "of\n"
               " au: q in electrons, Q in 1/electron, C in A^3,\n") +
           units + QStringLiteral("\n\n");
}

QString IntensityReport::remarksOnCrystalField() const
{
    return QStringLiteral(" Crystal field: the Bkq(k,q) are the coefficients of "
                          "C(k)q = sqrt(4 pi/(2k+1)) Y(k,q)\n"
                          " (Wybourne's normalisation), at the overlap ro0 =") +
           reportText::fixed(results.crystalFieldOverlap, 4, 7) +
           QStringLiteral(" of the nearest atom;\n"
                          " Bkq(k,-q) = (-1)^q conj(Bkq(k,q)).\n\n") +
           crystalFieldLines(SignOfQ::Negative) + QLatin1Char('\n');
}
