#include "options/statePrograms.h"

#include "Command.h"
#include "text.h"

#include <QFileInfo>

namespace cli {

namespace {

constexpr StateProgram programs[] = {
    {"orca", "ORCA", LanqorInputData::OrcaOutput},
    {"gaussian", "Gaussian", LanqorInputData::GaussianOutput},
    {"zindo", "ZINDO", LanqorInputData::ZindoOutput},
    {"mopac", "MOPAC INDO", LanqorInputData::MopacIndoOutput},
};

} // namespace

QStringList stateFiles(const QString &text)
{
    const auto exists = [](const QString &file) { return QFileInfo::exists(file); };
    QStringList nearest = {text};
    if (exists(text))
        return nearest;
    for (int comma = text.indexOf(QLatin1Char(',')); comma >= 0;
         comma = text.indexOf(QLatin1Char(','), comma + 1)) {
        const QStringList pair = {text.left(comma), text.mid(comma + 1)};
        if (exists(pair.first()) && exists(pair.last()))
            return pair;
        if (exists(pair.first()) || exists(pair.last()))
            nearest = pair;
    }
    return nearest;
}

void checkStateFiles(const QStringList &files)
{
    for (const QString &file : files)
        if (!QFileInfo::exists(file))
            throw Failure{tr("%1 does not exist.").arg(file)};
}

void readPair(LanqorInputData &output, const StateProgram &program, const QStringList &files)
{
    if (files.size() < 2)
        return;
    if (program.type != LanqorInputData::MopacIndoOutput)
        throw Failure{tr("%1 is an output of %2, which holds all states in one file; a pair of "
                         "files belongs to MOPAC INDO jobs")
                          .arg(files.first(), QLatin1String(program.title))};
    if (!output.readOutputMopacIndo(files.first(), files.last()))
        failOf(output);
}

QString programNames()
{
    return tr("orca, gaussian, zindo or mopac");
}

const StateProgram *stateProgramNamed(const QString &name)
{
    for (const StateProgram &program : programs)
        if (name == QLatin1String(program.name))
            return &program;
    return nullptr;
}

const StateProgram *stateProgramOf(const LanqorInputData &output)
{
    const LanqorInputData::ProgramType type = output.detectProgram();
    for (const StateProgram &program : programs)
        if (program.type == type)
            return &program;
    return nullptr;
}

QString unknownProgram(const QString &fileName)
{
    const QString kind = LanqorInputData::getFileDescription(fileName);
    return kind.isEmpty()
               ? tr("%1 is not known as an output of ORCA, Gaussian, ZINDO or MOPAC INDO; name "
                    "the program by --program")
                     .arg(fileName)
               : tr("%1 is %2, not an output of ORCA, Gaussian, ZINDO or MOPAC INDO")
                     .arg(fileName, kind);
}

} // namespace cli
