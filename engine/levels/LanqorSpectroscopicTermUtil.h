#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

#include <QString>
#include <QStringList>

/// Russell-Saunders terms and their labels.
namespace LanqorSpectroscopicTermUtil {

/// A Russell-Saunders term or, with J set, one of its levels.
struct SpectroscopicTerm
{
    double S = 0.0;    ///< total spin
    int L = 0;         ///< total orbital momentum; -1 for an unknown letter
    int termIndex = 0; ///< ordinal among the terms of equal S and L, from 1; 0 without one
    double J = 0.0;    ///< total angular momentum of a level; 0 for a term
};

/// Letters of the orbital momenta: the position of a letter is its L, S = 0 to Q = 12.
LANQORENGINE_EXPORT extern const QStringList termLetterList;

/// Whether S, L and the ordinal agree; J is not compared.
LANQORENGINE_EXPORT bool isSameTerm(const SpectroscopicTerm &a, const SpectroscopicTerm &b);

/// Reads a label: multiplicity, letter, then
/// - without J the ordinal: "7F", "5D1";
/// - with J the ordinal of one digit in parentheses, if any, and J in decimals: "7F6", "5D(1)2",
///   "4I5.5". J as a fraction ("5/2") is not understood.
/// What is no number reads as 0, an unknown letter as L = -1.
LANQORENGINE_EXPORT SpectroscopicTerm termFromLabel(const QString &label, const bool &withJ);

/// An angular momentum as spectroscopists write it: "2", "5/2".
LANQORENGINE_EXPORT QString textOfJ(const double &J);
/// A level's label with its J written so: "4I9/2" for "4I4.5".
LANQORENGINE_EXPORT QString textOfLevel(const QString &label);
/// Reads "2", "5/2" or "2.5"; false for what is no angular momentum below 100.
LANQORENGINE_EXPORT bool parseJ(const QString &text, double &J);

} // namespace LanqorSpectroscopicTermUtil
