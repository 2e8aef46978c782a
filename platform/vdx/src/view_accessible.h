#pragma once

#include <memory>
#include <string>

class wxWindow;

namespace vdxcfrw7 {

class log_view_t;

/// Tells screen readers what the window of a log shows: the log, and each visible text with its severity in
/// words.
class view_accessible_t
{
public:
    explicit view_accessible_t(log_view_t& view);
    ~view_accessible_t();
    view_accessible_t(const view_accessible_t&) = delete;
    view_accessible_t& operator=(const view_accessible_t&) = delete;

    /// The window exists now.
    void attach();
    /// Something else is seen.
    void changed();
    void set_name(const std::string& name);

    struct impl_t;

private:
    std::unique_ptr<impl_t> m_impl;
};

} // namespace vdxcfrw7
