#include "frame_impl.h"

#include "commondlg3/choosers.h"
#include "commondlg3/text_utils.h"

#include "import_dlg.h"
#include "paths/disk_question.h"
#include "settings_diff.h"

#include <cpil/catalog.h>
#include <gen_helpers2/variant_bag_file.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/menu.h>
#include <wx/scrolwin.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using gen_helpers2::variant_bag_t;

constexpr char format_name[] = "format";
constexpr char format_value[] = "settings";
constexpr std::size_t most_import_bytes = std::size_t(16) << 20;
constexpr std::chrono::milliseconds patience_with_exchange{2000};

bool holds(const wxWindow* control, const wxPoint& on_screen)
{
    return control && control->IsShown() && control->GetScreenRect().Contains(on_screen);
}

// A control's setting is also that of the label beside or above it.
bool is_near(const wxWindow* control, const wxPoint& on_screen)
{
    if (holds(control, on_screen))
        return true;
    const wxWindow* before = control ? control->GetPrevSibling() : nullptr;
    return before && dynamic_cast<const wxStaticText*>(before) && holds(before, on_screen);
}

} // namespace

void preferences_frame_t::impl_t::add_to(wxMenu& menu, const std::string& text, std::function<void()> chosen,
                                         bool enabled)
{
    wxMenuItem* item = menu.Append(wxID_ANY, wx_helpers1::to_label(text));
    item->Enable(enabled);
    menu.Bind(
        wxEVT_MENU, [chosen = std::move(chosen)](wxCommandEvent&) { chosen(); }, item->GetId());
}

void preferences_frame_t::impl_t::pop_up_menu()
{
    const int page = stack.get_shown();
    if (page == page_stack_t::none || m_busy != busy_t::none)
        return;
    const auto& shown = stack.at(page);
    const auto usual = shown.page->get_defaults();
    wxMenu menu;
    add_to(
        menu, translate_message("preferences.restore_defaults"), [&] { put_settings(page, usual); },
        !pick_changed(shown.page->get_settings(), usual).empty());
    add_to(
        menu, translate_message("preferences.restore_kept"), [&] { put_settings(page, shown.kept); },
        shown.changed);
    menu.AppendSeparator();
    add_to(menu, translate_message("preferences.export"), [this] { export_settings(); });
    add_to(menu, translate_message("preferences.import"), [this] { import_settings(); });
    m_frame.PopupMenu(&menu, m_more->GetPosition() + wxPoint(0, m_more->GetSize().y));
}

std::optional<preferences_page_t::setting_t>
preferences_frame_t::impl_t::find_setting(const wxPoint& on_screen)
{
    // The key of the menu means the control that has the focus.
    wxWindow* focus = on_screen == wxDefaultPosition ? wxWindow::FindFocus() : nullptr;
    for (const auto& setting : stack.at(stack.get_shown()).page->get_setting_controls())
        if (focus ? setting.control && (setting.control == focus || setting.control->IsDescendant(focus))
                  : is_near(setting.control, on_screen))
            return setting;
    return std::nullopt;
}

void preferences_frame_t::impl_t::on_context_menu(wxContextMenuEvent& event)
{
    const int page = stack.get_shown();
    const auto* window = wxDynamicCast(event.GetEventObject(), wxWindow);
    const bool is_here =
        page != page_stack_t::none && m_busy == busy_t::none && window &&
        (window == stack.get_area() || stack.get_area()->IsDescendant(const_cast<wxWindow*>(window)));
    const auto setting = is_here ? find_setting(event.GetPosition()) : std::nullopt;
    if (!setting) {
        event.Skip();
        return;
    }
    const auto& shown = stack.at(page);
    const std::string title = get_setting_title(*shown.page, setting->name);
    const auto add = [&](wxMenu& menu, const char* key, const variant_bag_t& from) {
        const auto picked = pick_settings(from, {setting->name});
        const bool differs = !pick_changed(shown.page->get_settings(), picked).empty();
        add_to(
            menu, translate_message(key, {{"setting", title}}),
            [this, page, picked] { put_settings(page, picked); }, differs);
    };
    wxMenu menu;
    add(menu, catalog_key("preferences.restore_default_of"), shown.page->get_defaults());
    add(menu, catalog_key("preferences.restore_kept_of"), shown.kept);
    const wxPoint place =
        event.GetPosition() == wxDefaultPosition
            ? setting->control->GetScreenPosition() + wxPoint(0, setting->control->GetSize().y)
            : event.GetPosition();
    m_frame.PopupMenu(&menu, m_frame.ScreenToClient(place));
}

