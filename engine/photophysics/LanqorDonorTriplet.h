#pragma once

#include <LanqorEngine/DonorTripletResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/XtbRunResults.h>

#include <QString>

#include <memory>

class LanqorDonorTripletPrivate;
class LanqorResultTables;
class LanqorRL;

/// Chooses the triplet energy of the ligand that feeds the ion: a measured one, else that of MOPAC
/// INDO/S plus 1220 cm^-1, else the adiabatic one of GFN1-xTB, which stands beside as a second
/// opinion.
///
/// The numbers come from a comparison with 29 measured triplets, 17 of them judged by a rule that
/// was fixed before any run. INDO with the shift has an RMS error of 1100 cm^-1 over the 26 ligands
/// without a conjugated five-membered ring (thienyl, furyl, pyrrolyl), which INDO gives too low by
/// thousands; GFN1 has one of 2068 over all, and depends on the kind of ligand
/// (LanqorLigandClasses). INDO's state is the lowest one of which more than half of the hole and
/// of the electron are on the asked ligand, or on all that are equal to it, with a charge transfer
/// between ligands below 0.3.
///
/// A triplet of GFN1 is refused when the charge of a ligand changes by more than 0.15 e
/// between ground state and triplet (false charge transfer; the ion's own change reaches 0.15 in
/// good runs), when a bond of a ligand breaks, and when it is on another ligand than the asked
/// one, which the bonds tell that change.
///
/// Energies in cm^-1, charges in elementary charges, distances in Angstrom.
class LANQORENGINE_EXPORT LanqorDonorTriplet : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    explicit LanqorDonorTriplet(QObject *parent = nullptr);
    ~LanqorDonorTriplet() override;

    /// @param standardDeviation  0 when none is known
    void setMeasured(const double &energy, const double &standardDeviation);
    /// Excited states after LanqorRL::calcRL(). Those of another program than MOPAC INDO get no
    /// shift and have no standard deviation.
    void setStates(const LanqorRL &states);
    /// Why there are none.
    void setStatesMissing(const QString &reason);
    /// GFN1 run of the complex in its ground state. Excited states at its geometry have a standard
    /// deviation of 1100, at any other one of 1500.
    void setGroundState(const XtbRunResults &groundState);
    /// GFN1 run of the triplet of the complex.
    void setTriplet(const XtbRunResults &triplet);
    /// Both runs of a model of one ligand (LanqorDonorModel), in place of those of the complex.
    void setModel(const XtbRunResults &groundState, const XtbRunResults &triplet);
    /// Why there is no triplet by GFN1.
    void setGfn1Missing(const QString &reason);
    /// Formula of the ligand whose triplet it is, as "C12H8N2", or "acetylacetonate"; empty for the
    /// one with the lowest local triplet.
    void setLigand(const QString &formula);
    /// The method to be taken; None for the first one that is available, in the order of
    /// TripletMethod, but for the ligands that INDO cannot describe.
    void setChoice(const TripletMethod &method);

    /// False with the reason in getLastError() when the files are of different complexes, the
    /// asked ligand is not there, or the energy that is asked for (or every one) is not available;
    /// getResults() then tells what each method lacks.
    bool calculate();
    DonorTripletResults getResults() const;

    static LanqorResultTables makeTables(const DonorTripletResults &results);
    /// The same to be read.
    static QString makeText(const DonorTripletResults &results);

private:
    friend class LanqorDonorTripletPrivate;
    std::unique_ptr<LanqorDonorTripletPrivate> d;
};
