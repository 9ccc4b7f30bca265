#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QVector>

#include <optional>

class LanqorFilesConverter;
class LanqorInputData;
class LanqorOrganizeMolecules;
struct OrganizeResults;

/// Options of jobs for quantum-chemistry programs.
namespace cli {

class OptionReader;

/// Adds --keywords, --method and --qdc-fit, of MOPAC jobs, and --multiplicity.
void addJobOptions(OptionReader &options);
/// Refuses options of MOPAC jobs for another file, and those that --keywords makes void.
void checkJobOptions(const OptionReader &options, bool isMopacJob);

/// Charge that --keywords or else the file tells, when --charge does not; empty when neither does.
std::optional<int> toldCharge(const OptionReader &options, const LanqorInputData &structure);
/// Charge of the atoms (so called in a note) derived from ion and fragments; throws a Failure with
/// the list of fragments when that of one of them is not known.
int chargeOfFragments(const OrganizeResults &results, const QString &atoms);
/// Charge of a job, when --charge does not tell it: the told one, else that of the fragments. One
/// without an ion, or of a periodic structure, is taken as 0, of which a note tells.
int chargeOfJob(const OptionReader &options, LanqorInputData &structure);
/// Multiplicity of a job, 1 unless --multiplicity gives another.
int multiplicityOfJob(const OptionReader &options);

/// Second keyword line of a MOPAC job: the text of --keywords, else the keywords that the atoms
/// need.
QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge);

/// What the electrons of a job must agree with.
struct JobState
{
    int charge = 0;
    int multiplicity = 1;
    QString wayOut;       ///< how to give another charge or multiplicity
    int chargeBeside = 0; ///< part of the charge that is on none of the atoms
};
/// Throws a Failure when no state of that multiplicity has the number of electrons.
void checkElectrons(const QVector<Coord> &atoms, const JobState &state);
/// The same for a MOPAC job; --keywords may give charge and multiplicity.
void checkMopacElectrons(const OptionReader &options, const QVector<Coord> &atoms, int charge);
/// The way out where both may be given as options.
QString chargeOrMultiplicity();

/// Hands --method and --qdc-fit to what writes a MOPAC job.
void settleMopacJob(const OptionReader &options, LanqorFilesConverter &writer);
void settleMopacJob(const OptionReader &options, LanqorOrganizeMolecules &writer);

} // namespace cli
