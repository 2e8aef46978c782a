#pragma once

#include "commondlg3/preferences_frame.h"

#include "page_list.h"
#include "page_search.h"
#include "page_stack.h"
#include "settings_work.h"

#include <wx_helpers1/window_size.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class wxMenu;
class wxSearchCtrl;

namespace commondlg3 {

class frame_notice_t;

/// What a preferences_frame_t does. Where it stands: frame_impl.cpp shows pages, frame_saving.cpp reads and
/// writes, frame_menus.cpp restores, exports and imports.
class preferences_frame_t::impl_t
{
public:
    explicit impl_t(preferences_frame_t& frame);
    ~impl_t();

    // Pages.
    void on_init_dialog();
    /// It has been shown before.
    void begin_again();
    void fit_again();
    void select(int page);
    std::string get_help_topic() const;

    // Reading and writing.
    /// Writes what was changed, and then does `then`. Nothing happens when something is to be set right first.
    void apply(std::function<void()> then);
    /// Whether the dialog may end with Cancel now; asks where something would be lost.
    bool may_leave();
    void end_with_ok();

    page_stack_t stack;
    std::string first_page;
    settings_file_ptr_t memory;
    gen_helpers2::path_t folder;
    bool wants_restart = false;
    gen_helpers2::signal_t<const std::string&> page_signal;
    gen_helpers2::signal_t<bool> applied_signal;

private:
    friend class preferences_frame_t;

    enum class busy_t
    {
        none,
        reading,
        saving
    };

    // Pages.
    bool find_controls();
    void connect();
    void begin_with_page();
    void begin_with_size();
    void fit();
    void make_room();
    void fill_list();
    void search();
    void on_search_key(wxKeyEvent& event);
    void on_idle(wxIdleEvent& event);
    /// What shows that something was changed; of all pages, or of the one that is seen.
    void update();
    void update_shown();
    void show_changed();
    std::vector<std::string> get_titles(const std::vector<int>& pages) const;

    // Reading and writing.
    void set_busy(busy_t busy);
    void begin_reading(std::function<void()> done);
    /// Has a thread do it, which is waited for this long; then `done` follows at once. Later the dialog shows
    /// that it waits, until `done`; which never comes when something else was begun meanwhile.
    void on_disk(busy_t busy, std::chrono::milliseconds patience, std::function<void()> work,
                 std::function<void()> done);
    void show_read();
    bool has_problem(const std::vector<int>& pages);
    void begin_writing(const std::vector<int>& pages);
    void finish_writing();
    void on_theirs();
    void look_for_theirs();
    void read_again();
    void discard();
    void remember();
    void tell(const char* main_key, const char* details_key, const std::string& reason);
    void tell_unread();

    // Restoring and exchanging.
    void pop_up_menu();
    void on_context_menu(wxContextMenuEvent& event);
    void add_to(wxMenu& menu, const std::string& text, std::function<void()> chosen, bool enabled = true);
    void put_settings(int page, const gen_helpers2::variant_bag_t& settings);
    std::optional<preferences_page_t::setting_t> find_setting(const wxPoint& on_screen);
    void export_settings();
    void import_settings();
    void show_import(const gen_helpers2::variant_bag_t& imported);

    preferences_frame_t& m_frame;
    wx_helpers1::window_size_t m_size;
    found_marks_t m_marks;
    std::unique_ptr<page_list_t> m_list;
    std::unique_ptr<frame_notice_t> m_notice;
    wxSearchCtrl* m_search = nullptr;
    wxStaticText* m_nothing_found = nullptr;
    wxStaticText* m_waiting = nullptr; ///< in place of the page while the settings are read
    wxButton* m_apply = nullptr;
    wxButton* m_more = nullptr;
    int m_reported = page_stack_t::none;
    std::function<void()> m_tell; ///< what is to be told once it is shown

    busy_t m_busy = busy_t::none;
    settings_work_ptr_t m_work;
    std::vector<int> m_writing; ///< the pages that are being written
    std::function<void()> m_then;
    bool m_looking = false; ///< for what others have written
    std::shared_ptr<char> m_alive = std::make_shared<char>();
};

} // namespace commondlg3
