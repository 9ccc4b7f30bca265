#include "LanqorJuddOfelt.h"

#include "core/physicalConstants_p.h"
#include "fitting/juddOfelt_p.h"
#include "input/juddOfeltBands_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QMap>

#include <algorithm>
#include <cmath>

using LanqorSpectroscopicTermUtil::textOfLevel;
using Quantity = JuddOfeltBand::Quantity;

namespace {

constexpr double allLevels = -1.0;
constexpr int unknowns = 3;
constexpr int groundNumber = 1;
constexpr double unit = lanqor::omegaUnitCm2;

/// A barycentre may be so far from the calculated energy of its level: hosts shift levels, and the
/// parameters are those of the aqueous ions.
double tolerance(double energy)
{
    constexpr double share = 0.25;
    constexpr double least = 600.0; // cm^-1
    return std::max(least, share * energy);
}

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

class LanqorJuddOfeltPrivate
{
public:
    using Band = JuddOfeltResults::Band;

    explicit LanqorJuddOfeltPrivate(const FreeIonParameters &ion)
        : levels(nullptr, ion.electrons)
    {}

    // Each returns an empty text, or why it failed.
    QString analyse();
    QString readBand(const JuddOfeltBand &given, Band &band);
    QString findPlace(const JuddOfeltBand &given, double wavenumber, QVector<int> &numbers);
    QString measure(const JuddOfeltBand &given, Band &band) const;
    QString fit();
    QString addEmissions();
    QString addEmission(int number);

    QString atLine(const JuddOfeltBand &band, const QString &text) const;
    QString levelsOfJ(const QString &name) const;
    QString nameOfIon() const;
    void addRms();

    LanqorEnergyLevels levels;
    FreeIonLevelsResults ion;
    QString levelsError;
    QString fileName;
    QVector<JuddOfeltBand> given;
    bool inAir = false;
    double concentration = 0.0; // mol/l
    double path = 0.0;          // cm
    RefractiveIndexModel refractiveIndex;
    JuddOfeltWeighting weighting = JuddOfeltWeighting::EqualStrength;
    bool isMagneticTakenOff = true;
    QStringList emitting;
    QVector<LanqorJuddOfelt::Lifetime> lifetimes;
    QMap<int, int> lineOfLevel; // by number of a level: the line of its band
    JuddOfeltResults results;   // of the calculation that runs
    JuddOfeltResults kept;
};

LanqorJuddOfelt::LanqorJuddOfelt(QObject *parent, const FreeIonParameters &ion)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorJuddOfeltPrivate>(ion))
{
    d->levels.setParameters(ion);
    if (ion.electrons < 2 || ion.electrons > 12)
        d->levelsError = tr("An ion of one 4f electron or hole has one transition: Omega(2), (4) "
                            "and (6) are not to be had from it.");
    else if (!d->levels.calcEnergyLevels(allLevels))
        d->levelsError = d->levels.getLastError();
    setLastError(d->levelsError);
    d->ion = d->levels.getResults();
}

LanqorJuddOfelt::~LanqorJuddOfelt() = default;

bool LanqorJuddOfelt::readBands(const QString &fileName)
{
    const JuddOfeltBandTable table = readJuddOfeltBands(fileName);
    if (!table.error.isEmpty())
        return failWith(table.error);
    d->given = table.bands;
    d->fileName = fileName;
    return true;
}

void LanqorJuddOfelt::setBands(const QVector<JuddOfeltBand> &bands)
{
    d->given = bands;
    d->fileName.clear();
}

void LanqorJuddOfelt::setWavelengthsInAir(const bool &inAir)
{
    d->inAir = inAir;
}

void LanqorJuddOfelt::setSample(const double &concentration, const double &path)
{
    d->concentration = concentration;
    d->path = path;
}

void LanqorJuddOfelt::setRefractiveIndex(const RefractiveIndexModel &model)
{
    d->refractiveIndex = model;
}

