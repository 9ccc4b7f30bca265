#include "plots/plotFile.h"

#include "Command.h"
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

namespace plots {

using cli::tr;

namespace {

constexpr double widthMm = 180.0;
constexpr double heightMm = 120.0;
constexpr double marginMm = 2.5;
constexpr double mmPerInch = 25.4;
constexpr int dotsPerInch = 200;
constexpr int svgDotsPerInch = 96;
constexpr int titlePoints = 11;
constexpr int axisTitlePoints = 10;
constexpr int axisPoints = 9;

QSize sizeAt(int resolution)
{
    return {static_cast<int>(std::lround(widthMm / mmPerInch * resolution)),
            static_cast<int>(std::lround(heightMm / mmPerInch * resolution))};
}

QFont fontOf(int points, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"), points);
    font.setBold(bold);
    return font;
}

void paint(QwtPlot &plot, QPaintDevice &device, const QSize &size)
{
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground, false);
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardCanvasFrame, false);
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF page(QPointF(0.0, 0.0), size);
    painter.fillRect(page, Qt::white);
    const double margin = marginMm / widthMm * page.width();
    renderer.render(&plot, &painter, page.adjusted(margin, margin, -margin, -margin));
}

QByteArray svgOf(QwtPlot &plot)
{
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(plot.title().text());
    generator.setResolution(svgDotsPerInch);
    const QSize size = sizeAt(svgDotsPerInch);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    paint(plot, generator, size);
    return buffer.data();
}

QByteArray pdfOf(QwtPlot &plot)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator(QCoreApplication::applicationName());
        writer.setTitle(plot.title().text());
        writer.setResolution(dotsPerInch);
        writer.setPageSize(QPageSize(QSizeF(widthMm, heightMm), QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF());
        paint(plot, writer, sizeAt(dotsPerInch));
    }
    return buffer.data();
}

QByteArray pngOf(QwtPlot &plot)
{
    QImage image(sizeAt(dotsPerInch), QImage::Format_RGB32);
    const int dotsPerMeter = static_cast<int>(std::lround(dotsPerInch / mmPerInch * 1000.0));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    paint(plot, image, image.size());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

} // namespace

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv,
                                                  const QStringList &arguments)
{
    const bool drawsPlot =
        !arguments.filter(QRegularExpression(QStringLiteral("^--?plot(-convergence)?(=|$)")))
             .isEmpty();
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
    if (QFontDatabase().families().isEmpty())
        throw cli::Failure{tr("no font is installed to label the picture with; install one "
                              "(Debian: fonts-dejavu-core)")};
    plot.resize(sizeAt(svgDotsPerInch));
    plot.replot();
    const QString suffix = QFileInfo(file).suffix().toLower();
    const QByteArray bytes = suffix == QLatin1String("svg")   ? svgOf(plot)
                             : suffix == QLatin1String("pdf") ? pdfOf(plot)
                                                              : pngOf(plot);
    cli::writeFile(file, bytes);
}

} // namespace plots
