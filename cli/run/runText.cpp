#include "run/RunDocument.h"
#include "run/RunReport.h"
#include "run/runOutputs.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using runDocument::Block;

constexpr int lineWidth = 100;

/// Words over several lines, those after the first indented.
QString wrapped(const QString &text, const QString &first, const QString &others)
{
    QString result;
    QString line = first;
    bool isEmptyLine = true;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        if (!isEmptyLine && line.size() + 1 + word.size() > lineWidth) {
            result += line + QLatin1Char('\n');
            line = others;
            isEmptyLine = true;
        }
        line += (isEmptyLine ? QString() : QStringLiteral(" ")) + word;
        isEmptyLine = false;
    }
    return result + line + QLatin1Char('\n');
}

bool isNumber(const QString &cell)
{
    bool isNumber = false;
    cell.toDouble(&isNumber);
    return isNumber;
}

/// Numbers at the right end of their columns; the last column is wrapped.
QString tableText(const Block &block)
{
    const int columns = block.columns.size();
    QVector<QStringList> rows;
    QStringList heading;
    for (const Block::Column &column : block.columns)
        heading.append(column.title);
    rows.append(heading);
    rows += block.rows;
    QVector<int> widths(columns, 0);
    QVector<bool> isRight(columns, true);
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < columns; ++c) {
            const QString &cell = rows.at(r).value(c);
            widths[c] = std::max(widths.at(c), int(cell.size()));
            isRight[c] = isRight.at(c) && (r == 0 || cell.isEmpty() || isNumber(cell));
        }
    QString text;
    for (const QStringList &row : qAsConst(rows)) {
        QString line = QStringLiteral("  ");
        for (int c = 0; c + 1 < columns; ++c)
            line += (isRight.at(c) ? row.value(c).rightJustified(widths.at(c))
                                   : row.value(c).leftJustified(widths.at(c))) +
                    QStringLiteral("  ");
        const int last = columns - 1;
        const QString cell =
            isRight.at(last) ? row.value(last).rightJustified(widths.at(last)) : row.value(last);
        const bool isWrapped = !isRight.at(last) && line.size() + 30 < lineWidth;
        text += isWrapped ? wrapped(cell, line, QString(line.size(), QLatin1Char(' ')))
                          : line + cell + QLatin1Char('\n');
    }
    return text;
}

QString factsText(const Block &block)
{
    int width = 0;
    for (const QStringList &row : block.rows)
        width = std::max(width, int(row.value(0).size()));
    QString text;
    for (const QStringList &row : block.rows)
        text +=
            wrapped(row.value(1),
                    QStringLiteral("  ") + row.value(0).leftJustified(width) + QStringLiteral("  "),
                    QString(width + 4, QLatin1Char(' ')));
    return text;
}

QString blockText(const Block &block)
{
    QString text;
    switch (block.kind) {
    case Block::Kind::Figure:
        return text;
    case Block::Kind::Paragraphs:
    case Block::Kind::Alerts:
        for (const QString &line : block.lines)
            text += wrapped(line, QString(), QString());
        break;
    case Block::Kind::List:
        for (const QString &line : block.lines)
            text += wrapped(line, QStringLiteral("  - "), QStringLiteral("    "));
        break;
    case Block::Kind::Facts:
        text = factsText(block);
        break;
    case Block::Kind::Table:
        text = tableText(block);
        break;
    case Block::Kind::Verbatim:
        for (const QString &line : block.lines)
            text += QStringLiteral("    ") + line + QLatin1Char('\n');
        break;
    }
    const QString heading =
        block.title.isEmpty() ? QString() : wrapped(block.title, QString(), QString());
    return heading + text + QLatin1Char('\n');
}

QString headed(const QString &title, QChar underline)
{
    return title + QLatin1Char('\n') + QString(title.size(), underline) + QStringLiteral("\n\n");
}

} // namespace

QString makeRunText(const RunReport &report)
{
    const runDocument::Document document = runDocument::documentOf(report);
    QString text =
        headed(document.title, QLatin1Char('=')) + document.subtitle + QStringLiteral("\n\n");
    for (const Block &block : document.opening)
        text += blockText(block);
    for (const runDocument::Section &section : document.sections) {
        text += headed(section.title, QLatin1Char('-'));
        for (const Block &block : section.blocks)
            text += blockText(block);
    }
    return text.replace(QRegularExpression(QStringLiteral(" +\n")), QStringLiteral("\n"));
}
