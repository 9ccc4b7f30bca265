#include "help/CommandHelp.h"

#include <QMap>

namespace cli {

namespace {

/// Argument of _filedir: the suffixes of the files that fit, folders besides; none: any file.
QString patternOf(const QStringList &suffixes)
{
    return suffixes.isEmpty() ? QString()
                              : QStringLiteral(" '@(%1)'").arg(suffixes.join(QLatin1Char('|')));
}

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

/// True when the value of an option is the name of a file.
bool isFile(const CommandHelp::Option &option)
{
    return option.valueName == QLatin1String("file") ||
           option.valueName == QLatin1String("folder") || !option.suffixes.isEmpty();
}

} // namespace

QString bashCompletion(const QVector<CommandHelp> &commands)
{
    QStringList first;
    QMap<QString, QStringList> families;
    QString cases;
    for (const CommandHelp &command : commands) {
        const QStringList words = command.name.split(QLatin1Char(' '));
        if (!first.contains(words.first()))
            first.append(words.first());
        if (words.size() > 1)
            families[words.first()].append(words.last());
        QStringList names;
        QString values;
        for (const CommandHelp::Option &option : command.options) {
            names.append(QStringLiteral("--") + option.name);
            if (isFile(option))
                values += QStringLiteral("            --%1) _filedir%2; return ;;\n")
                              .arg(option.name, patternOf(option.suffixes));
            else if (!option.valueName.isEmpty())
                values += QStringLiteral("            --%1) return ;;\n").arg(option.name);
        }
        QStringList suffixes;
        bool isAnyFile = false;
        for (const CommandHelp::Argument &argument : command.arguments) {
            suffixes += argument.suffixes;
            isAnyFile = isAnyFile || argument.suffixes.isEmpty();
        }
        suffixes.removeDuplicates();
        cases += QStringLiteral(
                     "        %1)\n            case $prev in\n%2            esac\n"
                     "            options=%3\n            [[ $cur == -* ]] || _filedir%4 ;;\n")
                     .arg(quoted(command.name), values, quoted(names.join(QLatin1Char(' '))),
                          isAnyFile ? QString() : patternOf(suffixes));
    }
    QString seconds;
    for (auto family = families.cbegin(); family != families.cend(); ++family)
        seconds +=
            QStringLiteral("        %1) COMPREPLY=($(compgen -W %2 -- \"$cur\")); return ;;\n")
                .arg(family.key(), quoted(family->join(QLatin1Char(' '))));
    return QStringLiteral(
               "# bash completion of the lanqor program, with the functions of bash-completion\n"
               "_lanqor()\n{\n"
               "    local cur prev words cword options=''\n"
               "    _init_completion || return\n"
               "    local command=${words[1]}\n"
               "    if ((cword == 1)); then\n"
               "        COMPREPLY=($(compgen -W '%1 --help --version' -- \"$cur\"))\n"
               "        return\n    fi\n"
               "    if ((cword == 2)); then\n"
               "        case $command in\n%2        esac\n"
               "    fi\n"
               "    case $command in\n        %3) command+=\" ${words[2]}\" ;;\n    esac\n"
               "    case $command in\n%4    esac\n"
               "    [[ $cur != -* ]] || COMPREPLY=($(compgen -W \"$options --help\" -- \"$cur\"))\n"
               "}\n"
               "complete -F _lanqor lanqor\n")
        .arg(first.join(QLatin1Char(' ')), seconds,
             QStringList(families.keys()).join(QLatin1Char('|')), cases);
}

} // namespace cli
