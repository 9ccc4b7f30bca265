#pragma once

namespace programs {

/// Catches Ctrl-C, SIGTERM and SIGHUP while it lives, so that what runs can be ended in order.
class InterruptionGuard
{
public:
    InterruptionGuard();
    ~InterruptionGuard();
    InterruptionGuard(const InterruptionGuard &) = delete;
    InterruptionGuard &operator=(const InterruptionGuard &) = delete;

    /// How often one of the signals has come since the guard was made.
    static int count();
};

} // namespace programs
