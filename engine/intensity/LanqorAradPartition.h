#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/Ligand.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <Eigen/Core>

#include <array>
#include <memory>

class LanqorInputData;
namespace simpleOverlapModel {
class CoordinationSphere;
}

/// Chemical partition of the forced-electric-dipole emission rate Arad(ED) of 5D0 of Eu3+ over
/// coordinated atoms and groups of them.
///
/// Omega(lambda) is a double sum over pairs of atoms (its |B|^2 multiplied out); each pair term
/// E(lambda,i,j) times the rate constant of the transition that Omega(lambda) drives is the
/// pair's part of the rate. An atom's share is the sum of its pairs and may be negative, for
/// amplitudes interfere. All shares together are Arad(ED).
///
/// Atoms are numbered as in the geometry: 1 is the ion, 2 to N+1 are the coordinated atoms;
/// groups are numbered from 0. Rates are in s^-1; a number out of range gives 0.
class LANQORENGINE_EXPORT LanqorAradPartition : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// @param geometry         shared with the caller, with its spherical coordinates
    /// @param coordNumber      N
    /// @param refractiveIndex  of the medium
    /// A geometry that holds no such coordination sphere is told by getLastError(), and all
    /// rates stay 0.
    LanqorAradPartition(QObject *parent, LanqorInputData *&geometry, const int &coordNumber,
                        const double &refractiveIndex);
    ~LanqorAradPartition() override;

    /// Copies g and alpha (cm^3) of atoms 2 to N+1 from arrays of N+2 entries.
    void setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas);

    /// Defines the groups, one in each entry: a name, then atom numbers, with blanks or commas
    /// between them; "#" starts a comment and entries without text are skipped. An atom may
    /// stand once in all groups; atoms that stand in none belong to no group. On failure
    /// (repeated atom, atom outside 2 to N+1, group without atoms) there are no groups.
    bool setLigandsVector(const QStringList &descriptions);
    /// The same from a text with one group per line.
    bool setLigandsVector(const QString &text);
    int getLigandsNumber() const { return ligands.size(); }
    Ligand getLigand(const int &i) const { return ligands.value(i); }
    QString getLigandsName(const int &i) const { return ligands.value(i).name; }
    QVector<int> getLigandAtoms(const int &i) const { return ligands.value(i).atoms; }

    /// Rate per unit of Omega(lambda), s^-1 cm^-2; 0 for lambda other than 2, 4, 6.
    double calcConstArad(const int &lambda) const;

    /// Part of the pair of atoms i and j in the rate that Omega(lambda) drives.
    double aradLambdaByAtom(const int &lambda, const int &i, const int &j) const;
    /// Part of the pair of atoms i and j in Arad(ED).
    double aradByAtom(const int &i, const int &j) const;
    /// Part of the pair of groups a and b in Arad(ED).
    double aradByLigand(const int &a, const int &b) const;
    /// Share of atom i in Arad(ED).
    double getSumByAtom(const int &i) const;
    /// Share of group a in Arad(ED): its pairs with itself and with every other group.
    double getSumByLigand(const int &a) const;

private:
    double K(const int &lambda, const int &t, const int &i) const;
    void calcPairTerms();
    bool isCoordinated(const int &atom) const;
    double E(const int &lambda, const int &i, const int &j) const;
    double EL(const int &lambda, const int &a, const int &b) const;
    double AL(const int &lambda, const int &a, const int &b) const;

    LanqorInputData *inputData = nullptr;
    int coordNumber = 0;
    double refractiveIndex = 1.5;
    QVector<double> chargeFactor;
    QVector<double> alpha;
    QVector<Ligand> ligands;
    std::unique_ptr<simpleOverlapModel::CoordinationSphere> sphere;
    /// E(lambda,i,j), cm^2, of lambda = 2, 4, 6 with atom 2 at index 0; empty before g and alpha
    /// are set.
    std::array<Eigen::MatrixXd, 3> pairTerms;
};
