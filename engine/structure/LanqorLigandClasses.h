#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/LigandClassResults.h>

#include <QVector>

/// Tells the kind of a ligand from its atoms and the bonds among them (which are told from
/// distances), never from a name.
///
/// The classes and their standard deviations, cm^-1, come from 29 ligands with measured triplets
/// (most of gadolinium complexes): 500 for aryl and heteroaryl beta-diketonates (RMS 420 over
/// six), 800 for ligands like bipyridine, phenanthroline and terpyridine (790 over five), 3000 in
/// a known direction for carboxylates, fluoroalkyl diketonates, pyridine carboxylates and
/// phenazines, and 2000 for everything else.
class LANQORENGINE_EXPORT LanqorLigandClasses
{
public:
    /// @param ligand  all atoms of one ligand, hydrogen included, Angstrom
    static LigandClassResults classify(const QVector<Coord> &ligand);
};
