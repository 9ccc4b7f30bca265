#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/mopacForceMatrix_p.h"
#include "input/mopacOutput_p.h"
#include "input/readerLimits_p.h"

#include <algorithm>

namespace {

using Status = MopacOutputReader::Status;

QString failureText(Status status, const QString &fileName, const QString &complaint)
{
    const QString check = LanqorInputData::tr("\nCheck the file to identify the possible errors.");
    switch (status) {
    case Status::Read:
        break;
    case Status::NoSelfConsistence:
        return LanqorInputData::tr("\nThe following error was detected in the MOPAC output file: "
                                   "UNABLE TO ACHIEVE SELF-CONSISTENCE. \n");
    case Status::DumpedToDisk:
        return LanqorInputData::tr("\nThe following error was detected in the MOPAC output file: "
                                   "THE CALCULATION IS BEING DUMPED TO DISK. \n");
    case Status::ScfFailed:
        return LanqorInputData::tr("\nThe following error was detected in the MOPAC output file: "
                                   "++++----**** FAILED TO ACHIEVE SCF. ****----++++. \n");
    case Status::NoParameters: // the file name is part of the text, whatever the job used
        return LanqorInputData::tr("\nThe following error was detected in the MOPAC output file: "
                                   "No parameters read in from spk.inp \n");
    case Status::DiedBeforeScf:
        return LanqorInputData::tr("\nThe following error was detected in the MOPAC output file: "
                                   "%1 \n")
                   .arg(complaint) +
               fileName;
    case Status::NoCoordinates:
        return LanqorInputData::tr(
                   "\nCannot find the cartesian coordinates from the desired .out file: \n") +
               fileName + check;
    case Status::NoFinalCoordinates:
        return LanqorInputData::tr("\nCannot find the optimized cartesian coordinates from the "
                                   "desired .out file: \n") +
               fileName + check;
    case Status::TooManyAtoms:
        return LanqorInputData::tr("\nThere are more than %1 atoms in the desired .out file: \n")
                   .arg(maximumAtoms) +
               fileName + check;
    case Status::ChargesCut:
        return LanqorInputData::tr(
                   "\nThe file ends within the atomic charges of the desired .out file: \n") +
               fileName + check;
    case Status::DipoleUnreadable:
        return LanqorInputData::tr("\nThere has been an error during read in dipole.");
    }
    return QString();
}

/// What the user of a whole output should know of it.
QStringList doubtsOf(const MopacResults &results)
{
    QStringList doubts;
    if (!results.heatOfFormation && results.charges.isEmpty())
        doubts.append(LanqorInputData::tr(
            "The MOPAC output holds neither a heat of formation nor atomic "
            "charges (FORCE and INDO jobs print none; any other ended before "
            "its results). Its geometry is the one that the job started from."));
    else if (results.charges.size() < results.atomCount)
        doubts.append(
            LanqorInputData::tr("The MOPAC output holds the charges of %1 of its %2 "
                                "atoms.")
                .arg(QString::number(results.charges.size()), QString::number(results.atomCount)));
    if (!results.complaint.isEmpty())
        doubts.append(LanqorInputData::tr("MOPAC reports of the last job of this output: \"%1\"")
                          .arg(results.complaint));
    const auto isIon = [](const Coord &atom) { return LanqorInputData::isLanthanide(atom.label); };
    if (results.unpairedElectrons > 0 &&
        std::any_of(results.atoms.begin(), results.atoms.end(), isIon))
        doubts.append(LanqorInputData::tr("The MOPAC output is of an open shell (unpaired "
                                          "electrons: %1), but a complex of a sparkle ion in its "
                                          "right charge is closed-shell; check the charge of the "
                                          "system, %2.")
                          .arg(QString::number(results.unpairedElectrons),
                               QString::number(results.chargeOnSystem.value_or(0.0))));
    return doubts;
}

} // namespace

bool LanqorInputData::readMopacOutFile(const bool &keepTv)
{
    return d->readMopacOutput(d->file(), keepTv);
}

bool LanqorInputDataPrivate::readMopacOutput(const InputFile &file, bool keepTv)
{
    MopacOutputReader reader(file, keepTv);
    if (!reader.open())
        return owner.failWith(missingFile(fileName));
    const Status status = reader.read();
    const MopacResults &results = reader.results();
    mopacCitation = results.citation.value_or(mopacCitation);
    chargeOnSystem = results.chargeOnSystem.value_or(chargeOnSystem);
    isChargeTold = true; // 0 unless it is printed
    finalHeat = results.heatOfFormation.value_or(finalHeat);
    ionPotential = results.ionPotential.value_or(ionPotential);
    dipole = results.dipole.value_or(dipole);
    atomicCharges += results.charges;
    coord += results.atoms;
    coordZMT += results.zMatrix;
    if (status != Status::Read)
        return owner.failWith(failureText(status, fileName, results.complaint));
    owner.emitProgress(
        tr(" -> (Read Input Data) Cartesian coordinates successfully loaded from the "
           "desired Mopac output file: \n") +
        fileName);
    for (const QString &doubt : doubtsOf(results))
        Q_EMIT owner.newObjCalculationMessage(doubt + QLatin1Char('\n') + fileName);
    return true;
}

bool LanqorInputData::readForceConstant(const QString &path, const int &n)
{
    MopacForceMatrixReader reader(path);
    if (!reader.open())
        return failWith(missingFile(path));
    QVector<double> constants;
    if (!reader.read(n, constants))
        return failWith(tr("There has been an error during read in force constant from Mopac "
                           "output."));
    d->forceConstants += constants;
    return true;
}
