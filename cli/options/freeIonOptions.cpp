#include "options/freeIonOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <LanqorEngine/LanqorFreeIonParameters.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace cli {

namespace {

QString freeIonNames()
{
    return LanqorFreeIonParameters::getSymbols().join(QStringLiteral(", "));
}

/// An ion by --ion or by --electrons, with its published parameters.
FreeIonParameters chooseIon(const OptionReader &options, const QString &usual)
{
    FreeIonParameters ion;
    if (options.isSet("ion") || (!usual.isEmpty() && !options.isSet("electrons"))) {
        QString symbol = options.isSet("ion") ? options.text("ion").trimmed() : usual;
        if (symbol.endsWith(QStringLiteral("3+")))
            symbol.chop(2);
        ion = LanqorFreeIonParameters::getParameters(symbol);
        if (ion.electrons == 0)
            options.refuse(tr("--ion: \"%1\" is none of %2").arg(symbol, freeIonNames()));
    }
    if (options.isSet("electrons")) {
        const int electrons =
            options.wholeNumber("electrons", 1, 13, tr("the number of 4f electrons, 1 to 13"));
        if (ion.electrons == 0) {
            ion = LanqorFreeIonParameters::getParameters(electrons);
            ion.symbol.clear();
        } else if (ion.electrons != electrons) {
            options.refuse(
                tr("--ion %1 has %2 4f electrons, not %3")
                    .arg(ion.symbol, QString::number(ion.electrons), QString::number(electrons)));
        }
    }
    if (ion.electrons == 0)
        options.refuse(tr("which ion? Give --ion (%1) or --electrons").arg(freeIonNames()));
    return ion;
}

/// Reads a positive parameter; false when it is not given.
bool readParameter(const OptionReader &options, const QString &name, double &value)
{
    const QByteArray option = name.toLatin1();
    if (!options.isSet(option))
        return false;
    value = options.number(
        option, [](double given) { return given > 0.0 && std::isfinite(given); },
        tr("a positive number, in cm^-1"));
    return true;
}

/// Reads a Slater integral in either convention; false when it is not given.
bool readIntegral(const OptionReader &options, int k, double &integral)
{
    const double largestSubscript = LanqorFreeIonParameters::getLargestSubscript();
    bool isGiven = false;
    for (const bool isSubscript : {true, false}) {
        const QString name =
            QStringLiteral("F%1%2").arg(QLatin1String(isSubscript ? "" : "k"), QString::number(k));
        double number = 0.0;
        if (!readParameter(options, name, number))
            continue;
        if (isGiven)
            options.refuse(
                tr("--%1: the same integral is given in the other convention too").arg(name));
        if (isSubscript == (number > largestSubscript)) {
            const QString message =
                isSubscript ? tr("--%1 takes the subscript integral, %2 cm^-1 at most: for the "
                                 "superscript one there is --Fk%3")
                            : tr("--%1 takes the superscript integral, above %2 cm^-1: for the "
                                 "subscript one there is --F%3");
            options.refuse(
                message.arg(name, QString::number(largestSubscript), QString::number(k)));
        }
        integral = isSubscript ? number : LanqorFreeIonParameters::toSubscript(k, number);
        isGiven = true;
    }
    return isGiven;
}

/// Reads alpha, beta or gamma; false when it is not given.
bool readTwoBody(const OptionReader &options, const char *name, double &value)
{
    if (!options.isSet(name))
        return false;
    value = options.number(
        name, [](double given) { return std::isfinite(given); }, tr("a number, in cm^-1"));
    return true;
}

/// The parameters that were fitted together belong together: with an F_k or zeta of one's own,
/// alpha, beta and gamma are those given, or 0.
void readParameters(const OptionReader &options, FreeIonParameters &ion)
{
    int given = 0;
    given += readIntegral(options, 2, ion.F2);
    given += readIntegral(options, 4, ion.F4);
    given += readIntegral(options, 6, ion.F6);
    given += readParameter(options, QStringLiteral("zeta"), ion.zeta);
    if (given > 0)
        ion.alpha = ion.beta = ion.gamma = 0.0;
    int ofTwoBodies = 0;
    ofTwoBodies += readTwoBody(options, "alpha", ion.alpha);
    ofTwoBodies += readTwoBody(options, "beta", ion.beta);
    ofTwoBodies += readTwoBody(options, "gamma", ion.gamma);
    if (given == 4)
        ion.source.clear();
    else if (given > 0)
        ion.source = ofTwoBodies > 0
                         ? tr("as given; the other F_k and zeta: %1").arg(ion.source)
                         : tr("as given, alpha, beta and gamma 0; the others: %1").arg(ion.source);
    else if (ofTwoBodies > 0)
        ion.source = tr("as given; the others: %1").arg(ion.source);
}

} // namespace

