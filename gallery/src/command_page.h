#pragma once

#include "log_page.h"

#include <memory>
#include <string>
#include <thread>

namespace gallery {

/// Runs a command of the user's choice and shows what it prints.
class command_page_t : public log_page_t
{
public:
    explicit command_page_t(wxWindow* parent);
    ~command_page_t() override;

    /// For scripts: what stands in the fields.
    void set_command(const std::string& command, const std::string& folder);

private:
    std::string get_folder() const override { return m_run_folder; }

    struct run_t;

    void start();
    void finished(const std::shared_ptr<run_t>& run);

    wxTextCtrl* m_command;
    wxTextCtrl* m_folder;
    std::string m_run_folder = "/"; // of the last command
    wxButton* m_start;
    std::shared_ptr<run_t> m_run; // shared with the worker
    std::thread m_worker;
    gen_helpers2::signal_t<> m_finished;
    struct receiver_t : gen_helpers2::subscriber_base_t
    {
    } m_receiver;
};

/// Opens the page; `command` and `folder` of the data stand in its fields.
int open_command_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
