// Drives the window of examples/frontend as a user would: opens a file, starts a fit, stops it,
// sees its best point, saves report and picture.
#include "FrontEnd.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <cstdio>

namespace {

int faults = 0;

void check(bool isTrue, const char *what)
{
    if (!isTrue) {
        ++faults;
        std::fprintf(stderr, "not so: %s\n", what);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    FrontEnd window;
    window.show();
    check(!window.openFile(folder.filePath(QStringLiteral("none.out"))),
          "a missing file is refused");
    check(window.openFile(QString::fromLocal8Bit(argv[1])), "the file opens");
    auto *sphere = window.findChild<QTableWidget *>(QStringLiteral("sphere"));
    check(sphere->rowCount() == 6, "six coordinated atoms");

    const auto click = [&](const char *name) {
        QTest::mouseClick(window.findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
    };
    auto *fit = window.findChild<QPushButton *>(QStringLiteral("Fit"));
    const QString before = sphere->item(0, 2)->text();
    click("Fit");
    check(!fit->isEnabled(), "one fit at a time");
    QTest::qWait(300);
    click("Stop");
    check(QTest::qWaitFor([fit] { return fit->isEnabled(); }, 60000), "a stopped fit ends");
    check(sphere->item(0, 2)->text() != before, "its best point is shown");
    check(window.saveReport(folder.filePath(QStringLiteral("report.txt"))), "the report is saved");
    check(window.savePicture(folder.filePath(QStringLiteral("picture.png"))), "so is the picture");
    check(!window.saveReport(folder.filePath(QStringLiteral("none/report.txt"))),
          "a folder that is not there is told");
    check(QFileInfo(folder.filePath(QStringLiteral("report.txt"))).size() > 1000, "a whole report");
    window.grab().save(folder.filePath(QStringLiteral("window.png")));
    click("Fit"); // the window closes while it runs
    return faults == 0 ? 0 : 1;
}
