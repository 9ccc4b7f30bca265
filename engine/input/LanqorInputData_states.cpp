#include "LanqorInputData.h"

#include "input/excitedStates_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"

LanqorInputData::ProgramType LanqorInputData::detectProgram(const QString &fileName)
{
    struct Mark
    {
        std::string_view text;
        ProgramType program;
    };
    // Title lines first, then headings, for excerpts without a title. The first line that holds
    // one decides: an ORCA or Gaussian output may well speak of ZINDO, but later.
    static constexpr Mark marks[] = {
        {"* O   R   C   A *", OrcaOutput},
        {"CARTESIAN COORDINATES (ANGSTROEM)", OrcaOutput},
        {"EXCITED STATES (SINGLETS)", OrcaOutput},
        {"Entering Gaussian System", GaussianOutput},
        {"This is part of the Gaussian", GaussianOutput},
        {"Coordinates (Angstroms)", GaussianOutput},
        {"Excitation energies and oscillator strengths:", GaussianOutput},
        {"Molecular Orbital Coefficients", GaussianOutput},
        {"ZINDO  -  A semi-empirical program", ZindoOutput},
        {"CTR AT.NO. VAL.CHG. CORE CHG.", ZindoOutput},
        {"RHF/ROHF - MOs follow", ZindoOutput},
    };
    LineReader reader(fileName);
    if (!reader.open())
        return UnknownOutput;
    while (reader.next()) {
        for (const Mark &mark : marks) {
            if (textFields::contains(reader.line(), mark.text))
                return mark.program;
        }
    }
    return UnknownOutput;
}

void LanqorInputData::takeExcitedStates(const ExcitedStates &results)
{
    molecularOrbitals += results.orbitals;
    molecularOrbitalNumber = molecularOrbitals.size();
    singletStates += results.singlets.states;
    tripletStates += results.triplets.states;
    singletWeights += results.singlets.weights;
    tripletWeights += results.triplets.weights;
    selExcitateState = singletStates.isEmpty() ? 0 : 1;
    if (results.unreadableExcitations > 0) {
        emitProgress(tr(" -> (Read Input Data) %1 excitations of the excited states could not be "
                        "read and are left out.")
                         .arg(results.unreadableExcitations));
    }
    if (results.unnamedStates > 0) {
        emitProgress(tr(" -> (Read Input Data) %1 excited states are called neither singlet nor "
                        "triplet (unrestricted reference); they stand among the triplets, and the "
                        "alpha orbitals are taken for both spins.")
                         .arg(results.unnamedStates));
    }
}

void LanqorInputData::takeSpectrum(const ExcitedStates &results)
{
    energyVector = results.spectrumEnergies;
    oscForceVector = results.spectrumStrengths;
    excitedStateCount = energyVector.size();
}

QString LanqorInputData::missingCoordinatesMessage() const
{
    return tr("\nCannot find the cartesian coordinates from the desired .out file: \n") + fileName +
           tr("\nCheck the file to identify the possible errors.");
}
