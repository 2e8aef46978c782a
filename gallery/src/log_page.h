#pragma once

#include <commondlg3/inplace_ctrl.h>

#include <nlohmann/json.hpp>
#include <wx_helpers1/modal_flavor.h>

#include <wx/dialog.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class wxButton;
class wxCheckBox;
class wxSpinCtrl;
class wxTextCtrl;

namespace gallery {

inline constexpr char log_object[] = "inplace_ctrl_t";

/// A window around an in-place message control: what it holds is kept in the configuration directory from one
/// run to the next. Pages derive from it and add the controls above the log.
class log_page_t : public wx_helpers1::modal_flavor<wxDialog>, private gen_helpers2::subscriber_base_t
{
public:
    log_page_t(wxWindow* parent, const std::string& title_key, const std::string& file);
    ~log_page_t() override;

    commondlg3::inplace_ctrl_t& get_log() { return *m_log; }
    /// Takes the log and has it written to its file, while the window may go.
    void keep();

    void help_activated() override {} // it has none

protected:
    /// The row of controls above the log; the log's own row below it is there already.
    wxSizer* get_controls() { return m_controls; }
    /// A callback that reports the button that was pressed.
    commondlg3::inplace_ctrl_t::callback_t make_callback();
    void finish_layout();
    void fit();

    /// Where the paths in its lines begin.
    virtual std::string get_folder() const { return "/"; }

private:
    void load();
    void open_link(const vdxcfrw7::log_link_t& link);

    std::string m_file; // empty: nothing is kept
    wxSizer* m_controls;
    commondlg3::inplace_ctrl_t* m_log;
};

/// Work in every state that a gauge can tell of, by a clock of its own.
class progress_page_t : public log_page_t
{
public:
    explicit progress_page_t(wxWindow* parent);

private:
    commondlg3::inplace_ctrl_t::tag_t add(const std::string& caption, double total);
    void pass(int seconds);
    void step(int second);

    std::chrono::steady_clock::time_point m_now{};
    std::vector<commondlg3::inplace_ctrl_t::tag_t> m_work;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

/// Walks a directory tree on a worker thread and reports into the log what it finds.
class walk_page_t : public log_page_t
{
public:
    explicit walk_page_t(wxWindow* parent);
    ~walk_page_t() override;

private:
    struct walk_t;

    void start();
    void finished(const std::shared_ptr<walk_t>& walk);

    wxTextCtrl* m_folder;
    wxCheckBox* m_list_files;
    wxButton* m_start;
    std::shared_ptr<walk_t> m_walk; // shared with the worker
    std::thread m_worker;
    gen_helpers2::signal_t<> m_finished;
    struct receiver_t : gen_helpers2::subscriber_base_t
    {
    } m_receiver;
};

/// Lets many threads say many lines at once.
class flood_page_t : public log_page_t
{
public:
    explicit flood_page_t(wxWindow* parent);
    ~flood_page_t() override;

private:
    void start();
    void stop();

    wxSpinCtrl* m_threads;
    wxSpinCtrl* m_lines;
    std::shared_ptr<std::atomic<bool>> m_stop;
    std::vector<std::thread> m_workers;
};

/// Shows the page until it is closed, reports what it held by JSON lines, and has it kept.
int run_log_page(log_page_t& page, wxWindow* parent);

/// Opens the control with the entries of the data (null: a sample) and reports by JSON lines.
int open_log(const nlohmann::json& data, wxWindow* parent);
int open_progress_page(const nlohmann::json& data, wxWindow* parent);
int open_walk_page(const nlohmann::json& data, wxWindow* parent);
int open_flood_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
