#pragma once

#include "../intensity/plainOmega.h"
#include "TestSupport.h"

#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>
#include <memory>

namespace fitSupport {

/// Atoms from the ion on, the coordinated ones only, as the plain model takes them.
inline QVector<CoordSPH> sphereOf(LanqorInputData &structure)
{
    structure.createSphericalCoordinate();
    QVector<CoordSPH> atoms;
    for (int atom = 1; atom <= structure.getCoordNumber() + 1; ++atom)
        atoms.append(structure.getCoordSPH(atom));
    return atoms;
}

inline QVector<CoordSPH> sphereOf(const QString &mopacOutput)
{
    LanqorInputData structure(nullptr, mopacOutput);
    return structure.readMopacOutFile(false) ? sphereOf(structure) : QVector<CoordSPH>();
}

/// A fixture, or a file of the corpus, or empty.
inline QString mopacFile(const char *name)
{
    const QString file = QString::fromLatin1(name);
    const QString path = file.contains(QLatin1Char('/')) ? file : QStringLiteral("mopac/") + file;
    const QString fixture = testSupport::dataFile(path);
    return QFileInfo::exists(fixture) ? fixture : testSupport::corpusFile(path);
}

/// The geometry of a MOPAC output whose file is there no longer.
inline std::unique_ptr<LanqorInputData> geometryOfLostFile(const QString &mopacOutput)
{
    const QString path =
        testSupport::scratchFile(QStringLiteral("lost.out"), testSupport::readAll(mopacOutput));
    auto geometry = std::make_unique<LanqorInputData>(nullptr, path);
    if (!geometry->readMopacOutFile(false) || !QFile::remove(path))
        qFatal("%s", qPrintable(geometry->getLastError()));
    return geometry;
}

/// What a MOPAC output must hold to be read: the geometry, at the start and at the end.
inline QString asMopacOutput(const QString &name, const QVector<Coord> &atoms)
{
    QString block = QStringLiteral("          CARTESIAN COORDINATES\n\n");
    for (int i = 0; i < atoms.size(); ++i)
        block += QStringLiteral("%1 %2 %3 %4 %5\n")
                     .arg(i + 1, 4)
                     .arg(atoms.at(i).label)
                     .arg(atoms.at(i).x, 15, 'f', 9)
                     .arg(atoms.at(i).y, 15, 'f', 9)
                     .arg(atoms.at(i).z, 15, 'f', 9);
    return testSupport::scratchFile(
        name, (block + QLatin1Char('\n') + block + QLatin1Char('\n')).toLatin1());
}

/// Runs the annealing from @p x; @return the number of evaluations
template <class Fit> int anneal(Fit &fit, const QVector<double> &x, int steps = 15000)
{
    LanqorGSA annealing(nullptr, x, &fit);
    annealing.setNStopMax(steps);
    annealing.initializeGSA();
    return fit.getPointNumber();
}

template <class Fit> double evaluate(Fit &fit, QVector<double> x)
{
    double *values = x.data();
    fit.incrementPointsNumber();
    return fit.runParametrization(x.size(), values) ? fit.getResponseFunction() : -1.0;
}

/// A number of the report behind @p label ("omega(2) = "); NaN when it is not there.
inline double printed(const QString &report, const QString &label)
{
    const QRegularExpression pattern(QStringLiteral("(?<![a-zA-Z])") +
                                     QRegularExpression::escape(label) +
                                     QStringLiteral(" *= *(-?[0-9.]+)"));
    const QRegularExpressionMatch match = pattern.match(report);
    return match.hasMatch() ? match.captured(1).toDouble() : std::nan("");
}

} // namespace fitSupport
