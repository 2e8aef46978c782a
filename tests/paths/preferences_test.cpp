#include "tools.h"

#include <commondlg3/audit.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/resources.h>
#include <preferences_entry.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>

#include <filesystem>
#include <functional>
#include <string>

namespace {

using wx_helpers1::to_wx;

class Preferences : public testing::Test
{
protected:
    static int run(const std::function<void(wxTopLevelWindow*)>& act)
    {
        return test::run(*gallery::make_preferences(), act);
    }
    static wxTextCtrl* name_in(wxWindow* dialog)
    {
        return commondlg3::from_xrc<wxTextCtrl>(dialog, "m_textCtrl14");
    }
    static wxButton* button(wxWindow* dialog, const char* name)
    {
        return commondlg3::from_xrc<wxButton>(dialog, name);
    }
    /// Cancels, and answers the question of what is to become of the changes.
    static void leave(wxWindow* dialog, const char* answer)
    {
        test::run_modal(
            [dialog] {
                test::click(dialog, "m_btn_cancel");
                return 0;
            },
            [answer](wxTopLevelWindow* question) {
                EXPECT_TRUE(commondlg3::audit_window(question).empty());
                test::click(question, answer);
            });
    }
    std::string stored() const { return test::read_file(m_dir.path() + "/config/preferences.xml"); }

    const test::temp_dir_t m_dir;
    const test::product_guard_t m_product{RESOURCE_DIR, LOCALE_DIR, m_dir.path() + "/config"};
};

TEST_F(Preferences, OkAndApplyKeepWhatCancelLeavesAlone)
{
    EXPECT_EQ(wxID_OK, run([&](wxTopLevelWindow* dialog) {
                  EXPECT_FALSE(button(dialog, "m_btn_apply")->IsEnabled());
                  dialog->SetSize(700, 500);
                  name_in(dialog)->SetValue("first_@");
                  EXPECT_TRUE(button(dialog, "m_btn_apply")->IsEnabled());
                  test::click(dialog, "m_btn_apply");
                  EXPECT_FALSE(button(dialog, "m_btn_apply")->IsEnabled());
                  EXPECT_NE(std::string::npos, stored().find("first_@"));
                  name_in(dialog)->SetValue("second_@");
                  test::click(dialog, "m_btn_ok");
              }));
    EXPECT_NE(std::string::npos, stored().find("second_@"));
    const std::string before = stored() + test::read_file(m_dir.path() + "/config/windows.xml");
    EXPECT_EQ(wxID_CANCEL, run([&](wxTopLevelWindow* dialog) {
                  EXPECT_EQ(wxSize(700, 500), dialog->GetSize());
                  EXPECT_EQ("second_@", name_in(dialog)->GetValue());
                  name_in(dialog)->SetValue("third_@");
                  dialog->SetSize(800, 600);
                  leave(dialog, "m_btn_cancel");
                  EXPECT_TRUE(dialog->IsShown());
                  leave(dialog, "m_btn_discard");
              }));
    EXPECT_EQ(before, stored() + test::read_file(m_dir.path() + "/config/windows.xml"));
}

TEST_F(Preferences, AFailedWriteIsToldAndNothingIsLost)
{
    test::make_file(m_dir.path() + "/config"); // where the folder should be
    EXPECT_EQ(wxID_OK, run([&](wxTopLevelWindow* dialog) {
                  name_in(dialog)->SetValue("kept_@");
                  {
                      test::messages_t messages;
                      test::click(dialog, "m_btn_ok");
                      ASSERT_EQ(1U, messages.shown.size());
                      EXPECT_EQ("Your preferences could not be saved", messages.shown[0].first);
                  }
                  EXPECT_TRUE(dialog->IsShown());
                  EXPECT_EQ("kept_@", name_in(dialog)->GetValue());
                  EXPECT_TRUE(button(dialog, "m_btn_apply")->IsEnabled());
                  std::filesystem::remove(m_dir.path() + "/config");
                  test::click(dialog, "m_btn_ok");
              }));
    EXPECT_NE(std::string::npos, stored().find("kept_@"));
}

TEST_F(Preferences, DamagedFilesGiveTheUsualSettingsAndAMessage)
{
    const std::string config = m_dir.path() + "/config/";
    for (const char* file : {"preferences.xml", "search_directories.xml"}) {
        std::filesystem::remove_all(config);
        std::filesystem::create_directory(config);
        test::make_file(config + file, "<bag");
        test::make_file(config + "windows.xml", "\1");
        test::messages_t messages;
        EXPECT_EQ(wxID_CANCEL, run([&](wxTopLevelWindow* dialog) {
                      EXPECT_TRUE(test::wait_for([&] { return !messages.shown.empty(); }));
                      test::settle();
                      EXPECT_EQ("result_@@@", name_in(dialog)->GetValue());
                      test::click(dialog, "m_btn_cancel");
                  }));
        ASSERT_EQ(1U, messages.shown.size()) << "three pages keep their settings in each of these files";
        EXPECT_EQ("Your preferences could not be read", messages.shown[0].first);
        EXPECT_EQ("<bag", test::read_file(config + file));
    }
}

} // namespace
