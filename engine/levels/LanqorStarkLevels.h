#pragma once

#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/StarkResults.h>

#include <Eigen/Core>

#include <QString>
#include <QVector>

#include <memory>

class LanqorResultTables;
class LanqorStarkLevelsPrivate;

/// Stark levels of the manifolds 7F0 .. 7F6 of Eu3+ in the crystal field of the coordinated atoms,
/// cm^-1 from the barycentre of each manifold. The manifolds do not mix: each has its own matrix
/// over M = -J .. J in intermediate coupling,
///     <M|H|M'> = - sum over k = 2, 4, 6 of B(k,q) 7 (-1)^(J-M+q) (3 k 3; 0 0 0)
///                (J k J; -M q M') U(k,J),   q = M - M'
/// with the parameters B(k,q) of LanqorBkq.
///
/// An object is a value: a copy has its own levels and parameters; only an array of charge
/// factors is the caller's.
class LANQORENGINE_EXPORT LanqorStarkLevels
{
public:
    /// Reads the structure by LanqorBkq(@p fileName, @p value); a failure is told by
    /// getLastError().
    /// @param value  coordination number A; 0: counted by the bonding distances
    LanqorStarkLevels(const QString &fileName, const int &value);
    /// Of a geometry that was read already, see LanqorBkq; @p geometry is not kept.
    LanqorStarkLevels(LanqorInputData *geometry, const int &value);
    LanqorStarkLevels(const LanqorStarkLevels &other);
    LanqorStarkLevels &operator=(const LanqorStarkLevels &other);
    ~LanqorStarkLevels();

    /// Charge factors by atom number, A+2 entries, of which 0 and 1 are not used. The array is not
    /// copied: it must live as long as this object calculates.
    void setChargeFactors(double *&g);
    /// The same, copied.
    /// @return false with the reason in getLastError() when there are fewer than A+2, or no
    ///         structure; then there are no charge factors
    bool setChargeFactors(const QVector<double> &g);
    /// Overlap of the nearest atom, dimensionless; 0.0801 (source not known) unless set.
    void setRO0(const double &ro0);
    /// Whether the elements U(k,J) have their signs; magnitudes unless set. Without the signs the
    /// manifolds 7F2, 7F4, 7F5 and 7F6 are split in a wrong order, 7F6 upside down: of use only to
    /// compare with results that were obtained so.
    void setReducedElements(const ReducedElements &choice);

    /// Computes all manifolds anew. Without a structure or charge factors, or when a number is out
    /// of range, there is the reason in getLastError() instead, and no level.
    void calculateStarkLevels();

    /// The 2J+1 levels of 7FJ, J = 0 .. 6, cm^-1, in the order of the eigen-solver; empty without
    /// a calculation.
    QVector<double> getStarkLevels(const int &J) const;
    /// The matrix of 7FJ, row and column M + J, cm^-1; empty without a calculation.
    Eigen::MatrixXcd getEnergeticMatrix(const int &J) const;
    /// Element of atom @p i of the geometry, 1-based; empty outside it.
    QString getAtomLabel(const int &i) const;

    /// Diagonal reduced matrix element <7FJ||U(k)||7FJ>: the square root of the tabulated square,
    /// without its sign; 0 for what is not in the table (k = 2, 4, 6; J = 1 .. 6) and for k > 2J.
    static double U(const int &k, const int &J);
    /// The same with its sign relative to 7F1 (B. R. Judd, Operator Techniques in Atomic
    /// Spectroscopy (1963)): that of the Russell-Saunders element
    ///     -(-1)^(S+L+J+k) (2J+1) {J J k; L L S},   S = L = 3
    /// which intermediate coupling does not turn.
    static double signedU(const int &k, const int &J);

    /// Number A of the coordinated atoms; 0 when the structure cannot be used.
    int getAtomsNumber() const;
    /// Why there are no levels; empty when there are, or when nothing was calculated yet.
    QString getLastError() const;

    // --- Conveniences on top of the levels ---

    /// Levels of 7FJ in ascending order.
    QVector<double> getSortedStarkLevels(const int &J) const;
    /// Highest less lowest level of 7FJ, cm^-1; 0 without a calculation.
    double getSplitting(const int &J) const;
    /// Scalar strength of the field, cm^-1 (F. Auzel, O. L. Malta, J. Phys. (Paris) 44, 201
    /// (1983)); the choice of the frame does not change it:
    ///     Nv = sqrt(sum over k = 2, 4, 6 and q = -k .. k of |B(k,q)|^2 4 pi/(2k+1))
    /// 0 without a calculation.
    double getCrystalFieldStrength() const;
    /// Sum B(k,q) over the atoms, cm^-1, as in the last calculation; 0 for other k and q.
    MyComplex getFieldParameter(const int &k, const int &q) const;
    /// The last calculation; no manifolds without one.
    StarkResults getResults() const;
    /// Record "crystal_field" and tables "atoms", "crystal_field_parameters", "manifolds" and
    /// "stark_levels".
    static LanqorResultTables makeTables(const StarkResults &results);
    /// Charge factors, parameters, strength, sorted levels and splittings of the last calculation,
    /// also written to @p outFile unless that is empty.
    /// @return empty when there are no levels or the file cannot be written
    QString createOutFile(const QString &outFile);

private:
    std::unique_ptr<LanqorStarkLevelsPrivate> d;
};
