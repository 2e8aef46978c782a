#pragma once

#include "commondlg3/dialog_base.h"
#include "commondlg3/error_warning_dialog.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxListBox;

namespace commondlg3 {

/// A message that waits for its answer.
struct raised_message_t
{
    message_window_t window;
    message_options_t options;
    int count = 1;

    struct caller_t
    {
        std::function<void(int)> answered;
        bool waits; ///< for it, on the stack
    };
    std::vector<caller_t> callers;
};
using raised_messages_t = std::vector<std::shared_ptr<raised_message_t>>;

/// The window of a message center: the message that is looked at, below a list where there are several.
class message_center_dialog_t : public dialog_base_t
{
public:
    /// `answer` is called with a message and the identifier that ended it, and takes it out of the messages.
    message_center_dialog_t(const raised_messages_t& messages,
                            std::function<void(const std::shared_ptr<raised_message_t>&, int)> answer);
    ~message_center_dialog_t() override;

    bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                const std::string& catalog_name, const std::string& object_name) override;
    void on_init_dialog() override;
    void on_update_ui_settings() override;
    void on_cancel() override;

    /// The messages are others than before. The one that is looked at stays, if it is there.
    void update();

private:
    void fill_list();
    void show_current();
    void show_count();
    void fit();
    void answer_all(const std::function<bool(const raised_message_t&)>& which);
    void on_key(wxKeyEvent& event);

    const raised_messages_t& m_messages;
    std::function<void(const std::shared_ptr<raised_message_t>&, int)> m_answer;
    std::shared_ptr<raised_message_t> m_current;
    error_warning_panel_t* m_panel;
    int m_shown_count = 1;        // of the current message
    std::size_t m_shown_last = 1; // how many messages there were
    wxListBox* m_list = nullptr;
    wxStaticText* m_count = nullptr;
    wxButton* m_close_all = nullptr;
};

} // namespace commondlg3
