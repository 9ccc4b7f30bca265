#pragma once

#include <LanqorEngine/EnergyTransferChannels.h>
#include <LanqorEngine/KineticParameters.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/SpecPrintingOptions.h>
#include <LanqorEngine/SpectroscopicResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorResultTables;
class LanqorSpectroscopicCalculationPrivate;

/// Luminescence of a Eu3+ complex: radiative and non-radiative rates of 5D0, rates of energy
/// transfer between ligand and ion, populations under continuous excitation and the emission
/// quantum yield.
///
/// Needs the intensity parameters, total and of the forced electric dipole part, the energies
/// of a donor singlet and a donor triplet and their distances from the ion. Rates in s^-1,
/// energies in cm^-1, distances in Angstrom, the lifetime in s, yield and efficiency in percent.
///
/// Transfer rates by the dipole-dipole, dipole-multipole and exchange mechanisms (O. L. Malta,
/// J. Lumin. 71, 229 (1997)). A back-transfer is its transfer times exp(-difference / kT) for the
/// difference of donor and acceptor energy, by default at 300 K and without the degeneracies that
/// detailed balance would bring in (KineticParameters). A measured lifetime already holds the loss
/// by back-transfer from 5D0: with a donor near 5D0 that loss counts twice, in the non-radiative
/// rate and in the rate equations. The rates are known by the slots of LanqorTransferChannels: 0 to
/// 4 singlet -> 5D4, 5G6, 5L6, 5D1, 5D0; 10 to 14 the same from the triplet; 5 the first of two
/// triplets -> 5D4. The table of multipolar rates holds slots 0-2, 5 and 10-12, the table of
/// exchange rates 3, 4, 13 and 14.
class LANQORENGINE_EXPORT LanqorSpectroscopicCalculation : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// For explicit values: setOmegaValues, calcArad, calcQuantumYield.
    explicit LanqorSpectroscopicCalculation(QObject *parent);
    /// Reads the intensity parameters and the excited states; a failure is in getLastError().
    ///
    /// @param chargeModel  handed to LanqorOmega
    /// @param programType  which program wrote @p rlPath, see LanqorInputData::ProgramType
    /// @param inputPath  MOPAC output of the complex
    /// @param omegaPath  what LanqorOmega takes as its second file: a report with charge factors,
    ///                   or a structure (Omega then stays 0 until setOmegaValues); empty to set
    ///                   Omega by hand
    /// @param rlPath  output of the excited-state calculation; empty for explicit values
    /// @param selectedTriplet, selectedSinglet  1-based numbers of the donor states; 0, or a
    ///        number not below the length of the list of triplets, chooses the lowest state
    LanqorSpectroscopicCalculation(QObject *parent, const int &chargeModel, const int &programType,
                                   const QString &inputPath, const QString &omegaPath,
                                   const QString &rlPath, const int &selectedTriplet,
                                   const int &selectedSinglet);
    /// The same by readers, which are not owned and must outlive this object.
    /// @param geometry  of the complex, read already; null: Omega is set by hand. Without a report,
    ///                  Omega stays 0 until setOmegaValues.
    /// @param omegaPath  empty, or as above
    /// @param excitedStates  read unless it holds states already; null for explicit values
    LanqorSpectroscopicCalculation(QObject *parent, const int &chargeModel, const int &programType,
                                   LanqorInputData *geometry, const QString &omegaPath,
                                   LanqorInputData *excitedStates, const int &selectedTriplet,
                                   const int &selectedSinglet);
    ~LanqorSpectroscopicCalculation() override;

    /// Forgets lifetime, radiative and non-radiative rate.
    void initializeParameters();

    /// Omega(2), (4), (6) in 1e-20 cm^2.
    void setOmegaValues(const double &omega2, const double &omega4, const double &omega6);
    /// Their forced electric dipole part in 1e-20 cm^2; dipole-dipole transfer rests on it.
    void setOmegaEdValues(const double &omega2, const double &omega4, const double &omega6);
    void setRefractiveIndex(const double &index);
    /// Measured lifetime of 5D0 in s; 0 when unknown, and the non-radiative rate is estimated.
    void setLifeTime(const double &seconds);
    /// Exponent of the 4f-ligand overlap (3.5), used by models 0 and 1.
    void setNOverlapIntegral(const double &exponent);
    /// Exchange model: 0 (default) and 1 through the 4f-ligand overlap squared or to the fourth
    /// power, 2 through the shielding of the 4f shell. Exchange is 0 for any other number. Models
    /// 0 and 1 also shield the dipole-dipole term, and need the shortest ion-ligand distance of
    /// an excited-state output or of setMinDistanceLnLigand.
    void setETModel(const int &model);
    /// Two donor triplets: the selected one feeds 5D4 (slot 5), number 2 of the list all triplet
    /// channels (slots 10 to 14).
    void setConsiderTwoTriplets(const bool &consider);
    void setEnergyTransferChannels(const EnergyTransferChannels &channels);
    void setSpecPrintingOptions(const SpecPrintingOptions &options);

    // One value in place of that of the excited-state output, whichever states are chosen; without
    // an output, or with one that lacks orbitals or a kind of states (the error of the constructor
    // tells), the values of all donors that the open channels use make calcEnergyTransferRate() and
    // what rests on it possible. They hold from the next calcEnergyTransferRate() on. Energies
    // in cm^-1, distances in Angstrom; 0 takes the value back.
    void setSingletEnergy(const double &energy);
    void setSingletRL(const double &distance);
    /// Of the triplet that feeds all triplet channels; of two triplets the second (T).
    void setTripletEnergy(const double &energy);
    void setTripletRL(const double &distance);
    /// Of two triplets the one that feeds 5D4 (Ta).
    void setFirstTripletEnergy(const double &energy);
    void setFirstTripletRL(const double &distance);
    /// Added to the energies of all donor triplets, read or given, cm^-1. Calculated triplets are
    /// off by hundreds to thousands of cm^-1.
    void setTripletShift(const double &shift);
    /// From the ion to the nearest ligand atom.
    void setMinDistanceLnLigand(const double &distance);
    /// Half width of the ligands' bands (3250 cm^-1), on which all transfer rates rest.
    void setBandHalfWidth(const double &halfWidth);
    /// Rates of the ligands and of the cascade, and the temperature of the back-transfer. The
    /// rates hold from the next calculation of the yield on, the temperature and the degeneracies
    /// from the next calcEnergyTransferRate().
    void setKineticParameters(const KineticParameters &parameters);

    /// Radiative rates of 5D0 by Omega and refractive index, then non-radiative rate and quantum
    /// efficiency by the lifetime, or by calcAnrad when the lifetime is 0. A non-radiative rate
    /// below 0 (a lifetime longer than the radiative one) is kept. The emissions to 7F3 and 7F5
    /// are left out.
    void calcArad();
    /// Estimates the non-radiative rate from the radiative rate alone, an empirical law, and
    /// sets efficiency and lifetime by it. The lifetime stays for later calls of calcArad, which
    /// emit a message when they find another radiative rate.
    /// @param arad  radiative rate; 0 to use the one in store
    void calcAnrad(const double &arad);

    /// Rates of the open channels between the chosen states; those of the others stay as they
    /// are. False without usable states, with all rates 0.
    bool calcEnergyTransferRate();
    /// Rates of the default channels (slots 0, 13 and 14) by explicit values, whatever channels
    /// are open; distances in Angstrom, energies in cm^-1.
    bool calcEnergyTransferRate(const double &rlSinglet, const double &rlTriplet,
                                const double &singletEnergy, const double &tripletEnergy);

    /// Populations and yield by explicit values and the default channels; states S0, S1, T1,
    /// 5D4, 5D1, 5D0. @p arad and @p anrad hold for this call alone. Here as below the result is
    /// not judged: absurd rates can give a yield that is infinite or not a number.
    bool calcQuantumYield(const double &rlSinglet, const double &rlTriplet,
                          const double &singletEnergy, const double &tripletEnergy,
                          const double &arad, const double &anrad);
    /// The same by all channels; states as above with 5G6 and 5L6. Calculates the radiative
    /// rates, and the transfer rates unless those of slots 0, 13 or 14 are known: call
    /// calcEnergyTransferRate after a change of channels or settings.
    bool calcQuantumYieldNEW();
    /// The same with two triplets; states S0, S1, two triplets, 5D4, 5D1, 5D0. Slots 0, 5, 13
    /// and 14 alone take part.
    bool calcQuantumYieldTwoTriplets();

    /// The yield by plain values, as the calculations above find it to the last bit; reads nothing
    /// and knows no object, so that it can run thousands of times.
    static YieldOutcome calcYield(const YieldInputs &inputs);
    /// The values of the next calculation with the scheme of the last one, else that of all
    /// channels. A lifetime that was estimated is 0 here.
    YieldInputs getYieldInputs() const;
    /// The numbers of YieldInputs by name, in the order of the record.
    static QVector<YieldQuantity> getYieldQuantities();

    /// Omega(lambda) in use, cm^2, lambda = 2, 4, 6; 0 for another number.
    double getOmega(const int &lambda) const;
    /// Its forced electric dipole part, cm^2.
    double getOmegaEd(const int &lambda) const;
    double getArad() const;
    double getArad02() const;
    double getArad04() const;
    double getArad06() const;
    double getAradMD() const;
    double getAnrad() const;
    double getLifeTime() const;          ///< s
    double getQuantumEfficiency() const; ///< percent
    double getQuantumYield() const;      ///< percent
    /// Percentage of the radiative rate that goes to 7FJ; 0 outside 1, 2, 4, 6.
    double getBranchingRatio(const int &J) const;
    /// Population of state @p i: S0, S1, first of two triplets, T1, 5D4, 5G6, 5L6, 5D1, 5D0. The
    /// states that the last calculation did not model keep what they had (0 at first).
    double getPopulation(const int &i) const;

    /// Rates of multipolar and exchange transfer and back-transfer, and donor minus acceptor
    /// energy, of slot @p k; 0 outside 0 to 19.
    double getForwardRate(const int &k) const;
    double getBackwardRate(const int &k) const;
    double getExchangeForwardRate(const int &k) const;
    double getExchangeBackwardRate(const int &k) const;
    double getEnergyMismatch(const int &k) const;

    /// Rates of ligands and cascade, temperature.
    KineticParameters getKineticParameters() const;
    /// quantum yield / quantum efficiency, percent.
    double getSensitisation() const;
    /// Where the photons of the last calculation of the yield go.
    PhotonShares getPhotonShares() const;

    /// Numbers of the donor states in use (1-based).
    int getSelectedSinglet() const;
    int getSelectedTriplet() const;
    /// The number that was asked for, if another state had to stand in for it; else 0.
    int getReplacedSinglet() const;
    int getReplacedTriplet() const;
    /// The excited states; null without an excited-state output.
    const LanqorRL *getRLCalculation() const;

    /// All of the last calculations.
    SpectroscopicResults getResults() const;
    /// Intensity parameters, emission, donor states, transfers, populations, yield, and the ligand
    /// states that were read.
    static LanqorResultTables makeTables(const SpectroscopicResults &results);

    /// Report on intensity parameters, donor states, transfer rates and radiative rates. Returns
    /// the text and writes no file.
    /// @param path  the input file that the report cites
    QString createOutFileET(const QString &path);
    /// Report on non-radiative rate, populations and quantum yield, and on what they rest: the
    /// file of the excited states, the exchange model and the kinetic constants. Returns the text
    /// and writes no file.
    QString createOutFile(const QString &path);

private:
    friend class LanqorSpectroscopicCalculationPrivate;

    std::unique_ptr<LanqorSpectroscopicCalculationPrivate> d;
};
