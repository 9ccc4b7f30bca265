// A small window around the library: open an output, give or fit g and alpha, see and save the
// report.
#include "FrontEnd.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    FrontEnd window;
    window.show();
    if (argc > 1)
        window.openFile(QString::fromLocal8Bit(argv[1]));
    return QApplication::exec();
}
