// Intensity parameters of a europium complex from a MOPAC output, in a program of your own.
#include <LanqorEngine/LanqorOmega.h>

#include <QTextStream>
#include <QVector>

int main(int argc, char **argv)
{
    QTextStream out(stdout);
    LanqorOmega omega(nullptr, 0, QString::fromLocal8Bit(argc > 1 ? argv[1] : ""), QString());
    const int n = omega.getCoordNumber();
    // Indexed by atom number: 1 is the ion, the ligand atoms are 2 to n + 1; alpha in cm^3.
    QVector<double> g(n + 2, 0.8);
    QVector<double> alpha(n + 2, 3.0e-24);
    double *gPointer = g.data();
    double *alphaPointer = alpha.data();
    omega.setChargeFactorAndAlpha(gPointer, alphaPointer);
    if (!omega.getLastError().isEmpty() || !omega.calcOmega()) {
        out << omega.getLastError() << '\n';
        return 1;
    }
    out << "coordination number " << n << '\n';
    for (const int lambda : {2, 4, 6}) {
        out << "Omega(" << lambda
            << ") = " << QString::number(omega.getOmega(lambda) * 1e20, 'f', 4) << " 1e-20 cm^2\n";
    }
    return 0;
}
