#pragma once

#include "programs/ProgramJob.h"

/// MOPAC: optimisations and excited states by INDO/S.
namespace programs {

/// A job of MOPAC, as LanqorFilesConverter writes it.
struct MopacRequest
{
    enum class Kind {
        Optimisation, ///< the output must hold the heat of formation of a relaxed geometry
        States        ///< INDO/S of one multiplicity: the output must hold the table of states
    };

    Kind kind = Kind::Optimisation;
    QByteArray job;   ///< the text of the .mop file
    QString folder;   ///< of the results
    QString baseName; ///< of the results: NAME.mop, NAME.out, NAME.log, of an optimisation NAME.arc
    QString path;     ///< of the program (--mopac); empty: by PATH
    int threads = 1;
};

/// The job to run; its limits and showProgress may be changed.
ProgramJob makeMopacJob(const MopacRequest &request);

} // namespace programs
