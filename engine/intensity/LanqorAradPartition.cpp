#include "LanqorAradPartition.h"

#include "intensity/radiativeRates_p.h"
#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
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

LanqorAradPartition::LanqorAradPartition(QObject *parent, LanqorInputData *&geometry,
                                         const int &coordNumber, const double &refractiveIndex)
    : LanqorAbstractObjCalculation(parent)
    , inputData(geometry)
    , coordNumber(coordNumber)
    , refractiveIndex(refractiveIndex)
{
    if (!inputData) {
        failWith(tr("The partition of the radiative rate was given no geometry."));
        return;
    }
    const QVector<CoordSPH> positions = inputData->getCoordSPH();
    if (positions.isEmpty() || positions.size() != inputData->getCoord().size())
        failWith(tr("The partition of the radiative rate needs the spherical coordinates of all "
                    "atoms."));
    else if (positions.first().label != QLatin1String("Eu"))
        failWith(positions.first().label + tr(" atoms[0] isn't Eu"));
    else if (const QString error = simpleOverlapModel::sphereError(positions, coordNumber);
             !error.isEmpty())
        failWith(error);
    else
        sphere = std::make_unique<CoordinationSphere>(positions, coordNumber);
}

LanqorAradPartition::~LanqorAradPartition() = default;

void LanqorAradPartition::setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas)
{
    if (!sphere || !chargeFactors || !alphas)
        return;
    chargeFactor.fill(0.0, coordNumber + 2);
    alpha.fill(0.0, coordNumber + 2);
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        chargeFactor[atom] = chargeFactors[atom];
        alpha[atom] = alphas[atom];
    }
    calcPairTerms();
}

double LanqorAradPartition::K(const int &lambda, const int &t, const int &i) const
{
    return sphere->K(lambda, t, i, chargeFactor.at(i), alpha.at(i));
}

/// B(lambda,t,p) is a sum over atoms, so |B|^2 is one over pairs: with the real and imaginary
/// parts of the atoms' terms as the rows of a matrix V, each row times
/// sqrt((2 lambda + 1) w(p)/(2t+1)), all E(lambda,i,j) are the matrix V^T V.
void LanqorAradPartition::calcPairTerms()
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

bool LanqorAradPartition::isCoordinated(const int &atom) const
{
    return atom >= 2 && atom <= coordNumber + 1;
}

bool LanqorAradPartition::setLigandsVector(const QString &text)
{
    return setLigandsVector(text.split(QLatin1Char('\n')));
}

bool LanqorAradPartition::setLigandsVector(const QStringList &descriptions)
{
    ligands.clear();
    QVector<Ligand> groups;
    QVector<int> taken;
    for (int line = 1; line <= descriptions.size(); ++line) {
        const QStringList fields = fieldsOf(descriptions.at(line - 1));
        if (fields.isEmpty())
            continue;
        Ligand group;
        group.name = fields.first();
        for (const QString &field : fields.mid(1)) {
            bool isNumber = false;
            const int atom = field.toInt(&isNumber);
            if (!isNumber || !isCoordinated(atom))
                return failWith(tr("Line %1 of the ligands: \"%2\" is not the number of a "
                                   "coordinated atom (2 to %3).")
                                    .arg(line)
                                    .arg(field)
                                    .arg(coordNumber + 1));
            if (taken.contains(atom))
                return failWith(
                    tr("Line %1 of the ligands: atom %2 is named twice.").arg(line).arg(atom));
            taken.append(atom);
            group.atoms.append(atom);
        }
        if (group.atoms.isEmpty())
            return failWith(
                tr("Line %1 of the ligands: group \"%2\" has no atoms.").arg(line).arg(group.name));
        groups.append(group);
    }
    if (groups.isEmpty())
        return failWith(tr("The text of the ligands holds no group."));
    ligands = groups;
    return true;
}

double LanqorAradPartition::calcConstArad(const int &lambda) const
{
    return radiativeRates::constArad(lambda, refractiveIndex);
}

double LanqorAradPartition::E(const int &lambda, const int &i, const int &j) const
{
    const auto found = std::find(lambdas.begin(), lambdas.end(), lambda);
    if (found == lambdas.end() || !isCoordinated(i) || !isCoordinated(j))
        return 0.0;
    const Eigen::MatrixXd &terms = pairTerms[static_cast<std::size_t>(found - lambdas.begin())];
    return terms.size() == 0 ? 0.0 : terms(i - 2, j - 2);
}

double LanqorAradPartition::EL(const int &lambda, const int &a, const int &b) const
{
    double sum = 0.0;
    for (const int i : getLigandAtoms(a)) {
        for (const int j : getLigandAtoms(b))
            sum += E(lambda, i, j);
    }
    return sum;
}

double LanqorAradPartition::AL(const int &lambda, const int &a, const int &b) const
{
    return calcConstArad(lambda) * EL(lambda, a, b);
}

double LanqorAradPartition::aradLambdaByAtom(const int &lambda, const int &i, const int &j) const
{
    return calcConstArad(lambda) * E(lambda, i, j);
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
        rate += AL(lambda, a, b);
    return rate;
}

double LanqorAradPartition::getSumByAtom(const int &i) const
{
    double share = 0.0;
    for (int j = 2; j <= coordNumber + 1; ++j)
        share += aradByAtom(i, j);
    return share;
}

double LanqorAradPartition::getSumByLigand(const int &a) const
{
    double share = 0.0;
    for (int b = 0; b < ligands.size(); ++b)
        share += aradByLigand(a, b);
    return share;
}
