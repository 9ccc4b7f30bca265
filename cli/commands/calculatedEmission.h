#pragma once

#include <LanqorEngine/CalculatedEmission.h>

#include <QPointF>
#include <QString>
#include <QVector>

class LanqorInputData;
class LanqorResultTables;
struct OmegaResults;

namespace cli {

class OptionReader;

/// What the command line asks of the calculated emission spectrum.
struct EmissionRequest
{
    bool isWanted = false;
    double width = 0.0; ///< full width at half maximum of a line, cm^-1
    QString plotFile;
    QString measuredFile;
    bool countsPhotons = false; ///< the measured intensities
};

/// Adds --plot-emission, --emission-width, --spectrum and --photon-counts.
void addEmissionOptions(OptionReader &options);
EmissionRequest readEmissionRequest(const OptionReader &options);

/// The spectrum by the rates of a finished calculation, split by its crystal field; its tables are
/// added and its picture is drawn.
class EmissionSpectrum
{
public:
    EmissionSpectrum(const EmissionRequest &request, LanqorInputData &geometry,
                     const OmegaResults &results);
    void addTables(LanqorResultTables &tables) const;
    void draw(const QString &title) const;

private:
    void readMeasured();

    EmissionRequest request;
    CalculatedEmission calculated;
    QVector<QPointF> measured; ///< nm, power per nm in the unit of the calculated curve
};

} // namespace cli
