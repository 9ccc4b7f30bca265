#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// A solvent as the continuum models of quantum-chemistry programs take it.
struct Solvent
{
    QString name;              ///< that the program xtb gives it, for GFN1-xTB with ALPB
    QStringList otherNames;    ///< in lower case
    double permittivity = 0.0; ///< relative, static, at 20 to 25 degrees Celsius
};

/// The solvents for which all programs used here have a model.
class LANQORENGINE_EXPORT LanqorSolvents
{
public:
    /// In the order of their permittivity, the largest first.
    static QVector<Solvent> table();
    /// The solvent of one of its names, in any case, blanks and hyphens left out; empty when there
    /// is none.
    static std::optional<Solvent> find(const QString &name);
    /// What to say to a name that is not in the table.
    static QString unknownSolvent(const QString &name);
};
