#pragma once

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QMainWindow>
#include <QThread>

#include <memory>

class LanqorFitStarts;
class PartitionPicture;
class QDoubleSpinBox;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;

class FrontEnd : public QMainWindow
{
    Q_OBJECT
public:
    FrontEnd();
    ~FrontEnd() override;

public Q_SLOTS:
    /// A MOPAC output or a structure file with the ion as atom 1.
    bool openFile(const QString &fileName);
    void calculate();
    void startFit();
    void stopFit();
    bool saveReport(const QString &fileName);
    bool savePicture(const QString &fileName);

private:
    void fillTable();
    void endFit();
    void setBusy(bool isBusy);
    bool fail(const QString &message);
    QDoubleSpinBox *addTarget(const QString &name, double value);
    QPushButton *addButton(const QString &name, void (FrontEnd::*slot)());
    double valueAt(int row, int column) const;

    std::unique_ptr<LanqorInputData> complex;
    std::unique_ptr<LanqorOmega> omega;
    std::unique_ptr<LanqorFitStarts> fits;
    std::unique_ptr<QThread> thread; // of the running fit
    QTableWidget *table;
    QDoubleSpinBox *omega2;
    QDoubleSpinBox *omega4;
    QProgressBar *bar;
    QPlainTextEdit *report;
    PartitionPicture *picture;
    QPushButton *stop;
    QList<QWidget *> idle; // what rests while a fit runs
};
