#include "options/freeIonOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace cli {

namespace {

enum class Source { Aqueous, Approximate, LanthanumFluoride };

/// Racah's E1, E2, E3 and zeta, cm^-1.
struct KnownIon
{
    const char *symbol;
    double E1, E2, E3, zeta;
    int electrons;
    Source source;
};

// Aqueous ions: W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49, 4424 (Pr to Sm, Dy to
// Tm; E3 of Pm is 525.96 in a reprint of the table), 4447 (Tb), 4450 (Eu) (1968). The values of Gd
// are rounded ones between those of its neighbours. Ce and Yb in LaF3: W. T. Carnall, G. L.
// Goodman, K. Rajnak, R. S. Rana, J. Chem. Phys. 90, 3443 (1989); one electron or hole has no
// electrostatic splitting, and the E of their neighbours only stand for the numbers that the
// calculation asks for.
constexpr KnownIon knownIons[] = {
    {"Ce", 4548.2, 21.937, 466.73, 647.3, 1, Source::LanthanumFluoride},
    {"Pr", 4548.2, 21.937, 466.73, 740.75, 2, Source::Aqueous},
    {"Nd", 4739.3, 23.999, 485.96, 884.58, 3, Source::Aqueous},
    {"Pm", 4921.6, 24.522, 525.53, 1000.8, 4, Source::Aqueous},
    {"Sm", 5496.9, 25.809, 556.40, 1157.3, 5, Source::Aqueous},
    {"Eu", 5573.0, 26.708, 557.39, 1326.0, 6, Source::Aqueous},
    {"Gd", 5761.0, 28.02, 582.0, 1450.0, 7, Source::Approximate},
    {"Tb", 6021.5, 29.03, 608.54, 1709.5, 8, Source::Aqueous},
    {"Dy", 6119.6, 30.012, 610.14, 1932.0, 9, Source::Aqueous},
    {"Ho", 6440.6, 30.22, 624.39, 2141.3, 10, Source::Aqueous},
    {"Er", 6769.9, 32.388, 646.62, 2380.7, 11, Source::Aqueous},
    {"Tm", 7142.4, 33.795, 674.27, 2628.7, 12, Source::Aqueous},
    {"Yb", 7142.4, 33.795, 674.27, 2928.0, 13, Source::LanthanumFluoride},
};

/// Superscript Slater integrals are F^k = D_k F_k.
constexpr double slaterDenominators[] = {225.0, 1089.0, 184041.0 / 25.0};

/// cm^-1; the subscript integrals of all ions are far below, the superscript ones far above.
constexpr double largestSubscript = 5000.0;

const KnownIon *findIon(const QString &symbol)
{
    for (const KnownIon &ion : knownIons)
        if (symbol.compare(QLatin1String(ion.symbol), Qt::CaseInsensitive) == 0)
            return &ion;
    return nullptr;
}

void takeParameters(const KnownIon &known, FreeIon &ion)
{
    ion.F2 = (known.E1 + 143.0 * known.E2 + 11.0 * known.E3) / 42.0;
    ion.F4 = (known.E1 - 130.0 * known.E2 + 4.0 * known.E3) / 77.0;
    ion.F6 = (known.E1 + 35.0 * known.E2 - 7.0 * known.E3) / 462.0;
    ion.zeta = known.zeta;
    switch (known.source) {
    case Source::Aqueous:
        ion.source = tr("aqueous ion, W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49, "
                        "4424 ff. (1968)");
        break;
    case Source::Approximate:
        ion.source = tr("approximate values, between those of the neighbouring aqueous ions");
        break;
    case Source::LanthanumFluoride:
        ion.source = tr("ion in LaF3, W. T. Carnall et al., J. Chem. Phys. 90, 3443 (1989)");
        break;
    }
}

/// An ion by --ion or by --electrons, with its published parameters.
FreeIon chooseIon(const OptionReader &options)
{
    const KnownIon *known = nullptr;
    FreeIon ion;
    if (options.isSet("ion")) {
        QString symbol = options.text("ion").trimmed();
        if (symbol.endsWith(QStringLiteral("3+")))
            symbol.chop(2);
        known = findIon(symbol);
        if (!known)
            options.refuse(tr("--ion: \"%1\" is none of %2").arg(symbol, freeIonNames()));
        ion.name = QStringLiteral("%1(III), 4f^%2")
                       .arg(QLatin1String(known->symbol))
                       .arg(known->electrons);
    }
    if (options.isSet("electrons")) {
        const int electrons =
            options.wholeNumber("electrons", 1, 13, tr("the number of 4f electrons, 1 to 13"));
        if (known && known->electrons != electrons)
            options.refuse(tr("--ion %1 has %2 4f electrons, not %3")
                               .arg(QLatin1String(known->symbol))
                               .arg(known->electrons)
                               .arg(electrons));
        if (!known) {
            known = &knownIons[electrons - 1];
            ion.name = QStringLiteral("4f^%1").arg(electrons);
        }
    }
    if (!known)
        options.refuse(tr("which ion? Give --ion (%1) or --electrons").arg(freeIonNames()));
    ion.electrons = known->electrons;
    takeParameters(*known, ion);
    return ion;
}

/// Reads a positive parameter, if it is given.
void readParameter(const OptionReader &options, const QString &name, double perUnit, double &value,
                   bool &isGiven)
{
    const QByteArray option = name.toLatin1();
    if (!options.isSet(option))
        return;
    const double number = options.number(
        option, [](double given) { return given > 0.0 && std::isfinite(given); },
        tr("a positive number, in cm^-1"));
    if (isGiven)
        options.refuse(
            tr("--%1: the same integral is given in the other convention too").arg(name));
    const bool isSubscript = perUnit == 1.0;
    if (name.startsWith(QLatin1Char('F')) && isSubscript == (number > largestSubscript)) {
        const QString message = isSubscript
                                    ? tr("--%1 takes the subscript integral, %2 cm^-1 at most: for "
                                         "the superscript one there is --Fk%3")
                                    : tr("--%1 takes the superscript integral, above %2 cm^-1: for "
                                         "the subscript one there is --F%3");
        options.refuse(message.arg(name).arg(largestSubscript).arg(name.right(1)));
    }
    value = number / perUnit;
    isGiven = true;
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
    });
}

