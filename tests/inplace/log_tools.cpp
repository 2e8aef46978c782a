#include "log_tools.h"

#include <wx_helpers1/painted.h>

#include <wx/sizer.h>

namespace test {

log_window_t::log_window_t(bool show_debug)
    : m_frame(new wxFrame(nullptr, wxID_ANY, "log", wxPoint(20, 20))),
      m_control(new inplace_ctrl_t(m_frame, show_debug))
{
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_control, 1, wxEXPAND);
    m_frame->SetSizer(sizer);
    m_frame->SetClientSize(800, 600);
    m_frame->Show();
    settle();
}

log_window_t::~log_window_t()
{
    destroy();
}

void log_window_t::destroy()
{
    if (m_frame)
        delete m_frame;
    m_frame = nullptr;
}

void log_window_t::focus()
{
    m_frame->Raise();
    log().GetWindow()->SetFocus();
    EXPECT_TRUE(wait_for([this] { return log().GetWindow()->HasFocus(); }));
}

commondlg3::message_t::ptr_t make_message(const std::string& caption, const std::string& message)
{
    commondlg3::message_t::ptr_t record(new commondlg3::message_t);
    record->caption = caption;
    record->message = message;
    return record;
}

commondlg3::progress_message_t::ptr_t make_progress(const std::string& caption)
{
    commondlg3::progress_message_t::ptr_t record(new commondlg3::progress_message_t);
    record->caption = caption;
    return record;
}

commondlg3::message_t::ptr_t with_buttons(const std::string& caption, std::initializer_list<int> ids)
{
    commondlg3::interactive_message_t::ptr_t record(new commondlg3::interactive_message_t);
    record->caption = caption;
    for (int id : ids)
        record->add_button(id, "Button " + std::to_string(id));
    return record;
}

std::vector<std::string> lines_of(inplace_ctrl_t& control, std::size_t entry)
{
    std::vector<std::string> lines;
    for (const auto& block : control.get_log().GetElements().at(entry)->GetLines().get_blocks())
        for (const auto& line : block.lines)
            if (!line.has(vdxcfrw7::line_t::status))
                lines.emplace_back(line.get_text());
    return lines;
}

std::vector<std::string> captions_of(inplace_ctrl_t& control)
{
    std::vector<std::string> captions;
    for (const auto& element : control.get_log().GetElements())
        captions.push_back(element->GetHead().header);
    return captions;
}

vdxcfrw7::CButton* offered_button(inplace_ctrl_t& control, std::size_t entry, int id)
{
    const auto& element = control.get_log().GetElements().at(entry);
    if (!element->ButtonsShown())
        return nullptr;
    for (const auto& button : element->GetButtons())
        if (button->GetId() == id && button->IsShown())
            return button.get();
    return nullptr;
}

wxImage picture_of(const wxTopLevelWindow& window)
{
    const temp_dir_t folder;
    const std::string file = folder.path() + "/window.png";
    settle();
    EXPECT_TRUE(wx_helpers1::save_picture(window, file));
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    return wxImage(file, wxBITMAP_TYPE_PNG);
}

std::string flood_line(int i)
{
    std::string line = std::to_string(i) + " 12:34:56 ";
    const std::size_t length = i % 5 == 4 ? 300 : 80;
    for (int word = i; line.size() < length; ++word)
        line += word % 3 ? "sample " : "reading block ";
    line.resize(length);
    return line;
}

void say_lines(log_window_t& window, inplace_ctrl_t::tag_t tag, int count)
{
    msngr2::IMessenger* messenger = window->get_messenger(tag);
    const auto& lines = window.element(tag).GetLines();
    const std::size_t before = lines.size();
    for (int i = 0; i < count; ++i)
        messenger->say(i % 13 ? msngr2::sev_none : msngr2::sev_warning, flood_line(i).c_str());
    ASSERT_TRUE(wait_for([&] { return lines.size() == before + static_cast<std::size_t>(count); }, 60000));
    settle();
}

} // namespace test
