#include "LanqorXtbRun.h"

#include "input/structureFiles_p.h"
#include "input/xtbOutput_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

class LanqorXtbRunPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorXtbRun)

public:
    explicit LanqorXtbRunPrivate(const QString &outputFile)
        : outputFile(outputFile)
    {}

    /// Each returns what is wrong; empty when nothing is.
    QString failureOf(const XtbOutput &output) const;
    QString missingPartOf(const XtbOutput &output) const;
    QString unusable(const XtbOutput &output) const;
    QString takeGeometry(const QString &fileName, XtbRunResults &run) const;
    QString takeCharges(const QString &fileName, XtbRunResults &run) const;
    void addWarnings(XtbRunResults &run) const;

    const QString outputFile;
    XtbRunResults results;
};

namespace {

constexpr int neededMethod = 1;            // GFN1
constexpr double smallestGapEv = 1.5;      // eV
constexpr double largestCharge = 1000.0;   // of anything that is a molecule
constexpr double usualTemperature = 300.0; // K

/// Largest difference of two geometries of the same atoms, Angstrom.
double largestShift(const QVector<Coord> &a, const QVector<Coord> &b)
{
    double largest = 0.0;
    for (int i = 0; i < a.size(); ++i)
        largest = std::max({largest, std::abs(a.at(i).x - b.at(i).x),
                            std::abs(a.at(i).y - b.at(i).y), std::abs(a.at(i).z - b.at(i).z)});
    return largest;
}

} // namespace

QString LanqorXtbRunPrivate::failureOf(const XtbOutput &output) const
{
    if (!output.isXtb)
        return tr("%1 is no output of xtb: \"* xtb version\" is missing. It is what xtb prints on "
                  "standard output.")
            .arg(outputFile);
    if (!output.errors.isEmpty())
        return tr("xtb failed; it says in %1: \"%2\"")
            .arg(outputFile, output.errors.join(QStringLiteral("; ")));
    if (output.lineOfNaN != 0)
        return tr("line %1 of %2 holds a value that is no number (\"%3\"): the run is worthless, "
                  "whatever its end says. GFN1 does so for europium in crowded spheres (nitrates, "
                  "three waters); one water less or Gd in the place of Eu usually runs.")
            .arg(QString::number(output.lineOfNaN), outputFile, output.textOfNaN);
    if (!output.isFinished)
        return tr("%1 has no end (\"* finished run on\"): xtb was ended, or is still running. Run "
                  "it again to its end.")
            .arg(outputFile);
    return QString();
}

QString LanqorXtbRunPrivate::missingPartOf(const XtbOutput &output) const
{
    QString part;
    if (output.run.programCall.isEmpty())
        part = tr("the line \"program call\"");
    else if (!output.hasAtomTable)
        part = tr("the table of elements and atoms behind \"ID Z sym. atoms\", each atom once");
    else if (output.method.isEmpty())
        part = tr("the name of the method (\"Hamiltonian\")");
    else if (!output.hasEnergy)
        part = tr("the last \"TOTAL ENERGY\" and \"GRADIENT NORM\"");
    else if (!output.totalCharge || std::abs(*output.totalCharge) > largestCharge)
        part = tr("the line \"total charge\"");
    return part.isEmpty() ? part : tr("%1 lacks %2: the file is damaged").arg(outputFile, part);
}

QString LanqorXtbRunPrivate::unusable(const XtbOutput &output) const
{
    const XtbRunResults &run = output.run;
    if (run.gfn != neededMethod)
        return tr("%1 is a run of %2, but the energies here are known for GFN1-xTB alone: run xtb "
                  "with --gfn 1")
            .arg(outputFile, output.method);
    if (!output.hasGap || !(run.electronicTemperature > 0.0))
        return tr("%1 lacks the HOMO-LUMO gap or the electronic temperature: the file is damaged")
            .arg(outputFile);
    if (output.asksForOptimisation && !output.hasConvergedGeometry)
        return tr("the geometry of %1 is not optimised: \"GEOMETRY OPTIMIZATION CONVERGED\" is "
                  "missing. Start xtb again from its last geometry.")
            .arg(outputFile);
    if (!output.hasConvergedScf)
        return tr("the last self-consistent calculation of %1 did not converge. Start from "
                  "another geometry, or with more --iterations.")
            .arg(outputFile);
    if (run.unpairedElectrons == 0 && run.gap < smallestGapEv)
        return tr("the gap of %1 is %2 eV; below %3 eV a closed-shell run has collapsed into a "
                  "wrong electronic state. Start from another geometry, or without the "
                  "counter-ions. A run of the triplet needs --uhf 2 in its call.")
            .arg(outputFile, QString::number(run.gap, 'f', 3),
                 QString::number(smallestGapEv, 'f', 1));
    return QString();
}

