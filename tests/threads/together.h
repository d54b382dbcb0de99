// Threads that begin at the same moment.
#ifndef KELCL_TESTS_THREADS_TOGETHER_H
#define KELCL_TESTS_THREADS_TOGETHER_H

#include <barrier>
#include <thread>
#include <vector>

// Defined where the program is compiled for AddressSanitizer, which also searches for leaks.
#if defined(__SANITIZE_ADDRESS__)
#define KELCL_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KELCL_ADDRESS_SANITIZER
#endif
#endif

/// Runs `body(0)` to `body(count - 1)` in a thread each, and waits for all of them.
template <class Body>
void together(int count, Body const& body) {
    std::barrier start(count);
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number)
        threads.emplace_back([&start, &body, number] {
            start.arrive_and_wait();
            body(number);
        });
    for (std::thread& thread : threads)
        thread.join();
}

#endif
