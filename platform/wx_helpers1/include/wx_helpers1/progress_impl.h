#pragma once

#include "wx_helpers1/export.h"

#include <gen_helpers2/signal.h>
#include <msngr2/progress.h>

#include <atomic>
#include <memory>
#include <string>

namespace wx_helpers1 {

/// Turns what a worker reports into signals on the GUI thread: at most one for each step of a bar, and one
/// for all messages between two turns, with the last of them.
///
///     ProgressImpl progress(800);                              // a bar of 800 steps
///     progress.progressed_signal().connect(bar, &bar_t::advance);
///
/// One worker at a time reports into it, from any thread; anybody may cancel. The signals are emitted on the
/// GUI thread by posted tasks: after this object's end they reach nobody. Without a running scheduler they
/// are lost.
class WX_HELPERS1_EXPORT ProgressImpl : public msngr2::IProgress
{
public:
    /// @param steps how many steps the bar has; less than one counts as one
    explicit ProgressImpl(int steps);
    virtual ~ProgressImpl();
    ProgressImpl(const ProgressImpl&) = delete;
    ProgressImpl& operator=(const ProgressImpl&) = delete;

    /// Begins a new count. A total that is not above zero advances the bar at its end only.
    void start(const char* text, double total) override;
    void progressed(int steps) override;
    void internalProgressed(double amount) override;
    void message(const char* text) override;
    /// Fills the bar. After cancel() this is also how the worker says that it has stopped: cancel_signal()
    /// follows.
    void finish() override;
    void cancel() override;
    double getTotalSteps() override;
    bool isCanceled() override;
    /// Whether finish() was the last that the worker said.
    /// @since 3.1
    bool is_finished() const { return m_finished; }

    int get_steps() const { return m_steps; }
    /// How many steps of the bar have been posted since start().
    int get_reported() const { return m_reported.load(std::memory_order_relaxed); }

    /// Work began; what is being done.
    gen_helpers2::signal_t<std::string>& start_signal() { return m_start; }
    /// How many more steps to fill.
    gen_helpers2::signal_t<int>& progressed_signal() { return m_progressed; }
    /// What is being done now.
    gen_helpers2::signal_t<std::string>& message_signal() { return m_message; }
    /// The work was asked to stop.
    gen_helpers2::signal_t<>& cancel_signal() { return m_cancel; }

private:
    gen_helpers2::signal_t<std::string> m_start;
    gen_helpers2::signal_t<int> m_progressed;
    gen_helpers2::signal_t<std::string> m_message;
    gen_helpers2::signal_t<> m_cancel;
    const int m_steps;
    std::atomic<double> m_total{1.0};
    double m_current = 0; // the worker's alone
    std::atomic<int> m_reported{0};
    std::atomic<bool> m_canceled{false};
    std::atomic<bool> m_finished{false};
    struct last_message_t;
    std::shared_ptr<last_message_t> m_last_message;
    bool m_acknowledged = false; // the worker's alone
};

} // namespace wx_helpers1
