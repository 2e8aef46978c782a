#include "tools.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/radiobut.h>
#include <wx/utils.h>

#include <optional>
#include <string>
#include <utility>

namespace {

using commondlg3::ask_dlg_t;
using commondlg3::clipboard_dlg_t;
using commondlg3::opt_in_dlg_t;
using commondlg3::opt_in_pp_t;
using consent_t = opt_in_pp_t::user_consent_t;

TEST(AskDialog, ATypedOrChosenNameComesBackByteByByte)
{
    const test::temp_dir_t dir;
    const std::string first = dir.path() + "/\xff & \xc3\xa4";
    const std::string chosen = dir.path() + "/\xfe";
    test::make_file(first);
    test::make_file(chosen);
    ask_dlg_t dialog;
    dialog.set_filename(first);
    EXPECT_EQ(wxID_OK, test::run(dialog, [&](wxTopLevelWindow* window) {
                  auto* field = commondlg3::from_xrc<wxTextCtrl>(window, "m_textCtrl9");
                  EXPECT_TRUE(field->HasFocus());
                  {
                      const test::chooser_answer_t cancel([](wxDialog* shown) {
                          const auto* chooser = wxDynamicCast(shown, wxFileDialog);
                          EXPECT_TRUE(chooser && chooser->GetWildcard().StartsWith("All files|*|"));
                          return static_cast<int>(wxID_CANCEL);
                      });
                      test::click(window, "m_button10");
                  }
                  EXPECT_EQ(first, dialog.get_filename());
                  std::string start;
                  test::answer_for_real(chosen, start);
                  test::click(window, "m_button10");
                  EXPECT_EQ(dir.path(), start);
                  field->SetFocus();
                  test::press(WXK_END);
                  test::type("z");
                  EXPECT_TRUE(test::wait_for([&] { return field->GetValue().EndsWith("z"); }));
                  test::press(WXK_RETURN);
              }));
    EXPECT_EQ(chosen + "z", dialog.get_filename());
}

// As another program sees it, after the dialog is gone.
std::string clipboard()
{
    wxArrayString lines;
    const long code = wxExecute("timeout 5 xclip -selection clipboard -o -t UTF8_STRING", lines);
    return code == 0 ? wxJoin(lines, '\n', '\0').utf8_string() : "xclip: " + std::to_string(code);
}

TEST(ClipboardDialog, AnotherProgramReadsTheTextHoweverItIsWrapped)
{
    const std::string text = "line\nZweite ä 日本 " + std::string(500, 'w');
    const auto copy = [](const std::string& typed, const char* end) {
        clipboard_dlg_t dialog;
        test::run(dialog, [&](wxTopLevelWindow* window) {
            auto* field = commondlg3::from_xrc<wxTextCtrl>(window, "m_textCtrl13");
            EXPECT_EQ("Sample text", field->GetValue());
            field->SetValue(wxString::FromUTF8(typed));
            commondlg3::from_xrc<wxCheckBox>(window, "m_checkBox14")->SetFocus();
            test::press(WXK_SPACE);
            EXPECT_TRUE(test::wait_for([&] { return field->HasFlag(wxTE_DONTWRAP); }));
            EXPECT_EQ(typed, wx_helpers1::from_wx(field->GetValue()));
            test::click(window, end);
        });
    };
    copy(text, "m_btn_ok");
    EXPECT_EQ(text, clipboard());
    copy("cancelled", "m_btn_cancel");
    EXPECT_EQ(text, clipboard());
    copy("", "m_btn_ok");
    EXPECT_EQ("", clipboard());
}

wxRadioButton* choice(wxWindow* window, const char* name)
{
    return commondlg3::from_xrc<wxRadioButton>(window, name);
}

class Consent : public testing::Test
{
protected:
    ~Consent() override
    {
        if (m_page)
            m_page->Destroy();
        test::settle();
    }
    void show(consent_t consent)
    {
        m_page = new opt_in_pp_t(consent);
        m_page->create(test::main_window());
        m_page->SetSize(test::main_window()->GetClientSize());
        test::settle();
    }
    bool agrees() const { return choice(m_page, "m_radioBtn5")->GetValue(); }
    bool refuses() const { return choice(m_page, "m_radioBtn6")->GetValue(); }

