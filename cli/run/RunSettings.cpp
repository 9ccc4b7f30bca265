#include "run/RunSettings.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/statePrograms.h"
#include "text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <functional>
#include <sstream>

#include <toml++/toml.h>

namespace cli {

namespace {

constexpr auto structureKey = "structure";
constexpr auto intensityHeading = QT_TRANSLATE_NOOP(
    "cli", "Intensities: one of spectrum; omega2 and omega4; g and alpha; q, d and c");
constexpr auto file = RunSetting::Kind::File;
constexpr auto flag = RunSetting::Kind::Flag;
constexpr auto plain = RunSetting::Kind::Text;

QVector<RunSettingGroup> makeGroups()
{
    return {
        {QT_TRANSLATE_NOOP("cli", "The complex"),
         {
             {"charge", "n",
              "Charge of all atoms, ion included; unless given that of the file or of the known "
              "ligands, and refused when neither tells it.",
              nullptr, "0"},
             {"molecule", "K",
              "Number of the complex of a crystal structure (.cif, .pdb) that holds several.",
              nullptr, "1"},
             {"coordination", "N",
              "Coordinated atoms: the N nearest that can bind; unless given, O and N within 2.65, "
              "Cl "
              "and S within 2.9, I within 3.0 Angstrom.",
              nullptr, "9"},
             {"drop-unbound", nullptr, "Leave out fragments that are not bound to the ion.",
              nullptr, nullptr, flag},
         }},
        {QT_TRANSLATE_NOOP("cli", "Geometry"),
         {
             {"geometry", "mopac|xtb|as-is",
              "Geometry for the intensities: optimised by MOPAC with a sparkle for the ion, by xtb "
              "GFN1, or that of the file as it is.",
              "mopac", nullptr},
             {"method", "name", "Method of MOPAC: AM1, PM3, PM6, PM7, RM1.", "RM1", nullptr},
             {"solvent", "name",
              "Solvent of all calculations, as xtb and MOPAC know it (water, acetonitrile, "
              "toluene ...); gas phase unless given.",
              nullptr, "water"},
         }},
        {QT_TRANSLATE_NOOP("cli", "Donor states"),
         {
             {"triplet-energy", "cm^-1",
              "Measured triplet of the ligands, as 19500+-300. Worth more than any calculated one.",
              nullptr, "19500+-300"},
             {"t1", "measured|indo|gfn1",
              "Which triplet goes on; unless given the measured one, else that of INDO, for "
              "ligands with a five-membered ring that of GFN1.",
              nullptr, "indo"},
             {"donor", "formula",
              "The ligand that takes up the light, by its formula; unless given the one with the "
              "lowest triplet of its own.",
              nullptr, "C5H7O2"},
             {"donor-model", "formula",
              "Calculate the GFN1 triplet of this ligand on a model: the ligand alone when it is "
              "neutral, [EuL3(H2O)] of an anion.",
              nullptr, "C10H8N2"},
             {"excited", "file",
              "Excited states by ORCA, Gaussian or ZINDO, or \"singlets.out,triplets.out\" of "
              "MOPAC "
              "INDO, in place of calculated ones.",
              nullptr, "ligands.orcout", file},
             {"program", "name", "Program that wrote it; found out by default.", nullptr, "orca"},
         }},
        {intensityHeading,
         {
             {"spectrum", "file",
              "Measured emission spectrum: two columns, nm or cm^-1 and intensity.", nullptr,
              "emission.csv", file},
             {"photon-counts", nullptr, "Its intensities count photons, not emitted power.",
              nullptr, nullptr, flag},
             {"axis", "axis", "Its first column: nm, cm-1 or auto.", "auto", nullptr},
             {"windows", "list", "Limits of its bands in nm or cm^-1: 0=575-583,1=583-603.",
              nullptr, "0=575-583,1=583-603"},
             {"baseline", "kind", "none, or linear: subtract a straight line from each band.",
              "none", nullptr},
             {"lifetime", "ms",
              "Measured lifetime of 5D0, as 0.45 or 0.45+-5%; unless given an estimate that may be "
              "off by a factor of 100.",
              nullptr, "0.45+-5%"},
             {"omega2", "value",
              "Measured Omega(2), 1e-20 cm^2, with its standard deviation or without: 20.5+-0.6.",
              nullptr, "20.5+-0.6"},
             {"omega4", "value", "Measured Omega(4), likewise.", nullptr, "8.1+-0.4"},
             {"g", "list", "Charge factors by element or atom: O=0.9,N=1.2,5=0.7.", nullptr,
              "O=0.9,N=1.2"},
             {"alpha", "list", "Polarisabilities, cubic Angstrom, likewise: O=3.1,N=4.0.", nullptr,
              "O=3.1,N=4.0"},
             {"q", "number", "Q of the QDC model, per electron (geometry by MOPAC).", nullptr,
              "0.15"},
             {"d", "number", "Its D, cubic Angstrom eV.", nullptr, "8"},
             {"c", "number", "Its C, cubic Angstrom.", nullptr, "5"},
             {"n", "index", "Refractive index of the medium.", "1.5", nullptr},
         }},
        {QT_TRANSLATE_NOOP("cli", "The run"),
         {
             {"force", nullptr,
              "Go on although the states of --excited are of other atoms than the complex.",
              nullptr, nullptr, flag},
             {"mopac", "path", "MOPAC; unless given that of PATH.", nullptr, "/opt/mopac/bin/mopac",
              file},
             {"xtb", "path", "xtb; unless given that of PATH.", nullptr, "/opt/xtb/bin/xtb", file},
             {"time-limit", "minutes", "Longest time of each job of an outside program.", "240",
              nullptr},
             {"samples", "number", "Sets of values for the error bars.", "4096", nullptr},
             {"out", "folder", "Folder of the run; the base name of the structure unless given.",
              nullptr, "complex", file},
             {"jobs", "1|2", "Outside programs side by side.", "1", nullptr, plain, true},
             {"until", "step",
              "Stop after this step: structure, geometry, ground-state, triplet, states, "
              "intensities or yield.",
              nullptr, "states", plain, true},
             {"redo", "step", "Do this finished step again.", nullptr, "geometry", plain, true},
         }},
    };
}

const RunSetting *settingOf(const QString &key)
{
    for (const RunSettingGroup &group : runSettingGroups())
        for (const RunSetting &setting : group.settings)
            if (key == QLatin1String(setting.name))
                return &setting;
    return nullptr;
}

QStringList allKeys()
{
    QStringList keys = {QLatin1String(structureKey)};
    for (const RunSettingGroup &group : runSettingGroups())
        for (const RunSetting &setting : group.settings)
            keys.append(QLatin1String(setting.name));
    return keys;
}

QString quoted(const QString &text)
{
    std::ostringstream stream;
    stream << toml::value<std::string>(text.toStdString());
    return QString::fromStdString(stream.str());
}

/// A value as TOML writes it: a number as it stands.
QString tomlValue(const QString &text)
{
    bool isNumber = false;
    text.toDouble(&isNumber);
    const bool isPlain =
        isNumber && std::all_of(text.begin(), text.end(), [](QChar letter) {
            return letter.isDigit() || letter == QLatin1Char('.') || letter == QLatin1Char('-');
        });
    const QString digits = text.startsWith(QLatin1Char('-')) ? text.mid(1) : text;
    const bool isToml = isPlain && !digits.startsWith(QLatin1Char('.')) &&
                        !digits.endsWith(QLatin1Char('.')) &&
                        (digits.size() == 1 || digits.at(0) != QLatin1Char('0') ||
                         digits.at(1) == QLatin1Char('.'));
    return isToml ? text : quoted(text);
}

/// Files that the value of a setting names, each made another by @p change. Excited states alone
/// may be a pair with a comma between them.
QString changePaths(const RunSetting &setting, const QString &value,
                    const std::function<QString(const QString &)> &change)
{
    if (QLatin1String(setting.name) != QLatin1String("excited"))
        return change(value);
    QStringList files = stateFiles(value);
    for (QString &name : files)
        name = change(name);
    return files.join(QLatin1Char(','));
}

/// Reads the keys of one TOML file.
class FileReader
{
public:
    explicit FileReader(const QString &fileName)
        : fileName(fileName)
        , folder(QFileInfo(fileName).absoluteDir())
    {}

