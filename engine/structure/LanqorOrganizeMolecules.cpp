#include "LanqorOrganizeMolecules.h"

#include "core/elements_p.h"
#include "core/reportText_p.h"
#include "input/atomRows_p.h"
#include "input/bondCutOff_p.h"
#include "input/disorder_p.h"
#include "input/inputDataAccess_p.h"
#include "input/mol2File_p.h"
#include "input/readerLimits_p.h"
#include "input/structureFiles_p.h"
#include "structure/fragments_p.h"
#include "structure/jobFiles_p.h"
#include "structure/knownFragments_p.h"
#include "structure/structureText_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <QFileInfo>
#include <QMap>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

using fragments::Fragment;

namespace {

/// The structure as read; atoms are counted from 0.
struct Source
{
    QVector<Coord> atoms;
    QVector<int> numbers; // in the file, from 1; empty while they are those of this list
    QStringList types;
    QVector<structureFiles::Bond> bonds;
    QVector<Coord> translationVectors; // of a periodic structure
};

/// A bond of the organised structure, atoms from 1.
struct NewBond
{
    int first = 0;
    int second = 0;
    QString type;
};

/// "O 8": element and number in the file, from 1.
QString nameOf(const Source &source, int index)
{
    return source.atoms.at(index).label + QLatin1Char(' ') +
           QString::number(source.numbers.value(index, index + 1));
}

/// The structure without some of its atoms.
Source without(const Source &source, const QVector<fragments::SecondPlace> &omitted)
{
    QVector<int> newIndex(source.atoms.size(), 0);
    for (const fragments::SecondPlace &place : omitted)
        newIndex[place.atom] = -1;
    Source rest;
    rest.translationVectors = source.translationVectors;
    for (int i = 0; i < source.atoms.size(); ++i) {
        if (newIndex.at(i) < 0)
            continue;
        newIndex[i] = rest.atoms.size();
        rest.atoms.append(source.atoms.at(i));
        rest.numbers.append(i + 1);
        rest.types.append(source.types.value(i, source.atoms.at(i).label));
    }
    for (const structureFiles::Bond &bond : source.bonds)
        if (newIndex.at(bond.first) >= 0 && newIndex.at(bond.second) >= 0)
            rest.bonds.append({newIndex.at(bond.first), newIndex.at(bond.second), bond.type});
    return rest;
}

QString formulaOf(const QVector<Coord> &atoms, const Fragment &fragment)
{
    QMap<QString, int> counts;
    for (const int atom : fragment.atoms)
        ++counts[atoms.at(atom).label];
    return hillFormula(counts);
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

bool isNextToDonor(const Source &source, int ion, int atom)
{
    return std::any_of(source.bonds.begin(), source.bonds.end(), [&](const auto &bond) {
        return bond.first != ion && bond.second != ion &&
               ((bond.first == atom && isDonor(source.atoms, ion, bond.second)) ||
                (bond.second == atom && isDonor(source.atoms, ion, bond.first)));
    });
}

} // namespace

class LanqorOrganizeMoleculesPrivate
{
public:
    LanqorOrganizeMoleculesPrivate(LanqorOrganizeMolecules &owner, LanqorInputData *structure,
                                   const QString &fileName)
        : q(owner)
        , given(structure)
        , fileName(fileName)
    {}

    static QString tr(const char *text) { return LanqorOrganizeMolecules::tr(text); }
    bool readSource(Source &source);
    bool readMol2(const InputFile &file, Source &source);
    bool checkSource(const Source &source, int &ion);
    void omitSecondPlaces(Source &source);
    void takeOmitted(const Source &source, const QVector<Fragment> &all);
    void takeCharges(const Source &source, const QVector<Fragment> &kept);
    void takeFragments(const Source &source, int ion, const QVector<Fragment> &around);
    void reportTooNear(const Source &source, int ion);
    void reportUncounted(const Source &source, int ion);
    bool countNearest(const Source &source, int ion, QVector<Fragment> &around);
    QString mol2Text() const;

