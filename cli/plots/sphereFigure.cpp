#include "plots/figureStyle.h"
#include "plots/figures.h"
#include "plots/polyhedron.h"
#include "text.h"

#include <QFileInfo>
#include <QLineF>
#include <QMap>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

using polyhedron::Point;

constexpr double margin = 190.0;    // room for a label
constexpr double mostScale = 190.0; // per Angstrom
constexpr double ionRadius = 62.0;
constexpr double atomRadius = 50.0;
constexpr double labelGap = 8.0;
const QColor ionColor(0x30, 0x30, 0x30);

QColor colorOf(const QString &element)
{
    static const QMap<QString, QColor> colors = {
        {QStringLiteral("O"), color::red},    {QStringLiteral("N"), color::blue},
        {QStringLiteral("S"), color::yellow}, {QStringLiteral("Cl"), color::green},
        {QStringLiteral("P"), color::orange}, {QStringLiteral("F"), color::sky},
        {QStringLiteral("C"), color::black},  {QStringLiteral("Br"), color::purple},
        {QStringLiteral("I"), color::purple},
    };
    return colors.value(element, color::grey);
}

struct Ball
{
    QString label; ///< "O2"; the symbol of the ion
    QString element;
    QString distance; ///< "2.379 Å"; empty for the ion
    QPointF place;
    double depth = 0.0; ///< 0 behind to 1 in front
    double radius = atomRadius;
};

/// A line between two places; it stands before what is behind its middle.
struct Stick
{
    enum class Kind {
        Edge,
        SoftEdge, ///< of two faces that are nearly one
        Bond
    };
    QLineF line; ///< from the rim of one ball to that of the other
    double depth = 0.0;
    Kind kind = Kind::Edge;
};

/// A bond of a ligand, fading with the distance from the ion.
struct FaintBond
{
    QLineF line;
    double strength = 1.0; ///< 0 for invisible
};

struct Scene
{
    QVector<Ball> balls; ///< the ion, then the coordinated atoms
    QVector<Stick> sticks;
    QVector<FaintBond> backbone;
    QSizeF size;
};

Point cartesian(const CoordSPH &position)
{
    constexpr double radiansPerDegree = 3.14159265358979323846 / 180.0;
    const double theta = position.theta * radiansPerDegree;
    const double phi = position.phi * radiansPerDegree;
    return {position.r * std::sin(theta) * std::cos(phi),
            position.r * std::sin(theta) * std::sin(phi), position.r * std::cos(theta)};
}

double length(const Point &point)
{
    return std::sqrt(point[0] * point[0] + point[1] * point[1] + point[2] * point[2]);
}

/// Places of all atoms about the ion, Angstrom.
QVector<Point> placesAboutIon(const QVector<Coord> &atoms)
{
    QVector<Point> places;
    for (const Coord &atom : atoms)
        places.append(
            {atom.x - atoms.first().x, atom.y - atoms.first().y, atom.z - atoms.first().z});
    return places;
}

struct Bond
{
    int first;
    int second;
};

/// Bonds between atoms other than hydrogen and the ion, by their lengths.
QVector<Bond> bondsNear(const QVector<Coord> &atoms, const QVector<Point> &places, double reach)
{
    constexpr double lightBond = 1.85; // Angstrom, of two atoms of the second period
    constexpr double heavyBond = 2.25;
    static const QStringList light = {QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("N"),
                                      QStringLiteral("O"), QStringLiteral("F")};
    QVector<int> near;
    QVector<Bond> bonds;
    for (int i = 1; i < atoms.size(); ++i) {
        if (atoms.at(i).label == QLatin1String("H") || length(places.at(i)) > reach)
            continue;
        for (const int j : qAsConst(near)) {
            const Point &a = places.at(i);
            const Point &b = places.at(j);
            const bool areLight =
                light.contains(atoms.at(i).label) && light.contains(atoms.at(j).label);
            if (length({a[0] - b[0], a[1] - b[1], a[2] - b[2]}) <
                (areLight ? lightBond : heavyBond))
                bonds.append({j, i});
        }
        near.append(i);
    }
    return bonds;
}

