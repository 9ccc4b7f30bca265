#pragma once

#include <QPair>
#include <QString>
#include <QVector>

constexpr int elementCount = 103;

/// Symbols with atomic masses, g/mol, in order of atomic number.
QVector<QPair<QString, double>> makeElementMassTable();
/// Symbols with atomic numbers 1 to 103.
QVector<QPair<QString, int>> makeElementNumberTable();
