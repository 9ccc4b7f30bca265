#include "levels/reducedElements_p.h"

#include "LanqorEnergyLevels.h"
#include "core/parity_p.h"
#include "levels/fShell_p.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorWignerSymbols.h>

#include <QHash>
#include <QMap>

#include <cmath>
#include <vector>

using LanqorSpectroscopicTermUtil::isSameTerm;

namespace freeIon {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
constexpr int ranks[] = {2, 4, 6};

double degeneracy(double J)
{
    return 2.0 * J + 1.0;
}

/// Coefficients of fractional parentage, (term, parent), by the orbital momentum of the parents.
/// Lines of a table that name one parent more than once count together.
std::vector<MatrixXd> parentage(const LanqorEnergyLevels &ion,
                                const QVector<SpectroscopicTerm> &terms)
{
    QVector<SpectroscopicTerm> parents;
    const auto positionOf = [&parents](const SpectroscopicTerm &parent) {
        for (int i = 0; i < parents.size(); ++i)
            if (isSameTerm(parents.at(i), parent))
                return i;
        parents.append(parent);
        return parents.size() - 1;
    };
    std::vector<MatrixXd> byMomentum;
    constexpr Index mostParents = 130; // of f^6 there are 119
    for (int t = 0; t < terms.size(); ++t)
        for (const FractParentCoeff &p : ion.getFractParentCoeffVector(terms.at(t))) {
            const int position = positionOf(p.parent);
            if (p.parent.L < 0 || position >= mostParents)
                continue;
            const auto L = static_cast<std::size_t>(p.parent.L);
            while (byMomentum.size() <= L)
                byMomentum.push_back(MatrixXd::Zero(terms.size(), mostParents));
            byMomentum[L](t, position) += p.cfp;
        }
    return byMomentum;
}

/// <t||U(k)||t'> of n particles.
MatrixXd unitTensor(int n, int k, const QVector<SpectroscopicTerm> &terms,
                    const std::vector<MatrixXd> &products)
{
    constexpr int l = fShell::orbitalL;
    MatrixXd elements = MatrixXd::Zero(terms.size(), terms.size());
    for (int t = 0; t < terms.size(); ++t)
        for (int u = 0; u < terms.size(); ++u) {
            const SpectroscopicTerm &bra = terms.at(t);
            const SpectroscopicTerm &ket = terms.at(u);
            if (bra.S != ket.S)
                continue;
            double sum = 0.0;
            for (std::size_t L = 0; L < products.size(); ++L)
                if (products[L](t, u) != 0.0) // of no parent in common: no 6-j symbol needed
                    sum += parity(static_cast<int>(L) + bra.L + l + k) * products[L](t, u) *
                           LanqorWignerSymbols::calcSixJSymbol(bra.L, l, double(L), l, ket.L, k);
            elements(t, u) = n * std::sqrt(degeneracy(bra.L) * degeneracy(ket.L)) * sum;
        }
    return elements;
}

/// The states of one J.
struct Block
{
    double J = 0.0;
    QVector<int> terms;      ///< of the basis levels
    QVector<int> levels;     ///< positions in the list of all
    MatrixXd vectors;        ///< (basis level, state)
    QHash<QString, int> row; ///< by label
};

QVector<Block> blocksOf(const QVector<SpectroscopicTerm> &terms,
                        const FreeIonLevelsResults &results)
{
    QMap<double, Block> byJ;
    for (int i = 0; i < results.levels.size(); ++i) {
        const double J = results.levels.at(i).J;
        byJ[J].J = J;
        byJ[J].levels.append(i);
    }
    for (Block &block : byJ) {
        for (int t = 0; t < terms.size(); ++t) {
            SpectroscopicTerm level = terms.at(t);
            level.J = block.J;
            if (!LanqorEnergyLevels::getJVector(level.S, level.L).contains(level.J))
                continue;
            block.row.insert(levelLabel(level), block.terms.size());
            block.terms.append(t);
        }
        block.vectors = MatrixXd::Zero(block.terms.size(), block.levels.size());
        for (int state = 0; state < block.levels.size(); ++state)
            for (const CoeffAndLabel &component :
                 results.levels.at(block.levels.at(state)).components)
                block.vectors(block.row.value(component.label), state) = component.coefficient;
    }
    return byJ.values().toVector();
}

/// <J||U(k)||J'> between the basis levels of two blocks.
MatrixXd coupled(int k, const QVector<SpectroscopicTerm> &terms, const MatrixXd &unit,
                 const Block &bra, const Block &ket)
{
    MatrixXd elements = MatrixXd::Zero(bra.terms.size(), ket.terms.size());
    for (int i = 0; i < bra.terms.size(); ++i)
        for (int j = 0; j < ket.terms.size(); ++j) {
            const double element = unit(bra.terms.at(i), ket.terms.at(j));
            if (element == 0.0)
                continue;
            const SpectroscopicTerm &t = terms.at(bra.terms.at(i));
            const SpectroscopicTerm &u = terms.at(ket.terms.at(j));
            elements(i, j) = parity(static_cast<int>(t.S + u.L + bra.J + k)) *
                             std::sqrt(degeneracy(bra.J) * degeneracy(ket.J)) * element *
                             LanqorWignerSymbols::calcSixJSymbol(bra.J, ket.J, k, u.L, t.L, t.S);
        }
    return elements;
}

/// (g_s - 1) <J||S||J'> between the basis levels of two blocks.
MatrixXd spin(const QVector<SpectroscopicTerm> &terms, const Block &bra, const Block &ket)
{
    MatrixXd elements = MatrixXd::Zero(bra.terms.size(), ket.terms.size());
    for (int i = 0; i < bra.terms.size(); ++i) {
        const int j = ket.terms.indexOf(bra.terms.at(i));
        if (j < 0)
            continue;
        const SpectroscopicTerm &t = terms.at(bra.terms.at(i));
        const double square =
            degeneracy(bra.J) * degeneracy(ket.J) * t.S * (t.S + 1.0) * degeneracy(t.S);
        elements(i, j) = (gOfSpin - 1.0) * parity(static_cast<int>(t.S + t.L + ket.J + 1.0)) *
                         std::sqrt(square) *
                         LanqorWignerSymbols::calcSixJSymbol(t.S, bra.J, t.L, ket.J, t.S, 1.0);
    }
    return elements;
}

void scatter(const MatrixXd &part, const Block &bra, const Block &ket, MatrixXd &all)
{
    for (int i = 0; i < bra.levels.size(); ++i)
        for (int j = 0; j < ket.levels.size(); ++j)
            all(bra.levels.at(i), ket.levels.at(j)) = part(i, j);
}

} // namespace

