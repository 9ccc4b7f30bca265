#pragma once

#include <LanqorEngine/LanqorParametricQDC.h>

/// The fit of Q, D and C with the smallest polarisability of the coordinated atoms in the place of
/// C: a vector holds Q (1/electron), D (cubic Angstrom times the energy unit of S) and
///     alpha_min = D S_min + C,  cubic Angstrom,
/// S_min being the smallest superdelocalizability. So nearly every vector within the bounds is
/// feasible, where C must else exceed D |S_min| by very little at a minimum. The response and the
/// results, in Q, D and C, are those of LanqorParametricQDC.
class LANQORENGINE_EXPORT LanqorParametricQDCBounded : public LanqorParametricQDC
{
    Q_OBJECT
public:
    /// See LanqorParametricQDC.
    LanqorParametricQDCBounded(QObject *parent, LanqorInputData *geometry, const int &value);
    ~LanqorParametricQDCBounded() override;

    /// Evaluates the vector (Q, D, alpha_min); always true.
    bool runParametrization(const int &n, double *&x) override;

    /// Q, D and C of a vector; empty without a valid setup.
    QVector<double> toQdc(const QVector<double> &vector);
    /// The vector with these Q, D and C; empty without a valid setup.
    QVector<double> fromQdc(const QVector<double> &qdc);
    /// Q, D and alpha_min with their ranges; empty without a valid setup.
    QVector<FitParameter> getBoundedParameters();
};