void preferences_frame_t::impl_t::put_settings(int page, const variant_bag_t& settings)
{
    stack.need(page).page->set_settings(settings);
    stack.fit();
    update();
}

void preferences_frame_t::impl_t::export_settings()
{
    std::string path = translate_message("preferences.export_name");
    if (!file_dlg(&m_frame, false, path, "xml", translate_message("preferences.exchange_filter"),
                  translate_message("preferences.export_title"), std::string()))
        return;
    const auto bag = std::make_shared<variant_bag_t>();
    bag->put(format_name, format_value);
    for (const auto& each : stack.all()) {
        if (each.page->is_exported())
            bag->add_child(each.page->get_name(), each.page->get_settings());
    }
    const auto result = std::make_shared<gen_helpers2::error_code_t>();
    const auto done = [this, result, alive = std::weak_ptr<char>(m_alive)] {
        if (alive.lock() && result->failed())
            tell(catalog_key("preferences.not_exported"), catalog_key("preferences.not_exported_details"),
                 result->message());
    };
    if (ask_disk([bag, path, result] { *result = gen_helpers2::save_variant_bag(*bag, path); },
                 patience_with_exchange, done))
        done();
}

void preferences_frame_t::impl_t::import_settings()
{
    std::string path;
    if (!file_dlg(&m_frame, true, path, "xml", translate_message("preferences.exchange_filter"),
                  translate_message("import.title"), std::string()))
        return;
    struct read_t
    {
        variant_bag_t bag;
        gen_helpers2::error_code_t result;
    };
    const auto read = std::make_shared<read_t>();
    const auto done = [this, read, alive = std::weak_ptr<char>(m_alive)] {
        if (!alive.lock())
            return;
        const bool is_ours = read->bag.find_text(format_name).value_or("") == format_value;
        if (read->result.failed() || !is_ours)
            tell(catalog_key("preferences.not_imported"), catalog_key("preferences.not_imported_details"),
                 read->result.message());
        else
            show_import(read->bag);
    };
    if (ask_disk(
            [read, path] {
                read->result = gen_helpers2::load_variant_bag(path, read->bag, most_import_bytes);
            },
            patience_with_exchange, done))
        done();
}

// The user sees what would change before anything does, and then on the pages, where OK writes it.
void preferences_frame_t::impl_t::show_import(const variant_bag_t& imported)
{
    std::vector<import_dlg_t::row_t> rows;
    for (int i = 0; i < stack.size(); ++i) {
        const auto* settings = imported.find_child(stack.at(i).page->get_name());
        if (!settings || !stack.at(i).page->is_exported())
            continue;
        const auto& page = *stack.need(i).page;
        for (auto& change : find_changes(page, page.get_settings(), *settings))
            rows.push_back({i, page.get_title(), std::move(change)});
    }
    if (stack.get_shown() != page_stack_t::none)
        stack.show(stack.get_shown()); // the others go out of sight
    import_dlg_t dialog(rows);
    if (dialog.show_modal(&m_frame) != wxID_OK)
        return;
    for (const auto& [page, names] : dialog.get_chosen())
        put_settings(page, pick_settings(*imported.find_child(stack.at(page).page->get_name()), names));
}

} // namespace commondlg3
