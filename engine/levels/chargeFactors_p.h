#pragma once

#include <QVector>

/// Charge factors by atom number: an array of the caller's, which must live as long as it is in
/// use, or a vector of one's own. A copy shares the array and has its own vector.
class ChargeFactors
{
public:
    ChargeFactors() = default;
    explicit ChargeFactors(const double *array)
        : array(array)
    {}
    explicit ChargeFactors(const QVector<double> &vector)
        : vector(vector)
    {
        this->vector.detach(); // the caller may hold a pointer to the shared data
    }

    bool isSet() const { return array || !vector.isEmpty(); }
    double at(int atom) const { return array ? array[atom] : vector.at(atom); }

private:
    const double *array = nullptr;
    QVector<double> vector;
};
