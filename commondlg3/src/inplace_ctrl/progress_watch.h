#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace commondlg3 {

/// What can honestly be told of work that reports progress: how long it will take once that can be trusted,
/// that nothing was heard of it, that it was asked to stop. It has no clock: each call says how late it is.
class progress_watch_t
{
public:
    using moment_t = std::chrono::steady_clock::time_point;

    /// @param total as the worker gave it; not above zero: unknown
    void started(double total, moment_t now);
    /// The worker was asked to stop.
    void canceled() { m_stopping = true; }
    /// It was told something new, which answers that.
    void answered() { m_stopping = false; }
    void ended();
    bool is_running() const { return m_running; }
    /// Whether it works nobody knows how long.
    bool is_busy() const { return m_running && !m_known; }

    /// @param fraction how much is done
    /// @param signs a number that is another one whenever the worker has said something
    void look(double fraction, std::uint64_t signs, moment_t now);

    enum class kind_t
    {
        nothing,
        estimate,
        silent,
        stopping
    };
    kind_t get_kind() const;
    /// In the user's language; empty: nothing.
    std::string get_note() const;

private:
    void measure(double fraction, double seconds);
    void judge(double fraction, moment_t now);
    std::string describe_rate() const;

    bool m_running = false;
    bool m_known = false;
    bool m_stopping = false;
    bool m_trusted = false; // the estimate
    double m_total = 0;
    moment_t m_begin{};
    moment_t m_last_sign{};
    std::uint64_t m_signs = 0;
    double m_silence = 0; // in seconds, as they are told
    // What the recent speed is a mean of: later seconds weigh more.
    moment_t m_measured{};
    double m_fraction = 0;
    double m_weighted_part = 0;
    double m_weighted_seconds = 0;
    // What is told, which changes only when it is clearly wrong.
    moment_t m_end{};
    double m_left = 0; // in seconds
    double m_rate = 0; // in the worker's units a second
};

} // namespace commondlg3
