#include "programs/interruption.h"

#include <atomic>

namespace programs {

namespace {

/// A signal handler may touch nothing but lock-free atomics.
std::atomic<int> signalCount{0};

void countSignal(int)
{
    ++signalCount;
}

} // namespace

InterruptionGuard::InterruptionGuard()
    : before()
{
    signalCount = 0;
    struct sigaction action = {};
    action.sa_handler = countSignal;
    for (std::size_t i = 0; i < caught.size(); ++i) {
        ::sigaction(caught.at(i), nullptr, &before.at(i));
        if (before.at(i).sa_handler != SIG_IGN)
            ::sigaction(caught.at(i), &action, nullptr);
    }
}

InterruptionGuard::~InterruptionGuard()
{
    for (std::size_t i = 0; i < caught.size(); ++i)
        ::sigaction(caught.at(i), &before.at(i), nullptr);
}

int InterruptionGuard::count()
{
    return signalCount;
}

} // namespace programs
