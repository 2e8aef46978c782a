#include "tools.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/utils.h>

#include <functional>
#include <string>

namespace {

using commondlg3::ask_dlg_t;
using commondlg3::clipboard_dlg_t;

void click(wxWindow* window, const char* name)
{
    auto* button = commondlg3::from_xrc<wxButton>(window, name);
    wxCommandEvent event(wxEVT_BUTTON, button->GetId());
    event.SetEventObject(button);
    button->ProcessWindowEvent(event);
}

int run(ask_dlg_t& dialog, const std::function<void(wxTopLevelWindow*)>& act)
{
    return test::run_modal([&] { return dialog.show_modal(test::main_window()); }, act);
}

TEST(AskDialog, ANameComesBackByteByByte)
{
    const std::string name = "/tmp/\xff & \xc3\xa4";
    ask_dlg_t dialog;
    dialog.set_filename(name);
    EXPECT_EQ(name, dialog.get_filename());
    EXPECT_EQ(wxID_OK, run(dialog, [&](wxTopLevelWindow* window) {
                  auto* field = commondlg3::from_xrc<wxTextCtrl>(window, "m_textCtrl9");
                  EXPECT_TRUE(field->HasFocus());
                  EXPECT_EQ("File", wx_helpers1::get_accessible_name(field));
                  test::press(WXK_END);
                  test::type("z");
                  EXPECT_TRUE(test::wait_for([&] { return field->GetValue().EndsWith("z"); }));
                  test::press(WXK_RETURN);
              }));
    EXPECT_EQ(name + "z", dialog.get_filename());
}

TEST(AskDialog, TheChooserFillsTheFieldOnlyWhenItEndsWithOk)
{
    const test::temp_dir_t dir;
    const std::string first = dir.path() + "/first.txt";
    const std::string chosen = dir.path() + "/second.txt";
    test::make_file(first);
    test::make_file(chosen);
    ask_dlg_t dialog;
    dialog.set_filename(first);
    run(dialog, [&](wxTopLevelWindow* window) {
        {
            const test::chooser_answer_t answer([&](wxDialog* shown) {
                auto* chooser = wxDynamicCast(shown, wxFileDialog);
                if (!chooser)
                    return static_cast<int>(wxID_NONE);
                EXPECT_EQ(dir.path(), chooser->GetDirectory());
                EXPECT_EQ("first.txt", chooser->GetFilename());
                EXPECT_TRUE(chooser->GetWildcard().StartsWith("All files|*|"));
                return static_cast<int>(wxID_CANCEL);
            });
            click(window, "m_button10");
        }
        EXPECT_EQ(first, dialog.get_filename());
        std::string start;
        test::answer_for_real(chosen, start);
        click(window, "m_button10");
        EXPECT_EQ(dir.path(), start);
        test::press(WXK_RETURN);
    });
    EXPECT_EQ(chosen, dialog.get_filename());
}

// Every language's text fits at the least size, and at any other.
TEST(AskDialog, TheExplanationNamesTheProductAndFollowsTheWidth)
{
    EXPECT_EQ(wxSize(400, 170), ask_dlg_t().calculate_min_size());
    for (const char* language : {"en", "de", "ja", "ar"}) {
        const test::language_guard_t guard(language);
        ask_dlg_t dialog;
        run(dialog, [&](wxTopLevelWindow* window) {
            EXPECT_EQ(400, dialog.calculate_min_size().x);
            EXPECT_GE(dialog.calculate_min_size().y, 170);
            EXPECT_GE(window->GetMinSize().y, dialog.calculate_min_size().y);
            auto* message = commondlg3::from_xrc<wxStaticText>(window, "m_staticText7");
            EXPECT_TRUE(message->GetLabelText().Contains("Vorbex Performance Studio")) << language;
            const int narrow = message->GetSize().y;
            window->SetSize(1000, window->GetSize().y);
            EXPECT_TRUE(test::wait_for([&] { return message->GetSize().y < narrow; })) << language;
            window->SetSize(window->GetMinSize());
            EXPECT_TRUE(test::wait_for([&] { return message->GetSize().y == narrow; })) << language;
            test::press(WXK_ESCAPE);
        });
    }
}

// As another program sees it, after the dialog is gone.
std::string clipboard()
{
    wxArrayString lines;
    const long code = wxExecute("timeout 5 xclip -selection clipboard -o -t UTF8_STRING", lines);
    return code == 0 ? wxJoin(lines, '\n', '\0').utf8_string() : "xclip: " + std::to_string(code);
}

TEST(ClipboardDialog, AnotherProgramReadsTheText)
{
    const auto copy = [](const char* text) {
        clipboard_dlg_t dialog;
        test::run_modal([&] { return dialog.show_modal(test::main_window()); },
                        [&](wxTopLevelWindow* window) {
                            auto* field = commondlg3::from_xrc<wxTextCtrl>(window, "m_textCtrl13");
                            EXPECT_EQ("Sample text", field->GetValue());
                            if (text)
                                field->SetValue(wxString::FromUTF8(text));
                            text ? click(window, "m_btn_ok") : test::press(WXK_ESCAPE);
                        });
    };
    copy("line\nZweite ä 日本");
    EXPECT_EQ("line\nZweite ä 日本", clipboard());
    copy(nullptr);
    EXPECT_EQ("line\nZweite ä 日本", clipboard()) << "Cancel copies nothing";
    copy("");
    EXPECT_EQ("", clipboard());
}

TEST(ClipboardDialog, WrappingChangesTheViewOnly)
{
    clipboard_dlg_t dialog;
    test::run_modal([&] { return dialog.show_modal(test::main_window()); },
                    [&](wxTopLevelWindow* window) {
                        auto* field = commondlg3::from_xrc<wxTextCtrl>(window, "m_textCtrl13");
                        const wxString text(wxString('w', 500));
                        field->SetValue(text);
                        auto* box = commondlg3::from_xrc<wxCheckBox>(window, "m_checkBox14");
                        box->SetFocus();
                        test::press(WXK_SPACE);
                        EXPECT_TRUE(test::wait_for([&] { return field->HasFlag(wxTE_DONTWRAP); }));
                        EXPECT_EQ(text, field->GetValue());
                        test::press(WXK_ESCAPE);
                    });
}

} // namespace
