#pragma once

#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>

struct AbsorptionResults;
struct CalculatedEmission;
struct UncertaintyResults;
struct YieldScanResults;
struct FitAccount;
struct FitTrace;
struct IntensitySolutions;
struct JuddOfeltResults;
class QCommandLineOption;
class QCoreApplication;

namespace cli {
class OptionReader;
}

/// Pictures of results. They are drawn without a display; the suffix of the file (.svg, .png or
/// .pdf) tells the format.
namespace plots {

/// The option --plot FILE. An option with the value <picture> brings --size and --title along.
QCommandLineOption option();
/// The file of --plot or another option for a picture, empty when it is not given.
QString readOption(const cli::OptionReader &options, const char *name = "plot");

/// What the command line wants of every picture.
struct SheetRequest
{
    std::optional<QSizeF> sizeMm; ///< unless it has the size of its kind
    std::optional<QString> title; ///< empty: none; unless it has that of its kind
};
/// That of the last readOption().
const SheetRequest &sheetRequest();

/// "⁷", "⁻³" for labels.
QString superscript(int number);

/// The application object of the program: one that can draw, without a display, when @p arguments
/// ask for a plot, else one that needs neither fonts nor windows.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv,
                                                  const QStringList &arguments);

/// An absorption spectrum with its transitions.
void draw(const AbsorptionResults &spectrum, const QString &title, const QString &file);

/// A calculated emission spectrum, over a measured one unless that is empty.
/// @param measured  nm, power per nm in the unit of the calculated curve
void draw(const CalculatedEmission &emission, const QVector<QPointF> &measured,
          const QString &title, const QString &file);

/// The quantum yield over one input or two, with the values as given marked; over one with the
/// error bars of the yield, the first of its quantities, if there are any.
void draw(const YieldScanResults &scan, const UncertaintyResults &errorBars, const QString &title,
          const QString &file);

/// Error bars of all quantities, relative to their medians.
void draw(const UncertaintyResults &results, const QString &title, const QString &file);

/// Energy levels in columns.
struct LevelDiagram
{
    struct Level
    {
        double energy = 0.0; ///< cm^-1
        QString label;       ///< empty for a thin line without a name
    };
    struct Column
    {
        QString title;
        QVector<Level> levels;
    };
    QString title;
    QString columnsTitle; ///< what the names of the columns are; may be empty
    QVector<Column> columns;
    QString remark; ///< above the levels, before the number of those without a name; may be empty
};
void draw(const LevelDiagram &diagram, const QString &file);

/// Series of points in one pair of axes.
struct CurvePlot
{
    enum class Style { Steps, Dots, Line, Curve };
    struct Series
    {
        QVector<QPointF> points;
        Style style = Style::Dots;
        QString name; ///< for the legend, which is left out when no series has one
    };
    QString title;
    QString xTitle;
    QString yTitle;
    bool isLogarithmicX = false;
    bool isLogarithmicY = false;
    QVector<Series> series;
};
void draw(const CurvePlot &plot, const QString &file);

/// Smallest misfit against the number of points, a line for each start.
CurvePlot convergence(const QString &title, const QString &yTitle, const QVector<FitTrace> &traces);
/// Computed against measured values, with the line on which both are equal.
CurvePlot comparison(const QString &title, const FitAccount &account);
/// Calculated against measured oscillator strengths, and both as sticks at their wavenumbers.
CurvePlot strengths(const JuddOfeltResults &results);
CurvePlot sticks(const JuddOfeltResults &results);
/// Equally good solutions in the plane of charge factor and polarisability, or of D and C.
CurvePlot solutionPlane(const QString &title, const IntensitySolutions &solutions);

} // namespace plots
