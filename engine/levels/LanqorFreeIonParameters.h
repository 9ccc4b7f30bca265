#pragma once

#include <LanqorEngine/FreeIonParameters.h>
#include <LanqorEngine/LanqorEngineExport.h>

#include <QStringList>
#include <QVector>

class LanqorResultTables;

/// Published parameters of the trivalent lanthanide ions from Ce to Yb, and the conversions
/// between the conventions in which parameters are published.
///
/// Those of the aqueous ions were fitted with alpha, beta and gamma, and LanqorEnergyLevels gives
/// the levels computed in the same papers within their printed 1 cm^-1. Ce and Yb have zeta alone:
/// their F_k are 0.
class LANQORENGINE_EXPORT LanqorFreeIonParameters
{
public:
    /// Symbols of the ions by number of 4f electrons, "Ce" (1) to "Yb" (13).
    static QStringList getSymbols();
    /// Parameters of an ion, upper or lower case; one of 0 electrons for other symbols.
    static FreeIonParameters getParameters(const QString &symbol);
    /// Parameters of the ion of so many 4f electrons, 1 to 13; one of 0 electrons for others.
    static FreeIonParameters getParameters(const int &electrons);
    /// Table "free_ion_parameters" of such ions.
    static LanqorResultTables makeTables(const QVector<FreeIonParameters> &ions);

    /// Slater integrals from Racah's E1, E2, E3 (G. Racah, Phys. Rev. 76, 1352 (1949)), all in
    /// cm^-1; sets F2, F4 and F6 alone.
    static FreeIonParameters fromRacah(const double &E1, const double &E2, const double &E3);
    /// F_k = F^k/D_k, cm^-1, with D2 = 225, D4 = 1089, D6 = 184041/25 (E. U. Condon, G. H.
    /// Shortley, The Theory of Atomic Spectra (1935)); 0 for other k.
    static double toSubscript(const int &k, const double &superscript);
    /// F^k = D_k F_k, cm^-1.
    static double toSuperscript(const int &k, const double &subscript);
    /// 5000 cm^-1: the subscript integrals of all ions are far below, the superscript ones far
    /// above. Tells one convention taken for the other.
    static double getLargestSubscript();
};
