#include "options/plausibility.h"

#include "Command.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QMap>
#include <QStringList>

namespace cli {

void warnOfAlphas(const LanqorInputData &geometry, const QVector<double> &alphas)
{
    constexpr double smallest = 1.0e-3;
    constexpr double largest = 50.0;
    constexpr double cubicAngstromPerCm3 = 1.0e24;
    QMap<double, QStringList> doubtful; // atoms by value
    for (int atom = 2; atom < alphas.size(); ++atom)
        if (alphas.at(atom) < smallest || alphas.at(atom) > largest)
            doubtful[alphas.at(atom)].append(
                QStringLiteral("%1 %2").arg(geometry.getAtomLabel(atom), QString::number(atom)));
    for (auto value = doubtful.begin(); value != doubtful.end(); ++value) {
        const double inCm3 = value.key() * cubicAngstromPerCm3;
        const QString unit =
            inCm3 >= smallest && inCm3 <= largest
                ? tr("given in cm^3? That would be %1 cubic Angstrom").arg(inCm3)
                : tr("polarisabilities of donor atoms are 0.5 to 10 cubic Angstrom");
        warn(tr("--alpha is %1 cubic Angstrom for %2: %3")
                 .arg(QString::number(value.key()), value->join(QStringLiteral(", ")), unit));
    }
}

void warnOfRefractiveIndex(double index)
{
    constexpr double largest = 3.0;
    if (index > largest)
        warn(tr("--n %1 is no refractive index of a usual medium; solutions and solids have 1.3 "
                "to 2")
                 .arg(index));
}

void warnOfLifetime(double ms)
{
    constexpr double largest = 20.0;
    constexpr double msPerMicrosecond = 1.0e-3;
    if (ms > largest)
        warn(tr("--lifetime is %1 ms, longer than 5D0 can live: given in microseconds? That would "
                "be %2 ms")
                 .arg(QString::number(ms), QString::number(ms * msPerMicrosecond)));
}

QString doubtOfOmega(const char *name, double omega)
{
    constexpr double smallest = 1.0e-10;
    constexpr double largest = 1000.0;
    constexpr double perCm2 = 1.0e20;
    const QString value =
        QStringLiteral("--%1 %2").arg(QLatin1String(name), QString::number(omega));
    if (omega > largest)
        return tr("%1: no complex has that much; Omega is needed in 1e-20 cm^2, where values lie "
                  "below 100")
            .arg(value);
    if (omega > 0.0 && omega < smallest)
        return tr("%1: given in cm^2? Omega is needed in 1e-20 cm^2, where this would be %2")
            .arg(value, QString::number(omega * perCm2));
    return QString();
}

} // namespace cli
