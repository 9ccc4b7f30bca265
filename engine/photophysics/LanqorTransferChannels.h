#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/TransferChannel.h>

#include <QVector>

/// The channels of energy transfer between the ligands and Eu3+, the one table that rates,
/// reports and hosts go by.
///
/// Acceptors and their energies above 7F0: 5D0 17293, 5D1 19027, 5L6 25325, 5G6 26752 and
/// 5D4 27586 cm^-1. Their source is not known. They are not those of the aqueous ion (calculated
/// 17286, 19026, 25375, 26762 and 27641 by W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys.
/// 49, 4450 (1968), from a 7F0 at -31); 5D0 is that of LaF3 (W. T. Carnall, G. L. Goodman,
/// K. Rajnak, R. S. Rana, J. Chem. Phys. 90, 3443 (1989)), where the centre of 5D1 lies at 19054.
class LANQORENGINE_EXPORT LanqorTransferChannels
{
public:
    /// All channels, in the order of the reports: from the singlet, from the first of two
    /// triplets, from the triplet; to 5D4, 5G6, 5L6, 5D1 and 5D0.
    static QVector<TransferChannel> getChannels();
    /// Whether @p channel takes part when @p switches are set.
    static bool isOpen(const TransferChannel &channel, const EnergyTransferChannels &switches,
                       const bool &considerTwoTriplets);
};
