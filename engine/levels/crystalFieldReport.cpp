#include "LanqorCrystalField.h"

#include "core/reportText_p.h"
#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

// The record of a crystal field as text and as tables.

using LanqorSpectroscopicTermUtil::textOfJ;
using LanqorSpectroscopicTermUtil::textOfLevel;
using reportText::fixed;
using resultColumns::column;

namespace {

constexpr const char *wavenumber = "cm^-1";

QString shortNumber(double value)
{
    return QString::number(value, 'g', 8);
}

QString nameOf(FieldNormalisation normalisation)
{
    switch (normalisation) {
    case FieldNormalisation::Wybourne:
        return QStringLiteral("wybourne");
    case FieldNormalisation::Stevens:
        return QStringLiteral("stevens");
    case FieldNormalisation::StevensOperators:
        break;
    }
    return QStringLiteral("stevens-operators");
}

QString freeIonText(const CrystalFieldResults &results)
{
    const FreeIonParameters &ion = results.ion;
    QString text =
        QStringLiteral("Crystal field of %1\n")
            .arg((ion.symbol.isEmpty() ? QString() : ion.symbol + QStringLiteral("(III), ")) +
                 QStringLiteral("4f^%1").arg(ion.electrons));
    if (ion.F2 != 0.0)
        text += QStringLiteral("F2 %1  F4 %2  F6 %3  alpha %4  beta %5  gamma %6  ")
                    .arg(shortNumber(ion.F2), shortNumber(ion.F4), shortNumber(ion.F6),
                         shortNumber(ion.alpha), shortNumber(ion.beta), shortNumber(ion.gamma));
    text += QStringLiteral("zeta %1 cm^-1\n").arg(shortNumber(ion.zeta));
    if (!ion.source.isEmpty())
        text += QStringLiteral("(%1)\n").arg(ion.source);
    text +=
        QStringLiteral("\nStates: %1 of %2")
            .arg(QString::number(results.states), QString::number(results.statesOfConfiguration));
    if (results.states == results.statesOfConfiguration)
        return text + QStringLiteral(", no cut-off\n");
    return text +
           QStringLiteral(", of the free-ion levels up to %1 cm^-1\n"
                          "In second order those left out would move the states of %2 by up to %3 "
                          "cm^-1\nand the %4 lowest ones by up to %5 cm^-1, against the ground "
                          "state\n")
               .arg(shortNumber(results.cutOff), textOfLevel(results.groundMultiplet),
                    QString::number(results.groundCutOffShift, 'g', 3),
                    QString::number(results.shiftedStates),
                    QString::number(results.cutOffShift, 'g', 3));
}

QString fieldText(const CrystalFieldResults &results)
{
    QString text = QStringLiteral(
        "\nParameters, cm^-1. B(k,q): coefficients of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q)\n"
        "(Wybourne's normalisation), B(k,-q) = (-1)^q conj(B(k,q))\n"
        "    k    q          real     imaginary\n");
    for (const auto &B : results.fieldParameters)
        if (B.q >= 0)
            text += QString::number(B.k).rightJustified(5) +
                    QString::number(B.q).rightJustified(5) + fixed(B.real, 4, 14) +
                    fixed(B.imaginary, 4, 14) + QLatin1Char('\n');
    text += QStringLiteral("The same in Stevens's normalisation: A(k,q) <r^k>, and theta(k) A(k,q) "
                           "<r^k> of %1\n(q < 0: sine type; theta")
                .arg(textOfLevel(results.groundMultiplet));
    for (int i = 0; i < results.stevensFactors.size(); ++i)
        text += QStringLiteral(" (%1) %2")
                    .arg(QString::number(2 * i + 2),
                         QString::number(results.stevensFactors.at(i), 'g', 6));
    text += QStringLiteral(")\n    k    q       A <r^k>   theta A <r^k>\n");
    for (const auto &A : results.stevensParameters)
        text += QString::number(A.k).rightJustified(5) + QString::number(A.q).rightJustified(5) +
                fixed(A.value, 4, 15) + QString::number(A.ofOperators, 'g', 6).rightJustified(16) +
                QLatin1Char('\n');
    return text + QStringLiteral("Given in the normalisation: %1. Crystal-field strength Nv = %2 "
                                 "cm^-1\n")
                      .arg(nameOf(results.normalisation), fixed(results.crystalFieldStrength, 2));
}

/// "|4I9/2, -5/2>".
QString nameOf(const CrystalFieldResults::Component &component)
{
    return QStringLiteral("|%1, %2%3>")
        .arg(textOfLevel(component.label), component.M < 0.0 ? QStringLiteral("-") : QString(),
             textOfJ(component.M < 0.0 ? -component.M : component.M));
}

QString levelsText(const CrystalFieldResults &results, int components)
{
    QString text = QStringLiteral(
        "\nLevels: energy (cm^-1), degeneracy, mean J, largest multiplet, largest components "
        "|2S+1 L J, M>\n(per cent of the state with the largest moment along z)\n"
        "  No.       energy  deg  mean J\n");
    for (const auto &level : results.levels) {
        text += QString::number(level.number).rightJustified(5) + fixed(level.energy, 4, 13) +
                QString::number(level.degeneracy).rightJustified(5) + fixed(level.meanJ, 3, 8) +
                QStringLiteral("  ") +
                (textOfLevel(level.multiplet).leftJustified(9) +
                 fixed(100.0 * level.weightOfMultiplet, 1, 6) + QStringLiteral(" %"));
        for (const auto &part : level.components.mid(0, components))
            text += QStringLiteral("  %1 %2").arg(
                nameOf(part),
                fixed(100.0 * (part.real * part.real + part.imaginary * part.imaginary), 1));
        text += QLatin1Char('\n');
    }
    if (results.levels.size() < results.highestNumber)
        text += QStringLiteral("(%1 higher levels are not shown)\n")
                    .arg(results.highestNumber - results.levels.size());
    return text;
}

QString gTensorText(const CrystalFieldResults &results)
{
    if (results.gTensors.isEmpty())
        return QString();
    const QString kind =
        results.ion.electrons % 2 == 0
            ? QStringLiteral("of the effective spin 1/2 of each doublet; for an even number of "
                             "electrons only one\nprincipal value is not 0")
            : QStringLiteral("of the effective spin 1/2 of each doublet");
    QString text = QStringLiteral("\ng %1\n  No.       energy       g_x       g_y       g_z   "
                                  "principal values, direction of the largest\n")
                       .arg(kind);
    for (const auto &g : results.gTensors) {
        const auto &level = results.levels.at(g.level - results.levels.first().number);
        text += QString::number(g.level).rightJustified(5) + fixed(level.energy, 4, 13);
        for (const double value : {g.x, g.y, g.z})
            text += fixed(value, 5, 10);
        text += QLatin1Char(' ');
        for (const double value : g.principal)
            text += fixed(value, 5, 10);
        text += QStringLiteral("  (");
        for (int i = 6; i < 9; ++i)
            text += fixed(g.axes.at(i), 4, 8);
        text += QStringLiteral(")\n");
    }
    return text;
}

QString magnetismText(const CrystalFieldResults &results)
{
    if (results.susceptibilities.isEmpty())
        return QString();
    QString text = QStringLiteral(
        "\nSusceptibility of the linear response: chi T (cm^3 K/mol, CGS) along x, y, z and mean,\n"
        "effective moment (Bohr magnetons); without orbital reduction and diamagnetism, g of the "
        "spin %1\n"
        "      T/K           x           y           z        mean    moment");
    text = text.arg(shortNumber(results.spinFactor));
    const bool isOfEuropium = results.vanVleckLambda > 0.0;
    text += isOfEuropium ? QStringLiteral("   Van Vleck\n") : QStringLiteral("\n");
    for (const auto &s : results.susceptibilities) {
        text += shortNumber(s.T).rightJustified(9);
        for (const double value : {s.chiTx, s.chiTy, s.chiTz, s.chiT})
            text += fixed(value, 6, 12);
        text += fixed(s.effectiveMoment, 4, 10) +
                (isOfEuropium ? fixed(s.vanVleck, 6, 12) : QString()) + QLatin1Char('\n');
    }
    if (isOfEuropium)
        text += QStringLiteral("(Van Vleck: pure 7FJ at lambda J(J+1)/2 without a field, lambda = "
                               "%1 cm^-1, g 2)\n")
                    .arg(fixed(results.vanVleckLambda, 1));
    if (results.magnetisations.isEmpty())
        return text;
    text += QStringLiteral("\nMagnetisation of the powder, Bohr magnetons an ion\n"
                           "      T/K    B/tesla      moment\n");
    for (const auto &M : results.magnetisations)
        text += shortNumber(M.T).rightJustified(9) + shortNumber(M.B).rightJustified(11) +
                fixed(M.moment, 5, 12) + QLatin1Char('\n');
    return text;
}

using Rows = QVector<QVector<QVariant>>;

void addFieldTables(const CrystalFieldResults &results, LanqorResultTables &tables)
{
    Rows rows;
    for (const auto &B : results.fieldParameters)
        rows.append({B.k, B.q, B.real, B.imaginary});
    tables.addTable(QStringLiteral("crystal_field_parameters"),
                    {column("k"), column("q"), column("real_part", wavenumber),
                     column("imaginary_part", wavenumber)},
                    rows);
    rows.clear();
    for (const auto &A : results.stevensParameters)
        rows.append({A.k, A.q, A.value, A.ofOperators});
    tables.addTable(
        QStringLiteral("stevens_parameters"),
        {column("k"), column("q"), column("a_r_k", wavenumber), column("theta_a_r_k", wavenumber)},
        rows);
}

void addLevelTables(const CrystalFieldResults &results, LanqorResultTables &tables)
{
    Rows rows;
    for (const auto &level : results.freeIonLevels)
        rows.append({textOfLevel(level.label), level.J, level.energy});
    tables.addTable(QStringLiteral("free_ion_levels"),
                    {column("label"), column("j"), column("energy", wavenumber)}, rows);
    rows.clear();
    Rows components;
    for (const auto &level : results.levels) {
        rows.append({level.number, level.energy, level.degeneracy, level.meanJ,
                     textOfLevel(level.multiplet), 100.0 * level.weightOfMultiplet});
        for (const auto &part : level.components)
            components.append(
                {level.number, textOfLevel(part.label), part.M, part.real, part.imaginary});
    }
    tables.addTable(QStringLiteral("levels"),
                    {column("level_from_1"), column("energy", wavenumber), column("degeneracy"),
                     column("mean_j", "1"), column("label"), column("weight_of_label", "%")},
                    rows);
    tables.addTable(QStringLiteral("composition"),
                    {column("level_from_1"), column("component"), column("m"),
                     column("real_part", "1"), column("imaginary_part", "1")},
                    components);
}

void addMagneticTables(const CrystalFieldResults &results, LanqorResultTables &tables)
{
    Rows rows;
    for (const auto &g : results.gTensors) {
        QVector<QVariant> row = {g.level, g.x, g.y, g.z};
        for (const double value : g.principal + g.axes)
            row.append(value);
        rows.append(row);
    }
    QVector<ResultColumn> columns = {column("level_from_1"), column("g_x", "1"), column("g_y", "1"),
                                     column("g_z", "1")};
    for (const char *key :
         {"g_1", "g_2", "g_3", "x_1", "y_1", "z_1", "x_2", "y_2", "z_2", "x_3", "y_3", "z_3"})
        columns.append(column(key, "1"));
    tables.addTable(QStringLiteral("g_tensors"), columns, rows);
    rows.clear();
    for (const auto &s : results.susceptibilities)
        rows.append({s.T, s.chiTx, s.chiTy, s.chiTz, s.chiT, s.effectiveMoment,
                     s.vanVleck > 0.0 ? QVariant(s.vanVleck) : QVariant()});
    tables.addTable(QStringLiteral("susceptibility"),
                    {column("temperature", "K"), column("chi_t_x", "cm^3 K/mol"),
                     column("chi_t_y", "cm^3 K/mol"), column("chi_t_z", "cm^3 K/mol"),
                     column("chi_t", "cm^3 K/mol"), column("effective_moment", "mu_B"),
                     column("van_vleck_chi_t", "cm^3 K/mol")},
                    rows);
    rows.clear();
    for (const auto &M : results.magnetisations)
        rows.append({M.T, M.B, M.moment});
    tables.addTable(QStringLiteral("magnetisation"),
                    {column("temperature", "K"), column("field", "T"), column("moment", "mu_B")},
                    rows);
}

} // namespace

