#include "commondlg3/advanced_panel.h"

#include "commondlg3/image_loader.h"

#include <wx_helpers1/elements/icon_button_element.h>
#include <wx_helpers1/elements/rectangle_element.h>
#include <wx_helpers1/elements/text_element.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/sizer.h>

#include <algorithm>

namespace commondlg3 {
namespace {

using image = image_loader_t::image_type_t;
using wx_helpers1::element_state;

constexpr int header_gap = 4; // pixels around the header's caption
constexpr int state_flags[] = {element_state::normal, element_state::hovered, element_state::pressed,
                               element_state::disabled};

} // namespace

/// The caption and its button: a window of its own, so that the keyboard reaches it like any other control.
/// Nothing in it is a window.
class advanced_panel_t::header_t : public wxWindow
{
public:
    explicit header_t(wxWindow* parent) : wxWindow(parent, wxID_ANY), m_elements(this)
    {
        auto& root = m_elements.make_root<wx_helpers1::element_t>();
        button = &root.add<wx_helpers1::icon_button_element_t>();
        text = &root.add<wx_helpers1::text_element_t>();
        text->set_target(button);
        root.set_target(button);
    }

    /// As wide as it needs to be, up to `room`.
    void place(const wxPoint& at, int room, int height)
    {
        const wxSize icon = button->get_best_size();
        const wxSize caption = text->get_best_size();
        const int text_at = icon.x ? header_gap + icon.x + header_gap : header_gap;
        const int width = std::max(0, std::min(room, caption.x ? text_at + caption.x + header_gap : text_at));
        SetSize(at.x, at.y, width, height);
        m_elements.get_root()->set_rect(wxRect(0, 0, width, height));
        button->set_rect(wxRect(header_gap, 0, icon.x, height));
        button->set_focus_rect(wxRect(0, 0, width, height));
        text->set_rect(wxRect(text_at, 0, std::max(0, width - text_at - header_gap), height));
    }

