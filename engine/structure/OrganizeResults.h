#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QStringList>
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

/// Fragments of one formula that were left out.
struct OmittedFragment
{
    QString formula;
    int count = 0;
    bool isChargeKnown = false; ///< of a common counter-ion or solvent, told by its connectivity
    int charge = 0;             ///< of each one, elementary charges
};

/// A structure in the order of atoms that all calculations need.
struct OrganizeResults
{
    QString ion; ///< element
    int coordNumber = 0;
    QVector<OrganizedAtom> atoms; ///< in the new order, the ion first
    QVector<OrganizedLigand> ligands;
    QVector<OmittedFragment> omittedFragments; ///< those not bound to the ion, unless they are kept
    /// Charge of the atoms, elementary charges: 3 of the ion and those of the fragments, when all
    /// of these are common ligands, counter-ions or solvents, told by their connectivity.
    bool isChargeKnown = false;
    int charge = 0;
    QStringList fragmentCharges; ///< "3 acetylacetonate (-1)"; of unknown fragments "C6H5O (?)"
};