void addFreeIonOptions(OptionReader &options)
{
    const QString number = tr("cm^-1");
    options.addOptions({
        {QStringLiteral("ion"), tr("The ion: %1.").arg(freeIonNames()), tr("symbol")},
        {QStringLiteral("electrons"), tr("Number of 4f electrons, 1 to 13, in place of the ion."),
         tr("n")},
        {QStringLiteral("F2"),
         tr("Slater integral F_2 (subscript, F_2 = F^2/225), cm^-1; about 300 to 460."), number},
        {QStringLiteral("F4"), tr("F_4 = F^4/1089, cm^-1; about 45 to 70."), number},
        {QStringLiteral("F6"), tr("F_6 = F^6/7361.64, cm^-1; about 4.5 to 8."), number},
        {QStringLiteral("Fk2"), tr("F^2 (superscript), cm^-1, in place of --F2; about 70000."),
         number},
        {QStringLiteral("Fk4"), tr("F^4, cm^-1, in place of --F4; about 50000."), number},
        {QStringLiteral("Fk6"), tr("F^6, cm^-1, in place of --F6; about 35000."), number},
        {QStringLiteral("zeta"), tr("Spin-orbit parameter of the 4f electrons, cm^-1."), number},
        {QStringLiteral("alpha"),
         tr("Two-body configuration interaction, cm^-1: alpha L(L+1) + beta G(G2) + gamma G(R7). "
            "Unless given the published alpha, beta and gamma with the published F_k and zeta, "
            "else 0."),
         number},
        {QStringLiteral("beta"), tr("The second of them, cm^-1; about -100 to -1100."), number},
        {QStringLiteral("gamma"), tr("The third of them, cm^-1; about 600 to 2400."), number},
    });
}

QString nameOf(const FreeIonParameters &ion)
{
    const QString configuration = QStringLiteral("4f^%1").arg(ion.electrons);
    return ion.symbol.isEmpty() ? configuration
                                : QStringLiteral("%1(III), %2").arg(ion.symbol, configuration);
}

FreeIonParameters readFreeIon(const OptionReader &options, const QString &usual)
{
    FreeIonParameters ion = chooseIon(options, usual);
    const double zetaOfSource = ion.zeta;
    const QString source = ion.source;
    readParameters(options, ion);
    if (!hasElectrostaticSplitting(ion)) {
        if (ion.F2 != 0.0 || ion.F4 != 0.0 || ion.F6 != 0.0 || ion.alpha != 0.0 ||
            ion.beta != 0.0 || ion.gamma != 0.0)
            note(tr("%1 has one 4f electron or hole: F_k, alpha, beta and gamma move its two "
                    "levels alike and are left out")
                     .arg(nameOf(ion)));
        ion.F2 = ion.F4 = ion.F6 = ion.alpha = ion.beta = ion.gamma = 0.0;
        ion.source = ion.zeta == zetaOfSource ? source : QString();
    }
    const std::initializer_list<std::pair<const char *, double>> inForce = {
        {"F2", ion.F2},       {"F4", ion.F4},     {"F6", ion.F6},      {"zeta", ion.zeta},
        {"alpha", ion.alpha}, {"beta", ion.beta}, {"gamma", ion.gamma}};
    for (const auto &parameter : inForce)
        options.setInForce(parameter.first, parameter.second);
    return ion;
}

bool hasElectrostaticSplitting(const FreeIonParameters &ion)
{
    return ion.electrons > 1 && ion.electrons < 13;
}

void enterDataFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString buildTree = QStringLiteral(LANQOR_BUILD_PROGRAM_FOLDER);
    const bool isInstalled =
        QFileInfo(program).canonicalFilePath() != QFileInfo(buildTree).canonicalFilePath();
    const QString folder =
        QDir::cleanPath(isInstalled ? program + QStringLiteral("/" LANQOR_DATA_FROM_PROGRAM)
                                    : QStringLiteral(LANQOR_SOURCE_DATA));
    if (!QFileInfo(folder + QStringLiteral("/EnergyLevels4f")).isDir() || !QDir::setCurrent(folder))
        throw Failure{tr("the tables of the 4f shell, which come with the program, are not in "
                         "%1/EnergyLevels4f")
                          .arg(folder)};
}

} // namespace cli
