// Waits for results of other threads.
#ifndef QUILLMARSH_TESTS_SUPPORT_WAITING_H
#define QUILLMARSH_TESTS_SUPPORT_WAITING_H

#include <chrono>
#include <thread>

namespace quillmarsh::tests
{

/// Waits until the condition holds; false when it does not within twenty seconds.
template<typename Condition>
bool WaitUntil(Condition condition)
{
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition())
    {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace quillmarsh::tests

#endif
