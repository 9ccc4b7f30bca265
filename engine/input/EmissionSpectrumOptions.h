#pragma once

#include <array>

/// How an emission spectrum of Eu3+ is integrated over its bands 5D0 -> 7F0 .. 7F5.
struct EmissionSpectrumOptions
{
    /// What the first column of the file holds. Automatic: nanometres when all values are below
    /// 5000, wavenumbers (cm^-1) when all are above.
    enum class Axis { Automatic, Nanometre, Wavenumber };

    /// What the second column counts, each per unit of the first: emitted power as corrected
    /// spectra of analogue detectors give it, or photons. Photon counts are weighted by their
    /// wavenumber, that is by their energy, point by point.
    enum class Signal { EmittedPower, PhotonCounts };

    /// What is subtracted from a band before it is integrated. None: nothing, the spectrum is
    /// taken as free of background, so that noise cancels. Linear: the straight line between the
    /// mean signals in the outermost twentieth of the window at either end; it takes away a
    /// background, and with it the wings of a band that is not over at the window's end.
    enum class Baseline { None, Linear };

    /// Limits of a band, cm^-1.
    struct Window
    {
        double lowest;
        double highest;
    };

    Axis axis = Axis::Automatic;
    Signal signal = Signal::EmittedPower;
    Baseline baseline = Baseline::None;

    /// Windows of 5D0 -> 7F0 .. 7F5: in nm 570-584, 584-604, 604-640, 640-670, 670-725, 725-780.
    /// They are the ranges of the bands listed by K. Binnemans, Coord. Chem. Rev. 295, 1 (2015),
    /// widened until they meet in the gaps between the bands, so that no emission is lost.
    std::array<Window, 6> windows = {{
        {1.0e7 / 584.0, 1.0e7 / 570.0},
        {1.0e7 / 604.0, 1.0e7 / 584.0},
        {1.0e7 / 640.0, 1.0e7 / 604.0},
        {1.0e7 / 670.0, 1.0e7 / 640.0},
        {1.0e7 / 725.0, 1.0e7 / 670.0},
        {1.0e7 / 780.0, 1.0e7 / 725.0},
    }};
};
