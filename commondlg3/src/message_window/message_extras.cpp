#include "message_extras.h"

#include "commondlg3/choosers.h"
#include "commondlg3/text_utils.h"
#include "inplace_ctrl/background.h"

#include <cpil/catalog.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/path.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <memory>
#include <utility>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using gen_helpers2::error_code_t;

constexpr int gap_of_extras = 9;

wxButton* add_extra(wxWindow* row, const char* name, const char* label_key)
{
    auto* button = new wxButton(row, wxID_ANY, wx_helpers1::to_label(translate_message(label_key)),
                                wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator, name);
    button->Hide();
    return button;
}

void tell_not_saved(const error_code_t& saved, wxWindow* parent)
{
    message_window_t window;
    window.main_message = translate_message("message_window.report_not_saved");
    window.supplemental_message = saved.message();
    show_modal(window, parent);
}

} // namespace

message_extras_t::message_extras_t(wxWindow* parent, actions_t actions)
    : wxPanel(parent), m_actions(std::move(actions))
{
    SetSizer(new wxBoxSizer(wxVERTICAL));
    m_fold = add_extra(this, "m_btn_details", catalog_key("message_window.show_details"));
    m_log = add_extra(this, "m_btn_show_in_log", catalog_key("message_window.show_in_log"));
    m_copy = add_extra(this, "m_btn_copy", catalog_key("message_window.copy"));
    m_save = add_extra(this, "m_btn_save_report", catalog_key("message_window.save_report"));
    m_fold->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_actions.fold(); });
    m_copy->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_copy(); });
    m_save->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_save(); });
    m_log->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_show_in_log(); });
}

void message_extras_t::show(const message_options_t& options, bool folds, bool asks)
{
    m_options = options;
    m_asks = asks;
    m_fold->Show(folds);
    m_copy->Show(options.offers_copy);
    m_save->Show(options.offers_report);
    m_log->Show(options.show_in_log != nullptr);
    set_folded(true);
    m_copy->SetLabel(wx_helpers1::to_label(translate_message("message_window.copy")));
}

// The toolkit's sizer that wraps knows its height only once it has been laid out; the window is to be right
// before.
void message_extras_t::arrange(int width)
{
    GetSizer()->Clear();
    wxSizer* row = nullptr;
    int used = 0;
    for (wxButton* button : {m_fold, m_log, m_copy, m_save}) {
        if (!button->IsShown())
            continue;
        const int wanted = button->GetBestSize().x + gap_of_extras;
        if (!row || used + wanted > width) {
            row = new wxBoxSizer(wxHORIZONTAL);
            GetSizer()->Add(row, 0, wxBOTTOM, gap_of_extras);
            used = 0;
        }
        row->Add(button, 0, wxRIGHT, gap_of_extras);
        used += wanted;
    }
    InvalidateBestSize();
}

void message_extras_t::set_folded(bool folded)
{
    m_fold->SetLabel(wx_helpers1::to_label(translate_message(
        folded ? catalog_key("message_window.show_details") : catalog_key("message_window.hide_details"))));
}

void message_extras_t::on_copy()
{
    wx_helpers1::copy_to_clipboard(m_actions.get_text());
    const std::string copied = translate_message("message_window.copied");
    if (!m_copy->HasFocus()) // a reader tells that the button it is on says something else
        wx_helpers1::announce(m_copy, copied);
    m_copy->SetLabel(wx_helpers1::to_plain_label(copied));
    Layout();
}

void message_extras_t::on_save()
{
    const wxWeakRef<wxWindow> alive(this); // the window may go while the user chooses
    std::string file = translate_message("message_window.report_name");
    const std::string filter = translate_message("inplace_ctrl.format_text") + "|*.txt";
    if (!file_dlg(this, false, file, "txt", filter, translate_message("message_window.save_report_title"),
                  {}) ||
        !alive)
        return;
    std::string text = m_actions.get_text() + "\n";
    if (m_options.get_report)
        text += "\n" + m_options.get_report() + "\n";
    write_report(file, text, false);
}

// A disk may hang: it is asked on another thread. `self` says there whether the row is still here.
void message_extras_t::write_report(const std::string& file, const std::string& text, bool may_replace)
{
    const std::weak_ptr<message_extras_t*> self = m_self;
    background_t::get().add(background_t::kind_t::must_be_done, [=] {
        const gen_helpers2::path_t path(file);
        const bool in_the_way = !may_replace && path.exists();
        const error_code_t saved = in_the_way ? error_code_t() : gen_helpers2::write_whole_file(path, text);
        wx_helpers1::tasks::Scheduler::Post([=] {
            const auto row = self.lock();
            message_extras_t* const alive = row ? *row : nullptr;
            if (in_the_way && alive)
                alive->ask_to_replace(file, text);
            else if (saved.failed())
                tell_not_saved(saved, alive);
            else if (alive && !in_the_way)
                wx_helpers1::announce(alive->m_save, translate_message("message_window.report_saved"));
        });
    });
}

void message_extras_t::ask_to_replace(const std::string& file, const std::string& text)
{
    message_window_t question;
    question.icon_type = message_window_t::icon_types_t::warning;
    question.button_type = message_window_t::button_type_t::yes_no;
    question.main_message = translate_message("inplace_ctrl.replace");
    question.supplemental_message = translate_message("inplace_ctrl.replace_file", {{"file", file}});
    const wxWeakRef<wxWindow> alive(this);
    if (show_modal(question, this) == message_window_t::result_yes && alive)
        write_report(file, text, true);
}

void message_extras_t::on_show_in_log()
{
    const auto show = m_options.show_in_log; // the end of the message may take it along
    if (!m_asks)
        m_actions.end();
    show();
}

} // namespace commondlg3
