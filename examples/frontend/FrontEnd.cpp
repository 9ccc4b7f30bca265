#include "FrontEnd.h"

#include "PartitionPicture.h"

#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorOutputFile.h>
#include <LanqorEngine/LanqorParametric.h>
#include <LanqorEngine/OmegaPrintingOptions.h>
#include <LanqorEngine/OmegaResults.h>

#include <QBoxLayout>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QThread>
#include <QToolBar>

namespace {

constexpr double cm3PerCubicAngstrom = 1e-24;
constexpr double omegaUnitCm2 = 1e-20;
enum Column { AtomColumn, DistanceColumn, ChargeFactorColumn, AlphaColumn, ColumnCount };

} // namespace

FrontEnd::FrontEnd()
    : table(new QTableWidget(0, ColumnCount))
    , bar(new QProgressBar)
    , report(new QPlainTextEdit)
    , picture(new PartitionPicture)
{
    setWindowTitle(tr("Intensity parameters"));
    table->setObjectName(QStringLiteral("sphere"));
    table->setHorizontalHeaderLabels({tr("atom"), tr("r / Å"), tr("g"), tr("α / Å³")});
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->verticalHeader()->hide();
    report->setReadOnly(true);
    report->setLineWrapMode(QPlainTextEdit::NoWrap);
    report->setFont(QFont(QStringLiteral("monospace")));
    picture->setMinimumHeight(180);

    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open ..."), this, [this] {
        const QString name = QFileDialog::getOpenFileName(this);
        if (!name.isEmpty())
            openFile(name);
    });
    file->addAction(tr("Save &Report ..."), this,
                    [this] { saveReport(QFileDialog::getSaveFileName(this)); });
    file->addAction(tr("Save &Picture ..."), this,
                    [this] { savePicture(QFileDialog::getSaveFileName(this)); });
    idle = {table, menuBar()};

    QToolBar *tools = addToolBar(tr("Calculation"));
    idle.append(addButton(tr("Calculate"), &FrontEnd::calculate));
    omega2 = addTarget(tr(" Ω2 / 1e-20 cm²"), 20.0);
    omega4 = addTarget(tr(" Ω4"), 1.0);
    idle.append(addButton(tr("Fit"), &FrontEnd::startFit));
    stop = addButton(tr("Stop"), &FrontEnd::stopFit);
    stop->setEnabled(false);
    tools->addWidget(bar);

    auto *left = new QVBoxLayout;
    left->addWidget(table, 1);
    left->addWidget(picture);
    auto *layout = new QHBoxLayout;
    layout->addLayout(left, 2);
    layout->addWidget(report, 3);
    auto *centre = new QWidget;
    centre->setLayout(layout);
    setCentralWidget(centre);
    resize(1200, 700);
}

FrontEnd::~FrontEnd()
{
    if (thread) { // it uses the complex
        fits->stop();
        thread->wait();
    }
}

QDoubleSpinBox *FrontEnd::addTarget(const QString &name, double value)
{
    QToolBar *tools = findChild<QToolBar *>();
    tools->addWidget(new QLabel(name));
    auto *box = new QDoubleSpinBox;
    box->setRange(0.0, 1000.0);
    box->setValue(value);
    tools->addWidget(box);
    idle.append(box);
    return box;
}

QPushButton *FrontEnd::addButton(const QString &name, void (FrontEnd::*slot)())
{
    auto *button = new QPushButton(name);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, slot);
    findChild<QToolBar *>()->addWidget(button);
    return button;
}

bool FrontEnd::fail(const QString &message)
{
    statusBar()->showMessage(message.simplified());
    return false;
}

bool FrontEnd::openFile(const QString &fileName)
{
    auto read = std::make_unique<LanqorInputData>(nullptr, fileName);
    if (!read->readStructureFile() || !read->createSphericalCoordinate())
        return fail(read->getLastError());
    if (!read->getSphereError().isEmpty())
        return fail(read->getSphereError());
    omega.reset();
    complex = std::move(read);
    fillTable();
    statusBar()->showMessage(fileName);
    return true;
}