/// The bonds that hang on the coordinated atoms, fading away from the ion.
QVector<FaintBond> backboneOf(const SphereFigure &figure,
                              const std::function<QPointF(const Point &)> &project)
{
    constexpr double fadesFrom = 3.2; // Angstrom from the ion
    constexpr double fadesTo = 5.6;
    const QVector<Point> places = placesAboutIon(figure.atoms);
    const QVector<Bond> bonds = bondsNear(figure.atoms, places, fadesTo);
    QVector<bool> isHeld(places.size(), false);
    for (const SphereAtom &atom : figure.sphere.atoms)
        if (atom.atom <= isHeld.size())
            isHeld[atom.atom - 1] = true;
    for (bool isGrowing = true; isGrowing;) {
        isGrowing = false;
        for (const Bond &bond : bonds)
            if (isHeld.at(bond.first) != isHeld.at(bond.second)) {
                isHeld[bond.first] = isHeld[bond.second] = true;
                isGrowing = true;
            }
    }
    QVector<FaintBond> shown;
    for (const Bond &bond : bonds) {
        const Point &a = places.at(bond.first);
        const Point &b = places.at(bond.second);
        const double distance = 0.5 * (length(a) + length(b));
        if (isHeld.at(bond.first))
            shown.append({QLineF(project(a), project(b)),
                          std::min(1.0, (fadesTo - distance) / (fadesTo - fadesFrom))});
    }
    return shown;
}

Scene sceneOf(const SphereFigure &figure)
{
    QVector<Point> donors;
    for (const SphereAtom &atom : figure.sphere.atoms)
        donors.append(cartesian(atom.position));
    const polyhedron::Rotation view = polyhedron::viewOf(donors);

    QVector<Point> seen;
    for (const Point &donor : qAsConst(donors))
        seen.append(polyhedron::rotated(view, donor));
    QRectF frame(0.0, 0.0, 1e-6, 1e-6);
    double behind = 0.0;
    double before = 1e-6;
    for (const Point &point : qAsConst(seen)) {
        frame = frame.united(QRectF(point[0], -point[1], 1e-6, 1e-6));
        behind = std::min(behind, point[2]);
        before = std::max(before, point[2]);
    }
    const double scale = std::min(mostScale, (figureWidth - 2.0 * margin) / frame.width());
    Scene scene;
    scene.size = QSizeF(figureWidth, frame.height() * scale + 2.0 * margin - 40.0);
    const QPointF middle(0.5 * scene.size.width(), 0.5 * scene.size.height());
    const auto place = [&](const Point &point) {
        return middle + scale * (QPointF(point[0], -point[1]) - frame.center());
    };
    const auto depth = [&](const Point &point) { return (point[2] - behind) / (before - behind); };

    const Point origin{};
    scene.balls.append(
        {figure.sphere.ion, figure.sphere.ion, QString(), place(origin), depth(origin), ionRadius});
    for (int i = 0; i < seen.size(); ++i) {
        const SphereAtom &atom = figure.sphere.atoms.at(i);
        scene.balls.append({atom.position.label + QString::number(atom.atom), atom.position.label,
                            QString::number(atom.position.r, 'f', 3) + QString::fromUtf8("\u00a0Å"),
                            place(seen.at(i)), depth(seen.at(i)), atomRadius});
    }
    const auto addStick = [&scene](int first, int second, Stick::Kind kind) {
        const Ball &a = scene.balls.at(first);
        const Ball &b = scene.balls.at(second);
        const QLineF line(a.place, b.place);
        if (line.length() > a.radius + b.radius)
            scene.sticks.append({QLineF(line.pointAt(a.radius / line.length()),
                                        line.pointAt(1.0 - b.radius / line.length())),
                                 0.5 * (a.depth + b.depth), kind});
    };
    for (int i = 1; i < scene.balls.size(); ++i)
        addStick(0, i, Stick::Kind::Bond);
    const polyhedron::Hull hull = polyhedron::hullOf(donors);
    constexpr double softFold = 20.0; // degrees
    for (const polyhedron::Edge &edge : hull.edges)
        addStick(edge.first + 1, edge.second + 1,
                 edge.fold < softFold ? Stick::Kind::SoftEdge : Stick::Kind::Edge);
    if (figure.backbone == SphereFigure::Backbone::Faint)
        scene.backbone = backboneOf(
            figure, [&](const Point &point) { return place(polyhedron::rotated(view, point)); });
    return scene;
}

