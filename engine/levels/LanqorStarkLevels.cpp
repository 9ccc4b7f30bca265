#include "LanqorStarkLevels.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "levels/fieldParameters_p.h"
#include "levels/starkMatrix_p.h"
#include "levels/starkReport_p.h"

#include <Eigen/Eigenvalues>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorStarkLevels", text);
}

} // namespace

LanqorStarkLevels::LanqorStarkLevels(const QString &fileName, const int &value)
    : fileName(fileName)
    , bkq(fileName, value)
    , lastError(bkq.getLastError())
{}

LanqorStarkLevels::LanqorStarkLevels(const LanqorStarkLevels &other) = default;

LanqorStarkLevels &LanqorStarkLevels::operator=(const LanqorStarkLevels &other) = default;

LanqorStarkLevels::~LanqorStarkLevels() = default;

void LanqorStarkLevels::setChargeFactors(double *&g)
{
    chargeFactors = g;
}

void LanqorStarkLevels::setRO0(const double &ro0)
{
    RO0 = ro0;
}

double LanqorStarkLevels::U(const int &k, const int &J)
{
    return starkMatrix::reducedU(k, J);
}

void LanqorStarkLevels::calculateStarkLevels()
{
    starkLevels.clear();
    energeticMatrices.clear();
    if (bkq.getAtomsNumber() == 0) {
        lastError = bkq.getLastError();
        return;
    }
    lastError.clear();
    bkq.setChargeFactors(chargeFactors);
    if (!chargeFactors)
        lastError = tr("The charge factors of the coordinated atoms are not set.");
    else if (!bkq.calculateRO(RO0))
        lastError = bkq.getLastError();
    else if (!sumFieldParameters())
        lastError = tr("The charge factors give no finite crystal field.");
    else if (!diagonalize())
        lastError = tr("The crystal-field matrices cannot be diagonalised.");
    if (lastError.isEmpty())
        return;
    starkLevels.clear();
    energeticMatrices.clear();
}

bool LanqorStarkLevels::sumFieldParameters()
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
    usedChargeFactors.clear();
    for (int atom = 2; atom <= bkq.getAtomsNumber() + 1; ++atom)
        usedChargeFactors.append(chargeFactors[atom]);
    return isFinite;
}

LanqorStarkLevels::Complex LanqorStarkLevels::H(const int &J, const int &M, const int &Mp) const
{
    const int q = M - Mp;
    Complex element;
    for (const int k : starkMatrix::ranks) {
        if (k <= 2 * J && std::abs(q) <= k)
            element += field[static_cast<std::size_t>(fieldParameters::place(k, q))] *
                       starkMatrix::coefficient(J, k, M, Mp);
    }
    return element;
}

bool LanqorStarkLevels::diagonalize()
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

QVector<double> LanqorStarkLevels::getStarkLevels(const int &J) const
{
    return starkLevels.value(J);
}

Eigen::MatrixXcd LanqorStarkLevels::getEnergeticMatrix(const int &J) const
{
    return energeticMatrices.value(J);
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
    if (starkLevels.isEmpty() || !fieldParameters::exists(k, q))
        return MyComplex();
    const Complex B = field[static_cast<std::size_t>(fieldParameters::place(k, q))];
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

QString LanqorStarkLevels::createOutFile(const QString &outFile)
{
    if (starkLevels.isEmpty()) {
        if (lastError.isEmpty())
            lastError = tr("There are no Stark levels to report; calculate them first.");
        return QString();
    }
    QString report = starkReport::text({fileName, usedRO0, usedChargeFactors}, *this);
    QString error;
    if (!outFile.isEmpty() && !reportText::writeFile(outFile, report, error)) {
        lastError = tr("The report %1 cannot be written: %2").arg(outFile, error);
        return QString();
    }
    return report;
}
