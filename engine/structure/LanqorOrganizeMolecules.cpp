#include "LanqorOrganizeMolecules.h"

#include "core/reportText_p.h"
#include "input/bondCutOff_p.h"
#include "input/mol2File_p.h"
#include "input/readerLimits_p.h"
#include "input/structureFiles_p.h"
#include "structure/fragments_p.h"
#include "structure/jobFiles_p.h"
#include "structure/structureText_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QFileInfo>
#include <QMap>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

using fragments::Fragment;

/// The structure as read; atoms are counted from 0.
struct LanqorOrganizeMolecules::Source
{
    QVector<Coord> atoms;
    QStringList types;
    QVector<structureFiles::Bond> bonds;
};

namespace {

/// "O 8": element and number, from 1.
QString nameOf(const QVector<Coord> &atoms, int index)
{
    return QStringLiteral("%1 %2").arg(atoms.at(index).label).arg(index + 1);
}

/// Formula of a fragment in the order of Hill: C, H, then the others by symbol.
QString formulaOf(const QVector<Coord> &atoms, const Fragment &fragment)
{
    QMap<QString, int> counts;
    for (const int atom : fragment.atoms)
        ++counts[atoms.at(atom).label];
    QString formula;
    const auto append = [&formula](const QString &symbol, int count) {
        formula += symbol + (count > 1 ? QString::number(count) : QString());
    };
    if (counts.contains(QStringLiteral("C"))) {
        append(QStringLiteral("C"), counts.take(QStringLiteral("C")));
        if (counts.contains(QStringLiteral("H")))
            append(QStringLiteral("H"), counts.take(QStringLiteral("H")));
    }
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        append(count.key(), count.value());
    return formula;
}

/// Formulas of fragments, with a running number where several share one.
QStringList namesOf(const QVector<Coord> &atoms, const QVector<Fragment> &fragments)
{
    QStringList names;
    QMap<QString, int> total;
    for (const Fragment &fragment : fragments) {
        names.append(formulaOf(atoms, fragment));
        ++total[names.last()];
    }
    QMap<QString, int> seen;
    for (QString &name : names) {
        if (total.value(name) > 1)
            name += QStringLiteral("_%1").arg(++seen[name]);
    }
    return names;
}

/// Fragments with a coordinated atom, then those bound by uncounted atoms alone, then the others
/// if they are kept; within each kind in the order of the file.
QVector<Fragment> sorted(const QVector<Fragment> &fragments, bool keepUnbound)
{
    const auto rank = [](const Fragment &fragment) {
        if (!fragment.coordinated.isEmpty())
            return 0;
        return fragment.isBondedToIon ? 1 : 2;
    };
    QVector<Fragment> result;
    std::copy_if(fragments.begin(), fragments.end(), std::back_inserter(result),
                 [&](const Fragment &fragment) { return keepUnbound || rank(fragment) < 2; });
    std::stable_sort(result.begin(), result.end(),
                     [&](const Fragment &a, const Fragment &b) { return rank(a) < rank(b); });
    return result;
}

/// Old number of each new atom: the ion, the coordinated atoms, all others.
QVector<int> orderOf(int ion, const QVector<Fragment> &fragments)
{
    QVector<int> order{ion};
    for (const Fragment &fragment : fragments)
        order += fragment.coordinated;
    for (const Fragment &fragment : fragments) {
        for (const int atom : fragment.atoms) {
            if (!fragment.coordinated.contains(atom))
                order.append(atom);
        }
    }
    return order;
}

bool isDonor(const QVector<Coord> &atoms, int ion, int atom)
{
    return fragments::distance(atoms.at(ion), atoms.at(atom)) < bondCutOff(atoms.at(atom).label);
}

bool isInRange(const Coord &atom)
{
    return std::abs(atom.x) < fragments::largestCoordinate &&
           std::abs(atom.y) < fragments::largestCoordinate &&
           std::abs(atom.z) < fragments::largestCoordinate;
}

} // namespace

LanqorOrganizeMolecules::LanqorOrganizeMolecules(QObject *parent, const QString &fileName)
    : LanqorAbstractObjCalculation(parent)
    , fileName(fileName)
{}

LanqorOrganizeMolecules::~LanqorOrganizeMolecules() = default;