bool LanqorJuddOfelt::readRefractiveIndex(const QString &fileName, RefractiveIndexModel &model,
                                          QString &error)
{
    RefractiveIndexModel table;
    table.kind = RefractiveIndexModel::Kind::Table;
    table.coefficients.clear();
    error = readRefractiveIndices(fileName, table.wavelengths, table.indices);
    if (error.isEmpty())
        model = table;
    return error.isEmpty();
}

void LanqorJuddOfelt::setWeighting(const JuddOfeltWeighting &weighting)
{
    d->weighting = weighting;
}

void LanqorJuddOfelt::setMagneticPartTakenOff(const bool &isTakenOff)
{
    d->isMagneticTakenOff = isTakenOff;
}

void LanqorJuddOfelt::setEmittingLevels(const QStringList &levels)
{
    d->emitting = levels;
}

void LanqorJuddOfelt::setLifetimes(const QVector<Lifetime> &lifetimes)
{
    d->lifetimes = lifetimes;
}

bool LanqorJuddOfelt::calcIntensities()
{
    const QString error = d->levelsError.isEmpty() ? d->analyse() : d->levelsError;
    if (!error.isEmpty())
        return failWith(error);
    d->kept = d->results;
    return true;
}

JuddOfeltResults LanqorJuddOfelt::getResults() const
{
    return d->kept;
}

double LanqorJuddOfelt::calcElectricRate(const double &wavenumber, const double &n, const double &J,
                                         const double &S)
{
    return juddOfelt::electricRate(wavenumber, n, J, S);
}

double LanqorJuddOfelt::calcMagneticRate(const double &wavenumber, const double &n, const double &J,
                                         const double &square)
{
    return juddOfelt::magneticRate(wavenumber, n, J, square);
}

double LanqorJuddOfelt::calcElectricStrength(const double &wavenumber, const double &n,
                                             const double &J, const double &S)
{
    return juddOfelt::strengthFactor(wavenumber, n, J) * S;
}

double LanqorJuddOfelt::calcMagneticStrength(const double &wavenumber, const double &n,
                                             const double &J, const double &square)
{
    return juddOfelt::magneticOscillatorStrength(wavenumber, n, J, square);
}

double LanqorJuddOfelt::calcRefractiveIndex(const RefractiveIndexModel &model,
                                            const double &wavenumber)
{
    return juddOfelt::refractiveIndex(model, wavenumber);
}

QString LanqorJuddOfeltPrivate::analyse()
{
    results = JuddOfeltResults();
    results.ion = ion.parameters;
    results.ground = textOfLevel(ion.levels.first().label);
    results.groundJ = ion.levels.first().J;
    results.refractiveIndex = refractiveIndex;
    results.weighting = weighting;
    results.isMagneticTakenOff = isMagneticTakenOff;
    results.isInAir = inAir;
    results.fileName = fileName;
    lineOfLevel.clear();
    for (const JuddOfeltBand &own : qAsConst(given)) {
        Band band;
        const QString fault = readBand(own, band);
        if (!fault.isEmpty())
            return atLine(own, fault);
        results.bands.append(band);
    }
    if (given.size() < unknowns)
        return LanqorJuddOfelt::tr("%1%2 bands are fewer than the unknowns, Omega(2), (4) and (6).")
            .arg(fileName.isEmpty() ? QString() : fileName + QStringLiteral(": "),
                 QString::number(given.size()));
    QString error = fit();
    if (error.isEmpty())
        error = addEmissions();
    if (results.ion.electrons == 2)
        results.warnings.append(
            LanqorJuddOfelt::tr("Bands of Pr(III) near its 5d levels follow these formulas badly; "
                                "modified treatments are not built."));
    return error;
}

/// "bands.csv, line 4: ..."; without a file the level in place of the line.
QString LanqorJuddOfeltPrivate::atLine(const JuddOfeltBand &band, const QString &text) const
{
    if (band.line > 0)
        return LanqorJuddOfelt::tr("%1, line %2: %3")
            .arg(fileName, QString::number(band.line), text);
    return QStringLiteral("%1: %2").arg(band.level, text);
}

