#include "LanqorInputData.h"

#include "core/elements_p.h"
#include "core/title_p.h"
#include "input/LanqorInputData_p.h"
#include "input/inputDataAccess_p.h"

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
    , d(std::make_unique<LanqorInputDataPrivate>(*this, fileName))
{}

LanqorInputData::~LanqorInputData() = default;

QString LanqorInputData::getFileName() const
{
    return d->fileName;
}

void LanqorInputData::setKeepFileOpen(const bool &keep)
{
    if (!keep)
        d->keptFile.reset();
    else if (!d->keptFile)
        d->keptFile = InputFile(d->fileName);
}

InputFile inputFileOf(const LanqorInputData &data)
{
    return data.d->file();
}

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
