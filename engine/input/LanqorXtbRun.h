#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/XtbRunResults.h>

#include <QString>

#include <memory>

class LanqorXtbRunPrivate;

/// Reads one finished run of the program xtb with its method GFN1-xTB (S. Grimme, C. Bannwarth,
/// P. Shushkov, J. Chem. Theory Comput. 13, 1989 (2017)): the printed output, the geometry
/// ("xtbopt.xyz") and the charges ("charges").
///
/// A run may end with a good word and still be worthless, so that these are refused: runs that
/// failed, in the words of xtb; that have no end; with a value that is no number anywhere but in
/// the ratio of two energy changes that are zero; whose optimisation or last self-consistent
/// calculation did not converge; closed-shell ones with a gap below 1.5 eV, which is the sign of an
/// electronic collapse (good ones of europium complexes have 1.8 to 3.0); of another method than
/// GFN1; and those whose geometry or charges are not theirs.
class LANQORENGINE_EXPORT LanqorXtbRun : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// @param outputFile  what xtb printed on standard output
    LanqorXtbRun(QObject *parent, const QString &outputFile);
    ~LanqorXtbRun() override;

    /// Reads the output and, unless their names are empty, an .xyz file of the geometry at the
    /// end of the run and a file of one charge an atom. False with the reason in getLastError();
    /// results of an earlier call stay then.
    bool readOutput(const QString &geometryFile = QString(),
                    const QString &chargesFile = QString());

    XtbRunResults getResults() const;

    /// Smallest gap of a closed-shell run that is believed, eV.
    static double smallestGap();

private:
    friend class LanqorXtbRunPrivate;
    std::unique_ptr<LanqorXtbRunPrivate> d;
};
