#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

namespace cli {

/// What a command tells of its own use. Its --help, manual page, completion and page of the
/// documentation are made of this.
struct CommandHelp
{
    struct Option
    {
        QString name;      ///< without dashes
        QString valueName; ///< empty for an option without a value
        QString description;
        QStringList suffixes; ///< of the files that are a value; empty: any
        QString usual;        ///< default value, which the description tells too; empty: none
    };
    struct Argument
    {
        QString name;
        QString syntax; ///< as in the usage line, "[FILE]"
        QString description;
        QStringList suffixes;
    };

    QString name;        ///< "fit omega"
    QString summary;     ///< one line
    QString description; ///< paragraphs between empty lines; indented lines stand as they are
    QVector<Argument> arguments;
    QVector<Option> options; ///< in the order of the help
};

/// The manual page in roff (man(7)), as "lanqor-fit-omega.1".
/// @param others  all commands, of which those of the same family are named
QString manualPage(const CommandHelp &help, const QVector<CommandHelp> &others);
/// The manual page of the program, with the list of commands by task.
/// @param overview  text of "lanqor --help"
QString programManualPage(const QVector<CommandHelp> &commands, const QString &overview);
/// A page of the documentation in Markdown.
QString referencePage(const CommandHelp &help);
/// Completion of the command line in bash.
QString bashCompletion(const QVector<CommandHelp> &commands);

/// Name of the manual page of a command: "lanqor-fit-omega".
QString pageName(const CommandHelp &help);

/// A description is made of paragraphs, and of blocks that stand as they are: lists and examples.
struct HelpBlock
{
    QString text; ///< lines between line feeds; of a paragraph one line
    bool isVerbatim = false;
};
QVector<HelpBlock> blocksOf(const QString &description);

} // namespace cli
