#pragma once

namespace wx_helpers1 {

/// What a dialog offers to the toolkit layer so that the platform's help key reaches it. GUI thread.
class help_callback_t
{
public:
    virtual ~help_callback_t() = default;
    /// The help key (F1) was pressed while the dialog had the focus.
    virtual void help_activated() = 0;
};

} // namespace wx_helpers1
