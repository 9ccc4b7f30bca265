#include "intensity/citations_p.h"

namespace citations {

QString intensityModel()
{
    return QStringLiteral(
        "Intensity parameters: B. R. Judd, Phys. Rev. 127, 750 (1962); G. S. Ofelt, J. Chem. Phys. "
        "37, 511 (1962).\n"
        "Dynamic coupling: C. K. Jorgensen, B. R. Judd, Mol. Phys. 8, 281 (1964); S. F. Mason, "
        "R. D. Peacock,\n"
        "    B. Stewart, Mol. Phys. 30, 1829 (1975).\n"
        "Simple overlap model: O. L. Malta, Chem. Phys. Lett. 87, 27 (1982); O. L. Malta, Chem. "
        "Phys. Lett. 88,\n"
        "    353 (1982); O. L. Malta et al., J. Lumin. 75, 255 (1997).\n");
}

QString required(const QString &mopacCitation, const QString &own)
{
    const QString heading =
        QStringLiteral("------------------------------------------------------\n"
                       "      Required Citations for this Calculation         \n"
                       "------------------------------------------------------\n\n");
    return mopacCitation.isEmpty() ? heading + own
                                   : heading + mopacCitation + QStringLiteral("\n\n") + own;
}

} // namespace citations
