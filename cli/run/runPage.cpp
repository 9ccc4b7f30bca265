#include "run/RunDocument.h"
#include "run/RunReport.h"
#include "run/runOutputs.h"
#include "text.h"

#include <QRegularExpression>

namespace {

using runDocument::Block;

/// On paper and on a telephone; pictures and tables never wider than the page.
constexpr char style[] =
    "body{font-family:'DejaVu Sans',Verdana,Arial,sans-serif;font-size:16px;line-height:1.45;"
    "color:#202020;background:#fff;margin:0 auto;padding:0 16px 48px;max-width:60rem}"
    "h1{font-size:1.7rem;margin:1.2rem 0 .2rem;overflow-wrap:anywhere}"
    "h2{font-size:1.3rem;margin:2.2rem 0 .6rem;padding-bottom:.2rem;border-bottom:2px solid "
    "#00528c}"
    "h3{font-size:1rem;margin:1.3rem 0 .4rem}"
    "sup,sub{font-size:.72em;line-height:0}"
    "p{margin:.4rem 0;overflow-wrap:anywhere}.sub{color:#555}"
    ".alert{border-left:6px solid #d55e00;background:#fdf1e6;padding:.5rem .8rem;margin:.8rem 0}"
    ".alert p{font-weight:bold}"
    "dl{display:grid;grid-template-columns:minmax(9rem,15rem) 1fr;gap:.25rem 1rem;margin:.4rem 0}"
    "dt{color:#555}dd{margin:0;overflow-wrap:anywhere}"
    ".main{border:1px solid #c4c4c4;padding:.6rem .9rem;margin:1rem 0}"
    ".main dd{font-weight:bold}"
    ".wide{overflow-x:auto}"
    "table{border-collapse:collapse;font-size:.9rem;margin:.3rem 0}"
    "th,td{padding:.22rem .7rem;border-bottom:1px solid #ddd;text-align:left;vertical-align:top}"
    "th{border-bottom:2px solid #808080;vertical-align:bottom}"
    "td.number,th.number{text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums}"
    "pre,code{font-family:'DejaVu Sans Mono',Menlo,Consolas,monospace;font-size:.82rem}"
    "pre{background:#f4f4f4;padding:.5rem .7rem;white-space:pre-wrap;overflow-wrap:anywhere}"
    "code{overflow-wrap:anywhere}"
    "td{overflow-wrap:anywhere;min-width:4.4rem}td.number{min-width:0}"
    "ul{margin:.4rem 0;padding-left:1.3rem}li{margin:.2rem 0;overflow-wrap:anywhere}"
    "figure{margin:1rem 0;max-width:42rem}"
    "figure svg{display:block;width:100%;height:auto}"
    "figure svg text{font-family:'DejaVu Sans',Verdana,Arial,sans-serif}"
    "figcaption{color:#555;font-size:.9rem}"
    "@media(max-width:40rem){body{padding:0 10px 32px;font-size:15px}"
    "dl{grid-template-columns:1fr;gap:0}dd{margin-bottom:.45rem}table{font-size:.82rem}"
    "th,td{padding:.2rem .4rem}}"
    "@media print{body{max-width:none;font-size:10pt;padding:0}"
    "figure{max-width:12cm}figure,table,dl,.alert{break-inside:avoid}h2,h3{break-after:avoid}}";

/// A text of the record: escaped, then with signs in place of their spellings.
QString html(const QString &text)
{
    static const QRegularExpression power(QStringLiteral("\\b(cm|s|Angstrom)\\^(-?\\d)"));
    static const QRegularExpression level(QStringLiteral("\\b([57])([DFGL])([0-6])\\b"));
    static const QRegularExpression times(QStringLiteral("(\\d) 1e-20 cm"));
    QString result = text.toHtmlEscaped();
    result.replace(times, QString::fromUtf8("\\1 × 1e-20 cm"));
    result.replace(QStringLiteral("1e-20 cm"), QString::fromUtf8("10<sup>−20</sup> cm"));
    result.replace(power, QStringLiteral("\\1<sup>\\2</sup>"));
    result.replace(level, QStringLiteral("<sup>\\1</sup>\\2<sub>\\3</sub>"));
    result.replace(QStringLiteral("Omega("), QString::fromUtf8("Ω("));
    result.replace(QStringLiteral("Angstrom"), QString::fromUtf8("Å"));
    result.replace(QStringLiteral(" +- "), QString::fromUtf8(" ± "));
    return result.replace(QStringLiteral("-&gt;"), QString::fromUtf8("→"));
}

QString element(const char *tag, const QString &content, const char *attributes = "")
{
    return QStringLiteral("<%1%2>%3</%1>\n")
        .arg(QLatin1String(tag), QLatin1String(attributes), content);
}

QString elements(const char *tag, const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += element(tag, html(line));
    return text;
}

QString verbatim(const QString &text)
{
    return QStringLiteral("<code>") + text.toHtmlEscaped() + QStringLiteral("</code>");
}

QString tableHtml(const Block &block)
{
    constexpr char numberClass[] = " class=\"number\"";
    QVector<const char *> classes;
    QString heading;
    for (int c = 0; c < block.columns.size(); ++c) {
        bool isNumeric = true;
        for (const QStringList &row : block.rows) {
            bool isNumber = row.value(c).isEmpty();
            if (!isNumber)
                row.value(c).toDouble(&isNumber);
            isNumeric = isNumeric && isNumber;
        }
        classes.append(isNumeric ? numberClass : "");
        heading += element("th", html(block.columns.at(c).title), classes.at(c));
    }
    QString rows = element("tr", heading);
    for (const QStringList &row : block.rows) {
        QString cells;
        for (int c = 0; c < block.columns.size(); ++c)
            cells += element(
                "td", block.columns.at(c).isVerbatim ? verbatim(row.value(c)) : html(row.value(c)),
                classes.at(c));
        rows += element("tr", cells);
    }
    return element("div", element("table", rows), " class=\"wide\"");
}

QString factsHtml(const Block &block)
{
    QString rows;
    for (const QStringList &row : block.rows)
        rows += element("dt", html(row.value(0))) + element("dd", html(row.value(1)));
    return element("dl", rows);
}

QString figureHtml(const Block &block)
{
    const QByteArray svg = plots::inlineSvg(block.picture);
    return svg.isEmpty() ? QString()
                         : element("figure", QString::fromUtf8(svg) +
                                                 element("figcaption", html(block.title)));
}

QString blockHtml(const Block &block)
{
    if (block.kind == Block::Kind::Figure)
        return figureHtml(block);
    const QString title = block.title.isEmpty() ? QString() : element("h3", html(block.title));
    switch (block.kind) {
    case Block::Kind::Paragraphs:
        return title + elements("p", block.lines);
    case Block::Kind::Alerts:
        return title + element("div", elements("p", block.lines), " class=\"alert\"");
    case Block::Kind::List:
        return title + element("ul", elements("li", block.lines));
    case Block::Kind::Facts:
        return title + factsHtml(block);
    case Block::Kind::Table:
        return title + tableHtml(block);
    case Block::Kind::Verbatim:
        return title + element("pre", block.lines.join(QLatin1Char('\n')).toHtmlEscaped());
    case Block::Kind::Figure:
        break;
    }
    return QString();
}

} // namespace

QByteArray makeRunPage(const RunReport &report)
{
    const runDocument::Document document = runDocument::documentOf(report);
    QString body = element("h1", document.title.toHtmlEscaped()) +
                   element("p", document.subtitle.toHtmlEscaped(), " class=\"sub\"");
    for (const Block &block : document.opening) {
        const bool isMain = block.kind == Block::Kind::Facts;
        body += isMain ? element("div", blockHtml(block), " class=\"main\"") : blockHtml(block);
    }
    for (const runDocument::Section &section : document.sections) {
        QString content = element("h2", html(section.title));
        for (const Block &block : section.blocks)
            content += blockHtml(block);
        body += element("section", content);
    }
    const QString head = QStringLiteral("<meta charset=\"utf-8\"/>\n<meta name=\"viewport\" "
                                        "content=\"width=device-width, initial-scale=1\"/>\n") +
                         element("title", document.title.toHtmlEscaped()) +
                         element("style", QLatin1String(style));
    const QString page = QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n") +
                         element("head", head) + element("body", body) +
                         QStringLiteral("</html>\n");
    return page.toUtf8();
}
