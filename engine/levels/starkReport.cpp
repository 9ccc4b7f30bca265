#include "levels/starkReport_p.h"

#include "core/reportText_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/StarkResults.h>

using reportText::fixed;

namespace starkReport {

namespace {

QString chargeFactors(const QVector<StarkResults::Atom> &atoms)
{
    QString text =
        heading(QStringLiteral("Charge Factors")) + QStringLiteral("  Atom             g\n");
    for (const StarkResults::Atom &atom : atoms)
        text += QStringLiteral("  %1 %2").arg(atom.element.leftJustified(2),
                                              QString::number(atom.number).rightJustified(3)) +
                fixed(atom.chargeFactor, 4, 14) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString fieldParameters(const StarkResults &results)
{
    QString text = heading(QStringLiteral("Crystal-Field Parameters B(k,q) / cm^-1")) +
                   QStringLiteral(" Coefficients of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q) (Wybourne's "
                                  "normalisation) at the\n overlap ro0 above\n") +
                   QStringLiteral(" B(k,-q) = (-1)^q conj(B(k,q))\n\n"
                                  "    k    q          real     imaginary\n");
    for (const StarkResults::FieldParameter &B : results.fieldParameters)
        text += QString::number(B.k).rightJustified(5) + QString::number(B.q).rightJustified(5) +
                fixed(B.real, 4, 14) + fixed(B.imaginary, 4, 14) + QLatin1Char('\n');
    return text + QStringLiteral("\n Crystal-field strength Nv = ") +
           fixed(results.crystalFieldStrength, 2) +
           QStringLiteral(" cm^-1 (F. Auzel, O. L. Malta, J. Phys. (Paris) 44, 201 (1983))\n\n");
}

} // namespace

QString heading(const QString &title)
{
    const QString rule = QStringLiteral("------------------------------------------------------\n");
    return rule + QLatin1Char(' ') + title + QLatin1Char('\n') + rule + QLatin1Char('\n');
}

QString levelTable(const QVector<QVector<double>> &sortedLevels)
{
    QString text = heading(QStringLiteral("Stark Levels / cm^-1")) +
                   QStringLiteral(" From the barycentre of each manifold, in ascending order.\n\n");
    for (int J = 0; J < sortedLevels.size(); ++J) {
        const QVector<double> &levels = sortedLevels.at(J);
        if (levels.isEmpty())
            continue;
        text += QStringLiteral(" 7F%1  splitting").arg(J) +
                fixed(levels.last() - levels.first(), 2, 11) + QLatin1Char('\n');
        constexpr int levelsOfALine = 7;
        for (int i = 0; i < levels.size(); ++i) {
            const bool isEndOfLine = i % levelsOfALine == levelsOfALine - 1;
            text += fixed(levels.at(i), 2, 11);
            if (isEndOfLine || i + 1 == levels.size())
                text += QLatin1Char('\n');
        }
        text += QLatin1Char('\n');
    }
    return text;
}

QString nameOf(ReducedElements choice)
{
    return choice == ReducedElements::Signed ? QStringLiteral("signed")
                                             : QStringLiteral("magnitudes");
}

QString elementsLine(ReducedElements choice)
{
    return QStringLiteral(" Reduced elements <7FJ||U(k)||7FJ>: ") +
           (choice == ReducedElements::Signed
                ? QStringLiteral("with their signs\n")
                : QStringLiteral("magnitudes; the order of the levels of 7F2, 7F4, 7F5 and 7F6\n"
                                 " is not the true one\n"));
}

QString text(const StarkResults &results)
{
    QVector<QVector<double>> sortedLevels;
    for (const StarkResults::Manifold &manifold : results.manifolds)
        sortedLevels.append(manifold.levels);
    return LanqorInputData::LANQORTitle +
           QStringLiteral("\n\n\nThe data shown below were calculated from the geometry read in "
                          "following file: \n") +
           results.structureFile + QStringLiteral("\n\n Overlap of the nearest atom ro0 = ") +
           fixed(results.ro0, 4) + QStringLiteral("\n\n") + chargeFactors(results.atoms) +
           fieldParameters(results) + levelTable(sortedLevels) +
           elementsLine(results.reducedElements);
}

} // namespace starkReport