/// The names of the levels whose J a name tells, for a message.
QString LanqorJuddOfeltPrivate::levelsOfJ(const QString &name) const
{
    double J = 0.0;
    QStringList names;
    const int letter = name.indexOf(QLatin1Char(')')) >= 0 ? name.indexOf(QLatin1Char(')')) : 1;
    if (LanqorSpectroscopicTermUtil::parseJ(name.mid(letter + 1), J))
        for (const FreeIonLevelsResults::Level &level : ion.levels)
            if (level.J == J && names.size() < 6)
                names.append(
                    LanqorJuddOfelt::tr("%1 at %2")
                        .arg(textOfLevel(level.label), QString::number(level.energy, 'f', 0)));
    return names.join(QStringLiteral(", "));
}

QString LanqorJuddOfeltPrivate::nameOfIon() const
{
    return ion.parameters.symbol.isEmpty() ? QStringLiteral("4f^%1").arg(ion.parameters.electrons)
                                           : ion.parameters.symbol + QStringLiteral("(III)");
}

/// The levels that a band names: of those that a name fits the nearest to the barycentre. None when
/// one of them does not exist.
QString LanqorJuddOfeltPrivate::findPlace(const JuddOfeltBand &own, double wavenumber,
                                          QVector<int> &numbers)
{
    double nearest = std::numeric_limits<double>::infinity();
    double nearestEnergy = 0.0;
    for (const QString &part : own.level.split(QLatin1Char('+'))) {
        const QString name = part.trimmed();
        const QVector<int> candidates = levels.findLevels(name);
        int found = 0;
        double distance = std::numeric_limits<double>::infinity();
        for (const int candidate : candidates) {
            const double away = std::abs(ion.levels.at(candidate - 1).energy - wavenumber);
            if (candidate != groundNumber && away < distance) {
                distance = away;
                found = candidate;
            }
        }
        if (found == 0) {
            const QString others = levelsOfJ(name);
            numbers.clear();
            return LanqorJuddOfelt::tr("%1 has no excited level %2%3")
                .arg(nameOfIon(), name,
                     others.isEmpty()
                         ? LanqorJuddOfelt::tr("; names are as 4I13/2, several joined by +")
                         : LanqorJuddOfelt::tr("; of its J there are %1 cm^-1").arg(others));
        }
        numbers.append(found);
        if (distance < nearest) {
            nearest = distance;
            nearestEnergy = ion.levels.at(found - 1).energy;
        }
    }
    if (nearest > tolerance(nearestEnergy)) {
        const double turned = lanqor::nmPerCm / own.position;
        const bool isTurned = std::abs(turned - nearestEnergy) <= tolerance(nearestEnergy) ||
                              (own.isWavelength &&
                               std::abs(own.position - nearestEnergy) <= tolerance(nearestEnergy));
        QString text = LanqorJuddOfelt::tr("%1 cm^-1 is far from %2, calculated at %3 cm^-1")
                           .arg(number(wavenumber), own.level, number(nearestEnergy));
        if (isTurned)
            text += own.isWavelength
                        ? LanqorJuddOfelt::tr("; a wavenumber? Then name the column "
                                              "wavenumber_cm-1")
                        : LanqorJuddOfelt::tr("; a wavelength in nm? Then name the column "
                                              "wavelength_nm");
        return text;
    }
    return QString();
}

