#pragma once

#include <LanqorEngine/JuddOfeltBand.h>

#include <QVector>

/// A table of absorption bands.
struct JuddOfeltBandTable
{
    QVector<JuddOfeltBand> bands;
    QString error; ///< with the line; empty when all is well
};

/// Reads a heading that names the columns, then one band a line, separated by commas, semicolons or
/// tabs; "#" starts a comment. Columns: level; wavelength_nm or wavenumber_cm-1; one of f, S_cm2,
/// cross_section_cm2_nm, cross_section_cm and absorbance_cm-1; if wanted error, U2, U4, U6, f_MD
/// and n.
JuddOfeltBandTable readJuddOfeltBands(const QString &fileName);
/// The first two columns of a table of refractive indices: wavelength in nm, ascending, and n.
QString readRefractiveIndices(const QString &fileName, QVector<double> &wavelengths,
                              QVector<double> &indices);
