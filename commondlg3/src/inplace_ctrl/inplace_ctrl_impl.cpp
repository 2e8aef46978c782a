#include "inplace_ctrl_impl.h"

#include "commondlg3/text_utils.h"

#include "contents.h"
#include "log_menu.h"
#include "search_bar.h"
#include "xpm.h"

#include <gen_helpers2/assertion.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/text.h>

#include <wx/sizer.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::error_code_t;

constexpr char inplace_ctrl_impl_unit[] = "inplace_ctrl";

error_code_t failed_condition(const char* condition)
{
    gen_helpers2::log_error("error_handling", condition);
    return error_code_t::invalid_parameter(condition);
}

} // namespace

inplace_ctrl_impl_t::inplace_ctrl_impl_t(inplace_ctrl_t* owner, bool show_debug)
    : m_owner(owner), m_log(std::make_unique<event_log_t>(owner, show_debug))
{
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_log->GetWindow(), 1, wxEXPAND);
    owner->SetSizer(sizer);
    m_log->context_menu().connect(this, &inplace_ctrl_impl_t::on_context_menu);
    m_log->search_requested().connect(this, &inplace_ctrl_impl_t::on_search);
}

inplace_ctrl_impl_t::~inplace_ctrl_impl_t()
{
    disconnect_all();
    m_alive.reset();
    for (const auto& copier : m_copiers)
        copier->finish();
    m_loaders.clear();
    drop_targets();
    if (m_proxies)
        retire(std::move(m_proxies));
    for (auto entry = m_entries.rbegin(); entry != m_entries.rend(); ++entry)
        entry->second->hide();
}

message_entry_t::ptr_t inplace_ctrl_impl_t::find(tag_t tag) const
{
    const auto found = m_entries.find(tag);
    return found != m_entries.end()
               ? message_entry_t::ptr_t(static_cast<message_entry_t*>(found->second.get()))
               : message_entry_t::ptr_t();
}

proxies_t& inplace_ctrl_impl_t::get_proxies()
{
    if (!m_proxies)
        m_proxies = std::make_unique<proxies_t>();
    return *m_proxies;
}

void inplace_ctrl_impl_t::hide_buttons()
{
    // All others hid theirs when a newer entry came.
    for (const tag_t tag : m_offering) {
        const auto entry = m_entries.find(tag);
        if (entry != m_entries.end() &&
            GH2_ASSERT_TEXT(entry->second != nullptr, "entry != NULL", inplace_ctrl_impl_unit))
            entry->second->hide_buttons();
    }
    m_offering.clear();
}

template <class Record>
inplace_ctrl_t::tag_t inplace_ctrl_impl_t::add(const gen_helpers2::intrusive_pointer_t<Record>& msg,
                                               const callback_t& callback)
{
    GH2_ASSERT_TEXT(msg != nullptr, "msg", inplace_ctrl_impl_unit);
    const auto record = msg ? msg : gen_helpers2::intrusive_pointer_t<Record>(new Record);
    hide_buttons();
    m_log->set_changed(true);
    const tag_t tag = m_next_tag++;
    const message_entry_t::ptr_t entry(new message_entry_t(*m_log, tag, record));
    m_entries[tag] = entry;
    m_offering.insert(tag);
    entry->connect(callback);
    m_log->grown();
    return tag;
}

template inplace_ctrl_t::tag_t inplace_ctrl_impl_t::add(const message_t::ptr_t&, const callback_t&);
template inplace_ctrl_t::tag_t inplace_ctrl_impl_t::add(const progress_message_t::ptr_t&, const callback_t&);

inplace_ctrl_t::tag_t inplace_ctrl_impl_t::add_custom(const custom_message_t::ptr_t&)
{
    GH2_ASSERT_TEXT(false, "add_custom not impl", inplace_ctrl_impl_unit);
    return 0;
}

error_code_t inplace_ctrl_impl_t::update_message(tag_t tag, const message_t::ptr_t& new_msg,
                                                 const callback_t& callback)
{
    const auto found = m_entries.find(tag);
    if (found == m_entries.end())
        return failed_condition("m_entries.find(tag) != m_entries.end()");
    if (!found->second->update_message(new_msg, &callback).succeeded())
        return failed_condition("m_entries[tag]->update_message(new_msg, &callback).succeeded()");
    m_offering.insert(tag);
    return {};
}

