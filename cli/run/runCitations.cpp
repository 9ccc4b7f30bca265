#include "run/runCitations.h"

#include "run/RunReport.h"
#include "run/RunRequest.h"

#include <algorithm>

namespace cli {

namespace {

bool hasUsed(const RunReport &report, const QString &program)
{
    return std::any_of(report.steps.begin(), report.steps.end(),
                       [&program](const RunStep &step) { return step.program == program; });
}

} // namespace

QStringList runCitations(const RunRequest &request, const RunReport &report)
{
    QStringList papers;
    const auto add = [&papers](const char *paper) { papers.append(QString::fromUtf8(paper)); };
    if (hasUsed(report, QStringLiteral("mopac")))
        add("MOPAC: J. E. Moussa, J. J. P. Stewart, MOPAC, https://openmopac.net");
    if (request.geometry == GeometryMethod::Mopac) {
        if (request.mopacMethod == QLatin1String("RM1")) {
            add("RM1: G. B. Rocha, R. O. Freire, A. M. Simas, J. J. P. Stewart, J. Comput. Chem. "
                "27, 1101 (2006)");
            add("sparkle for Eu(III) with RM1: M. A. M. Filho, J. D. L. Dutra, G. B. Rocha, R. O. "
                "Freire, A. M. Simas, RSC Adv. 3, 16747 (2013)");
        }
        if (!request.solvent.isEmpty())
            add("COSMO: A. Klamt, G. Schueuermann, J. Chem. Soc., Perkin Trans. 2, 799 (1993)");
    }
    if (hasUsed(report, QStringLiteral("xtb"))) {
        add("GFN1-xTB: S. Grimme, C. Bannwarth, P. Shushkov, J. Chem. Theory Comput. 13, 1989 "
            "(2017)");
        add("xtb: C. Bannwarth, E. Caldeweyher, S. Ehlert, A. Hansen, P. Pracht, J. Seibert, S. "
            "Spicher, S. Grimme, WIREs Comput. Mol. Sci. 11, e1493 (2021)");
        if (std::any_of(report.steps.begin(), report.steps.end(), [](const RunStep &step) {
                return step.commandLine.contains(QLatin1String("--gfnff"));
            }))
            add("GFN-FF: S. Spicher, S. Grimme, Angew. Chem. Int. Ed. 59, 15665 (2020)");
        if (!request.solvent.isEmpty())
            add("ALPB: S. Ehlert, M. Stahn, S. Spicher, S. Grimme, J. Chem. Theory Comput. 17, "
                "4250 (2021)");
    }
    if (report.states && request.excited.isEmpty()) {
        add("INDO/S: J. E. Ridley, M. C. Zerner, Theor. Chim. Acta 32, 111 (1973)");
        add("INDO/S in MOPAC: R. L. M. Gieseking, J. Comput. Chem. 42, 365 (2021)");
    }
    if (report.states)
        add("donor-acceptor distance RL: G. F. de Sa et al., Coord. Chem. Rev. 196, 165 (2000)");
    if (report.measured)
        add("bands of Eu3+: K. Binnemans, Coord. Chem. Rev. 295, 1 (2015)");
    if (report.omega) {
        add("intensity parameters: B. R. Judd, Phys. Rev. 127, 750 (1962); G. S. Ofelt, J. Chem. "
            "Phys. 37, 511 (1962)");
        add("simple overlap model: O. L. Malta, Chem. Phys. Lett. 87, 27 (1982); O. L. Malta et "
            "al., J. Lumin. 75, 255 (1997)");
    }
    if (report.fit)
        add("generalised simulated annealing: C. Tsallis, D. A. Stariolo, Physica A 233, 395 "
            "(1996)");
    if (report.yield)
        add("energy transfer: O. L. Malta, J. Lumin. 71, 229 (1997)");
    if (report.uncertainty && !report.uncertainty->quantities.isEmpty())
        add("error bars: S. Joe, F. Y. Kuo, SIAM J. Sci. Comput. 30, 2635 (2008); M. J. W. Jansen, "
            "Comput. Phys. Commun. 117, 35 (1999)");
    return papers;
}

} // namespace cli
