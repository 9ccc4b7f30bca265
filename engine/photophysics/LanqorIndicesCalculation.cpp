#include "LanqorIndicesCalculation.h"

#include "core/reportText_p.h"
#include "photophysics/occupiedOrbitals_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QDir>
#include <QFileInfo>

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

LanqorIndicesCalculation::LanqorIndicesCalculation(QObject *parent, const QString &outputPath,
                                                   const int &selector)
    : LanqorAbstractObjCalculation(parent)
    , outputPath(outputPath)
    , selector(selector)
{}

LanqorIndicesCalculation::~LanqorIndicesCalculation() = default;

bool LanqorIndicesCalculation::calculateIndices()
{
    if (selector == GaussianOutput)
        return calculateIndicesGAUSSIAN();
    atomicCharge.clear();
    superDeslocalizability.clear();
    return readMopacOutputFile() && finish();
}

/// Fills labels and indices.
bool LanqorIndicesCalculation::readMopacOutputFile()
{
    LanqorInputData structure(nullptr, outputPath);
    if (!structure.readMopacOutFile(false))
        return failWith(structure.getLastError());
    atomLabels = QStringList{QString()};
    std::vector<int> functionsOfAtom(1, 0);
    for (const Coord &atom : structure.getCoord()) {
        atomLabels.append(atom.label);
        functionsOfAtom.push_back(isHydrogen(atom.label) ? 1 : atomicOrbitalCount);
    }
    std::vector<OccupiedOrbital> orbitals;
    QString error;
    if (!readMopacOrbitals(outputPath, atomLabels.size() - 1, orbitals, error))
        return failWith(error);
    const ReactivityIndices indices = calcMinimalBasisIndices(orbitals, functionsOfAtom);
    atomicCharge = toVector(indices.population);
    superDeslocalizability = toVector(indices.superdelocalizability);
    return true;
}

bool LanqorIndicesCalculation::calculateIndicesGAUSSIAN()
{
    atomicCharge.clear();
    superDeslocalizability.clear();
    std::vector<OccupiedOrbital> orbitals;
    QString error;
    if (!readGaussianOrbitals(outputPath, orbitals, atomLabels, error))
        return failWith(error);
    const ReactivityIndices indices = calcIndicesOfAllFunctions(orbitals, atomLabels.size() - 1);
    atomicCharge = toVector(indices.population);
    superDeslocalizability = toVector(indices.superdelocalizability);
    return finish();
}

/// Writes the ".indeces" file. The folder of an output may be read-only: the indices stand.
bool LanqorIndicesCalculation::finish()
{
    QString error;
    if (!reportText::writeFile(getIndicesFileName(), getIndicesTable(), error))
        failWith(tr("The file \"%1\" cannot be written: %2").arg(getIndicesFileName(), error));
    emitProgress(tr(" -> (Indices) Reactivity indices were calculated from the file: \n") +
                 outputPath);
    return true;
}

double LanqorIndicesCalculation::getMinimumSuperDeslocalizability() const
{
    if (superDeslocalizability.size() < 3)
        return 0.0;
    return *std::min_element(superDeslocalizability.begin() + 2, superDeslocalizability.end());
}

QString LanqorIndicesCalculation::getIndicesTable() const
{
    QString text = QLatin1String(reportText::indicesHeading);
    for (int atom = 2; atom < atomicCharge.size(); ++atom) {
        text += QString::number(atom).rightJustified(5) + QLatin1Char(' ') +
                atomLabels.value(atom, QStringLiteral("?")).leftJustified(3) +
                reportText::fixed(atomicCharge.at(atom), 6, 16) +
                reportText::fixed(superDeslocalizability.at(atom), 6, 20) + QLatin1Char('\n');
    }
    return text;
}

QString LanqorIndicesCalculation::getIndicesFileName() const
{
    const QFileInfo output(outputPath);
    return output.dir().filePath(output.completeBaseName() + QStringLiteral(".indeces"));
}