    wx_helpers1::icon_button_element_t* button = nullptr;
    wx_helpers1::text_element_t* text = nullptr;

private:
    wx_helpers1::element_adapter_t m_elements;
};

advanced_panel_t::advanced_panel_t(wxWindow* parent, const std::string& caption, button_style_t style, int id)
    : wxPanel(parent, id), m_style(style), m_elements(this)
{
    init(caption);
}

void advanced_panel_t::init(const std::string& caption)
{
    m_frame = &m_elements.make_root<wx_helpers1::rectangle_element_t>();
    m_frame->show_border(true);
    m_header = new header_t(this);
    m_header->button->clicked().connect(this, [this] { on_open_close(); });
    m_header->text->set_text(caption);
    m_header->button->set_name(caption);
    m_header->button->set_expanded(m_open);
    apply_colors();
    load_button_images();
    propagate_button_images();
    reset_border();
    SetSizer(new wxBoxSizer(wxVERTICAL));
    m_content = new wxBoxSizer(wxVERTICAL);
    insert_content();
    Bind(wxEVT_SIZE, &advanced_panel_t::on_resize, this);
    if (wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(this, [this] {
            apply_colors();
            set_caption(std::string(get_caption())); // its font has another height
            lay_out_ancestors();
        });
    Layout();
}

void advanced_panel_t::add(wxWindow* window, int proportion, int flag, int border, wxObject* user_data)
{
    if (!window)
        return;
    if (window->GetParent() != this)
        window->Reparent(this);
    after_adding(m_content->Add(window, proportion, flag, border, user_data));
}

void advanced_panel_t::add(wxSizer* sizer, int proportion, int flag, int border, wxObject* user_data)
{
    if (sizer)
        after_adding(m_content->Add(sizer, proportion, flag, border, user_data));
}

void advanced_panel_t::after_adding(wxSizerItem* item)
{
    item->Show(m_open);
    Layout();
}

void advanced_panel_t::clear()
{
    m_content->Clear(false);
}

void advanced_panel_t::set_caption(const std::string& caption)
{
    m_header->text->set_text(caption);
    m_header->button->set_name(caption);
    reset_border();
    GetSizer()->Detach(m_content);
    insert_content();
    Layout();
    Refresh();
}

const std::string& advanced_panel_t::get_caption() const
{
    return m_header->text->get_text();
}

// The header stands on the frame's upper border.
void advanced_panel_t::reset_border()
{
    const int height = std::max(m_header->text->get_best_size().y, m_header->button->get_best_size().y);
    constexpr int height_without_contents = 20;
    m_header_height = height == 0 ? height_without_contents : height + 1;
    m_frame->set_margin(m_header_height / 2);
    place_elements();
}

void advanced_panel_t::insert_content()
{
    GetSizer()->Add(m_content, 1, wxEXPAND | wxALL, m_header_height);
}

void advanced_panel_t::place_elements()
{
    const wxSize size = GetClientSize();
    const int left = m_header_height / 2 + header_gap;
    m_header->place(wxPoint(left, 0), size.x - 2 * left, m_header_height);
    m_frame->set_rect(wxRect(size));
    m_frame->set_gap(left, left + m_header->GetSize().x);
}

void advanced_panel_t::open(bool opened)
{
    if (opened != m_open)
        on_open_close();
}

void advanced_panel_t::on_open_close()
{
    m_open = !m_open;
    propagate_button_images();
    m_header->button->set_expanded(m_open);
    if (!m_open)
        keep_focus_visible();
    m_content->ShowItems(m_open);
    Layout();
    lay_out_ancestors();
    const auto signal = m_open_close_signal; // a slot may destroy this panel
    signal.emit(m_open);
}

// A field that is about to disappear must not keep the keyboard.
void advanced_panel_t::keep_focus_visible()
{
    for (wxWindow* window = FindFocus(); window; window = window->GetParent())
        if (window == this) {
            if (!m_header->HasFocus())
                m_header->SetFocus();
            return;
        }
}

// A panel inside another one changes the outer one's minimum too.
void advanced_panel_t::lay_out_ancestors()
{
    wxWindow* parent = GetParent();
    if (parent)
        parent->Layout();
    for (; parent && !parent->IsTopLevel(); parent = parent->GetParent())
        if (dynamic_cast<advanced_panel_t*>(parent) && parent->GetParent())
            parent->GetParent()->Layout();
}

void advanced_panel_t::apply_min_size()
{
    // An open panel without visible contents has no size to its sizer, but still a header.
    wxSize wanted(2 * m_header_height, 2 * m_header_height);
    if (m_open)
        wanted.IncTo(GetSizer()->CalcMin());
    if (wanted == GetMinSize())
        return;
    SetMinSize(wanted);
    for (wxWindow* outer = GetParent(); outer && !outer->IsTopLevel(); outer = outer->GetParent())
        if (auto* panel = dynamic_cast<advanced_panel_t*>(outer)) {
            panel->apply_min_size(); // which goes on outwards from there
            return;
        }
}

void advanced_panel_t::update_min_size()
{
    Layout();
}

bool advanced_panel_t::Layout()
{
    if (!m_content)
        return false;
    apply_min_size();
    const bool done = wxPanel::Layout();
    place_elements();
    return done;
}

void advanced_panel_t::on_resize(wxSizeEvent& event)
{
    event.Skip();
    Layout();
}

bool advanced_panel_t::Enable(bool enable)
{
    const bool changed = wxPanel::Enable(enable);
    if (m_header)
        m_header->Refresh();
    return changed;
}

void advanced_panel_t::load_button_images()
{
    const bool box = m_style == button_style_t::box;
    image_loader_t& loader = image_loader_t::get();
    const auto load = [&loader](image first, button_images_t& set) {
        // The four states of a set follow one another in the loader.
        for (std::size_t i = 0; i < button_images_t::states; ++i)
            set.images[i] = loader.load_image(static_cast<image>(static_cast<std::size_t>(first) + i));
    };
    load(box ? image::advanced_cb_close : image::advanced_close, m_closed_images);
    load(box ? image::advanced_cb_open : image::advanced_open, m_open_images);
}

void advanced_panel_t::propagate_button_images()
{
    const button_images_t& set = m_open ? m_open_images : m_closed_images;
    for (std::size_t i = 0; i < button_images_t::states; ++i)
        m_header->button->set_picture(state_flags[i], set.images[i]);
}

void advanced_panel_t::apply_colors()
{
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    if (!settings)
        return;
    m_frame->set_border(settings->get_colour(wx_helpers1::ui_colour::border));
    m_header->text->set_font(settings->get_font(wx_helpers1::ui_font::text));
    m_header->text->set_colours(settings->get_colour(wx_helpers1::ui_colour::text),
                                settings->get_colour(wx_helpers1::ui_colour::secondary_text));
    m_header->Refresh(); // the pictures are in the text's colour
}

void advanced_panel_t::set_button_image(bool open_set, int flags, wxImage& new_image)
{
    const auto picture = wx_helpers1::wxStaticPicture::from_image(new_image);
    button_images_t& set = open_set ? m_open_images : m_closed_images;
    for (std::size_t i = 0; i < button_images_t::states; ++i)
        if (flags & state_flags[i])
            set.images[i] = picture;
}

} // namespace commondlg3
