#pragma once

#include <LanqorEngine/CrystalFieldResults.h>

#include <QString>
#include <QVector>

/// Parameters of a crystal field as they are given.
namespace crystalFieldParameters {

using Parameter = StarkResults::FieldParameter;

/// Why the last of @p parameters cannot stand beside the others, of which none is at fault: its k
/// and q, a second value, what breaks hermiticity. Empty when it can.
QString faultOfLast(const QVector<Parameter> &parameters, FieldNormalisation normalisation);

} // namespace crystalFieldParameters
