#include "LanqorStarkLevels.h"

#include "core/physicalConstants_p.h"
#include "levels/chargeFactors_p.h"
#include "levels/fieldParameters_p.h"
#include "levels/starkMatrix_p.h"
#include "levels/starkReport_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <Eigen/Eigenvalues>

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdlib>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorStarkLevels", text);
}

} // namespace

class LanqorStarkLevelsPrivate
{
public:
    using Complex = std::complex<double>;

    LanqorStarkLevelsPrivate(const QString &fileName, const LanqorBkq &bkq)
        : fileName(fileName)
        , bkq(bkq)
        , lastError(bkq.getLastError())
    {}

    QString calculate();
    bool sumFieldParameters();
    Complex H(int J, int M, int Mp) const;
    bool diagonalize();
    void forgetLevels();

    QString fileName;
    LanqorBkq bkq;
    double RO0 = 0.0801; // source not known
    ReducedElements elements = ReducedElements::Magnitudes;
    ChargeFactors chargeFactors;
    QString lastError;
    std::array<Complex, fieldParameters::count> field{}; // sums over the atoms of B(k,q)
    double usedRO0 = 0.0;                                // in the last calculation, as are these
    ReducedElements usedElements = ReducedElements::Magnitudes;
    QVector<double> usedChargeFactors;           // of atoms 2 .. A+1
    QVector<QVector<double>> starkLevels;        // by J
    QVector<Eigen::MatrixXcd> energeticMatrices; // by J
};

void LanqorStarkLevelsPrivate::forgetLevels()
{
    starkLevels.clear();
    energeticMatrices.clear();
}

/// Empty, or the reason why there are no levels.
QString LanqorStarkLevelsPrivate::calculate()
{
    if (bkq.getAtomsNumber() == 0)
        return bkq.getLastError();
    if (!chargeFactors.isSet())
        return tr("The charge factors of the coordinated atoms are not set.");
    if (!bkq.calculateRO(RO0))
        return bkq.getLastError();
    if (!sumFieldParameters())
        return tr("The charge factors give no finite crystal field.");
    if (!diagonalize())
        return tr("The crystal-field matrices cannot be diagonalised.");
    return QString();
}

bool LanqorStarkLevelsPrivate::sumFieldParameters()
{
    bool isFinite = true;
    for (const int k : starkMatrix::ranks) {
        for (int q = -k; q <= k; ++q) {
            const MyComplex B = bkq.getBkq(k, q);
            field[static_cast<std::size_t>(fieldParameters::place(k, q))] = {B.real, B.imag};
            isFinite = isFinite && std::isfinite(B.real) && std::isfinite(B.imag);
        }
    }
    usedRO0 = RO0;
    usedElements = elements;
    usedChargeFactors.clear();
    for (int atom = 2; atom <= bkq.getAtomsNumber() + 1; ++atom)
        usedChargeFactors.append(chargeFactors.at(atom));
    return isFinite;
}

LanqorStarkLevelsPrivate::Complex LanqorStarkLevelsPrivate::H(int J, int M, int Mp) const
{
    const int q = M - Mp;
    Complex element;
    for (const int k : starkMatrix::ranks) {
        if (k <= 2 * J && std::abs(q) <= k)
            element += field[static_cast<std::size_t>(fieldParameters::place(k, q))] *
                       (starkMatrix::sign(elements, k, J) * starkMatrix::coefficient(J, k, M, Mp));
    }
    return element;
}

bool LanqorStarkLevelsPrivate::diagonalize()
{
    Eigen::ComplexEigenSolver<Eigen::MatrixXcd> solver;
    for (int J = 0; J <= starkMatrix::maximumJ; ++J) {
        const int n = 2 * J + 1;
        Eigen::MatrixXcd matrix(n, n);
        for (int row = 0; row < n; ++row) {
            for (int column = 0; column < n; ++column)
                matrix(row, column) = H(J, row - J, column - J);
        }
        solver.compute(matrix, false);
        if (solver.info() != Eigen::Success)
            return false;
        QVector<double> levels;
        levels.reserve(n);
        for (int i = 0; i < n; ++i) {
            levels.append(solver.eigenvalues()(i).real());
            if (!std::isfinite(levels.last()))
                return false;
        }
        starkLevels.append(levels);
        energeticMatrices.append(matrix);
    }
    return true;
}

LanqorStarkLevels::LanqorStarkLevels(const QString &fileName, const int &value)
    : d(std::make_unique<LanqorStarkLevelsPrivate>(fileName, LanqorBkq(fileName, value)))
{}

LanqorStarkLevels::LanqorStarkLevels(LanqorInputData *geometry, const int &value)
    : d(std::make_unique<LanqorStarkLevelsPrivate>(geometry ? geometry->getFileName() : QString(),
                                                   LanqorBkq(geometry, value)))
{}

LanqorStarkLevels::LanqorStarkLevels(const LanqorStarkLevels &other)
    : d(std::make_unique<LanqorStarkLevelsPrivate>(*other.d))
{}

