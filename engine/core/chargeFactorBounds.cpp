#include "core/chargeFactorBounds_p.h"

namespace {

bool isOneOf(const QString &symbol, std::initializer_list<const char *> symbols)
{
    for (const char *candidate : symbols) {
        if (symbol == QLatin1String(candidate))
            return true;
    }
    return false;
}

} // namespace

void updateDirectFitBounds(const QString &symbol, ChargeFactorBounds &bounds)
{
    if (isOneOf(symbol, {"O", "S"}))
        bounds = {0.01, 2.0};
    else if (isOneOf(symbol, {"F", "Cl", "Br", "I"}))
        bounds = {0.001, 1.0};
    else if (isOneOf(symbol, {"N", "P"}))
        bounds = {0.01, 3.0};
}

void updateQdcFitBounds(const QString &symbol, ChargeFactorBounds &bounds)
{
    if (isOneOf(symbol, {"Cl", "F"}))
        bounds = {0.01, 1.0};
    else if (isOneOf(symbol, {"O", "S"}))
        bounds = {0.01, 2.0};
    else if (isOneOf(symbol, {"N", "P"}))
        bounds = {0.01, 3.0};
}
