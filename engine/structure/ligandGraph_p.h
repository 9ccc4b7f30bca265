#pragma once

#include "input/mol2File_p.h"

#include <LanqorEngine/Coord.h>

#include <QSet>
#include <QStringList>
#include <QVector>

/// Elements and the neighbours of each atom of a molecule, counted from 0. There are no orders of
/// bonds.
struct LigandGraph
{
    QStringList elements; ///< hydrogen for its isotopes
    QVector<QSet<int>> neighbours;

    int add(const QString &element);
    void bond(int first, int second);
    int size() const { return elements.size(); }
    bool is(int atom, const char *element) const
    {
        return elements.at(atom) == QLatin1String(element);
    }
    int degree(int atom) const { return neighbours.at(atom).size(); }
    /// Neighbours of that element.
    QVector<int> neighboursOf(int atom, const char *element) const;

    /// The atoms of @p members (counted from 0) and the bonds among them.
    static LigandGraph of(const QVector<Coord> &atoms, const QVector<int> &members,
                          const QVector<structureFiles::Bond> &bonds);
    /// The atoms of one molecule, bonded by their distances.
    static LigandGraph of(const QVector<Coord> &molecule);

    /// Whether both have the same elements with the same surroundings: enough to tell isomers of
    /// the size of a ligand apart.
    bool isLike(const LigandGraph &other) const;

    /// All rings of @p size atoms without a bond across, each in the order of its bonds.
    QVector<QVector<int>> rings(int size) const;
};
