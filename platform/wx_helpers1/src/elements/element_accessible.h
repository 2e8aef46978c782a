#pragma once

#include "wx_helpers1/elements/element.h"

#include <memory>

class wxWindow;

namespace wx_helpers1 {

class element_adapter_t;

/// Tells screen readers of a window that is one drawn button: its name, its state, and how to press it.
class element_accessible_t
{
public:
    explicit element_accessible_t(element_adapter_t& adapter);
    ~element_accessible_t();
    element_accessible_t(const element_accessible_t&) = delete;
    element_accessible_t& operator=(const element_accessible_t&) = delete;

    /// The window is this now.
    void update(wxWindow* window, const element_description_t& description);

    struct impl_t;

private:
    std::unique_ptr<impl_t> m_impl;
};

} // namespace wx_helpers1
