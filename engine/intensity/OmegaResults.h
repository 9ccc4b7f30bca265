#pragma once

#include <LanqorEngine/AradPartitionResults.h>
#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/CoordSPH.h>
#include <LanqorEngine/MyComplex.h>
#include <LanqorEngine/OmegaPrintingOptions.h>
#include <LanqorEngine/RadiativeRates.h>

#include <QString>
#include <QVector>

/// Results of LanqorOmega.
///
/// Atoms bear the numbers of the geometry: 1 is the ion, 2 to N+1 are the coordinated atoms.
/// Vectors by atom number have N+2 entries, of which 0 and 1 are not used.
struct OmegaResults
{
    struct Atom
    {
        int number = 0;
        CoordSPH position;
        double chargeFactor = 0.0;          ///< g
        double alpha = 0.0;                 ///< polarisability, cm^3
        double rho = 0.0;                   ///< overlap with the ion
        double beta = 0.0;                  ///< the overlap charge lies at R/(2 beta) from the ion
        double atomicCharge = 0.0;          ///< electron population, when the indices were set
        double superdelocalizability = 0.0; ///< 1/E, see Qdc, when the indices were set
    };

    /// Harmonic and lattice terms of rank t = 1, 3, 5, 7 and p = 0 to t.
    struct LatticeTerm
    {
        int t = 0;
        int p = 0;
        QVector<MyComplex> harmonics; ///< Y(t,p), by atom number
        QVector<MyComplex> gamma;     ///< electric terms, erg cm^-t, by atom number
        QVector<MyComplex> GAMMA;     ///< dynamic terms, cm^(2-t), by atom number
        MyComplex gammaSum;           ///< over the atoms
        MyComplex GAMMASum;
    };

    /// B(lambda,t,p), cm, t = lambda - 1 and lambda + 1, p = 0 to t.
    struct Amplitude
    {
        int lambda = 0;
        int t = 0;
        int p = 0;
        MyComplex electricDipole;
        MyComplex dynamicCoupling; ///< 0 for t = lambda - 1
        MyComplex total;
    };

    /// B(k,q), cm^-1, the coefficient of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q); k = 2, 4, 6 and
    /// q = -k to k.
    struct CrystalFieldParameter
    {
        int k = 0;
        int q = 0;
        MyComplex value;
    };

    /// What the model takes for granted of the 4f shell of Eu3+.
    struct Constants
    {
        struct Theta
        {
            int t;
            int lambda;
            double value;
        };
        ByRank reducedElements;       ///< <f||C(k)||f>
        ByRank shielding;             ///< sigma(k)
        ByRank radialIntegrals;       ///< <r^k>, cm^k, k = 2, 4, 6
        double radialIntegral8 = 0.0; ///< <r^8>, cm^8
        QVector<Theta> thetas;        ///< factors of the forced electric dipole
        double deltaE = 0.0;          ///< gap to the opposite parity, erg, negative
    };

    /// Parameters of the QDC model. With E the unit of the orbital energies from which the
    /// superdelocalizabilities were made (see orbitalEnergyUnit), these are in 1/E.
    struct Qdc
    {
        bool isSet = false;      ///< g and alpha are those of the model
        bool hasIndices = false; ///< charges and superdelocalizabilities of all atoms were set
        double Q = 0.0;          ///< per electron
        double D = 0.0;          ///< cubic Angstrom times E
        double C = 0.0;          ///< cubic Angstrom
    };

    /// Where g and alpha come from.
    enum class ChargeFactorSource {
        Given,        ///< set, or read from a report
        Qdc,          ///< the QDC model
        BondEstimate, ///< estimated from the force constants of the bonds
    };

    bool isCalculated = false; ///< otherwise the numbers are those of no calculation
    QString geometryFile;
    ByRank omega;   ///< Omega(lambda), cm^2, lambda = 2, 4, 6
    ByRank omegaED; ///< by the forced electric dipole mechanism alone
    ByRank omegaDC; ///< by dynamic coupling alone
    CoordSPH ion;
    QVector<Atom> atoms; ///< coordinated atoms in order
    Qdc qdc;
    QVector<LatticeTerm> latticeTerms;
    QVector<Amplitude> amplitudes;
    QVector<CrystalFieldParameter> crystalField;
    Constants constants;
    double refractiveIndex = 0.0; ///< of the medium
    RadiativeRates rates;         ///< at this index
    AradPartitionResults partition;
    OmegaPrintingOptions printingOptions; ///< sections of the report
    QString requiredCitations;            ///< text at its end; empty: the papers of the model
    QString mopacCitation;                ///< as printed in the MOPAC output; empty without one
    ChargeFactorSource chargeFactorSource = ChargeFactorSource::Given;
    double crystalFieldOverlap = 0.0; ///< ro0 of crystalField, overlap of the nearest atom
    QString orbitalEnergyUnit;        ///< "eV" or "hartree"; empty: not known
};
