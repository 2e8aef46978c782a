#include "tools.h"

#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/radiobut.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace {

using commondlg3::opt_in_dlg_t;
using commondlg3::opt_in_pp_t;
using consent_t = opt_in_pp_t::user_consent_t;

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

TEST_F(Consent, AnEarlierAnswerIsShown)
{
    show(consent_t::refused);
    EXPECT_TRUE(refuses() && !agrees());
    m_page->set_conset(true);
    EXPECT_TRUE(agrees() && !refuses());
    m_page->save_settings();
    EXPECT_EQ(consent_t::given, m_page->get_consent());
}

TEST_F(Consent, TheExactRecordIsShownWhereThereIsOne)
{
    show(consent_t::given);
    EXPECT_FALSE(commondlg3::from_xrc<wxTextCtrl>(m_page, "m_record")->IsShown());
    m_page->Destroy();
    m_page = new opt_in_pp_t(consent_t::given);
    std::string record; // longer than what may be typed into a field
    for (int i = 0; i < 2'000; ++i)
        record += "\"counted\": 1,\n";
    m_page->set_record(record);
    m_page->create(test::main_window());
    auto* shown = commondlg3::from_xrc<wxTextCtrl>(m_page, "m_record");
    EXPECT_TRUE(shown->IsShown() && !shown->IsEditable());
    EXPECT_EQ(record, wx_helpers1::from_wx(shown->GetValue()));
}

TEST_F(Consent, TheDialogEndsWithOkOnlyAfterAnAnswer)
{
    opt_in_dlg_t dialog(consent_t::not_decided);
    std::optional<bool> told;
    dialog.get_answer_signal().connect(&dialog, [&](bool agreed) { told = agreed; });
    const auto run = [&](const std::function<void(wxTopLevelWindow*)>& act) {
        return test::run_modal([&] { return dialog.show_modal(test::main_window()); }, act);
    };
    EXPECT_EQ(wxID_CANCEL, run([](wxTopLevelWindow* window) {
                  auto* ok = commondlg3::from_xrc<wxButton>(window, "m_btn_ok");
                  EXPECT_FALSE(ok->IsEnabled());
                  choice(window, "m_radioBtn5")->SetFocus();
                  test::press(WXK_SPACE);
                  EXPECT_TRUE(test::wait_for([&] { return ok->IsEnabled(); }));
                  test::press(WXK_ESCAPE);
              }));
    EXPECT_FALSE(told) << "no answer is none";
    EXPECT_EQ(consent_t::not_decided, dialog.get_consent());
    EXPECT_EQ(wxID_OK, run([](wxTopLevelWindow* window) {
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
