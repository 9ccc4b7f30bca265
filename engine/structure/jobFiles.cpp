#include "structure/jobFiles_p.h"

#include "core/elements_p.h"
#include "core/reportText_p.h"
#include "structure/structureText_p.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorSolvents.h>

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <iterator>

using reportText::fixed;
using structureText::atomRow;

namespace jobFiles {

namespace {

constexpr int closedShell = 1; // multiplicity
/// Orbitals on either side of the gap that take part in the excitations of a ZINDO job, and states
/// of each multiplicity that it prints; chosen to reach the lowest states of common ligands.
constexpr int windowWidth = 30;
constexpr int zindoStates = 25;

QStringList elementsOf(const QVector<Coord> &atoms)
{
    QStringList elements;
    for (const Coord &atom : atoms) {
        if (!elements.contains(atom.label))
            elements.append(atom.label);
    }
    return elements;
}

/// Electrons that an atom brings into a neutral system, of a 3+ lanthanide those beyond its core;
/// empty for an unknown element.
std::optional<int> electronsOf(const QString &label)
{
    // Beside the elements: isotopes of hydrogen; MOPAC's capped bond and charges without a basis,
    // which count like the atom in whose place they stand; what is no atom.
    static const QHash<QString, int> others = {
        {QStringLiteral("D"), 1},   {QStringLiteral("T"), 1},   {QStringLiteral("Cb"), 1},
        {QStringLiteral("+"), 1},   {QStringLiteral("-"), -1},  {QStringLiteral("++"), 2},
        {QStringLiteral("--"), -2}, {QStringLiteral("Hg"), 80}, {QStringLiteral("X"), 0},
        {QStringLiteral("XX"), 0},  {QStringLiteral("Tv"), 0}};
    if (LanqorInputData::isLanthanide(label))
        return ionCharge;
    const int number = atomicNumberOf(label);
    const auto other = others.constFind(label);
    if (number == 0 && other == others.cend())
        return std::nullopt;
    return number > 0 ? number : *other;
}

/// Valence basis functions of an element in INDO/S: s for H and He, s and p for main groups, s,
/// p and d for transition metals up to the second row; 0 for all others.
int zindoFunctions(int atomicNumber)
{
    if (atomicNumber < 1 || atomicNumber > 54)
        return 0;
    if (atomicNumber <= 2)
        return 1;
    const bool isTransitionMetal =
        (atomicNumber >= 21 && atomicNumber <= 30) || (atomicNumber >= 39 && atomicNumber <= 48);
    return isTransitionMetal ? 9 : 4;
}

int atomsOfFunctions(const QVector<Coord> &atoms, int functions)
{
    return static_cast<int>(
        std::count_if(atoms.begin(), atoms.end(), [functions](const Coord &atom) {
            return zindoFunctions(atomicNumberOf(atom.label)) == functions;
        }));
}

/// Generators of configurations: the ground state, and all single excitations within the
/// window. One block for each multiplicity; its first line holds the number of generators, the
/// multiplicity and the number of states; the source of the other numbers is not known.
QString zindoExcitations(const ActiveWindow &window, int stateMultiplicity)
{
    return QStringLiteral("%1%2%3    1    0    0    0    1   10    1   10\n"
                          "  -60000.0 0.0000000\n"
                          "%4%5%5\n"
                          "%6%7%5%8%9\n\n")
        .arg(2, 5)
        .arg(stateMultiplicity, 5)
        .arg(zindoStates, 5)
        .arg(1, 5)
        .arg(window.lastOccupied, 5)
        .arg(21, 5)
        .arg(window.firstOccupied, 5)
        .arg(window.firstEmpty, 5)
        .arg(window.lastEmpty, 5);
}

/// INTFA holds the factors of the overlaps in INDO/S, 1.2675 for sigma and 0.585 for pi (J. Ridley,
/// M. Zerner, Theor. Chim. Acta 32, 111, 1973).
QString zindoControl(const QVector<Coord> &ligands, int pointCharges, int filledLevels,
                     const ActiveWindow &window)
{
    const int occupied = window.lastOccupied - window.firstOccupied + 1;
    const int empty = window.lastEmpty - window.firstEmpty + 1;
    const int determinants = 2 * occupied * empty + 1;
    return QStringLiteral(" $CONTRL\n"
                          " SCFTYP=RHF RUNTYP=CI ENTTYP=COORD UNITS=ANGS\n"
                          " DYNAL(1)=%1%2%3%4    0%5%6\n"
                          " ONAME=lixo VEC=9 IPRINT=0\n"
                          " MULT=1  ITMAX=200  SCFTOL=0.00001  IAPX=3  INTTYP=1\n"
                          " NEL=%7\n"
                          " NAT=%8\n"
                          " INTFA(1)= 1.0  1.2675  0.585  1.0  1.0  1.0\n"
                          " $END\n")
        .arg(pointCharges, 5)
        .arg(atomsOfFunctions(ligands, 1), 5)
        .arg(atomsOfFunctions(ligands, 4), 5)
        .arg(atomsOfFunctions(ligands, 9), 5)
        .arg(determinants, 6)
        .arg(window.lastEmpty, 5)
        .arg(2 * filledLevels)
        .arg(ligands.size() + pointCharges);
}

/// x, y, z and atomic number of each atom; a point charge has number 0 and its charge behind.
QString zindoAtoms(const QVector<Coord> &atoms)
{
    QString text;
    for (const Coord &atom : atoms) {
        const bool isIon = LanqorInputData::isLanthanide(atom.label);
        text += fixed(atom.x, 6, 13) + fixed(atom.y, 6, 13) + fixed(atom.z, 6, 13) +
                QStringLiteral("%1").arg(isIon ? 0 : atomicNumberOf(atom.label), 6) +
                (isIon ? fixed(double(ionCharge), 6, 13) : QString()) + QLatin1Char('\n');
    }
    return text;
}

/// Keyword of the solvent, with a blank before it: the permittivity of MOPAC's COSMO model.
QString keywordOfSolvent(const QString &name)
{
    const std::optional<Solvent> solvent = LanqorSolvents::find(name);
    return solvent ? QStringLiteral(" EPS=%1").arg(solvent->permittivity) : QString();
}

} // namespace

QStringList mopacMethods()
{
    return {QStringLiteral("AM1"), QStringLiteral("PM3"), QStringLiteral("PM6"),
            QStringLiteral("PM7"), QStringLiteral("RM1")};
}

QString unknownMethod(const QString &method)
{
    return LanqorFilesConverter::tr("There is no MOPAC method \"%1\" here; there are %2.")
        .arg(method, mopacMethods().join(QStringLiteral(", ")));
}

QString faultOfSolvent(const QString &solvent)
{
    return solvent.isEmpty() || LanqorSolvents::find(solvent)
               ? QString()
               : LanqorSolvents::unknownSolvent(solvent);
}

QString faultOfSolvent(const QVector<Coord> &atoms, const MopacJob &job)
{
    const bool isSparkle =
        !ionsOf(atoms).isEmpty() &&
        job.extraKeywords.contains(QLatin1String("SPARKLE"), Qt::CaseInsensitive);
    // MOPAC 22.0.6 gives a bare sparkle ion of charge 3 a dielectric energy of 0, and
    // [Eu(acac)3(H2O)] one of -680 kcal/mol, as for its ligands without the ion.
    return !job.solvent.isEmpty() && isSparkle
               ? LanqorFilesConverter::tr(
                     "The solvent model of MOPAC (EPS) does not see the charge of a sparkle ion: "
                     "the complex would be dissolved as its ligands alone, hundreds of kcal/mol "
                     "too low. Optimise with the sparkle in the gas phase; or in the solvent with "
                     "xtb, or with RM1 without SPARKLE, which take the ion as an atom. Jobs of "
                     "INDO/S states take a solvent.")
               : faultOfSolvent(job.solvent);
}

std::optional<int> electronCount(const QVector<Coord> &atoms, int charge)
{
    int electrons = -charge;
    for (const Coord &atom : atoms) {
        const std::optional<int> own = electronsOf(atom.label);
        if (!own)
            return std::nullopt;
        electrons += *own;
    }
    return electrons;
}

QString mopacJob(const QVector<Coord> &atoms, const MopacJob &job)
{
    // After keyword lines joined by "+" MOPAC takes two lines as title and comment; with one
    // blank line alone it would take the ion's row for the second and lose the ion.
    QString text = job.method +
                   QStringLiteral(" PRECISE XYZ T=10D BFGS GNORM=0.25 +   \n"
                                  "NOLOG GEO-OK SCFCRT=1.D-10    ") +
                   job.extraKeywords + keywordOfSolvent(job.solvent) +
                   (job.isForQdcFit ? QStringLiteral(" ALLVEC\n\n\n") : QStringLiteral("\n\n\n"));
    for (const Coord &atom : atoms)
        text += atom.label.leftJustified(3) +
                QStringLiteral("%1 1%2 1%3 1\n")
                    .arg(fixed(atom.x, 9, 17), fixed(atom.y, 9, 17), fixed(atom.z, 9, 17));
    // The second job takes the geometry that the first one ends with.
    if (job.isForQdcFit)
        text += QLatin1Char('\n') + job.method +
                QStringLiteral(" FORCE OLDGEO LET XYZ T=10D NOLOG GEO-OK ") + job.extraKeywords +
                keywordOfSolvent(job.solvent) + QStringLiteral("\n\n\n");
    return text;
}

QString mopacIndoJob(const QVector<Coord> &atoms, const MopacIndoJob &job)
{
    // Thirty orbitals around the gap, up to 225 excitations (MAXCI); rows of states count the
    // ground state (WRTCI). The limit of printed coefficients (WRTCONF) is that of 0.01 for their
    // squares.
    QString text = QStringLiteral("INDO CIS %1 C.I.=30 MAXCI=2000 WRTCI=%2 WRTCONF=0.1 CHARGE=%3 "
                                  "XYZ 1SCF GEO-OK THREADS=1%4\n")
                       .arg(job.multiplicity, QString::number(job.states + 1),
                            QString::number(job.charge), keywordOfSolvent(job.solvent)) +
                   QStringLiteral("excited states by INDO/S; Y stands in the place of a lanthanide "
                                  "ion\n\n");
    for (const Coord &atom : atoms) {
        const bool isIon = LanqorInputData::isLanthanide(atom.label);
        text += (isIon ? QStringLiteral("Y") : atom.label).leftJustified(3) +
                QStringLiteral("%1 0%2 0%3 0\n")
                    .arg(fixed(atom.x, 9, 17), fixed(atom.y, 9, 17), fixed(atom.z, 9, 17));
    }
    return text;
}

QString pseudopotentialOf(const QString &label)
{
    const auto first = std::begin(LanqorInputData::lanthanideList);
    const auto last = std::end(LanqorInputData::lanthanideList);
    const auto found = std::find(first, last, label);
    constexpr int coreElectronsOfLanthanum = 46; // Kr, 4d10; each next ion has one 4f more
    return found == last ? QString()
                         : QStringLiteral("MWB%1").arg(coreElectronsOfLanthanum + (found - first));
}

QString gaussianJob(const QVector<Coord> &atoms, int charge, int multiplicity,
                    const QString &baseName)
{
    const QString states = multiplicity == closedShell ? QStringLiteral("nstates=10,50-50")
                                                       : QStringLiteral("nstates=10");

    QString text = QStringLiteral("%chk=") + baseName +
                   QStringLiteral(".chk\n"
                                  "%nproc=8\n"
                                  "%mem=4GB\n"
                                  "#td=(") +
                   states +
                   QStringLiteral(") scf=(maxcyc=800) LC-wPBE/genecp "
                                  "pseudo=read guess=core pop=full\n"
                                  "\n Title Card Required \n\n");
    text += QStringLiteral("%1 %2\n").arg(QString::number(charge), QString::number(multiplicity));
    for (const Coord &atom : atoms)
        text += QLatin1Char(' ') + atomRow(atom) + QLatin1Char('\n');
    text += QLatin1Char('\n');
    const QStringList ligandElements = elementsOf(withoutIons(atoms));
    if (!ligandElements.isEmpty())
        text += ligandElements.join(QLatin1Char(' ')) + QStringLiteral(" 0 \n6-31+G(d)\n****\n");
    QString pseudopotentials;
    for (const QString &ion : elementsOf(ionsOf(atoms))) {
        const QString name = pseudopotentialOf(ion);
        text += ion + QStringLiteral(" 0 \n") + name + QStringLiteral("\n****\n");
        pseudopotentials += ion + QStringLiteral(" 0 \n") + name + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n') + pseudopotentials + QLatin1Char('\n');
}

ActiveWindow activeWindow(const QVector<Coord> &atoms, int filledLevels)
{
    int orbitals = 0;
    for (const Coord &atom : withoutIons(atoms)) {
        const int functions = zindoFunctions(atomicNumberOf(atom.label));
        if (functions == 0)
            return {};
        orbitals += functions;
    }
    if (filledLevels < 1 || filledLevels >= orbitals)
        return {};
    ActiveWindow window;
    window.firstOccupied = std::max(1, filledLevels - windowWidth + 1);
    window.lastOccupied = filledLevels;
    window.firstEmpty = filledLevels + 1;
    window.lastEmpty = std::min(orbitals, filledLevels + windowWidth);
    return window;
}

QString zindoJob(const QVector<Coord> &atoms, int filledLevels, const ActiveWindow &window)
{
    return QStringLiteral(" $TITLEI\n"
                          "  cis calculation ( for spectrum )\n"
                          " $END\n") +
           zindoControl(withoutIons(atoms), ionsOf(atoms).size(), filledLevels, window) +
           QStringLiteral(" $DATAIN\n") + zindoAtoms(atoms) +
           QStringLiteral("\n $END\n $CIINPU\n") + zindoExcitations(window, 1) +
           zindoExcitations(window, 3) + QStringLiteral(" $END\n");
}

QString orcaJob(const OrcaJob &job)
{
    QString text = QStringLiteral("!RHF ZINDO/S TightSCF DIIS PrintBasis\n"
                                  "%method\n"
                                  "\tfrozencore fc_ewin\n"
                                  "end\n"
                                  "%cis\n");
    text += QStringLiteral("\tewin ") + fixed(job.windowFrom, 6) + QLatin1Char(',') +
            fixed(job.windowTo, 6) + QLatin1Char('\n');
    text += QStringLiteral("\tTriplets ") +
            (job.triplets ? QStringLiteral("true\n") : QStringLiteral("false\n"));
    text += QStringLiteral("\tmaxdim ") + QString::number(job.maxdim) + QLatin1Char('\n');
    text += QStringLiteral("\tnroots ") + QString::number(job.nroots) + QLatin1Char('\n');
    text += QStringLiteral("end\n"
                           "%output\n"
                           "\tprint[p_mos] 1\n"
                           "end\n");
    if (!job.pointChargeFile.isEmpty())
        text += QStringLiteral("%pointcharges \"") + job.pointChargeFile + QStringLiteral("\"\n");
    text += QStringLiteral("*xyz %1 %2\n")
                .arg(QString::number(job.charge), QString::number(closedShell));
    for (const Coord &atom : job.atoms)
        text += atomRow(atom) + QLatin1Char('\n');
    return text + QStringLiteral("*\n");
}

QString orcaPointCharges(const QVector<Coord> &ions)
{
    QString text = QStringLiteral("%1\n").arg(ions.size());
    for (const Coord &ion : ions)
        text += fixed(double(ionCharge), 6) + fixed(ion.x, 9, 17) + fixed(ion.y, 9, 17) +
                fixed(ion.z, 9, 17) + QLatin1Char('\n');
    return text;
}

QVector<Coord> ionsOf(const QVector<Coord> &atoms)
{
    QVector<Coord> ions;
    std::copy_if(atoms.begin(), atoms.end(), std::back_inserter(ions),
                 [](const Coord &atom) { return LanqorInputData::isLanthanide(atom.label); });
    return ions;
}

QVector<Coord> withoutIons(const QVector<Coord> &atoms)
{
    QVector<Coord> others;
    std::copy_if(atoms.begin(), atoms.end(), std::back_inserter(others),
                 [](const Coord &atom) { return !LanqorInputData::isLanthanide(atom.label); });
    return others;
}

} // namespace jobFiles
