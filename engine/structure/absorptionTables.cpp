#include "LanqorNormalizePoints.h"

#include <LanqorEngine/LanqorResultTables.h>

LanqorResultTables LanqorNormalizePoints::makeTables(const AbsorptionResults &results)
{
    const QString nm = QStringLiteral("nm");
    const QString one = QStringLiteral("1");
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("spectrum"),
                     {{QStringLiteral("band_width"), nm},
                      {QStringLiteral("range_start"), nm},
                      {QStringLiteral("range_end"), nm}},
                     {results.bandWidth, results.rangeStart, results.rangeEnd});
    QVector<QVector<QVariant>> transitions;
    for (const AbsorptionTransition &transition : results.transitions)
        transitions.append(
            {transition.wavelength, transition.energy, transition.oscillatorStrength});
    tables.addTable(QStringLiteral("transitions"),
                    {{QStringLiteral("wavelength"), nm},
                     {QStringLiteral("energy"), QStringLiteral("cm^-1")},
                     {QStringLiteral("oscillator_strength"), one}},
                    transitions);
    QVector<QVector<QVariant>> configurations;
    for (const AbsorptionTransition &transition : results.transitions)
        if (!transition.configuration.isEmpty())
            configurations.append({transition.wavelength, transition.fromOrbital,
                                   transition.toOrbital, transition.configuration,
                                   transition.weight});
    if (!configurations.isEmpty())
        tables.addTable(QStringLiteral("main_configurations"),
                        {{QStringLiteral("wavelength"), nm},
                         {QStringLiteral("from_orbital_as_printed"), QString()},
                         {QStringLiteral("to_orbital_as_printed"), QString()},
                         {QStringLiteral("configuration"), QString()},
                         {QStringLiteral("weight"), one}},
                        configurations);
    QVector<QVector<QVariant>> points;
    for (int k = 0; k < results.wavelengths.size(); ++k)
        points.append({results.wavelengths.at(k), results.absorption.at(k)});
    tables.addTable(QStringLiteral("curve"),
                    {{QStringLiteral("wavelength"), nm}, {QStringLiteral("absorption"), one}},
                    points);
    if (results.measuredFile.isEmpty())
        return tables;
    points.clear();
    for (int k = 0; k < results.measuredWavelengths.size(); ++k)
        points.append({results.measuredWavelengths.at(k), results.measuredAbsorption.at(k)});
    tables.addTable(QStringLiteral("measured"),
                    {{QStringLiteral("wavelength"), nm}, {QStringLiteral("absorption"), one}},
                    points);
    return tables;
}
