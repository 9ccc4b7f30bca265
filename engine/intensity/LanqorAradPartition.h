#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/Ligand.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorAradPartitionPrivate;
class LanqorInputData;
class LanqorResultTables;
struct AradPartitionResults;

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
    /// The same from vectors by atom number. False when there is no coordination sphere or one of
    /// them has less than N+2 entries; then those of before stay.
    bool setChargeFactorAndAlpha(const QVector<double> &chargeFactors,
                                 const QVector<double> &alphas);

    /// Defines the groups, one in each entry: a name, then atom numbers, with blanks or commas
    /// between them; "#" starts a comment and entries without text are skipped. An atom may
    /// stand once in all groups; atoms that stand in none belong to no group. On failure
    /// (repeated atom, atom outside 2 to N+1, group without atoms or with a number in place of
    /// its name) there are no groups.
    bool setLigandsVector(const QStringList &descriptions);
    /// The same from a text with one group per line.
    bool setLigandsVector(const QString &text);
    /// The lines of a text file for setLigandsVector(); none, with the reason in @p error, when it
    /// cannot be read.
    static QStringList readLigandsFile(const QString &fileName, QString &error);
    int getLigandsNumber() const;
    Ligand getLigand(const int &i) const;
    QString getLigandsName(const int &i) const;
    QVector<int> getLigandAtoms(const int &i) const;

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

    /// Shares and pairs of all atoms and groups.
    AradPartitionResults getResults() const;
    /// Shares as data.
    static LanqorResultTables makeTables(const AradPartitionResults &results);

private:
    std::unique_ptr<LanqorAradPartitionPrivate> d;
};