ReducedElements calcReducedElements(const LanqorEnergyLevels &ion,
                                    const FreeIonLevelsResults &results)
{
    const QVector<SpectroscopicTerm> terms = ion.getSpectroscopicTermVector();
    const int electrons = results.parameters.electrons;
    const bool isMoreThanHalf = electrons > fShell::halfFilled;
    const int n = isMoreThanHalf ? fShell::holesAndElectrons - electrons : electrons;
    const QVector<Block> blocks = blocksOf(terms, results);
    std::vector<MatrixXd> products;
    for (const MatrixXd &C : parentage(ion, terms))
        products.push_back(C * C.transpose());

    ReducedElements all;
    const Index size = results.levels.size();
    for (int r = 0; r < 3; ++r) {
        const int k = ranks[r];
        const double sign = isMoreThanHalf ? -parity(k) : 1.0;
        const MatrixXd unit = sign * unitTensor(n, k, terms, products);
        all.U[r] = MatrixXd::Zero(size, size);
        for (const Block &bra : blocks)
            for (const Block &ket : blocks)
                if (std::abs(bra.J - ket.J) <= k && bra.J + ket.J >= k)
                    scatter(bra.vectors.transpose() * coupled(k, terms, unit, bra, ket) *
                                ket.vectors,
                            bra, ket, all.U[r]);
    }
    all.magnetic = MatrixXd::Zero(size, size);
    for (const Block &bra : blocks)
        for (const Block &ket : blocks)
            if (std::abs(bra.J - ket.J) <= 1.0) {
                MatrixXd part = bra.vectors.transpose() * spin(terms, bra, ket) * ket.vectors;
                if (bra.J == ket.J)
                    part.diagonal().array() += std::sqrt(bra.J * (bra.J + 1.0) * degeneracy(bra.J));
                scatter(part, bra, ket, all.magnetic);
            }
    return all;
}

} // namespace freeIon
