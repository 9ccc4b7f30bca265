#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/PhysicalConstant.h>

#include <QVector>

/// The physical constants with which the library calculates.
class LANQORENGINE_EXPORT LanqorPhysicalConstants
{
public:
    /// All of them, Gaussian (CGS) units.
    static QVector<PhysicalConstant> getConstants();
};
