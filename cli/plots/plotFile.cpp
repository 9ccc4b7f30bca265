#include "plots/plotFile.h"

#include "Command.h"
#include "plots/Picture.h"
#include "plots/figureStyle.h"
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
#include <QFontMetricsF>
#include <QImage>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>

namespace plots {

using cli::tr;

namespace {

/// Of a plot; with another size its letters grow or shrink with it.
constexpr double widthMm = 120.0;
constexpr double heightMm = 80.0;
constexpr double marginMm = 1.5;
constexpr double mmPerInch = 25.4;
constexpr int dotsPerInch = 300; // of images
constexpr int svgDotsPerInch = 96;
constexpr int titlePoints = 11;
constexpr int axisTitlePoints = 10;
constexpr int axisPoints = 10;
constexpr int labelPoints = 9;
constexpr double unitsPerMm = 10.0; // of a Picture

/// A sheet of paper and what is painted on it.
struct Sheet
{
    QString title;
    QSizeF sizeMm;
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
        writer.setResolution(dotsPerInch);
        writer.setPageSize(QPageSize(sheet.sizeMm, QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF());
        paint(sheet, writer, sizeAt(sheet.sizeMm, dotsPerInch));
    }
    return buffer.data();
}

QByteArray pngOf(const Sheet &sheet)
{
    QImage image(sizeAt(sheet.sizeMm, dotsPerInch), QImage::Format_RGB32);
    const int dotsPerMeter = static_cast<int>(std::lround(dotsPerInch / mmPerInch * 1000.0));
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
    const auto paint = [picture](QPainter &painter, const QSizeF &size) {
        painter.scale(size.width() / picture.size.width(), size.height() / picture.size.height());
        picture.paint(painter);
    };
    return {picture.title, picture.size / unitsPerMm, picture.size.toSize(), paint};
}

/// The picture as large as it goes into a size, in its middle.
Picture fitted(const Picture &picture, const QSizeF &size)
{
    const auto paint = [picture, size](QPainter &painter) {
        const double scale =
            std::min(size.width() / picture.size.width(), size.height() / picture.size.height());
        painter.translate(0.5 * (size.width() - scale * picture.size.width()),
                          0.5 * (size.height() - scale * picture.size.height()));
        painter.scale(scale, scale);
        picture.paint(painter);
    };
    return {picture.title, size, paint};
}

/// The picture below a line with a title, cut where it is too long.
Picture withTitle(const Picture &picture, const QString &title)
{
    constexpr double strip = 70.0;
    constexpr int smallest = 24;
    const double width = picture.size.width() - 40.0;
    int pixels = textSize;
    while (pixels > smallest && textWidth(title, pixels, true) > width)
        --pixels;
    const QString text =
        QFontMetricsF(figureFont(pixels, true)).elidedText(title, Qt::ElideRight, width);
    const auto paint = [picture, text, pixels](QPainter &painter) {
        drawLabel(painter, {0.5 * picture.size.width(), 0.5 * strip}, text, pixels, 0.5, 0.5,
                  color::black, true);
        painter.translate(0.0, strip);
        picture.paint(painter);
    };
    return {title, picture.size + QSizeF(0.0, strip), paint};
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
    const QString wanted = sheetRequest().title.value_or(title);
    if (!wanted.isEmpty()) {
        QwtText text(wanted, QwtText::PlainText);
        text.setFont(fontOf(titlePoints, true));
        plot.setTitle(text);
    }
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis) {
        plot.setAxisFont(axis, fontOf(axisPoints));
        plot.axisWidget(axis)->setMargin(0);
    }
}

QFont labelFont()
{
    return fontOf(labelPoints);
}

QwtText legendText(const QString &name)
{
    QwtText text(name, QwtText::PlainText);
    text.setFont(labelFont());
    return text;
}

void setAxisTitle(QwtPlot &plot, int axis, const QString &title)
{
    QwtText text(title, QwtText::RichText);
    text.setFont(fontOf(axisTitlePoints));
    plot.setAxisTitle(axis, text);
}

void writePlot(QwtPlot &plot, const QString &file, double columns)
{
    const QSizeF usual(columns * widthMm, heightMm);
    const QSizeF sizeMm = sheetRequest().sizeMm.value_or(usual);
    // The plot is laid out on a sheet of at least the usual size, which is then scaled.
    const double scale = std::min(sizeMm.width() / usual.width(), sizeMm.height() / usual.height());
    const QSize dots = sizeAt(sizeMm / scale, svgDotsPerInch);
    plot.resize(dots);
    plot.replot();
    plot.updateLayout(); // so that scales and canvas agree on the room that labels take
    const auto paint = [&plot, layoutMm = sizeMm / scale](QPainter &painter, const QSizeF &size) {
        QwtPlotRenderer renderer;
        renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground, false);
        renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame, false);
        const double dotsPerMm = painter.device()->logicalDpiX() / mmPerInch;
        const QSizeF layout = layoutMm * dotsPerMm;
        const double margin = marginMm * dotsPerMm;
        painter.scale(size.width() / layout.width(), size.height() / layout.height());
        renderer.render(
            &plot, &painter,
            QRectF(QPointF(0.0, 0.0), layout).adjusted(margin, margin, -margin, -margin));
    };
    writeSheet({plot.title().text(), sizeMm, dots, paint}, file);
}

bool canDraw()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) &&
           !QFontDatabase().families().isEmpty();
}

void draw(const Picture &picture, const QString &file)
{
    const SheetRequest &request = sheetRequest();
    const QString title = request.title.value_or(QString());
    Picture drawn = title.isEmpty() ? picture : withTitle(picture, title);
    if (request.sizeMm)
        drawn = fitted(drawn, *request.sizeMm * unitsPerMm);
    writeSheet(sheetOf(drawn), file);
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
