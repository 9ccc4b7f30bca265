#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QVector>

/// An atom of an organised structure.
struct OrganizedAtom
{
    Coord position;     ///< element and place, Angstrom
    int sourceAtom = 0; ///< its number in the structure that was read, from 1
    QString fragment;   ///< name of the ligand or unbound fragment; the element for the ion
    bool isCoordinated = false;
};

/// A ligand and the numbers (from 1, in the new order) of its coordinated atoms.
struct OrganizedLigand
{
    QString name;
    QVector<int> coordinatedAtoms;
};

/// A structure in the order of atoms that all calculations need.
struct OrganizeResults
{
    QString ion; ///< element
    int coordNumber = 0;
    QVector<OrganizedAtom> atoms; ///< in the new order, the ion first
    QVector<OrganizedLigand> ligands;
};