QString LanqorJuddOfeltPrivate::readBand(const JuddOfeltBand &own, Band &band)
{
    if (!(own.position > 0.0) || !std::isfinite(own.position))
        return LanqorJuddOfelt::tr("the barycentre %1 is not positive").arg(number(own.position));
    band.line = own.line;
    band.level = own.level;
    band.wavenumber = own.position;
    if (own.isWavelength)
        band.wavenumber =
            inAir ? juddOfelt::wavenumberInVacuum(own.position) : lanqor::nmPerCm / own.position;

    QVector<int> numbers;
    const bool hasSquares = !std::isnan(own.U2) && !std::isnan(own.U4) && !std::isnan(own.U6);
    const QString fault = findPlace(own, band.wavenumber, numbers);
    if (!fault.isEmpty() && (!hasSquares || !numbers.isEmpty()))
        return fault;
    if (!fault.isEmpty()) {
        results.warnings.append(atLine(
            own, LanqorJuddOfelt::tr("%1; its squares are those of the file, a magnetic dipole "
                                     "part is not known")
                     .arg(fault)));
    }
    double magneticSquare = 0.0;
    for (const int level : qAsConst(numbers)) {
        if (lineOfLevel.contains(level)) {
            const QString name = textOfLevel(ion.levels.at(level - 1).label);
            return lineOfLevel.value(level) > 0 && lineOfLevel.value(level) != own.line
                       ? LanqorJuddOfelt::tr("the level %1 stands in line %2 already")
                             .arg(name, QString::number(lineOfLevel.value(level)))
                       : LanqorJuddOfelt::tr("the level %1 is given twice").arg(name);
        }
        lineOfLevel.insert(level, own.line);
        const ReducedSquares squares = levels.getReducedSquares(groundNumber, level);
        band.U[0] += squares.U2;
        band.U[1] += squares.U4;
        band.U[2] += squares.U6;
        magneticSquare += squares.magnetic;
    }
    if (hasSquares) {
        band.U[0] = own.U2;
        band.U[1] = own.U4;
        band.U[2] = own.U6;
        if (!(own.U2 >= 0.0 && own.U4 >= 0.0 && own.U6 >= 0.0))
            return LanqorJuddOfelt::tr("a squared element is negative");
    }
    band.n = std::isnan(own.refractiveIndex)
                 ? juddOfelt::refractiveIndex(refractiveIndex, band.wavenumber)
                 : own.refractiveIndex;
    if (!(band.n >= 1.0) || !std::isfinite(band.n))
        return LanqorJuddOfelt::tr("the refractive index at %1 cm^-1 is %2; check its coefficients")
            .arg(number(band.wavenumber), number(band.n));
    if (!std::isnan(own.magneticStrength))
        band.magneticF = own.magneticStrength;
    else if (isMagneticTakenOff)
        band.magneticF = juddOfelt::magneticOscillatorStrength(band.wavenumber, band.n,
                                                               results.groundJ, magneticSquare);
    return measure(own, band);
}

/// Oscillator strength and line strength of a band from what was measured.
QString LanqorJuddOfeltPrivate::measure(const JuddOfeltBand &own, Band &band) const
{
    if (!(own.value >= 0.0) || !(own.error >= 0.0) || !std::isfinite(own.value))
        return LanqorJuddOfelt::tr("the strength %1 is negative")
            .arg(number(own.value < 0.0 ? own.value : own.error));
    // f of the value.
    double factor = 1.0;
    const double perStrength =
        juddOfelt::strengthFactor(band.wavenumber, band.n, results.groundJ); // f by S in cm^2
    switch (own.quantity) {
    case Quantity::OscillatorStrength:
        break;
    case Quantity::LineStrength:
        factor = perStrength;
        break;
    case Quantity::CrossSectionOverWavelength:
        // d sigma = 1e7/lambda^2 d lambda, in nm: cm^-1 by nm
        factor = juddOfelt::oscillatorByCrossSection() * band.wavenumber * band.wavenumber /
                 lanqor::nmPerCm;
        break;
    case Quantity::CrossSectionOverWavenumber:
        factor = juddOfelt::oscillatorByCrossSection();
        break;
    case Quantity::Absorbance:
        if (!(concentration > 0.0) || !(path > 0.0))
            return LanqorJuddOfelt::tr("an absorbance needs the concentration (mol/l) and the "
                                       "path (cm)");
        factor = juddOfelt::oscillatorByAbsorption() / (concentration * path);
        break;
    }
    // S as such is electric; its f is shown with the magnetic part all the same.
    const double electricF =
        factor * own.value - (own.quantity == Quantity::LineStrength ? 0.0 : band.magneticF);
    band.measuredF = electricF + band.magneticF;
    band.measuredS = electricF / perStrength / unit;
    band.errorS = factor * own.error / perStrength / unit;
    if (weighting == JuddOfeltWeighting::Error && !(band.errorS > 0.0))
        return LanqorJuddOfelt::tr("weights by the error need the error of every band");
    if (weighting == JuddOfeltWeighting::Relative && !(band.measuredS > 0.0))
        return LanqorJuddOfelt::tr("relative weights need a positive electric dipole strength");
    // Most of what would be far off is a wrong unit.
    constexpr double largestF = 1e-2;
    if (band.measuredF > largestF)
        return LanqorJuddOfelt::tr("an oscillator strength of %1 is no 4f band; check the unit")
            .arg(number(band.measuredF));
    return QString();
}