    LanqorOrganizeMolecules &q;
    LanqorInputData *given; // null: the file is read apart
    QString fileName;
    jobFiles::MopacJob mopacJob;
    bool keepUnboundFragments = true;
    int givenCoordNumber = 0; // 0: by distances
    int coordNumber = 0;
    QVector<OrganizedLigand> ligands;
    QVector<OmittedFragment> omittedFragments;
    bool isChargeKnown = false; // of all atoms that are kept
    int charge = 0;
    QStringList fragmentCharges;
    QVector<Coord> atoms;
    QVector<int> sourceAtoms; // number of each atom in the structure that was read, from 1
    QStringList atomTypes;    // of MOL2, one an atom
    QVector<int> residues;    // number of the fragment of each atom; 1 is the ion
    QStringList residueNames; // by number of the fragment
    QVector<NewBond> bonds;
    QVector<Coord> translationVectors;
};

bool LanqorOrganizeMoleculesPrivate::readSource(Source &source)
{
    LanqorInputData own(nullptr, fileName);
    LanqorInputData &data = given ? *given : own;
    own.setKeepFileOpen(true);
    if (structureFiles::kindOf(inputFileOf(data)) == structureFiles::Kind::Mol2)
        return readMol2(inputFileOf(data), source);
    if (data.getCoord().isEmpty() && !data.readStructureFile(true))
        return q.failWith(data.getLastError());
    const QVector<Coord> rows = data.getCoord();
    const auto isVector = [](const Coord &row) {
        return structureFiles::isTranslationVector(row.label);
    };
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(source.translationVectors), isVector);
    std::remove_copy_if(rows.begin(), rows.end(), std::back_inserter(source.atoms), isVector);
    return true;
}

bool LanqorOrganizeMoleculesPrivate::readMol2(const InputFile &file, Source &source)
{
    structureFiles::Mol2Reader reader(file);
    if (!reader.open())
        return q.failWith(missingFile(fileName));
    structureFiles::Mol2Molecule molecule;
    while (reader.next(molecule)) {
        if (!molecule.error.isEmpty() || !molecule.bondError.isEmpty())
            return q.failWith(molecule.error.isEmpty() ? molecule.bondError : molecule.error);
        const int offset = source.atoms.size();
        if (offset + molecule.atoms.size() > maximumAtoms)
            return q.failWith(tr("There are more than %1 atoms in the file: \n").arg(maximumAtoms) +
                              fileName);
        source.atoms += molecule.atoms;
        source.types += molecule.atomTypes;
        for (const structureFiles::Bond &bond : qAsConst(molecule.bonds))
            source.bonds.append({offset + bond.first, offset + bond.second, bond.type});
    }
    return true;
}

/// Finds the ion of a structure that can be organised.
bool LanqorOrganizeMoleculesPrivate::checkSource(const Source &source, int &ion)
{
    QVector<int> ions;
    for (int i = 0; i < source.atoms.size(); ++i) {
        if (LanqorInputData::isLanthanide(source.atoms.at(i).label))
            ions.append(i);
        if (!isInRange(source.atoms.at(i)))
            return q.failWith(tr("Atom %1 lies too far away to belong to a structure: \n")
                                  .arg(nameOf(source, i)) +
                              fileName);
    }
    if (ions.isEmpty())
        return q.failWith(tr("There is no lanthanide ion (La to Lu) among the %1 atoms of: \n")
                              .arg(source.atoms.size()) +
                          fileName);
    if (ions.size() > 1)
        return q.failWith(tr("There is more than one lanthanide ion (%1 and %2); a structure must "
                             "have one: \n")
                              .arg(nameOf(source, ions.at(0)), nameOf(source, ions.at(1))) +
                          fileName);
    if (const auto pair = fragments::overlappingAtoms(source.atoms))
        return q.failWith(
            tr("Atoms %1 and %2 are nearer to each other than any bond is long (%3 Angstrom); "
               "keep one of them: \n")
                .arg(nameOf(source, pair->first), nameOf(source, pair->second),
                     reportText::fixed(fragments::distance(source.atoms.at(pair->first),
                                                           source.atoms.at(pair->second)),
                                       3)) +
            fileName);
    ion = ions.first();
    return true;
}

/// Keeps the first place of each disordered atom and tells of the others.
void LanqorOrganizeMoleculesPrivate::omitSecondPlaces(Source &source)
{
    const QVector<fragments::SecondPlace> places =
        fragments::secondPlaces(source.atoms, source.bonds);
    if (places.isEmpty())
        return;
    constexpr int mostNames = 20; // of a message that is still read
    QStringList names;
    for (const fragments::SecondPlace &place : places.mid(0, mostNames)) {
        QString name = nameOf(source, place.atom);
        if (place.kept != place.atom)
            name += tr(" (%1 Angstrom from %2)")
                        .arg(reportText::fixed(fragments::distance(source.atoms.at(place.atom),
                                                                   source.atoms.at(place.kept)),
                                               3),
                             nameOf(source, place.kept));
        names.append(name);
    }
    if (places.size() > mostNames)
        names.append(tr("%1 more").arg(places.size() - mostNames));
    q.processStatus(tr("%1: of disordered atoms the first place in the file is kept. Left out are "
                       "%2. Check that the places which are kept belong together.")
                        .arg(fileName, names.join(QStringLiteral(", "))));
    source = without(source, places);
}

