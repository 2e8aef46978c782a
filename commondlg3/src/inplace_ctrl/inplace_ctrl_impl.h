#pragma once

#include "commondlg3/inplace_ctrl.h"

#include "event_log.h"
#include "file_loader.h"
#include "log_copier.h"
#include "message_entry.h"
#include "proxies.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace commondlg3 {

class search_bar_t;

/// What an inplace_ctrl_t does.
class inplace_ctrl_impl_t : public gen_helpers2::subscriber_base_t
{
public:
    using tag_t = inplace_ctrl_t::tag_t;
    using callback_t = inplace_ctrl_t::callback_t;

    inplace_ctrl_impl_t(inplace_ctrl_t* owner, bool show_debug);
    ~inplace_ctrl_impl_t() override;

    template <class Record>
    tag_t add(const gen_helpers2::intrusive_pointer_t<Record>& msg, const callback_t& callback);
    tag_t add_custom(const custom_message_t::ptr_t& msg);
    gen_helpers2::error_code_t update_message(tag_t tag, const message_t::ptr_t& new_msg,
                                              const callback_t& callback);
    gen_helpers2::error_code_t erase(tag_t tag);
    gen_helpers2::error_code_t clear();
    msngr2::IMessenger* get_messenger(tag_t tag);
    msngr2::IProgress* get_progress(tag_t tag);
    bool has_severity(tag_t tag, msngr2::ESeverity severity) const;
    bool has_changes() const { return m_log->is_changed(); }
    gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag);
    gen_helpers2::error_code_t load(const gen_helpers2::variant_bag_t& bag);
    void load_file(const gen_helpers2::path_t& file);
    inplace_contents_t take_contents();
    void offer(int offers) { m_offers = offers; }
    void set_view(const inplace_ctrl_t::view_t& view);
    inplace_ctrl_t::view_t get_view() const;
    void set_limits(const inplace_ctrl_t::limits_t& limits);
    void set_queue_limit(const inplace_ctrl_t::queue_limit_t& limit);
    void save_as(const gen_helpers2::path_t& file, text_format_t format, const text_options_t& options,
                 std::function<void(const gen_helpers2::error_code_t&)> done);
    void ask_save_as();
    void copy();
    void popup_menu(const wxPoint& point);
    void set_clock(std::function<std::chrono::steady_clock::time_point()> clock);
    event_log_t& get_log() { return *m_log; }

private:
    void hide_buttons();
    void take_piece(loaded_piece_t piece);
    void drop_targets();
    void keep_limits();
    void entry_going(const event_entry_t& entry);
    void on_context_menu(vdxcfrw7::CVisualElement* element, int x, int y);
    void on_search(vdxcfrw7::CEventLog::search_t what);
    message_entry_t::ptr_t find(tag_t tag) const;
    proxies_t& get_proxies();
    search_bar_t& get_search_bar();

    inplace_ctrl_t* m_owner;
    std::unique_ptr<event_log_t> m_log;
    search_bar_t* m_search_bar = nullptr; // a child of the owner, made when somebody looks for something
    std::map<tag_t, gen_helpers2::intrusive_pointer_t<event_entry_t>> m_entries;
    tag_t m_next_tag = 0;
    int m_offers = 0;
    std::set<tag_t> m_offering;                            // the entries that may offer buttons
    std::unique_ptr<proxies_t> m_proxies;                  // made when first asked for
    std::vector<std::unique_ptr<file_loader_t>> m_loaders; // the first one is at work
    std::vector<gen_helpers2::path_t> m_not_kept;          // files that broke off and could not be kept aside
    std::vector<std::shared_ptr<log_copier_t>> m_copiers;  // at work
    inplace_ctrl_t::limits_t m_limits;
    std::string m_saved_as; // by the user last
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    message_entry_t::ptr_t m_loaded; // the entry whose lines it reads
};

} // namespace commondlg3
