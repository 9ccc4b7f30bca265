#include "options/complexOptions.h"

#include "Command.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

namespace cli {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

/// A section of the report by its name on the command line.
struct Section
{
    const char *name;
    bool OmegaPrintingOptions::*field;
};

constexpr Section sections[] = {
    {"coordinates", &OmegaPrintingOptions::printSphericalCoordinates},
    {"charge-factors", &OmegaPrintingOptions::printChargeFactors},
    {"omega", &OmegaPrintingOptions::printOmega},
    {"constants", &OmegaPrintingOptions::printConstants},
    {"harmonics", &OmegaPrintingOptions::printSphericalHarmonics},
    {"overlap", &OmegaPrintingOptions::printSOM},
    {"lattice-dc", &OmegaPrintingOptions::printGAMA},
    {"lattice-sums-dc", &OmegaPrintingOptions::printSumGAMA},
    {"bltp-dc", &OmegaPrintingOptions::printBltpDC},
    {"omega-dc", &OmegaPrintingOptions::printOmegaDC},
    {"lattice-ed", &OmegaPrintingOptions::printgama},
    {"lattice-sums-ed", &OmegaPrintingOptions::printSumgama},
    {"bltp-ed", &OmegaPrintingOptions::printBltpED},
    {"omega-ed", &OmegaPrintingOptions::printOmegaED},
    {"bltp", &OmegaPrintingOptions::printBltp},
    {"rates", &OmegaPrintingOptions::printArad},
    {"partition", &OmegaPrintingOptions::printAradPartition},
    {"crystal-field", &OmegaPrintingOptions::printBkq},
};

} // namespace

bool readRefractiveIndex(const QCommandLineParser &parser, double &index, QString &error)
{
    bool isNumber = false;
    index = parser.value(QStringLiteral("n")).toDouble(&isNumber);
    if (isNumber && index >= 1.0 && index < 10.0)
        return true;
    error = tr("--n needs a refractive index from 1 to 10");
    return false;
}

bool readCount(const QCommandLineParser &parser, const QString &option, int maximum, int &value,
               QString &error)
{
    bool ok = false;
    value = parser.value(option).toInt(&ok);
    if (ok && value >= 1 && value <= maximum)
        return true;
    error = tr("--%1 needs a whole number from 1 to %2").arg(option).arg(maximum);
    return false;
}

QString sectionNames()
{
    QStringList names;
    for (const Section &section : sections)
        names.append(QLatin1String(section.name));
    return names.join(QStringLiteral(", "));
}

bool chooseSections(const QString &list, OmegaPrintingOptions &options, QString &error)
{
    for (const QString &entry : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString name = entry.trimmed();
        bool isKnown = false;
        for (const Section &section : sections) {
            if (name != QLatin1String(section.name) && name != QLatin1String("all"))
                continue;
            options.*(section.field) = true;
            isKnown = true;
        }
        if (!isKnown) {
            error = tr("unknown section \"%1\"; there are all, %2").arg(name, sectionNames());
            return false;
        }
    }
    return true;
}

QString sphereError(const LanqorInputData &geometry, const QString &fileName)
{
    const QString ionError = geometry.getIonError();
    if (!ionError.isEmpty())
        return QStringLiteral("%1: %2").arg(fileName, ionError);
    if (geometry.getCoordNumber() == 0)
        return tr("%1: no atom is within bonding distance of atom 1 (%2)")
            .arg(fileName, geometry.getAtomLabel(1));
    return geometry.getAtomOrderError();
}

bool readSphere(LanqorInputData &geometry, const QString &fileName, QString &error)
{
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate())
        error = geometry.getLastError();
    else
        error = sphereError(geometry, fileName);
    return error.isEmpty();
}

QString nearAtomNotes(const LanqorInputData &data)
{
    constexpr double marginOfLimit = 0.15;   // Angstrom
    constexpr double nearWithoutLimit = 2.9; // Angstrom
    QString text;
    for (int atom = 2; atom <= data.getCoord().size(); ++atom) {
        const CoordSPH spherical = data.getCoordSPH(atom);
        const double limit = LanqorInputData::getBondCutOff(spherical.label);
        const QString where =
            QStringLiteral("%1 %2 (%3)").arg(spherical.label).arg(atom).arg(spherical.r, 0, 'f', 3);
        if (limit > 0.0 && spherical.r >= limit && spherical.r < limit + marginOfLimit)
            text += tr("note: %1 is not counted: the limit of its element is %2 Angstrom\n")
                        .arg(where)
                        .arg(limit);
        else if (limit == 0.0 && spherical.label != QLatin1String("H") &&
                 spherical.r < nearWithoutLimit)
            text += tr("note: %1 is not counted: its element has no bonding limit\n").arg(where);
    }
    return text;
}

QCommandLineOption coordinationOption()
{
    return {QStringLiteral("coordination"),
            tr("Number N of coordinated atoms; counted by bonding distances unless given."),
            tr("N")};
}

bool readSphere(const QCommandLineParser &parser, const QString &fileName,
                LanqorInputData &geometry, int &coordNumber, QString &error)
{
    if (!parser.isSet(QStringLiteral("coordination"))) {
        if (!readSphere(geometry, fileName, error))
            return false;
        coordNumber = geometry.getCoordNumber();
        const QString notes = nearAtomNotes(geometry);
        if (!notes.isEmpty())
            note(notes.trimmed());
        return true;
    }
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate()) {
        error = geometry.getLastError();
        return false;
    }
    const int atomsBesidesIon = geometry.getCoord().size() - 1;
    bool isNumber = false;
    coordNumber = parser.value(QStringLiteral("coordination")).toInt(&isNumber);
    if (isNumber && coordNumber >= 1 && coordNumber <= atomsBesidesIon)
        return true;
    error = tr("--coordination needs a number from 1 to %1").arg(atomsBesidesIon);
    return false;
}

QCommandLineOption overlapOption()
{
    return {QStringLiteral("ro0"), tr("Overlap of the nearest atom, 0 to below 1."), tr("overlap"),
            QStringLiteral("0.0801")};
}

bool readOverlap(const QCommandLineParser &parser, double &ro0, QString &error)
{
    bool isNumber = false;
    ro0 = parser.value(QStringLiteral("ro0")).toDouble(&isNumber);
    if (isNumber && ro0 >= 0.0 && ro0 < 1.0)
        return true;
    error = tr("--ro0 needs an overlap from 0 to below 1");
    return false;
}

} // namespace cli