bool LanqorOrganizeMolecules::organize()
{
    Source source;
    int ion = 0;
    if (!readSource(source) || !checkSource(source, ion))
        return false;
    source.bonds = fragments::withMissingBonds(source.atoms, source.bonds);
    reportUncounted(source, ion);
    const QVector<Fragment> around =
        sorted(fragments::fragmentsAround(ion, source.atoms, source.bonds), keepUnboundFragments);

    takeFragments(source, ion, around);
    emitProgress(tr(" -> (Organize Molecules) %1 with %2 coordinated atoms in %3 ligands; %4 of %5 "
                    "atoms are kept.")
                     .arg(atoms.first().label)
                     .arg(coordNumber)
                     .arg(ligands.size())
                     .arg(atoms.size())
                     .arg(source.atoms.size()));
    return true;
}

/// Keeps the structure in its new order.
void LanqorOrganizeMolecules::takeFragments(const Source &source, int ion,
                                            const QVector<Fragment> &around)
{
    const QVector<int> order = orderOf(ion, around);
    QVector<int> newNumber(source.atoms.size(), 0); // from 1; 0 for atoms left out
    for (int i = 0; i < order.size(); ++i)
        newNumber[order.at(i)] = i + 1;
    coordNumber = std::accumulate(around.begin(), around.end(), 0, [](int sum, const Fragment &f) {
        return sum + f.coordinated.size();
    });

    const QStringList names = namesOf(source.atoms, around);
    ligands.clear();
    residues.fill(1, order.size());
    residueNames = QStringList(source.atoms.at(ion).label) + names;
    for (int i = 0; i < around.size(); ++i) {
        const Fragment &fragment = around.at(i);
        for (const int atom : fragment.atoms)
            residues[newNumber.at(atom) - 1] = i + 2;
        QString ligand = names.at(i);
        for (const int atom : fragment.coordinated)
            ligand += QStringLiteral(" %1").arg(newNumber.at(atom));
        if (!fragment.coordinated.isEmpty())
            ligands.append(ligand);
    }
    atoms.clear();
    atomTypes.clear();
    for (const int atom : qAsConst(order)) {
        atoms.append(source.atoms.at(atom));
        atomTypes.append(source.types.value(atom, source.atoms.at(atom).label));
    }
    bonds.clear();
    for (const structureFiles::Bond &bond : qAsConst(source.bonds)) {
        if (newNumber.at(bond.first) > 0 && newNumber.at(bond.second) > 0)
            bonds.append({newNumber.at(bond.first), newNumber.at(bond.second), bond.type});
    }
}

bool LanqorOrganizeMolecules::createOutputFile(const QString &outputFile)
{
    if (atoms.isEmpty())
        return failWith(tr("There is no organised structure to write."));
    const QString suffix = QFileInfo(outputFile).suffix().toLower();
    QString text;
    if (suffix == QLatin1String("mol2"))
        text = mol2Text();
    else if (suffix == QLatin1String("xyz"))
        text = structureText::xyzFile(atoms, QFileInfo(fileName).completeBaseName());
    else if (suffix == QLatin1String("mop"))
        text = jobFiles::mopacJob(atoms, extraMopacKeywords);
    else
        return failWith(tr("An organised structure is written as .mol2, .xyz or .mop, not as: ") +
                        outputFile);
    QString error;
    return reportText::writeFile(outputFile, text, error) ||
           failWith(tr("The file %1 cannot be written: %2").arg(outputFile, error));
}

QString LanqorOrganizeMolecules::getLanthanideLabel() const
{
    return atoms.isEmpty() ? QString() : atoms.first().label;
}

bool LanqorOrganizeMolecules::readSource(Source &source)
{
    if (structureFiles::kindOf(fileName) == structureFiles::Kind::Mol2)
        return readMol2(source);
    LanqorInputData data(nullptr, fileName);
    if (!data.readStructureFile())
        return failWith(data.getLastError());
    source.atoms = data.getCoord();
    return true;
}

bool LanqorOrganizeMolecules::readMol2(Source &source)
{
    structureFiles::Mol2Reader reader(fileName);
    if (!reader.open())
        return failWith(missingFile(fileName));
    structureFiles::Mol2Molecule molecule;
    while (reader.next(molecule)) {
        if (!molecule.error.isEmpty() || !molecule.bondError.isEmpty())
            return failWith(molecule.error.isEmpty() ? molecule.bondError : molecule.error);
        const int offset = source.atoms.size();
        if (offset + molecule.atoms.size() > maximumAtoms)
            return failWith(tr("There are more than %1 atoms in the file: \n").arg(maximumAtoms) +
                            fileName);
        source.atoms += molecule.atoms;
        source.types += molecule.atomTypes;
        for (const structureFiles::Bond &bond : qAsConst(molecule.bonds))
            source.bonds.append({offset + bond.first, offset + bond.second, bond.type});
    }
    return true;
}

