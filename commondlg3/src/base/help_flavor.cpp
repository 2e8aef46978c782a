#include "commondlg3/help_flavor.h"

namespace commondlg3 {
namespace {

std::mutex& instance_mutex()
{
    static std::mutex the_mutex;
    return the_mutex;
}

} // namespace

global_show_help_flavor* global_show_help_flavor::m_self = nullptr;

void global_show_help_flavor::initialize(global_show_help_flavor* instance)
{
    std::lock_guard<std::mutex> lock(instance_mutex());
    m_self = instance;
}

gen_helpers2::intrusive_pointer_t<global_show_help_flavor> global_show_help_flavor::get()
{
    std::lock_guard<std::mutex> lock(instance_mutex());
    if (!m_self || !m_self->add_ref_if_alive())
        return {};
    return {m_self, false}; // the reference just taken
}

global_show_help_flavor::~global_show_help_flavor()
{
    std::lock_guard<std::mutex> lock(instance_mutex());
    if (m_self == this)
        m_self = nullptr;
}

void global_show_help_flavor::add_ref()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    ++m_count;
}

// Between the last release and the destructor the instance can still be found: it must not be revived then.
bool global_show_help_flavor::add_ref_if_alive()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_dying)
        return false;
    ++m_count;
    return true;
}

void global_show_help_flavor::release()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (--m_count > 0)
            return;
        m_dying = true;
    }
    delete this;
}

} // namespace commondlg3
