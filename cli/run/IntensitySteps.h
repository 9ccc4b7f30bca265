#pragma once

#include "run/ProgramSteps.h"
#include "run/RunReport.h"

#include <QVector>

#include <memory>
#include <optional>

class LanqorOmega;
class LanqorSpectroscopicCalculation;

namespace cli {

class OptionReader;
class UncertainOptions;

/// The donor states that go on to the yield.
struct YieldDonors
{
    int singlet = 0; ///< numbers in the output, from 1
    int triplet = 0;
    double tripletEnergy = 0.0; ///< chosen, cm^-1
    double tripletSd = 0.0;     ///< of it; 0: not told
    UncertainInput measured;    ///< with the kind of its distribution, when it is the measured one
    bool isMeasured = false;
};

/// What a step gives: a line, and files.
struct IntensityOutcome
{
    QString line;
    QVector<QPair<QString, QString>> files; ///< name and text
};

/// The steps 06 and 07 of a run: intensity parameters, rates and yield.
class IntensitySteps
{
public:
    IntensitySteps(const OptionReader &reader, const UncertainOptions &uncertain,
                   const RunRequest &request, RunReport &report);
    ~IntensitySteps();
    IntensitySteps(const IntensitySteps &) = delete;
    IntensitySteps &operator=(const IntensitySteps &) = delete;

    /// Integrates the measured spectrum, if there is one, before anything else is done.
    void readSpectrum();

    /// Intensity parameters at @p geometry.
    /// @param mopacOutput  from which the QDC model takes orbitals and force constants
    IntensityOutcome calcOmega(LanqorInputData &geometry, const OrganizeResults &sphere,
                               const QString &mopacOutput);
    /// Rates and yield with intervals.
    IntensityOutcome calcYield(ProgramSteps &programs, const YieldDonors &donors);

    /// Ctrl-C ended the fit.
    bool isInterrupted() const { return isFitInterrupted; }

private:
    void fit(LanqorInputData &geometry, const OrganizeResults &sphere);
    std::unique_ptr<LanqorOmega> makeOmega(LanqorInputData &geometry,
                                           const OrganizeResults &sphere) const;
    void calcQdc(const OrganizeResults &sphere, const QString &mopacOutput);
    UncertaintyResults calcErrorBars(const LanqorSpectroscopicCalculation &calculation,
                                     LanqorInputData &geometry, const YieldDonors &donors) const;

    const OptionReader &reader;
    const UncertainOptions &uncertain;
    const RunRequest &request;
    RunReport &report;
    std::unique_ptr<LanqorInputData> mopacData; ///< of the QDC model
    std::unique_ptr<LanqorOmega> omega;
    QString spectrumReport;
    int coordNumber = 0;
    bool isFitInterrupted = false;
};

/// Groups of coordinated atoms that share charge factor and polarisability in the fit of a run:
/// those of one element in ligands of one formula.
QMap<int, QStringList> donorGroups(const OrganizeResults &sphere);

} // namespace cli
