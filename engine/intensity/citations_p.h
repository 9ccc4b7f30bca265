#pragma once

#include <QString>

/// What a user of a calculation has to cite.
namespace citations {

/// Primary papers of the intensity theory and of the simple overlap model, one on each line.
QString intensityModel();

/// The citations of a calculation under their heading: first those of the quantum-chemistry
/// program (@p mopacCitation, may be empty), then @p own.
QString required(const QString &mopacCitation, const QString &own);

} // namespace citations
