#pragma once

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorRL.h>

#include <QStringList>

#include <memory>

namespace cli {

/// Excited states of ligands with their distances from the ion.
struct DonorOutput
{
    LanqorInputData::ProgramType type = LanqorInputData::UnknownOutput;
    std::unique_ptr<LanqorInputData> data;
    std::unique_ptr<LanqorRL> rl; ///< of data
};

/// Reads one output, or a pair of MOPAC INDO. Throws a Failure when they hold no singlets, no
/// triplets or no distances.
/// @param program  that wrote them; empty: found out
DonorOutput readDonorOutput(const QStringList &files, const QString &program);

} // namespace cli
