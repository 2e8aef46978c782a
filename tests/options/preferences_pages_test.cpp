#include "tools.h"

#include <commondlg3/preferences_frame.h>
#include <commondlg3/resources.h>
#include <preferences_entry.h>
#include <usage_record.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dataview.h>
#include <wx/radiobut.h>
#include <wx/srchctrl.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

class PreferencesPages : public testing::Test
{
protected:
    static void search(wxWindow* dialog, const char* words)
    {
        commondlg3::from_xrc<wxSearchCtrl>(dialog, "m_search")->SetValue(wxString::FromUTF8(words));
    }
    static void refuse(wxWindow* dialog)
    {
        search(dialog, "Usage");
        commondlg3::from_xrc<wxRadioButton>(dialog, "m_radioBtn6")->SetFocus();
        test::press(WXK_SPACE);
        auto* apply = commondlg3::from_xrc<wxButton>(dialog, "m_btn_apply");
        ASSERT_TRUE(test::wait_for([&] { return apply->IsEnabled(); }));
    }
    static std::vector<std::string> listed(wxWindow* dialog)
    {
        std::vector<std::string> pages;
        auto* list = commondlg3::from_xrc<wxDataViewTreeCtrl>(dialog, "m_pages");
        const std::function<void(const wxDataViewItem&)> add = [&](const wxDataViewItem& parent) {
            wxDataViewItemArray items;
            list->GetStore()->GetChildren(parent, items);
            for (const auto& item : items) {
                wxDataViewItemArray below;
                if (list->GetStore()->GetChildren(item, below) == 0)
                    pages.push_back(list->GetItemText(item).utf8_string());
                add(item);
            }
        };
        add(wxDataViewItem());
        return pages;
    }
    std::string files() const
    {
        std::string all;
        if (std::filesystem::exists(m_dir.path() + "/config"))
            for (const auto& file : std::filesystem::directory_iterator(m_dir.path() + "/config"))
                all += file.path().filename().string() + "\n" + test::read_file(file.path().string());
        return all;
    }

    const test::temp_dir_t m_dir;
    const test::product_guard_t m_product{RESOURCE_DIR, LOCALE_DIR, m_dir.path() + "/config"};
};

TEST_F(PreferencesPages, SearchFindsSettingsByTheWordsOnTheirPages)
{
    test::run(*gallery::make_preferences(), [](wxTopLevelWindow* window) {
        const auto all = listed(window);
        test::press('F', wxMOD_CONTROL);
        test::type("object NAMES"); // a check box of a page that was not looked at
        EXPECT_TRUE(test::wait_for(
            [&] { return listed(window) == std::vector<std::string>{"Experimental features"}; }));
        test::press(WXK_RETURN);
        EXPECT_TRUE(test::wait_for([] {
            const auto* box = wxDynamicCast(wxWindow::FindFocus(), wxCheckBox);
            return box && box->GetLabelText() == "Object names in the list";
        }));
        search(window, "telemetry"); // a word that stands nowhere, but means the page
        EXPECT_EQ(std::vector<std::string>{"Usage data"}, listed(window));
        search(window, "no such words");
        EXPECT_TRUE(listed(window).empty());
        search(window, std::string(20000, 'x').c_str());
        EXPECT_EQ(1000u, commondlg3::from_xrc<wxSearchCtrl>(window, "m_search")->GetValue().length());
        commondlg3::from_xrc<wxSearchCtrl>(window, "m_search")->SetFocus();
        test::press(WXK_ESCAPE);
        EXPECT_TRUE(test::wait_for([&] { return listed(window) == all; }));
        EXPECT_TRUE(window->IsShown()) << "Escape ended the search, not the dialog";
        test::press(WXK_ESCAPE);
    });
}

