// Stands before the system's functions in a program that is started with it (LD_PRELOAD): the time of day
// jumps, as when somebody sets the clock, a laptop wakes up or a server of time corrects it.
#include <dlfcn.h>
#include <time.h>

#include <atomic>
#include <ctime>

namespace {

time_t jump()
{
    constexpr time_t jumps[] = {0, 86400, -31536000, 30, -1, 4000000000};
    static std::atomic<unsigned> calls{0};
    return jumps[calls++ / 20 % (sizeof jumps / sizeof *jumps)];
}

} // namespace

// NOLINTBEGIN: the names and arguments are the system's.
extern "C" {

int clock_gettime(clockid_t clock, struct timespec* now) noexcept
{
    static const auto real =
        reinterpret_cast<decltype(&::clock_gettime)>(::dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = real(clock, now);
    if (result == 0 && clock == CLOCK_REALTIME)
        now->tv_sec += jump();
    return result;
}

time_t time(time_t* now) noexcept
{
    static const auto real = reinterpret_cast<decltype(&::time)>(::dlsym(RTLD_NEXT, "time"));
    const time_t result = real(nullptr) + jump();
    if (now)
        *now = result;
    return result;
}

} // extern "C"
// NOLINTEND
