#pragma once

#include <QString>

/// Options that the subcommands for the levels of a free ion share.
namespace cli {

class OptionReader;

/// An ion and its parameters.
struct FreeIon
{
    int electrons = 0;
    QString name;    ///< "Eu3+ (4f^6)", or "4f^6" when only the electrons are given
    double F2 = 0.0; ///< small-denominator Slater integrals and spin-orbit parameter, cm^-1
    double F4 = 0.0;
    double F6 = 0.0;
    double zeta = 0.0;
    QString source; ///< of parameters that were not given
};

void addFreeIonOptions(OptionReader &options);
/// Symbols of the ions that have parameters, for a help text.
QString freeIonNames();
FreeIon readFreeIon(const OptionReader &options);

/// Makes the folder of the tables of the 4f shell the current one. Paths of files must be absolute
/// before.
void enterDataFolder();

/// "2" or "5/2"; false for what is no angular momentum.
bool parseJ(const QString &text, double &J);
/// The other way round.
QString textOfJ(double J);

} // namespace cli
