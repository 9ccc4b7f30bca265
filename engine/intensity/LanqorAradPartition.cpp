#include "LanqorAradPartition.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/AradPartitionResults.h>
#include <LanqorEngine/LanqorInputData.h>

#include <Eigen/Core>

#include <algorithm>
#include <array>
#include <cmath>

using simpleOverlapModel::Complex;
using simpleOverlapModel::CoordinationSphere;

namespace {

constexpr std::array<int, 3> lambdas = {2, 4, 6};

/// Name and atom numbers of a group's description; no name when it holds a comment alone.
QStringList fieldsOf(const QString &description)
{
    QString text = description.section(QLatin1Char('#'), 0, 0).simplified();
    text.replace(QLatin1Char(','), QLatin1Char(' '));
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class LanqorAradPartitionPrivate
{
public:
    /// Takes the sphere of a geometry; the reason when it has none, empty on success.
    QString takeGeometry(const LanqorInputData *geometry);
    /// Copies g and alpha of atoms 2 to N+1.
    void takeChargeFactorAndAlpha(const double *g, const double *a);
    bool isCoordinated(int atom) const;
    double E(int lambda, int i, int j) const;
    double EL(int lambda, int a, int b) const;
    double AL(int lambda, int a, int b) const;

    int coordNumber = 0;
    double refractiveIndex = 1.5;
    QVector<double> chargeFactor; // by atom number
    QVector<double> alpha;        // by atom number, cm^3
    QVector<Ligand> ligands;
    QStringList labels; // by atom number, atom 1 at index 0
    std::unique_ptr<CoordinationSphere> sphere;

private:
    double K(int lambda, int t, int i) const;
    void calcPairTerms();

    /// E(lambda,i,j), cm^2, of lambda = 2, 4, 6 with atom 2 at index 0; empty before g and alpha
    /// are set.
    std::array<Eigen::MatrixXd, 3> pairTerms;
};

QString LanqorAradPartitionPrivate::takeGeometry(const LanqorInputData *geometry)
{
    if (!geometry)
        return LanqorAradPartition::tr("The partition of the radiative rate was given no "
                                       "geometry.");
    const QVector<CoordSPH> positions = geometry->getCoordSPH();
    if (positions.isEmpty() || positions.size() != geometry->getCoord().size())
        return LanqorAradPartition::tr("The partition of the radiative rate needs the spherical "
                                       "coordinates of all atoms.");
    if (positions.first().label != QLatin1String("Eu"))
        return positions.first().label + LanqorAradPartition::tr(" atoms[0] isn't Eu");
    QString error = simpleOverlapModel::sphereError(positions, coordNumber);
    if (!error.isEmpty())
        return error;
    sphere = std::make_unique<CoordinationSphere>(positions, coordNumber);
    for (const CoordSPH &position : positions)
        labels.append(position.label);
    return QString();
}

void LanqorAradPartitionPrivate::takeChargeFactorAndAlpha(const double *g, const double *a)
{
    chargeFactor.fill(0.0, coordNumber + 2);
    alpha.fill(0.0, coordNumber + 2);
    std::copy_n(g + 2, coordNumber, chargeFactor.begin() + 2);
    std::copy_n(a + 2, coordNumber, alpha.begin() + 2);
    calcPairTerms();
}

double LanqorAradPartitionPrivate::K(int lambda, int t, int i) const
{
    return sphere->K(lambda, t, i, chargeFactor.at(i), alpha.at(i));
}

/// B(lambda,t,p) is a sum over atoms, so |B|^2 is one over pairs: with the real and imaginary
/// parts of the atoms' terms as the rows of a matrix V, each row times
/// sqrt((2 lambda + 1) w(p)/(2t+1)), all E(lambda,i,j) are the matrix V^T V.
void LanqorAradPartitionPrivate::calcPairTerms()
{
    for (std::size_t n = 0; n < lambdas.size(); ++n) {
        const int lambda = lambdas[n];
        const int rows = 2 * (lambda + lambda + 2); // t = lambda - 1 and t = lambda + 1
        Eigen::MatrixXd terms(rows, coordNumber);
        int row = 0;
        for (int t = lambda - 1; t <= lambda + 1; t += 2) {
            for (int p = 0; p <= t; ++p, row += 2) {
                const double weight =
                    std::sqrt((2 * lambda + 1.0) * (p == 0 ? 1.0 : 2.0) / (2 * t + 1));
                for (int i = 2; i <= coordNumber + 1; ++i) {
                    const Complex term = weight * K(lambda, t, i) * sphere->GAMMA(t, p, i, 1.0);
                    terms(row, i - 2) = term.real();
                    terms(row + 1, i - 2) = term.imag();
                }
            }
        }
        pairTerms[n].noalias() = terms.transpose() * terms;
    }
}

bool LanqorAradPartitionPrivate::isCoordinated(int atom) const
{
    return atom >= 2 && atom <= coordNumber + 1;
}

double LanqorAradPartitionPrivate::E(int lambda, int i, int j) const
{
    const auto found = std::find(lambdas.begin(), lambdas.end(), lambda);
    if (found == lambdas.end() || !isCoordinated(i) || !isCoordinated(j))
        return 0.0;
    const Eigen::MatrixXd &terms = pairTerms[static_cast<std::size_t>(found - lambdas.begin())];
    return terms.size() == 0 ? 0.0 : terms(i - 2, j - 2);
}

double LanqorAradPartitionPrivate::EL(int lambda, int a, int b) const
{
    double sum = 0.0;
    for (const int i : ligands.value(a).atoms) {
        for (const int j : ligands.value(b).atoms)
            sum += E(lambda, i, j);
    }
    return sum;
}

double LanqorAradPartitionPrivate::AL(int lambda, int a, int b) const
{
    return radiativeRates::constArad(lambda, refractiveIndex) * EL(lambda, a, b);
}

LanqorAradPartition::LanqorAradPartition(QObject *parent, LanqorInputData *&geometry,
                                         const int &coordNumber, const double &refractiveIndex)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorAradPartitionPrivate>())
{
    d->coordNumber = coordNumber;
    d->refractiveIndex = refractiveIndex;
    const QString error = d->takeGeometry(geometry);
    if (!error.isEmpty())
        failWith(error);
}

LanqorAradPartition::~LanqorAradPartition() = default;

void LanqorAradPartition::setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas)
{
    if (d->sphere && chargeFactors && alphas)
        d->takeChargeFactorAndAlpha(chargeFactors, alphas);
}

