#include "Command.h"
#include "commands/commands.h"
#include "options/mopacKeywords.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

/// Numbers of the command line; false with a message when one is no number.
struct Numbers
{
    int charge = 0;
    bool isChargeGiven = false;
    int roots = 0;
    int maxdim = 0;

    bool read(const QCommandLineParser &parser, QString &error)
    {
        isChargeGiven = parser.isSet(QStringLiteral("charge"));
        return readInt(parser, "charge", charge, error) && readInt(parser, "roots", roots, error) &&
               readInt(parser, "maxdim", maxdim, error);
    }

private:
    static bool readInt(const QCommandLineParser &parser, const char *name, int &value,
                        QString &error)
    {
        const QString text = parser.value(QLatin1String(name));
        bool ok = text.isEmpty();
        if (!ok)
            value = text.toInt(&ok);
        if (!ok)
            error = tr("--%1 %2 is not a whole number").arg(QLatin1String(name), text);
        return ok;
    }
};

/// What to write, by --program or the suffix of the file; empty when neither tells.
QString formatOf(const QString &program, const QString &file)
{
    static const QStringList formats = {QStringLiteral("mop"), QStringLiteral("gjf"),
                                        QStringLiteral("inp"), QStringLiteral("orcinp"),
                                        QStringLiteral("sph"), QStringLiteral("xyz"),
                                        QStringLiteral("zmt")};
    static const QVector<QPair<QString, QString>> programs = {
        {QStringLiteral("mopac"), QStringLiteral("mop")},
        {QStringLiteral("gaussian"), QStringLiteral("gjf")},
        {QStringLiteral("zindo"), QStringLiteral("inp")},
        {QStringLiteral("orca"), QStringLiteral("orcinp")}};
    for (const auto &known : programs) {
        if (program == known.first)
            return known.second;
    }
    const QString suffix = QFileInfo(file).suffix().toLower();
    return program.isEmpty() && formats.contains(suffix) ? suffix : QString();
}

void addOptions(QCommandLineParser &parser)
{
    parser.addPositionalArgument(QStringLiteral("IN"), tr("structure or output to read"));
    parser.addPositionalArgument(QStringLiteral("OUT"), tr("file to write"));
    parser.addOption({QStringLiteral("program"),
                      tr("Write a job for mopac, gaussian, zindo or orca, whatever the suffix "
                         "of OUT."),
                      QStringLiteral("name")});
    parser.addOption({QStringLiteral("charge"),
                      tr("Charge of the whole system, ion included; by default that of the MOPAC "
                         "output, else 0."),
                      QStringLiteral("n")});
    parser.addOption({QStringLiteral("keywords"),
                      tr("MOPAC: keywords of the second line instead of \"SPARKLE CHARGE=n\"."),
                      QStringLiteral("text")});
    parser.addOption({QStringLiteral("roots"),
                      tr("ORCA: number of states of each multiplicity (25)."), QStringLiteral("n"),
                      QStringLiteral("25")});
    parser.addOption({QStringLiteral("maxdim"),
                      tr("ORCA: dimension of the expansion space in multiples of the roots (10)."),
                      QStringLiteral("n"), QStringLiteral("10")});
    parser.addOption({QStringLiteral("singlets-only"), tr("ORCA: no triplet states.")});
    parser.addOption({QStringLiteral("keep-ion"),
                      tr("ORCA: the ion stays among the atoms instead of becoming a point charge "
                         "of +3 in a .pointcharge file beside OUT.")});
    parser.addOption({QStringLiteral("keep-tv"),
                      tr("xyz: keep the translation vectors (Tv) of a periodic structure.")});
}

bool toXyz(LanqorFilesConverter &converter, const QString &in, const QString &out, bool keepTv)
{
    const QString suffix = QFileInfo(in).suffix().toLower();
    if (suffix == QLatin1String("zmt"))
        return converter.convertFromZmtToXYZ(out);
    if (suffix == QLatin1String("mop"))
        return converter.convertFromMopToXYZ(out, keepTv);
    if (suffix == QLatin1String("mol2"))
        return converter.convertFromMOL2ToXYZ(out);
    return converter.convertFromOutToXYZ(out, keepTv);
}