double overlapOf(const QRectF &a, const QRectF &b)
{
    const QRectF common = a.intersected(b);
    return common.width() * common.height();
}

QRectF boxOf(const Ball &ball)
{
    return {ball.place.x() - ball.radius, ball.place.y() - ball.radius, 2.0 * ball.radius,
            2.0 * ball.radius};
}

/// From a box to the rim of a ball; negative where they overlap.
double gapBetween(const QRectF &box, const Ball &ball)
{
    const double dx = std::clamp(ball.place.x(), box.left(), box.right()) - ball.place.x();
    const double dy = std::clamp(ball.place.y(), box.top(), box.bottom()) - ball.place.y();
    return std::hypot(dx, dy) - ball.radius;
}

/// Length of the part of a line within a box, by samples.
double lengthWithin(const QRectF &box, const Stick &stick)
{
    constexpr int samples = 24;
    const QLineF &line = stick.line;
    int inside = 0;
    for (int i = 0; i < samples; ++i)
        inside += box.contains(line.pointAt((i + 0.5) / samples)) ? 1 : 0;
    return line.length() * inside / samples;
}

/// Places for the distances: beside their atoms, away from the ion if there is room, over no atom
/// and no other label. Index 0, the ion, has none, and none has one in a crowd that is no
/// coordination sphere.
QVector<QRectF> placeLabels(const Scene &scene)
{
    constexpr int directions = 24;
    constexpr int rounds = 4;
    constexpr double pi = 3.14159265358979323846;
    const QRectF page(QPointF(4.0, 4.0), scene.size - QSizeF(8.0, 8.0));
    QVector<QRectF> boxes(scene.balls.size());
    if (scene.balls.size() > polyhedron::mostPoints)
        return boxes;
    const auto costOf = [&](int index, const QRectF &box) {
        constexpr double ofAtom = 3.0;
        constexpr double ofLabel = 4.0;
        constexpr double ofBond = 6.0;
        constexpr double ofEdge = 4.0;
        constexpr double outside = 1e7;
        constexpr double ofDoubt = 12.0; // whose label it is
        constexpr double clearlyNearer = 22.0;
        double cost = page.contains(box) ? 0.0 : outside;
        for (int other = 0; other < boxes.size(); ++other) {
            cost += ofAtom * overlapOf(box, boxOf(scene.balls.at(other)));
            if (other == index)
                continue;
            const double nearer =
                gapBetween(box, scene.balls.at(other)) - gapBetween(box, scene.balls.at(index));
            if (other > 0)
                cost += ofDoubt * std::max(0.0, clearlyNearer - nearer);
            cost += ofLabel * overlapOf(box.adjusted(-4.0, -2.0, 4.0, 2.0), boxes.at(other));
        }
        for (const Stick &stick : scene.sticks)
            cost += (stick.kind == Stick::Kind::Bond ? ofBond : ofEdge) * lengthWithin(box, stick);
        return cost;
    };
    for (int round = 0; round < rounds; ++round)
        for (int i = 1; i < boxes.size(); ++i) {
            const Ball &ball = scene.balls.at(i);
            const QPointF away = ball.place - scene.balls.first().place;
            const double outwards = std::atan2(away.y(), away.x());
            double least = 0.0;
            QRectF best;
            for (int step = 0; step < directions; ++step)
                for (const double reach : {0.0, 25.0, 50.0, 85.0}) {
                    const double turn = 2.0 * pi * step / directions;
                    const QPointF along(std::cos(outwards + turn), std::sin(outwards + turn));
                    QRectF box = labelBox(QPointF(), ball.distance, smallTextSize, 0.5, 0.5);
                    // As near as the box lets it in this direction.
                    const double half =
                        std::min(0.5 * box.width() / std::max(std::abs(along.x()), 1e-6),
                                 0.5 * box.height() / std::max(std::abs(along.y()), 1e-6));
                    box.translate(ball.place + (ball.radius + labelGap + half + reach) * along);
                    const double cost =
                        costOf(i, box) + 2.0 * reach + 60.0 * (1.0 - std::cos(turn));
                    if (best.isNull() || cost < least) {
                        least = cost;
                        best = box;
                    }
                }
            boxes[i] = best;
        }
    return boxes;
}

