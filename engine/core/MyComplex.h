#pragma once

/// A complex number, the result of every crystal-field and intensity sum.
struct MyComplex
{
    double real = 0.0;
    double imag = 0.0;
};
