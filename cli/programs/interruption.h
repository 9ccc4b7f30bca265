#pragma once

#include <array>
#include <csignal>

namespace programs {

/// Catches Ctrl-C, SIGTERM and SIGHUP while it lives, so that what runs can be ended in order. What
/// is ignored (as under nohup) stays so.
class InterruptionGuard
{
public:
    InterruptionGuard();
    ~InterruptionGuard();
    InterruptionGuard(const InterruptionGuard &) = delete;
    InterruptionGuard &operator=(const InterruptionGuard &) = delete;

    /// How often one of the signals has come since the guard was made.
    static int count();

private:
    static constexpr std::array<int, 3> caught = {SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, 3> before;
};

} // namespace programs
