// The results of a calculation as one record.
#include "LanqorOmega.h"

#include "intensity/LanqorOmega_p.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/europium_p.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaResults.h>

namespace {

MyComplex toRecord(const std::complex<double> &value)
{
    return {value.real(), value.imag()};
}

MyComplex sumOf(const QVector<MyComplex> &terms)
{
    MyComplex sum;
    for (const MyComplex &term : terms) {
        sum.real += term.real;
        sum.imag += term.imag;
    }
    return sum;
}

OmegaResults::Constants constants()
{
    OmegaResults::Constants constants;
    constants.reducedElements = europium::reducedC;
    constants.shielding = europium::shielding;
    constants.radialIntegrals = europium::radialR;
    constants.radialIntegral8 = europium::radialR8;
    for (int lambda = 2; lambda <= 6; lambda += 2) {
        for (int t = lambda - 1; t <= lambda + 1; t += 2)
            constants.thetas.append({t, lambda, europium::tet(t, lambda)});
    }
    constants.deltaE = europium::deltaE;
    return constants;
}

} // namespace

MyComplex LanqorOmegaPrivate::gamma(int t, int p, int j) const
{
    return toRecord(sphere->gamma(t, p, j, chargeFactor.at(j)));
}

MyComplex LanqorOmegaPrivate::GAMMA(int t, int p, int j) const
{
    return toRecord(sphere->GAMMA(t, p, j, alpha.at(j)));
}

MyComplex LanqorOmegaPrivate::BEd(int lambda, int t, int p) const
{
    return toRecord(sums.BEd(lambda, t, p));
}

MyComplex LanqorOmegaPrivate::BDc(int lambda, int t, int p) const
{
    return toRecord(sums.BDc(lambda, t, p));
}

MyComplex LanqorOmegaPrivate::Bkq(int lambda, int t, int p) const
{
    const MyComplex electric = BEd(lambda, t, p);
    const MyComplex dynamic = BDc(lambda, t, p);
    return {electric.real + dynamic.real, electric.imag + dynamic.imag};
}

QVector<OmegaResults::Atom> LanqorOmegaPrivate::atomResults() const
{
    QVector<OmegaResults::Atom> atoms;
    for (int j = 2; j <= coordNumber + 1; ++j) {
        OmegaResults::Atom atom;
        atom.number = j;
        atom.position = positions.at(j - 1);
        atom.chargeFactor = chargeFactor.at(j);
        atom.alpha = alpha.at(j);
        atom.rho = sphere->rho(j);
        atom.beta = sphere->beta(j);
        atom.atomicCharge = atomicCharges.value(j);
        atom.superdelocalizability = superDeslocalizability.value(j);
        atoms.append(atom);
    }
    return atoms;
}

QVector<OmegaResults::LatticeTerm> LanqorOmegaPrivate::latticeResults() const
{
    QVector<OmegaResults::LatticeTerm> terms;
    for (const int t : {1, 3, 5, 7}) {
        for (int p = 0; p <= t; ++p) {
            OmegaResults::LatticeTerm term;
            term.t = t;
            term.p = p;
            for (QVector<MyComplex> *values : {&term.harmonics, &term.gamma, &term.GAMMA})
                values->resize(2);
            for (int j = 2; j <= coordNumber + 1; ++j) {
                term.harmonics.append(toRecord(sphere->harmonic(t, p, j)));
                term.gamma.append(gamma(t, p, j));
                term.GAMMA.append(GAMMA(t, p, j));
            }
            term.gammaSum = sumOf(term.gamma);
            term.GAMMASum = sumOf(term.GAMMA);
            terms.append(term);
        }
    }
    return terms;
}

QVector<OmegaResults::Amplitude> LanqorOmegaPrivate::amplitudeResults() const
{
    QVector<OmegaResults::Amplitude> amplitudes;
    for (int lambda = 2; lambda <= 6; lambda += 2) {
        for (int t = lambda - 1; t <= lambda + 1; t += 2) {
            for (int p = 0; p <= t; ++p)
                amplitudes.append(
                    {lambda, t, p, BEd(lambda, t, p), BDc(lambda, t, p), Bkq(lambda, t, p)});
        }
    }
    return amplitudes;
}

QVector<OmegaResults::CrystalFieldParameter> LanqorOmegaPrivate::crystalFieldResults() const
{
    QVector<OmegaResults::CrystalFieldParameter> parameters;
    for (int k = 2; k <= 6; k += 2) {
        for (int q = -k; q <= k; ++q) {
            simpleOverlapModel::Complex sum;
            for (int j = 2; j <= coordNumber + 1; ++j)
                sum += sphere->crystalField(k, q, j, chargeFactor.at(j), crystalFieldOverlap);
            parameters.append({k, q, toRecord(sum)});
        }
    }
    return parameters;
}

AradPartitionResults LanqorOmegaPrivate::partitionResults() const
{
    LanqorInputData *geometry = inputData;
    LanqorAradPartition partition(nullptr, geometry, coordNumber, refractiveIndex);
    partition.setChargeFactorAndAlpha(chargeFactor, alpha);
    const bool isUnusable = !ligandAtoms.isEmpty() && !partition.setLigandsVector(ligandAtoms);
    AradPartitionResults results = partition.getResults();
    if (isUnusable)
        results.groupError = partition.getLastError();
    return results;
}

/// With Q, D, C and the indices there are results only when g and alpha agree with them.
OmegaResults::ChargeFactorSource LanqorOmegaPrivate::chargeFactorSource() const
{
    using Source = OmegaResults::ChargeFactorSource;
    if (hasParametersQDC && hasReactivityIndices())
        return Source::Qdc;
    return isBondEstimate ? Source::BondEstimate : Source::Given;
}

OmegaResults LanqorOmega::getResults() const
{
    OmegaResults results;
    if (!d->isCalculated || !d->agreesWithQDC())
        return results;
    results.isCalculated = true;
    results.geometryFile = d->geometryFile;
    results.omega = d->omega;
    results.omegaED = d->omegaED;
    results.omegaDC = d->omegaDC;
    results.ion = d->positions.first();
    results.atoms = d->atomResults();
    results.chargeFactorSource = d->chargeFactorSource();
    results.qdc = {results.chargeFactorSource == OmegaResults::ChargeFactorSource::Qdc,
                   d->hasReactivityIndices(), d->parameterQ, d->parameterD, d->parameterC};
    results.orbitalEnergyUnit = d->orbitalEnergyUnit;
    results.latticeTerms = d->latticeResults();
    results.amplitudes = d->amplitudeResults();
    results.crystalField = d->crystalFieldResults();
    results.crystalFieldOverlap = d->crystalFieldOverlap;
    results.constants = constants();
    results.refractiveIndex = d->refractiveIndex;
    results.rates = radiativeRates::calcRates(d->omega, d->refractiveIndex);
    results.partition = d->partitionResults();
    results.printingOptions = d->printingOptions;
    results.requiredCitations = d->requiredCitations;
    results.mopacCitation = getMopacCitation();
    return results;
}
