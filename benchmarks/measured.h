/// Many times of one operation, printed as a line when they are all in.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

namespace bench {

/// Milliseconds of the clock: what the user waits.
inline double wall_ms()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// Milliseconds of this thread's own time, whatever else the machine does.
inline double cpu_ms()
{
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class measured_t
{
public:
    measured_t(const char* name, double (*clock)()) : m_name(name), m_clock(clock) {}
    /// Prints how often, the median, the 99th of a hundred, and the longest.
    ~measured_t()
    {
        std::sort(m_times.begin(), m_times.end());
        if (!m_times.empty())
            std::printf("%-34s %6zu times  median %8.3f  p99 %8.3f  longest %8.3f ms\n", m_name,
                        m_times.size(), m_times[m_times.size() / 2], m_times[m_times.size() * 99 / 100],
                        m_times.back());
    }
    measured_t(const measured_t&) = delete;
    measured_t& operator=(const measured_t&) = delete;

    template <class F>
    void run(F&& operation)
    {
        const double begin = m_clock();
        operation();
        m_times.push_back(m_clock() - begin);
    }

private:
    const char* m_name;
    double (*m_clock)();
    std::vector<double> m_times;
};

} // namespace bench
