#pragma once

#include "plots/Picture.h"

#include <QString>
#include <QStringList>
#include <QVector>

struct RunReport;

/// What page and text tell of a run, part by part; the numbers are put into words here alone.
/// Powers are written "cm^-1", and "+-" stands before a deviation.
namespace runDocument {

/// A part below a heading. Empty members are left out.
struct Block
{
    enum class Kind {
        Paragraphs, ///< lines
        Alerts,     ///< lines that must be seen first
        List,       ///< lines
        Facts,      ///< rows of two: what, and its value
        Table,      ///< rows below columns
        Verbatim,   ///< lines as they are
        Figure      ///< picture, with its legend as the title
    };
    struct Column
    {
        QString title;
        bool isVerbatim = false; ///< file names and the like
    };

    Kind kind = Kind::Paragraphs;
    QString title;
    QStringList lines;
    QVector<Column> columns;
    QVector<QStringList> rows;
    plots::Picture picture;
};

struct Section
{
    QString title; ///< empty for what stands before the first one
    QVector<Block> blocks;
};

struct Document
{
    QString title;
    QString subtitle;
    QVector<Block> opening; ///< what must be known first
    QVector<Section> sections;
};

Document documentOf(const RunReport &report);

// Parts of it.
Section structureSection(const RunReport &report);
Section donorSection(const RunReport &report);
Section intensitySection(const RunReport &report);
Section yieldSection(const RunReport &report);
Section uncertaintySection(const RunReport &report);

// Ways to make blocks.
Block paragraphs(const QStringList &lines);
Block list(const QString &title, const QStringList &lines);
Block facts(const QString &title, const QVector<QStringList> &rows);
/// Columns without any entry are left out.
Block table(const QString &title, const QStringList &columns, const QVector<QStringList> &rows);
Block figure(const QString &legend, const plots::Picture &picture);
QString fixed(double value, int decimals);
/// "20.1 to 31.5 %"
QString percentRange(double low, double high);

} // namespace runDocument
