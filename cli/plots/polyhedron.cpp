#include "plots/polyhedron.h"

#include <QMap>
#include <QPair>

#include <algorithm>
#include <cmath>
#include <limits>

namespace polyhedron {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double planeTolerance = 1e-3; // Angstrom

Point minus(const Point &a, const Point &b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double dot(const Point &a, const Point &b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Point cross(const Point &a, const Point &b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// False for a vector without a direction.
bool normalize(Point &a)
{
    const double length = std::sqrt(dot(a, a));
    if (!(length > 1e-6))
        return false;
    for (double &component : a)
        component /= length;
    return true;
}

struct Face
{
    QVector<int> corners;
    Point normal{}; ///< outwards
};

/// The corners of the plane figure that @p members make: their convex hull within the plane, in
/// order around it (gift wrapping); points on a side are no corners.
QVector<int> cornersOf(const QVector<Point> &points, const QVector<int> &members,
                       const Point &normal)
{
    Point right = minus(points.at(members.at(1)), points.at(members.at(0)));
    normalize(right);
    const Point up = cross(normal, right);
    const auto isBefore = [&](int a, int b) {
        const double xa = dot(points.at(a), right);
        const double xb = dot(points.at(b), right);
        return xa != xb ? xa < xb : dot(points.at(a), up) < dot(points.at(b), up);
    };
    const int start = *std::min_element(members.begin(), members.end(), isBefore);
    QVector<int> corners;
    int current = start;
    do {
        corners.append(current);
        int next = current == members.first() ? members.last() : members.first();
        for (const int candidate : members) {
            if (candidate == current || candidate == next)
                continue;
            const Point a = minus(points.at(next), points.at(current));
            const Point b = minus(points.at(candidate), points.at(current));
            const double turn = dot(cross(a, b), normal);
            const bool isFarther = std::abs(turn) <= planeTolerance && dot(b, b) > dot(a, a);
            if (turn < -planeTolerance || isFarther)
                next = candidate;
        }
        current = next;
    } while (current != start && corners.size() < members.size());
    return corners;
}

/// The face in the plane of three points if all others lie on one side of it.
Face faceOf(const QVector<Point> &points, int i, int j, int k)
{
    Face face;
    face.normal = cross(minus(points.at(j), points.at(i)), minus(points.at(k), points.at(i)));
    if (!normalize(face.normal))
        return {};
    bool isAbove = false;
    bool isBelow = false;
    QVector<int> members;
    for (int m = 0; m < points.size(); ++m) {
        const double height = dot(minus(points.at(m), points.at(i)), face.normal);
        isAbove = isAbove || height > planeTolerance;
        isBelow = isBelow || height < -planeTolerance;
        if (std::abs(height) <= planeTolerance)
            members.append(m);
    }
    // The first three of its points find a face; so each is found once.
    if ((isAbove && isBelow) || members.mid(0, 2) != QVector<int>{i, j})
        return {};
    if (isAbove)
        for (double &component : face.normal)
            component = -component;
    face.corners = cornersOf(points, members, face.normal);
    return face;
}

QVector<Face> facesOf(const QVector<Point> &points)
{
    QVector<Face> faces;
    const int count = points.size();
    for (int i = 0; i < count; ++i)
        for (int j = i + 1; j < count; ++j)
            for (int k = j + 1; k < count; ++k) {
                const Face face = faceOf(points, i, j, k);
                const auto isSame = [&face](const Face &other) {
                    return std::is_permutation(face.corners.begin(), face.corners.end(),
                                               other.corners.begin(), other.corners.end());
                };
                if (face.corners.size() > 2 && std::none_of(faces.begin(), faces.end(), isSame))
                    faces.append(face);
            }
    return faces;
}

/// How closely the points come, in the plane across @p direction, to each other, to the origin and
/// to the lines from there to the others.
double crowding(const QVector<Point> &points, const Point &direction)
{
    QVector<Point> flat;
    for (const Point &point : points) {
        const double along = dot(point, direction);
        flat.append(
            minus(point, {along * direction[0], along * direction[1], along * direction[2]}));
    }
    double sum = 0.0;
    for (int i = 0; i < flat.size(); ++i)
        for (int j = 0; j < flat.size(); ++j) {
            if (i == j)
                continue;
            const Point &line = flat.at(j);
            const double share =
                std::clamp(dot(flat.at(i), line) / std::max(dot(line, line), 1e-9), 0.0, 1.0);
            const Point gap =
                minus(flat.at(i), {share * line[0], share * line[1], share * line[2]});
            const double square = std::max(dot(gap, gap), 1e-4);
            sum += 1.0 / (square * square);
        }
    return sum;
}

/// Any right-handed frame that looks against @p direction.
Rotation frameOf(const Point &direction)
{
    const Point help = std::abs(direction[2]) < 0.9 ? Point{0.0, 0.0, 1.0} : Point{0.0, 1.0, 0.0};
    Point right = cross(help, direction);
    normalize(right);
    return {right, cross(direction, right), direction};
}

} // namespace

Point rotated(const Rotation &rotation, const Point &point)
{
    return {dot(rotation[0], point), dot(rotation[1], point), dot(rotation[2], point)};
}

Hull hullOf(const QVector<Point> &points)
{
    Hull hull;
    if (points.size() < 3 || points.size() > mostPoints)
        return hull;
    const QVector<Face> faces = facesOf(points);
    QMap<QPair<int, int>, QVector<int>> facesAtEdge;
    for (int f = 0; f < faces.size(); ++f) {
        const QVector<int> &corners = faces.at(f).corners;
        hull.faces.append(corners);
        for (int c = 0; c < corners.size(); ++c) {
            const int a = corners.at(c);
            const int b = corners.at((c + 1) % corners.size());
            facesAtEdge[{std::min(a, b), std::max(a, b)}].append(f);
        }
    }
    for (auto edge = facesAtEdge.cbegin(); edge != facesAtEdge.cend(); ++edge) {
        double fold = 180.0;
        if (edge->size() == 2)
            fold = std::acos(std::clamp(
                       dot(faces.at(edge->first()).normal, faces.at(edge->last()).normal), -1.0,
                       1.0)) *
                   180.0 / pi;
        hull.edges.append({edge.key().first, edge.key().second, fold});
    }
    return hull;
}

Rotation viewOf(const QVector<Point> &points)
{
    constexpr int directions = 3000; // of a half sphere; the other half shows the backs
    constexpr double equal = 1.0 + 1e-9;
    const double goldenAngle = pi * (3.0 - std::sqrt(5.0));
    Point best{0.0, 0.0, 1.0};
    double least = std::numeric_limits<double>::max();
    for (int i = 0; i < directions && points.size() <= mostPoints; ++i) {
        const double z = (i + 0.5) / directions;
        const double across = std::sqrt(1.0 - z * z);
        const Point direction{across * std::cos(i * goldenAngle),
                              across * std::sin(i * goldenAngle), z};
        const double crowd = crowding(points, direction);
        if (crowd * equal < least) {
            least = crowd;
            best = direction;
        }
    }
    double before = 0.0;
    for (const Point &point : points)
        before += dot(point, best);
    if (before < -1e-6) // beyond rounding
        best = {-best[0], -best[1], -best[2]};
    Rotation view = frameOf(best);
    // The long axis of what is seen becomes the horizontal one.
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (const Point &point : points) {
        const Point seen = rotated(view, point);
        xx += seen[0] * seen[0];
        xy += seen[0] * seen[1];
        yy += seen[1] * seen[1];
    }
    const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
    const Point right = view[0];
    const Point up = view[1];
    for (std::size_t i = 0; i < 3; ++i) {
        view[0][i] = std::cos(angle) * right[i] + std::sin(angle) * up[i];
        view[1][i] = std::cos(angle) * up[i] - std::sin(angle) * right[i];
    }
    return view;
}

} // namespace polyhedron