QString LanqorJuddOfeltPrivate::fit()
{
    const int count = results.bands.size();
    Eigen::MatrixXd U(count, unknowns);
    Eigen::VectorXd S(count);
    Eigen::VectorXd w(count);
    for (int i = 0; i < count; ++i) {
        const Band &band = results.bands.at(i);
        for (int k = 0; k < unknowns; ++k)
            U(i, k) = band.U[k];
        S(i) = band.measuredS;
        switch (weighting) {
        case JuddOfeltWeighting::EqualStrength:
            w(i) = 1.0;
            break;
        case JuddOfeltWeighting::EqualF:
            w(i) = juddOfelt::strengthFactor(band.wavenumber, band.n, results.groundJ) * unit;
            break;
        case JuddOfeltWeighting::Error:
            w(i) = 1.0 / band.errorS;
            break;
        case JuddOfeltWeighting::Relative:
            w(i) = 1.0 / band.measuredS;
            break;
        }
    }
    const juddOfelt::Solution open = juddOfelt::solve(U, S, w);
    if (!open.isDetermined)
        return LanqorJuddOfelt::tr("The squares of these bands leave an Omega open: they need "
                                   "bands of different U(2), U(4) and U(6).");
    results.isNonNegative = open.omega.minCoeff() < 0.0;
    const juddOfelt::Solution used =
        results.isNonNegative ? juddOfelt::solveNonNegative(U, S, w) : open;
    for (int k = 0; k < unknowns; ++k) {
        results.freeOmega[k] = open.omega(k);
        results.freeErrors[k] = std::sqrt(open.covariance(k, k));
        results.omega[k] = used.omega(k);
        results.standardErrors[k] = std::sqrt(used.covariance(k, k));
    }
    for (int k = 0; k < unknowns; ++k)
        for (int l = 0; l < unknowns; ++l) {
            const double product = results.standardErrors[k] * results.standardErrors[l];
            results.correlations[k][l] = product > 0.0 ? used.covariance(k, l) / product : 0.0;
        }
    if (results.isNonNegative)
        results.warnings.append(LanqorJuddOfelt::tr(
            "The free solution has a negative Omega; the one of Omega >= 0 is used."));
    addRms();
    return QString();
}

void LanqorJuddOfeltPrivate::addRms()
{
    double ofS = 0.0;
    double ofF = 0.0;
    double relative = 0.0;
    for (Band &band : results.bands) {
        band.calculatedS = 0.0;
        for (int k = 0; k < unknowns; ++k)
            band.calculatedS += results.omega[k] * band.U[k];
        const double perStrength =
            juddOfelt::strengthFactor(band.wavenumber, band.n, results.groundJ) * unit;
        band.calculatedF = band.calculatedS * perStrength + band.magneticF;
        const double difference = band.calculatedS - band.measuredS;
        ofS += difference * difference;
        ofF += difference * difference * perStrength * perStrength;
        relative += difference * difference / (band.measuredS * band.measuredS);
        if (band.measuredS < 0.0)
            results.warnings.append(
                LanqorJuddOfelt::tr("The magnetic dipole part of %1 exceeds what was measured.")
                    .arg(band.level));
    }
    const int freedom = results.bands.size() - unknowns;
    results.rmsS = freedom > 0 ? std::sqrt(ofS / freedom) : 0.0;
    results.rmsF = freedom > 0 ? std::sqrt(ofF / freedom) : 0.0;
    results.relativeRms = std::sqrt(relative / results.bands.size());
}

