#include "plots/plotFile.h"

#include "Command.h"
#include "plots/Picture.h"
#include "plots/plots.h"
#include "text.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <QApplication>
#include <QBuffer>
#include <QFileInfo>
#include <QFontDatabase>
#include <QImage>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSvgGenerator>

#include <cmath>
#include <cstdio>
#include <functional>

namespace plots {

using cli::tr;

namespace {

constexpr double widthMm = 180.0;
constexpr double heightMm = 120.0;
constexpr double marginMm = 2.5;
constexpr double mmPerInch = 25.4;
constexpr int dotsPerInch = 200;
constexpr int pictureDotsPerInch = 300;
constexpr int svgDotsPerInch = 96;
constexpr int titlePoints = 11;
constexpr int axisTitlePoints = 10;
constexpr int axisPoints = 9;

/// A sheet of paper and what is painted on it.
struct Sheet
{
    QString title;
    QSizeF sizeMm;
    int dotsPerInch;   ///< of images
    QSize vectorUnits; ///< width and height in the units of an SVG
    /// Paints on a page of this size in the units of the painter.
    std::function<void(QPainter &, const QSizeF &)> paint;
};

QSize sizeAt(const QSizeF &sizeMm, int resolution)
{
    return {static_cast<int>(std::lround(sizeMm.width() / mmPerInch * resolution)),
            static_cast<int>(std::lround(sizeMm.height() / mmPerInch * resolution))};
}

QFont fontOf(int points, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"), points);
    font.setBold(bold);
    return font;
}

void paint(const Sheet &sheet, QPaintDevice &device, const QSizeF &size)
{
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(QPointF(0.0, 0.0), size), Qt::white);
    sheet.paint(painter, size);
}

QByteArray svgOf(const Sheet &sheet)
{
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(sheet.title);
    generator.setResolution(svgDotsPerInch);
    generator.setSize(sizeAt(sheet.sizeMm, svgDotsPerInch));
    generator.setViewBox(QRect(QPoint(0, 0), sheet.vectorUnits));
    paint(sheet, generator, sheet.vectorUnits);
    return buffer.data();
}

QByteArray pdfOf(const Sheet &sheet)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator(QCoreApplication::applicationName());
        writer.setTitle(sheet.title);
        writer.setResolution(sheet.dotsPerInch);
        writer.setPageSize(QPageSize(sheet.sizeMm, QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF());
        paint(sheet, writer, sizeAt(sheet.sizeMm, sheet.dotsPerInch));
    }
    return buffer.data();
}

QByteArray pngOf(const Sheet &sheet)
{
    QImage image(sizeAt(sheet.sizeMm, sheet.dotsPerInch), QImage::Format_RGB32);
    const int dotsPerMeter = static_cast<int>(std::lround(sheet.dotsPerInch / mmPerInch * 1000.0));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    paint(sheet, image, image.size());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

void writeSheet(const Sheet &sheet, const QString &file)
{
    if (!canDraw())
        throw cli::Failure{tr("no font is installed to label the picture with; install one "
                              "(Debian: fonts-dejavu-core)")};
    const QString suffix = QFileInfo(file).suffix().toLower();
    const QByteArray bytes = suffix == QLatin1String("svg")   ? svgOf(sheet)
                             : suffix == QLatin1String("pdf") ? pdfOf(sheet)
                                                              : pngOf(sheet);
    cli::writeFile(file, bytes);
}

Sheet sheetOf(const Picture &picture)
{
    constexpr double unitsPerMm = 10.0;
    const auto paint = [picture](QPainter &painter, const QSizeF &size) {
        painter.scale(size.width() / picture.size.width(), size.height() / picture.size.height());
        picture.paint(painter);
    };
    return {picture.title, picture.size / unitsPerMm, pictureDotsPerInch, picture.size.toSize(),
            paint};
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv,
                                                  const QStringList &arguments)
{
    const bool drawsPlot =
        arguments.value(0) == QLatin1String("run") ||
        !arguments.filter(QRegularExpression(QStringLiteral("^--?plot(-[a-z]+)?(=|$)"))).isEmpty();
    if (!drawsPlot)
        return std::make_unique<QCoreApplication>(argc, argv);
    // Qt takes options of its own from the command line; it shall see only these.
    static char program[] = "lanqor";
    static char platformOption[] = "-platform";
    static char platform[] = "offscreen";
    static char *ownArguments[] = {program, platformOption, platform, nullptr};
    static int ownCount = 3;
    // It would note on standard error that it runs outside a desktop session.
    const auto previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext &, const QString &message) {
            if (type == QtCriticalMsg || type == QtFatalMsg)
                std::fprintf(stderr, "lanqor: %s\n", message.toUtf8().constData());
        });
    auto application = std::make_unique<QApplication>(ownCount, ownArguments);
    qInstallMessageHandler(previous);
    // Scales are labelled in the language of the application, "5,000" in some.
    QLocale plain = QLocale::c();
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(plain);
    return application;
}

void applyStyle(QwtPlot &plot, const QString &title)
{
    plot.setCanvasBackground(Qt::white);
    plot.setAutoFillBackground(true);
    plot.setPalette(QPalette(Qt::white));
    auto *canvas = qobject_cast<QwtPlotCanvas *>(plot.canvas());
    canvas->setFrameStyle(QFrame::Box | QFrame::Plain);
    canvas->setLineWidth(1);
    if (!title.isEmpty()) {
        QwtText text(title, QwtText::PlainText);
        text.setFont(fontOf(titlePoints, true));
        plot.setTitle(text);
    }
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) {
        plot.setAxisFont(axis, fontOf(axisPoints));
        plot.axisWidget(axis)->setMargin(0);
    }
}

void setAxisTitle(QwtPlot &plot, int axis, const QString &title)
{
    QwtText text(title, QwtText::RichText);
    text.setFont(fontOf(axisTitlePoints));
    plot.setAxisTitle(axis, text);
}

void writePlot(QwtPlot &plot, const QString &file)
{
    const QSizeF sizeMm(widthMm, heightMm);
    const QSize dots = sizeAt(sizeMm, svgDotsPerInch);
    plot.resize(dots);
    plot.replot();
    const auto paint = [&plot](QPainter &painter, const QSizeF &size) {
        QwtPlotRenderer renderer;
        renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground, false);
        renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame, false);
        const double margin = marginMm / widthMm * size.width();
        renderer.render(&plot, &painter,
                        QRectF(QPointF(0.0, 0.0), size).adjusted(margin, margin, -margin, -margin));
    };
    writeSheet({plot.title().text(), sizeMm, dotsPerInch, dots, paint}, file);
}

bool canDraw()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) &&
           !QFontDatabase().families().isEmpty();
}

void draw(const Picture &picture, const QString &file)
{
    writeSheet(sheetOf(picture), file);
}

QByteArray inlineSvg(const Picture &picture)
{
    if (picture.size.isEmpty() || !canDraw())
        return {};
    QByteArray svg = svgOf(sheetOf(picture));
    svg.remove(0, svg.indexOf("<svg "));
    // The size of the paper; that on the page is the page's to say.
    const int viewBox = svg.indexOf(" viewBox");
    return svg.replace(4, viewBox - 4, " role=\"img\"");
}

} // namespace plots
