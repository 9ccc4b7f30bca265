#include "options/jobOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>
#include <LanqorEngine/LanqorSolvents.h>

#include <QRegularExpression>

#include <algorithm>

namespace cli {

namespace {

/// "+1", "0", "-1".
QString signedNumber(int number)
{
    return (number > 0 ? QStringLiteral("+") : QString()) + QString::number(number);
}

/// Whether keywords of MOPAC ask for an open shell: a multiplicity, a spin, or orbitals of their
/// own for both spins.
bool isOpenShell(const QString &keywords)
{
    static const QRegularExpression words(
        QStringLiteral("(^|\\s)(DOUBLET|TRIPLET|QUARTET|QUINTET|SEXTET|SEPTET|OCTET|NONET|UHF|"
                       "BIRADICAL|OPEN\\(|MS=)"),
        QRegularExpression::CaseInsensitiveOption);
    return words.match(keywords).hasMatch();
}

/// The charge that --keywords gives; empty when it gives none.
std::optional<int> chargeOfKeywords(const OptionReader &options)
{
    static const QRegularExpression charge(QStringLiteral("(^|\\s)CHARGE=\\s*([+-]?\\d+)"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = charge.match(options.text("keywords"));
    return match.hasMatch() ? std::optional<int>(match.captured(2).toInt()) : std::nullopt;
}

template <typename Writer> void settle(const OptionReader &options, Writer &writer)
{
    writer.setMopacMethod(options.text("method"));
    writer.setMopacJobForQdcFit(options.isSet("qdc-fit"));
    writer.setSolvent(options.text("solvent"));
}

} // namespace

void addJobOptions(OptionReader &options)
{
    options.addOption({QStringLiteral("keywords"),
                       tr("MOPAC: keywords of the second line instead of \"SPARKLE CHARGE=n\"."),
                       QStringLiteral("text")});
    options.addOption(
        {QStringLiteral("method"),
         tr("MOPAC: %1.").arg(LanqorFilesConverter::mopacMethods().join(QStringLiteral(", "))),
         QStringLiteral("name"), QStringLiteral("AM1")});
    options.addOption({QStringLiteral("qdc-fit"),
                       tr("MOPAC: a job for \"fit qdc\": all orbitals (ALLVEC), then a second job "
                          "for the force constants (FORCE).")});
    options.addOption({QStringLiteral("solvent"),
                       tr("MOPAC: permittivity of a solvent (EPS), as water or toluene; gas phase "
                          "unless given. Not with the sparkle, whose charge that model does not "
                          "see."),
                       QStringLiteral("name")});
    options.addOption({QStringLiteral("multiplicity"),
                       tr("MOPAC, Gaussian: multiplicity of the electrons beside the 4f shell."),
                       QStringLiteral("n"), QStringLiteral("1")});
}

void checkJobOptions(const OptionReader &options, bool isMopacJob)
{
    for (const char *option : {"method", "qdc-fit", "solvent"})
        if (options.isSet(option) && !isMopacJob)
            options.refuse(tr("--%1 belongs to a MOPAC job (.mop)").arg(QLatin1String(option)));
    const QStringList methods = LanqorFilesConverter::mopacMethods();
    if (!methods.contains(options.text("method")))
        options.refuse(tr("--method %1 is none of %2")
                           .arg(options.text("method"), methods.join(QStringLiteral(", "))));
    if (options.isSet("solvent") && !LanqorSolvents::find(options.text("solvent")))
        options.refuse(LanqorSolvents::unknownSolvent(options.text("solvent")));
    if (isMopacJob && options.isSet("keywords") && options.isSet("multiplicity"))
        options.refuse(
            tr("--keywords takes the place of --multiplicity: write DOUBLET, TRIPLET ... "
               "among the keywords"));
}

std::optional<int> toldCharge(const OptionReader &options, const LanqorInputData &structure)
{
    if (const auto charge = chargeOfKeywords(options))
        return charge;
    return structure.isChargeOnSystemTold() || options.isSet("keywords")
               ? std::optional<int>(qRound(structure.getChargeOnSystem()))
               : std::nullopt;
}

int chargeOfFragments(const OrganizeResults &results, const QString &atoms)
{
    const QString list = results.fragmentCharges.join(QStringLiteral(", "));
    if (!results.isChargeKnown)
        throw Failure{tr("the charge cannot be derived from %1 (+3) and %2: the charge of those "
                         "with a ? is not known; give that of all atoms with --charge")
                          .arg(results.ion, list)};
    note(tr("the charge of %1 is %2, derived from %3 (+3) and %4; give another with --charge")
             .arg(atoms, QString::number(results.charge), results.ion, list));
    if (list.contains(QLatin1String("hydroxide")))
        warn(tr("OH counts as hydroxide (-1); if it is water that lacks a hydrogen atom, add the "
                "atom"));
    return results.charge;
}

int chargeOfJob(const OptionReader &options, LanqorInputData &structure)
{
    if (const auto charge = toldCharge(options, structure))
        return *charge;
    const QVector<Coord> atoms = structure.getCoord();
    const auto isIon = [](const Coord &atom) { return LanqorInputData::isLanthanide(atom.label); };
    const auto isVector = [](const Coord &atom) { return atom.label == QLatin1String("Tv"); };
    if (std::none_of(atoms.begin(), atoms.end(), isIon) ||
        std::any_of(atoms.begin(), atoms.end(), isVector)) {
        note(tr("the charge of the system is taken as 0; give another with --charge"));
        return 0;
    }
    LanqorOrganizeMolecules fragments(nullptr, &structure);
    if (!fragments.organize())
        throw Failure{tr("the charge cannot be derived from the fragments: %1 Give it with "
                         "--charge.")
                          .arg(fragments.getLastError().simplified())};
    const OrganizeResults results = fragments.getResults();
    if (results.atoms.size() != atoms.size())
        throw Failure{
            tr("the charge cannot be derived from the fragments, which have %1 atoms "
               "instead of %2; give it with --charge")
                .arg(QString::number(results.atoms.size()), QString::number(atoms.size()))};
    return chargeOfFragments(results, tr("the system"));
}

int multiplicityOfJob(const OptionReader &options)
{
    constexpr int largest = 9; // of MOPAC
    return options.count("multiplicity", largest);
}

QString mopacKeywords(const OptionReader &options, const QVector<Coord> &atoms, int charge)
{
    return options.isSet("keywords")
               ? options.text("keywords")
               : LanqorFilesConverter::sparkleKeywords(atoms, charge, multiplicityOfJob(options));
}

QString chargeOrMultiplicity()
{
    return tr("Give it with --charge, or an open shell with --multiplicity.");
}

void checkElectrons(const QVector<Coord> &atoms, const JobState &state)
{
    const std::optional<int> electrons =
        LanqorFilesConverter::electronCount(atoms, state.charge - state.chargeBeside);
    if (!electrons || (*electrons + state.multiplicity) % 2 != 0)
        return;
    throw Failure{
        tr("%1 electrons at the charge %2 (a lanthanide counts as a 3+ core with its 4f electrons) "
           "do not go with the multiplicity %3: charge %4 or %5? %6")
            .arg(QString::number(*electrons), signedNumber(state.charge),
                 QString::number(state.multiplicity), signedNumber(state.charge - 1),
                 signedNumber(state.charge + 1), state.wayOut)};
}

void checkMopacElectrons(const OptionReader &options, const QVector<Coord> &atoms, int charge)
{
    JobState state{charge, multiplicityOfJob(options), chargeOrMultiplicity()};
    if (options.isSet("keywords")) {
        if (isOpenShell(options.text("keywords")))
            return;
        state.charge = chargeOfKeywords(options).value_or(0);
        state.wayOut = tr("Write CHARGE=, or DOUBLET ... for an open shell, among the --keywords.");
        if (options.isSet("charge") && state.charge != charge)
            options.refuse(tr("--keywords takes the place of --charge: write CHARGE=%1 among the "
                              "keywords, which make the charge %2")
                               .arg(QString::number(charge), QString::number(state.charge)));
        if (state.charge != charge)
            warn(tr("--keywords makes the charge of the job %1, that of the file is %2")
                     .arg(QString::number(state.charge), QString::number(charge)));
    }
    checkElectrons(atoms, state);
}

void settleMopacJob(const OptionReader &options, LanqorFilesConverter &writer)
{
    settle(options, writer);
}

void settleMopacJob(const OptionReader &options, LanqorOrganizeMolecules &writer)
{
    settle(options, writer);
}

} // namespace cli
