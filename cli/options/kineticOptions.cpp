#include "options/kineticOptions.h"

#include "options/OptionReader.h"
#include "text.h"

#include <QCommandLineOption>

namespace cli {

namespace {

constexpr double highestRate = 1e15; // s^-1

struct RateOption
{
    const char *name;
    const char *process;
    double KineticParameters::*rate;
    double KineticParameters::*rateOfTwo; ///< the same with two triplets
};

constexpr RateOption rateOptions[] = {
    {"excitation-rate", "Excitation S0 -> S, which changes populations but not the yield",
     &KineticParameters::excitation, &KineticParameters::excitation},
    {"singlet-decay", "Decay S -> S0", &KineticParameters::singletDecay,
     &KineticParameters::singletDecay},
    {"intersystem-crossing", "Crossing from S to the triplet, or to each of two",
     &KineticParameters::intersystemCrossing, &KineticParameters::intersystemCrossing},
    {"triplet-decay", "Decay of the triplet, or of each of two, to S0",
     &KineticParameters::tripletDecay, &KineticParameters::tripletDecayOfTwo},
    {"triplet-crossing", "Crossing Ta -> T of two triplets", &KineticParameters::tripletCrossing,
     &KineticParameters::tripletCrossing},
    {"upper-cascade", "Each step in the ion from 5D4 down to 5D1", &KineticParameters::upperCascade,
     &KineticParameters::upperCascade},
    {"lower-cascade", "Step 5D1 -> 5D0", &KineticParameters::lowerCascade,
     &KineticParameters::lowerCascade},
};

QString rateText(double rate)
{
    return QString::number(rate, 'g', 3);
}

QCommandLineOption optionOf(const RateOption &option)
{
    const KineticParameters defaults;
    const double rate = defaults.*option.rate;
    const double ofTwo = defaults.*option.rateOfTwo;
    const QString process = tr(option.process);
    return {QLatin1String(option.name),
            rate == ofTwo ? process + QLatin1Char('.')
                          : tr("%1; with two triplets %2.").arg(process, rateText(ofTwo)),
            tr("s^-1"), rateText(rate)};
}

double numberWithin(const OptionReader &options, const char *name, double minimum, double maximum,
                    const QString &unit)
{
    return options.number(
        name, [=](double value) { return value >= minimum && value <= maximum; },
        tr("a number from %1 to %2 %3, not \"%4\"")
            .arg(QString::number(minimum), QString::number(maximum), unit, options.text(name)));
}

} // namespace

void addKineticOptions(OptionReader &options)
{
    for (const RateOption &option : rateOptions)
        options.addOption(optionOf(option));
    options.addOption({QStringLiteral("temperature"),
                       tr("Temperature of the Boltzmann factors of back-transfer, in K. Nothing "
                          "else depends on it here: lifetime, Omega, transfer rates and the rates "
                          "above stay as they are given."),
                       tr("K"), QString::number(KineticParameters().temperature)});
    options.addOption({QStringLiteral("degeneracies"),
                       tr("Detailed balance: multiply back-transfer by the degeneracies of donor "
                          "(1 or 3) over acceptor (2J + 1), which are left out by default.")});
}

KineticParameters readKinetics(const OptionReader &options, bool twoTriplets)
{
    KineticParameters parameters;
    for (const RateOption &option : rateOptions) {
        double &rate = parameters.*(twoTriplets ? option.rateOfTwo : option.rate);
        const bool isExcitation = option.rate == &KineticParameters::excitation;
        if (options.isSet(option.name))
            rate = numberWithin(options, option.name, isExcitation ? 1e-6 : 0.0, highestRate,
                                tr("s^-1"));
        options.setInForce(option.name, rate);
    }
    if (options.isSet("triplet-crossing") && !twoTriplets)
        options.refuse(tr("--triplet-crossing needs --two-triplets"));
    if (options.isSet("temperature"))
        parameters.temperature = numberWithin(options, "temperature", 1.0, 2000.0, tr("K"));
    parameters.withDegeneracies = options.isSet("degeneracies");
    return parameters;
}

} // namespace cli