/// Keeps what is told of the fragments that are left out.
void LanqorOrganizeMoleculesPrivate::takeOmitted(const Source &source, const QVector<Fragment> &all)
{
    omittedFragments.clear();
    for (const Fragment &fragment : all) {
        if (keepUnboundFragments || fragment.isBondedToIon || !fragment.coordinated.isEmpty())
            continue;
        const auto known = knownFragments::find(source.atoms, fragment, source.bonds);
        const OmittedFragment omitted{formulaOf(source.atoms, fragment), 1, known.has_value(),
                                      known ? known->charge : 0};
        const auto same = std::find_if(omittedFragments.begin(), omittedFragments.end(),
                                       [&](const OmittedFragment &other) {
                                           return other.formula == omitted.formula &&
                                                  other.isChargeKnown == omitted.isChargeKnown &&
                                                  other.charge == omitted.charge;
                                       });
        if (same == omittedFragments.end())
            omittedFragments.append(omitted);
        else
            ++same->count;
    }
}

/// Adds up the charges of the ion (3+) and of the fragments that are kept.
void LanqorOrganizeMoleculesPrivate::takeCharges(const Source &source,
                                                 const QVector<Fragment> &kept)
{
    charge = 3;
    isChargeKnown = true;
    QMap<QString, int> counts;
    for (const Fragment &fragment : kept) {
        const auto known = knownFragments::find(source.atoms, fragment, source.bonds);
        isChargeKnown = isChargeKnown && known.has_value();
        charge += known ? known->charge : 0;
        ++counts[known ? QStringLiteral("%1 (%2)").arg(known->name, QString::number(known->charge))
                       : formulaOf(source.atoms, fragment) + QStringLiteral(" (?)")];
    }
    fragmentCharges.clear();
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        fragmentCharges.append(count.value() > 1
                                   ? QString::number(count.value()) + QLatin1Char(' ') + count.key()
                                   : count.key());
}

/// Tells of atoms that are nearer to the ion than any bond is long.
void LanqorOrganizeMoleculesPrivate::reportTooNear(const Source &source, int ion)
{
    for (const auto &pair : disorder::pairs(source.atoms)) {
        if (pair.first != ion && pair.second != ion)
            continue;
        const int other = pair.first == ion ? pair.second : pair.first;
        q.processStatus(
            tr("%1: atom %2 lies %3 Angstrom from the ion, nearer than any bond is long; check the "
               "structure.")
                .arg(fileName, nameOf(source, other),
                     reportText::fixed(
                         fragments::distance(source.atoms.at(ion), source.atoms.at(other)), 3)));
    }
}

/// Tells of atoms that are bonded to the ion without being counted as coordinated: elements
/// without a cut-off (F, Br, C) and atoms beyond it. The middle atom of a chelate, as N of a
/// nitrate, is only near to the ion and not worth a word unless the file bonds it.
void LanqorOrganizeMoleculesPrivate::reportUncounted(const Source &source, int ion)
{
    for (const structureFiles::Bond &bond : source.bonds) {
        if (bond.first != ion && bond.second != ion)
            continue;
        const int other = bond.first == ion ? bond.second : bond.first;
        const double r = fragments::distance(source.atoms.at(ion), source.atoms.at(other));
        const bool isNearOnly =
            bond.type == QLatin1String(fragments::guessedType) && isNextToDonor(source, ion, other);
        if (!isNearOnly && !isDonor(source.atoms, ion, other))
            q.emitProgress(
                tr(" -> (Organize Molecules) Atom %1 is bonded to the ion at %2 Angstrom "
                   "but not counted as coordinated.")
                    .arg(nameOf(source, other), reportText::fixed(r, 3)));
    }
}

