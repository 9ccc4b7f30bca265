#pragma once

#include "LanqorEnergyLevels.h"

#include "levels/hamiltonian_p.h"
#include "levels/reducedElements_p.h"

#include <QStringList>

#include <vector>

class LanqorEnergyLevelsPrivate
{
public:
    using SpectroscopicTerm = LanqorSpectroscopicTermUtil::SpectroscopicTerm;

    explicit LanqorEnergyLevelsPrivate(int electrons);

    // Each returns an empty text, or why it failed.
    QString readTables();
    QString readSpectroscopicTerms();
    QString readFractionalParentageCoefficients(const SpectroscopicTerm &term,
                                                QVector<FractParentCoeff> &coefficients) const;
    QString readElectrostaticMatrix();
    QString readCasimirEigenvalues();
    QString checkParameters() const;
    /// Appends the levels of the J at @p position, in the order in which the diagonaliser leaves
    /// them; each bears the label of the basis level at its position.
    QString calcBlock(const LanqorEnergyLevels &ion, int position, QVector<MixedState> &states);

    void collectJValues();

    int numberOfElectrons;
    int shellElectrons; // n, or the 14 - n holes of a shell more than half full
    QString cfpFileName;
    QString eleFileName;
    QString casFileName;
    QString tablesError;           // why the tables could not be read
    QString casimirError;          // why that of the two-body interaction could not
    bool mayLackIntegrals = false; // one electron or hole, by a set of parameters as a whole
    double F0 = 0.0;
    FreeIonParameters parameters;
    QVector<double> jValues; // ascending
    QVector<SpectroscopicTerm> spectroscopicTerms;
    QVector<ElectrostaticElement> electrostaticMatrix;
    QVector<QVector<FractParentCoeff>> fractParentCoeffs; // by term
    QVector<QVector<double>> twoBodyVectors;              // likewise: L(L+1), G(G2), G(R7)
    // What depends on the ion alone, by position in jValues; computed when first needed.
    std::vector<freeIon::AngularBlock> blocks;
    // Of the last calculation.
    double usedF0 = 0.0;
    FreeIonParameters usedParameters;
    QVector<MixedState> mixedStates;
    std::unique_ptr<freeIon::ReducedElements> reduced; // between them; made when first asked for
};
