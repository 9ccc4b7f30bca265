#include "LanqorInputData.h"

#include "core/elements_p.h"
#include "core/title_p.h"

#include <algorithm>
#include <iterator>

const QString LanqorInputData::lanthanideList[15] = {
    QStringLiteral("La"), QStringLiteral("Ce"), QStringLiteral("Pr"), QStringLiteral("Nd"),
    QStringLiteral("Pm"), QStringLiteral("Sm"), QStringLiteral("Eu"), QStringLiteral("Gd"),
    QStringLiteral("Tb"), QStringLiteral("Dy"), QStringLiteral("Ho"), QStringLiteral("Er"),
    QStringLiteral("Tm"), QStringLiteral("Yb"), QStringLiteral("Lu"),
};
const QString LanqorInputData::LANQORTitle = makeReportTitle();
const QVector<QPair<QString, double>> LanqorInputData::elementMassTable = makeElementMassTable();
const QVector<QPair<QString, int>> LanqorInputData::elementNumberTable = makeElementNumberTable();

LanqorInputData::LanqorInputData(QObject *parent, const QString &fileName)
    : LanqorAbstractObjCalculation(parent)
    , fileName(fileName)
{}

LanqorInputData::~LanqorInputData() = default;

QString LanqorInputData::getElementSymbol(const int &atomicNumber)
{
    for (const auto &element : elementNumberTable) {
        if (element.second == atomicNumber)
            return element.first;
    }
    return QString();
}

bool LanqorInputData::isLanthanide(const QString &label)
{
    return std::find(std::begin(lanthanideList), std::end(lanthanideList), label) !=
           std::end(lanthanideList);
}