    QStringList read()
    {
        QFile text(fileName);
        if (!text.open(QIODevice::ReadOnly))
            throw Failure{tr("%1 cannot be read: %2").arg(fileName, text.errorString())};
        try {
            const toml::table table = toml::parse(text.readAll().toStdString());
            for (const auto &[key, value] : table)
                readKey(QString::fromUtf8(key.str().data(), int(key.str().size())), value,
                        int(key.source().begin.line));
        } catch (const toml::parse_error &error) {
            refuse(int(error.source().begin.line),
                   QString::fromUtf8(error.description().data(), int(error.description().size())));
        }
        if (structure.isEmpty())
            throw Failure{
                tr("%1 names no structure; write structure = \"complex.cif\"").arg(fileName)};
        return QStringList(structure) + arguments;
    }

private:
    [[noreturn]] void refuse(int line, const QString &what) const
    {
        throw Failure{tr("%1, line %2: %3").arg(fileName, QString::number(line), what)};
    }

    [[noreturn]] void refuseKey(int line, const QString &key) const
    {
        const QString nearest = nearestWord(key, allKeys());
        const QString unknown = tr("%1 is no setting of a run").arg(key);
        refuse(line, (nearest.isEmpty() ? unknown + QLatin1Char(';')
                                        : tr("%1; is %2 meant?").arg(unknown, nearest)) +
                         tr(" \"lanqor run --example\" shows all"));
    }

    QString absolute(const QString &path) const
    {
        return QDir::cleanPath(folder.absoluteFilePath(path));
    }

