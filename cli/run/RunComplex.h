#pragma once

#include <LanqorEngine/OrganizeResults.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace cli {

struct RunRequest;

/// The complex of a run as its file has it, in the order that all calculations need.
struct RunComplex
{
    OrganizeResults structure;
    int charge = 0; ///< of all its atoms, elementary charges
    QString chargeSource;
    QByteArray xyz; ///< the atoms as an .xyz file
    QStringList warnings;

    QVector<Coord> atoms() const;
    /// "Eu, 6 coordinated atoms (O 2 to 7) in 3 ligands".
    QString summary() const;
};

/// Reads the structure. Throws a Failure with the way out for what no run can be made of: no ion or
/// several, another ion than Eu3+, no sphere, a charge that is not known or does not go with the
/// electrons.
RunComplex readRunComplex(const RunRequest &request);

/// Text of an .xyz file.
QByteArray xyzOf(const QVector<Coord> &atoms, const QString &title);

} // namespace cli
