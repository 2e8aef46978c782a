#pragma once

#include "event_entry.h"

#include <memory>
#include <mutex>

namespace commondlg3 {

/// Passes lines on to the entry that it points at. The entry is kept alive while a worker is in it, and what
/// is said after its end, or the control's, goes nowhere.
class messenger_proxy_t : public msngr2::IMessenger
{
public:
    virtual ~messenger_proxy_t() = default;

    void set_target(const event_entry_t::ptr_t& target);
    void drop(const event_entry_t* target);
    bool points_at(const event_entry_t* target);

    void say(msngr2::ESeverity severity, const char* text) override;

private:
    std::mutex m_mutex;
    event_entry_t::ptr_t m_target;
};

/// The same for progress.
class progress_proxy_t : public msngr2::IProgress
{
public:
    virtual ~progress_proxy_t() = default;

    /// @param target the entry's, which keeps it alive
    void set_target(const event_entry_t::ptr_t& entry, msngr2::IProgress* target);
    void drop(const event_entry_t* entry);

    void start(const char* text, double total) override;
    void progressed(int steps) override;
    void internalProgressed(double amount) override;
    void message(const char* text) override;
    void finish() override;
    void cancel() override;
    double getTotalSteps() override;
    bool isCanceled() override;

private:
    struct target_t
    {
        event_entry_t::ptr_t entry;
        msngr2::IProgress* progress;
    };
    target_t get_target();

    std::mutex m_mutex;
    event_entry_t::ptr_t m_entry;
    msngr2::IProgress* m_target = nullptr;
};

struct proxies_t
{
    messenger_proxy_t messenger;
    progress_proxy_t progress;
};

/// Keeps proxies that a worker may still hold until the process ends.
void retire(std::unique_ptr<proxies_t> proxies);

} // namespace commondlg3