    void readKey(const QString &key, const toml::node &value, int line)
    {
        const RunSetting *setting = settingOf(key);
        const bool isStructure = key == QLatin1String(structureKey);
        if (!setting && !isStructure)
            refuseKey(line, key);
        if (setting && setting->kind == RunSetting::Kind::Flag) {
            const auto isOn = value.value_exact<bool>();
            if (!isOn)
                refuse(line, tr("%1 is true or false").arg(key));
            if (*isOn)
                arguments.append(QStringLiteral("--") + key);
            return;
        }
        const QString text = textOf(value);
        if (text.isEmpty())
            refuse(line, tr("%1 needs a number or a text in quotation marks").arg(key));
        if (isStructure)
            structure = absolute(text);
        else
            arguments.append(QStringLiteral("--%1=%2").arg(
                key, setting->kind == RunSetting::Kind::File
                         ? changePaths(*setting, text,
                                       [this](const QString &name) { return absolute(name); })
                         : text));
    }

    static QString textOf(const toml::node &value)
    {
        if (const auto text = value.value_exact<std::string>())
            return QString::fromStdString(*text).trimmed();
        if (const auto whole = value.value_exact<int64_t>())
            return QString::number(*whole);
        if (const auto number = value.value_exact<double>())
            return QString::number(*number, 'g', QLocale::FloatingPointShortest);
        return QString();
    }

    QString fileName;
    QDir folder;
    QString structure;
    QStringList arguments;
};

} // namespace

const QVector<RunSettingGroup> &runSettingGroups()
{
    static const QVector<RunSettingGroup> groups = makeGroups();
    return groups;
}

void addRunOptions(OptionReader &reader)
{
    for (const RunSettingGroup &group : runSettingGroups())
        for (const RunSetting &setting : group.settings) {
            // Help and reading of error bars are added with those of other commands.
            if (QLatin1String(setting.name) == QLatin1String("samples"))
                continue;
            if (setting.kind == RunSetting::Kind::Flag)
                reader.addOption({QLatin1String(setting.name), tr(setting.help)});
            else
                reader.addOption({QLatin1String(setting.name), tr(setting.help), tr(setting.value),
                                  QLatin1String(setting.defaultValue)});
        }
}

QString runExample()
{
    QString text = tr("# A run of lanqor from a structure to the emission quantum yield:\n"
                      "#     lanqor run example.toml\n"
                      "# Every key is an option of the same name as well. Files are named relative "
                      "to the folder of\n"
                      "# this one. Lines that begin with # do not count.\n\n"
                      "# CIF, PDB, .xyz, MOL2, .mop, .zmt, .arc or an output of MOPAC\n") +
                   QStringLiteral("structure = \"complex.cif\"\n");
    for (const RunSettingGroup &group : runSettingGroups()) {
        text += QStringLiteral("\n# --- %1 ---\n").arg(tr(group.heading));
        for (const RunSetting &setting : group.settings) {
            const QString value = setting.kind == RunSetting::Kind::Flag ? QStringLiteral("true")
                                  : setting.example
                                      ? tomlValue(QLatin1String(setting.example))
                                      : tomlValue(QLatin1String(setting.defaultValue));
            text +=
                QStringLiteral("\n# %1\n%2%3 = %4\n")
                    .arg(tr(setting.help), setting.defaultValue ? QString() : QStringLiteral("# "),
                         QLatin1String(setting.name), value);
        }
    }
    return text;
}

QStringList readRunFile(const QString &fileName)
{
    return FileReader(fileName).read();
}

QString intensitySettings(const OptionReader &reader)
{
    QStringList texts;
    for (const RunSettingGroup &group : runSettingGroups())
        for (const RunSetting &setting : group.settings)
            if (group.heading == intensityHeading && setting.kind != RunSetting::Kind::File &&
                (reader.isSet(setting.name) || setting.defaultValue))
                texts.append(QStringLiteral("%1=%2").arg(QLatin1String(setting.name),
                                                         reader.text(setting.name)));
    return texts.join(QLatin1Char(' '));
}

QString resolvedRunFile(const OptionReader &reader, const QString &structureFile,
                        const QString &folder)
{
    const QDir home(folder);
    const auto relative = [&home](const QString &name) {
        const QString path = home.relativeFilePath(QFileInfo(name).absoluteFilePath());
        return path.isEmpty() ? QStringLiteral(".") : path;
    };
    QString text = tr("# \"lanqor run run.toml\" repeats this run.\n") +
                   QStringLiteral("structure = %1\n").arg(quoted(relative(structureFile)));
    for (const RunSettingGroup &group : runSettingGroups())
        for (const RunSetting &setting : group.settings) {
            if (setting.isOfCall)
                continue;
            const QString name = QLatin1String(setting.name);
            QString value = reader.text(setting.name);
            if (name == QLatin1String("out"))
                value = folder;
            if (setting.kind == RunSetting::Kind::Flag) {
                text +=
                    QStringLiteral("%1 = %2\n")
                        .arg(name, QLatin1String(reader.isSet(setting.name) ? "true" : "false"));
            } else if (!value.isEmpty()) {
                if (setting.kind == RunSetting::Kind::File)
                    value = changePaths(setting, value, relative);
                text += QStringLiteral("%1 = %2\n").arg(name, tomlValue(value));
            }
        }
    return text;
}

} // namespace cli