/// Makes the nearest atoms the coordinated ones, as many as were given.
bool LanqorOrganizeMoleculesPrivate::countNearest(const Source &source, int ion,
                                                  QVector<Fragment> &around)
{
    constexpr double farthest = 3.5; // Angstrom; the longest bonds, to S, Br and I, are below 3.3
    static const QStringList donors = {
        QStringLiteral("N"),  QStringLiteral("O"),  QStringLiteral("F"),  QStringLiteral("P"),
        QStringLiteral("S"),  QStringLiteral("Cl"), QStringLiteral("As"), QStringLiteral("Se"),
        QStringLiteral("Br"), QStringLiteral("I")};
    const auto distanceOf = [&](int atom) {
        return fragments::distance(source.atoms.at(ion), source.atoms.at(atom));
    };
    QVector<int> nearest;
    for (int atom = 0; atom < source.atoms.size(); ++atom)
        if (atom != ion && donors.contains(source.atoms.at(atom).label) &&
            distanceOf(atom) < farthest)
            nearest.append(atom);
    if (nearest.size() < givenCoordNumber)
        return q.failWith(
            tr("%1: %2 coordinated atoms are asked for, but only %3 atoms that can bind lie within "
               "%4 Angstrom of the ion.")
                .arg(fileName, QString::number(givenCoordNumber), QString::number(nearest.size()),
                     QString::number(farthest)));
    std::stable_sort(nearest.begin(), nearest.end(),
                     [&](int a, int b) { return distanceOf(a) < distanceOf(b); });
    nearest.resize(givenCoordNumber);
    for (Fragment &fragment : around) {
        fragment.coordinated.clear();
        std::copy_if(fragment.atoms.begin(), fragment.atoms.end(),
                     std::back_inserter(fragment.coordinated),
                     [&](int atom) { return nearest.contains(atom); });
    }
    return true;
}

/// Keeps the structure in its new order.
void LanqorOrganizeMoleculesPrivate::takeFragments(const Source &source, int ion,
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
        OrganizedLigand ligand{names.at(i), {}};
        for (const int atom : fragment.coordinated)
            ligand.coordinatedAtoms.append(newNumber.at(atom));
        if (!fragment.coordinated.isEmpty())
            ligands.append(ligand);
    }
    atoms.clear();
    sourceAtoms.clear();
    atomTypes.clear();
    for (const int atom : qAsConst(order)) {
        sourceAtoms.append(source.numbers.value(atom, atom + 1));
        atoms.append(source.atoms.at(atom));
        atomTypes.append(source.types.value(atom, source.atoms.at(atom).label));
    }
    bonds.clear();
    for (const structureFiles::Bond &bond : qAsConst(source.bonds)) {
        if (newNumber.at(bond.first) > 0 && newNumber.at(bond.second) > 0)
            bonds.append({newNumber.at(bond.first), newNumber.at(bond.second), bond.type});
    }
}

QString LanqorOrganizeMoleculesPrivate::mol2Text() const
{
    using reportText::fixed;
    QString text = QStringLiteral("@<TRIPOS>MOLECULE\n") + QFileInfo(fileName).completeBaseName() +
                   QStringLiteral("\n%1 %2 %3 0 0\nSMALL\nNO_CHARGES\n\n@<TRIPOS>ATOM\n")
                       .arg(QString::number(atoms.size()), QString::number(bonds.size()),
                            QString::number(residueNames.size()));
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
                    .arg(QString::number(i + 1).rightJustified(6),
                         QString::number(bonds.at(i).first).rightJustified(6),
                         QString::number(bonds.at(i).second).rightJustified(6), bonds.at(i).type);
    return text;
}

LanqorOrganizeMolecules::LanqorOrganizeMolecules(QObject *parent, const QString &fileName)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorOrganizeMoleculesPrivate>(*this, nullptr, fileName))
{}

LanqorOrganizeMolecules::LanqorOrganizeMolecules(QObject *parent, LanqorInputData *structure)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorOrganizeMoleculesPrivate>(
          *this, structure, structure ? structure->getFileName() : QString()))
{}

LanqorOrganizeMolecules::~LanqorOrganizeMolecules() = default;

void LanqorOrganizeMolecules::setKeepUnboundFragments(const bool &keep)
{
    d->keepUnboundFragments = keep;
}

void LanqorOrganizeMolecules::setExtraMopacKeywords(const QString &keywords)
{
    d->mopacJob.extraKeywords = keywords;
}

void LanqorOrganizeMolecules::setMopacMethod(const QString &method)
{
    d->mopacJob.method = method;
}

void LanqorOrganizeMolecules::setMopacJobForQdcFit(const bool &isForQdcFit)
{
    d->mopacJob.isForQdcFit = isForQdcFit;
}

void LanqorOrganizeMolecules::setSolvent(const QString &name)
{
    d->mopacJob.solvent = name;
}

void LanqorOrganizeMolecules::setCoordinationNumber(const int &number)
{
    d->givenCoordNumber = std::max(number, 0);
}