void paintStick(QPainter &painter, const Stick &stick)
{
    const bool isBond = stick.kind == Stick::Kind::Bond;
    const bool isSoft = stick.kind == Stick::Kind::SoftEdge;
    const double width = isBond ? 13.0 : isSoft ? 2.5 : 4.0 + 3.0 * stick.depth;
    const QColor ink = isBond
                           ? blend(QColor(0xd8, 0xd8, 0xd8), QColor(0x9a, 0x9a, 0x9a), stick.depth)
                       : isSoft ? color::grey
                                : blend(color::faint, color::black, stick.depth);
    // A white rim parts it from what it crosses.
    QPen pen(QColor(Qt::white), width + 9.0);
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    const double length = stick.line.length();
    const double rim = std::min(16.0, 0.5 * length) / length;
    if (!isSoft)
        painter.drawLine(QLineF(stick.line.pointAt(rim), stick.line.pointAt(1.0 - rim)));
    pen.setColor(ink);
    pen.setWidthF(width);
    painter.setPen(pen);
    painter.drawLine(stick.line);
}

/// Atoms behind are paler; the letters on them tell the element.
QColor fillOf(const Ball &ball)
{
    const QColor full = colorOf(ball.element);
    return ball.distance.isEmpty() ? ionColor
                                   : blend(blend(full, Qt::white, 0.35), full, ball.depth);
}

void paintBall(QPainter &painter, const Ball &ball)
{
    const QColor fill = fillOf(ball);
    painter.setPen(QPen(QColor(Qt::white), 14.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(ball.place, ball.radius, ball.radius);
    painter.setPen(QPen(blend(fill, Qt::black, 0.5), 4.0));
    painter.setBrush(fill);
    painter.drawEllipse(ball.place, ball.radius, ball.radius);
    painter.setBrush(Qt::NoBrush);
}

void paintScene(QPainter &painter, const Scene &scene)
{
    for (const FaintBond &bond : scene.backbone) {
        QPen pen(blend(Qt::white, QColor(0xc2, 0xc8, 0xd0), bond.strength), 9.0);
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        painter.drawLine(bond.line);
    }
    // From behind to the front: lines and balls by their depths.
    QVector<QPair<double, std::function<void()>>> items;
    for (const Stick &stick : scene.sticks)
        items.append({stick.depth, [&painter, stick] { paintStick(painter, stick); }});
    for (const Ball &ball : scene.balls)
        items.append({ball.depth, [&painter, &ball] { paintBall(painter, ball); }});
    std::stable_sort(items.begin(), items.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &item : qAsConst(items))
        item.second();
    for (const Ball &ball : scene.balls)
        drawLabel(painter, ball.place, ball.label, smallTextSize, 0.5, 0.5,
                  readableOn(fillOf(ball)), true);
    const QVector<QRectF> labels = placeLabels(scene);
    for (int i = 1; i < labels.size(); ++i) {
        if (labels.at(i).isEmpty())
            continue;
        const Ball &ball = scene.balls.at(i);
        const QLineF leader(ball.place, labels.at(i).center());
        painter.setPen(QPen(color::black, 2.0));
        if (gapBetween(labels.at(i), ball) > 1.5 * labelGap)
            painter.drawLine(QLineF(leader.pointAt(ball.radius / leader.length()), leader.p2()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 220));
        painter.drawRect(labels.at(i).adjusted(-3.0, 3.0, 3.0, -3.0));
        painter.setBrush(Qt::NoBrush);
        drawLabel(painter, labels.at(i).center(), ball.distance, smallTextSize, 0.5, 0.5);
    }
}

} // namespace

Picture sphereFigure(const SphereFigure &figure)
{
    const Scene scene = sceneOf(figure);
    return {tr("%1: coordination sphere").arg(QFileInfo(figure.sphere.structureFile).fileName()),
            scene.size, [scene](QPainter &painter) { paintScene(painter, scene); }};
}

} // namespace plots
