#include "LanqorSolvents.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString plain(const QString &name)
{
    QString text = name.toLower();
    for (const char c : {' ', '-', '_'})
        text.remove(QLatin1Char(c));
    return text;
}

} // namespace

QVector<Solvent> LanqorSolvents::table()
{
    // Names: xtb 6.5.1, GFN1 parameters of ALPB (S. Ehlert, M. Stahn, S. Spicher, S. Grimme, J.
    // Chem. Theory Comput. 17, 4250, 2021). Permittivities: CRC Handbook of Chemistry and Physics,
    // 95th ed. (2014), section 6, permittivity (dielectric constant) of liquids.
    static const QVector<Solvent> solvents = {
        {QStringLiteral("water"), {QStringLiteral("h2o")}, 80.10},
        {QStringLiteral("dmso"), {QStringLiteral("dimethylsulfoxide")}, 47.24},
        {QStringLiteral("dmf"), {QStringLiteral("dimethylformamide")}, 38.25},
        {QStringLiteral("nitromethane"), {QStringLiteral("ch3no2")}, 37.27},
        {QStringLiteral("acetonitrile"), {QStringLiteral("mecn"), QStringLiteral("ch3cn")}, 36.64},
        {QStringLiteral("methanol"), {QStringLiteral("meoh")}, 33.0},
        {QStringLiteral("ethanol"), {QStringLiteral("etoh")}, 25.3},
        {QStringLiteral("acetone"), {QStringLiteral("propanone")}, 21.01},
        {QStringLiteral("benzaldehyde"), {}, 17.85},
        {QStringLiteral("octanol"), {QStringLiteral("1octanol")}, 10.30},
        {QStringLiteral("ch2cl2"),
         {QStringLiteral("dichloromethane"), QStringLiteral("dcm")},
         8.93},
        {QStringLiteral("thf"), {QStringLiteral("tetrahydrofuran")}, 7.52},
        {QStringLiteral("aniline"), {}, 7.06},
        {QStringLiteral("ethylacetate"), {QStringLiteral("etoac")}, 6.081},
        {QStringLiteral("chcl3"), {QStringLiteral("chloroform")}, 4.807},
        {QStringLiteral("ether"), {QStringLiteral("diethylether"), QStringLiteral("et2o")}, 4.267},
        {QStringLiteral("cs2"), {QStringLiteral("carbondisulfide")}, 2.632},
        {QStringLiteral("toluene"), {}, 2.379},
        {QStringLiteral("benzene"), {}, 2.283},
        {QStringLiteral("dioxane"), {QStringLiteral("1,4dioxane")}, 2.219},
        {QStringLiteral("hexadecane"), {}, 2.046},
        {QStringLiteral("hexane"), {QStringLiteral("nhexane")}, 1.887},
    };
    return solvents;
}

std::optional<Solvent> LanqorSolvents::find(const QString &name)
{
    const QString wanted = plain(name);
    const QVector<Solvent> solvents = table();
    const auto found =
        std::find_if(solvents.begin(), solvents.end(), [&wanted](const Solvent &solvent) {
            return solvent.name == wanted || solvent.otherNames.contains(wanted);
        });
    return found == solvents.end() ? std::nullopt : std::optional<Solvent>(*found);
}

QString LanqorSolvents::unknownSolvent(const QString &name)
{
    QStringList names;
    for (const Solvent &solvent : table())
        names.append(solvent.name);
    return QCoreApplication::translate("LanqorSolvents",
                                       "There is no solvent \"%1\" here; there are %2.")
        .arg(name, names.join(QStringLiteral(", ")));
}
