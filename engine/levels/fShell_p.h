#pragma once

/// The 4f shell.
namespace fShell {

constexpr int orbitalL = 3;          ///< l of an electron
constexpr double electronSpin = 0.5; ///< s of an electron
constexpr int holesAndElectrons = 14;
constexpr int halfFilled = 7;

} // namespace fShell
