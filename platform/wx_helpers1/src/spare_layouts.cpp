#include "spare_layouts.h"

#include "wx_helpers1/guarded.h"
#include "wx_helpers1/label.h"
#include "wx_helpers1/moving.h"
#include "wx_helpers1/text.h"
#include "wx_helpers1/ui_settings.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/log.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/weakref.h>
#include <wx/xml/xml.h>
#include <wx/xrc/xmlres.h>

#include <glib.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace wx_helpers1 {
namespace {

// Long enough for the window that was just opened to be painted and its first key to be answered.
constexpr guint delay_ms = 60;

// A window that is never shown. The application must not take it for one of its own: it would be its main
// window as long as nobody named another, and the parent of message windows.
class holder_t : public wxDialog
{
public:
    void hide_from_application() { wxTopLevelWindows.DeleteObject(this); }
    bool ShouldPreventAppExit() const override { return false; }
};

struct spare_t
{
    wxWeakRef<holder_t> holder; // lives until it is used, or until the process ends
    wxWindow* built = nullptr;  // the holder itself, or the panel in it
};

struct order_t
{
    std::string key;
    wxXmlResource* resource;
    std::string object;
    void (*finish)(wxWindow*);
};

struct pool_t
{
    std::map<std::string, spare_t> spares;
    std::vector<order_t> orders;
    guint source = 0;
};

pool_t& pool()
{
    static auto& all = *new pool_t; // the toolkit is gone before statics are
    return all;
}

// Windows give their controls the theme's font when they open, and leave alone what has it.
void set_fonts(wxWindow* window, const wxFont& font)
{
    for (wxWindow* child : window->GetChildren()) {
        apply_font(child, font);
        set_fonts(child, font);
    }
}

bool says_only_title_style_and_size(const wxXmlNode* object)
{
    static const std::set<wxString> known = {"title", "style", "size", "object"};
    for (const wxXmlNode* node = object->GetChildren(); node; node = node->GetNext())
        if (node->GetType() == wxXML_ELEMENT_NODE && !known.count(node->GetName()))
            return false;
    return true;
}

void build(const order_t& order)
{
    const wxLogNull silent;
    const wxString name = to_wx(order.object);
    const wxXmlNode* node = order.resource->GetResourceNode(name);
    if (!node || !says_only_title_style_and_size(node))
        return;
    auto* holder = new holder_t;
    wxWindow* built = holder;
    bool complete = false;
    if (node->GetAttribute("class") == "wxDialog") {
        complete = order.resource->LoadDialog(holder, nullptr, name);
    } else if (holder->Create(nullptr, wxID_ANY, wxString(), wxPoint(0, 0), wxSize(400, 300))) {
        auto* panel = new wxPanel;
        built = panel;
        complete = order.resource->LoadPanel(panel, holder, name);
    }
    if (!complete) {
        delete holder;
        return;
    }
    holder->hide_from_application();
    order.finish(built);
    if (const auto* settings = ui_settings_t::get())
        set_fonts(built, settings->get_font(ui_font::text));
    pool().spares[order.key] = {holder, built};
}

// One layout a turn of the loop.
gboolean build_next(gpointer)
{
    pool_t& all = pool();
    if (!wxTheApp || all.orders.empty()) {
        all.source = 0;
        return G_SOURCE_REMOVE;
    }
    const order_t order = all.orders.front();
    all.orders.erase(all.orders.begin());
    guarded([&order] { build(order); });
    return G_SOURCE_CONTINUE;
}

spare_t take(const std::string& key)
{
    auto& spares = pool().spares;
    const auto found = spares.find(key);
    if (found == spares.end())
        return {};
    const spare_t spare = found->second;
    spares.erase(found);
    return spare;
}

void move_controls(const spare_t& spare, wxWindow* to)
{
    wxSizer* sizer = spare.built->GetSizer();
    spare.built->SetSizer(nullptr, false);
    auto* default_button = wxDynamicCast(spare.holder->GetDefaultItem(), wxButton);
    const wxWindowList controls = spare.built->GetChildren();
    for (wxWindow* control : controls)
        move_window(control, to, control->IsShown());
    if (sizer)
        to->SetSizer(sizer);
    if (default_button)
        default_button->SetDefault();
}

} // namespace

namespace spare_layouts {

bool make_dialog(wxDialog* dialog, wxWindow* parent, const std::string& key)
{
    const spare_t spare = take(key);
    if (!spare.holder)
        return false;
    const holder_t& holder = *spare.holder;
    const bool created = dialog->Create(parent, holder.GetId(), holder.GetTitle(), wxDefaultPosition,
                                        wxSize(400, 300), holder.GetWindowStyleFlag(), holder.GetName());
    if (created) {
        move_controls(spare, dialog);
        dialog->SetMinClientSize(holder.GetMinClientSize());
        dialog->SetClientSize(holder.GetClientSize());
    }
    delete spare.holder.get();
    return created;
}

bool make_panel(wxPanel* panel, wxWindow* parent, const std::string& key)
{
    const spare_t spare = take(key);
    if (!spare.holder)
        return false;
    // What is moved into a window that is shown, the toolkit shows only when it is idle.
    const bool shows = !panel->GetHandle() || panel->IsShown();
    panel->Hide();
    const bool created =
        panel->GetHandle() ||
        panel->Create(parent, spare.built->GetId(), wxDefaultPosition, spare.built->GetSize(),
                      spare.built->GetWindowStyleFlag(), spare.built->GetName());
    if (created) {
        move_controls(spare, panel);
        panel->Show(shows);
        let_keys_into(panel);
    }
    delete spare.holder.get();
    return created;
}

void build_later(const std::string& key, wxXmlResource* resource, const std::string& object,
                 void (*finish)(wxWindow*))
{
    pool_t& all = pool();
    // What is there, or ordered, is not ordered again: a spare that another one replaces would stay for good.
    const auto spare = all.spares.find(key);
    const bool is_there = spare != all.spares.end() && spare->second.holder;
    if (!is_there && std::none_of(all.orders.begin(), all.orders.end(),
                                  [&key](const order_t& order) { return order.key == key; }))
        all.orders.push_back({key, resource, object, finish});
    if (all.source)
        g_source_remove(all.source);
    all.source = g_timeout_add_full(G_PRIORITY_LOW, delay_ms, build_next, nullptr, nullptr);
}

void forget()
{
    for (const auto& [key, spare] : std::exchange(pool().spares, {}))
        delete spare.holder.get();
}

} // namespace spare_layouts
} // namespace wx_helpers1
