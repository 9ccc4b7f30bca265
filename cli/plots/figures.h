#pragma once

#include "plots/Picture.h"

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/SphereResults.h>

#include <QVector>

struct AradPartitionResults;
struct OmegaExpResults;
struct SpectroscopicResults;
struct YieldInputs;

/// Drawings of results that can be printed as they are.
namespace plots {

/// What a drawing of the coordination sphere shows.
struct SphereFigure
{
    enum class Backbone { LeftOut, Faint };
    SphereResults sphere;
    QVector<Coord> atoms; ///< of the whole complex, for the ligands' backbones; may be empty
    Backbone backbone = Backbone::LeftOut;
};

/// The ion and its coordinated atoms at their true places, seen so that they overlap least, in
/// parallel projection; the edges of their convex hull, and the distances.
Picture sphereFigure(const SphereFigure &figure);

/// Bars of the shares of the rate Arad(ED), by atoms and by ligands.
Picture partitionFigure(const AradPartitionResults &partition);

/// Donor states and levels of Eu3+, and how the energy goes between them; beside them the yield
/// against the energy of the donor triplet. Empty without transfers.
/// @param inputs  of @p results
/// @param tripletDeviation  standard deviation of the donor triplet's energy, cm^-1; 0: not known
Picture transferFigure(const SpectroscopicResults &results, const YieldInputs &inputs,
                       double tripletDeviation);

/// What becomes of the absorbed photons; empty without populations.
Picture photonFigure(const SpectroscopicResults &results);

/// The measured spectrum with the windows and baselines of its bands; empty without points.
Picture emissionFigure(const OmegaExpResults &results);

} // namespace plots
