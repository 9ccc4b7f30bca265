#pragma once

#include <LanqorEngine/AbsorptionResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorNormalizePointsPrivate;
class LanqorResultTables;

/// The absorption spectrum of computed excited states as a smooth curve.
///
/// Each transition becomes a Lorentzian band (with its mirror image at negative wavenumber), the
/// bands are summed on 1001 points evenly spaced in wavenumber, and the sum is scaled to a
/// maximum of 1. The band width is given in nm: around a band at p cm^-1, bandWidth nm are
/// bandWidth p^2 / 1e7 cm^-1 of full width at half maximum. States of zero energy take no part.
class LANQORENGINE_EXPORT LanqorNormalizePoints : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// Reads the transitions of an output; getLastError() tells why it could not.
    /// @param program  0 ZINDO, 1 ORCA, 2 Gaussian
    LanqorNormalizePoints(QObject *parent, QString const &fileName, int const &program);
    /// The same from the file of @p output, which is read here and not kept; null has no
    /// transitions.
    LanqorNormalizePoints(QObject *parent, LanqorInputData *output, int const &program);
    ~LanqorNormalizePoints() override;

    /// Width of every band and the limits of the spectrum, in either order, all in nm.
    void setParametersNormalization(double const &bandWidth, double const &rangeStart,
                                    double const &rangeEnd);
    /// Computes the two axes. Fails, and leaves earlier axes as they are, when no transition has an
    /// oscillator strength that reaches into the range, or when a width or limit is not positive.
    /// A message tells when no band has its centre in the range, so that the curve is a wing.
    bool spectrum();
    /// Wavelengths, nm, in the order of rising wavenumber; 1001 values after spectrum().
    QVector<double> getaxisX() const;
    /// Absorption at these wavelengths, largest value 1.
    QVector<double> getaxisY() const;
    /// Writes a line of wavelength (nm) and absorption for each point.
    bool createEspFile(QString const &fileName);

    /// Number of transitions read.
    int getCount() const;
    /// Wavelength, nm, of transition @p transition (1 to getCount()); 0 for a state of zero
    /// energy. In file order until spectrum(), which sorts the transitions by wavelength.
    double getPosition(const int &transition) const;
    /// Oscillator strength of a transition, as getPosition().
    double getIntensity(const int &transition) const;

    /// The curve of the last spectrum() and the transitions in the range.
    AbsorptionResults getResults() const;
    /// Adds the main excitation of each transition that has the energy of a singlet of @p output;
    /// those of an output without weights stay without.
    /// @param program  as for the constructor
    static void addConfigurations(AbsorptionResults &results, LanqorInputData &output,
                                  int const &program);
    /// Adds a measured spectrum of two columns, wavelength (nm) and absorption, scaled to a largest
    /// value of 1 in the range of the curve.
    /// @return false, with the reason in @p error, when the file holds none that reaches into it
    static bool addMeasured(AbsorptionResults &results, QString const &fileName, QString &error);
    /// Transitions, their configurations, curve and measured spectrum as data for other programs.
    static LanqorResultTables makeTables(const AbsorptionResults &results);

private:
    std::unique_ptr<LanqorNormalizePointsPrivate> d;
};
