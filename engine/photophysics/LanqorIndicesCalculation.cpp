#include "LanqorIndicesCalculation.h"

#include "input/inputDataAccess_p.h"
#include "photophysics/indicesTable_p.h"
#include "photophysics/reactivityIndices_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace {

bool isHydrogen(const QString &label)
{
    return label == QLatin1String("H") || label == QLatin1String("D") ||
           label == QLatin1String("T");
}

QVector<double> toVector(const std::vector<double> &values)
{
    return QVector<double>(values.begin(), values.end());
}

} // namespace

class LanqorIndicesCalculationPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorIndicesCalculation)

public:
    LanqorIndicesCalculationPrivate(LanqorIndicesCalculation &owner, LanqorInputData *given,
                                    const QString &outputPath, int selector)
        : owner(owner)
        , given(given)
        , outputPath(outputPath)
        , selector(selector)
    {}

    /// Forgets the indices and gives the reader of the output: the one that was given, or a new
    /// one.
    LanqorInputData &restart();
    bool readMopacOutputFile();
    bool readGaussianOutputFile();
    bool finish();

    LanqorIndicesCalculation &owner;
    LanqorInputData *const given;
    std::unique_ptr<LanqorInputData> own;
    QString outputPath;
    int selector;
    bool isGaussian = false; // of the last calculation
    QStringList atomLabels;  // by atom number, entry 0 empty
    QVector<double> atomicCharge;
    QVector<double> superDeslocalizability;
};

LanqorInputData &LanqorIndicesCalculationPrivate::restart()
{
    atomicCharge.clear();
    superDeslocalizability.clear();
    if (given)
        return *given;
    own = std::make_unique<LanqorInputData>(nullptr, outputPath);
    own->setKeepFileOpen(true); // geometry and orbitals
    return *own;
}

bool LanqorIndicesCalculationPrivate::readMopacOutputFile()
{
    LanqorInputData &structure = restart();
    isGaussian = false;
    if (structure.getCoord().isEmpty() && !structure.readMopacOutFile(false))
        return owner.failWith(structure.getLastError());
    atomLabels = QStringList{QString()};
    std::vector<int> functionsOfAtom(1, 0);
    for (const Coord &atom : structure.getCoord()) {
        atomLabels.append(atom.label);
        functionsOfAtom.push_back(isHydrogen(atom.label) ? 1 : atomicOrbitalCount);
    }
    std::vector<OccupiedOrbital> orbitals;
    QString error;
    if (!readMopacOrbitals(inputFileOf(structure), atomLabels.size() - 1, orbitals, error))
        return owner.failWith(error);
    const ReactivityIndices indices = calcMinimalBasisIndices(orbitals, functionsOfAtom);
    atomicCharge = toVector(indices.population);
    superDeslocalizability = toVector(indices.superdelocalizability);
    return true;
}

bool LanqorIndicesCalculationPrivate::readGaussianOutputFile()
{
    const LanqorInputData &output = restart();
    isGaussian = true;
    std::vector<OccupiedOrbital> orbitals;
    QString error;
    if (!readGaussianOrbitals(inputFileOf(output), orbitals, atomLabels, error))
        return owner.failWith(error);
    const ReactivityIndices indices = calcIndicesOfAllFunctions(orbitals, atomLabels.size() - 1);
    atomicCharge = toVector(indices.population);
    superDeslocalizability = toVector(indices.superdelocalizability);
    return true;
}

/// Writes the ".indeces" file. The folder of an output may be read-only: the indices stand.
bool LanqorIndicesCalculationPrivate::finish()
{
    own.reset();
    const QString fileName = owner.getIndicesFileName();
    QString error;
    if (!LanqorOutputFile::write(fileName, owner.getIndicesTable().toUtf8(), error))
        owner.failWith(tr("The file \"%1\" cannot be written: %2").arg(fileName, error));
    owner.emitProgress(tr(" -> (Indices) Reactivity indices were calculated from the file: \n") +
                       outputPath);
    return true;
}

LanqorIndicesCalculation::LanqorIndicesCalculation(QObject *parent, const QString &outputPath,
                                                   const int &selector)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorIndicesCalculationPrivate>(*this, nullptr, outputPath, selector))
{}

LanqorIndicesCalculation::LanqorIndicesCalculation(QObject *parent, LanqorInputData *output,
                                                   const int &selector)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorIndicesCalculationPrivate>(
          *this, output, output ? output->getFileName() : QString(), selector))
{}

LanqorIndicesCalculation::~LanqorIndicesCalculation() = default;

bool LanqorIndicesCalculation::calculateIndices()
{
    if (d->selector == GaussianOutput)
        return calculateIndicesGAUSSIAN();
    return d->readMopacOutputFile() && d->finish();
}

bool LanqorIndicesCalculation::calculateIndicesGAUSSIAN()
{
    return d->readGaussianOutputFile() && d->finish();
}

QVector<double> LanqorIndicesCalculation::getAtomicCharge() const
{
    return d->atomicCharge;
}

QVector<double> LanqorIndicesCalculation::getSuperDeslocalizability() const
{
    return d->superDeslocalizability;
}

double LanqorIndicesCalculation::getAtomicCharge(const int &atom) const
{
    return d->atomicCharge.value(atom);
}

double LanqorIndicesCalculation::getSuperDeslocalizability(const int &atom) const
{
    return d->superDeslocalizability.value(atom);
}

double LanqorIndicesCalculation::getMinimumSuperDeslocalizability() const
{
    const QVector<double> &values = d->superDeslocalizability;
    return values.size() < 3 ? 0.0 : *std::min_element(values.begin() + 2, values.end());
}

IndicesResults LanqorIndicesCalculation::getResults() const
{
    IndicesResults results;
    results.outputPath = d->outputPath;
    results.energyUnit = d->isGaussian ? QStringLiteral("hartree") : QStringLiteral("eV");
    for (int atom = 2; atom < d->atomicCharge.size(); ++atom)
        results.atoms.append({atom, d->atomLabels.value(atom, QStringLiteral("?")),
                              d->atomicCharge.at(atom), d->superDeslocalizability.at(atom)});
    return results;
}

QString LanqorIndicesCalculation::getIndicesTable() const
{
    return indicesTable(getResults());
}

QString LanqorIndicesCalculation::getIndicesFileName() const
{
    const QFileInfo output(d->outputPath);
    return output.dir().filePath(output.completeBaseName() + QStringLiteral(".indeces"));
}
