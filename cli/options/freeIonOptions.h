#pragma once

#include <LanqorEngine/FreeIonParameters.h>

#include <QString>

/// Options that the subcommands for the levels of a free ion share.
namespace cli {

class OptionReader;

void addFreeIonOptions(OptionReader &options);
/// An ion with its parameters: those given, and published ones. The symbol is empty when only the
/// electrons are given, the source tells of parameters that are not given.
/// @param usual  symbol of the ion that is meant without --ion and --electrons; empty: none
FreeIonParameters readFreeIon(const OptionReader &options, const QString &usual = QString());
/// Whether the ion has more than one 4f electron and more than one hole: else zeta is its only
/// parameter.
bool hasElectrostaticSplitting(const FreeIonParameters &ion);
/// "Eu(III), 4f^6", or "4f^6" without a symbol.
QString nameOf(const FreeIonParameters &ion);

/// Makes the folder of the tables of the 4f shell the current one. Paths of files must be absolute
/// before.
void enterDataFolder();

} // namespace cli
