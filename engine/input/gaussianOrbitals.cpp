#include "input/occupiedOrbitals_p.h"

#include "input/gaussianOrbitalTable_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

using namespace textFields;

namespace {

/// S, PX, PY or PZ behind the number of the shell; -1 for other functions.
int functionNumber(const QString &label)
{
    const auto begin = std::find_if(label.cbegin(), label.cend(), [](QChar c) {
        return c < QLatin1Char('0') || c > QLatin1Char('9');
    });
    const QString name = label.mid(static_cast<int>(begin - label.cbegin()));
    for (int i = 0; i < atomicOrbitalCount; ++i) {
        if (name.compare(QLatin1String(getAtomicOrbital(i)), Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

class GaussianOrbitalReader
{
    Q_DECLARE_TR_FUNCTIONS(LanqorIndicesCalculation)

public:
    GaussianOrbitalReader(const InputFile &file, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements)
        : fileName(file.fileName())
        , lines(file)
        , orbitals(orbitals)
        , elements(elements)
    {}

    QString error;

    bool read();

private:
    void readElectrons();
    bool readTable();
    void keepOrbitals(GaussianOrbitalTable &table);
    bool reportMissingOrbitals();

    QString fileName;
    LineReader lines;
    std::vector<OccupiedOrbital> &orbitals;
    QStringList &elements;

    int alphaElectrons = 0;
    int betaElectrons = 0;
    int unreadableOrbital = 0; // number of the first one
};

bool GaussianOrbitalReader::read()
{
    if (!lines.open()) {
        error = missingFile(fileName);
        return false;
    }
    while (lines.next()) {
        if (contains(lines.line(), "alpha electrons"))
            readElectrons();
        else if (GaussianOrbitalTable::isHeading(lines.line()) && !readTable())
            return false;
    }
    return reportMissingOrbitals();
}

/// "    8 alpha electrons        8 beta electrons"; the last line of this kind counts.
void GaussianOrbitalReader::readElectrons()
{
    Fields fields;
    split(lines.line(), fields);
    alphaElectrons = toInt(fields.front());
    betaElectrons = fields.size() > 3 ? toInt(fields[3]) : -1;
}

bool GaussianOrbitalReader::readTable()
{
    GaussianOrbitalTable table;
    if (!table.read(lines)) {
        lines.next();
        error = tr("The table of molecular orbitals of the Gaussian output \"%1\" cannot be read "
                   "at line %2.")
                    .arg(fileName, QString::number(lines.lineNumber()));
        return false;
    }
    elements = table.elements();
    keepOrbitals(table);
    return true;
}

/// Keeps the s and p functions of the occupied orbitals, up to the first that is missing.
void GaussianOrbitalReader::keepOrbitals(GaussianOrbitalTable &table)
{
    orbitals.clear();
    unreadableOrbital = 0;
    const QVector<MolecularOrbital> printed = table.takeOrbitals();
    std::vector<int> functions;
    for (int i = 0; i < std::min(printed.size(), alphaElectrons); ++i) {
        const MolecularOrbital &orbital = printed.at(i);
        const double energy = table.orbitalEnergies()[static_cast<std::size_t>(i)];
        const bool hasEnergy = !std::isnan(energy);
        if (orbital.coefficients.isEmpty() || !hasEnergy) {
            unreadableOrbital = hasEnergy == orbital.coefficients.isEmpty() ? i + 1 : 0;
            return;
        }
        // All orbitals of a table have the same functions.
        if (functions.empty()) {
            for (const QString &label : orbital.atomicOrbitals)
                functions.push_back(functionNumber(label));
        }
        orbitals.push_back({static_cast<float>(energy), {}});
        for (int row = 0; row < orbital.coefficients.size(); ++row) {
            const int function = functions[static_cast<std::size_t>(row)];
            if (function >= 0) {
                orbitals.back().entries.push_back(
                    {orbital.atomNumbers.at(row), function,
                     static_cast<float>(orbital.coefficients.at(row))});
            }
        }
    }
}

bool GaussianOrbitalReader::reportMissingOrbitals()
{
    if (unreadableOrbital > 0) {
        error =
            tr("The Gaussian output \"%1\" prints orbital %2 with a number that cannot be read.")
                .arg(fileName, QString::number(unreadableOrbital));
    } else if (orbitals.empty()) {
        error = tr("The Gaussian output \"%1\" does not print its occupied molecular orbitals: run "
                   "the calculation with pop=full.")
                    .arg(fileName);
    } else if (alphaElectrons != betaElectrons) {
        error = tr("The Gaussian output \"%1\" is of an open-shell calculation: reactivity indices "
                   "need a closed shell.")
                    .arg(fileName);
    } else if (int(orbitals.size()) < alphaElectrons) {
        error =
            tr("The Gaussian output \"%1\" prints %2 of its %3 occupied orbitals: run the "
               "calculation with pop=full.")
                .arg(fileName, QString::number(orbitals.size()), QString::number(alphaElectrons));
    } else {
        return true;
    }
    return false;
}

} // namespace

bool readGaussianOrbitals(const InputFile &file, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements, QString &error)
{
    GaussianOrbitalReader reader(file, orbitals, elements);
    const bool ok = reader.read();
    error = reader.error;
    return ok;
}