QString LanqorJuddOfeltPrivate::addEmissions()
{
    QVector<int> numbers;
    for (const QString &name : qAsConst(emitting)) {
        const int found = levels.findLevels(name).value(0);
        if (found <= groundNumber)
            return LanqorJuddOfelt::tr("%1 has no excited level %2.").arg(nameOfIon(), name);
        if (!numbers.contains(found))
            numbers.append(found);
    }
    if (emitting.isEmpty()) {
        double highest = 0.0;
        for (const Band &band : qAsConst(results.bands))
            highest = std::max(highest, band.wavenumber);
        for (const int level : lineOfLevel.keys())
            highest = std::max(highest, ion.levels.at(level - 1).energy);
        for (const FreeIonLevelsResults::Level &level : qAsConst(ion.levels))
            if (level.number > groundNumber && level.energy <= highest)
                numbers.append(level.number);
    }
    std::sort(numbers.begin(), numbers.end());
    for (const int level : qAsConst(numbers)) {
        const QString error = addEmission(level);
        if (!error.isEmpty())
            return error;
    }
    for (const LanqorJuddOfelt::Lifetime &measured : qAsConst(lifetimes)) {
        const int found = levels.findLevels(measured.level).value(0);
        const auto level =
            std::find_if(results.emissions.begin(), results.emissions.end(),
                         [found](const auto &emission) { return emission.number == found; });
        if (level == results.emissions.end())
            return LanqorJuddOfelt::tr("A lifetime is told of %1, which is none of the emitting "
                                       "levels.")
                .arg(measured.level);
        level->measuredLifetime = measured.milliseconds;
        level->quantumEfficiency = measured.milliseconds / level->lifetime;
        if (level->quantumEfficiency > 1.0)
            results.warnings.append(
                LanqorJuddOfelt::tr("The measured lifetime of %1 is longer than the radiative one: "
                                    "the quantum efficiency exceeds 1.")
                    .arg(measured.level));
    }
    return QString();
}

QString LanqorJuddOfeltPrivate::addEmission(int from)
{
    constexpr double msPerSecond = 1000.0;
    const FreeIonLevelsResults::Level &upper = ion.levels.at(from - 1);
    JuddOfeltResults::Emission emission;
    emission.number = from;
    emission.level = textOfLevel(upper.label);
    emission.J = upper.J;
    emission.energy = upper.energy;
    for (int to = from - 1; to >= groundNumber; --to) {
        const FreeIonLevelsResults::Level &lower = ion.levels.at(to - 1);
        const ReducedSquares squares = levels.getReducedSquares(from, to);
        JuddOfeltResults::Transition transition;
        transition.number = to;
        transition.level = textOfLevel(lower.label);
        transition.wavenumber = upper.energy - lower.energy;
        transition.n = juddOfelt::refractiveIndex(refractiveIndex, transition.wavenumber);
        if (!(transition.n >= 1.0) || !std::isfinite(transition.n))
            return LanqorJuddOfelt::tr("The refractive index at %1 cm^-1 is %2; check its "
                                       "coefficients.")
                .arg(number(transition.wavenumber), number(transition.n));
        transition.U[0] = squares.U2;
        transition.U[1] = squares.U4;
        transition.U[2] = squares.U6;
        transition.magneticSquare = squares.magnetic;
        double S = 0.0;
        for (int k = 0; k < unknowns; ++k)
            S += results.omega[k] * unit * transition.U[k];
        transition.electricRate =
            juddOfelt::electricRate(transition.wavenumber, transition.n, upper.J, S);
        transition.magneticRate =
            juddOfelt::magneticRate(transition.wavenumber, transition.n, upper.J, squares.magnetic);
        emission.rate += transition.electricRate + transition.magneticRate;
        emission.transitions.append(transition);
    }
    for (JuddOfeltResults::Transition &transition : emission.transitions)
        if (emission.rate > 0.0)
            transition.branchingRatio =
                (transition.electricRate + transition.magneticRate) / emission.rate;
    emission.lifetime =
        emission.rate > 0.0 ? msPerSecond / emission.rate : std::numeric_limits<double>::infinity();
    results.emissions.append(emission);
    return QString();
}
