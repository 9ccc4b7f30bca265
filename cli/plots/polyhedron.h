#pragma once

#include <QVector>

#include <array>

/// The coordination polyhedron: the convex hull of the coordinated atoms.
namespace polyhedron {

using Point = std::array<double, 3>;
using Rotation = std::array<Point, 3>; ///< rows: the axes to the right, upwards and to the viewer

/// More coordinated atoms than any ion has.
constexpr int mostPoints = 40;

struct Edge
{
    int first = 0; ///< index of a point
    int second = 0;
    /// Angle between the normals of the faces that meet there, degrees; 180 where there is one
    /// face.
    double fold = 180.0;
};

struct Hull
{
    QVector<QVector<int>> faces; ///< corners of each, one after another around it
    QVector<Edge> edges;         ///< of all faces, each once
};

/// Faces are plane within 1e-3 Angstrom: those of an octahedron are triangles, those of a cube
/// squares. Points in one plane have one face; fewer than three points, or more than mostPoints,
/// have no hull.
Hull hullOf(const QVector<Point> &points);

/// The direction of view, among a fine grid of them, in which points and origin (the ion) lie
/// farthest from each other in projection, and more points before the origin than behind it; the
/// points extend most to the right. Along z for more than mostPoints.
Rotation viewOf(const QVector<Point> &points);

Point rotated(const Rotation &rotation, const Point &point);

} // namespace polyhedron