void FrontEnd::fillTable()
{
    const SphereResults sphere = complex->getSphereResults();
    table->setRowCount(sphere.atoms.size());
    for (int row = 0; row < sphere.atoms.size(); ++row) {
        const SphereAtom &atom = sphere.atoms.at(row);
        const QStringList texts = {
            QStringLiteral("%1 %2").arg(atom.position.label, QString::number(atom.atom)),
            QString::number(atom.position.r, 'f', 4), QStringLiteral("0.8"), QStringLiteral("3")};
        for (int column = 0; column < ColumnCount; ++column) {
            auto *item = new QTableWidgetItem(texts.at(column));
            if (column < ChargeFactorColumn)
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            table->setItem(row, column, item);
        }
    }
    report->clear();
    picture->setPartition({});
}

double FrontEnd::valueAt(int row, int column) const
{
    return table->item(row, column)->text().toDouble();
}

void FrontEnd::calculate()
{
    if (!complex)
        return;
    omega = std::make_unique<LanqorOmega>(nullptr, 0, complex.get());
    connect(omega.get(), &LanqorOmega::newObjCalculationMessage, statusBar(),
            [this](const QString &message) { statusBar()->showMessage(message); });
    // By atom number: 1 is the ion, 2 to N + 1 are the rows of the table.
    QVector<double> g(table->rowCount() + 2);
    QVector<double> alpha(g.size());
    for (int row = 0; row < table->rowCount(); ++row) {
        g[row + 2] = valueAt(row, ChargeFactorColumn);
        alpha[row + 2] = valueAt(row, AlphaColumn) * cm3PerCubicAngstrom;
    }
    OmegaPrintingOptions sections;
    sections.printChargeFactors = sections.printOmega = true;
    sections.printArad = sections.printAradPartition = true;
    omega->setOmegaPrintingOptions(sections);
    if (!omega->setChargeFactorAndAlpha(g, alpha) || !omega->calcOmega()) {
        fail(omega->getLastError());
        omega.reset();
        return;
    }
    report->setPlainText(omega->createOutFile(QString()));
    picture->setPartition(omega->getResults().partition);
}

void FrontEnd::setBusy(bool isBusy)
{
    for (QWidget *widget : qAsConst(idle))
        widget->setEnabled(!isBusy);
    stop->setEnabled(isBusy);
}

void FrontEnd::startFit()
{
    if (!complex)
        return;
    omega.reset();
    // All is made in this thread; only the annealing runs in the other.
    fits = std::make_unique<LanqorFitStarts>(1, [this](int number) {
        auto fit = std::make_unique<LanqorParametric>(nullptr, complex.get(), 0);
        fit->setCoordNumber(complex->getCoordNumber());
        fit->setGroupsAndAtoms(fit->makeElementGroups());
        fit->setOmegaExp(omega2->value() * omegaUnitCm2, omega4->value() * omegaUnitCm2);
        const QVector<double> vector = fit->makeStartingVector(number);
        return FitStart{std::move(fit), vector};
    });
    if (fits->getCount() == 0) {
        fail(fits->getLastError());
        return;
    }
    connect(fits->getAnnealing(1), &LanqorGSA::pointsProgress, this,
            [this](qint64 done, qint64 total, double misfit) {
                bar->setValue(int(100 * done / total));
                statusBar()->showMessage(tr("misfit %1").arg(QString::number(misfit)));
            });
    thread.reset(QThread::create([this] { fits->run(1); }));
    connect(thread.get(), &QThread::finished, this, &FrontEnd::endFit);
    setBusy(true);
    thread->start();
}

void FrontEnd::stopFit()
{
    if (fits)
        fits->stop();
}

void FrontEnd::endFit()
{
    thread->wait();
    thread.reset();
    setBusy(false);
    const auto *best = qobject_cast<LanqorParametric *>(fits->getBest());
    QVector<double> g;
    QVector<double> alpha;
    if (!best || !best->makeDonors(fits->getBestVector(1), g, alpha)) {
        fail(tr("No values of g and alpha within their bounds were tried."));
        return;
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        table->item(row, ChargeFactorColumn)->setText(QString::number(g.at(row + 2), 'g', 8));
        table->item(row, AlphaColumn)
            ->setText(QString::number(alpha.at(row + 2) / cm3PerCubicAngstrom, 'g', 8));
    }
    calculate();
    statusBar()->showMessage(fits->isStopped() ? tr("The fit was stopped; this is its best point.")
                                               : tr("The fit has ended."));
}

bool FrontEnd::saveReport(const QString &fileName)
{
    QString error;
    return LanqorOutputFile::write(fileName, report->toPlainText().toUtf8(), error) || fail(error);
}

bool FrontEnd::savePicture(const QString &fileName)
{
    return picture->grab().save(fileName) || fail(tr("The picture cannot be written."));
}