bool LanqorAradPartition::setChargeFactorAndAlpha(const QVector<double> &chargeFactors,
                                                  const QVector<double> &alphas)
{
    const int entries = d->coordNumber + 2;
    if (!d->sphere || std::min(chargeFactors.size(), alphas.size()) < entries)
        return failWith(tr("The partition of the radiative rate needs a coordination sphere and, "
                           "as vectors of %1 entries by atom number, charge factors and "
                           "polarizabilities; there are %2 and %3 entries.")
                            .arg(QString::number(entries), QString::number(chargeFactors.size()),
                                 QString::number(alphas.size())));
    d->takeChargeFactorAndAlpha(chargeFactors.constData(), alphas.constData());
    return true;
}

bool LanqorAradPartition::setLigandsVector(const QString &text)
{
    return setLigandsVector(text.split(QLatin1Char('\n')));
}

bool LanqorAradPartition::setLigandsVector(const QStringList &descriptions)
{
    d->ligands.clear();
    QVector<Ligand> groups;
    QVector<int> taken;
    for (int line = 1; line <= descriptions.size(); ++line) {
        const QStringList fields = fieldsOf(descriptions.at(line - 1));
        if (fields.isEmpty())
            continue;
        Ligand group;
        group.name = fields.first();
        bool isNameNumber = false;
        group.name.toInt(&isNameNumber);
        if (isNameNumber)
            return failWith(tr("Line %1 of the ligands begins with the number %2; the name of the "
                               "group stands first, then its atoms.")
                                .arg(QString::number(line), group.name));
        for (const QString &field : fields.mid(1)) {
            bool isNumber = false;
            const int atom = field.toInt(&isNumber);
            if (!isNumber || !d->isCoordinated(atom))
                return failWith(
                    tr("Line %1 of the ligands: \"%2\" is not the number of a "
                       "coordinated atom (2 to %3).")
                        .arg(QString::number(line), field, QString::number(d->coordNumber + 1)));
            if (taken.contains(atom))
                return failWith(tr("Line %1 of the ligands: atom %2 is named twice.")
                                    .arg(QString::number(line), QString::number(atom)));
            taken.append(atom);
            group.atoms.append(atom);
        }
        if (group.atoms.isEmpty())
            return failWith(tr("Line %1 of the ligands: group \"%2\" has no atoms.")
                                .arg(QString::number(line), group.name));
        groups.append(group);
    }
    if (groups.isEmpty())
        return failWith(tr("The text of the ligands holds no group."));
    d->ligands = groups;
    return true;
}

