// Stands in for the drawing when the program is built without it (LANQOR_PLOTS=OFF).
#include "Command.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <QCoreApplication>

namespace plots {

namespace {

[[noreturn]] void refuse()
{
    throw cli::Failure{
        cli::tr("this lanqor was built without plots (LANQOR_PLOTS=OFF); leave --plot out")};
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QStringList &)
{
    return std::make_unique<QCoreApplication>(argc, argv);
}

void draw(const AbsorptionResults &, const QString &, const QString &)
{
    refuse();
}

void draw(const CalculatedEmission &, const QVector<QPointF> &, const QString &, const QString &)
{
    refuse();
}

void draw(const YieldScanResults &, const UncertaintyResults &, const QString &, const QString &)
{
    refuse();
}

void draw(const UncertaintyResults &, const QString &, const QString &)
{
    refuse();
}

void draw(const LevelDiagram &, const QString &)
{
    refuse();
}

void draw(const CurvePlot &, const QString &)
{
    refuse();
}

void draw(const Picture &, const QString &)
{
    refuse();
}

bool canDraw()
{
    return false;
}

QByteArray inlineSvg(const Picture &)
{
    return {};
}

Picture sphereFigure(const SphereFigure &)
{
    return {};
}

Picture partitionFigure(const AradPartitionResults &)
{
    return {};
}

Picture transferFigure(const SpectroscopicResults &, const YieldInputs &, double)
{
    return {};
}

Picture photonFigure(const SpectroscopicResults &)
{
    return {};
}

Picture emissionFigure(const OmegaExpResults &)
{
    return {};
}

} // namespace plots