error_code_t inplace_ctrl_impl_t::erase(tag_t tag)
{
    const auto found = m_entries.find(tag);
    if (found == m_entries.end())
        return failed_condition("m_entries.find(tag) != m_entries.end()");
    const auto entry = found->second;
    entry_going(*entry);
    m_entries.erase(found);
    if (m_proxies) {
        m_proxies->messenger.drop(entry.get());
        m_proxies->progress.drop(entry.get());
    }
    entry->hide();
    return {};
}

void inplace_ctrl_impl_t::drop_targets()
{
    if (!m_proxies)
        return;
    m_proxies->messenger.set_target(nullptr);
    m_proxies->progress.set_target(nullptr, nullptr);
}

inplace_contents_t inplace_ctrl_impl_t::take_contents()
{
    inplace_contents_t contents;
    contents.m_data = std::make_unique<inplace_contents_t::data_t>();
    inplace_contents_t::data_t& data = *contents.m_data;
    data.show_debug = m_log->get_show_debug();
    data.keep_times = m_log->keeps_times();
    drop_targets();
    for (const auto& loader : m_loaders)
        data.unread.push_back(loader->get_file());
    m_loaders.clear();
    data.not_kept = std::exchange(m_not_kept, {});
    m_loaded = {};
    m_offering.clear();
    std::vector<std::pair<wx_helpers1::wxStaticPicture, std::shared_ptr<const std::string>>> images;
    const auto entries = std::move(m_entries);
    m_entries.clear();
    for (const auto& [tag, kept] : entries) {
        auto& entry = static_cast<message_entry_t&>(*kept);
        entry_going(entry);
        const wx_helpers1::picture_t picture = entry.get_picture();
        const bool in_file = entry.is_loading();
        entry_contents_t taken = entry.take();
        if (in_file) {
            free_lines(std::move(taken.lines), std::move(taken.unshown));
            continue;
        }
        if (picture.is_still() && !picture.is_empty()) {
            // Many entries share few pictures.
            const auto still = picture.get_still();
            auto image = std::find_if(images.begin(), images.end(),
                                      [&](const auto& known) { return known.first.is_same(still); });
            if (image == images.end())
                image = images.insert(
                    images.end(), {still, std::make_shared<std::string>(image_to_xpm(still.getImage(true)))});
            taken.image = image->second;
        }
        data.entries.push_back(std::move(taken));
    }
    m_log->set_changed(false);
    return contents;
}

void inplace_ctrl_impl_t::load_file(const gen_helpers2::path_t& file)
{
    m_loaders.push_back(std::make_unique<file_loader_t>(
        file, [this](loaded_piece_t piece) { take_piece(std::move(piece)); },
        [this](bool kept) {
            // Loaders end in the order in which they began.
            if (!kept)
                m_not_kept.push_back(m_loaders.front()->get_file());
            m_loaders.erase(m_loaders.begin());
            m_loaded = {};
            for (const auto& [tag, entry] : m_entries)
                static_cast<message_entry_t&>(*entry).set_loading(false);
        }));
}

void inplace_ctrl_impl_t::take_piece(loaded_piece_t piece)
{
    if (piece.record) {
        const bool changed = m_log->is_changed();
        const message_t::ptr_t message(new message_t);
        GH2_ASSERT_TEXT(message->load(*piece.record).succeeded(), "message->load(value)",
                        inplace_ctrl_impl_unit);
        m_loaded = find(add(message, callback_t()));
        m_loaded->set_loading(true);
        m_log->set_changed(changed);
    }
    if (m_loaded && piece.lines && !piece.lines->lines.empty())
        m_loaded->show_batch(std::move(piece.lines));
}

error_code_t inplace_ctrl_impl_t::clear()
{
    m_loaders.clear(); // what they have not read yet would come back
    m_loaded = {};
    if (m_entries.empty())
        return {};
    drop_targets();
    const auto entries = std::move(m_entries);
    m_entries.clear();
    // From the end: removing one moves those after it.
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        entry_going(*entry->second);
        entry->second->hide();
    }
    m_log->set_changed(true);
    return {};
}

msngr2::IMessenger* inplace_ctrl_impl_t::get_messenger(tag_t tag)
{
    const message_entry_t::ptr_t entry = find(tag);
    if (entry || m_proxies)
        get_proxies().messenger.set_target(entry);
    return entry ? &m_proxies->messenger : nullptr;
}

msngr2::IProgress* inplace_ctrl_impl_t::get_progress(tag_t tag)
{
    const message_entry_t::ptr_t entry = find(tag);
    if (entry || m_proxies)
        get_proxies().progress.set_target(entry, entry ? entry->get_progress() : nullptr);
    return entry ? &m_proxies->progress : nullptr;
}

