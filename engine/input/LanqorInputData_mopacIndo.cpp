#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/mopacIndo_p.h"

#include <QSet>

#include <cmath>

namespace {

constexpr int singlet = 1; // multiplicities
constexpr int triplet = 3;

QString tr(const char *text)
{
    return LanqorInputData::tr(text);
}

/// Why the states of a job cannot be used; empty when they can.
QString faultOf(const MopacIndoJob &job, const QString &fileName)
{
    if (!job.isIndo)
        return tr("%1 is no output of an INDO job of MOPAC (keywords INDO CIS SINGLET or TRIPLET).")
            .arg(fileName);
    if (!job.complaint.isEmpty() && !job.hasStates()) {
        const bool isElement = job.complaint.contains(QLatin1String("not available")) ||
                               job.complaint.contains(QLatin1String("Parameters"));
        return tr("The MOPAC job of %1 ended without excited states: \"%2\"")
                   .arg(fileName, job.complaint) +
               (isElement ? tr(" (INDO has no lanthanides; put Y in the place of the ion)")
                          : QString());
    }
    if (!job.hasStates())
        return tr("%1 holds no excited states, though the job may have ended normally; an INDO job "
                  "needs the keywords CIS and SINGLET or TRIPLET.")
            .arg(fileName);
    if (job.hasOtherExcitations)
        return tr("The states of %1 hold other than single excitations (CISD, MRCI); run the job "
                  "with CIS instead.")
            .arg(fileName);
    if (job.doublyOccupied < 1)
        return tr("%1 is of an open shell; the states of ligands need a closed one. Check the "
                  "charge of the job.")
            .arg(fileName);
    if (!job.isWhole)
        return tr("%1 is cut off or damaged: the molecular orbitals or the configurations of its "
                  "states are not all there.")
            .arg(fileName);
    if (!job.isReferenceGround)
        return tr("State 1 of %1 is not the reference determinant: a triplet lies below it, and "
                  "all energies are counted from that triplet.")
            .arg(fileName);
    if (job.atoms.isEmpty())
        return tr("%1 holds no Cartesian coordinates of the atoms.").arg(fileName);
    return QString();
}

QString kindOf(int multiplicity)
{
    return multiplicity == singlet   ? tr("singlets")
           : multiplicity == triplet ? tr("triplets")
                                     : tr("states of multiplicity %1").arg(multiplicity);
}

QString textOf(const Coord &atom)
{
    const auto number = [](double x) { return QString::number(x, 'f', 5); };
    return QStringLiteral("%1 %2 %3 %4")
        .arg(atom.label, number(atom.x), number(atom.y), number(atom.z));
}

/// First atom, from 1, that differs; 0 when all are the same.
int differentAtom(const QVector<Coord> &a, const QVector<Coord> &b)
{
    constexpr double tolerance = 1e-6; // Angstrom; eight decimals are printed
    for (int i = 0; i < std::min(a.size(), b.size()); ++i) {
        const Coord &p = a.at(i);
        const Coord &q = b.at(i);
        if (p.label != q.label || std::abs(p.x - q.x) > tolerance ||
            std::abs(p.y - q.y) > tolerance || std::abs(p.z - q.z) > tolerance)
            return i + 1;
    }
    return 0;
}

/// First orbital, from 1, whose energies in both jobs differ; 0 when none does. The last digit may.
int differentEnergy(const MopacIndoJob &a, const MopacIndoJob &b)
{
    constexpr double tolerance = 1e-3; // eV; five decimals are printed
    for (std::size_t i = 0; i < std::min(a.orbitalEnergies.size(), b.orbitalEnergies.size()); ++i)
        if (std::abs(a.orbitalEnergies[i] - b.orbitalEnergies[i]) > tolerance)
            return static_cast<int>(i) + 1;
    return 0;
}

/// First orbital of the excitations of @p b that is another one in @p a, its sign apart: orbitals
/// of one energy may mix in any way. The basis is orthogonal. 0 when there is none.
int differentOrbital(const MopacIndoJob &a, const MopacIndoJob &b)
{
    constexpr double least = 0.99; // overlap
    QSet<int> compared;
    for (const ExcitateState &state : b.states.states) {
        for (const int number : state.configurations) {
            if (number == 0 || compared.contains(number))
                continue;
            compared.insert(number);
            const QVector<double> p = a.orbitals.value(number - 1).coefficients;
            const QVector<double> q = b.orbitals.value(number - 1).coefficients;
            double overlap = 0.0;
            for (int i = 0; i < std::min(p.size(), q.size()); ++i)
                overlap += p.at(i) * q.at(i);
            if (p.size() != q.size() || (!q.isEmpty() && std::abs(overlap) < least))
                return number;
        }
    }
    return 0;
}

/// Why two jobs do not belong together; empty when they do.
QString mismatchOf(const MopacIndoJob &singlets, const QString &singletFile,
                   const MopacIndoJob &triplets, const QString &tripletFile)
{
    const QString pair = tr("%1 and %2 are no pair: ").arg(singletFile, tripletFile);
    const auto differ = [&pair](const QString &what, const QString &first, const QString &second) {
        return pair + tr("%1 is %2 in the first and %3 in the second.").arg(what, first, second);
    };
    if (singlets.atoms.size() != triplets.atoms.size())
        return differ(tr("the number of atoms"), QString::number(singlets.atoms.size()),
                      QString::number(triplets.atoms.size()));
    if (const int atom = differentAtom(singlets.atoms, triplets.atoms))
        return differ(tr("atom %1 (Angstrom)").arg(atom), textOf(singlets.atoms.at(atom - 1)),
                      textOf(triplets.atoms.at(atom - 1)));
    if (singlets.doublyOccupied != triplets.doublyOccupied)
        return differ(tr("the number of doubly occupied orbitals"),
                      QString::number(singlets.doublyOccupied),
                      QString::number(triplets.doublyOccupied));
    if (singlets.window != triplets.window ||
        singlets.configurationCount != triplets.configurationCount)
        return pair + tr("their excitations are from and to other orbitals (C.I.=, MAXCI=).");
    if (singlets.printLimit != triplets.printLimit)
        return differ(tr("the least printed coefficient (WRTCONF)"),
                      QString::number(singlets.printLimit), QString::number(triplets.printLimit));
    if (const int orbital = differentEnergy(singlets, triplets)) {
        const auto energy = [orbital](const MopacIndoJob &job) {
            return QString::number(job.orbitalEnergies[static_cast<std::size_t>(orbital - 1)]);
        };
        return differ(tr("the energy (eV) of orbital %1").arg(orbital), energy(singlets),
                      energy(triplets));
    }
    if (const int orbital = differentOrbital(singlets, triplets))
        return pair + tr("orbital %1 is another one in each; run both jobs alike, with THREADS=1.")
                          .arg(orbital);
    return QString();
}

/// Orbital energies by printed number, in eV, with 2 or 0 electrons.
QVector<MolecularOrbitalOCC> levelsOf(const MopacIndoJob &job)
{
    QVector<MolecularOrbitalOCC> levels;
    for (std::size_t i = 0; i < job.orbitalEnergies.size(); ++i) {
        if (std::isnan(job.orbitalEnergies[i]))
            continue;
        MolecularOrbitalOCC level;
        level.number = static_cast<double>(i + 1);
        level.occupancy = static_cast<int>(i) < job.doublyOccupied ? 2.0 : 0.0;
        level.energy = job.orbitalEnergies[i];
        levels.append(level);
    }
    return levels;
}

/// Excitations that were taken, of those between the orbitals of the window, which is the text
/// "SINGLE excitations FROM orbs a to b INTO orbs c to d"; 0 when it cannot be read.
double excitationShareOf(const MopacIndoJob &job)
{
    QVector<double> numbers;
    for (const QString &word : job.window.split(QLatin1Char(' '))) {
        bool ok = false;
        const double number = word.toInt(&ok);
        if (ok)
            numbers.append(number);
    }
    if (numbers.size() != 4)
        return 0.0;
    const double all =
        (numbers.at(1) - numbers.at(0) + 1.0) * (numbers.at(3) - numbers.at(2) + 1.0);
    return all > 0.0 ? (job.configurationCount - 1) / all : 0.0; // less the reference
}

/// The transitions to the singlets.
ExcitedStates spectrumOf(const MopacIndoJob &singlets)
{
    ExcitedStates results;
    for (const ExcitateState &state : singlets.states.states) {
        results.spectrumEnergies.append(state.energy);
        results.spectrumStrengths.append(state.oscillatorStrength);
    }
    return results;
}

} // namespace

