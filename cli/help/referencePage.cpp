#include "help/CommandHelp.h"

namespace cli {

namespace {

/// Text without the characters that Markdown takes for markup. Its dialects differ in those that a
/// backslash protects; all know the names of HTML.
QString markdown(const QString &text)
{
    QString result;
    for (const QChar letter : text) {
        if (letter == QLatin1Char('|'))
            result += QStringLiteral("&#124;");
        else if (QStringLiteral("<>&").contains(letter))
            result += QString(letter).toHtmlEscaped();
        else if (QStringLiteral("\\`*_[]#").contains(letter))
            result += QLatin1Char('\\') + QString(letter);
        else
            result += letter;
    }
    return result;
}

QString verbatim(const QString &text)
{
    return QStringLiteral("```text\n%1\n```\n\n").arg(text);
}

} // namespace

QString referencePage(const CommandHelp &help)
{
    QString usage = QStringLiteral("lanqor %1 [options]").arg(help.name);
    for (const CommandHelp::Argument &argument : help.arguments)
        usage += QLatin1Char(' ') + argument.syntax;
    QString page = QStringLiteral("# lanqor %1\n\n%2\n\n").arg(help.name, markdown(help.summary)) +
                   verbatim(usage);
    for (const HelpBlock &block : blocksOf(help.description))
        page +=
            block.isVerbatim ? verbatim(block.text) : markdown(block.text) + QStringLiteral("\n\n");
    const auto table = [&page](const QString &title) {
        page += QStringLiteral("## %1\n\n| | |\n| --- | --- |\n").arg(title);
    };
    const auto row = [&page](const QString &term, const QString &meaning) {
        page += QStringLiteral("| <code>%1</code> | %2 |\n").arg(markdown(term), markdown(meaning));
    };
    if (!help.arguments.isEmpty()) {
        table(QStringLiteral("Arguments"));
        for (const CommandHelp::Argument &argument : help.arguments)
            row(argument.name, argument.description);
        page += QLatin1Char('\n');
    }
    table(QStringLiteral("Options"));
    for (const CommandHelp::Option &option : help.options) {
        const QString value =
            option.valueName.isEmpty() ? QString() : QStringLiteral(" <%1>").arg(option.valueName);
        row(QStringLiteral("--") + option.name + value, option.description);
    }
    return page;
}

} // namespace cli