QString freeIonNames()
{
    QStringList names;
    for (const KnownIon &ion : knownIons)
        names.append(QLatin1String(ion.symbol));
    return names.join(QStringLiteral(", "));
}

FreeIon readFreeIon(const OptionReader &options)
{
    FreeIon ion = chooseIon(options);
    double *integrals[] = {&ion.F2, &ion.F4, &ion.F6};
    bool given[4] = {};
    for (int i = 0; i < 3; ++i)
        for (const bool isSuperscript : {false, true}) {
            const QString option =
                QStringLiteral("F%1%2").arg(QLatin1String(isSuperscript ? "k" : "")).arg(2 * i + 2);
            readParameter(options, option, isSuperscript ? slaterDenominators[i] : 1.0,
                          *integrals[i], given[i]);
        }
    readParameter(options, QStringLiteral("zeta"), 1.0, ion.zeta, given[3]);
    if (given[0] && given[1] && given[2] && given[3])
        ion.source.clear();
    else if (given[0] || given[1] || given[2] || given[3])
        ion.source = tr("as given; the others: %1").arg(ion.source);
    return ion;
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

bool parseJ(const QString &text, double &J)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    bool isNumber = false;
    J = parts.at(0).toDouble(&isNumber);
    if (parts.size() == 2 && parts.at(1) == QLatin1String("2"))
        J /= 2.0;
    else if (parts.size() != 1)
        return false;
    return isNumber && J >= 0.0 && J < 100.0 && 2.0 * J == std::floor(2.0 * J);
}

QString textOfJ(double J)
{
    const int twice = static_cast<int>(2.0 * J);
    return twice % 2 == 0 ? QString::number(twice / 2) : QStringLiteral("%1/2").arg(twice);
}

} // namespace cli
