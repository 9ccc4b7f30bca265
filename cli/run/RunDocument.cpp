#include "run/RunDocument.h"

#include "run/RunReport.h"
#include "text.h"

#include <LanqorEngine/DonorTripletResults.h>

#include <QFileInfo>

#include <algorithm>

namespace runDocument {

using cli::tr;

namespace {

constexpr double omegaUnitCm2 = 1.0e-20;

QString stateOf(const RunStep &step)
{
    switch (step.state) {
    case RunStep::State::Done:
        return tr("done");
    case RunStep::State::Kept:
        return tr("kept from before");
    case RunStep::State::Failed:
        return tr("failed");
    case RunStep::State::LeftOut:
        break;
    }
    return tr("left out");
}

/// How far the run came.
Block endOf(const RunReport &report)
{
    Block block;
    switch (report.end) {
    case RunReport::End::Complete:
        break;
    case RunReport::End::Missing:
        block = paragraphs({tr("The run stopped after the donor states, for intensities are "
                               "missing: neither a spectrum nor intensity parameters nor charge "
                               "factors are given.")});
        break;
    case RunReport::End::Until:
        block = paragraphs({tr("The run stopped where it was asked to (--until).")});
        break;
    case RunReport::End::Failed:
        block.kind = Block::Kind::Alerts;
        block.lines = QStringList{tr("The run failed: %1").arg(report.failure)};
        break;
    }
    return block;
}

const UncertaintyResults::Quantity *yieldInterval(const RunReport &report)
{
    return report.uncertainty && !report.uncertainty->quantities.isEmpty()
               ? &report.uncertainty->quantities.first()
               : nullptr;
}

/// The results that everybody asks for.
Block mainResults(const RunReport &report)
{
    QVector<QStringList> rows;
    if (report.yield) {
        rows.append({tr("quantum yield"),
                     cli::textOfYield(report.yield->quantumYield) + QStringLiteral(" %") +
                         (report.yield->isLifeTimeEstimated
                              ? tr(", the non-radiative rate being an estimate (no lifetime is "
                                   "given)")
                              : QString())});
        if (const UncertaintyResults::Quantity *interval = yieldInterval(report))
            rows.append(
                {tr("its interval"), tr("%1 (68 %), %2 (95 %)")
                                         .arg(percentRange(interval->low68, interval->high68),
                                              percentRange(interval->low95, interval->high95))});
        rows.append({tr("limiting step"), report.yield->limitingStep});
    }
    if (report.triplet && report.triplet->chosen != TripletMethod::None) {
        const DonorTripletResults &triplet = *report.triplet;
        const QString value = fixed(triplet.energy, 0) + QStringLiteral(" cm^-1");
        rows.append({tr("donor triplet T1"),
                     triplet.standardDeviation > 0.0
                         ? tr("%1 +- %2 cm^-1")
                               .arg(fixed(triplet.energy, 0), fixed(triplet.standardDeviation, 0))
                         : value});
    }
    if (report.omega && report.omega->isCalculated)
        rows.append({tr("Omega(2), Omega(4), Omega(6)"),
                     tr("%1, %2, %3 1e-20 cm^2")
                         .arg(fixed(report.omega->omega[2] / omegaUnitCm2, 2),
                              fixed(report.omega->omega[4] / omegaUnitCm2, 2),
                              fixed(report.omega->omega[6] / omegaUnitCm2, 2))});
    if (report.sphere.coordNumber > 0)
        rows.append({tr("ion and coordination number"),
                     QStringLiteral("%1, %2").arg(report.sphere.ion,
                                                  QString::number(report.sphere.coordNumber))});
    return facts(QString(), rows);
}

Section stepSection(const RunReport &report)
{
    Section section{tr("Steps"), {}};
    for (const RunStep &step : report.steps) {
        QVector<QStringList> rows;
        rows.append({tr("state"), stateOf(step)});
        rows.append({tr("result"), step.outcome});
        if (!step.program.isEmpty())
            rows.append({tr("program"), step.program + QLatin1Char(' ') + step.version});
        if (step.seconds > 0.0)
            rows.append({tr("time"), fixed(step.seconds, 1) + QStringLiteral(" s")});
        section.blocks.append(facts(QStringLiteral("%1: %2").arg(step.folder, step.title), rows));
        if (step.commandLine.isEmpty())
            continue;
        Block command;
        command.kind = Block::Kind::Verbatim;
        command.lines = QStringList{step.commandLine};
        section.blocks.append(command);
    }
    return section;
}

Section inputSection(const RunReport &report)
{
    Section section{tr("Inputs and settings"), {}};
    QVector<QStringList> rows;
    for (const FileHash &file : report.inputs)
        rows.append({file.fileName, file.sha256});
    Block files = table(tr("Files that were read"), {tr("file"), tr("SHA-256")}, rows);
    for (Block::Column &column : files.columns)
        column.isVerbatim = true;
    section.blocks.append(files);
    Block settings;
    settings.kind = Block::Kind::Verbatim;
    settings.title = tr("Settings, as run.toml has them");
    settings.lines = report.settingsToml.trimmed().split(QLatin1Char('\n'), Qt::KeepEmptyParts);
    if (!report.settingsToml.trimmed().isEmpty())
        section.blocks.append(settings);
    return section;
}

} // namespace

Block paragraphs(const QStringList &lines)
{
    Block block;
    block.lines = lines;
    return block;
}

Block list(const QString &title, const QStringList &lines)
{
    Block block;
    block.kind = Block::Kind::List;
    block.title = title;
    block.lines = lines;
    return block;
}

Block facts(const QString &title, const QVector<QStringList> &rows)
{
    Block block;
    block.kind = Block::Kind::Facts;
    block.title = title;
    for (const QStringList &row : rows)
        if (!row.value(1).isEmpty())
            block.rows.append(row);
    return block;
}

Block table(const QString &title, const QStringList &columns, const QVector<QStringList> &rows)
{
    Block block;
    block.kind = Block::Kind::Table;
    block.title = title;
    block.rows.fill(QStringList(), rows.size());
    for (int c = 0; c < columns.size(); ++c) {
        const bool isUsed = std::any_of(rows.begin(), rows.end(), [c](const QStringList &row) {
            return !row.value(c).isEmpty();
        });
        if (!isUsed)
            continue;
        block.columns.append({columns.at(c), false});
        for (int r = 0; r < rows.size(); ++r)
            block.rows[r].append(rows.at(r).value(c));
    }
    return block;
}

Block figure(const QString &legend, const plots::Picture &picture)
{
    Block block;
    block.kind = Block::Kind::Figure;
    block.title = legend;
    block.picture = picture;
    return block;
}

QString fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString percentRange(double low, double high)
{
    return tr("%1 to %2 %").arg(cli::textOfYield(low), cli::textOfYield(high));
}

Document documentOf(const RunReport &report)
{
    Document document;
    document.title = report.name;
    document.subtitle = tr("From structure to quantum yield: run of %1, LanqorEngine %2")
                            .arg(QFileInfo(report.structureFile).fileName(), report.lanqorVersion);
    Block first;
    first.kind = Block::Kind::Alerts;
    first.lines = report.firstLines;
    document.opening << first << endOf(report) << mainResults(report)
                     << list(tr("Missing"), report.missing);
    document.sections << structureSection(report) << donorSection(report)
                      << intensitySection(report) << yieldSection(report)
                      << uncertaintySection(report)
                      << Section{tr("Warnings"), {list(QString(), report.warnings)}}
                      << stepSection(report) << inputSection(report)
                      << Section{tr("To be cited"), {list(QString(), report.citations)}};
    const auto isEmpty = [](const Block &block) {
        return block.lines.isEmpty() && block.rows.isEmpty() && block.picture.size.isEmpty();
    };
    const auto clean = [&isEmpty](QVector<Block> &blocks) {
        blocks.erase(std::remove_if(blocks.begin(), blocks.end(), isEmpty), blocks.end());
    };
    clean(document.opening);
    for (Section &section : document.sections)
        clean(section.blocks);
    document.sections.erase(
        std::remove_if(document.sections.begin(), document.sections.end(),
                       [](const Section &section) { return section.blocks.isEmpty(); }),
        document.sections.end());
    return document;
}

} // namespace runDocument
