#include "help/CommandHelp.h"

namespace cli {

QString pageName(const CommandHelp &help)
{
    return QStringLiteral("lanqor-") +
           QString(help.name).replace(QLatin1Char(' '), QLatin1Char('-'));
}

QVector<HelpBlock> blocksOf(const QString &description)
{
    QVector<HelpBlock> blocks;
    bool isOpen = false; // the last block goes on
    for (const QString &line : description.split(QLatin1Char('\n'))) {
        const QString text = line.trimmed();
        if (text.isEmpty()) {
            isOpen = false;
            continue;
        }
        const bool isVerbatim = line.startsWith(QLatin1Char(' '));
        if (!isOpen || blocks.last().isVerbatim != isVerbatim)
            blocks.append({isVerbatim ? line : text, isVerbatim});
        else
            blocks.last().text += isVerbatim ? QLatin1Char('\n') + line : QLatin1Char(' ') + text;
        isOpen = true;
    }
    return blocks;
}

} // namespace cli
