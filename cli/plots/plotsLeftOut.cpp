// Stands in for the drawing when the program is built without it (LANQOR_PLOTS=OFF).
#include "plots/plots.h"

#include <QCoreApplication>

namespace plots {

namespace {

bool leftOut(QString &error)
{
    error = QCoreApplication::translate(
        "cli", "this lanqor was built without plots (LANQOR_PLOTS=OFF); leave --plot out");
    return false;
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, const QStringList &)
{
    return std::make_unique<QCoreApplication>(argc, argv);
}

bool draw(const Spectrum &, const QString &, QString &error)
{
    return leftOut(error);
}

bool draw(const LevelDiagram &, const QString &, QString &error)
{
    return leftOut(error);
}

} // namespace plots
