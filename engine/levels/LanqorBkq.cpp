#include "LanqorBkq.h"

#include "intensity/simpleOverlapModel_p.h"
#include "levels/fieldParameters_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorBkq", text);
}

} // namespace

LanqorBkq::LanqorBkq(const QString &fileName, const int &value)
{
    readStructure(fileName, value);
}

LanqorBkq::LanqorBkq(const LanqorBkq &other) = default;

LanqorBkq &LanqorBkq::operator=(const LanqorBkq &other) = default;

LanqorBkq::~LanqorBkq() = default;

void LanqorBkq::readStructure(const QString &fileName, int value)
{
    LanqorInputData geometry(nullptr, fileName);
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate()) {
        lastError = geometry.getLastError();
        return;
    }
    const QVector<Coord> atoms = geometry.getCoord();
    for (const Coord &atom : atoms)
        labels.append(atom.label);
    if (labels.first() != QLatin1String("Eu")) {
        lastError = labels.first() + tr(" atoms[0] isn't Eu");
        return;
    }
    // The caller's own count may be one that the bonding distances do not see.
    if (value == 0)
        lastError = geometry.getAtomOrderError();
    const int coordNumber = value == 0 ? geometry.getCoordNumber() : value;
    if (lastError.isEmpty())
        lastError = simpleOverlapModel::sphereError(geometry.getCoordSPH(), coordNumber);
    if (lastError.isEmpty())
        sphere = std::make_shared<const simpleOverlapModel::CoordinationSphere>(
            geometry.getCoordSPH(), coordNumber);
    else
        lastError = fileName + QStringLiteral(": ") + lastError;
}

void LanqorBkq::setChargeFactors(double *&g)
{
    chargeFactors = g;
}

bool LanqorBkq::calculateRO(const double &ro0)
{
    if (!sphere)
        return false;
    if (!(ro0 >= 0.0 && ro0 < 1.0)) {
        unitParameters.clear();
        lastError = tr("The overlap ro0 is %1; it must be at least 0 and below 1.").arg(ro0);
        return false;
    }
    lastError.clear();
    if (!unitParameters.isEmpty() && ro0 == overlap)
        return true;
    overlap = ro0;
    unitParameters.clear();
    unitParameters.reserve(sphere->coordNumber() * fieldParameters::count);
    for (int j = 2; j <= sphere->coordNumber() + 1; ++j) {
        for (int k = 2; k <= 6; k += 2) {
            for (int q = -k; q <= k; ++q) {
                const auto value = sphere->crystalField(k, q, j, 1.0, ro0);
                unitParameters.append({value.real(), value.imag()});
            }
        }
    }
    return true;
}

MyComplex LanqorBkq::getBkq(const int &k, const int &q, const int &a) const
{
    if (!fieldParameters::exists(k, q) || a < 1 || a > getAtomsNumber() ||
        unitParameters.isEmpty() || !chargeFactors)
        return MyComplex();
    const MyComplex unit =
        unitParameters.at((a - 1) * fieldParameters::count + fieldParameters::place(k, q));
    const double g = chargeFactors[a + 1];
    return {g * unit.real, g * unit.imag};
}

MyComplex LanqorBkq::getBkq(const int &k, const int &q) const
{
    MyComplex sum;
    for (int a = 1; a <= getAtomsNumber(); ++a) {
        const MyComplex part = getBkq(k, q, a);
        sum.real += part.real;
        sum.imag += part.imag;
    }
    return sum;
}

int LanqorBkq::getAtomsNumber() const
{
    return sphere ? sphere->coordNumber() : 0;
}
