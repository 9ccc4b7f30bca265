#pragma once

#include <QString>

/// Kinds of ligands whose triplets GFN1-xTB gives with errors of their own.
enum class LigandClass {
    ArylDiketonate,        ///< aryl and heteroaryl beta-diketonates
    Polypyridine,          ///< bipyridine, phenanthroline, terpyridine, also with phenyl and alkyl
    Carboxylate,           ///< but those of pyridines
    PyridineCarboxylate,   ///< picolinate, dipicolinate
    FluoroalkylDiketonate, ///< beta-diketonates of fluoroalkyl groups without an aryl group
    Phenazine,             ///< dipyridophenazine
    Other
};

/// What the bonds of a ligand tell.
struct LigandClassResults
{
    LigandClass ligandClass = LigandClass::Other;
    QString name; ///< of the class, "aryl or heteroaryl beta-diketonates"
    /// Of an adiabatic triplet energy by GFN1, cm^-1.
    double gfn1StandardDeviation = 0.0;
    /// Known direction of its error: "too high by 1300 to 4200 cm^-1"; empty when there is none.
    QString gfn1Error;
    QString gfn1Basis; ///< the ligands on which that stands
    /// Three or more conjugated atoms (two of carbon) that hold or bear N, O or S: a system that
    /// may feed an ion, unlike nitrate, water, acetate or the benzene rings of phosphine oxides.
    bool isAntenna = false;
    /// A conjugated ring as in thiophene, furan and pyrrole, whose INDO triplets are too low by
    /// thousands of cm^-1.
    bool hasFiveMemberedRing = false;
    QString fiveMemberedRing; ///< its elements, "C4S"
};
