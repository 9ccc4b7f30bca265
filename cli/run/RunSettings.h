#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace cli {

class OptionReader;

/// A setting of "lanqor run": an option of the command line and a key of the TOML file.
struct RunSetting
{
    /// Where its value is a file, which a TOML file names relative to its own folder.
    enum class Kind { Text, Flag, File };

    const char *name;
    const char *value; ///< placeholder of the help
    const char *help;
    const char *defaultValue; ///< or null
    const char *example;      ///< of the commented TOML file; null: the default
    Kind kind = Kind::Text;
    /// A setting of the call alone, which the resolved file leaves out.
    bool isOfCall = false;
};

/// Settings under one heading.
struct RunSettingGroup
{
    const char *heading;
    QVector<RunSetting> settings;
};

/// All settings in the order of help and file.
const QVector<RunSettingGroup> &runSettingGroups();

/// Adds all settings as options.
void addRunOptions(OptionReader &reader);

/// A commented TOML file with all settings.
QString runExample();

/// The arguments that a TOML file stands for: the structure first, then options with absolute
/// paths. Throws a Failure that names the line of what makes no sense.
QStringList readRunFile(const QString &fileName);

/// Those settings in force that intensities and yield depend on, besides the files that they name.
QString intensitySettings(const OptionReader &reader);

/// The settings in force as a TOML file in @p folder.
QString resolvedRunFile(const OptionReader &reader, const QString &structureFile,
                        const QString &folder);

} // namespace cli
