#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/excitedStates_p.h"
#include "input/fileFormats_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"

namespace {

/// Which program wrote a file, told from its text.
LanqorInputData::ProgramType programOf(const InputFile &file)
{
    LineReader reader(file);
    if (!reader.open())
        return LanqorInputData::UnknownOutput;
    while (reader.next()) {
        if (textFields::contains(reader.line(), "INDO CALCULATION RESULTS"))
            return LanqorInputData::MopacIndoOutput;
        switch (fileFormats::markedProgram(reader.line())) {
        case fileFormats::Format::OrcaOutput:
            return LanqorInputData::OrcaOutput;
        case fileFormats::Format::GaussianOutput:
            return LanqorInputData::GaussianOutput;
        case fileFormats::Format::ZindoOutput:
            return LanqorInputData::ZindoOutput;
        default:
            break;
        }
    }
    return LanqorInputData::UnknownOutput;
}

} // namespace

LanqorInputData::ProgramType LanqorInputData::detectProgram(const QString &fileName)
{
    return programOf(fileName);
}

LanqorInputData::ProgramType LanqorInputData::detectProgram() const
{
    return programOf(d->file());
}

bool LanqorInputData::readExcitedStates(const ProgramType &program)
{
    switch (program) {
    case ZindoOutput:
        return readCoordFromZindoOutFile() && readOutputZindo();
    case OrcaOutput:
        return readCoordFromOrcaOutFile() && readOutputOrca();
    case GaussianOutput:
        return readOutputGaussian();
    case MopacIndoOutput:
        return d->readMopacIndoAlone();
    case UnknownOutput:
        break;
    }
    return failWith(tr("\nUnknown program type %1: 0 stands for a ZINDO, 1 for an ORCA, 2 for a "
                       "Gaussian and 3 for a MOPAC INDO output.")
                        .arg(program));
}

void LanqorInputDataPrivate::takeExcitedStates(const ExcitedStates &results)
{
    molecularOrbitals += results.orbitals;
    molecularOrbitalNumber = molecularOrbitals.size();
    singletStates += results.singlets.states;
    tripletStates += results.triplets.states;
    singletWeights += results.singlets.weights;
    tripletWeights += results.triplets.weights;
    selExcitateState = singletStates.isEmpty() ? 0 : 1;
    if (results.unreadableExcitations > 0) {
        owner.emitProgress(
            tr(" -> (Read Input Data) %1 excitations of the excited states could not be "
               "read and are left out.")
                .arg(results.unreadableExcitations));
    }
    if (results.unnamedStates > 0) {
        owner.emitProgress(
            tr(" -> (Read Input Data) %1 excited states are called neither singlet nor "
               "triplet (unrestricted reference); they stand among the triplets, and the "
               "alpha orbitals are taken for both spins.")
                .arg(results.unnamedStates));
    }
}

void LanqorInputDataPrivate::takeSpectrum(const ExcitedStates &results)
{
    energyVector += results.spectrumEnergies;
    oscForceVector += results.spectrumStrengths;
    excitedStateCount = energyVector.size();
}

QString LanqorInputDataPrivate::missingCoordinatesMessage() const
{
    return tr("\nCannot find the cartesian coordinates from the desired .out file: \n") + fileName +
           tr("\nCheck the file to identify the possible errors.");
}
