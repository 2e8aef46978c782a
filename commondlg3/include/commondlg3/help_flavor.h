#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/intrusive_pointer.h>

#include <mutex>

namespace commondlg3 {

/// The hook by which an application's windows reach its help viewer. The library never calls it itself.
///
///     class my_help_t : public commondlg3::global_show_help_flavor
///     {
///     public:
///         void show_help(const std::string& topic);
///     };
///     commondlg3::global_show_help_flavor::initialize(new my_help_t);        // once
///     if (auto help = commondlg3::global_show_help_flavor::get()) ...        // in any thread
///
/// The application owns the instance through a reference that it keeps (initialize() takes none); get() adds
/// one for its caller. All of it may be called from any thread.
class COMMONDLG3_EXPORT global_show_help_flavor
{
public:
    /// Sets the instance that get() gives, or null.
    static void initialize(global_show_help_flavor* instance);
    /// Null when none was set, or when the one that was set is just being destroyed.
    static gen_helpers2::intrusive_pointer_t<global_show_help_flavor> get();

    global_show_help_flavor() = default;
    virtual ~global_show_help_flavor();
    global_show_help_flavor(const global_show_help_flavor&) = delete;
    global_show_help_flavor& operator=(const global_show_help_flavor&) = delete;

    void add_ref();
    void release();

private:
    bool add_ref_if_alive();

    static global_show_help_flavor* m_self;
    mutable std::mutex m_mutex;
    long m_count = 0;
    bool m_dying = false;
};

inline void intrusive_ptr_add_ref(global_show_help_flavor* instance)
{
    instance->add_ref();
}
inline void intrusive_ptr_release(global_show_help_flavor* instance)
{
    instance->release();
}

} // namespace commondlg3
