#include "commondlg3/generic_base.h"

#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <cpil/catalog.h>
#include <gen_helpers2/assertion.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/text_limit.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/gdicmn.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char generic_base_unit[] = "generic_base";
constexpr char library_catalog[] = "commondlg";

// A window whose catalog is its own still finds the texts that every window needs, in the library's.
std::string text_of(const std::string& catalog_name, const std::string& key,
                    const CPIL_2_18::generic::varg_list& args)
{
    if (catalog_name != library_catalog) {
        const auto catalog = cfgmgr2::getMessageCatalog(catalog_name);
        if (catalog && catalog->has_message(key))
            return catalog->message(key).as_ustring(args);
    }
    return message_window_t::get_message(library_catalog, key, args);
}

constexpr const char* path_message_keys[] = {
    CPIL_2_18::i18n::catalog_key("path.nonexisting"),
    CPIL_2_18::i18n::catalog_key("path.nonexisting_parent_dir"),
    CPIL_2_18::i18n::catalog_key("path.empty_relative"),
    CPIL_2_18::i18n::catalog_key("path.enter_valid_path"),
    CPIL_2_18::i18n::catalog_key("path.invalid_file"),
    CPIL_2_18::i18n::catalog_key("path.invalid_directory"),
};

wx_helpers1::ui_settings_t* ui_settings()
{
    wx_helpers1::ui_settings_t* m_ptr = wx_helpers1::ui_settings_t::get();
    GH2_ASSERT(m_ptr != 0, generic_base_unit);
    return m_ptr;
}

} // namespace

template <class Base>
generic_base_t<Base>::generic_base_t()
    : m_resource_file(create_resource_filename("commondlg3.dat", "commondlg.xrc")),
      m_catalog_name(library_catalog),
      m_path_messages(std::size(path_message_keys))
{
}

template <class Base>
generic_base_t<Base>::~generic_base_t() = default;

template <class Base>
bool generic_base_t<Base>::save_settings()
{
    return true;
}

template <class Base>
void generic_base_t<Base>::end_dialog(int code)
{
    const end_signal_t signal = m_end_signal; // a slot may destroy this window
    signal.emit(this, code);
}

template <class Base>
void generic_base_t<Base>::on_init_dialog()
{
}

template <class Base>
void generic_base_t<Base>::on_ok()
{
    save_settings();
}

template <class Base>
void generic_base_t<Base>::on_cancel()
{
}

template <class Base>
void generic_base_t<Base>::on_help()
{
}

template <class Base>
void generic_base_t<Base>::on_update_ui_settings()
{
    on_update_ui_settings_recursively(this->GetChildren());
}

template <class Base>
void generic_base_t<Base>::handle_ok(wxCommandEvent&)
{
    on_ok();
    end_dialog(wxID_OK);
}

template <class Base>
void generic_base_t<Base>::load_auxiliary_strings()
{
    m_unknown_text = text_of(m_catalog_name, "text.unknown", {});
    for (std::size_t i = 0; i < m_path_messages.size(); ++i)
        m_path_messages[i] = text_of(m_catalog_name, path_message_keys[i], {});
}

template <class Base>
void generic_base_t<Base>::set_max_text_limit()
{
    for (wxWindow* child : this->GetChildren())
        if (auto* ctrl = wxDynamicCast(child, wxTextCtrl))
            limit_text(ctrl);
}

template <class Base>
void generic_base_t<Base>::handle_timer_event(wxTimerEvent&)
{
}

template <class Base>
void generic_base_t<Base>::handle_init_dialog_event(wxInitDialogEvent&)
{
    if (m_just_initialized)
        return;
    const bool first = !m_initialized;
    if (first) {
        const wxSize size = this->GetSize();
        if (size.x < m_min_size.x)
            this->SetSize(m_min_size.x, std::max(size.y, m_min_size.y));
        else if (size.y < m_min_size.y)
            this->SetSize(size.x, m_min_size.y);
        // To a sizer a minimum of 0 would mean that the window may vanish; no minimum is what it stands for.
        this->SetMinSize(wxSize(m_min_size.x > 0 ? m_min_size.x : wxDefaultCoord,
                                m_min_size.y > 0 ? m_min_size.y : wxDefaultCoord));
        // Nothing here paints its background itself, and offering it to each window costs a device context a
        // paint.
        this->SetBackgroundStyle(wxBG_STYLE_SYSTEM);
        m_btn_ok = from_xrc<wxButton>(this, "m_btn_ok");
        m_btn_cancel = from_xrc<wxButton>(this, "m_btn_cancel");
        m_btn_help = from_xrc<wxButton>(this, "m_btn_help");
        if (m_btn_help)
            m_btn_help->Enable(m_help_id != -1);
        subscribe_to_ui_settings();
    }
    on_update_ui_settings();
    if (first) {
        set_max_text_limit();
        load_auxiliary_strings();
        on_init_dialog();
        m_timer.SetOwner(this, wxID_ANY);
        m_initialized = true;
    }
}

// Once for the window's life: a page whose layout came late is initialised a second time.
template <class Base>
void generic_base_t<Base>::subscribe_to_ui_settings()
{
    wx_helpers1::ui_settings_t* settings = ui_settings();
    if (!settings || m_subscribed)
        return;
    settings->changed().connect(this, [this] { on_update_ui_settings(); });
    m_subscribed = true;
}

