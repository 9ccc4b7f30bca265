#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/mopacForceMatrix_p.h"
#include "input/mopacOutput_p.h"
#include "input/readerLimits_p.h"

namespace {

using Status = MopacOutputReader::Status;

QString failureText(Status status, const QString &fileName)
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
        return owner.failWith(failureText(status, fileName));
    owner.emitProgress(
        tr(" -> (Read Input Data) Cartesian coordinates successfully loaded from the "
           "desired Mopac output file: \n") +
        fileName);
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