bool inplace_ctrl_impl_t::has_severity(tag_t tag, msngr2::ESeverity severity) const
{
    const auto found = m_entries.find(tag);
    return found != m_entries.end() && found->second->has_severity(severity);
}

error_code_t inplace_ctrl_impl_t::save(gen_helpers2::variant_bag_t& bag)
{
    for (const auto& [tag, entry] : m_entries) {
        if (entry->get_type() != message_entry_t::type_name)
            continue;
        const error_code_t saved = entry->save(bag.add_child(message_entry_t::type_name));
        GH2_ASSERT_TEXT(saved.succeeded(), "err", inplace_ctrl_impl_unit);
    }
    m_log->set_changed(false);
    return {};
}

error_code_t inplace_ctrl_impl_t::load(const gen_helpers2::variant_bag_t& bag)
{
    bag.for_each_child(message_entry_t::type_name, [this](const gen_helpers2::variant_bag_t& value) {
        const message_t::ptr_t message(new message_t);
        GH2_ASSERT_TEXT(message->load(value).succeeded(), "message->load(value)", inplace_ctrl_impl_unit);
        const tag_t tag = add(message, callback_t());
        const error_code_t loaded = event_entry_t::load(value, m_entries[tag].get());
        if (loaded.failed())
            gen_helpers2::log_error(inplace_ctrl_impl_unit,
                                    "event_entry_t::load(value, msngr).succeeded(): " + loaded.as_string());
    });
    m_log->set_changed(false);
    return {};
}

void inplace_ctrl_impl_t::copy()
{
    vdxcfrw7::CopyToClipboard(*m_log);
}

void inplace_ctrl_impl_t::popup_menu(const wxPoint& point)
{
    log_menu_t menu(*m_log, [this]() -> search_bar_t& { return get_search_bar(); });
    const wxMenuItem* item =
        menu.Append(wxID_ANY, wx_helpers1::to_plain_label(translate_message("inplace_ctrl.copy")));
    menu.Bind(wxEVT_MENU, &inplace_ctrl_t::handle_copy, m_owner, item->GetId());
    if (const wxWindow* window = m_log->GetWindow())
        menu.add_link(window->ScreenToClient(m_owner->ClientToScreen(point)));
    if (m_offers & inplace_ctrl_t::offer_view)
        menu.add_view();
    if (m_offers & inplace_ctrl_t::offer_save)
        menu.add_save([this] { m_owner->ask_save_as(); }, !m_entries.empty());
    if (m_offers & inplace_ctrl_t::offer_clear)
        menu.add_clear([this] { clear(); }, !m_entries.empty());
    m_owner->PopupMenu(&menu, point);
}

void inplace_ctrl_impl_t::set_view(const inplace_ctrl_t::view_t& view)
{
    m_log->SetTimes(static_cast<vdxcfrw7::CEventLog::times_t>(view.times));
    m_log->SetWrap(view.wrap);
    m_log->SetCollapse(view.collapse);
    m_log->SetZoom(view.zoom);
    m_log->SetCopyTimes(view.copy_times);
}

inplace_ctrl_t::view_t inplace_ctrl_impl_t::get_view() const
{
    return {static_cast<inplace_ctrl_t::view_t::times_t>(m_log->GetTimes()), m_log->GetWrap(),
            m_log->GetCollapse(), m_log->GetZoom(), m_log->GetCopyTimes()};
}

void inplace_ctrl_impl_t::set_clock(std::function<std::chrono::steady_clock::time_point()> clock)
{
    m_log->set_clock(std::move(clock));
    for (const auto& [tag, entry] : m_entries)
        entry->look_at_progress();
}

void inplace_ctrl_impl_t::on_context_menu(vdxcfrw7::CVisualElement*, int x, int y)
{
    if (const wxWindow* window = m_log->GetWindow())
        popup_menu(m_owner->ScreenToClient(window->ClientToScreen(wxPoint(x, y))));
}

search_bar_t& inplace_ctrl_impl_t::get_search_bar()
{
    if (!m_search_bar) {
        m_search_bar = new search_bar_t(m_owner, *m_log);
        m_owner->GetSizer()->Add(m_search_bar, 0, wxEXPAND | wxTOP, 4);
    }
    return *m_search_bar;
}

void inplace_ctrl_impl_t::on_search(vdxcfrw7::CEventLog::search_t what)
{
    get_search_bar().search(what);
}

} // namespace commondlg3