QStringList LanqorAradPartition::readLigandsFile(const QString &fileName, QString &error)
{
    constexpr int maximumLines = 10000; // more than there can be groups
    QStringList lines;
    LineReader reader(fileName);
    error = reader.open() ? QString() : missingFile(fileName);
    while (error.isEmpty() && lines.size() < maximumLines && reader.next())
        lines.append(textFields::toString(reader.line()));
    return lines;
}

int LanqorAradPartition::getLigandsNumber() const
{
    return d->ligands.size();
}

Ligand LanqorAradPartition::getLigand(const int &i) const
{
    return d->ligands.value(i);
}

QString LanqorAradPartition::getLigandsName(const int &i) const
{
    return d->ligands.value(i).name;
}

QVector<int> LanqorAradPartition::getLigandAtoms(const int &i) const
{
    return d->ligands.value(i).atoms;
}

double LanqorAradPartition::calcConstArad(const int &lambda) const
{
    return radiativeRates::constArad(lambda, d->refractiveIndex);
}

double LanqorAradPartition::aradLambdaByAtom(const int &lambda, const int &i, const int &j) const
{
    return calcConstArad(lambda) * d->E(lambda, i, j);
}

double LanqorAradPartition::aradByAtom(const int &i, const int &j) const
{
    double rate = 0.0;
    for (const int lambda : lambdas)
        rate += aradLambdaByAtom(lambda, i, j);
    return rate;
}

double LanqorAradPartition::aradByLigand(const int &a, const int &b) const
{
    double rate = 0.0;
    for (const int lambda : lambdas)
        rate += d->AL(lambda, a, b);
    return rate;
}

double LanqorAradPartition::getSumByAtom(const int &i) const
{
    double share = 0.0;
    for (int j = 2; j <= d->coordNumber + 1; ++j)
        share += aradByAtom(i, j);
    return share;
}

double LanqorAradPartition::getSumByLigand(const int &a) const
{
    double share = 0.0;
    for (int b = 0; b < d->ligands.size(); ++b)
        share += aradByLigand(a, b);
    return share;
}

AradPartitionResults LanqorAradPartition::getResults() const
{
    AradPartitionResults results;
    results.refractiveIndex = d->refractiveIndex;
    for (const int lambda : lambdas)
        results.rateConstants[lambda] = calcConstArad(lambda);
    const int lastAtom = d->sphere ? d->coordNumber + 1 : 1;
    for (int i = 2; i <= lastAtom; ++i) {
        AradPartitionResults::AtomShare share{i, d->labels.at(i - 1), getSumByAtom(i), {}};
        for (int j = 2; j <= lastAtom; ++j)
            share.pairs.append(aradByAtom(i, j));
        results.atoms.append(share);
    }
    for (int a = 0; a < d->ligands.size(); ++a) {
        AradPartitionResults::GroupShare share{d->ligands.at(a), getSumByLigand(a), {}};
        for (int b = 0; b < d->ligands.size(); ++b)
            share.pairs.append(aradByLigand(a, b));
        results.groups.append(share);
    }
    return results;
}