bool LanqorOrganizeMolecules::organize()
{
    Source source;
    int ion = 0;
    if (!d->readSource(source))
        return false;
    const int atomsInFile = source.atoms.size();
    d->omitSecondPlaces(source);
    if (!d->checkSource(source, ion))
        return false;
    source.bonds = fragments::withMissingBonds(source.atoms, source.bonds);
    if (!source.translationVectors.isEmpty())
        processStatus(tr("%1 is a periodic structure (translation vectors Tv), of which the atoms "
                         "of one cell are organised: bonds across its faces are not seen, and only "
                         "a .mop file keeps the vectors.")
                          .arg(d->fileName));
    d->translationVectors = source.translationVectors;
    d->reportTooNear(source, ion);
    QVector<Fragment> all = fragments::fragmentsAround(ion, source.atoms, source.bonds);
    if (d->givenCoordNumber == 0)
        d->reportUncounted(source, ion);
    else if (!d->countNearest(source, ion, all))
        return false;
    d->takeOmitted(source, all);
    const QVector<Fragment> kept = sorted(all, d->keepUnboundFragments);
    d->takeCharges(source, kept);
    d->takeFragments(source, ion, kept);
    emitProgress(tr(" -> (Organize Molecules) %1 with %2 coordinated atoms in %3 ligands; %4 of %5 "
                    "atoms are kept.")
                     .arg(d->atoms.first().label, QString::number(d->coordNumber),
                          QString::number(d->ligands.size()), QString::number(d->atoms.size()),
                          QString::number(atomsInFile)));
    return true;
}

bool LanqorOrganizeMolecules::createOutpuFile(const QString &outputFile)
{
    if (d->atoms.isEmpty())
        return failWith(tr("There is no organised structure to write."));
    const QString suffix = QFileInfo(outputFile).suffix().toLower();
    const QString faultOfSolvent = suffix == QLatin1String("mop")
                                       ? jobFiles::faultOfSolvent(d->atoms, d->mopacJob)
                                       : QString();
    if (!faultOfSolvent.isEmpty())
        return failWith(faultOfSolvent);
    QString text;
    if (suffix == QLatin1String("mol2"))
        text = d->mol2Text();
    else if (suffix == QLatin1String("xyz"))
        text = structureText::xyzFile(d->atoms, QFileInfo(d->fileName).completeBaseName());
    else if (suffix == QLatin1String("mop") &&
             !jobFiles::mopacMethods().contains(d->mopacJob.method))
        return failWith(jobFiles::unknownMethod(d->mopacJob.method));
    else if (suffix == QLatin1String("mop"))
        text = jobFiles::mopacJob(d->atoms + d->translationVectors, d->mopacJob);
    else
        return failWith(tr("An organised structure is written as .mol2, .xyz or .mop, not as: ") +
                        outputFile);
    QString error;
    return LanqorOutputFile::write(outputFile, text.toUtf8(), error) ||
           failWith(tr("The file %1 cannot be written: %2").arg(outputFile, error));
}

bool LanqorOrganizeMolecules::createOutputFile(const QString &outputFile)
{
    return createOutpuFile(outputFile);
}

QString LanqorOrganizeMolecules::getLanthanideLabel() const
{
    return d->atoms.isEmpty() ? QString() : d->atoms.first().label;
}

int LanqorOrganizeMolecules::getCoordNumber() const
{
    return d->coordNumber;
}

QStringList LanqorOrganizeMolecules::getLigands() const
{
    QStringList texts;
    for (const OrganizedLigand &ligand : qAsConst(d->ligands)) {
        QString text = ligand.name;
        for (const int atom : ligand.coordinatedAtoms)
            text += QStringLiteral(" %1").arg(atom);
        texts.append(text);
    }
    return texts;
}

QVector<Coord> LanqorOrganizeMolecules::getCoord() const
{
    return d->atoms;
}

OrganizeResults LanqorOrganizeMolecules::getResults() const
{
    OrganizeResults results;
    results.ion = getLanthanideLabel();
    results.coordNumber = d->coordNumber;
    for (int i = 0; i < d->atoms.size(); ++i) {
        const bool isCoordinated = i >= 1 && i <= d->coordNumber;
        results.atoms.append({d->atoms.at(i), d->sourceAtoms.at(i),
                              d->residueNames.at(d->residues.at(i) - 1), isCoordinated});
    }
    results.ligands = d->ligands;
    results.omittedFragments = d->omittedFragments;
    results.isChargeKnown = d->isChargeKnown && !d->atoms.isEmpty();
    results.charge = d->charge;
    results.fragmentCharges = d->fragmentCharges;
    return results;
}
