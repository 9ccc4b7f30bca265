#include "programs/interruption.h"

#include <atomic>
#include <csignal>

namespace programs {

namespace {

constexpr int caught[] = {SIGINT, SIGTERM, SIGHUP};

/// A signal handler may touch nothing but lock-free atomics.
std::atomic<int> signalCount{0};

void countSignal(int)
{
    ++signalCount;
}

} // namespace

InterruptionGuard::InterruptionGuard()
{
    signalCount = 0;
    struct sigaction action = {};
    action.sa_handler = countSignal;
    for (const int signal : caught)
        ::sigaction(signal, &action, nullptr);
}

InterruptionGuard::~InterruptionGuard()
{
    for (const int signal : caught)
        std::signal(signal, SIG_DFL);
}

int InterruptionGuard::count()
{
    return signalCount;
}

} // namespace programs
