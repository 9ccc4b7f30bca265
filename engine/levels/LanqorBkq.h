#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/MyComplex.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorBkqPrivate;
class LanqorInputData;

/// Even-rank crystal-field parameters of a Eu3+ complex by the simple overlap model (O. L. Malta,
/// Chem. Phys. Lett. 88, 353 (1982)), atom by atom, cm^-1, the coefficients of
/// C(k)q = sqrt(4 pi/(2k+1)) Y(k,q) (Wybourne's normalisation):
///     B(k,q) = r(k) e^2 g rho (2 beta)^(k+1) sqrt(4 pi/(2k+1)) conj(Y(k,q)) / R^(k+1)
/// with rho = ro0 (Rmin/R)^3.5, beta = 1/(1 + rho) for O and F, 1/(1 - rho) for N and Cl and 1
/// for other elements, k = 2, 4, 6 and q = -k .. k.
///
/// Use: setChargeFactors(), calculateRO(), then getBkq(). Copies are independent of each other but
/// for an array of charge factors, which belongs to the caller.
class LANQORENGINE_EXPORT LanqorBkq
{
public:
    /// Reads the structure; a failure is told by getLastError().
    /// @param fileName  MOPAC output, ".mop", ".zmt", ".xyz" or MOL2 file, its kind told by suffix
    ///                  and content; Eu is atom 1, the coordinated atoms follow
    /// @param value  coordination number A; 0: counted by the bonding distances
    LanqorBkq(const QString &fileName, const int &value);
    /// Of a geometry that was read already; spherical coordinates are added when they are missing.
    /// @p geometry is not kept.
    LanqorBkq(LanqorInputData *geometry, const int &value);
    LanqorBkq(const LanqorBkq &other);
    LanqorBkq &operator=(const LanqorBkq &other);
    ~LanqorBkq();

    /// Charge factors by atom number, A+2 entries, of which 0 and 1 are not used. The array is not
    /// copied: it must live as long as it is in use.
    void setChargeFactors(double *&g);
    /// The same, copied.
    /// @return false when there are fewer than A+2, or no coordination sphere; then there are no
    ///         charge factors
    bool setChargeFactors(const QVector<double> &g);

    /// Computes what depends on the overlap @p ro0 of the nearest atom, from 0 to below 1.
    /// @return false without a coordination sphere or for another overlap
    bool calculateRO(const double &ro0);

    /// Parameter of coordinated atom @p a = 1 .. A, which is atom a+1 of the geometry; 0 for any
    /// other argument and as long as charge factors or overlap are missing.
    MyComplex getBkq(const int &k, const int &q, const int &a) const;
    /// Sum over the coordinated atoms.
    MyComplex getBkq(const int &k, const int &q) const;

    /// Element of atom @p i of the geometry, 1-based; empty outside it.
    QString getAtomLabel(const int &i) const;
    /// Number A of the coordinated atoms; 0 when the structure cannot be used.
    int getAtomsNumber() const;
    /// Why the structure or the overlap cannot be used; empty when they can.
    QString getLastError() const;

private:
    std::unique_ptr<LanqorBkqPrivate> d;
};
