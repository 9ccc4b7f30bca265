#pragma once

#include "programs/ProgramJob.h"

#include <LanqorEngine/Coord.h>

/// xtb: geometry and lowest states of given multiplicity by GFN1-xTB (S. Grimme, C. Bannwarth, P.
/// Shushkov, J. Chem. Theory Comput. 13, 1989, 2017).
namespace programs {

/// An optimisation.
struct XtbRequest
{
    QVector<Coord> atoms;      ///< start, Angstrom
    int charge = 0;            ///< of all atoms
    int unpairedElectrons = 0; ///< 2 of a triplet; the 4f shell counts none
    QString solvent;           ///< as xtb names it (ALPB); empty: gas phase
    QString folder;            ///< of the results
    QString baseName;          ///< "s0": s0.start.xyz, s0.out, s0.xyz, s0.charges, s0.err
    QString path;              ///< of the program (--xtb); empty: by PATH
    int threads = 1;
};

/// The job to run; its limits and showProgress may be changed.
ProgramJob makeXtbJob(const XtbRequest &request);

} // namespace programs
