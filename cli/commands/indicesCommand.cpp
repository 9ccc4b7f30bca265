#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>

using cli::tr;

int indicesCommand(const QStringList &arguments)
{
    cli::OptionReader options("indices");
    options.setDescription(
        tr("Reactivity indices of every atom but the ion (atom 1): electron population\n"
           "2 sum c^2 and superdelocalizability 2 sum c c'/E over the doubly occupied orbitals\n"
           "and the S, Px, Py, Pz functions of the atom.\n\n"
           "FILE is a MOPAC output with all orbitals (keyword ALLVEC), energies E in eV; or, with\n"
           "--gaussian, a Gaussian output (pop=full), energies in hartree, which means something\n"
           "for orthonormal minimal bases only. Superdelocalizabilities are in 1/eV (MOPAC) or\n"
           "1/hartree (Gaussian), although the heading of the table, which other programs look\n"
           "for, says au; they are negative for donors and depend on the orientation of the\n"
           "molecule.\n\n"
           "The table goes to standard output and to a file beside FILE with the suffix\n"
           "\".indeces\".\n\n"
           "Example: lanqor indices complex.out"));
    options.addArgument(QStringLiteral("FILE"), tr("MOPAC or Gaussian output"));
    options.addOption({QStringLiteral("gaussian"), tr("FILE is a Gaussian output.")});
    options.addResultOptions();
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("indices needs one file; see \"lanqor indices --help\"")).first();
    LanqorInputData output(nullptr, fileName);
    output.setKeepFileOpen(true);
    if (!options.isSet("gaussian") && output.detectProgram() == LanqorInputData::GaussianOutput)
        throw cli::Failure{tr("%1 is a Gaussian output; add --gaussian").arg(fileName)};
    if (!options.isSet("gaussian") && !output.readStructureFile())
        cli::failOf(output);
    LanqorIndicesCalculation indices(nullptr, &output,
                                     options.isSet("gaussian")
                                         ? LanqorIndicesCalculation::GaussianOutput
                                         : LanqorIndicesCalculation::MopacOutput);
    if (!indices.calculateIndices())
        cli::failOf(indices);
    cli::showResults(options, indices.getIndicesTable(),
                     LanqorIndicesCalculation::makeTables(indices.getResults()));
    if (!indices.getLastError().isEmpty()) // the file of the indices is lost
        cli::failOf(indices);
    return cli::success;
}