TEST_F(PreferencesPages, TheUsageRecordIsLeftOnlyWithConsent)
{
    const std::string file = m_dir.path() + "/config/usage_data.json";
    gallery::count_opened("dlg.counted");
    gallery::report_usage();
    EXPECT_FALSE(std::filesystem::exists(file));
    ASSERT_TRUE(gallery::save_consent(gallery::opt_in_pp_t::user_consent_t::given).succeeded());
    gallery::report_usage();
    EXPECT_EQ(gallery::get_usage_record() + "\n", test::read_file(file));
    EXPECT_NE(std::string::npos, test::read_file(file).find("\"dlg.counted\": 1"));
    test::run(*gallery::make_preferences(), [&](wxTopLevelWindow* window) {
        refuse(window);
        auto* apply = commondlg3::from_xrc<wxButton>(window, "m_btn_apply");
        apply->SetFocus();
        ASSERT_TRUE(test::wait_for([&] { return apply->HasFocus(); }));
        test::press(WXK_SPACE);
        EXPECT_TRUE(test::wait_for([&] { return !apply->IsEnabled(); }));
        EXPECT_FALSE(std::filesystem::exists(file)) << "whoever refuses need not wait for the end";
        gen_helpers2::error_code_t read;
        EXPECT_EQ(gallery::opt_in_pp_t::user_consent_t::refused, gallery::load_consent(read));
        test::press(WXK_ESCAPE); // heard also now that the button that had the focus cannot have it
    });
    gallery::report_usage();
    EXPECT_FALSE(std::filesystem::exists(file));
}

// Whoever withdraws must be believed at once, by the record and by the choices, and told when it is not so.
TEST_F(PreferencesPages, AConsentIsWithdrawnAtOnceAndTheRecordGone)
{
    using consent_t = gallery::opt_in_pp_t::user_consent_t;
    const std::string file = m_dir.path() + "/config/usage_data.json";
    ASSERT_TRUE(gallery::save_consent(consent_t::given).succeeded());
    gallery::report_usage();
    const std::string written = test::read_file(file);
    gallery::count_opened("dlg.later");
    gallery::opt_in_pp_t page(consent_t::given);
    page.set_record(gallery::get_usage_record());
    page.set_keeper(
        gallery::make_usage_data_keeper([] { return gallery::save_consent(consent_t::refused); }));
    page.create(test::main_window());
    test::settle();
    auto* shown = commondlg3::from_xrc<wxTextCtrl>(&page, "m_record");
    wxCommandEvent pressed;
    page.on_show_written(pressed);
    EXPECT_EQ(written, shown->GetValue().utf8_string());
    page.on_show_written(pressed);
    EXPECT_NE(std::string::npos, shown->GetValue().utf8_string().find("dlg.later"));
    std::filesystem::remove(file);
    std::filesystem::create_directories(file + "/not empty");
    test::messages_t messages;
    page.on_withdraw(pressed);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("The consent was not withdrawn", messages.shown[0].first);
    EXPECT_EQ(consent_t::given, page.get_consent());
    std::filesystem::remove_all(file + "/not empty");
    page.on_withdraw(pressed);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(consent_t::refused, page.get_consent());
    EXPECT_FALSE(page.is_changed());
    gen_helpers2::error_code_t read;
    EXPECT_EQ(consent_t::refused, gallery::load_consent(read));

    ASSERT_TRUE(gallery::save_consent(consent_t::given).succeeded());
    test::run(*gallery::make_preferences("pref.optin"), [&](wxTopLevelWindow* window) {
        auto* agree = commondlg3::from_xrc<wxRadioButton>(window, "m_radioBtn5");
        dynamic_cast<gallery::opt_in_pp_t&>(*agree->GetParent()).on_withdraw(pressed);
        EXPECT_EQ(consent_t::refused, gallery::load_consent(read));
        agree->SetValue(true);
        test::send(wxEVT_RADIOBUTTON, agree, 1);
        test::click(window, "m_btn_apply");
        EXPECT_TRUE(test::wait_for([&] { return gallery::load_consent(read) == consent_t::given; }))
            << "what was withdrawn is not another program's doing";
        test::click(window, "m_btn_cancel");
    });
}

} // namespace