QString LanqorXtbRunPrivate::takeGeometry(const QString &fileName, XtbRunResults &run) const
{
    QVector<Coord> printed = run.atoms;
    if (!fileName.isEmpty()) {
        const structureFiles::Structure structure = structureFiles::readXyz(fileName);
        if (!structure.error.isEmpty())
            return structure.error.trimmed();
        run.atoms = structure.atoms;
    }
    if (run.atoms.isEmpty())
        return QString();
    const QString source = fileName.isEmpty() ? outputFile : fileName;
    if (run.atoms.size() != run.elements.size())
        return tr("%1 holds %2 atoms, but the run of %3 has %4: it is another complex")
            .arg(source, QString::number(run.atoms.size()), outputFile,
                 QString::number(run.elements.size()));
    for (int i = 0; i < run.atoms.size(); ++i)
        if (run.atoms.at(i).label != run.elements.at(i))
            return tr("atom %1 is %2 in %3, but %4 in the run of %5: it is another complex, or "
                      "another order of atoms")
                .arg(QString::number(i + 1), run.atoms.at(i).label, source, run.elements.at(i),
                     outputFile);
    constexpr double tolerance = 1e-3; // Angstrom, of files with few decimals
    if (run.isOptimisation && printed.size() == run.atoms.size() &&
        largestShift(printed, run.atoms) > tolerance)
        return tr("%1 is not the geometry at the end of %2, from which it differs by %3 Angstrom; "
                  "xtb writes that one to xtbopt.xyz")
            .arg(fileName, outputFile, QString::number(largestShift(printed, run.atoms), 'f', 3));
    return QString();
}

QString LanqorXtbRunPrivate::takeCharges(const QString &fileName, XtbRunResults &run) const
{
    if (fileName.isEmpty())
        return QString();
    LineReader reader(fileName);
    if (!reader.open())
        return missingFile(fileName).trimmed();
    QVector<double> charges;
    double sum = 0.0;
    while (reader.next() && charges.size() <= run.elements.size()) {
        if (textFields::isBlank(reader.line()))
            continue;
        bool ok = false;
        charges.append(textFields::toDouble(textFields::trimmed(reader.line()), &ok));
        if (!ok)
            return tr("line %1 of %2 is not the charge of an atom; xtb writes one a line to its "
                      "file \"charges\"")
                .arg(QString::number(reader.lineNumber()), fileName);
        sum += charges.last();
    }
    constexpr double tolerance = 0.02; // rounding of charges with few decimals
    if (charges.size() != run.elements.size() || std::abs(sum - run.charge) > tolerance)
        return tr("the charges of %1 are not those of the run %2: they are %3 of sum %4, but the "
                  "run has %5 atoms of charge %6")
            .arg(fileName, outputFile,
                 charges.size() > run.elements.size() ? tr("more than %1").arg(run.elements.size())
                                                      : QString::number(charges.size()),
                 QString::number(sum, 'f', 3), QString::number(run.elements.size()),
                 QString::number(run.charge));
    run.charges = charges;
    return QString();
}

void LanqorXtbRunPrivate::addWarnings(XtbRunResults &run) const
{
    if (std::abs(run.electronicTemperature - usualTemperature) > 0.01)
        run.warnings.append(
            tr("the electronic temperature of %1 is %2 K instead of 300 K, which shifts a triplet "
               "by hundreds of cm^-1")
                .arg(outputFile, QString::number(run.electronicTemperature)));
}

LanqorXtbRun::LanqorXtbRun(QObject *parent, const QString &outputFile)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorXtbRunPrivate>(outputFile))
{}

LanqorXtbRun::~LanqorXtbRun() = default;

bool LanqorXtbRun::readOutput(const QString &geometryFile, const QString &chargesFile)
{
    XtbOutputReader reader(d->outputFile);
    if (!reader.open())
        return failWith(missingFile(d->outputFile));
    XtbOutput output = reader.read();
    XtbRunResults &run = output.run;
    run.outputPath = d->outputFile;
    run.isOptimisation = output.hasConvergedGeometry;
    if (output.totalCharge && std::abs(*output.totalCharge) <= largestCharge)
        run.charge = static_cast<int>(std::lround(*output.totalCharge));
    if (output.method.startsWith(QLatin1String("GFN")))
        run.gfn = output.method.mid(3, 1).toInt();
    run.solvent = run.solvent.trimmed();
    QString fault = d->failureOf(output);
    if (fault.isEmpty())
        fault = d->missingPartOf(output);
    if (fault.isEmpty())
        fault = d->unusable(output);
    if (fault.isEmpty())
        fault = d->takeGeometry(geometryFile, run);
    if (fault.isEmpty())
        fault = d->takeCharges(chargesFile, run);
    if (!fault.isEmpty())
        return failWith(fault);
    d->addWarnings(run);
    d->results = run;
    return true;
}

XtbRunResults LanqorXtbRun::getResults() const
{
    return d->results;
}

double LanqorXtbRun::smallestGap()
{
    return smallestGapEv;
}