QString LanqorCrystalField::makeText(const CrystalFieldResults &results, const int &components)
{
    return freeIonText(results) + fieldText(results) + levelsText(results, components) +
           gTensorText(results) + magnetismText(results);
}

LanqorResultTables LanqorCrystalField::makeTables(const CrystalFieldResults &results)
{
    LanqorResultTables tables = LanqorFreeIonParameters::makeTables({results.ion});
    const auto factor = [&results](int i) {
        return i < results.stevensFactors.size() ? QVariant(results.stevensFactors.at(i))
                                                 : QVariant();
    };
    tables.addRecord(QStringLiteral("crystal_field"),
                     {column("normalisation"), column("crystal_field_strength", wavenumber),
                      column("ground_multiplet"), column("theta_2", "1"), column("theta_4", "1"),
                      column("theta_6", "1"), column("cut_off", wavenumber), column("states"),
                      column("states_of_configuration"),
                      column("cut_off_shift_of_ground_multiplet", wavenumber),
                      column("cut_off_shift", wavenumber), column("shifted_states"),
                      column("lowest_energy", wavenumber), column("spin_g", "1")},
                     {nameOf(results.normalisation), results.crystalFieldStrength,
                      textOfLevel(results.groundMultiplet), factor(0), factor(1), factor(2),
                      results.cutOff > 0.0 ? QVariant(results.cutOff) : QVariant(), results.states,
                      results.statesOfConfiguration, results.groundCutOffShift, results.cutOffShift,
                      results.shiftedStates, results.lowestEnergy, results.spinFactor});
    addFieldTables(results, tables);
    addLevelTables(results, tables);
    addMagneticTables(results, tables);
    return tables;
}
