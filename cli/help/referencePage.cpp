#include "help/CommandHelp.h"

namespace cli {

namespace {

/// Text without the characters that Markdown takes for markup.
QString markdown(const QString &text)
{
    QString result;
    for (const QChar letter : text) {
        if (QStringLiteral("\\`*_<>[]#|").contains(letter))
            result += QLatin1Char('\\');
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
        page += QStringLiteral("| `%1` | %2 |\n").arg(term, markdown(meaning));
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
        row(QStringLiteral("--") +
                QString(option.name + value).replace(QLatin1Char('|'), QStringLiteral("\\|")),
            option.description);
    }
    return page;
}

} // namespace cli