bool LanqorInputDataPrivate::readMopacIndoJob(const QString &name, int multiplicity,
                                              MopacIndoJob &job)
{
    MopacIndoReader reader(name == fileName ? file() : InputFile(name));
    if (!reader.open())
        return owner.failWith(missingFile(name));
    job = reader.read();
    const QString fault = faultOf(job, name);
    if (!fault.isEmpty())
        return owner.failWith(fault);
    const bool isKnown = job.multiplicity == singlet || job.multiplicity == triplet;
    if (isKnown && (multiplicity == 0 || job.multiplicity == multiplicity))
        return true;
    if (!isKnown || multiplicity == 0)
        return owner.failWith(tr("%1 holds %2; those of the ligands are singlets and triplets.")
                                  .arg(name, kindOf(job.multiplicity)));
    return owner.failWith(tr("%1 holds %2, where %3 are wanted; of a pair the file of the singlets "
                             "comes first.")
                              .arg(name, kindOf(job.multiplicity), kindOf(multiplicity)));
}

void LanqorInputDataPrivate::takeMopacIndoJobs(const MopacIndoJob &singlets,
                                               const MopacIndoJob &triplets)
{
    const MopacIndoJob &first = singlets.hasStates() ? singlets : triplets;
    ExcitedStates results = spectrumOf(singlets);
    results.orbitals = first.orbitals;
    results.singlets = singlets.states;
    results.triplets = triplets.states;
    coord += first.atoms;
    molecularOrbitalsOCC += levelsOf(first);
    homoMO = first.doublyOccupied;
    lumoMO = first.doublyOccupied + 1;
    singletCoefficients += singlets.coefficients;
    tripletCoefficients += triplets.coefficients;
    excitationShare = excitationShareOf(first);
    takeExcitedStates(results);
    takeSpectrum(results);
}