LanqorStarkLevels &LanqorStarkLevels::operator=(const LanqorStarkLevels &other)
{
    *d = *other.d;
    return *this;
}

LanqorStarkLevels::~LanqorStarkLevels() = default;

void LanqorStarkLevels::setChargeFactors(double *&g)
{
    d->chargeFactors = ChargeFactors(g);
    d->bkq.setChargeFactors(g);
}

bool LanqorStarkLevels::setChargeFactors(const QVector<double> &g)
{
    const bool isTaken = d->bkq.setChargeFactors(g);
    d->chargeFactors = isTaken ? ChargeFactors(g) : ChargeFactors();
    if (!isTaken)
        d->lastError = d->bkq.getLastError();
    return isTaken;
}

void LanqorStarkLevels::setRO0(const double &ro0)
{
    d->RO0 = ro0;
}

void LanqorStarkLevels::setReducedElements(const ReducedElements &choice)
{
    d->elements = choice;
}

double LanqorStarkLevels::U(const int &k, const int &J)
{
    return starkMatrix::reducedU(k, J);
}

double LanqorStarkLevels::signedU(const int &k, const int &J)
{
    return starkMatrix::sign(ReducedElements::Signed, k, J) * starkMatrix::reducedU(k, J);
}

void LanqorStarkLevels::calculateStarkLevels()
{
    d->forgetLevels();
    d->lastError = d->calculate();
    if (!d->lastError.isEmpty())
        d->forgetLevels();
}

QString LanqorStarkLevels::getAtomLabel(const int &i) const
{
    return d->bkq.getAtomLabel(i);
}

int LanqorStarkLevels::getAtomsNumber() const
{
    return d->bkq.getAtomsNumber();
}

QString LanqorStarkLevels::getLastError() const
{
    return d->lastError;
}

QVector<double> LanqorStarkLevels::getStarkLevels(const int &J) const
{
    return d->starkLevels.value(J);
}

Eigen::MatrixXcd LanqorStarkLevels::getEnergeticMatrix(const int &J) const
{
    return d->energeticMatrices.value(J);
}

QVector<double> LanqorStarkLevels::getSortedStarkLevels(const int &J) const
{
    QVector<double> levels = getStarkLevels(J);
    std::sort(levels.begin(), levels.end());
    return levels;
}

double LanqorStarkLevels::getSplitting(const int &J) const
{
    const QVector<double> levels = getSortedStarkLevels(J);
    return levels.isEmpty() ? 0.0 : levels.last() - levels.first();
}

MyComplex LanqorStarkLevels::getFieldParameter(const int &k, const int &q) const
{
    if (d->starkLevels.isEmpty() || !fieldParameters::exists(k, q))
        return MyComplex();
    const LanqorStarkLevelsPrivate::Complex B =
        d->field[static_cast<std::size_t>(fieldParameters::place(k, q))];
    return {B.real(), B.imag()};
}

double LanqorStarkLevels::getCrystalFieldStrength() const
{
    double sum = 0.0;
    for (const int k : starkMatrix::ranks) {
        for (int q = -k; q <= k; ++q) {
            const MyComplex B = getFieldParameter(k, q);
            sum += (B.real * B.real + B.imag * B.imag) * lanqor::fourPi / (2 * k + 1);
        }
    }
    return std::sqrt(sum);
}

StarkResults LanqorStarkLevels::getResults() const
{
    StarkResults results;
    results.structureFile = d->fileName;
    results.coordNumber = getAtomsNumber();
    if (d->starkLevels.isEmpty())
        return results;
    results.ro0 = d->usedRO0;
    for (int i = 0; i < d->usedChargeFactors.size(); ++i)
        results.atoms.append({i + 2, getAtomLabel(i + 2), d->usedChargeFactors.at(i)});
    for (const int k : starkMatrix::ranks) {
        for (int q = -k; q <= k; ++q) {
            const MyComplex B = getFieldParameter(k, q);
            results.fieldParameters.append({k, q, B.real, B.imag});
        }
    }
    results.crystalFieldStrength = getCrystalFieldStrength();
    for (int J = 0; J <= starkMatrix::maximumJ; ++J)
        results.manifolds.append({J, getSortedStarkLevels(J), getSplitting(J)});
    results.reducedElements = d->usedElements;
    return results;
}

QString LanqorStarkLevels::createOutFile(const QString &outFile)
{
    if (d->starkLevels.isEmpty()) {
        if (d->lastError.isEmpty())
            d->lastError = tr("There are no Stark levels to report; calculate them first.");
        return QString();
    }
    QString report = starkReport::text(getResults());
    QString error;
    if (!outFile.isEmpty() && !LanqorOutputFile::write(outFile, report.toUtf8(), error)) {
        d->lastError = tr("The report %1 cannot be written: %2").arg(outFile, error);
        return QString();
    }
    return report;
}
