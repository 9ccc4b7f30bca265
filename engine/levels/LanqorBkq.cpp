#include "LanqorBkq.h"

#include "levels/chargeFactors_p.h"
#include "levels/fieldParameters_p.h"
#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorBkq", text);
}

} // namespace

class LanqorBkqPrivate
{
public:
    void readStructure(const QString &fileName, int value);
    void takeGeometry(const LanqorInputData &geometry, int value);
    int atomsNumber() const { return sphere ? sphere->coordNumber() : 0; }

    QString lastError;
    QStringList labels;                                                   // of the whole geometry
    std::shared_ptr<const simpleOverlapModel::CoordinationSphere> sphere; // never changed: shared
    ChargeFactors chargeFactors;
    double overlap = 0.0;
    QVector<MyComplex> unitParameters; // at g = 1 and this overlap; empty before calculateRO()
};

void LanqorBkqPrivate::readStructure(const QString &fileName, int value)
{
    LanqorInputData geometry(nullptr, fileName);
    if (geometry.readStructureFile() && geometry.createSphericalCoordinate())
        takeGeometry(geometry, value);
    else
        lastError = geometry.getLastError();
}

void LanqorBkqPrivate::takeGeometry(const LanqorInputData &geometry, int value)
{
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
        lastError = geometry.getFileName() + QStringLiteral(": ") + lastError;
}

LanqorBkq::LanqorBkq(const QString &fileName, const int &value)
    : d(std::make_unique<LanqorBkqPrivate>())
{
    d->readStructure(fileName, value);
}

LanqorBkq::LanqorBkq(LanqorInputData *geometry, const int &value)
    : d(std::make_unique<LanqorBkqPrivate>())
{
    if (!geometry || geometry->getCoord().isEmpty())
        d->lastError = tr("There is no geometry.");
    else if (geometry->getCoordSPH().isEmpty() && !geometry->createSphericalCoordinate())
        d->lastError = geometry->getLastError();
    else
        d->takeGeometry(*geometry, value);
}

LanqorBkq::LanqorBkq(const LanqorBkq &other)
    : d(std::make_unique<LanqorBkqPrivate>(*other.d))
{}

LanqorBkq &LanqorBkq::operator=(const LanqorBkq &other)
{
    *d = *other.d;
    return *this;
}

LanqorBkq::~LanqorBkq() = default;

void LanqorBkq::setChargeFactors(double *&g)
{
    d->chargeFactors = ChargeFactors(g);
}

bool LanqorBkq::setChargeFactors(const QVector<double> &g)
{
    d->chargeFactors = ChargeFactors();
    if (!d->sphere)
        return false;
    const int needed = d->atomsNumber() + 2;
    if (g.size() < needed) {
        d->lastError = tr("%1 charge factors are too few: counted by atom number, the structure "
                          "needs %2.")
                           .arg(QString::number(g.size()), QString::number(needed));
        return false;
    }
    d->chargeFactors = ChargeFactors(g);
    return true;
}

bool LanqorBkq::calculateRO(const double &ro0)
{
    if (!d->sphere)
        return false;
    if (!(ro0 >= 0.0 && ro0 < 1.0)) {
        d->unitParameters.clear();
        d->lastError = tr("The overlap ro0 is %1; it must be at least 0 and below 1.").arg(ro0);
        return false;
    }
    d->lastError.clear();
    if (!d->unitParameters.isEmpty() && ro0 == d->overlap)
        return true;
    d->overlap = ro0;
    d->unitParameters.clear();
    d->unitParameters.reserve(d->sphere->coordNumber() * fieldParameters::count);
    for (int j = 2; j <= d->sphere->coordNumber() + 1; ++j) {
        for (int k = 2; k <= 6; k += 2) {
            for (int q = -k; q <= k; ++q) {
                const auto value = d->sphere->crystalField(k, q, j, 1.0, ro0);
                d->unitParameters.append({value.real(), value.imag()});
            }
        }
    }
    return true;
}

MyComplex LanqorBkq::getBkq(const int &k, const int &q, const int &a) const
{
    if (!fieldParameters::exists(k, q) || a < 1 || a > d->atomsNumber() ||
        d->unitParameters.isEmpty() || !d->chargeFactors.isSet())
        return MyComplex();
    const MyComplex unit =
        d->unitParameters.at((a - 1) * fieldParameters::count + fieldParameters::place(k, q));
    const double g = d->chargeFactors.at(a + 1);
    return {g * unit.real, g * unit.imag};
}

MyComplex LanqorBkq::getBkq(const int &k, const int &q) const
{
    MyComplex sum;
    for (int a = 1; a <= d->atomsNumber(); ++a) {
        const MyComplex part = getBkq(k, q, a);
        sum.real += part.real;
        sum.imag += part.imag;
    }
    return sum;
}

QString LanqorBkq::getAtomLabel(const int &i) const
{
    return d->labels.value(i - 1);
}

int LanqorBkq::getAtomsNumber() const
{
    return d->atomsNumber();
}

QString LanqorBkq::getLastError() const
{
    return d->lastError;
}
