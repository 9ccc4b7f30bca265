#pragma once

#include <LanqorEngine/CrystalFieldResults.h>
#include <LanqorEngine/FreeIonParameters.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/StarkResults.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorCrystalFieldPrivate;
class LanqorResultTables;

/// All states of 4f^n in a crystal field, cm^-1 (B. G. Wybourne, Spectroscopic Properties of Rare
/// Earths (1965)), and their magnetism:
///     H = free ion (LanqorEnergyLevels) + sum over k = 2, 4, 6 and q = -k .. k of B(k,q) C(k)q
/// The operators are summed over the n electrons, also of a shell more than half full. Levels of
/// different J mix: the field stands between all free-ion levels up to a cut-off.
///
/// Not in it: three-electron operators T^i, spin-other-orbit and spin-spin interaction M^k, P^k,
/// correlation crystal fields, orbital reduction, diamagnetism.
///
/// It needs the tables of the 4f shell as LanqorEnergyLevels does. Memory grows with the square,
/// time with the cube of the number of states that the field connects, at most 3432.
class LANQORENGINE_EXPORT LanqorCrystalField
{
public:
    /// Reads the tables of 4f^n, n = @p electrons from 1 to 13; a failure is told by
    /// getLastError().
    explicit LanqorCrystalField(const int &electrons);
    ~LanqorCrystalField();
    LanqorCrystalField(const LanqorCrystalField &) = delete;
    LanqorCrystalField &operator=(const LanqorCrystalField &) = delete;

    /// Parameters of the free ion; the number of electrons is that of this object.
    void setFreeIon(const FreeIonParameters &ion);
    /// Parameters in Wybourne's normalisation. One of a pair q, -q may be left out: the other is
    /// B(k,-q) = (-1)^q conj(B(k,q)).
    /// @return false with the reason in getLastError() when k is not 2, 4 or 6, |q| exceeds k, a
    ///         parameter stands twice or is not finite, or they make no hermitian operator; the
    ///         earlier ones stay
    bool setFieldParameters(const QVector<StarkResults::FieldParameter> &parameters);
    /// The same in another normalisation: of Stevens's ones the real part counts, the imaginary one
    /// must be 0, and q and -q are independent.
    bool setFieldParameters(const QVector<StarkResults::FieldParameter> &parameters,
                            const FieldNormalisation &normalisation);
    /// Energy up to which free-ion levels are kept, cm^-1 from the lowest, which is always kept; 0,
    /// as unless set, keeps all. Below 0: all when the field leaves matrices of at most 1001 states
    /// (seconds), 40000 otherwise.
    void setCutOff(const double &energy);
    /// g of the electron's spin; 2.00231930436 unless set.
    void setSpinFactor(const double &g);
    /// Energy up to which levels are described in the results, cm^-1; 0, as unless set: all.
    void setMaximumEnergy(const double &energy);
    /// Temperatures of the susceptibility and the magnetisation, K, above 0; none unless set.
    bool setTemperatures(const QVector<double> &temperatures);
    /// Fields of the magnetisation, tesla, not negative; none unless set.
    bool setMagneticFields(const QVector<double> &fields);

    /// Computes states, levels and magnetic properties anew.
    /// @return false with the reason in getLastError(); then there are no results
    bool calculate();

    QString getLastError() const;
    /// The last calculation; no levels without one.
    CrystalFieldResults getResults() const;

    /// Record "crystal_field" and tables "free_ion_parameters" (of this ion),
    /// "crystal_field_parameters", "stevens_parameters", "free_ion_levels", "levels",
    /// "composition", "g_tensors", "susceptibility" and "magnetisation".
    static LanqorResultTables makeTables(const CrystalFieldResults &results);
    /// Text of the results, each level with up to @p components components.
    static QString makeText(const CrystalFieldResults &results, const int &components);

    /// Reads parameters from a text file: k, q, real part and, of Wybourne's, imaginary part on
    /// each line, or "B44" or "B2-1" in place of k and q; # starts a comment.
    /// @return false when the file cannot be read or a line is not such parameters, stands twice or
    ///         contradicts another; then @p error tells the file, the line and what is wrong
    static bool readParameters(const QString &fileName, const FieldNormalisation &normalisation,
                               QVector<StarkResults::FieldParameter> &parameters, QString &error);
    /// Reads measured levels to show beside the calculated ones: energy and, if wanted, a name on
    /// each line; # starts a comment. Failures as above.
    static bool readMeasuredLevels(const QString &fileName,
                                   QVector<CrystalFieldResults::MeasuredLevel> &levels,
                                   QString &error);
    /// The number of states of 4f^n; 0 for n beyond 0 .. 14.
    static int getStateCount(const int &electrons);
    /// chi T (cm^3 K/mol) of the 7FJ levels of Eu3+, with E(J) = lambda J(J+1)/2, at the
    /// temperature @p T (K) in closed form, g_s = 2 (J. H. Van Vleck, The Theory of Electric and
    /// Magnetic Susceptibilities (1932)); @p lambda in cm^-1, above 0.
    static double calcVanVleckEuropium(const double &lambda, const double &T);

private:
    std::unique_ptr<LanqorCrystalFieldPrivate> d;
};
