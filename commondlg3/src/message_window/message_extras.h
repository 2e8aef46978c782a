#pragma once

#include "commondlg3/message_options.h"

#include <wx/panel.h>

#include <functional>
#include <memory>
#include <string>

class wxButton;

namespace commondlg3 {

/// The row of buttons between the texts of a message and its answers: details, and what helps to report it.
/// A message that has none of it has no such row.
class message_extras_t : public wxPanel
{
public:
    struct actions_t
    {
        std::function<void()> fold;            ///< or unfold
        std::function<std::string()> get_text; ///< of the whole message
        std::function<void()> end;             ///< of a message that asks nothing; empty otherwise
    };

    message_extras_t(wxWindow* parent, actions_t actions);

    static bool has_any(const message_options_t& options, bool folds)
    {
        return folds || options.offers_copy || options.offers_report || options.show_in_log;
    }
    void show(const message_options_t& options, bool folds, bool asks);
    void set_folded(bool folded);
    /// In as many lines as they need at this width, in pixels.
    void arrange(int width);

private:
    void on_copy();
    void on_save();
    void on_show_in_log();
    void write_report(const std::string& file, const std::string& text, bool may_replace);
    void ask_to_replace(const std::string& file, const std::string& text);

    std::shared_ptr<message_extras_t*> m_self = std::make_shared<message_extras_t*>(this);
    actions_t m_actions;
    message_options_t m_options;
    bool m_asks = false;
    wxButton* m_fold;
    wxButton* m_copy;
    wxButton* m_save;
    wxButton* m_log;
};

} // namespace commondlg3