template <class Base>
void generic_base_t<Base>::handle_close(wxCloseEvent&)
{
    on_cancel();
    end_dialog(wxID_CANCEL);
}

template <class Base>
void generic_base_t<Base>::handle_cancel(wxCommandEvent&)
{
    on_cancel();
    end_dialog(wxID_CANCEL);
}

template <class Base>
void generic_base_t<Base>::handle_help(wxCommandEvent&)
{
    on_help();
}

template <class Base>
max_len_options_t generic_base_t<Base>::gen_max_len_options(wxTextCtrl* ctrl)
{
    return m_max_len_options[ctrl];
}

template <class Base>
void generic_base_t<Base>::set_max_len_options(wxTextCtrl* ctrl, const max_len_options_t& options)
{
    m_max_len_options[ctrl] = options;
}

template <class Base>
void generic_base_t<Base>::limit_text(wxTextCtrl* ctrl)
{
    if (!ctrl)
        return;
    const long limit = gen_max_len_options(ctrl).effective_max_length();
    // The toolkit limits only controls of a single line, and asserts when asked to limit another.
    if (ctrl->HasFlag(wxTE_MULTILINE)) {
        wx_helpers1::follow_insertions(ctrl);
        ctrl->Bind(wxEVT_TEXT, &generic_base_t::on_text_changed, this);
    } else {
        ctrl->SetMaxLength(limit);
        wx_helpers1::keep_what_fits(ctrl);
        ctrl->Bind(wxEVT_TEXT_MAXLEN, &generic_base_t::on_max_len, this);
    }
}

template <class Base>
void generic_base_t<Base>::on_text_changed(wxCommandEvent& event)
{
    event.Skip();
    auto* ctrl = wxStaticCast(event.GetEventObject(), wxTextCtrl);
    const long limit = gen_max_len_options(ctrl).effective_max_length();
    if (limit < 0 || ctrl->GetLastPosition() <= limit)
        return;
    const wxWeakRef<wxWindow> alive(this);
    wx_helpers1::cut_text(ctrl, limit, [this, alive, tell = event]() mutable {
        if (alive)
            on_max_len(tell);
    });
}

template <class Base>
void generic_base_t<Base>::on_max_len(wxCommandEvent& event)
{
    using CPIL_2_18::generic::varg_list;
    auto* ctrl = wxStaticCast(event.GetEventObject(), wxTextCtrl);
    const max_len_options_t options = gen_max_len_options(ctrl);
    // A key held down reports the limit again while its message is still being shown.
    if (m_telling_limit)
        return;
    m_telling_limit = true;
    const std::string field = set_1st_letter_uppercase(
        options.field_name.empty() ? text_of(m_catalog_name, "text", {}) : options.field_name);
    const std::string headline = text_of(m_catalog_name, "max_len", varg_list{{"field_name", field}});
    const varg_list arguments{{"product_name", cfgmgr2::IProductLocations::get()->get_product_name()},
                              {"field_name", field},
                              {"max_len", options.effective_max_length()}};
    std::string details;
    if (!options.details_key.empty())
        details = text_of(m_catalog_name, options.details_key, arguments);
    if (details.empty())
        details = text_of(m_catalog_name, "max_len_details", arguments);
    const wxWeakRef<wxWindow> alive(this); // the host may close this window while the message is shown
    show_msg_box(headline, details, message_window_t::icon_types_t::warning, this);
    if (alive)
        m_telling_limit = false;
}

template <class Base>
void generic_base_t<Base>::on_update_ui_settings_recursively(wxWindowList& children)
{
    const wx_helpers1::ui_settings_t* settings = ui_settings();
    if (!settings)
        return;
    const wxFont font = settings->get_font(wx_helpers1::ui_font::text);
    for (wxWindow* child : children) {
        if (!child)
            continue;
        wx_helpers1::apply_font(child, font);
        wx_helpers1::apply_native_height(child);
        on_update_ui_settings_recursively(child->GetChildren());
    }
}

// The text gets the width that the dialog has without it, but at least some forty words' and at most half the
// screen.
template <class Base>
void generic_base_t<Base>::set_multiline_text(wxStaticText* label, const std::string& text, wxFont font)
{
    static wxFont measured_font;
    static int word_width = 0;
    static wxSize display;
    wxSizer* sizer = this->GetSizer();
    if (!label || !sizer)
        return;
    if (!measured_font.IsOk() || measured_font != font) {
        wxClientDC dc(label);
        dc.SetFont(font);
        word_width = dc.GetTextExtent("is the").x;
        measured_font = font;
    }
    if (display == wxSize())
        display = wxGetDisplaySize();
    label->SetLabel("Xxx");
    sizer->Fit(this);
    const int dialog_width = this->GetClientSize().x;
    constexpr int least_words = 10;
    const int margins = std::max(0, dialog_width - label->GetSize().x);
    const int width = std::clamp(dialog_width - margins, std::min(least_words * word_width, display.x / 2),
                                 std::max(1, display.x / 2));
    label->SetLabel(wx_helpers1::to_plain_label(text));
    label->Wrap(width);
    sizer->Fit(this);
}

template class generic_base_t<dummy>;
template class generic_base_t<wxPanel>;

} // namespace commondlg3