/// Finds the ion of a structure that can be organised.
bool LanqorOrganizeMolecules::checkSource(const Source &source, int &ion)
{
    QVector<int> ions;
    for (int i = 0; i < source.atoms.size(); ++i) {
        if (LanqorInputData::isLanthanide(source.atoms.at(i).label))
            ions.append(i);
        if (!isInRange(source.atoms.at(i)))
            return failWith(tr("Atom %1 lies too far away to belong to a structure: \n")
                                .arg(nameOf(source.atoms, i)) +
                            fileName);
    }
    if (ions.isEmpty())
        return failWith(tr("There is no lanthanide ion (La to Lu) among the %1 atoms of: \n")
                            .arg(source.atoms.size()) +
                        fileName);
    if (ions.size() > 1)
        return failWith(
            tr("There is more than one lanthanide ion (%1 and %2); a structure must "
               "have one: \n")
                .arg(nameOf(source.atoms, ions.at(0)), nameOf(source.atoms, ions.at(1))) +
            fileName);
    if (const auto pair = fragments::overlappingAtoms(source.atoms))
        return failWith(
            tr("Atoms %1 and %2 are the same atom twice, or two places of a disordered "
               "one (%3 Angstrom apart); keep one of them: \n")
                .arg(nameOf(source.atoms, pair->first), nameOf(source.atoms, pair->second))
                .arg(fragments::distance(source.atoms.at(pair->first),
                                         source.atoms.at(pair->second)),
                     0, 'f', 3) +
            fileName);
    ion = ions.first();
    return true;
}

bool LanqorOrganizeMolecules::isNextToDonor(const Source &source, int ion, int atom)
{
    return std::any_of(source.bonds.begin(), source.bonds.end(), [&](const auto &bond) {
        return bond.first != ion && bond.second != ion &&
               ((bond.first == atom && isDonor(source.atoms, ion, bond.second)) ||
                (bond.second == atom && isDonor(source.atoms, ion, bond.first)));
    });
}

/// Tells of atoms that are bonded to the ion without being counted as coordinated: elements
/// without a cut-off (F, Br, C) and atoms beyond it. The middle atom of a chelate, as N of a
/// nitrate, is only near to the ion and not worth a word unless the file bonds it.
void LanqorOrganizeMolecules::reportUncounted(const Source &source, int ion)
{
    for (const structureFiles::Bond &bond : source.bonds) {
        if (bond.first != ion && bond.second != ion)
            continue;
        const int other = bond.first == ion ? bond.second : bond.first;
        const double r = fragments::distance(source.atoms.at(ion), source.atoms.at(other));
        const bool isNearOnly =
            bond.type == QLatin1String(fragments::guessedType) && isNextToDonor(source, ion, other);
        if (!isNearOnly && !isDonor(source.atoms, ion, other))
            emitProgress(tr(" -> (Organize Molecules) Atom %1 is bonded to the ion at %2 Angstrom "
                            "but not counted as coordinated.")
                             .arg(nameOf(source.atoms, other))
                             .arg(r, 0, 'f', 3));
    }
}

QString LanqorOrganizeMolecules::mol2Text() const
{
    using reportText::fixed;
    QString text = QStringLiteral("@<TRIPOS>MOLECULE\n") + QFileInfo(fileName).completeBaseName() +
                   QStringLiteral("\n%1 %2 %3 0 0\nSMALL\nNO_CHARGES\n\n@<TRIPOS>ATOM\n")
                       .arg(atoms.size())
                       .arg(bonds.size())
                       .arg(residueNames.size());
    for (int i = 0; i < atoms.size(); ++i) {
        const Coord &atom = atoms.at(i);
        const QString number = QString::number(i + 1);
        const int residue = residues.at(i);
        text += number.rightJustified(7) + QLatin1Char(' ') +
                (atom.label + number).leftJustified(8) + fixed(atom.x, 6, 13) +
                fixed(atom.y, 6, 13) + fixed(atom.z, 6, 13) + QLatin1Char(' ') +
                atomTypes.at(i).leftJustified(6) + QString::number(residue).rightJustified(4) +
                QLatin1Char(' ') + residueNames.at(residue - 1) + QStringLiteral(" 0.0000\n");
    }
    text += QStringLiteral("@<TRIPOS>BOND\n");
    for (int i = 0; i < bonds.size(); ++i)
        text += QStringLiteral("%1%2%3 %4\n")
                    .arg(i + 1, 6)
                    .arg(bonds.at(i).first, 6)
                    .arg(bonds.at(i).second, 6)
                    .arg(bonds.at(i).type);
    return text;
}
