#include "options/jobOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QRegularExpression>

#include <optional>

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
}

} // namespace

void addJobOptions(OptionReader &options)
{
    options.addOption({QStringLiteral("keywords"),
                       tr("MOPAC: keywords of the second line instead of \"SPARKLE CHARGE=n\"."),
                       QStringLiteral("text")});
    options.addOption({QStringLiteral("method"),
                       tr("MOPAC: %1 (AM1).")
                           .arg(LanqorFilesConverter::mopacMethods().join(QStringLiteral(", "))),
                       QStringLiteral("name"), QStringLiteral("AM1")});
    options.addOption({QStringLiteral("qdc-fit"),
                       tr("MOPAC: a job for \"fit qdc\": all orbitals (ALLVEC), then a second job "
                          "for the force constants (FORCE).")});
    options.addOption(
        {QStringLiteral("multiplicity"),
         tr("MOPAC, Gaussian: multiplicity of the electrons beside the 4f shell (1)."),
         QStringLiteral("n"), QStringLiteral("1")});
}

void checkJobOptions(const OptionReader &options, bool isMopacJob)
{
    for (const char *option : {"method", "qdc-fit"})
        if (options.isSet(option) && !isMopacJob)
            options.refuse(tr("--%1 belongs to a MOPAC job (.mop)").arg(QLatin1String(option)));
    const QStringList methods = LanqorFilesConverter::mopacMethods();
    if (!methods.contains(options.text("method")))
        options.refuse(tr("--method %1 is none of %2")
                           .arg(options.text("method"), methods.join(QStringLiteral(", "))));
    if (isMopacJob && options.isSet("keywords") && options.isSet("multiplicity"))
        options.refuse(
            tr("--keywords takes the place of --multiplicity: write DOUBLET, TRIPLET ... "
               "among the keywords"));
}

int chargeOfJob(const OptionReader &options, const LanqorInputData &structure)
{
    if (const auto charge = chargeOfKeywords(options))
        return *charge;
    const int charge = qRound(structure.getChargeOnSystem());
    if (!structure.isChargeOnSystemTold() && !options.isSet("keywords"))
        note(tr("the charge of the system is taken as %1; give another with --charge").arg(charge));
    return charge;
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
