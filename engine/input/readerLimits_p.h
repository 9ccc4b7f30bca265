#pragma once

/// Limit of the atoms that any reader accepts; far beyond every calculation of this library, and
/// small enough that a damaged count or an endless table cannot exhaust the memory.
constexpr int maximumAtoms = 1000000;
