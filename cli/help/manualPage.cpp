#include "help/CommandHelp.h"

#include <QCoreApplication>

namespace cli {

namespace {

/// Text as roff shows it: a backslash begins a request to the formatter, a dash is a hyphen
/// unless it is marked, and a full stop or an apostrophe that begins a line is a macro.
QString roff(const QString &text)
{
    QString result = text;
    result.replace(QLatin1Char('\\'), QStringLiteral("\\e"))
        .replace(QLatin1Char('-'), QStringLiteral("\\-"))
        .replace(QStringLiteral("\n."), QStringLiteral("\n\\&."))
        .replace(QStringLiteral("\n'"), QStringLiteral("\n\\&'"));
    if (result.startsWith(QLatin1Char('.')) || result.startsWith(QLatin1Char('\'')))
        result.prepend(QStringLiteral("\\&"));
    return result;
}

QString verbatim(const QString &text)
{
    return QStringLiteral(".nf\n%1\n.fi\n").arg(roff(text));
}

QString titleLine(const QString &name)
{
    return QStringLiteral(".TH \"%1\" 1 \"\" \"LanqorEngine %2\" \"User Commands\"\n")
        .arg(name.toUpper(), QCoreApplication::applicationVersion());
}

QString nameSection(const QString &name, const QString &summary)
{
    return QStringLiteral(".SH NAME\n%1 \\- %2\n").arg(roff(name), roff(summary));
}

/// A term in bold, its value in italics, and what it means.
QString item(const QString &term, const QString &value, const QString &meaning)
{
    QString line = QStringLiteral(".TP\n\\fB%1\\fR").arg(roff(term));
    if (!value.isEmpty())
        line += QStringLiteral(" \\fI%1\\fR").arg(roff(value));
    return line + QLatin1Char('\n') + roff(meaning) + QLatin1Char('\n');
}

QString exitStatus()
{
    return QStringLiteral(".SH EXIT STATUS\n") +
           item(QStringLiteral("0"), QString(), QStringLiteral("Success.")) +
           item(QStringLiteral("1"), QString(),
                QStringLiteral("The input or the calculation failed.")) +
           item(QStringLiteral("2"), QString(), QStringLiteral("The command line is wrong.")) +
           item(QStringLiteral("130"), QString(),
                QStringLiteral("Ended by Ctrl-C; what was found so far is reported."));
}

QString seeAlso(const QStringList &pages)
{
    QStringList names;
    for (const QString &page : pages)
        names.append(QStringLiteral("\\fB%1\\fR(1)").arg(roff(page)));
    return QStringLiteral(".SH SEE ALSO\n%1\n").arg(names.join(QStringLiteral(",\n")));
}

} // namespace

QString manualPage(const CommandHelp &help, const QVector<CommandHelp> &others)
{
    QString page = titleLine(pageName(help)) + nameSection(pageName(help), help.summary);
    page +=
        QStringLiteral(".SH SYNOPSIS\n\\fBlanqor %1\\fR [\\fIoptions\\fR]").arg(roff(help.name));
    for (const CommandHelp::Argument &argument : help.arguments)
        page += QStringLiteral(" \\fI%1\\fR").arg(roff(argument.syntax));
    page += QStringLiteral("\n.SH DESCRIPTION\n");
    for (const HelpBlock &block : blocksOf(help.description))
        page += QStringLiteral(".PP\n") +
                (block.isVerbatim ? verbatim(block.text) : roff(block.text) + QLatin1Char('\n'));
    if (!help.arguments.isEmpty())
        page += QStringLiteral(".SH ARGUMENTS\n");
    for (const CommandHelp::Argument &argument : help.arguments)
        page += item(argument.name, QString(), argument.description);
    page += QStringLiteral(".SH OPTIONS\n");
    for (const CommandHelp::Option &option : help.options)
        page += item(QStringLiteral("--") + option.name, option.valueName, option.description);
    page += exitStatus();
    QStringList related = {QStringLiteral("lanqor")};
    for (const CommandHelp &other : others)
        if (other.name != help.name &&
            (other.name.section(QLatin1Char(' '), 0, 0) ==
                 help.name.section(QLatin1Char(' '), 0, 0) ||
             help.description.contains(QStringLiteral("\"lanqor %1\"").arg(other.name))))
            related.append(pageName(other));
    return page + seeAlso(related);
}

QString programManualPage(const QVector<CommandHelp> &commands, const QString &overview)
{
    const QString name = QStringLiteral("lanqor");
    QString page =
        titleLine(name) +
        nameSection(name, QStringLiteral("luminescence of lanthanide coordination compounds")) +
        QStringLiteral(".SH SYNOPSIS\n\\fBlanqor\\fR \\fICOMMAND\\fR [\\fIoptions\\fR] ...\n"
                       ".SH DESCRIPTION\n") +
        verbatim(overview.section(QLatin1Char('\n'), 1)) + exitStatus();
    QStringList pages;
    for (const CommandHelp &command : commands)
        pages.append(pageName(command));
    return page + seeAlso(pages);
}

} // namespace cli