    opt_in_pp_t* m_page = nullptr;
};

// A third, hidden button is selected until the user decides: it must never be reached.
TEST_F(Consent, NobodyIsLedToAnAnswer)
{
    show(consent_t::not_decided);
    EXPECT_FALSE(agrees() || refuses());
    EXPECT_TRUE(m_page->save_settings());
    EXPECT_EQ(consent_t::not_decided, m_page->get_consent());
    choice(m_page, "m_radioBtn5")->SetFocus();
    test::settle();
    EXPECT_FALSE(agrees() || refuses()) << "the focus alone chooses nothing";
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return agrees(); }));
    for (const auto& [key, agreed] :
         {std::pair<int, bool>{WXK_UP, true}, {WXK_DOWN, false}, {WXK_DOWN, false}}) {
        test::press(key);
        EXPECT_TRUE(test::wait_for([&, wanted = agreed] { return agrees() == wanted; }));
        test::settle();
        EXPECT_NE(agrees(), refuses());
    }
    EXPECT_TRUE(m_page->is_changed());
    m_page->save_settings();
    EXPECT_EQ(consent_t::refused, m_page->get_consent());
    EXPECT_FALSE(m_page->is_changed());
}

TEST_F(Consent, AnEarlierAnswerAndTheExactRecordAreShown)
{
    show(consent_t::refused);
    EXPECT_TRUE(refuses() && !agrees());
    EXPECT_FALSE(commondlg3::from_xrc<wxTextCtrl>(m_page, "m_record")->IsShown());
    m_page->Destroy();
    m_page = new opt_in_pp_t(consent_t::refused);
    std::string record; // longer than what may be typed into a field
    for (int i = 0; i < 2'000; ++i)
        record += "\"counted\": 1,\n";
    m_page->set_record(record);
    m_page->create(test::main_window());
    auto* shown = commondlg3::from_xrc<wxTextCtrl>(m_page, "m_record");
    EXPECT_TRUE(shown->IsShown() && !shown->IsEditable());
    EXPECT_EQ(record, wx_helpers1::from_wx(shown->GetValue()));
    m_page->set_conset(true);
    EXPECT_TRUE(agrees() && !refuses());
}

TEST_F(Consent, TheDialogEndsWithOkOnlyAfterAnAnswer)
{
    opt_in_dlg_t dialog(consent_t::not_decided);
    std::optional<bool> told;
    dialog.get_answer_signal().connect(&dialog, [&](bool agreed) { told = agreed; });
    EXPECT_EQ(wxID_CANCEL, test::run(dialog, [](wxTopLevelWindow* window) {
                  auto* ok = commondlg3::from_xrc<wxButton>(window, "m_btn_ok");
                  EXPECT_FALSE(ok->IsEnabled());
                  choice(window, "m_radioBtn5")->SetFocus();
                  test::press(WXK_SPACE);
                  EXPECT_TRUE(test::wait_for([&] { return ok->IsEnabled(); }));
                  test::press(WXK_ESCAPE);
              }));
    EXPECT_FALSE(told) << "no answer is none";
    EXPECT_EQ(consent_t::not_decided, dialog.get_consent());
    EXPECT_EQ(wxID_OK, test::run(dialog, [](wxTopLevelWindow* window) {
                  EXPECT_FALSE(choice(window, "m_radioBtn5")->GetValue()) << "what was cancelled";
                  EXPECT_FALSE(commondlg3::from_xrc<wxButton>(window, "m_btn_ok")->IsEnabled());
                  choice(window, "m_radioBtn6")->SetFocus();
                  test::press(WXK_SPACE);
                  auto* ok = commondlg3::from_xrc<wxButton>(window, "m_btn_ok");
                  EXPECT_TRUE(test::wait_for([&] { return ok->IsEnabled(); }));
                  test::press(WXK_RETURN);
              }));
    EXPECT_EQ(std::optional<bool>(false), told);
    EXPECT_EQ(consent_t::refused, dialog.get_consent());
}

} // namespace
