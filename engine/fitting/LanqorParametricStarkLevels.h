#pragma once

#include <LanqorEngine/ChargeFactorsGroup.h>
#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/GLimits.h>
#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/ParametersGroup.h>
#include <LanqorEngine/StarkFitResults.h>
#include <LanqorEngine/TransitionValues.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorParametricStarkLevelsPrivate;
class LanqorResultTables;

/// Fits the charge factors g of groups of coordinated atoms to the measured lowest and highest
/// sublevels of 7FJ manifolds of Eu3+, cm^-1.
///
///     response = sum over the transitions of
///         100 | |cmax - cmin| - |Ehigh - Elow| | + |cmin - (Elow - o)| + |cmax - (Ehigh - o)|
/// where cmin and cmax are the lowest and the highest computed level of the manifold, from its
/// barycentre, and o is the offset. The splitting weighs 100 times as much as the positions, for
/// these depend on where the barycentre is taken.
///
/// A trial vector holds one charge factor for each group. It is feasible when none is negative and
/// all lie within the limits of their elements; other trials score 1.0e25, as every trial does
/// while checkSetup() fails. Each improvement is written to files when setFileName() gave a name.
class LANQORENGINE_EXPORT LanqorParametricStarkLevels : public LanqorAbstractParametric
{
    Q_OBJECT
public:
    /// Reads the structure; a failure is told by getLastError().
    /// @param fileName  structure file, see LanqorBkq
    /// @param value  coordination number N; 0: counted by the bonding distances
    LanqorParametricStarkLevels(QObject *parent, const QString &fileName, const int &value);
    /// The same of a geometry that was read already; @p geometry is not kept, and null is none.
    LanqorParametricStarkLevels(QObject *parent, LanqorInputData *geometry, const int &value);
    ~LanqorParametricStarkLevels() override;

    // Readers of the small files of a fit. Each appends its extension to @p baseName and replaces
    // what the vector holds; fields stand between blanks, one record on each line, and blank lines
    // are skipped. A field that is no number counts as 0, and so does a missing one. A file that
    // cannot be opened leaves the vector as it was.

    /// ".chargefactors": name, atom numbers, charge factor. A missing file is told on standard
    /// output, and false is returned.
    static bool readChargeFactorsFile(const QString &baseName, QVector<ChargeFactorsGroup> &groups);
    /// ".groups": name, atom numbers. A missing file is told on standard output, and false is
    /// returned.
    static bool readParametersGroup(const QString &baseName, QVector<ParametersGroup> &groups);
    /// ".exp": J, lowest and highest energy and offset, and behind these, or not at all, the
    /// standard deviations of the two energies, cm^-1. A missing file is told on standard output,
    /// and false is returned.
    static bool readTransitionValues(const QString &baseName,
                                     QVector<TransitionValues> &transitions);
    /// ".limits": element, minimum, maximum. The file may be missing.
    static void readGLimitsFile(const QString &baseName, QVector<GLimits> &limits);

    /// The lines of these files that are read otherwise than they were meant: fields that are
    /// missing, ignored or no numbers. A sentence on each, with file and line.
    static QStringList findFileFaults(const QString &baseName);

    /// N, which must be that of the structure; unless set it is.
    void setCoordNumber(const int &number);
    /// Base name of the files written at each improvement: ".progress", to which a line of number
    /// of points and response is appended, and ".stark", the report. Empty: none are written.
    void setFileName(const QString &baseName);
    /// An element without limits has only the one that g is not negative; the first entry of an
    /// element counts.
    void setGLimits(const QVector<GLimits> &limits);
    /// Every coordinated atom must be in a group. An atom in several has the value of the last.
    void setParametersGroup(const QVector<ParametersGroup> &groups);
    /// New groups, transitions or overlap void the best trial.
    void setTransitionValues(const QVector<TransitionValues> &transitions);
    /// Overlap of the nearest atom; 0.0801 unless set.
    void setRO0(const double &ro0);
    /// See LanqorStarkLevels; magnitudes unless set. Another choice voids the best trial.
    void setReducedElements(const ReducedElements &choice);

    /// True when a fit can start: the structure is read, its coordination number is the one that
    /// was set, the groups cover the coordinated atoms and no other, and there are transitions of
    /// J = 0 .. 6. Otherwise getLastError() tells what is wrong.
    bool checkSetup();

    /// Vector from which to start, for each group the charge factor that @p start gives its first
    /// atom, or 0.5, brought into the limits of its atoms. Empty, with the reason in
    /// getLastError(), without a valid setup.
    QVector<double> makeStartingVector(const QVector<ChargeFactorsGroup> &start);

    /// The charge factors of the groups, "g:NAME", with the limits that the atoms of each share;
    /// a largest value may be infinite. Empty without a valid setup.
    QVector<FitParameter> getParameters();

    /// Evaluates one charge factor for each group; always true.
    bool runParametrization(const int &n, double *&x) override;

    /// Effective charge 3 + 14 exp(-d^2/2), d being half the sum of the radius of the ion for its
    /// coordination number (that of 6 or 9 beyond these) and the mean radius of the coordinated
    /// O, N and F, in Bohr radii; others have no radius. 0 without a structure.
    double calculateEffectiveCharge();
    double getEffectiveCharge() const;

    /// Writes the report of the best trial to the base name plus ".stark". False without a name or
    /// a feasible trial, and when the file cannot be written.
    bool createOuputFile();
    /// The best trial so far.
    StarkFitResults getResults() const;
    /// The same as data for other programs.
    static LanqorResultTables makeTables(const StarkFitResults &results);
    /// Text of the report of the best trial; empty before there is one.
    QString getReport() const;

    /// Charge factor of group @p index (0-based) in the best trial; 0 before there is one.
    double getBestChargeFactor(const int &index) const;
    /// Symbol of atom @p i of the geometry, 1-based; empty outside it.
    QString getAtomLabel(const int &i) const;
    /// Number of the coordinated atoms; 0 when the structure cannot be used.
    int getAtomsNumber() const;

private:
    std::unique_ptr<LanqorParametricStarkLevelsPrivate> d;
};