bool LanqorInputDataPrivate::readMopacIndoAlone()
{
    MopacIndoJob job;
    if (!readMopacIndoJob(fileName, 0, job))
        return false;
    const bool isSinglet = job.multiplicity == singlet;
    takeMopacIndoJobs(isSinglet ? job : MopacIndoJob(), isSinglet ? MopacIndoJob() : job);
    return true;
}

bool LanqorInputData::readOutputMopacIndo(const QString &singletFile, const QString &tripletFile)
{
    MopacIndoJob singlets;
    MopacIndoJob triplets;
    if (singletFile.isEmpty() && tripletFile.isEmpty())
        return failWith(tr("There is no MOPAC INDO output to read."));
    if ((!singletFile.isEmpty() && !d->readMopacIndoJob(singletFile, singlet, singlets)) ||
        (!tripletFile.isEmpty() && !d->readMopacIndoJob(tripletFile, triplet, triplets)))
        return false;
    const bool isPair = singlets.hasStates() && triplets.hasStates();
    const QString mismatch =
        isPair ? mismatchOf(singlets, singletFile, triplets, tripletFile) : QString();
    if (!mismatch.isEmpty())
        return failWith(mismatch);
    d->takeMopacIndoJobs(singlets, triplets);
    d->tripletFileName = isPair ? tripletFile : QString();
    return true;
}

bool LanqorInputData::readAbsorptionDataMopacIndo()
{
    MopacIndoJob job;
    if (!d->readMopacIndoJob(d->fileName, singlet, job))
        return false;
    d->takeSpectrum(spectrumOf(job));
    return true;
}

QString LanqorInputData::getTripletFileName() const
{
    return d->tripletFileName;
}
