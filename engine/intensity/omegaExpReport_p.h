#pragma once

#include <QString>

class LanqorOmegaExp;

/// Text of the report of a finished calculation of experimental intensity parameters.
QString omegaExpReport(const LanqorOmegaExp &calculation);
