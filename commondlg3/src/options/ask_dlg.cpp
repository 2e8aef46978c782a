#include "commondlg3/ask_dlg.h"

#include "base/wrapped_labels.h"
#include "commondlg3/choosers.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr int least_width = 400;
constexpr int least_height = 170;
constexpr int margins = 39;

} // namespace

ask_dlg_t::ask_dlg_t()
{
    set_resource_object("dlg.ask");
}

ask_dlg_t::~ask_dlg_t() = default;

bool ask_dlg_t::has_controls() const
{
    return m_message && m_label && m_field && m_browse;
}

void ask_dlg_t::set_max_text_limit()
{
    m_field = from_xrc<wxTextCtrl>(this, "m_textCtrl9");
    set_max_len_options(m_field, {translate_message("dlg.ask.field"), max_len_options_t::no_limit_given});
    dialog_base_t::set_max_text_limit();
}

void ask_dlg_t::on_init_dialog()
{
    m_message = from_xrc<wxStaticText>(this, "m_staticText7");
    m_label = from_xrc<wxStaticText>(this, "m_staticText6");
    m_browse = from_xrc<wxButton>(this, "m_button10");
    if (!has_controls())
        return;
    load_texts();
    wx_helpers1::set_label_text(m_message, m_text);
    wx_helpers1::set_label_for(m_label, m_field);
    m_field->ChangeValue(wx_helpers1::to_wx(m_filename));
    m_browse->Bind(wxEVT_BUTTON, &ask_dlg_t::on_btn_browse_file, this);
    Bind(wxEVT_SIZE, &ask_dlg_t::on_size, this);
    fit_again();
    centre_on_parent();
    m_field->SetFocus();
}

void ask_dlg_t::fit_again()
{
    fit_to_contents(calculate_min_size().x);
    if (const int least = calculate_min_size().y; GetSize().y < least) {
        SetMinSize(wxSize(GetMinSize().x, least));
        SetSize(GetMinSize());
    }
}

void ask_dlg_t::load_texts()
{
    const auto catalog = cfgmgr2::getMessageCatalog(m_catalog_name);
    if (!catalog)
        return;
    m_text = catalog->message(CPIL_2_18::i18n::catalog_key("dlg.ask.text"))
                 .as_ustring({{"product_name", cfgmgr2::IProductLocations::get()->get_product_name()}});
    m_filter = catalog->message(CPIL_2_18::i18n::catalog_key("dlg.ask.extensions_lin")).as_ustring({});
}

std::string ask_dlg_t::get_filename() const
{
    return m_field ? wx_helpers1::from_wx(m_field->GetValue()) : m_filename;
}

void ask_dlg_t::set_filename(const std::string& filename)
{
    m_filename = filename;
    if (m_field)
        m_field->ChangeValue(wx_helpers1::to_wx(filename));
}

void ask_dlg_t::on_btn_browse_file(wxCommandEvent&)
{
    std::string path = get_filename();
    if (file_dlg(this, true, path, std::string(), m_filter, std::string(), std::string()))
        set_filename(path);
    if (m_field)
        m_field->SetFocus();
}

void ask_dlg_t::on_ok()
{
    m_filename = get_filename();
    dialog_base_t::on_ok();
}

wxSize ask_dlg_t::calculate_min_size() const
{
    const int caption =
        std::max(0, wxSystemSettings::GetMetric(wxSYS_CAPTION_Y,
                                                GetHandle() ? const_cast<ask_dlg_t*>(this) : nullptr));
    const int label = m_label ? m_label->GetSize().y : 0;
    const int button = m_browse ? m_browse->GetSize().y : 0;
    return wxSize(least_width, std::max(least_height, caption + label + 2 * button + margins));
}

void ask_dlg_t::full_resize_update()
{
    if (has_controls())
        fit_wrapped_labels(*this, {m_message});
}

void ask_dlg_t::on_size(wxSizeEvent&)
{
    full_resize_update();
}

void ask_dlg_t::on_update_ui_settings()
{
    dialog_base_t::on_update_ui_settings();
    full_resize_update();
}

} // namespace commondlg3
