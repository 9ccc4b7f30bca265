#pragma once

#include <LanqorEngine/DonorModelResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/OrganizeResults.h>

#include <QString>

#include <memory>

class LanqorDonorModelPrivate;

/// Builds the system in which GFN1-xTB gives the triplet of one ligand of a complex without the
/// false charge transfer from its neighbours: the ligand alone when it is neutral, and
/// [Eu(L)3(H2O)] when it is an anion of charge -1, which alone is useless (acetylacetonate is
/// wrong by 5145 cm^-1). Every other ligand is refused.
///
/// The ion and the three ligands stay where they are; the other ligands go, and a molecule of
/// water comes, its oxygen at 2.45 Angstrom from the ion in the direction of the largest gap.
class LANQORENGINE_EXPORT LanqorDonorModel : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// @param structure  of LanqorOrganizeMolecules
    LanqorDonorModel(QObject *parent, const OrganizeResults &structure);
    ~LanqorDonorModel() override;

    /// Charge of the structure with all fragments that it has kept, elementary charges; from it
    /// the charge of a ligand follows that is not a common one.
    void setComplexCharge(const int &charge);
    /// Charge of the ligand, elementary charges, in place of the one that is told by its bonds.
    void setLigandCharge(const int &charge);

    /// Builds the model of the ligand that @p ligand names: its formula as in the structure
    /// ("C5H7O2", also with blanks or "_1"), or "acetylacetonate" and the like. False with the
    /// reason and the way out in getLastError(); the results are then those of before.
    bool build(const QString &ligand);

    DonorModelResults getResults() const;

private:
    friend class LanqorDonorModelPrivate;
    std::unique_ptr<LanqorDonorModelPrivate> d;
};
