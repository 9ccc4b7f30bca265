#pragma once

#include "core/physicalConstants_p.h"
#include "levels/fieldStates_p.h"

#include <Eigen/Core>

#include <array>

/// Magnetic properties of states in a crystal field, of the moment -mu_B (L + g S).
namespace magnetism {

using Complex = std::complex<double>;

using lanqor::magnetic::bohrMagneton;
using lanqor::magnetic::boltzmann;
using lanqor::magnetic::curieConstant;

/// x, y, z.
using Components = std::array<Eigen::MatrixXcd, 3>;

/// L + g S on the columns of @p vectors over the basis.
Components apply(const fieldStates::Basis &basis, const fieldStates::TensorOperator &moment,
                 const Eigen::MatrixXcd &vectors);

/// The moment between the lowest states and all.
struct Elements
{
    Eigen::VectorXd energies; ///< of all states, ascending, cm^-1
    Components ofLowest;      ///< <j|L + g S|i>, a row for each state, a column for a lowest one
};

/// chi_ab of the linear response at the temperature @p T (K), cm^3/mol: the Curie part of states of
/// one energy and the temperature-independent part of all others. The lowest states must hold all
/// that are populated.
Eigen::Matrix3d susceptibility(const Elements &elements, double T);

/// Mean moment over the powder at the field @p B (T) along the field, Bohr magnetons an ion: the
/// Zeeman matrix of the lowest states is diagonalised for directions over the half sphere, the
/// states above them enter in first order of the field.
double powderMoment(const Elements &elements, double B, double T);

} // namespace magnetism
