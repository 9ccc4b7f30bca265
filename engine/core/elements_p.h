#pragma once

#include <QMap>
#include <QPair>
#include <QString>
#include <QVector>

constexpr int elementCount = 103;

/// Symbols with atomic masses, g/mol, in order of atomic number.
QVector<QPair<QString, double>> makeElementMassTable();
/// Symbols with atomic numbers 1 to 103.
QVector<QPair<QString, int>> makeElementNumberTable();

/// Atomic number of an element symbol; 0 when it is none.
int atomicNumberOf(const QString &symbol);

/// True for what may label an atom of a structure file: the symbol of a real element, mercury
/// included, with what may follow it ("Eu3+", "C12"), or a mark that is none: a dummy atom (XX, X,
/// Du, LP), a translation vector (Tv), a capped bond (Cb), a bare charge (+, -), D or T.
bool isAtomLabel(const QString &label);

/// Element symbol of an atom as structure files write it: "EU", "eu", "Eu1" and "63" give "Eu".
/// A name that starts with no element (a dummy atom "XX", a translation vector "Tv") stays as it
/// is.
QString elementLabel(const QString &name);

/// Formula in the order of Hill: with carbon C, H, then the others by symbol, else all by symbol.
QString hillFormula(QMap<QString, int> counts);
