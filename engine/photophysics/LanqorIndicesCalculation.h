#pragma once

#include <LanqorEngine/IndicesResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorIndicesCalculationPrivate;
class LanqorInputData;
class LanqorResultTables;

/// Reactivity indices of the atoms of a complex, from the occupied orbitals of a closed-shell
/// calculation with the ion as atom 1. They turn into charge factors and polarisabilities in
/// the fits of Q, D and C.
///
///     q(a) = 2 sum_j sum_k c(j,k)^2               electron population
///     S(a) = 2 sum_j sum_k sum_l c(j,k) c(j,l) / E(j)     superdelocalizability
/// over the doubly occupied orbitals j and the S, Px, Py, Pz functions k, l of atom a (S alone
/// for hydrogen; d functions do not enter), in single precision (K. Fukui, T. Yonezawa and
/// C. Nagata, Bull. Chem. Soc. Jpn. 27, 423 (1954)).
///
/// The energies E(j) are those printed: eV from MOPAC, hartree from Gaussian, negative when
/// bound. S is therefore negative for donors, -0.2 to -0.5 per eV in europium complexes, and
/// a polarisability alpha = D S + C with positive D and C needs C > D |S|. The double sum mixes
/// functions of different directions, so S depends on the orientation of the molecule: indices
/// of two complexes compare only when their frames do.
///
/// MOPAC must print every occupied orbital (keyword ALLVEC). A function that the output does
/// not list counts with the coefficient -9999.0, which shows in an absurd index.
///
/// From Gaussian (pop=full), every function whose label without its leading number is S, PX, PY
/// or PZ enters. The result means something for orthonormal minimal bases only: with an
/// overlapping basis, 2 sum c^2 is no population.
class LANQORENGINE_EXPORT LanqorIndicesCalculation : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    enum OutputType { MopacOutput = 0, GaussianOutput = 1 };

    /// @param outputPath  output of the quantum-chemistry program
    /// @param selector  which program wrote it, of OutputType
    LanqorIndicesCalculation(QObject *parent, const QString &outputPath, const int &selector);
    /// @param output  the reader of that output, which may hold the geometry already; not owned,
    ///                and must outlive this object. Null: no output.
    LanqorIndicesCalculation(QObject *parent, LanqorInputData *output, const int &selector);
    ~LanqorIndicesCalculation() override;

    /// Reads the output and computes the indices; then writes the ".indeces" file beside it.
    /// @return false with the reason in getLastError() when an occupied orbital cannot be read;
    ///         a file that cannot be written is told by a message and in getLastError() only
    bool calculateIndices();
    /// The same for a Gaussian output, whatever the selector.
    bool calculateIndicesGAUSSIAN();

    /// By atom number; entries 0 and 1 are 0. Empty before a successful calculation.
    QVector<double> getAtomicCharge() const;
    QVector<double> getSuperDeslocalizability() const;
    /// Of atom @p atom (1-based); 0 outside the molecule.
    double getAtomicCharge(const int &atom) const;
    double getSuperDeslocalizability(const int &atom) const;
    /// Smallest over the atoms 2 and on; 0 when there is none.
    double getMinimumSuperDeslocalizability() const;

    /// All of the last calculation; no atoms before a successful one.
    IndicesResults getResults() const;
    /// One line an atom.
    static LanqorResultTables makeTables(const IndicesResults &results);

    /// The table that the ".indeces" file holds: a heading, then for each atom from 2 on its
    /// number, symbol, charge and superdelocalizability. The heading says au, as readers of such
    /// files expect; the superdelocalizability is in 1/eV from MOPAC, 1/hartree from Gaussian.
    QString getIndicesTable() const;
    /// Name of that file: the output's with its suffix replaced.
    QString getIndicesFileName() const;

private:
    friend class LanqorIndicesCalculationPrivate;

    std::unique_ptr<LanqorIndicesCalculationPrivate> d;
};