/// An ORCA job; its atoms lack the ion's charge when the ion becomes a point charge.
bool toOrca(LanqorFilesConverter &converter, const QCommandLineParser &parser, const QString &out,
            const Numbers &numbers)
{
    constexpr int ionCharge = 3;
    const bool pointCharge = !parser.isSet(QStringLiteral("keep-ion"));
    return converter.convertFromOutToInpOrca(
        out, pointCharge, !parser.isSet(QStringLiteral("singlets-only")),
        numbers.charge - (pointCharge ? ionCharge : 0), numbers.roots, numbers.maxdim);
}

/// Charge and keywords of a job: from the command line, else from the MOPAC output.
int settleCharge(const QCommandLineParser &parser, const QString &in, const QString &format,
                 LanqorFilesConverter &converter, Numbers &numbers)
{
    const bool isJob = format == QLatin1String("mop") || format == QLatin1String("gjf") ||
                       format == QLatin1String("orcinp");
    if (!isJob)
        return cli::success;
    if (in.endsWith(QLatin1String("orcout")))
        return numbers.isChargeGiven
                   ? cli::success
                   : cli::fail(tr("an ORCA output does not tell the charge of the complex; give "
                                  "it, ion included, with --charge"),
                               cli::usageError);
    LanqorInputData structure(nullptr, in);
    if (!structure.readStructureFile())
        return cli::fail(structure.getLastError());
    if (!numbers.isChargeGiven)
        numbers.charge = cli::chargeOfSystem(structure, in);
    converter.setExtraMopacKeywords(
        cli::mopacKeywords(parser, structure.getCoord(), numbers.charge));
    converter.setCharge(numbers.charge);
    return cli::success;
}

} // namespace

int convertCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Converts a structure, or writes a job for a quantum-chemistry program.\n\n"
           "IN is a MOPAC output, a .xyz, .mop, .zmt or .mol2 file, or (for ORCA jobs) an ORCA\n"
           "output named .orcout. The suffix of OUT tells what to write:\n"
           "  .xyz, .zmt     Cartesian coordinates (Angstrom), Z-matrix (degrees)\n"
           "  .sph           spherical coordinates about atom 1\n"
           "  .mop           MOPAC: AM1 sparkle optimisation\n"
           "  .gjf           Gaussian: TD-LC-wPBE, pseudopotential on the ion\n"
           "  .orcinp, .inp  ORCA, ZINDO: ligand states by ZINDO/S (INDO/S), the ion as a point\n"
           "                 charge; the ZINDO job needs a MOPAC output\n\n"
           "Example: lanqor convert complex.out ligand.orcinp --roots 25"));
    addOptions(parser);
    cli::parse(parser, "convert", arguments);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2)
        return cli::fail(tr("convert needs two files; see \"lanqor convert --help\""),
                         cli::usageError);
    Numbers numbers;
    QString error;
    if (!numbers.read(parser, error))
        return cli::fail(error, cli::usageError);
    const QString &in = files.at(0);
    const QString &out = files.at(1);
    const QString format = formatOf(parser.value(QStringLiteral("program")), out);
    if (format.isEmpty())
        return cli::fail(tr("what to write to %1 cannot be told; see \"lanqor convert --help\" for "
                            "the suffixes and for --program")
                             .arg(out),
                         cli::usageError);

    LanqorFilesConverter converter(nullptr, in);
    cli::showMessages(converter);
    const int status = settleCharge(parser, in, format, converter, numbers);
    if (status != cli::success)
        return status;

    const bool keepTv = parser.isSet(QStringLiteral("keep-tv"));
    const bool isDone = format == QLatin1String("mop")   ? converter.convertFromOutToMop(out)
                        : format == QLatin1String("gjf") ? converter.convertFromOutToGjf(out)
                        : format == QLatin1String("inp") ? converter.convertFromOutToInp(out)
                        : format == QLatin1String("orcinp")
                            ? toOrca(converter, parser, out, numbers)
                        : format == QLatin1String("sph") ? converter.convertFromOutToSph(out)
                        : format == QLatin1String("zmt") ? converter.convertFromOutToZmt(out)
                                                         : toXyz(converter, in, out, keepTv);
    return isDone ? cli::success : cli::fail(converter.getLastError());
}
